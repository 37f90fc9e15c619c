// The CAN and controller catalogue: every list's entries, numbers, types and
// caption keys as the catalogue's definition gives them (written out here by
// hand, not taken from the code's tables), the bit-set gaps, rebuilding,
// the naming of user parameters and the captions of the shipped language
// files. Older firmware numbers are tested through the texts that use them,
// with the CAN selection page.

#include "config/zor_userparams.h"
#include "module/zor_language.h"

#include <QPointer>
#include <QRegularExpression>
#include <QtTest>

#include <functional>

namespace {

// "1-3,7" -> 1 2 3 7
QVector<int> expand(const QString& qsRanges)
{
    QVector<int> numbers;
    for (const QString& part : qsRanges.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QStringList ends = part.split(QLatin1Char('-'));
        for (int n = ends.first().toInt(); n <= ends.last().toInt(); ++n)
            numbers.append(n);
    }
    return numbers;
}

QVector<ZOR_UserParam_CAN*> listNamed(const ZOR_UserParams& catalogue, const QString& qsList)
{
    QVector<ZOR_UserParam_CAN*> list;
    const QHash<QString, std::function<void()>> accessors = {
        {"SC", [&] { catalogue.getListParamsCAN_SC(list); }},
        {"BC", [&] { catalogue.getListParamsCAN_BC(list); }},
        {"AC", [&] { catalogue.getListParamsCAN_AC(list); }},
        {"CO", [&] { catalogue.getListParams_CO(list); }},
        {"AX", [&] { catalogue.getListParams_AX(list); }},
        {"RC", [&] { catalogue.getListParams_RC(list); }},
        {"Cmd", [&] { catalogue.getListParamsCAN_Cmd(list); }},
    };
    accessors.value(qsList)();
    return list;
}

QHash<QString, QString> languageFile(const QString& qsLanguage)
{
    QFile file(QStringLiteral(ZOR_BIN_DIR "/Localization/Lang/zor_%1.lang").arg(qsLanguage));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return ZOR_Language::parse(file.readAll());
}

QString keyPlus(const QString& qsKey, int nAdd)
{
    const int nSep = qsKey.indexOf(QLatin1Char('_'));
    return qsKey.left(nSep + 1) + QStringLiteral("%1").arg(qsKey.mid(nSep + 1).toInt() + nAdd, 3, 10, QLatin1Char('0'));
}

using TypeLookup = bool (ZOR_UserParams::*)(const QString&, int*) const;
using StrLookup = QString (ZOR_UserParams::*)(int) const;
using CodeLookup = int (ZOR_UserParams::*)(const QString&) const;
struct ListLookups
{
    TypeLookup type;
    StrLookup strType;
    StrLookup protocol;
    CodeLookup code;
};

const QHash<QString, ListLookups>& lookups()
{
    using C = ZOR_UserParams;
    static const QHash<QString, ListLookups> table = {
        {"SC", {&C::getTypeCAN_SC, &C::getStrTypeCAN_SC, &C::getStrProtocolUserCAN_SC, &C::getNumberType_CAN_SC}},
        {"BC", {&C::getTypeCAN_BC, &C::getStrTypeCAN_BC, &C::getStrProtocolUserCAN_BC, &C::getNumberType_CAN_BC}},
        {"AC", {&C::getTypeCAN_AC, &C::getStrTypeCAN_AC, &C::getStrProtocolUserCAN_AC, &C::getNumberType_CAN_AC}},
        {"CO",
            {&C::getTypeACond_CO, &C::getStrTypeACond_CO, &C::getStrProtocolUserACond_CO, &C::getNumberType_ACond_CO}},
        {"AX", {&C::getType_AX, &C::getStrType_AX, &C::getStrProtocolUser_AX, &C::getNumberType_AX}},
        {"RC",
            {&C::getTypeACond_RC, &C::getStrTypeACond_RC, &C::getStrProtocolUserACond_RC, &C::getNumberType_ACond_RC}},
    };
    return table;
}

} // namespace

class TestUserParams : public QObject
{
    Q_OBJECT
private slots:
    void init() { ZOR_Language::instance().load(QStringLiteral("keys")); }

