#include "zor_config_window.h"
#include "ui_zor_config_window.h"

#include "zor_dialog_terminalprofile.h"
#include "zor_host_module.h"

#include "config/zor_configdiff.h"
#include "config/zor_configdocument.h"
#include "config/zor_configpages.h"
#include "config/zor_configsheet.h"
#include "config/zor_form_config.h"
#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/cserialize.h"
#include "store/cxmltagv2.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollArea>
#include <QSettings>
#include <QStyle>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTimer>
#include <QTranslator>
#include <QUndoStack>

namespace {

const int kMaxRecent = 8;
const char* const kRecentKey = "config/recent";
const char* const kMarkStyle = "background-color: #fff3c4;";
const char* const kFoundStyle = "background-color: #ffd180; border: 2px solid #e65100;";

QSettings settings()
{
    return QSettings(QStringLiteral("ZOR"), QStringLiteral("zor-host"));
}

QString text(const char* lpKey)
{
    return zorTr(QLatin1String(lpKey));
}

// A menu text as a dialog title: without the accelerator's ampersand.
QString title(const QString& qsMenuText)
{
    QString s = qsMenuText;
    s.remove(QRegularExpression(QStringLiteral("&(?!&)")));
    return s.replace(QStringLiteral("&&"), QStringLiteral("&"));
}

// Qt's own texts (file dialogs, standard buttons) in the program's language,
// from the translations Debian ships with Qt.
void loadQtTranslation(const QString& qsLanguage)
{
    static QTranslator* lpTranslator = nullptr;
    if (!lpTranslator) {
        lpTranslator = new QTranslator(qApp);
    } else {
        QCoreApplication::removeTranslator(lpTranslator);
    }
    if (lpTranslator->load(
            QStringLiteral("qtbase_") + qsLanguage, QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(lpTranslator);
}

// The form's own heading, when it has one: the window shows every page's
// heading in one style above the page instead.
QLabel* formHeading(QWidget* lpForm)
{
    for (const char* lpName : {"label_Title", "labelTitle"})
        if (auto* lpLabel = lpForm->findChild<QLabel*>(QLatin1String(lpName)))
            return lpLabel;
    return nullptr;
}

QByteArray readFile(const QString& qsFileName, QString* lpError)
{
    CSerialize doc;
    if (!doc.openFile(qsFileName)) {
        *lpError = doc.errorString();
        return QByteArray();
    }
    return doc.render();
}

// An undo step: the document before and after one edit.
class SnapshotCommand : public QUndoCommand
{
public:
    SnapshotCommand(QByteArray before, QByteArray after, std::function<void(const QByteArray&)> restore)
        : m_before(std::move(before))
        , m_after(std::move(after))
        , m_restore(std::move(restore))
    {
    }
    void undo() override { m_restore(m_before); }
    void redo() override
    {
        if (m_bDone)
            m_restore(m_after);
        m_bDone = true;
    }

private:
    QByteArray m_before;
    QByteArray m_after;
    std::function<void(const QByteArray&)> m_restore;
    bool m_bDone = false;
};

} // namespace

ZOR_ConfigWindow::ZOR_ConfigWindow(ZOR_HostModule* lpModule, QWidget* parent)
    : QMainWindow(parent)
    , ui(new Ui::ZOR_ConfigWindow)
    , m_lpModule(lpModule)
    , m_lpDoc(new ZOR_ConfigDocument(this))
    , m_lpUndo(new QUndoStack(this))
    , m_lpStatus(new QLabel(this))
{
    ui->setupUi(this);
    setWindowFlag(Qt::Window);
    ui->label_ExcessIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(24, 24));
    ui->action_New->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
    ui->action_Open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    ui->action_Save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
    ui->action_Profile->setIcon(style()->standardIcon(QStyle::SP_ComputerIcon));
    ui->statusbar->addPermanentWidget(m_lpStatus);
    QFont heading = ui->label_PageTitle->font();
    heading.setPointSizeF(heading.pointSizeF() * 1.25);
    heading.setBold(true);
    ui->label_PageTitle->setFont(heading);

    m_lpDoc->createForms(ui->stackedWidget_Pages);
    buildPages();
    connectActions();
    retranslate();
    setProfile(m_lpDoc->profile());
    updateExcess();
    restoreLayout();
    startFrom(QStringLiteral("cfgwin_117"), QString());
}

ZOR_ConfigWindow::~ZOR_ConfigWindow() = default;

void ZOR_ConfigWindow::buildPages()
{
    for (const ZOR_ConfigPage& page : zorConfigPages()) {
        ZOR_Form_Config* lpForm = m_lpDoc->form(QLatin1String(page.lpId));
        if (QLabel* lpHeading = formHeading(lpForm))
            lpHeading->hide();
        auto* lpArea = new QScrollArea(ui->stackedWidget_Pages);
        lpArea->setWidgetResizable(true);
        lpArea->setFrameShape(QFrame::NoFrame);
        lpArea->setWidget(lpForm);
        ui->stackedWidget_Pages->addWidget(lpArea);
        auto* lpItem = new QListWidgetItem(ui->listWidget_Pages);
        lpItem->setData(Qt::UserRole, QLatin1String(page.lpId));
        lpItem->setData(Qt::UserRole + 1, QLatin1String(page.lpCaptionKey));
        connect(lpForm, &ZOR_Form_Config::signal_ShowPage, this, &ZOR_ConfigWindow::showPage);
        connect(lpForm, &ZOR_Form_Config::signal_Excess_Size, this, &ZOR_ConfigWindow::slot_Excess_Size);
        connect(lpForm, &ZOR_Form_Config::signal_FormEdited, this, &ZOR_ConfigWindow::slot_FormEdited);
    }
    ui->listWidget_Pages->setWordWrap(false);
    ui->listWidget_Pages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(ui->listWidget_Pages, &QListWidget::currentRowChanged, this, [this](int nRow) {
        ui->stackedWidget_Pages->setCurrentIndex(nRow);
        updatePageTitle();
    });
    ui->listWidget_Pages->setCurrentRow(0);
    ui->splitter->setStretchFactor(1, 1);
    ui->splitter_Main->setStretchFactor(0, 1);
    for (QTreeWidget* lpTree : {ui->treeWidget_Problems, ui->treeWidget_Changes})
        lpTree->setAlternatingRowColors(true);
}

void ZOR_ConfigWindow::connectActions()
{
    connect(m_lpDoc, &ZOR_ConfigDocument::signal_ModifiedChanged, this, [this] { updateTitle(); });
    connect(ui->action_New, &QAction::triggered, this, [this] { newDocument(); });
    connect(ui->action_Open, &QAction::triggered, this, [this] {
        const QString qsFile = QFileDialog::getOpenFileName(
            this, title(ui->action_Open->text()), QString(), text("cfgwin_017"));
        if (!qsFile.isEmpty())
            openFile(qsFile);
    });
    connect(ui->action_Compare, &QAction::triggered, this, [this] {
        const QString qsFile = QFileDialog::getOpenFileName(
            this, title(ui->action_Compare->text()), QString(), text("cfgwin_017"));
        if (!qsFile.isEmpty())
            compareWith(qsFile);
    });
    connect(ui->action_Save, &QAction::triggered, this, [this] { save(); });
    connect(ui->action_SaveAs, &QAction::triggered, this, [this] { saveAs(); });
    connect(ui->action_Print, &QAction::triggered, this, &ZOR_ConfigWindow::printSheet);
    connect(ui->action_ExportPdf, &QAction::triggered, this, [this] {
        const QString qsFile = QFileDialog::getSaveFileName(
            this, title(ui->action_ExportPdf->text()), QString(), text("cfgwin_116"));
        if (!qsFile.isEmpty())
            exportSheet(ensureSuffix(qsFile, QStringLiteral(".pdf")));
    });
    connect(ui->action_Close, &QAction::triggered, this, &QWidget::close);
    connect(ui->action_Profile, &QAction::triggered, this, &ZOR_ConfigWindow::slot_triggered_Profile);
    connect(ui->action_Find, &QAction::triggered, this, [this] {
        ui->lineEdit_Search->setFocus();
        ui->lineEdit_Search->selectAll();
    });
    connect(ui->lineEdit_Search, &QLineEdit::returnPressed, this, [this] { findNext(ui->lineEdit_Search->text()); });
    connect(ui->lineEdit_Search, &QLineEdit::textEdited, this, [this] { m_nFound = -1; });
    QAction* lpUndo = m_lpUndo->createUndoAction(this);
    QAction* lpRedo = m_lpUndo->createRedoAction(this);
    lpUndo->setShortcut(QKeySequence::Undo);
    lpRedo->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Shift+Z")), QKeySequence::Redo});
    lpUndo->setObjectName(QStringLiteral("action_Undo"));
    lpRedo->setObjectName(QStringLiteral("action_Redo"));
    ui->menu_Edit->insertActions(ui->action_Find, {lpUndo, lpRedo});
    ui->menu_Edit->insertSeparator(ui->action_Find);
    connect(ui->treeWidget_Problems, &QTreeWidget::itemActivated, this,
        [this](QTreeWidgetItem* lpItem) { goToWidget(lpItem->data(0, Qt::UserRole).value<QPointer<QWidget>>()); });
    connect(ui->treeWidget_Problems, &QTreeWidget::itemClicked, this,
        [this](QTreeWidgetItem* lpItem) { goToWidget(lpItem->data(0, Qt::UserRole).value<QPointer<QWidget>>()); });
    connect(ui->treeWidget_Changes, &QTreeWidget::itemClicked, this,
        [this](QTreeWidgetItem* lpItem) { goToWidget(m_widgets.value(lpItem->data(0, Qt::UserRole).toString())); });
    connect(ui->comboBox_Against, QOverload<int>::of(&QComboBox::activated), this, [this](int nIndex) {
        if (nIndex < 2)
            settings().setValue(QStringLiteral("config/against"), nIndex);
        refreshChanges();
    });
}

void ZOR_ConfigWindow::retranslate()
{
    m_qsLanguage = programLanguage();
    loadQtTranslation(m_qsLanguage);
    ui->menu_File->setTitle(text("cfgwin_003"));
    ui->action_New->setText(text("cfgwin_004"));
    ui->action_Open->setText(text("cfgwin_005"));
    ui->menu_Recent->setTitle(text("cfgwin_006"));
    ui->action_Save->setText(text("cfgwin_007"));
    ui->action_SaveAs->setText(text("cfgwin_008"));
    ui->action_Close->setText(text("cfgwin_009"));
    ui->menu_Terminal->setTitle(text("cfgwin_010"));
    ui->action_Profile->setText(text("cfgwin_011"));
    ui->menu_Edit->setTitle(text("cfgwin_100"));
    ui->action_Find->setText(text("cfgwin_103"));
    ui->action_Compare->setText(text("cfgwin_112"));
    ui->action_Print->setText(text("cfgwin_113"));
    ui->action_ExportPdf->setText(text("cfgwin_114"));
    ui->lineEdit_Search->setPlaceholderText(text("cfgwin_104"));
    ui->toolBar->setWindowTitle(title(text("cfgwin_003")));
    ui->listWidget_Pages->setToolTip(text("cfgwin_012"));
    ui->label_Excess->setText(text("cfgwin_013"));
    int nWidest = 0;
    for (int i = 0; i < ui->listWidget_Pages->count(); ++i) {
        QListWidgetItem* lpItem = ui->listWidget_Pages->item(i);
        lpItem->setText(zorTr(lpItem->data(Qt::UserRole + 1).toString()));
        nWidest = qMax(nWidest, ui->listWidget_Pages->fontMetrics().horizontalAdvance(lpItem->text()));
    }
    // Wide enough for every caption on one line.
    ui->widget_Left->setMinimumWidth(
        nWidest + 2 * ui->listWidget_Pages->frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 16);
    m_lpDoc->translateForms();
    translatePanes();
    fillRecent();
    updateTitle();
    updateStatus();
    updatePageTitle();
}

void ZOR_ConfigWindow::translatePanes()
{
    const auto undoText = [](QAction* lpAction, const char* lpKey) {
        if (lpAction)
            lpAction->setText(text(lpKey));
    };
    undoText(findChild<QAction*>(QStringLiteral("action_Undo")), "cfgwin_101");
    undoText(findChild<QAction*>(QStringLiteral("action_Redo")), "cfgwin_102");
    ui->treeWidget_Problems->setHeaderLabels(text("cfgwin_107").split(QLatin1Char('|')));
    ui->treeWidget_Changes->setHeaderLabels(text("cfgwin_108").split(QLatin1Char('|')));
    ui->label_Against->setText(text("cfgwin_109"));
    const int nAgainst = qMax(0, ui->comboBox_Against->currentIndex());
    ui->comboBox_Against->clear();
    ui->comboBox_Against->addItem(text("cfgwin_110"));
    ui->comboBox_Against->addItem(text("cfgwin_111"));
    for (auto it = m_compared.constBegin(); it != m_compared.constEnd(); ++it)
        ui->comboBox_Against->addItem(text("cfgwin_119").arg(QFileInfo(it.key()).fileName()), it.key());
    const int nChosen = ui->comboBox_Against->property("zorChosen").isValid()
        ? nAgainst
        : settings().value(QStringLiteral("config/against"), 0).toInt();
    ui->comboBox_Against->setProperty("zorChosen", true);
    ui->comboBox_Against->setCurrentIndex(qBound(0, nChosen, ui->comboBox_Against->count() - 1));
    ui->groupBox_Problems->setTitle(text("cfgwin_105").arg(ui->treeWidget_Problems->topLevelItemCount()));
    ui->groupBox_Changes->setTitle(text("cfgwin_106").arg(ui->treeWidget_Changes->topLevelItemCount()));
}

void ZOR_ConfigWindow::changeEvent(QEvent* event)
{
    // The host switches the language for the whole application; catch up
    // when the window comes back to the front.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && programLanguage() != m_qsLanguage) {
        ZOR_Language::instance().reload();
        retranslate();
    }
    QMainWindow::changeEvent(event);
}

