#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_AIN_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_AIN_H

// Bluetooth LE analogue input sensor: model and its input number.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_AIN : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_AIN(QWidget* parent = nullptr);

signals:
    void signal_ChangeIdx_Dev_AIN(QString qsText, QString qsText_New);
    void signal_ChangeIdx_Dev_Int_AIN(int nOld, int nNew);

protected:
    void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew) override;
};

#endif
