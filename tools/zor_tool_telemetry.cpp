// zor-tool decode / csv: telemetry records of protocol versions 1, 2 and 3.

#include "zor_tool.h"
#include "zor_tool_common.h"
#include "zor_tool_records.h"

#include "module/zor_language.h"
#include "telemetry/tmipage_kite1.h"
#include "telemetry/zor_tmicsvwriter.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <vector>

namespace {

// Says on standard error what of the input the record did not use, or that
// an F8 record was short and zero-filled.
void noteInputSize(int nGiven, int nUsed, bool isF8)
{
    const int kF8Bytes = 128;
    QTextStream& e = ZorTool::err();
    if (isF8 && nGiven < kF8Bytes)
        e << "zor-tool: note: the F8 record is " << nGiven << " bytes, not " << kF8Bytes << "; the missing "
          << kF8Bytes - nGiven << " bytes were read as zero\n";
    else if (nGiven > nUsed)
        e << "zor-tool: note: " << nGiven - nUsed << " bytes after the " << nUsed << "-byte record were not read\n";
    e.flush();
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

// number;name;text for every field the record carries, or the JSON array
// of {number, name, text}.
QByteArray fieldLines(const TmiPage_Base& record, bool json)
{
    QByteArray lines;
    QJsonArray fields;
    for (int n = 1; n <= record.lastField(); ++n) {
        if (!record.isUseParam(n))
            continue;
        QByteArray text;
        record.appendColumnTexts(n, text, QByteArray(), QByteArrayLiteral(";"));
        text.chop(1);
        if (json) {
            fields.append(QJsonObject{{QStringLiteral("number"), n},
                {QStringLiteral("name"), QString::fromLatin1(ZorTmi::field(n).name)},
                {QStringLiteral("text"), QString::fromUtf8(text)}});
            continue;
        }
        lines.append(QByteArray::number(n)).append(';').append(ZorTmi::field(n).name).append(';');
        lines.append(text).append('\n');
    }
    return json ? QJsonDocument(fields).toJson(QJsonDocument::Indented) : lines;
}

} // namespace

int toolDecode(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Decodes one telemetry record and prints number;name;text for every field it carries, "
                       "the text being the field's CSV column texts joined by \";\". --f8 reads the fixed "
                       "128-byte F8 record instead (version-1 fields)."));
    ZorTool::RecordOptions o;
    o.addTo(parser);
    const QCommandLineOption f8(QStringLiteral("f8"), QStringLiteral("The data is an F8 record."));
    const QCommandLineOption hex(QStringLiteral("hex"), QStringLiteral("Record bytes in hex."), QStringLiteral("HEX"));
    const QCommandLineOption file(
        QStringLiteral("file"), QStringLiteral("File with the record bytes."), QStringLiteral("PATH"));
    const QCommandLineOption utcOffset(QStringLiteral("utc-offset"),
        QStringLiteral("Show times as UTC plus SECONDS instead of the TZ zone."), QStringLiteral("SECONDS"));
    parser.addOption(f8);
    parser.addOption(hex);
    parser.addOption(file);
    parser.addOption(utcOffset);
    const QCommandLineOption json(
        QStringLiteral("json"), QStringLiteral("Print a JSON array of {number, name, text} instead."));
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
    } else if ((code = ZorTool::recordFromOptions(parser, o, record)) != 0) {
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
    ZorTool::applyLanguage(parser, o);

    const auto* bytes = reinterpret_cast<const unsigned char*>(data.constData());
    if (isF8)
        static_cast<TmiPage_Kite1*>(record.get())->setCurrentTMI_From_F8(bytes, data.size());
    else
        record->setCurrentTMI(bytes, data.size());

    const QByteArray lines = fieldLines(*record, parser.isSet(json));
    std::fwrite(lines.constData(), 1, size_t(lines.size()), stdout);
    std::fflush(stdout);
    noteInputSize(data.size(), isF8 ? 128 : record->recordSize(), isF8);
    if (!isF8 && record->missingBytes() > 0)
        return ZorTool::fail(1,
            QStringLiteral("record too short: %1 bytes missing (the field set needs %2, got %3)")
                .arg(record->missingBytes())
                .arg(record->recordSize())
                .arg(data.size()));
    return 0;
}

