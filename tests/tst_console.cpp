// The commands console offscreen: what it sends for each control, how it
// logs, how it reads ICCID replies, and the rules of its check boxes.
// Captions show as their keys (pseudo-language "keys").

#include "commands/zor_commandhistory.h"
#include "commands/zor_dialog_commands.h"
#include "commands/zor_form_commands.h"
#include "commands/zor_consolelogfile.h"
#include "commands/zor_model_log.h"
#include "commands/zor_widget_log.h"
#include "store/zor_dialog_xmllist.h"
#include "module/zor_global.h"
#include "module/zor_commands.h"
#include "module/zor_language.h"
#include "zor_host_recorder.h"

#include <QCheckBox>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QComboBox>
#include <QDateTime>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QAbstractItemModelTester>
#include <QLabel>
#include <QProcess>
#include <QTableView>
#include <QTreeWidget>
#include <QToolButton>
#include <QtTest>

#include <memory>

class TestConsole : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void freeCommandIsLoggedAndSentAsBuilt();
    void printableForm_data();
    void printableForm();
    void fixedCommands_data();
    void fixedCommands();
    void unknownDialectSendsNothing();
    void iccIdReplies_data();
    void iccIdReplies();
    void iccIdCheckBoxes_data();
    void iccIdCheckBoxes();
    void logRowColumns_data();
    void logRowColumns();
    void logHasItsHeadersWidthsAndFont();
    void longCellsAreShortenedOnlyOnScreen();
    void manyLargeBlocksAreShown();
    void detailsShowTheWholeRowAndAHexDump();
    void logFollowsOnlyFromTheBottom();
    void copiesRowsAsTabSeparatedText();
    void savedLogReadsBack();
    void findsAndFiltersRows();
    void receivedRowsKnowTheirReplyTime();
    void clearEmptiesTheLog();
    void logKeepsTheNewestRowsWithinItsCap_data();
    void logKeepsTheNewestRowsWithinItsCap();
    void readerKeepsThePlaceWhenOldRowsDrop();
    void connectAndDisconnectRows();
    void showingResetsTheFormAndAsksTheHost();
    void closingStopsForwarding();
    void ravelLayoutInMode5();
    void enterSendsOnce_data();
    void enterSendsOnce();
    void escapeInTheLineDoesNotClose();
    void historyWalksSentCommands();
    void historyOutlivesTheConsole();
    void logChoicesOutliveTheConsole();
    void eachEnterSendsWhatWasTypedSinceTheLast();
    void languageSwitchTranslatesTheLogAndKeepsTheLine();
    void repeatSendsTheAskedCount_data();
    void repeatSendsTheAskedCount();
    void sendingWithoutTerminalSaysNotSent();
    void clearCanBeUndone();
    void findCountsWrapsAndKeepsTheSelection();
    void rowsShowDirectionColoursAndMilliseconds();
    void continuousLogIsReadBackByZorTool();
    void resetCommandsAskFirstAndMacrosSend();
    void tabInTheListEditorGoesToTheCommand();

private:
    void openFindOverPingRows(QTableView*& view);
    template <typename T>
    T* child(const char* name)
    {
        T* widget = form->findChild<T*>(QLatin1String(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QString lastLogText(int column) const
    {
        const ZOR_Model_Log* log = form->logModel();
        return log->text(log->rowCount() - 1, column);
    }
    void setIccIdResults(const QString& sim1, const QString& sim2);
    // The console in a real language, as the host switches it (2031).
    void useLanguage(const char* language)
    {
        const QString name = QStringLiteral("/Localization/Lang/zor_%1.lang").arg(QLatin1String(language));
        QDir().mkpath(dataDir.path() + QStringLiteral("/Localization/Lang"));
        QFile::copy(QStringLiteral(ZOR_BIN_DIR) + name, dataDir.path() + name);
        setProgramLanguage(QLatin1String(language));
        ZOR_Language::instance().load(QLatin1String(language));
        form->translateForm();
    }

    void typeAndEnter(const QString& text)
    {
        auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
        line->clear();
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
    }

    ZOR_HostRecorder& host = ZOR_HostRecorder::instance();
    std::unique_ptr<ZOR_Form_Commands> form;
    // Application data (the history file) out of the build tree.
    QTemporaryDir dataDir;
};

void TestConsole::initTestCase()
{
    QVERIFY(dataDir.isValid());
    setAppDataDirectory(dataDir.path());
    ZOR_Language::instance().load(QStringLiteral("keys"));
    QVERIFY(lpGlobalLib);
    lpGlobalLib->InitConfigurator(&ZOR_HostRecorder::callback);
}

void TestConsole::init()
{
    setProgramLanguage(QString());
    ZOR_Language::instance().load(QStringLiteral("keys"));
    QFile::remove(ZOR_CommandHistory::defaultPath());
    QFile::remove(ZOR_Widget_Log::choicesPath());
    host.clear();
    host.nCoordSystem = 0;
    host.ussdRequest = "*100#";
    lpGlobalLib->setConfiguratorMode(0);
    form.reset(new ZOR_Form_Commands());
}

void TestConsole::cleanup()
{
    form.reset();
}

void TestConsole::freeCommandIsLoggedAndSentAsBuilt()
{
    form->deviceConnect();
    child<QLineEdit>("lineEdit_Cmd_Any")->setText(QStringLiteral("*?V\\0D\\0A"));
    child<QPushButton>("pushButton_Send_Cmd_Any")->click();
    QCOMPARE(host.sent(), QList<QByteArray>({QByteArray("*?V\r\n")}));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnDirection), QStringLiteral("OUT"));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnHex), QStringLiteral("2a3f560d0a"));
}

void TestConsole::printableForm_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("blank and LF") << QByteArray(" A\n") << ".A.";
    QTest::newRow("33 is shown") << QByteArray("!~") << "!~";
    QTest::newRow("NUL") << QByteArray(2, '\0') << "..";
    QTest::newRow("Cyrillic") << QByteArray("\xc1\xff") << "Бя";
    QTest::newRow("0x98") << QByteArray("\x98") << QString(QChar(0x98));
    QTest::newRow("DEL stays") << QByteArray("\x7f") << QString(QChar(0x7f));
}

void TestConsole::printableForm()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(ZOR_Form_Commands::getStrVisibleData(&bytes), text);
    QCOMPARE(ZOR_Form_Commands::getStrVisibleData(&bytes).size(), bytes.size());
}

