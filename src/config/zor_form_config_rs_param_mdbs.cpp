#include "config/zor_form_config_rs_param_mdbs.h"

#include "config/zor_datatypes.h"
#include "module/zor_language.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cctype>
#include <climits>

const QString glqsMbPreffix = QStringLiteral("MB");
const QString glqsMbPreffixXml = QStringLiteral("mb");

namespace {

const QString kUserParamsNode = QStringLiteral("USRPRMS");
const QString kRowNode = QStringLiteral("MDBSPRM");
const QString kEventNode = QStringLiteral("MDBSEVNT");

constexpr int kRegisterMax = 0xFFFF;
constexpr int kCycleStep = 500;
constexpr int kThresholdLimit = 2147483647;

// Modbus numbering: the register kind (the read function) selects a block of
// numbers, the address is the offset in the block.
struct RegisterBlock
{
    int nCmd;
    int nFirst; // number of address 0
};
const RegisterBlock kBlocks[] = {{1, 1}, {2, 10001}, {4, 30001}, {3, 40001}};
constexpr int kBlockLength = 9999;

// Numbers from 20000 to 30000 belong to no block.
bool isForbiddenNumber(int nNumber)
{
    return nNumber >= 20000 && nNumber <= 30000;
}

void setNumberColours(QSpinBox* lpSpin, bool bAlarm, bool bPlain)
{
    QPalette palette = lpSpin->parentWidget() ? lpSpin->parentWidget()->palette() : QPalette();
    if (!bPlain) {
        palette.setColor(QPalette::Base, bAlarm ? Qt::red : Qt::white);
        palette.setColor(QPalette::Text, bAlarm ? Qt::white : Qt::black);
    }
    lpSpin->setPalette(palette);
}

// Rebuilds a list in ascending order, keeping the shown text.
void sortItems(QComboBox* lpBox)
{
    QStringList items;
    for (int i = 0; i < lpBox->count(); ++i)
        items << lpBox->itemText(i);
    items.sort();
    const QString qsCurrent = lpBox->currentText();
    const QSignalBlocker blocker(lpBox);
    lpBox->clear();
    lpBox->addItems(items);
    lpBox->setCurrentIndex(lpBox->findText(qsCurrent));
}

// A register address as stored: hexadecimal text, saturated to 0xffff however
// many digits it has; text that is not hexadecimal is 0.
int registerAddress(const QString& qsValue)
{
    QString qsDigits = qsValue.trimmed();
    if (qsDigits.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        qsDigits.remove(0, 2);
    if (qsDigits.isEmpty())
        return 0;
    for (const QChar c : qsDigits)
        if (!std::isxdigit(static_cast<unsigned char>(c.toLatin1())))
            return 0;
    while (qsDigits.size() > 1 && qsDigits.startsWith(QLatin1Char('0')))
        qsDigits.remove(0, 1);
    if (qsDigits.size() > 4)
        return kRegisterMax;
    return qMin(int(qsDigits.toUInt(nullptr, 16)), kRegisterMax);
}

using Column = ZOR_RowBuilder::Column;

// The data type: the code of the shown caption, the first type when unknown.
void bindDataType(ZOR_FormBinding& bind, const char* lpAttr, QWidget* lpWidget)
{
    auto prm = static_cast<QComboBox*>(lpWidget);
    bind.custom(
        lpAttr, prm, ZOR_DataTypes::codes().first(), [prm] { return ZOR_DataTypes::captionList().currentCode(prm); },
        [prm](const QString& qsValue) {
            ZOR_DataTypes::captionList().selectOr(prm, qsValue, ZOR_DataTypes::codes().first());
        });
}

// The register address: shown and stored in hexadecimal.
void bindRegister(ZOR_FormBinding& bind, const char* lpAttr, QWidget* lpWidget)
{
    auto reg = static_cast<QSpinBox*>(lpWidget);
    bind.custom(
        lpAttr, reg, QStringLiteral("0"), [reg] { return QString::number(reg->value(), 16); },
        [reg](const QString& qsValue) { reg->setValue(registerAddress(qsValue)); });
}

// A caption list with number codes; a value it lacks shows nDefault.
Column::Bind bindNumberCaption(const ZOR_CaptionList* lpList, int nDefault)
{
    return [lpList, nDefault](ZOR_FormBinding& bind, const char* lpAttr, QWidget* lpWidget) {
        bind.numberCaption(lpAttr, static_cast<QComboBox*>(lpWidget), lpList, nDefault, nDefault);
    };
}

} // namespace

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Mdbs::registerTypeCaptions()
{
    static const ZOR_CaptionList list = ZOR_CaptionList()
                                            .addText(QStringLiteral("1"), QStringLiteral("DO (0x01)"))
                                            .addText(QStringLiteral("2"), QStringLiteral("DI (0x02)"))
                                            .addText(QStringLiteral("3"), QStringLiteral("AO (0x03)"))
                                            .addText(QStringLiteral("4"), QStringLiteral("AI (0x04)"));
    return list;
}

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Mdbs::byteOrderCaptions()
{
    static const ZOR_CaptionList list = [] {
        const char* const orders[] = {"[ABCD] %1", "[CDAB] %1", "[BADC] %1", "[DCBA] %1"};
        ZOR_CaptionList l;
        for (int i = 0; i < 4; ++i) {
            const QString qsPattern = QLatin1String(orders[i]);
            const QString qsKey = QStringLiteral("cfgt6_%1").arg(101 + i);
            l.addComposed(QString::number(i), [qsPattern, qsKey] { return qsPattern.arg(zorTr(qsKey)); });
        }
        return l;
    }();
    return list;
}

const ZOR_CaptionList& ZOR_Form_Config_RS_Param_Mdbs::conditionCaptions()
{
    static const ZOR_CaptionList list = ZOR_CaptionList()
                                            .add(QStringLiteral("1"), QStringLiteral("cfgt6_105"))
                                            .add(QStringLiteral("2"), QStringLiteral("cfgt6_106"))
                                            .add(QStringLiteral("3"), QStringLiteral("cfgt6_107"));
    return list;
}

int ZOR_Form_Config_RS_Param_Mdbs::registerNumber(int nAddress, int nCmd)
{
    for (const RegisterBlock& block : kBlocks)
        if (block.nCmd == nCmd)
            return block.nFirst + nAddress;
    return 0;
}

bool ZOR_Form_Config_RS_Param_Mdbs::registerFromNumber(int nNumber, int* lpAddress, int* lpCmd)
{
    for (const RegisterBlock& block : kBlocks) {
        if (nNumber >= block.nFirst && nNumber < block.nFirst + kBlockLength) {
            *lpAddress = nNumber - block.nFirst;
            *lpCmd = block.nCmd;
            return true;
        }
    }
    return false;
}

// A row's columns as shown; stored() gives the attribute order in the file
// (prm, addr, reg, cmd, ord, cycle, save).
QVector<ZOR_RowBuilder::Column> ZOR_Form_Config_RS_Param_Mdbs::rowColumns()
{
    const ZOR_CaptionList* lpTypes = &ZOR_DataTypes::captionList();
    const ZOR_CaptionList* lpKinds = &registerTypeCaptions();
    return {Column(QString(), ZOR_RowBuilder::Label), Column(QStringLiteral("cfgt6_108"), ZOR_RowBuilder::Check),
        Column(QStringLiteral("cfgt6_109"), ZOR_RowBuilder::Integer, "addr", QStringLiteral("1"), 1, 255).stored(1),
        Column(QStringLiteral("cfgt6_110"), ZOR_RowBuilder::Integer, "reg", QString(), 0, kRegisterMax)
            .stored(2, bindRegister),
        Column(QStringLiteral("cfgt6_111"), ZOR_RowBuilder::Integer, nullptr, QString(), 1, 49999),
        Column(QStringLiteral("cfgt6_112"), ZOR_RowBuilder::Caption, "cmd", QString(), 0, 0, lpKinds)
            .stored(3, bindNumberCaption(lpKinds, 1)),
        Column(QStringLiteral("cfgt6_113"), ZOR_RowBuilder::Caption, "prm", QString(), 0, 0, lpTypes)
            .stored(0, bindDataType),
        Column(QStringLiteral("cfgt6_114"), ZOR_RowBuilder::Caption, "ord", QString(), 0, 0, &byteOrderCaptions())
            .stored(4, bindNumberCaption(&byteOrderCaptions(), 0)),
        Column(QStringLiteral("cfgt6_115"), ZOR_RowBuilder::Integer, "cycle", QStringLiteral("1000"), 500, 60000)
            .stored(5),
        Column(QStringLiteral("cfgt6_116"), ZOR_RowBuilder::Check, "save", QStringLiteral("0")).stored(6)};
}

// An event's columns; the attributes follow "prm", which names the row.
QVector<ZOR_RowBuilder::Column> ZOR_Form_Config_RS_Param_Mdbs::eventColumns()
{
    auto threshold = [](const char* lpKey, const char* lpAttr, const char* lpDefault) {
        return Column(QLatin1String(lpKey), ZOR_RowBuilder::Integer, lpAttr, QLatin1String(lpDefault), -kThresholdLimit,
            kThresholdLimit);
    };
    return {Column(QString(), ZOR_RowBuilder::Label), Column(QStringLiteral("cfgt6_108"), ZOR_RowBuilder::Check),
        Column(QStringLiteral("cfgt6_113"), ZOR_RowBuilder::Index),
        Column(QStringLiteral("cfgt6_120"), ZOR_RowBuilder::Index, "cond")
            .stored(0, bindNumberCaption(&conditionCaptions(), 0)),
        threshold("cfgt6_121", "step", "1000"), threshold("cfgt6_122", "low", "0"),
        threshold("cfgt6_123", "high", "1000"), threshold("cfgt6_124", "hyst", "100")};
}

ZOR_Form_Config_RS_Param_Mdbs::ZOR_Form_Config_RS_Param_Mdbs(QWidget* parent)
    : ZOR_Form_Config_RS_Param(parent)
    , m_rows(rowColumns())
    , m_events(eventColumns())
{
    buildRows();
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_RS_Param_Mdbs::buildRows()
{
    auto box = new QVBoxLayout(this);
    box->setContentsMargins(4, 4, 4, 4);
    auto title = [this, box] {
        auto label = new QLabel(this);
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
        box->addWidget(label);
        return label;
    };
    m_lpModeTitle = title();
    auto modes = new QButtonGroup(this);
    m_lpByAddress = new QRadioButton(this);
    m_lpByNumber = new QRadioButton(this);
    modes->addButton(m_lpByAddress);
    modes->addButton(m_lpByNumber);
    auto modeLine = new QHBoxLayout;
    modeLine->addWidget(m_lpByAddress);
    modeLine->addWidget(m_lpByNumber);
    modeLine->addStretch();
    box->addLayout(modeLine);
    connect(m_lpByNumber, &QRadioButton::toggled, this, [this] {
        for (int i = 0; i < nRows; ++i)
            enableRowFields(i);
    });

    m_lpRowsTitle = title();
    auto rowGrid = new QGridLayout;
    box->addLayout(rowGrid);
    m_rows.build(
        rowGrid, nRows, [](int n) { return QString::number(n); }, 1,
        [](int nIndex, QVector<QWidget*>& widgets) {
            if (nIndex >= nRowsWithAddress255)
                static_cast<QSpinBox*>(widgets[RowAddr])->setMaximum(254);
            static_cast<QSpinBox*>(widgets[RowReg])->setDisplayIntegerBase(16);
            auto cycle = static_cast<QSpinBox*>(widgets[RowCycle]);
            cycle->setSingleStep(kCycleStep);
        });
    rowGrid->setColumnStretch(RowSave + 1, 1);

    m_lpEventsTitle = title();
    auto eventGrid = new QGridLayout;
    box->addLayout(eventGrid);
    m_events.build(eventGrid, nEvents, [](int n) { return QString::number(n); });
    eventGrid->setColumnStretch(EvHyst + 1, 1);

    auto userParams = new QPushButton(this);
    userParams->setObjectName(QStringLiteral("pushButton_UserParams"));
    connect(userParams, &QPushButton::clicked, this, &ZOR_Form_Config_RS_Param_Mdbs::openTab);
    auto buttonLine = new QHBoxLayout;
    buttonLine->addWidget(userParams);
    buttonLine->addStretch();
    box->addLayout(buttonLine);
    box->addStretch();

    m_published.resize(nRows);
    for (int i = 0; i < nRows; ++i)
        connectRow(i);
    for (int i = 0; i < nEvents; ++i)
        connectEvent(i);
    translateForm();
}

void ZOR_Form_Config_RS_Param_Mdbs::connectRow(int nIndex)
{
    connect(m_rows.widgetAs<QCheckBox>(nIndex, RowOn), &QCheckBox::toggled, this,
        [this, nIndex](bool bOn) { rowSwitched(nIndex, bOn); });
    connect(spin(nIndex, RowAddr), QOverload<int>::of(&QSpinBox::valueChanged), this,
        [this, nIndex] { rowAddressChanged(nIndex); });
    connect(spin(nIndex, RowReg), QOverload<int>::of(&QSpinBox::valueChanged), this, [this, nIndex] {
        updateNumber(nIndex);
        rowAddressChanged(nIndex);
    });
    connect(combo(nIndex, RowCmd), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this, nIndex] { updateNumber(nIndex); });
    connect(spin(nIndex, RowNumber), QOverload<int>::of(&QSpinBox::valueChanged), this,
        [this, nIndex] { numberChanged(nIndex); });
    connect(combo(nIndex, RowPrm), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this, nIndex] { rowDataTypeChanged(nIndex); });
}

