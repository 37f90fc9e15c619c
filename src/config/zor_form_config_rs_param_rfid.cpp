#include "config/zor_form_config_rs_param_rfid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Rfid::models()
{
    static const ZOR_CaptionList list = ZOR_CaptionList()
                                            .addText(QStringLiteral("ESCORT"), QStringLiteral("Escort RFID"))
                                            .addText(QStringLiteral("LLS"), QStringLiteral("LLS"))
                                            .addText(QStringLiteral("MIELTA"), QStringLiteral("Mielta RFID"))
                                            .addText(QStringLiteral("ADM20"), QStringLiteral("ADM20"));
    return list;
}

ZOR_Form_Config_RS_Param_Rfid::ZOR_Form_Config_RS_Param_Rfid(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("RFID"))
    , m_modes(ZOR_CaptionList()
                  .add(QStringLiteral("0"), QStringLiteral("cfgrs_060"))
                  .add(QStringLiteral("1"), QStringLiteral("cfgrs_061")))
{
    m_lpType = new QComboBox(this);
    auto id = new QSpinBox(this);
    id->setRange(0, 255);
    auto holdTime = new QSpinBox(this);
    holdTime->setRange(0, 86400);
    auto nearOnly = new QCheckBox(this);
    auto minLvl = new QSpinBox(this);
    minLvl->setRange(-128, 0);
    auto mode = new QComboBox(this);
    addField("cfgrs_050", m_lpType);
    addField("cfgrs_056", id);
    addField("cfgrs_055", holdTime);
    addField("cfgrs_057", nearOnly);
    addField("cfgrs_058", minLvl);
    addField("cfgrs_059", mode);
    m_bind.caption("type", m_lpType, &models(), QStringLiteral("ESCORT"))
        .integer("id", id, 1)
        .integer("holdTime", holdTime, 60)
        .check("nearOnly", nearOnly, false)
        .integer("minLvl", minLvl, -128)
        .caption("mode", mode, &m_modes, QStringLiteral("0"));
    finishPage();
}
