#ifndef ZOR_CONFIGSHEET_H
#define ZOR_CONFIGSHEET_H

// The settings sheet of a configuration, for a technician's job sheet: page
// by page, each setting's caption and the value as its widget shows it (in
// the program's language, with its unit), values that differ from the
// defaults marked. As text, as HTML, as PDF or on a printer.
//
//   ZOR_ConfigSheet sheet;
//   sheet.build(&doc);
//   sheet.save("job.pdf", ZOR_ConfigSheet::Pdf);

#include <QString>
#include <QVector>

class QPrinter;
class QWidget;
class ZOR_ConfigDocument;

class ZOR_ConfigSheet
{
public:
    enum Format { Text, Html, Pdf };
    struct Row
    {
        QString qsPage;
        QString qsCaption;
        QString qsValue;
        bool bChanged = false; // differs from the default
        QString qsNode;
        QString qsAttr;
    };

    ZOR_ConfigSheet() = default;

    void build(ZOR_ConfigDocument* lpDoc);
    const QVector<Row>& rows() const { return m_rows; }

    QString toText() const;
    QString toHtml() const;
    void print(QPrinter* lpPrinter) const;
    // False (errorString) when the file cannot be written.
    bool save(const QString& qsFileName, Format format);
    QString errorString() const { return m_qsError; }

    // What a person reads beside a widget: its own text, its label (buddy or
    // the cell to its left), or the title of its group.
    static QString captionOf(const QWidget* lpWidget);
    // The value as the widget shows it: a list's caption, a number with its
    // unit, yes or no.
    static QString shownValue(const QWidget* lpWidget);

private:
    QVector<Row> m_rows;
    QString m_qsTitle;
    QString m_qsError;
};

#endif