void ZOR_Form_Config_RS_Param_Mdbs::connectEvent(int nIndex)
{
    connect(m_events.widgetAs<QCheckBox>(nIndex, EvOn), &QCheckBox::toggled, this,
        [this, nIndex](bool bOn) { eventSwitched(nIndex, bOn); });
    connect(eventCombo(nIndex, EvCond), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this, nIndex] { enableEventFields(nIndex); });
}

QSpinBox* ZOR_Form_Config_RS_Param_Mdbs::spin(int nIndex, int nColumn) const
{
    return m_rows.widgetAs<QSpinBox>(nIndex, nColumn);
}

QComboBox* ZOR_Form_Config_RS_Param_Mdbs::combo(int nIndex, int nColumn) const
{
    return m_rows.widgetAs<QComboBox>(nIndex, nColumn);
}

QComboBox* ZOR_Form_Config_RS_Param_Mdbs::eventCombo(int nIndex, int nColumn) const
{
    return m_events.widgetAs<QComboBox>(nIndex, nColumn);
}

// ---- rows -------------------------------------------------------------------

bool ZOR_Form_Config_RS_Param_Mdbs::isByNumber() const
{
    return m_lpByNumber->isChecked();
}

void ZOR_Form_Config_RS_Param_Mdbs::setByNumber(bool bByNumber)
{
    (bByNumber ? m_lpByNumber : m_lpByAddress)->setChecked(true);
}