void TestConsole::fixedCommands_data()
{
    // button, radio/check to tick first (or empty), combo index, spin value,
    // dialect answered by the host, text expected on the wire.
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("tick");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("spin");
    QTest::addColumn<int>("dialect");
    QTest::addColumn<QByteArray>("sent");
    const QString cs = QStringLiteral("pushButton_Send_Ravel_Cmd_1");
    QTest::newRow("PZ, dialect 0") << cs << "radioButton_Ravel_Cmd_1_PZ" << 0 << 5 << 0
                                   << QByteArray("*!UC GPS,PQPZ90,W,1,0");
    QTest::newRow("WGS, dialect 0") << cs << "radioButton_Ravel_Cmd_1_WGS" << 0 << 5 << 0
                                    << QByteArray("*!UC GPS,PQPZ90,W,0,0");
    QTest::newRow("PZ, dialect 1") << cs << "radioButton_Ravel_Cmd_1_PZ" << 0 << 5 << 1
                                   << QByteArray("*!UC GPS,PMTK330,223");
    QTest::newRow("WGS, dialect 1") << cs << "radioButton_Ravel_Cmd_1_WGS" << 0 << 5 << 1
                                    << QByteArray("*!UC GPS,PMTK330,0");
    const QString sat = QStringLiteral("pushButton_Send_Ravel_Cmd_2");
    QTest::newRow("GPS") << sat << "radioButton_Ravel_Cmd_2_GPS" << 0 << 5 << 0
                         << QByteArray("*!UC GPS,PMTK353,1,0,0,0,0");
    QTest::newRow("GLONASS") << sat << "radioButton_Ravel_Cmd_2_GLONASS" << 0 << 5 << 0
                             << QByteArray("*!UC GPS,PMTK353,0,1,0,0,0");
    QTest::newRow("GPS+GLONASS") << sat << "radioButton_Ravel_Cmd_2_GPSGLONASS" << 0 << 5 << 0
                                 << QByteArray("*!UC GPS,PMTK353,1,1,0,0,0");
    const QString rate = QStringLiteral("pushButton_Send_Ravel_Cmd_3");
    QTest::newRow("1 Hz") << rate << "" << 0 << 5 << 0 << QByteArray("*!UC GPS,PMTK220,1000");
    QTest::newRow("2 Hz") << rate << "" << 1 << 5 << 0 << QByteArray("*!UC GPS,PMTK220,500");
    QTest::newRow("5 Hz") << rate << "" << 2 << 5 << 0 << QByteArray("*!UC GPS,PMTK220,200");
    QTest::newRow("10 Hz") << rate << "" << 3 << 5 << 0 << QByteArray("*!UC GPS,PMTK220,100");
    QTest::newRow("no rate chosen") << rate << "" << -1 << 5 << 0 << QByteArray("*!UC GPS,PMTK220,1000");
    const QString angle = QStringLiteral("pushButton_Send_Ravel_Cmd_4");
    QTest::newRow("elevation 5") << angle << "" << 0 << 5 << 0 << QByteArray("*!UC GPS,PMTK311,5");
    QTest::newRow("elevation 15") << angle << "" << 0 << 15 << 0 << QByteArray("*!UC GPS,PMTK311,15");
    QTest::newRow("elevation clamps at 15") << angle << "" << 0 << 40 << 0 << QByteArray("*!UC GPS,PMTK311,15");
    QTest::newRow("cold start") << "pushButton_Send_Ravel_Cmd_5"
                                << "" << 0 << 5 << 0 << QByteArray("*!UC GPS,PMTK104");
    QTest::newRow("SMS on") << "pushButton_TmiSms_On"
                            << "" << 0 << 5 << 0 << QByteArray("*!EDIT PHONES:MODE(1)");
    QTest::newRow("SMS off") << "pushButton_TmiSms_Off"
                             << "" << 0 << 5 << 0 << QByteArray("*!EDIT PHONES:MODE(0)");
    QTest::newRow("balance") << "pushButton_Balance"
                             << "" << 0 << 5 << 0 << QByteArray("*?USSD:*100#");
    QTest::newRow("ICCID SIM 1") << "pushButton_IccId"
                                 << "checkBox_IccId_Sim_1" << 0 << 5 << 0 << QByteArray("*?ICCID 1");
    QTest::newRow("ICCID SIM 2") << "pushButton_IccId"
                                 << "checkBox_IccId_Sim_2" << 0 << 5 << 0 << QByteArray("*?ICCID 2");
}

void TestConsole::fixedCommands()
{
    QFETCH(QString, button);
    QFETCH(QString, tick);
    QFETCH(int, index);
    QFETCH(int, spin);
    QFETCH(int, dialect);
    QFETCH(QByteArray, sent);
    form->showForm();
    form->deviceConnect();
    host.nCoordSystem = dialect;
    if (!tick.isEmpty())
        form->findChild<QAbstractButton*>(tick)->setChecked(true);
    child<QComboBox>("comboBox_Ravel_Cmd_3_Freq")->setCurrentIndex(index);
    child<QSpinBox>("spinBox_Ravel_Cmd_4_Angle")->setValue(spin);
    host.clear();
    form->findChild<QPushButton*>(button)->click();
    QCOMPARE(host.sent(), QList<QByteArray>({sent}));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnHex), QString::fromLatin1(sent.toHex()));
}

void TestConsole::unknownDialectSendsNothing()
{
    form->deviceConnect();
    const int rows = form->logModel()->rowCount();
    host.nCoordSystem = 2;
    host.clear();
    child<QPushButton>("pushButton_Send_Ravel_Cmd_1")->click();
    QCOMPARE(host.codes(), QList<int>({ZOR_MSG_GET_COORDSYSTEM}));
    QCOMPARE(form->logModel()->rowCount(), rows);
}

void TestConsole::iccIdReplies_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("sim1");
    QTest::addColumn<QString>("sim2");
    // The reading rules are the protocol's (tst_consoleprotocol); here the
    // results reach their fields, and only the fields the reply names.
    const QString iccid = QStringLiteral("8970101234567890123");
    QTest::newRow("both, SIM 2 code 2") << QByteArray("*#ICCID 3,8970101234567890123,2") << iccid << "mdln_032";
    QTest::newRow("SIM 1 only") << QByteArray("*#ICCID 1,8970101234567890123") << iccid << "old 2";
    QTest::newRow("SIM 2 only") << QByteArray("*#ICCID 2,8970101234567890123") << "old 1" << iccid;
    QTest::newRow("unknown mask") << QByteArray("*#ICCID 4,1,2") << "old 1"
                                  << "old 2";
}

void TestConsole::iccIdReplies()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, sim1);
    QFETCH(QString, sim2);
    setIccIdResults(QStringLiteral("old 1"), QStringLiteral("old 2"));
    const int rows = form->logModel()->rowCount();
    form->deviceReceive(&reply);
    QCOMPARE(child<QLineEdit>("lineEdit_IccId_Sim_1")->text(), sim1);
    QCOMPARE(child<QLineEdit>("lineEdit_IccId_Sim_2")->text(), sim2);
    // Every reply is logged as received, recognised or not.
    QCOMPARE(form->logModel()->rowCount(), rows + 1);
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnDirection), QStringLiteral("IN"));
}

void TestConsole::setIccIdResults(const QString& sim1, const QString& sim2)
{
    child<QLineEdit>("lineEdit_IccId_Sim_1")->setText(sim1);
    child<QLineEdit>("lineEdit_IccId_Sim_2")->setText(sim2);
}

void TestConsole::iccIdCheckBoxes_data()
{
    // Boxes checked before, the box then unchecked (1 or 2; 0 = none), and
    // what remains: texts, enabled results, enabled query button.
    QTest::addColumn<bool>("check1");
    QTest::addColumn<bool>("check2");
    QTest::addColumn<int>("uncheck");
    QTest::addColumn<QString>("sim1");
    QTest::addColumn<QString>("sim2");
    QTest::addColumn<bool>("enabled1");
    QTest::addColumn<bool>("enabled2");
    QTest::addColumn<bool>("button");
    QTest::newRow("both checked") << true << true << 0 << "A"
                                  << "B" << true << true << true;
    QTest::newRow("SIM 1 only") << true << false << 0 << "A"
                                << "B" << true << false << true;
    QTest::newRow("SIM 2 only") << false << true << 0 << "A"
                                << "B" << false << true << true;
    QTest::newRow("uncheck SIM 1") << true << true << 1 << ""
                                   << "B" << false << true << true;
    QTest::newRow("uncheck SIM 2 clears SIM 1") << true << true << 2 << ""
                                                << "B" << true << false << true;
    QTest::newRow("uncheck the last") << true << false << 1 << ""
                                      << "B" << false << false << false;
}

