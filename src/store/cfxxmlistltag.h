#ifndef CFXXMLISTLTAG_H
#define CFXXMLISTLTAG_H

// An ordered list of tags that owns them (deletes them with itself).

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

#include <memory>

class CXmlTagV2;

class CFxXmListlTag
{
public:
    CFxXmListlTag() = default;
    ~CFxXmListlTag();
    CFxXmListlTag(const CFxXmListlTag&) = delete;
    CFxXmListlTag& operator=(const CFxXmListlTag&) = delete;

    int count() const { return m_tags.size(); }
    bool isEmpty() const { return m_tags.isEmpty(); }
    CXmlTagV2* getNumTag(int i) const { return i >= 0 && i < m_tags.size() ? m_tags.at(i) : nullptr; }
    // First tag called qsName at or after nFrom; its index in *lpIndex. A
    // long list answers through an index (made on first need, kept while the
    // list only grows), so walking the tags of each name stays linear.
    CXmlTagV2* getTagFromName(const QString& qsName, int nFrom = 0, int* lpIndex = nullptr) const;
    int indexOf(const CXmlTagV2* tag) const { return m_tags.indexOf(const_cast<CXmlTagV2*>(tag)); }
    // The first tag whose name, as a parameter record holds it (see
    // COneParameter::sameName), is lpName; -1 when there is none. A long
    // list answers through an index made on first need and kept while the
    // list only grows.
    int indexOfRecordName(const char* lpName) const;
    // The tags themselves; a copy is a cheap snapshot (shared until either
    // side changes).
    const QVector<CXmlTagV2*>& tags() const { return m_tags; }

    void append(CXmlTagV2* tag);
    // Removes the i-th tag from the list without deleting it; null when
    // there is none.
    CXmlTagV2* takeAt(int i);
    // Moves every tag to the end of other (which then owns them).
    void moveAllTo(CFxXmListlTag& other);
    void deleteAll();

private:
    QVector<CXmlTagV2*> m_tags;
    struct NameChain
    {
        QHash<QString, int> first;
        QHash<QString, int> last;
        QVector<int> next; // the next tag of the same name, or -1
        void add(const QString& qsName, int nIndex);
    };
    void dropIndexes();

    // Searches of a long list made without an index, which is made once
    // they show the list is searched again and again.
    bool searchAgain(int& nSearches) const;

    mutable std::unique_ptr<QHash<QByteArray, int>> m_lpRecordNames;
    mutable std::unique_ptr<NameChain> m_lpNames;
    mutable int m_nRecordSearches = 0;
    mutable int m_nNameSearches = 0;
};

#endif
