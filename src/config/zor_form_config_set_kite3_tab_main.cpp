#include "config/zor_form_config_set_kite3_tab_main.h"

ZOR_Form_Config_Set_Kite3_Tab_Main::ZOR_Form_Config_Set_Kite3_Tab_Main(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("Main", parent)
{
}
