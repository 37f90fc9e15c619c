#include "config/zor_form_config_rs_param_notuse.h"

ZOR_Form_Config_RS_Param_NotUse::ZOR_Form_Config_RS_Param_NotUse(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
{
}
