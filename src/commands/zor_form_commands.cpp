#include "commands/zor_form_commands.h"

#include "commands/zor_commandhistory.h"
#include "commands/zor_consoleprotocol.h"
#include "commands/zor_dialog_commands.h"
#include "commands/zor_model_log.h"
#include "commands/zor_widget_log.h"
#include "module/zor_commands.h"
#include "module/zor_cp1251.h"
#include "module/zor_language.h"
#include "ui_zor_form_commands.h"

#include <QAction>
#include <QDir>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <utility>

namespace {

const int kRavelMode = 5;

} // namespace

ZOR_Form_Commands::ZOR_Form_Commands(QWidget* parent)
    : QDialog(parent)
    , ui(new Ui::ZOR_Form_Commands)
{
    initForm();
}

ZOR_Form_Commands::~ZOR_Form_Commands()
{
    delete lpHistory;
    delete ui;
}

ZOR_Model_Log* ZOR_Form_Commands::logModel() const
{
    return ui->widget_Log->model();
}

ZOR_Widget_Log* ZOR_Form_Commands::logWidget() const
{
    return ui->widget_Log;
}

void ZOR_Form_Commands::initForm()
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() | Qt::WindowMaximizeButtonHint | Qt::WindowMinimizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    ui->comboBox_Ravel_Cmd_3_Freq->addItems(ZOR_ConsoleProtocol::nmeaRateCaptions());
    ui->radioButton_Ravel_Cmd_1_PZ->setText(QStringLiteral("ПЗ-90.11"));
    ui->radioButton_Ravel_Cmd_1_WGS->setText(QStringLiteral("WGS-84"));
    ui->radioButton_Ravel_Cmd_2_GPS->setText(QStringLiteral("GPS"));
    ui->radioButton_Ravel_Cmd_2_GLONASS->setText(QStringLiteral("ГЛОНАСС"));
    ui->radioButton_Ravel_Cmd_2_GPSGLONASS->setText(QStringLiteral("ГЛОНАСС+GPS"));
    ui->radioButton_Ravel_Cmd_1_WGS->setChecked(true);
    ui->radioButton_Ravel_Cmd_2_GPSGLONASS->setChecked(true);

    ui->toolButton_ListCommands_Edit->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/edit.png")));
    ui->toolButton_ListCommands_Add->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/add.png")));
    actionSave = new QAction(QIcon(QStringLiteral(":/Pic/Resources/Image/save.png")), QString(), this);
    actionSaveAs = new QAction(QIcon(QStringLiteral(":/Pic/Resources/Image/save_as.png")), QString(), this);
    auto* menu = new QMenu(this);
    menu->addAction(actionSave);
    menu->addAction(actionSaveAs);
    ui->toolButton_ListCommands_Add->setMenu(menu);

    initFixedCommands();
    connect(ui->pushButton_Send_Cmd_Any, &QAbstractButton::clicked, this, &ZOR_Form_Commands::sendFreeCommand);
    // Enter in the command line is the send button's click and nothing
    // else: a default button of the dialog would send the command again.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        if (button->window() != this)
            continue;
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    connect(ui->lineEdit_Cmd_Any, &QLineEdit::returnPressed, ui->pushButton_Send_Cmd_Any, &QAbstractButton::click);
    lpHistory = new ZOR_CommandHistory;
    if (!lpHistory->load(ZOR_CommandHistory::defaultPath())) {
        // A history that is there but cannot be read is not written over.
        bHistoryKept = false;
        tellPathFault(QStringLiteral("path_002"), ZOR_CommandHistory::defaultPath(), lpHistory->errorString());
    }
    ui->lineEdit_Cmd_Any->installEventFilter(this);

    timerRepeat = new QTimer(this);
    connect(timerRepeat, &QTimer::timeout, this, &ZOR_Form_Commands::sendRepeated);
    connect(ui->checkBox_Repeat, &QAbstractButton::toggled, this, &ZOR_Form_Commands::slot_toggled_CheckBox_Repeat);
    ui->spinBox_RepeatCount->setSpecialValueText(QStringLiteral("∞"));

    connect(ui->checkBox_IccId_Sim_1, &QAbstractButton::toggled, this,
        &ZOR_Form_Commands::slot_toggled_CheckBox_IccId_Sim_1);
    connect(ui->checkBox_IccId_Sim_2, &QAbstractButton::toggled, this,
        &ZOR_Form_Commands::slot_toggled_CheckBox_IccId_Sim_2);

    connect(ui->comboBox_ListCommands, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Commands::slot_currentIndexChanged_ComboBox_ListCommands);
    connect(ui->lineEdit_Cmd_Any, &QLineEdit::textChanged, this, &ZOR_Form_Commands::slot_textChanged_LineEdit_Cmd_Any);
    connect(actionSave, &QAction::triggered, this, &ZOR_Form_Commands::slot_triggered_Action_Save);
    connect(actionSaveAs, &QAction::triggered, this, &ZOR_Form_Commands::slot_triggered_Action_SaveAs);
    connect(ui->toolButton_ListCommands_Edit, &QAbstractButton::clicked, this,
        &ZOR_Form_Commands::slot_pressed_ToolButton_ListCommands_Edit);
    lpDialogCommands = new ZOR_Dialog_Commands(this);
    connect(lpDialogCommands, &ZOR_Dialog_Commands::signal_ListCommands_Change, this,
        &ZOR_Form_Commands::slot_ListCommands_Change);

    connect(this, &QDialog::finished, this, &ZOR_Form_Commands::slot_finished_Form);

    const bool bRavel = lpGlobalLib && lpGlobalLib->getConfiguratorMode() == kRavelMode;
    ui->groupBox_Ravel->setVisible(bRavel);
    ui->groupBox_Cmd_Main->setVisible(!bRavel);

    // Nothing can be sent before the host reports a terminal.
    setSendEnabled(false);

    translateForm();
    slot_ListCommands_Change();
    slot_toggled_CheckBox_IccId_Sim_1(false);
    slot_toggled_CheckBox_IccId_Sim_2(false);
}