bool ZOR_Form_Config_RS_Param_Mdbs::isRowOn(int nRow) const
{
    auto on = m_rows.widgetAs<QCheckBox>(nRow - 1, RowOn);
    return on && on->isChecked();
}

void ZOR_Form_Config_RS_Param_Mdbs::setRowOn(int nRow, bool bOn)
{
    if (auto on = m_rows.widgetAs<QCheckBox>(nRow - 1, RowOn))
        on->setChecked(bOn);
}

QString ZOR_Form_Config_RS_Param_Mdbs::rowLabel(int nRow) const
{
    return nRow >= 1 && nRow <= nRows ? m_published[nRow - 1].qsLabel : QString();
}

void ZOR_Form_Config_RS_Param_Mdbs::enableRowFields(int nIndex)
{
    const bool bOn = m_rows.widgetAs<QCheckBox>(nIndex, RowOn)->isChecked();
    const bool bByNumber = isByNumber();
    for (int c : {int(RowAddr), int(RowPrm), int(RowOrd), int(RowCycle), int(RowSave)})
        m_rows.widget(nIndex, c)->setEnabled(bOn);
    m_rows.widget(nIndex, RowReg)->setEnabled(bOn && !bByNumber);
    m_rows.widget(nIndex, RowCmd)->setEnabled(bOn && !bByNumber);
    m_rows.widget(nIndex, RowNumber)->setEnabled(bOn && bByNumber);
    colourNumber(nIndex);
}

