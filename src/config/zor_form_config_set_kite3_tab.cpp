#include "config/zor_form_config_set_kite3_tab.h"

#include "module/zor_language.h"
#include "telemetry/zor_tmi_table.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace {

const int kColumns = 3;

QString versionTitle(int nVersion)
{
    return QStringLiteral("KITE %1.0").arg(nVersion);
}

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

// The field tabs: the fields each shows, in field order ("1-7 19" is
// fields 1 to 7 and 19); a field has the field table's caption unless
// kOwnCaptions gives it another.
struct TabFields
{
    const char* lpName;
    const char* lpTitleKey;
    const char* lpFields;
    const Tab::Group* lpGroups = nullptr;
    int nGroups = 0;
};

// The terminal fills these runs from their first field on; the lists show
// the number of sensors (tyres, temperature, humidity) or doors a count covers.
const Tab::Group kMoreGroups[] = {
    {94, 4, "cfgkt_049", "0 2 6 14 30"},
    {110, 8, "cfgkt_050", "0 2 4 6 8 10 12 14 16"},
    {163, 4, "cfgkt_051", "0 1 2 3 4"},
    {167, 4, "cfgkt_052", "0 1 2 3 4"},
};

const TabFields kTabs[] = {
    {"Main", "cfgkt_010", "1-7 19-37 45-52 123-138 200 205 206"},
    {"Navi", "cfgkt_011", "8-18 70-77"},
    {"RS", "cfgkt_012", "38-44 78-93 147-162"},
    {"CAN", "cfgkt_013", "53-69 201-204"},
    {"Taho", "cfgkt_014", "98-103"},
    {"Accel", "cfgkt_015", "106-109 139-141 143-146"},
    {"Refr", "cfgkt_016", "182-199"},
    {"FFS", "cfgkt_017", "171-181"},
    {"More", "cfgkt_018", "104 105 118-122 142", kMoreGroups, int(std::size(kMoreGroups))},
};

// Fields shown with a caption of their own, or on in a new configuration.
const Tab::Box kOwnCaptions[] = {{1, "tmikte_123", "%1", Tab::Fixed}, {2, "tmikte_124", "%1", Tab::Fixed},
    {3, "tmikte_125", "%1", Tab::Fixed}, {4, "cfgkt_020", "%1", Tab::Default}, {5, "cfgkt_021", "%1", Tab::Default},
    {6, "cfgkt_022", "%1", Tab::Default}, {7, "tmikte_145", "%1", Tab::Default}, {8, "cfgkt_023", "%1", Tab::Default},
    {9, "tmikte_148", "%1", Tab::Default}, {10, "tmikte_149", "%1", Tab::Default},
    {11, "tmikte_150", "%1", Tab::Default}, {12, "tmikte_151", "%1", Tab::Default},
    {13, "tmikte_152", "%1", Tab::Default}, {14, "tmikte_153", "%1", Tab::Default},
    {15, "tmikte_154", "%1", Tab::Default}, {19, "tmikte_158", "%1", Tab::Default},
    {20, "tmikte_159", "%1", Tab::Default}, {29, "cfgkt_024", "%1 1-8", Tab::Default}, {30, "cfgkt_024", "%1 9-16"},
    {31, "cfgkt_025", "%1 1-8", Tab::Default}, {32, "cfgkt_025", "%1 9-16"}, {53, "cfgkt_026"}, {66, "cfgkt_027"},
    {70, "cfgkt_028"}, {71, "cfgkt_029"}, {72, "cfgkt_030"}, {73, "cfgkt_031"}, {77, "cfgkt_032"}, {98, "cfgkt_033"},
    {100, "cfgkt_034"}, {107, "tmikte_223"}, {109, "cfgkt_035"}, {118, "cfgkt_036"}, {122, "cfgkt_037"},
    {126, "cfgkt_024", "%1 17-24"}, {139, "cfgkt_038"}, {141, "cfgkt_039"}, {142, "cfgkt_040"}, {145, "tmikte_254"},
    {146, "cfgkt_048"}, {171, "cfgkt_042"}, {182, "cfgkt_043"}, {195, "cfgkt_053"}, {196, "cfgkt_044", "%1 2-3"},
    {197, "cfgkt_044", "%1 4-6"}, {198, "cfgkt_045"}, {201, "cfgkt_046"}, {204, "cfgkt_047"}};