// Fixed commands: one button, one text.
void ZOR_Form_Commands::initFixedCommands()
{
    using Protocol = ZOR_ConsoleProtocol;
    const std::pair<QAbstractButton*, std::function<QString()>> fixedCommands[] = {
        {ui->pushButton_Send_Ravel_Cmd_1, [this] { return commandCoordSystem(); }},
        {ui->pushButton_Send_Ravel_Cmd_2, [this] { return commandSatSystems(); }},
        {ui->pushButton_Send_Ravel_Cmd_3,
            [this] { return Protocol::nmeaRateCommand(ui->comboBox_Ravel_Cmd_3_Freq->currentIndex()); }},
        {ui->pushButton_Send_Ravel_Cmd_4,
            [this] { return Protocol::elevationCommand(ui->spinBox_Ravel_Cmd_4_Angle->value()); }},
        {ui->pushButton_Send_Ravel_Cmd_5, [] { return Protocol::coldStartCommand(); }},
        {ui->pushButton_TmiSms_On, [] { return Protocol::smsTelemetryCommand(true); }},
        {ui->pushButton_TmiSms_Off, [] { return Protocol::smsTelemetryCommand(false); }},
        {ui->pushButton_Balance, [this] { return Protocol::balanceCommand(ui->lineEdit_Balance_USSD->text()); }},
        {ui->pushButton_IccId,
            [this] {
                return Protocol::iccIdCommand(
                    ui->checkBox_IccId_Sim_1->isChecked(), ui->checkBox_IccId_Sim_2->isChecked());
            }},
    };
    for (const auto& command : fixedCommands) {
        const std::function<QString()> text = command.second;
        connect(command.first, &QAbstractButton::clicked, this, [this, text] { sendCommandText(text()); });
    }
}

