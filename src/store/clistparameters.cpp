#include "store/clistparameters.h"

#include "store/cfxxmlistltag.h"
#include "store/cxmltagv2.h"

#include <cstdlib>
#include <cstring>
#include <limits>

CListParameters::CListParameters()
{
    m_szSearch[0] = '\0';
}

CListParameters::~CListParameters()
{
    clear();
}

void CListParameters::clear()
{
    std::free(m_lpItems);
    std::free(m_lpTagItems);
    m_lpItems = nullptr;
    m_lpTagItems = nullptr;
    m_nItems = 0;
    m_nCount = 0;
    m_nTagsAt = 0;
    m_tags.clear();
    m_lpTagList = nullptr;
    m_made.clear();
    m_szSearch[0] = '\0';
    m_nSearchNext = 0;
}

coreSzItem* CListParameters::at(int i) const
{
    if (i < 0 || i >= m_nCount)
        return nullptr;
    if (i < m_nTagsAt)
        return m_lpItems + i;
    const int k = i - m_nTagsAt;
    return k < m_tags.size() ? tagRecord(k) : m_lpItems + (i - m_tags.size());
}

coreSzItem* CListParameters::tagRecord(int k) const
{
    coreSzItem* item = m_lpTagItems + k;
    if (!made(k)) {
        COneParameter::copyName(item->name, m_tags.at(k)->name());
        std::memcpy(item->value, item->name, std::strlen(item->name) + 1);
        item->kind = coreSzItem::KindTag;
        item->node = m_tags.at(k);
        m_made[size_t(k) >> 6] |= quint64(1) << (k & 63);
    }
    return item;
}

bool CListParameters::settle()
{
    const int nTags = m_tags.size();
    if (nTags == 0)
        return true;
    void* p = std::realloc(m_lpItems, sizeof(coreSzItem) * size_t(m_nCount));
    if (!p)
        return false;
    m_lpItems = static_cast<coreSzItem*>(p);
    std::memmove(static_cast<void*>(m_lpItems + m_nTagsAt + nTags), m_lpItems + m_nTagsAt,
        sizeof(coreSzItem) * size_t(m_nItems - m_nTagsAt));
    for (int k = 0; k < nTags; ++k)
        std::memcpy(static_cast<void*>(m_lpItems + m_nTagsAt + k), tagRecord(k), sizeof(coreSzItem));
    std::free(m_lpTagItems);
    m_lpTagItems = nullptr;
    m_nItems = m_nCount;
    m_nTagsAt = 0;
    m_tags.clear();
    m_lpTagList = nullptr;
    m_made.clear();
    return true;
}

coreSzItem* CListParameters::grow(int n)
{
    if (n <= 0 || m_nCount > std::numeric_limits<int>::max() - n)
        return nullptr;
    void* p = std::realloc(m_lpItems, sizeof(coreSzItem) * size_t(m_nItems + n));
    if (!p)
        return nullptr;
    m_lpItems = static_cast<coreSzItem*>(p);
    coreSzItem* first = m_lpItems + m_nItems;
    m_nItems += n;
    m_nCount += n;
    return first;
}

bool CListParameters::add(const coreSzItem* lpItems, int n)
{
    if (!lpItems)
        return false;
    coreSzItem* dst = grow(n);
    if (!dst)
        return false;
    std::memcpy(static_cast<void*>(dst), lpItems, sizeof(coreSzItem) * size_t(n));
    return true;
}

void CListParameters::appendTags(const CFxXmListlTag& tags)
{
    const int n = tags.count();
    if (n == 0 || m_nCount > std::numeric_limits<int>::max() - n || !settle())
        return;
    // Left uninitialised: only the records looked at are ever touched.
    void* p = std::malloc(sizeof(coreSzItem) * size_t(n));
    if (!p)
        return;
    m_lpTagItems = static_cast<coreSzItem*>(p);
    m_tags = tags.tags();
    m_lpTagList = &tags;
    m_nTagsAt = m_nCount;
    m_made.assign((size_t(n) + 63) / 64, 0);
    m_nCount += n;
}

CXmlTagV2* CListParameters::untouchedTag(int i) const
{
    const int k = i - m_nTagsAt;
    return k >= 0 && k < m_tags.size() && !made(k) ? m_tags.at(k) : nullptr;
}

bool CListParameters::tagsStillIn(const CFxXmListlTag& list) const
{
    // A snapshot shares the list's storage until either side changes.
    return m_tags.isEmpty() || (m_tags.size() == list.count() && m_tags.constData() == list.tags().constData());
}

coreSzItem* CListParameters::findParameter(const char* lpName, int nFrom, int* lpIndex)
{
    if (!lpName)
        return nullptr;
    const int nTags = m_tags.size();
    int i = qMax(nFrom, 0);
    const auto hit = [&](int at) {
        if (lpIndex)
            *lpIndex = at;
        return item(at);
    };
    for (; i < m_nTagsAt && i < m_nCount; ++i)
        if (COneParameter::sameName(m_lpItems[i].name, lpName))
            return hit(i);
    if (nTags > 0 && i < m_nTagsAt + nTags) {
        int k = i - m_nTagsAt;
        // A record keeps the name of its child, so while the children are
        // the same the first of a name is the list's own answer.
        if (m_lpTagList && tagsStillIn(*m_lpTagList)) {
            const int first = m_lpTagList->indexOfRecordName(lpName);
            if (first < 0)
                k = nTags;
            else if (first >= k)
                return hit(m_nTagsAt + first);
        }
        for (; k < nTags; ++k) {
            if (made(k) ? COneParameter::sameName(m_lpTagItems[k].name, lpName)
                        : COneParameter::sameName(m_tags.at(k)->name(), lpName))
                return hit(m_nTagsAt + k);
        }
        i = m_nTagsAt + nTags;
    }
    for (; i < m_nCount; ++i)
        if (COneParameter::sameName(m_lpItems[i - nTags].name, lpName))
            return hit(i);
    return nullptr;
}

coreSzItem* CListParameters::getFirst(const char* lpName)
{
    COneParameter::copyText(m_szSearch, lpName);
    m_nSearchNext = 0;
    return getNext();
}

coreSzItem* CListParameters::getNext()
{
    int index = 0;
    coreSzItem* hit = findParameter(m_szSearch, m_nSearchNext, &index);
    m_nSearchNext = hit ? index + 1 : m_nCount;
    return hit;
}

bool CListParameters::setParameter(const COneParameter& param)
{
    if (coreSzItem* hit = findParameter(param.name)) {
        std::memcpy(hit->value, param.value, sizeof hit->value);
        hit->kind = param.kind;
        if (param.kind != coreSzItem::KindTag)
            hit->node = nullptr;
        return true;
    }
    return add(&param);
}
