#ifndef ZOR_TOOL_RECORDS_H
#define ZOR_TOOL_RECORDS_H

// What the telemetry subcommands share: the options that name a protocol
// version and a field set, and the reading of an archive (records of one
// field set, back to back) record by record, with progress on stderr for
// large inputs.

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFile>
#include <QString>

#include <functional>
#include <memory>

class TmiPage_Base;

namespace ZorTool {

struct RecordOptions
{
    // "--version" was the first name of this option and still works.
    QCommandLineOption version{QStringList{QStringLiteral("protocol"), QStringLiteral("version")},
        QStringLiteral("Protocol version: 1, 2 or 3."), QStringLiteral("1|2|3")};
    QCommandLineOption mask{QStringLiteral("mask"),
        QStringLiteral("Field set as text: character i is field i+1, \"1\" present."), QStringLiteral("MASK")};
    QCommandLineOption maskHex{
        QStringLiteral("mask-hex"), QStringLiteral("Field set as its 32 bytes in hex."), QStringLiteral("HEX64")};
    QCommandLineOption lang{QStringLiteral("lang"),
        QStringLiteral("Caption language (ru, en, ...; \"keys\" shows the keys)."), QStringLiteral("LANG")};

    void addTo(QCommandLineParser& parser) const;
};

// The record object of --protocol with the field set of --mask / --mask-hex.
// Returns 0 or the exit code of a usage error.
int recordFromOptions(const QCommandLineParser& parser, const RecordOptions& o, std::unique_ptr<TmiPage_Base>& record);
void applyLanguage(const QCommandLineParser& parser, const RecordOptions& o);

// An archive named by --in (and the record options).
class ArchiveReader
{
public:
    explicit ArchiveReader(const char* command);
    ~ArchiveReader();

    RecordOptions options;
    QCommandLineOption in{
        QStringLiteral("in"), QStringLiteral("File of records (\"-\": standard input)."), QStringLiteral("FILE")};
    void addTo(QCommandLineParser& parser) const;

    // Makes the column-defining record and opens the input; 0 or the exit
    // code of the failure (reported).
    int open(const QCommandLineParser& parser);
    const TmiPage_Base& columns() const { return *m_columns; }

    // Calls each() with every whole record, then with the partial last one
    // (decoded as far as whole fields reach) when withPartial is set; stops
    // when each() returns false. False when each() stopped.
    bool forEach(const std::function<bool(const TmiPage_Base&)>& each, bool withPartial = false);
    // After forEach: bytes of a partial last record (0 when none), and the
    // message that reports it.
    int partialBytes() const { return m_nPartial; }
    QString partialMessage() const;

private:
    const char* m_lpCommand;
    std::unique_ptr<TmiPage_Base> m_columns;
    std::unique_ptr<TmiPage_Base> m_record;
    QFile m_input;
    qint64 m_nOffset = 0;
    int m_nPartial = 0;
};

} // namespace ZorTool

#endif
