#include "zor_tool_common.h"

#include "protocol/zor_bits.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace ZorTool {

QTextStream& out()
{
    static QTextStream stream(stdout);
    stream.setCodec("UTF-8");
    return stream;
}

QTextStream& err()
{
    static QTextStream stream(stderr);
    stream.setCodec("UTF-8");
    return stream;
}

int fail(int code, const QString& message)
{
    out().flush();
    err() << "zor-tool: " << message << '\n';
    err().flush();
    return code;
}

namespace {

bool readStdin(QByteArray& bytes, QString* error)
{
    QFile in;
    if (!in.open(stdin, QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot read standard input: %1").arg(in.errorString());
        return false;
    }
    // Read in pieces up to one byte past the cap: a pipe says nothing of
    // its size beforehand.
    bytes.clear();
    while (bytes.size() <= nMaxInputBytes) {
        const QByteArray piece = in.read(qMin<qint64>(1 << 20, nMaxInputBytes + 1 - bytes.size()));
        if (piece.isEmpty())
            break;
        bytes += piece;
    }
    if (bytes.size() > nMaxInputBytes) {
        bytes.clear();
        if (error)
            *error = QStringLiteral("standard input is larger than %1 MiB, the most zor-tool reads")
                         .arg(nMaxInputBytes >> 20);
        return false;
    }
    return true;
}

} // namespace

bool parseHex(const QString& text, QByteArray& bytes, QString* error)
{
    if (text == QLatin1String("-")) {
        QByteArray input;
        return readStdin(input, error) && parseHex(QString::fromLatin1(input), bytes, error);
    }
    bytes.clear();
    bytes.reserve(text.size() / 2);
    int high = -1;
    bool tokenStart = true;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool separator = c.isSpace() || c == QLatin1Char(':');
        if (separator
            || (tokenStart && high < 0 && c == QLatin1Char('0') && i + 1 < text.size()
                && (text[i + 1] == QLatin1Char('x') || text[i + 1] == QLatin1Char('X')))) {
            if (high >= 0) {
                if (error)
                    *error = QStringLiteral("malformed hex: a byte is cut by a separator at position %1").arg(i + 1);
                return false;
            }
            if (!separator)
                ++i; // the "0x"
            tokenStart = separator;
            continue;
        }
        tokenStart = false;
        const int v = zorHexDigitValue(c);
        if (v < 0) {
            if (error)
                *error = QStringLiteral("malformed hex: '%1' at position %2 is not a hex digit").arg(c).arg(i + 1);
            return false;
        }
        if (high < 0) {
            high = v;
        } else {
            bytes.append(static_cast<char>((high << 4) | v));
            high = -1;
        }
    }
    if (high >= 0) {
        if (error)
            *error = QStringLiteral("malformed hex: odd number of hex digits");
        return false;
    }
    return true;
}

bool readFile(const QString& path, QByteArray& bytes, QString* error)
{
    if (path == QLatin1String("-"))
        return readStdin(bytes, error);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    if (file.size() > nMaxInputBytes) {
        if (error)
            *error =
                QStringLiteral("%1 is larger than %2 MiB, the most zor-tool reads").arg(path).arg(nMaxInputBytes >> 20);
        return false;
    }
    bytes = file.readAll();
    if (bytes.size() != file.size()) {
        if (error)
            *error =
                QStringLiteral("cannot read %1: got %2 of its %3 bytes").arg(path).arg(bytes.size()).arg(file.size());
        return false;
    }
    return true;
}

int finish(int code)
{
    errno = 0;
    out().flush();
    const bool flushed = std::fflush(stdout) == 0;
    const int saved = errno;
    if (!flushed || std::ferror(stdout)) {
        err() << "zor-tool: cannot write to standard output: "
              << (saved ? QString::fromLocal8Bit(std::strerror(saved)) : QStringLiteral("write error")) << '\n';
        err().flush();
        return code == 0 ? 1 : code;
    }
    return code;
}

QString toHex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

bool parse(QCommandLineParser& parser, const QStringList& args, int* code)
{
    const QCommandLineOption help = parser.addHelpOption();
    if (!parser.parse(args)) {
        *code = fail(2, parser.errorText());
        return false;
    }
    // The parser offers --help-all beside --help; both show the same here.
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) {
        // The parser names the program by its path; name the subcommand too.
        QString text = parser.helpText();
        const QString program = QCoreApplication::arguments().value(0);
        if (!program.isEmpty() && !args.isEmpty())
            text.replace(QStringLiteral("Usage: ") + program, QStringLiteral("Usage: zor-tool ") + args.first());
        out() << text;
        out().flush();
        *code = 0;
        return false;
    }
    return true;
}

} // namespace ZorTool