void ZOR_ConfigWindow::updateTitle()
{
    const QString qsFile = m_lpDoc->fileName();
    const QString qsName = qsFile.isEmpty() ? text("cfgwin_002") : QFileInfo(qsFile).fileName();
    setWindowTitle(QStringLiteral("%1[*] — %2").arg(qsName, text("cfgwin_001")));
    setWindowModified(m_lpDoc->isModified());
}

void ZOR_ConfigWindow::updateStatus()
{
    QString qsText = zorTr(m_qsStatusKey);
    if (!m_qsStatusArg.isNull())
        qsText = qsText.arg(QDir::toNativeSeparators(m_qsStatusArg));
    m_lpStatus->setText(qsText);
}

void ZOR_ConfigWindow::updatePageTitle()
{
    const int nRow = ui->listWidget_Pages->currentRow();
    QListWidgetItem* lpItem = ui->listWidget_Pages->item(nRow);
    if (!lpItem)
        return;
    QLabel* lpHeading = formHeading(m_lpDoc->form(lpItem->data(Qt::UserRole).toString()));
    ui->label_PageTitle->setText(lpHeading && !lpHeading->text().isEmpty() ? lpHeading->text() : lpItem->text());
}

void ZOR_ConfigWindow::slot_Excess_Size(bool bExcess)
{
    if (bExcess)
        m_excess.insert(sender());
    else
        m_excess.remove(sender());
    updateExcess();
}

