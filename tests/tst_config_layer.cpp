// The layer every settings form stands on: caption lists, bound settings
// rows, repeated rows, the user-parameter registry and the document that
// loads and saves all forms.

#include "config/zor_captionlist.h"
#include "config/zor_configdocument.h"
#include "config/zor_datatypes.h"
#include "config/zor_form_config.h"
#include "config/zor_formbinding.h"
#include "config/zor_rowbuilder.h"
#include "config/zor_userparamregistry.h"
#include "module/zor_global.h"
#include "module/zor_language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGridLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

#include "zor_form_document.h"

#include <csignal>
#include <sys/resource.h>

namespace {

using ZorFormDocument::config;
using Doc = ZorFormDocument::Doc;

// A small form: one node "DEV" of four bound values, and rows "R1".."R3".
class TestForm : public ZOR_Form_Config
{
public:
    explicit TestForm(QWidget* parent = nullptr)
        : ZOR_Form_Config(parent)
        , rows({{QString(), ZOR_RowBuilder::Label}, {QString(), ZOR_RowBuilder::Check, "use", "0"},
              {QString(), ZOR_RowBuilder::Integer, "addr", "1", 1, 247}})
    {
        spin.setRange(0, 255);
        types.addText("7", "seven").addText("9", "nine");
        bind.integer("speed", &spin, 10)
            .check("on", &check, true)
            .caption("type", &combo, &types, "9")
            .hex("reg", &edit, 0x1f, 4);
        rows.build(new QGridLayout(this), 3, [](int n) { return QStringLiteral("Row %1").arg(n); });
        translateForm();
        watchEdits(this);
    }
    void translateForm() override
    {
        types.fill(&combo);
        rows.translate();
    }
    void setDefaultParam() override
    {
        bind.setDefaults();
        rows.setDefaults();
    }
    void readFormParam(CXMLWorkData* root) override
    {
        bind.readNode(root, "DEV");
        rows.readNodes(root, "R");
    }
    void writeFormParam(CXMLWorkData* root) override
    {
        bind.writeNode(root, "DEV");
        rows.writeNodes(root, "R");
    }

    QSpinBox spin;
    QCheckBox check;
    QComboBox combo;
    QLineEdit edit;
    ZOR_CaptionList types;
    ZOR_FormBinding bind;
    ZOR_RowBuilder rows;
};

const QVector<ZOR_ConfigPage> kPages = {{"test", "", &zorCreateConfigForm<TestForm>, false}};

} // namespace

