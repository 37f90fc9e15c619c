#include "config/zor_form_config_can_param.h"

#include "ui_zor_form_config_can_param.h"

#include "config/zor_terminalprofile.h"
#include "config/zor_treewidgetitem_can.h"
#include "config/zor_userparams.h"
#include "module/zor_language.h"
#include "protocol/zor_bits.h"
#include "store/zor_settingsnode.h"

#include <QTreeWidget>

#include <algorithm>

namespace {

QList<int> sortedUnique(QList<int> lst)
{
    std::sort(lst.begin(), lst.end());
    lst.erase(std::unique(lst.begin(), lst.end()), lst.end());
    return lst;
}

QList<ZOR_TreeWidgetItem_CAN*> topItems(const QTreeWidget* lpTree)
{
    QList<ZOR_TreeWidgetItem_CAN*> items;
    for (int i = 0; lpTree && i < lpTree->topLevelItemCount(); ++i)
        if (auto item = ZOR_TreeWidgetItem_CAN::cast(lpTree->topLevelItem(i)))
            items.append(item);
    return items;
}

QString entryText(int nNum, const QString& qsTitle, bool bNumbered)
{
    return bNumbered ? QStringLiteral("%1. %2").arg(nNum).arg(qsTitle) : qsTitle;
}

} // namespace

const char* const ZOR_Form_Config_CAN_Param::qsNodeName = "CP";

