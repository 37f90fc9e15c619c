#include "config/zor_form_config_set_kite3_tab_user.h"

#include "config/zor_configproblems.h"
#include "config/zor_datatypes.h"
#include "config/zor_form_config_rs_param_mdbs.h"
#include "config/zor_userparamregistry.h"
#include "config/zor_userparams.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QStandardItemModel>

namespace {

struct Width
{
    int nBytes;
    int nSlots;
    int nFirst;
    const char* lpTitleKey;
};
// Fields 207-255: the slots of each width, in field order.
const Width kWidths[] = {
    {1, 16, 207, "cfgkt_060"},
    {2, 15, 223, "cfgkt_061"},
    {4, 15, 238, "cfgkt_062"},
    {8, 3, 253, "cfgkt_063"},
};
const int kSlotsPerColumn = 8;

enum Role { PrefixRole = Qt::UserRole + 1, MessRole, SuffixRole, OfferedRole };

int widthIndex(int nBytes)
{
    switch (nBytes) {
    case 1: return 0;
    case 2: return 1;
    case 4: return 2;
    case 8: return 3;
    default: return -1;
    }
}

bool isNone(const ZOR_UserParamEntry& entry)
{
    return entry.qsPrefix.isEmpty() && entry.qsMess.isEmpty() && entry.qsSuffix.isEmpty();
}

ZOR_UserParamEntry entryAt(const QStandardItemModel* lpModel, int nRow)
{
    const QStandardItem* lpItem = lpModel->item(nRow);
    if (!lpItem)
        return {};
    return {
        lpItem->data(PrefixRole).toString(), lpItem->data(MessRole).toString(), lpItem->data(SuffixRole).toString(), 0};
}

const QString kUserParamsNode = QStringLiteral("USERPARAMS");

// A list of modest width whatever its captions. Qt's own way to say so
// (setSizeAdjustPolicy) builds the popup of every one of the 49 lists at
// once, which then slows every enabling and disabling of the tab.
class SlotComboBox : public QComboBox
{
public:
    using QComboBox::QComboBox;
    QSize sizeHint() const override
    {
        return QSize(fontMetrics().averageCharWidth() * 24, QComboBox::minimumSizeHint().height());
    }
    QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_User::ZOR_Form_Config_Set_Kite3_Tab_User(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
    , m_lpCatalogue(new ZOR_UserParams(this))
{
    setTabName(QStringLiteral("User"), "cfgkt_019");
    QVector<Box> boxes;
    for (const Width& w : kWidths)
        for (int i = 0; i < w.nSlots; ++i)
            boxes.append({w.nFirst + i, ""});
    addBoxes(boxes.constData(), boxes.size());

    auto* lpHint = new QLabel(this);
    lpHint->setObjectName(QStringLiteral("label_UserHint"));
    lpHint->setWordWrap(true);
    contentLayout()->addWidget(lpHint);
    auto* lpGrid = new QGridLayout;
    contentLayout()->addLayout(lpGrid);
    for (int nWidth = 0; nWidth < 4; ++nWidth) {
        const Width& w = kWidths[nWidth];
        m_models[nWidth] = new QStandardItemModel(this);
        auto* lpGroup = new QGroupBox(this);
        lpGroup->setObjectName(QStringLiteral("groupBox_User_%1").arg(w.nBytes));
        auto* lpSlots = new QGridLayout(lpGroup);
        for (int i = 0; i < w.nSlots; ++i) {
            Slot slot;
            slot.nField = w.nFirst + i;
            slot.nWidth = w.nBytes;
            slot.lpCombo = new SlotComboBox(lpGroup);
            slot.lpCombo->setObjectName(QStringLiteral("comboBox_User_%1").arg(slot.nField));
            slot.lpCombo->setModel(m_models[nWidth]);
            QCheckBox* lpBox = boxOf(slot.nField);
            lpBox->setParent(lpGroup);
            const int nRow = i % kSlotsPerColumn;
            const int nCol = (i / kSlotsPerColumn) * 2;
            lpSlots->addWidget(lpBox, nRow, nCol);
            lpSlots->addWidget(slot.lpCombo, nRow, nCol + 1);
            lpSlots->setColumnStretch(nCol + 1, 1);
            const int nSlot = m_slots.size();
            connect(slot.lpCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                [this, nSlot](int nRow) { slot_ChoiceChanged(nSlot, nRow); });
            connect(lpBox, &QCheckBox::toggled, this, [this, nSlot](bool b) { slot_BoxToggled(nSlot, b); });
            m_slots.append(slot);
        }
        lpGrid->addWidget(lpGroup, nWidth / 2, nWidth % 2, Qt::AlignTop);
    }
    contentLayout()->addStretch(1);
    m_lpCatalogue->getUserParamEntries(m_catalogue);
    rebuildModels();
}

ZOR_Form_Config_Set_Kite3_Tab_User::~ZOR_Form_Config_Set_Kite3_Tab_User() = default;

void ZOR_Form_Config_Set_Kite3_Tab_User::translateForm()
{
    ZOR_Form_Config_Set_Kite3_Tab::translateForm();
    for (const Width& w : kWidths) {
        if (auto* lpGroup = findChild<QGroupBox*>(QStringLiteral("groupBox_User_%1").arg(w.nBytes)))
            lpGroup->setTitle(zorTr(QLatin1String(w.lpTitleKey)));
        for (int i = 0; i < w.nSlots; ++i)
            boxOf(w.nFirst + i)->setText(QString::number(i + 1));
    }
    if (auto* lpHint = findChild<QLabel*>(QStringLiteral("label_UserHint")))
        lpHint->setText(zorTr(QStringLiteral("cfgkt_064")));
    // The catalogue keeps the captions of the language it was built in.
    const QString qsLanguage = ZOR_Language::instance().language();
    if (qsLanguage != m_qsCatalogueLanguage) {
        if (!m_qsCatalogueLanguage.isNull())
            m_lpCatalogue->translateClass();
        m_qsCatalogueLanguage = qsLanguage;
        rebuildModels();
    }
}

void ZOR_Form_Config_Set_Kite3_Tab_User::setFormat_Enabled_Kite_3(bool bEnabled)
{
    ZOR_Form_Config_Set_Kite3_Tab::setFormat_Enabled_Kite_3(bEnabled);
    for (const Slot& slot : qAsConst(m_slots))
        slot.lpCombo->setEnabled(bEnabled);
}

void ZOR_Form_Config_Set_Kite3_Tab_User::setUserParamRegistry(ZOR_UserParamRegistry* lpRegistry)
{
    if (m_lpRegistry == lpRegistry)
        return;
    if (m_lpRegistry)
        disconnect(m_lpRegistry, nullptr, this, nullptr);
    m_lpRegistry = lpRegistry;
    if (m_lpRegistry) {
        connect(m_lpRegistry, &ZOR_UserParamRegistry::signal_Added, this,
            &ZOR_Form_Config_Set_Kite3_Tab_User::slot_Published);
        connect(m_lpRegistry, &ZOR_UserParamRegistry::signal_Removed, this,
            &ZOR_Form_Config_Set_Kite3_Tab_User::slot_Withdrawn);
        connect(m_lpRegistry, &ZOR_UserParamRegistry::signal_Cleared, this,
            &ZOR_Form_Config_Set_Kite3_Tab_User::rebuildModels);
    }
    rebuildModels();
}

QStandardItemModel* ZOR_Form_Config_Set_Kite3_Tab_User::modelOf(int nWidth) const
{
    const int i = widthIndex(nWidth);
    return i < 0 ? nullptr : m_models[i];
}

int ZOR_Form_Config_Set_Kite3_Tab_User::rowOf(int nWidth, const ZOR_UserParamEntry& entry) const
{
    const QStandardItemModel* lpModel = modelOf(nWidth);
    for (int nRow = 1; lpModel && nRow < lpModel->rowCount(); ++nRow)
        if (entryAt(lpModel, nRow).sameValue(entry))
            return nRow;
    return -1;
}

bool ZOR_Form_Config_Set_Kite3_Tab_User::isOffered(const ZOR_UserParamEntry& entry) const
{
    for (const ZOR_UserParamEntry& e : m_catalogue)
        if (e.sameValue(entry))
            return true;
    return m_lpRegistry && m_lpRegistry->indexOf(entry.qsPrefix, entry.qsMess, entry.qsSuffix) >= 0;
}

QString ZOR_Form_Config_Set_Kite3_Tab_User::captionOf(const ZOR_UserParamEntry& entry) const
{
    const QString qsName = ZOR_UserParams::getUserParamName(entry.qsPrefix, entry.qsMess, entry.qsSuffix);
    const QString qsTitle = m_lpCatalogue->getUserParamTitle(qsName);
    return qsTitle.isEmpty() ? qsName : QStringLiteral("%1: %2").arg(qsName, qsTitle);
}

void ZOR_Form_Config_Set_Kite3_Tab_User::addRow(int nWidth, const ZOR_UserParamEntry& entry, bool bOffered)
{
    auto* lpItem = new QStandardItem;
    lpItem->setData(entry.qsPrefix, PrefixRole);
    lpItem->setData(entry.qsMess, MessRole);
    lpItem->setData(entry.qsSuffix, SuffixRole);
    modelOf(nWidth)->appendRow(lpItem);
    setRowOffered(nWidth, modelOf(nWidth)->rowCount() - 1, bOffered);
}

void ZOR_Form_Config_Set_Kite3_Tab_User::setRowOffered(int nWidth, int nRow, bool bOffered)
{
    QStandardItem* lpItem = modelOf(nWidth)->item(nRow);
    const QString qsCaption = captionOf(entryAt(modelOf(nWidth), nRow));
    lpItem->setData(bOffered, OfferedRole);
    lpItem->setText(bOffered ? qsCaption : zorTr(QStringLiteral("cfgkt_066")).arg(qsCaption));
}

void ZOR_Form_Config_Set_Kite3_Tab_User::rebuildModels()
{
    m_bShowing = true;
    for (const Width& w : kWidths) {
        QStandardItemModel* lpModel = modelOf(w.nBytes);
        lpModel->clear();
        lpModel->appendRow(new QStandardItem(zorTr(QStringLiteral("cfgkt_065"))));
        for (const ZOR_UserParamEntry& e : qAsConst(m_catalogue))
            if (e.nSize == w.nBytes)
                addRow(w.nBytes, e, true);
        if (m_lpRegistry)
            for (const ZOR_UserParamEntry& e : m_lpRegistry->entries())
                if (e.nSize == w.nBytes && rowOf(w.nBytes, e) < 0)
                    addRow(w.nBytes, e, true);
    }
    for (Slot& slot : m_slots)
        showChoice(slot);
    m_bShowing = false;
}

void ZOR_Form_Config_Set_Kite3_Tab_User::showChoice(Slot& slot)
{
    int nRow = 0;
    if (!isNone(slot.chosen)) {
        nRow = rowOf(slot.nWidth, slot.chosen);
        if (nRow < 0) {
            addRow(slot.nWidth, slot.chosen, false);
            nRow = modelOf(slot.nWidth)->rowCount() - 1;
        }
    }
    const bool bWasShowing = m_bShowing;
    m_bShowing = true;
    slot.lpCombo->setCurrentIndex(nRow);
    m_bShowing = bWasShowing;
}

void ZOR_Form_Config_Set_Kite3_Tab_User::choose(Slot& slot, const ZOR_UserParamEntry& entry)
{
    slot.chosen = entry;
    slot.chosen.nSize = 0;
    showChoice(slot);
    if (!isNone(entry))
        boxOf(slot.nField)->setChecked(true);
}

void ZOR_Form_Config_Set_Kite3_Tab_User::slot_ChoiceChanged(int nSlot, int nRow)
{
    if (m_bShowing || nRow < 0)
        return;
    Slot& slot = m_slots[nSlot];
    const ZOR_UserParamEntry entry = entryAt(modelOf(slot.nWidth), nRow);
    if (entry.sameValue(slot.chosen))
        return;
    choose(slot, entry);
    if (isNone(entry))
        boxOf(slot.nField)->setChecked(false);
}

void ZOR_Form_Config_Set_Kite3_Tab_User::slot_BoxToggled(int nSlot, bool bChecked)
{
    if (!bChecked && !isNone(m_slots[nSlot].chosen))
        choose(m_slots[nSlot], {});
}

void ZOR_Form_Config_Set_Kite3_Tab_User::slot_Published(const ZOR_UserParamEntry& entry)
{
    if (!modelOf(entry.nSize))
        return;
    m_bShowing = true;
    const int nRow = rowOf(entry.nSize, entry);
    if (nRow < 0)
        addRow(entry.nSize, entry, true);
    else
        setRowOffered(entry.nSize, nRow, true);
    m_bShowing = false;
}

void ZOR_Form_Config_Set_Kite3_Tab_User::slot_Withdrawn(const ZOR_UserParamEntry& entry)
{
    const int nRow = modelOf(entry.nSize) ? rowOf(entry.nSize, entry) : -1;
    if (nRow < 0 || isOffered(entry))
        return;
    bool bChosen = false;
    for (const Slot& slot : qAsConst(m_slots))
        bChosen = bChosen || (slot.nWidth == entry.nSize && slot.chosen.sameValue(entry));
    m_bShowing = true;
    if (bChosen)
        setRowOffered(entry.nSize, nRow, false);
    else
        modelOf(entry.nSize)->removeRow(nRow);
    m_bShowing = false;
}

ZOR_UserParamEntry ZOR_Form_Config_Set_Kite3_Tab_User::userParam(int nField) const
{
    for (const Slot& slot : m_slots)
        if (slot.nField == nField)
            return slot.chosen;
    return {};
}

bool ZOR_Form_Config_Set_Kite3_Tab_User::setUserParam(int nField, const ZOR_UserParamEntry& entry)
{
    for (Slot& slot : m_slots) {
        if (slot.nField != nField)
            continue;
        choose(slot, entry);
        if (isNone(entry))
            boxOf(nField)->setChecked(false);
        return true;
    }
    return false;
}

QVector<ZOR_UserParamEntry> ZOR_Form_Config_Set_Kite3_Tab_User::listedParams(int nWidth) const
{
    QVector<ZOR_UserParamEntry> list;
    const QStandardItemModel* lpModel = modelOf(nWidth);
    for (int nRow = 1; lpModel && nRow < lpModel->rowCount(); ++nRow)
        list.append(entryAt(lpModel, nRow));
    return list;
}

namespace {

// Modbus values are published with the caption of their data type, which
// follows the language; the file keeps the code ("2u") so that a document
// saved in one language still names the same value in another.
QString storedSuffix(const ZOR_UserParamEntry& entry)
{
    if (entry.qsPrefix != glqsMbPreffix)
        return entry.qsSuffix;
    const QString qsCode = ZOR_DataTypes::captionList().codeOf(entry.qsSuffix);
    return qsCode.isEmpty() ? entry.qsSuffix : qsCode;
}

QString shownSuffix(const QString& qsPrefix, const QString& qsStored)
{
    if (qsPrefix != glqsMbPreffix || ZOR_DataTypes::sizeOf(qsStored) == 0)
        return qsStored;
    return ZOR_DataTypes::captionList().captionOf(qsStored);
}

} // namespace

void ZOR_Form_Config_Set_Kite3_Tab_User::readUserParam(CXMLWorkData* lpProtocol)
{
    const auto lpParams = ZOR_SettingsNode::openForRead(lpProtocol, kUserParamsNode);
    if (!lpParams)
        return;
    for (Slot& slot : m_slots) {
        const auto lpNode = ZOR_SettingsNode::openForRead(
            lpParams.get(), ZOR_SettingsNode::name(QStringLiteral("FIELD"), slot.nField));
        if (!lpNode)
            continue;
        // The mask decides which fields are present: a choice saved for a
        // field the mask leaves out is not taken.
        ZOR_ConfigProblems* lpProblems = ZOR_ConfigProblems::active();
        if (!boxOf(slot.nField)->isChecked()) {
            if (lpProblems)
                lpProblems->note(lpNode->getTag(), QString(), QString(), QString(),
                    QStringLiteral("field %1 is not in the mask: the choice is dropped").arg(slot.nField));
            continue;
        }
        ZOR_UserParamEntry entry;
        lpNode->readString("prefix", QString(), entry.qsPrefix);
        lpNode->readString("mess", QString(), entry.qsMess);
        lpNode->readString("suffix", QString(), entry.qsSuffix);
        // A value of another width would not fit the slot's field.
        const int nWidth = ZOR_DataTypes::sizeOf(entry.qsSuffix);
        if (nWidth != 0 && nWidth != slot.nWidth) {
            if (lpProblems)
                lpProblems->note(lpNode->getTag(), QString(), QString(), QString(),
                    QStringLiteral("a value of %1 bytes does not fit the %2-byte slot of field %3")
                        .arg(nWidth)
                        .arg(slot.nWidth)
                        .arg(slot.nField));
            continue;
        }
        entry.qsSuffix = shownSuffix(entry.qsPrefix, entry.qsSuffix);
        if (isNone(entry))
            continue;
        // The pages have published everything by now: a value no page
        // offers in this width does not fit the slot.
        if (lpProblems && rowOf(slot.nWidth, entry) < 0)
            lpProblems->note(lpNode->getTag(), QStringLiteral("mess"), entry.qsMess, entry.qsMess,
                QStringLiteral("no page offers this value in %1 bytes (field %2)").arg(slot.nWidth).arg(slot.nField),
                slot.lpCombo);
        choose(slot, entry);
    }
}

void ZOR_Form_Config_Set_Kite3_Tab_User::writeUserParam(CXMLWorkData* lpProtocol)
{
    const auto lpParams = ZOR_SettingsNode::openForWrite(lpProtocol, kUserParamsNode);
    for (const Slot& slot : qAsConst(m_slots)) {
        if (isNone(slot.chosen))
            continue;
        const auto lpNode = ZOR_SettingsNode::openForWrite(
            lpParams.get(), ZOR_SettingsNode::name(QStringLiteral("FIELD"), slot.nField));
        lpNode->writeString("prefix", slot.chosen.qsPrefix);
        lpNode->writeString("mess", slot.chosen.qsMess);
        lpNode->writeString("suffix", storedSuffix(slot.chosen));
        lpNode->writeParameters();
    }
    lpParams->writeParameters();
}