void TestConsole::iccIdCheckBoxes()
{
    QFETCH(bool, check1);
    QFETCH(bool, check2);
    QFETCH(int, uncheck);
    auto* box1 = child<QCheckBox>("checkBox_IccId_Sim_1");
    auto* box2 = child<QCheckBox>("checkBox_IccId_Sim_2");
    form->showForm();
    box1->setChecked(check1);
    box2->setChecked(check2);
    setIccIdResults(QStringLiteral("A"), QStringLiteral("B"));
    if (uncheck == 1)
        box1->setChecked(false);
    else if (uncheck == 2)
        box2->setChecked(false);
    QTEST(child<QLineEdit>("lineEdit_IccId_Sim_1")->text(), "sim1");
    QTEST(child<QLineEdit>("lineEdit_IccId_Sim_2")->text(), "sim2");
    QTEST(child<QLineEdit>("lineEdit_IccId_Sim_1")->isEnabled(), "enabled1");
    QTEST(child<QLineEdit>("lineEdit_IccId_Sim_2")->isEnabled(), "enabled2");
    QTEST(child<QPushButton>("pushButton_IccId")->isEnabled(), "button");
}

void TestConsole::logRowColumns_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shownDirection");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("hex");
    QTest::newRow("out") << 0 << QByteArray("*?V") << "OUT"
                         << "3"
                         << "*?V"
                         << "2a3f56";
    QTest::newRow("in, size counts bytes") << 1 << QByteArray("\xc1\xe0\xeb\xe0\xed\xf1 5 \xf0.") << "IN"
                                           << "11"
                                           << "Баланс.5.р."
                                           << "c1e0ebe0edf1203520f02e";
    QTest::newRow("no direction") << 2 << QByteArray("X") << ""
                                  << "1"
                                  << "X"
                                  << "58";
    QTest::newRow("negative direction") << -1 << QByteArray() << ""
                                        << "0"
                                        << ""
                                        << "";
}

void TestConsole::logRowColumns()
{
    QFETCH(int, direction);
    QFETCH(QByteArray, bytes);
    const QDateTime before = QDateTime::currentDateTime();
    form->setData(direction, bytes);
    const QDateTime after = QDateTime::currentDateTime();
    const QDateTime logged = QDateTime::fromString(
        lastLogText(ZOR_Model_Log::ColumnTime), QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    QVERIFY(logged.isValid());
    QVERIFY(logged.secsTo(before) <= 0 && logged.secsTo(after) >= 0);
    QTEST(lastLogText(ZOR_Model_Log::ColumnDirection), "shownDirection");
    QTEST(lastLogText(ZOR_Model_Log::ColumnSize), "size");
    QTEST(lastLogText(ZOR_Model_Log::ColumnData), "data");
    QTEST(lastLogText(ZOR_Model_Log::ColumnHex), "hex");
}

void TestConsole::logHasItsHeadersWidthsAndFont()
{
    useLanguage("ru");
    auto* view = child<QTableView>("treeWidget");
    const QStringList headers = {QStringLiteral("Время"), QStringLiteral("IN/OUT"), QStringLiteral("Размер (байт)"),
        QStringLiteral("Данные"), QStringLiteral("Данные (HEX)")};
    const int widths[] = {130, 60, 100, 250, 50};
    QCOMPARE(view->model()->columnCount(), 5);
    form->setData(0, "abc");
    const QFont rowFont = view->model()->index(0, 0).data(Qt::FontRole).value<QFont>();
    QCOMPARE(rowFont.family(), QStringLiteral("Courier"));
    for (int column = 0; column < 5; ++column) {
        QCOMPARE(view->model()->headerData(column, Qt::Horizontal).toString(), headers[column]);
        // At least the designed width, and wide enough for the header.
        QVERIFY(view->columnWidth(column) >= widths[column]);
        QVERIFY(view->columnWidth(column) > view->horizontalHeader()->fontMetrics().horizontalAdvance(headers[column]));
    }
    // The whole time, seconds included, in the font the rows use.
    QVERIFY(view->columnWidth(0) > QFontMetrics(rowFont).horizontalAdvance(QStringLiteral("28.02.2026 23:59:59")));
    QVERIFY(view->horizontalHeader()->stretchLastSection());
    QCOMPARE(view->textElideMode(), Qt::ElideNone);
    const QModelIndex direction = view->model()->index(0, ZOR_Model_Log::ColumnDirection);
    const QModelIndex data = view->model()->index(0, ZOR_Model_Log::ColumnData);
    QCOMPARE(direction.data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignHCenter | Qt::AlignVCenter));
    QCOMPARE(data.data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignLeft | Qt::AlignVCenter));
}

void TestConsole::longCellsAreShortenedOnlyOnScreen()
{
    QByteArray block(64 * 1024, 'A');
    block[0] = '\n';
    form->setData(1, block);
    const QModelIndex data = form->logModel()->index(0, ZOR_Model_Log::ColumnData);
    const QModelIndex hex = form->logModel()->index(0, ZOR_Model_Log::ColumnHex);
    for (const QModelIndex& index : {data, hex}) {
        const QString shown = index.data().toString();
        QVERIFY(shown.size() > 100 && shown.size() <= 1000);
        QVERIFY(shown.endsWith(QChar(0x2026)));
        // A capped tooltip, in lines a screen can hold.
        const QString tip = index.data(Qt::ToolTipRole).toString();
        QVERIFY(tip.size() < 3000);
        for (const QString& line : tip.split(QLatin1Char('\n')))
            QVERIFY2(line.size() <= 100, qPrintable(line.left(120)));
    }
    QCOMPARE(data.data().toString().left(3), QStringLiteral(".AA"));
    QCOMPARE(hex.data().toString().left(4), QStringLiteral("0a41"));
    // The cell itself stays whole for copy, save and the details.
    QCOMPARE(form->logModel()->text(0, ZOR_Model_Log::ColumnData).size(), block.size());
    QCOMPARE(form->logModel()->text(0, ZOR_Model_Log::ColumnHex).size(), 2 * block.size());
    // A short cell is shown as it is.
    form->setData(1, "*#V 1");
    QCOMPARE(form->logModel()->index(1, ZOR_Model_Log::ColumnData).data().toString(), QStringLiteral("*#V.1"));
}

void TestConsole::manyLargeBlocksAreShown()
{
    // 300 replies of 64 KB each, painted: what froze the window for minutes.
    form->showForm();
    auto* view = child<QTableView>("treeWidget");
    for (int i = 0; i < 300; ++i)
        form->setData(1, QByteArray(64 * 1024, char('0' + i % 10)));
    QTRY_VERIFY(view->updatesEnabled());
    QVERIFY(!view->viewport()->grab().isNull());
    QCOMPARE(form->logModel()->rowCount(), 300);
}

