#include "zor_host_window.h"
#include "ui_zor_host_window.h"

#include "zor_config_window.h"
#include "zor_dialog_serialport.h"
#include "zor_host_module.h"
#include "zor_host_texts.h"
#include "zor_telemetry_window.h"
#include "zor_terminal_link_serial.h"
#include "zor_tmi_texts.h"

#include "module/zor_host_link.h"
#include "module/zor_language.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>

ZOR_HostWindow::ZOR_HostWindow(ZOR_HostModule* lpModule, QWidget* parent)
    : QMainWindow(parent)
    , ui(new Ui::ZOR_HostWindow)
    , m_lpModule(lpModule)
{
    ui->setupUi(this);
    const szLibraryInfo& info = lpModule->libraryInfo();
    ui->label_Module->setText(QStringLiteral("%1 — %2 (%3.%4.%5.%6)")
                                  .arg(QString::fromUtf8(info.szName), QString::fromLocal8Bit(info.szCaption))
                                  .arg(info.nParam1)
                                  .arg(info.nParam2)
                                  .arg(info.nParam3)
                                  .arg(info.nParam4));
    for (QAction* lpAction : lpModule->menuActions()) {
        ui->menu_Modules->addAction(lpAction);
        ui->toolBar_Modules->addAction(lpAction);
    }
    connect(lpModule, &ZOR_HostModule::signal_MenuAdded, this, [this](QAction* lpAction) {
        ui->menu_Modules->addAction(lpAction);
        ui->toolBar_Modules->addAction(lpAction);
    });
    connect(lpModule, &ZOR_HostModule::signal_Status, this,
        [this](const QString& qsText) { ui->statusbar->showMessage(qsText); });

    connect(ui->action_Simulator, &QAction::triggered, this, [this] { connectTerminal(QStringLiteral("simulator")); });
    connect(ui->action_Serial, &QAction::triggered, this, &ZOR_HostWindow::slot_triggered_Serial);
    connect(ui->action_Reconnect, &QAction::triggered, lpModule, &ZOR_HostModule::reconnect);
    connect(ui->action_Disconnect, &QAction::triggered, lpModule, &ZOR_HostModule::disconnectLink);
    connect(ui->action_Quit, &QAction::triggered, this, &QWidget::close);
    connect(ui->action_Config, &QAction::triggered, this, &ZOR_HostWindow::openConfigWindow);
    m_lpTelemetryMenu = menuBar()->insertMenu(ui->menu_Language->menuAction(), new QMenu(this))->menu();
    m_lpTelemetryMenu->addAction(QString(), this, &ZOR_HostWindow::openTelemetryWindow);
    connect(ui->action_Dialect, &QAction::triggered, this, &ZOR_HostWindow::slot_triggered_Dialect);
    connect(ui->action_Ussd, &QAction::triggered, this, &ZOR_HostWindow::slot_triggered_Ussd);
    connect(ui->action_About, &QAction::triggered, this, &ZOR_HostWindow::slot_triggered_About);
    connect(lpModule, &ZOR_HostModule::signal_ModuleMessage, this, &ZOR_HostWindow::slot_ModuleMessage);

    auto* lpLanguages = new QActionGroup(this);
    const QString qsCurrent = QCoreApplication::instance()->property("zor_programLanguage").toString();
    for (QAction* lpAction : {ui->action_Lang_ru, ui->action_Lang_en}) {
        const QString qsLanguage = lpAction->objectName().right(2);
        lpLanguages->addAction(lpAction);
        lpAction->setChecked(qsLanguage == (qsCurrent.isEmpty() ? QStringLiteral("ru") : qsCurrent));
        connect(lpAction, &QAction::triggered, this, [this, qsLanguage] {
            m_lpModule->setLanguage(qsLanguage);
            retranslate();
        });
    }
    retranslate();
}

void ZOR_HostWindow::retranslate()
{
    const std::pair<QMenu*, const char*> menus[] = {{ui->menu_Terminal, "menu_terminal"},
        {ui->menu_Modules, "menu_modules"}, {ui->menu_Settings, "menu_settings"}, {ui->menu_Language, "menu_language"}};
    for (const auto& menu : menus)
        menu.first->setTitle(zorHostText(menu.second));
    ui->menu_Help->setTitle(zorTr(QStringLiteral("hostwin_001")));
    ui->action_About->setText(zorTr(QStringLiteral("hostwin_002")));
    ui->toolBar_Modules->setWindowTitle(zorHostText("menu_modules"));
    const std::pair<QAction*, const char*> actions[] = {{ui->action_Simulator, "act_simulator"},
        {ui->action_Serial, "act_serial"}, {ui->action_Reconnect, "act_reconnect"},
        {ui->action_Disconnect, "act_disconnect"}, {ui->action_Quit, "act_quit"}, {ui->action_Config, "act_config"},
        {ui->action_Dialect, "act_dialect"}, {ui->action_Ussd, "act_ussd"}};
    for (const auto& action : actions)
        action.first->setText(zorHostText(action.second));
    m_lpTelemetryMenu->setTitle(zorTmiText("window_title"));
    m_lpTelemetryMenu->actions().first()->setText(zorTmiText("menu"));
    if (m_lpTelemetry)
        m_lpTelemetry->retranslate();
}

