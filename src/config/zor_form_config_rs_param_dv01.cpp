#include "config/zor_form_config_rs_param_dv01.h"

ZOR_Form_Config_RS_Param_Dv01::ZOR_Form_Config_RS_Param_Dv01(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("DV01"))
{
    finishPage();
}
