#include "config/zor_form_config_ble_devtype_hs.h"

ZOR_Form_Config_Ble_DevType_HS::ZOR_Form_Config_Ble_DevType_HS(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
{
    Layout layout;
    layout.lpWord = "HS";
    layout.models = QStringList{"ELA MAG/MOV/DI/PIR"};
    buildPage(layout);
}
