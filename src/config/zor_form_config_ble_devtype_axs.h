#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_AXS_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_AXS_H

// Bluetooth LE axle load sensor: model, and two built-in temperature channels.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_AXS : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_AXS(QWidget* parent = nullptr);

signals:
    void signal_ChangeIdx_Dev_AXS(QString qsText, QString qsText_New);
    void signal_ChangeIdx_Dev_Int_AXS(int nOld, int nNew);

protected:
    void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew) override;
};

#endif
