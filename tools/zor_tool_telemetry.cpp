// zor-tool decode / csv: telemetry records of protocol versions 1, 2 and 3.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "module/zor_language.h"
#include "telemetry/tmipage_kite1.h"
#include "telemetry/zor_tmicsvwriter.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>

namespace {

// Inputs above this size get progress reports on stderr.
const qint64 kProgressThreshold = 10 * 1024 * 1024;
// Records read from the input at once.
const int kRecordsPerRead = 4096;

struct RecordOptions
{
    // "--version" was the first name of this option and still works.
    QCommandLineOption version{QStringList{QStringLiteral("protocol"), QStringLiteral("version")},
                               QStringLiteral("Protocol version: 1, 2 or 3."), QStringLiteral("1|2|3")};
    QCommandLineOption mask{QStringLiteral("mask"),
                            QStringLiteral("Field set as text: character i is field i+1, \"1\" present."),
                            QStringLiteral("MASK")};
    QCommandLineOption maskHex{QStringLiteral("mask-hex"), QStringLiteral("Field set as its 32 bytes in hex."),
                               QStringLiteral("HEX64")};
    QCommandLineOption lang{QStringLiteral("lang"),
                            QStringLiteral("Caption language (ru, en, ...; \"keys\" shows the keys)."),
                            QStringLiteral("LANG")};

    void addTo(QCommandLineParser& parser) const
    {
        parser.addOption(version);
        parser.addOption(mask);
        parser.addOption(maskHex);
        parser.addOption(lang);
    }
};

// Characters of a text mask other than "0" and "1" read as "field absent";
// say which, so a typing slip does not pass for a choice.
void noteOddMask(const QString& mask)
{
    QStringList positions;
    const int n = qMin(mask.size(), int(ZorTmi::MaskBytes * 8 - 1));
    for (int i = 0; i < n; ++i)
        if (mask.at(i) != QLatin1Char('0') && mask.at(i) != QLatin1Char('1'))
            positions << QString::number(i + 1);
    if (positions.isEmpty())
        return;
    const int kShown = 20;
    const QString more = positions.size() > kShown ? QStringLiteral(", ...") : QString();
    ZorTool::err() << "zor-tool: note: --mask holds characters other than \"0\" and \"1\" at "
                   << (positions.size() == 1 ? "position " : "positions ")
                   << QStringList(positions.mid(0, kShown)).join(QStringLiteral(", ")) << more
                   << "; the fields there are read as absent\n";
    ZorTool::err().flush();
}

// Says on standard error what of the input the record did not use, or that
// an F8 record was short and zero-filled.
void noteInputSize(int nGiven, int nUsed, bool isF8)
{
    const int kF8Bytes = 128;
    QTextStream& e = ZorTool::err();
    if (isF8 && nGiven < kF8Bytes)
        e << "zor-tool: note: the F8 record is " << nGiven << " bytes, not " << kF8Bytes
          << "; the missing " << kF8Bytes - nGiven << " bytes were read as zero\n";
    else if (nGiven > nUsed)
        e << "zor-tool: note: " << nGiven - nUsed << " bytes after the " << nUsed << "-byte record were not read\n";
    e.flush();
}

// The record object of --version with the field set of --mask / --mask-hex.
// Returns 0 or the exit code of a usage error.
int recordFromOptions(const QCommandLineParser& parser, const RecordOptions& o,
                      std::unique_ptr<TmiPage_Base>& record)
{
    bool ok = false;
    const int version = parser.value(o.version).toInt(&ok);
    if (!parser.isSet(o.version) || !ok || !(record = TmiPage_Base::create(version)))
        return ZorTool::fail(2, QStringLiteral("--protocol must be 1, 2 or 3"));
    if (parser.isSet(o.mask) && parser.isSet(o.maskHex))
        return ZorTool::fail(2, QStringLiteral("give either --mask or --mask-hex, not both"));
    if (parser.isSet(o.maskHex)) {
        QByteArray bytes;
        QString error;
        if (!ZorTool::parseHex(parser.value(o.maskHex), bytes, &error))
            return ZorTool::fail(2, QStringLiteral("--mask-hex: %1").arg(error));
        if (bytes.size() != ZorTmi::MaskBytes)
            return ZorTool::fail(2, QStringLiteral("--mask-hex needs 64 hex digits (32 bytes), got %1 digits")
                                        .arg(bytes.size() * 2));
        record->setPageFormat(reinterpret_cast<const unsigned char*>(bytes.constData()));
    } else if (parser.isSet(o.mask)) {
        record->setPageFormat(parser.value(o.mask));
        noteOddMask(parser.value(o.mask));
    } else {
        return ZorTool::fail(2, QStringLiteral("give the field set with --mask or --mask-hex"));
    }
    return 0;
}

void applyLanguage(const QCommandLineParser& parser, const RecordOptions& o)
{
    if (parser.isSet(o.lang))
        ZOR_Language::instance().load(parser.value(o.lang));
}

// Times show in a fixed zone UTC + seconds instead of the TZ zone.
void useFixedZone(int seconds)
{
    const int a = seconds < 0 ? -seconds : seconds;
    // POSIX zones count west of Greenwich as positive.
    const QByteArray zone = QStringLiteral("ZOR%1%2:%3:%4")
                                .arg(seconds > 0 ? QLatin1Char('-') : QLatin1Char('+'))
                                .arg(a / 3600)
                                .arg(a / 60 % 60, 2, 10, QLatin1Char('0'))
                                .arg(a % 60, 2, 10, QLatin1Char('0'))
                                .toLatin1();
    qputenv("TZ", zone);
    tzset();
}

} // namespace

