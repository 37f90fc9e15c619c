// Settings documents on disk: the exact bytes of a hand-made expected file,
// saves that survive being killed half-way, and file failures with reasons.

#include "module/zor_cp1251.h"
#include "store/cserialize.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <cstdio>
#include <memory>

namespace {

const char kSaveChild[] = "--save-child";

QByteArray readAll(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QString golden()
{
    return QStringLiteral(ZOR_TEST_DATA_DIR "/store/settings.xml");
}

// The document of settings.xml, written through the forms' interface.
void writeGoldenDocument(CXMLWorkData& root)
{
    root.writeInteger("version", 3);
    root.writeString("name", QStringLiteral("Тест & проверка"));
    root.writeParameters();
    const struct
    {
        int n;
        const char* type;
        bool use;
    } rows[] = {{1, "4f", true}, {2, "2u", false}};
    for (const auto& row : rows) {
        auto node = ZOR_SettingsNode::openForWrite(&root, ZOR_SettingsNode::name(QStringLiteral("MDBSPRM"), row.n));
        node->writeInteger("addr", row.n);
        node->writeString("type", QString::fromLatin1(row.type));
        node->writeBool("use", row.use);
        node->writeParameters();
    }
    auto rules = ZOR_SettingsNode::openForWrite(
        &root, ZOR_SettingsNode::name(QStringLiteral("SIM"), 1, QStringLiteral("RULES")));
    rules->writeString("a b", QStringLiteral("<x>"));
    rules->writeString(ZOR_Cp1251::encode(QStringLiteral("Чек")).constData(), QStringLiteral("\"q'"));
    rules->writeString("greek", QStringLiteral("Ω"));
    rules->writeParameters();
    delete root.createNode(QStringLiteral("EMPTY"), CXMLWorkData::NodeFindOrAppend);
    root.writeStringZOR(QStringLiteral("NOTE"), QStringLiteral("Чек ш"));
    root.writeFloatZOR(QStringLiteral("RATIO"), 0.25f);
    std::unique_ptr<CXMLWorkData> deep(root.createNode(QStringLiteral("DEEP"), CXMLWorkData::NodeFindOrAppend));
    for (int n = 1; n <= 2; ++n) {
        std::unique_ptr<CXMLWorkData> row(deep->createNode(QStringLiteral("ROW"), CXMLWorkData::NodeAppend));
        row->writeInteger("n", n);
        row->writeParameters();
    }
    std::unique_ptr<CXMLWorkData> colour(root.createNode(QStringLiteral("COLOR"), CXMLWorkData::NodeFindOrAppend));
    colour->writeColor("clr", QColor(0, 0, 255));
    colour->writeParameters();
}

// A document large enough that saving it takes a while.
QByteArray bigDocument()
{
    CSerialize doc;
    doc.openData(QByteArray());
    CXMLWorkData root(&doc, QStringLiteral("BIG"));
    root.writeInteger("gen", 1);
    root.writeParameters();
    for (int i = 0; i < 40000; ++i) {
        std::unique_ptr<CXMLWorkData> row(root.createNode(QStringLiteral("ROW"), CXMLWorkData::NodeAppend));
        row->writeInteger("n", i);
        row->writeString("text", QStringLiteral("Строка номер %1 & ещё немного текста").arg(i));
        row->writeParameters();
    }
    return doc.render();
}

// The saved file of the next generation: the root's "gen" counts up.
bool nextGeneration(CSerialize& doc)
{
    CXMLWorkData root(&doc, QStringLiteral("BIG"));
    root.writeInteger("gen", root.readInteger("gen", 0) + 1);
    return root.writeParameters();
}

// Child process: opens the file, changes it, reports and saves in a loop
// until killed.
int saveChild(const QString& path)
{
    CSerialize doc;
    if (!doc.openFile(path) || !nextGeneration(doc))
        return 3;
    std::printf("ready\n");
    std::fflush(stdout);
    for (;;)
        if (!doc.save())
            return 4;
}

} // namespace

class TestStoreFiles : public QObject
{
    Q_OBJECT
private slots:
    void documentMatchesHandMadeFile();
    void storeWrittenFileRoundTripsByteForByte();
    void killDuringSaveLeavesOldOrNewFile();
    void fileFailuresSayWhy_data();
    void fileFailuresSayWhy();
    void entryPointsRefuseMissingArguments();
};

// Every way a document file can fail, as an errorString naming the cause;
// a failed save leaves the old file as it was.
void TestStoreFiles::fileFailuresSayWhy_data()
{
    QTest::addColumn<QString>("open"); // file opened ("" = none)
    QTest::addColumn<QString>("saveAs"); // then saved as ("" = save)
    QTest::addColumn<QString>("reason"); // part of the errorString
    QTest::newRow("folder is a file") << "plain/cfg.xml"
                                      << ""
                                      << "cannot create";
    QTest::newRow("a folder as the file") << "folder"
                                          << ""
                                          << "cannot read";
    QTest::newRow("no file name") << ""
                                  << ""
                                  << "no file to be saved to";
    QTest::newRow("save into a file's path") << "cfg.xml"
                                             << "plain/other.xml"
                                             << "cannot save";
    QTest::newRow("save onto a folder") << "cfg.xml"
                                        << "folder"
                                        << "cannot save";
}

void TestStoreFiles::fileFailuresSayWhy()
{
    QFETCH(QString, open);
    QFETCH(QString, saveAs);
    QFETCH(QString, reason);
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder")));
    QFile plain(dir.filePath(QStringLiteral("plain")));
    QVERIFY(plain.open(QIODevice::WriteOnly) && plain.write("x") == 1);
    plain.close();
    CSerialize doc;
    bool ok = open.isEmpty() || doc.openFile(dir.filePath(open));
    if (ok) {
        doc.topNode(QStringLiteral("CONFIG"), true);
        ok = saveAs.isEmpty() ? doc.save() : doc.saveAs(dir.filePath(saveAs));
    }
    QVERIFY(!ok);
    QVERIFY2(doc.errorString().contains(reason), qPrintable(doc.errorString()));
    QCOMPARE(readAll(plain.fileName()), QByteArray("x"));
}

void TestStoreFiles::entryPointsRefuseMissingArguments()
{
    QVERIFY(!zor_StartSZ(nullptr));
    coreSzCreate create = {};
    QVERIFY(!zor_StartSZ(&create));
    QVERIFY(!create.lpSerialize);
    QVERIFY(!zor_StopSZ(nullptr, true));
    QVERIFY(!zor_StartSZMemo(nullptr));
    coreSzMemo memo{nullptr, 5, nullptr};
    QVERIFY(!zor_StartSZMemo(&memo));
    memo.nSize = -1;
    QVERIFY(!zor_StartSZMemo(&memo));
    QVERIFY(!zor_GetSZMemo(nullptr, &memo));
    CSerialize doc;
    QVERIFY(!zor_GetSZMemo(&doc, nullptr));
}

void TestStoreFiles::documentMatchesHandMadeFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    CXMLWorkData root(path, QStringLiteral("USRPRMS"));
    QVERIFY(root.isValid());
    writeGoldenDocument(root);
    QVERIFY(root.closeDocument(true));
    QCOMPARE(readAll(path), readAll(golden()));
}

