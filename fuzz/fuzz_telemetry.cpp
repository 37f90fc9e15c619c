// Telemetry decoders (versions 1, 2, 3, the F8 record, the extended record)
// and the CSV writer on random field sets and records of random length.
//
// Input: byte 0 chooses the record kind (low 2 bits: version 1/2/3 or F8;
// bit 2: extended record; bit 3: the column-defining object's flag; bit 4:
// a code text), bytes 1-32 are the field set, the rest is the record. The
// decoder must read only the given bytes, the texts must not crash, and
// every CSV data line must have as many cells as the header.

#include "module/zor_language.h"
#include "telemetry/tmipage_kite1.h"
#include "telemetry/tmipage_kite2.h"
#include "telemetry/tmipage_kite3.h"
#include "telemetry/zor_tmicsvwriter.h"

#include <QBuffer>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

std::unique_ptr<TmiPage_Base> makePage(int version, bool flag)
{
    switch (version) {
    case 1: return std::make_unique<TmiPage_Kite1>(QString(), flag);
    case 2: return std::make_unique<TmiPage_Kite2>(QString(), flag);
    default: return std::make_unique<TmiPage_Kite3>(QString(), flag);
    }
}

int cellCount(const QByteArray& line)
{
    // Texts never contain ";" with the "keys" captions; code texts are
    // kept free of it below.
    return line.count(';');
}

// Says which property broke before libFuzzer reports the abort.
#define require(ok) ((ok) ? (void)0 : (fprintf(stderr, "failed: %s (line %d)\n", #ok, __LINE__), std::abort()))

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    ZOR_Language::instance().load(QStringLiteral("keys"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1 + ZorTmi::MaskBytes)
        return 0;
    const int kind = data[0];
    const bool f8 = (kind & 3) == 0;
    const int version = f8 ? 1 : (kind & 3);
    const bool ext = (kind & 4) && version != 1;
    const bool flag = kind & 8;
    const unsigned char* mask = data + 1;
    // A copy of exactly the record bytes, so that ASan sees any read past them.
    const size_t length = size - 1 - ZorTmi::MaskBytes;
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[length ? length : 1]);
    std::memcpy(bytes.get(), data + 1 + ZorTmi::MaskBytes, length);

    auto columns = makePage(version, flag);
    columns->setPageFormat(mask);
    std::unique_ptr<TmiPage_Base> record;
    if (f8) {
        auto k1 = std::make_unique<TmiPage_Kite1>(bytes.get(), int(length));
        k1->setCurrentPacketF8ToKite(nullptr, 0);
        record = std::move(k1);
    } else if (ext) {
        szExtTMI_KITE3 e = {};
        std::memcpy(&e, bytes.get(), qMin(length, sizeof e));
        if (version == 2)
            record = std::make_unique<TmiPage_Kite2>(&e);
        else
            record = std::make_unique<TmiPage_Kite3>(&e);
    } else {
        record = makePage(version, false);
        record->setPageFormat(mask);
        const bool complete = record->setCurrentTMI(bytes.get(), int(length));
        require(complete == (int(length) >= record->recordSize()));
        require(record->missingBytes() == (complete ? 0 : record->recordSize() - int(length)));
    }

    QByteArray text;
    for (int n = 1; n <= record->lastField(); ++n)
        record->appendColumnTexts(n, text, QByteArray(), QByteArrayLiteral(";"));
    for (int n = 207; n <= record->lastField(); ++n)
        text += record->userParamText(n, QString(QChar(QLatin1Char("usibhfx"[n % 7])))).toUtf8();

    QString codeText;
    if (kind & 16)
        codeText = QString::fromLatin1(reinterpret_cast<const char*>(mask), 8).remove(QLatin1Char(';'));
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    ZOR_TmiCsvWriter csv(*columns, (kind & 32) ? ZOR_TmiCsvWriter::Windows1251 : ZOR_TmiCsvWriter::Utf8);
    require(csv.open(&out));
    require(csv.writeHeader());
    require(csv.writeRecord(record.get(), codeText));
    require(csv.commit());

    const QByteArray all = out.data();
    const int split = all.indexOf("\r\n") + 2;
    require(split >= 2 && all.endsWith("\r\n"));
    const int headerCells = cellCount(all.left(split));
    const int dataCells = cellCount(all.mid(split));
    // The flag's cell is filled by extended records only.
    require(dataCells == headerCells - ((flag && !ext) ? 1 : 0));
    return 0;
}
