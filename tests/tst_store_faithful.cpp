// Settings documents never lose data: what would not read back is escaped
// or refused with the old file intact, other encodings survive a save, and
// failed saves carry the system's reason.

#include "store/cserialize.h"
#include "store/cxmldefaulthandler.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <functional>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QByteArray kDecl("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n");
const QByteArray kOld = kDecl + "<R a=\"1\" />\n";

QByteArray readAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(unreadable)");
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// Runs job in a child process (as an ordinary user when the test runs as
// root, since root writes into read-only folders) and returns its exit code.
int inChild(bool asUser, const std::function<int()>& job)
{
    const pid_t pid = fork();
    if (pid == 0) {
        if (asUser && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(99);
        _exit(job());
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

enum Place { AttrValue, AttrName, ElementName, Text, LineText, FormValue, Nested, TextAndChild, AttrTwice };

} // namespace

class TestStoreFaithful : public QObject
{
    Q_OBJECT
private slots:
    void unreadableContentIsRefusedAndOldFileStays_data();
    void unreadableContentIsRefusedAndOldFileStays();
    void escapedContentReadsBackExactly_data();
    void escapedContentReadsBackExactly();
    void badInputRefusedWithReason_data();
    void badInputRefusedWithReason();
    void referencesAboveBmpAreTheirCharacters_data();
    void referencesAboveBmpAreTheirCharacters();
    void deepestReadableTreeSavesAndReopens();
    void fileChangedSinceOpenedIsNotOverwritten();
    void lockIsHeldForAnUpdate();
    void encodingsAreReadAndKept_data();
    void encodingsAreReadAndKept();
    void characterOutsideTheEncodingIsRefused();
    void nonAsciiFileName();
    void readOnlyFolderGivesReasonAndKeepsFile();
    void fullDiskGivesReasonAndKeepsFile();
    void fileOverTheLimitIsNotReadAsEmpty();
    void documentTooLargeForMemoryIsAnError();
    void deepTreeIsRefusedWithoutRecursion();
    void namespaceAttributesAreKept();
    void failedOpenKeepsReason();
};

void TestStoreFaithful::unreadableContentIsRefusedAndOldFileStays_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("named");
    QTest::newRow("control character in a value") << int(AttrValue)
                                                  << QStringLiteral("a\x01"
                                                                    "b")
                                                  << QStringLiteral("U+0001");
    QTest::newRow("control character through a form") << int(FormValue)
                                                      << QStringLiteral("a\x1f"
                                                                        "b")
                                                      << QStringLiteral("U+001F");
    QTest::newRow("control character in text") << int(Text) << QStringLiteral("\x02") << QStringLiteral("U+0002");
    QTest::newRow("question mark in a name") << int(AttrName) << QStringLiteral("a?b") << QStringLiteral("\"?\"");
    QTest::newRow("name beginning with a digit")
        << int(AttrName) << QStringLiteral("1abc") << QStringLiteral("begin with");
    QTest::newRow("brackets in an element name")
        << int(ElementName) << QStringLiteral("a[1]") << QStringLiteral("\"[\"");
    QTest::newRow("euro sign in a name") << int(ElementName) << QStringLiteral("a€") << QStringLiteral("U+20AC");
    QTest::newRow("numero sign in a name") << int(AttrName) << QStringLiteral("№1") << QStringLiteral("U+2116");
    QTest::newRow("empty name") << int(ElementName) << QString() << QStringLiteral("name");
    QTest::newRow("name holding a code") << int(AttrName) << QStringLiteral("a_32_b") << QStringLiteral("_32_");
    QTest::newRow("value holding _33_") << int(AttrValue) << QStringLiteral("x_33_y") << QStringLiteral("_33_");
    QTest::newRow("value holding &gt;") << int(AttrValue) << QStringLiteral("&gt;") << QStringLiteral("&gt;");
    QTest::newRow("text holding &nbsp;") << int(LineText) << QStringLiteral("a&nbsp;b") << QStringLiteral("&nbsp;");
    QTest::newRow("text beside a child") << int(TextAndChild) << QStringLiteral("0.25")
                                         << QStringLiteral("text and child");
    QTest::newRow("attribute named twice") << int(AttrTwice) << QStringLiteral("v") << QStringLiteral("two attributes");
    // The root and 256 levels below it: one level more than the reader takes.
    QTest::newRow("nested one level too deep")
        << int(Nested) << QStringLiteral("256") << QStringLiteral("deeper than 256");
}

void TestStoreFaithful::unreadableContentIsRefusedAndOldFileStays()
{
    QFETCH(int, place);
    QFETCH(QString, content);
    QFETCH(QString, named);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, kOld));
    CXMLWorkData root(path, QStringLiteral("R"));
    QVERIFY(root.isValid());
    CXmlTagV2* tag = root.getTag();
    switch (place) {
    case AttrValue: tag->setTagValue(QStringLiteral("v"), content); break;
    case AttrName: tag->setTagValue(content, QStringLiteral("1")); break;
    case ElementName: tag->addTagNode(content); break;
    case Text: tag->addTagNode(QStringLiteral("T"), content); break;
    case LineText: root.writeStringZOR(QStringLiteral("T"), content); break;
    case FormValue:
        root.writeString("v", content);
        QVERIFY(root.writeParameters());
        break;
    case Nested:
        for (int i = 0; i < content.toInt(); ++i)
            tag = tag->addTagNode(QStringLiteral("N"));
        break;
    case AttrTwice:
        tag->addTagValue(content, QStringLiteral("1"));
        tag->addTagValue(content, QStringLiteral("2"));
        break;
    case TextAndChild:
        root.writeFloatZOR(QStringLiteral("RATIO"), 0.25f);
        tag->getTagFromName(QStringLiteral("RATIO"))->addTagNode(QStringLiteral("SUB"));
        break;
    }
    QVERIFY(!root.closeDocument(true));
    const QString error = root.errorString();
    QVERIFY2(error.contains(named, Qt::CaseInsensitive) && error.contains(QLatin1String("\"R")), qPrintable(error));
    QCOMPARE(readAll(path), kOld);
}

