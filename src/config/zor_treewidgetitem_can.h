#ifndef ZOR_TREEWIDGETITEM_CAN_H
#define ZOR_TREEWIDGETITEM_CAN_H

// An item of the CAN selection trees: a catalogue parameter (top level) or
// one of its bits (child), with a check box and the parameter number the
// terminal uses. A parameter with bits gets an automatic three-state box:
// ticking it ticks every bit, ticking some bits leaves it partially checked.

#include <QTreeWidgetItem>

class ZOR_TreeWidgetItem_CAN : public QTreeWidgetItem
{
public:
    enum { ItemType = QTreeWidgetItem::UserType + 11 };

    explicit ZOR_TreeWidgetItem_CAN(QTreeWidget* parent = nullptr, int nNum = 0);
    ZOR_TreeWidgetItem_CAN(QTreeWidgetItem* parent, int nNum);

    int getNum() const { return m_nNum; }
    void setNum(int nNumber) { m_nNum = nNumber; }

    bool isChecked() const { return checkState(0) == Qt::Checked; }
    void setChecked(bool bChecked) { setCheckState(0, bChecked ? Qt::Checked : Qt::Unchecked); }

    // The item of a tree's top level, or null when it is some other kind.
    static ZOR_TreeWidgetItem_CAN* cast(QTreeWidgetItem* lpItem);

private:
    void init();

    int m_nNum = 0;
};

#endif
