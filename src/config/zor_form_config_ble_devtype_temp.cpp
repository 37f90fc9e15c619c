#include "config/zor_form_config_ble_devtype_temp.h"

ZOR_Form_Config_Ble_DevType_Temp::ZOR_Form_Config_Ble_DevType_Temp(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "TS";
    layout.models = QStringList{"ADM31/35", "ESCORT TL", "TZ-BT04", "ELA T/RHT"};
    layout.nIdxKind = IdxTemp;
    layout.lpIdxKey = "cfgt17_043";
    layout.nIdxCount = 4;
    layout.nLightSensors = 4;
    buildPage(layout);
}

void ZOR_Form_Config_Ble_DevType_Temp::indexChanged(int, int nOld, int nNew, const QString& qsOld, const QString& qsNew)
{
    emit signal_ChangeIdx_Dev_Temp(qsOld, qsNew);
    emit signal_ChangeIdx_Dev_Int_Temp(nOld, nNew);
}