void ZOR_Form_Commands::translateForm()
{
    const bool bRavel = lpGlobalLib && lpGlobalLib->getConfiguratorMode() == kRavelMode;
    qsWindowTitle = zorTr(QLatin1String(bRavel ? "mdln_002" : "mdln_001"));
    setWindowTitle(qsWindowTitle);

    const std::pair<QAbstractButton*, const char*> buttons[] = {
        {ui->pushButton_Send_Cmd_Any, "cons_001"},
        {ui->pushButton_Send_Ravel_Cmd_1, "cons_001"},
        {ui->pushButton_Send_Ravel_Cmd_2, "cons_001"},
        {ui->pushButton_Send_Ravel_Cmd_3, "cons_001"},
        {ui->pushButton_Send_Ravel_Cmd_4, "cons_001"},
        {ui->pushButton_Send_Ravel_Cmd_5, "cons_023"},
        {ui->pushButton_TmiSms_On, "cons_010"},
        {ui->pushButton_TmiSms_Off, "cons_011"},
        {ui->pushButton_Balance, "cons_013"},
        {ui->checkBox_IccId_Sim_1, "cons_015"},
        {ui->checkBox_IccId_Sim_2, "cons_016"},
        {ui->pushButton_IccId, "cons_017"},
        {ui->checkBox_Repeat, "cons_056"},
    };
    for (const auto& button : buttons)
        button.first->setText(zorTr(QLatin1String(button.second)));
    const std::pair<QLabel*, const char*> labels[] = {
        {ui->label_Ravel_Cmd_1, "cons_004"},
        {ui->label_Ravel_Cmd_2, "cons_005"},
        {ui->label_Ravel_Cmd_3, "cons_006"},
        {ui->label_Ravel_Cmd_4, "cons_007"},
        {ui->label_Ravel_Cmd_5, "cons_008"},
        {ui->label_TmiSms, "cons_009"},
        {ui->label_Balance, "cons_012"},
        {ui->label_IccId, "cons_014"},
        {ui->label_RepeatCount, "cons_058"},
    };
    for (const auto& label : labels)
        label.first->setText(zorTr(QLatin1String(label.second)));
    const std::pair<QWidget*, const char*> toolTips[] = {
        {ui->toolButton_ListCommands_Edit, "cons_020"},
        {ui->toolButton_ListCommands_Add, "cons_021"},
        {ui->lineEdit_Cmd_Any, "cons_022"},
        {ui->scrollArea_Macros, "cons_070"},
    };
    for (const auto& toolTip : toolTips)
        toolTip.first->setToolTip(zorTr(QLatin1String(toolTip.second)));
    ui->spinBox_RepeatPeriod->setSuffix(zorTr(QStringLiteral("cons_057")));
    ui->groupBox_Ravel->setTitle(zorTr(QStringLiteral("cons_002")));
    ui->groupBox_Cmd_Main->setTitle(zorTr(QStringLiteral("cons_003")));
    ui->widget_Log->translate();
    updateRepeatStatus();

    if (ui->comboBox_ListCommands->count() > 0)
        ui->comboBox_ListCommands->setItemText(0, zorTr(QStringLiteral("mdln_041")));
    // The shipped list has a file per language; a change rereads it and
    // refills the combo box through the list-change signal, which empties
    // the command line: a line typed but not sent stays as it was.
    if (lpDialogCommands) {
        const QString qsLine = ui->lineEdit_Cmd_Any->text();
        lpDialogCommands->translateForm();
        lpDialogCommands->reloadIfLanguageChanged();
        if (ui->lineEdit_Cmd_Any->text() != qsLine)
            ui->lineEdit_Cmd_Any->setText(qsLine);
    }
    actionSave->setText(zorTr(QLatin1String(ui->comboBox_ListCommands->currentIndex() > 0 ? "wrd_039" : "wrd_038")));
    actionSaveAs->setText(zorTr(QStringLiteral("wrd_042")));
}

// The send button and the RAVEL commands work only while a terminal is
// connected, and a repeat stops with the connection. The SIM commands and
// the macros stay usable; what they send then is logged as not sent.
void ZOR_Form_Commands::setSendEnabled(bool bEnabled)
{
    bConnected = bEnabled;
    ui->pushButton_Send_Cmd_Any->setEnabled(bEnabled);
    ui->groupBox_Ravel->setEnabled(bEnabled);
    if (!bEnabled)
        stopRepeat();
}

// ---- Sending ----------------------------------------------------------------

