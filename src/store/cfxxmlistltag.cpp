#include "store/cfxxmlistltag.h"

#include "store/cxmltagv2.h"

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

void CFxXmListlTag::moveAllTo(CFxXmListlTag& other)
{
    other.m_tags += m_tags;
    m_tags.clear();
}

// Deletes level by level instead of through the tags' destructors, which
// would recurse once per level of a deep tree.
void CFxXmListlTag::deleteAll()
{
    QVector<CXmlTagV2*> work;
    work.swap(m_tags);
    while (!work.isEmpty()) {
        CXmlTagV2* tag = work.takeLast();
        work += tag->children().m_tags;
        tag->children().m_tags.clear();
        delete tag;
    }
}
