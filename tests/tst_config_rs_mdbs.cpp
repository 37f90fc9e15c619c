// The Modbus table: register numbering, row labels and their signals,
// events following the rows, and the stored nodes. Expected texts and files
// are written by hand from the settings rules.

#include "config/zor_form_config_rs_param_mdbs.h"
#include "module/zor_language.h"
#include "store/cserialize.h"
#include "store/cxmlworkdata.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

#include "zor_form_document.h"

namespace {

using Mdbs = ZOR_Form_Config_RS_Param_Mdbs;

using ZorFormDocument::config;

bool load(Mdbs& page, const QByteArray& bytes)
{
    CSerialize doc;
    if (!doc.openData(bytes))
        return false;
    CXMLWorkData root(&doc, doc.root());
    page.readParamMdbs(&root);
    return true;
}

// Saved below CONFIG, with "USRPRMS" made first unless told otherwise.
QByteArray save(Mdbs& page, bool bWithNode = true)
{
    CSerialize doc;
    doc.openData(QByteArray());
    CXMLWorkData root(&doc, doc.topNode(QStringLiteral("CONFIG"), true));
    if (bWithNode)
        delete root.createNode(QStringLiteral("USRPRMS"), 0);
    page.writeParamMdbs(&root);
    return doc.render();
}

QSpinBox* spin(Mdbs& page, int row, Mdbs::RowColumn c)
{
    return static_cast<QSpinBox*>(page.rowWidget(row, c));
}
QComboBox* box(Mdbs& page, int row, Mdbs::RowColumn c)
{
    return static_cast<QComboBox*>(page.rowWidget(row, c));
}
QComboBox* eventBox(Mdbs& page, int ev, Mdbs::EventColumn c)
{
    return static_cast<QComboBox*>(page.eventWidget(ev, c));
}
QSpinBox* eventSpin(Mdbs& page, int ev, Mdbs::EventColumn c)
{
    return static_cast<QSpinBox*>(page.eventWidget(ev, c));
}

const QString kByteBits = QString::fromUtf8("1 байт, биты"); // "1b"
const QString kTwoUnsigned = QString::fromUtf8("2 байта, беззнаковое"); // "2u"

} // namespace

