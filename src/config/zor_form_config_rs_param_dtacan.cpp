#include "config/zor_form_config_rs_param_dtacan.h"

#include "store/zor_settingsnode.h"

#include <QSpinBox>

ZOR_Form_Config_RS_Param_DtaCan::ZOR_Form_Config_RS_Param_DtaCan(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("DTCN"))
{
    auto address = new QSpinBox(this);
    address->setRange(0, 255);
    addField("cfgrs_056", address);
    m_bind.integer("address", address, 1);
    finishPage();
}

void ZOR_Form_Config_RS_Param_DtaCan::readFormParam(CXMLWorkData* lpRoot)
{
    const auto node = ZOR_SettingsNode::openForRead(lpRoot, nodeName());
    m_bPresent = node != nullptr;
    if (node)
        m_bind.read(node.get());
}

void ZOR_Form_Config_RS_Param_DtaCan::writeFormParam(CXMLWorkData* lpRoot)
{
    if (m_bPresent)
        m_bind.writeNode(lpRoot, nodeName());
}

void ZOR_Form_Config_RS_Param_DtaCan::setDefaultParam()
{
    m_bPresent = false;
    ZOR_Form_Config_RS_Device::setDefaultParam();
}
