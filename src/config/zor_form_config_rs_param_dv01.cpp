#include "config/zor_form_config_rs_param_dv01.h"

#include "store/zor_settingsnode.h"

ZOR_Form_Config_RS_Param_Dv01::ZOR_Form_Config_RS_Param_Dv01(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
{
}

void ZOR_Form_Config_RS_Param_Dv01::writeFormParam(CXMLWorkData* lpRoot)
{
    ZOR_SettingsNode::openForWrite(lpRoot, QStringLiteral("DV01"))->writeParameters();
}