void ZOR_Form_Config_RS_Param_Mdbs::rowSwitched(int nIndex, bool bOn)
{
    enableRowFields(nIndex);
    if (!bOn) {
        withdraw(nIndex);
        return;
    }
    spin(nIndex, RowAddr)->setValue(m_nLastAddress);
    spin(nIndex, RowReg)->setValue(0);
    for (int c : {int(RowCmd), int(RowPrm), int(RowOrd)}) {
        QComboBox* box = combo(nIndex, c);
        box->setCurrentIndex(0);
    }
    spin(nIndex, RowCycle)->setValue(kCycleStep);
    m_rows.widgetAs<QCheckBox>(nIndex, RowSave)->setChecked(false);
    updateNumber(nIndex);
    publish(nIndex);
}

void ZOR_Form_Config_RS_Param_Mdbs::rowAddressChanged(int nIndex)
{
    Published& row = m_published[nIndex];
    if (row.qsLabel.isEmpty())
        return;
    m_nLastAddress = spin(nIndex, RowAddr)->value();
    if (composeLabel(nIndex) == row.qsLabel)
        return;
    withdraw(nIndex);
    publish(nIndex);
}

void ZOR_Form_Config_RS_Param_Mdbs::rowDataTypeChanged(int nIndex)
{
    Published& row = m_published[nIndex];
    if (row.qsLabel.isEmpty())
        return;
    emit signal_UserParam_Del(glqsMbPreffix, row.qsLabel, row.qsCaption);
    row.qsCaption = dataCaption(nIndex);
    emit signal_UserParam_Add(glqsMbPreffix, row.qsLabel, row.qsCaption, ZOR_DataTypes::sizeOfCaption(row.qsCaption));
}