// The boxes of a field list such as "1-7 19".
QVector<Tab::Box> boxesOf(const char* lpFields)
{
    QVector<Tab::Box> boxes;
    for (const QString& qsRun : QString::fromLatin1(lpFields).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList ends = qsRun.split(QLatin1Char('-'));
        for (int n = ends.first().toInt(); n <= ends.last().toInt(); ++n) {
            const auto own = std::find_if(
                std::begin(kOwnCaptions), std::end(kOwnCaptions), [n](const Tab::Box& box) { return box.nField == n; });
            boxes.append(own != std::end(kOwnCaptions) ? *own : Tab::Box{n});
        }
    }
    return boxes;
}

} // namespace

ZOR_Form_Config_Set_Kite3_Tab::ZOR_Form_Config_Set_Kite3_Tab(QWidget* parent)
    : ZOR_Form_Config(parent)
{
    auto* lpOuter = new QVBoxLayout(this);
    lpOuter->setContentsMargins(0, 0, 0, 0);
    // Without a group, clearing a box searches all its sibling buttons for an
    // exclusive partner; a non-exclusive group answers at once.
    m_lpBoxes = new QButtonGroup(this);
    m_lpBoxes->setExclusive(false);
    m_lpScroll = new QScrollArea(this);
    m_lpScroll->setWidgetResizable(true);
    m_lpScroll->setFrameShape(QFrame::NoFrame);
    auto* lpInner = new QWidget(m_lpScroll);
    m_lpContent = new QVBoxLayout(lpInner);
    m_lpScroll->setWidget(lpInner);
    lpOuter->addWidget(m_lpScroll);
}

ZOR_Form_Config_Set_Kite3_Tab::ZOR_Form_Config_Set_Kite3_Tab(const char* lpName, QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    for (const TabFields& tab : kTabs) {
        if (qstrcmp(tab.lpName, lpName) != 0)
            continue;
        setTabName(QLatin1String(tab.lpName), tab.lpTitleKey);
        const QVector<Box> boxes = boxesOf(tab.lpFields);
        addBoxes(boxes.constData(), boxes.size());
        addGroups(tab.lpGroups, tab.nGroups);
    }
    layoutByVersion();
}

int ZOR_Form_Config_Set_Kite3_Tab::fieldVersion(int nField)
{
    if (nField <= ZorTmi::LastFieldKite1)
        return 1;
    return nField <= ZorTmi::LastFieldKite2 ? 2 : 3;
}

int ZOR_Form_Config_Set_Kite3_Tab::fieldsSize(int nFirst, int nCount)
{
    int nSize = 0;
    for (int n = nFirst; n < nFirst + nCount && n <= ZorTmi::FieldCount; ++n)
        nSize += ZorTmi::field(n).width;
    return nSize;
}

void ZOR_Form_Config_Set_Kite3_Tab::setTabName(const QString& qsName, const char* lpTitleKey)
{
    m_qsName = qsName;
    m_qsTitleKey = QLatin1String(lpTitleKey);
    setObjectName(QStringLiteral("tab_") + qsName);
}

// The caption the telemetry field table gives field nField: that of its
// first column with a caption.
void ZOR_Form_Config_Set_Kite3_Tab::fieldCaption(int nField, QString& qsKey, QString& qsPattern)
{
    const ZorTmi::FieldInfo& info = ZorTmi::field(nField);
    for (int c = info.firstColumn; c < info.firstColumn + info.rowCount; ++c) {
        const ZorTmi::Column& column = ZorTmi::column(c);
        if (column.caption && *column.caption) {
            qsKey = QLatin1String(column.captionKey);
            qsPattern = QLatin1String(column.caption);
            return;
        }
    }
}

void ZOR_Form_Config_Set_Kite3_Tab::addBoxes(const Box* lpBoxes, int nCount)
{
    for (int i = 0; i < nCount; ++i) {
        Item item;
        item.nFirst = lpBoxes[i].nField;
        if (lpBoxes[i].lpKey) {
            item.qsKey = QLatin1String(lpBoxes[i].lpKey);
            item.qsPattern = QLatin1String(lpBoxes[i].lpPattern);
        } else {
            fieldCaption(item.nFirst, item.qsKey, item.qsPattern);
        }
        item.nFlags = lpBoxes[i].nFlags;
        item.nDefault = (item.nFlags & (Default | Fixed)) ? 1 : 0;
        item.lpBox = new QCheckBox(this);
        item.lpBox->setObjectName(QStringLiteral("checkBox_Field_%1").arg(item.nFirst));
        item.lpBox->setEnabled(!(item.nFlags & Fixed));
        m_lpBoxes->addButton(item.lpBox);
        m_items.append(item);
        wire(m_items.size() - 1);
    }
}

