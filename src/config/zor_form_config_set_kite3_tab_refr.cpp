#include "config/zor_form_config_set_kite3_tab_refr.h"

ZOR_Form_Config_Set_Kite3_Tab_Refr::ZOR_Form_Config_Set_Kite3_Tab_Refr(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("Refr", parent)
{
}
