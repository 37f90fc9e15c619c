// The generic list editor through its two plain users, the GSM operator and
// the server lists: which file is read, how default and user records meet,
// what is written back, and what happens to a user file that is broken.

#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/zor_dialog_gsm_operators.h"
#include "store/zor_dialog_servers.h"
#include "zor_list_sandbox.h"

#include <QApplication>
#include <QTreeWidget>
#include <QtTest>

#include <memory>

namespace {

const QString kServers = QStringLiteral("/Localization/Temp/servers.xml");
const QString kServersUser = QStringLiteral("/Localization/Temp/servers_user.xml");
const QString kServersEn = QStringLiteral("/Localization/Temp/servers_en.xml");
const QString kOperators = QStringLiteral("/Localization/Temp/gsm_operators.xml");
const QString kOperatorsUser = QStringLiteral("/Localization/Temp/gsm_operators_user.xml");

QByteArray serversXml(const QList<QStringList>& rows)
{
    return ZorListSandbox::listXml(QStringLiteral("SERVERS"), QStringLiteral("SERVER"),
        {QStringLiteral("name"), QStringLiteral("ip"), QStringLiteral("port")}, rows);
}

QByteArray operatorsXml(const QList<QStringList>& rows)
{
    return ZorListSandbox::listXml(QStringLiteral("GSM_OPERATORS"), QStringLiteral("GSM_OPERATOR"),
        {QStringLiteral("name"), QStringLiteral("login"), QStringLiteral("password"), QStringLiteral("apn")}, rows);
}

QList<QStringList> serverRows(const QStringList& names)
{
    QList<QStringList> rows;
    for (const QString& name : names)
        rows << QStringList{name, name.toLower() + QStringLiteral(".example.ru"), QStringLiteral("5000")};
    return rows;
}

QStringList names(const ZOR_Dialog_Servers& dialog)
{
    QStringList list;
    dialog.getListServers(list);
    return list;
}

QStringList column(QTreeWidget* tree, int nColumn)
{
    QStringList list;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        list << tree->topLevelItem(i)->text(nColumn);
    return list;
}

QStringList userServerNames(const ZorListSandbox& sandbox)
{
    QStringList list;
    for (const QStringList& row : sandbox.records(kServersUser, QStringLiteral("SERVER"), {QStringLiteral("name")}))
        list << row.first();
    return list;
}

} // namespace

class TestLists : public QObject
{
    Q_OBJECT

private slots:
    void init() { sandbox.reset(new ZorListSandbox); }
    void cleanup()
    {
        sandbox.reset();
        setProgramLanguage(QString());
    }

    void readsDefaultThenUserWithoutDuplicates_data();
    void readsDefaultThenUserWithoutDuplicates();
    void defaultRowsAreMarkedAndNeverWritten();
    void moveSelectedItem_data();
    void moveSelectedItem();
    void chosesDefaultFileByLanguage_data();
    void chosesDefaultFileByLanguage();
    void rereadsWhenLanguageChanges();
    void roundTripsAwkwardText_data();
    void roundTripsAwkwardText();
    void readsMissingAttributesAsEmptyAndIgnoresUnknown();
    void keepsBrokenUserFileBeforeWritingOverIt_data();
    void keepsBrokenUserFileBeforeWritingOverIt();
    void hugeUserFileIsMovedAside();
    void unreadableFileThatCannotBeKeptIsNotOverwritten();
    void duplicateNamesBlockTheSave();
    void failedWriteIsTold();
    void closingWithoutSavingDropsEdits();
    void deleteAsksAndSparesDefaultRows();
    void addServerProposesUniqueCurrentServer();
    void movedPresetPortIsCorrectedOnRead();
    void findsServerByHostAndOperatorByFields();

private:
    std::unique_ptr<ZorListSandbox> sandbox;
};

void TestLists::readsDefaultThenUserWithoutDuplicates_data()
{
    QTest::addColumn<QStringList>("defaults");
    QTest::addColumn<QStringList>("users");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("defaultCount");

    QTest::newRow("user duplicate of a default disappears")
        << QStringList{"A", "B"} << QStringList{"B", "C"} << QStringList{"A", "B", "C"} << 2;
    QTest::newRow("user duplicate of a user record disappears")
        << QStringList{} << QStringList{"C", "D", "C"} << QStringList{"C", "D"} << 0;
    QTest::newRow("no user file") << QStringList{"A"} << QStringList{} << QStringList{"A"} << 1;
    QTest::newRow("a repeated default record stays")
        << QStringList{"A", "A"} << QStringList{"A", "B"} << QStringList{"A", "A", "B"} << 2;
    QTest::newRow("no default file") << QStringList{} << QStringList{"C"} << QStringList{"C"} << 0;
    QTest::newRow("names differ only in case") << QStringList{"a"} << QStringList{"A"} << QStringList{"a", "A"} << 1;
}

