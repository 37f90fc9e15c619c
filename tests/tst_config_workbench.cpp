// The configuration workbench on the document every page shares: New puts
// every editor of every page back, a restored snapshot (undo, redo) gives
// the document back byte for byte, a file that is not a configuration is
// refused or read into a new untitled document, and the settings sheet
// lists the document's values with the non-default ones marked.

#include "config/zor_configdocument.h"
#include "config/zor_configsheet.h"
#include "config/zor_form_config.h"
#include "module/zor_language.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabWidget>
#include <QtTest>

#include "zor_form_document.h"

namespace {

using Doc = ZorFormDocument::Doc;

// Where an editor sits: the classes of the forms around it and its name.
QString place(const QWidget* w)
{
    QString s = w->objectName();
    for (const QWidget* p = w->parentWidget(); p; p = p->parentWidget())
        if (qobject_cast<const ZOR_Form_Config*>(p))
            s = QLatin1String(p->metaObject()->className()) + QLatin1Char('/') + s;
    return s;
}

// A device page behind the one chosen is reset when it is shown.
bool onShownPage(const QWidget* w, const QWidget* lpForm)
{
    for (const QWidget* p = w; p && p != lpForm; p = p->parentWidget()) {
        auto* lpStack = qobject_cast<const QStackedWidget*>(p->parentWidget());
        if (lpStack && !qobject_cast<const QTabWidget*>(lpStack->parentWidget()) && lpStack->currentWidget() != p)
            return false;
    }
    return true;
}

// What every editor of every page shows, one line per editor.
QStringList editorStates(const ZOR_ConfigDocument& doc)
{
    QStringList states;
    for (const ZOR_Form_Config* lpForm : doc.forms()) {
        for (const QSpinBox* w : lpForm->findChildren<QSpinBox*>())
            if (onShownPage(w, lpForm))
                states << QStringLiteral("%1 spin %2").arg(place(w)).arg(w->value());
        for (const QAbstractButton* w : lpForm->findChildren<QAbstractButton*>())
            if (w->isCheckable() && onShownPage(w, lpForm))
                states << QStringLiteral("%1 check %2").arg(place(w)).arg(w->isChecked());
        for (const QComboBox* w : lpForm->findChildren<QComboBox*>())
            if (onShownPage(w, lpForm))
                states << QStringLiteral("%1 combo %2").arg(place(w)).arg(w->currentIndex());
        for (const QLineEdit* w : lpForm->findChildren<QLineEdit*>())
            if (!qobject_cast<QSpinBox*>(w->parentWidget()) && !qobject_cast<QComboBox*>(w->parentWidget())
                && onShownPage(w, lpForm))
                states << QStringLiteral("%1 edit %2").arg(place(w), w->text());
    }
    return states;
}

// Every enabled or disabled editor moved off its value, as a user (or a
// loaded file) would.
void changeEveryEditor(ZOR_ConfigDocument& doc)
{
    for (ZOR_Form_Config* lpForm : doc.forms()) {
        for (QSpinBox* w : lpForm->findChildren<QSpinBox*>())
            w->setValue(w->value() == w->maximum() ? w->minimum() : w->maximum());
        for (QAbstractButton* w : lpForm->findChildren<QAbstractButton*>())
            if (w->isCheckable())
                w->setChecked(!w->isChecked());
        for (QComboBox* w : lpForm->findChildren<QComboBox*>())
            w->setCurrentIndex(w->count() - 1 - qMax(0, w->currentIndex()));
    }
}

QByteArray planted()
{
    return ZorFormDocument::config("    <RULES pingTimer=\"120\" telAddPing=\"1\" noPriorMsg=\"1\" />\n"
                                   "    <RS232 device=\"0\" speed=\"19200\" parity=\"Even\" stop=\"1\" />\n"
                                   "    <KEEP me=\"1\" />\n");
}

} // namespace