void TestConsole::detailsShowTheWholeRowAndAHexDump()
{
    form->setData(1, QByteArray("*#V ZOR\r\n0123456789\x01"));
    const QString detail = form->logModel()->detailText(0);
    // The text as text: blanks and line ends as they are, other control bytes as dots.
    QVERIFY2(detail.contains(QStringLiteral("*#V ZOR\n0123456789.")), qPrintable(detail));
    QVERIFY2(detail.contains(
                 QStringLiteral("00000000  2a 23 56 20 5a 4f 52 0d  0a 30 31 32 33 34 35 36  |*#V.ZOR..0123456|")),
        qPrintable(detail));
    QVERIFY(detail.contains(QStringLiteral("00000010  37 38 39 01")));
    form->showForm();
    auto* view = child<QTableView>("treeWidget");
    auto* pane = child<QPlainTextEdit>("plainTextEdit_Detail");
    QVERIFY(!pane->isVisible());
    view->setCurrentIndex(view->model()->index(0, 3));
    child<QToolButton>("toolButton_Detail")->click();
    QVERIFY(pane->isVisible());
    QCOMPARE(pane->toPlainText(), detail);
}

void TestConsole::logFollowsOnlyFromTheBottom()
{
    form->showForm();
    auto* view = child<QTableView>("treeWidget");
    auto* newRows = child<QToolButton>("toolButton_NewRows");
    for (int i = 0; i < 200; ++i)
        form->setData(1, QByteArray::number(i));
    // The rows of a burst are in view a moment later.
    QTRY_VERIFY(view->rect().intersects(view->visualRect(view->model()->index(199, 0))));
    QVERIFY(!newRows->isVisible());
    view->verticalScrollBar()->setValue(0); // the user scrolls up to read
    for (int i = 0; i < 5; ++i)
        form->setData(1, "more");
    QTest::qWait(100);
    QCOMPARE(view->verticalScrollBar()->value(), 0);
    QTRY_VERIFY(newRows->isVisible());
    newRows->click();
    QTRY_COMPARE(view->verticalScrollBar()->value(), view->verticalScrollBar()->maximum());
    QVERIFY(!newRows->isVisible());
    form->setData(1, "last");
    QTRY_VERIFY(view->rect().intersects(view->visualRect(view->model()->index(205, 0))));
}

void TestConsole::copiesRowsAsTabSeparatedText()
{
    form->showForm();
    const QList<QByteArray> blocks = {"*?V", "*#V 1;2\r\n", "x\ty", "unseen"};
    for (int i = 0; i < blocks.size(); ++i)
        form->setData(i % 2, blocks[i]);
    auto* view = child<QTableView>("treeWidget");
    view->selectionModel()->select(QItemSelection(view->model()->index(0, 0), view->model()->index(2, 4)),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    view->setFocus();
    QApplication::clipboard()->clear();
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    const QString time = lastLogText(ZOR_Model_Log::ColumnTime); // all logged within a second or two
    QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.takeLast(), QString());
    const QStringList expected = {QStringLiteral("OUT\t3\t*?V\t2a3f56"),
        QStringLiteral("IN\t9\t*#V.1;2..\t2a235620313b320d0a"), QStringLiteral("OUT\t3\tx.y\t780979")};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(lines[i].section(QLatin1Char('\t'), 1), expected[i]);
        QCOMPARE(lines[i].section(QLatin1Char('\t'), 0, 0).size(), time.size());
    }
}

void TestConsole::savedLogReadsBack()
{
    useLanguage("ru");
    const qint64 t0 = QDateTime(QDate(2026, 3, 1), QTime(12, 30, 5, 7)).toMSecsSinceEpoch();
    ZOR_Model_Log log;
    log.append(0, "*?V", t0);
    log.append(1, "*#V \"A;B\"\r\n", t0 + 1234);
    log.append(-1, "CONNECT", t0 + 2000);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("log.csv"));
    QString error;
    QVERIFY2(log.saveLog(path, ZOR_Model_Log::Format::Csv, &error), qPrintable(error));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    // UTF-8 with a byte order mark, ";" between fields, quotes only where a
    // field holds ";" or '"' (doubled inside), CRLF after every record.
    QCOMPARE(file.readAll(),
        QStringLiteral("\uFEFFВремя;IN/OUT;Размер (байт);Данные;Данные (HEX)\r\n"
                       "01.03.2026 12:30:05.007;OUT;3;*?V;2a3f56\r\n"
                       "01.03.2026 12:30:06.241;IN;11;\"*#V.\"\"A;B\"\"..\";2a23562022413b42220d0a\r\n"
                       "01.03.2026 12:30:07.007;;7;CONNECT;434f4e4e454354\r\n")
            .toUtf8());

    const QString textPath = dir.filePath(QStringLiteral("log.txt"));
    QVERIFY(log.saveLog(textPath, ZOR_Model_Log::Format::Text));
    QFile textFile(textPath);
    QVERIFY(textFile.open(QIODevice::ReadOnly));
    const QString plain = QString::fromUtf8(textFile.readAll());
    QVERIFY(plain.contains(QStringLiteral("01.03.2026 12:30:06.241  IN ")));
    QVERIFY(plain.contains(QStringLiteral("434f4e4e454354")));
    // A file that cannot be written says so and leaves nothing behind.
    QVERIFY(!log.saveLog(dir.filePath(QStringLiteral("no/such/dir/log.csv")), ZOR_Model_Log::Format::Csv, &error));
    QVERIFY(!error.isEmpty());
}

// Five rows (three of them matching "ping" in some case), then Ctrl+F in
// the active console, as a user opens the find bar.
void TestConsole::openFindOverPingRows(QTableView*& view)
{
    const QList<QPair<int, QByteArray>> rows = {
        {0, "*?PING 1"}, {1, "*#PING 1\r\n"}, {0, "*?V"}, {1, "*#V ZOR"}, {1, "*#ping 2"}};
    for (const auto& row : rows)
        form->setData(row.first, row.second);
    view = child<QTableView>("treeWidget");
    QApplication::setActiveWindow(form.get());
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    view->setFocus();
    QTest::keyClick(view, Qt::Key_F, Qt::ControlModifier);
}