class TestConfigLayer : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void storedValuesLoadWithFallbacks_data()
    {
        QTest::addColumn<QByteArray>("attrs");
        QTest::addColumn<int>("speed");
        QTest::addColumn<bool>("on");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("reg");

        QTest::newRow("all present") << QByteArray("speed=\"20\" on=\"0\" type=\"7\" reg=\"00a0\"") << 20 << false
                                     << "seven"
                                     << "00a0";
        QTest::newRow("missing attributes take defaults") << QByteArray() << 10 << true << "nine"
                                                          << "001f";
        QTest::newRow("out of range clamps") << QByteArray("speed=\"300\"") << 255 << true << "nine"
                                             << "001f";
        QTest::newRow("negative clamps") << QByteArray("speed=\"-4\"") << 0 << true << "nine"
                                         << "001f";
        QTest::newRow("leading digits count") << QByteArray("speed=\"12abc\" on=\"yes\"") << 12 << false << "nine"
                                              << "001f";
        QTest::newRow("unknown code falls back") << QByteArray("type=\"8\"") << 10 << true << "nine"
                                                 << "001f";
        QTest::newRow("non-hex register is 0") << QByteArray("reg=\"zz\"") << 10 << true << "nine"
                                               << "0000";
    }

    void storedValuesLoadWithFallbacks()
    {
        QFETCH(QByteArray, attrs);
        QFETCH(int, speed);
        QFETCH(bool, on);
        QFETCH(QString, type);
        QFETCH(QString, reg);
        Doc d(kPages);
        auto form = d.form<TestForm>("test");
        form->spin.setValue(99);
        form->check.setChecked(!on);
        QVERIFY(d.load(config("    <DEV " + attrs + " />\n")));
        QVERIFY2(!d.doc.render().isEmpty(), qPrintable(d.doc.errorString()));
        QCOMPARE(form->spin.value(), speed);
        QCOMPARE(form->check.isChecked(), on);
        QCOMPARE(form->combo.currentText(), type);
        QCOMPARE(form->edit.text(), reg);
    }

    void newDocumentSavesDefaultsInRowOrder()
    {
        QCOMPARE(Doc(kPages).doc.render(),
            config("    <DEV speed=\"10\" on=\"1\" type=\"9\" reg=\"001f\" />\n"
                   "    <R1 use=\"0\" addr=\"1\" />\n"
                   "    <R2 use=\"0\" addr=\"1\" />\n"
                   "    <R3 use=\"0\" addr=\"1\" />\n"));
    }

    void captionListKeepsCodeAcrossLanguages()
    {
        ZOR_CaptionList list;
        list.add("1", "wrd_001").add("0", "wrd_002");
        QComboBox box;
        list.fill(&box);
        QVERIFY(list.select(&box, "0"));
        QCOMPARE(box.currentText(), QString::fromUtf8("Нет"));
        QVERIFY(!list.select(&box, "5"));
        QCOMPARE(list.currentCode(&box), QString("0"));

        ZOR_Language::instance().load(QStringLiteral("en"));
        list.fill(&box);
        ZOR_Language::instance().load(QStringLiteral("ru"));
        QCOMPARE(box.currentText(), QString("No"));
        QCOMPARE(box.currentIndex(), 1);
        QCOMPARE(list.codeOf(QStringLiteral("No")), QString()); // matched in the current language only
    }

    void dataTypeCaptionsFollowTheWordRule_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("size");
        QTest::newRow("1b") << "1b" << QString::fromUtf8("1 байт, биты") << 1;
        QTest::newRow("2u") << "2u" << QString::fromUtf8("2 байта, беззнаковое") << 2;
        QTest::newRow("4f") << "4f" << QString::fromUtf8("4 байта, с плавающей точкой") << 4;
        QTest::newRow("8s") << "8s" << QString::fromUtf8("8 байт, знаковое") << 8;
        QTest::newRow("unknown") << "3u" << QString() << 0;
    }

    void dataTypeCaptionsFollowTheWordRule()
    {
        QFETCH(QString, code);
        QFETCH(QString, caption);
        QFETCH(int, size);
        QCOMPARE(ZOR_DataTypes::captionList().captionOf(code), caption);
        QCOMPARE(ZOR_DataTypes::sizeOf(code), size);
        QCOMPARE(ZOR_DataTypes::sizeOfCaption(caption), size);
    }

    void registryKeepsValueUntilEveryPublisherWithdraws()
    {
        ZOR_UserParamRegistry reg;
        QSignalSpy added(&reg, &ZOR_UserParamRegistry::signal_Added);
        QSignalSpy removed(&reg, &ZOR_UserParamRegistry::signal_Removed);
        reg.slot_UserParam_Add("MB", "MB1,  5,  1a", "2u", 2);
        reg.slot_UserParam_Add("MB", "MB1,  5,  1a", "2u", 2);
        reg.slot_UserParam_Add("MB", "MB2,  5,  1b", "4f", 4);
        QCOMPARE(added.count(), 2);
        QCOMPARE(reg.entriesOfSize(2).size(), 1);
        reg.slot_UserParam_Del("MB", "MB1,  5,  1a", "2u");
        QCOMPARE(removed.count(), 0);
        reg.slot_UserParam_Del("MB", "MB1,  5,  1a", "2u");
        QCOMPARE(removed.count(), 1);
        reg.slot_UserParam_Del("MB", "never", "published");
        QCOMPARE(reg.entries().size(), 1);
        QCOMPARE(reg.entries().first().nSize, 4);
    }

    void saveThenLoadIsByteIdenticalAndKeepsForeignNodes()
    {
        Doc d(kPages);
        QVERIFY(d.load(config("    <OTHER x=\"1\" />\n"
                              "    <DEV speed=\"5\" on=\"0\" type=\"7\" reg=\"0002\" stale=\"1\" />\n")));
        QVERIFY2(d.doc.save(), qPrintable(d.doc.errorString()));
        const QByteArray saved = d.file();
        QVERIFY(saved.contains("<OTHER x=\"1\" />"));
        QVERIFY(saved.contains("<DEV speed=\"5\" on=\"0\" type=\"7\" reg=\"0002\" />")); // cleared before writing
        QVERIFY(d.doc.load(d.path()));
        QVERIFY(d.doc.save());
        QCOMPARE(d.file(), saved);
    }

    void unreadableFileIsReportedAndNeverOverwritten()
    {
        Doc d(kPages);
        const QByteArray broken = ZorFormDocument::kDecl + "<CONFIG><DEV speed=\"5\"></CONFIG>\n";
        QVERIFY(!d.load(broken));
        QVERIFY(!d.doc.errorString().isEmpty());
        QVERIFY(!d.doc.save()); // still the new, unnamed document
        QCOMPARE(d.file(), broken);
        QVERIFY(!d.doc.load(d.dir.filePath("missing.xml")));
        QVERIFY(!QFile::exists(d.dir.filePath("missing.xml")));
    }

    void handEditedEmptyRootTakesTheForms()
    {
        Doc d(kPages);
        QVERIFY(d.load(ZorFormDocument::kDecl + "<CONFIG>\n</CONFIG>\n"));
        QVERIFY2(d.doc.save(), qPrintable(d.doc.errorString()));
        QVERIFY(d.file().contains("<DEV speed=\"10\""));
    }

    void failedSaveLeavesOldFileAndSaysWhy()
    {
        Doc d(kPages);
        QVERIFY(d.load(config("")));
        // A file size limit below the document's size makes the write fail for
        // any user, root included.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit old{};
        ::getrlimit(RLIMIT_FSIZE, &old);
        rlimit small = old;
        small.rlim_cur = 64;
        QVERIFY(::setrlimit(RLIMIT_FSIZE, &small) == 0);
        const bool ok = d.doc.save();
        ::setrlimit(RLIMIT_FSIZE, &old);
        QVERIFY(!ok);
        QVERIFY(!d.doc.errorString().isEmpty());
        QCOMPARE(d.file(), config(""));
    }

    void userEditsMarkModifiedButLoadingDoesNot()
    {
        Doc d(kPages);
        QSignalSpy spy(&d.doc, &ZOR_ConfigDocument::signal_ModifiedChanged);
        QVERIFY(d.load(config("    <DEV speed=\"77\" />\n")));
        QVERIFY(!d.doc.isModified());
        d.form<TestForm>("test")->rows.widgetAs<QSpinBox>(1, 2)->setValue(9);
        QVERIFY(d.doc.isModified());
        QCOMPARE(spy.count(), 1);
    }
};

QTEST_MAIN(TestConfigLayer)
#include "tst_config_layer.moc"
