#include "config/zor_treewidgetitem_can.h"

ZOR_TreeWidgetItem_CAN::ZOR_TreeWidgetItem_CAN(QTreeWidget* parent, int nNumber)
    : QTreeWidgetItem(parent, ItemType)
    , m_nNum(nNumber)
{
    init();
}

ZOR_TreeWidgetItem_CAN::ZOR_TreeWidgetItem_CAN(QTreeWidgetItem* parent, int nNumber)
    : QTreeWidgetItem(parent, ItemType)
    , m_nNum(nNumber)
{
    init();
    // The parent only now has a child: from here on its box follows its bits.
    if (parent)
        parent->setFlags(parent->flags() | Qt::ItemIsAutoTristate);
}

void ZOR_TreeWidgetItem_CAN::init()
{
    setFlags((flags() | Qt::ItemIsUserCheckable) & ~Qt::ItemIsEditable);
    setCheckState(0, Qt::Unchecked);
}

ZOR_TreeWidgetItem_CAN* ZOR_TreeWidgetItem_CAN::cast(QTreeWidgetItem* lpItem)
{
    return lpItem && lpItem->type() == ItemType ? static_cast<ZOR_TreeWidgetItem_CAN*>(lpItem) : nullptr;
}