void TestConsole::findsAndFiltersRows()
{
    form->showForm();
    QTableView* view = nullptr;
    openFindOverPingRows(view);
    if (QTest::currentTestFailed())
        return;
    auto* find = child<QLineEdit>("lineEdit_Find");
    QVERIFY(find->isVisible());
    view->setCurrentIndex(QModelIndex()); // the search starts from the top
    QTest::keyClicks(find, QStringLiteral("ping"));
    const auto currentRow = [view] { return view->currentIndex().row(); };
    QTest::keyClick(find, Qt::Key_Return);
    QCOMPARE(currentRow(), 0);
    QTest::keyClick(find, Qt::Key_Return);
    QCOMPARE(currentRow(), 1);
    QTest::keyClick(find, Qt::Key_Return);
    QCOMPARE(currentRow(), 4); // any case
    QTest::keyClick(find, Qt::Key_Return);
    QCOMPARE(currentRow(), 0); // round again
    QTest::keyClick(find, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(currentRow(), 4);
    find->setText(QStringLiteral("5a4f52")); // hex of "ZOR"
    QTest::keyClick(find, Qt::Key_Return);
    QCOMPARE(currentRow(), 3);

    find->setText(QStringLiteral("ping"));
    child<QCheckBox>("checkBox_Filter")->setChecked(true);
    QCOMPARE(form->logModel()->rowCount(), 3);
    auto* direction = child<QComboBox>("comboBox_FilterDirection");
    direction->setCurrentIndex(direction->findText(QStringLiteral("IN")));
    QCOMPARE(form->logModel()->rowCount(), 2);
    QCOMPARE(form->logModel()->text(1, ZOR_Model_Log::ColumnData), QStringLiteral("*#ping.2"));
    form->setData(1, "*#PING 3"); // new rows pass the filter too
    form->setData(0, "*?PING 3");
    QCOMPARE(form->logModel()->rowCount(), 3);
    // Esc closes the search, not the console, and shows every row again.
    QTest::keyClick(find, Qt::Key_Escape);
    QVERIFY(form->isVisible());
    QVERIFY(!find->isVisible());
    QCOMPARE(form->logModel()->rowCount(), 7);
}

void TestConsole::receivedRowsKnowTheirReplyTime()
{
    ZOR_Model_Log log;
    log.append(1, "*#HELLO", 500); // nothing sent yet
    log.append(0, "*?V", 1000);
    log.append(1, "*#V 1", 1350);
    log.append(1, "*#V 2", 1400);
    log.append(-1, "DISCONNECT", 1500);
    log.append(0, "*?S", 2000);
    log.append(1, "*#S", 2007);
    const qint64 expected[] = {-1, -1, 350, 400, -1, -1, 7};
    for (int row = 0; row < 7; ++row)
        QCOMPARE(log.replyMs(row), expected[row]);
    QVERIFY(log.index(2, 3).data(Qt::ToolTipRole).toString().contains(QLatin1String("cons_030")));
    QVERIFY(log.detailText(6).contains(QLatin1String("cons_030")));
    QVERIFY(!log.detailText(0).contains(QLatin1String("cons_030")));
}

void TestConsole::clearEmptiesTheLog()
{
    form->setData(0, "a");
    form->setData(1, "b");
    child<QToolButton>("toolButton_Clear")->click();
    QCOMPARE(form->logModel()->rowCount(), 0);
    form->setData(1, "c");
    QCOMPARE(form->logModel()->rowCount(), 1);
}

// Rows of every size, some across the end of a chunk of the log's store.
static QByteArray cappedLogBlock(int i)
{
    return i % 7 == 3 ? QByteArray(3000 + i, char('a' + i % 26)) : QByteArray::number(i).repeated(i % 5);
}

void TestConsole::logKeepsTheNewestRowsWithinItsCap_data()
{
    QTest::addColumn<int>("cap");
    QTest::addColumn<int>("appended");
    QTest::addColumn<int>("direction"); // filter, -1 none
    QTest::addColumn<qint64>("step"); // ms from row to row
    QTest::newRow("at the cap") << 40 << 40 << -1 << qint64(1);
    QTest::newRow("one past") << 40 << 41 << -1 << qint64(1);
    QTest::newRow("many times over") << 40 << 700 << -1 << qint64(1);
    QTest::newRow("cap of one") << 1 << 9 << -1 << qint64(1);
    QTest::newRow("filtered") << 40 << 700 << int(ZOR_Model_Log::DirectionIn) << qint64(1);
    QTest::newRow("ten days apart") << 40 << 100 << -1 << qint64(864000000);
}

void TestConsole::logKeepsTheNewestRowsWithinItsCap()
{
    QFETCH(int, cap);
    QFETCH(int, appended);
    QFETCH(int, direction);
    QFETCH(qint64, step);
    ZOR_Model_Log log;
    QCOMPARE(log.maxRows(), 1000000);
    log.setMaxRows(cap);
    log.setFilter(direction, QString());
    QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (int i = 0; i < appended; ++i)
        log.append(i % 2, cappedLogBlock(i), 1000 + i * step);
    const qint64 dropped = log.droppedRowCount();
    QVERIFY(log.totalRowCount() <= cap);
    QCOMPARE(dropped + log.totalRowCount(), appended);
    // One row says rows went, and is nothing else: no time, no bytes, no match.
    const int first = dropped > 0 ? 1 : 0;
    if (dropped > 0) {
        QCOMPARE(log.text(0, ZOR_Model_Log::ColumnData), QStringLiteral("cons_043 %1").arg(dropped));
        QVERIFY(log.text(0, ZOR_Model_Log::ColumnTime).isEmpty() && log.bytes(0).isEmpty());
        QVERIFY(!log.matches(0, QStringLiteral("cons")));
    }
    // The rows kept are the newest, whole, in order.
    QList<qint64> expected;
    for (int i = int(dropped); i < appended; ++i) {
        if (direction < 0 || i % 2 == direction)
            expected << 1000 + i * step;
    }
    QCOMPARE(log.rowCount(), first + expected.size());
    for (int row = first; row < log.rowCount(); ++row) {
        QCOMPARE(log.time(row), expected[row - first]);
        QCOMPARE(log.bytes(row), cappedLogBlock(int((log.time(row) - 1000) / step)));
    }
    log.clear();
    QCOMPARE(log.rowCount(), 0);
    QCOMPARE(log.droppedRowCount(), 0);
    log.append(1, "again", 5);
    QCOMPARE(log.text(0, ZOR_Model_Log::ColumnData), QStringLiteral("again"));
}

void TestConsole::readerKeepsThePlaceWhenOldRowsDrop()
{
    form->showForm();
    auto* view = child<QTableView>("treeWidget");
    ZOR_Model_Log* log = form->logModel();
    log->setMaxRows(160);
    for (int i = 0; i < 150; ++i)
        form->setData(1, "row " + QByteArray::number(i));
    QTRY_VERIFY(view->updatesEnabled());
    const QModelIndex reading = log->index(100, ZOR_Model_Log::ColumnData);
    view->scrollTo(reading, QAbstractItemView::PositionAtTop);
    view->setCurrentIndex(reading);
    const QPoint topLeft(view->columnViewportPosition(ZOR_Model_Log::ColumnData) + 2, 2);
    QCOMPARE(view->indexAt(topLeft).data().toString(), QStringLiteral("row.100"));
    for (int i = 150; i < 200; ++i)
        form->setData(1, "row " + QByteArray::number(i));
    QTRY_VERIFY(view->updatesEnabled());
    QVERIFY(log->droppedRowCount() > 0);
    QCOMPARE(view->indexAt(topLeft).data().toString(), QStringLiteral("row.100"));
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("row.100"));
    QVERIFY(child<QToolButton>("toolButton_NewRows")->isVisible());
    view->setFocus();
    QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text().section(QLatin1Char('\t'), 3, 3), QStringLiteral("row.100"));
    // Find and filter go on over the rows kept.
    child<QLineEdit>("lineEdit_Find")->setText(QStringLiteral("row.17"));
    child<QToolButton>("toolButton_FindNext")->click();
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("row.170"));
    child<QCheckBox>("checkBox_Filter")->setChecked(true);
    QCOMPARE(log->rowCount(), 1 + 10);
}

void TestConsole::connectAndDisconnectRows()
{
    auto* send = child<QPushButton>("pushButton_Send_Cmd_Any");
    auto* ravel = child<QGroupBox>("groupBox_Ravel");
    QVERIFY(!send->isEnabled());
    form->deviceConnect();
    QVERIFY(send->isEnabled() && ravel->isEnabled());
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnData), QStringLiteral("CONNECT"));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnDirection), QString());
    form->deviceDisconnect();
    QVERIFY(!send->isEnabled() && !ravel->isEnabled());
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnData), QStringLiteral("DISCONNECT"));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnDirection), QString());
    QVERIFY(host.sent().isEmpty());
}

