#ifndef ZOR_TOOL_COMMON_H
#define ZOR_TOOL_COMMON_H

// Helpers shared by the zor-tool subcommands: output streams, hex parsing,
// file reading and the common parser set-up. Errors are one line on stderr.

#include <QByteArray>
#include <QCommandLineParser>
#include <QString>
#include <QTextStream>

namespace ZorTool {

QTextStream& out();
QTextStream& err();

// Prints "zor-tool: <message>" on stderr and returns code.
int fail(int code, const QString& message);

// Parses hex text: byte pairs, optionally each led by "0x", separated (or
// not) by blanks or ":". "-" reads the text from standard input. On
// malformed input (odd digit count, non-hex character) returns false and
// sets error.
bool parseHex(const QString& text, QByteArray& bytes, QString* error);

// Inputs larger than this are refused, files and standard input alike.
constexpr qint64 nMaxInputBytes = qint64(256) << 20;

// Reads a whole file ("-": standard input); false with an error text when
// it cannot be read or is larger than nMaxInputBytes.
bool readFile(const QString& path, QByteArray& bytes, QString* error);

// Flushes standard output; a failed write there (a full disk, a closed
// pipe) turns a successful exit code into 1 with the reason on stderr.
int finish(int code);

// Lower-case hex without separators.
QString toHex(const QByteArray& bytes);

// Sets up --help and the description; returns false (and the exit code in
// *code) when parsing failed or help was shown.
bool parse(QCommandLineParser& parser, const QStringList& args, int* code);

} // namespace ZorTool

#endif