void TestStoreFaithful::escapedContentReadsBackExactly_data()
{
    QTest::addColumn<bool>("lineText");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QByteArray>("written");
    QTest::newRow("tab in a value") << false << QStringLiteral("a\tb") << QByteArray("<R v=\"a&#9;b\" />");
    QTest::newRow("line feed in a value") << false << QStringLiteral("a\nb") << QByteArray("<R v=\"a&#10;b\" />");
    QTest::newRow("carriage return in a value")
        << false << QStringLiteral("a\r\nb") << QByteArray("<R v=\"a&#13;&#10;b\" />");
    QTest::newRow("markup in one-line text")
        << true << QStringLiteral("a<b&c>d") << QByteArray("<R>\n    <T>a&lt;b&amp;c>d</T>\n</R>");
    QTest::newRow("cdata end in one-line text")
        << true << QStringLiteral("]]>") << QByteArray("<R>\n    <T>]]&gt;</T>\n</R>");
    QTest::newRow("line ends in one-line text")
        << true << QStringLiteral("1\r\n2") << QByteArray("<R>\n    <T>1&#13;\n2</T>\n</R>");
}

void TestStoreFaithful::escapedContentReadsBackExactly()
{
    QFETCH(bool, lineText);
    QFETCH(QString, content);
    QFETCH(QByteArray, written);
    CSerialize doc;
    QVERIFY(doc.openData(QByteArray()));
    CXMLWorkData root(&doc, QStringLiteral("R"));
    if (lineText)
        root.writeStringZOR(QStringLiteral("T"), content);
    else
        root.getTag()->setTagValue(QStringLiteral("v"), content);
    QByteArray bytes;
    QVERIFY2(doc.renderChecked(bytes), qPrintable(doc.errorString()));
    QCOMPARE(bytes, kDecl + written + "\n");
    CSerialize back;
    QVERIFY(back.openData(bytes));
    const CXmlTagV2* r = back.root();
    QCOMPARE(lineText ? r->getNumTag(0)->value() : r->attributes().value(0).value, content);
}

