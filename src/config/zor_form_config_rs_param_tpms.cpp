#include "config/zor_form_config_rs_param_tpms.h"

#include <QComboBox>
#include <QSpinBox>

namespace {

struct Model
{
    const char* lpCode;
    const char* lpCaption;
    const char* lpSpeed;
};
const Model kModels[] = {
    {"PRESSPRO", "PressurePro", "38400"},
    {"BRDGESTN", "Bridgestone", "38400"},
    {"TM508", "TM508T22U", "9600"},
    {"TPMS613", "TPMS 6-13", "19200"},
    {"TD18", "TD18,20,21", "19200"},
    {"TD21", "TD21", "19200"},
};

} // namespace

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Tpms::models()
{
    static const ZOR_CaptionList list = ZOR_CaptionList::fromTable(kModels);
    return list;
}

ZOR_Form_Config_RS_Param_Tpms::ZOR_Form_Config_RS_Param_Tpms(QWidget* parent)
    : ZOR_Form_Config_RS_Device(parent, QStringLiteral("TPMS"))
{
    m_lpType = new QComboBox(this);
    auto holdTime = new QSpinBox(this);
    holdTime->setRange(1, 255);
    addField("cfgrs_050", m_lpType);
    addField("cfgrs_055", holdTime);
    m_bind.caption("type", m_lpType, &models(), QLatin1String(kModels[0].lpCode)).integer("holdTime", holdTime, 15);
    connect(m_lpType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_RS_Param_Tpms::updateRs_Settings);
    finishPage();
}

QString ZOR_Form_Config_RS_Param_Tpms::model() const
{
    return models().currentCode(m_lpType);
}
void ZOR_Form_Config_RS_Param_Tpms::setModel(const QString& qsModel)
{
    models().select(m_lpType, qsModel);
}

void ZOR_Form_Config_RS_Param_Tpms::updateRs_Settings()
{
    const int n = qMax(0, models().indexOfCode(model()));
    requestLine(QLatin1String(kModels[n].lpSpeed));
}