void ZOR_Form_Config_RS_Param_Mdbs::updateNumber(int nIndex)
{
    if (m_bSyncing)
        return;
    const int nNumber = registerNumber(
        spin(nIndex, RowReg)->value(), registerTypeCaptions().currentCode(combo(nIndex, RowCmd)).toInt());
    m_bSyncing = true;
    spin(nIndex, RowNumber)->setValue(nNumber);
    m_bSyncing = false;
    colourNumber(nIndex);
}

void ZOR_Form_Config_RS_Param_Mdbs::numberChanged(int nIndex)
{
    colourNumber(nIndex);
    if (m_bSyncing || !isByNumber())
        return;
    int nAddress = 0;
    int nCmd = 0;
    if (!registerFromNumber(spin(nIndex, RowNumber)->value(), &nAddress, &nCmd))
        return;
    m_bSyncing = true;
    registerTypeCaptions().select(combo(nIndex, RowCmd), QString::number(nCmd));
    spin(nIndex, RowReg)->setValue(nAddress);
    m_bSyncing = false;
}

void ZOR_Form_Config_RS_Param_Mdbs::colourNumber(int nIndex)
{
    QSpinBox* number = spin(nIndex, RowNumber);
    setNumberColours(number, isForbiddenNumber(number->value()), !number->isEnabled());
}

QString ZOR_Form_Config_RS_Param_Mdbs::composeLabel(int nIndex) const
{
    return QStringLiteral("%1%2, %3 %4, %5 %6")
        .arg(glqsMbPreffix, QString::number(nIndex + 1), QString(), QString::number(spin(nIndex, RowAddr)->value()),
            QString(), QString::number(spin(nIndex, RowReg)->value(), 16));
}

