// The parameter store: documents, cursors and the exact bytes they write.

#include "module/zor_cp1251.h"
#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

const QByteArray kDecl("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n");

struct MemoDoc
{
    CSerialize* doc = nullptr;
    explicit MemoDoc(const QByteArray& bytes = QByteArray())
    {
        coreSzMemo memo{bytes.constData(), bytes.size(), nullptr};
        zor_StartSZMemo(&memo);
        doc = memo.lpSerialize;
    }
    ~MemoDoc() { zor_StopSZMemo(doc); }
    QByteArray bytes() const
    {
        coreSzMemo memo{nullptr, 0, nullptr};
        return zor_GetSZMemo(doc, &memo) ? QByteArray(memo.lpData, memo.nSize) : QByteArray();
    }
};

QByteArray cp(const QString& s)
{
    return ZOR_Cp1251::encode(s);
}

} // namespace

class TestStore : public QObject
{
    Q_OBJECT
private slots:
    void namesAreEncodedAndComeBack_data();
    void namesAreEncodedAndComeBack();
    void valuesAreEscapedAndComeBack_data();
    void valuesAreEscapedAndComeBack();
    void emptyDocumentSavesDeclarationOnly();
    void numbersReadWithCLibraryRules_data();
    void numbersReadWithCLibraryRules();
    void longNamesAreCutAndCollide();
    void longNamesReadBackAreNotDuplicated();
    void rewriteKeepsPositionsAndOrder();
    void wideElementRecordsAreItsChildren();
    void colourIsSignedArgb();
    void colourStringNeedsThreeParts_data();
    void colourStringNeedsThreeParts();
    void fontBoldThresholdAndDefaults();
    void childIteration();
    void createNodeKinds();
    void textElementsOnOneLine();
    void settingsNodeOpenForReadCreatesNothing();
    void settingsNodeOpenForWriteClears();
    void badInputGivesCursorWithoutDocument_data();
    void badInputGivesCursorWithoutDocument();
    void missingFileIsCreatedEmpty();
    void staleCursorAfterClearDropsWrites();
};

void TestStore::namesAreEncodedAndComeBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("written");
    const QString all = QStringLiteral(" &><\"'!:;%`~@#$^*()-+=|\\чЧ,/");
    const int codes[] = {32, 38, 62, 60, 34, 39, 33, 58, 59, 37, 96, 126, 64, 35, 36, 94, 42, 40, 41, 45, 43, 61, 124,
        92, 1095, 1063, 44, 47};
    for (int i = 0; i < all.size(); ++i) {
        QTest::addRow("code %d", codes[i])
            << QStringLiteral("a%1b").arg(all[i]) << QByteArray("a_" + QByteArray::number(codes[i]) + "_b");
    }
    QByteArray allWritten;
    for (int c : codes)
        allWritten += "_" + QByteArray::number(c) + "_";
    QTest::newRow("all 28 in a row") << all << allWritten;
    QTest::newRow("space") << QStringLiteral("a b") << QByteArray("a_32_b");
    QTest::newRow("Chek") << QStringLiteral("Чек") << QByteArray("_1063_" + cp(QStringLiteral("ек")));
    QTest::newRow("sha stays") << QStringLiteral("ш") << cp(QStringLiteral("ш"));
    QTest::newRow("greek is replaced") << QStringLiteral("xΩ") << QByteArray("x_");
}

void TestStore::namesAreEncodedAndComeBack()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, written);
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("ROOT"));
    std::unique_ptr<CXMLWorkData> node(root.createNode(name, 0));
    const QByteArray attr = cp(name);
    node->writeInteger(attr.constData(), 5);
    node->writeParameters();
    const QByteArray bytes = m.bytes();
    QCOMPARE(bytes, kDecl + "<ROOT>\n    <" + written + " " + written + "=\"5\" />\n</ROOT>\n");

    MemoDoc back(bytes);
    QVERIFY(back.doc);
    CXMLWorkData root2(back.doc, QStringLiteral("ROOT"));
    const QString expected = ZOR_Cp1251::decode(cp(name));
    std::unique_ptr<CXMLWorkData> node2(root2.getFirstNode(expected));
    QVERIFY(node2);
    QCOMPARE(node2->readInteger(attr.constData(), 0), 5);
}

