// The protocol field-set form, driven through its own widgets inside a
// configuration document: the saved mask, the record size against the field
// widths of the record's definition, the excess signal, the version switch,
// the terminal's capabilities and the user parameters of the User tab.

#include "config/zor_configdocument.h"
#include "config/zor_form_config_set_kite3.h"
#include "config/zor_form_config_set_kite3_tab_user.h"
#include "config/zor_terminalprofile.h"
#include "config/zor_userparamregistry.h"
#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTabWidget>
#include <QtTest>

#include "zor_form_document.h"

#include <initializer_list>

namespace {

using Fields = QVector<int>;

const QVector<ZOR_ConfigPage> kPages = {{"protocol", "", &zorCreateConfigForm<ZOR_Form_Config_Set_Kite3>, true}};

// Widths in bytes of the fields the cases use, as the record's field table
// gives them.
int width(int n)
{
    static const QHash<int, int> w = [] {
        QHash<int, int> h = {{1, 4}, {2, 2}, {3, 4}, {4, 1}, {5, 1}, {6, 1}, {7, 1}, {8, 1}, {9, 4}, {10, 4}, {11, 4},
            {12, 4}, {13, 4}, {14, 2}, {15, 4}, {19, 2}, {20, 2}, {29, 1}, {31, 1}, {77, 37}, {94, 6}, {95, 12},
            {96, 24}, {97, 48}, {123, 1}, {124, 1}, {171, 2}, {172, 4}, {173, 4}, {174, 4}, {175, 2}, {176, 4},
            {177, 2}, {178, 2}, {179, 4}, {180, 2}, {181, 2}, {200, 2}, {204, 5}, {205, 4}, {207, 1}, {223, 2},
            {238, 4}, {253, 8}};
        for (int f = 127; f <= 132; ++f) // pulse counters 3-8
            h.insert(f, 4);
        for (int f = 133; f <= 138; ++f) // frequencies 3-8
            h.insert(f, 2);
        for (int f = 147; f <= 166; ++f) // RS-485 frequencies, precise temperatures
            h.insert(f, 2);
        return h;
    }();
    return w.value(n, -1000);
}

// Fields 1-69 belong to KITE 1.0, 70-122 to KITE 2.0, the rest to KITE 3.0.
int versionOf(int n)
{
    return n <= 69 ? 1 : n <= 122 ? 2 : 3;
}

// The record size of the fields that a version counts.
int sizeOf(const QVector<int>& fields, int nVersion = 3)
{
    int nSize = 0;
    for (int n : fields)
        nSize += versionOf(n) <= nVersion ? width(n) : 0;
    return nSize;
}

Fields range(int a, int b)
{
    Fields f;
    for (int n = a; n <= b; ++n)
        f.append(n);
    return f;
}

QString maskOf(const Fields& fields)
{
    QString mask(255, QLatin1Char('0'));
    for (int n : fields)
        mask[n - 1] = QLatin1Char('1');
    return mask;
}

QByteArray document(
    const QString& format, const QString& mask, const QByteArray& userParams = "        <USERPARAMS />\n")
{
    return ZorFormDocument::config("    <PROTOCOL page=\"PROTOCOL\">\n        <KITE format=\"" + format.toLatin1()
        + "\" mask=\"" + mask.toLatin1() + "\" />\n" + userParams + "    </PROTOCOL>\n");
}

// The set fields of a mask as "1 2 3 77": failures show what differs.
QString fieldsOf(const QString& mask)
{
    QStringList list;
    for (int i = 0; i < mask.size(); ++i)
        if (mask.at(i) == QLatin1Char('1'))
            list.append(QString::number(i + 1));
    return QStringLiteral("%1 chars: %2").arg(mask.size()).arg(list.join(QLatin1Char(' ')));
}

QString savedMask(const QByteArray& xml)
{
    const int i = xml.indexOf("mask=\"") + 6;
    return QString::fromLatin1(xml.mid(i, xml.indexOf('"', i) - i));
}

struct Fixture : ZorFormDocument::Doc
{
    explicit Fixture(const ZOR_TerminalProfile& profile = ZOR_TerminalProfile())
        : Doc(kPages, profile)
        , form(Doc::form<ZOR_Form_Config_Set_Kite3>("protocol"))
    {
    }
    QCheckBox* box(int n) const { return form->findChild<QCheckBox*>(QStringLiteral("checkBox_Field_%1").arg(n)); }
    QComboBox* combo(const QString& name) const { return form->findChild<QComboBox*>(name); }
    QString sizeText() const { return form->findChild<QLabel*>("label_Size")->text(); }
    void selectVersion(const QString& caption)
    {
        QComboBox* c = combo("comboBox_FlashFormat");
        c->setCurrentIndex(c->findText(caption));
    }