class TestConfigWorkbench : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("ru")); }

    void newClearsEveryPage()
    {
        Doc d({});
        const QStringList fresh = editorStates(d.doc);
        QVERIFY(d.load(planted()));
        changeEveryEditor(d.doc);
        d.doc.newDocument();
        const QStringList after = editorStates(d.doc);
        QCOMPARE(after.size(), fresh.size());
        QStringList differing;
        for (int i = 0; i < fresh.size(); ++i)
            if (fresh[i] != after[i])
                differing << fresh[i] + QStringLiteral(" / ") + after[i];
        QVERIFY2(differing.isEmpty(), qPrintable(differing.join(QLatin1Char('\n'))));
    }

    void snapshotsComeBackByteForByte()
    {
        Doc d({});
        QVERIFY(d.load(planted()));
        const QByteArray opened = d.doc.render();
        // Two edits on two pages, typed as a person would.
        auto* lpSpeed = d.doc.form(QStringLiteral("rs485"))->findChildren<QComboBox*>().value(1);
        QVERIFY(lpSpeed);
        QTest::keyClick(lpSpeed, Qt::Key_Down);
        const QByteArray one = d.doc.render();
        QVERIFY(one != opened);
        auto spins = d.doc.form(QStringLiteral("transfer"))->findChildren<QSpinBox*>();
        QVERIFY(!spins.isEmpty());
        spins.first()->setFocus();
        QTest::keyClick(spins.first(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(spins.first(), QStringLiteral("42"));
        QTest::keyClick(spins.first(), Qt::Key_Enter);
        const QByteArray two = d.doc.render();
        QVERIFY(two != one);
        for (const QByteArray& state : {one, opened, one, two, opened}) {
            QVERIFY(d.doc.restore(state));
            QCOMPARE(d.doc.render(), state);
        }
        QVERIFY(d.doc.render().contains("<KEEP me=\"1\" />"));
    }

    void foreignDocument()
    {
        Doc d({});
        const QByteArray foreign = ZorFormDocument::kDecl + "<USRPRMS>\n    <RULES pingTimer=\"200\" />\n</USRPRMS>\n";
        QVERIFY(ZorFormDocument::writeFile(d.path(), foreign));
        QVERIFY(!d.doc.load(d.path()));
        QVERIFY(d.doc.isForeign());
        QVERIFY(d.doc.errorString().contains(QLatin1String("USRPRMS")));
        QVERIFY(d.doc.load(d.path(), ZOR_ConfigDocument::ReadForeign));
        QVERIFY(d.doc.fileName().isEmpty());
        QVERIFY(d.doc.isModified());
        QVERIFY(d.doc.render().contains("pingTimer=\"200\""));
        QVERIFY(!d.doc.render().contains("USRPRMS"));
        QCOMPARE(ZorFormDocument::readFile(d.path()), foreign);
    }

    void sheetListsValues()
    {
        Doc d({});
        QVERIFY(d.load(planted()));
        ZOR_ConfigSheet sheet;
        sheet.build(&d.doc);
        const QString qsText = sheet.toText();
        // The ping period as its caption, value and unit, marked as changed.
        QVERIFY2(qsText.contains(QStringLiteral("* Период пинга (короткого пустого сообщения) для поддержания "
                                                "постоянного соединения: 120 сек")),
            qPrintable(qsText.left(2000)));
        QVERIFY(qsText.contains(QStringLiteral("19200")));
        QVERIFY(qsText.contains(QStringLiteral("Интерфейс RS-232")));
        QTemporaryDir dir;
        QVERIFY(sheet.save(dir.filePath(QStringLiteral("s.pdf")), ZOR_ConfigSheet::Pdf));
        QVERIFY(ZorFormDocument::readFile(dir.filePath(QStringLiteral("s.pdf"))).startsWith("%PDF"));
    }
};

QTEST_MAIN(TestConfigWorkbench)
#include "tst_config_workbench.moc"
