#include "config/zor_form_config_rs_param_ddu.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_DDU::models()
{
    static const ZOR_CaptionList list = ZOR_CaptionList()
                                            .addText(QStringLiteral("DV01"), QStringLiteral("DV-01"))
                                            .addText(QStringLiteral("ICON"), QStringLiteral("Omnicom ICON"));
    return list;
}

ZOR_Form_Config_RS_Param_DDU::ZOR_Form_Config_RS_Param_DDU(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("DDU"))
{
    m_lpType = new QComboBox(this);
    auto showFuel = new QCheckBox(this);
    auto period = new QSpinBox(this);
    period->setRange(5, 3600);
    auto address = new QSpinBox(this);
    address->setRange(1, 254);
    m_lpPeriod = period;
    m_lpAddress = address;
    addField("cfgrs_050", m_lpType);
    addField("cfgrs_062", showFuel);
    addField("cfgrs_063", period);
    addField("cfgrs_056", address);
    m_bind.caption("type", m_lpType, &models(), QStringLiteral("DV01"))
        .check("showFuelLvl", showFuel, false)
        .integer("infoPeriod", period, 30)
        .integer("address", address, 7);
    connect(m_lpType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_RS_Param_DDU::modelChanged);
    finishPage();
}

QString ZOR_Form_Config_RS_Param_DDU::model() const
{
    return models().currentCode(m_lpType);
}

void ZOR_Form_Config_RS_Param_DDU::modelChanged()
{
    const bool bDv01 = model() == QLatin1String("DV01");
    m_lpPeriod->setEnabled(bDv01);
    m_lpAddress->setEnabled(!bDv01);
}
