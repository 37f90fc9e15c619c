#include "config/zor_form_config_ble_devtype_uni.h"

#include "config/zor_datatypes.h"
#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int kMaskLength = 32;
constexpr int kUserParamStor = 1;

// Sensor types 1..6 each keep their own index list, of as many indexes as
// the terminal has values of that kind.
struct IndexKind
{
    const char* lpName;
    int nCount;
};
const IndexKind kIndexKinds[] = {{"", ZOR_Form_Config_Ble_DevType_Uni::nMaxIndex}, {"Uni", 8}, {"FlsL", 16},
    {"FlsT", 16}, {"FlsF", 16}, {"TmpT", 4}, {"TmpH", 4}};

// The axes share one caption: the text before the value marker, then the axis.
QString axisCaption(const char* lpAxis)
{
    QString qsText = zorTr(QStringLiteral("cfgt17_056"));
    const int nMarker = qsText.indexOf(QLatin1String("<val>"));
    if (nMarker >= 0)
        qsText = qsText.left(nMarker).trimmed();
    return QStringLiteral("%1 %2").arg(qsText, QLatin1String(lpAxis));
}

void fitTypeByte(QWidget* lpEdit)
{
    lpEdit->setMaximumWidth(lpEdit->fontMetrics().horizontalAdvance(QStringLiteral("WWWW")));
}

// A stored group as the row would show it (clamped to the spin box).
int storedGroup(CXMLWorkData* lpNode, bool* lpPresent)
{
    QString qsValue;
    lpNode->readString("group", QString(), qsValue);
    *lpPresent = !qsValue.isEmpty();
    return qBound(0, ZOR_FormBinding::intValue(qsValue), 4);
}

} // namespace

