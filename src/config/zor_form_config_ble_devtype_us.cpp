#include "config/zor_form_config_ble_devtype_us.h"

ZOR_Form_Config_Ble_DevType_US::ZOR_Form_Config_Ble_DevType_US(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "US";
    layout.models = QStringList{"TESLiOT", "ESCORT TH", "Teltonika EYE", "MECHATRONICS DTS"};
    layout.nTsChannels = 4;
    buildPage(layout);
}

void ZOR_Form_Config_Ble_DevType_US::indexChanged(int, int nOld, int nNew, const QString& qsOld, const QString& qsNew)
{
    emit signal_ChangeIdx_Dev_US(qsOld, qsNew);
    emit signal_ChangeIdx_Dev_Int_US(nOld, nNew);
}