ZOR_HostWindow::~ZOR_HostWindow() = default;

bool ZOR_HostWindow::connectTerminal(const QString& qsLink)
{
    ZOR_TerminalLink* lpLink = ZOR_TerminalLink::create(qsLink);
    if (!lpLink) {
        ui->statusbar->showMessage(zorHostText("status_unknown_link").arg(qsLink));
        return false;
    }
    return m_lpModule->connectLink(lpLink);
}

ZOR_ConfigWindow* ZOR_HostWindow::openConfigWindow()
{
    if (!m_lpConfig)
        m_lpConfig = new ZOR_ConfigWindow(m_lpModule, this);
    m_lpConfig->show();
    m_lpConfig->raise();
    return m_lpConfig;
}

ZOR_TelemetryWindow* ZOR_HostWindow::openTelemetryWindow()
{
    if (!m_lpTelemetry) {
        m_lpTelemetry = new ZOR_TelemetryWindow(this);
        m_lpTelemetry->setConfigSource([this] { return m_lpConfig ? m_lpConfig->document() : nullptr; });
    }
    m_lpTelemetry->show();
    m_lpTelemetry->raise();
    return m_lpTelemetry;
}

void ZOR_HostWindow::closeEvent(QCloseEvent* event)
{
    if (m_lpConfig && !m_lpConfig->close()) {
        event->ignore();
        return;
    }
    m_lpModule->closeWindows();
    event->accept();
}

void ZOR_HostWindow::slot_triggered_Serial()
{
    ZOR_Dialog_SerialPort dialog(this);
    if (dialog.exec() == QDialog::Accepted && !dialog.portName().isEmpty())
        m_lpModule->connectLink(new ZOR_TerminalLink_Serial(dialog.portName(), dialog.baudRate()));
}

void ZOR_HostWindow::slot_triggered_Dialect()
{
    // The two dialects the module knows, and one it must refuse to use.
    const QStringList items{QStringLiteral("0 — PQPZ90"), QStringLiteral("1 — PMTK"),
        QStringLiteral("2 — ") + zorHostText("dialect_unknown")};
    bool bOk = false;
    const QString qsItem = QInputDialog::getItem(this, ui->action_Dialect->text(), ui->action_Dialect->text(), items,
        qBound(0, m_lpModule->coordSystem(), 2), false, &bOk);
    if (bOk)
        m_lpModule->setCoordSystem(items.indexOf(qsItem));
}

void ZOR_HostWindow::slot_triggered_Ussd()
{
    bool bOk = false;
    const QString qsRequest = QInputDialog::getText(
        this, ui->action_Ussd->text(), ui->action_Ussd->text(), QLineEdit::Normal, m_lpModule->ussdRequest(), &bOk);
    if (bOk)
        m_lpModule->setUssdRequest(qsRequest.trimmed());
}

void ZOR_HostWindow::slot_ModuleMessage(int nMessage, unsigned long, unsigned long)
{
    // The host has no terminal to send to: the bytes went nowhere.
    if (nMessage == ZOR_MSG_SEND_TO_DEVICE && !m_lpModule->link())
        ui->statusbar->showMessage(zorTr(QStringLiteral("hostwin_003")));
}

QString ZOR_HostWindow::aboutText()
{
    QStringList lsLanguages;
    for (const char* lpLanguage : {"ru", "en"}) {
        const QString qsPath = ZOR_Language::languageFilePath(QLatin1String(lpLanguage));
        lsLanguages << QStringLiteral("%1: %2%3")
                           .arg(QLatin1String(lpLanguage), QFileInfo(qsPath).absoluteFilePath(),
                               QFileInfo::exists(qsPath) ? QString() : zorTr(QStringLiteral("hostwin_009")));
    }
    const QStringList lsParts = {
        zorTr(QStringLiteral("hostwin_004")).arg(QCoreApplication::applicationName(), QStringLiteral(ZOR_VERSION)),
        QString(),
        zorTr(QStringLiteral("hostwin_005")).arg(QLatin1String(qVersion()), QStringLiteral(QT_VERSION_STR)),
        zorTr(QStringLiteral("hostwin_006")),
        QString(),
        zorTr(QStringLiteral("hostwin_007")),
    };
    return (lsParts + lsLanguages).join(QLatin1Char('\n'));
}

void ZOR_HostWindow::slot_triggered_About()
{
    QMessageBox::about(this, zorTr(QStringLiteral("hostwin_008")), aboutText());
}