void TestStoreFiles::storeWrittenFileRoundTripsByteForByte()
{
    const QByteArray bytes = readAll(golden());
    QVERIFY(!bytes.isEmpty());
    CSerialize doc;
    QVERIFY(doc.openData(bytes));
    QCOMPARE(doc.render(), bytes);
    // Reading every cursor and writing it back changes nothing either.
    CXMLWorkData root(&doc, QStringLiteral("USRPRMS"));
    for (CXMLWorkData* node = root.getFirstNode(QStringLiteral("MDBSPRM1")); node; root.moveToNextNode(node))
        node->writeParameters();
    root.writeParameters();
    QCOMPARE(doc.render(), bytes);
}

void TestStoreFiles::killDuringSaveLeavesOldOrNewFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.xml"));
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bigDocument());
    }
    int sawNew = 0;
    for (int round = 0; round < 6; ++round) {
        const QByteArray oldBytes = readAll(path);
        CSerialize next;
        QVERIFY(next.openData(oldBytes));
        QVERIFY(nextGeneration(next));
        const QByteArray newBytes = next.render();
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(kSaveChild), path});
        QVERIFY(child.waitForStarted());
        QVERIFY(child.waitForReadyRead(60000));
        QCOMPARE(child.readLine().trimmed(), QByteArray("ready"));
        QThread::msleep(QRandomGenerator::global()->bounded(1, 300));
        child.kill();
        QVERIFY(child.waitForFinished(10000));
        const QByteArray now = readAll(path);
        QVERIFY2(now == oldBytes || now == newBytes,
            qPrintable(QStringLiteral("round %1: %2 bytes").arg(round).arg(now.size())));
        sawNew += now == newBytes;
        CSerialize doc;
        QVERIFY(doc.openFile(path));
    }
    qInfo("new file seen after %d of 6 kills", sawNew);
}

int main(int argc, char** argv)
{
    if (argc == 3 && qstrcmp(argv[1], kSaveChild) == 0)
        return saveChild(QString::fromLocal8Bit(argv[2]));
    QApplication app(argc, argv);
    TestStoreFiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_store_files.moc"
