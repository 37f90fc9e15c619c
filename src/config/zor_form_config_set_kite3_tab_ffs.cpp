#include "config/zor_form_config_set_kite3_tab_ffs.h"

ZOR_Form_Config_Set_Kite3_Tab_FFS::ZOR_Form_Config_Set_Kite3_Tab_FFS(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab("FFS", parent)
{
}
