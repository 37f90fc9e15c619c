// Host, module and simulated terminal together. The terminal is reached in
// process, or for real through a serial driver: zor-sim serves it on a
// pseudo-terminal, its own or one end of a socat pair, and the host opens
// it with QSerialPort as it would a USB adapter.

#include "zor_host_module.h"
#include "zor_terminal_link.h"
#include "zor_terminal_simulator.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QLibrary>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// The socat rows need socat; without it they are skipped, not failed.
#define SKIP_WITHOUT_SOCAT(link)                                                                                       \
    if ((link).startsWith(QLatin1String("socat"))                                                                      \
        && QStandardPaths::findExecutable(QStringLiteral("socat")).isEmpty())                                          \
    QSKIP("socat is not installed (scripts/deps.sh installs it)")

namespace {

QList<QByteArray> received;

void observe(int nMessage, unsigned long wParam, unsigned long)
{
    if (nMessage == ZOR_MSG_DEVICE_DATA && wParam)
        received << *reinterpret_cast<QByteArray*>(wParam);
}

QByteArray receivedBytes()
{
    QByteArray all;
    for (const QByteArray& block : received)
        all += block;
    return all;
}

} // namespace

class TestHostEndToEnd : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void carriesRequestsAndRepliesThroughAPty_data();
    void carriesRequestsAndRepliesThroughAPty();
    void lostPortDisconnectsTheModule();
    void consoleShowsBothIccids_data();
    void consoleShowsBothIccids();
    void languageSwitchRenamesTheEntry();

private:
    // Starts zor-sim (and socat, for a pair); returns the port for the host.
    QString startTerminal(bool bSocatPair, bool bChunked);
    // The --connect text of a test row's terminal; empty when it did not start.
    QString linkText(const QString& qsLink);
    void addTerminalRows(bool bInProcess, bool bChunked = false);
    void stop(QProcess& process);

    QLibrary m_fake;
    unsigned long (*fnSend)(int, unsigned long, unsigned long) = nullptr;
    QTemporaryDir m_dir;
    QProcess m_socat;
    QProcess m_sim;
};

void TestHostEndToEnd::initTestCase()
{
    m_fake.setFileName(QStringLiteral(ZOR_BIN_DIR "/libzor_fake_module.so"));
    QVERIFY2(m_fake.load(), qPrintable(m_fake.errorString()));
    fnSend = reinterpret_cast<decltype(fnSend)>(m_fake.resolve("FakeModuleSend"));
    auto fnObserve = reinterpret_cast<void (*)(void (*)(int, unsigned long, unsigned long))>(
        m_fake.resolve("FakeModuleObserve"));
    QVERIFY(fnSend && fnObserve && m_dir.isValid());
    fnObserve(&observe);
}

void TestHostEndToEnd::stop(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(2000)) {
        process.kill();
        process.waitForFinished(2000);
    }
}

void TestHostEndToEnd::cleanup()
{
    stop(m_sim);
    stop(m_socat);
    received.clear();
}

QString TestHostEndToEnd::linkText(const QString& qsLink)
{
    if (qsLink.startsWith(QLatin1String("simulator")))
        return qsLink;
    const QString qsPort = startTerminal(
        qsLink.startsWith(QLatin1String("socat")), qsLink.endsWith(QLatin1String("chunked")));
    return qsPort.isEmpty() ? QString() : QStringLiteral("serial:%1:115200").arg(qsPort);
}

QString TestHostEndToEnd::startTerminal(bool bSocatPair, bool bChunked)
{
    const QString qsSim = QStringLiteral(ZOR_BIN_DIR "/zor-sim");
    // Replies in 7-byte pieces 15 ms apart: every reply reaches the host in
    // several reads, as from a slow line.
    const QStringList chunking = bChunked ? QStringList{QStringLiteral("--chunk"), QStringLiteral("7"),
                                     QStringLiteral("--chunk-delay"), QStringLiteral("15")}
                                          : QStringList();
    if (!bSocatPair) {
        m_sim.start(qsSim, chunking);
        if (!m_sim.waitForStarted() || !m_sim.waitForReadyRead(3000))
            return QString();
        return QString::fromLocal8Bit(m_sim.readLine()).trimmed();
    }
    const QString qsHostEnd = m_dir.filePath(QStringLiteral("host"));
    const QString qsTermEnd = m_dir.filePath(QStringLiteral("term"));
    QFile::remove(qsHostEnd);
    QFile::remove(qsTermEnd);
    m_socat.start(QStringLiteral("socat"),
        {QStringLiteral("-d"), QStringLiteral("-d"), QStringLiteral("pty,raw,echo=0,link=") + qsHostEnd,
            QStringLiteral("pty,raw,echo=0,link=") + qsTermEnd});
    if (!m_socat.waitForStarted())
        return QString();
    for (int nWait = 0; nWait < 100 && !(QFile::exists(qsHostEnd) && QFile::exists(qsTermEnd)); ++nWait)
        QTest::qWait(30);
    m_sim.start(qsSim, chunking + QStringList{qsTermEnd});
    return m_sim.waitForStarted() ? qsHostEnd : QString();
}

