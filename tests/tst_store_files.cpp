// Settings documents on disk: the exact bytes of a hand-made expected file,
// and saves that survive being killed half-way.

#include "module/zor_cp1251.h"
#include "store/cserialize.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

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
    const struct { int n; const char* type; bool use; } rows[] = {{1, "4f", true}, {2, "2u", false}};
    for (const auto& row : rows) {
        auto node = ZOR_SettingsNode::openForWrite(&root, ZOR_SettingsNode::name(QStringLiteral("MDBSPRM"), row.n));
        node->writeInteger("addr", row.n);
        node->writeString("type", QString::fromLatin1(row.type));
        node->writeBool("use", row.use);
        node->writeParameters();
    }
    auto rules = ZOR_SettingsNode::openForWrite(&root, ZOR_SettingsNode::name(QStringLiteral("SIM"), 1, QStringLiteral("RULES")));
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
};

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