void TestStore::valuesAreEscapedAndComeBack_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("readBack");
    QTest::newRow("markup") << QStringLiteral("a&b<c>d\"e'f") << QByteArray("a&amp;b&lt;c&gt;d&quot;e&apos;f")
                            << QStringLiteral("a&b<c>d\"e'f");
    QTest::newRow("cyrillic") << QStringLiteral("Привет, мир") << cp(QStringLiteral("Привет, мир"))
                              << QStringLiteral("Привет, мир");
    QTest::newRow("greek letter becomes underscore")
        << QStringLiteral("αβ1") << QByteArray("__1") << QStringLiteral("__1");
    QTest::newRow("euro is in the code page") << QStringLiteral("5€") << QByteArray("5\x88") << QStringLiteral("5€");
    QTest::newRow("empty") << QString() << QByteArray() << QString();
}

void TestStore::valuesAreEscapedAndComeBack()
{
    QFETCH(QString, value);
    QFETCH(QByteArray, written);
    QFETCH(QString, readBack);
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    root.writeString("v", value);
    root.writeParameters();
    const QByteArray bytes = m.bytes();
    QCOMPARE(bytes, kDecl + "<R v=\"" + written + "\" />\n");
    MemoDoc back(bytes);
    CXMLWorkData root2(back.doc, QStringLiteral("R"));
    QString got;
    root2.readString("v", QStringLiteral("default"), got);
    QCOMPARE(got, readBack.isEmpty() ? QStringLiteral("default") : readBack);
}

void TestStore::emptyDocumentSavesDeclarationOnly()
{
    MemoDoc m;
    QVERIFY(m.doc);
    QCOMPARE(m.bytes(), kDecl);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("empty.xml"));
    QFile(path).open(QIODevice::WriteOnly);
    coreSzCreate create{};
    qstrncpy(create.szFileName, QFile::encodeName(path).constData(), sizeof create.szFileName);
    QVERIFY(zor_StartSZ(&create));
    QVERIFY(zor_StopSZ(create.lpSerialize, true));
    QFile f(path);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), kDecl);
    // What it saved opens again, as the same empty document.
    QVERIFY(zor_StartSZ(&create));
    QVERIFY(!create.lpSerialize->root());
    zor_StopSZ(create.lpSerialize, false);
}

void TestStore::numbersReadWithCLibraryRules_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("asInt");
    QTest::addColumn<bool>("asBool");
    QTest::addColumn<double>("asDouble");
    QTest::newRow("leading digits") << QByteArray("12abc") << 12 << true << 12.0;
    QTest::newRow("word") << QByteArray("abc") << 0 << false << 0.0;
    QTest::newRow("yes is false") << QByteArray("yes") << 0 << false << 0.0;
    QTest::newRow("empty is default") << QByteArray() << -7 << true << -7.5;
    QTest::newRow("negative") << QByteArray("-3") << -3 << true << -3.0;
    QTest::newRow("fraction with point") << QByteArray("2.5x") << 2 << true << 2.5;
    QTest::newRow("fraction with comma") << QByteArray("2,5") << 2 << true << 2.0;
    QTest::newRow("leading zero is still decimal") << QByteArray("010") << 10 << true << 10.0;
    QTest::newRow("hex prefix is no integer") << QByteArray("0x10") << 0 << false << 16.0;
}

