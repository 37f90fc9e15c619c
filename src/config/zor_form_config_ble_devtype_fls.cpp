#include "config/zor_form_config_ble_devtype_fls.h"

ZOR_Form_Config_Ble_DevType_FLS::ZOR_Form_Config_Ble_DevType_FLS(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "FS";
    layout.models = QStringList{
        "ESCORT TD", "GL-TV", "TECHNOTON DUT E", "MECHATRONICS DOMINATOR", "MIELTA FANTOM", "ITALON BLE"};
    layout.nIdxKind = IdxFuel;
    layout.lpIdxKey = "cfgt17_018";
    layout.nIdxCount = 16;
    layout.bIdxAligned = true;
    layout.bThreshold = true;
    buildPage(layout);
}

void ZOR_Form_Config_Ble_DevType_FLS::indexChanged(int, int nOld, int nNew, const QString& qsOld, const QString& qsNew)
{
    emit signal_ChangeIdx_Dev_FS(qsOld, qsNew);
    emit signal_ChangeIdx_Dev_Int_FS(nOld, nNew);
}
