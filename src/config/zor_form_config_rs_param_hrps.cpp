#include "config/zor_form_config_rs_param_hrps.h"

ZOR_Form_Config_RS_Param_Hrps::ZOR_Form_Config_RS_Param_Hrps(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
{
}

void ZOR_Form_Config_RS_Param_Hrps::updateRs_Settings()
{
    requestLine(QStringLiteral("38400"));
}