void TestLists::readsDefaultThenUserWithoutDuplicates()
{
    QFETCH(QStringList, defaults);
    QFETCH(QStringList, users);
    QFETCH(QStringList, expected);
    QFETCH(int, defaultCount);
    if (!defaults.isEmpty())
        sandbox->write(kServers, serversXml(serverRows(defaults)));
    if (!users.isEmpty())
        sandbox->write(kServersUser, serversXml(serverRows(users)));

    ZOR_Dialog_Servers dialog;
    QCOMPARE(names(dialog), expected);
    QCOMPARE(column(dialog.treeWidget(), 1), expected);
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(dialog.isDefaultItem(dialog.treeWidget()->topLevelItem(i)), i < defaultCount);
}

void TestLists::defaultRowsAreMarkedAndNeverWritten()
{
    sandbox->write(kServers, serversXml(serverRows({"A", "B"})));
    sandbox->write(kServersUser, serversXml(serverRows({"C"})));
    ZOR_Dialog_Servers dialog;
    QSignalSpy changed(&dialog, &ZOR_Dialog_XmlList::signal_List_Change);

    dialog.addServer(QStringLiteral("host.example.ru"), 7000);
    QVERIFY(dialog.writeFile());

    QCOMPARE(userServerNames(*sandbox), (QStringList{"C", "Current Server"}));
    QCOMPARE(names(dialog), (QStringList{"A", "B", "C", "Current Server"}));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(sandbox->read(kServers), serversXml(serverRows({"A", "B"})));
}

void TestLists::moveSelectedItem_data()
{
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("direction");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("first row up stays") << 0 << -1 << QStringList{"A", "B", "C"};
    QTest::newRow("last row down stays") << 2 << 1 << QStringList{"A", "B", "C"};
    QTest::newRow("middle row up") << 1 << -1 << QStringList{"B", "A", "C"};
    QTest::newRow("middle row down") << 1 << 1 << QStringList{"A", "C", "B"};
    QTest::newRow("nothing selected") << -1 << 1 << QStringList{"A", "B", "C"};
}

void TestLists::moveSelectedItem()
{
    QFETCH(int, selected);
    QFETCH(int, direction);
    QFETCH(QStringList, expected);
    sandbox->write(kServersUser, serversXml(serverRows({"A", "B", "C"})));
    ZOR_Dialog_Servers dialog;
    QTreeWidget* tree = dialog.treeWidget();
    tree->setCurrentItem(selected < 0 ? nullptr : tree->topLevelItem(selected));

    dialog.moveSelectedItem(direction);

    QCOMPARE(column(tree, 1), expected);
    QCOMPARE(column(tree, 0), (QStringList{"1", "2", "3"}));
    QVERIFY(dialog.writeFile());
    QCOMPARE(userServerNames(*sandbox), expected);
}

void TestLists::chosesDefaultFileByLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("englishFileExists");
    QTest::addColumn<QString>("expectedSubPath");

    QTest::newRow("en with its file") << "en" << true << kServersEn;
    QTest::newRow("en without its file") << "en" << false << kServers;
    QTest::newRow("ru never looks for _ru") << "ru" << true << kServers;
    QTest::newRow("empty language") << "" << true << kServers;
    QTest::newRow("RU is not ru") << "RU" << false << kServers;
}

void TestLists::chosesDefaultFileByLanguage()
{
    QFETCH(QString, language);
    QFETCH(bool, englishFileExists);
    QFETCH(QString, expectedSubPath);
    if (englishFileExists)
        sandbox->write(kServersEn, serversXml(serverRows({"English"})));
    sandbox->write("/Localization/Temp/servers_ru.xml", serversXml(serverRows({"Russian"})));
    setProgramLanguage(language);

    ZOR_Dialog_Servers dialog;
    QCOMPARE(dialog.defaultFilePath(), sandbox->path(expectedSubPath));
    QCOMPARE(dialog.userFilePath(), sandbox->path(kServersUser));
}

