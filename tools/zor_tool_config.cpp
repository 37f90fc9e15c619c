// zor-tool config: the configuration window without a window. new and
// normalize run every settings form of zorConfigPages() (hidden, offscreen),
// so a form added there is part of both; diff compares two documents node
// by node.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "config/zor_configdiff.h"
#include "config/zor_configdocument.h"
#include "config/zor_configsheet.h"
#include "config/zor_terminalprofile.h"
#include "store/cserialize.h"
#include "store/cxmltagv2.h"

#include <QApplication>
#include <QFileInfo>
#include <QHash>

namespace {

const char* const kHelp = "Settings documents through every settings form.\n"
                          "  config new -o OUT [profile]          a new configuration: every form's defaults\n"
                          "  config normalize IN [-o OUT] [profile]\n"
                          "                                       load into every form and save as the window\n"
                          "                                       would (in place without -o)\n"
                          "  config diff A B                      nodes and attributes added (+), removed (-)\n"
                          "                                       and changed (~); exit 0 equal, 1 different\n"
                          "  config check FILE [profile]          every value the forms would not keep as written,\n"
                          "                                       one line each: FILE:LINE: NODE/attribute:\n"
                          "                                       \"value\" -> \"kept\": reason; exit 0 none, 1 some,\n"
                          "                                       2 the file does not parse; never writes\n"
                          "  config sheet FILE -o OUT [--format pdf|html|txt] [profile]\n"
                          "                                       the settings sheet: page, caption, value with\n"
                          "                                       its unit, non-default values marked *\n"
                          "profile: --sims 1|2  --can-variant ext|bt  --ble-slots N";

bool readProfile(const QCommandLineParser& parser, ZOR_TerminalProfile& profile, QString* error)
{
    if (parser.isSet(QStringLiteral("sims"))) {
        const QString sims = parser.value(QStringLiteral("sims"));
        if (sims != QLatin1String("1") && sims != QLatin1String("2")) {
            *error = QStringLiteral("--sims takes 1 or 2, not '%1'").arg(sims);
            return false;
        }
        profile.nSimCount = sims.toInt();
    }
    if (parser.isSet(QStringLiteral("can-variant"))) {
        const QString can = parser.value(QStringLiteral("can-variant"));
        if (can != QLatin1String("ext") && can != QLatin1String("bt")) {
            *error = QStringLiteral("--can-variant takes ext or bt, not '%1'").arg(can);
            return false;
        }
        profile.nCanVariant = can == QLatin1String("bt") ? ZOR_TerminalProfile::CanBt : ZOR_TerminalProfile::CanExt;
    }
    if (parser.isSet(QStringLiteral("ble-slots"))) {
        bool ok = false;
        const int n = parser.value(QStringLiteral("ble-slots")).toInt(&ok);
        if (!ok || n < 0 || n > 32) {
            *error = QStringLiteral("--ble-slots takes 0 to 32");
            return false;
        }
        profile.nBluetoothSlots = n;
    }
    return true;
}

int saveDocument(ZOR_ConfigDocument& doc, const QString& file)
{
    if (!doc.save(file))
        return ZorTool::fail(1, QStringLiteral("%1: not saved (%2)").arg(file, doc.errorString()));
    return 0;
}

// --- diff ---------------------------------------------------------------

bool openDocument(const QString& file, CSerialize& doc, QString* error)
{
    if (!QFileInfo(file).isFile()) {
        *error = QStringLiteral("cannot read %1: no such file").arg(file);
        return false;
    }
    if (!doc.openFile(file)) {
        *error = QStringLiteral("%1: not a settings document (%2)").arg(file, doc.errorString());
        return false;
    }
    return true;
}

int diff(const QString& fileA, const QString& fileB)
{
    CSerialize a;
    CSerialize b;
    QString error;
    if (!openDocument(fileA, a, &error) || !openDocument(fileB, b, &error))
        return ZorTool::fail(2, error);
    ZOR_ConfigDiff differ;
    differ.compare(a.root(), b.root());
    QTextStream& out = ZorTool::out();
    for (const ZOR_ConfigDiff::Entry& entry : differ.entries())
        out << entry.text() << '\n';
    return differ.entries().isEmpty() ? 0 : 1;
}

// The file as the window would load it; the problems go to standard output.
int check(ZOR_ConfigDocument& doc, const QString& file)
{
    doc.createForms();
    if (!doc.load(file, ZOR_ConfigDocument::ReadForeign))
        return ZorTool::fail(2, doc.errorString());
    QTextStream& out = ZorTool::out();
    for (const ZOR_ConfigProblems::Problem& problem : doc.problems())
        out << problem.text(file) << '\n';
    return doc.problems().isEmpty() ? 0 : 1;
}

int sheet(ZOR_ConfigDocument& doc, const QString& file, const QString& output, QString format)
{
    if (format.isEmpty())
        format = QFileInfo(output).suffix().toLower();
    static const QHash<QString, ZOR_ConfigSheet::Format> kFormats = {{QStringLiteral("pdf"), ZOR_ConfigSheet::Pdf},
        {QStringLiteral("html"), ZOR_ConfigSheet::Html}, {QStringLiteral("htm"), ZOR_ConfigSheet::Html},
        {QStringLiteral("txt"), ZOR_ConfigSheet::Text}, {QString(), ZOR_ConfigSheet::Text}};
    if (!kFormats.contains(format))
        return ZorTool::fail(2, QStringLiteral("--format takes pdf, html or txt, not '%1'").arg(format));
    doc.createForms();
    if (!doc.load(file))
        return ZorTool::fail(1, QStringLiteral("%1: not loaded (%2)").arg(file, doc.errorString()));
    ZOR_ConfigSheet settings;
    settings.build(&doc);
    if (!settings.save(output, kFormats.value(format)))
        return ZorTool::fail(1, settings.errorString());
    return 0;
}

} // namespace

