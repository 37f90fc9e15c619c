// Where the module reads its shipped data and writes the user's, and what
// the console does when the command history cannot be kept. The installed
// layouts (a moved tree, a read-only copy run by another user) are checked
// from outside by scripts/check-install.sh.

#include "commands/zor_commandhistory.h"
#include "commands/zor_form_commands.h"
#include "module/zor_commands.h"
#include "module/zor_global.h"
#include "module/zor_language.h"
#include "zor_host_recorder.h"
#include "zor_list_sandbox.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

class TestDataPaths : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();

    void buildTreeKeepsItsLayout();
    void moduleKnowsItsOwnFile();
    void historyFaultsAreToldAndNothingIsOverwritten_data();
    void historyFaultsAreToldAndNothingIsOverwritten();
};

void TestDataPaths::initTestCase()
{
    ZOR_Language::instance().load(QStringLiteral("en"));
    QVERIFY(lpGlobalLib);
    lpGlobalLib->InitConfigurator(&ZOR_HostRecorder::callback);
}

void TestDataPaths::cleanup()
{
    setAppDataDirectory(QString());
}

void TestDataPaths::buildTreeKeepsItsLayout()
{
    // The test runs in the build tree's bin/, beside the shipped data.
    const QString qsBin = QCoreApplication::applicationDirPath();
    QVERIFY(QFileInfo::exists(qsBin + QStringLiteral("/Localization/Lang/zor_ru.lang")));
    QCOMPARE(appSharedDataDirectory(), qsBin);
    if (QFileInfo(qsBin).isWritable())
        QCOMPARE(appUserDataDirectory(), qsBin);
    else
        QVERIFY(appUserDataDirectory().endsWith(QStringLiteral("/zor-commands")));

    QTemporaryDir dir;
    setAppDataDirectory(dir.path());
    QCOMPARE(appSharedDataDirectory(), dir.path());
    QCOMPARE(appUserDataDirectory(), dir.path());
}

void TestDataPaths::moduleKnowsItsOwnFile()
{
    const QFileInfo library(moduleLibraryPath());
    QCOMPARE(library.absolutePath(), QCoreApplication::applicationDirPath());
    QVERIFY2(library.fileName().startsWith(QStringLiteral("libZOR_Commands.so.1")), qPrintable(library.fileName()));
}

void TestDataPaths::historyFaultsAreToldAndNothingIsOverwritten_data()
{
    QTest::addColumn<QString>("blocker"); // sub-path made a folder (or a file) in the way
    QTest::addColumn<bool>("asFolder");
    QTest::addColumn<QString>("told");
    // The history's folder is a file: nothing can be saved.
    QTest::newRow("cannot save") << QStringLiteral("/Localization/Temp") << false
                                 << QStringLiteral("The command history could not be saved to ");
    // The history is there but cannot be read: it is never written over.
    QTest::newRow("cannot read") << QStringLiteral("/Localization/Temp/commands_history.txt") << true
                                 << QStringLiteral("The command history ");
}

void TestDataPaths::historyFaultsAreToldAndNothingIsOverwritten()
{
    QFETCH(QString, blocker);
    QFETCH(bool, asFolder);
    QFETCH(QString, told);
    ZorListSandbox sandbox; // the data folder, and the answers to message boxes
    ZOR_Language::instance().load(QStringLiteral("en"));
    const QString qsBlocker = sandbox.path(blocker);
    if (asFolder)
        QVERIFY(QDir().mkpath(qsBlocker));
    else
        sandbox.write(blocker, "keep");

    ZOR_Form_Commands form;
    form.showForm();
    form.deviceConnect();
    auto* line = form.findChild<QLineEdit*>(QStringLiteral("lineEdit_Cmd_Any"));
    for (const char* command : {"*?V", "*?S"}) {
        line->setText(QLatin1String(command));
        QTest::keyClick(line, Qt::Key_Return);
    }
    QCOMPARE(sandbox.asked.size(), 1); // once, not after every command
    QVERIFY2(sandbox.asked.first().contains(told + QDir::toNativeSeparators(sandbox.path(QString()))),
        qPrintable(sandbox.asked.first()));
    QCOMPARE(QFileInfo(qsBlocker).isDir(), asFolder);
    if (!asFolder)
        QCOMPARE(sandbox.read(blocker), QByteArray("keep"));
    // The commands are still there to walk through in this session.
    QCOMPARE(form.commandHistory()->entries(), QStringList({QStringLiteral("*?V"), QStringLiteral("*?S")}));
}

QTEST_MAIN(TestDataPaths)
#include "tst_data_paths.moc"
