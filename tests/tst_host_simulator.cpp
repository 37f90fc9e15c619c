// The simulated terminal: what it answers, and how it finds where a request
// ends when the bytes come in pieces; and how the host puts replies that
// arrive in pieces back together.

#include "zor_reply_assembler.h"
#include "zor_terminal_link.h"
#include "zor_terminal_link_simulator.h"
#include "zor_terminal_simulator.h"

#include "module/zor_cp1251.h"

#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QXmlStreamReader>
#include <memory>
#include <QtTest>

class TestHostSimulator : public QObject
{
    Q_OBJECT
private slots:
    void answersEveryKnownRequest_data();
    void answersEveryKnownRequest();
    void findsRequestEnds_data();
    void findsRequestEnds();
    void answersTheShippedCommandList_data();
    void answersTheShippedCommandList();
    void imeiHasAValidCheckDigit();
    void iccidsAreFixed19Digits();
    void statusReflectsCommands();
    void linkRepliesFromTheEventLoopOnly();
    void chunkedLinkSplitsReplies();
    void assemblerDeliversWholeReplies_data();
    void assemblerDeliversWholeReplies();
};

void TestHostSimulator::answersEveryKnownRequest_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    const QByteArray i1 = ZOR_TerminalSimulator::iccid(1);
    const QByteArray i2 = ZOR_TerminalSimulator::iccid(2);
    QTest::newRow("version") << QByteArray("*?V") << QByteArray("*#V ZOR-SIM 3.5.8\r\n");
    QTest::newRow("ping") << QByteArray("*?PING 1") << QByteArray("*#PING 1\r\n");
    QTest::newRow("ping, not a number") << QByteArray("*?PING x") << QByteArray("*#ERROR:*?PING x\r\n");
    QTest::newRow("firmware version") << QByteArray("*?VERSION")
                                      << QByteArray("*#VERSION ZOR-SIM 3.5.8 (01.03.2026)\r\n");
    QTest::newRow("IMEI") << QByteArray("*?IMEI") << QByteArray("*#IMEI 356938035643809\r\n");
    QTest::newRow("reset") << QByteArray("*!RESET") << QByteArray("*@RESET\r\n");
    QTest::newRow("iccid mask 0") << QByteArray("*?ICCID 0") << QByteArray("*#ICCID 0\r\n");
    QTest::newRow("iccid sim 1") << QByteArray("*?ICCID 1") << "*#ICCID 1," + i1 + "\r\n";
    QTest::newRow("iccid both") << QByteArray("*?ICCID 3") << "*#ICCID 3," + i1 + "," + i2 + "\r\n";
    QTest::newRow("iccid mask 4") << QByteArray("*?ICCID 4") << QByteArray("*#ERROR:*?ICCID 4\r\n");
    QTest::newRow("ussd balance in cp1251")
        << QByteArray("*?USSD:*100#")
        << "*#USSD:" + ZOR_Cp1251::encode(QStringLiteral("Баланс 152,40 р. Пакет: 812 МБ до 31.12")) + "\r\n";
    QTest::newRow("ussd with empty request") << QByteArray("*?USSD:") << QByteArray();
    QTest::newRow("sms on") << QByteArray("*!EDIT PHONES:MODE(1)") << QByteArray("*@EDIT PHONES:MODE(1)\r\n");
    QTest::newRow("sms mode 2") << QByteArray("*!EDIT PHONES:MODE(2)")
                                << QByteArray("*#ERROR:*!EDIT PHONES:MODE(2)\r\n");
    QTest::newRow("case matters") << QByteArray("*?v") << QByteArray("*#ERROR:*?v\r\n");
    QTest::newRow("unknown") << QByteArray("AT") << QByteArray("*#ERROR:AT\r\n");
    QTest::newRow("cyrillic echoed back") << ZOR_Cp1251::encode(QStringLiteral("*?ЖЖ"))
                                          << "*#ERROR:" + ZOR_Cp1251::encode(QStringLiteral("*?ЖЖ")) + "\r\n";
    QTest::newRow("elevation 16 is out of range")
        << QByteArray("*!UC GPS,PMTK311,16") << QByteArray("*#ERROR:*!UC GPS,PMTK311,16\r\n");
    // Each kind of GNSS setting the console sends is acknowledged as it stands.
    const char* const gnss[] = {
        "PQPZ90,W,1,0", "PMTK330,223", "PMTK353,1,1,0,0,0", "PMTK220,100", "PMTK311,15", "PMTK104"};
    for (const char* setting : gnss)
        QTest::newRow(setting) << QByteArray("*!UC GPS,") + setting << QByteArray("*@UC GPS,") + setting + "\r\n";
}

void TestHostSimulator::answersEveryKnownRequest()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, reply);
    ZOR_TerminalSimulator simulator;
    if (reply.isEmpty()) // any balance text will do, but it must be Cyrillic
        QVERIFY(ZOR_Cp1251::decode(simulator.reply(request)).contains(QStringLiteral("Баланс")));
    else
        QCOMPARE(simulator.reply(request), reply);
}

