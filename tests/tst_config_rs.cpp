// The serial interface pages and their device pages: the nodes each page
// keeps, the line settings the devices ask for, and the Modbus table inside
// a whole configuration. Expected files are written by hand from the
// settings rules.

#include "config/zor_configdocument.h"
#include "config/zor_configpages.h"
#include "config/zor_form_config_rs232.h"
#include "config/zor_form_config_rs485.h"
#include "config/zor_form_config_rs_param_flds_rs232.h"
#include "config/zor_form_config_rs_param_flds_rs485.h"
#include "config/zor_form_config_rs_param_dtacan.h"
#include "config/zor_form_config_rs_param_mdbs.h"
#include "config/zor_form_config_rs_param_pcnt.h"
#include "config/zor_form_config_rs_param_refr.h"
#include "config/zor_form_config_rs_param_tach.h"
#include "config/zor_userparamregistry.h"
#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

#include "zor_form_document.h"

namespace {

using Port = ZOR_Form_Config_RS_Port;
using Mdbs = ZOR_Form_Config_RS_Param_Mdbs;

using ZorFormDocument::config;
using ZorFormDocument::load;
using ZorFormDocument::save;

QVector<ZOR_ConfigPage> serialPages()
{
    QVector<ZOR_ConfigPage> pages;
    for (const ZOR_ConfigPage& page : zorConfigPages())
        if (QByteArray(page.lpId).startsWith("rs"))
            pages.append(page);
    return pages;
}

// One fuel sensor node as written with the sensor's defaults.
QByteArray defaultSensor(int n, const QByteArray& indent)
{
    return indent + "<FS" + QByteArray::number(n)
        + " use=\"0\" type=\"0\" address=\"1\" thld=\"5\" thldOff=\"0\" filterMode=\"0\" filterLength=\"5\" "
          "filterLvl=\"5\" />\n";
}

} // namespace

