#include "store/cxmltagv2.h"

CXmlTagV2::CXmlTagV2(const QString& qsName, const QString& qsValue, int nKind, CXmlTagV2* parent)
    : m_qsName(qsName)
    , m_qsValue(qsValue)
    , m_nKind(nKind)
    , m_parent(parent)
{
}

void CXmlTagV2::addTagValue(const QString& qsName, const QString& qsValue)
{
    m_attributes.append(CXmlAttribute{qsName, qsValue});
}

int CXmlTagV2::attributeIndex(const QString& qsName) const
{
    for (int i = 0; i < m_attributes.size(); ++i)
        if (m_attributes.at(i).name == qsName)
            return i;
    return -1;
}

void CXmlTagV2::setTagValue(const QString& qsName, const QString& qsValue)
{
    const int i = attributeIndex(qsName);
    if (i >= 0)
        m_attributes[i].value = qsValue;
    else
        addTagValue(qsName, qsValue);
}

CXmlTagV2* CXmlTagV2::addTagNode(const QString& qsName, const QString& qsValue, int nKind)
{
    // White space left between the tags of a hand-edited "<A>\n</A>" is
    // layout, not text; once the element has children it would otherwise be
    // text beside children, which no file can hold.
    if (!m_qsValue.isEmpty() && m_qsValue.trimmed().isEmpty())
        m_qsValue.clear();
    CXmlTagV2* tag = new CXmlTagV2(qsName, qsValue, nKind, this);
    m_children.append(tag);
    return tag;
}
