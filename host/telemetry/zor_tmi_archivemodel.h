#ifndef ZOR_TMI_ARCHIVEMODEL_H
#define ZOR_TMI_ARCHIVEMODEL_H

// A telemetry archive (records of one field set, back to back) as a table:
// one row per record, the CSV columns of the field set. Nothing is read or
// decoded ahead: a row is read and decoded when a view asks for it, and a
// small cache keeps the texts of the rows on screen, so a file of millions
// of records opens at once and memory stays the same while it scrolls.
// Records have one size, so the index of record offsets is row x size.
//
// A file that the field set does not divide ends in a partial record: it
// is the last row, decoded as far as whole fields reach ("n/a" after), and
// problem() says where it starts and how many bytes it lacks.

#include "zor_tmi_fieldset.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QFile>
#include <QStringList>
#include <QVector>

#include <memory>

class TmiPage_Base;

class ZOR_TmiArchiveModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit ZOR_TmiArchiveModel(QObject* parent = nullptr);
    ~ZOR_TmiArchiveModel() override;

    // False (and errorString) when the file cannot be opened; the model is
    // then empty.
    bool openFile(const QString& qsFileName);
    void close();
    QString fileName() const { return m_file.fileName(); }
    bool isOpen() const { return m_file.isOpen(); }
    QString errorString() const { return m_qsError; }

    // Re-reads every row with another field set.
    void setFieldSet(const ZOR_TmiFieldSet& fieldSet);
    const ZOR_TmiFieldSet& fieldSet() const { return m_fieldSet; }

    qint64 fileSize() const { return m_nFileSize; }
    int recordSize() const { return m_nRecordSize; }
    // Whole records shown (the partial one not counted).
    int recordCount() const { return m_nRecords; }
    bool hasPartialRecord() const { return m_nPartialBytes > 0; }
    int partialBytes() const { return m_nPartialBytes; }
    // What is wrong with the file for this field set; empty when nothing.
    QString problem() const;

    bool isPartialRow(int nRow) const { return hasPartialRecord() && nRow == m_nRecords; }
    qint64 recordOffset(int nRow) const { return qint64(nRow) * m_nRecordSize; }
    // The bytes of a row as in the file (fewer for the partial record).
    QByteArray recordBytes(int nRow);
    // The record of a row decoded (valid until the next call); null past
    // the rows.
    const TmiPage_Base* decodedRecord(int nRow);

    // Columns: field n and column id of the field table.
    int columnField(int nColumn) const;
    int columnId(int nColumn) const;
    // The first column of field n, -1 when the field set lacks it.
    int firstColumnOf(int n) const;
    // Bytes within a record that hold the value of a column: the field's
    // offset plus the part's offset, the width of the part's wire type.
    bool columnBytes(int nColumn, int& nOffset, int& nLength) const;

    // Rows read and decoded since the model was made (for measurements).
    quint64 rowsDecoded() const { return m_nDecoded; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Largest row count a view can take.
    static constexpr int nMaxRows = 0x7FFFFFF0;

signals:
    void signal_ArchiveChanged();

private:
    void rebuild();
    const QStringList* rowTexts(int nRow) const;
    bool readRecord(int nRow, QByteArray& bytes) const;

    QFile m_file;
    ZOR_TmiFieldSet m_fieldSet;
    std::unique_ptr<TmiPage_Base> m_record;
    QString m_qsError;
    qint64 m_nFileSize = 0;
    int m_nRecordSize = 0;
    int m_nRecords = 0;
    int m_nPartialBytes = 0;
    bool m_bTruncated = false;
    QVector<quint16> m_columns; // column ids
    QStringList m_captions;

    // Reading goes through one block of records around the asked row.
    mutable QByteArray m_block;
    mutable qint64 m_nBlockStart = -1;
    mutable QCache<int, QStringList> m_rows;
    mutable quint64 m_nDecoded = 0;
    mutable TmiPage_Base* m_lpRecord = nullptr;
};

#endif