QString ZOR_Form_Config_RS_Param_Mdbs::dataCaption(int nIndex) const
{
    return combo(nIndex, RowPrm)->currentText();
}

void ZOR_Form_Config_RS_Param_Mdbs::publish(int nIndex)
{
    Published& row = m_published[nIndex];
    row.qsLabel = composeLabel(nIndex);
    row.qsCaption = dataCaption(nIndex);
    emit signal_UserParam_Add(glqsMbPreffix, row.qsLabel, row.qsCaption, ZOR_DataTypes::sizeOfCaption(row.qsCaption));
    addLabelToEvents(row.qsLabel);
}

void ZOR_Form_Config_RS_Param_Mdbs::withdraw(int nIndex)
{
    Published& row = m_published[nIndex];
    if (row.qsLabel.isEmpty())
        return;
    const QString qsLabel = row.qsLabel;
    emit signal_UserParam_Del(glqsMbPreffix, qsLabel, row.qsCaption);
    row = Published();
    removeLabelFromEvents(qsLabel);
}

QVector<ZOR_UserParamEntry> ZOR_Form_Config_RS_Param_Mdbs::publishedParams() const
{
    QVector<ZOR_UserParamEntry> list;
    for (const Published& row : m_published)
        if (!row.qsLabel.isEmpty())
            list.append({glqsMbPreffix, row.qsLabel, row.qsCaption, ZOR_DataTypes::sizeOfCaption(row.qsCaption)});
    return list;
}

// ---- events -----------------------------------------------------------------

bool ZOR_Form_Config_RS_Param_Mdbs::isEventOn(int nEvent) const
{
    auto on = m_events.widgetAs<QCheckBox>(nEvent - 1, EvOn);
    return on && on->isChecked();
}

void ZOR_Form_Config_RS_Param_Mdbs::setEventOn(int nEvent, bool bOn)
{
    if (auto on = m_events.widgetAs<QCheckBox>(nEvent - 1, EvOn))
        on->setChecked(bOn);
}

void ZOR_Form_Config_RS_Param_Mdbs::eventSwitched(int nIndex, bool bOn)
{
    QComboBox* prm = eventCombo(nIndex, EvPrm);
    QComboBox* cond = eventCombo(nIndex, EvCond);
    {
        const QSignalBlocker blockPrm(prm);
        const QSignalBlocker blockCond(cond);
        prm->clear();
        cond->clear();
        if (bOn) {
            prm->addItems(m_labels);
            conditionCaptions().fill(cond);
        }
    }
    if (!bOn)
        for (int c = EvStep; c <= EvHyst; ++c)
            m_events.widgetAs<QSpinBox>(nIndex, c)->setValue(0);
    enableEventFields(nIndex);
}

void ZOR_Form_Config_RS_Param_Mdbs::enableEventFields(int nIndex)
{
    const bool bOn = m_events.widgetAs<QCheckBox>(nIndex, EvOn)->isChecked();
    const int nCond = bOn ? conditionCaptions().currentCode(eventCombo(nIndex, EvCond)).toInt() : 0;
    m_events.widget(nIndex, EvPrm)->setEnabled(bOn);
    m_events.widget(nIndex, EvCond)->setEnabled(bOn);
    m_events.widget(nIndex, EvStep)->setEnabled(nCond == 1);
    m_events.widget(nIndex, EvLow)->setEnabled(nCond == 2 || nCond == 3);
    m_events.widget(nIndex, EvHigh)->setEnabled(nCond == 2 || nCond == 3);
    m_events.widget(nIndex, EvHyst)->setEnabled(nCond == 3);
}

void ZOR_Form_Config_RS_Param_Mdbs::addLabelToEvents(const QString& qsLabel)
{
    m_labels.append(qsLabel);
    m_labels.removeDuplicates();
    m_labels.sort();
    for (int i = 0; i < nEvents; ++i) {
        QComboBox* prm = eventCombo(i, EvPrm);
        if (!isEventOn(i + 1) || prm->findText(qsLabel) >= 0)
            continue;
        prm->addItem(qsLabel);
        sortItems(prm);
    }
}