void TestStore::numbersReadWithCLibraryRules()
{
    QFETCH(QByteArray, text);
    QFETCH(int, asInt);
    QFETCH(bool, asBool);
    QFETCH(double, asDouble);
    MemoDoc m(kDecl + "<R v=\"" + text + "\" />");
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    QCOMPARE(root.readInteger("v", -7), asInt);
    QCOMPARE(root.readBool("v", true), asBool);
    QCOMPARE(root.readDouble("v", -7.5), asDouble);
    QCOMPARE(root.readFloat("v", -7.5f), float(asDouble));
    char buf[8];
    root.readString("v", "dflt", buf, sizeof buf);
    QCOMPARE(QByteArray(buf), text.isEmpty() ? QByteArray("dflt") : text.left(7));
    QVERIFY(!root.readString("v", "dflt", nullptr, 8));
    QVERIFY(!root.readString("v", "dflt", buf, 0));
}

void TestStore::longNamesAreCutAndCollide()
{
    const QByteArray n254(254, 'n');
    const QByteArray longA = n254 + "A";
    const QByteArray longB = n254 + "B";
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    root.writeInteger(longA.constData(), 1);
    root.writeInteger(longB.constData(), 2);
    QCOMPARE(root.parameters().count(), 1);
    QCOMPARE(root.readInteger(longA.constData(), 0), 2);
    QCOMPARE(root.readInteger(n254.constData(), 0), 2);
    root.writeInteger(QByteArray(253, 'n').constData(), 3);
    QCOMPARE(root.parameters().count(), 2);
    root.writeParameters();
    QCOMPARE(m.bytes(), kDecl + "<R " + n254 + "=\"2\" " + QByteArray(253, 'n') + "=\"3\" />\n");

    const QString longValue(300, QLatin1Char('v'));
    root.writeString("s", longValue);
    QString got;
    root.readString("s", QString(), got);
    QCOMPARE(got, longValue.left(254));
}

void TestStore::longNamesReadBackAreNotDuplicated()
{
    // Names of 300 characters held in a file: the records hold them cut,
    // and writing the records back must reach the same attribute and child.
    const QByteArray longName(300, 'q');
    const QByteArray file = kDecl + "<R " + longName + "=\"1\" b=\"2\">\n    <" + longName + " />\n</R>\n";
    MemoDoc m(file);
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    QCOMPARE(root.parameters().count(), 3);
    QVERIFY(root.writeParameters());
    QCOMPARE(m.bytes(), file);
    root.writeInteger(longName.constData(), 5);
    QVERIFY(root.writeParameters());
    QCOMPARE(m.bytes(), kDecl + "<R " + longName + "=\"5\" b=\"2\">\n    <" + longName + " />\n</R>\n");
}

void TestStore::rewriteKeepsPositionsAndOrder()
{
    MemoDoc m(kDecl + "<R b=\"1\" a=\"2\"><c /></R>");
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    root.writeInteger("z", 9);
    root.writeInteger("a", 5);
    root.writeInteger("b", 7);
    root.writeTag("d");
    root.writeFloat("f", -0.5f);
    root.writeParameters();
    QCOMPARE(root.getCountParamsInTag(), 4);
    QCOMPARE(m.bytes(), kDecl + "<R b=\"7\" a=\"5\" z=\"9\" f=\"-0.500000\">\n    <c />\n    <d />\n</R>\n");
    QCOMPARE(root.parameters().item(2)->kind, 1);
}