int toolDecode(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Decodes one telemetry record and prints number;name;text for every field it carries, "
        "the text being the field's CSV column texts joined by \";\". --f8 reads the fixed "
        "128-byte F8 record instead (version-1 fields)."));
    RecordOptions o;
    o.addTo(parser);
    const QCommandLineOption f8(QStringLiteral("f8"), QStringLiteral("The data is an F8 record."));
    const QCommandLineOption hex(QStringLiteral("hex"), QStringLiteral("Record bytes in hex."), QStringLiteral("HEX"));
    const QCommandLineOption file(QStringLiteral("file"), QStringLiteral("File with the record bytes."),
                                  QStringLiteral("PATH"));
    const QCommandLineOption utcOffset(QStringLiteral("utc-offset"),
                                       QStringLiteral("Show times as UTC plus SECONDS instead of the TZ zone."),
                                       QStringLiteral("SECONDS"));
    parser.addOption(f8);
    parser.addOption(hex);
    parser.addOption(file);
    parser.addOption(utcOffset);
    const QCommandLineOption json(QStringLiteral("json"),
                                  QStringLiteral("Print a JSON array of {number, name, text} instead."));
    parser.addOption(json);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;

    const bool isF8 = parser.isSet(f8);
    if (isF8 && (parser.isSet(o.mask) || parser.isSet(o.maskHex)))
        return ZorTool::fail(2, QStringLiteral("--f8 has a fixed field set: leave out --mask / --mask-hex"));
    std::unique_ptr<TmiPage_Base> record;
    if (isF8) {
        record = std::make_unique<TmiPage_Kite1>(QString());
    } else if ((code = recordFromOptions(parser, o, record)) != 0) {
        return code;
    }
    if (parser.isSet(hex) == parser.isSet(file))
        return ZorTool::fail(2, QStringLiteral("give the record with either --hex or --file"));
    QByteArray data;
    QString error;
    if (parser.isSet(hex) ? !ZorTool::parseHex(parser.value(hex), data, &error)
                          : !ZorTool::readFile(parser.value(file), data, &error))
        return ZorTool::fail(2, error);
    if (parser.isSet(utcOffset)) {
        bool ok = false;
        const int seconds = parser.value(utcOffset).toInt(&ok);
        if (!ok || seconds < -86400 || seconds > 86400)
            return ZorTool::fail(2, QStringLiteral("--utc-offset must be seconds between -86400 and 86400"));
        useFixedZone(seconds);
        record->setDateTimeOffset(seconds);
    }
    applyLanguage(parser, o);

    const auto* bytes = reinterpret_cast<const unsigned char*>(data.constData());
    if (isF8)
        static_cast<TmiPage_Kite1*>(record.get())->setCurrentTMI_From_F8(bytes, data.size());
    else
        record->setCurrentTMI(bytes, data.size());

    QByteArray lines;
    QJsonArray fields;
    for (int n = 1; n <= record->lastField(); ++n) {
        if (!record->isUseParam(n))
            continue;
        QByteArray text;
        record->appendColumnTexts(n, text, QByteArray(), QByteArrayLiteral(";"));
        text.chop(1);
        if (parser.isSet(json)) {
            fields.append(QJsonObject{{QStringLiteral("number"), n},
                                      {QStringLiteral("name"), QString::fromLatin1(ZorTmi::field(n).name)},
                                      {QStringLiteral("text"), QString::fromUtf8(text)}});
            continue;
        }
        lines.append(QByteArray::number(n)).append(';').append(ZorTmi::field(n).name).append(';');
        lines.append(text).append('\n');
    }
    if (parser.isSet(json))
        lines = QJsonDocument(fields).toJson(QJsonDocument::Indented);
    std::fwrite(lines.constData(), 1, size_t(lines.size()), stdout);
    std::fflush(stdout);
    noteInputSize(data.size(), isF8 ? 128 : record->recordSize(), isF8);
    if (!isF8 && record->missingBytes() > 0)
        return ZorTool::fail(1, QStringLiteral("record too short: %1 bytes missing (the field set needs %2, got %3)")
                                    .arg(record->missingBytes())
                                    .arg(record->recordSize())
                                    .arg(data.size()));
    return 0;
}

