// zor-tool term: text commands to a terminal from a shell or a script. The
// link and the joining of reply pieces are the host's own (zor_terminal);
// a command goes out as the console's free command line sends it.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "commands/zor_form_commands.h"
#include "log/zor_logbinfile.h"
#include "module/zor_cp1251.h"
#include "zor_host_texts.h"
#include "zor_reply_assembler.h"
#include "zor_terminal_link.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QScopedPointer>
#include <QTemporaryDir>
#include <QTimer>
#include <QVector>

namespace {

const int kDefaultTimeoutMs = 2000;

enum class Format { Text, Hex, Json };

// A command to send, a pattern the reply to the last command must match,
// or a pause.
struct Step
{
    enum Kind { Send, Expect, Sleep } kind;
    QString qsText;
    int nMs = 0;
};

struct Options
{
    QString qsPort;
    int nGapMs = ZOR_ReplyAssembler::nDefaultIdleGapMs;
    int nTimeoutMs = kDefaultTimeoutMs;
    Format format = Format::Text;
    QString qsLog;
    QVector<Step> steps;
};

bool checkPattern(const QString& qsPattern, QString* error)
{
    const QRegularExpression re(qsPattern);
    if (!re.isValid())
        *error = QStringLiteral("bad regular expression '%1': %2").arg(qsPattern, re.errorString());
    return re.isValid();
}

bool toMs(const QString& qsText, int nMin, int* nMs)
{
    bool bOk = false;
    *nMs = qsText.toInt(&bOk);
    return bOk && *nMs >= nMin;
}

// A script: a command per line, or "expect REGEX" (for the reply to the
// command before it), "sleep MS", "# comment"; blank lines are skipped.
bool parseScript(const QString& qsName, const QString& qsText, QVector<Step>& steps, QString* error)
{
    const QStringList lines = qsText.split(QLatin1Char('\n'));
    bool bSent = false;
    for (int i = 0; i < lines.size(); ++i) {
        const QString qsLine = lines[i].trimmed();
        const QString qsWhere = QStringLiteral("%1, line %2: ").arg(qsName).arg(i + 1);
        const QString qsWord = qsLine.section(QLatin1Char(' '), 0, 0);
        const QString qsRest = qsLine.section(QLatin1Char(' '), 1).trimmed();
        if (qsLine.isEmpty() || qsLine.startsWith(QLatin1Char('#')))
            continue;
        if (qsWord == QLatin1String("expect")) {
            if (!bSent)
                *error = QStringLiteral("expect before any command");
            else if (qsRest.isEmpty())
                *error = QStringLiteral("expect needs a pattern");
            if (!bSent || qsRest.isEmpty() || !checkPattern(qsRest, error)) {
                *error = qsWhere + *error;
                return false;
            }
            steps.append({Step::Expect, qsRest});
        } else if (qsWord == QLatin1String("sleep")) {
            Step step{Step::Sleep, QString()};
            if (!toMs(qsRest, 0, &step.nMs)) {
                *error = qsWhere + QStringLiteral("sleep takes milliseconds");
                return false;
            }
            steps.append(step);
        } else {
            steps.append({Step::Send, qsLine});
            bSent = true;
        }
    }
    return true;
}

bool parseOptions(const QCommandLineParser& parser, Options& o, QString* error)
{
    o.qsPort = parser.value(QStringLiteral("port"));
    if (o.qsPort.isEmpty()) {
        *error = QStringLiteral("term needs --port serial:PATH[:BAUD] or --port simulator");
        return false;
    }
    const QString qsGap = parser.value(QStringLiteral("gap"));
    const QString qsTimeout = parser.value(QStringLiteral("timeout"));
    if ((!qsGap.isEmpty() && !toMs(qsGap, 0, &o.nGapMs))
        || (!qsTimeout.isEmpty() && !toMs(qsTimeout, 1, &o.nTimeoutMs))) {
        *error = QStringLiteral("--gap and --timeout take milliseconds (a timeout of at least 1)");
        return false;
    }
    if (parser.isSet(QStringLiteral("hex")) && parser.isSet(QStringLiteral("json"))) {
        *error = QStringLiteral("--hex and --json exclude each other");
        return false;
    }
    o.format = parser.isSet(QStringLiteral("hex")) ? Format::Hex
        : parser.isSet(QStringLiteral("json"))     ? Format::Json
                                                   : Format::Text;
    o.qsLog = parser.value(QStringLiteral("log"));
    if (parser.isSet(QStringLiteral("script"))) {
        const QString qsScript = parser.value(QStringLiteral("script"));
        QByteArray text;
        if (!ZorTool::readFile(qsScript, text, error))
            return false;
        if (!parseScript(qsScript, QString::fromUtf8(text), o.steps, error))
            return false;
    }
    const QStringList commands = parser.positionalArguments();
    const QStringList patterns = parser.values(QStringLiteral("expect"));
    if (patterns.size() > commands.size()) {
        *error = QStringLiteral("%1 --expect for %2 COMMAND arguments").arg(patterns.size()).arg(commands.size());
        return false;
    }
    for (int i = 0; i < commands.size(); ++i) {
        o.steps.append({Step::Send, commands[i]});
        if (i < patterns.size() && !checkPattern(patterns[i], error))
            return false;
        if (i < patterns.size())
            o.steps.append({Step::Expect, patterns[i]});
    }
    if (o.steps.isEmpty())
        *error = QStringLiteral("nothing to send: give a COMMAND or --script FILE");
    return !o.steps.isEmpty();
}

// The exchange log class starts its file afresh, while a workshop keeps one
// log over many runs: each entry is written by the class into a scratch file
// and then added to the end of the user's file.
class ExchangeLog
{
public:
    bool open(const QString& qsPath, QString* error)
    {
        m_qsPath = qsPath;
        QFile file(qsPath);
        if (qsPath.isEmpty() || file.open(QIODevice::Append))
            return true;
        *error = QStringLiteral("cannot write the log %1: %2").arg(qsPath, file.errorString());
        return false;
    }
    void add(const QString& qsText)
    {
        if (m_qsPath.isEmpty())
            return;
        const QString qsEntry = m_scratch.filePath(QStringLiteral("entry"));
        ZOR_LogBinFile(qsEntry).setLogStr(qsText);
        QFile entry(qsEntry);
        QFile file(m_qsPath);
        if (entry.open(QIODevice::ReadOnly) && file.open(QIODevice::Append))
            file.write(entry.readAll());
    }

private:
    QString m_qsPath;
    QTemporaryDir m_scratch;
};

// Received bytes as text without the line end that closes them.
QString replyText(const QByteArray& reply)
{
    QString qsText = ZOR_Cp1251::decode(reply);
    while (qsText.endsWith(QLatin1Char('\n')) || qsText.endsWith(QLatin1Char('\r')))
        qsText.chop(1);
    return qsText;
}

QString jsonString(const QString& qsText)
{
    const QByteArray array = QJsonDocument(QJsonArray{qsText}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

// Runs the steps over an open link, one command at a time.
class Session
{
public:
    Session(ZOR_TerminalLink* lpLink, const Options& options, ExchangeLog& log);
    int run();

private:
    int send(const QString& qsCommand);
    int expect(const QString& qsPattern);
    void wait(int nMs, bool bUntilReply);
    void print(const QString& qsCommand, const QByteArray* reply, qint64 nMs);

    ZOR_TerminalLink* m_lpLink;
    const Options& m_options;
    ExchangeLog& m_log;
    ZOR_ReplyAssembler m_assembler;
    QVector<QByteArray> m_replies;
    QString m_qsLost;
    QString m_qsCommand;
    QByteArray m_reply;
};

Session::Session(ZOR_TerminalLink* lpLink, const Options& options, ExchangeLog& log)
    : m_lpLink(lpLink)
    , m_options(options)
    , m_log(log)
{
    m_assembler.setIdleGapMs(options.nGapMs);
    QObject::connect(lpLink, &ZOR_TerminalLink::signal_Received, &m_assembler, &ZOR_ReplyAssembler::feed);
    QObject::connect(&m_assembler, &ZOR_ReplyAssembler::signal_Reply, &m_assembler,
        [this](const QByteArray& reply) { m_replies.append(reply); });
    QObject::connect(lpLink, &ZOR_TerminalLink::signal_Lost, &m_assembler, [this](const QString& qsReason) {
        m_qsLost = qsReason.isEmpty() ? QStringLiteral("the port went away") : qsReason;
    });
}

int Session::run()
{
    for (const Step& step : m_options.steps) {
        int nCode = 0;
        if (step.kind == Step::Send)
            nCode = send(step.qsText);
        else if (step.kind == Step::Expect)
            nCode = expect(step.qsText);
        else
            wait(step.nMs, false);
        if (nCode == 0 && !m_qsLost.isEmpty())
            nCode = ZorTool::fail(2, QStringLiteral("lost the link to %1: %2").arg(m_options.qsPort, m_qsLost));
        if (nCode != 0)
            return nCode;
    }
    return 0;
}

// Runs the event loop for nMs, or until a reply is in or the link is lost.
void Session::wait(int nMs, bool bUntilReply)
{
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(m_lpLink, &ZOR_TerminalLink::signal_Lost, &loop, &QEventLoop::quit);
    if (bUntilReply)
        QObject::connect(&m_assembler, &ZOR_ReplyAssembler::signal_Reply, &loop, &QEventLoop::quit);
    if ((bUntilReply && !m_replies.isEmpty()) || !m_qsLost.isEmpty())
        return;
    timer.start(nMs);
    loop.exec();
}

int Session::send(const QString& qsCommand)
{
    const QByteArray bytes = ZOR_Form_Commands::getUniCommand(qsCommand);
    // Whatever came in unasked since the last reply belongs to no command.
    m_assembler.clear();
    m_replies.clear();
    m_qsCommand = qsCommand;
    m_log.add(QStringLiteral("OUT ") + replyText(bytes));
    QElapsedTimer clock;
    clock.start();
    m_lpLink->write(bytes);
    wait(m_options.nTimeoutMs, true);
    if (m_replies.isEmpty()) {
        if (!m_qsLost.isEmpty())
            return 0; // run() reports it
        m_log.add(QStringLiteral("no reply to ") + qsCommand);
        print(qsCommand, nullptr, clock.elapsed());
        return ZorTool::fail(1, QStringLiteral("no reply to %1 within %2 ms").arg(qsCommand).arg(m_options.nTimeoutMs));
    }
    m_reply = m_replies.takeFirst();
    m_log.add(QStringLiteral("IN ") + replyText(m_reply));
    print(qsCommand, &m_reply, clock.elapsed());
    return 0;
}

int Session::expect(const QString& qsPattern)
{
    if (QRegularExpression(qsPattern).match(replyText(m_reply)).hasMatch())
        return 0;
    return ZorTool::fail(1,
        QStringLiteral("the reply to %1 does not match '%2': %3")
            .arg(m_qsCommand, qsPattern, ZOR_Form_Commands::getStrVisibleData(&m_reply)));
}

void Session::print(const QString& qsCommand, const QByteArray* reply, qint64 nMs)
{
    QTextStream& out = ZorTool::out();
    if (m_options.format == Format::Json) {
        out << "{\"command\":" << jsonString(qsCommand)
            << ",\"reply\":" << (reply ? jsonString(ZOR_Cp1251::decode(*reply)) : QStringLiteral("null"))
            << ",\"ms\":" << nMs << "}\n";
    } else if (reply) {
        out << (m_options.format == Format::Hex ? ZorTool::toHex(*reply) : ZOR_Form_Commands::getStrVisibleData(reply))
            << '\n';
    }
    out.flush();
}

// A port that does not open: one line, and for a forbidden port the way to
// get access on Debian.
int portFailure(const QString& qsPort, const ZOR_TerminalLink& link)
{
    const QString qsPath = qsPort.section(QLatin1Char(':'), 1, 1);
    switch (link.failure()) {
    case ZOR_TerminalLink::Failure::NotFound: return ZorTool::fail(2, QStringLiteral("no such port: %1").arg(qsPath));
    case ZOR_TerminalLink::Failure::Busy:
        return ZorTool::fail(2, QStringLiteral("port %1 is busy: another program has it open").arg(qsPath));
    case ZOR_TerminalLink::Failure::NoPermission:
        return ZorTool::fail(
            2, QStringLiteral("no permission to open %1 (%2)").arg(qsPath, zorHostText("hint_dialout", true)));
    default: return ZorTool::fail(2, QStringLiteral("cannot open %1: %2").arg(qsPath, link.errorString()));
    }
}

} // namespace

int toolTerm(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Sends text commands to a terminal and prints each reply as the console's log shows it. A command goes "
        "as the console's command line sends it: \\hh is the byte hh, \\\\ one backslash, Windows-1251, nothing "
        "appended. A reply is the bytes up to a line end, or up to a quiet gap. Exit codes: 0 every command got "
        "its reply (matching its --expect), 1 no reply or a reply that does not match, 2 usage or port errors."));
    parser.addOptions({
        {QStringLiteral("port"), QStringLiteral("serial:PATH[:BAUD] (115200 by default) or simulator"),
            QStringLiteral("PORT")},
        {QStringLiteral("gap"),
            QStringLiteral("quiet time that ends a reply without a line end (default %1)")
                .arg(ZOR_ReplyAssembler::nDefaultIdleGapMs),
            QStringLiteral("MS")},
        {QStringLiteral("timeout"),
            QStringLiteral("wait for each reply at most this long (default %1)").arg(kDefaultTimeoutMs),
            QStringLiteral("MS")},
        {QStringLiteral("hex"), QStringLiteral("print replies as hex")},
        {QStringLiteral("json"), QStringLiteral("print one JSON object per exchange: command, reply, ms")},
        {QStringLiteral("expect"), QStringLiteral("the n-th one must match the reply to the n-th COMMAND"),
            QStringLiteral("REGEX")},
        {QStringLiteral("script"),
            QStringLiteral("run FILE first: a command per line, expect REGEX, sleep MS, "
                           "# comment"),
            QStringLiteral("FILE")},
        {QStringLiteral("log"), QStringLiteral("append the exchanges to this exchange log"), QStringLiteral("FILE")},
    });
    parser.addPositionalArgument(
        QStringLiteral("COMMAND"), QStringLiteral("commands to send, in order"), QStringLiteral("[COMMAND...]"));
    int nCode = 0;
    if (!ZorTool::parse(parser, args, &nCode))
        return nCode;
    Options options;
    QString qsError;
    if (!parseOptions(parser, options, &qsError))
        return ZorTool::fail(2, qsError);
    ExchangeLog log;
    if (!log.open(options.qsLog, &qsError))
        return ZorTool::fail(2, qsError);
    QScopedPointer<ZOR_TerminalLink> link(ZOR_TerminalLink::create(options.qsPort));
    if (!link)
        return ZorTool::fail(
            2, QStringLiteral("unknown port '%1' (use serial:PATH[:BAUD] or simulator)").arg(options.qsPort));
    if (!link->open())
        return portFailure(options.qsPort, *link);
    const int nResult = Session(link.data(), options, log).run();
    link->close();
    return nResult;
}
