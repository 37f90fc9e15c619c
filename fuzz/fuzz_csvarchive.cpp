// An archive of many records of one field set through the CSV export, as
// zor-tool csv reads it: byte 0 the protocol version (low 2 bits, 0 = 3),
// bytes 1-32 the field set, the rest records back to back (a short last
// record included). Every data line must have the header's cell count, and
// there is one line per whole record.

#include "module/zor_language.h"
#include "telemetry/tmipage_base.h"
#include "telemetry/zor_tmicsvwriter.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    ZOR_Language::instance().load(QStringLiteral("keys"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1 + ZorTmi::MaskBytes)
        return 0;
    const int version = (data[0] & 3) ? (data[0] & 3) : 3;
    auto columns = TmiPage_Base::create(version);
    auto record = TmiPage_Base::create(version);
    columns->setPageFormat(data + 1);
    record->setPageFormat(data + 1);
    const int recordSize = record->recordSize();
    const unsigned char* p = data + 1 + ZorTmi::MaskBytes;
    const int length = int(size - 1 - ZorTmi::MaskBytes);

    QBuffer out;
    out.open(QIODevice::WriteOnly);
    ZOR_TmiCsvWriter csv(*columns, (data[0] & 4) ? ZOR_TmiCsvWriter::Windows1251 : ZOR_TmiCsvWriter::Utf8);
    if (!csv.open(&out) || !csv.writeHeader())
        std::abort();
    int records = 0;
    for (int pos = 0; recordSize > 0 && pos < length; pos += recordSize) {
        // Each record in a buffer of exactly its bytes (the last may be short).
        const int n = qMin(recordSize, length - pos);
        std::vector<unsigned char> bytes(p + pos, p + pos + n);
        if (record->setCurrentTMI(bytes.data(), n) != (n == recordSize))
            std::abort();
        if (n == recordSize) {
            if (!csv.writeRecord(record.get()))
                std::abort();
            ++records;
        }
    }
    if (!csv.commit())
        std::abort();
    const QList<QByteArray> lines = out.data().split('\n');
    // "\r\n" after every line: the split leaves one empty piece at the end.
    if (lines.size() != records + 2 || !lines.last().isEmpty())
        std::abort();
    const int cells = lines.first().count(';');
    for (int i = 1; i <= records; ++i)
        if (lines[i].count(';') != cells || !lines[i].endsWith('\r'))
            std::abort();
    return 0;
}
