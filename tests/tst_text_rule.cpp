// The Windows-1251 text rule, the language service and the shared helpers.

#include "module/zor_cp1251.h"
#include "module/zor_global.h"
#include "module/zor_language.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestTextRule : public QObject
{
    Q_OBJECT
private slots:
    void encodesByTheRule_data();
    void encodesByTheRule();
    void everyByteRoundTrips();
    void byte98IsTheC1Control();
    void ensureSuffix_data();
    void ensureSuffix();
    void languageFileParsesEscapesAndComments();
    void missingCaptionFallsBackToRussian_data();
    void missingCaptionFallsBackToRussian();
    void programLanguageIsAnApplicationProperty();
};

void TestTextRule::encodesByTheRule_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("ascii") << QStringLiteral("*?V") << QByteArray("*?V");
    QTest::newRow("cyrillic") << QStringLiteral("Чек ш") << QByteArray("\xD7\xE5\xEA \xF8");
    QTest::newRow("yo and Yo") << QStringLiteral("ёЁ") << QByteArray("\xB8\xA8");
    QTest::newRow("ukrainian ghe") << QStringLiteral("Ґґ") << QByteArray("\xA5\xB4");
    QTest::newRow("euro, numero, tm") << QStringLiteral("€№™") << QByteArray("\x88\xB9\x99");
    QTest::newRow("greek becomes underscore") << QStringLiteral("aΩb") << QByteArray("a_b");
    QTest::newRow("latin-1 e acute is absent") << QStringLiteral("é") << QByteArray("_");
    QTest::newRow("no-break space") << QStringLiteral("\u00A0") << QByteArray("\xA0");
    // U+1F600 is one character held as two UTF-16 units; it has no byte.
    QTest::newRow("surrogate pair is one character") << QStringLiteral("a\U0001F600b") << QByteArray("a_b");
    QTest::newRow("two pairs in a row") << QStringLiteral("\U0001F600\U0001F601") << QByteArray("__");
    QTest::newRow("lone high half") << QString(QChar(0xD83D)) + "x" << QByteArray("_x");
    QTest::newRow("lone low half") << QString(QChar(0xDE00)) << QByteArray("_");
    QTest::newRow("nul stays nul") << QString(QChar(0)) << QByteArray(1, '\0');
    QTest::newRow("empty") << QString() << QByteArray();
}

void TestTextRule::encodesByTheRule()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(ZOR_Cp1251::encode(text), bytes);
}

void TestTextRule::everyByteRoundTrips()
{
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(static_cast<char>(b));
    const QString text = ZOR_Cp1251::decode(all);
    QCOMPARE(text.size(), 256);
    QCOMPARE(ZOR_Cp1251::encode(text), all);
}

void TestTextRule::byte98IsTheC1Control()
{
    QCOMPARE(ZOR_Cp1251::decodeByte(0x98).unicode(), ushort(0x0098));
    QCOMPARE(ZOR_Cp1251::encode(QString(QChar(0x0098))), QByteArray("\x98"));
    // Other C1 controls have no byte of their own.
    QCOMPARE(ZOR_Cp1251::encode(QString(QChar(0x0081))), QByteArray("_"));
}

void TestTextRule::ensureSuffix_data()
{
    QTest::addColumn<QString>("s");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("result");
    QTest::newRow("appended") << "cfg"
                              << ".xml"
                              << "cfg.xml";
    QTest::newRow("already there") << "cfg.xml"
                                   << ".xml"
                                   << "cfg.xml";
    QTest::newRow("case-sensitive") << "cfg.XML"
                                    << ".xml"
                                    << "cfg.XML.xml";
    QTest::newRow("empty stays empty") << ""
                                       << ".xml"
                                       << "";
}

void TestTextRule::ensureSuffix()
{
    QFETCH(QString, s);
    QFETCH(QString, suffix);
    QFETCH(QString, result);
    QCOMPARE(::ensureSuffix(s, suffix), result);
}

void TestTextRule::languageFileParsesEscapesAndComments()
{
    const QByteArray content = "# comment\r\nmdln_001=Команды\r\nwrd_x=a\\nb\\\\c\n=novalue\nbroken\n";
    const QHash<QString, QString> texts = ZOR_Language::parse(content);
    QCOMPARE(texts.value("mdln_001"), QStringLiteral("Команды"));
    QCOMPARE(texts.value("wrd_x"), QStringLiteral("a\nb\\c"));
    QCOMPARE(texts.size(), 2);
}

void TestTextRule::missingCaptionFallsBackToRussian_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("en has it") << "en"
                               << "a"
                               << "Apple";
    QTest::newRow("en lacks it") << "en"
                                 << "b"
                                 << "Берёза";
    QTest::newRow("en leaves it empty") << "en"
                                        << "c"
                                        << "Вишня";
    QTest::newRow("nobody has it") << "en"
                                   << "z"
                                   << "z";
    QTest::newRow("unknown language") << "xx"
                                      << "a"
                                      << "Абрикос";
    QTest::newRow("ru itself") << "ru"
                               << "b"
                               << "Берёза";
    QTest::newRow("ru lacks it") << "ru"
                                 << "d"
                                 << "d";
    QTest::newRow("English only key") << "en"
                                      << "d"
                                      << "Date";
    QTest::newRow("keys pseudo-language") << "keys"
                                          << "a"
                                          << "a";
}

void TestTextRule::missingCaptionFallsBackToRussian()
{
    QFETCH(QString, language);
    QFETCH(QString, key);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QDir().mkpath(dir.path() + "/Localization/Lang");
    const auto write = [&dir](const char* name, const QByteArray& content) {
        QFile file(dir.path() + "/Localization/Lang/" + name);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    };
    QVERIFY(write("zor_ru.lang", "a=Абрикос\nb=Берёза\nc=Вишня\n"));
    QVERIFY(write("zor_en.lang", "a=Apple\nc=\nd=Date\n"));
    setAppDataDirectory(dir.path());
    ZOR_Language::instance().load(language);
    const QString shown = zorTr(key);
    setAppDataDirectory(QString());
    ZOR_Language::instance().reload();
    QTEST(shown, "text");
}

void TestTextRule::programLanguageIsAnApplicationProperty()
{
    setProgramLanguage("en");
    QCOMPARE(programLanguage(), QStringLiteral("en"));
    QCOMPARE(qApp->property("zor_programLanguage").toString(), QStringLiteral("en"));
    ZOR_Language::instance().reload();
    QCOMPARE(zorTr("mdln_001"), QStringLiteral("Commands"));
    QVERIFY(!ZOR_Language::instance().load("xx"));
    QCOMPARE(zorTr("mdln_001"), QStringLiteral("Команды"));
    setProgramLanguage(QString());
    ZOR_Language::instance().reload();
    QCOMPARE(zorTr("mdln_001"), QStringLiteral("Команды"));
    QCOMPARE(appDataDirectory(), QCoreApplication::applicationDirPath());
}

QTEST_MAIN(TestTextRule)
#include "tst_text_rule.moc"