void TestStore::wideElementRecordsAreItsChildren()
{
    // Enough children to be looked up through an index; c0 is there twice.
    QByteArray file = kDecl + "<R a=\"1\">\n";
    for (int i = 0; i < 300; ++i)
        file += "    <c" + QByteArray::number(i % 299) + " />\n";
    MemoDoc m(file + "</R>\n");
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    CListParameters& list = root.parameters();
    QCOMPARE(list.count(), 301);
    int at = -1;
    QVERIFY(list.findParameter("c0", 0, &at));
    QCOMPARE(at, 1);
    QVERIFY(list.findParameter("c0", 2, &at));
    QCOMPARE(at, 300);
    QCOMPARE(list.item(300)->node, root.getTag()->getNumTag(299));
    QCOMPARE(QByteArray(list.item(300)->value), QByteArray("c0"));
    const auto countNodes = [&](const QString& name) {
        int n = 0;
        for (CXMLWorkData* node = root.getFirstNode(name); node; root.moveToNextNode(node))
            ++n;
        return n;
    };
    QCOMPARE(countNodes(QStringLiteral("c0")), 2);
    delete root.createNode(QStringLiteral("c0"), CXMLWorkData::NodeAppend);
    QCOMPARE(countNodes(QStringLiteral("c0")), 3);
    QCOMPARE(countNodes(QStringLiteral("c298")), 1);
    root.writeInteger("c5", 7);
    delete root.createNode(QStringLiteral("d"), CXMLWorkData::NodeAppend);
    QVERIFY(list.findParameter("c298", 0, &at));
    QCOMPARE(at, 299);
    QVERIFY(root.writeParameters());
    QCOMPARE(m.bytes(),
        kDecl + "<R a=\"1\" c5=\"7\">\n" + file.mid(file.indexOf("    <c0")) + "    <c0 />\n    <d />\n</R>\n");
}

void TestStore::colourIsSignedArgb()
{
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    root.writeColor("white", Qt::white);
    root.writeColor("red", QColor(255, 0, 0));
    root.writeColor("glass", QColor(1, 2, 3, 0));
    root.writeParameters();
    QCOMPARE(m.bytes(), kDecl + "<R white=\"-1\" red=\"-65536\" glass=\"66051\" />\n");
    MemoDoc back(m.bytes());
    CXMLWorkData root2(back.doc, QStringLiteral("R"));
    QCOMPARE(root2.readColor("red", Qt::blue), QColor(255, 0, 0));
    QCOMPARE(root2.readColor("glass", Qt::blue), QColor(1, 2, 3, 0));
    QCOMPARE(root2.readColor("none", Qt::blue), QColor(Qt::blue));
}

void TestStore::colourStringNeedsThreeParts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("three") << QByteArray("10,20,30") << QColor(10, 20, 30);
    QTest::newRow("spaces and a fourth") << QByteArray("10, 20, 30, 40") << QColor(10, 20, 30);
    QTest::newRow("two") << QByteArray("10,20") << QColor(Qt::green);
    QTest::newRow("empty") << QByteArray() << QColor(Qt::green);
}

void TestStore::colourStringNeedsThreeParts()
{
    QFETCH(QByteArray, text);
    QFETCH(QColor, colour);
    MemoDoc m(kDecl + "<R c=\"" + text + "\" />");
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    QCOMPARE(root.readColorString("c", Qt::green), colour);
}

void TestStore::fontBoldThresholdAndDefaults()
{
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    QFont f57(QStringLiteral("Sans"), 11);
    f57.setWeight(57);
    f57.setItalic(true);
    QFont f58(QStringLiteral("Mono"), 9);
    f58.setWeight(58);
    f58.setUnderline(true);
    root.writeFont("F57", f57);
    root.writeFont("F58", f58);
    QCOMPARE(m.bytes(),
        kDecl
            + "<R>\n"
              "    <F57 Family=\"Sans\" Size=\"11\" Bold=\"0\" Italic=\"1\" Strikeout=\"0\" Underline=\"0\" />\n"
              "    <F58 Family=\"Mono\" Size=\"9\" Bold=\"1\" Italic=\"0\" Strikeout=\"0\" Underline=\"1\" />\n"
              "</R>\n");
    MemoDoc back(m.bytes() + "");
    CXMLWorkData root2(back.doc, QStringLiteral("R"));
    const QFont bold = root2.readFont("F58", QFont());
    QCOMPARE(bold.weight(), 75);
    QCOMPARE(bold.family(), QStringLiteral("Mono"));
    QVERIFY(bold.underline());
    QCOMPARE(root2.readFont("F57", QFont()).weight(), 50);

    MemoDoc partial(kDecl + "<R><F Size=\"20\" /></R>");
    CXMLWorkData root3(partial.doc, QStringLiteral("R"));
    QFont def(QStringLiteral("Serif"), 8);
    def.setWeight(63);
    const QFont got = root3.readFont("F", def);
    QCOMPARE(got.pointSize(), 20);
    QCOMPARE(got.family(), QStringLiteral("Serif"));
    QCOMPARE(got.weight(), 63);
}