void TestHostSimulator::findsRequestEnds_data()
{
    QTest::addColumn<QList<QByteArray>>("pieces");
    QTest::addColumn<QByteArray>("beforeFlush");
    QTest::addColumn<QByteArray>("afterFlush");
    QTest::newRow("whole, no terminator")
        << QList<QByteArray>{"*?PING 1"} << QByteArray() << QByteArray("*#PING 1\r\n");
    QTest::newRow("split in three") << QList<QByteArray>{"*?IC", "CID", " 1"} << QByteArray()
                                    << "*#ICCID 1," + ZOR_TerminalSimulator::iccid(1) + "\r\n";
    QTest::newRow("crlf ends at once") << QList<QByteArray>{"*?V\r", "\n"} << QByteArray("*#V ZOR-SIM 3.5.8\r\n")
                                       << QByteArray();
    QTest::newRow("next command ends the first")
        << QList<QByteArray>{"*?PING 1*?PI", "NG 2"} << QByteArray("*#PING 1\r\n") << QByteArray("*#PING 2\r\n");
    QTest::newRow("star alone at the end waits")
        << QList<QByteArray>{"*?PING 1*"} << QByteArray() << QByteArray("*#ERROR:*?PING 1*\r\n");
    QTest::newRow("ussd code keeps its stars")
        << QList<QByteArray>{"*?USSD:*102*1#"} << QByteArray() << QByteArray("ussd");
    QTest::newRow("blank lines are no requests") << QList<QByteArray>{"\r\n\r\n", "\n"} << QByteArray() << QByteArray();
    QTest::newRow("endless line is cut") << QList<QByteArray>{QByteArray(5000, 'x')}
                                         << "*#ERROR:" + QByteArray(64, 'x') + "\r\n"
                                         << QByteArray();
}

void TestHostSimulator::findsRequestEnds()
{
    QFETCH(QList<QByteArray>, pieces);
    QFETCH(QByteArray, beforeFlush);
    QFETCH(QByteArray, afterFlush);
    ZOR_TerminalSimulator simulator;
    QByteArray replies;
    for (const QByteArray& piece : pieces)
        replies += simulator.feed(piece);
    QCOMPARE(replies, beforeFlush);
    QCOMPARE(simulator.hasPending(), !afterFlush.isEmpty());
    const QByteArray flushed = simulator.flush();
    if (afterFlush == "ussd")
        QVERIFY(flushed.startsWith("*#USSD:"));
    else
        QCOMPARE(flushed, afterFlush);
    QVERIFY(!simulator.hasPending());
}

void TestHostSimulator::iccidsAreFixed19Digits()
{
    for (int nSim = 1; nSim <= 2; ++nSim) {
        const QByteArray iccid = ZOR_TerminalSimulator::iccid(nSim);
        QCOMPARE(iccid.size(), 19);
        QVERIFY(std::all_of(iccid.begin(), iccid.end(), [](char c) { return c >= '0' && c <= '9'; }));
    }
    QVERIFY(ZOR_TerminalSimulator::iccid(1) != ZOR_TerminalSimulator::iccid(2));
    QVERIFY(ZOR_TerminalSimulator::iccid(3).isEmpty());
}

void TestHostSimulator::statusReflectsCommands()
{
    ZOR_TerminalSimulator simulator;
    QVERIFY(simulator.reply("*?S").contains("SMS:0,RATE:1000"));
    simulator.reply("*!EDIT PHONES:MODE(1)");
    simulator.reply("*!UC GPS,PMTK220,200");
    QVERIFY(simulator.reply("*?S").contains("SMS:1,RATE:200"));
}

void TestHostSimulator::linkRepliesFromTheEventLoopOnly()
{
    ZOR_TerminalLink_Simulator link;
    QSignalSpy received(&link, &ZOR_TerminalLink::signal_Received);
    link.write("*?V\r\n"); // closed: swallowed
    QVERIFY(link.open());
    link.write("*?PING 7\r\n");
    QCOMPARE(received.count(), 0);
    QVERIFY(received.wait(1000));
    QCOMPARE(received.takeFirst().at(0).toByteArray(), QByteArray("*#PING 7\r\n"));
    link.write("*?PI");
    link.write("NG 8"); // the line goes quiet: the idle timer ends the request
    QVERIFY(received.wait(1000));
    QCOMPARE(received.takeFirst().at(0).toByteArray(), QByteArray("*#PING 8\r\n"));
    link.write("*?PING 9");
    link.close();
    QTest::qWait(3 * ZOR_TerminalSimulator::nIdleFlushMs);
    QCOMPARE(received.count(), 0);
}

void TestHostSimulator::answersTheShippedCommandList_data()
{
    QTest::addColumn<QString>("command");
    for (const char* file : {"commands.xml", "commands_en.xml"}) {
        QFile list(QStringLiteral(ZOR_BIN_DIR "/Localization/Temp/") + QLatin1String(file));
        QVERIFY2(list.open(QIODevice::ReadOnly), qPrintable(list.fileName()));
        QXmlStreamReader xml(&list);
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("COMMAND")) {
                const QString command = xml.attributes().value(QLatin1String("cmnd")).toString();
                QTest::newRow(qPrintable(QLatin1String(file) + QLatin1Char(' ') + command)) << command;
            }
        }
        QVERIFY(!xml.hasError());
    }
}

