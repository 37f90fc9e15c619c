// The exchange log: files compared byte for byte with expected files, and
// the command-word lookup.

#include "log/zor_logbinfile.h"
#include "protocol/commonfunctions.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

class TestLogBinFile : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();
    void writesTheExpectedFile_data();
    void writesTheExpectedFile();
    void constructorEmptiesAnExistingFile();
    void unwritableFileIsIgnored();
    void longestCommandWordWins_data();
    void longestCommandWordWins();
};

void TestLogBinFile::cleanup()
{
    QTextCodec::setCodecForLocale(nullptr);
}

void TestLogBinFile::writesTheExpectedFile_data()
{
    // Steps: "w:TEXT" / "r:TEXT" log a sent / received frame of TEXT,
    // "b:HEX" a sent raw block, "s:TEXT" a text entry.
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QString>("expected");
    const QByteArray cp1251("Windows-1251");
    QTest::newRow("sent *?V") << cp1251 << QStringList{"w:*?V"} << "sent_v.log";
    QTest::newRow("no known word: all data in hex") << cp1251 << QStringList{"w:HELLO"} << "no_word.log";
    QTest::newRow("word of the full 12-byte window")
        << cp1251 << QStringList{QStringLiteral("r:*!SETT_RESET\u0410\u0001")} << "long_data.log";
    QTest::newRow("16-byte block drops later entries")
        << cp1251 << QStringList{"w:", "s:later", "w:*?V"} << "short_block.log";
    QTest::newRow("block shorter than a header: zeros, no read past it")
        << cp1251 << QStringList{"b:2a3f56", "s:later"} << "tiny_block.log";
    QTest::newRow("text entries") << cp1251 << QStringList{QStringLiteral("s:Связь установлена"), "s:second"}
                                  << "text_entries.log";
    QTest::newRow("multi-byte locale cuts texts by character count")
        << QByteArray("UTF-8") << QStringList{"r:*?V", QStringLiteral("s:Тест")} << "utf8_count_rule.log";
}

void TestLogBinFile::writesTheExpectedFile()
{
    QFETCH(QByteArray, codec);
    QFETCH(QStringList, steps);
    QFETCH(QString, expected);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(codec));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("exchange.log"));
    {
        ZOR_LogBinFile log(path);
        log.setClock([] { return QDateTime(QDate(2026, 11, 23), QTime(7, 30, 0, 123)); });
        bool leftOpen = false;
        for (const QString& step : steps) {
            const QString arg = step.mid(2);
            if (leftOpen)
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression("already open"));
            if (step.startsWith(QLatin1String("s:"))) {
                log.setLogStr(arg);
                continue;
            }
            const bool raw = step.startsWith(QLatin1String("b:"));
            QByteArray frame = raw ? QByteArray::fromHex(arg.toLatin1()) : commonFunctions().getUsbCommandToDevice(arg);
            // A block of 16 bytes or less (a header alone, say) leaves the file open.
            leftOpen = leftOpen || frame.size() <= 16;
            log.setLogBuf(
                step.startsWith(QLatin1String("r:")), reinterpret_cast<unsigned char*>(frame.data()), frame.size());
        }
    }
    QFile actual(path);
    QVERIFY(actual.open(QIODevice::ReadOnly));
    QFile wanted(QStringLiteral(ZOR_TEST_DATA_DIR "/log/") + expected);
    QVERIFY(wanted.open(QIODevice::ReadOnly));
    QCOMPARE(actual.readAll(), wanted.readAll());
}

void TestLogBinFile::constructorEmptiesAnExistingFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("old.log"));
    QFile old(path);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("left from yesterday");
    old.close();
    ZOR_LogBinFile log(path);
    QCOMPARE(QFileInfo(path).size(), qint64(0));
}

void TestLogBinFile::unwritableFileIsIgnored()
{
    QTemporaryDir dir;
    ZOR_LogBinFile log(dir.filePath(QStringLiteral("no/such/dir/x.log")));
    log.setLogStr(QStringLiteral("nowhere"));
    QByteArray frame = commonFunctions().getUsbCommand_DeviceType();
    log.setLogBuf(false, reinterpret_cast<unsigned char*>(frame.data()), frame.size());
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("no/such/dir/x.log"))));
}

void TestLogBinFile::longestCommandWordWins_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::newRow("UPRI with digits, not UPR") << "UPRI1234" << 4;
    QTest::newRow("exactly UPA") << "UPA" << 3;
    QTest::newRow("*?FUEL_UN, not *?FUEL") << "*?FUEL_UN 5" << 9;
    QTest::newRow("*?V followed by text") << "*?VERSION" << 3;
    QTest::newRow("case matters") << "*?fuel" << 0;
    QTest::newRow("shorter than any word") << "*?" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestLogBinFile::longestCommandWordWins()
{
    QFETCH(QString, text);
    QFETCH(int, length);
    QCOMPARE(ZOR_LogBinFile::getLenCommand(text), length);
}

QTEST_GUILESS_MAIN(TestLogBinFile)
#include "tst_logbinfile.moc"
