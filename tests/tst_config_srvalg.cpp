// The server-algorithm page and its lists: timers in page units, the second
// SIM card only on two-SIM terminals, the priority order of the white list,
// the SIM 1 roaming read modes and the Wi-Fi black list.

#include "config/zor_configdocument.h"
#include "config/zor_form_config_track_locator_blist.h"
#include "config/zor_form_config_transfer_srvalg.h"
#include "config/zor_form_config_transfer_srvalg_blist.h"
#include "config/zor_form_config_transfer_srvalg_wlist.h"
#include "config/zor_operatorcoderows.h"
#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>

#include "zor_form_document.h"

namespace {

using ZorFormDocument::config;
using ZorFormDocument::nodeLine;

const QVector<ZOR_ConfigPage> kPages = {
    {"transfer", "", &zorCreateConfigForm<ZOR_Form_Config_Transfer_SrvAlg>, false},
    {"wifi_blist", "", &zorCreateConfigForm<ZOR_Form_Config_Track_Locator_BList>, false},
};

QByteArray dataFile(const char* name)
{
    return ZorFormDocument::readFile(QStringLiteral(ZOR_TEST_DATA_DIR "/config/") + QLatin1String(name));
}

ZOR_TerminalProfile simProfile(int nSims)
{
    ZOR_TerminalProfile profile;
    profile.nSimCount = nSims;
    return profile;
}

// A document of the two pages loaded from bytes.
struct Loaded : ZorFormDocument::Doc
{
    explicit Loaded(const QByteArray& bytes, int nSims = 1)
        : Doc(kPages, simProfile(nSims))
    {
        QVERIFY(load(bytes));
    }
    ZOR_Form_Config_Transfer_SrvAlg* page() const { return form<ZOR_Form_Config_Transfer_SrvAlg>("transfer"); }
    template <typename T>
    T* sim(int n, const char* name) const
    {
        return page()->simPage(n)->findChild<T*>(QLatin1String(name));
    }
};

// What a widget shows, as a number: spin box value or check state.
int shown(QWidget* w)
{
    if (auto spin = qobject_cast<QSpinBox*>(w))
        return spin->value();
    if (auto box = qobject_cast<QCheckBox*>(w))
        return box->isChecked() ? 1 : 0;
    return -1;
}

} // namespace

