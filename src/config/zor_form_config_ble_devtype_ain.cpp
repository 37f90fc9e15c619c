#include "config/zor_form_config_ble_devtype_ain.h"

ZOR_Form_Config_Ble_DevType_AIN::ZOR_Form_Config_Ble_DevType_AIN(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "AIN";
    layout.models = QStringList{"ELA AI"};
    layout.nIdxKind = IdxAin;
    layout.lpIdxKey = "cfgt17_077";
    layout.nIdxCount = 6;
    buildPage(layout);
}

void ZOR_Form_Config_Ble_DevType_AIN::indexChanged(int, int nOld, int nNew, const QString& qsOld, const QString& qsNew)
{
    emit signal_ChangeIdx_Dev_AIN(qsOld, qsNew);
    emit signal_ChangeIdx_Dev_Int_AIN(nOld, nNew);
}