void TestHostSimulator::answersTheShippedCommandList()
{
    // "*?X" is answered by "*#X", "*!X" acknowledged by "*@X".
    QFETCH(QString, command);
    ZOR_TerminalSimulator simulator;
    const QString reply = ZOR_Cp1251::decode(simulator.reply(ZOR_Cp1251::encode(command)));
    const QRegularExpressionMatch request = QRegularExpression(QStringLiteral("^\\*([?!])([A-Z_]+)")).match(command);
    QVERIFY2(request.hasMatch(), qPrintable(command));
    const QString prefix = request.captured(1) == QLatin1String("?") ? QStringLiteral("*#") : QStringLiteral("*@");
    const QString name = request.captured(2);
    QVERIFY2(reply.startsWith(prefix + name) && reply.endsWith(QLatin1String("\r\n")), qPrintable(reply));
}

void TestHostSimulator::imeiHasAValidCheckDigit()
{
    ZOR_TerminalSimulator simulator;
    const QByteArray imei = simulator.reply("*?IMEI").mid(7).trimmed();
    QCOMPARE(imei.size(), 15);
    int sum = 0;
    for (int i = 0; i < 15; ++i) {
        int digit = imei[14 - i] - '0';
        if (i % 2 == 1 && (digit *= 2) > 9)
            digit -= 9;
        sum += digit;
    }
    QCOMPARE(sum % 10, 0);
}

void TestHostSimulator::chunkedLinkSplitsReplies()
{
    std::unique_ptr<ZOR_TerminalLink> link(ZOR_TerminalLink::create(QStringLiteral("simulator:7:5")));
    QVERIFY(link && link->open());
    QSignalSpy received(link.get(), &ZOR_TerminalLink::signal_Received);
    link->write("*?ICCID 3\r\n");
    const QByteArray expected = "*#ICCID 3," + ZOR_TerminalSimulator::iccid(1) + "," + ZOR_TerminalSimulator::iccid(2)
        + "\r\n";
    const auto joined = [&received] {
        QByteArray all;
        for (const QList<QVariant>& args : received)
            all += args.at(0).toByteArray();
        return all;
    };
    QTRY_COMPARE_WITH_TIMEOUT(joined(), expected, 3000);
    QCOMPARE(received.count(), (expected.size() + 6) / 7);
    QCOMPARE(received.first().at(0).toByteArray(), expected.left(7));
}

void TestHostSimulator::assemblerDeliversWholeReplies_data()
{
    // Pieces as the driver hands them over; an empty piece is a quiet
    // spell longer than the idle gap. Then the blocks the module gets.
    QTest::addColumn<QList<QByteArray>>("pieces");
    QTest::addColumn<QList<QByteArray>>("blocks");
    using L = QList<QByteArray>;
    QTest::newRow("ICCID reply in two reads") << L{"*#ICCID 3,89701012345", "67890128,8970201234567890127\r\n"}
                                              << L{"*#ICCID 3,8970101234567890128,8970201234567890127\r\n"};
    QTest::newRow("two replies in one read") << L{"*#V X\r\n*#PING 1\r\n"} << L{"*#V X\r\n", "*#PING 1\r\n"};
    QTest::newRow("CR and LF in two reads") << L{"*#V X\r", "\n"} << L{"*#V X\r\n"};
    QTest::newRow("reply and the start of the next")
        << L{"*#V X\r\n*#PI", "NG 1\r\n"} << L{"*#V X\r\n", "*#PING 1\r\n"};
    QTest::newRow("no line end: the gap ends it") << L{"\x01\x02", "\x03", ""} << L{"\x01\x02\x03"};
    QTest::newRow("a quiet spell splits") << L{"*#A", "", "*#B", ""} << L{"*#A", "*#B"};
    QTest::newRow("bare line end") << L{"\n"} << L{"\n"};
    const QByteArray big(ZOR_ReplyAssembler::nMaxBlock + 10, 'x');
    QTest::newRow("no line end in 64 KiB") << L{big, ""} << L{big.left(ZOR_ReplyAssembler::nMaxBlock), big.right(10)};
}

void TestHostSimulator::assemblerDeliversWholeReplies()
{
    QFETCH(QList<QByteArray>, pieces);
    QFETCH(QList<QByteArray>, blocks);
    ZOR_ReplyAssembler assembler;
    QList<QByteArray> got;
    connect(&assembler, &ZOR_ReplyAssembler::signal_Reply, this, [&got](const QByteArray& b) { got << b; });
    for (const QByteArray& piece : pieces) {
        if (piece.isEmpty())
            QTRY_VERIFY(!assembler.hasPending());
        else
            assembler.feed(piece);
    }
    QCOMPARE(got, blocks);
    QVERIFY(!assembler.hasPending());
}

QTEST_GUILESS_MAIN(TestHostSimulator)
#include "tst_host_simulator.moc"
