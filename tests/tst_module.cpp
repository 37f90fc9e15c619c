// The module seen from a host: the library is loaded by file name and only
// its exported entry points are called; every message it sends is recorded.

#include "commands/zor_form_commands.h"
#include "commands/zor_model_log.h"
#include "module/zor_commands.h"
#include "module/zor_language.h"
#include "zor_host_recorder.h"

#include <QLibrary>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <cstring>

class TestModule : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void infoRecordHasTheFixedLayout();
    void messagesBeforeInitializeSendNothing();
    void menuEntryIsAddedThenDisabled();
    void dataBeforeTheConsoleIsDropped();
    void unknownCodesAreIgnored_data();
    void unknownCodesAreIgnored();
    void connectionTogglesTheMenuEntry();
    void consoleOpenedAfterConnectIsConnected();
    void receivedDataIsLoggedByTheConsole();
    void languageChangeUpdatesTheEntry();
    void closingStopsForwardingAndReopeningRestarts();
    void configuratorModeIsReachable();

private:
    void send(int message, unsigned long wParam = 0, unsigned long lParam = 0)
    {
        receiveMessage(reinterpret_cast<void*>(0x1), message, wParam, lParam);
    }
    ZOR_HostRecorder& host = ZOR_HostRecorder::instance();
    QLibrary library;
    ZOR_IsZorLibraryVFunc isZorLibrary = nullptr;
    ZOR_GetLibraryInfoFunc getLibraryInfo = nullptr;
    ZOR_InitializeFunc initialize = nullptr;
    ZOR_ReceiveMessageFunc receiveMessage = nullptr;
    ZOR_SetConfiguratorModeFunc setConfiguratorMode = nullptr;
    void* lpModule = nullptr;
};

void TestModule::initTestCase()
{
    ZOR_Language::instance().load(QStringLiteral("ru"));
    library.setFileName(QStringLiteral(ZOR_BIN_DIR "/libZOR_Commands.so"));
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    isZorLibrary = reinterpret_cast<ZOR_IsZorLibraryVFunc>(library.resolve("IsZorLibraryV"));
    getLibraryInfo = reinterpret_cast<ZOR_GetLibraryInfoFunc>(library.resolve("GetLibraryInfo"));
    initialize = reinterpret_cast<ZOR_InitializeFunc>(library.resolve("Initialize"));
    receiveMessage = reinterpret_cast<ZOR_ReceiveMessageFunc>(library.resolve("ReceiveMessage"));
    setConfiguratorMode = reinterpret_cast<ZOR_SetConfiguratorModeFunc>(library.resolve("SetConfiguratorMode"));
    QVERIFY(isZorLibrary && getLibraryInfo && initialize && receiveMessage && setConfiguratorMode);
    QCOMPARE(isZorLibrary(), 1);
    szLibraryInfo info;
    getLibraryInfo(&info);
    lpModule = info.lpLibrary;
    QVERIFY(lpModule);
}

void TestModule::init()
{
    host.clear();
}

// Whatever a test made the module send, it is one of the eight messages a
// module may send its host, with the module object as sender.
void TestModule::cleanup()
{
    const QList<int> hostMessages = {2032, 2033, 2036, 2038, 2053, 2054, 2055, 2356};
    for (const ZOR_HostRecord& record : host.records) {
        QCOMPARE(record.lpSender, lpModule);
        QVERIFY2(hostMessages.contains(record.nMessage), QByteArray::number(record.nMessage).constData());
    }
}

void TestModule::infoRecordHasTheFixedLayout()
{
    unsigned char buffer[600];
    std::memset(buffer, 0xEE, sizeof(buffer));
    QCOMPARE(static_cast<void*>(getLibraryInfo(reinterpret_cast<szLibraryInfo*>(buffer))), static_cast<void*>(buffer));
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(buffer + 8)), QByteArray("ZOR_Commands"));
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(buffer + 263)), QByteArray("ZOR Commands"));
    const unsigned char integers[] = {3, 0, 0, 0, 5, 0, 0, 0, 8, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0};
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(buffer + 518), 24),
        QByteArray(reinterpret_cast<const char*>(integers), 24));
    // Exactly 542 bytes were written.
    QCOMPARE(int(buffer[542]), 0xEE);
    QCOMPARE(int(buffer[541]), 0);
}

void TestModule::messagesBeforeInitializeSendNothing()
{
    QByteArray data("*#ICCID 1,1");
    for (int message : {2030, 2031, 2051, 2052, 2037, 2056, 2054})
        send(message, message == 2056 ? reinterpret_cast<unsigned long>(&data) : 0);
    send(2056, 0);
    QVERIFY(host.records.isEmpty());
    QVERIFY(!lpGlobalLib->getFormCommands());
    initialize(&ZOR_HostRecorder::callback);
    QCOMPARE(static_cast<void*>(lpGlobalLib), lpModule);
}