ZOR_Form_Config_Ble_DevType_Uni::ZOR_Form_Config_Ble_DevType_Uni(QWidget* parent)
    : ZOR_Form_Config_Ble_DevType(parent)
    , m_opers(ZOR_CaptionList()
                  .add(QStringLiteral("0"), QStringLiteral("abbr_049"))
                  .add(QStringLiteral("1"), QStringLiteral("abbr_048")))
    , m_byteOrders(ZOR_CaptionList()
                       .add(QStringLiteral("0"), QStringLiteral("cfgt17_047"))
                       .add(QStringLiteral("1"), QStringLiteral("cfgt17_048")))
    , m_indexes(ZOR_CaptionList::fromCount(nMaxIndex, QStringLiteral("%1"), 1))
    , m_cond({{QString(), ZOR_RowBuilder::Label}, {QStringLiteral("cfgble_012"), ZOR_RowBuilder::Check},
          {QStringLiteral("cfgble_013"), ZOR_RowBuilder::Integer, "group", QStringLiteral("0"), 0, 4},
          {QStringLiteral("cfgble_014"), ZOR_RowBuilder::Caption, "oper", QStringLiteral("0"), 0, 0, &m_opers},
          {QStringLiteral("cfgble_015"), ZOR_RowBuilder::HexUpper, "type", QStringLiteral("FF"), 0, 2},
          {QStringLiteral("cfgble_016"), ZOR_RowBuilder::Integer, "offset", QStringLiteral("0"), 0, 255},
          {QStringLiteral("cfgble_017"), ZOR_RowBuilder::Text, "mask", QString()}})
    , m_prm({{QString(), ZOR_RowBuilder::Label}, {QStringLiteral("cfgble_012"), ZOR_RowBuilder::Check},
          {QStringLiteral("cfgble_013"), ZOR_RowBuilder::Integer, "group", QStringLiteral("0"), 0, 4},
          {QStringLiteral("cfgble_015"), ZOR_RowBuilder::HexUpper, "type", QStringLiteral("00"), 0, 2},
          {QStringLiteral("cfgble_016"), ZOR_RowBuilder::Integer, "offset", QStringLiteral("0"), 0, 255},
          {QStringLiteral("cfgble_018"), ZOR_RowBuilder::Caption, "prm", QString(), 0, 0, &m_dataTypes},
          {QStringLiteral("cfgble_019"), ZOR_RowBuilder::Caption, "be", QStringLiteral("0"), 0, 0, &m_byteOrders},
          {QStringLiteral("cfgble_020"), ZOR_RowBuilder::Caption, "stor", QStringLiteral("0"), 0, 0, &m_sensorTypes},
          {QStringLiteral("cfgble_021"), ZOR_RowBuilder::Caption, "idx", QStringLiteral("1"), 0, 0, &m_indexes},
          {QStringLiteral("cfgble_022"), ZOR_RowBuilder::Integer, "mux", QStringLiteral("1"), 0, 65535},
          {QStringLiteral("cfgble_023"), ZOR_RowBuilder::Integer, "div", QStringLiteral("1"), 1, 65535},
          {QStringLiteral("cfgble_024"), ZOR_RowBuilder::Integer, "shift", QStringLiteral("0"), -32768, 32767}})
{
    m_dataTypes.addText(QString(), QString());
    for (const QString& qsCode : ZOR_DataTypes::codes())
        m_dataTypes.addComposed(qsCode, [qsCode] { return ZOR_DataTypes::captionList().captionOf(qsCode); });
    const char* const storKeys[] = {
        "cfgt17_049", "cfgt17_072", "cfgt17_051", "cfgt17_052", "cfgt17_053", "cfgt17_054", "cfgt17_055"};
    for (int i = 0; i < 7; ++i)
        m_sensorTypes.add(QString::number(i), QLatin1String(storKeys[i]));
    m_sensorTypes.addComposed(QStringLiteral("7"), [] { return axisCaption("X"); })
        .addComposed(QStringLiteral("8"), [] { return axisCaption("Y"); })
        .addComposed(QStringLiteral("9"), [] { return axisCaption("Z"); });
    buildRows();
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_Ble_DevType_Uni::buildRows()
{
    auto box = new QVBoxLayout(this);
    box->setContentsMargins(4, 4, 4, 4);
    auto addTitle = [this, box](const char* lpKey) {
        auto title = new QLabel(this);
        QFont font = title->font();
        font.setBold(true);
        title->setFont(font);
        box->addWidget(title);
        m_titles.append({title, QLatin1String(lpKey)});
    };
    addTitle("cfgble_010");
    auto condGrid = new QGridLayout;
    box->addLayout(condGrid);
    m_cond.build(
        condGrid, nConditions, [](int n) { return zorTr(QStringLiteral("cfgble_025")).arg(n); }, 1,
        [](int nIndex, QVector<QWidget*>& widgets) {
            fitTypeByte(widgets[CondType]);
            auto mask = static_cast<QLineEdit*>(widgets[CondMask]);
            mask->setMaxLength(kMaskLength);
            mask->setMinimumWidth(mask->fontMetrics().horizontalAdvance(QString(kMaskLength, QLatin1Char('W'))) / 2);
            // The first condition always compares with the first operator.
            if (nIndex == 0)
                widgets[CondOper]->setVisible(false);
        });
    addTitle("cfgble_011");
    auto prmGrid = new QGridLayout;
    box->addLayout(prmGrid);
    m_prm.build(
        prmGrid, nParams, [](int n) { return zorTr(QStringLiteral("cfgble_026")).arg(n); }, 1,
        [](int, QVector<QWidget*>& widgets) { fitTypeByte(widgets[PrmType]); });
    condGrid->setColumnStretch(CondMask + 1, 1);
    prmGrid->setColumnStretch(PrmShift + 1, 1);
    box->addStretch();
    for (int r = 0; r < nConditions; ++r)
        connectRow(m_cond, r, false);
    for (int r = 0; r < nParams; ++r)
        connectRow(m_prm, r, true);
    translateForm();
}

void ZOR_Form_Config_Ble_DevType_Uni::connectRow(ZOR_RowBuilder& rows, int nRow, bool bParam)
{
    const int nOn = bParam ? int(PrmOn) : int(CondOn);
    const int nGroup = bParam ? int(PrmGroup) : int(CondGroup);
    auto on = rows.widgetAs<QCheckBox>(nRow, nOn);
    auto group = rows.widgetAs<QSpinBox>(nRow, nGroup);
    connect(
        on, &QCheckBox::toggled, this, [this, &rows, nRow, bParam](bool bOn) { rowSwitched(rows, nRow, bParam, bOn); });
    connect(group, QOverload<int>::of(&QSpinBox::valueChanged), on, [on](int n) { on->setChecked(n != 0); });
    rowSwitched(rows, nRow, bParam, on->isChecked());
    if (!bParam)
        return;
    for (int c : {int(PrmData), int(PrmStor), int(PrmIdx)})
        connect(rows.widgetAs<QComboBox>(nRow, c), QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, nRow] { paramKindOrIndexChanged(nRow); });
}

bool ZOR_Form_Config_Ble_DevType_Uni::isOn(const ZOR_RowBuilder& rows, int nRow) const
{
    auto on = rows.widgetAs<QCheckBox>(nRow, CondOn);
    return on && on->isChecked();
}

