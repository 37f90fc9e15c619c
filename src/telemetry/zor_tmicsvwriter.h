#ifndef ZOR_TMICSVWRITER_H
#define ZOR_TMICSVWRITER_H

// Writes a CSV export of telemetry records to a file or device: the lines
// of TmiPage_Base::setExcelHeader / setExcelData, byte for byte, but
// collected in one buffer and written in large blocks (a QTextStream cell by
// cell is several times slower for archives of 100,000 records). Full blocks
// go to a writing thread of the writer's own while the next ones are
// formatted, so a large export takes the time of the slower of the two, not
// of both; an export of less than one block never starts the thread. A file
// is written through QSaveFile: until commit() the old file stays whole, and
// a failed or cancelled export leaves it untouched.
//
//   ZOR_TmiCsvWriter csv(columns);          // the column-defining record
//   if (!csv.open(path)) ... csv.errorString()
//   csv.writeHeader();
//   for (...) csv.writeRecord(&record);
//   if (!csv.commit()) ... csv.errorString()

#include <QByteArray>
#include <QSaveFile>
#include <QString>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class QIODevice;
class TmiPage_Base;

class ZOR_TmiCsvWriter
{
public:
    // UTF-8 is what a QTextStream writes with its default codec here; a
    // Windows-1251 file is what spreadsheets of Russian Windows systems
    // read without an import dialog.
    enum Encoding { Utf8, Windows1251 };

    explicit ZOR_TmiCsvWriter(const TmiPage_Base& columns, Encoding encoding = Utf8);
    ~ZOR_TmiCsvWriter();
    ZOR_TmiCsvWriter(const ZOR_TmiCsvWriter&) = delete;
    ZOR_TmiCsvWriter& operator=(const ZOR_TmiCsvWriter&) = delete;

    bool open(const QString& path);
    // An already open device (standard output, a buffer); not owned.
    bool open(QIODevice* device);

    bool writeHeader();
    // A null record writes nothing.
    bool writeRecord(const TmiPage_Base* record, const QString& codeText = QString());
    // Writes what is buffered; for a file, also replaces the target.
    bool commit();
    // Drops the export; the target file keeps its old content.
    void cancel();

    qint64 linesWritten() const { return nLines; }
    QString errorString() const { return qsError; }

    // Bytes collected before a block is written.
    static constexpr int BlockSize = 1 << 20;

private:
    bool flush();
    bool waitForWrite();
    bool afterLine();
    void stopWriting();
    void writeLoop();
    // Writes (and encodes) one block; empty, or what went wrong.
    QString writeBlock(const QByteArray& block) const;

    // Blocks handed to the writing thread and not yet written, at most.
    static constexpr int BlocksInFlight = 3;

    const TmiPage_Base& columns;
    Encoding encoding;
    std::unique_ptr<QSaveFile> file;
    QIODevice* device = nullptr;
    QByteArray baBuffer;
    QByteArray baCodeText;
    QString qsCodeText;
    QString qsError;
    qint64 nLines = 0;

    // Shared with the writing thread, under mutex.
    std::thread writer;
    std::mutex mutex;
    std::condition_variable cvQueued; // a block to write, or stop
    std::condition_variable cvWritten; // a block was written
    std::deque<QByteArray> queued; // in file order
    std::vector<QByteArray> spare; // written blocks, to be filled again
    bool bWriting = false;
    bool bStop = false;
    QString qsWriteError; // the first failed write
};

#endif