void TestConsole::showingResetsTheFormAndAsksTheHost()
{
    form->showForm();
    child<QCheckBox>("checkBox_IccId_Sim_1")->setChecked(true);
    child<QCheckBox>("checkBox_IccId_Sim_2")->setChecked(true);
    setIccIdResults(QStringLiteral("A"), QStringLiteral("B"));
    child<QLineEdit>("lineEdit_Cmd_Any")->setText(QStringLiteral("*?S"));
    host.clear();
    host.ussdRequest = "#102#";
    form->showForm();
    QCOMPARE(host.codes(), QList<int>({ZOR_MSG_RECEIVE_START, ZOR_MSG_GET_CONFIG_PARAM}));
    QCOMPARE(child<QLineEdit>("lineEdit_Balance_USSD")->text(), QStringLiteral("#102#"));
    QVERIFY(!child<QCheckBox>("checkBox_IccId_Sim_1")->isChecked());
    QVERIFY(!child<QCheckBox>("checkBox_IccId_Sim_2")->isChecked());
    QCOMPARE(child<QLineEdit>("lineEdit_IccId_Sim_1")->text(), QString());
    QCOMPARE(child<QLineEdit>("lineEdit_IccId_Sim_2")->text(), QStringLiteral("B"));
    QVERIFY(!child<QLineEdit>("lineEdit_IccId_Sim_1")->isEnabled());
    QVERIFY(!child<QLineEdit>("lineEdit_IccId_Sim_2")->isEnabled());
    QVERIFY(!child<QPushButton>("pushButton_IccId")->isEnabled());
    QCOMPARE(child<QComboBox>("comboBox_ListCommands")->currentIndex(), 0);
    QCOMPARE(child<QComboBox>("comboBox_ListCommands")->itemText(0), QStringLiteral("mdln_041"));
    QCOMPARE(child<QLineEdit>("lineEdit_Cmd_Any")->text(), QString());
    QVERIFY(!child<QToolButton>("toolButton_ListCommands_Add")->isEnabled());
    QVERIFY(form->isVisible());
}

void TestConsole::closingStopsForwarding()
{
    form->showForm();
    host.clear();
    form->close();
    QCOMPARE(host.codes(), QList<int>({ZOR_MSG_RECEIVE_STOP}));
    QCOMPARE(reinterpret_cast<ZOR_Commands*>(host.records.at(0).wParam), lpGlobalLib);
}

void TestConsole::ravelLayoutInMode5()
{
    QVERIFY(child<QGroupBox>("groupBox_Cmd_Main")->isVisibleTo(form.get()));
    QVERIFY(!child<QGroupBox>("groupBox_Ravel")->isVisibleTo(form.get()));
    QCOMPARE(form->getWindowTitle(), QStringLiteral("mdln_001"));
    lpGlobalLib->setConfiguratorMode(5);
    form.reset(new ZOR_Form_Commands());
    QVERIFY(!child<QGroupBox>("groupBox_Cmd_Main")->isVisibleTo(form.get()));
    QVERIFY(child<QGroupBox>("groupBox_Ravel")->isVisibleTo(form.get()));
    QCOMPARE(form->getWindowTitle(), QStringLiteral("mdln_002"));
    QCOMPARE(form->windowTitle(), QStringLiteral("mdln_002"));
}

void TestConsole::enterSendsOnce_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("keypad Enter") << int(Qt::Key_Enter);
}

void TestConsole::enterSendsOnce()
{
    QFETCH(int, key);
    form->showForm();
    form->deviceConnect();
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    QApplication::setActiveWindow(form.get());
    line->setFocus();
    QTest::keyClicks(line, QStringLiteral("*!SETT_RESET"));
    host.clear();
    QTest::keyClick(line, Qt::Key(key));
    QCOMPARE(host.sent(), QList<QByteArray>({QByteArray("*!SETT_RESET")}));
    // Nor does Enter on any other button of the console send the command.
    host.clear();
    for (QPushButton* button : form->findChildren<QPushButton*>())
        if (button->window() == form.get())
            QVERIFY2(!button->autoDefault() && !button->isDefault(), qPrintable(button->objectName()));
    QTest::keyClick(child<QComboBox>("comboBox_ListCommands"), Qt::Key_Return);
    QVERIFY(host.sent().isEmpty());
    QVERIFY(form->isVisible());
}

void TestConsole::escapeInTheLineDoesNotClose()
{
    form->showForm();
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    QTest::keyClicks(line, QStringLiteral("*?V"));
    host.clear();
    QTest::keyClick(line, Qt::Key_Escape);
    QVERIFY(form->isVisible());
    QCOMPARE(line->text(), QStringLiteral("*?V"));
    QVERIFY(!host.codes().contains(ZOR_MSG_RECEIVE_STOP));
}

void TestConsole::historyWalksSentCommands()
{
    form->showForm();
    form->deviceConnect();
    for (const char* command : {"*?V", "*?S", "*?PING 1", "*?S"})
        typeAndEnter(QLatin1String(command));
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    line->setText(QStringLiteral("*?IC")); // being edited
    // Newest first; a repeated command counts once, at its latest place.
    const QStringList up = {
        QStringLiteral("*?S"), QStringLiteral("*?PING 1"), QStringLiteral("*?V"), QStringLiteral("*?V")};
    for (const QString& expected : up) {
        QTest::keyClick(line, Qt::Key_Up);
        QCOMPARE(line->text(), expected);
    }
    QTest::keyClick(line, Qt::Key_Down);
    QCOMPARE(line->text(), QStringLiteral("*?PING 1"));
    QTest::keyClick(line, Qt::Key_Escape);
    QCOMPARE(line->text(), QStringLiteral("*?IC"));
    QTest::keyClick(line, Qt::Key_Up);
    QTest::keyClick(line, Qt::Key_Down);
    QCOMPARE(line->text(), QStringLiteral("*?IC"));
    QVERIFY(form->isVisible());
}

void TestConsole::historyOutlivesTheConsole()
{
    form->showForm();
    form->deviceConnect();
    typeAndEnter(QStringLiteral("*?V"));
    typeAndEnter(QStringLiteral("*?GSM"));
    form.reset(new ZOR_Form_Commands()); // the host restarted
    QCOMPARE(form->commandHistory()->entries(), QStringList({QStringLiteral("*?V"), QStringLiteral("*?GSM")}));
    form->showForm();
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    QTest::keyClick(line, Qt::Key_Up);
    QCOMPARE(line->text(), QStringLiteral("*?GSM"));
}

// Times with milliseconds and the recording (on, and into which file) are
// the user's, taken up by the next console; stopping is kept as well.
void TestConsole::logChoicesOutliveTheConsole()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("kept.log"));
    QMenu* options = child<QToolButton>("toolButton_Options")->menu();
    options->actions().at(0)->trigger(); // times with milliseconds
    QVERIFY(form->logWidget()->recordTo(path));
    form.reset(new ZOR_Form_Commands()); // the host restarted
    QVERIFY(form->logModel()->isTimeWithMs());
    QVERIFY(form->logWidget()->logFile()->isActive());
    QCOMPARE(form->logWidget()->logFile()->fileName(), path);
    QVERIFY(child<QToolButton>("toolButton_Options")->menu()->actions().at(1)->isChecked());

    QVERIFY(form->logWidget()->recordTo(QString()));
    child<QToolButton>("toolButton_Options")->menu()->actions().at(0)->trigger();
    form.reset(new ZOR_Form_Commands());
    QVERIFY(!form->logModel()->isTimeWithMs());
    QVERIFY(!form->logWidget()->logFile()->isActive());
}

