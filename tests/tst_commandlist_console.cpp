// The console and its saved command list together: the combo box, the add
// button, save and save as, and what the combo box shows after the list
// changes.

#include "commands/zor_dialog_commands.h"
#include "commands/zor_form_commands.h"
#include "module/zor_language.h"
#include "zor_list_sandbox.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace {
const QString kCommands = QStringLiteral("/Localization/Temp/commands.xml");
const QString kCommandsUser = QStringLiteral("/Localization/Temp/commands_user.xml");
} // namespace

class TestCommandListConsole : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void savedCommandIsFoundAgainEditedAndKept();
    void freeEntryIsNeverAStoredCommand();
    void listChangeReselectsByName_data();
    void listChangeReselectsByName();
    void typeCommandSelectsByText_data();
    void typeCommandSelectsByText();

private:
    QComboBox* combo() const { return form->findChild<QComboBox*>("comboBox_ListCommands"); }
    QLineEdit* line() const { return form->findChild<QLineEdit*>("lineEdit_Cmd_Any"); }
    QToolButton* add() const { return form->findChild<QToolButton*>("toolButton_ListCommands_Add"); }
    QAction* action(int n) const { return add()->menu()->actions().at(n); }
    QStringList entries() const
    {
        QStringList list;
        for (int i = 0; i < combo()->count(); ++i)
            list << combo()->itemText(i);
        return list;
    }
    QList<QStringList> userFile() const
    {
        return sandbox->records(
            kCommandsUser, QStringLiteral("COMMAND"), {QStringLiteral("name"), QStringLiteral("cmnd")});
    }

    std::unique_ptr<ZorListSandbox> sandbox;
    std::unique_ptr<ZOR_Form_Commands> form;
};

void TestCommandListConsole::init()
{
    sandbox.reset(new ZorListSandbox);
    sandbox->write(kCommands, ZorListSandbox::commandsXml({{"Shipped", "*?SHIPPED"}}));
    form.reset(new ZOR_Form_Commands);
    form->showForm();
}

void TestCommandListConsole::cleanup()
{
    form.reset();
    sandbox.reset();
}

void TestCommandListConsole::savedCommandIsFoundAgainEditedAndKept()
{
    const QString free = zorTr("mdln_041");
    QCOMPARE(entries(), (QStringList{free, "Shipped"}));
    QCOMPARE(action(0)->text(), zorTr("wrd_038"));
    QVERIFY(!action(1)->isEnabled());

    line()->setText("*?MY\\0D");
    QVERIFY(add()->isEnabled());
    sandbox->textAnswers = QStringList{"Mine"};
    action(0)->trigger(); // save with the free entry: asks for a name
    QCOMPARE(sandbox->askedText, QStringList{zorTr("mdln_043") + "|" + zorTr("mdln_044") + ":|Command1"});
    QCOMPARE(entries(), (QStringList{free, "Shipped", "Mine"}));
    QCOMPARE(combo()->currentText(), QStringLiteral("Mine"));
    QCOMPARE(line()->text(), QStringLiteral("*?MY\\0D"));
    QVERIFY(!add()->isEnabled());
    QCOMPARE(userFile(), (QList<QStringList>{{"Mine", "*?MY\\0D"}}));

    combo()->setCurrentIndex(0);
    QCOMPARE(line()->text(), QString());
    combo()->setCurrentText("Mine");
    QCOMPARE(line()->text(), QStringLiteral("*?MY\\0D"));
    QCOMPARE(action(0)->text(), zorTr("wrd_039"));
    QVERIFY(action(1)->isEnabled());
    QVERIFY(!add()->isEnabled());

    line()->setText("*?MY2");
    QVERIFY(add()->isEnabled());
    line()->setText("*?MY\\0D");
    QVERIFY(!add()->isEnabled());
    line()->setText("*?EDITED \"&<>\" Ё");
    sandbox->answers = {0};
    action(0)->trigger(); // save over the selected command, after a yes
    QCOMPARE(sandbox->asked.size(), 1);
    QCOMPARE(combo()->currentText(), QStringLiteral("Mine"));
    QCOMPARE(line()->text(), QStringLiteral("*?EDITED \"&<>\" Ё"));
    QCOMPARE(userFile(), (QList<QStringList>{{"Mine", "*?EDITED \"&<>\" Ё"}}));

    // The next start of the console finds it again.
    form.reset(new ZOR_Form_Commands);
    combo()->setCurrentText("Mine");
    QCOMPARE(line()->text(), QStringLiteral("*?EDITED \"&<>\" Ё"));
}

void TestCommandListConsole::freeEntryIsNeverAStoredCommand()
{
    const QString free = zorTr("mdln_041");
    sandbox->write(kCommandsUser, ZorListSandbox::commandsXml({{free, "*?STORED"}}));
    form.reset(new ZOR_Form_Commands);
    QCOMPARE(entries(), (QStringList{free, "Shipped", free}));

    combo()->setCurrentIndex(2);
    QCOMPARE(line()->text(), QStringLiteral("*?STORED"));
    combo()->setCurrentIndex(0);
    QCOMPARE(line()->text(), QString());
    QVERIFY(!action(1)->isEnabled());

    // Reselection after a change picks entry 0 for that text, never the stored one.
    line()->setText(free);
    form->dialogCommands()->setNewCommand("Other", "*?OTHER");
    QCOMPARE(combo()->currentIndex(), 0);
    QCOMPARE(line()->text(), QString());
}

void TestCommandListConsole::listChangeReselectsByName_data()
{
    QTest::addColumn<QString>("lineText");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("lineAfter");

    QTest::newRow("line equals a name") << "Shipped"
                                        << "Shipped"
                                        << "*?SHIPPED";
    QTest::newRow("line equals a command text only") << "*?SHIPPED" << zorTr("mdln_041") << "";
    QTest::newRow("line empty") << "" << zorTr("mdln_041") << "";
}

void TestCommandListConsole::listChangeReselectsByName()
{
    QFETCH(QString, lineText);
    QFETCH(QString, selected);
    QFETCH(QString, lineAfter);
    line()->setText(lineText);

    form->dialogCommands()->setNewCommand("New", "*?NEW");

    QCOMPARE(combo()->currentText(), selected);
    QCOMPARE(line()->text(), lineAfter);
    QVERIFY(entries().contains("New"));
}

void TestCommandListConsole::typeCommandSelectsByText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("lineAfter");

    QTest::newRow("known text") << "*?SHIPPED"
                                << "Shipped"
                                << "*?SHIPPED";
    QTest::newRow("unknown text") << "*?NONE" << zorTr("mdln_041") << "*?NONE";
    QTest::newRow("a name is not a text") << "Shipped" << zorTr("mdln_041") << "Shipped";
}

void TestCommandListConsole::typeCommandSelectsByText()
{
    QFETCH(QString, text);
    QFETCH(QString, selected);
    QFETCH(QString, lineAfter);
    form->setTypeCommandType(text);
    QCOMPARE(combo()->currentText(), selected);
    QCOMPARE(line()->text(), lineAfter);
}

QTEST_MAIN(TestCommandListConsole)
#include "tst_commandlist_console.moc"