void TestLists::rereadsWhenLanguageChanges()
{
    sandbox->write(kServers, serversXml(serverRows({"Сервер"})));
    sandbox->write(kServersEn, serversXml(serverRows({"Server"})));
    ZOR_Dialog_Servers dialog;
    QSignalSpy changed(&dialog, &ZOR_Dialog_XmlList::signal_List_Change);

    dialog.reloadIfLanguageChanged();
    QCOMPARE(changed.count(), 0);
    setProgramLanguage(QStringLiteral("en"));
    dialog.reloadIfLanguageChanged();

    QCOMPARE(names(dialog), QStringList{"Server"});
    QCOMPARE(changed.count(), 1);
}

void TestLists::roundTripsAwkwardText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << QStringLiteral("say \"hi\" 'there'");
    QTest::newRow("ampersand") << QStringLiteral("AT&T &amp;");
    QTest::newRow("angle brackets") << QStringLiteral("<GSM_OPERATOR name=\"x\"/>");
    QTest::newRow("cyrillic") << QStringLiteral("МегаФон Москва ёЁ");
    QTest::newRow("blanks kept") << QStringLiteral("  two  blanks ");
    QTest::newRow("line break and tab") << QStringLiteral("one\ntwo\tthree");
    QTest::newRow("backslash escapes") << QStringLiteral("*?USSD:*100#\\0D\\0A");
}

void TestLists::roundTripsAwkwardText()
{
    QFETCH(QString, text);
    {
        sandbox->write(kOperatorsUser, operatorsXml({{"X", "l", "p", "a"}}));
        ZOR_Dialog_GSM_Operators dialog;
        QTreeWidgetItem* item = dialog.treeWidget()->topLevelItem(0);
        for (int i = 1; i <= 4; ++i)
            item->setText(i, text + QString::number(i));
        QVERIFY(dialog.writeFile());
    }
    ZOR_Dialog_GSM_Operators reread;
    QCOMPARE(reread.records().size(), 1);
    QCOMPARE(reread.records().first(), (QStringList{text + "1", text + "2", text + "3", text + "4"}));
}

void TestLists::readsMissingAttributesAsEmptyAndIgnoresUnknown()
{
    sandbox->write(kOperatorsUser,
        "<?xml version=\"1.0\"?>\n<GSM_OPERATORS version=\"7\">\n"
        "  <COMMENT text=\"not a record\"/>\n"
        "  <GSM_OPERATOR name=\"Only name\" colour=\"red\"/>\n"
        "  <GSM_OPERATOR apn=\"apn.only\"><CHILD/></GSM_OPERATOR>\n"
        "</GSM_OPERATORS>\n");
    ZOR_Dialog_GSM_Operators dialog;
    QCOMPARE(dialog.records(), (QVector<QStringList>{{"Only name", "", "", ""}, {"", "", "", "apn.only"}}));
    QVERIFY(sandbox->asked.isEmpty());
}

void TestLists::keepsBrokenUserFileBeforeWritingOverIt_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("readable");

    QTest::newRow("cut off mid record") << QByteArray(
        "<?xml version=\"1.0\"?><SERVERS><SERVER name=\"Kept\" ip=\"h\" port=\"1\"/>"
        "<SERVER name=\"Cut") << QStringList{"Kept"};
    QTest::newRow("not xml at all") << QByteArray("\x01\x02garbage\xff") << QStringList{};
    QTest::newRow("two roots") << QByteArray("<SERVERS/><SERVERS><SERVER name=\"Second\"/></SERVERS>") << QStringList{};
    QTest::newRow("another kind of list")
        << QByteArray("<?xml version=\"1.0\"?><GSM_OPERATORS><GSM_OPERATOR name=\"MTS\"/></GSM_OPERATORS>")
        << QStringList{};
    QTest::newRow("records of another kind")
        << QByteArray("<SERVERS><COMMAND name=\"Ping\" cmnd=\"*?PING\"/></SERVERS>") << QStringList{};
    QByteArray huge("<SERVERS><SERVER name=\"Big\" ip=\"h\" port=\"1\"/>");
    huge += QByteArray(int(ZOR_Dialog_XmlList::nMaxFileBytes), ' ') + "</SERVERS>";
    QTest::newRow("larger than a list may be") << huge << QStringList{};
}