void TestStoreFaithful::badInputRefusedWithReason_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("control character reference") << QByteArray("<R v=\"a&#1;b\"/>") << QStringLiteral("U+0001");
    QTest::newRow("control character reference in text") << QByteArray("<R>&#31;</R>") << QStringLiteral("U+001f");
    QTest::newRow("unknown encoding") << QByteArray("<?xml version=\"1.0\" encoding=\"x-nothing\"?><R/>")
                                      << QStringLiteral("x-nothing");
    QTest::newRow("invalid UTF-8") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?><R v=\"\xff\"/>")
                                   << QStringLiteral("not valid UTF-8");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe<\0R\0/\0>\0", 10) << QStringLiteral("UTF-16");
    const QString none = QStringLiteral("names no character");
    QTest::newRow("surrogate reference") << QByteArray("<R v=\"&#xD800;\"/>") << none;
    QTest::newRow("surrogate reference in text") << QByteArray("<R>a&#56832;</R>") << none;
    QTest::newRow("U+FFFE reference") << QByteArray("<R v=\"&#xFFFE;\"/>") << none;
    QTest::newRow("U+FFFF reference") << QByteArray("<R v=\"&#65535;\"/>") << none;
    QTest::newRow("reference past U+10FFFF") << QByteArray("<R>&#x110000;</R>") << none;
    QTest::newRow("huge reference") << QByteArray("<R>&#99999999999999999999;</R>") << none;
    QTest::newRow("attribute twice") << QByteArray("<R a=\"1\" a=\"2\"/>") << QStringLiteral("twice");
    QTest::newRow("attribute twice once decoded")
        << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?><R _1095_=\"1\" \xd1\x87=\"2\"/>")
        << QStringLiteral("twice");
}

void TestStoreFaithful::referencesAboveBmpAreTheirCharacters_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    const QString smile = QString::fromUcs4(U"\U0001F600");
    const QByteArray utf8 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    QTest::newRow("hex and decimal") << QByteArray("<R v=\"&#x1F600;\"><T>&#128512;</T></R>") << smile << smile;
    QTest::newRow("first and last planes") << QByteArray("<R v=\"&#x10000;\"><T>&#x10FFFF;</T></R>")
                                           << QString::fromUcs4(U"\U00010000") << QString::fromUcs4(U"\U0010FFFF");
    QTest::newRow("beside text, UTF-8") << QByteArray(
        utf8 + "<R v=\"a&#x1F600;b\"><T>\xf0\x9f\x98\x80&#x1f600;</T></R>")
                                        << QStringLiteral("a%1b").arg(smile) << smile + smile;
    QTest::newRow("CDATA keeps the reference as text")
        << QByteArray("<R v=\"&#x41;\"><T><![CDATA[&#x1F600;]]></T><!-- &#xD800; --></R>") << QStringLiteral("A")
        << QStringLiteral("&#x1F600;");
}

// Both readers (the fast one declines references and hands them on) give
// the character, and a UTF-8 document writes it back as it was read.
void TestStoreFaithful::referencesAboveBmpAreTheirCharacters()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, value);
    QFETCH(QString, text);
    for (const bool fast : {true, false}) {
        CSerialize doc;
        doc.setFastReader(fast);
        QVERIFY2(doc.openData(bytes), qPrintable(doc.errorString()));
        QCOMPARE(doc.root()->attributes().value(0).value, value);
        QCOMPARE(doc.root()->getTagFromName(QStringLiteral("T"))->value(), text);
    }
    CSerialize utf8;
    QVERIFY(utf8.openData("<?xml version=\"1.0\" encoding=\"UTF-8\"?><R/>"));
    utf8.root()->setTagValue(QStringLiteral("v"), value);
    utf8.root()->addTagNode(QStringLiteral("T"), text, CXmlTagV2::KindText);
    QByteArray out;
    QVERIFY2(utf8.renderChecked(out), qPrintable(utf8.errorString()));
    CSerialize back;
    QVERIFY(back.openData(out));
    QCOMPARE(back.root()->attributes().value(0).value, value);
    QCOMPARE(back.root()->getTagFromName(QStringLiteral("T"))->value(), text);
}

