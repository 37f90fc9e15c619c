#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_US_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_US_H

// Bluetooth LE multi-sensor: model, and four temperature channels.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_US : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_US(QWidget* parent = nullptr);

signals:
    void signal_ChangeIdx_Dev_US(QString qsText, QString qsText_New);
    void signal_ChangeIdx_Dev_Int_US(int nOld, int nNew);

protected:
    void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew) override;
};

#endif