    void listsHoldTheDefinedNumbers_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QString>("bits");
        QTest::newRow("SC") << "SC"
                            << "1-20,38,71,80"
                            << "21-36,39-61,63-67,69-70,72-79";
        QTest::newRow("BC") << "BC"
                            << "1-20,29"
                            << "21-28";
        QTest::newRow("AC") << "AC"
                            << "1,18,35,52,61,70,79,88,97,106,115,124,133,142,151-213,231-255"
                            << "2-16,19-27,36-49,53-60,62-69,71-77,80-87,89-96,98-104,107-108,"
                               "116-118,120-122,125-127,129-131,134-136,138-140,143-145,147-149";
        QTest::newRow("CO") << "CO"
                            << "1-18"
                            << "";
        QTest::newRow("RC") << "RC"
                            << "1-37"
                            << "";
        QTest::newRow("AX") << "AX"
                            << "1-15"
                            << "";
        QTest::newRow("Cmd") << "Cmd"
                             << "1-10"
                             << "";
    }

    void listsHoldTheDefinedNumbers()
    {
        QFETCH(QString, list);
        QFETCH(QString, entries);
        QFETCH(QString, bits);
        ZOR_UserParams catalogue;
        QVector<int> entryNumbers, bitNumbers;
        QSet<QString> keys;
        int nId = 0;
        for (const ZOR_UserParam_CAN* entry : listNamed(catalogue, list)) {
            QCOMPARE(entry->getParam_Id(), ++nId);
            entryNumbers.append(entry->getParam_Num());
            keys.insert(entry->getParamKey());
            if (!entry->getListParamBit().isEmpty())
                QVERIFY(entry->isBitSet());
            int nPosition = 0;
            for (const ZOR_UserParam_CAN_Bit* bit : entry->getListParamBit()) {
                QVERIFY(bit->getParam_Num() > entry->getParam_Num());
                bitNumbers.append(bit->getParam_Num());
                // A bit's key is its set's key plus its position in the set; the
                // one exception is BC's bit 28, whose turn would be entry 29's key.
                const bool bExtra = list == QLatin1String("BC") && bit->getParam_Num() == 28;
                QCOMPARE(bit->getParamKey(),
                    bExtra ? QStringLiteral("cfgt5_476") : keyPlus(entry->getParamKey(), ++nPosition));
                QVERIFY2(!keys.contains(bit->getParamKey()), qPrintable(bit->getParamKey()));
                keys.insert(bit->getParamKey());
            }
        }
        QCOMPARE(entryNumbers, expand(entries));
        QCOMPARE(bitNumbers, expand(bits));
    }

    void rowsCarryTheirNumberTypeAndKey_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("key");
        auto row = [](const char* list, int id, int number, const char* type, const char* key) {
            QTest::addRow("%s id %d", list, id) << list << id << number << type << key;
        };
        row("SC", 1, 1, "2u", "cfgt5_053");
        row("SC", 20, 20, "2b", "cfgt5_072");
        row("SC", 21, 38, "4b", "cfgt5_106");
        row("SC", 22, 71, "1b", "cfgt5_137");
        row("SC", 23, 80, "4u", "cfgt5_146");
        row("BC", 1, 1, "1u", "cfgt5_446");
        row("BC", 20, 20, "1b", "cfgt5_465");
        row("BC", 21, 29, "2b", "cfgt5_473");
        row("AC", 1, 1, "2b", "cfgt5_147");
        row("AC", 14, 142, "1b", "cfgt5_264");
        row("AC", 15, 151, "2u", "cfgt5_271");
        row("AC", 75, 211, "4u", "cfgt5_331");
        row("AC", 76, 212, "4u", "cfgt5_440");
        row("AC", 77, 213, "2s", "cfgt5_441");
        row("AC", 78, 231, "1u", "cfgt5_332");
        row("AC", 87, 240, "2u", "cfgt5_341");
        row("AC", 88, 241, "1u", "cfgt5_429");
        row("AC", 99, 252, "4u", "cfgt5_442");
        row("AC", 102, 255, "1s", "cfgt5_445");
        row("CO", 1, 1, "4u", "cfgt5_367");
        row("CO", 16, 16, "1b", "cfgt5_382");
        row("CO", 17, 17, "2u", "cfgt5_474");
        row("RC", 1, 1, "1b", "cfgt6_165");
        row("RC", 11, 11, "2s", "cfgt6_175");
        row("RC", 35, 35, "4u", "cfgt6_199");
        row("RC", 37, 37, "2s", "cfgt6_225");
        row("AX", 1, 1, "2u", "cfgt6_206");
        row("AX", 2, 2, "1u", "cfgt6_207");
        row("AX", 14, 14, "2b", "cfgt6_209");
        row("Cmd", 1, 1, "1u", "cfgt5_342");
        row("Cmd", 10, 10, "1u", "cfgt5_351");
    }

    void rowsCarryTheirNumberTypeAndKey()
    {
        QFETCH(QString, list);
        QFETCH(int, id);
        QFETCH(int, number);
        QFETCH(QString, type);
        QFETCH(QString, key);
        ZOR_UserParams catalogue;
        const QVector<ZOR_UserParam_CAN*> entries = listNamed(catalogue, list);
        QVERIFY(id <= entries.size());
        const ZOR_UserParam_CAN* entry = entries.at(id - 1);
        QCOMPARE(entry->getParam_Num(), number);
        QCOMPARE(entry->getStrNumberType(), type);
        QCOMPARE(entry->getParamKey(), key);
        QVERIFY(entry->getParamTitle().startsWith(key)); // language "keys"
        const QStringList codes = {"1b", "1u", "1s", "2b", "2u", "2s", "4b", "4u", "4s", "4f"};
        QCOMPARE(entry->getNumberType(), codes.indexOf(type) + 1);
    }

    void rebuildingDeletesTheOldEntries()
    {
        ZOR_UserParams catalogue;
        const int nObjects = catalogue.findChildren<QObject*>().size();
        QVector<ZOR_UserParam_CAN*> list;
        catalogue.getListParamsCAN_SC(list);
        QPointer<ZOR_UserParam_CAN> entry = list.first();
        QPointer<ZOR_UserParam_CAN_Bit> bit = list.at(19)->getListParamBit().first();
        catalogue.createList_SC();
        QVERIFY(entry.isNull());
        QVERIFY(bit.isNull());
        catalogue.getListParamsCAN_SC(list);
        QCOMPARE(list.size(), 23);
        catalogue.translateClass();
        catalogue.translateClass();
        QCOMPARE(catalogue.findChildren<QObject*>().size(), nObjects);
    }

    // Refrigeration captions are composed of two keys' texts: "A, B", or
    // "A, 2 B" for the second compartment; the last two are plain.
    void captionsAreComposedAndLookedUpAgain()
    {
        const QHash<QString, QString> english = languageFile(QStringLiteral("en"));
        QVERIFY(!english.isEmpty());
        ZOR_UserParams catalogue;
        QVector<ZOR_UserParam_CAN*> sc, ax;
        catalogue.getListParamsCAN_SC(sc);
        catalogue.getListParams_AX(ax);
        QCOMPARE(sc.first()->getParamTitle(), QStringLiteral("cfgt5_053"));
        const QRegularExpression composed(QStringLiteral("^cfgt6_\\d{3}(, (2 )?\\w+)?$"));
        for (const ZOR_UserParam_CAN* entry : ax)
            QVERIFY2(composed.match(entry->getParamTitle()).hasMatch(), qPrintable(entry->getParamTitle()));
        QVERIFY(ax.first()->getParamTitle().startsWith(QLatin1String("cfgt6_206, ")));
        QCOMPARE(ax.at(13)->getParamTitle(), QStringLiteral("cfgt6_209"));
        QCOMPARE(ax.at(14)->getParamTitle(), QStringLiteral("cfgt6_210"));

        ZOR_Language::instance().load(QStringLiteral("en"));
        catalogue.translateClass();
        catalogue.getListParamsCAN_SC(sc);
        catalogue.getListParams_AX(ax);
        QCOMPARE(sc.first()->getParamTitle(), english.value("cfgt5_053"));
        QCOMPARE(sc.at(19)->getListParamBit().first()->getParamTitle(), english.value("cfgt5_073"));
        // entry 7 is the first of the second compartment
        QCOMPARE(ax.at(6)->getParamTitle(), english.value("cfgt6_211") + ", 2 " + english.value("cfgt6_208"));
        QCOMPARE(catalogue.getUserParamTitle("SC, 1, 2u"), english.value("cfgt5_053"));
    }

    // A name designates an entry of one list only; list "" designates nothing.
    void namesDesignateOneEntryOfOneList_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("code");
        QTest::newRow("SC float") << "SC" << 3 << "SC, 3, 4f" << 10;
        QTest::newRow("SC set 38") << "SC" << 38 << "SC, 38, 4b" << 7;
        QTest::newRow("BC last") << "BC" << 29 << "BC, 29, 2b" << 4;
        QTest::newRow("AC after gap") << "AC" << 231 << "AC, 231, 1u" << 2;
        QTest::newRow("AC last") << "AC" << 255 << "AC, 255, 1s" << 3;
        QTest::newRow("CO bit set") << "CO" << 14 << "CO, 14, 4b" << 7;
        QTest::newRow("AX first") << "AX" << 1 << "AX, 1, 2u" << 5;
        QTest::newRow("RC last") << "RC" << 37 << "RC, 37, 2s" << 6;
        QTest::newRow("a bit, not an entry") << "" << 0 << "SC, 21, 1u" << 0;
        QTest::newRow("in a gap") << "" << 0 << "SC, 37" << 0;
        QTest::newRow("wrong type") << "" << 0 << "SC, 1, 4u" << 0;
        QTest::newRow("past the list") << "" << 0 << "SC, 81, 2u" << 0;
        QTest::newRow("not a number") << "" << 0 << "SC, one, 2u" << 0;
        QTest::newRow("no prefix") << "" << 0 << ", 1, 2u" << 0;
        QTest::newRow("no comma") << "" << 0 << "SC 1 2u" << 0;
        QTest::newRow("empty") << "" << 0 << "" << 0;
        QTest::newRow("commands are no user parameters") << "" << 0 << "Cmd, 1, 1u" << 0;
    }

    void namesDesignateOneEntryOfOneList()
    {
        QFETCH(QString, list);
        QFETCH(int, number);
        QFETCH(QString, name);
        QFETCH(int, code);
        ZOR_UserParams catalogue;
        for (auto it = lookups().begin(); it != lookups().end(); ++it) {
            const bool own = it.key() == list;
            int nNum = 0;
            QVERIFY2((catalogue.*it->type)(name, &nNum) == own, qPrintable(it.key()));
            QCOMPARE((catalogue.*it->code)(name), own ? code : 0);
            if (!own)
                continue;
            QCOMPARE(nNum, number);
            QCOMPARE((catalogue.*it->protocol)(number), name);
            QCOMPARE((catalogue.*it->strType)(number), name.section(", ", 2));
            QString spaced = name;
            QVERIFY((catalogue.*it->type)(spaced.replace(", ", " ,  "), nullptr));
        }
        if (list.isEmpty()) {
            QCOMPARE(catalogue.getUserParamTitle(name), QString());
            QCOMPARE(catalogue.getUserParamName4Type(name), QString());
        } else {
            QCOMPARE(catalogue.getUserParamType4Name(name), name.section(", ", 2));
            QCOMPARE(catalogue.getUserParamName4Type(name.section(", ", 0, 1)), name);
        }
    }

    void controllerNamesNeedTheirOwnType()
    {
        ZOR_UserParams catalogue;
        int nNum = 0;
        QVERIFY(catalogue.getType_CE("CE, 200, 4s", &nNum));
        QCOMPARE(nNum, 200);
        QCOMPARE(catalogue.getStrType_CE("CE, 200, 4s"), QStringLiteral("4s"));
        QCOMPARE(catalogue.getNumberType_CE("CE, 200, 4s"), 9);
        QCOMPARE(catalogue.getStrProtocolUser_CE(7, "2u"), QStringLiteral("CE, 7, 2u"));
        QVERIFY(!catalogue.getType_CE("CE, 7"));
        QVERIFY(!catalogue.getType_CE("CE, 0, 2u"));
        QVERIFY(!catalogue.getType_CE("CE, 256, 2u"));
        QVERIFY(!catalogue.getType_CE("SC, 1, 2u"));
        QCOMPARE(catalogue.getStrProtocolUser_CE(7, "3u"), QString());
        QCOMPARE(catalogue.getStrProtocolUser_CE(0, "2u"), QString());
    }

    void nameHelpers()
    {
        QCOMPARE(ZOR_UserParams::getUserParamName("SC", "1"), QStringLiteral("SC, 1"));
        QCOMPARE(ZOR_UserParams::getUserParamName("SC", "1", "2u"), QStringLiteral("SC, 1, 2u"));
        QString qsPrefix, qsMiddle, qsType;
        // a published value's label may hold commas of its own
        QVERIFY(ZOR_UserParams::splitUserParamName("MB, MB1,  5,  1a, 2u", &qsPrefix, &qsMiddle, &qsType));
        QCOMPARE(qsPrefix, QStringLiteral("MB"));
        QCOMPARE(qsMiddle, QStringLiteral("MB1,  5,  1a"));
        QCOMPARE(qsType, QStringLiteral("2u"));
        ZOR_UserParams catalogue;
        QCOMPARE(catalogue.getUserParamType4Name("MB, MB1, 4s"), QStringLiteral("4s"));
        QCOMPARE(catalogue.getUserParamType4Name("RC, 35"), QStringLiteral("4u"));
        QCOMPARE(catalogue.getUserParamType4Name("MB, MB1"), QString());
    }

    void userParamEntriesOfferEveryValue()
    {
        ZOR_UserParams catalogue;
        QVector<ZOR_UserParamEntry> entries(1);
        catalogue.getUserParamEntries(entries);
        QCOMPARE(entries.size(), 23 + 21 + 102 + 18 + 37 + 15);
        auto has = [&entries](const char* prefix, const char* mess, const char* type, int size) {
            for (const ZOR_UserParamEntry& e : entries)
                if (e.sameValue({prefix, mess, type, size}))
                    return e.nSize == size;
            return false;
        };
        QVERIFY(has("SC", "38", "4b", 4));
        QVERIFY(has("BC", "29", "2b", 2));
        QVERIFY(has("AC", "255", "1s", 1));
        QVERIFY(has("CO", "1", "4u", 4));
        QVERIFY(has("RC", "37", "2s", 2));
        QVERIFY(has("AX", "15", "2b", 2));
        QVERIFY(!has("SC", "21", "1u", 1)); // a bit
        for (const ZOR_UserParamEntry& e : entries)
            QVERIFY(e.qsPrefix != QLatin1String("Cmd") && e.nSize > 0);
    }

    // Older firmware's AC numbers beyond what today's AC text holds; the
    // other renumberings are tested through the texts, with the CAN page.
    void olderFirmwareNumbersBeyondTheText()
    {
        ZOR_UserParams catalogue;
        QMap<int, int> numbers = {{999, 999}};
        catalogue.getListParamsCAN_AC_316(numbers);
        QVERIFY(!numbers.contains(999));
        QCOMPARE(numbers.value(214), 231);
        QCOMPARE(numbers.value(119, 0), 0); // no number 119 today
    }

    void everyKeyHasRussianAndEnglishCaptions()
    {
        const QHash<QString, QString> russian = languageFile(QStringLiteral("ru"));
        const QHash<QString, QString> english = languageFile(QStringLiteral("en"));
        QVERIFY(!russian.isEmpty() && !english.isEmpty());
        const QStringList keys = ZOR_UserParams::captionKeys();
        // at least the entry and bit keys of the seven lists
        QVERIFY(keys.size() >= 23 + 54 + 21 + 8 + 102 + 110 + 18 + 37 + 10 + 4);
        const QRegularExpression cyrillic(QStringLiteral("[\\x{0400}-\\x{04FF}]"));
        for (const QString& key : keys) {
            QVERIFY2(!russian.value(key).isEmpty() && russian.value(key) != key, qPrintable(key));
            QVERIFY2(!english.value(key).isEmpty() && english.value(key) != key, qPrintable(key));
            if (key.startsWith(QLatin1String("cfgt"))) {
                QVERIFY2(russian.value(key).contains(cyrillic), qPrintable(key));
                QVERIFY2(!english.value(key).contains(cyrillic), qPrintable(key));
            }
        }
    }
};

QTEST_MAIN(TestUserParams)
#include "tst_userparams.moc"
