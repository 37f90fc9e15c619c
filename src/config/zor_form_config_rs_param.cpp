#include "config/zor_form_config_rs_param.h"

#include "module/zor_language.h"

#include <QFormLayout>
#include <QLabel>

const char* const ZOR_Form_Config_RS_Param::qsStopBitDefault = "1";

ZOR_Form_Config_RS_Param::ZOR_Form_Config_RS_Param(QWidget* parent)
    : ZOR_Form_Config(parent)
{
}

void ZOR_Form_Config_RS_Param::translateForm()
{
    for (const auto& caption : qAsConst(m_captions))
        caption.first->setText(zorTr(caption.second));
}

QFormLayout* ZOR_Form_Config_RS_Param::formLayout()
{
    if (!m_lpForm) {
        m_lpForm = new QFormLayout(this);
        m_lpForm->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    }
    return m_lpForm;
}

void ZOR_Form_Config_RS_Param::addField(const char* lpKey, QWidget* lpEditor)
{
    auto label = new QLabel(this);
    const QString qsKey = QLatin1String(lpKey);
    label->setText(zorTr(qsKey));
    m_captions.append({label, qsKey});
    formLayout()->addRow(label, lpEditor);
}

void ZOR_Form_Config_RS_Param::requestLine(const QString& qsSpeed)
{
    emit changeRs_Settings(this, qsSpeed, QStringLiteral("None"), QLatin1String(qsStopBitDefault));
}
