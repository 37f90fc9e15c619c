#include "config/zor_form_config_can_techotons6.h"

#include "ui_zor_form_config_can_techotons6.h"

#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>

namespace {

enum DutColumn { ColCaption, ColUse, ColAddress, ColOutFs, ColFilterMode, ColFilterLength, ColFilterLvl };

constexpr int kMaxAddress = 254;
constexpr int kDfmAddress1 = 11;
constexpr int kDfmAddress2 = 12;

using UseSlot = void (ZOR_Form_Config_CAN_TechotonS6::*)(int);

} // namespace

const char* const ZOR_Form_Config_CAN_TechotonS6::qsNodeName = "S6";

ZOR_Form_Config_CAN_TechotonS6::ZOR_Form_Config_CAN_TechotonS6(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_CAN_TechotonS6)
    , m_outFs(ZOR_CaptionList()
                  .addText(QStringLiteral("1023"), QStringLiteral("0 - 1023"))
                  .addText(QStringLiteral("4095"), QStringLiteral("0 - 4095"))
                  .addText(QStringLiteral("65535"), QStringLiteral("0 - 65535")))
    , m_filterModes(ZOR_CaptionList()
                        .add(QStringLiteral("0"), QStringLiteral("cfgcan_021"))
                        .add(QStringLiteral("1"), QStringLiteral("cfgcan_022")))
    , m_dfmModes(ZOR_CaptionList()
                     .add(QStringLiteral("0"), QStringLiteral("cfgcan_031"))
                     .add(QStringLiteral("1"), QStringLiteral("cfgcan_032"))
                     .add(QStringLiteral("2"), QStringLiteral("cfgcan_033")))
    , m_duts({{QString(), ZOR_RowBuilder::Label}, {QStringLiteral("cfgcan_013"), ZOR_RowBuilder::Check},
          {QStringLiteral("cfgcan_014"), ZOR_RowBuilder::Integer, "address", QStringLiteral("0"), 0, kMaxAddress},
          {QStringLiteral("cfgcan_015"), ZOR_RowBuilder::Caption, nullptr, QString::number(nDefaultOutFs), 0, 0,
              &m_outFs},
          {QStringLiteral("cfgcan_016"), ZOR_RowBuilder::Index, "filterMode", QStringLiteral("0"), 0, 0,
              &m_filterModes},
          {QStringLiteral("cfgcan_017"), ZOR_RowBuilder::Integer, "filterLength", QStringLiteral("5"), 1, 30},
          {QStringLiteral("cfgcan_018"), ZOR_RowBuilder::Integer, "filterLvl", QStringLiteral("5"), 0, 10}})
{
    ui->setupUi(this);
    initForm();
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

ZOR_Form_Config_CAN_TechotonS6::~ZOR_Form_Config_CAN_TechotonS6() = default;

void ZOR_Form_Config_CAN_TechotonS6::initForm()
{
    static const UseSlot kUseSlots[nDutCount] = {
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_1,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_2,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_3,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_4,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_5,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_6,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_7,
        &ZOR_Form_Config_CAN_TechotonS6::slot_stateChanged_DutE_Use_8,
    };
    m_duts.build(
        ui->gridLayout_Dut, nDutCount, [](int n) { return zorTr("cfgcan_012").arg(n); }, 1,
        [this](int nIndex, QVector<QWidget*>& widgets) {
            connect(static_cast<QCheckBox*>(widgets[ColUse]), &QCheckBox::stateChanged, this, kUseSlots[nIndex]);
            auto lpBox = static_cast<QComboBox*>(widgets[ColOutFs]);
            connect(lpBox, QOverload<int>::of(&QComboBox::activated), this,
                [this, lpBox] { changeOutFsTypeAll(lpBox->currentText()); });
        });
    m_dfm.index("mode", ui->comboBox_DfmMode, 0)
        .integer("address1", ui->spinBox_DfmAddress1, kDfmAddress1)
        .integer("address2", ui->spinBox_DfmAddress2, kDfmAddress2);
    ui->spinBox_DfmAddress1->setRange(1, kMaxAddress);
    ui->spinBox_DfmAddress2->setRange(1, kMaxAddress);
    connect(ui->comboBox_DfmMode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_CAN_TechotonS6::slot_currentIndexChanged_DfmMode);
}

void ZOR_Form_Config_CAN_TechotonS6::translateForm()
{
    ui->groupBox_Dfm->setTitle(zorTr("cfgcan_030"));
    ui->groupBox_Dut->setTitle(zorTr("cfgcan_011"));
    ui->label_DfmMode->setText(zorTr("cfgcan_034"));
    ui->label_DfmAddress1->setText(zorTr("cfgcan_035"));
    ui->label_DfmAddress2->setText(zorTr("cfgcan_036"));
    m_dfmModes.fill(ui->comboBox_DfmMode);
    m_duts.translate();
    slot_currentIndexChanged_DfmMode(ui->comboBox_DfmMode->currentIndex());
}

void ZOR_Form_Config_CAN_TechotonS6::setDefaultParam()
{
    m_dfm.setDefaults();
    m_duts.setDefaults();
    changeOutFsTypeAll(getDutE_Text4Number(nDefaultOutFs));
    for (int i = 0; i < nDutCount; ++i) {
        m_nLastAddress[i] = i + 1;
        showUse(i, false);
    }
    slot_currentIndexChanged_DfmMode(ui->comboBox_DfmMode->currentIndex());
}

void ZOR_Form_Config_CAN_TechotonS6::readFormParam(CXMLWorkData* lpNode)
{
    const int nOutFs = lpNode ? lpNode->readInteger("outFS", nDefaultOutFs) : nDefaultOutFs;
    const QString qsOutFs = getDutE_Text4Number(nOutFs);
    changeOutFsTypeAll(qsOutFs.isEmpty() ? getDutE_Text4Number(nDefaultOutFs) : qsOutFs);
    m_dfm.readNode(lpNode, QStringLiteral("S6DFM1"));
    // Address 0 must survive the read: it is what marks a sensor unused.
    for (int i = 0; i < nDutCount; ++i) {
        dutAddress(i)->setMinimum(0);
        dutAddress(i)->setSpecialValueText(QString());
    }
    m_duts.readNodes(lpNode, QStringLiteral("S6DUT"));
    for (int i = 0; i < nDutCount; ++i) {
        const int nAddress = dutAddress(i)->value();
        m_nLastAddress[i] = nAddress > 0 ? nAddress : i + 1;
        showUse(i, nAddress > 0);
    }
    slot_currentIndexChanged_DfmMode(ui->comboBox_DfmMode->currentIndex());
}

void ZOR_Form_Config_CAN_TechotonS6::writeFormParam(CXMLWorkData* lpNode)
{
    if (!lpNode)
        return;
    lpNode->writeInteger("outFS", outFs());
    lpNode->writeParameters();
    m_dfm.writeNode(lpNode, QStringLiteral("S6DFM1"));
    m_duts.writeNodes(lpNode, QStringLiteral("S6DUT"));
}

int ZOR_Form_Config_CAN_TechotonS6::getDutE_Number4Text(const QString& qsText) const
{
    return m_outFs.codeOf(qsText).toInt();
}

QString ZOR_Form_Config_CAN_TechotonS6::getDutE_Text4Number(int nNumber) const
{
    return m_outFs.captionOf(QString::number(nNumber));
}

void ZOR_Form_Config_CAN_TechotonS6::changeOutFsTypeAll(const QString& qsText)
{
    const QString qsCode = m_outFs.codeOf(qsText);
    if (qsCode.isEmpty())
        return;
    for (int i = 0; i < nDutCount; ++i) {
        const QSignalBlocker blocker(dutOutFs(i));
        m_outFs.select(dutOutFs(i), qsCode);
    }
}

QCheckBox* ZOR_Form_Config_CAN_TechotonS6::dutUse(int nIndex) const
{
    return m_duts.widgetAs<QCheckBox>(nIndex, ColUse);
}
QSpinBox* ZOR_Form_Config_CAN_TechotonS6::dutAddress(int nIndex) const
{
    return m_duts.widgetAs<QSpinBox>(nIndex, ColAddress);
}
QComboBox* ZOR_Form_Config_CAN_TechotonS6::dutOutFs(int nIndex) const
{
    return m_duts.widgetAs<QComboBox>(nIndex, ColOutFs);
}
QComboBox* ZOR_Form_Config_CAN_TechotonS6::dutFilterMode(int nIndex) const
{
    return m_duts.widgetAs<QComboBox>(nIndex, ColFilterMode);
}
QSpinBox* ZOR_Form_Config_CAN_TechotonS6::dutFilterLength(int nIndex) const
{
    return m_duts.widgetAs<QSpinBox>(nIndex, ColFilterLength);
}
QSpinBox* ZOR_Form_Config_CAN_TechotonS6::dutFilterLvl(int nIndex) const
{
    return m_duts.widgetAs<QSpinBox>(nIndex, ColFilterLvl);
}

void ZOR_Form_Config_CAN_TechotonS6::slot_currentIndexChanged_DfmMode(int nIndex)
{
    ui->spinBox_DfmAddress1->setEnabled(nIndex >= 1);
    ui->spinBox_DfmAddress2->setEnabled(nIndex >= 2);
}

void ZOR_Form_Config_CAN_TechotonS6::useChanged(int nIndex, int nState)
{
    const bool bUse = nState == Qt::Checked;
    QSpinBox* lpAddress = dutAddress(nIndex);
    if (bUse) {
        if (lpAddress->value() == 0)
            lpAddress->setValue(m_nLastAddress[nIndex]);
    } else if (lpAddress->value() > 0) {
        m_nLastAddress[nIndex] = lpAddress->value();
    }
    showUse(nIndex, bUse);
}

// The use box, the address's range and the enabled states as one: an unused
// sensor holds address 0, a used one 1..254.
void ZOR_Form_Config_CAN_TechotonS6::showUse(int nIndex, bool bUse)
{
    {
        const QSignalBlocker blocker(dutUse(nIndex));
        dutUse(nIndex)->setChecked(bUse);
    }
    QSpinBox* lpAddress = dutAddress(nIndex);
    if (bUse) {
        lpAddress->setMinimum(1);
        lpAddress->setSpecialValueText(QString());
    } else {
        lpAddress->setMinimum(0);
        lpAddress->setValue(0);
        lpAddress->setSpecialValueText(QStringLiteral("-"));
    }
    for (int nColumn : {ColAddress, ColOutFs, ColFilterMode, ColFilterLength, ColFilterLvl})
        m_duts.widget(nIndex, nColumn)->setEnabled(bUse);
}

int ZOR_Form_Config_CAN_TechotonS6::outFs() const
{
    const int nNumber = getDutE_Number4Text(dutOutFs(0)->currentText());
    return nNumber > 0 ? nNumber : nDefaultOutFs;
}