class TestConfigSrvAlg : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void timersShowInPageUnitsAndSaveSeconds_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<QByteArray>("attr");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("boxes");
        QTest::addColumn<QString>("shows");
        QTest::addColumn<QByteArray>("saved");
        auto row = [](const char* name, const char* node, const char* attr, const char* stored, const char* boxes,
                       const char* shows, const char* saved) {
            QTest::newRow(name) << QByteArray(node) << QByteArray(attr) << QByteArray(stored) << boxes << shows
                                << QByteArray(saved);
        };
        row("home period 5400 is 1 h 30 min", "RULES", "cnctTimer", "5400", "spinCnctHours spinCnctMinutes", "1 30",
            "5400");
        row("roaming period 5400 is 90 min", "ROAM", "cnctTimer", "5400", "spinRoamCnctTimer", "90", "5400");
        row("moving 90 s keeps whole minutes", "ROAM", "moveTimer", "90", "spinRoamMoveTimer", "1", "60");
        row("parked above 9999 min clamps", "ROAM", "stopTimer", "700000", "spinRoamStopTimer", "9999", "599940");
        row("ping below 15 s clamps", "RULES", "pingTimer", "5", "spinPingTimer", "15", "15");
        // Hours and minutes are the time of day that many seconds after midnight.
        row("blocking 86400 is 00:00", "RULES", "blockTimer", "86400", "spinBlockHours spinBlockMinutes", "0 0", "0");
        row("blocking 90000 is 01:00", "RULES", "blockTimer", "90000", "spinBlockHours spinBlockMinutes", "1 0",
            "3600");
        row("blocking 100000 is 03:46", "RULES", "blockTimer", "100000", "spinBlockHours spinBlockMinutes", "3 46",
            "13560");
        row("negative roaming blocking counts back", "ROAM", "blockTimer", "-60",
            "spinRoamBlockHours spinRoamBlockMinutes", "23 59", "86340");
        row("empty value takes the default", "RULES", "cnctTimer", "", "spinCnctHours spinCnctMinutes", "1 0", "3600");
        row("grouping 0 is off", "RULES", "grpTimer", "0", "checkGroup", "0", "0");
        row("grouping 45 s is on", "RULES", "grpTimer", "45", "checkGroup spinGrpTimer", "1 45", "45");
    }

    void timersShowInPageUnitsAndSaveSeconds()
    {
        QFETCH(QByteArray, node);
        QFETCH(QByteArray, attr);
        QFETCH(QByteArray, stored);
        QFETCH(QString, boxes);
        QFETCH(QString, shows);
        QFETCH(QByteArray, saved);

        Loaded l(config("    <" + node + " " + attr + "=\"" + stored + "\" />\n"));
        const QStringList names = boxes.split(' ');
        const QStringList values = shows.split(' ');
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(shown(l.page()->findChild<QWidget*>(names[i])), values[i].toInt());
        QVERIFY(nodeLine(l.doc.render(), node).contains(" " + attr + "=\"" + saved + "\""));
    }

    void secondSimNodesOnlyOnTwoSimTerminals_data()
    {
        QTest::addColumn<int>("sims");
        QTest::newRow("one SIM: neither read nor written") << 1;
        QTest::newRow("two SIMs: read and rewritten") << 2;
    }

    void secondSimNodesOnlyOnTwoSimTerminals()
    {
        QFETCH(int, sims);
        const QByteArray rules = "    <SIM2RULES cnctH=\"2\" stale=\"1\" />";
        const QByteArray black = "    <SIM2BLIST oc1=\"25002\" stale=\"1\" />";
        const QByteArray white = "    <SIM2WLIST dw=\"1\" oc1=\"25099\" stale=\"1\" />";
        Loaded l(config(rules + "\n" + black + "\n" + white + "\n"), sims);
        const bool two = sims == 2;

        QCOMPARE(l.sim<QComboBox>(2, "comboCnctH")->currentText(), zorTr(two ? "cfgt1_124" : "cfgt1_123"));
        QCOMPARE(l.page()->blackList(2)->rows()->codes().first(), two ? 25002 : 0);
        QCOMPARE(l.page()->whiteList(2)->rows()->codes().first(), two ? 25099 : 0);
        QCOMPARE(l.page()->whiteList(2)->findChild<QCheckBox*>("checkDw")->isChecked(), two);

        const QByteArray saved = l.doc.render();
        for (const QByteArray& line : {rules, black, white}) {
            const QByteArray name = line.trimmed().mid(1, 9);
            QCOMPARE(nodeLine(saved, name) == line.trimmed(), !two);
            QVERIFY(!nodeLine(saved, name).isEmpty());
        }
    }

    void whiteListMovesSwapNeighboursButNotPastTheEnds_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("step");
        QTest::addColumn<bool>("moves");
        QTest::newRow("first row up") << 0 << -1 << false;
        QTest::newRow("last row down") << 19 << 1 << false;
        QTest::newRow("row 6 down") << 5 << 1 << true;
        QTest::newRow("last row up") << 19 << -1 << true;
    }

    void whiteListMovesSwapNeighboursButNotPastTheEnds()
    {
        QFETCH(int, row);
        QFETCH(int, step);
        QFETCH(bool, moves);
        Loaded l(config(QByteArray()));
        ZOR_Form_Config_Transfer_SrvAlg_WList* list = l.page()->whiteList(1);
        QVector<int> codes;
        for (int r = 0; r < 20; ++r)
            codes.append(25001 + r);
        list->rows()->setCodes(codes);
        list->rows()->setCurrentRow(row);
        if (step < 0)
            list->slot_pressed_Btn_Up();
        else
            list->slot_pressed_Btn_Down();

        QVector<int> expected = codes;
        if (moves)
            std::swap(expected[row], expected[row + step]);
        QCOMPARE(list->rows()->codes(), expected);
        QCOMPARE(list->rows()->currentRow(), moves ? row + step : row);
        const QByteArray line = nodeLine(l.doc.render(), "SIM1WLIST");
        QVERIFY(line.contains(QByteArray(" oc1=\"") + QByteArray::number(expected.first()) + "\""));
        QVERIFY(line.contains(QByteArray(" oc20=\"") + QByteArray::number(expected.last()) + "\""));
    }

    void unknownStateCaptionSavesZero_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QByteArray>("attr");
        QTest::newRow("home data") << "comboCnctH" << QByteArray("cnctH");
        QTest::newRow("roaming data") << "comboCnctR" << QByteArray("cnctR");
    }

    void unknownStateCaptionSavesZero()
    {
        QFETCH(QString, box);
        QFETCH(QByteArray, attr);
        Loaded l(config("    <SIM1RULES cnctH=\"2\" cnctR=\"2\" />\n"));
        auto combo = l.page()->simPage(1)->findChild<QComboBox*>(box);
        combo->addItem(QStringLiteral("Caption of another version"));
        combo->setCurrentIndex(combo->count() - 1);
        QVERIFY(nodeLine(l.doc.render(), "SIM1RULES").contains(" " + attr + "=\"0\""));
    }

    void sim1RoamingValuesFollowReadMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("sim1");
        QTest::addColumn<QString>("expected"); // SIM 1 cnctR callR smsR, then SIM 2's

        const QByteArray absent("cnctH=\"1\"");
        const QByteArray present("cnctR=\"2\" callR=\"0\" smsR=\"1\"");
        // The page shows cnctR 3, callR 1, smsR 0 on both SIMs before reading.
        QTest::newRow("mode 0, absent: 0") << 0 << absent << "0 0 0  0 0 0";
        QTest::newRow("mode 1, absent: 1") << 1 << absent << "1 1 1  0 0 0";
        QTest::newRow("mode 1, present: stored") << 1 << present << "2 0 1  0 0 0";
        QTest::newRow("mode 2, absent: kept") << 2 << absent << "3 1 0  0 0 0";
        QTest::newRow("mode 2, present: still kept") << 2 << present << "3 1 0  0 0 0";
        QTest::newRow("mode -1, present: kept") << -1 << present << "3 1 0  0 0 0";
    }

    void sim1RoamingValuesFollowReadMode()
    {
        QFETCH(int, mode);
        QFETCH(QByteArray, sim1);
        QFETCH(QString, expected);
        ZOR_Form_Config_Transfer_SrvAlg page;
        page.setDeviceUseTwoSim(true);
        page.setRoamingReadMode(mode);
        for (int n = 1; n <= 2; ++n) {
            page.simPage(n)->findChild<QComboBox*>("comboCnctR")->setCurrentIndex(3);
            page.simPage(n)->findChild<QCheckBox*>("checkCallR")->setChecked(true);
            page.simPage(n)->findChild<QCheckBox*>("checkSmsR")->setChecked(false);
        }
        QVERIFY(ZorFormDocument::load(page, config("    <SIM1RULES " + sim1 + " />\n    <SIM2RULES cnctH=\"1\" />\n")));
        QStringList got;
        for (int n = 1; n <= 2; ++n) {
            got << QString::number(page.simPage(n)->findChild<QComboBox*>("comboCnctR")->currentIndex())
                << QString::number(shown(page.simPage(n)->findChild<QCheckBox*>("checkCallR")))
                << QString::number(shown(page.simPage(n)->findChild<QCheckBox*>("checkSmsR")));
            if (n == 1)
                got << QString();
        }
        QCOMPARE(got.join(' '), expected);
    }

    void operatorCodesLoadAsNumbers_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("code") << QByteArray("25001") << QByteArray("25001");
        QTest::newRow("not a number") << QByteArray("MTS") << QByteArray("0");
        QTest::newRow("empty") << QByteArray("") << QByteArray("0");
        QTest::newRow("negative") << QByteArray("-7") << QByteArray("0");
        QTest::newRow("more than six digits") << QByteArray("1234567") << QByteArray("999999");
    }

    void operatorCodesLoadAsNumbers()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QByteArray, saved);
        Loaded l(config("    <SIM1BLIST oc3=\"" + stored + "\" />\n    <SIM1WLIST oc20=\"" + stored + "\" />\n"));
        const QByteArray doc = l.doc.render();
        QVERIFY(nodeLine(doc, "SIM1BLIST").contains(" oc3=\"" + saved + "\""));
        QVERIFY(nodeLine(doc, "SIM1WLIST").contains(" oc20=\"" + saved + "\""));
    }

    // The list dialogs read and write the node they are handed.
    void listDialogsKeepTheirValuesOnTheNodeTheyAreHanded()
    {
        ZOR_Form_Config_Transfer_SrvAlg_BList black;
        ZOR_Form_Config_Transfer_SrvAlg_WList white;
        QVERIFY(ZorFormDocument::load(black, ZorFormDocument::kDecl + "<SIM1BLIST oc1=\"25001\" oc20=\"25099\" />\n"));
        QVERIFY(ZorFormDocument::load(white, ZorFormDocument::kDecl + "<SIM1WLIST dw=\"1\" oc2=\"25002\" />\n"));
        QCOMPARE(black.rows()->codes().first(), 25001);
        QCOMPARE(black.rows()->codes().last(), 25099);
        QCOMPARE(white.rows()->codes().at(1), 25002);
        const QByteArray saved = ZorFormDocument::save(black);
        QVERIFY(nodeLine(saved, "CONFIG").startsWith("<CONFIG oc1=\"25001\" oc2=\"0\""));
        QVERIFY(!saved.contains("BLIST"));
        const QByteArray savedWhite = ZorFormDocument::save(white);
        QVERIFY(nodeLine(savedWhite, "CONFIG").startsWith("<CONFIG dw=\"1\" check=\"0\" oc1=\"0\" oc2=\"25002\""));
        QVERIFY(!savedWhite.contains("WLIST"));
    }

    // Deleting a row's text empties the row, whichever way it is deleted.
    void clearedOperatorRowStoresZero_data()
    {
        QTest::addColumn<bool>("selectAll");
        QTest::newRow("select all, Delete") << true;
        QTest::newRow("Backspace five times") << false;
    }

    void clearedOperatorRowStoresZero()
    {
        QFETCH(bool, selectAll);
        Loaded l(config("    <SIM1BLIST oc1=\"25001\" />\n"));
        QSpinBox* code = l.page()->blackList(1)->rows()->codeBox(0);
        code->setFocus();
        if (selectAll) {
            QTest::keyClick(code, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(code, Qt::Key_Delete);
        } else {
            QTest::keyClick(code, Qt::Key_End);
            for (int i = 0; i < 5; ++i)
                QTest::keyClick(code, Qt::Key_Backspace);
        }
        QTest::keyClick(code, Qt::Key_Tab);
        QCOMPARE(code->value(), 0);
        QVERIFY(nodeLine(l.doc.render(), "SIM1BLIST").startsWith("<SIM1BLIST oc1=\"0\""));
    }

    void savedDocumentsReopenByteIdentical_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("sims");
        QTest::newRow("defaults, one SIM") << dataFile("srvalg_defaults_one_sim.xml") << 1;
        QTest::newRow("every value set, two SIMs") << dataFile("srvalg_two_sims.xml") << 2;
    }

    void savedDocumentsReopenByteIdentical()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, sims);
        QVERIFY(!file.isEmpty());
        Loaded l(file, sims);
        QCOMPARE(l.doc.render(), file);
        if (sims == 1) {
            l.doc.newDocument();
            QCOMPARE(l.doc.render(), file); // the defaults are the file's values
        }
    }

    void wifiRowsEditOnDoubleClickAndRemovedNamesStayRemoved()
    {
        Loaded l(config("    <WIFIBLIST bm1=\"\" bm2=\"Office AP\" />\n"));
        auto page = l.form<ZOR_Form_Config_Track_Locator_BList>("wifi_blist");
        QCOMPARE(page->nameEdit(0)->text(), QString());
        QCOMPARE(page->nameEdit(2)->text(), QString());
        QLineEdit* edit = page->nameEdit(1);
        QVERIFY(edit->isReadOnly());
        QTest::mouseDClick(edit, Qt::LeftButton);
        QVERIFY(!edit->isReadOnly());
        edit->setText(QStringLiteral("Office AP 2"));
        QTest::keyClick(edit, Qt::Key_Return);
        QVERIFY(edit->isReadOnly());
        QCOMPARE(nodeLine(l.doc.render(), "WIFIBLIST"),
            QByteArray("<WIFIBLIST bm1=\"\" bm2=\"Office AP 2\" bm3=\"\" bm4=\"\" bm5=\"\" bm6=\"\" bm7=\"\" bm8=\"\" "
                       "bm9=\"\" bm10=\"\" bm11=\"\" bm12=\"\" />"));
    }
};

QTEST_MAIN(TestConfigSrvAlg)
#include "tst_config_srvalg.moc"
