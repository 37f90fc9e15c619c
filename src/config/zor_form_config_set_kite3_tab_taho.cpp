#include "config/zor_form_config_set_kite3_tab_taho.h"

ZOR_Form_Config_Set_Kite3_Tab_Taho::ZOR_Form_Config_Set_Kite3_Tab_Taho(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("Taho", parent)
{
}
