#include "zor_config_window.h"
#include "ui_zor_config_window.h"

#include "zor_dialog_terminalprofile.h"
#include "zor_host_module.h"

#include "config/zor_configdocument.h"
#include "config/zor_configpages.h"
#include "config/zor_form_config.h"
#include "module/zor_global.h"
#include "module/zor_language.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QScrollArea>
#include <QSettings>
#include <QStyle>

namespace {

const int kMaxRecent = 8;
const char* const kRecentKey = "config/recent";

QSettings settings()
{
    return QSettings(QStringLiteral("ZOR"), QStringLiteral("zor-host"));
}

QString text(const char* lpKey)
{
    return zorTr(QLatin1String(lpKey));
}

} // namespace

ZOR_ConfigWindow::ZOR_ConfigWindow(ZOR_HostModule* lpModule, QWidget* parent)
    : QMainWindow(parent)
    , ui(new Ui::ZOR_ConfigWindow)
    , m_lpModule(lpModule)
    , m_lpDoc(new ZOR_ConfigDocument(this))
{
    ui->setupUi(this);
    setWindowFlag(Qt::Window);
    ui->label_ExcessIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(24, 24));
    ui->action_New->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
    ui->action_Open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    ui->action_Save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
    ui->action_Profile->setIcon(style()->standardIcon(QStyle::SP_ComputerIcon));

    m_lpDoc->createForms(ui->stackedWidget_Pages);
    for (const ZOR_ConfigPage& page : zorConfigPages()) {
        ZOR_Form_Config* lpForm = m_lpDoc->form(QLatin1String(page.lpId));
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
    }
    ui->listWidget_Pages->setWordWrap(true);
    ui->listWidget_Pages->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(ui->listWidget_Pages, &QListWidget::currentRowChanged, ui->stackedWidget_Pages,
            &QStackedWidget::setCurrentIndex);
    ui->listWidget_Pages->setCurrentRow(0);
    ui->splitter->setStretchFactor(1, 1);
    ui->splitter->setSizes({180, 1090});

    connect(m_lpDoc, &ZOR_ConfigDocument::signal_ModifiedChanged, this, [this] { updateTitle(); });
    connect(ui->action_New, &QAction::triggered, this, [this] { newDocument(); });
    connect(ui->action_Open, &QAction::triggered, this, [this] {
        const QString qsFile = QFileDialog::getOpenFileName(this, ui->action_Open->text(), QString(), text("cfgwin_017"));
        if (!qsFile.isEmpty())
            openFile(qsFile);
    });
    connect(ui->action_Save, &QAction::triggered, this, [this] { save(); });
    connect(ui->action_SaveAs, &QAction::triggered, this, [this] { saveAs(); });
    connect(ui->action_Close, &QAction::triggered, this, &QWidget::close);
    connect(ui->action_Profile, &QAction::triggered, this, &ZOR_ConfigWindow::slot_triggered_Profile);

    retranslate();
    setProfile(m_lpDoc->profile());
    updateExcess();
}

ZOR_ConfigWindow::~ZOR_ConfigWindow() = default;

void ZOR_ConfigWindow::retranslate()
{
    m_qsLanguage = programLanguage();
    ui->menu_File->setTitle(text("cfgwin_003"));
    ui->action_New->setText(text("cfgwin_004"));
    ui->action_Open->setText(text("cfgwin_005"));
    ui->menu_Recent->setTitle(text("cfgwin_006"));
    ui->action_Save->setText(text("cfgwin_007"));
    ui->action_SaveAs->setText(text("cfgwin_008"));
    ui->action_Close->setText(text("cfgwin_009"));
    ui->menu_Terminal->setTitle(text("cfgwin_010"));
    ui->action_Profile->setText(text("cfgwin_011"));
    ui->toolBar->setWindowTitle(text("cfgwin_003"));
    ui->listWidget_Pages->setToolTip(text("cfgwin_012"));
    ui->label_Excess->setText(text("cfgwin_013"));
    for (int i = 0; i < ui->listWidget_Pages->count(); ++i) {
        QListWidgetItem* lpItem = ui->listWidget_Pages->item(i);
        lpItem->setText(zorTr(lpItem->data(Qt::UserRole + 1).toString()));
    }
    m_lpDoc->translateForms();
    fillRecent();
    updateTitle();
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
                                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                              QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return save();
    return answer == QMessageBox::Discard;
}

bool ZOR_ConfigWindow::newDocument()
{
    if (!mayDiscard())
        return false;
    m_lpDoc->newDocument();
    updateTitle();
    return true;
}

bool ZOR_ConfigWindow::openFile(const QString& qsFileName)
{
    if (!mayDiscard())
        return false;
    if (!m_lpDoc->load(qsFileName)) {
        QMessageBox::warning(this, text("cfgwin_015"), m_lpDoc->errorString());
        return false;
    }
    addRecent(qsFileName);
    updateTitle();
    ui->statusbar->showMessage(text("cfgwin_020").arg(QDir::toNativeSeparators(qsFileName)));
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
        qsFile = QFileDialog::getSaveFileName(this, ui->action_SaveAs->text(), m_lpDoc->fileName(), text("cfgwin_017"));
        if (qsFile.isEmpty())
            return false;
        if (QFileInfo(qsFile).suffix().isEmpty())
            qsFile = ensureSuffix(qsFile, QStringLiteral(".xml"));
    }
    if (!m_lpDoc->save(qsFile)) {
        QMessageBox::warning(this, text("cfgwin_016"), m_lpDoc->errorString());
        return false;
    }
    addRecent(qsFile);
    updateTitle();
    ui->statusbar->showMessage(text("cfgwin_019").arg(QDir::toNativeSeparators(qsFile)));
    return true;
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
    ui->statusbar->showMessage(text("cfgwin_018")
                                   .arg(profile.nSimCount)
                                   .arg(profile.nCanVariant == ZOR_TerminalProfile::CanBt ? QStringLiteral("bt")
                                                                                           : QStringLiteral("ext"))
                                   .arg(profile.nBluetoothSlots));
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

void ZOR_ConfigWindow::closeEvent(QCloseEvent* event)
{
    if (mayDiscard())
        event->accept();
    else
        event->ignore();
}

bool ZOR_ConfigWindow::saveScreenshot(const QString& qsFileName)
{
    show();
    raise();
    QApplication::processEvents();
    return grab().save(qsFileName);
}
