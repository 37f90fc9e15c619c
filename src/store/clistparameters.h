#ifndef CLISTPARAMETERS_H
#define CLISTPARAMETERS_H

// The parameters of one element: a growable array of coreSzItem records in
// the order they were first written, with a name search cursor.
//
// Lookups are linear and exact (case-sensitive). A write replaces the value
// of an existing name in place, so names keep their position; a new name is
// appended. Records are never removed one by one, only all at once (clear).
//
// The records of an element's children (appendTags) are made only when one
// is looked at: an element may have a hundred thousand children, and a
// cursor that sets one attribute should not copy half a kilobyte for each.

#include "store/coneparameter.h"

#include <QVector>

#include <vector>

class CFxXmListlTag;

class CListParameters
{
public:
    CListParameters();
    ~CListParameters();
    CListParameters(const CListParameters&) = delete;
    CListParameters& operator=(const CListParameters&) = delete;

    int count() const { return m_nCount; }
    coreSzItem* item(int i) { return at(i); }
    const coreSzItem* item(int i) const { return at(i); }

    void clear();

    // Appends n records; false (list unchanged) when memory runs out.
    bool add(const coreSzItem* lpItems, int n = 1);
    // Grows by n uninitialised records and returns the first; null on failure.
    coreSzItem* grow(int n);
    // Appends a kind-1 record for each tag of the list as it is now.
    void appendTags(const CFxXmListlTag& tags);

    // First record at or after nFrom whose name is lpName; index in *lpIndex.
    coreSzItem* findParameter(const char* lpName, int nFrom = 0, int* lpIndex = nullptr);
    coreSzItem* getFirst(const char* lpName);
    coreSzItem* getNext();

    // The write rule: the value (and kind) of an existing name is replaced,
    // a new name is appended. False only when the append failed.
    bool setParameter(const COneParameter& param);

    // The child of record i when that record was appended by appendTags and
    // never looked at since (so it is still that child's kind-1 record);
    // null otherwise.
    CXmlTagV2* untouchedTag(int i) const;
    // Whether the tags appendTags took are still exactly the tags of list.
    bool tagsStillIn(const CFxXmListlTag& list) const;

private:
    coreSzItem* at(int i) const;
    coreSzItem* tagRecord(int k) const;
    bool made(int k) const { return (m_made[size_t(k) >> 6] >> (k & 63)) & 1; }
    // Makes every pending record an ordinary one (before the pending ones
    // would stop being the last of the list's own segment).
    bool settle();

    // Records before m_nTagsAt and after the pending ones, in order.
    coreSzItem* m_lpItems = nullptr;
    int m_nItems = 0;
    int m_nCount = 0;
    // The pending children: records m_nTagsAt .. m_nTagsAt + m_tags.size() - 1.
    int m_nTagsAt = 0;
    QVector<CXmlTagV2*> m_tags;
    const CFxXmListlTag* m_lpTagList = nullptr;
    mutable coreSzItem* m_lpTagItems = nullptr;
    mutable std::vector<quint64> m_made;
    char m_szSearch[coreSzItem::nMaxTextSize];
    int m_nSearchNext = 0;
};

#endif
