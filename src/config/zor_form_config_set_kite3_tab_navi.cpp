#include "config/zor_form_config_set_kite3_tab_navi.h"

ZOR_Form_Config_Set_Kite3_Tab_Navi::ZOR_Form_Config_Set_Kite3_Tab_Navi(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("Navi", parent)
{
}
