#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_TEMP_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_TEMP_H

// Bluetooth LE temperature sensor, node "TS<slot>": the model ("type"), its
// number among temperature sensors ("idx", 1..4) and the light sensor the
// same device carries ("ls"): 0 none (the default, and what a missing or
// unknown value loads), 1..4 the light sensors "LS1" ... "LS4", listed as
// the caption of "cfgt17_073" with the name. It is stored beside the
// temperature values because the page has no node of its own for it; a
// file without it keeps loading as before.

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