void TestStoreFaithful::deepestReadableTreeSavesAndReopens()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("deep.xml"));
    CSerialize doc;
    QVERIFY(doc.openFile(path));
    CXmlTagV2* tag = doc.topNode(QStringLiteral("R"), true);
    for (int i = 1; i < CXmlDefaultHandler::nMaxDepth; ++i)
        tag = tag->addTagNode(QStringLiteral("N"));
    tag->setTagValue(QStringLiteral("leaf"), QStringLiteral("1"));
    QVERIFY2(doc.save(), qPrintable(doc.errorString()));
    for (const bool fast : {true, false}) {
        CSerialize back;
        back.setFastReader(fast);
        QVERIFY2(back.openFile(path), qPrintable(back.errorString()));
        int depth = 1;
        for (const CXmlTagV2* t = back.root(); t->children().count() > 0; t = t->getNumTag(0))
            ++depth;
        QCOMPARE(depth, int(CXmlDefaultHandler::nMaxDepth));
    }
}

// Another program's save between this document's read and its save is not
// overwritten; taking it over is the caller's explicit choice.
void TestStoreFaithful::fileChangedSinceOpenedIsNotOverwritten()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, kOld));
    CSerialize doc;
    QVERIFY(doc.openFile(path));
    doc.root()->setTagValue(QStringLiteral("mine"), QStringLiteral("1"));
    const QByteArray theirs = kDecl + "<R a=\"2\" />\n";
    QVERIFY(writeFile(path, theirs));
    QVERIFY(doc.changedOnDisk());
    QVERIFY(!doc.save());
    QVERIFY2(doc.errorString().contains(QLatin1String("changed since it was opened")), qPrintable(doc.errorString()));
    // Saving "as" the document's own file is the same save (the forms' path),
    // and so is saving a copy that took its place (an undone edit).
    QVERIFY(!doc.saveAs(path));
    CSerialize undone;
    QVERIFY(undone.openData(doc.render()));
    undone.continueFrom(doc);
    QVERIFY(!undone.saveAs(path));
    QCOMPARE(readAll(path), theirs);
    doc.acceptDiskState();
    QVERIFY2(doc.save(), qPrintable(doc.errorString()));
    QVERIFY(readAll(path).contains("mine=\"1\""));
    QVERIFY(!doc.changedOnDisk());
    QVERIFY2(doc.save(), qPrintable(doc.errorString()));
}

void TestStoreFaithful::lockIsHeldForAnUpdate()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, kOld));
    CSerialize first;
    QVERIFY(first.lockForUpdate(path, 0));
    CSerialize second;
    QVERIFY(!second.lockForUpdate(path, 50));
    QVERIFY2(second.errorString().contains(QLatin1String("another program")), qPrintable(second.errorString()));
    first.unlock();
    // A lock left by a program that died is taken over.
    QVERIFY(writeFile(
        path + QStringLiteral(".lock"), "2147483600\nzor-tool\n" + QSysInfo::machineHostName().toUtf8() + "\n"));
    QVERIFY2(second.lockForUpdate(path, 0), qPrintable(second.errorString()));
    QVERIFY(second.openFile(path));
    QVERIFY2(second.save(), qPrintable(second.errorString()));
}

void TestStoreFaithful::badInputRefusedWithReason()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    CSerialize doc;
    QVERIFY(!doc.openData(bytes));
    QVERIFY2(doc.errorString().contains(reason), qPrintable(doc.errorString()));
}

