#include "store/clistparameters.h"

#include <cstdlib>
#include <cstring>
#include <limits>

CListParameters::CListParameters()
{
    m_szSearch[0] = '\0';
}

CListParameters::~CListParameters()
{
    std::free(m_lpItems);
}

void CListParameters::clear()
{
    std::free(m_lpItems);
    m_lpItems = nullptr;
    m_nCount = 0;
    m_szSearch[0] = '\0';
    m_nSearchNext = 0;
}

coreSzItem* CListParameters::grow(int n)
{
    if (n <= 0 || m_nCount > std::numeric_limits<int>::max() - n)
        return nullptr;
    void* p = std::realloc(m_lpItems, sizeof(coreSzItem) * size_t(m_nCount + n));
    if (!p)
        return nullptr;
    m_lpItems = static_cast<coreSzItem*>(p);
    coreSzItem* first = m_lpItems + m_nCount;
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

coreSzItem* CListParameters::findParameter(const char* lpName, int nFrom, int* lpIndex)
{
    if (!lpName)
        return nullptr;
    for (int i = qMax(nFrom, 0); i < m_nCount; ++i) {
        if (COneParameter::sameName(m_lpItems[i].name, lpName)) {
            if (lpIndex)
                *lpIndex = i;
            return m_lpItems + i;
        }
    }
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
