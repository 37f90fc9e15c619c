#include "config/zor_form_config_rs_param_canfms.h"

ZOR_Form_Config_RS_Param_CanFms::ZOR_Form_Config_RS_Param_CanFms(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
{
}
