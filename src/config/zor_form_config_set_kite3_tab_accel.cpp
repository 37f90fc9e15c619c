#include "config/zor_form_config_set_kite3_tab_accel.h"

ZOR_Form_Config_Set_Kite3_Tab_Accel::ZOR_Form_Config_Set_Kite3_Tab_Accel(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("Accel", parent)
{
}