void TestStore::childIteration()
{
    MemoDoc m(kDecl + "<R><A n=\"1\"/><B/><A n=\"2\"/><A n=\"3\"/></R>");
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    QList<int> seen;
    for (CXMLWorkData* a = root.getFirstNode(QStringLiteral("A")); a; a = root.getNextNode()) {
        seen << a->readInteger("n", 0);
        delete a;
    }
    QCOMPARE(seen, QList<int>({1, 2, 3}));
    seen.clear();
    for (CXMLWorkData* a = root.getFirstNode(QStringLiteral("A")); a; root.moveToNextNode(a))
        seen << a->readInteger("n", 0);
    QCOMPARE(seen, QList<int>({1, 2, 3}));
    QVERIFY(!root.getFirstNode(QStringLiteral("C")));
}

void TestStore::createNodeKinds()
{
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    delete root.createNode(QStringLiteral("A"), 0);
    delete root.createNode(QStringLiteral("A"), 0);
    delete root.createNode(QStringLiteral("A"), 3);
    QCOMPARE(m.bytes(), kDecl + "<R>\n    <A />\n    <A />\n</R>\n");
    // The document keeps one root: its own name gives it back, another name
    // is a node below it rather than a second root no reader would accept.
    CXMLWorkData again(m.doc, QStringLiteral("R"));
    QCOMPARE(again.getTag(), root.getTag());
    CXMLWorkData other(m.doc, QStringLiteral("OTHER"));
    QCOMPARE(m.bytes(), kDecl + "<R>\n    <A />\n    <A />\n    <OTHER />\n</R>\n");
    QVERIFY(MemoDoc(m.bytes()).doc);
}

void TestStore::textElementsOnOneLine()
{
    MemoDoc m;
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    root.writeStringZOR(QStringLiteral("S"), QStringLiteral("a&b"));
    root.writeIntegerZOR(QStringLiteral("I"), -4);
    root.writeFloatZOR(QStringLiteral("F"), 1.5f);
    root.writeStringZOR(QStringLiteral("E"), QString());
    root.writeIntegerZOR(QStringLiteral("C0"), Qt::Unchecked);
    root.writeIntegerZOR(QStringLiteral("C1"), Qt::PartiallyChecked);
    root.writeIntegerZOR(QStringLiteral("C2"), Qt::Checked);
    // 3 is the one value besides the three states that the type can hold.
    root.writeIntegerZOR(QStringLiteral("CX"), static_cast<Qt::CheckState>(3));
    root.writeIntegerZOR(QStringLiteral("I"), 8);
    QCOMPARE(m.bytes(),
        kDecl
            + "<R>\n    <S>a&amp;b</S>\n    <I>8</I>\n    <F>1.500000</F>\n    <E />\n"
              "    <C0>0</C0>\n    <C1>1</C1>\n    <C2>1</C2>\n</R>\n");
}

void TestStore::settingsNodeOpenForReadCreatesNothing()
{
    MemoDoc m(kDecl + "<USRPRMS><MDBSPRM1 addr=\"3\" /></USRPRMS>");
    CXMLWorkData root(m.doc, QStringLiteral("USRPRMS"));
    const QByteArray before = m.bytes();
    auto one = ZOR_SettingsNode::openForRead(&root, ZOR_SettingsNode::name(QStringLiteral("MDBSPRM"), 1));
    QVERIFY(one);
    QCOMPARE(one->readInteger("addr", 0), 3);
    QVERIFY(!ZOR_SettingsNode::openForRead(&root, ZOR_SettingsNode::name(QStringLiteral("MDBSPRM"), 2)));
    QCOMPARE(m.bytes(), before);
    QCOMPARE(ZOR_SettingsNode::name(QStringLiteral("SIM"), 1, QStringLiteral("RULES")), QStringLiteral("SIM1RULES"));
}

