#include "config/zor_form_config_rs_param_canlog.h"

ZOR_Form_Config_RS_Param_CanLog::ZOR_Form_Config_RS_Param_CanLog(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
{
}
