#include "zor_tool_common.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

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

bool parseHex(const QString& text, QByteArray& bytes, QString* error)
{
    bytes.clear();
    bytes.reserve(text.size() / 2);
    int high = -1;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isSpace()) {
            if (high >= 0) {
                if (error)
                    *error = QStringLiteral("malformed hex: a byte is cut by white space at position %1").arg(i + 1);
                return false;
            }
            continue;
        }
        int v = -1;
        const ushort u = c.unicode();
        if (u >= '0' && u <= '9')
            v = u - '0';
        else if (u >= 'a' && u <= 'f')
            v = u - 'a' + 10;
        else if (u >= 'A' && u <= 'F')
            v = u - 'A' + 10;
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
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    bytes = file.readAll();
    return true;
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
    if (parser.isSet(help)) {
        // The parser names the program by its path; name the subcommand too.
        QString text = parser.helpText();
        const QString program = QCoreApplication::arguments().value(0);
        if (!program.isEmpty() && !args.isEmpty())
            text.replace(QStringLiteral("Usage: ") + program,
                         QStringLiteral("Usage: zor-tool ") + args.first());
        out() << text;
        out().flush();
        *code = 0;
        return false;
    }
    return true;
}

} // namespace ZorTool
