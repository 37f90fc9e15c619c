#ifndef ZOR_TMI_COLUMNSTORE_H
#define ZOR_TMI_COLUMNSTORE_H

// Columns of an archive as numbers, one value per whole record, for the
// chart, the track and the table's searches. A column is read from the file
// the first time it is asked for (several in one pass) and kept until the
// archive or its field set changes. Records that lack a value give NaN.

#include "zor_tmi_fieldset.h"

#include <QHash>
#include <QObject>
#include <QVector>

#include <functional>

class ZOR_TmiColumnStore : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_TmiColumnStore(QObject* parent = nullptr);

    // Forgets every loaded column.
    void setArchive(const QString& qsFileName, const ZOR_TmiFieldSet& fieldSet, int nRecords);
    const QString& fileName() const { return m_qsFileName; }
    const ZOR_TmiFieldSet& fieldSet() const { return m_fieldSet; }
    int recordCount() const { return m_nRecords; }

    // Reads the columns (ZorTmi column ids) not loaded yet in one pass;
    // false, with errorString(), when the file cannot be read.
    bool load(const QVector<int>& ids);
    bool isLoaded(int nId) const { return m_columns.contains(nId); }
    // The values of a column, loaded when needed (empty when it cannot be).
    const QVector<double>& values(int nId);
    // The unit a column's numbers are in ("" for plain numbers and flags).
    QString unit(int nId) const;

    // Whether the field set carries record times; times() are UTC seconds.
    bool hasTime() const;
    const QVector<double>& times();
    // The column id of a field's first value, -1 when the set lacks it.
    int columnOf(int nField) const;

    // Every record's bytes ORed together: a bit clear here is clear in
    // every record. False when the file cannot be read.
    bool recordsOr(QByteArray& out);

    QString errorString() const { return m_qsError; }
    qint64 memoryBytes() const;

private:
    bool readRecords(const std::function<void(const unsigned char*, int, int)>& reader);

    QString m_qsFileName;
    ZOR_TmiFieldSet m_fieldSet;
    int m_nRecords = 0;
    QHash<int, QVector<double>> m_columns;
    QByteArray m_recordsOr;
    QString m_qsError;
};

#endif