// Every command is logged as sent and handed to the host. Without a
// terminal the host has nowhere to send it: the log says so.
void ZOR_Form_Commands::sendCommand(const QByteArray& bytes)
{
    setData(ZOR_Model_Log::DirectionOut, bytes);
    if (lpGlobalLib)
        lpGlobalLib->sendMessageToDevice(bytes);
    if (!bConnected || !lpGlobalLib) {
        setData(-1, QByteArrayLiteral("NOT SENT"));
        ui->widget_Log->showNotice(QStringLiteral("cons_055"));
    } else {
        ui->widget_Log->showNotice(QString());
    }
}

// The line is emptied once sent (Up brings it back), so that the next
// command is never joined to it.
void ZOR_Form_Commands::sendFreeCommand()
{
    const QString qsLine = ui->lineEdit_Cmd_Any->text();
    if (!confirmSend(qsLine))
        return;
    if (ui->checkBox_Repeat->isChecked() && !qsLine.isEmpty()) {
        qsRepeatCommand = qsLine;
        startRepeat(ui->spinBox_RepeatPeriod->value(), ui->spinBox_RepeatCount->value());
    } else {
        sendCommand(getUniCommand(qsLine));
    }
    if (qsLine.isEmpty())
        return;
    lpHistory->add(qsLine);
    saveHistory();
    ui->lineEdit_Cmd_Any->clear();
}

void ZOR_Form_Commands::saveHistory()
{
    if (!bHistoryKept)
        return;
    const QString qsPath = ZOR_CommandHistory::defaultPath();
    if (lpHistory->save(qsPath)) {
        bHistoryFailureTold = false;
    } else if (!bHistoryFailureTold) {
        // Said once until a save works again, not after every command; the
        // history stays whole in memory meanwhile.
        bHistoryFailureTold = true;
        tellPathFault(QStringLiteral("path_001"), qsPath, lpHistory->errorString());
    }
}

void ZOR_Form_Commands::tellPathFault(const QString& qsKey, const QString& qsPath, const QString& qsReason)
{
    ZOR_Dialog_XmlList::ask(this, QMessageBox::Warning, QStringLiteral("%1!").arg(zorTr(QStringLiteral("wrd_005"))),
        zorTr(qsKey).arg(QDir::toNativeSeparators(qsPath), qsReason), {zorTr(QStringLiteral("wrd_003"))});
}

// The saved list marks the commands that reset the terminal or its
// settings; those are sent only when the user says so.
bool ZOR_Form_Commands::confirmSend(const QString& qsCommand)
{
    const ZOR_Command* command = lpDialogCommands->getCommand4Command(qsCommand);
    if (!command || !command->needsConfirm())
        return true;
    const QString qsText = zorTr(QStringLiteral("cons_066")).arg(qsCommand, command->getName());
    return ZOR_Dialog_XmlList::ask(this, QMessageBox::Warning, windowTitle(), qsText,
               {zorTr(QStringLiteral("cons_067")), zorTr(QStringLiteral("cons_068"))})
        == 0;
}

void ZOR_Form_Commands::startRepeat(int nPeriodMs, int nCount)
{
    if (qsRepeatCommand.isEmpty())
        qsRepeatCommand = ui->lineEdit_Cmd_Any->text();
    nRepeatCount = qMax(0, nCount);
    nRepeatSent = 0;
    timerRepeat->start(qMax(1, nPeriodMs));
    sendRepeated();
}

void ZOR_Form_Commands::stopRepeat()
{
    timerRepeat->stop();
    qsRepeatCommand.clear();
    updateRepeatStatus();
}

bool ZOR_Form_Commands::isRepeating() const
{
    return timerRepeat->isActive();
}

void ZOR_Form_Commands::sendRepeated()
{
    sendCommand(getUniCommand(qsRepeatCommand));
    ++nRepeatSent;
    if (nRepeatCount > 0 && nRepeatSent >= nRepeatCount) {
        timerRepeat->stop();
        qsRepeatCommand.clear();
    }
    updateRepeatStatus();
}