void ZOR_ConfigWindow::updateExcess()
{
    ui->frame_Excess->setVisible(isExcessShown());
}

bool ZOR_ConfigWindow::mayDiscard()
{
    if (!m_lpDoc->isModified())
        return true;
    const auto answer = QMessageBox::question(this, windowTitle().remove(QStringLiteral("[*]")), text("cfgwin_014"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return save();
    return answer == QMessageBox::Discard;
}

// After New or Open: the document as it stands is the base of undo and of
// the Changes pane.
void ZOR_ConfigWindow::startFrom(const QString& qsStatusKey, const QString& qsStatusArg)
{
    m_lpUndo->clear();
    m_bSnapshotDue = false;
    m_current = m_lpDoc->render();
    m_opened = m_lpDoc->isForeign() ? m_lpDoc->renderDefaults() : m_current;
    m_defaults = m_lpDoc->renderDefaults();
    m_qsStatusKey = qsStatusKey;
    m_qsStatusArg = qsStatusArg;
    mapWidgets();
    fillProblems();
    refreshChanges();
    updateTitle();
    updateStatus();
}

bool ZOR_ConfigWindow::newDocument()
{
    if (!mayDiscard())
        return false;
    m_lpDoc->newDocument();
    startFrom(QStringLiteral("cfgwin_117"), QString());
    return true;
}

bool ZOR_ConfigWindow::openFile(const QString& qsFileName)
{
    if (!mayDiscard())
        return false;
    if (!m_lpDoc->load(qsFileName)) {
        if (!m_lpDoc->isForeign()) {
            QMessageBox::warning(this, text("cfgwin_015"), m_lpDoc->errorString());
            return false;
        }
        CSerialize foreign;
        foreign.openFile(qsFileName);
        const QString qsRoot = foreign.root() ? foreign.root()->name() : QString();
        const auto answer = QMessageBox::question(
            this, text("cfgwin_118"), text("cfgwin_115").arg(QFileInfo(qsFileName).fileName(), qsRoot));
        if (answer != QMessageBox::Yes || !m_lpDoc->load(qsFileName, ZOR_ConfigDocument::ReadForeign))
            return false;
        startFrom(QStringLiteral("cfgwin_117"), QString());
        return true;
    }
    m_bMarkupDropAccepted = false;
    addRecent(qsFileName);
    startFrom(QStringLiteral("cfgwin_020"), qsFileName);
    return true;
}

bool ZOR_ConfigWindow::save()
{
    return m_lpDoc->fileName().isEmpty() ? saveAs() : saveAs(m_lpDoc->fileName());
}

bool ZOR_ConfigWindow::saveAs(const QString& qsFileName)
{
    QString qsFile = qsFileName;
    if (qsFile.isEmpty()) {
        qsFile = QFileDialog::getSaveFileName(
            this, title(ui->action_SaveAs->text()), m_lpDoc->fileName(), text("cfgwin_017"));
        if (qsFile.isEmpty())
            return false;
        if (QFileInfo(qsFile).suffix().isEmpty())
            qsFile = ensureSuffix(qsFile, QStringLiteral(".xml"));
    }
    if (!mayReplace(qsFile))
        return false;
    if (!m_lpDoc->save(qsFile)) {
        QMessageBox::warning(this, text("cfgwin_016"), m_lpDoc->errorString());
        return false;
    }
    addRecent(qsFile);
    m_current = m_lpDoc->render();
    m_opened = m_current;
    m_qsStatusKey = QStringLiteral("cfgwin_019");
    m_qsStatusArg = qsFile;
    refreshChanges();
    updateTitle();
    updateStatus();
    return true;
}

// Before the document's own file is replaced: another program's change to
// it is not overwritten unasked (reload, overwrite or save as), and the
// comments the file held are not dropped unsaid.
bool ZOR_ConfigWindow::mayReplace(const QString& qsFile)
{
    if (m_lpDoc->fileName().isEmpty() || QFileInfo(qsFile) != QFileInfo(m_lpDoc->fileName()))
        return true;
    const QString title = windowTitle().remove(QStringLiteral("[*]"));
    if (m_lpDoc->changedOnDisk()) {
        QMessageBox box(QMessageBox::Warning, title, text("cfgwin_disk_changed").arg(QDir::toNativeSeparators(qsFile)),
            QMessageBox::Cancel, this);
        QPushButton* reload = box.addButton(text("cfgwin_disk_reload"), QMessageBox::DestructiveRole);
        QPushButton* overwrite = box.addButton(text("cfgwin_disk_overwrite"), QMessageBox::AcceptRole);
        QPushButton* other = box.addButton(text("cfgwin_disk_saveas"), QMessageBox::ActionRole);
        box.setDefaultButton(other);
        box.exec();
        if (box.clickedButton() == reload) {
            m_lpDoc->setModified(false);
            openFile(qsFile);
            return false;
        }
        if (box.clickedButton() == other) {
            saveAs();
            return false;
        }
        if (box.clickedButton() != overwrite)
            return false;
        m_lpDoc->acceptDiskState();
    }
    if (m_lpDoc->droppedMarkup() > 0 && !m_bMarkupDropAccepted) {
        const auto answer = QMessageBox::question(this, title,
            text("cfgwin_markup_dropped").arg(m_lpDoc->droppedMarkup()).arg(QDir::toNativeSeparators(qsFile)),
            QMessageBox::Save | QMessageBox::Cancel, QMessageBox::Save);
        if (answer != QMessageBox::Save)
            return false;
        m_bMarkupDropAccepted = true;
    }
    return true;
}

void ZOR_ConfigWindow::slot_FormEdited()
{
    if (m_lpDoc->isLoading() || m_bRestoring || m_bSnapshotDue)
        return;
    // One step per edit: whatever one user action changes on the pages is
    // taken together once the event that caused it is handled.
    m_bSnapshotDue = true;
    QTimer::singleShot(0, this, &ZOR_ConfigWindow::takeSnapshot);
}

void ZOR_ConfigWindow::takeSnapshot()
{
    if (!m_bSnapshotDue)
        return;
    m_bSnapshotDue = false;
    const QByteArray now = m_lpDoc->render();
    if (now == m_current)
        return;
    m_lpUndo->push(new SnapshotCommand(m_current, now, [this](const QByteArray& b) { restoreSnapshot(b); }));
    m_current = now;
    refreshChanges();
}

void ZOR_ConfigWindow::restoreSnapshot(const QByteArray& bytes)
{
    m_bRestoring = true;
    m_lpDoc->restore(bytes);
    m_bRestoring = false;
    m_bSnapshotDue = false;
    m_current = m_lpDoc->render();
    m_lpDoc->setModified(m_current != m_opened);
    refreshChanges();
}

void ZOR_ConfigWindow::fillProblems()
{
    ui->treeWidget_Problems->clear();
    QList<QTreeWidgetItem*> items;
    for (const ZOR_ConfigProblems::Problem& problem : m_lpDoc->problems()) {
        const QString qsSetting = problem.qsAttr.isEmpty() ? problem.qsNode
                                                           : problem.qsNode + QLatin1Char('/') + problem.qsAttr;
        auto* lpItem = new QTreeWidgetItem(
            {QString::number(problem.nLine), qsSetting, problem.qsReason, problem.qsValue, problem.qsKept});
        lpItem->setData(0, Qt::UserRole, QVariant::fromValue(problem.lpWidget));
        for (int c = 1; c < 5; ++c)
            lpItem->setToolTip(c, lpItem->text(c));
        items.append(lpItem);
    }
    ui->treeWidget_Problems->addTopLevelItems(items);
    for (int c = 0; c < 4; ++c) {
        ui->treeWidget_Problems->resizeColumnToContents(c);
        ui->treeWidget_Problems->setColumnWidth(c, qMin(ui->treeWidget_Problems->columnWidth(c), c == 2 ? 320 : 200));
    }
    translatePanes();
}

// Which widget shows which value: read once per document (the forms show
// the same widgets whatever the values, except for the device kind pages).
void ZOR_ConfigWindow::mapWidgets()
{
    m_widgets.clear();
    m_order.clear();
    for (const ZOR_ConfigProblems::Read& read : m_lpDoc->settingWidgets()) {
        const QString qsKey = read.qsNode + QLatin1Char('/') + read.qsAttr;
        if (!m_widgets.contains(qsKey))
            m_order.append(qsKey);
        m_widgets.insert(qsKey, read.lpWidget);
    }
}

void ZOR_ConfigWindow::refreshChanges()
{
    const int nAgainst = ui->comboBox_Against->currentIndex();
    QByteArray base = nAgainst == 1 ? m_defaults : m_opened;
    if (nAgainst > 1)
        base = m_compared.value(ui->comboBox_Against->currentData().toString());
    CSerialize before;
    CSerialize now;
    before.openData(base);
    now.openData(m_current);
    ZOR_ConfigDiff diff;
    diff.compare(before.root(), now.root());
    ui->treeWidget_Changes->clear();
    QList<QTreeWidgetItem*> items;
    QSet<QWidget*> changed;
    for (const ZOR_ConfigDiff::Entry& entry : diff.entries()) {
        const QString qsKey = entry.qsAttr.isEmpty() ? entry.qsPath : entry.qsPath + QLatin1Char('/') + entry.qsAttr;
        auto* lpItem = new QTreeWidgetItem({QString(QLatin1Char(entry.sign)) + QLatin1Char(' ') + qsKey,
            entry.qsAttr.isEmpty() ? entry.qsWhole.trimmed() : entry.qsOld, entry.qsNew});
        lpItem->setData(0, Qt::UserRole, qsKey);
        items.append(lpItem);
        if (QWidget* lpWidget = m_widgets.value(qsKey))
            changed.insert(lpWidget);
    }
    ui->treeWidget_Changes->addTopLevelItems(items);
    for (int c = 0; c < 2; ++c) {
        ui->treeWidget_Changes->resizeColumnToContents(c);
        ui->treeWidget_Changes->setColumnWidth(c, qMin(ui->treeWidget_Changes->columnWidth(c), 240));
    }
    markChanged(changed);
    ui->groupBox_Changes->setTitle(text("cfgwin_106").arg(items.size()));
}

namespace {

// A widget's own style, kept while the window marks it.
QString ownStyle(QWidget* lpWidget)
{
    const QVariant own = lpWidget->property("zorOwnStyle");
    if (!own.isValid())
        lpWidget->setProperty("zorOwnStyle", lpWidget->styleSheet());
    return lpWidget->property("zorOwnStyle").toString();
}

} // namespace

void ZOR_ConfigWindow::markChanged(const QSet<QWidget*>& widgets)
{
    for (QWidget* lpWidget : qAsConst(m_marked))
        if (!widgets.contains(lpWidget))
            lpWidget->setStyleSheet(ownStyle(lpWidget));
    for (QWidget* lpWidget : widgets)
        lpWidget->setStyleSheet(ownStyle(lpWidget) + QLatin1String(kMarkStyle));
    m_marked = widgets;
}

bool ZOR_ConfigWindow::compareWith(const QString& qsFileName)
{
    QString qsError;
    const QByteArray bytes = readFile(qsFileName, &qsError);
    if (bytes.isEmpty()) {
        QMessageBox::warning(this, text("cfgwin_015"), qsError);
        return false;
    }
    m_compared.insert(qsFileName, bytes);
    translatePanes();
    ui->comboBox_Against->setCurrentIndex(ui->comboBox_Against->findData(qsFileName));
    refreshChanges();
    return true;
}

void ZOR_ConfigWindow::goToWidget(QWidget* lpWidget)
{
    const int nPage = lpWidget ? m_lpDoc->pageOf(lpWidget) : -1;
    if (nPage < 0)
        return;
    ui->listWidget_Pages->setCurrentRow(nPage);
    // Every tab on the way down to the widget comes to the front.
    QVector<QWidget*> chain;
    for (QWidget* w = lpWidget; w && w != ui->stackedWidget_Pages; w = w->parentWidget())
        chain.prepend(w);
    for (int i = 0; i + 1 < chain.size(); ++i) {
        if (auto* lpTabs = qobject_cast<QTabWidget*>(chain[i])) {
            for (int j = i + 1; j < chain.size(); ++j)
                if (lpTabs->indexOf(chain[j]) >= 0)
                    lpTabs->setCurrentWidget(chain[j]);
        }
    }
    for (QWidget* w = lpWidget->parentWidget(); w; w = w->parentWidget())
        if (auto* lpArea = qobject_cast<QScrollArea*>(w))
            lpArea->ensureWidgetVisible(lpWidget);
    lpWidget->setFocus(Qt::OtherFocusReason);
    lpWidget->setStyleSheet(ownStyle(lpWidget) + QLatin1String(kFoundStyle));
    QPointer<QWidget> guard(lpWidget);
    QTimer::singleShot(1500, this, [this, guard] {
        if (guard)
            guard->setStyleSheet(ownStyle(guard) + (m_marked.contains(guard) ? QLatin1String(kMarkStyle) : QString()));
    });
}

bool ZOR_ConfigWindow::findNext(const QString& qsText)
{
    const QString qsWanted = qsText.trimmed();
    if (qsWanted.isEmpty() || m_order.isEmpty())
        return false;
    const int n = m_order.size();
    for (int step = 1; step <= n; ++step) {
        const int i = (m_nFound + step + n) % n;
        QWidget* lpWidget = m_widgets.value(m_order[i]);
        if (!lpWidget || m_lpDoc->pageOf(lpWidget) < 0)
            continue;
        const QString qsHay = ZOR_ConfigSheet::captionOf(lpWidget) + QLatin1Char('\n') + m_order[i] + QLatin1Char('\n')
            + ZOR_ConfigSheet::shownValue(lpWidget);
        if (!qsHay.contains(qsWanted, Qt::CaseInsensitive))
            continue;
        m_nFound = i;
        goToWidget(lpWidget);
        ui->statusbar->showMessage(
            QStringLiteral("%1 — %2").arg(ZOR_ConfigSheet::captionOf(lpWidget), m_order[i]), 5000);
        return true;
    }
    ui->statusbar->showMessage(text("cfgwin_120").arg(qsWanted), 5000);
    return false;
}

void ZOR_ConfigWindow::printSheet()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(title(ui->action_Print->text()));
    if (dialog.exec() != QDialog::Accepted)
        return;
    ZOR_ConfigSheet sheet;
    sheet.build(m_lpDoc);
    sheet.print(&printer);
}

bool ZOR_ConfigWindow::exportSheet(const QString& qsFileName)
{
    ZOR_ConfigSheet sheet;
    sheet.build(m_lpDoc);
    if (sheet.save(qsFileName, ZOR_ConfigSheet::Pdf))
        return true;
    QMessageBox::warning(this, text("cfgwin_016"), sheet.errorString());
    return false;
}

void ZOR_ConfigWindow::showPage(const QString& qsPageId, const QString& qsTab)
{
    for (int i = 0; i < ui->listWidget_Pages->count(); ++i) {
        if (ui->listWidget_Pages->item(i)->data(Qt::UserRole).toString() != qsPageId)
            continue;
        ui->listWidget_Pages->setCurrentRow(i);
        if (!qsTab.isEmpty())
            m_lpDoc->form(qsPageId)->showTab(qsTab);
        return;
    }
}

void ZOR_ConfigWindow::setProfile(const ZOR_TerminalProfile& profile)
{
    m_lpDoc->setProfile(profile);
    m_defaults = m_lpDoc->renderDefaults();
    ui->statusbar->showMessage(
        text("cfgwin_018")
            .arg(profile.nSimCount)
            .arg(profile.nCanVariant == ZOR_TerminalProfile::CanBt ? QStringLiteral("bt") : QStringLiteral("ext"))
            .arg(profile.nBluetoothSlots),
        8000);
}

void ZOR_ConfigWindow::slot_triggered_Profile()
{
    ZOR_Dialog_TerminalProfile dialog(this);
    dialog.setProfile(m_lpDoc->profile());
    dialog.setLink(m_lpModule ? m_lpModule->link() : nullptr);
    if (dialog.exec() == QDialog::Accepted)
        setProfile(dialog.profile());
}

void ZOR_ConfigWindow::addRecent(const QString& qsFileName)
{
    const QString qsPath = QFileInfo(qsFileName).absoluteFilePath();
    QStringList files = settings().value(QLatin1String(kRecentKey)).toStringList();
    files.removeAll(qsPath);
    files.prepend(qsPath);
    while (files.size() > kMaxRecent)
        files.removeLast();
    settings().setValue(QLatin1String(kRecentKey), files);
    fillRecent();
}

void ZOR_ConfigWindow::fillRecent()
{
    ui->menu_Recent->clear();
    const QStringList files = settings().value(QLatin1String(kRecentKey)).toStringList();
    for (const QString& qsFile : files) {
        QAction* lpAction = ui->menu_Recent->addAction(QDir::toNativeSeparators(qsFile));
        connect(lpAction, &QAction::triggered, this, [this, qsFile] { openFile(qsFile); });
    }
    if (files.isEmpty())
        ui->menu_Recent->addAction(text("cfgwin_021"))->setEnabled(false);
}

void ZOR_ConfigWindow::restoreLayout()
{
    QSettings s = settings();
    if (!restoreGeometry(s.value(QStringLiteral("config/geometry")).toByteArray()))
        resize(1270, 800);
    if (!ui->splitter->restoreState(s.value(QStringLiteral("config/splitter")).toByteArray()))
        ui->splitter->setSizes({ui->widget_Left->minimumWidth(), width() - ui->widget_Left->minimumWidth()});
    if (!ui->splitter_Main->restoreState(s.value(QStringLiteral("config/splitterPanes")).toByteArray()))
        ui->splitter_Main->setSizes({height() * 7 / 10, height() * 3 / 10});
    ui->splitter_Panes->restoreState(s.value(QStringLiteral("config/splitterProblems")).toByteArray());
    ui->listWidget_Pages->setCurrentRow(
        qBound(0, s.value(QStringLiteral("config/page"), 0).toInt(), ui->listWidget_Pages->count() - 1));
}

void ZOR_ConfigWindow::saveLayout()
{
    QSettings s = settings();
    s.setValue(QStringLiteral("config/geometry"), saveGeometry());
    s.setValue(QStringLiteral("config/splitter"), ui->splitter->saveState());
    s.setValue(QStringLiteral("config/splitterPanes"), ui->splitter_Main->saveState());
    s.setValue(QStringLiteral("config/splitterProblems"), ui->splitter_Panes->saveState());
    s.setValue(QStringLiteral("config/page"), ui->listWidget_Pages->currentRow());
}

void ZOR_ConfigWindow::closeEvent(QCloseEvent* event)
{
    if (mayDiscard()) {
        saveLayout();
        event->accept();
    } else {
        event->ignore();
    }
}

bool ZOR_ConfigWindow::saveScreenshot(const QString& qsFileName)
{
    show();
    raise();
    QApplication::processEvents();
    return grab().save(qsFileName);
}
