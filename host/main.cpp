// zor-host: the reference host of the module. Loads libZOR_Commands by file
// name, shows its menu entry and connects it to a terminal: the simulated
// one by default, or a serial port.

#include "zor_config_window.h"
#include "zor_host_demo.h"
#include "zor_telemetry_window.h"
#include "zor_host_module.h"
#include "zor_host_window.h"

#include "module/zor_global.h"
#include "store/zor_dialog_xmllist.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QMessageBox>
#include <QStatusBar>

#include <cstdio>

namespace {

struct Options
{
    QCommandLineOption library{
        QStringLiteral("library"), QStringLiteral("Module library to load."), QStringLiteral("path")};
    QCommandLineOption connectTo{QStringLiteral("connect"),
        QStringLiteral("Terminal link: simulator, simulator:CHUNK[:DELAY_MS] "
                       "(replies in pieces) or serial:PORT[:BAUD]."),
        QStringLiteral("link"), QStringLiteral("simulator")};
    QCommandLineOption language{QStringLiteral("language"), QStringLiteral("Language of the module: ru or en."),
        QStringLiteral("lang"), QStringLiteral("ru")};
    QCommandLineOption dialect{QStringLiteral("dialect"),
        QStringLiteral("GNSS command dialect of the terminal (0, 1)."), QStringLiteral("n"), QStringLiteral("0")};
    QCommandLineOption ussd{QStringLiteral("ussd"), QStringLiteral("USSD request of the SIM balance."),
        QStringLiteral("request"), QStringLiteral("*100#")};
    QCommandLineOption gap{QStringLiteral("gap"),
        QStringLiteral("Quiet time in ms after which received bytes without a line end "
                       "go to the module as one reply."),
        QStringLiteral("ms"), QString::number(ZOR_ReplyAssembler::nDefaultIdleGapMs)};
    QCommandLineOption ravel{QStringLiteral("ravel"), QStringLiteral("Configurator mode 5 (the RAVEL layout).")};
    QCommandLineOption demo{
        QStringLiteral("demo"), QStringLiteral("Run the scripted demo, print the console log and exit.")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"),
        QStringLiteral("Run the demo and save a picture of the host with the console."), QStringLiteral("file")};
    QCommandLineOption screenshotConfig{QStringLiteral("screenshot-config"),
        QStringLiteral("Save a picture of the configuration window on a new document."), QStringLiteral("file")};
    QCommandLineOption telemetry{QStringLiteral("telemetry"),
        QStringLiteral("Open a telemetry archive in the telemetry window."), QStringLiteral("archive")};
    QCommandLineOption chart{QStringLiteral("chart"),
        QStringLiteral("Values to chart in the telemetry window, e.g. Speed,RS485_1 (with --telemetry)."),
        QStringLiteral("names")};
    QCommandLineOption config{QStringLiteral("config"),
        QStringLiteral("Open a configuration in the configuration window."), QStringLiteral("file")};
    QCommandLineOption screenshotTelemetry{QStringLiteral("screenshot-telemetry"),
        QStringLiteral("Save a picture of the telemetry window (with --telemetry)."), QStringLiteral("file")};

    void addTo(QCommandLineParser& parser) const
    {
        parser.setApplicationDescription(QStringLiteral("Reference host of the ZOR_Commands module."));
        parser.addHelpOption();
        parser.addOptions({library, connectTo, language, dialect, ussd, gap, ravel, demo, screenshot, screenshotConfig,
            telemetry, chart, screenshotTelemetry, config});
    }
};

// Help and usage errors need no windows: answer them before a display is
// opened, so that they work on a machine without one.
void answerWithoutDisplay(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zor-host"));
    QCommandLineParser parser;
    Options options;
    options.addTo(parser);
    parser.process(app); // exits on --help and on a malformed command line
}

// zor-host links libZOR_Commands for its configuration window, so the
// module is the library already mapped into the process: loading that very
// file by name gives the same copy. Any other copy of it would be a second
// module object with its own globals and resources, torn down twice at exit.
QString linkedModulePath()
{
    const QString qsLinked = moduleLibraryPath();
    return qsLinked.isEmpty() ? QApplication::applicationDirPath() + QStringLiteral("/libZOR_Commands.so") : qsLinked;
}

bool isSecondCopy(const QString& qsPath)
{
    const QFileInfo file(qsPath);
    return file.fileName().startsWith(QLatin1String("libZOR_Commands.so"))
        && file.canonicalFilePath() != QFileInfo(linkedModulePath()).canonicalFilePath();
}

} // namespace

