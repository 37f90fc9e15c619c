#include "zor_tool_records.h"
#include "zor_tool_common.h"

#include "module/zor_language.h"
#include "telemetry/tmipage_base.h"

namespace {

// Inputs above this size get progress reports on stderr.
const qint64 kProgressThreshold = 10 * 1024 * 1024;
// Records read from the input at once.
const int kRecordsPerRead = 4096;

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

} // namespace

namespace ZorTool {

void RecordOptions::addTo(QCommandLineParser& parser) const
{
    parser.addOption(version);
    parser.addOption(mask);
    parser.addOption(maskHex);
    parser.addOption(lang);
}

int recordFromOptions(const QCommandLineParser& parser, const RecordOptions& o, std::unique_ptr<TmiPage_Base>& record)
{
    bool ok = false;
    const int version = parser.value(o.version).toInt(&ok);
    if (!parser.isSet(o.version) || !ok || !(record = TmiPage_Base::create(version)))
        return fail(2, QStringLiteral("--protocol must be 1, 2 or 3"));
    if (parser.isSet(o.mask) && parser.isSet(o.maskHex))
        return fail(2, QStringLiteral("give either --mask or --mask-hex, not both"));
    if (parser.isSet(o.maskHex)) {
        QByteArray bytes;
        QString error;
        if (!parseHex(parser.value(o.maskHex), bytes, &error))
            return fail(2, QStringLiteral("--mask-hex: %1").arg(error));
        if (bytes.size() != ZorTmi::MaskBytes)
            return fail(
                2, QStringLiteral("--mask-hex needs 64 hex digits (32 bytes), got %1 digits").arg(bytes.size() * 2));
        record->setPageFormat(reinterpret_cast<const unsigned char*>(bytes.constData()));
    } else if (parser.isSet(o.mask)) {
        record->setPageFormat(parser.value(o.mask));
        noteOddMask(parser.value(o.mask));
    } else {
        return fail(2, QStringLiteral("give the field set with --mask or --mask-hex"));
    }
    return 0;
}

void applyLanguage(const QCommandLineParser& parser, const RecordOptions& o)
{
    if (parser.isSet(o.lang))
        ZOR_Language::instance().load(parser.value(o.lang));
}

ArchiveReader::ArchiveReader(const char* command)
    : m_lpCommand(command)
{
}

ArchiveReader::~ArchiveReader() = default;

void ArchiveReader::addTo(QCommandLineParser& parser) const
{
    options.addTo(parser);
    parser.addOption(in);
}

int ArchiveReader::open(const QCommandLineParser& parser)
{
    if (const int code = recordFromOptions(parser, options, m_columns))
        return code;
    if (!parser.isSet(in))
        return fail(2, QStringLiteral("give the records with --in FILE"));
    m_input.setFileName(parser.value(in));
    const bool fromStdin = parser.value(in) == QLatin1String("-");
    if (!(fromStdin ? m_input.open(stdin, QIODevice::ReadOnly) : m_input.open(QIODevice::ReadOnly)))
        return fail(2, QStringLiteral("cannot read %1: %2").arg(m_input.fileName(), m_input.errorString()));
    applyLanguage(parser, options);
    if (m_columns->recordSize() == 0 && m_input.size() > 0)
        return fail(1, QStringLiteral("the field set selects no fields, so the input cannot be split into records"));
    // One object defines the columns, another is refilled with every record.
    m_record = TmiPage_Base::create(parser.value(options.version).toInt());
    QByteArray mask;
    m_columns->getPageFormat(mask);
    m_record->setPageFormat(reinterpret_cast<const unsigned char*>(mask.constData()));
    return 0;
}

bool ArchiveReader::forEach(const std::function<bool(const TmiPage_Base&)>& each, bool withPartial)
{
    const qint64 total = m_input.size();
    const int recordSize = m_columns->recordSize();
    const bool progress = total > kProgressThreshold;
    int lastPercent = -1;
    QByteArray chunk;
    while (recordSize > 0) {
        // A pipe hands over what has arrived so far: keep reading until the
        // block is full or the input ends, so that only the very end of the
        // input can hold a partial record.
        const qint64 wanted = qint64(recordSize) * kRecordsPerRead;
        chunk = m_input.read(wanted);
        while (chunk.size() < wanted) {
            const QByteArray more = m_input.read(wanted - chunk.size());
            if (more.isEmpty()) // a read blocks until data comes: nothing means the end
                break;
            chunk += more;
        }
        if (chunk.isEmpty())
            break;
        const auto* p = reinterpret_cast<const unsigned char*>(chunk.constData());
        int pos = 0;
        for (; pos + recordSize <= chunk.size(); pos += recordSize) {
            m_record->setCurrentTMI(p + pos, recordSize);
            if (!each(*m_record))
                return false;
        }
        m_nOffset += pos;
        if (pos < chunk.size()) { // only the last read can end in a partial record
            m_nPartial = chunk.size() - pos;
            m_record->setCurrentTMI(p + pos, m_nPartial);
            return !withPartial || each(*m_record);
        }
        if (progress) {
            const int percent = int(m_nOffset * 100 / total);
            if (percent / 5 != lastPercent / 5) {
                lastPercent = percent;
                err() << "zor-tool: " << m_lpCommand << ' ' << percent << "% (" << m_nOffset / recordSize
                      << " records)\n";
                err().flush();
            }
        }
    }
    return true;
}

QString ArchiveReader::partialMessage() const
{
    return QStringLiteral("trailing partial record at byte offset %1: %2 of %3 bytes")
        .arg(m_nOffset)
        .arg(m_nPartial)
        .arg(m_columns->recordSize());
}

} // namespace ZorTool
