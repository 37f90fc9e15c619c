#include "config/zor_form_config_rs_param_flds_rs485.h"

ZOR_Form_Config_RS_Param_Flds_RS485::ZOR_Form_Config_RS_Param_Flds_RS485(QWidget* parent)
    : ZOR_Form_Config_RS_Param_Flds(parent, nSensors)
{
}
