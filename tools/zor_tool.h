#ifndef ZOR_TOOL_H
#define ZOR_TOOL_H

// Subcommands of zor-tool. Each takes the arguments after its own name
// (args[0] is the subcommand name, as QCommandLineParser expects it) and
// returns the process exit code:
//   0 success, 1 the input is wrong in a way the command explains
//   (bad frame, short record, unreadable document), 2 usage errors
//   (unknown option, malformed hex, unreadable file).

#include <QStringList>

int toolFrame(const QStringList& args); // frame TEXT [--payload HEX]
int toolUnframe(const QStringList& args); // unframe HEX
int toolCrc(const QStringList& args); // crc8|crc16|crc32 (HEX | --file PATH)
int toolSettings(const QStringList& args); // settings dump|get|set ...
int toolDecode(const QStringList& args); // decode --protocol ...
int toolCsv(const QStringList& args); // csv --protocol ...
int toolTrack(const QStringList& args); // track --format gpx|kml|geojson --protocol ...
int toolSummary(const QStringList& args); // summary [--json] --protocol ...
int toolLog(const QStringList& args); // log FILE
int toolTerm(const QStringList& args); // term --port PORT [COMMAND...]
int toolConfig(const QStringList& args); // config new|normalize|diff|check|sheet ...
int toolConfigMain(int argc, char** argv); // config with the widget application it needs

#endif