void ZOR_Form_Config_Ble_DevType_Uni::rowSwitched(ZOR_RowBuilder& rows, int nRow, bool bParam, bool bOn)
{
    const int nGroup = bParam ? int(PrmGroup) : int(CondGroup);
    auto group = rows.widgetAs<QSpinBox>(nRow, nGroup);
    if (!bOn) {
        // A row left with its group would come back on when loaded; and since
        // loading skips rows that are off, an off row is saved with the
        // defaults, so that a saved file reloads to the same bytes.
        if (m_bLoading)
            group->setValue(0);
        else
            rows.binding(nRow).setDefaults();
    } else if (group->value() == 0) {
        group->setValue(1);
        static_cast<QLineEdit*>(rows.widget(nRow, bParam ? int(PrmType) : int(CondType)))
            ->setText(QStringLiteral("FF"));
        if (bParam) {
            rows.widgetAs<QSpinBox>(nRow, PrmMux)->setValue(1);
            rows.widgetAs<QSpinBox>(nRow, PrmDiv)->setValue(1);
        }
    }
    const int nColumns = bParam ? int(PrmShift) + 1 : int(CondMask) + 1;
    for (int c = nGroup; c < nColumns; ++c)
        rows.widget(nRow, c)->setEnabled(bOn);
    if (bParam)
        paramKindOrIndexChanged(nRow);
}

QString ZOR_Form_Config_Ble_DevType_Uni::indexKindOf(int nStor)
{
    return nStor >= 1 && nStor <= 6 ? QLatin1String(kIndexKinds[nStor].lpName) : QString();
}

int ZOR_Form_Config_Ble_DevType_Uni::indexCountOf(int nStor)
{
    return nStor >= 1 && nStor <= 6 ? kIndexKinds[nStor].nCount : nMaxIndex;
}

int ZOR_Form_Config_Ble_DevType_Uni::storOf(int nRow) const
{
    return m_sensorTypes.currentCode(m_prm.widgetAs<QComboBox>(nRow, PrmStor)).toInt();
}

int ZOR_Form_Config_Ble_DevType_Uni::idxOf(int nRow) const
{
    return m_indexes.currentCode(m_prm.widgetAs<QComboBox>(nRow, PrmIdx)).toInt();
}

QVector<int> ZOR_Form_Config_Ble_DevType_Uni::indexesOfKind(const QString& qsKind) const
{
    QVector<int> used;
    for (int r = 0; r < m_prm.rowCount(); ++r)
        if (isOn(m_prm, r) && !qsKind.isEmpty() && indexKindOf(storOf(r)) == qsKind)
            used.append(idxOf(r));
    return used;
}

// Indexes of the kind of row nRow that the first nRows rows other than nRow
// take now, and, since they cannot be chosen either, those past the kind's
// count.
QSet<int> ZOR_Form_Config_Ble_DevType_Uni::unavailableIndexes(int nRow, int nRows) const
{
    QSet<int> taken;
    const int nStor = storOf(nRow);
    for (int n = indexCountOf(nStor) + 1; n <= nMaxIndex; ++n)
        taken.insert(n);
    const QString qsKind = indexKindOf(nStor);
    if (qsKind.isEmpty())
        return taken;
    for (int r = 0; r < qMin(nRows, m_prm.rowCount()); ++r)
        if (r != nRow && isOn(m_prm, r) && indexKindOf(storOf(r)) == qsKind)
            taken.insert(idxOf(r));
    return taken;
}

// A row whose index the first nRows rows take, or past its kind's count,
// moves to the first free one (it stays when every index of the kind is
// taken).
void ZOR_Form_Config_Ble_DevType_Uni::moveToFreeIndex(int nRow, int nRows)
{
    if (!isOn(m_prm, nRow))
        return;
    const QSet<int> unavailable = unavailableIndexes(nRow, nRows);
    if (!unavailable.contains(idxOf(nRow)))
        return;
    for (int n = 1; n <= nMaxIndex; ++n) {
        if (!unavailable.contains(n)) {
            m_bAdjusting = true;
            m_indexes.select(m_prm.widgetAs<QComboBox>(nRow, PrmIdx), QString::number(n));
            m_bAdjusting = false;
            return;
        }
    }
}

void ZOR_Form_Config_Ble_DevType_Uni::paramKindOrIndexChanged(int nRow)
{
    if (m_prm.rowCount() < nParams || m_bAdjusting)
        return;
    if (!m_bLoading)
        moveToFreeIndex(nRow, nParams);
    refreshIndexes();
    publish(nRow);
}

void ZOR_Form_Config_Ble_DevType_Uni::refreshIndexes()
{
    for (int r = 0; r < m_prm.rowCount(); ++r)
        markTaken(m_prm.widgetAs<QComboBox>(r, PrmIdx), m_indexes, unavailableIndexes(r, nParams));
}

