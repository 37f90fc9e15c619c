#include "config/zor_form_config_rs_param_axis.h"

#include <QSpinBox>

ZOR_Form_Config_RS_Param_Axis::ZOR_Form_Config_RS_Param_Axis(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
{
    auto holdTime = new QSpinBox(this);
    holdTime->setRange(1, 255);
    addField("cfgrs_055", holdTime);
    m_bind.integer("holdTime", holdTime, 15);
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_RS_Param_Axis::readFormParam(CXMLWorkData* lpRoot) { m_bind.readNode(lpRoot, QStringLiteral("AXIS")); }
void ZOR_Form_Config_RS_Param_Axis::writeFormParam(CXMLWorkData* lpRoot) { m_bind.writeNode(lpRoot, QStringLiteral("AXIS")); }
void ZOR_Form_Config_RS_Param_Axis::setDefaultParam() { m_bind.setDefaults(); }
void ZOR_Form_Config_RS_Param_Axis::translateForm() { ZOR_Form_Config_RS_Param::translateForm(); }
