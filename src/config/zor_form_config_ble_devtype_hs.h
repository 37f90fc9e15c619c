#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_HS_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_HS_H

// Bluetooth LE event sensor (magnet, movement, input, presence): one model.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_HS : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_HS(QWidget* parent = nullptr);
};

#endif
