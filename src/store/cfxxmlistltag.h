#ifndef CFXXMLISTLTAG_H
#define CFXXMLISTLTAG_H

// An ordered list of tags that owns them (deletes them with itself).

#include <QString>
#include <QVector>

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
    // First tag called qsName at or after nFrom; its index in *lpIndex.
    CXmlTagV2* getTagFromName(const QString& qsName, int nFrom = 0, int* lpIndex = nullptr) const;
    int indexOf(const CXmlTagV2* tag) const { return m_tags.indexOf(const_cast<CXmlTagV2*>(tag)); }

    void append(CXmlTagV2* tag) { m_tags.append(tag); }
    // Removes the i-th tag from the list without deleting it; null when
    // there is none.
    CXmlTagV2* takeAt(int i) { return i >= 0 && i < m_tags.size() ? m_tags.takeAt(i) : nullptr; }
    // Moves every tag to the end of other (which then owns them).
    void moveAllTo(CFxXmListlTag& other);
    void deleteAll();

private:
    QVector<CXmlTagV2*> m_tags;
};

#endif
