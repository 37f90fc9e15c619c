#include "config/zor_form_config_rs_param_tach.h"

#include "store/zor_settingsnode.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

namespace {

struct Model
{
    const char* lpCode;
    const char* lpCaption;
    const char* lpSpeed;
    const char* lpPassword;
};
const Model kModels[] = {
    {"ATOL", "АТОЛ Drive 5", "115200", "570913"},
    {"STRH", "Штрих-ТахоRUS", "19200", "8264019375"},
    {"MERK", "Меркурий ТА-001", "115200", "570913"},
    {"KONT", "VDO DTCO (Continental)", "9600", "570913"},
};

const Model& modelOf(const QString& qsCode)
{
    for (const Model& m : kModels)
        if (qsCode == QLatin1String(m.lpCode))
            return m;
    return kModels[0];
}

} // namespace

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Tach::models()
{
    static const ZOR_CaptionList list = ZOR_CaptionList::fromTable(kModels);
    return list;
}

QString ZOR_Form_Config_RS_Param_Tach::defaultPassword(const QString& qsModel)
{
    return QLatin1String(modelOf(qsModel).lpPassword);
}

ZOR_Form_Config_RS_Param_Tach::ZOR_Form_Config_RS_Param_Tach(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("TACH"))
{
    m_lpType = new QComboBox(this);
    m_lpLogin = new QLineEdit(this);
    m_lpPass = new QLineEdit(this);
    auto noPing = new QCheckBox(this);
    auto eventOff = new QCheckBox(this);
    addField("cfgrs_050", m_lpType);
    addField("cfgrs_051", m_lpLogin);
    addField("cfgrs_052", m_lpPass);
    addField("cfgrs_053", noPing);
    addField("cfgrs_054", eventOff);
    m_bind.caption("type", m_lpType, &models(), QLatin1String(kModels[0].lpCode))
        .text("login", m_lpLogin, QString())
        .text("pass", m_lpPass, QLatin1String(kModels[0].lpPassword))
        .check("noPing", noPing, false)
        .check("eventOff", eventOff, false);
    connect(m_lpType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_RS_Param_Tach::modelChanged);
    finishPage();
}

QString ZOR_Form_Config_RS_Param_Tach::model() const
{
    return models().currentCode(m_lpType);
}
void ZOR_Form_Config_RS_Param_Tach::setModel(const QString& qsModel)
{
    models().select(m_lpType, qsModel);
}
QString ZOR_Form_Config_RS_Param_Tach::login() const
{
    return m_lpLogin->text();
}
QString ZOR_Form_Config_RS_Param_Tach::password() const
{
    return m_lpPass->text();
}

void ZOR_Form_Config_RS_Param_Tach::modelChanged()
{
    m_lpLogin->clear();
    m_lpPass->setText(defaultPassword(model()));
    updateRs_Settings();
}

void ZOR_Form_Config_RS_Param_Tach::updateRs_Settings()
{
    requestLine(QLatin1String(modelOf(model()).lpSpeed));
}
