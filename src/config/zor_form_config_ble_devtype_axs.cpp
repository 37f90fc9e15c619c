#include "config/zor_form_config_ble_devtype_axs.h"

ZOR_Form_Config_Ble_DevType_AXS::ZOR_Form_Config_Ble_DevType_AXS(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "AXS";
    layout.models = QStringList{"TECHNOTON GNOM DDE", "MECHATRONICS DDS", "MECHATRONICS DPS"};
    layout.nTsChannels = 2;
    buildPage(layout);
}

void ZOR_Form_Config_Ble_DevType_AXS::indexChanged(int, int nOld, int nNew, const QString& qsOld, const QString& qsNew)
{
    emit signal_ChangeIdx_Dev_AXS(qsOld, qsNew);
    emit signal_ChangeIdx_Dev_Int_AXS(nOld, nNew);
}
