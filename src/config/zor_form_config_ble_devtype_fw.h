#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_FW_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_FW_H

// Bluetooth LE fuel flow meter: one model, so its "type" is always 0.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_FW : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_FW(QWidget* parent = nullptr);
};

#endif
