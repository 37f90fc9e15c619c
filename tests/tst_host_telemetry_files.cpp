// The telemetry window opens archives and field-set files only when they are
// regular files: a FIFO without a writer would block it for good, a device
// never end. Each refusal says why, at once.

#include "zor_tmi_archivemodel.h"
#include "zor_tmi_fieldset.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

class TestHostTelemetryFiles : public QObject
{
    Q_OBJECT
private slots:
    void onlyRegularFilesAreOpened_data();
    void onlyRegularFilesAreOpened();
};

void TestHostTelemetryFiles::onlyRegularFilesAreOpened_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("FIFO without a writer") << QStringLiteral("fifo");
    QTest::newRow("character device") << QStringLiteral("/dev/zero");
    QTest::newRow("folder") << QStringLiteral("dir");
}

void TestHostTelemetryFiles::onlyRegularFilesAreOpened()
{
    QFETCH(QString, kind);
    QTemporaryDir dir;
    QString path = kind;
    if (kind == QLatin1String("fifo")) {
        path = dir.filePath(QStringLiteral("archive.bin"));
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    } else if (kind == QLatin1String("dir")) {
        path = dir.path();
    }
    // A blocked open ends the test here instead of hanging it.
    alarm(20);
    ZOR_TmiArchiveModel model;
    QVERIFY(!model.openFile(path));
    QVERIFY2(model.errorString().contains(QLatin1String("not a regular file"))
            || model.errorString().contains(QLatin1String("folder")),
        qPrintable(model.errorString()));
    ZOR_TmiFieldSet set;
    QString error;
    QVERIFY(!set.readSettingsFile(path, &error));
    QVERIFY2(!error.isEmpty(), "the field set gave no reason");
    alarm(0);
}

QTEST_GUILESS_MAIN(TestHostTelemetryFiles)

#include "tst_host_telemetry_files.moc"
