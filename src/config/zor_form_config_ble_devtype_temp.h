#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_TEMP_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_TEMP_H

// Bluetooth LE temperature sensor: model and its number among temperature sensors.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_Temp : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_Temp(QWidget* parent = nullptr);

signals:
    void signal_ChangeIdx_Dev_Temp(QString qsText, QString qsText_New);
    void signal_ChangeIdx_Dev_Int_Temp(int nOld, int nNew);

protected:
    void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew) override;
};

#endif
