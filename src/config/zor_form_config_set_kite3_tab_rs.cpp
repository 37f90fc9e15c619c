#include "config/zor_form_config_set_kite3_tab_rs.h"

ZOR_Form_Config_Set_Kite3_Tab_RS::ZOR_Form_Config_Set_Kite3_Tab_RS(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("RS", parent)
{
}
