#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_FLS_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_FLS_H

// Bluetooth LE fuel level sensor: model, its number among fuel sensors and a threshold.

#include "config/zor_form_config_ble_devtype.h"

class ZOR_Form_Config_Ble_DevType_FLS : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Ble_DevType_FLS(QWidget* parent = nullptr);

signals:
    void signal_ChangeIdx_Dev_FS(QString qsText, QString qsText_New);
    void signal_ChangeIdx_Dev_Int_FS(int nOld, int nNew);

protected:
    void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew) override;
};

#endif
