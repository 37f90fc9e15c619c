// The host's side of the module link, played against a stand-in module:
// loading, the menu entry, the answers to the module's questions, and the
// terminal's bytes in both directions.

#include "zor_host_module.h"
#include "zor_terminal_link.h"

#include <QAction>
#include <QCoreApplication>
#include <QLibrary>
#include <QLibraryInfo>
#include <QSignalSpy>
#include <QtTest>

#include <cstring>
#include <memory>

namespace {

struct Seen
{
    int nMessage;
    QByteArray data; // the bytes of 2056
};
QList<Seen> seen;

void observe(int nMessage, unsigned long wParam, unsigned long)
{
    seen << Seen{
        nMessage, nMessage == ZOR_MSG_DEVICE_DATA && wParam ? *reinterpret_cast<QByteArray*>(wParam) : QByteArray()};
}

QList<int> seenCodes()
{
    QList<int> codes;
    for (const Seen& s : seen)
        codes << s.nMessage;
    return codes;
}

QString fakePath()
{
    return QStringLiteral(ZOR_BIN_DIR "/libzor_fake_module.so");
}

} // namespace

class TestHostModule : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void refusesWhatIsNoModule_data();
    void refusesWhatIsNoModule();
    void loadAddsTheMenuEntryDisabled();
    void connectionEnablesTheEntryThroughTheModule();
    void answersTheModulesQuestions_data();
    void answersTheModulesQuestions();
    void updatesAndEnablesOnlyItsOwnEntries();
    void forwardsTerminalBytesOnlyWhileAsked();
    void languageIsAnApplicationProperty();
    void brokenSerialPortLeavesTheHostUsable();
    void linkTexts_data();
    void linkTexts();

private:
    unsigned long moduleSends(int nMessage, unsigned long wParam = 0, unsigned long lParam = 0)
    {
        return fnSend(nMessage, wParam, lParam);
    }

    QLibrary m_fake;
    unsigned long (*fnSend)(int, unsigned long, unsigned long) = nullptr;
    uint64_t (*fnHandle)() = nullptr;
};

void TestHostModule::initTestCase()
{
    qRegisterMetaType<QAction*>();
    m_fake.setFileName(fakePath());
    QVERIFY2(m_fake.load(), qPrintable(m_fake.errorString()));
    fnSend = reinterpret_cast<decltype(fnSend)>(m_fake.resolve("FakeModuleSend"));
    fnHandle = reinterpret_cast<decltype(fnHandle)>(m_fake.resolve("FakeModuleMenuHandle"));
    auto fnObserve = reinterpret_cast<void (*)(void (*)(int, unsigned long, unsigned long))>(
        m_fake.resolve("FakeModuleObserve"));
    QVERIFY(fnSend && fnHandle && fnObserve);
    fnObserve(&observe);
}

void TestHostModule::init()
{
    seen.clear();
}

void TestHostModule::refusesWhatIsNoModule_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("error");
    QTest::newRow("missing file") << QStringLiteral("/nonexistent/libZOR_Commands.so")
                                  << QStringLiteral("does not exist");
    QTest::newRow("not a library") << QString() << QStringLiteral("cannot load");
    QTest::newRow("no entry points") << QLibraryInfo::location(QLibraryInfo::LibrariesPath)
            + QStringLiteral("/libQt5Test.so.5")
                                     << QStringLiteral("has no entry point IsZorLibraryV");
}

void TestHostModule::refusesWhatIsNoModule()
{
    QFETCH(QString, path);
    QFETCH(QString, error);
    QTemporaryDir dir;
    if (path.isEmpty()) {
        path = dir.filePath(QStringLiteral("libZOR_Commands.so"));
        QFile garbage(path);
        QVERIFY(garbage.open(QIODevice::WriteOnly) && garbage.write("not an ELF file") > 0);
    }
    ZOR_HostModule host;
    QVERIFY(!host.load(path));
    QVERIFY2(host.errorString().contains(error), qPrintable(host.errorString()));
    QVERIFY(!host.isLoaded());
    QVERIFY(host.menuActions().isEmpty());
}