namespace {

// The CSV for analysis: a header of column names (the field name, or the
// name of the part for fields of several columns), then per record the
// numbers of the columns, "," between cells, "\r\n" after each line.
class NumericCsv
{
public:
    explicit NumericCsv(const TmiPage_Base& columns)
    {
        for (int n = 1; n <= columns.lastField(); ++n)
            if (columns.isInFormat(n))
                for (int i = 0; i < ZorTmi::field(n).csvCount; ++i)
                    ids.push_back(ZorTmi::csvColumns()[ZorTmi::field(n).firstCsv + i]);
    }
    void header(QByteArray& out) const
    {
        for (size_t i = 0; i < ids.size(); ++i)
            out.append(i ? "," : "").append(ZorTmi::column(ids[i]).getter);
        out.append("\r\n");
    }
    void line(QByteArray& out, const TmiPage_Base& record) const
    {
        for (size_t i = 0; i < ids.size(); ++i) {
            if (i)
                out.append(',');
            const ZorTmi::Column& c = ZorTmi::column(ids[i]);
            if (record.isUseParam(ZorTmi::presenceField(c.field)))
                ZorTmi::appendNumberText(out, c, record.fieldBytes(c.field));
        }
        out.append("\r\n");
    }

private:
    std::vector<quint16> ids;
};

int exportNumeric(ZorTool::ArchiveReader& archive, const QCommandLineParser& parser, const QCommandLineOption& outFile)
{
    QSaveFile file;
    QFile standardOutput;
    QIODevice* device = &file;
    if (parser.isSet(outFile)) {
        file.setFileName(parser.value(outFile));
        if (!file.open(QIODevice::WriteOnly))
            return ZorTool::fail(2, QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString()));
    } else {
        device = &standardOutput;
        standardOutput.open(stdout, QIODevice::WriteOnly);
    }
    const NumericCsv csv(archive.columns());
    QByteArray buffer;
    csv.header(buffer);
    bool ok = true;
    archive.forEach([&](const TmiPage_Base& record) {
        csv.line(buffer, record);
        if (buffer.size() > (1 << 20)) {
            ok = device->write(buffer) == buffer.size();
            buffer.clear();
        }
        return ok;
    });
    ok = ok && device->write(buffer) == buffer.size() && (device != &file || file.commit());
    if (!ok)
        return ZorTool::fail(
            2, QStringLiteral("cannot write %1: %2").arg(parser.value(outFile), device->errorString()));
    return archive.partialBytes() ? ZorTool::fail(1, archive.partialMessage()) : 0;
}

} // namespace

int toolCsv(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Exports records of one field set, stored back to back, as CSV: a header line, then one "
                       "line per record (\";\" cells, \"\\r\\n\" line ends, UTF-8). --numeric writes a CSV for "
                       "analysis instead: a header of field names, \",\" cells, numbers with \".\" decimals in the "
                       "unit of the column's text, times as ISO 8601 UTC, coordinates in decimal degrees, flags 0/1, "
                       "empty cells where a record has no value."));
    ZorTool::ArchiveReader archive("csv");
    archive.addTo(parser);
    const QCommandLineOption outFile(
        QStringLiteral("out"), QStringLiteral("CSV file (default: standard output)."), QStringLiteral("FILE"));
    const QCommandLineOption numeric(QStringLiteral("numeric"), QStringLiteral("Numbers for analysis, see above."));
    parser.addOption(outFile);
    parser.addOption(numeric);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    if ((code = archive.open(parser)) != 0)
        return code;
    if (parser.isSet(numeric))
        return exportNumeric(archive, parser, outFile);

    ZOR_TmiCsvWriter csv(archive.columns());
    QFile standardOutput;
    const bool opened = parser.isSet(outFile)
        ? csv.open(parser.value(outFile))
        : (standardOutput.open(stdout, QIODevice::WriteOnly) && csv.open(&standardOutput));
    if (!opened)
        return ZorTool::fail(2, csv.errorString());
    bool ok = csv.writeHeader();
    ok = ok && archive.forEach([&csv](const TmiPage_Base& record) { return csv.writeRecord(&record); });
    if (!ok || !csv.commit())
        return ZorTool::fail(2, csv.errorString());
    return archive.partialBytes() ? ZorTool::fail(1, archive.partialMessage()) : 0;
}
