// zor-host: the reference host of the module. Loads libZOR_Commands by file
// name, shows its menu entry and connects it to a terminal: the simulated
// one by default, or a serial port.

#include "zor_config_window.h"
#include "zor_host_demo.h"
#include "zor_host_module.h"
#include "zor_host_window.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QStatusBar>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zor-host"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Reference host of the ZOR_Commands module."));
    parser.addHelpOption();
    const QCommandLineOption library(QStringLiteral("library"), QStringLiteral("Module library to load."),
                                     QStringLiteral("path"),
                                     QApplication::applicationDirPath() + QStringLiteral("/libZOR_Commands.so"));
    const QCommandLineOption connectTo(QStringLiteral("connect"),
                                       QStringLiteral("Terminal link: simulator or serial:PORT[:BAUD]."),
                                       QStringLiteral("link"), QStringLiteral("simulator"));
    const QCommandLineOption language(QStringLiteral("language"), QStringLiteral("Language of the module: ru or en."),
                                      QStringLiteral("lang"), QStringLiteral("ru"));
    const QCommandLineOption dialect(QStringLiteral("dialect"), QStringLiteral("GNSS command dialect of the terminal (0, 1)."),
                                     QStringLiteral("n"), QStringLiteral("0"));
    const QCommandLineOption ussd(QStringLiteral("ussd"), QStringLiteral("USSD request of the SIM balance."),
                                  QStringLiteral("request"), QStringLiteral("*100#"));
    const QCommandLineOption ravel(QStringLiteral("ravel"), QStringLiteral("Configurator mode 5 (the RAVEL layout)."));
    const QCommandLineOption demo(QStringLiteral("demo"),
                                  QStringLiteral("Run the scripted demo, print the console log and exit."));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Run the demo and save a picture of the host with the console."),
                                        QStringLiteral("file"));
    const QCommandLineOption screenshotConfig(QStringLiteral("screenshot-config"),
                                              QStringLiteral("Save a picture of the configuration window on a new document."),
                                              QStringLiteral("file"));
    parser.addOptions({library, connectTo, language, dialect, ussd, ravel, demo, screenshot, screenshotConfig});
    parser.process(app);
    const bool bScripted = parser.isSet(demo) || parser.isSet(screenshot) || parser.isSet(screenshotConfig);

    app.setProperty("zor_programLanguage", parser.value(language));
    ZOR_HostModule module;
    module.setCoordSystem(parser.value(dialect).toInt());
    module.setUssdRequest(parser.value(ussd));
    if (!module.load(parser.value(library), parser.isSet(ravel) ? 5 : 0)) {
        std::fprintf(stderr, "zor-host: %s\n", module.errorString().toLocal8Bit().constData());
        if (!bScripted && QGuiApplication::platformName() != QLatin1String("offscreen"))
            QMessageBox::critical(nullptr, QStringLiteral("zor-host"), module.errorString());
        return 1;
    }

    ZOR_HostWindow window(&module);
    window.show();
    if (!window.connectTerminal(parser.value(connectTo)) && bScripted) {
        std::fprintf(stderr, "zor-host: %s\n", window.statusBar()->currentMessage().toLocal8Bit().constData());
        return 1;
    }
    if (!bScripted)
        return app.exec();
    if (parser.isSet(screenshotConfig))
        return window.openConfigWindow()->saveScreenshot(parser.value(screenshotConfig)) ? 0 : 1;

    ZOR_HostDemo script(&module, &window, parser.value(screenshot));
    QObject::connect(&script, &ZOR_HostDemo::signal_Finished, &app, &QCoreApplication::exit);
    script.start();
    return app.exec();
}