void ZOR_Form_Commands::updateRepeatStatus()
{
    if (nRepeatSent == 0) {
        ui->label_RepeatStatus->clear();
        return;
    }
    ui->label_RepeatStatus->setText(nRepeatCount > 0
            ? zorTr(QStringLiteral("cons_059")).arg(nRepeatSent).arg(nRepeatCount)
            : zorTr(QStringLiteral("cons_060")).arg(nRepeatSent));
}

void ZOR_Form_Commands::slot_toggled_CheckBox_Repeat(bool bChecked)
{
    if (!bChecked)
        stopRepeat();
}

// One button per saved command: a click sends it as the line would.
void ZOR_Form_Commands::fillMacroButtons()
{
    QLayout* layout = ui->widget_Macros->layout();
    for (QToolButton* button : ui->widget_Macros->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly))
        delete button;
    for (const ZOR_Command* command : lpDialogCommands->commands()) {
        auto* button = new QToolButton(ui->widget_Macros);
        button->setText(command->getName());
        button->setToolTip(command->getCommand());
        const QString qsCommand = command->getCommand();
        connect(button, &QAbstractButton::clicked, this, [this, qsCommand] {
            if (confirmSend(qsCommand))
                sendCommand(getUniCommand(qsCommand));
        });
        layout->addWidget(button);
    }
    ui->scrollArea_Macros->setVisible(!lpDialogCommands->commands().isEmpty());
    ui->scrollArea_Macros->setFixedHeight(
        ui->widget_Macros->sizeHint().height() + ui->scrollArea_Macros->horizontalScrollBar()->sizeHint().height());
}

void ZOR_Form_Commands::showForm()
{
    if (lpGlobalLib) {
        lpGlobalLib->getDeviceReceive_Start();
        szConfigParam param;
        lpGlobalLib->getDeviceConfigParam(param);
        param.szUssdBalance[sizeof(param.szUssdBalance) - 1] = '\0';
        ui->lineEdit_Balance_USSD->setText(QString::fromLatin1(param.szUssdBalance));
    }
    {
        const QSignalBlocker block1(ui->checkBox_IccId_Sim_1);
        const QSignalBlocker block2(ui->checkBox_IccId_Sim_2);
        ui->checkBox_IccId_Sim_1->setChecked(false);
        ui->checkBox_IccId_Sim_2->setChecked(false);
    }
    slot_toggled_CheckBox_IccId_Sim_1(false);
    slot_toggled_CheckBox_IccId_Sim_2(false);

    if (ui->comboBox_ListCommands->currentIndex() == 0)
        slot_currentIndexChanged_ComboBox_ListCommands(0);
    else
        ui->comboBox_ListCommands->setCurrentIndex(0);
    ui->toolButton_ListCommands_Add->setEnabled(false);

    show();
    raise();
    activateWindow();
}

void ZOR_Form_Commands::slot_finished_Form(int)
{
    if (lpGlobalLib)
        lpGlobalLib->getDeviceReceive_Stop();
}

void ZOR_Form_Commands::deviceConnect()
{
    setSendEnabled(true);
    ui->widget_Log->showNotice(QString());
    setData(-1, QByteArrayLiteral("CONNECT"));
}

void ZOR_Form_Commands::deviceDisconnect()
{
    setSendEnabled(false);
    setData(-1, QByteArrayLiteral("DISCONNECT"));
}

void ZOR_Form_Commands::deviceReceive(QByteArray* data)
{
    if (!data)
        return;
    setData(ZOR_Model_Log::DirectionIn, *data);
    setReceiveCommand(data);
}

void ZOR_Form_Commands::deviceReceive(const QString& text)
{
    QByteArray bytes = ZOR_Cp1251::encode(text);
    deviceReceive(&bytes);
}

void ZOR_Form_Commands::setData(int direction, const QByteArray& data)
{
    ui->widget_Log->append(direction, data);
}

bool ZOR_Form_Commands::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui->lineEdit_Cmd_Any && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() == Qt::NoModifier || key->modifiers() == Qt::KeypadModifier)
            return commandLineKey(key->key());
    }
    return QDialog::eventFilter(watched, event);
}

