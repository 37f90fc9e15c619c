#include "telemetry/zor_tmicsvwriter.h"

#include "module/zor_cp1251.h"
#include "telemetry/tmipage_base.h"

ZOR_TmiCsvWriter::ZOR_TmiCsvWriter(const TmiPage_Base& columnsPage, Encoding textEncoding)
    : columns(columnsPage)
    , encoding(textEncoding)
{
}

ZOR_TmiCsvWriter::~ZOR_TmiCsvWriter()
{
    if (pending.valid())
        pending.wait();
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
    baWriting.reserve(BlockSize + BlockSize / 4);
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
    baWriting.reserve(BlockSize + BlockSize / 4);
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

// A block is written (and for Windows-1251 encoded) on a second thread while
// the next one is being formatted: the formatting of a large export and the
// disk then take their time side by side instead of one after the other. A
// failed write is reported by the flush or commit that follows it.
bool ZOR_TmiCsvWriter::flush()
{
    if (!device || !waitForWrite())
        return false;
    // The buffer holds whole lines, so no character is split between blocks.
    baWriting.swap(baBuffer);
    baBuffer.resize(0);
    QIODevice* target = device;
    const QByteArray* block = &baWriting;
    const bool toCp1251 = encoding == Windows1251;
    pending = std::async(std::launch::async, [target, block, toCp1251]() -> QString {
        const QByteArray* bytes = block;
        QByteArray encoded;
        if (toCp1251) {
            const QString text = QString::fromUtf8(block->constData(), block->size());
            ZOR_Cp1251::encodeAppend(text.constData(), text.size(), encoded);
            bytes = &encoded;
        }
        if (target->write(*bytes) == bytes->size())
            return QString();
        const QString error = target->errorString();
        return error.isEmpty() ? QStringLiteral("the output took only part of a block") : error;
    });
    return true;
}

bool ZOR_TmiCsvWriter::waitForWrite()
{
    if (!pending.valid())
        return true;
    const QString error = pending.get();
    if (error.isEmpty())
        return true;
    qsError = error;
    cancel();
    return false;
}

bool ZOR_TmiCsvWriter::commit()
{
    if (!device)
        return false;
    if (!flush() || !waitForWrite())
        return false;
    if (file) {
        const bool ok = file->commit();
        if (!ok)
            qsError = file->errorString();
        file.reset();
        device = nullptr;
        return ok;
    }
    return true;
}

void ZOR_TmiCsvWriter::cancel()
{
    if (pending.valid())
        pending.wait();
    pending = std::future<QString>();
    if (file) {
        file->cancelWriting();
        file.reset();
    }
    device = nullptr;
    baBuffer.resize(0);
}
