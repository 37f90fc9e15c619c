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
    : m_columns(columnsPage)
    , m_encoding(textEncoding)
{
}

ZOR_TmiCsvWriter::~ZOR_TmiCsvWriter()
{
    stopWriting();
}

bool ZOR_TmiCsvWriter::open(const QString& path)
{
    cancel();
    m_file.reset(new QSaveFile(path));
    if (!m_file->open(QIODevice::WriteOnly)) {
        m_qsError = QStringLiteral("%1: %2").arg(path, m_file->errorString());
        m_file.reset();
        m_device = nullptr;
        return false;
    }
    m_device = m_file.get();
    m_baBuffer.reserve(BlockSize + BlockSize / 4);
    m_nLines = 0;
    return true;
}

bool ZOR_TmiCsvWriter::open(QIODevice* target)
{
    cancel();
    m_device = target;
    if (!m_device || !m_device->isWritable()) {
        m_qsError = QStringLiteral("the output is not open for writing");
        m_device = nullptr;
        return false;
    }
    m_baBuffer.reserve(BlockSize + BlockSize / 4);
    m_nLines = 0;
    return true;
}

bool ZOR_TmiCsvWriter::writeHeader()
{
    if (!m_device)
        return false;
    m_columns.appendExcelHeader(m_baBuffer);
    return afterLine();
}

bool ZOR_TmiCsvWriter::writeRecord(const TmiPage_Base* record, const QString& codeText)
{
    if (!m_device)
        return false;
    if (!record)
        return true;
    // Exports usually pass the same code text (or none) for many lines.
    if (codeText != m_qsCodeText) {
        m_qsCodeText = codeText;
        m_baCodeText = codeText.toUtf8();
    }
    m_columns.appendExcelData(m_baBuffer, record, m_baCodeText);
    return afterLine();
}

bool ZOR_TmiCsvWriter::afterLine()
{
    ++m_nLines;
    return m_baBuffer.size() < BlockSize || flush();
}

QString ZOR_TmiCsvWriter::writeBlock(const QByteArray& block) const
{
    const QByteArray* bytes = &block;
    QByteArray encoded;
    if (m_encoding == Windows1251) {
        const QString text = QString::fromUtf8(block.constData(), block.size());
        ZOR_Cp1251::encodeAppend(text.constData(), text.size(), encoded);
        bytes = &encoded;
    }
    errno = 0;
    if (m_device->write(*bytes) == bytes->size())
        return QString();
    return writeFailure(m_device, errno);
}

// The writing thread: blocks in the order they were handed over. After a
// failed write the rest are dropped; the failure is reported by the flush
// or commit that follows.
void ZOR_TmiCsvWriter::writeLoop()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        cvQueued.wait(lock, [this] { return m_bStop || !queued.empty(); });
        if (queued.empty())
            return;
        QByteArray block = std::move(queued.front());
        queued.pop_front();
        m_bWriting = true;
        const bool failed = !qsWriteError.isEmpty();
        lock.unlock();
        const QString error = failed ? QString() : writeBlock(block);
        block.resize(0); // keeps its reserved room
        lock.lock();
        m_bWriting = false;
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
    if (!m_device)
        return false;
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_writer.joinable())
        m_writer = std::thread(&ZOR_TmiCsvWriter::writeLoop, this);
    cvWritten.wait(
        lock, [this] { return !qsWriteError.isEmpty() || int(queued.size()) + int(m_bWriting) < BlocksInFlight; });
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
    queued.push_back(std::move(m_baBuffer));
    m_baBuffer = std::move(next);
    cvQueued.notify_one();
    return true;
}

// Waits until every block handed over is written; false (and the export
// cancelled) when one of them failed.
bool ZOR_TmiCsvWriter::waitForWrite()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    cvWritten.wait(lock, [this] { return queued.empty() && !m_bWriting; });
    if (qsWriteError.isEmpty())
        return true;
    m_qsError = qsWriteError;
    lock.unlock();
    cancel();
    return false;
}

bool ZOR_TmiCsvWriter::commit()
{
    if (!m_device)
        return false;
    if (!waitForWrite())
        return false;
    // The last block from here: the writing thread is idle.
    if (!m_baBuffer.isEmpty()) {
        const QString error = writeBlock(m_baBuffer);
        m_baBuffer.resize(0);
        if (!error.isEmpty()) {
            m_qsError = error;
            cancel();
            return false;
        }
    }
    stopWriting();
    if (m_file) {
        // Flushed apart from the commit, whose closing and clean-up would
        // overwrite the reason of a failed last write.
        errno = 0;
        if (!m_file->flush()) {
            m_qsError = writeFailure(m_file.get(), errno);
            cancel();
            return false;
        }
        const bool ok = m_file->commit();
        if (!ok)
            m_qsError = m_file->errorString();
        m_file.reset();
        m_device = nullptr;
        return ok;
    }
    return true;
}

// Ends the writing thread; blocks it has not started are dropped.
void ZOR_TmiCsvWriter::stopWriting()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_bStop = true;
        while (!queued.empty()) {
            spare.push_back(std::move(queued.front()));
            queued.pop_front();
        }
    }
    cvQueued.notify_all();
    if (m_writer.joinable())
        m_writer.join();
    m_bStop = false;
    qsWriteError.clear();
}

void ZOR_TmiCsvWriter::cancel()
{
    stopWriting();
    if (m_file) {
        m_file->cancelWriting();
        m_file.reset();
    }
    m_device = nullptr;
    m_baBuffer.resize(0);
}