// Up/Down walk the history, Esc puts the edited line back. Esc is taken
// here even when there is nothing to restore: in the command line it must
// not close the console.
bool ZOR_Form_Commands::commandLineKey(int nKey)
{
    QString qsText;
    bool bShow = false;
    switch (nKey) {
    case Qt::Key_Up: bShow = lpHistory->older(ui->lineEdit_Cmd_Any->text(), qsText); break;
    case Qt::Key_Down: bShow = lpHistory->newer(qsText); break;
    case Qt::Key_Escape:
        if (lpHistory->restore(qsText))
            ui->lineEdit_Cmd_Any->setText(qsText);
        return true;
    default: return false;
    }
    if (bShow)
        ui->lineEdit_Cmd_Any->setText(qsText);
    return true;
}

void ZOR_Form_Commands::sendCommandText(const QString& qsText)
{
    if (!qsText.isEmpty())
        sendCommand(ZOR_Cp1251::encode(qsText));
}

QString ZOR_Form_Commands::commandCoordSystem() const
{
    const bool bPz = ui->radioButton_Ravel_Cmd_1_PZ->isChecked();
    if (!bPz && !ui->radioButton_Ravel_Cmd_1_WGS->isChecked())
        return QString();
    ZOR_RAVEL_CMND_COORDSYSTEM coordSystem{0};
    if (lpGlobalLib)
        lpGlobalLib->getDeviceRavelCoordSystem(coordSystem);
    return ZOR_ConsoleProtocol::coordSystemCommand(coordSystem.nCoordSystem, bPz);
}

QString ZOR_Form_Commands::commandSatSystems() const
{
    using Systems = ZOR_ConsoleProtocol::SatSystems;
    if (ui->radioButton_Ravel_Cmd_2_GPS->isChecked())
        return ZOR_ConsoleProtocol::satSystemsCommand(Systems::Gps);
    if (ui->radioButton_Ravel_Cmd_2_GLONASS->isChecked())
        return ZOR_ConsoleProtocol::satSystemsCommand(Systems::Glonass);
    return ZOR_ConsoleProtocol::satSystemsCommand(Systems::GpsGlonass);
}

QByteArray ZOR_Form_Commands::getUniCommand(const QString& qsCommand)
{
    return ZOR_ConsoleProtocol::getUniCommand(qsCommand);
}

QString ZOR_Form_Commands::getStrVisibleData(const QByteArray* data)
{
    return data ? ZOR_Model_Log::visibleText(*data) : QString();
}

QString ZOR_Form_Commands::getIccIdType(const QString& qsField)
{
    return ZOR_ConsoleProtocol::getIccIdType(qsField);
}

void ZOR_Form_Commands::setReceiveCommand(QByteArray* data)
{
    if (!data)
        return;
    const ZOR_ConsoleProtocol::IccIdReply reply = ZOR_ConsoleProtocol::parseIccIdReply(*data);
    if (reply.bSim1)
        ui->lineEdit_IccId_Sim_1->setText(reply.qsSim1);
    if (reply.bSim2)
        ui->lineEdit_IccId_Sim_2->setText(reply.qsSim2);
}

void ZOR_Form_Commands::slot_toggled_CheckBox_IccId_Sim_1(bool bChecked)
{
    if (!bChecked)
        ui->lineEdit_IccId_Sim_1->clear();
    ui->lineEdit_IccId_Sim_1->setEnabled(bChecked);
    updateIccIdButton();
}

// Unchecking SIM 2 clears the SIM 1 result and keeps its own text: terminals
// and users rely on it this way.
void ZOR_Form_Commands::slot_toggled_CheckBox_IccId_Sim_2(bool bChecked)
{
    if (!bChecked)
        ui->lineEdit_IccId_Sim_1->clear();
    ui->lineEdit_IccId_Sim_2->setEnabled(bChecked);
    updateIccIdButton();
}

void ZOR_Form_Commands::updateIccIdButton()
{
    ui->pushButton_IccId->setEnabled(ui->checkBox_IccId_Sim_1->isChecked() || ui->checkBox_IccId_Sim_2->isChecked());
}

// ---- Saved command list --------------------------------------------------

