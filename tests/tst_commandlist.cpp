// The console's saved command list: naming of new commands, what reaches
// the user's file, and that default commands stay as shipped.

#include "commands/zor_dialog_commands.h"
#include "module/zor_language.h"
#include "zor_list_sandbox.h"

#include <QSignalSpy>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

namespace {

const QString kCommands = QStringLiteral("/Localization/Temp/commands.xml");
const QString kCommandsUser = QStringLiteral("/Localization/Temp/commands_user.xml");

QList<QStringList> rowsNamed(const QStringList& names)
{
    QList<QStringList> rows;
    for (const QString& name : names)
        rows << QStringList{name, QStringLiteral("*?") + name};
    return rows;
}

// [name, command] pairs of the user's file, in file order.
QList<QStringList> userFile(const ZorListSandbox& sandbox)
{
    return sandbox.records(kCommandsUser, QStringLiteral("COMMAND"), {QStringLiteral("name"), QStringLiteral("cmnd")});
}

} // namespace

class TestCommandList : public QObject
{
    Q_OBJECT

private slots:
    void init() { sandbox.reset(new ZorListSandbox); }
    void cleanup() { sandbox.reset(); }

    void titleCount_data();
    void titleCount();
    void newCommandNameSkipsNamesInUse();
    void listStartsWithTheFreeCommandEntry();
    void newCommandIsWrittenAtOnceWithoutDefaults();
    void updateChangesUserCommandsOnly();
    void editorSaveWritesOnlyUserRows();
    void consoleSaveActions_data();
    void consoleSaveActions();
    void shippedListsAreReadable_data();
    void shippedListsAreReadable();

private:
    std::unique_ptr<ZorListSandbox> sandbox;
};

void TestCommandList::titleCount_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("expected");

    QTest::newRow("no commands") << QStringList{} << 1;
    QTest::newRow("Command1 and Command7") << QStringList{"Command1", "Command7"} << 8;
    QTest::newRow("letter suffix only") << QStringList{"CommandA"} << 1;
    QTest::newRow("stem alone") << QStringList{"Command"} << 1;
    QTest::newRow("leading zeros") << QStringList{"Command007"} << 8;
    QTest::newRow("digits then letters") << QStringList{"Command5x"} << 1;
    QTest::newRow("sign is not a digit") << QStringList{"Command+4", "Command-9"} << 1;
    QTest::newRow("blank before number") << QStringList{"Command 3"} << 1;
    QTest::newRow("other case") << QStringList{"command9"} << 1;
    QTest::newRow("too large for a number") << QStringList{"Command99999999999", "Command2"} << 3;
    QTest::newRow("Command0") << QStringList{"Command0"} << 1;
}

void TestCommandList::titleCount()
{
    QFETCH(QStringList, names);
    QFETCH(int, expected);
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml(rowsNamed(names)));
    ZOR_Dialog_Commands dialog;
    QCOMPARE(dialog.getTitleCount(QStringLiteral("Command")), expected);
}

void TestCommandList::newCommandNameSkipsNamesInUse()
{
    sandbox->write(kCommands, ZorListSandbox::commandsXml(rowsNamed({"Command1"})));
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml(rowsNamed({"Command7"})));
    ZOR_Dialog_Commands dialog;
    QCOMPARE(dialog.getNameNewCommand(), QStringLiteral("Command8"));

    // A row added in the editor but not saved yet already holds its name.
    QMetaObject::invokeMethod(&dialog, "slot_pressed_Btn_Add");
    QTreeWidgetItem* added = dialog.treeWidget()->currentItem();
    QCOMPARE(added->text(1), QStringLiteral("Command8"));
    QCOMPARE(added->text(2), QStringLiteral("CMND"));
    QCOMPARE(dialog.getNameNewCommand(), QStringLiteral("Command9"));
}

void TestCommandList::listStartsWithTheFreeCommandEntry()
{
    const QString free = zorTr("mdln_041");
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml({{"B", "*?B"}, {free, "*?FREE"}}));
    ZOR_Dialog_Commands dialog;
    QStringList list;
    dialog.getListCommandsName(list);
    QCOMPARE(list, (QStringList{free, "B", free}));
    QCOMPARE(dialog.getCommand4Command("*?FREE")->getName(), free);
    QVERIFY(!dialog.getCommand4Name("missing"));
}

void TestCommandList::newCommandIsWrittenAtOnceWithoutDefaults()
{
    sandbox->write(kCommands, ZorListSandbox::commandsXml(rowsNamed({"Version", "IMEI"})));
    ZOR_Dialog_Commands dialog;
    QSignalSpy changed(&dialog, &ZOR_Dialog_Commands::signal_ListCommands_Change);

    QVERIFY(dialog.setNewCommand("Mine", "*!RESET"));

    QCOMPARE(changed.count(), 1);
    QCOMPARE(userFile(*sandbox), (QList<QStringList>{{"Mine", "*!RESET"}}));
    QCOMPARE(dialog.treeWidget()->topLevelItemCount(), 3);
    QVERIFY(!dialog.isUniqueName("Mine"));
    QVERIFY(dialog.getCommand4Name("Version")->isDefault());
    QVERIFY(!dialog.getCommand4Name("Mine")->isDefault());
}

void TestCommandList::updateChangesUserCommandsOnly()
{
    sandbox->write(kCommands, ZorListSandbox::commandsXml({{"Version", "*?VERSION"}}));
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml({{"Mine", "*?OLD"}}));
    ZOR_Dialog_Commands dialog;
    QSignalSpy changed(&dialog, &ZOR_Dialog_Commands::signal_ListCommands_Change);

    QVERIFY(!dialog.updateCommand("Version", "*!CHANGED"));
    QCOMPARE(dialog.getCommand4Name("Version")->getCommand(), QStringLiteral("*?VERSION"));
    QCOMPARE(changed.count(), 0);

    QVERIFY(dialog.updateCommand("Mine", "*?NEW"));
    QVERIFY(dialog.updateCommand("Added", "*?ADDED"));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(userFile(*sandbox), (QList<QStringList>{{"Mine", "*?NEW"}, {"Added", "*?ADDED"}}));
}