void TestConsole::eachEnterSendsWhatWasTypedSinceTheLast()
{
    form->showForm();
    form->deviceConnect();
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    QApplication::setActiveWindow(form.get());
    line->setFocus();
    host.clear();
    QTest::keyClicks(line, QStringLiteral("*?V"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(line->text(), QString());
    QTest::keyClicks(line, QStringLiteral("*?S"));
    QTest::keyClick(line, Qt::Key_Enter);
    child<QPushButton>("pushButton_Send_Cmd_Any")->click(); // an empty line sends nothing more than nothing
    QCOMPARE(host.sent(), QList<QByteArray>({QByteArray("*?V"), QByteArray("*?S"), QByteArray()}));
    QTest::keyClick(line, Qt::Key_Up);
    QCOMPARE(line->text(), QStringLiteral("*?S"));
}

void TestConsole::languageSwitchTranslatesTheLogAndKeepsTheLine()
{
    form->showForm();
    useLanguage("ru");
    auto* view = child<QTableView>("treeWidget");
    QCOMPARE(view->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Время"));
    form->setData(1, "*#V 1");
    view->setCurrentIndex(view->model()->index(0, 3));
    child<QToolButton>("toolButton_Detail")->click();
    auto* pane = child<QPlainTextEdit>("plainTextEdit_Detail");
    QVERIFY(pane->toPlainText().contains(QStringLiteral("Данные (HEX):")));
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    QTest::keyClicks(line, QStringLiteral("*?PI"));
    useLanguage("en");
    const QStringList headers = {QStringLiteral("Time"), QStringLiteral("IN/OUT"), QStringLiteral("Size (bytes)"),
        QStringLiteral("Data"), QStringLiteral("Data (HEX)")};
    for (int column = 0; column < headers.size(); ++column) {
        QCOMPARE(view->model()->headerData(column, Qt::Horizontal).toString(), headers[column]);
        QVERIFY(view->columnWidth(column) > view->horizontalHeader()->fontMetrics().horizontalAdvance(headers[column]));
    }
    QVERIFY(pane->toPlainText().contains(QStringLiteral("Data (HEX):")));
    QVERIFY(!pane->toPlainText().contains(QStringLiteral("Данные")));
    QCOMPARE(line->text(), QStringLiteral("*?PI"));
    QVERIFY(child<QToolButton>("toolButton_ListCommands_Add")->isEnabled());
}

void TestConsole::repeatSendsTheAskedCount_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("once") << 1;
    QTest::newRow("four times") << 4;
}

void TestConsole::repeatSendsTheAskedCount()
{
    QFETCH(int, count);
    form->showForm();
    form->deviceConnect();
    child<QCheckBox>("checkBox_Repeat")->click();
    child<QSpinBox>("spinBox_RepeatPeriod")->setValue(100);
    child<QSpinBox>("spinBox_RepeatCount")->setValue(count);
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    host.clear();
    QTest::keyClicks(line, QStringLiteral("*?PING"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(line->text(), QString());
    QTRY_COMPARE(host.sent().size(), count);
    QTest::qWait(300); // and no more
    QCOMPARE(host.sent(), QVector<QByteArray>(count, QByteArray("*?PING")).toList());
    QVERIFY(!form->isRepeating());
    QCOMPARE(form->repeatSentCount(), count);

    // Without a count it goes on until the box is unticked, or the terminal goes.
    child<QSpinBox>("spinBox_RepeatCount")->setValue(0);
    host.clear();
    QTest::keyClicks(line, QStringLiteral("*?V"));
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_VERIFY(host.sent().size() >= 3);
    form->deviceDisconnect();
    QVERIFY(!form->isRepeating());
    const int sent = host.sent().size();
    QTest::qWait(250);
    QCOMPARE(host.sent().size(), sent);
}

void TestConsole::sendingWithoutTerminalSaysNotSent()
{
    form->showForm();
    auto* notice = child<QLabel>("label_Notice");
    host.clear();
    QVERIFY(child<QPushButton>("pushButton_Balance")->isEnabled());
    child<QPushButton>("pushButton_Balance")->click();
    // Handed to the host all the same: it is the host that knows.
    QCOMPARE(host.sent(), QList<QByteArray>({QByteArray("*?USSD:*100#")}));
    const ZOR_Model_Log* log = form->logModel();
    QCOMPARE(log->text(log->rowCount() - 2, ZOR_Model_Log::ColumnDirection), QStringLiteral("OUT"));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnData), QStringLiteral("NOT.SENT"));
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnDirection), QString());
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("cons_055"));
    useLanguage("en"); // the notice follows the language too
    QCOMPARE(notice->text(), QStringLiteral("Not sent: no terminal is connected"));
    form->deviceConnect();
    child<QPushButton>("pushButton_Balance")->click();
    QCOMPARE(lastLogText(ZOR_Model_Log::ColumnDirection), QStringLiteral("OUT"));
    QVERIFY(!notice->isVisible());
}

void TestConsole::clearCanBeUndone()
{
    form->showForm();
    form->setData(0, "a");
    form->setData(1, "b");
    auto* undo = child<QToolButton>("toolButton_UndoClear");
    QVERIFY(!undo->isVisible());
    child<QToolButton>("toolButton_Clear")->click();
    QCOMPARE(form->logModel()->rowCount(), 0);
    QVERIFY(undo->isVisible());
    form->setData(1, "c"); // came after the clear
    undo->click();
    QVERIFY(!undo->isVisible());
    QStringList rows;
    for (int row = 0; row < form->logModel()->rowCount(); ++row)
        rows << form->logModel()->text(row, ZOR_Model_Log::ColumnDirection) + form->logModel()->text(row, 3);
    QCOMPARE(rows, QStringList({QStringLiteral("OUTa"), QStringLiteral("INb"), QStringLiteral("INc")}));
}

void TestConsole::findCountsWrapsAndKeepsTheSelection()
{
    form->showForm();
    useLanguage("en");
    QTableView* view = nullptr;
    openFindOverPingRows(view);
    if (QTest::currentTestFailed())
        return;
    auto* find = child<QLineEdit>("lineEdit_Find");
    auto* status = child<QLabel>("label_FindStatus");
    view->setCurrentIndex(QModelIndex());
    QTest::keyClicks(find, QStringLiteral("ping"));
    const QStringList expected = {QStringLiteral("Match 1 of 3"), QStringLiteral("Match 2 of 3"),
        QStringLiteral("Match 3 of 3"), QStringLiteral("Match 1 of 3 — Search wrapped to the top")};
    for (const QString& text : expected) {
        QTest::keyClick(find, Qt::Key_Return);
        QCOMPARE(status->text(), text);
    }
    QTest::keyClick(find, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(status->text(), QStringLiteral("Match 3 of 3 — Search wrapped to the bottom"));
    QCOMPARE(view->currentIndex().row(), 4);

    child<QCheckBox>("checkBox_Filter")->click();
    auto* hidden = child<QLabel>("label_Hidden");
    QVERIFY(hidden->isVisible());
    QCOMPARE(hidden->text(), QStringLiteral("Rows hidden: 2"));
    form->setData(0, "*?S"); // hidden as it comes
    QTRY_COMPARE(hidden->text(), QStringLiteral("Rows hidden: 3"));
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("*#ping.2"));
    QTest::keyClick(find, Qt::Key_Escape);
    QVERIFY(!hidden->isVisible());
    QCOMPARE(view->currentIndex().row(), 4);
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("*#ping.2"));
}

