#include "config/zor_form_config_rs_param_pcnt.h"

#include "module/zor_global.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Pcnt::models()
{
    static const ZOR_CaptionList list = ZOR_CaptionList()
                                            .addText(QStringLiteral("PP01"), QStringLiteral("PP-01"))
                                            .addText(QStringLiteral("ACOND"), QStringLiteral("ACOND"))
                                            .addText(QStringLiteral("ACOND2"), QStringLiteral("ACOND-2"));
    return list;
}

ZOR_Form_Config_RS_Param_Pcnt::ZOR_Form_Config_RS_Param_Pcnt(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("PCNT"))
    , m_events(ZOR_CaptionList()
                   .add(QStringLiteral("0"), QStringLiteral("cfgrs_070"))
                   .add(QStringLiteral("1"), QStringLiteral("cfgrs_071"))
                   .add(QStringLiteral("2"), QStringLiteral("cfgrs_072")))
{
    m_lpType = new QComboBox(this);
    addField("cfgrs_050", m_lpType);
    m_bind.caption("type", m_lpType, &models(), QStringLiteral("PP01"));
    static const char* const kIdAttrs[nDoors] = {"id1", "id2", "id3", "id4", "id5", "id6", "id7"};
    for (int i = 0; i < nDoors; ++i) {
        auto id = new QSpinBox(this);
        id->setRange(1, 250);
        addField("cfgrs_073", id);
        m_ids.append(id);
        m_bind.integer(kIdAttrs[i], id, i + 1);
    }
    m_lpEvent = new QComboBox(this);
    m_lpDoors = new QSpinBox(this);
    m_lpDoors->setRange(1, nDoors);
    auto offTime = new QSpinBox(this);
    offTime->setRange(0, 999999999);
    auto coordTime = new QSpinBox(this);
    coordTime->setRange(0, 3600);
    addField("cfgrs_074", m_lpEvent);
    addField("cfgrs_075", m_lpDoors);
    addField("cfgrs_076", offTime);
    addField("cfgrs_077", coordTime);
    m_bind.caption("countEvent", m_lpEvent, &m_events, QStringLiteral("1"))
        .integer("door", m_lpDoors, 1)
        .integer("offTime", offTime, 1800)
        .integer("coordTime", coordTime, 10);
    connect(m_lpDoors, QOverload<int>::of(&QSpinBox::valueChanged), this, &ZOR_Form_Config_RS_Param_Pcnt::doorsChanged);
    finishPage();
}

void ZOR_Form_Config_RS_Param_Pcnt::doorsChanged()
{
    for (int i = 0; i < nDoors; ++i)
        m_ids[i]->setEnabled(i < m_lpDoors->value());
}

QString ZOR_Form_Config_RS_Param_Pcnt::getStrProtocolUserData(QString qsId)
{
    return catalogueName(glqsPcntPreffix_CO, qsId);
}
QString ZOR_Form_Config_RS_Param_Pcnt::getTypeUserParam(QString qsId)
{
    return catalogueType(glqsPcntPreffix_CO, qsId);
}

void ZOR_Form_Config_RS_Param_Pcnt::translateForm()
{
    ZOR_Form_Config_RS_Device::translateForm();
    for (int i = 0; i < nDoors; ++i)
        if (auto label = qobject_cast<QLabel*>(formLayout()->labelForField(m_ids[i])))
            label->setText(label->text().arg(i + 1));
}
