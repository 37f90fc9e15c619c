#ifndef ZOR_CONFIGDIFF_H
#define ZOR_CONFIGDIFF_H

// Two settings trees compared node by node: attributes added (+), removed
// (-) and changed (~), nodes only one side has (with everything below
// them). Children are matched by name and by their rank among the siblings
// of that name: the second ROW of A is compared with the second ROW of B.
// `zor-tool config diff` prints text() of each entry; the configuration
// window lists the same entries in its Changes pane.
//
//   ZOR_ConfigDiff diff;
//   diff.compare(a.root(), b.root());
//   for (const auto& e : diff.entries()) out << e.text() << '\n';

#include <QString>
#include <QVector>

class CXmlTagV2;

class ZOR_ConfigDiff
{
public:
    struct Entry
    {
        char sign = '~'; // '+', '-' or '~'
        QString qsPath; // "CONFIG/RS485/MDBSPRM1", "CONFIG/R[2]"
        QString qsAttr; // empty: the node itself (or its text)
        QString qsOld;
        QString qsNew;
        QString qsWhole; // a whole node: its attributes and text as one line
        QString text() const;
    };

    ZOR_ConfigDiff() = default;

    // Either root may be null (an empty document).
    void compare(const CXmlTagV2* lpA, const CXmlTagV2* lpB);
    const QVector<Entry>& entries() const { return m_entries; }

private:
    void node(const CXmlTagV2* lpA, const CXmlTagV2* lpB, const QString& qsPath);
    void attributes(const CXmlTagV2* lpA, const CXmlTagV2* lpB, const QString& qsPath);
    void whole(char sign, const CXmlTagV2* lpTag, const QString& qsPath);

    QVector<Entry> m_entries;
};

#endif
