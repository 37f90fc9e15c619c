// What the console says to a terminal and reads back, without a widget in
// sight (the test runs without a GUI application): the bytes of a command
// line, the fixed commands the buttons cannot reach, the ICCID reply.
// Captions show as their keys (pseudo-language "keys").

#include "commands/zor_consoleprotocol.h"
#include "module/zor_language.h"

#include <QtTest>

class TestConsoleProtocol : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("keys")); }
    void commandLineBytes_data();
    void commandLineBytes();
    void fixedCommandsOutsideTheButtons();
    void iccIdReply_data();
    void iccIdReply();
};

void TestConsoleProtocol::commandLineBytes_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("AT and CR") << "AT\\0D" << QByteArray("AT\r");
    QTest::newRow("upper and lower hex") << "\\fF\\A0" << QByteArray("\xff\xa0");
    QTest::newRow("doubled backslash") << "a\\\\b" << QByteArray("a\\b");
    QTest::newRow("doubled then hex") << "\\\\\\41" << QByteArray("\\A");
    QTest::newRow("not hex") << "\\ZZ1" << QByteArray("\\ZZ1");
    QTest::newRow("half hex") << "\\G1x" << QByteArray("\\G1x");
    QTest::newRow("lone backslash") << "\\" << QByteArray("\\");
    QTest::newRow("one char after at end") << "AT\\0" << QByteArray("AT\\0");
    QTest::newRow("Cyrillic") << "Баланс\\0D" << QByteArray("\xc1\xe0\xeb\xe0\xed\xf1\r");
    QTest::newRow("no byte for it") << "a中b" << QByteArray("a_b");
    QTest::newRow("NUL byte") << "\\00" << QByteArray(1, '\0');
    QTest::newRow("empty") << "" << QByteArray();
}

void TestConsoleProtocol::commandLineBytes()
{
    QVERIFY(!qobject_cast<QGuiApplication*>(QCoreApplication::instance()));
    QFETCH(QString, line);
    QFETCH(QByteArray, bytes);
    QCOMPARE(ZOR_ConsoleProtocol::getUniCommand(line), bytes);
}

// The buttons never ask for these: an unknown dialect, no SIM ticked, a
// rate past the list.
void TestConsoleProtocol::fixedCommandsOutsideTheButtons()
{
    QCOMPARE(ZOR_ConsoleProtocol::coordSystemCommand(2, true), QString());
    QCOMPARE(ZOR_ConsoleProtocol::coordSystemCommand(-1, false), QString());
    QCOMPARE(ZOR_ConsoleProtocol::iccIdCommand(false, false), QStringLiteral("*?ICCID 0"));
    QCOMPARE(ZOR_ConsoleProtocol::iccIdCommand(true, true), QStringLiteral("*?ICCID 3"));
    QCOMPARE(ZOR_ConsoleProtocol::nmeaRateCommand(4), QStringLiteral("*!UC GPS,PMTK220,1000"));
    QCOMPARE(ZOR_ConsoleProtocol::nmeaRateCaptions(),
        QStringList({QStringLiteral("1 Гц"), QStringLiteral("2 Гц"), QStringLiteral("5 Гц"), QStringLiteral("10 Гц")}));
    QCOMPARE(ZOR_ConsoleProtocol::balanceCommand(QStringLiteral(" *100# ")), QStringLiteral("*?USSD: *100# "));
}

void TestConsoleProtocol::iccIdReply_data()
{
    // "-" for a result the reply leaves as it was.
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("sim1");
    QTest::addColumn<QString>("sim2");
    const QString iccid = QStringLiteral("8970101234567890123");
    QTest::newRow("both, SIM 2 code 2") << QByteArray("*#ICCID 3,8970101234567890123,2") << iccid << "mdln_032";
    QTest::newRow("SIM 1 only") << QByteArray("*#ICCID 1,8970101234567890123") << iccid << "-";
    QTest::newRow("SIM 2 only") << QByteArray("*#ICCID 2,8970101234567890123") << "-" << iccid;
    QTest::newRow("line end after code 2") << QByteArray("*#ICCID 3,8970101234567890123,2\r\n") << iccid << "mdln_032";
    QTest::newRow("8 characters and a line end") << QByteArray("*#ICCID \r\n") << "-"
                                                 << "-";
    QTest::newRow("empty field") << QByteArray("*#ICCID 1,") << "mdln_029"
                                 << "-";
    QTest::newRow("missing field") << QByteArray("*#ICCID 3") << "mdln_029"
                                   << "mdln_029";
    QTest::newRow("codes 0 and 1") << QByteArray("*#ICCID 3,0,1") << "mdln_030"
                                   << "mdln_031";
    QTest::newRow("two-digit code") << QByteArray("*#ICCID 3,02,9") << "mdln_032"
                                    << "9";
    QTest::newRow("short, other value") << QByteArray("*#ICCID 1,77") << "77"
                                        << "-";
    QTest::newRow("three digits shown as is") << QByteArray("*#ICCID 1,001") << "001"
                                              << "-";
    QTest::newRow("8 characters") << QByteArray("*#ICCID ") << "-"
                                  << "-";
    QTest::newRow("7 characters") << QByteArray("*#ICCID") << "-"
                                  << "-";
    QTest::newRow("mask 0") << QByteArray("*#ICCID 0,1,2") << "-"
                            << "-";
    QTest::newRow("unknown mask") << QByteArray("*#ICCID 4,1,2") << "-"
                                  << "-";
    QTest::newRow("mask not a number") << QByteArray("*#ICCID x,1,2") << "-"
                                       << "-";
    QTest::newRow("other reply") << QByteArray("*#ICCIX 3,1,2") << "-"
                                 << "-";
    QTest::newRow("lower case") << QByteArray("*#iccid 3,1,2") << "-"
                                << "-";
}

void TestConsoleProtocol::iccIdReply()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, sim1);
    QFETCH(QString, sim2);
    const ZOR_ConsoleProtocol::IccIdReply parsed = ZOR_ConsoleProtocol::parseIccIdReply(reply);
    QCOMPARE(parsed.bSim1 ? parsed.qsSim1 : QStringLiteral("-"), sim1);
    QCOMPARE(parsed.bSim2 ? parsed.qsSim2 : QStringLiteral("-"), sim2);
}

QTEST_GUILESS_MAIN(TestConsoleProtocol)
#include "tst_consoleprotocol.moc"