void TestLists::keepsBrokenUserFileBeforeWritingOverIt()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, readable);
    sandbox->write(kServersUser, content);
    ZOR_Dialog_Servers dialog;
    QCOMPARE(names(dialog), readable);
    QVERIFY(sandbox->asked.isEmpty());

    dialog.addServer(QStringLiteral("a.example.ru"), 1);
    QVERIFY(dialog.writeFile());
    QCOMPARE(sandbox->read(kServersUser + ".bad"), content);
    QCOMPARE(sandbox->asked.size(), 1);
    QVERIFY(sandbox->asked.first().contains(kServersUser + ".bad"));
    QCOMPARE(userServerNames(*sandbox), readable + QStringList{"Current Server"});

    // Once written anew the file is sound: no second copy, no second message.
    dialog.addServer(QStringLiteral("b.example.ru"), 2);
    QVERIFY(dialog.writeFile());
    QCOMPARE(sandbox->asked.size(), 1);
    QVERIFY(!sandbox->exists(kServersUser + ".bad2"));
    QCOMPARE(sandbox->read(kServersUser + ".bad"), content);
}

void TestLists::hugeUserFileIsMovedAside()
{
    sandbox->write(kServersUser, "<SERVERS><SERVER name=\"Big\" ip=\"h\" port=\"1\"/>");
    const qint64 size = qint64(3) << 30;
    QVERIFY(QFile::resize(sandbox->path(kServersUser), size)); // sparse: costs no disk
    ZOR_Dialog_Servers dialog;
    QCOMPARE(names(dialog), QStringList());
    dialog.addServer(QStringLiteral("a.example.ru"), 1);
    QVERIFY(dialog.writeFile());
    QCOMPARE(QFileInfo(sandbox->path(kServersUser + ".bad")).size(), size);
    QCOMPARE(sandbox->asked.size(), 1);
    QCOMPARE(userServerNames(*sandbox), QStringList{"Current Server"});
}

// A folder where the list file should be: it cannot be read, nor copied
// aside, so nothing is written and the user is told why.
void TestLists::unreadableFileThatCannotBeKeptIsNotOverwritten()
{
    QVERIFY(QDir().mkpath(sandbox->path(kServersUser)));
    ZOR_Dialog_Servers dialog;
    QCOMPARE(names(dialog), QStringList());
    dialog.addServer(QStringLiteral("a.example.ru"), 1);
    QVERIFY(!dialog.writeFile());
    QCOMPARE(sandbox->asked.size(), 1);
    QVERIFY(sandbox->asked.first().endsWith(zorTr("lst_009").arg(sandbox->path(kServersUser))));
    QVERIFY(QFileInfo(sandbox->path(kServersUser)).isDir());
    QVERIFY(!sandbox->exists(kServersUser + ".bad"));
}

void TestLists::duplicateNamesBlockTheSave()
{
    const QByteArray original = serversXml(serverRows({"A", "B", "C"}));
    sandbox->write(kServersUser, original);
    ZOR_Dialog_Servers dialog;
    dialog.treeWidget()->topLevelItem(2)->setText(1, QStringLiteral("A"));

    QVERIFY(!dialog.writeFile());
    QCOMPARE(sandbox->asked.size(), 1);
    QCOMPARE(sandbox->asked.first(), zorTr("wrd_005") + "!|" + zorTr("cfgt1_198") + " (A)");
    QCOMPARE(sandbox->read(kServersUser), original);
}

void TestLists::failedWriteIsTold()
{
    sandbox->write("/Localization/Temp", "a file where the folder should be");
    ZOR_Dialog_Servers dialog;
    dialog.addServer(QStringLiteral("h"), 1);

    QVERIFY(!dialog.writeFile());
    QCOMPARE(sandbox->asked.size(), 1);
    QVERIFY(sandbox->asked.first().contains(sandbox->path(kServersUser)));
    QCOMPARE(sandbox->read("/Localization/Temp"), QByteArray("a file where the folder should be"));
    QCOMPARE(dialog.treeWidget()->topLevelItemCount(), 1);
}

