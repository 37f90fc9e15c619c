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

void CFxXmListlTag::NameChain::add(const QString& qsName, int nIndex)
{
    next.append(-1);
    const auto it = last.find(qsName);
    if (it == last.end()) {
        first.insert(qsName, nIndex);
        last.insert(qsName, nIndex);
    } else {
        next[it.value()] = nIndex;
        it.value() = nIndex;
    }
}

void CFxXmListlTag::dropIndexes()
{
    m_lpRecordNames.reset();
    m_lpNames.reset();
    m_nRecordSearches = m_nNameSearches = 0;
}

bool CFxXmListlTag::searchAgain(int& nSearches) const
{
    // One look-up (a path followed once) costs less as a search than as an
    // index of every name.
    const int kSearchesBeforeIndex = 2;
    return m_tags.size() < kIndexFrom || nSearches++ < kSearchesBeforeIndex;
}

CXmlTagV2* CFxXmListlTag::getTagFromName(const QString& qsName, int nFrom, int* lpIndex) const
{
    const int from = qMax(nFrom, 0);
    int i = -1;
    if (!m_lpNames && searchAgain(m_nNameSearches)) {
        for (int j = from; j < m_tags.size() && i < 0; ++j)
            if (m_tags.at(j)->name() == qsName)
                i = j;
    } else {
        if (!m_lpNames) {
            m_lpNames.reset(new NameChain);
            m_lpNames->next.reserve(m_tags.size());
            for (int j = 0; j < m_tags.size(); ++j)
                m_lpNames->add(m_tags.at(j)->name(), j);
        }
        // Usually asked for the one after the last hit of the same name.
        if (from > 0 && from <= m_tags.size() && m_tags.at(from - 1)->name() == qsName)
            i = m_lpNames->next.at(from - 1);
        else
            for (i = m_lpNames->first.value(qsName, -1); i >= 0 && i < from;)
                i = m_lpNames->next.at(i);
    }
    if (i < 0)
        return nullptr;
    if (lpIndex)
        *lpIndex = i;
    return m_tags.at(i);
}

int CFxXmListlTag::indexOfRecordName(const char* lpName) const
{
    if (!lpName)
        return -1;
    if (!m_lpRecordNames && searchAgain(m_nRecordSearches)) {
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
    if (m_lpNames)
        m_lpNames->add(tag->name(), m_tags.size() - 1);
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
    dropIndexes();
    return m_tags.takeAt(i);
}

void CFxXmListlTag::moveAllTo(CFxXmListlTag& other)
{
    dropIndexes();
    other.dropIndexes();
    other.m_tags += m_tags;
    m_tags.clear();
}

// Deletes level by level instead of through the tags' destructors, which
// would recurse once per level of a deep tree.
void CFxXmListlTag::deleteAll()
{
    dropIndexes();
    QVector<CXmlTagV2*> work;
    work.swap(m_tags);
    while (!work.isEmpty()) {
        CXmlTagV2* tag = work.takeLast();
        work += tag->children().m_tags;
        tag->children().m_tags.clear();
        delete tag;
    }
}
