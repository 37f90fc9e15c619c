#include "config/zor_form_config_rs_param_axis.h"

#include <QSpinBox>

ZOR_Form_Config_RS_Param_Axis::ZOR_Form_Config_RS_Param_Axis(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("AXIS"))
{
    auto holdTime = new QSpinBox(this);
    holdTime->setRange(1, 255);
    addField("cfgrs_055", holdTime);
    m_bind.integer("holdTime", holdTime, 15);
    finishPage();
}
