#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_AS_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_AS_H

// Bluetooth LE tilt sensor: model, and its built-in temperature channel.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_AS : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_AS(QWidget* parent = nullptr);

signals:
    void signal_ChangeIdx_Dev_AS(QString qsText, QString qsText_New);
    void signal_ChangeIdx_Dev_Int_AS(int nOld, int nNew);

protected:
    void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew) override;
};

#endif