void ZOR_Form_Config_RS_Param_Mdbs::removeLabelFromEvents(const QString& qsLabel)
{
    m_labels.removeAll(qsLabel);
    for (int i = 0; i < nEvents; ++i) {
        QComboBox* prm = eventCombo(i, EvPrm);
        const int n = prm->findText(qsLabel);
        if (n < 0)
            continue;
        const bool bSelected = prm->currentIndex() == n;
        prm->removeItem(n);
        if (bSelected)
            setEventOn(i + 1, false);
    }
}

// ---- identifiers --------------------------------------------------------------

int ZOR_Form_Config_RS_Param_Mdbs::rowOfId(const QString& qsId) const
{
    if (!qsId.startsWith(glqsMbPreffixXml))
        return -1;
    bool ok = false;
    const int nRow = qsId.mid(glqsMbPreffixXml.size()).toInt(&ok);
    if (!ok || nRow < 1 || nRow > nRows || m_published[nRow - 1].qsLabel.isEmpty())
        return -1;
    return nRow - 1;
}

int ZOR_Form_Config_RS_Param_Mdbs::rowOfLabel(const QString& qsLabel) const
{
    for (int i = 0; i < nRows; ++i)
        if (!qsLabel.isEmpty() && m_published[i].qsLabel == qsLabel)
            return i;
    return -1;
}

QString ZOR_Form_Config_RS_Param_Mdbs::getStrTypeModbus(QString qsId) const
{
    const int n = rowOfId(qsId);
    return n < 0 ? QString() : QStringLiteral("%1, %2").arg(m_published[n].qsLabel, dataCaption(n));
}

QString ZOR_Form_Config_RS_Param_Mdbs::getStrTypeModbusEvent(QString qsId) const
{
    const int n = rowOfId(qsId);
    return n < 0 ? QString() : m_published[n].qsLabel;
}

QString ZOR_Form_Config_RS_Param_Mdbs::getStrProtocolUserData(QString qsId)
{
    const QString qsType = getStrTypeModbus(qsId);
    return qsType.isEmpty() ? QString() : QStringLiteral("%1, %2").arg(glqsMbPreffix, qsType);
}

QString ZOR_Form_Config_RS_Param_Mdbs::getTypeUserParam(QString qsId)
{
    const int n = rowOfId(qsId);
    return n < 0 ? QString() : ZOR_DataTypes::captionList().currentCode(combo(n, RowPrm));
}

// ---- roles --------------------------------------------------------------------

void ZOR_Form_Config_RS_Param_Mdbs::setDefaultParam()
{
    setByNumber(false);
    m_nLastAddress = 1;
    for (int i = 0; i < nRows; ++i) {
        setRowOn(i + 1, false);
        // A row that was never on still needs its fields disabled.
        enableRowFields(i);
        m_published[i] = Published();
    }
    m_labels.clear();
    for (int i = 0; i < nEvents; ++i) {
        setEventOn(i + 1, false);
        eventSwitched(i, false);
    }
}

void ZOR_Form_Config_RS_Param_Mdbs::setFormEnabled(bool bEnabled)
{
    setEnabled(bEnabled);
}

