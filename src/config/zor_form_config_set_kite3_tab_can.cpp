#include "config/zor_form_config_set_kite3_tab_can.h"

ZOR_Form_Config_Set_Kite3_Tab_CAN::ZOR_Form_Config_Set_Kite3_Tab_CAN(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("CAN", parent)
{
}
