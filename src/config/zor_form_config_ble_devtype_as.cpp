#include "config/zor_form_config_ble_devtype_as.h"

ZOR_Form_Config_Ble_DevType_AS::ZOR_Form_Config_Ble_DevType_AS(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "AS";
    layout.models = QStringList{"ADM32", "ESCORT DU", "GNOM DP", "MECHATRONICS DEGREE", "ELA MOV(ANG)"};
    layout.nTsChannels = 1;
    buildPage(layout);
}

void ZOR_Form_Config_Ble_DevType_AS::indexChanged(int, int nOld, int nNew, const QString& qsOld, const QString& qsNew)
{
    emit signal_ChangeIdx_Dev_AS(qsOld, qsNew);
    emit signal_ChangeIdx_Dev_Int_AS(nOld, nNew);
}