void ZOR_Form_Config_RS_Param_Mdbs::translateForm()
{
    ZOR_Form_Config_RS_Param::translateForm();
    m_lpModeTitle->setText(zorTr(QStringLiteral("cfgt6_117")));
    m_lpByAddress->setText(zorTr(QStringLiteral("cfgt6_118")));
    m_lpByNumber->setText(zorTr(QStringLiteral("cfgt6_119")));
    m_lpRowsTitle->setText(zorTr(QStringLiteral("cfgt6_127")));
    m_lpEventsTitle->setText(zorTr(QStringLiteral("cfgt6_125")));
    if (auto button = findChild<QPushButton*>(QStringLiteral("pushButton_UserParams")))
        button->setText(zorTr(QStringLiteral("cfgt6_128")));
    m_rows.translate();
    m_events.translate();
    const QString qsSuffix = QLatin1Char(' ') + zorTr(QStringLiteral("cfgt6_126"));
    for (int i = 0; i < nRows; ++i)
        spin(i, RowCycle)->setSuffix(qsSuffix);
    for (int i = 0; i < nEvents; ++i)
        if (isEventOn(i + 1))
            conditionCaptions().fill(eventCombo(i, EvCond));
    // The registry knows a value by its caption: a new language is a new caption.
    for (int i = 0; i < nRows; ++i) {
        Published& row = m_published[i];
        const QString qsCaption = dataCaption(i);
        if (row.qsLabel.isEmpty() || row.qsCaption == qsCaption)
            continue;
        emit signal_UserParam_Del(glqsMbPreffix, row.qsLabel, row.qsCaption);
        row.qsCaption = qsCaption;
        emit signal_UserParam_Add(glqsMbPreffix, row.qsLabel, row.qsCaption, ZOR_DataTypes::sizeOfCaption(qsCaption));
    }
}

// ---- storage ------------------------------------------------------------------

void ZOR_Form_Config_RS_Param_Mdbs::readParamMdbs(CXMLWorkData* lpRoot)
{
    const auto params = ZOR_SettingsNode::openForRead(lpRoot, kUserParamsNode);
    if (!params)
        return;
    for (int i = 0; i < nRows; ++i) {
        const auto node = ZOR_SettingsNode::openForRead(params.get(), ZOR_SettingsNode::name(kRowNode, i + 1));
        if (!node)
            continue;
        QString qsPrm;
        node->readString("prm", QString(), qsPrm);
        setRowOn(i + 1, !qsPrm.isEmpty());
        if (!qsPrm.isEmpty())
            m_rows.binding(i).read(node.get());
    }
    for (int i = 0; i < nEvents; ++i) {
        const auto node = ZOR_SettingsNode::openForRead(params.get(), ZOR_SettingsNode::name(kEventNode, i + 1));
        if (!node)
            continue;
        QString qsPrm;
        node->readString("prm", QString(), qsPrm);
        const QString qsLabel = getStrTypeModbusEvent(qsPrm);
        if (qsLabel.isEmpty()) {
            setEventOn(i + 1, false);
            continue;
        }
        setEventOn(i + 1, true);
        QComboBox* prm = eventCombo(i, EvPrm);
        prm->setCurrentIndex(prm->findText(qsLabel));
        m_events.binding(i).read(node.get());
    }
}

void ZOR_Form_Config_RS_Param_Mdbs::writePortParam(CXMLWorkData* lpPort)
{
    // A new configuration saves its rows too: the node is made whenever
    // Modbus is the device.
    if (lpPort)
        delete lpPort->createNode(kUserParamsNode, CXMLWorkData::NodeFindOrAppend);
    writeParamMdbs(lpPort);
}

void ZOR_Form_Config_RS_Param_Mdbs::writeParamMdbs(CXMLWorkData* lpRoot)
{
    const auto params = ZOR_SettingsNode::openForRead(lpRoot, kUserParamsNode);
    if (!params)
        return;
    for (int i = 0; i < nRows; ++i) {
        if (!isRowOn(i + 1))
            continue;
        const auto node = ZOR_SettingsNode::openForWrite(params.get(), ZOR_SettingsNode::name(kRowNode, i + 1));
        m_rows.binding(i).write(node.get());
        node->writeParameters();
    }
    for (int i = 0; i < nEvents; ++i) {
        if (!isEventOn(i + 1))
            continue;
        const int nRow = rowOfLabel(eventCombo(i, EvPrm)->currentText());
        const auto node = ZOR_SettingsNode::openForWrite(params.get(), ZOR_SettingsNode::name(kEventNode, i + 1));
        node->writeString("prm", nRow < 0 ? QString() : glqsMbPreffixXml + QString::number(nRow + 1));
        m_events.binding(i).write(node.get());
        node->writeParameters();
    }
}