void TestStoreFaithful::encodingsAreReadAndKept_data()
{
    // "тест" by hand: UTF-8 d1 82 d0 b5 d1 81 d1 82, KOI8-R d4 c5 d3 d4.
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QByteArray>("word");
    QTest::newRow("UTF-8") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")
                           << QByteArray("\xd1\x82\xd0\xb5\xd1\x81\xd1\x82");
    QTest::newRow("UTF-8 with a byte-order mark")
        << QByteArray("\xef\xbb\xbf<?xml version=\"1.0\" encoding=\"utf-8\"?>\n")
        << QByteArray("\xd1\x82\xd0\xb5\xd1\x81\xd1\x82");
    QTest::newRow("KOI8-R") << QByteArray("<?xml version=\"1.0\" encoding=\"KOI8-R\"?>\n")
                            << QByteArray("\xd4\xc5\xd3\xd4");
    QTest::newRow("Windows-1251") << kDecl << QByteArray("\xf2\xe5\xf1\xf2");
}

void TestStoreFaithful::encodingsAreReadAndKept()
{
    QFETCH(QByteArray, head);
    QFETCH(QByteArray, word);
    const QByteArray before = head + "<R a=\"" + word + "\">\n    <S>" + word + "</S>\n</R>\n";
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, before));
    {
        CXMLWorkData root(path, QStringLiteral("R"));
        QVERIFY2(root.isValid(), qPrintable(root.errorString()));
        QString value;
        QVERIFY(root.readString("a", QString(), value));
        QCOMPARE(value, QStringLiteral("тест"));
        QCOMPARE(root.getTag()->getNumTag(0)->value(), QStringLiteral("тест"));
        root.getTag()->setTagValue(QStringLiteral("b"), QStringLiteral("тест"));
        QVERIFY2(root.closeDocument(true), qPrintable(root.errorString()));
    }
    const QByteArray after = head + "<R a=\"" + word + "\" b=\"" + word + "\">\n    <S>" + word + "</S>\n</R>\n";
    QCOMPARE(readAll(path), after);
}

void TestStoreFaithful::characterOutsideTheEncodingIsRefused()
{
    const QByteArray koi = "<?xml version=\"1.0\" encoding=\"KOI8-R\"?>\n<R />\n";
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, koi));
    CXMLWorkData root(path, QStringLiteral("R"));
    root.getTag()->setTagValue(QStringLiteral("v"), QStringLiteral("5€"));
    QVERIFY(!root.closeDocument(true));
    QVERIFY2(root.errorString().contains(QLatin1String("KOI8-R")), qPrintable(root.errorString()));
    QCOMPARE(readAll(path), koi);
}

void TestStoreFaithful::nonAsciiFileName()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("тест.xml"));
    coreSzCreate create{};
    qstrncpy(create.szFileName, QFile::encodeName(path).constData(), sizeof create.szFileName);
    QVERIFY(zor_StartSZ(&create));
    CXMLWorkData root(create.lpSerialize, QStringLiteral("R"));
    QVERIFY(zor_StopSZ(create.lpSerialize, true));
    QCOMPARE(readAll(path), kDecl + "<R />\n");
}

void TestStoreFaithful::readOnlyFolderGivesReasonAndKeepsFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, kOld));
    QFile::setPermissions(path,
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadOther | QFileDevice::WriteOther
            | QFileDevice::ReadGroup | QFileDevice::WriteGroup);
    QFile::setPermissions(
        dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadOther | QFileDevice::ExeOther);
    const int code = inChild(true, [&] {
        CXMLWorkData root(path, QStringLiteral("R"));
        root.writeInteger("a", 2);
        root.writeParameters();
        if (root.closeDocument(true))
            return 1;
        qWarning("%s", qPrintable(root.errorString()));
        return root.errorString().contains(
                   QLatin1String("the folder is read-only, so the file cannot be replaced safely"))
            ? 0
            : 2;
    });
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QCOMPARE(code, 0);
    QCOMPARE(readAll(path), kOld);
}

