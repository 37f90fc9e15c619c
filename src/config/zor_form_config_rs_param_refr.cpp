#include "config/zor_form_config_rs_param_refr.h"

#include "module/zor_global.h"
#include "module/zor_language.h"

#include <QComboBox>

namespace {

struct Model
{
    const char* lpCode;
    const char* lpCaption;
    const char* lpSpeed;
};
const Model kModels[] = {
    {"IQFREEZE", "iQFreeze", "9600"}, {"DATACOLD", "DataCold", "38400"}, {"CARRIER", "Carrier", "9600"}};

} // namespace

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Refr::models()
{
    static const ZOR_CaptionList list = ZOR_CaptionList::fromTable(kModels);
    return list;
}

ZOR_Form_Config_RS_Param_Refr::ZOR_Form_Config_RS_Param_Refr(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("REFR"))
{
    for (const char* lpSeconds : {"10", "30", "60", "120", "300"}) {
        const QString qsSeconds = QLatin1String(lpSeconds);
        m_periods.addComposed(qsSeconds, [qsSeconds] { return zorTr(QStringLiteral("cfgrs_065")).arg(qsSeconds); });
    }
    m_lpType = new QComboBox(this);
    m_lpPeriod = new QComboBox(this);
    addField("cfgrs_050", m_lpType);
    addField("cfgrs_064", m_lpPeriod);
    m_bind.caption("type", m_lpType, &models(), QLatin1String(kModels[0].lpCode))
        .caption("period", m_lpPeriod, &m_periods, QStringLiteral("60"));
    connect(m_lpType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_RS_Param_Refr::updateRs_Settings);
    finishPage();
}

QString ZOR_Form_Config_RS_Param_Refr::model() const
{
    return models().currentCode(m_lpType);
}
void ZOR_Form_Config_RS_Param_Refr::setModel(const QString& qsModel)
{
    models().select(m_lpType, qsModel);
}

void ZOR_Form_Config_RS_Param_Refr::updateRs_Settings()
{
    requestLine(QLatin1String(kModels[qMax(0, models().indexOfCode(model()))].lpSpeed));
}

QString ZOR_Form_Config_RS_Param_Refr::getStrProtocolUserData(QString qsId)
{
    const QString qsName = catalogueName(glqsRefrPreffix_RC, qsId);
    return qsName.isEmpty() ? catalogueName(glqsRefrPreffix_AX, qsId) : qsName;
}

QString ZOR_Form_Config_RS_Param_Refr::getTypeUserParam(QString qsId)
{
    const QString qsType = catalogueType(glqsRefrPreffix_RC, qsId);
    return qsType.isEmpty() ? catalogueType(glqsRefrPreffix_AX, qsId) : qsType;
}
