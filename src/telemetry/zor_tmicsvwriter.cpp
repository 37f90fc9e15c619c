#include "telemetry/zor_tmicsvwriter.h"

#include "module/zor_cp1251.h"
#include "telemetry/tmipage_base.h"

#include <cerrno>
#include <cstring>

namespace {

// The system's reason for a failed write ("No space left on device", "File
// too large"), which the device's own text may have lost ("Unknown error").
QString writeFailure(const QIODevice* device, int nErrno)
{
    if (nErrno != 0)
        return QString::fromLocal8Bit(std::strerror(nErrno));
    const QString error = device->errorString();
    return error.isEmpty() ? QStringLiteral("the output took only part of a block") : error;
}

} // namespace

ZOR_TmiCsvWriter::ZOR_TmiCsvWriter(const TmiPage_Base& columnsPage, Encoding textEncoding)
    : columns(columnsPage)
    , encoding(textEncoding)
{
}

ZOR_TmiCsvWriter::~ZOR_TmiCsvWriter()
{
    stopWriting();
}

bool ZOR_TmiCsvWriter::open(const QString& path)
{
    cancel();
    file.reset(new QSaveFile(path));
    if (!file->open(QIODevice::WriteOnly)) {
        qsError = QStringLiteral("%1: %2").arg(path, file->errorString());
        file.reset();
        device = nullptr;
        return false;
    }
    device = file.get();
    baBuffer.reserve(BlockSize + BlockSize / 4);
    nLines = 0;
    return true;
}

bool ZOR_TmiCsvWriter::open(QIODevice* target)
{
    cancel();
    device = target;
    if (!device || !device->isWritable()) {
        qsError = QStringLiteral("the output is not open for writing");
        device = nullptr;
        return false;
    }
    baBuffer.reserve(BlockSize + BlockSize / 4);
    nLines = 0;
    return true;
}

bool ZOR_TmiCsvWriter::writeHeader()
{
    if (!device)
        return false;
    columns.appendExcelHeader(baBuffer);
    return afterLine();
}

bool ZOR_TmiCsvWriter::writeRecord(const TmiPage_Base* record, const QString& codeText)
{
    if (!device)
        return false;
    if (!record)
        return true;
    // Exports usually pass the same code text (or none) for many lines.
    if (codeText != qsCodeText) {
        qsCodeText = codeText;
        baCodeText = codeText.toUtf8();
    }
    columns.appendExcelData(baBuffer, record, baCodeText);
    return afterLine();
}

bool ZOR_TmiCsvWriter::afterLine()
{
    ++nLines;
    return baBuffer.size() < BlockSize || flush();
}

QString ZOR_TmiCsvWriter::writeBlock(const QByteArray& block) const
{
    const QByteArray* bytes = &block;
    QByteArray encoded;
    if (encoding == Windows1251) {
        const QString text = QString::fromUtf8(block.constData(), block.size());
        ZOR_Cp1251::encodeAppend(text.constData(), text.size(), encoded);
        bytes = &encoded;
    }
    errno = 0;
    if (device->write(*bytes) == bytes->size())
        return QString();
    return writeFailure(device, errno);
}

// The writing thread: blocks in the order they were handed over. After a
// failed write the rest are dropped; the failure is reported by the flush
// or commit that follows.
void ZOR_TmiCsvWriter::writeLoop()
{
    std::unique_lock<std::mutex> lock(mutex);
    for (;;) {
        cvQueued.wait(lock, [this] { return bStop || !queued.empty(); });
        if (queued.empty())
            return;
        QByteArray block = std::move(queued.front());
        queued.pop_front();
        bWriting = true;
        const bool failed = !qsWriteError.isEmpty();
        lock.unlock();
        const QString error = failed ? QString() : writeBlock(block);
        block.resize(0); // keeps its reserved room
        lock.lock();
        bWriting = false;
        if (!error.isEmpty())
            qsWriteError = error;
        spare.push_back(std::move(block));
        cvWritten.notify_all();
    }
}

// Hands the buffer (whole lines, so no character is split between blocks)
// to the writing thread and takes an empty one, waiting while the thread is
// BlocksInFlight blocks behind.
bool ZOR_TmiCsvWriter::flush()
{
    if (!device)
        return false;
    std::unique_lock<std::mutex> lock(mutex);
    if (!writer.joinable())
        writer = std::thread(&ZOR_TmiCsvWriter::writeLoop, this);
    cvWritten.wait(
        lock, [this] { return !qsWriteError.isEmpty() || int(queued.size()) + int(bWriting) < BlocksInFlight; });
    if (!qsWriteError.isEmpty()) {
        lock.unlock();
        return waitForWrite();
    }
    QByteArray next;
    if (!spare.empty()) {
        next = std::move(spare.back());
        spare.pop_back();
    } else {
        next.reserve(BlockSize + BlockSize / 4);
    }
    queued.push_back(std::move(baBuffer));
    baBuffer = std::move(next);
    cvQueued.notify_one();
    return true;
}

// Waits until every block handed over is written; false (and the export
// cancelled) when one of them failed.
bool ZOR_TmiCsvWriter::waitForWrite()
{
    std::unique_lock<std::mutex> lock(mutex);
    cvWritten.wait(lock, [this] { return queued.empty() && !bWriting; });
    if (qsWriteError.isEmpty())
        return true;
    qsError = qsWriteError;
    lock.unlock();
    cancel();
    return false;
}

bool ZOR_TmiCsvWriter::commit()
{
    if (!device)
        return false;
    if (!waitForWrite())
        return false;
    // The last block from here: the writing thread is idle.
    if (!baBuffer.isEmpty()) {
        const QString error = writeBlock(baBuffer);
        baBuffer.resize(0);
        if (!error.isEmpty()) {
            qsError = error;
            cancel();
            return false;
        }
    }
    stopWriting();
    if (file) {
        // Flushed apart from the commit, whose closing and clean-up would
        // overwrite the reason of a failed last write.
        errno = 0;
        if (!file->flush()) {
            qsError = writeFailure(file.get(), errno);
            cancel();
            return false;
        }
        const bool ok = file->commit();
        if (!ok)
            qsError = file->errorString();
        file.reset();
        device = nullptr;
        return ok;
    }
    return true;
}

// Ends the writing thread; blocks it has not started are dropped.
void ZOR_TmiCsvWriter::stopWriting()
{
    {
        std::lock_guard<std::mutex> lock(mutex);
        bStop = true;
        while (!queued.empty()) {
            spare.push_back(std::move(queued.front()));
            queued.pop_front();
        }
    }
    cvQueued.notify_all();
    if (writer.joinable())
        writer.join();
    bStop = false;
    qsWriteError.clear();
}

void ZOR_TmiCsvWriter::cancel()
{
    stopWriting();
    if (file) {
        file->cancelWriting();
        file.reset();
    }
    device = nullptr;
    baBuffer.resize(0);
}