void TestHostModule::loadAddsTheMenuEntryDisabled()
{
    ZOR_HostModule host;
    QSignalSpy added(&host, &ZOR_HostModule::signal_MenuAdded);
    QVERIFY(host.load(fakePath()));
    QCOMPARE(QString::fromUtf8(host.libraryInfo().szName), QStringLiteral("ZOR_Fake"));
    QCOMPARE(seenCodes(), QList<int>{ZOR_MSG_CREATE_MENU});
    QCOMPARE(added.count(), 1);
    QCOMPARE(host.menuActions().size(), 1);
    QAction* lpAction = host.menuActions().first();
    QCOMPARE(lpAction->text(), QStringLiteral("Fake entry"));
    QVERIFY(fnHandle() != 0); // the host wrote its handle back
    QVERIFY(!lpAction->isEnabled());
    lpAction->trigger();
    QCOMPARE(seenCodes().last(), int(ZOR_MSG_MENU_CHOSEN));
}

void TestHostModule::connectionEnablesTheEntryThroughTheModule()
{
    ZOR_HostModule host;
    QVERIFY(host.load(fakePath()));
    QVERIFY(host.connectLink(ZOR_TerminalLink::create(QStringLiteral("simulator"))));
    QCOMPARE(seenCodes().last(), int(ZOR_MSG_DEVICE_CONNECTED));
    uint8_t nOn = 1;
    moduleSends(ZOR_MSG_MENU_ENABLE, fnHandle(), reinterpret_cast<unsigned long>(&nOn));
    QVERIFY(host.menuActions().first()->isEnabled());
    host.disconnectLink();
    QCOMPARE(seenCodes().last(), int(ZOR_MSG_DEVICE_DISCONNECTED));
    QVERIFY(!host.link());
}

void TestHostModule::answersTheModulesQuestions_data()
{
    QTest::addColumn<int>("dialect");
    QTest::addColumn<QString>("ussd");
    QTest::addColumn<QByteArray>("ussdSeen");
    QTest::newRow("dialect 0") << 0 << QStringLiteral("*100#") << QByteArray("*100#");
    QTest::newRow("dialect 1, empty request") << 1 << QString() << QByteArray();
    QTest::newRow("unknown dialect passed on") << 7 << QStringLiteral("*102*1#") << QByteArray("*102*1#");
    QTest::newRow("long request cut to the record") << 0 << QString(300, QLatin1Char('9')) << QByteArray(254, '9');
}

void TestHostModule::answersTheModulesQuestions()
{
    QFETCH(int, dialect);
    QFETCH(QString, ussd);
    QFETCH(QByteArray, ussdSeen);
    ZOR_HostModule host;
    QVERIFY(host.load(fakePath()));
    host.setCoordSystem(dialect);
    host.setUssdRequest(ussd);
    ZOR_RAVEL_CMND_COORDSYSTEM coord{-5};
    moduleSends(ZOR_MSG_GET_COORDSYSTEM, reinterpret_cast<unsigned long>(&coord));
    QCOMPARE(coord.nCoordSystem, dialect);
    szConfigParam param;
    std::memset(&param, 'x', sizeof param);
    moduleSends(ZOR_MSG_GET_CONFIG_PARAM, reinterpret_cast<unsigned long>(&param));
    QCOMPARE(QByteArray(param.szUssdBalance, int(qstrnlen(param.szUssdBalance, sizeof param))), ussdSeen);
    // Null records and unknown codes are ignored.
    for (int nMessage : {int(ZOR_MSG_GET_COORDSYSTEM), int(ZOR_MSG_GET_CONFIG_PARAM), int(ZOR_MSG_SEND_TO_DEVICE),
             int(ZOR_MSG_MENU_ADD), 2034})
        moduleSends(nMessage);
    QCOMPARE(host.menuActions().size(), 1);
}

void TestHostModule::updatesAndEnablesOnlyItsOwnEntries()
{
    ZOR_HostModule host;
    QVERIFY(host.load(fakePath()));
    QAction* lpAction = host.menuActions().first();
    szMenuItem item{};
    std::strcpy(item.szCaption, "Renamed");
    item.nMenuHandle = fnHandle() + 100;
    moduleSends(ZOR_MSG_MENU_UPDATE, reinterpret_cast<unsigned long>(&item));
    uint8_t nOn = 1;
    moduleSends(ZOR_MSG_MENU_ENABLE, item.nMenuHandle, reinterpret_cast<unsigned long>(&nOn));
    QCOMPARE(lpAction->text(), QStringLiteral("Fake entry"));
    QVERIFY(!lpAction->isEnabled());
    item.nMenuHandle = fnHandle();
    moduleSends(ZOR_MSG_MENU_UPDATE, reinterpret_cast<unsigned long>(&item));
    moduleSends(ZOR_MSG_MENU_ENABLE, item.nMenuHandle, reinterpret_cast<unsigned long>(&nOn));
    QCOMPARE(lpAction->text(), QStringLiteral("Renamed"));
    QVERIFY(lpAction->isEnabled());
    moduleSends(ZOR_MSG_MENU_ENABLE, item.nMenuHandle, 0); // no byte: off
    QVERIFY(!lpAction->isEnabled());
}