void TestHostEndToEnd::addTerminalRows(bool bInProcess, bool bChunked)
{
    QTest::addColumn<QString>("link");
    if (bInProcess)
        QTest::newRow("in process") << QStringLiteral("simulator");
    QTest::newRow("zor-sim's own pty") << QStringLiteral("pty");
    QTest::newRow("socat pair") << QStringLiteral("socat");
    if (!bChunked)
        return;
    if (bInProcess)
        QTest::newRow("in process, replies in pieces") << QStringLiteral("simulator:7:15");
    QTest::newRow("zor-sim's own pty, replies in pieces") << QStringLiteral("pty-chunked");
    QTest::newRow("socat pair, replies in pieces") << QStringLiteral("socat-chunked");
}

void TestHostEndToEnd::carriesRequestsAndRepliesThroughAPty_data()
{
    addTerminalRows(false);
}

void TestHostEndToEnd::carriesRequestsAndRepliesThroughAPty()
{
    QFETCH(QString, link);
    SKIP_WITHOUT_SOCAT(link);
    ZOR_HostModule host;
    QVERIFY(host.load(m_fake.fileName()));
    QVERIFY2(host.connectLink(ZOR_TerminalLink::create(linkText(link))), qPrintable(host.errorString()));
    fnSend(ZOR_MSG_RECEIVE_START, 0, 0);
    // Sent in two pieces back to back: the terminal takes a pause of 40 ms
    // as the end of a request, which a loaded machine could make of a wait.
    for (QByteArray piece : {QByteArray("*?ICC"), QByteArray("ID 3")})
        fnSend(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&piece), 0);
    const QByteArray expected = "*#ICCID 3," + ZOR_TerminalSimulator::iccid(1) + "," + ZOR_TerminalSimulator::iccid(2)
        + "\r\n";
    QTRY_COMPARE_WITH_TIMEOUT(receivedBytes(), expected, 5000);
    host.disconnectLink();
}

void TestHostEndToEnd::lostPortDisconnectsTheModule()
{
    SKIP_WITHOUT_SOCAT(QStringLiteral("socat"));
    ZOR_HostModule host;
    QVERIFY(host.load(m_fake.fileName()));
    QVERIFY2(
        host.connectLink(ZOR_TerminalLink::create(linkText(QStringLiteral("socat")))), qPrintable(host.errorString()));
    const QString lastLink = host.lastLink();
    QVERIFY(lastLink.startsWith(QLatin1String("serial:")));
    host.setRetryIntervalMs(100);
    QSignalSpy status(&host, &ZOR_HostModule::signal_Status);
    stop(m_sim);
    stop(m_socat); // the cable is pulled
    QTRY_VERIFY_WITH_TIMEOUT(!host.link(), 5000);
    QVERIFY(!status.isEmpty());
    QVERIFY(host.isRetrying());
    // The port comes back under the same name: the host takes it again.
    QVERIFY(!linkText(QStringLiteral("socat")).isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(host.link(), 5000);
    QVERIFY(!host.isRetrying());
    QCOMPARE(host.lastLink(), lastLink);
    fnSend(ZOR_MSG_RECEIVE_START, 0, 0);
    QByteArray ping("*?PING 5\r\n");
    fnSend(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&ping), 0);
    QTRY_COMPARE_WITH_TIMEOUT(receivedBytes(), QByteArray("*#PING 5\r\n"), 5000);
    // Disconnecting by hand stops the retries for good.
    host.disconnectLink();
    QVERIFY(!host.isRetrying());
    QVERIFY(host.reconnect());
    QVERIFY(host.link());
    host.disconnectLink();
}

