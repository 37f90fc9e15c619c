// Bluetooth LE sensor slots: the simple sensor types' nodes, the universal
// sensor's twelve rows, its user parameters, and the Bluetooth page in a
// configuration document. Expected texts and files are written from the
// settings rules, by hand.

#include "config/zor_form_config_ble_devtype_uni.h"
#include "config/zor_form_config_bluetooth.h"
#include "config/zor_form_config_bluetooth_device_type.h"
#include "config/zor_terminalprofile.h"
#include "config/zor_userparamregistry.h"
#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QtTest>

#include "zor_form_document.h"

namespace {

using Uni = ZOR_Form_Config_Ble_DevType_Uni;
using Slot = ZOR_Form_Config_Bluetooth_Device_Type;

using ZorFormDocument::config;
using ZorFormDocument::load;
using ZorFormDocument::save;

QStringList shownCaptions(QWidget* page)
{
    QStringList texts;
    for (QComboBox* box : page->findChildren<QComboBox*>())
        texts << box->currentText();
    return texts;
}

bool itemEnabled(QComboBox* box, const QString& text)
{
    auto model = qobject_cast<QStandardItemModel*>(box->model());
    const int n = box->findText(text);
    return model && n >= 0 && model->item(n)->isEnabled();
}

QComboBox* prmBox(Uni* uni, int row, int column)
{
    return static_cast<QComboBox*>(uni->paramWidget(row, column));
}
QCheckBox* prmOn(Uni* uni, int row)
{
    return static_cast<QCheckBox*>(uni->paramWidget(row, Uni::PrmOn));
}

const QString kUserWord = QString::fromUtf8("Пользовательский параметр");

} // namespace

