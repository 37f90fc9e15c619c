#include "config/zor_form_config_set_kite3_tab_more.h"

ZOR_Form_Config_Set_Kite3_Tab_More::ZOR_Form_Config_Set_Kite3_Tab_More(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("More", parent)
{
}