class TestConfigRs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void fuelPagesKeepTheirNodes_data()
    {
        QTest::addColumn<bool>("rs485");
        QTest::addColumn<int>("sensors");
        QTest::newRow("RS-232: FS1 only") << false << 1;
        QTest::newRow("RS-485: FS1 to FS16") << true << 16;
    }
    void fuelPagesKeepTheirNodes()
    {
        QFETCH(bool, rs485);
        QFETCH(int, sensors);
        std::unique_ptr<ZOR_Form_Config_RS_Param_Flds> page;
        if (rs485)
            page.reset(new ZOR_Form_Config_RS_Param_Flds_RS485);
        else
            page.reset(new ZOR_Form_Config_RS_Param_Flds_RS232);
        QByteArray expected;
        for (int n = 1; n <= sensors; ++n)
            expected += defaultSensor(n, "    ");
        QCOMPARE(save(*page), config(expected));
        // The last sensor, set by hand and out of range, and a node beyond the page.
        const QByteArray last = QByteArray::number(sensors);
        QVERIFY(load(*page,
            config("<FS" + last
                + " use=\"1\" type=\"3\" address=\"300\" thld=\"5000\" thldOff=\"1\" "
                  "filterMode=\"1\" filterLength=\"0\" filterLvl=\"11\" /><FS17 use=\"1\" />")));
        QVERIFY(page->sensorWidget(sensors, ZOR_Form_Config_RS_Param_Flds::Type)->isEnabled());
        QVERIFY(!page->sensorWidget(sensors, ZOR_Form_Config_RS_Param_Flds::FilterLength)->isEnabled());
        expected.clear();
        for (int n = 1; n < sensors; ++n)
            expected += defaultSensor(n, "    ");
        expected += "    <FS" + last
            + " use=\"1\" type=\"3\" address=\"255\" thld=\"4095\" thldOff=\"1\" filterMode=\"1\" "
              "filterLength=\"1\" filterLvl=\"10\" />\n";
        QCOMPARE(save(*page), config(expected));
        // Unknown type and mode codes load as 0.
        QVERIFY(load(*page, config("<FS1 use=\"1\" type=\"77\" filterMode=\"5\" />")));
        QVERIFY(
            save(*page).contains("<FS1 use=\"1\" type=\"0\" address=\"1\" thld=\"5\" thldOff=\"0\" filterMode=\"0\" "));
    }

    void interfaceNodes_data()
    {
        QTest::addColumn<bool>("rs485");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("nothing stored: defaults")
            << true << QByteArray()
            << QByteArray("    <RS485 device=\"0\" speed=\"9600\" parity=\"None\" stop=\"1\" />\n");
        QTest::newRow("line settings kept")
            << false << QByteArray("<RS232 device=\"0\" speed=\"57600\" parity=\"Odd\" stop=\"2\" />")
            << QByteArray("    <RS232 device=\"0\" speed=\"57600\" parity=\"Odd\" stop=\"2\" />\n");
        QTest::newRow("unknown codes load as defaults")
            << false << QByteArray("<RS232 device=\"99\" speed=\"1234\" parity=\"Mark\" stop=\"3\" />")
            << QByteArray("    <RS232 device=\"0\" speed=\"9600\" parity=\"None\" stop=\"1\" />\n");
        QTest::newRow("Modbus is not offered on RS-232")
            << false << QByteArray("<RS232 device=\"2\" speed=\"9600\" parity=\"None\" stop=\"1\"><USRPRMS /></RS232>")
            << QByteArray("    <RS232 device=\"0\" speed=\"9600\" parity=\"None\" stop=\"1\" />\n");
        QTest::newRow("RS-232 fuel sensor")
            << false
            << QByteArray("<RS232 device=\"1\" speed=\"19200\" parity=\"None\" stop=\"1\"><FS1 use=\"1\" /></RS232>")
            << QByteArray("    <RS232 device=\"1\" speed=\"19200\" parity=\"None\" stop=\"1\">\n"
                          "        <FS1 use=\"1\" type=\"0\" address=\"1\" thld=\"5\" thldOff=\"0\" filterMode=\"0\" "
                          "filterLength=\"5\" filterLvl=\"5\" />\n"
                          "    </RS232>\n");
        QTest::newRow("Modbus rows below USRPRMS; stale nodes of other devices go")
            << true
            << QByteArray("<RS485 device=\"2\" speed=\"115200\" parity=\"Even\" stop=\"1\"><FS1 use=\"1\" />"
                          "<USRPRMS><MDBSPRM4 prm=\"4s\" addr=\"7\" reg=\"100\" cmd=\"4\" ord=\"3\" cycle=\"1500\" "
                          "save=\"1\" />"
                          "<MDBSEVNT1 prm=\"mb2\" /></USRPRMS></RS485>")
            << QByteArray("    <RS485 device=\"2\" speed=\"115200\" parity=\"Even\" stop=\"1\">\n"
                          "        <USRPRMS>\n"
                          "            <MDBSPRM4 prm=\"4s\" addr=\"7\" reg=\"100\" cmd=\"4\" ord=\"3\" cycle=\"1500\" "
                          "save=\"1\" />\n"
                          "        </USRPRMS>\n"
                          "    </RS485>\n");
        QTest::newRow("HRPS asks for 38400 but the stored speed wins")
            << true << QByteArray("<RS485 device=\"14\" speed=\"9600\" parity=\"None\" stop=\"2\" />")
            << QByteArray("    <RS485 device=\"14\" speed=\"9600\" parity=\"None\" stop=\"2\" />\n");
    }
    void interfaceNodes()
    {
        QFETCH(bool, rs485);
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, saved);
        std::unique_ptr<Port> port;
        if (rs485)
            port.reset(new ZOR_Form_Config_RS485);
        else
            port.reset(new ZOR_Form_Config_RS232);
        QVERIFY(load(*port, config(body)));
        QCOMPARE(QString::fromLatin1(save(*port)), QString::fromLatin1(config(saved)));
    }

    void deviceAsksForItsLineSetting()
    {
        ZOR_Form_Config_RS485 port;
        QSignalSpy spy(port.page(Port::KindHrps), &ZOR_Form_Config_RS_Param::changeRs_Settings);
        port.setCurrentKind(Port::KindHrps);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.last().at(0).value<QWidget*>(), static_cast<QWidget*>(port.page(Port::KindHrps)));
        QCOMPARE(spy.last().mid(1), QVariantList({"38400", "None", "1"}));
        QCOMPARE(port.speed(), QStringLiteral("38400"));
        // A page that is not shown cannot change the line.
        port.setCurrentKind(Port::KindNone);
        port.page(Port::KindHrps)->updateRs_Settings();
        port.slot_changeRs_Settings(port.page(Port::KindHrps), "1200", "Odd", "2");
        QCOMPARE(port.speed(), QStringLiteral("38400"));
        QCOMPARE(port.parity(), QStringLiteral("None"));
    }

    void tachographModelSetsLineAndPassword()
    {
        ZOR_Form_Config_RS485 port;
        port.setCurrentKind(Port::KindTachograph);
        auto tach = static_cast<ZOR_Form_Config_RS_Param_Tach*>(port.page(Port::KindTachograph));
        QCOMPARE(port.speed(), QStringLiteral("115200"));
        tach->findChildren<QLineEdit*>().at(0)->setText("driver");
        QSignalSpy spy(tach, &ZOR_Form_Config_RS_Param::changeRs_Settings);
        tach->setModel("STRH");
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.last().mid(1), QVariantList({"19200", "None", "1"}));
        QCOMPARE(port.speed(), QStringLiteral("19200"));
        QCOMPARE(port.parity(), QStringLiteral("None"));
        QCOMPARE(tach->password(), QStringLiteral("8264019375"));
        QCOMPARE(tach->login(), QString());
        tach->setModel("KONT");
        QCOMPARE(port.speed(), QStringLiteral("9600"));
        QCOMPARE(tach->password(), QStringLiteral("570913"));
        // Stored login and password win over the model's.
        QVERIFY(load(*tach, config("<TACH type=\"STRH\" login=\"ivanov\" />")));
        QCOMPARE(tach->login(), QStringLiteral("ivanov"));
        QCOMPARE(tach->password(), QStringLiteral("570913"));
    }

    void modelLineSettings_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<QString>("speed");
        QTest::newRow("ATOL") << int(Port::KindTachograph) << QByteArray("<TACH type=\"ATOL\" />") << "115200";
        QTest::newRow("STRH") << int(Port::KindTachograph) << QByteArray("<TACH type=\"STRH\" />") << "19200";
        QTest::newRow("MERK") << int(Port::KindTachograph) << QByteArray("<TACH type=\"MERK\" />") << "115200";
        QTest::newRow("KONT") << int(Port::KindTachograph) << QByteArray("<TACH type=\"KONT\" />") << "9600";
        QTest::newRow("refrigerator 1") << int(Port::KindRefrigerator) << QByteArray("<REFR type=\"IQFREEZE\" />")
                                        << "9600";
        QTest::newRow("refrigerator 2") << int(Port::KindRefrigerator) << QByteArray("<REFR type=\"DATACOLD\" />")
                                        << "38400";
        QTest::newRow("refrigerator 3") << int(Port::KindRefrigerator) << QByteArray("<REFR type=\"CARRIER\" />")
                                        << "9600";
        QTest::newRow("PRESSPRO") << int(Port::KindTyres) << QByteArray("<TPMS type=\"PRESSPRO\" />") << "38400";
        QTest::newRow("BRDGESTN") << int(Port::KindTyres) << QByteArray("<TPMS type=\"BRDGESTN\" />") << "38400";
        QTest::newRow("TM508") << int(Port::KindTyres) << QByteArray("<TPMS type=\"TM508\" />") << "9600";
        QTest::newRow("TPMS613") << int(Port::KindTyres) << QByteArray("<TPMS type=\"TPMS613\" />") << "19200";
        QTest::newRow("TD18") << int(Port::KindTyres) << QByteArray("<TPMS type=\"TD18\" />") << "19200";
        QTest::newRow("TD21") << int(Port::KindTyres) << QByteArray("<TPMS type=\"TD21\" />") << "19200";
    }
    void modelLineSettings()
    {
        QFETCH(int, kind);
        QFETCH(QByteArray, node);
        QFETCH(QString, speed);
        ZOR_Form_Config_RS485 port;
        port.setCurrentKind(kind);
        QSignalSpy spy(port.page(kind), &ZOR_Form_Config_RS_Param::changeRs_Settings);
        QVERIFY(load(*port.page(kind), config(node)));
        port.page(kind)->updateRs_Settings();
        QVERIFY(spy.count() >= 1);
        QCOMPARE(spy.last().mid(1), QVariantList({speed, "None", "1"}));
        QCOMPARE(port.speed(), speed);
    }

    void nodeWithoutTypeLoadsDefaultModel_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("TACH") << int(Port::KindTachograph) << QByteArray("<TACH type=\"MERK\" />")
                              << QByteArray(
                                     "<TACH type=\"ATOL\" login=\"\" pass=\"570913\" noPing=\"0\" eventOff=\"0\" />");
        QTest::newRow("RFID")
            << int(Port::KindRfid) << QByteArray("<RFID type=\"ADM20\" />")
            << QByteArray(
                   "<RFID type=\"ESCORT\" id=\"1\" holdTime=\"60\" nearOnly=\"0\" minLvl=\"-128\" mode=\"0\" />");
        QTest::newRow("TPMS") << int(Port::KindTyres) << QByteArray("<TPMS type=\"TD21\" />")
                              << QByteArray("<TPMS type=\"PRESSPRO\" holdTime=\"15\" />");
        QTest::newRow("PCNT") << int(Port::KindPassengers) << QByteArray("<PCNT type=\"ACOND\" />")
                              << QByteArray(
                                     "<PCNT type=\"PP01\" id1=\"1\" id2=\"2\" id3=\"3\" id4=\"4\" id5=\"5\" id6=\"6\" "
                                     "id7=\"7\" countEvent=\"1\" door=\"1\" offTime=\"1800\" coordTime=\"10\" />");
        QTest::newRow("DDU") << int(Port::KindDisplay) << QByteArray("<DDU type=\"ICON\" />")
                             << QByteArray("<DDU type=\"DV01\" showFuelLvl=\"0\" infoPeriod=\"30\" address=\"7\" />");
        QTest::newRow("REFR") << int(Port::KindRefrigerator) << QByteArray("<REFR type=\"CARRIER\" />")
                              << QByteArray("<REFR type=\"IQFREEZE\" period=\"60\" />");
        QTest::newRow("AXIS") << int(Port::KindAxis) << QByteArray("<AXIS holdTime=\"0\" />")
                              << QByteArray("<AXIS holdTime=\"1\" />");
    }
    void nodeWithoutTypeLoadsDefaultModel()
    {
        QFETCH(int, kind);
        QFETCH(QByteArray, node);
        QFETCH(QByteArray, saved);
        ZOR_Form_Config_RS485 port;
        port.setCurrentKind(kind);
        // Another model first, so that the default has to be chosen again.
        QVERIFY(load(*port.page(kind), config(node)));
        QByteArray withoutType = node;
        const int n = withoutType.indexOf(" type=");
        if (n >= 0)
            withoutType.remove(n, withoutType.indexOf('"', withoutType.indexOf('"', n) + 1) - n + 1);
        QVERIFY(load(*port.page(kind), config(withoutType)));
        QCOMPARE(QString::fromLatin1(save(*port.page(kind))), QString::fromLatin1(config("    " + saved + "\n")));
    }

    void canDataNodeIsNeverCreated()
    {
        ZOR_Form_Config_RS_Param_DtaCan page;
        QCOMPARE(save(page), config(""));
        QVERIFY(load(page, config("<DTCN address=\"300\" />")));
        QCOMPARE(save(page), config("    <DTCN address=\"255\" />\n"));
        page.setDefaultParam();
        QCOMPARE(save(page), config(""));
    }

    void cataloguedValuesAreNamedByIdentifier()
    {
        ZOR_Form_Config_RS_Param_Pcnt pcnt;
        ZOR_Form_Config_RS_Param_Refr refr;
        QCOMPARE(pcnt.getStrProtocolUserData("co1"), QStringLiteral("CO, 1, 4u"));
        QCOMPARE(pcnt.getStrProtocolUserData("co999"), QString());
        QCOMPARE(pcnt.getStrProtocolUserData("rc1"), QString());
        QCOMPARE(refr.getStrProtocolUserData("rc37"), QStringLiteral("RC, 37, 2s"));
        QVERIFY(refr.getStrProtocolUserData("ax1").startsWith("AX, 1, "));
        QCOMPARE(refr.getStrProtocolUserData("rc38"), QString());
    }

    void modbusValuesReachTheRegistryOnlyWhileModbusIsChosen()
    {
        ZorFormDocument::Doc d(serialPages());
        auto port = d.form<Port>("rs485");
        QVERIFY(port && d.form<Port>("rs232"));
        auto modbus = static_cast<Mdbs*>(port->page(Port::KindModbus));
        port->setCurrentKind(Port::KindModbus);
        modbus->setRowOn(3, true);
        static_cast<QSpinBox*>(modbus->rowWidget(3, Mdbs::RowAddr))->setValue(5);
        ZOR_UserParamRegistry* reg = d.doc.userParams();
        const QString label = QStringLiteral("MB3,  5,  0");
        const QString caption = QString::fromUtf8("1 байт, биты");
        QCOMPARE(reg->entries().size(), 1);
        QVERIFY(reg->indexOf("MB", label, caption) >= 0);
        port->setCurrentKind(Port::KindFuel);
        QCOMPARE(reg->entries().size(), 0);
        port->setCurrentKind(Port::KindModbus);
        QVERIFY(reg->indexOf("MB", label, caption) >= 0);
        modbus->setRowOn(3, false);
        QCOMPARE(reg->entries().size(), 0);
    }

    void newConfigurationWithModbusSavesAndReloads()
    {
        QByteArray bytes;
        {
            ZorFormDocument::Doc d(serialPages());
            auto port = d.form<Port>("rs485");
            port->setCurrentKind(Port::KindModbus);
            auto modbus = static_cast<Mdbs*>(port->page(Port::KindModbus));
            modbus->setRowOn(2, true);
            modbus->setRowOn(5, true);
            modbus->setEventOn(1, true);
            static_cast<QComboBox*>(modbus->eventWidget(1, Mdbs::EvPrm))->setCurrentIndex(1);
            auto fuel232 = d.form<Port>("rs232");
            fuel232->setCurrentKind(Port::KindFuel);
            static_cast<QCheckBox*>(static_cast<ZOR_Form_Config_RS_Param_Flds*>(fuel232->page(Port::KindFuel))
                                        ->sensorWidget(1, ZOR_Form_Config_RS_Param_Flds::Use))
                ->setChecked(true);
            QVERIFY2(d.doc.save(d.path()), qPrintable(d.doc.errorString()));
            bytes = d.file();
        }
        QVERIFY(bytes.contains(
            "<MDBSPRM2 prm=\"1b\" addr=\"1\" reg=\"0\" cmd=\"1\" ord=\"0\" cycle=\"500\" save=\"0\" />"));
        QVERIFY(bytes.contains("<MDBSEVNT1 prm=\"mb5\" cond=\"1\" step=\"0\" low=\"0\" high=\"0\" hyst=\"0\" />"));
        ZorFormDocument::Doc d(serialPages());
        QVERIFY(d.load(bytes));
        auto modbus = static_cast<Mdbs*>(d.form<Port>("rs485")->page(Port::KindModbus));
        QVERIFY(modbus->isRowOn(2) && modbus->isRowOn(5) && !modbus->isRowOn(1));
        QVERIFY(modbus->isEventOn(1));
        QCOMPARE(d.doc.userParams()->entries().size(), 2);
        // Load and save: the same bytes.
        QCOMPARE(d.doc.render(), bytes);
    }
};

QTEST_MAIN(TestConfigRs)
#include "tst_config_rs.moc"