ZOR_Form_Config_CAN_Param::ZOR_Form_Config_CAN_Param(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_CAN_Param)
    , m_lpCatalogue(new ZOR_UserParams(this))
{
    ui->setupUi(this);
    ui->gridLayout->setRowStretch(0, 3);
    ui->gridLayout->setRowStretch(1, 1);
    connect(ui->pushButton_KiteCan, &QPushButton::clicked, this, &ZOR_Form_Config_CAN_Param::slot_clicked_Btn_KiteCan);
    connect(
        ui->pushButton_KiteUser, &QPushButton::clicked, this, &ZOR_Form_Config_CAN_Param::slot_clicked_Btn_KiteUser);
    initForm();
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

ZOR_Form_Config_CAN_Param::~ZOR_Form_Config_CAN_Param() = default;

void ZOR_Form_Config_CAN_Param::initForm()
{
    fillTree(SC);
    fillTree(Cmd);
    setTypeCanExt();
}

void ZOR_Form_Config_CAN_Param::translateForm()
{
    ui->groupBox_SC->setTitle(zorTr("cfgcan_001"));
    ui->groupBox_Add->setTitle(zorTr("cfgcan_002"));
    ui->groupBox_Cmd->setTitle(zorTr("cfgcan_003"));
    ui->pushButton_KiteCan->setText(zorTr("cfgcan_004"));
    ui->pushButton_KiteUser->setText(zorTr("cfgcan_005"));
    m_lpCatalogue->translateClass();
    retitleTree(SC);
    retitleTree(additionalList());
    retitleTree(Cmd);
}

void ZOR_Form_Config_CAN_Param::setDefaultParam()
{
    // Nothing is read until the technician chooses: a parameter the vehicle
    // does not send only costs bus time.
    for (int i = 0; i < ListCount; ++i)
        setUse(List(i), {});
}

void ZOR_Form_Config_CAN_Param::readFormParam(CXMLWorkData* lpParent)
{
    auto node = ZOR_SettingsNode::openForRead(lpParent, QLatin1String(qsNodeName));
    if (!node) {
        setDefaultParam();
        return;
    }
    QString qsText;
    node->readString("sc", QString(), qsText);
    setStrParam_SC(qsText);
    node->readString("ac", QString(), qsText);
    setStrParam_AC(qsText);
    node->readString("bc", QString(), qsText);
    setStrParam_BC(qsText);
    node->readString("cmd", QString(), qsText);
    setStrParam_Cmd(qsText);
}

void ZOR_Form_Config_CAN_Param::writeFormParam(CXMLWorkData* lpParent)
{
    auto node = ZOR_SettingsNode::openForWrite(lpParent, QLatin1String(qsNodeName));
    node->writeString("sc", getStrParam_SC());
    node->writeString("ac", getStrParam_AC());
    node->writeString("bc", getStrParam_BC());
    node->writeString("cmd", getStrParam_Cmd());
    node->writeParameters();
}

void ZOR_Form_Config_CAN_Param::applyProfile(const ZOR_TerminalProfile& profile)
{
    if (profile.nCanVariant == ZOR_TerminalProfile::CanBt)
        setTypeCanBt();
    else
        setTypeCanExt();
}

QTreeWidget* ZOR_Form_Config_CAN_Param::treeSC() const
{
    return ui->treeWidget_SC;
}
QTreeWidget* ZOR_Form_Config_CAN_Param::treeAdditional() const
{
    return ui->treeWidget_Add;
}
QTreeWidget* ZOR_Form_Config_CAN_Param::treeCmd() const
{
    return ui->treeWidget_Cmd;
}

QString ZOR_Form_Config_CAN_Param::getStrParam_SC() const
{
    return hexTextOf(SC);
}
QString ZOR_Form_Config_CAN_Param::getStrParam_AC() const
{
    return hexTextOf(AC);
}
QString ZOR_Form_Config_CAN_Param::getStrParam_BC() const
{
    return hexTextOf(BC);
}
QString ZOR_Form_Config_CAN_Param::getStrParam_Cmd() const
{
    return hexTextOf(Cmd);
}
void ZOR_Form_Config_CAN_Param::setStrParam_SC(const QString& qsText)
{
    readHexTextOf(SC, qsText);
}
void ZOR_Form_Config_CAN_Param::setStrParam_AC(const QString& qsText)
{
    readHexTextOf(AC, qsText);
}
void ZOR_Form_Config_CAN_Param::setStrParam_BC(const QString& qsText)
{
    readHexTextOf(BC, qsText);
}
void ZOR_Form_Config_CAN_Param::setStrParam_Cmd(const QString& qsText)
{
    readHexTextOf(Cmd, qsText);
}

void ZOR_Form_Config_CAN_Param::setStrParam_SC_316(const QString& qsText)
{
    readRenumbered(SC, readHexText(qsText, qsText.size()), &ZOR_UserParams::getListParamsCAN_SC_316);
}

void ZOR_Form_Config_CAN_Param::setStrParam_SC_320(const QString& qsText)
{
    readRenumbered(SC, readHexText(qsText, qsText.size()), &ZOR_UserParams::getListParamsCAN_SC_320);
}

void ZOR_Form_Config_CAN_Param::setStrParam_AC_316(const QString& qsText)
{
    readRenumbered(AC, readHexText(qsText, qsText.size()), &ZOR_UserParams::getListParamsCAN_AC_316);
}

void ZOR_Form_Config_CAN_Param::setStrParam_AC_320(const QString& qsText)
{
    readRenumbered(AC, readHexText(qsText, qsText.size()), &ZOR_UserParams::getListParamsCAN_AC_320);
}

// Old command texts name commands by the old firmware's positions, which
// were its command numbers.
void ZOR_Form_Config_CAN_Param::setStrParam_Cmd_316(const QString& qsText)
{
    readRenumbered(Cmd, readCmdText(qsText, 4 * qsText.size()), &ZOR_UserParams::getListParamsCAN_Cmd_316);
}

void ZOR_Form_Config_CAN_Param::setStrParam_Cmd_320(const QString& qsText)
{
    readRenumbered(Cmd, readCmdText(qsText, 4 * qsText.size()), &ZOR_UserParams::getListParamsCAN_Cmd_320);
}

void ZOR_Form_Config_CAN_Param::readRenumbered(
    List list, const QList<int>& lstOld, void (ZOR_UserParams::*map)(QMap<int, int>&) const)
{
    QMap<int, int> renumber;
    (m_lpCatalogue->*map)(renumber);
    QList<int> lstNums;
    for (int nOld : lstOld)
        if (renumber.contains(nOld))
            lstNums.append(renumber.value(nOld));
    setUse(list, lstNums);
}

void ZOR_Form_Config_CAN_Param::setTypeCanExt()
{
    if (m_bAdditionalBuilt && m_nVariant == ZOR_TerminalProfile::CanExt)
        return;
    delPrevTypeCanBT();
    m_nVariant = ZOR_TerminalProfile::CanExt;
    fillTree(AC);
    m_bAdditionalBuilt = true;
    // Showing the kept selection again is no edit.
    const QSignalBlocker blocker(ui->treeWidget_Add);
    setUse(AC, m_lstUse[AC]);
}

void ZOR_Form_Config_CAN_Param::setTypeCanBt()
{
    if (m_bAdditionalBuilt && m_nVariant == ZOR_TerminalProfile::CanBt)
        return;
    delPrevTypeCanExt();
    m_nVariant = ZOR_TerminalProfile::CanBt;
    fillTree(BC);
    m_bAdditionalBuilt = true;
    // Showing the kept selection again is no edit.
    const QSignalBlocker blocker(ui->treeWidget_Add);
    setUse(BC, m_lstUse[BC]);
}

void ZOR_Form_Config_CAN_Param::delPrevTypeCanExt()
{
    if (!m_bAdditionalBuilt || m_nVariant != ZOR_TerminalProfile::CanExt)
        return;
    m_lstUse[AC] = useList(AC);
    m_bAdditionalBuilt = false;
    ui->treeWidget_Add->clear();
}

void ZOR_Form_Config_CAN_Param::delPrevTypeCanBT()
{
    if (!m_bAdditionalBuilt || m_nVariant != ZOR_TerminalProfile::CanBt)
        return;
    m_lstUse[BC] = useList(BC);
    m_bAdditionalBuilt = false;
    ui->treeWidget_Add->clear();
}

void ZOR_Form_Config_CAN_Param::selectTreeWidgetItem(QTreeWidget* lpTree, int nNum, bool bSelect)
{
    for (ZOR_TreeWidgetItem_CAN* item : topItems(lpTree))
        if (item->getNum() == nNum)
            item->setChecked(bSelect);
}

void ZOR_Form_Config_CAN_Param::selectTreeWidgetListItems(QTreeWidget* lpTree, const QList<int>& lstNums, bool bSelect)
{
    for (ZOR_TreeWidgetItem_CAN* item : topItems(lpTree))
        if (lstNums.contains(item->getNum()))
            item->setChecked(bSelect);
}

void ZOR_Form_Config_CAN_Param::selectTreeWidgetAllItems(QTreeWidget* lpTree, bool bSelect)
{
    for (ZOR_TreeWidgetItem_CAN* item : topItems(lpTree))
        item->setChecked(bSelect);
}

QString ZOR_Form_Config_CAN_Param::makeHexText(const QList<int>& lstNums, int nDigits)
{
    QByteArray digits(qMax(nDigits, 0), '0');
    for (int nNum : lstNums) {
        if (nNum < 1 || nNum > 4 * digits.size())
            continue;
        const int nDigit = (nNum - 1) / 4;
        const int nBit = 8 >> ((nNum - 1) % 4);
        const int nValue = zorHexDigitValue(QLatin1Char(digits[nDigit]));
        // A number given twice must not carry into the next bit.
        if (!(nValue & nBit))
            digits[nDigit] = zorHexDigit(nValue + nBit);
    }
    return QString::fromLatin1(digits);
}

QList<int> ZOR_Form_Config_CAN_Param::readHexText(const QString& qsText, int nDigits)
{
    const QString qsDigits = qsText.trimmed();
    QList<int> lstNums;
    for (int i = 0; i < qMin(nDigits, qsDigits.size()); ++i) {
        const int nValue = zorHexDigitValue(qsDigits[i]);
        for (int nBit = 0; nValue > 0 && nBit < 4; ++nBit)
            if (nValue & (8 >> nBit))
                lstNums.append(4 * i + nBit + 1);
    }
    return lstNums;
}

QString ZOR_Form_Config_CAN_Param::makeCmdText(const QVector<bool>& lstChecked)
{
    QString qsText;
    for (int nFirst = 0; nFirst < lstChecked.size(); nFirst += 4) {
        int nValue = 0;
        for (int i = 0; i < 4 && nFirst + i < lstChecked.size(); ++i)
            if (lstChecked[nFirst + i])
                nValue += 1 << i;
        qsText += QLatin1Char(zorHexDigit(nValue));
    }
    return qsText;
}

QList<int> ZOR_Form_Config_CAN_Param::readCmdText(const QString& qsText, int nCount)
{
    const QString qsDigits = qsText.trimmed();
    QList<int> lstPositions;
    for (int i = 0; i < qsDigits.size(); ++i) {
        const int nValue = zorHexDigitValue(qsDigits[i]);
        for (int nBit = 0; nValue > 0 && nBit < 4; ++nBit)
            if ((nValue & (1 << nBit)) && 4 * i + nBit + 1 <= nCount)
                lstPositions.append(4 * i + nBit + 1);
    }
    return lstPositions;
}

void ZOR_Form_Config_CAN_Param::slot_clicked_Btn_KiteCan()
{
    emit signal_OpenTab_KiteSet_Tab_CAN();
    emit signal_ShowPage(QStringLiteral("protocol"), QStringLiteral("CAN"));
}

void ZOR_Form_Config_CAN_Param::slot_clicked_Btn_KiteUser()
{
    emit signal_OpenTab_KiteSet_Tab_User();
    emit signal_ShowPage(QStringLiteral("protocol"), QStringLiteral("User"));
}

QVector<ZOR_UserParam_CAN*> ZOR_Form_Config_CAN_Param::catalogueList(List list) const
{
    QVector<ZOR_UserParam_CAN*> entries;
    switch (list) {
    case SC: m_lpCatalogue->getListParamsCAN_SC(entries); break;
    case AC: m_lpCatalogue->getListParamsCAN_AC(entries); break;
    case BC: m_lpCatalogue->getListParamsCAN_BC(entries); break;
    case Cmd: m_lpCatalogue->getListParamsCAN_Cmd(entries); break;
    case ListCount: break;
    }
    return entries;
}

QTreeWidget* ZOR_Form_Config_CAN_Param::treeOf(List list) const
{
    switch (list) {
    case SC: return ui->treeWidget_SC;
    case Cmd: return ui->treeWidget_Cmd;
    case AC:
    case BC: return m_bAdditionalBuilt && list == additionalList() ? ui->treeWidget_Add : nullptr;
    case ListCount: break;
    }
    return nullptr;
}

int ZOR_Form_Config_CAN_Param::digitsOf(List list) const
{
    switch (list) {
    case SC: return nDigits_SC;
    case AC: return nDigits_AC;
    case BC: return nDigits_BC;
    case Cmd:
    case ListCount: break;
    }
    return 0;
}

bool ZOR_Form_Config_CAN_Param::isStorable(List list, int nNum) const
{
    return list == Cmd || (nNum >= 1 && nNum <= 4 * digitsOf(list));
}

QString ZOR_Form_Config_CAN_Param::hexTextOf(List list) const
{
    if (list != Cmd)
        return makeHexText(useList(list), digitsOf(list));
    QVector<bool> lstChecked;
    for (const ZOR_TreeWidgetItem_CAN* item : topItems(ui->treeWidget_Cmd))
        lstChecked.append(item->isChecked());
    return makeCmdText(lstChecked);
}

void ZOR_Form_Config_CAN_Param::readHexTextOf(List list, const QString& qsText)
{
    if (list != Cmd) {
        setUse(list, readHexText(qsText, digitsOf(list)));
        return;
    }
    const QVector<ZOR_UserParam_CAN*> entries = catalogueList(Cmd);
    QList<int> lstNums;
    for (int nPosition : readCmdText(qsText, entries.size()))
        lstNums.append(entries[nPosition - 1]->getParam_Num());
    setUse(Cmd, lstNums);
}

void ZOR_Form_Config_CAN_Param::fillTree(List list)
{
    QTreeWidget* lpTree = list == SC ? ui->treeWidget_SC : list == Cmd ? ui->treeWidget_Cmd : ui->treeWidget_Add;
    const QSignalBlocker blocker(lpTree);
    lpTree->clear();
    for (const ZOR_UserParam_CAN* entry : catalogueList(list)) {
        auto item = new ZOR_TreeWidgetItem_CAN(lpTree, entry->getParam_Num());
        if (!isStorable(list, entry->getParam_Num()))
            item->setFlags(item->flags() & ~(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable));
        for (const ZOR_UserParam_CAN_Bit* bit : entry->getListParamBit())
            new ZOR_TreeWidgetItem_CAN(item, bit->getParam_Num());
    }
    retitleTree(list);
    // The commands are few: all of them stay in view.
    if (list == Cmd && lpTree->topLevelItemCount() > 0)
        lpTree->setMinimumHeight(
            lpTree->topLevelItemCount() * lpTree->sizeHintForRow(0) + 2 * lpTree->frameWidth() + 4);
}

void ZOR_Form_Config_CAN_Param::retitleTree(List list)
{
    QTreeWidget* lpTree = treeOf(list);
    if (!lpTree)
        return;
    const QSignalBlocker blocker(lpTree);
    const QVector<ZOR_UserParam_CAN*> entries = catalogueList(list);
    const QList<ZOR_TreeWidgetItem_CAN*> items = topItems(lpTree);
    for (int i = 0; i < qMin(items.size(), entries.size()); ++i) {
        ZOR_TreeWidgetItem_CAN* item = items[i];
        const ZOR_UserParam_CAN* entry = entries[i];
        item->setText(0, entryText(entry->getParam_Num(), entry->getParamTitle(), list != Cmd));
        item->setToolTip(0, isStorable(list, entry->getParam_Num()) ? QString() : zorTr("cfgcan_006"));
        const auto& bits = entry->getListParamBit();
        for (int j = 0; j < qMin(item->childCount(), bits.size()); ++j)
            item->child(j)->setText(0, entryText(bits[j]->getParam_Num(), bits[j]->getParamTitle(), true));
    }
}

QList<int> ZOR_Form_Config_CAN_Param::useList(List list) const
{
    const QTreeWidget* lpTree = treeOf(list);
    if (!lpTree)
        return m_lstUse[list];
    QList<int> lstNums;
    for (const ZOR_TreeWidgetItem_CAN* item : topItems(lpTree))
        if (item->isChecked() && isStorable(list, item->getNum()))
            lstNums.append(item->getNum());
    return sortedUnique(lstNums);
}

void ZOR_Form_Config_CAN_Param::changeUse(List list, int nNum, bool bUse)
{
    // Only the one item changes: bits ticked by hand elsewhere stay.
    if (QTreeWidget* lpTree = treeOf(list)) {
        if (isStorable(list, nNum))
            selectTreeWidgetItem(lpTree, nNum, bUse);
        return;
    }
    QList<int> lstNums = m_lstUse[list];
    if (bUse)
        lstNums.append(nNum);
    else
        lstNums.removeAll(nNum);
    setUse(list, lstNums);
}

void ZOR_Form_Config_CAN_Param::setUse(List list, const QList<int>& lstNums)
{
    // Only numbers the list has and its text can hold survive.
    QList<int> lstKept;
    for (const ZOR_UserParam_CAN* entry : catalogueList(list))
        if (lstNums.contains(entry->getParam_Num()) && isStorable(list, entry->getParam_Num()))
            lstKept.append(entry->getParam_Num());
    lstKept = sortedUnique(lstKept);
    if (QTreeWidget* lpTree = treeOf(list)) {
        for (ZOR_TreeWidgetItem_CAN* item : topItems(lpTree))
            item->setChecked(lstKept.contains(item->getNum()));
    } else {
        m_lstUse[list] = lstKept;
    }
}
