#ifndef ZOR_FORM_CONFIG_CAN_PARAM_H
#define ZOR_FORM_CONFIG_CAN_PARAM_H

// Which catalogue parameters the terminal reads from the CAN bus: the
// standard parameters (SC), the additional ones (AC on terminals with the
// extended CAN reader, BC on those with the other reader) and the commands it
// may send on the bus (Cmd). Each list is a tree of ZOR_TreeWidgetItem_CAN,
// one top-level item per parameter with its bits as children; a parameter
// counts only when its own box is fully checked.
//
// Stored in the node "CP" below the parent: "sc", "ac", "bc", "cmd".
//
//   sc, ac, bc   one bit per parameter number, a big-endian bit string in
//                lower-case hex: number n is digit (n-1)/4 (from the left),
//                value 8 >> ((n-1) % 4). 20, 47 and 26 digits (numbers up to
//                80, 188, 104); always written in full.
//   cmd          the commands in tree order, four to a digit, the first of
//                each four the value 1, the fourth 8; one digit per started
//                four, not padded: ten commands are three digits.
//
//   only SC 1     sc = "8" + 19 x "0"     only SC 4   sc = "1" + 19 x "0"
//   only SC 80    sc = 19 x "0" + "1"     only cmd 4  cmd = "800"
//
// Reading a text (setStrParam_*): the text replaces the list's selection.
// Digits are taken from the left; a shorter text leaves the numbers it does
// not reach unselected, digits beyond the list's count are ignored, a
// character that is not a hex digit selects nothing of its four numbers and
// does not shift the rest, and a bit of a number the list does not have is
// dropped (it is not written back). AC numbers above 188 cannot be stored:
// their items are shown but cannot be ticked.
//
// The variant readers (_316, _320) read texts saved for terminal firmware
// 3.16 and 3.20, whose numbers differ: each set bit is an old number, taken
// through the catalogue's renumbering map (ZOR_UserParams::getListParams*_316
// and the like) to today's number; an old number the map does not know is
// dropped. Their digits are not limited to today's count.
//
// Both AC and BC are kept whatever the variant: the tree of additional
// parameters shows the variant's list (ZOR_TerminalProfile::CanExt -> AC,
// CanBt -> BC), and the other list's selection is kept as its used-number
// list, so a file saved for one variant keeps the other's text unchanged.

#include "config/zor_form_config.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVector>

#include <memory>

class QTreeWidget;
class QTreeWidgetItem;
class ZOR_UserParam_CAN;
class ZOR_UserParams;

namespace Ui {
class ZOR_Form_Config_CAN_Param;
}