void TestHostEndToEnd::consoleShowsBothIccids_data()
{
    addTerminalRows(true, true);
}

void TestHostEndToEnd::consoleShowsBothIccids()
{
    QFETCH(QString, link);
    SKIP_WITHOUT_SOCAT(link);
    ZOR_HostModule host;
    QVERIFY2(host.load(QStringLiteral(ZOR_BIN_DIR "/libZOR_Commands.so")), qPrintable(host.errorString()));
    QCOMPARE(host.menuActions().size(), 1);
    QAction* lpEntry = host.menuActions().first();
    QVERIFY(!lpEntry->isEnabled());
    QVERIFY2(host.connectLink(ZOR_TerminalLink::create(linkText(link))), qPrintable(host.errorString()));
    QVERIFY(lpEntry->isEnabled());
    lpEntry->trigger();
    QVERIFY(host.isForwarding());

    QWidget* lpConsole = nullptr;
    for (QWidget* lpWidget : QApplication::topLevelWidgets()) {
        if (lpWidget->isVisible() && lpWidget->findChild<QLineEdit*>(QStringLiteral("lineEdit_Cmd_Any")))
            lpConsole = lpWidget;
    }
    QVERIFY(lpConsole);
    auto child = [lpConsole](const char* name) { return lpConsole->findChild<QWidget*>(QLatin1String(name)); };
    auto* lpSim1 = qobject_cast<QLineEdit*>(child("lineEdit_IccId_Sim_1"));
    auto* lpSim2 = qobject_cast<QLineEdit*>(child("lineEdit_IccId_Sim_2"));
    auto* lpLog = qobject_cast<QAbstractItemView*>(child("treeWidget"));
    QVERIFY(lpSim1 && lpSim2 && lpLog && lpLog->model());
    const int nFirstRow = lpLog->model()->rowCount(); // the console outlives each test
    for (const char* name : {"checkBox_IccId_Sim_1", "checkBox_IccId_Sim_2", "pushButton_IccId"})
        QTest::mouseClick(child(name), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(lpSim1->text().trimmed(), QString::fromLatin1(ZOR_TerminalSimulator::iccid(1)), 5000);
    QTRY_COMPARE_WITH_TIMEOUT(lpSim2->text().trimmed(), QString::fromLatin1(ZOR_TerminalSimulator::iccid(2)), 5000);

    // The request went out as it stands and the reply is logged as received.
    QStringList rows;
    const QAbstractItemModel* lpModel = lpLog->model();
    for (int nRow = nFirstRow; nRow < lpModel->rowCount(); ++nRow)
        rows << lpModel->index(nRow, 1).data().toString() + QLatin1Char(' ')
                + lpModel->index(nRow, 3).data().toString();
    QVERIFY2(rows.contains(QStringLiteral("OUT *?ICCID.3")), qPrintable(rows.join(QLatin1Char('\n'))));
    QCOMPARE(rows.filter(QStringLiteral("IN *#ICCID.3,")).size(), 1);

    lpConsole->close();
    QTRY_VERIFY(!host.isForwarding());
    host.disconnectLink();
}

void TestHostEndToEnd::languageSwitchRenamesTheEntry()
{
    // The caption the module should show, from the language file it reads.
    auto caption = [](const char* language) {
        QFile file(QStringLiteral(ZOR_BIN_DIR "/Localization/Lang/zor_%1.lang").arg(QLatin1String(language)));
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray& line : file.readAll().split('\n')) {
                if (line.startsWith("mdln_001="))
                    return QString::fromUtf8(line.mid(9)).trimmed();
            }
        }
        return QString();
    };
    ZOR_HostModule host;
    QVERIFY(host.load(QStringLiteral(ZOR_BIN_DIR "/libZOR_Commands.so")));
    QAction* lpEntry = host.menuActions().first();
    const QString qsEnglish = caption("en");
    QVERIFY(!qsEnglish.isEmpty() && qsEnglish != caption("ru"));
    host.setLanguage(QStringLiteral("en"));
    QCOMPARE(lpEntry->text(), qsEnglish);
    host.setLanguage(QStringLiteral("ru"));
    QCOMPARE(lpEntry->text(), caption("ru"));
}

QTEST_MAIN(TestHostEndToEnd)
#include "tst_host_endtoend.moc"
