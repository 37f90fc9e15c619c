// The serial path for real: zor-sim serves the simulated terminal on a
// pseudo-terminal, either its own or one end of a socat pair, and the host
// talks to it through QSerialPort, exactly as it would to a USB adapter.
// The stand-in module plays the module's side.

#include "zor_host_module.h"
#include "zor_terminal_link.h"
#include "zor_terminal_simulator.h"

#include <QLibrary>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

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

class TestHostSerial : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void carriesRequestsAndRepliesThroughAPty_data();
    void carriesRequestsAndRepliesThroughAPty();

private:
    // Starts zor-sim (and socat, for a pair); returns the port for the host.
    QString startTerminal(bool bSocatPair);
    void stop(QProcess& process);

    QLibrary m_fake;
    unsigned long (*fnSend)(int, unsigned long, unsigned long) = nullptr;
    QTemporaryDir m_dir;
    QProcess m_socat;
    QProcess m_sim;
};

void TestHostSerial::initTestCase()
{
    m_fake.setFileName(QStringLiteral(ZOR_BIN_DIR "/libzor_fake_module.so"));
    QVERIFY2(m_fake.load(), qPrintable(m_fake.errorString()));
    fnSend = reinterpret_cast<decltype(fnSend)>(m_fake.resolve("FakeModuleSend"));
    auto fnObserve = reinterpret_cast<void (*)(void (*)(int, unsigned long, unsigned long))>(m_fake.resolve("FakeModuleObserve"));
    QVERIFY(fnSend && fnObserve && m_dir.isValid());
    fnObserve(&observe);
}

void TestHostSerial::stop(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(2000)) {
        process.kill();
        process.waitForFinished(2000);
    }
}

void TestHostSerial::cleanup()
{
    stop(m_sim);
    stop(m_socat);
    received.clear();
}

QString TestHostSerial::startTerminal(bool bSocatPair)
{
    const QString qsSim = QStringLiteral(ZOR_BIN_DIR "/zor-sim");
    if (!bSocatPair) {
        m_sim.start(qsSim, QStringList());
        if (!m_sim.waitForStarted() || !m_sim.waitForReadyRead(3000))
            return QString();
        return QString::fromLocal8Bit(m_sim.readLine()).trimmed();
    }
    const QString qsHostEnd = m_dir.filePath(QStringLiteral("host"));
    const QString qsTermEnd = m_dir.filePath(QStringLiteral("term"));
    QFile::remove(qsHostEnd);
    QFile::remove(qsTermEnd);
    m_socat.start(QStringLiteral("socat"), {QStringLiteral("-d"), QStringLiteral("-d"),
                                            QStringLiteral("pty,raw,echo=0,link=") + qsHostEnd,
                                            QStringLiteral("pty,raw,echo=0,link=") + qsTermEnd});
    if (!m_socat.waitForStarted())
        return QString();
    for (int nWait = 0; nWait < 100 && !(QFile::exists(qsHostEnd) && QFile::exists(qsTermEnd)); ++nWait)
        QTest::qWait(30);
    m_sim.start(qsSim, {qsTermEnd});
    return m_sim.waitForStarted() ? qsHostEnd : QString();
}

void TestHostSerial::carriesRequestsAndRepliesThroughAPty_data()
{
    QTest::addColumn<bool>("socatPair");
    QTest::newRow("zor-sim's own pty") << false;
    QTest::newRow("socat pair") << true;
}

void TestHostSerial::carriesRequestsAndRepliesThroughAPty()
{
    QFETCH(bool, socatPair);
    if (socatPair && QStandardPaths::findExecutable(QStringLiteral("socat")).isEmpty())
        QSKIP("socat is not installed (scripts/deps.sh installs it)");
    const QString qsPort = startTerminal(socatPair);
    QVERIFY2(!qsPort.isEmpty(), "the simulated terminal did not start");

    ZOR_HostModule host;
    QVERIFY(host.load(m_fake.fileName()));
    QVERIFY2(host.connectLink(ZOR_TerminalLink::fromSpec(QStringLiteral("serial:%1:115200").arg(qsPort))),
             qPrintable(host.errorString()));
    fnSend(ZOR_MSG_RECEIVE_START, 0, 0);
    // Sent in two pieces, the way a slow line may deliver it.
    for (QByteArray piece : {QByteArray("*?ICC"), QByteArray("ID 3")}) {
        fnSend(ZOR_MSG_SEND_TO_DEVICE, reinterpret_cast<unsigned long>(&piece), 0);
        QTest::qWait(5);
    }
    const QByteArray expected = "*#ICCID 3," + ZOR_TerminalSimulator::iccid(1) + "," + ZOR_TerminalSimulator::iccid(2) + "\r\n";
    QTRY_COMPARE_WITH_TIMEOUT(receivedBytes(), expected, 5000);
    host.disconnectLink();
}

QTEST_MAIN(TestHostSerial)
#include "tst_host_serial.moc"