void TestStoreFaithful::fullDiskGivesReasonAndKeepsFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    QVERIFY(writeFile(path, kOld));
    const int code = inChild(false, [&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1024, 1024};
        setrlimit(RLIMIT_FSIZE, &limit);
        CXMLWorkData root(path, QStringLiteral("R"));
        root.writeString("a", QString(200, QLatin1Char('x')));
        root.writeParameters();
        for (int i = 0; i < 200; ++i)
            delete root.createNode(QStringLiteral("ROW"), CXMLWorkData::NodeAppend);
        if (root.closeDocument(true))
            return 1;
        qWarning("%s", qPrintable(root.errorString()));
        return root.errorString().contains(QString::fromLocal8Bit(strerror(EFBIG))) ? 0 : 2;
    });
    QCOMPARE(code, 0);
    QCOMPARE(readAll(path), kOld);
}

void TestStoreFaithful::fileOverTheLimitIsNotReadAsEmpty()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.xml"));
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(kOld);
        QVERIFY(f.resize(qint64(3) << 30)); // sparse: costs no disk
    }
    CXMLWorkData root(path, QStringLiteral("R"));
    QVERIFY(!root.isValid());
    QVERIFY2(root.errorString().contains(QLatin1String("3221225472 bytes")), qPrintable(root.errorString()));
    root.writeInteger("a", 2);
    QVERIFY(!root.closeDocument(true));
    QCOMPARE(QFileInfo(path).size(), qint64(3) << 30);
}

void TestStoreFaithful::documentTooLargeForMemoryIsAnError()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("an address-space limit and the address sanitizer do not mix");
#else
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.xml"));
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        QVERIFY(f.resize(200 << 20)); // sparse, under the size limit
    }
    const int code = inChild(false, [&] {
        QFile statm(QStringLiteral("/proc/self/statm"));
        if (!statm.open(QIODevice::ReadOnly))
            return 3;
        const qint64 mapped = statm.readAll().split(' ').value(0).toLongLong() * sysconf(_SC_PAGESIZE);
        const rlimit limit{rlim_t(mapped + (64 << 20)), rlim_t(mapped + (64 << 20))};
        setrlimit(RLIMIT_AS, &limit);
        CSerialize doc;
        if (doc.openFile(path))
            return 1;
        qWarning("%s", qPrintable(doc.errorString()));
        return doc.errorString().contains(QLatin1String("not enough memory")) ? 0 : 2;
    });
    QCOMPARE(code, 0);
#endif
}

void TestStoreFaithful::deepTreeIsRefusedWithoutRecursion()
{
    // Deep enough that a writer or destructor recursing per level would
    // overflow the stack.
    CSerialize doc;
    QVERIFY(doc.openData(QByteArray()));
    CXmlTagV2* tag = doc.topNode(QStringLiteral("R"), true);
    for (int i = 0; i < 200000; ++i)
        tag = tag->addTagNode(QStringLiteral("N"));
    QByteArray bytes;
    QVERIFY(!doc.renderChecked(bytes));
    QVERIFY(doc.errorString().contains(QLatin1String("deeper than 256")));
}

void TestStoreFaithful::namespaceAttributesAreKept()
{
    const QByteArray bytes = kDecl + "<R xmlns=\"urn:x\" a=\"1\" />\n";
    CSerialize doc;
    QVERIFY(doc.openData(bytes));
    QCOMPARE(doc.root()->attributes().size(), 2);
    QByteArray out;
    QVERIFY2(doc.renderChecked(out), qPrintable(doc.errorString()));
    QCOMPARE(out, bytes);
}

void TestStoreFaithful::failedOpenKeepsReason()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bad.xml"));
    QVERIFY(writeFile(path, "<R a=\"1\"><B>"));
    CXMLWorkData root(path, QStringLiteral("R"));
    QVERIFY(!root.isValid());
    QVERIFY2(root.errorString().contains(QLatin1String("bad.xml")), qPrintable(root.errorString()));
    QVERIFY(!root.closeDocument(true));
    QVERIFY(root.errorString().contains(QLatin1String("bad.xml")));
}

QTEST_GUILESS_MAIN(TestStoreFaithful)

#include "tst_store_faithful.moc"