int toolCsv(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Exports records of one field set, stored back to back, as CSV: a header line, then one "
        "line per record (\";\" cells, \"\\r\\n\" line ends, UTF-8)."));
    RecordOptions o;
    o.addTo(parser);
    const QCommandLineOption in(QStringLiteral("in"), QStringLiteral("File of records."), QStringLiteral("FILE"));
    const QCommandLineOption outFile(QStringLiteral("out"), QStringLiteral("CSV file (default: standard output)."),
                                     QStringLiteral("FILE"));
    parser.addOption(in);
    parser.addOption(outFile);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    std::unique_ptr<TmiPage_Base> columns;
    if ((code = recordFromOptions(parser, o, columns)) != 0)
        return code;
    if (!parser.isSet(in))
        return ZorTool::fail(2, QStringLiteral("give the records with --in FILE"));
    QFile input(parser.value(in));
    const bool fromStdin = parser.value(in) == QLatin1String("-");
    if (!(fromStdin ? input.open(stdin, QIODevice::ReadOnly) : input.open(QIODevice::ReadOnly)))
        return ZorTool::fail(2, QStringLiteral("cannot read %1: %2").arg(input.fileName(), input.errorString()));
    applyLanguage(parser, o);

    const qint64 total = input.size();
    const int recordSize = columns->recordSize();
    if (recordSize == 0 && total > 0)
        return ZorTool::fail(1, QStringLiteral("the field set selects no fields, so the input cannot be split into records"));

    ZOR_TmiCsvWriter csv(*columns);
    QFile standardOutput;
    const bool opened = parser.isSet(outFile)
        ? csv.open(parser.value(outFile))
        : (standardOutput.open(stdout, QIODevice::WriteOnly) && csv.open(&standardOutput));
    if (!opened)
        return ZorTool::fail(2, csv.errorString());

    // One object defines the columns, another is refilled with every record.
    std::unique_ptr<TmiPage_Base> record = TmiPage_Base::create(parser.value(o.version).toInt());
    QByteArray mask;
    columns->getPageFormat(mask);
    record->setPageFormat(reinterpret_cast<const unsigned char*>(mask.constData()));

    bool ok = csv.writeHeader();
    const bool progress = total > kProgressThreshold;
    int lastPercent = -1;
    qint64 offset = 0;
    QByteArray chunk;
    while (ok && recordSize > 0) {
        // A pipe hands over what has arrived so far: keep reading until the
        // block is full or the input ends, so that only the very end of the
        // input can hold a partial record.
        const qint64 wanted = qint64(recordSize) * kRecordsPerRead;
        chunk = input.read(wanted);
        while (chunk.size() < wanted) {
            const QByteArray more = input.read(wanted - chunk.size());
            if (more.isEmpty())  // a read blocks until data comes: nothing means the end
                break;
            chunk += more;
        }
        if (chunk.isEmpty())
            break;
        const auto* p = reinterpret_cast<const unsigned char*>(chunk.constData());
        int pos = 0;
        for (; ok && pos + recordSize <= chunk.size(); pos += recordSize) {
            record->setCurrentTMI(p + pos, recordSize);
            ok = csv.writeRecord(record.get());
        }
        offset += pos;
        if (pos < chunk.size()) {  // only the last read can end in a partial record
            if (!ok || !csv.commit())
                return ZorTool::fail(2, csv.errorString());
            return ZorTool::fail(1, QStringLiteral("trailing partial record at byte offset %1: %2 of %3 bytes")
                                        .arg(offset)
                                        .arg(chunk.size() - pos)
                                        .arg(recordSize));
        }
        if (progress) {
            const int percent = int(offset * 100 / total);
            if (percent / 5 != lastPercent / 5) {
                lastPercent = percent;
                ZorTool::err() << "zor-tool: csv " << percent << "% (" << offset / recordSize << " records)\n";
                ZorTool::err().flush();
            }
        }
    }
    if (!ok || !csv.commit())
        return ZorTool::fail(2, csv.errorString());
    return 0;
}