void TestModule::menuEntryIsAddedThenDisabled()
{
    send(2030);
    QCOMPARE(host.codes(), QList<int>({2032, 2036}));
    const ZOR_HostRecord& add = host.records.at(0);
    QCOMPARE(add.lpSender, lpModule);
    QCOMPARE(add.qsCaption, zorTr(QStringLiteral("mdln_001")));
    QVERIFY(add.bIcon);
    QCOMPARE(add.lParam, 0ul);
    QCOMPARE(host.records.at(1).nHandle, host.nMenuHandle);
    QCOMPARE(host.records.at(1).nEnable, 0);
}

void TestModule::dataBeforeTheConsoleIsDropped()
{
    QByteArray data("*#ICCID 3,1,2");
    send(2056, reinterpret_cast<unsigned long>(&data));
    send(2037);
    QVERIFY(host.records.isEmpty());
    QVERIFY(!lpGlobalLib->getFormCommands());
}

void TestModule::unknownCodesAreIgnored_data()
{
    QTest::addColumn<int>("message");
    for (int code : {0, -1, 2034, 2055, 2032, 2053, 2356, 99999})
        QTest::addRow("%d", code) << code;
}

void TestModule::unknownCodesAreIgnored()
{
    QFETCH(int, message);
    QVERIFY(!ZOR_Commands::handlesMessage(message));
    QByteArray bytes("x");
    send(message, reinterpret_cast<unsigned long>(&bytes), 1);
    QVERIFY(host.records.isEmpty());
}

void TestModule::connectionTogglesTheMenuEntry()
{
    send(2051);
    send(2051); // a repeat does the same again
    send(2052);
    QCOMPARE(host.codes(), QList<int>({2036, 2036, 2036}));
    QCOMPARE(host.records.at(0).nEnable, 1);
    QCOMPARE(host.records.at(1).nEnable, 1);
    QCOMPARE(host.records.at(2).nEnable, 0);
    for (const ZOR_HostRecord& record : host.records)
        QCOMPARE(record.nHandle, host.nMenuHandle);
}

void TestModule::consoleOpenedAfterConnectIsConnected()
{
    send(2051);
    host.clear();
    host.ussdRequest = "*102#";
    send(2035);
    QCOMPARE(host.codes(), QList<int>({2053, 2356}));
    QCOMPARE(reinterpret_cast<void*>(host.records.at(0).wParam), lpModule);
    ZOR_Form_Commands* form = lpGlobalLib->getFormCommands();
    QVERIFY(form);
    QVERIFY(form->isVisible());
    QVERIFY(form->findChild<QPushButton*>("pushButton_Send_Cmd_Any")->isEnabled());
    QCOMPARE(form->findChild<QLineEdit*>("lineEdit_Balance_USSD")->text(), QStringLiteral("*102#"));
    ZOR_Model_Log* log = form->logModel();
    QCOMPARE(log->text(log->rowCount() - 1, ZOR_Model_Log::ColumnData), QStringLiteral("CONNECT"));
}

void TestModule::receivedDataIsLoggedByTheConsole()
{
    ZOR_Model_Log* log = lpGlobalLib->getFormCommands()->logModel();
    const int rows = log->rowCount();
    QByteArray data("*#ICCID 1,8970101234567890123");
    send(2056, reinterpret_cast<unsigned long>(&data));
    send(2056, 0);
    QCOMPARE(log->rowCount(), rows + 1);
    QCOMPARE(log->text(rows, ZOR_Model_Log::ColumnDirection), QStringLiteral("IN"));
    QVERIFY(host.records.isEmpty());
}

void TestModule::languageChangeUpdatesTheEntry()
{
    send(2031);
    QCOMPARE(host.codes(), QList<int>({2033}));
    QCOMPARE(host.records.at(0).nHandle, host.nMenuHandle);
    QCOMPARE(host.records.at(0).qsCaption, lpGlobalLib->getFormCommands()->getWindowTitle());
    QVERIFY(host.records.at(0).bIcon);
}

void TestModule::closingStopsForwardingAndReopeningRestarts()
{
    send(2037);
    QCOMPARE(host.codes(), QList<int>({2054}));
    QCOMPARE(reinterpret_cast<void*>(host.records.at(0).wParam), lpModule);
    ZOR_Form_Commands* form = lpGlobalLib->getFormCommands();
    QVERIFY(!form->isVisible());
    host.clear();
    send(2035);
    QCOMPARE(host.codes().value(0), 2053);
    QCOMPARE(lpGlobalLib->getFormCommands(), form);
    QVERIFY(form->isVisible());
}

void TestModule::configuratorModeIsReachable()
{
    setConfiguratorMode(5);
    QCOMPARE(lpGlobalLib->getConfiguratorMode(), 5);
    setConfiguratorMode(0);
    QCOMPARE(lpGlobalLib->getConfiguratorMode(), 0);
}

QTEST_MAIN(TestModule)
#include "tst_module.moc"