void TestStore::settingsNodeOpenForWriteClears()
{
    MemoDoc m(kDecl + "<USRPRMS><MDBSPRM1 addr=\"3\" old=\"x\"><ROW /></MDBSPRM1><KEEP /></USRPRMS>");
    CXMLWorkData root(m.doc, QStringLiteral("USRPRMS"));
    {
        auto node = ZOR_SettingsNode::openForWrite(&root, QStringLiteral("MDBSPRM1"));
        node->writeInteger("addr", 7);
        node->writeBool("use", true);
        node->writeParameters();
    }
    QCOMPARE(m.bytes(), kDecl + "<USRPRMS>\n    <MDBSPRM1 addr=\"7\" use=\"1\" />\n    <KEEP />\n</USRPRMS>\n");
    auto dropped = ZOR_SettingsNode::openForWrite(nullptr, QStringLiteral("X"));
    QVERIFY(dropped);
    dropped->writeInteger("a", 1);
    QVERIFY(!dropped->writeParameters());
}

void TestStore::badInputGivesCursorWithoutDocument_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("not xml") << QByteArray("hello, world");
    QTest::newRow("truncated") << QByteArray(kDecl + "<R a=\"1\"><B>");
    QTest::newRow("truncated attribute") << QByteArray(kDecl + "<R a=\"1");
    QTest::newRow("whitespace only") << QByteArray("  \n");
    QTest::newRow("control bytes") << QByteArray("<R a=\"\x01\x02\" />");
    QTest::newRow("nul byte") << QByteArray("<R>\0</R>", 8);
    QTest::newRow("entity declaration") << QByteArray(
        "<?xml version=\"1.0\"?><!DOCTYPE R [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;&a;\">]><R v=\"&b;\"/>");
    QTest::newRow("10000 deep") << QByteArray("<a>").repeated(10000) + QByteArray("</a>").repeated(10000);
    QTest::newRow("two roots") << QByteArray("<R/><S/>");
}

void TestStore::badInputGivesCursorWithoutDocument()
{
    QFETCH(QByteArray, bytes);
    MemoDoc m(bytes);
    QVERIFY(!m.doc);

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bad.xml"));
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    CXMLWorkData root(path, QStringLiteral("R"));
    QVERIFY(!root.isValid());
    QCOMPARE(root.readInteger("a", 42), 42);
    root.writeInteger("a", 1);
    QCOMPARE(root.readInteger("a", 42), 42);
    QVERIFY(!root.writeParameters());
    QVERIFY(!root.closeDocument(true));
    QFile f(path);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), bytes);
}

void TestStore::missingFileIsCreatedEmpty()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("new.xml"));
    {
        CXMLWorkData root(path, QStringLiteral("USRPRMS"));
        QVERIFY(root.isValid());
        QVERIFY(QFile::exists(path));
        QCOMPARE(QFileInfo(path).size(), 0);
        root.writeInteger("a", 1);
        root.writeParameters();
        QVERIFY(root.closeDocument(true));
    }
    QFile f(path);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), kDecl + "<USRPRMS a=\"1\" />\n");
}

void TestStore::staleCursorAfterClearDropsWrites()
{
    MemoDoc m(kDecl + "<R><A><B x=\"1\"/></A></R>");
    CXMLWorkData root(m.doc, QStringLiteral("R"));
    std::unique_ptr<CXMLWorkData> a(root.getFirstNode(QStringLiteral("A")));
    std::unique_ptr<CXMLWorkData> b(a->getFirstNode(QStringLiteral("B")));
    root.clearNode();
    b->writeInteger("x", 2);
    QVERIFY(!b->writeParameters());
    QVERIFY(!a->isValid());
    QCOMPARE(m.bytes(), kDecl + "<R />\n");
}

QTEST_MAIN(TestStore)
#include "tst_store.moc"
