#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_H

// One tab of the protocol field-set form: a group of telemetry fields, each
// a check box made from a table row, or - for a run of fields the terminal
// fills in order (tyre sensors, passenger doors, precise sensors) - a count
// chosen in a list. A tab reads and writes its own positions of the
// 255-character field mask, reports every change of the record size, and
// follows the protocol version and the terminal's capabilities.
//
// The field tabs come from one table in the .cpp: each names its fields
// ("8-18 70-77"), and a field takes the field table's caption unless the
// table of own captions gives it a key, a pattern or a flag:
//
//   {98, "cfgkt_033"},                       // a caption of its own
//   {4, "cfgkt_020", "%1", Tab::Default},    // on in a new configuration
//
// A subclass passes its name: ZOR_Form_Config_Set_Kite3_Tab("Navi", parent).
//
// Decisions:
// - A field of a version the selected protocol does not carry keeps its
//   character: its box is only disabled, and it does not count in the record
//   size (the terminal sends no such field). Going back to the newer version
//   restores the choice, and a saved document loads and saves to the same
//   mask whatever its version.
// - A field the terminal cannot provide (capability setters) is cleared and
//   disabled; left checked, the user could not clear it any more.
// - A run read from a mask that is not "1...10...0" is taken up to its last
//   "1": no field that was chosen is dropped.
//
// Widget names for scripts and tests: "checkBox_Field_<n>" for a box and
// "comboBox_Field_<first field>" for a count.

#include "config/zor_form_config.h"

#include <QString>
#include <QVector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QScrollArea;
class QVBoxLayout;

class ZOR_Form_Config_Set_Kite3_Tab : public ZOR_Form_Config
{
    Q_OBJECT
public:
    enum BoxFlag { Default = 1, Fixed = 2 }; // Fixed: always in the record, not editable

    struct Box
    {
        int nField;
        // Caption key; empty: the pattern alone; null: the caption the
        // telemetry field table gives the field (its first column's), and
        // lpPattern is not used.
        const char* lpKey = nullptr;
        const char* lpPattern = "%1"; // %1 is the text of lpKey
        int nFlags = 0;
    };
    struct Group
    {
        int nFirst;
        int nFields;
        const char* lpKey; // caption key of the list's label
        const char* lpCounts; // what each count shows, space separated ("0 2 6 14 30")
        int nDefault = 0;
    };

    explicit ZOR_Form_Config_Set_Kite3_Tab(QWidget* parent = nullptr);

    // Versions a field belongs to: 1 (fields 1-69), 2 (70-122), 3 (123-255).
    static int fieldVersion(int nField);
    // Bytes of fields nFirst .. nFirst + nCount - 1, from the telemetry field table.
    static int fieldsSize(int nFirst, int nCount);
    // The caption the telemetry field table gives a field: its key and the
    // pattern that places the key's text.
    static void fieldCaption(int nField, QString& qsKey, QString& qsPattern);

    void translateForm() override;
    void setDefaultParam() override;

    virtual void setStrFormat_Kite_1(const QString& qsMask) { setPositions(qsMask, 1); }
    virtual void setStrFormat_Kite_2(const QString& qsMask) { setPositions(qsMask, 2); }
    virtual void setStrFormat_Kite_3(const QString& qsMask) { setPositions(qsMask, 3); }
    // Write this tab's positions into a mask of at least 255 characters.
    virtual void getStrFormat_Kite_1(QString& qsMask) const { getPositions(qsMask, 1); }
    virtual void getStrFormat_Kite_2(QString& qsMask) const { getPositions(qsMask, 2); }
    virtual void getStrFormat_Kite_3(QString& qsMask) const { getPositions(qsMask, 3); }
    virtual void setFormat_Enabled_Kite_2(bool bEnabled) { setVersionActive(2, bEnabled); }
    virtual void setFormat_Enabled_Kite_3(bool bEnabled) { setVersionActive(3, bEnabled); }

    void setTabIndex(int nIndex) { m_nTabIndex = nIndex; }
    int getTabIndex() const { return m_nTabIndex; }
    void setTabTitle(const QString& qsTitle) { m_qsTitle = qsTitle; }
    QString getTabTitle() const { return m_qsTitle; }
    // The name showTab() knows the tab by ("Main", "CAN", "User", ...).
    QString tabName() const { return m_qsName; }

    void setProtocolSize_Inc(int nSize) { emit signal_ProtocolSize_Changed(nSize); }
    void setProtocolSize_Dec(int nSize) { emit signal_ProtocolSize_Changed(-nSize); }

    // Bytes this tab adds to a record of the active versions.
    int protocolSize() const;
    // How many fields of the run starting at nFirst the terminal can provide
    // (0 or 1 for a box). False when the tab has no such item.
    bool setFieldLimit(int nFirst, int nLimit);
    bool hasField(int nField) const;

signals:
    void signal_ProtocolSize_Changed(int nDelta);

protected:
    // A field tab made from the tabs' table: its name, title, boxes and
    // counts, laid out by version.
    ZOR_Form_Config_Set_Kite3_Tab(const char* lpName, QWidget* parent);
    // The tab's name and title key (the title is looked up in translateForm).
    void setTabName(const QString& qsName, const char* lpTitleKey);
    template <int N>
    void addBoxes(const Box (&boxes)[N])
    {
        addBoxes(boxes, N);
    }
    void addBoxes(const Box* lpBoxes, int nCount);
    template <int N>
    void addGroups(const Group (&groups)[N])
    {
        addGroups(groups, N);
    }
    void addGroups(const Group* lpGroups, int nCount);
    // One frame per version, the items of that version in three columns.
    void layoutByVersion();
    // The layout inside the tab's scroll area, for tabs with a layout of their own.
    QVBoxLayout* contentLayout() const { return m_lpContent; }
    QCheckBox* boxOf(int nField) const;

private:
    struct Item
    {
        int nFirst = 0;
        int nFields = 1;
        QCheckBox* lpBox = nullptr;
        QComboBox* lpCount = nullptr;
        QLabel* lpLabel = nullptr;
        QString qsKey;
        QString qsPattern;
        QStringList lstCounts;
        int nFlags = 0;
        int nDefault = 0;
        int nLimit = 1;
        int nCount = 0; // what the size was last computed for
    };

    void setPositions(const QString& qsMask, int nVersion);
    void getPositions(QString& qsMask, int nVersion) const;
    void setVersionActive(int nVersion, bool bActive);
    void slot_ItemChanged(int nItem);
    int countOf(const Item& item) const;
    void showCount(Item& item, int nCount);
    void updateEnabled(Item& item);
    void translateItem(Item& item);
    void wire(int nItem);

    QVector<Item> m_items;
    bool m_bActive[4] = {true, true, true, true};
    int m_nTabIndex = -1;
    QString m_qsTitle;
    QString m_qsTitleKey;
    QString m_qsName;
    QButtonGroup* m_lpBoxes = nullptr;
    QScrollArea* m_lpScroll = nullptr;
    QVBoxLayout* m_lpContent = nullptr;
};

#endif
