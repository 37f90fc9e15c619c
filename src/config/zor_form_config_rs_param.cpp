#include "config/zor_form_config_rs_param.h"

#include "config/zor_userparams.h"
#include "module/zor_language.h"

#include <QFormLayout>
#include <QLabel>

const char* const ZOR_Form_Config_RS_Param::qsStopBitDefault = "1";

namespace {

// Numbers and types only, which do not depend on the language: built once.
const QVector<ZOR_UserParamEntry>& catalogueEntries()
{
    static const QVector<ZOR_UserParamEntry> entries = [] {
        QVector<ZOR_UserParamEntry> list;
        ZOR_UserParams().getUserParamEntries(list);
        return list;
    }();
    return entries;
}

const ZOR_UserParamEntry* catalogueEntry(const QString& qsPrefix, const QString& qsId)
{
    if (!qsId.startsWith(qsPrefix.toLower()))
        return nullptr;
    bool ok = false;
    const int nNumber = qsId.mid(qsPrefix.size()).toInt(&ok);
    if (!ok)
        return nullptr;
    for (const ZOR_UserParamEntry& entry : catalogueEntries())
        if (entry.qsPrefix == qsPrefix && entry.qsMess == QString::number(nNumber))
            return &entry;
    return nullptr;
}

} // namespace

QString ZOR_Form_Config_RS_Param::catalogueName(const QString& qsPrefix, const QString& qsId)
{
    const ZOR_UserParamEntry* lpEntry = catalogueEntry(qsPrefix, qsId);
    return lpEntry ? ZOR_UserParams::getUserParamName(lpEntry->qsPrefix, lpEntry->qsMess, lpEntry->qsSuffix)
                   : QString();
}

QString ZOR_Form_Config_RS_Param::catalogueType(const QString& qsPrefix, const QString& qsId)
{
    const ZOR_UserParamEntry* lpEntry = catalogueEntry(qsPrefix, qsId);
    return lpEntry ? lpEntry->qsSuffix : QString();
}

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
