#ifndef ZOR_CONFIGPROBLEMS_H
#define ZOR_CONFIGPROBLEMS_H

// What a load did not keep as written. While a ZOR_ConfigProblems is
// recording, every binding row (and row builder column) that reads a value
// tells it which node and attribute it read into which widget and, when
// the widget holds something else than the file said, why (out of range,
// unknown code, not a number). After the load, compare() walks the file's
// tree beside the tree the forms write and lists, in document order, every
// value the forms would not keep, every node or attribute no form reads and
// whatever the forms reported on their own (a record over the terminal's
// limit, a user parameter that does not fit its slot).
//
//   ZOR_ConfigProblems problems;
//   {
//       ZOR_ConfigProblems::Recording on(&problems);
//       ... read every form ...
//   }
//   problems.compare(fileRoot, writtenRoot, "CONFIG");
//   for (const auto& p : problems.list()) out << p.text("cfg.xml") << '\n';
//
// The ranges and codes are those of the widgets and caption lists the rows
// are bound to: the check knows no limits of its own.

#include "config/zor_formbinding.h"

#include <QHash>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QVector>

class CXmlTagV2;
class QWidget;

class ZOR_ConfigProblems
{
public:
    struct Problem
    {
        int nLine = 0;
        QString qsNode; // "CONFIG/RS485/MDBSPRM1"
        QString qsAttr; // empty for a whole node
        QString qsValue; // as written in the file
        QString qsKept; // what the forms keep
        QString qsReason;
        QPointer<QWidget> lpWidget; // the widget showing it, when one does
        // FILE:LINE: NODE/attribute: "value" -> "kept": reason
        QString text(const QString& qsFile) const;
    };

    // A value a binding row read, in reading order: where it lives and
    // which widget shows it.
    struct Read
    {
        QString qsNode;
        QString qsAttr;
        QPointer<QWidget> lpWidget;
    };

    // Makes problems the sink the forms report into for its lifetime.
    class Recording
    {
    public:
        explicit Recording(ZOR_ConfigProblems* lpProblems);
        ~Recording();
        Recording(const Recording&) = delete;
        Recording& operator=(const Recording&) = delete;

    private:
        ZOR_ConfigProblems* m_lpPrevious;
    };

    ZOR_ConfigProblems() = default;

    // The sink being recorded into, or null (the usual case: nothing to do).
    static ZOR_ConfigProblems* active();

    // A binding row read qsValue (null: absent) from attribute attr of tag.
    void noteRow(
        const CXmlTagV2* lpTag, const QByteArray& attr, const ZOR_FormBinding::Row& row, const QString& qsValue);
    // A value a form read itself (not through a binding row) into lpWidget.
    void noteRead(const CXmlTagV2* lpTag, const QString& qsAttr, QWidget* lpWidget);
    // A form's own finding about a value it read; with an empty qsAttr, about
    // a whole node it does not take (the reason replaces "no form reads").
    void note(const CXmlTagV2* lpTag, const QString& qsAttr, const QString& qsValue, const QString& qsKept,
        const QString& qsReason, QWidget* lpWidget = nullptr);

    // Builds list(): the file's tree (lpFile, null for a file without any
    // element) against the tree the forms wrote (lpWritten).
    void compare(const CXmlTagV2* lpFile, const CXmlTagV2* lpWritten, const QString& qsRootName);
    const QVector<Problem>& list() const { return m_list; }
    const QVector<Read>& reads() const { return m_reads; }
    // The path of a tag as problems and reads name it: "CONFIG/RS232".
    static QString pathOf(const CXmlTagV2* lpTag);
    void clear();

    // Why a row holds something else than qsValue, in words.
    static QString reason(const ZOR_FormBinding::Row& row, const QString& qsValue);

private:
    using Key = QPair<const CXmlTagV2*, QString>;
    struct Note
    {
        QString qsValue;
        QString qsKept;
        QString qsReason;
        QPointer<QWidget> lpWidget;
    };
    void compareNode(const CXmlTagV2* lpFile, const CXmlTagV2* lpWritten, const QString& qsPath);
    void compareAttributes(const CXmlTagV2* lpFile, const CXmlTagV2* lpWritten, const QString& qsPath);
    void add(const CXmlTagV2* lpTag, const QString& qsPath, const QString& qsAttr, const QString& qsValue,
        const QString& qsKept, const QString& qsReason);

    QHash<Key, QPointer<QWidget>> m_read;
    QHash<Key, Note> m_notes;
    QVector<Key> m_own; // notes whose value was kept: listed as they are
    QVector<Problem> m_list;
    QVector<Read> m_reads;
};

#endif
