#include "telemetry/zor_tmicsvwriter.h"

#include "module/zor_cp1251.h"
#include "telemetry/tmipage_base.h"

ZOR_TmiCsvWriter::ZOR_TmiCsvWriter(const TmiPage_Base& columnsPage, Encoding textEncoding)
    : columns(columnsPage)
    , encoding(textEncoding)
{
}

ZOR_TmiCsvWriter::~ZOR_TmiCsvWriter() = default;

bool ZOR_TmiCsvWriter::open(const QString& path)
{
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
    file.reset();
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

bool ZOR_TmiCsvWriter::flush()
{
    if (!device)
        return false;
    // The buffer holds whole lines, so no character is split between blocks.
    const QByteArray* bytes = &baBuffer;
    QByteArray encoded;
    if (encoding == Windows1251) {
        const QString text = QString::fromUtf8(baBuffer.constData(), baBuffer.size());
        ZOR_Cp1251::encodeAppend(text.constData(), text.size(), encoded);
        bytes = &encoded;
    }
    const bool ok = device->write(*bytes) == bytes->size();
    baBuffer.resize(0);
    if (!ok) {
        qsError = device->errorString();
        cancel();
    }
    return ok;
}

bool ZOR_TmiCsvWriter::commit()
{
    if (!device)
        return false;
    if (!flush())
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
    if (file) {
        file->cancelWriting();
        file.reset();
    }
    device = nullptr;
    baBuffer.resize(0);
}
