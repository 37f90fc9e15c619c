#include "config/zor_form_config_rs_param_flds.h"

#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QVBoxLayout>

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Flds::sensorTypeCaptions()
{
    static const ZOR_CaptionList list = ZOR_CaptionList()
                                            .addText(QStringLiteral("0"), QStringLiteral("Omnicomm LLS"))
                                            .addText(QStringLiteral("1"), QStringLiteral("Escort TD"))
                                            .addText(QStringLiteral("2"), QStringLiteral("Technoton DUT-E"))
                                            .addText(QStringLiteral("3"), QStringLiteral("Mielta"))
                                            .add(QStringLiteral("4"), QStringLiteral("cfgrs_039"));
    return list;
}

ZOR_Form_Config_RS_Param_Flds::ZOR_Form_Config_RS_Param_Flds(QWidget* parent, int nSensors)
    : ZOR_Form_Config_RS_Param(parent)
    , m_filterModes(ZOR_CaptionList()
                        .add(QStringLiteral("0"), QStringLiteral("cfgrs_037"))
                        .add(QStringLiteral("1"), QStringLiteral("cfgrs_038")))
    , m_rows({{QString(), ZOR_RowBuilder::Label},
          {QStringLiteral("cfgt6_108"), ZOR_RowBuilder::Check, "use", QStringLiteral("0")},
          {QStringLiteral("cfgrs_030"), ZOR_RowBuilder::Caption, "type", QStringLiteral("0"), 0, 0,
              &sensorTypeCaptions()},
          {QStringLiteral("cfgrs_031"), ZOR_RowBuilder::Integer, "address", QStringLiteral("1"), 0, 255},
          {QStringLiteral("cfgrs_032"), ZOR_RowBuilder::Integer, "thld", QStringLiteral("5"), 0, 4095},
          {QStringLiteral("cfgrs_033"), ZOR_RowBuilder::Check, "thldOff", QStringLiteral("0")},
          {QStringLiteral("cfgrs_034"), ZOR_RowBuilder::Caption, "filterMode", QStringLiteral("0"), 0, 0,
              &m_filterModes},
          {QStringLiteral("cfgrs_035"), ZOR_RowBuilder::Integer, "filterLength", QStringLiteral("5"), 1, 30},
          {QStringLiteral("cfgrs_036"), ZOR_RowBuilder::Integer, "filterLvl", QStringLiteral("5"), 0, 10}})
{
    auto box = new QVBoxLayout(this);
    box->setContentsMargins(4, 4, 4, 4);
    auto grid = new QGridLayout;
    box->addLayout(grid);
    box->addStretch();
    m_rows.build(
        grid, nSensors, [](int n) { return QStringLiteral("%1 %2").arg(zorTr(QStringLiteral("cfgt6_036"))).arg(n); });
    grid->setColumnStretch(FilterLvl + 1, 1);
    for (int i = 0; i < nSensors; ++i) {
        connect(m_rows.widgetAs<QCheckBox>(i, Use), &QCheckBox::toggled, this, [this, i] { enableSensor(i); });
        connect(m_rows.widgetAs<QCheckBox>(i, ThldOff), &QCheckBox::toggled, this, [this, i] { enableSensor(i); });
        connect(m_rows.widgetAs<QComboBox>(i, FilterMode), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, i] { enableSensor(i); });
    }
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_RS_Param_Flds::enableSensor(int nIndex)
{
    const bool bUse = m_rows.widgetAs<QCheckBox>(nIndex, Use)->isChecked();
    const bool bKalman = m_filterModes.currentCode(m_rows.widgetAs<QComboBox>(nIndex, FilterMode))
        == QLatin1String("1");
    for (int c = Type; c <= FilterLvl; ++c)
        m_rows.widget(nIndex, c)->setEnabled(bUse);
    m_rows.widget(nIndex, Thld)->setEnabled(bUse && !m_rows.widgetAs<QCheckBox>(nIndex, ThldOff)->isChecked());
    m_rows.widget(nIndex, FilterLength)->setEnabled(bUse && !bKalman);
    m_rows.widget(nIndex, FilterLvl)->setEnabled(bUse && bKalman);
}

void ZOR_Form_Config_RS_Param_Flds::readFormParam(CXMLWorkData* lpRoot)
{
    m_rows.readNodes(lpRoot, QStringLiteral("FS"));
}

void ZOR_Form_Config_RS_Param_Flds::writeFormParam(CXMLWorkData* lpRoot)
{
    m_rows.writeNodes(lpRoot, QStringLiteral("FS"));
}

void ZOR_Form_Config_RS_Param_Flds::setDefaultParam()
{
    m_rows.setDefaults();
    for (int i = 0; i < m_rows.rowCount(); ++i)
        enableSensor(i);
}

void ZOR_Form_Config_RS_Param_Flds::setFormEnabled(bool bEnabled)
{
    setEnabled(bEnabled);
}

void ZOR_Form_Config_RS_Param_Flds::translateForm()
{
    ZOR_Form_Config_RS_Param::translateForm();
    m_rows.translate();
}
