#ifndef CLISTPARAMETERS_H
#define CLISTPARAMETERS_H

// The parameters of one element: a growable array of coreSzItem records in
// the order they were first written, with a name search cursor.
//
// Lookups are linear and exact (case-sensitive). A write replaces the value
// of an existing name in place, so names keep their position; a new name is
// appended. Records are never removed one by one, only all at once (clear).

#include "store/coneparameter.h"

class CListParameters
{
public:
    CListParameters();
    ~CListParameters();
    CListParameters(const CListParameters&) = delete;
    CListParameters& operator=(const CListParameters&) = delete;

    int count() const { return m_nCount; }
    coreSzItem* item(int i) { return i >= 0 && i < m_nCount ? m_lpItems + i : nullptr; }
    const coreSzItem* item(int i) const { return i >= 0 && i < m_nCount ? m_lpItems + i : nullptr; }

    void clear();

    // Appends n records; false (list unchanged) when memory runs out.
    bool add(const coreSzItem* lpItems, int n = 1);
    // Grows by n uninitialised records and returns the first; null on failure.
    coreSzItem* grow(int n);

    // First record at or after nFrom whose name is lpName; index in *lpIndex.
    coreSzItem* findParameter(const char* lpName, int nFrom = 0, int* lpIndex = nullptr);
    coreSzItem* getFirst(const char* lpName);
    coreSzItem* getNext();

    // The write rule: the value (and kind) of an existing name is replaced,
    // a new name is appended. False only when the append failed.
    bool setParameter(const COneParameter& param);

private:
    coreSzItem* m_lpItems = nullptr;
    int m_nCount = 0;
    char m_szSearch[coreSzItem::nMaxTextSize];
    int m_nSearchNext = 0;
};

#endif
