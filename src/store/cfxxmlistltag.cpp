#include "store/cfxxmlistltag.h"

#include "store/coneparameter.h"
#include "store/cxmltagv2.h"

#include <cstring>

namespace {

// Shorter lists are searched; an index costs more than it saves there.
const int kIndexFrom = 256;

QByteArray recordName(const CXmlTagV2* tag)
{
    char name[coreSzItem::nMaxTextSize];
    COneParameter::copyName(name, tag->name());
    return QByteArray(name);
}

} // namespace

CFxXmListlTag::~CFxXmListlTag()
{
    deleteAll();
}

CXmlTagV2* CFxXmListlTag::getTagFromName(const QString& qsName, int nFrom, int* lpIndex) const
{
    for (int i = qMax(nFrom, 0); i < m_tags.size(); ++i) {
        if (m_tags.at(i)->name() == qsName) {
            if (lpIndex)
                *lpIndex = i;
            return m_tags.at(i);
        }
    }
    return nullptr;
}

int CFxXmListlTag::indexOfRecordName(const char* lpName) const
{
    if (!lpName)
        return -1;
    if (m_tags.size() < kIndexFrom) {
        for (int i = 0; i < m_tags.size(); ++i)
            if (COneParameter::sameName(m_tags.at(i)->name(), lpName))
                return i;
        return -1;
    }
    if (!m_lpRecordNames) {
        m_lpRecordNames.reset(new QHash<QByteArray, int>);
        m_lpRecordNames->reserve(m_tags.size());
        for (int i = m_tags.size() - 1; i >= 0; --i)
            m_lpRecordNames->insert(recordName(m_tags.at(i)), i);
    }
    const int n = int(strnlen(lpName, coreSzItem::nMaxTextLength));
    return m_lpRecordNames->value(QByteArray::fromRawData(lpName, n), -1);
}

void CFxXmListlTag::append(CXmlTagV2* tag)
{
    m_tags.append(tag);
    if (m_lpRecordNames) {
        const QByteArray name = recordName(tag);
        if (!m_lpRecordNames->contains(name))
            m_lpRecordNames->insert(name, m_tags.size() - 1);
    }
}

CXmlTagV2* CFxXmListlTag::takeAt(int i)
{
    if (i < 0 || i >= m_tags.size())
        return nullptr;
    m_lpRecordNames.reset();
    return m_tags.takeAt(i);
}

void CFxXmListlTag::moveAllTo(CFxXmListlTag& other)
{
    m_lpRecordNames.reset();
    other.m_lpRecordNames.reset();
    other.m_tags += m_tags;
    m_tags.clear();
}

// Deletes level by level instead of through the tags' destructors, which
// would recurse once per level of a deep tree.
void CFxXmListlTag::deleteAll()
{
    m_lpRecordNames.reset();
    QVector<CXmlTagV2*> work;
    work.swap(m_tags);
    while (!work.isEmpty()) {
        CXmlTagV2* tag = work.takeLast();
        work += tag->children().m_tags;
        tag->children().m_tags.clear();
        delete tag;
    }
}
