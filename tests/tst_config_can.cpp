// The CAN selection page (the stored hex texts, both CAN variants, bad
// texts) and the Technoton S6 page (its element layout and use boxes).
// Expected texts come from the bit rules written out below, never from the
// page's own code.

#include "config/zor_configdocument.h"
#include "config/zor_form_config_can_param.h"
#include "config/zor_form_config_can_techotons6.h"
#include "config/zor_terminalprofile.h"
#include "config/zor_treewidgetitem_can.h"
#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest>

#include "zor_form_document.h"

namespace {

using ZorFormDocument::config;

const QVector<ZOR_ConfigPage> kPages = {
    {"can", "", &zorCreateConfigForm<ZOR_Form_Config_CAN_Param>, false},
    {"can_s6", "", &zorCreateConfigForm<ZOR_Form_Config_CAN_TechotonS6>, false, "S6"},
};

// Number n is digit (n-1)/4 from the left. Parameter lists: value 8 for the
// first of its four, 4, 2, 1 for the last. Commands: 1 for the first, 8 for
// the fourth.
QString refText(const QList<int>& nums, int nDigits, bool bCommands = false)
{
    QVector<int> digits(nDigits, 0);
    for (int n : nums)
        digits[(n - 1) / 4] |= bCommands ? 1 << ((n - 1) % 4) : 8 >> ((n - 1) % 4);
    QString s;
    for (int d : digits)
        s += QString::number(d, 16);
    return s;
}
QString refListText(const QList<int>& nums, int nDigits)
{
    return refText(nums, nDigits);
}
QString refCmdText(const QList<int>& positions, int nCount)
{
    return refText(positions, (nCount + 3) / 4, true);
}

QString zeros(int n)
{
    return QString(n, QLatin1Char('0'));
}

QList<ZOR_TreeWidgetItem_CAN*> items(QTreeWidget* tree)
{
    QList<ZOR_TreeWidgetItem_CAN*> list;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        list.append(ZOR_TreeWidgetItem_CAN::cast(tree->topLevelItem(i)));
    return list;
}

ZOR_TreeWidgetItem_CAN* item(QTreeWidget* tree, int nNum)
{
    for (auto it : items(tree))
        if (it->getNum() == nNum)
            return it;
    return nullptr;
}

void tick(QTreeWidget* tree, const QList<int>& nums)
{
    for (int n : nums)
        item(tree, n)->setCheckState(0, Qt::Checked);
}

QList<int> ticked(QTreeWidget* tree)
{
    QList<int> nums;
    for (auto it : items(tree))
        if (it->checkState(0) == Qt::Checked)
            nums.append(it->getNum());
    return nums;
}

ZOR_TerminalProfile canVariant(int nVariant)
{
    ZOR_TerminalProfile profile;
    profile.nCanVariant = nVariant;
    return profile;
}

// A document of the two pages loaded from the nodes.
struct Loaded : ZorFormDocument::Doc
{
    explicit Loaded(const QByteArray& nodes, int nVariant = ZOR_TerminalProfile::CanExt)
        : Doc(kPages, canVariant(nVariant))
    {
        QVERIFY(load(config(nodes)));
    }
    ZOR_Form_Config_CAN_Param* can() const { return form<ZOR_Form_Config_CAN_Param>("can"); }
    ZOR_Form_Config_CAN_TechotonS6* s6() const { return form<ZOR_Form_Config_CAN_TechotonS6>("can_s6"); }
};

QByteArray cpNode(const QString& sc, const QString& ac, const QString& bc, const QString& cmd)
{
    return QStringLiteral("    <CP sc=\"%1\" ac=\"%2\" bc=\"%3\" cmd=\"%4\" />\n").arg(sc, ac, bc, cmd).toLatin1();
}

} // namespace