void ZOR_Form_Commands::setListCommands(const QStringList& names)
{
    const QString qsText = ui->lineEdit_Cmd_Any->text();
    ui->comboBox_ListCommands->clear();
    ui->comboBox_ListCommands->addItem(zorTr(QStringLiteral("mdln_041")));
    ui->comboBox_ListCommands->addItems(names);
    // Matched against the entry names, not the command texts.
    ui->comboBox_ListCommands->setCurrentText(qsText);
}

void ZOR_Form_Commands::slot_currentIndexChanged_ComboBox_ListCommands(int index)
{
    if (index < 0)
        return;
    setParamCommandType(index == 0 ? QString() : ui->comboBox_ListCommands->itemText(index));
}

void ZOR_Form_Commands::setParamCommandType(const QString& qsName)
{
    const bool bSaved = ui->comboBox_ListCommands->currentIndex() > 0;
    actionSave->setText(zorTr(QLatin1String(bSaved ? "wrd_039" : "wrd_038")));
    actionSaveAs->setEnabled(bSaved);
    const QString qsText = bSaved ? savedCommandText(qsName) : QString();
    qsLoadedCommand = qsText;
    ui->lineEdit_Cmd_Any->setText(qsText);
    ui->toolButton_ListCommands_Add->setEnabled(false);
}

void ZOR_Form_Commands::slot_textChanged_LineEdit_Cmd_Any(const QString& text)
{
    ui->toolButton_ListCommands_Add->setEnabled(text != qsLoadedCommand);
}

void ZOR_Form_Commands::setTypeCommandType(const QString& qsText)
{
    const int index = ui->comboBox_ListCommands->findText(savedCommandName(qsText));
    if (index > 0) {
        // Selecting the entry already selected signals nothing, and the
        // line may have been edited since it was loaded.
        if (index == ui->comboBox_ListCommands->currentIndex())
            setParamCommandType(ui->comboBox_ListCommands->itemText(index));
        else
            ui->comboBox_ListCommands->setCurrentIndex(index);
        return;
    }
    ui->comboBox_ListCommands->setCurrentIndex(0);
    ui->lineEdit_Cmd_Any->setText(qsText);
}

QString ZOR_Form_Commands::savedCommandText(const QString& qsName) const
{
    const ZOR_Command* command = lpDialogCommands->getCommand4Name(qsName);
    return command ? command->getCommand() : QString();
}

QString ZOR_Form_Commands::savedCommandName(const QString& qsText) const
{
    const ZOR_Command* command = lpDialogCommands->getCommand4Command(qsText);
    return command ? command->getName() : QString();
}

void ZOR_Form_Commands::slot_ListCommands_Change()
{
    QStringList names;
    lpDialogCommands->getListCommandsName(names);
    names.removeFirst(); // the free-command entry, which setListCommands adds itself
    setListCommands(names);
    fillMacroButtons();
}

// After a save the combo box has been refilled (and has fallen back to the
// free command unless the line happened to equal a name); the command just
// saved is what the user expects to see.
void ZOR_Form_Commands::selectSavedCommand(const QString& qsName)
{
    if (qsName.isEmpty())
        return;
    const int index = ui->comboBox_ListCommands->findText(qsName, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index <= 0)
        return;
    if (index == ui->comboBox_ListCommands->currentIndex())
        setParamCommandType(qsName);
    else
        ui->comboBox_ListCommands->setCurrentIndex(index);
}

void ZOR_Form_Commands::slot_triggered_Action_Save()
{
    const int index = ui->comboBox_ListCommands->currentIndex();
    if (index <= 0) {
        saveCommandAsNew();
        return;
    }
    selectSavedCommand(
        lpDialogCommands->saveCommand(this, ui->comboBox_ListCommands->itemText(index), ui->lineEdit_Cmd_Any->text()));
}

void ZOR_Form_Commands::slot_triggered_Action_SaveAs()
{
    saveCommandAsNew();
}

void ZOR_Form_Commands::saveCommandAsNew()
{
    selectSavedCommand(lpDialogCommands->saveCommandAs(this, ui->lineEdit_Cmd_Any->text()));
}

void ZOR_Form_Commands::slot_pressed_ToolButton_ListCommands_Edit()
{
    lpDialogCommands->showForm();
}
