#include "config/zor_form_config_ble_devtype_fw.h"

ZOR_Form_Config_Ble_DevType_FW::ZOR_Form_Config_Ble_DevType_FW(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "FW";
    layout.models = QStringList{"TECHNOTON DFM"};
    buildPage(layout);
}