class TestConfigCan : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    // Parameters: the first of four is 8, the text has all its digits.
    // Commands: the first of four is 1, the text is as long as the list needs.
    void selectionTextsFollowTheirBitRules_data()
    {
        QTest::addColumn<bool>("commands");
        QTest::addColumn<QList<int>>("nums");
        QTest::addColumn<QString>("text");
        QTest::newRow("SC only 1") << false << QList<int>{1} << "8" + zeros(19);
        QTest::newRow("SC only 4") << false << QList<int>{4} << "1" + zeros(19);
        QTest::newRow("SC only 80") << false << QList<int>{80} << zeros(19) + "1";
        QTest::newRow("SC bit sets 20, 38, 71") << false << QList<int>{20, 38, 71} << "00001000040000000200";
        QTest::newRow("SC none") << false << QList<int>{} << zeros(20);
        QTest::newRow("Cmd only the first") << true << QList<int>{1} << "100";
        QTest::newRow("Cmd only the fourth") << true << QList<int>{4} << "800";
        QTest::newRow("Cmd fifth") << true << QList<int>{5} << "010";
        QTest::newRow("Cmd last two") << true << QList<int>{9, 10} << "003";
    }

    void selectionTextsFollowTheirBitRules()
    {
        QFETCH(bool, commands);
        QFETCH(QList<int>, nums);
        QFETCH(QString, text);
        ZOR_Form_Config_CAN_Param form;
        if (!commands) {
            tick(form.treeSC(), nums);
            QCOMPARE(form.getStrParam_SC(), text);
            return;
        }
        for (int p : nums)
            form.treeCmd()->topLevelItem(p - 1)->setCheckState(0, Qt::Checked);
        QCOMPARE(form.getStrParam_Cmd(), text);
        form.setStrParam_Cmd(QString());
        QCOMPARE(form.getStrParam_Cmd(), QStringLiteral("000"));
        form.setStrParam_Cmd(text);
        QCOMPARE(form.getStrParam_Cmd(), text);
    }

    void partiallyCheckedParameterIsNotStored()
    {
        ZOR_Form_Config_CAN_Param form;
        ZOR_TreeWidgetItem_CAN* set = item(form.treeSC(), 20);
        QVERIFY(set->childCount() == 16);
        set->child(0)->setCheckState(0, Qt::Checked);
        QCOMPARE(set->checkState(0), Qt::PartiallyChecked);
        QCOMPARE(form.getStrParam_SC(), zeros(20));
        for (int i = 0; i < set->childCount(); ++i)
            set->child(i)->setCheckState(0, Qt::Checked);
        QCOMPARE(set->checkState(0), Qt::Checked);
        QCOMPARE(form.getStrParam_SC(), "00001" + zeros(15));
    }

    void randomSelectionsRoundTripThroughTheFile_data()
    {
        QTest::addColumn<int>("variant");
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 6; ++seed) {
            QTest::addRow("ext %u", seed) << int(ZOR_TerminalProfile::CanExt) << seed;
            QTest::addRow("bt %u", seed) << int(ZOR_TerminalProfile::CanBt) << seed;
        }
    }

    void randomSelectionsRoundTripThroughTheFile()
    {
        QFETCH(int, variant);
        QFETCH(quint32, seed);
        QRandomGenerator rng(seed);
        Loaded first("", variant);
        ZOR_Form_Config_CAN_Param* form = first.can();
        auto pick = [&](QTreeWidget* tree, int nMax) {
            QList<int> nums;
            for (auto it : items(tree))
                if (it->getNum() <= nMax && rng.bounded(3) == 0)
                    nums.append(it->getNum());
            tick(tree, nums);
            return nums;
        };
        const QList<int> sc = pick(form->treeSC(), 80);
        const QList<int> add = pick(form->treeAdditional(), variant == ZOR_TerminalProfile::CanBt ? 104 : 188);
        QList<int> cmd;
        for (int p = 1; p <= 10; ++p)
            if (rng.bounded(2))
                cmd.append(p);
        for (int p : cmd)
            form->treeCmd()->topLevelItem(p - 1)->setCheckState(0, Qt::Checked);

        const bool bt = variant == ZOR_TerminalProfile::CanBt;
        const QByteArray node = cpNode(refListText(sc, 20), bt ? zeros(47) : refListText(add, 47),
            bt ? refListText(add, 26) : zeros(26), refCmdText(cmd, 10));
        QCOMPARE(first.line("CP"), node.trimmed());

        Loaded second(node, variant);
        QCOMPARE(ticked(second.can()->treeSC()), sc);
        QCOMPARE(ticked(second.can()->treeAdditional()), add);
        QCOMPARE(second.line("CP"), node.trimmed());
    }

    void badStoredTextsLoadWhatTheyCan_data()
    {
        QTest::addColumn<QString>("sc");
        QTest::addColumn<QString>("ac");
        QTest::addColumn<QList<int>>("scTicked");
        QTest::addColumn<QList<int>>("acTicked");
        // Missing digits are unselected numbers at the end of the list.
        QTest::newRow("short") << "8"
                               << "c" << QList<int>{1} << QList<int>{1};
        QTest::newRow("empty") << ""
                               << "" << QList<int>{} << QList<int>{};
        QTest::newRow("upper case, spaces") << " F "
                                            << "" << QList<int>{1, 2, 3, 4} << QList<int>{};
        // A non-hex digit selects nothing of its four and shifts nothing.
        QTest::newRow("non-hex digit") << "z8" + zeros(18) << "" << QList<int>{5} << QList<int>{};
        // Digits beyond the count are ignored.
        QTest::newRow("too long") << zeros(19) + "1f" << zeros(47) + "f" << QList<int>{80} << QList<int>{};
        // 29 and 31 are no SC entries; AC 2 is a bit of AC 1, not an entry.
        QTest::newRow("numbers not in the list") << "0000000a"
                                                 << "4" << QList<int>{} << QList<int>{};
    }

    void badStoredTextsLoadWhatTheyCan()
    {
        QFETCH(QString, sc);
        QFETCH(QString, ac);
        QFETCH(QList<int>, scTicked);
        QFETCH(QList<int>, acTicked);
        Loaded doc(
            QStringLiteral("    <CP sc=\"%1\" ac=\"%2\" bc=\"xyz\" cmd=\"fffffff\" />\n").arg(sc, ac).toLatin1());
        QCOMPARE(ticked(doc.can()->treeSC()), scTicked);
        QCOMPARE(ticked(doc.can()->treeAdditional()), acTicked);
        QCOMPARE(
            doc.line("CP"), cpNode(refListText(scTicked, 20), refListText(acTicked, 47), zeros(26), "ff3").trimmed());
    }

    void variantChoosesTheAdditionalListAndKeepsTheOther()
    {
        // AC 1 and 52 (the 1b set), BC 1 and 29.
        const QByteArray node = cpNode(zeros(20), "8" + zeros(11) + "1" + zeros(34), "8000000800" + zeros(16), "000");
        Loaded doc(node, ZOR_TerminalProfile::CanExt);
        ZOR_Form_Config_CAN_Param* form = doc.can();
        QCOMPARE(form->treeAdditional()->topLevelItemCount(), 102);
        QCOMPARE(ticked(form->treeAdditional()), (QList<int>{1, 52}));
        // Numbers beyond the AC text cannot be ticked.
        QVERIFY(!(item(form->treeAdditional(), 189)->flags() & Qt::ItemIsUserCheckable));
        QVERIFY(item(form->treeAdditional(), 188)->flags() & Qt::ItemIsUserCheckable);

        item(form->treeAdditional(), 18)->setCheckState(0, Qt::Checked);
        form->setTypeCanBt();
        QCOMPARE(form->canVariant(), int(ZOR_TerminalProfile::CanBt));
        QCOMPARE(form->treeAdditional()->topLevelItemCount(), 21);
        QCOMPARE(ticked(form->treeAdditional()), (QList<int>{1, 29}));
        QCOMPARE(form->getUseList_AC(), (QList<int>{1, 18, 52}));
        form->delUseList_AC(52);
        form->setTypeCanExt();
        QCOMPARE(ticked(form->treeAdditional()), (QList<int>{1, 18}));
        QCOMPARE(form->getStrParam_BC(), "8000000800" + zeros(16));
        QCOMPARE(form->getStrParam_AC(), "80004" + zeros(42));

        // A profile change shows another list; it edits nothing.
        QSignalSpy edited(form, &ZOR_Form_Config::signal_FormEdited);
        ZOR_TerminalProfile profile;
        profile.nCanVariant = ZOR_TerminalProfile::CanBt;
        form->applyProfile(profile);
        QCOMPARE(ticked(form->treeAdditional()), (QList<int>{1, 29}));
        QCOMPARE(edited.count(), 0);
    }

    void olderFirmwareTextsAreRenumbered_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stored");
        // 3.16: the lights set was 38, the service distance 47 (today 71 and 80).
        QTest::newRow("SC 3.16 lights and distance") << "sc316"
                                                     << "000000000402" << refListText({71, 80}, 20);
        QTest::newRow("SC 3.16 unknown 37") << "sc316"
                                            << "000000000800" << zeros(20);
        // 3.20: the lights set was 62, the service distance 71 (today 71 and
        // 80); 1-61 kept their numbers.
        QTest::newRow("SC 3.20") << "sc320"
                                 << "c00000000000000402" << refListText({1, 2, 71, 80}, 20);
        // 3.16: AC's 214 was today's 231, beyond what the AC text holds.
        QTest::newRow("AC 3.16") << "ac316"
                                 << "8" << refListText({1}, 47);
        // 3.16 knew commands 1-4 and today's 7, 8 as 5, 6.
        QTest::newRow("Cmd 3.16") << "cmd316"
                                  << "91" << refCmdText({1, 4, 7}, 10);
        QTest::newRow("Cmd 3.20") << "cmd320"
                                  << "0f1" << refCmdText({5, 6, 7, 8}, 10);
    }

    void olderFirmwareTextsAreRenumbered()
    {
        QFETCH(QString, which);
        QFETCH(QString, text);
        QFETCH(QString, stored);
        ZOR_Form_Config_CAN_Param form;
        const QMap<QString, std::function<QString()>> read = {
            {"sc316",
                [&] {
                    form.setStrParam_SC_316(text);
                    return form.getStrParam_SC();
                }},
            {"sc320",
                [&] {
                    form.setStrParam_SC_320(text);
                    return form.getStrParam_SC();
                }},
            {"ac316",
                [&] {
                    form.setStrParam_AC_316(text);
                    return form.getStrParam_AC();
                }},
            {"cmd316",
                [&] {
                    form.setStrParam_Cmd_316(text);
                    return form.getStrParam_Cmd();
                }},
            {"cmd320",
                [&] {
                    form.setStrParam_Cmd_320(text);
                    return form.getStrParam_Cmd();
                }},
        };
        QCOMPARE(read[which](), stored);
    }

    void buttonsAskForTheFieldSetTabs()
    {
        ZOR_Form_Config_CAN_Param form;
        QSignalSpy can(&form, &ZOR_Form_Config_CAN_Param::signal_OpenTab_KiteSet_Tab_CAN);
        QSignalSpy user(&form, &ZOR_Form_Config_CAN_Param::signal_OpenTab_KiteSet_Tab_User);
        QSignalSpy page(&form, &ZOR_Form_Config::signal_ShowPage);
        form.findChild<QPushButton*>("pushButton_KiteCan")->click();
        QVERIFY(can.count() == 1 && user.isEmpty());
        form.findChild<QPushButton*>("pushButton_KiteUser")->click();
        QVERIFY(can.count() == 1 && user.count() == 1);
        QCOMPARE(page.takeFirst(), (QVariantList{QStringLiteral("protocol"), QStringLiteral("CAN")}));
        QCOMPARE(page.takeFirst(), (QVariantList{QStringLiteral("protocol"), QStringLiteral("User")}));
        QVERIFY(page.isEmpty());
    }

    void s6NewConfigurationLayout()
    {
        ZorFormDocument::Doc d({kPages[1]});
        d.doc.newDocument();
        QByteArray body = "    <S6 outFS=\"4095\">\n        <S6DFM1 mode=\"0\" address1=\"11\" address2=\"12\" />\n";
        for (int n = 1; n <= 8; ++n)
            body += "        <S6DUT" + QByteArray::number(n)
                + " address=\"0\" filterMode=\"0\" filterLength=\"5\" filterLvl=\"5\" />\n";
        QCOMPARE(d.doc.render(), config(body + "    </S6>\n"));
    }

    // The form keeps "outFS" and its children on the element it is handed; the
    // configuration document is what opens "S6".
    void s6KeepsItsValuesOnTheElementItIsHanded()
    {
        const QByteArray dut2 = "<S6DUT2 address=\"9\" filterMode=\"1\" filterLength=\"7\" filterLvl=\"3\" />";
        ZOR_Form_Config_CAN_TechotonS6 form;
        QVERIFY(ZorFormDocument::load(
            form, ZorFormDocument::kDecl + "<CONFIG outFS=\"1023\">\n    " + dut2 + "\n</CONFIG>\n"));
        QCOMPARE(form.dutAddress(1)->value(), 9);
        QCOMPARE(form.getDutE_Number4Text(form.dutOutFs(0)->currentText()), 1023);
        const QByteArray saved = ZorFormDocument::save(form);
        QCOMPARE(ZorFormDocument::nodeLine(saved, "CONFIG"), QByteArray("<CONFIG outFS=\"1023\">"));
        QCOMPARE(ZorFormDocument::nodeLine(saved, "S6DUT2"), dut2);
        QVERIFY(saved.contains("\n    <S6DFM1 "));
        QVERIFY(!saved.contains("<S6 "));
    }

    void s6SensorUseFollowsAddressAndEnablesControls()
    {
        const QByteArray node =
            "    <S6 outFS=\"1023\">\n"
            "        <S6DFM1 mode=\"2\" address1=\"40\" address2=\"41\" />\n"
            "        <S6DUT3 address=\"77\" filterMode=\"1\" filterLength=\"30\" filterLvl=\"0\" />\n"
            "        <S6DUT4 address=\"0\" filterMode=\"1\" filterLength=\"9\" filterLvl=\"9\" />\n"
            "    </S6>\n";
        Loaded doc(node);
        ZOR_Form_Config_CAN_TechotonS6* s6 = doc.s6();
        QVERIFY(s6->dutUse(2)->isChecked());
        QVERIFY(s6->dutFilterLvl(2)->isEnabled());
        QVERIFY(!s6->dutUse(3)->isChecked());
        QVERIFY(!s6->dutFilterLength(3)->isEnabled());
        QCOMPARE(s6->dutFilterLength(3)->value(), 9); // kept while off
        QCOMPARE(doc.line("S6DUT3"),
            QByteArray("<S6DUT3 address=\"77\" filterMode=\"1\" filterLength=\"30\" filterLvl=\"0\" />"));
        QCOMPARE(doc.line("S6DUT4"),
            QByteArray("<S6DUT4 address=\"0\" filterMode=\"1\" filterLength=\"9\" filterLvl=\"9\" />"));
        QCOMPARE(doc.line("S6DFM1"), QByteArray("<S6DFM1 mode=\"2\" address1=\"40\" address2=\"41\" />"));

        // Ticking a sensor gives it its own number as address; off is address 0.
        s6->dutUse(4)->setChecked(true);
        QCOMPARE(s6->dutAddress(4)->value(), 5);
        QVERIFY(s6->dutOutFs(4)->isEnabled());
        s6->dutUse(2)->setChecked(false);
        QCOMPARE(doc.line("S6DUT3"),
            QByteArray("<S6DUT3 address=\"0\" filterMode=\"1\" filterLength=\"30\" filterLvl=\"0\" />"));
        s6->dutUse(2)->setChecked(true);
        QCOMPARE(s6->dutAddress(2)->value(), 77);
    }

    void s6OutputScaleIsOneForAllSensors_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("1023 chosen in row 5") << QByteArray("4095") << 4 << "0 - 1023" << QByteArray("1023");
        QTest::newRow("65535 chosen in row 1") << QByteArray("1023") << 0 << "0 - 65535" << QByteArray("65535");
        QTest::newRow("unknown stored scale") << QByteArray("777") << -1 << "" << QByteArray("4095");
    }

    void s6OutputScaleIsOneForAllSensors()
    {
        QFETCH(QByteArray, stored);
        QFETCH(int, row);
        QFETCH(QString, chosen);
        QFETCH(QByteArray, saved);
        Loaded doc("    <S6 outFS=\"" + stored + "\" />\n");
        ZOR_Form_Config_CAN_TechotonS6* s6 = doc.s6();
        if (row >= 0) {
            QComboBox* box = s6->dutOutFs(row);
            box->setCurrentIndex(box->findText(chosen));
            emit box->activated(box->currentIndex());
        }
        for (int i = 0; i < ZOR_Form_Config_CAN_TechotonS6::nDutCount; ++i)
            QCOMPARE(s6->getDutE_Number4Text(s6->dutOutFs(i)->currentText()), saved.toInt());
        QCOMPARE(doc.line("S6"), "<S6 outFS=\"" + saved + "\">");
    }
};

QTEST_MAIN(TestConfigCan)
#include "tst_config_can.moc"
