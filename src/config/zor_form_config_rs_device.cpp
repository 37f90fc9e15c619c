#include "config/zor_form_config_rs_device.h"

#include <QComboBox>

ZOR_Form_Config_RS_Device::ZOR_Form_Config_RS_Device(QWidget* parent, const QString& qsNode)
    : ZOR_Form_Config_RS_Param(parent)
    , m_qsNode(qsNode)
{
}

void ZOR_Form_Config_RS_Device::readFormParam(CXMLWorkData* lpRoot)
{
    m_bind.readNode(lpRoot, m_qsNode);
    valuesShown();
}

void ZOR_Form_Config_RS_Device::writeFormParam(CXMLWorkData* lpRoot)
{
    m_bind.writeNode(lpRoot, m_qsNode);
}

void ZOR_Form_Config_RS_Device::setDefaultParam()
{
    m_bind.setDefaults();
    valuesShown();
}

void ZOR_Form_Config_RS_Device::translateForm()
{
    ZOR_Form_Config_RS_Param::translateForm();
    for (const ZOR_FormBinding::Row& row : m_bind.rows())
        if (row.kind == ZOR_FormBinding::Caption && row.lpList)
            row.lpList->fill(static_cast<QComboBox*>(row.lpWidget));
}

void ZOR_Form_Config_RS_Device::finishPage()
{
    translateForm();
    setDefaultParam();
    watchEdits(this);
}