class TestConfigBle : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void simpleTypeReloadsToSameBytes_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QStringList>("shown");
        // The element lines, and the texts shown: device type, model, channels.
        auto row = [](const char* name, const QByteArrayList& nodes, const char* shown) {
            QTest::newRow(name) << "    " + nodes.join("\n    ") + "\n" << QString::fromUtf8(shown).split('|');
        };
        row("fuel sensor, two-digit index",
            {"<BLE1 type=\"1\" />", "<FS1 type=\"4\" idx=\"12\" thld=\"250\" thldOff=\"1\" />"},
            "Датчик уровня топлива|MIELTA FANTOM|ДУТ 12");
        row("fuel sensor, one-digit index lines up",
            {"<BLE1 type=\"1\" />", "<FS1 type=\"5\" idx=\"5\" thld=\"0\" thldOff=\"0\" />"},
            "Датчик уровня топлива|ITALON BLE|ДУТ  5");
        row("temperature", {"<BLE1 type=\"2\" />", "<TS1 type=\"3\" idx=\"2\" ls=\"3\" />"},
            "Датчик температуры|ELA T/RHT|Датчик температуры 2|Датчик освещённости LS3");
        row("tilt with its channel", {"<BLE1 type=\"3\" />", "<AS1 type=\"3\" />", "<TS1 type=\"1\" idx=\"4\" />"},
            "Датчик угла наклона|MECHATRONICS DEGREE|Датчик температуры 4");
        row("axle load, two channels",
            {"<BLE1 type=\"4\" />", "<AXS1 type=\"2\" />", "<TS1 type1=\"1\" idx1=\"3\" type2=\"0\" idx2=\"2\" />"},
            "Датчик нагрузки на ось|MECHATRONICS DPS|Датчик температуры 3|Датчик температуры 2");
        row("fuel flow meter", {"<BLE1 type=\"5\" />", "<FW1 type=\"0\" />"}, "Расходомер топлива|TECHNOTON DFM");
        row("multi-sensor, four channels",
            {"<BLE1 type=\"7\" />", "<US1 type=\"2\" />",
                "<TS1 type1=\"1\" idx1=\"4\" type2=\"1\" idx2=\"3\" type3=\"0\" idx3=\"3\" type4=\"1\" idx4=\"1\" />"},
            "Датчик температуры и влажности|Teltonika EYE|Датчик температуры 4|Датчик температуры 3|"
            "Датчик температуры 3|Датчик температуры 1");
        row("analogue input", {"<BLE1 type=\"8\" />", "<AIN1 type=\"0\" idx=\"6\" />"},
            "Датчик аналоговых сигналов|ELA AI|Аналоговый вход 6");
        row("event sensor", {"<BLE1 type=\"9\" />", "<HS1 type=\"0\" />"}, "Датчик событий|ELA MAG/MOV/DI/PIR");
        row("no sensor", {"<BLE1 type=\"0\" />"}, "Не подключено");
    }

    void simpleTypeReloadsToSameBytes()
    {
        QFETCH(QByteArray, body);
        QFETCH(QStringList, shown);
        Slot slot;
        QVERIFY(load(slot, config(body)));
        QStringList texts{slot.deviceTypeBox()->currentText()};
        if (auto page = slot.page(slot.deviceType()))
            texts += shownCaptions(page);
        QCOMPARE(texts, shown);
        QCOMPARE(save(slot), config(body));
    }

    void badSimpleValuesLoadAsDefaults_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("unknown device type is none") << QByteArray("    <BLE1 type=\"42\" />\n    <FS1 type=\"1\" />\n")
                                                     << QByteArray("    <BLE1 type=\"0\" />\n");
        QTest::newRow("model and index outside the lists")
            << QByteArray("    <BLE1 type=\"1\" />\n    <FS1 type=\"6\" idx=\"17\" thld=\"70000\" thldOff=\"x\" />\n")
            << QByteArray("    <BLE1 type=\"1\" />\n    <FS1 type=\"0\" idx=\"1\" thld=\"65535\" thldOff=\"0\" />\n");
        QTest::newRow("flow meter always model 0") << QByteArray("    <BLE1 type=\"5\" />\n    <FW1 type=\"3\" />\n")
                                                   << QByteArray("    <BLE1 type=\"5\" />\n    <FW1 type=\"0\" />\n");
        QTest::newRow("missing page node takes defaults") << QByteArray(
            "    <BLE1 type=\"8\" />\n") << QByteArray("    <BLE1 type=\"8\" />\n    <AIN1 type=\"0\" idx=\"1\" />\n");
    }

    void badSimpleValuesLoadAsDefaults()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QByteArray, saved);
        Slot slot;
        QVERIFY(load(slot, config(stored)));
        QCOMPARE(save(slot), config(saved));
    }

    void universalNodesLoadWithTheirDefaults_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QByteArrayList>("saved");
        const QByteArray off2 = "<U1C2 group=\"0\" oper=\"0\" type=\"FF\" offset=\"0\" mask=\"\" />";
        const QByteArray offP1 = "<U1P1 group=\"0\" type=\"00\" offset=\"0\" prm=\"\" be=\"0\" stor=\"0\" idx=\"1\" "
                                 "mux=\"1\" div=\"1\" shift=\"0\" />";
        QTest::newRow("first condition without group is group 1")
            << QByteArray("<U1C1 type=\"0A\" mask=\"a1b2\" />")
            << QByteArrayList{"<U1C1 group=\"1\" oper=\"0\" type=\"0A\" offset=\"0\" mask=\"a1b2\" />"};
        QTest::newRow("other condition without group stays off")
            << QByteArray("<U1C2 type=\"0A\" offset=\"3\" />") << QByteArrayList{off2};
        QTest::newRow("first condition keeps operator 0")
            << QByteArray("<U1C1 group=\"0\" oper=\"1\" type=\"12\" />")
            << QByteArrayList{"<U1C1 group=\"0\" oper=\"0\" type=\"12\" offset=\"0\" mask=\"\" />"};
        QTest::newRow("value without type is 00")
            << QByteArray("<U1P1 group=\"2\" />")
            << QByteArrayList{"<U1P1 group=\"2\" type=\"00\" offset=\"0\" prm=\"\" be=\"0\" stor=\"0\" idx=\"1\" "
                              "mux=\"1\" div=\"1\" shift=\"0\" />"};
        QTest::newRow("value with group 0 is skipped")
            << QByteArray("<U1P1 group=\"0\" type=\"11\" stor=\"1\" />") << QByteArrayList{offP1};
        QTest::newRow("everything out of range")
            << QByteArray("<U1C3 group=\"-2\" type=\"5\" /><U1C2 group=\"7\" oper=\"3\" type=\"1FF\" offset=\"999\" />"
                          "<U1P1 group=\"1\" type=\"zz\" offset=\"300\" prm=\"3x\" be=\"2\" stor=\"12\" idx=\"99\" "
                          "mux=\"70000\" "
                          "div=\"0\" shift=\"-40000\" />")
            << QByteArrayList{"<U1C2 group=\"4\" oper=\"0\" type=\"FF\" offset=\"255\" mask=\"\" />",
                   "<U1C3 group=\"0\" oper=\"0\" type=\"FF\" offset=\"0\" mask=\"\" />",
                   "<U1P1 group=\"1\" type=\"00\" offset=\"255\" prm=\"\" be=\"0\" stor=\"0\" idx=\"1\" mux=\"65535\" "
                   "div=\"1\" shift=\"-32768\" />"};
        QTest::newRow("all in range") << QByteArray(
            "<U1C4 group=\"3\" oper=\"1\" type=\"c4\" offset=\"2\" mask=\"FF00\" />"
            "<U1P8 group=\"4\" type=\"0a\" offset=\"7\" prm=\"8f\" be=\"1\" stor=\"9\" idx=\"8\" mux=\"0\" "
            "div=\"65535\" shift=\"-5\" />")
                                      << QByteArrayList{
                                             "<U1C4 group=\"3\" oper=\"1\" type=\"C4\" offset=\"2\" mask=\"FF00\" />",
                                             "<U1P8 group=\"4\" type=\"0A\" offset=\"7\" prm=\"8f\" be=\"1\" "
                                             "stor=\"9\" idx=\"8\" mux=\"0\" div=\"65535\" shift=\"-5\" />"};
    }

    void universalNodesLoadWithTheirDefaults()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QByteArrayList, saved);
        Slot slot;
        QVERIFY(load(slot, config("<BLE1 type=\"6\" />" + stored)));
        const QByteArray out = save(slot);
        for (const QByteArray& line : saved)
            QVERIFY2(out.contains("    " + line + "\n"), out.constData());
        QCOMPARE(out.count("<U1"), 12);
    }

    void rowSwitchedOnByHandStartsAtFFAndOffReloadsOff()
    {
        Slot slot;
        slot.setDeviceType(BLE_DEVTYPE_UNI);
        auto uni = static_cast<Uni*>(slot.page(BLE_DEVTYPE_UNI));
        static_cast<QSpinBox*>(uni->paramWidget(0, Uni::PrmMux))->setValue(0);
        prmOn(uni, 0)->click();
        static_cast<QCheckBox*>(uni->conditionWidget(1, Uni::CondOn))->click();
        static_cast<QCheckBox*>(uni->paramWidget(1, Uni::PrmOn))->click();
        static_cast<QLineEdit*>(uni->paramWidget(1, Uni::PrmType))->setText("a");
        static_cast<QSpinBox*>(uni->paramWidget(1, Uni::PrmGroup))->setValue(3);
        QByteArray out = save(slot);
        QVERIFY(out.contains(
            "<U1P1 group=\"1\" type=\"FF\" offset=\"0\" prm=\"\" be=\"0\" stor=\"0\" idx=\"1\" mux=\"1\" div=\"1\""));
        QVERIFY(out.contains("<U1C2 group=\"1\" oper=\"0\" type=\"FF\""));
        QVERIFY(out.contains("<U1P2 group=\"3\" type=\"0A\""));

        prmOn(uni, 1)->click();
        out = save(slot);
        QVERIFY(out.contains("<U1P2 group=\"0\" type=\"00\" offset=\"0\" prm=\"\" be=\"0\" stor=\"0\" idx=\"1\" "
                             "mux=\"1\" div=\"1\" shift=\"0\" />"));
        Slot again;
        QVERIFY(load(again, out));
        auto uni2 = static_cast<Uni*>(again.page(BLE_DEVTYPE_UNI));
        QVERIFY(prmOn(uni2, 0)->isChecked());
        QVERIFY(!prmOn(uni2, 1)->isChecked());
        QVERIFY(!uni2->paramWidget(1, Uni::PrmType)->isEnabled());
        QCOMPARE(save(again), out);
    }

    void twoValuesOfOneSensorTypeCannotShareAnIndex_data()
    {
        QTest::addColumn<QString>("stor");
        QTest::addColumn<int>("secondIdx");
        QTest::addColumn<QString>("list");
        QTest::newRow("user value") << "1" << 2 << "Uni";
        QTest::newRow("fuel level") << "2" << 2 << "FlsL";
        QTest::newRow("fuel temperature") << "3" << 2 << "FlsT";
        QTest::newRow("fuel third value") << "4" << 2 << "FlsF";
        QTest::newRow("temperature") << "5" << 2 << "TmpT";
        QTest::newRow("humidity") << "6" << 2 << "TmpH";
        QTest::newRow("unused keeps any index") << "0" << 1 << "";
        QTest::newRow("axis keeps any index") << "8" << 1 << "";
    }

    void twoValuesOfOneSensorTypeCannotShareAnIndex()
    {
        QFETCH(QString, stor);
        QFETCH(int, secondIdx);
        QFETCH(QString, list);
        Uni uni;
        for (int row : {0, 1}) {
            prmOn(&uni, row)->click();
            QComboBox* storBox = prmBox(&uni, row, Uni::PrmStor);
            storBox->setCurrentIndex(stor.toInt()); // sensor types are listed by code
        }
        QCOMPARE(prmBox(&uni, 1, Uni::PrmIdx)->currentText(), QString::number(secondIdx));
        QCOMPARE(itemEnabled(prmBox(&uni, 1, Uni::PrmIdx), "1"), list.isEmpty());
        // Choosing the taken index by hand moves the value to a free one.
        prmBox(&uni, 0, Uni::PrmIdx)->setCurrentIndex(secondIdx - 1);
        if (!list.isEmpty()) {
            QVERIFY(prmBox(&uni, 0, Uni::PrmIdx)->currentText() != QString::number(secondIdx));
            QCOMPARE(uni.indexesOfKind(list).size(), 2);
            QVERIFY(uni.indexesOfKind(list)[0] != uni.indexesOfKind(list)[1]);
        }
    }

    // An index runs from 1 to the count of its kind (16 fuel sensor values, 4
    // temperatures); a loaded one past it, or one an earlier row of the kind
    // has, moves to the first free index.
    void loadedIndexesFitTheirKindAndNeverRepeat_data()
    {
        QTest::addColumn<int>("stor");
        QTest::addColumn<QList<int>>("stored");
        QTest::addColumn<QList<int>>("loaded");
        QTest::newRow("fuel level 12 and 16 stay") << 2 << QList<int>{12, 16} << QList<int>{12, 16};
        QTest::newRow("fuel level twice 12") << 2 << QList<int>{12, 12} << QList<int>{12, 1};
        QTest::newRow("temperature past 4") << 5 << QList<int>{1, 12} << QList<int>{1, 2};
        QTest::newRow("humidity 4 stays") << 6 << QList<int>{4, 3} << QList<int>{4, 3};
        QTest::newRow("fuel temperature 17 is no index") << 3 << QList<int>{17, 2} << QList<int>{1, 2};
    }

    void loadedIndexesFitTheirKindAndNeverRepeat()
    {
        QFETCH(int, stor);
        QFETCH(QList<int>, stored);
        QFETCH(QList<int>, loaded);
        QByteArray body = "<BLE1 type=\"6\" />";
        for (int p = 0; p < stored.size(); ++p)
            body += QStringLiteral("<U1P%1 group=\"1\" prm=\"2u\" stor=\"%2\" idx=\"%3\" />")
                        .arg(p + 1)
                        .arg(stor)
                        .arg(stored[p])
                        .toLatin1();
        Slot slot;
        QVERIFY(load(slot, config(body)));
        auto uni = static_cast<Uni*>(slot.page(BLE_DEVTYPE_UNI));
        for (int p = 0; p < loaded.size(); ++p)
            QCOMPARE(prmBox(uni, p, Uni::PrmIdx)->currentText(), QString::number(loaded[p]));
    }

    // Switched on by hand, a fuel level value may take 16, a temperature 4 at most.
    void indexListEndsAtTheCountOfItsKind()
    {
        Uni uni;
        prmOn(&uni, 0)->click();
        prmBox(&uni, 0, Uni::PrmStor)->setCurrentIndex(2);
        QVERIFY(itemEnabled(prmBox(&uni, 0, Uni::PrmIdx), "16"));
        prmBox(&uni, 0, Uni::PrmIdx)->setCurrentText("16");
        prmBox(&uni, 0, Uni::PrmStor)->setCurrentIndex(5);
        QCOMPARE(prmBox(&uni, 0, Uni::PrmIdx)->currentText(), QStringLiteral("1"));
        QVERIFY(itemEnabled(prmBox(&uni, 0, Uni::PrmIdx), "4"));
        QVERIFY(!itemEnabled(prmBox(&uni, 0, Uni::PrmIdx), "5"));
    }

    void userValueIsPublishedWithdrawnAndRepublished()
    {
        Slot slot;
        slot.setSlotNumber(2);
        slot.setDeviceType(BLE_DEVTYPE_UNI);
        auto uni = static_cast<Uni*>(slot.page(BLE_DEVTYPE_UNI));
        QSignalSpy added(&slot, &ZOR_Form_Config::signal_UserParam_Add);
        QSignalSpy removed(&slot, &ZOR_Form_Config::signal_UserParam_Del);
        const QString mess1 = QStringLiteral("U2P2, 1 ") + kUserWord;
        const QString mess3 = QStringLiteral("U2P2, 3 ") + kUserWord;

        prmOn(uni, 1)->click();
        prmBox(uni, 1, Uni::PrmData)->setCurrentText(QString::fromUtf8("2 байта, беззнаковое"));
        QCOMPARE(added.count(), 0); // not a user value yet
        prmBox(uni, 1, Uni::PrmStor)->setCurrentText(kUserWord);
        QCOMPARE(added.count(), 1);
        QCOMPARE(added.last(), (QVariantList{"UP", mess1, "2u", 2}));

        prmBox(uni, 1, Uni::PrmIdx)->setCurrentText("3");
        QCOMPARE(removed.last(), (QVariantList{"UP", mess1, "2u"}));
        QCOMPARE(added.last(), (QVariantList{"UP", mess3, "2u", 2}));

        prmBox(uni, 1, Uni::PrmData)->setCurrentText(QString::fromUtf8("4 байта, с плавающей точкой"));
        QCOMPARE(removed.last(), (QVariantList{"UP", mess3, "2u"}));
        QCOMPARE(added.last(), (QVariantList{"UP", mess3, "4f", 4}));

        prmOn(uni, 1)->click();
        QCOMPARE(removed.count(), 3);
        QCOMPARE(removed.last(), (QVariantList{"UP", mess3, "4f"}));
        QCOMPARE(added.count(), 3);

        // Switched on again the row starts afresh. Another device type withdraws
        // the universal sensor's values; back again offers them.
        prmOn(uni, 1)->click();
        prmBox(uni, 1, Uni::PrmData)->setCurrentText(QString::fromUtf8("4 байта, с плавающей точкой"));
        prmBox(uni, 1, Uni::PrmStor)->setCurrentText(kUserWord);
        QCOMPARE(added.count(), 4);
        slot.setDeviceType(BLE_DEVTYPE_FLS);
        QCOMPARE(removed.count(), 4);
        slot.setDeviceType(BLE_DEVTYPE_UNI);
        QCOMPARE(added.count(), 5);
        QCOMPARE(added.last(), (QVariantList{"UP", mess1, "4f", 4}));
    }

    void slotsKeepTheirIndexListsConsistent()
    {
        ZOR_Form_Config_Bluetooth page;
        ZOR_TerminalProfile profile;
        profile.nBluetoothSlots = 3;
        page.applyProfile(profile);
        QCOMPARE(page.slotCount(), 3);
        Slot* first = page.slotPage(0);
        Slot* second = page.slotPage(1);
        QSignalSpy fsInt(first, &Slot::signal_ChangeIdxFS_Int);
        QSignalSpy fsText(first, &Slot::signal_ChangeIdxFS);
        first->setDeviceType(BLE_DEVTYPE_FLS);
        second->setDeviceType(BLE_DEVTYPE_FLS);
        QComboBox* firstIdx = first->page(BLE_DEVTYPE_FLS)->findChildren<QComboBox*>().at(1);
        QComboBox* secondIdx = second->page(BLE_DEVTYPE_FLS)->findChildren<QComboBox*>().at(1);
        firstIdx->setCurrentIndex(2);
        QCOMPARE(fsInt.last(), (QVariantList{1, 3}));
        QCOMPARE(fsText.last(), (QVariantList{QString::fromUtf8("ДУТ  1"), QString::fromUtf8("ДУТ  3")}));
        QVERIFY(!itemEnabled(secondIdx, QString::fromUtf8("ДУТ  3")));
        QVERIFY(itemEnabled(secondIdx, QString::fromUtf8("ДУТ  2")));
        // Slot 2 shows number 1 itself, so slot 1 cannot pick it.
        QVERIFY(!itemEnabled(firstIdx, QString::fromUtf8("ДУТ  1")));
        // A slot that is no longer a fuel sensor frees its number.
        first->setDeviceType(BLE_DEVTYPE_TEMP);
        QVERIFY(itemEnabled(secondIdx, QString::fromUtf8("ДУТ  3")));
    }

    void documentWithSensorsReopensToSameStateAndOffersUserValue()
    {
        const QByteArray uniBody = "    <BLE3 type=\"6\" />\n"
                                   "    <U3C1 group=\"1\" oper=\"0\" type=\"FF\" offset=\"0\" mask=\"0A0B\" />\n"
                                   "    <U3C2 group=\"1\" oper=\"1\" type=\"16\" offset=\"2\" mask=\"F0\" />\n"
                                   "    <U3C3 group=\"0\" oper=\"0\" type=\"FF\" offset=\"0\" mask=\"\" />\n"
                                   "    <U3C4 group=\"0\" oper=\"0\" type=\"FF\" offset=\"0\" mask=\"\" />\n"
                                   "    <U3P1 group=\"1\" type=\"16\" offset=\"4\" prm=\"2u\" be=\"0\" stor=\"1\" "
                                   "idx=\"1\" mux=\"1\" div=\"10\" shift=\"0\" />\n"
                                   "    <U3P2 group=\"1\" type=\"16\" offset=\"6\" prm=\"2s\" be=\"1\" stor=\"5\" "
                                   "idx=\"2\" mux=\"1\" div=\"100\" shift=\"0\" />\n"
                                   "    <U3P3 group=\"1\" type=\"16\" offset=\"8\" prm=\"1u\" be=\"0\" stor=\"6\" "
                                   "idx=\"2\" mux=\"1\" div=\"1\" shift=\"-3\" />\n";
        QByteArray body = "    <BLE1 type=\"1\" />\n    <FS1 type=\"2\" idx=\"1\" thld=\"20\" thldOff=\"0\" />\n"
                          "    <BLE2 type=\"2\" />\n    <TS2 type=\"1\" idx=\"1\" ls=\"0\" />\n"
            + uniBody;
        for (int p = 4; p <= 8; ++p)
            body += QStringLiteral(
                "    <U3P%1 group=\"0\" type=\"00\" offset=\"0\" prm=\"\" be=\"0\" stor=\"0\" idx=\"1\" "
                "mux=\"1\" div=\"1\" shift=\"0\" />\n")
                        .arg(p)
                        .toLatin1();
        for (int s = 4; s <= 8; ++s)
            body += QStringLiteral("    <BLE%1 type=\"0\" />\n").arg(s).toLatin1();

        ZorFormDocument::Doc d({}); // every page
        QVERIFY(d.load(config(body)));
        const auto entries = d.doc.userParams()->entries();
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries[0].qsPrefix, QString("UP"));
        QCOMPARE(entries[0].qsMess, QStringLiteral("U3P1, 1 ") + kUserWord);
        QCOMPARE(entries[0].qsSuffix, QString("2u"));
        QCOMPARE(entries[0].nSize, 2);
        QVERIFY(!d.doc.isModified());

        // The field-set form offers it among its 2-byte user parameters.
        int offered = 0;
        for (QComboBox* box : d.doc.form("protocol")->findChildren<QComboBox*>())
            for (int i = 0; i < box->count(); ++i)
                offered += box->itemText(i).contains(QStringLiteral("U3P1"));
        QVERIFY(offered > 0);

        const QByteArray saved = d.doc.render();
        QVERIFY2(saved.contains(body), saved.constData());
        QVERIFY(d.doc.save(d.path()));
        QVERIFY(d.doc.load(d.path()));
        QCOMPARE(d.doc.render(), saved);
    }
};

QTEST_MAIN(TestConfigBle)
#include "tst_config_ble.moc"