    ZOR_Form_Config_Set_Kite3* form;
};

} // namespace

class TestConfigFieldSet : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void newConfigurationSavesHeadAndTabDefaults()
    {
        Fixture f;
        // The defaults: the head, states, supplies, first inputs and outputs,
        // and the navigation fix up to the mileage.
        const Fields defaults = Fields{1, 2, 3, 4, 5, 6, 7, 19, 20, 29, 31} + range(8, 15);
        QCOMPARE(f.doc.render(), document("30", maskOf(defaults)));
        QCOMPARE(f.form->getProtocol_CurSize(), sizeOf(defaults));
        QCOMPARE(f.sizeText(), QString::number(sizeOf(defaults)));
    }

    void recordSizeIsTheSumOfSelectedFieldsOfTheVersion_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<Fields>("fields");
        const Fields mixed{1, 2, 3, 77, 94, 204};
        QTest::newRow("head only") << "30" << Fields{1, 2, 3};
        QTest::newRow("KITE 1.0 counts none of the newer") << "10" << mixed;
        QTest::newRow("KITE 2.0 counts its own") << "20" << mixed;
        QTest::newRow("KITE 3.0 counts all") << "30" << mixed;
        QTest::newRow("tyre run of 30 sensors") << "30" << Fields{1, 2, 3, 94, 95, 96, 97};
        QTest::newRow("one slot of every width") << "30" << Fields{1, 2, 3, 207, 223, 238, 253};
    }

    void recordSizeIsTheSumOfSelectedFieldsOfTheVersion()
    {
        QFETCH(QString, format);
        QFETCH(Fields, fields);
        Fixture f;
        QVERIFY(f.load(document(format, maskOf(fields))));
        QCOMPARE(f.form->getProtocol_CurSize(), sizeOf(fields, format.left(1).toInt()));
        QCOMPARE(f.sizeText(), QString::number(sizeOf(fields, format.left(1).toInt())));
        // The fields of a newer version kept their boxes ticked: they count again.
        f.selectVersion("KITE 3.0");
        QCOMPARE(f.form->getProtocol_CurSize(), sizeOf(fields));
    }

    void excessSignalFiresOnlyOnCrossing()
    {
        // Fields 1-122 take 404 bytes; these version 3 fields add 108 more.
        const Fields extra = range(127, 138) + range(147, 166) + range(171, 181);
        QCOMPARE(404 + sizeOf(extra), 512);

        Fixture f;
        QVERIFY(f.load(document("30", maskOf(range(1, 122) + extra))));
        QCOMPARE(f.form->getProtocol_CurSize(), 512);
        QSignalSpy spy(f.form, &ZOR_Form_Config_Set_Kite3::signal_Excess_Size);
        auto* warning = f.form->findChild<QWidget*>("frame_Warning");
        QVERIFY(warning->isHidden());

        f.box(123)->click(); // 513
        QCOMPARE(f.form->getProtocol_CurSize(), 513);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), true);
        QVERIFY(!warning->isHidden());
        QCOMPARE(f.form->findChild<QLabel*>("label_Size")->palette().color(QPalette::Inactive, QPalette::WindowText),
            QColor(Qt::red));
        QVERIFY(!f.form->userTab()->isEnabled());

        f.box(124)->click(); // 514
        f.box(200)->click(); // 516
        f.box(200)->click(); // 514
        QCOMPARE(spy.count(), 1);

        f.box(124)->click(); // 513
        f.box(123)->click(); // 512
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy.at(1).at(0).toBool(), false);
        QVERIFY(warning->isHidden());
        QVERIFY(f.form->userTab()->isEnabled());
    }

    void storedFormatSelectsVersion_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("code"); // code "10" is shown as "KITE 1.0"
        QTest::newRow("10") << QByteArray("10") << "10";
        QTest::newRow("20") << QByteArray("20") << "20";
        QTest::newRow("unknown number") << QByteArray("40") << "30";
        QTest::newRow("word") << QByteArray("KITE 1.0") << "30";
        QTest::newRow("padded") << QByteArray(" 10") << "30";
        QTest::newRow("empty") << QByteArray("") << "30";
    }

    void storedFormatSelectsVersion()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, code);
        Fixture f;
        f.selectVersion("KITE 2.0");
        QVERIFY(f.load(document(QString::fromLatin1(stored), maskOf({1, 2, 3}))));
        QCOMPARE(f.form->getTypeDFProtocol(), code);
        QCOMPARE(f.combo("comboBox_FlashFormat")->currentText(), "KITE " + code.left(1) + ".0");
    }

    void maskRoundTrips_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("saved");
        const QString all(255, QLatin1Char('1'));
        for (const char* format : {"10", "20", "30"}) {
            QTest::addRow("every field, %s", format) << format << all << all;
            const QString mixed = maskOf({1, 2, 3, 10, 44, 69, 70, 93, 122, 123, 199, 206, 255});
            QTest::addRow("mixed, %s", format) << format << mixed << mixed;
        }
        QTest::newRow("head is always on") << "30" << QString(255, QLatin1Char('0')) << maskOf({1, 2, 3});
        QTest::newRow("short mask is padded") << "30"
                                              << "11111" << maskOf({1, 2, 3, 4, 5});
        QTest::newRow("only 1 sets a field") << "30"
                                             << "111x1 1" << maskOf({1, 2, 3, 5, 7});
        QTest::newRow("run up to its last field") << "30" << maskOf({1, 2, 3, 96}) << maskOf({1, 2, 3, 94, 95, 96});
        QTest::newRow("run of passenger doors")
            << "30" << maskOf({1, 2, 3, 112, 114}) << maskOf(Fields{1, 2, 3} + range(110, 114));
        QTest::newRow("user slots without names")
            << "30" << maskOf({1, 2, 3, 207, 237, 255}) << maskOf({1, 2, 3, 207, 237, 255});
    }

    void maskRoundTrips()
    {
        QFETCH(QString, format);
        QFETCH(QString, stored);
        QFETCH(QString, saved);
        Fixture f;
        QVERIFY(f.load(document(format, stored)));
        QCOMPARE(fieldsOf(f.form->getStrFormat()), fieldsOf(saved));
        const QByteArray once = f.doc.render();
        QCOMPARE(fieldsOf(savedMask(once)), fieldsOf(saved));
        QVERIFY(f.load(once));
        QCOMPARE(f.doc.render(), once);
    }

    void versionChangeEnablesBoxes_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("widget");
        QTest::addColumn<bool>("enabled");
        const struct
        {
            const char* version;
            bool v2;
            bool v3;
        } rows[] = {{"KITE 1.0", false, false}, {"KITE 2.0", true, false}, {"KITE 3.0", true, true}};
        for (const auto& r : rows) {
            QTest::addRow("%s: version 1 box", r.version) << r.version << "checkBox_Field_8" << true;
            QTest::addRow("%s: version 2 box", r.version) << r.version << "checkBox_Field_70" << r.v2;
            QTest::addRow("%s: version 2 run", r.version) << r.version << "comboBox_Field_94" << r.v2;
            QTest::addRow("%s: version 3 box", r.version) << r.version << "checkBox_Field_123" << r.v3;
            QTest::addRow("%s: version 3 run", r.version) << r.version << "comboBox_Field_163" << r.v3;
            QTest::addRow("%s: user slot", r.version) << r.version << "comboBox_User_207" << r.v3;
        }
    }

    void versionChangeEnablesBoxes()
    {
        QFETCH(QString, version);
        QFETCH(QString, widget);
        QFETCH(bool, enabled);
        Fixture f;
        f.selectVersion(version == "KITE 3.0" ? "KITE 1.0" : "KITE 3.0");
        f.selectVersion(version);
        QWidget* w = f.form->findChild<QWidget*>(widget);
        QVERIFY(w);
        QCOMPARE(w->isEnabled(), enabled);
    }

    void tabsOwnTheirFields_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<Fields>("boxes");
        QTest::addColumn<Fields>("runs");
        QTest::newRow("Main") << "Main"
                              << range(1, 7) + range(19, 37) + range(45, 52) + range(123, 138) + Fields{200, 205, 206}
                              << Fields{};
        QTest::newRow("Navi") << "Navi" << range(8, 18) + range(70, 77) << Fields{};
        QTest::newRow("RS") << "RS" << range(38, 44) + range(78, 93) + range(147, 162) << Fields{};
        QTest::newRow("CAN") << "CAN" << range(53, 69) + range(201, 204) << Fields{};
        QTest::newRow("Taho") << "Taho" << range(98, 103) << Fields{};
        QTest::newRow("Accel") << "Accel" << range(106, 109) + range(139, 141) + range(143, 146) << Fields{};
        QTest::newRow("More") << "More" << Fields{104, 105} + range(118, 122) + Fields{142}
                              << Fields{94, 110, 163, 167};
        QTest::newRow("FFS") << "FFS" << range(171, 181) << Fields{};
        QTest::newRow("Refr") << "Refr" << range(182, 199) << Fields{};
        QTest::newRow("User") << "User" << range(207, 255) << Fields{};
    }

    void tabsOwnTheirFields()
    {
        QFETCH(QString, tab);
        QFETCH(Fields, boxes);
        QFETCH(Fields, runs);
        Fixture f;
        auto* tabWidget = f.form->findChild<QWidget*>("tab_" + tab);
        QVERIFY(tabWidget);
        for (int n : boxes)
            QVERIFY2(f.box(n) && tabWidget->isAncestorOf(f.box(n)), qPrintable(QString::number(n)));
        for (int n : runs)
            QVERIFY2(tabWidget->isAncestorOf(f.combo(QStringLiteral("comboBox_Field_%1").arg(n))),
                qPrintable(QString::number(n)));
    }

    void capabilitiesClearAndLimitFields()
    {
        ZOR_TerminalProfile profile;
        profile.nMaxCountLinesAIn = 4;
        profile.nMaxCountStateIn = 9;
        profile.nMaxCountHighPrecisionTemp = 2;
        profile.bUseLBS = false;
        profile.bUseTires = false;
        Fixture f(profile);
        QVERIFY(f.load(document("30", QString(255, QLatin1Char('1')))));
        for (int n : {21, 24, 29, 30})
            QVERIFY2(f.box(n)->isChecked() && f.box(n)->isEnabled(), qPrintable(QString::number(n)));
        for (int n : {25, 28, 126, 77})
            QVERIFY2(!f.box(n)->isChecked() && !f.box(n)->isEnabled(), qPrintable(QString::number(n)));
        QCOMPARE(f.combo("comboBox_Field_163")->currentIndex(), 2);
        QCOMPARE(f.combo("comboBox_Field_94")->currentIndex(), 0);
        QVERIFY(!f.combo("comboBox_Field_94")->isEnabled());
        const QString mask = f.form->getStrFormat();
        QCOMPARE(mask.mid(162, 4), QString("1100"));
        QCOMPARE(mask.mid(93, 4), QString("0000"));
    }

    void userParamsSurviveLoadSaveAndPublishing()
    {
        // SC 2 is a 1-byte catalogue entry; the Modbus value is published by
        // nobody yet.
        const QByteArray params = "        <USERPARAMS>\n"
                                  "            <FIELD207 prefix=\"SC\" mess=\"2\" suffix=\"1u\" />\n"
                                  "            <FIELD224 prefix=\"MB\" mess=\"MB1,  5,  1a\" suffix=\"2u\" />\n"
                                  "        </USERPARAMS>\n";
        const QByteArray xml = document("30", maskOf({1, 2, 3, 207, 224}), params);
        Fixture f;
        QVERIFY(f.load(xml));
        QCOMPARE(f.doc.render(), xml);
        ZOR_Form_Config_Set_Kite3_Tab_User* user = f.form->userTab();
        // Modbus values are published with their type's caption; the file keeps the code.
        const QString mbType = QString::fromUtf8("2 байта, беззнаковое");
        QCOMPARE(user->userParam(224).qsMess, QString("MB1,  5,  1a"));
        const QString notOffered = zorTr("cfgkt_066").arg("MB, MB1,  5,  1a, " + mbType);
        QCOMPARE(f.combo("comboBox_User_224")->currentText(), notOffered);

        // Published, the value is offered; withdrawn, the slot keeps it.
        f.doc.userParams()->slot_UserParam_Add("MB", "MB1,  5,  1a", mbType, 2);
        QCOMPARE(f.combo("comboBox_User_224")->currentText(), "MB, MB1,  5,  1a, " + mbType);
        QVERIFY(user->listedParams(2).size() > 1);
        f.doc.userParams()->slot_UserParam_Del("MB", "MB1,  5,  1a", mbType);
        QCOMPARE(f.combo("comboBox_User_224")->currentText(), notOffered);
        QCOMPARE(f.doc.render(), xml);

        // Choosing a value in an empty slot puts the field in the record;
        // clearing the box forgets the value.
        QComboBox* slot = f.combo("comboBox_User_208");
        slot->setCurrentIndex(1);
        QVERIFY(f.box(208)->isChecked());
        QVERIFY(!user->userParam(208).qsPrefix.isEmpty());
        QVERIFY(f.doc.render().contains("<FIELD208 "));
        f.box(207)->click();
        QCOMPARE(user->userParam(207).qsPrefix, QString());
        QCOMPARE(f.combo("comboBox_User_207")->currentIndex(), 0);
        QVERIFY(!f.doc.render().contains("<FIELD207 "));
    }

    void showTabBringsNamedTabToFront()
    {
        Fixture f;
        auto* tabs = f.form->findChild<QTabWidget*>("tabWidget");
        QVERIFY(f.form->showTab("CAN"));
        QCOMPARE(tabs->currentWidget()->objectName(), QString("tab_CAN"));
        QVERIFY(f.form->showTab("User"));
        QCOMPARE(tabs->currentWidget()->objectName(), QString("tab_User"));
        QVERIFY(!f.form->showTab("Camera"));
        QCOMPARE(tabs->currentWidget()->objectName(), QString("tab_User"));
    }
};

QTEST_MAIN(TestConfigFieldSet)
#include "tst_config_fieldset.moc"