void ZOR_Form_Config_Set_Kite3_Tab::addGroups(const Group* lpGroups, int nCount)
{
    for (int i = 0; i < nCount; ++i) {
        Item item;
        item.nFirst = lpGroups[i].nFirst;
        item.nFields = lpGroups[i].nFields;
        item.qsKey = QLatin1String(lpGroups[i].lpKey);
        item.qsPattern = QStringLiteral("%1");
        item.lstCounts = QString::fromLatin1(lpGroups[i].lpCounts).split(QLatin1Char(' '));
        item.nDefault = lpGroups[i].nDefault;
        item.nLimit = item.nFields;
        item.lpLabel = new QLabel(this);
        item.lpCount = new QComboBox(this);
        item.lpCount->setObjectName(QStringLiteral("comboBox_Field_%1").arg(item.nFirst));
        item.lpCount->addItems(item.lstCounts.mid(0, item.nFields + 1));
        item.lpLabel->setBuddy(item.lpCount);
        m_items.append(item);
        wire(m_items.size() - 1);
    }
}

void ZOR_Form_Config_Set_Kite3_Tab::wire(int nItem)
{
    const Item& item = m_items[nItem];
    if (item.lpBox)
        connect(item.lpBox, &QCheckBox::toggled, this, [this, nItem] { slot_ItemChanged(nItem); });
    else
        connect(item.lpCount, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, nItem] { slot_ItemChanged(nItem); });
    if (item.nDefault > 0)
        showCount(m_items[nItem], item.nDefault);
}

void ZOR_Form_Config_Set_Kite3_Tab::layoutByVersion()
{
    for (int nVersion = 1; nVersion <= 3; ++nVersion) {
        QVector<const Item*> items;
        for (const Item& item : qAsConst(m_items))
            if (fieldVersion(item.nFirst) == nVersion)
                items.append(&item);
        if (items.isEmpty())
            continue;
        std::sort(items.begin(), items.end(), [](const Item* a, const Item* b) { return a->nFirst < b->nFirst; });
        auto* lpFrame = new QGroupBox(versionTitle(nVersion), this);
        auto* lpGrid = new QGridLayout(lpFrame);
        const int nRows = (items.size() + kColumns - 1) / kColumns;
        for (int i = 0; i < items.size(); ++i) {
            const int nRow = i % nRows;
            const int nCol = (i / nRows) * 2;
            if (items[i]->lpBox) {
                lpGrid->addWidget(items[i]->lpBox, nRow, nCol, 1, 2);
            } else {
                lpGrid->addWidget(items[i]->lpLabel, nRow, nCol);
                lpGrid->addWidget(items[i]->lpCount, nRow, nCol + 1);
            }
        }
        for (int c = 0; c < kColumns * 2; ++c)
            lpGrid->setColumnStretch(c, 1);
        m_lpContent->addWidget(lpFrame);
    }
    m_lpContent->addStretch(1);
}

void ZOR_Form_Config_Set_Kite3_Tab::translateItem(Item& item)
{
    const QString qsCaption = item.qsKey.isEmpty() ? item.qsPattern : item.qsPattern.arg(zorTr(item.qsKey));
    const int nBytes = fieldsSize(item.nFirst, item.nFields);
    const QString qsTip = item.nFields == 1
        ? zorTr(QStringLiteral("cfgkt_006")).arg(item.nFirst).arg(nBytes)
        : zorTr(QStringLiteral("cfgkt_007")).arg(item.nFirst).arg(item.nFirst + item.nFields - 1).arg(nBytes);
    QWidget* lpWidget = item.lpBox ? static_cast<QWidget*>(item.lpBox) : item.lpCount;
    if (item.lpBox)
        item.lpBox->setText(qsCaption);
    else
        item.lpLabel->setText(qsCaption);
    lpWidget->setToolTip(qsTip);
}

void ZOR_Form_Config_Set_Kite3_Tab::translateForm()
{
    if (!m_qsTitleKey.isEmpty())
        m_qsTitle = zorTr(m_qsTitleKey);
    for (Item& item : m_items)
        translateItem(item);
}

void ZOR_Form_Config_Set_Kite3_Tab::setDefaultParam()
{
    for (Item& item : m_items)
        showCount(item, item.nDefault);
}

int ZOR_Form_Config_Set_Kite3_Tab::countOf(const Item& item) const
{
    if (item.nFlags & Fixed)
        return 1;
    return item.lpBox ? (item.lpBox->isChecked() ? 1 : 0) : qMax(0, item.lpCount->currentIndex());
}

