#include "config/zor_form_config_rs_param_flds_rs232.h"

ZOR_Form_Config_RS_Param_Flds_RS232::ZOR_Form_Config_RS_Param_Flds_RS232(QWidget* parent)
    : ZOR_Form_Config_RS_Param_Flds(parent, nSensors)
{
}