void TestConsole::rowsShowDirectionColoursAndMilliseconds()
{
    form->showForm();
    form->setData(0, "*?V");
    form->setData(1, "*#V 1");
    form->setData(-1, "CONNECT");
    const ZOR_Model_Log* log = form->logModel();
    const QVariant out = log->index(0, 3).data(Qt::ForegroundRole);
    const QVariant in = log->index(1, 3).data(Qt::ForegroundRole);
    QCOMPARE(out.value<QColor>(), form->logWidget()->palette().color(QPalette::Link));
    QVERIFY(in.value<QColor>().isValid() && in.value<QColor>() != out.value<QColor>());
    QVERIFY(!log->index(2, 3).data(Qt::ForegroundRole).isValid());

    // "dd.MM.yyyy hh:mm:ss", with ".zzz" when asked for.
    QCOMPARE(log->text(0, ZOR_Model_Log::ColumnTime).size(), 19);
    form->logWidget()->setTimeWithMs(true);
    const QString time = log->text(0, ZOR_Model_Log::ColumnTime);
    const QRegularExpression withMs(QStringLiteral("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d\\.\\d{3}$"));
    QVERIFY2(withMs.match(time).hasMatch(), qPrintable(time));
    const QFont font = log->index(0, 0).data(Qt::FontRole).value<QFont>();
    QVERIFY(child<QTableView>("treeWidget")->columnWidth(0) > QFontMetrics(font).horizontalAdvance(time));
}

void TestConsole::continuousLogIsReadBackByZorTool()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("exchange.log"));
    QFile old(path); // a log from before is kept, not overwritten
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("earlier\r") > 0);
    old.close();
    ZOR_Widget_Log* widget = form->logWidget();
    widget->logFile()->setMaxBytes(600);
    widget->logFile()->setKeptFiles(50);
    QVERIFY(widget->recordTo(path));
    form->showForm();
    form->deviceConnect();
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    const int commands = 12;
    for (int i = 0; i < commands; ++i) {
        QTest::keyClicks(line, QStringLiteral("*?PING %1").arg(i));
        QTest::keyClick(line, Qt::Key_Return);
        QByteArray reply = "*#PING " + QByteArray::number(i) + "\r\n";
        form->deviceReceive(&reply);
    }
    QVERIFY(QFile::exists(ZOR_ConsoleLogFile::rotatedName(path, 2))); // rotated by size
    QVERIFY(QFileInfo(path).size() < 600 + 200);

    QProcess tool;
    tool.start(QStringLiteral(ZOR_BIN_DIR "/zor-tool"), {QStringLiteral("log"), QStringLiteral("--rotated"), path});
    QVERIFY(tool.waitForFinished(30000));
    QCOMPARE(tool.exitCode(), 0);
    const QStringList lines = QString::fromLocal8Bit(tool.readAllStandardOutput()).split(QLatin1Char('\n'));
    QCOMPARE(lines.value(0), QStringLiteral("earlier"));
    // Every row once, in order, across the files: the direction and size,
    // the bytes as ASCII, the bytes in hex.
    QStringList expected{QStringLiteral("CONNECT")};
    for (int i = 0; i < commands; ++i) {
        const QByteArray sent = "*?PING " + QByteArray::number(i);
        const QByteArray reply = "*#PING " + QByteArray::number(i) + "\r\n";
        expected << QStringLiteral("OUT %1").arg(sent.size())
                 << QString::fromLatin1(sent).replace(QLatin1Char(' '), QLatin1Char('.'))
                 << QString::fromLatin1(sent.toHex());
        expected << QStringLiteral("IN %1").arg(reply.size()) << QStringLiteral("*#PING.%1..").arg(i)
                 << QString::fromLatin1(reply.toHex());
    }
    QStringList found;
    for (const QString& l : lines) {
        const QString text = l.contains(QLatin1String("  ")) ? l.section(QLatin1String("  "), 1) : l; // time stamp
        if (!text.isEmpty() && !text.startsWith(QLatin1String("---")) && text != QLatin1String("earlier"))
            found << text;
    }
    QCOMPARE(found, expected);
}

void TestConsole::resetCommandsAskFirstAndMacrosSend()
{
    const QString listDir = dataDir.path() + QStringLiteral("/Localization/Temp");
    QDir().mkpath(listDir);
    QFile list(listDir + QStringLiteral("/commands.xml"));
    QVERIFY(list.open(QIODevice::WriteOnly));
    list.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<COMMANDS>\n"
               "<COMMAND name=\"Version\" cmnd=\"*?V\"/>\n"
               "<COMMAND name=\"Reset\" cmnd=\"*!SETT_RESET\" confirm=\"1\"/>\n</COMMANDS>\n");
    list.close();
    const auto removeList = qScopeGuard([&list] { list.remove(); });
    form.reset(new ZOR_Form_Commands());
    form->showForm();
    form->deviceConnect();
    int asked = 0;
    int answer = 1; // Cancel
    ZOR_Dialog_XmlList::setAnswerer([&](QMessageBox::Icon, const QString&, const QString&, const QStringList&) {
        ++asked;
        return answer;
    });
    const auto noAnswerer = qScopeGuard([] { ZOR_Dialog_XmlList::setAnswerer(nullptr); });
    auto* line = child<QLineEdit>("lineEdit_Cmd_Any");
    host.clear();
    QTest::keyClicks(line, QStringLiteral("*!SETT_RESET"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(asked, 1);
    QVERIFY(host.sent().isEmpty());
    QCOMPARE(line->text(), QStringLiteral("*!SETT_RESET")); // still there to send
    answer = 0;
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(host.sent(), QList<QByteArray>({QByteArray("*!SETT_RESET")}));

    // A button per saved command; only the marked one asks.
    QMap<QString, QToolButton*> macros;
    for (QToolButton* button : child<QWidget>("widget_Macros")->findChildren<QToolButton*>())
        macros[button->text()] = button;
    QCOMPARE(macros.keys(), QStringList({QStringLiteral("Reset"), QStringLiteral("Version")}));
    host.clear();
    asked = 0;
    macros[QStringLiteral("Version")]->click();
    QCOMPARE(asked, 0);
    answer = 1;
    macros[QStringLiteral("Reset")]->click();
    QCOMPARE(asked, 1);
    QCOMPARE(host.sent(), QList<QByteArray>({QByteArray("*?V")}));
}

void TestConsole::tabInTheListEditorGoesToTheCommand()
{
    ZOR_Dialog_Commands* editor = form->dialogCommands();
    editor->showForm();
    QApplication::setActiveWindow(editor);
    QVERIFY(QTest::qWaitForWindowActive(editor));
    editor->findChild<QToolButton*>(QStringLiteral("toolButton_Add"))->click();
    auto* tree = editor->findChild<QTreeWidget*>(QStringLiteral("treeWidget"));
    QTreeWidgetItem* item = tree->currentItem();
    QVERIFY(item);
    tree->setCurrentItem(item, 1);
    tree->editItem(item, 1);
    auto* nameEditor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(nameEditor);
    nameEditor->selectAll();
    QTest::keyClicks(nameEditor, QStringLiteral("Ping"));
    QTest::keyClick(nameEditor, Qt::Key_Tab);
    QCOMPARE(item->text(1), QStringLiteral("Ping"));
    QCOMPARE(tree->currentItem(), item);
    QCOMPARE(tree->currentColumn(), 2);
    auto* commandEditor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(commandEditor && commandEditor != nameEditor);
    QCOMPARE(commandEditor->text(), QStringLiteral("CMND"));
    QTest::keyClick(commandEditor, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(tree->currentColumn(), 1);
    editor->reject();
}

QTEST_MAIN(TestConsole)
#include "tst_console.moc"
