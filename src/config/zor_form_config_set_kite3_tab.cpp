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

namespace {

const int kColumns = 3;

QString versionTitle(int nVersion)
{
    return QStringLiteral("KITE %1.0").arg(nVersion);
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