int toolConfig(const QStringList& args)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return ZorTool::fail(2, QStringLiteral("config: the settings forms need the widget application"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kHelp));
    parser.addPositionalArgument(QStringLiteral("action"), QStringLiteral("new, normalize, diff, check or sheet"));
    parser.addOption(
        {{QStringLiteral("o"), QStringLiteral("output")}, QStringLiteral("File to write."), QStringLiteral("file")});
    parser.addOption(
        {QStringLiteral("format"), QStringLiteral("Sheet format: pdf, html or txt."), QStringLiteral("f")});
    parser.addOption(
        {QStringLiteral("sims"), QStringLiteral("SIM cards of the terminal: 1 or 2."), QStringLiteral("n")});
    parser.addOption({QStringLiteral("can-variant"), QStringLiteral("CAN variant: ext or bt."), QStringLiteral("v")});
    parser.addOption({QStringLiteral("ble-slots"), QStringLiteral("Bluetooth LE sensor slots."), QStringLiteral("n")});
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;

    const QStringList pos = parser.positionalArguments();
    const QString action = pos.value(0);
    const QString output = parser.value(QStringLiteral("o"));
    if (action == QLatin1String("diff")) {
        if (pos.size() != 3)
            return ZorTool::fail(2, QStringLiteral("config diff takes two files: diff A B"));
        return diff(pos.at(1), pos.at(2));
    }
    ZOR_TerminalProfile profile;
    QString error;
    if (!readProfile(parser, profile, &error))
        return ZorTool::fail(2, error);
    ZOR_ConfigDocument doc;
    doc.setProfile(profile);
    if (action == QLatin1String("new")) {
        if (pos.size() != 1 || output.isEmpty())
            return ZorTool::fail(2, QStringLiteral("config new takes -o OUT and no file"));
        doc.createForms();
        return saveDocument(doc, output);
    }
    if (action == QLatin1String("check")) {
        if (pos.size() != 2)
            return ZorTool::fail(2, QStringLiteral("config check takes one file: check FILE"));
        return check(doc, pos.at(1));
    }
    if (action == QLatin1String("sheet")) {
        if (pos.size() != 2 || output.isEmpty())
            return ZorTool::fail(2, QStringLiteral("config sheet takes one file and -o OUT"));
        return sheet(doc, pos.at(1), output, parser.value(QStringLiteral("format")).toLower());
    }
    if (action == QLatin1String("normalize")) {
        if (pos.size() != 2)
            return ZorTool::fail(2, QStringLiteral("config normalize takes one file: normalize IN [-o OUT]"));
        doc.createForms();
        // A file that does not load is reported and left as it is.
        if (!doc.load(pos.at(1)))
            return ZorTool::fail(1, QStringLiteral("%1: not loaded (%2)").arg(pos.at(1), doc.errorString()));
        // The tree holds no comments: say so before they are gone.
        if (doc.droppedMarkup() > 0)
            ZorTool::err() << "zor-tool: note: " << pos.at(1) << ": " << doc.droppedMarkup()
                           << " comment(s) or processing instruction(s) are not kept\n"
                           << Qt::flush;
        return saveDocument(doc, output.isEmpty() ? pos.at(1) : output);
    }
    return ZorTool::fail(
        2, QStringLiteral("config: unknown action '%1' (new, normalize, diff, check or sheet)").arg(action));
}

int toolConfigMain(int argc, char** argv)
{
    // The forms are widgets, created but never shown: no display is needed.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt's own notes about the desktop it does not have would only clutter
    // the one error line a script reads; real failures still show.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
            ZorTool::err() << message << '\n';
    });
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zor-tool"));
    return ZorTool::finish(toolConfig(app.arguments().mid(1)));
}