void ZOR_Form_Config_Ble_DevType_Uni::publish(int nRow)
{
    // Loading publishes once at the end, not every half-read row.
    if (m_prm.rowCount() < nParams || m_bLoading)
        return;
    userParamType entry;
    QString qsCaption;
    const QString qsCode = m_dataTypes.currentCode(m_prm.widgetAs<QComboBox>(nRow, PrmData));
    // A value without a data type has no size: there is nothing to offer yet.
    if (isOn(m_prm, nRow) && storOf(nRow) == kUserParamStor && !qsCode.isEmpty()) {
        entry.qsPrefix = glqsBtPreffix_UP;
        entry.qsMess = QStringLiteral("U%1P%2, %3 %4")
                           .arg(m_nSlot)
                           .arg(nRow + 1)
                           .arg(idxOf(nRow))
                           .arg(zorTr(QStringLiteral("cfgt17_072")));
        entry.qsSuffix = qsCode;
        entry.nSize = ZOR_DataTypes::sizeOf(qsCode);
        qsCaption = m_dataTypes.captionOf(qsCode);
    }
    userParamType& old = m_published[nRow];
    if (old.sameValue(entry) && old.nSize == entry.nSize)
        return;
    // Withdrawn under the node name it was published with: the slot number
    // may have changed since.
    if (!old.qsPrefix.isEmpty())
        emit signal_Device_UserParam_Del_Uni(old, m_publishedNode[nRow], m_publishedCaption[nRow]);
    old = entry;
    m_publishedCaption[nRow] = qsCaption;
    m_publishedNode[nRow] = ZOR_SettingsNode::name(QStringLiteral("U%1P").arg(m_nSlot), nRow + 1);
    if (!entry.qsPrefix.isEmpty())
        emit signal_Device_UserParam_Add_Uni(entry, m_publishedNode[nRow], qsCaption);
}

QVector<userParamType> ZOR_Form_Config_Ble_DevType_Uni::publishedParams() const
{
    QVector<userParamType> entries;
    for (const userParamType& entry : m_published)
        if (!entry.qsPrefix.isEmpty())
            entries.append(entry);
    return entries;
}

void ZOR_Form_Config_Ble_DevType_Uni::setSlotNumber(int nSlot)
{
    ZOR_Form_Config_Ble_DevType::setSlotNumber(nSlot);
    for (int r = 0; r < m_prm.rowCount(); ++r)
        publish(r);
}

void ZOR_Form_Config_Ble_DevType_Uni::translateForm()
{
    for (const auto& title : m_titles)
        static_cast<QLabel*>(title.first)->setText(zorTr(title.second));
    m_cond.translate();
    m_prm.translate();
    refreshIndexes();
    for (int r = 0; r < m_prm.rowCount(); ++r)
        publish(r);
}

void ZOR_Form_Config_Ble_DevType_Uni::setDefaultParam()
{
    m_bLoading = true;
    m_cond.setDefaults();
    m_prm.setDefaults();
    m_cond.widgetAs<QSpinBox>(0, CondGroup)->setValue(1);
    m_bLoading = false;
    refreshIndexes();
    for (int r = 0; r < nParams; ++r)
        publish(r);
}

void ZOR_Form_Config_Ble_DevType_Uni::readFormParam(CXMLWorkData* lpRoot)
{
    if (!lpRoot)
        return;
    m_bLoading = true;
    for (int r = 0; r < nConditions + nParams; ++r) {
        const bool bParam = r >= nConditions;
        const int nRow = bParam ? r - nConditions : r;
        ZOR_RowBuilder& rows = bParam ? m_prm : m_cond;
        const QString qsName = ZOR_SettingsNode::name(
            QStringLiteral("U%1%2").arg(m_nSlot).arg(QLatin1Char(bParam ? 'P' : 'C')), nRow + 1);
        auto node = ZOR_SettingsNode::openForRead(lpRoot, qsName);
        if (!node)
            continue;
        bool bGroupStored = false;
        const int nGroup = storedGroup(node.get(), &bGroupStored);
        if (r == 0) {
            rows.binding(0).read(node.get());
            if (!bGroupStored)
                rows.widgetAs<QSpinBox>(0, CondGroup)->setValue(1);
            m_opers.select(rows.widgetAs<QComboBox>(0, CondOper), QStringLiteral("0"));
        } else if (nGroup != 0) {
            rows.binding(nRow).read(node.get());
        }
    }
    m_bLoading = false;
    // A file may give two values of one kind the same index, or one past the
    // kind's count: the later row moves, as it would when chosen by hand.
    for (int r = 0; r < nParams; ++r)
        moveToFreeIndex(r, r);
    refreshIndexes();
    for (int r = 0; r < nParams; ++r)
        publish(r);
}

void ZOR_Form_Config_Ble_DevType_Uni::writeFormParam(CXMLWorkData* lpRoot)
{
    if (!lpRoot)
        return;
    m_cond.writeNodes(lpRoot, QStringLiteral("U%1C").arg(m_nSlot));
    m_prm.writeNodes(lpRoot, QStringLiteral("U%1P").arg(m_nSlot));
}
