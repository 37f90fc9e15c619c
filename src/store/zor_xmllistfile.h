#ifndef ZOR_XMLLISTFILE_H
#define ZOR_XMLLISTFILE_H

// The file format of the editable lists (servers, GSM operators, commands):
// UTF-8 XML, a root element with one empty element per record, one attribute
// per field. Reading and writing only; the dialog adds the default/user file
// pair, the tree and the bad-file rule.

#include <QByteArray>
#include <QList>
#include <QStringList>

class QIODevice;

class ZOR_XmlListFile
{
public:
    // A file larger than this is no list (and is not read).
    static constexpr qint64 nMaxFileBytes = 16 * 1024 * 1024;

    ZOR_XmlListFile(const QString& qsRootElement, const QString& qsRecordElement, const QStringList& attributes);

    // The records of a file's content, one value per attribute ("" when the
    // record lacks it). bOk is false for a list of another kind (another root
    // element, or only elements other than records) and for broken XML; the
    // records read before the fault are returned all the same.
    QList<QStringList> parse(const QByteArray& content, bool& bOk) const;
    // The same for a file: a missing file is an empty list; one that cannot
    // be read whole or is larger than nMaxFileBytes is not ok.
    QList<QStringList> read(const QString& qsPath, bool& bOk) const;
    // Writes the records; control characters, which would make the file
    // unreadable, are left out of the values.
    bool write(QIODevice* device, const QList<QStringList>& records) const;
    QByteArray toBytes(const QList<QStringList>& records) const;

    static QString xmlSafe(const QString& s);

private:
    QString qsRootElement;
    QString qsRecordElement;
    QStringList attributes;
};

#endif