int main(int argc, char** argv)
{
    answerWithoutDisplay(argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zor-host"));
    // The desktop entry zor-host.desktop: its icon and name in the task bar.
    QGuiApplication::setDesktopFileName(QStringLiteral("zor-host"));

    QCommandLineParser parser;
    Options options;
    options.library.setDefaultValue(linkedModulePath());
    options.addTo(parser);
    parser.process(app);
    const bool bScripted = parser.isSet(options.demo) || parser.isSet(options.screenshot)
        || parser.isSet(options.screenshotConfig) || parser.isSet(options.screenshotTelemetry);

    if (bScripted) {
        // Nobody is there to press a button: what the module would ask or
        // tell (a file that could not be saved) goes to stderr instead.
        ZOR_Dialog_XmlList::setAnswerer(
            [](QMessageBox::Icon, const QString& qsTitle, const QString& qsText, const QStringList&) {
                std::fprintf(stderr, "zor-host: %s %s\n", qPrintable(qsTitle), qPrintable(qsText));
                return 0;
            });
    }
    app.setProperty("zor_programLanguage", parser.value(options.language));
    ZOR_HostModule module;
    module.setCoordSystem(parser.value(options.dialect).toInt());
    module.setUssdRequest(parser.value(options.ussd));
    module.setIdleGapMs(parser.value(options.gap).toInt());
    const QString qsLibrary = parser.value(options.library);
    if (isSecondCopy(qsLibrary)) {
        std::fprintf(stderr, "zor-host: %s is a second copy of the module, which is loaded from %s already\n",
            qPrintable(qsLibrary), qPrintable(linkedModulePath()));
        return 1;
    }
    if (!module.load(qsLibrary, parser.isSet(options.ravel) ? 5 : 0)) {
        std::fprintf(stderr, "zor-host: %s\n", module.errorString().toLocal8Bit().constData());
        if (!bScripted && QGuiApplication::platformName() != QLatin1String("offscreen"))
            QMessageBox::critical(nullptr, QStringLiteral("zor-host"), module.errorString());
        return 1;
    }

    ZOR_HostWindow window(&module);
    window.show();
    if (!window.connectTerminal(parser.value(options.connectTo)) && bScripted) {
        std::fprintf(stderr, "zor-host: %s\n", window.statusBar()->currentMessage().toLocal8Bit().constData());
        return 1;
    }
    if (parser.isSet(options.telemetry))
        window.openTelemetryWindow()->openFile(parser.value(options.telemetry));
    if (parser.isSet(options.chart))
        window.openTelemetryWindow()->chartValues(parser.value(options.chart).split(QLatin1Char(',')));
    if (parser.isSet(options.config))
        window.openConfigWindow()->openFile(parser.value(options.config));
    if (!bScripted)
        return app.exec();
    if (parser.isSet(options.screenshotTelemetry))
        return window.openTelemetryWindow()->saveScreenshot(parser.value(options.screenshotTelemetry)) ? 0 : 1;
    if (parser.isSet(options.screenshotConfig))
        return window.openConfigWindow()->saveScreenshot(parser.value(options.screenshotConfig)) ? 0 : 1;

    ZOR_HostDemo script(&module, &window, parser.value(options.screenshot));
    QObject::connect(&script, &ZOR_HostDemo::signal_Finished, &app, &QCoreApplication::exit);
    script.start();
    return app.exec();
}
