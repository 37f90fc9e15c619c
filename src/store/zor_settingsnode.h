#ifndef ZOR_SETTINGSNODE_H
#define ZOR_SETTINGSNODE_H

// The one way settings forms reach their nodes. A form keeps a node per
// device or row, named by a fixed word plus a number ("MDBSPRM1",
// "SIM1RULES"); it opens the node without creating it to read (a missing
// node means "use the defaults"), and creates and clears it to write, so
// values left over from an older layout never survive a save.
//
//   // writing
//   auto node = ZOR_SettingsNode::openForWrite(root, ZOR_SettingsNode::name("MDBSPRM", 1));
//   node->writeInteger("addr", 7);
//   node->writeBool("use", true);                // booleans as 0/1
//   node->writeParameters();
//
//   // reading
//   if (auto node = ZOR_SettingsNode::openForRead(root, ZOR_SettingsNode::name("SIM", 1, "RULES")))
//       nAddr = node->readInteger("addr", nAddr);

#include "store/cxmlworkdata.h"

#include <QString>

#include <memory>

class ZOR_SettingsNode
{
public:
    // "%1%2" of word and number, then tail: ("MDBSPRM", 1) -> "MDBSPRM1",
    // ("SIM", 1, "RULES") -> "SIM1RULES".
    static QString name(const QString& qsWord, int nNumber, const QString& qsTail = QString());

    // A cursor on the existing child qsName of parent; null when the parent
    // has no document or no such child. Nothing is created.
    static std::unique_ptr<CXMLWorkData> openForRead(CXMLWorkData* parent, const QString& qsName);

    // A cursor on the child qsName of parent, created when absent, with all
    // its attributes and children removed. Never null: without a document
    // the cursor drops its writes.
    static std::unique_ptr<CXMLWorkData> openForWrite(CXMLWorkData* parent, const QString& qsName);

    // An attribute longer than a parameter record holds (the field-set mask
    // has 255 characters), read and set on the node's element whole. Set it
    // after the node's parameters are written, which rewrite the element.
    // Reading gives "" when the node or the attribute is missing.
    static QString readLongText(const CXMLWorkData* lpNode, const QString& qsAttr);
    static void writeLongText(CXMLWorkData* lpNode, const QString& qsAttr, const QString& qsValue);
};

#endif