class ZOR_Form_Config_CAN_Param : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static constexpr int nDigits_SC = 20;
    static constexpr int nDigits_AC = 47;
    static constexpr int nDigits_BC = 26;
    static const char* const qsNodeName; // "CP"

    explicit ZOR_Form_Config_CAN_Param(QWidget* parent = nullptr);
    ~ZOR_Form_Config_CAN_Param() override;

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    void readFormParam(CXMLWorkData* lpParent) override;
    void writeFormParam(CXMLWorkData* lpParent) override;
    void applyProfile(const ZOR_TerminalProfile& profile) override;

    QTreeWidget* treeSC() const;
    QTreeWidget* treeAdditional() const;
    QTreeWidget* treeCmd() const;
    // ZOR_TerminalProfile::CanExt or CanBt.
    int canVariant() const { return m_nVariant; }

    QString getStrParam_SC() const;
    QString getStrParam_AC() const;
    QString getStrParam_BC() const;
    QString getStrParam_Cmd() const;
    void setStrParam_SC(const QString& qsText);
    void setStrParam_AC(const QString& qsText);
    void setStrParam_BC(const QString& qsText);
    void setStrParam_Cmd(const QString& qsText);
    void setStrParam_SC_316(const QString& qsText);
    void setStrParam_SC_320(const QString& qsText);
    void setStrParam_AC_316(const QString& qsText);
    void setStrParam_AC_320(const QString& qsText);
    void setStrParam_Cmd_316(const QString& qsText);
    void setStrParam_Cmd_320(const QString& qsText);

    // The additional tree for one variant; the previous variant's items go
    // first (their selection stays in its used-number list).
    void setTypeCanExt();
    void setTypeCanBt();
    void delPrevTypeCanExt();
    void delPrevTypeCanBT();

    // Selected numbers of each list (command numbers for Cmd), ascending.
    // Changing them changes the tree that shows the list.
    QList<int> getUseList_SC() const { return useList(SC); }
    QList<int> getUseList_AC() const { return useList(AC); }
    QList<int> getUseList_BC() const { return useList(BC); }
    QList<int> getUseList_Cmd() const { return useList(Cmd); }
    void addUseList_SC(int nNum) { changeUse(SC, nNum, true); }
    void addUseList_AC(int nNum) { changeUse(AC, nNum, true); }
    void addUseList_BC(int nNum) { changeUse(BC, nNum, true); }
    void addUseList_Cmd(int nNum) { changeUse(Cmd, nNum, true); }
    void delUseList_SC(int nNum) { changeUse(SC, nNum, false); }
    void delUseList_AC(int nNum) { changeUse(AC, nNum, false); }
    void delUseList_BC(int nNum) { changeUse(BC, nNum, false); }
    void delUseList_Cmd(int nNum) { changeUse(Cmd, nNum, false); }
    void clearUseList_SC() { setUse(SC, {}); }
    void clearUseList_AC() { setUse(AC, {}); }
    void clearUseList_BC() { setUse(BC, {}); }
    void clearUseList_Cmd() { setUse(Cmd, {}); }

    // Check states of a tree's top-level items by parameter number; an item
    // with bits passes the state on to them.
    void selectTreeWidgetItem(QTreeWidget* lpTree, int nNum, bool bSelect);
    void selectTreeWidgetListItems(QTreeWidget* lpTree, const QList<int>& lstNums, bool bSelect);
    void selectTreeWidgetAllItems(QTreeWidget* lpTree, bool bSelect);

    // The stored-text rules themselves. Numbers outside 1..4*nDigits are
    // left out; reading returns the numbers of the set bits, ascending.
    static QString makeHexText(const QList<int>& lstNums, int nDigits);
    static QList<int> readHexText(const QString& qsText, int nDigits);
    // Commands: lstChecked[i] is command position i+1.
    static QString makeCmdText(const QVector<bool>& lstChecked);
    static QList<int> readCmdText(const QString& qsText, int nCount);

signals:
    void signal_OpenTab_KiteSet_Tab_CAN();
    void signal_OpenTab_KiteSet_Tab_User();

private slots:
    void slot_clicked_Btn_KiteCan();
    void slot_clicked_Btn_KiteUser();

private:
    enum List { SC = 0, AC, BC, Cmd, ListCount };

    QVector<ZOR_UserParam_CAN*> catalogueList(List list) const;
    QTreeWidget* treeOf(List list) const; // null when no tree shows the list
    List additionalList() const { return m_nVariant == 1 ? BC : AC; }
    int digitsOf(List list) const;
    bool isStorable(List list, int nNum) const;
    QString hexTextOf(List list) const;
    void readHexTextOf(List list, const QString& qsText);
    void readRenumbered(List list, const QList<int>& lstOld, void (ZOR_UserParams::*map)(QMap<int, int>&) const);
    void fillTree(List list);
    void retitleTree(List list);
    void changeUse(List list, int nNum, bool bUse);
    void setUse(List list, const QList<int>& lstNums);
    QList<int> useList(List list) const;

    std::unique_ptr<Ui::ZOR_Form_Config_CAN_Param> ui;
    ZOR_UserParams* m_lpCatalogue = nullptr;
    int m_nVariant = 0;
    bool m_bAdditionalBuilt = false;
    // Selections of lists no tree shows (the other variant's list).
    QList<int> m_lstUse[ListCount];
};

#endif
