#include "store/zor_settingsnode.h"

#include "store/cxmltagv2.h"

QString ZOR_SettingsNode::name(const QString& qsWord, int nNumber, const QString& qsTail)
{
    return QStringLiteral("%1%2").arg(qsWord).arg(nNumber) + qsTail;
}

std::unique_ptr<CXMLWorkData> ZOR_SettingsNode::openForRead(CXMLWorkData* parent, const QString& qsName)
{
    if (!parent || !parent->isValid())
        return nullptr;
    CXmlTagV2* tag = parent->getTag()->getTagFromName(qsName);
    if (!tag)
        return nullptr;
    return std::make_unique<CXMLWorkData>(parent->getSerialize(), tag);
}

std::unique_ptr<CXMLWorkData> ZOR_SettingsNode::openForWrite(CXMLWorkData* parent, const QString& qsName)
{
    if (!parent)
        return std::make_unique<CXMLWorkData>(nullptr, static_cast<CXmlTagV2*>(nullptr));
    std::unique_ptr<CXMLWorkData> node(parent->createNode(qsName, CXMLWorkData::NodeFindOrAppend));
    node->clearNode();
    return node;
}

QString ZOR_SettingsNode::readLongText(const CXMLWorkData* lpNode, const QString& qsAttr)
{
    const CXmlTagV2* lpTag = lpNode ? lpNode->getTag() : nullptr;
    const int i = lpTag ? lpTag->attributeIndex(qsAttr) : -1;
    return i < 0 ? QString() : lpTag->attributes().at(i).value;
}

void ZOR_SettingsNode::writeLongText(CXMLWorkData* lpNode, const QString& qsAttr, const QString& qsValue)
{
    if (CXmlTagV2* lpTag = lpNode ? lpNode->getTag() : nullptr)
        lpTag->setTagValue(qsAttr, qsValue);
}