void TestCommandList::editorSaveWritesOnlyUserRows()
{
    sandbox->write(kCommands, ZorListSandbox::commandsXml(rowsNamed({"Default"})));
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml(rowsNamed({"Default", "Own"})));
    ZOR_Dialog_Commands dialog;
    QSignalSpy changed(&dialog, &ZOR_Dialog_Commands::signal_ListCommands_Change);
    dialog.treeWidget()->topLevelItem(1)->setText(2, "*?EDITED");

    QMetaObject::invokeMethod(&dialog, "slot_pressed_Btn_Save");

    QCOMPARE(changed.count(), 1);
    QCOMPARE(userFile(*sandbox), (QList<QStringList>{{"Own", "*?EDITED"}}));
    QCOMPARE(dialog.getCommand4Name("Own")->getCommand(), QStringLiteral("*?EDITED"));
}

void TestCommandList::consoleSaveActions_data()
{
    // selected: the saved command chosen in the console ("" = save as).
    // textAnswers: names typed (null = cancel); answers: buttons pressed.
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QStringList>("textAnswers");
    QTest::addColumn<QList<int>>("answers");
    QTest::addColumn<QString>("savedAs");
    QTest::addColumn<QList<QStringList>>("userFile");
    QTest::addColumn<int>("questions");

    const QList<QStringList> untouched{{"Own", "*?OWN"}};
    QTest::newRow("save as: proposed name taken") << "" << QStringList{} << QList<int>{} << "Command1"
                                                  << QList<QStringList>{{"Own", "*?OWN"}, {"Command1", "TEXT"}} << 0;
    QTest::newRow("save as: typed name, blanks trimmed") << "" << QStringList{"  Mine "} << QList<int>{} << "Mine"
                                                         << QList<QStringList>{{"Own", "*?OWN"}, {"Mine", "TEXT"}} << 0;
    QTest::newRow("save as: cancelled") << "" << QStringList{QString()} << QList<int>{} << "" << untouched << 0;
    QTest::newRow("save as: user name confirmed")
        << "" << QStringList{"Own"} << QList<int>{0} << "Own" << QList<QStringList>{{"Own", "TEXT"}} << 1;
    QTest::newRow("save as: user name, box closed")
        << "" << QStringList{"Own"} << QList<int>{-1} << "" << untouched << 1;
    QTest::newRow("save as: default name, give up")
        << "" << QStringList{"Shipped"} << QList<int>{1} << "" << untouched << 1;
    QTest::newRow("save as: default name, choose another")
        << "" << QStringList{"Shipped", "Other"} << QList<int>{0} << "Other"
        << QList<QStringList>{{"Own", "*?OWN"}, {"Other", "TEXT"}} << 1;
    QTest::newRow("save: user command, yes")
        << "Own" << QStringList{} << QList<int>{0} << "Own" << QList<QStringList>{{"Own", "TEXT"}} << 1;
    QTest::newRow("save: user command, no") << "Own" << QStringList{} << QList<int>{1} << "" << untouched << 1;
    QTest::newRow("save: default command turns to save as")
        << "Shipped" << QStringList{"Copy"} << QList<int>{} << "Copy"
        << QList<QStringList>{{"Own", "*?OWN"}, {"Copy", "TEXT"}} << 0;
}

void TestCommandList::consoleSaveActions()
{
    QFETCH(QString, selected);
    QFETCH(QStringList, textAnswers);
    QFETCH(QList<int>, answers);
    QFETCH(QString, savedAs);
    QFETCH(QList<QStringList>, userFile);
    QFETCH(int, questions);
    sandbox->write(kCommands, ZorListSandbox::commandsXml({{"Shipped", "*?SHIPPED"}}));
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml({{"Own", "*?OWN"}}));
    sandbox->textAnswers = textAnswers;
    sandbox->answers = answers;
    ZOR_Dialog_Commands dialog;

    const QString result = selected.isEmpty() ? dialog.saveCommandAs(nullptr, "TEXT")
                                              : dialog.saveCommand(nullptr, selected, "TEXT");

    QCOMPARE(result, savedAs);
    QCOMPARE(::userFile(*sandbox), userFile);
    QCOMPARE(sandbox->asked.size(), questions);
    QVERIFY(sandbox->answers.isEmpty() && sandbox->textAnswers.isEmpty());
    QCOMPARE(dialog.getCommand4Name("Shipped")->getCommand(), QStringLiteral("*?SHIPPED"));
}

void TestCommandList::shippedListsAreReadable_data()
{
    QTest::addColumn<QString>("file");
    for (const char* file : {"commands.xml", "commands_en.xml", "servers.xml", "servers_en.xml", "gsm_operators.xml",
             "gsm_operators_en.xml"})
        QTest::newRow(file) << QString::fromLatin1(file);
}

void TestCommandList::shippedListsAreReadable()
{
    QFETCH(QString, file);
    QFile shipped(QStringLiteral(ZOR_BIN_DIR "/Localization/Temp/") + file);
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&shipped);
    int nRecords = 0;
    QSet<QString> names;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.attributes().hasAttribute("name")) {
            ++nRecords;
            names.insert(reader.attributes().value("name").toString());
        }
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QVERIFY(nRecords > 0);
    QCOMPARE(names.size(), nRecords);
}

QTEST_MAIN(TestCommandList)
#include "tst_commandlist.moc"