void TestLists::closingWithoutSavingDropsEdits()
{
    sandbox->write(kServersUser, serversXml(serverRows({"A"})));
    ZOR_Dialog_Servers dialog;
    dialog.addServer(QStringLiteral("h"), 1);
    dialog.treeWidget()->topLevelItem(0)->setText(1, QStringLiteral("Edited"));

    dialog.reject();

    QCOMPARE(column(dialog.treeWidget(), 1), QStringList{"A"});
    QCOMPARE(userServerNames(*sandbox), QStringList{"A"});
}

void TestLists::deleteAsksAndSparesDefaultRows()
{
    sandbox->write(kServers, serversXml(serverRows({"A"})));
    sandbox->write(kServersUser, serversXml(serverRows({"B"})));
    ZOR_Dialog_Servers dialog;
    QTreeWidget* tree = dialog.treeWidget();
    const auto pressDelete = [&] { QMetaObject::invokeMethod(&dialog, "slot_pressed_Btn_Del"); };

    tree->setCurrentItem(tree->topLevelItem(0));
    pressDelete();
    QCOMPARE(column(tree, 1), (QStringList{"A", "B"}));
    QVERIFY(sandbox->asked.isEmpty());

    tree->setCurrentItem(tree->topLevelItem(1));
    sandbox->answers = {1};
    pressDelete();
    QCOMPARE(column(tree, 1), (QStringList{"A", "B"}));
    QCOMPARE(sandbox->asked, QStringList{zorTr("wrd_005") + "!|" + zorTr("cfgt1_163")});

    sandbox->answers = {0};
    pressDelete();
    QCOMPARE(column(tree, 1), QStringList{"A"});
}

void TestLists::addServerProposesUniqueCurrentServer()
{
    ZOR_Dialog_Servers dialog;
    dialog.addServer(QStringLiteral("  host.example.ru \t"), 20332);
    dialog.addServer(QStringLiteral("other  host"), 1);
    QTreeWidget* tree = dialog.treeWidget();

    QCOMPARE(column(tree, 1), (QStringList{"Current Server", "Current Server 2"}));
    QCOMPARE(column(tree, 2), (QStringList{"host.example.ru", "other host"}));
    QCOMPARE(column(tree, 3), (QStringList{"20332", "1"}));
    QCOMPARE(tree->currentItem(), tree->topLevelItem(1));
    QVERIFY(dialog.isVisible());
    dialog.hide();
}

void TestLists::movedPresetPortIsCorrectedOnRead()
{
    sandbox->write(kServersUser,
        serversXml({{"ZOR Online", "srv.zor-online.ru", "30004"}, {"Other", "srv.zor-online.ru", "30004"},
            {"Mine", "my.example.ru", "30004"}}));
    ZOR_Dialog_Servers dialog;
    QCOMPARE(dialog.getServer4Name("ZOR Online")->getPort(), 30003);
    QCOMPARE(dialog.getServer4Name("Other")->getPort(), 30004);
    QCOMPARE(dialog.getServer4Name("Mine")->getPort(), 30004);
}

void TestLists::findsServerByHostAndOperatorByFields()
{
    sandbox->write(kServersUser,
        serversXml({{"A", "Host.Example.RU", "1"}, {"B", "host.example.ru", "2"}, {"C", "x", "not a port"}}));
    sandbox->write(
        kOperators, operatorsXml({{"MTS", "mts", "mts", "internet.mts.ru"}, {"Tele2", "", "", "internet.tele2.ru"}}));
    ZOR_Dialog_Servers servers;
    ZOR_Dialog_GSM_Operators operators;

    QCOMPARE(servers.getServer4DNS("host.example.ru", 2)->getName(), QStringLiteral("B"));
    QCOMPARE(servers.getServer4DNS(" HOST.example.ru", 1)->getName(), QStringLiteral("A"));
    QVERIFY(!servers.getServer4DNS("host.example.ru", 3));
    QCOMPARE(servers.getServer4Name("C")->getPort(), 0);
    QVERIFY(!servers.getServer4Name("D"));

    QCOMPARE(operators.getFirstByFields("internet.tele2.ru", "", "").value(0), QStringLiteral("Tele2"));
    QVERIFY(operators.getFirstByFields("internet.tele2.ru", "mts", "").isEmpty());
    QCOMPARE(operators.getFirstByName("MTS").value(3), QStringLiteral("internet.mts.ru"));
    QStringList list;
    operators.getDataList(list);
    QCOMPARE(list, (QStringList{"MTS", "Tele2"}));
}

QTEST_MAIN(TestLists)
#include "tst_lists.moc"