void ZOR_Form_Config_Set_Kite3_Tab::showCount(Item& item, int nCount)
{
    if (item.nFlags & Fixed)
        nCount = 1;
    nCount = qBound(0, nCount, item.nLimit);
    if (item.lpBox)
        item.lpBox->setChecked(nCount > 0);
    else
        item.lpCount->setCurrentIndex(nCount);
}

void ZOR_Form_Config_Set_Kite3_Tab::slot_ItemChanged(int nItem)
{
    Item& item = m_items[nItem];
    const int nCount = countOf(item);
    if (nCount == item.nCount)
        return;
    const int nDelta = fieldsSize(item.nFirst, nCount) - fieldsSize(item.nFirst, item.nCount);
    item.nCount = nCount;
    if (m_bActive[fieldVersion(item.nFirst)])
        nDelta > 0 ? setProtocolSize_Inc(nDelta) : setProtocolSize_Dec(-nDelta);
}

void ZOR_Form_Config_Set_Kite3_Tab::setPositions(const QString& qsMask, int nVersion)
{
    for (Item& item : m_items) {
        if (fieldVersion(item.nFirst) != nVersion)
            continue;
        int nCount = 0;
        for (int i = 0; i < item.nFields; ++i) {
            const int nPos = item.nFirst - 1 + i;
            if (nPos < qsMask.size() && qsMask.at(nPos) == QLatin1Char('1'))
                nCount = i + 1;
        }
        showCount(item, nCount);
    }
}

void ZOR_Form_Config_Set_Kite3_Tab::getPositions(QString& qsMask, int nVersion) const
{
    for (const Item& item : m_items) {
        if (fieldVersion(item.nFirst) != nVersion)
            continue;
        const int nCount = countOf(item);
        for (int i = 0; i < item.nFields; ++i) {
            const int nPos = item.nFirst - 1 + i;
            if (nPos < qsMask.size())
                qsMask[nPos] = i < nCount ? QLatin1Char('1') : QLatin1Char('0');
        }
    }
}

void ZOR_Form_Config_Set_Kite3_Tab::setVersionActive(int nVersion, bool bActive)
{
    if (m_bActive[nVersion] == bActive)
        return;
    m_bActive[nVersion] = bActive;
    for (Item& item : m_items) {
        if (fieldVersion(item.nFirst) != nVersion)
            continue;
        const int nSize = fieldsSize(item.nFirst, item.nCount);
        if (nSize > 0)
            bActive ? setProtocolSize_Inc(nSize) : setProtocolSize_Dec(nSize);
        updateEnabled(item);
    }
}

void ZOR_Form_Config_Set_Kite3_Tab::updateEnabled(Item& item)
{
    const bool bEnabled = m_bActive[fieldVersion(item.nFirst)] && item.nLimit > 0 && !(item.nFlags & Fixed);
    if (item.lpBox) {
        item.lpBox->setEnabled(bEnabled);
        return;
    }
    item.lpCount->setEnabled(bEnabled);
    item.lpLabel->setEnabled(bEnabled);
    if (auto* lpModel = qobject_cast<QStandardItemModel*>(item.lpCount->model()))
        for (int i = 0; i < lpModel->rowCount(); ++i)
            lpModel->item(i)->setEnabled(i <= item.nLimit);
}

bool ZOR_Form_Config_Set_Kite3_Tab::setFieldLimit(int nFirst, int nLimit)
{
    for (Item& item : m_items) {
        if (item.nFirst != nFirst)
            continue;
        item.nLimit = qBound(0, nLimit, item.nFields);
        if (countOf(item) > item.nLimit)
            showCount(item, item.nLimit);
        updateEnabled(item);
        return true;
    }
    return false;
}

bool ZOR_Form_Config_Set_Kite3_Tab::hasField(int nField) const
{
    for (const Item& item : m_items)
        if (nField >= item.nFirst && nField < item.nFirst + item.nFields)
            return true;
    return false;
}

int ZOR_Form_Config_Set_Kite3_Tab::protocolSize() const
{
    int nSize = 0;
    for (const Item& item : m_items)
        if (m_bActive[fieldVersion(item.nFirst)])
            nSize += fieldsSize(item.nFirst, countOf(item));
    return nSize;
}

QCheckBox* ZOR_Form_Config_Set_Kite3_Tab::boxOf(int nField) const
{
    for (const Item& item : m_items)
        if (item.nFirst == nField)
            return item.lpBox;
    return nullptr;
}