class TestConfigRsMdbs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void rowWithOnlyPrmLoadsReadDefaults()
    {
        Mdbs page;
        QVERIFY(load(page, config("    <USRPRMS>\n        <MDBSPRM3 prm=\"2u\" />\n    </USRPRMS>\n")));
        // The stored defaults are in storedNodes(); here the captions they show.
        QVERIFY(page.isRowOn(3) && !page.isRowOn(1));
        QCOMPARE(box(page, 3, Mdbs::RowCmd)->currentText(), QStringLiteral("DO (0x01)"));
        QVERIFY(box(page, 3, Mdbs::RowOrd)->currentText().startsWith(QLatin1String("[ABCD] ")));
        QCOMPARE(box(page, 3, Mdbs::RowPrm)->currentText(), kTwoUnsigned);
    }

    void rowSwitchedOnByHandTakesLastAddressAnd500ms()
    {
        Mdbs page;
        page.setRowOn(1, true);
        spin(page, 1, Mdbs::RowAddr)->setValue(17);
        spin(page, 1, Mdbs::RowCycle)->setValue(3000);
        box(page, 1, Mdbs::RowPrm)->setCurrentIndex(5);
        page.setRowOn(2, true);
        QCOMPARE(spin(page, 2, Mdbs::RowAddr)->value(), 17);
        QCOMPARE(spin(page, 2, Mdbs::RowCycle)->value(), 500);
        QCOMPARE(box(page, 2, Mdbs::RowPrm)->currentText(), kByteBits);
        QCOMPARE(page.lastAddress(), 17);
    }

    void registerNumbering_data()
    {
        QTest::addColumn<bool>("byNumber");
        QTest::addColumn<int>("address");
        QTest::addColumn<QString>("cmd");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("expAddress");
        QTest::addColumn<QString>("expCmd");
        QTest::addColumn<bool>("red");
        // From address and type: DO +1, DI +10001, AI +30001, AO +40001.
        QTest::newRow("DI 0x0000 is 10001") << false << 0 << "DI (0x02)" << -1 << 0 << "DI (0x02)" << false;
        QTest::newRow("DO 0x0000 is 1") << false << 0 << "DO (0x01)" << -1 << 0 << "DO (0x01)" << false;
        QTest::newRow("AO 0x0010 is 40017") << false << 0x10 << "AO (0x03)" << -1 << 0x10 << "AO (0x03)" << false;
        QTest::newRow("AI 0xffff clamps to 49999")
            << false << 0xffff << "AI (0x04)" << -1 << 0xffff << "AI (0x04)" << false;
        // From number: the blocks and the gaps between them.
        QTest::newRow("30005 is AI 4") << true << 0x77 << "DO (0x01)" << 30005 << 4 << "AI (0x04)" << false;
        QTest::newRow("9999 is DO 9998") << true << 0x77 << "DI (0x02)" << 9999 << 9998 << "DO (0x01)" << false;
        QTest::newRow("49999 is AO 9998") << true << 0x77 << "DO (0x01)" << 49999 << 9998 << "AO (0x03)" << false;
        QTest::newRow("10000 changes nothing") << true << 0x77 << "DO (0x01)" << 10000 << 0x77 << "DO (0x01)" << false;
        QTest::newRow("20000 red") << true << 0x77 << "DI (0x02)" << 20000 << 0x77 << "DI (0x02)" << true;
        QTest::newRow("30000 red") << true << 0x77 << "DI (0x02)" << 30000 << 0x77 << "DI (0x02)" << true;
        QTest::newRow("40000 changes nothing") << true << 0x77 << "DI (0x02)" << 40000 << 0x77 << "DI (0x02)" << false;
    }
    void registerNumbering()
    {
        QFETCH(bool, byNumber);
        QFETCH(int, address);
        QFETCH(QString, cmd);
        QFETCH(int, number);
        QFETCH(int, expAddress);
        QFETCH(QString, expCmd);
        QFETCH(bool, red);
        Mdbs page;
        page.setRowOn(4, true);
        spin(page, 4, Mdbs::RowReg)->setValue(address);
        box(page, 4, Mdbs::RowCmd)->setCurrentText(cmd);
        page.setByNumber(byNumber);
        QSpinBox* num = spin(page, 4, Mdbs::RowNumber);
        QCOMPARE(num->isEnabled(), byNumber);
        QCOMPARE(spin(page, 4, Mdbs::RowReg)->isEnabled(), !byNumber);
        if (number < 0) {
            const int base = cmd.startsWith("DO") ? 1
                : cmd.startsWith("DI")            ? 10001
                : cmd.startsWith("AI")            ? 30001
                                                  : 40001;
            QCOMPARE(num->value(), qMin(49999, base + address));
        } else {
            num->setValue(number);
        }
        QCOMPARE(spin(page, 4, Mdbs::RowReg)->value(), expAddress);
        QCOMPARE(box(page, 4, Mdbs::RowCmd)->currentText(), expCmd);
        QCOMPARE(num->palette().color(QPalette::Base) == QColor(Qt::red), red);
        if (red)
            QCOMPARE(num->palette().color(QPalette::Text), QColor(Qt::white));
    }

    void slaveAddressLimitDependsOnRow_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("entered");
        QTest::addColumn<int>("shown");
        QTest::newRow("row 8 accepts 255") << 8 << 255 << 255;
        QTest::newRow("row 9 refuses 255") << 9 << 255 << 254;
        QTest::newRow("row 32 refuses 255") << 32 << 255 << 254;
        QTest::newRow("row 9 refuses 0") << 9 << 0 << 1;
    }
    void slaveAddressLimitDependsOnRow()
    {
        QFETCH(int, row);
        QFETCH(int, entered);
        QFETCH(int, shown);
        Mdbs page;
        page.setRowOn(row, true);
        spin(page, row, Mdbs::RowAddr)->setValue(entered);
        QCOMPARE(spin(page, row, Mdbs::RowAddr)->value(), shown);
        // The same limit when loaded.
        Mdbs loaded;
        QVERIFY(load(loaded,
            config(QStringLiteral("<USRPRMS><MDBSPRM%1 prm=\"1u\" addr=\"%2\" /></USRPRMS>")
                       .arg(row)
                       .arg(entered)
                       .toLatin1())));
        QCOMPARE(spin(loaded, row, Mdbs::RowAddr)->value(), shown);
    }

    void rowSignalsCarryFourValues()
    {
        Mdbs page;
        QSignalSpy add(&page, &Mdbs::signal_UserParam_Add);
        QSignalSpy del(&page, &Mdbs::signal_UserParam_Del);
        page.setRowOn(1, true);
        QCOMPARE(add.count(), 1);
        QCOMPARE(add.last(), QVariantList({"MB", "MB1,  1,  0", kByteBits, 1}));
        spin(page, 1, Mdbs::RowAddr)->setValue(5);
        spin(page, 1, Mdbs::RowReg)->setValue(0x1a);
        QCOMPARE(page.rowLabel(1), QStringLiteral("MB1,  5,  1a"));
        QCOMPARE(del.last(), QVariantList({"MB", "MB1,  5,  0", kByteBits}));
        QCOMPARE(add.last(), QVariantList({"MB", "MB1,  5,  1a", kByteBits, 1}));
        box(page, 1, Mdbs::RowPrm)->setCurrentText(kTwoUnsigned);
        QCOMPARE(del.last(), QVariantList({"MB", "MB1,  5,  1a", kByteBits}));
        QCOMPARE(add.last(), QVariantList({"MB", "MB1,  5,  1a", kTwoUnsigned, 2}));
        QCOMPARE(page.getStrTypeModbus("mb1"), "MB1,  5,  1a, " + kTwoUnsigned);
        QCOMPARE(page.getStrProtocolUserData("mb1"), "MB, MB1,  5,  1a, " + kTwoUnsigned);
        QCOMPARE(page.getStrTypeModbusEvent("mb1"), QStringLiteral("MB1,  5,  1a"));
        QCOMPARE(page.getStrTypeModbus("mb2"), QString());
        QCOMPARE(page.getStrProtocolUserData("mb2"), QString());
        const int nDel = del.count();
        page.setRowOn(1, false);
        QCOMPARE(del.count(), nDel + 1);
        QCOMPARE(del.last(), QVariantList({"MB", "MB1,  5,  1a", kTwoUnsigned}));
        QCOMPARE(page.getStrTypeModbusEvent("mb1"), QString());
        // Reset withdraws every row still in use.
        page.setRowOn(7, true);
        page.setDefaultParam();
        // Row 7 took the last slave address entered, 5.
        QCOMPARE(del.last(), QVariantList({"MB", "MB7,  5,  0", kByteBits}));
        QVERIFY(page.labels().isEmpty());
        QCOMPARE(add.count(), del.count());
    }

    void eventsFollowTheRows()
    {
        Mdbs page;
        page.setRowOn(2, true);
        page.setRowOn(10, true);
        page.setEventOn(1, true);
        QComboBox* prm = eventBox(page, 1, Mdbs::EvPrm);
        // Sorted as texts: "MB10" before "MB2".
        QCOMPARE(prm->count(), 2);
        QCOMPARE(prm->itemText(0), QStringLiteral("MB10,  1,  0"));
        QCOMPARE(prm->itemText(1), QStringLiteral("MB2,  1,  0"));
        page.setRowOn(1, true);
        QCOMPARE(prm->itemText(0), QStringLiteral("MB1,  1,  0"));
        prm->setCurrentText(QStringLiteral("MB2,  1,  0"));
        page.setEventOn(2, true);
        eventBox(page, 2, Mdbs::EvPrm)->setCurrentText(QStringLiteral("MB10,  1,  0"));
        // A new slave address is a new label: the event that used it goes off.
        spin(page, 2, Mdbs::RowAddr)->setValue(9);
        QVERIFY(!page.isEventOn(1));
        QCOMPARE(prm->count(), 0);
        QCOMPARE(eventSpin(page, 1, Mdbs::EvHigh)->value(), 0);
        QVERIFY(page.isEventOn(2));
        QCOMPARE(eventBox(page, 2, Mdbs::EvPrm)->findText(QStringLiteral("MB2,  9,  0")), 2);
        QCOMPARE(eventBox(page, 2, Mdbs::EvPrm)->currentText(), QStringLiteral("MB10,  1,  0"));
    }

    void conditionSelectsItsFields_data()
    {
        QTest::addColumn<int>("cond");
        QTest::addColumn<QString>("enabled"); // step low high hyst
        QTest::newRow("1 threshold") << 0 << "1000";
        QTest::newRow("2 bounds") << 1 << "0110";
        QTest::newRow("3 bounds and hysteresis") << 2 << "0111";
    }
    void conditionSelectsItsFields()
    {
        QFETCH(int, cond);
        QFETCH(QString, enabled);
        Mdbs page;
        page.setRowOn(1, true);
        page.setEventOn(3, true);
        eventBox(page, 3, Mdbs::EvCond)->setCurrentIndex(cond);
        QString shown;
        for (auto c : {Mdbs::EvStep, Mdbs::EvLow, Mdbs::EvHigh, Mdbs::EvHyst})
            shown += page.eventWidget(3, c)->isEnabled() ? '1' : '0';
        QCOMPARE(shown, enabled);
    }

    void storedNodes_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("saved");
        const QByteArray two(
            "    <USRPRMS>\n"
            "        <MDBSPRM2 prm=\"4f\" addr=\"12\" reg=\"1a\" cmd=\"3\" ord=\"1\" cycle=\"2000\" save=\"1\" />\n"
            "        <MDBSPRM5 prm=\"1b\" addr=\"12\" reg=\"0\" cmd=\"1\" ord=\"0\" cycle=\"500\" save=\"0\" />\n"
            "        <MDBSEVNT4 prm=\"mb5\" cond=\"3\" step=\"0\" low=\"-5\" high=\"70\" hyst=\"2\" />\n"
            "    </USRPRMS>\n");
        QTest::newRow("rows 2 and 5 and an event") << two << two;
        QTest::newRow("row defaults and event defaults")
            << QByteArray("<USRPRMS><MDBSPRM1 prm=\"2s\" /><MDBSEVNT1 prm=\"mb1\" /></USRPRMS>")
            << QByteArray(
                   "    <USRPRMS>\n"
                   "        <MDBSPRM1 prm=\"2s\" addr=\"1\" reg=\"0\" cmd=\"1\" ord=\"0\" cycle=\"1000\" save=\"0\" "
                   "/>\n"
                   "        <MDBSEVNT1 prm=\"mb1\" cond=\"1\" step=\"1000\" low=\"0\" high=\"1000\" hyst=\"100\" />\n"
                   "    </USRPRMS>\n");
        QTest::newRow("out of range and foreign values")
            << QByteArray("<USRPRMS><MDBSPRM9 prm=\"9z\" addr=\"300\" reg=\"zz\" cmd=\"7\" ord=\"-1\" cycle=\"100\" "
                          "save=\"yes\" />"
                          "<MDBSPRM10 prm=\"8s\" reg=\"123456\" cycle=\"99999\" save=\"2\" />"
                          "<MDBSEVNT2 prm=\"mb3\" cond=\"2\" /><MDBSEVNT3 prm=\"MB9\" /><MDBSEVNT5 prm=\"mb10\" "
                          "cond=\"9\" /></USRPRMS>")
            << QByteArray(
                   "    <USRPRMS>\n"
                   "        <MDBSPRM9 prm=\"1b\" addr=\"254\" reg=\"0\" cmd=\"1\" ord=\"0\" cycle=\"500\" save=\"0\" "
                   "/>\n"
                   "        <MDBSPRM10 prm=\"8s\" addr=\"1\" reg=\"ffff\" cmd=\"1\" ord=\"0\" cycle=\"60000\" "
                   "save=\"1\" />\n"
                   "        <MDBSEVNT5 prm=\"mb10\" cond=\"1\" step=\"1000\" low=\"0\" high=\"1000\" hyst=\"100\" />\n"
                   "    </USRPRMS>\n");
        QTest::newRow("numbers written otherwise")
            << QByteArray("<USRPRMS><MDBSPRM3 prm=\"2u\" reg=\"12345678901234567\" cmd=\" 3\" ord=\"03\" /></USRPRMS>")
            << QByteArray("    <USRPRMS>\n"
                          "        <MDBSPRM3 prm=\"2u\" addr=\"1\" reg=\"ffff\" cmd=\"3\" ord=\"3\" cycle=\"1000\" "
                          "save=\"0\" />\n"
                          "    </USRPRMS>\n");
        QTest::newRow("row with empty prm is off")
            << QByteArray("<USRPRMS><MDBSPRM1 prm=\"\" addr=\"4\" /><MDBSEVNT1 prm=\"mb1\" /></USRPRMS>")
            << QByteArray("    <USRPRMS />\n");
    }
    void storedNodes()
    {
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, saved);
        Mdbs page;
        QVERIFY(load(page, config(body)));
        QCOMPARE(QString::fromLatin1(save(page)), QString::fromLatin1(config(saved)));
    }

    void nothingWithoutUserParamsNode()
    {
        Mdbs page;
        QVERIFY(load(page, config("    <MDBSPRM1 prm=\"1b\" />\n")));
        QVERIFY(!page.isRowOn(1));
        page.setRowOn(1, true);
        QCOMPARE(save(page, false), config(""));
    }
};

QTEST_MAIN(TestConfigRsMdbs)
#include "tst_config_rs_mdbs.moc"