void TestHostModule::forwardsTerminalBytesOnlyWhileAsked()
{
    ZOR_HostModule host;
    QVERIFY(host.load(fakePath()));
    QByteArray piece("*?ICC");
    moduleSends(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&piece)); // no link: dropped
    QVERIFY(host.connectLink(ZOR_TerminalLink::create(QStringLiteral("simulator"))));
    QByteArray ping("*?PING 1\r\n");
    moduleSends(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&ping));
    QTest::qWait(100);
    QVERIFY(!seenCodes().contains(ZOR_MSG_DEVICE_DATA));

    moduleSends(ZOR_MSG_RECEIVE_START);
    QVERIFY(host.isForwarding());
    moduleSends(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&ping));
    QTRY_VERIFY(seenCodes().contains(ZOR_MSG_DEVICE_DATA));
    QCOMPARE(seen.last().data, QByteArray("*#PING 1\r\n"));

    moduleSends(ZOR_MSG_RECEIVE_STOP);
    seen.clear();
    moduleSends(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&ping));
    QTest::qWait(100);
    QVERIFY(seen.isEmpty());
}

void TestHostModule::languageIsAnApplicationProperty()
{
    ZOR_HostModule host;
    QVERIFY(host.load(fakePath()));
    host.setLanguage(QStringLiteral("en"));
    QCOMPARE(qApp->property("zor_programLanguage").toString(), QStringLiteral("en"));
    // The host's own texts follow.
    std::unique_ptr<ZOR_TerminalLink> simulator(ZOR_TerminalLink::create(QStringLiteral("simulator")));
    QCOMPARE(simulator->description(), QStringLiteral("terminal simulator"));
    QCOMPARE(seenCodes().last(), int(ZOR_MSG_LANGUAGE_CHANGED));
    host.setLanguage(QStringLiteral("ru"));
}

void TestHostModule::brokenSerialPortLeavesTheHostUsable()
{
    ZOR_HostModule host;
    QVERIFY(host.load(fakePath()));
    QVERIFY(host.connectLink(ZOR_TerminalLink::create(QStringLiteral("simulator"))));
    QSignalSpy status(&host, &ZOR_HostModule::signal_Status);
    QVERIFY(!host.connectLink(ZOR_TerminalLink::create(QStringLiteral("serial:/nonexistent/ttyZOR:9600"))));
    QVERIFY(host.errorString().contains(QStringLiteral("/nonexistent/ttyZOR")));
    QVERIFY(!status.isEmpty());
    QVERIFY(status.last().at(0).toString().contains(QStringLiteral("/nonexistent/ttyZOR")));
    QVERIFY(!host.link());
    QCOMPARE(seenCodes().count(ZOR_MSG_DEVICE_CONNECTED), 1); // the simulator only
    QCOMPARE(seenCodes().last(), int(ZOR_MSG_DEVICE_DISCONNECTED));
    QVERIFY(host.connectLink(ZOR_TerminalLink::create(QStringLiteral("simulator"))));
}

void TestHostModule::linkTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("description");
    QTest::newRow("simulator") << QStringLiteral("simulator") << QStringLiteral("симулятор терминала");
    QTest::newRow("port, default baud") << QStringLiteral("serial:ttyUSB0") << QStringLiteral("ttyUSB0, 115200");
    QTest::newRow("path and baud") << QStringLiteral("serial:/dev/pts/3:9600") << QStringLiteral("/dev/pts/3, 9600");
    QTest::newRow("no port") << QStringLiteral("serial:") << QString();
    QTest::newRow("bad baud") << QStringLiteral("serial:ttyS0:fast") << QString();
    QTest::newRow("zero baud") << QStringLiteral("serial:ttyS0:0") << QString();
    QTest::newRow("other kind") << QStringLiteral("tcp:host:5000") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestHostModule::linkTexts()
{
    QFETCH(QString, text);
    QFETCH(QString, description);
    std::unique_ptr<ZOR_TerminalLink> link(ZOR_TerminalLink::create(text));
    QCOMPARE(link ? link->description() : QString(), description);
}

QTEST_MAIN(TestHostModule)
#include "tst_host_module.moc"
