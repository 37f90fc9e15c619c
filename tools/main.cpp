// zor-tool: frames, checksums, telemetry records and settings documents of
// the module, and text commands to a terminal, from the command line.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "module/zor_global.h"
#include "module/zor_language.h"

#include <QCoreApplication>

#include <csignal>

namespace {

struct Subcommand
{
    const char* name;
    int (*run)(const QStringList&);
    const char* summary;
};

const Subcommand kSubcommands[] = {
    {"frame", toolFrame, "build a framed command: frame TEXT [--payload HEX]"},
    {"unframe", toolUnframe, "check a frame and show its data: unframe HEX"},
    {"crc8", toolCrc, "CRC-8 of hex bytes or a file"},
    {"crc16", toolCrc, "CRC-16 of hex bytes or a file"},
    {"crc32", toolCrc, "CRC-32 of hex bytes or a file"},
    {"decode", toolDecode, "decode one telemetry record"},
    {"csv", toolCsv, "export telemetry records to CSV (--numeric: numbers for analysis)"},
    {"track", toolTrack, "the track of a telemetry archive as GPX, KML or GeoJSON"},
    {"summary", toolSummary, "distance, trips, stops and fuel events of a telemetry archive"},
    {"settings", toolSettings, "read and change settings documents"},
    {"log", toolLog, "show an exchange log as lines: log FILE"},
    {"term", toolTerm, "send commands to a terminal: term --port PORT [COMMAND...]"},
    {"config", toolConfig, "new, normalize, diff, check and sheet: settings documents through every form"},
};

int usage(int code)
{
    QTextStream& s = code == 0 ? ZorTool::out() : ZorTool::err();
    s << "Usage: zor-tool <command> [options]\n\nCommands:\n";
    for (const Subcommand& c : kSubcommands)
        s << "  " << QString::fromLatin1(c.name).leftJustified(10) << c.summary << '\n';
    s << "\nRun 'zor-tool <command> --help' for the options of a command.\n"
      << "A hex or file argument given as '-' is read from standard input.\n"
      << "Exit codes: 0 done, 1 the input is wrong as the message says, 2 usage,\n"
      << "malformed hex or an unreadable file.\n";
    s.flush();
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    // Past a file size limit (ulimit -f) a write then fails with "File too
    // large" and is reported, instead of the signal ending the tool unsaid.
    std::signal(SIGXFSZ, SIG_IGN);
    // The settings forms behind "config" are widgets: it runs its own (offscreen) QApplication.
    if (argc > 1 && qstrcmp(argv[1], "config") == 0)
        return toolConfigMain(argc, argv);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zor-tool"));
    const QStringList args = app.arguments();
    if (args.size() < 2)
        return usage(2);
    const QString name = args.at(1);
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help"))
        return ZorTool::finish(usage(0));
    if (name == QLatin1String("--version")) {
        ZorTool::out() << "zor-tool " << ZOR_VERSION << '\n';
        return ZorTool::finish(0);
    }
    for (const Subcommand& c : kSubcommands) {
        if (name == QLatin1String(c.name))
            return ZorTool::finish(c.run(args.mid(1)));
    }
    return ZorTool::fail(2, QStringLiteral("unknown command '%1' (try --help)").arg(name));
}
