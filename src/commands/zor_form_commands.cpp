#include "commands/zor_form_commands.h"

#include "commands/zor_commandhistory.h"
#include "commands/zor_dialog_commands.h"
#include "commands/zor_model_log.h"
#include "module/zor_commands.h"
#include "module/zor_cp1251.h"
#include "module/zor_language.h"
#include "protocol/zor_bits.h"
#include "ui_zor_form_commands.h"

#include <QAction>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScrollBar>
#include <QStyle>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace {

const int kRavelMode = 5;
// Often enough to look live, rare enough to cost little.
const int kLogRefreshMs = 40;

// Dialect of the GNSS receiver (as answered by the host) x coordinate system.
const char* const kCoordSystemCommands[2][2] = {
    {"*!UC GPS,PQPZ90,W,1,0", "*!UC GPS,PQPZ90,W,0,0"}, // PZ, WGS
    {"*!UC GPS,PMTK330,223", "*!UC GPS,PMTK330,0"},
};

// NMEA output rate by the index of comboBox_Ravel_Cmd_3_Freq.
struct NmeaRate {
    const char* qsCaption; // UTF-8
    const char* qsPeriodMs;
};
const NmeaRate kNmeaRates[] = {
    {"1 Гц", "1000"}, {"2 Гц", "500"}, {"5 Гц", "200"}, {"10 Гц", "100"}};

} // namespace

ZOR_Form_Commands::ZOR_Form_Commands(QWidget* parent)
    : QDialog(parent), ui(new Ui::ZOR_Form_Commands)
{
    initForm();
}

ZOR_Form_Commands::~ZOR_Form_Commands()
{
    delete lpHistory;
    delete ui;
}

void ZOR_Form_Commands::initForm()
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() | Qt::WindowMaximizeButtonHint | Qt::WindowMinimizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    modelLog = new ZOR_Model_Log(this);
    timerScroll = new QTimer(this);
    timerScroll->setSingleShot(true);
    timerScroll->setInterval(kLogRefreshMs);
    connect(timerScroll, &QTimer::timeout, this, &ZOR_Form_Commands::showNewLogRows);
    initLogView();

    for (const NmeaRate& rate : kNmeaRates)
        ui->comboBox_Ravel_Cmd_3_Freq->addItem(QString::fromUtf8(rate.qsCaption));
    ui->radioButton_Ravel_Cmd_1_PZ->setText(QStringLiteral("ПЗ-90.11"));
    ui->radioButton_Ravel_Cmd_1_WGS->setText(QStringLiteral("WGS-84"));
    ui->radioButton_Ravel_Cmd_2_GPS->setText(QStringLiteral("GPS"));
    ui->radioButton_Ravel_Cmd_2_GLONASS->setText(QStringLiteral("ГЛОНАСС"));
    ui->radioButton_Ravel_Cmd_2_GPSGLONASS->setText(QStringLiteral("ГЛОНАСС+GPS"));
    ui->radioButton_Ravel_Cmd_1_WGS->setChecked(true);
    ui->radioButton_Ravel_Cmd_2_GPSGLONASS->setChecked(true);

    ui->toolButton_ListCommands_Edit->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/edit.png")));
    ui->toolButton_ListCommands_Add->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/add.png")));
    ui->toolButton_Clear->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/clear.png")));
    actionSave = new QAction(QIcon(QStringLiteral(":/Pic/Resources/Image/save.png")), QString(), this);
    actionSaveAs = new QAction(QIcon(QStringLiteral(":/Pic/Resources/Image/save_as.png")), QString(), this);
    auto* menu = new QMenu(this);
    menu->addAction(actionSave);
    menu->addAction(actionSaveAs);
    ui->toolButton_ListCommands_Add->setMenu(menu);

    // Fixed commands: one button, one text.
    const std::pair<QAbstractButton*, std::function<QString()>> fixedCommands[] = {
        {ui->pushButton_Send_Ravel_Cmd_1, [this] { return commandCoordSystem(); }},
        {ui->pushButton_Send_Ravel_Cmd_2, [this] { return commandSatSystems(); }},
        {ui->pushButton_Send_Ravel_Cmd_3, [this] { return commandNmeaRate(); }},
        {ui->pushButton_Send_Ravel_Cmd_4,
         [this] { return QStringLiteral("*!UC GPS,PMTK311,%1").arg(ui->spinBox_Ravel_Cmd_4_Angle->value()); }},
        {ui->pushButton_Send_Ravel_Cmd_5, [] { return QStringLiteral("*!UC GPS,PMTK104"); }},
        {ui->pushButton_TmiSms_On, [] { return QStringLiteral("*!EDIT PHONES:MODE(1)"); }},
        {ui->pushButton_TmiSms_Off, [] { return QStringLiteral("*!EDIT PHONES:MODE(0)"); }},
        {ui->pushButton_Balance,
         [this] { return QStringLiteral("*?USSD:%1").arg(ui->lineEdit_Balance_USSD->text()); }},
        {ui->pushButton_IccId, [this] { return commandIccId(); }},
    };
    for (const auto& command : fixedCommands) {
        const std::function<QString()> text = command.second;
        connect(command.first, &QAbstractButton::clicked, this,
                [this, text] { sendCommandText(text()); });
    }
    connect(ui->pushButton_Send_Cmd_Any, &QAbstractButton::clicked, this, &ZOR_Form_Commands::sendFreeCommand);
    // Enter in the command line is the send button's click and nothing
    // else: a default button of the dialog would send the command again.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        if (button->window() != this)
            continue;
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    connect(ui->lineEdit_Cmd_Any, &QLineEdit::returnPressed, ui->pushButton_Send_Cmd_Any,
            &QAbstractButton::click);
    lpHistory = new ZOR_CommandHistory;
    if (!lpHistory->load(ZOR_CommandHistory::defaultPath())) {
        // A history that is there but cannot be read is not written over.
        bHistoryKept = false;
        tellPathFault(QStringLiteral("path_002"), ZOR_CommandHistory::defaultPath(), lpHistory->errorString());
    }
    ui->lineEdit_Cmd_Any->installEventFilter(this);
    connect(ui->toolButton_Clear, &QAbstractButton::clicked, modelLog, &ZOR_Model_Log::clear);

    connect(ui->checkBox_IccId_Sim_1, &QAbstractButton::toggled, this,
            &ZOR_Form_Commands::slot_toggled_CheckBox_IccId_Sim_1);
    connect(ui->checkBox_IccId_Sim_2, &QAbstractButton::toggled, this,
            &ZOR_Form_Commands::slot_toggled_CheckBox_IccId_Sim_2);

    connect(ui->comboBox_ListCommands, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ZOR_Form_Commands::slot_currentIndexChanged_ComboBox_ListCommands);
    connect(ui->lineEdit_Cmd_Any, &QLineEdit::textChanged, this,
            &ZOR_Form_Commands::slot_textChanged_LineEdit_Cmd_Any);
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
    ui->pushButton_Send_Cmd_Any->setEnabled(false);
    ui->groupBox_Ravel->setEnabled(false);

    translateForm();
    slot_ListCommands_Change();
    slot_toggled_CheckBox_IccId_Sim_1(false);
    slot_toggled_CheckBox_IccId_Sim_2(false);
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
    };
    for (const auto& button : buttons)
        button.first->setText(zorTr(QLatin1String(button.second)));
    const std::pair<QLabel*, const char*> labels[] = {
        {ui->label_Ravel_Cmd_1, "cons_004"}, {ui->label_Ravel_Cmd_2, "cons_005"},
        {ui->label_Ravel_Cmd_3, "cons_006"}, {ui->label_Ravel_Cmd_4, "cons_007"},
        {ui->label_Ravel_Cmd_5, "cons_008"}, {ui->label_TmiSms, "cons_009"},
        {ui->label_Balance, "cons_012"},     {ui->label_IccId, "cons_014"},
        {ui->label_Log, "cons_018"},
    };
    for (const auto& label : labels)
        label.first->setText(zorTr(QLatin1String(label.second)));
    const std::pair<QWidget*, const char*> toolTips[] = {
        {ui->toolButton_Clear, "cons_019"},
        {ui->toolButton_ListCommands_Edit, "cons_020"},
        {ui->toolButton_ListCommands_Add, "cons_021"},
        {ui->lineEdit_Cmd_Any, "cons_022"},
    };
    for (const auto& toolTip : toolTips)
        toolTip.first->setToolTip(zorTr(QLatin1String(toolTip.second)));
    const std::pair<QAction*, const char*> actions[] = {
        {actionCopy, "cons_025"}, {actionCopyHex, "cons_026"}, {actionFind, "cons_028"},
        {actionSaveLog, "cons_027"}, {actionDetail, "cons_029"},
    };
    for (const auto& action : actions)
        action.first->setText(zorTr(QLatin1String(action.second)));
    ui->toolButton_Find->setText(zorTr(QStringLiteral("cons_028")));
    ui->toolButton_Find->setToolTip(actionFind->text() + QStringLiteral(" (") + actionFind->shortcut().toString(QKeySequence::NativeText) + QLatin1Char(')'));
    ui->toolButton_SaveLog->setToolTip(actionSaveLog->text() + QStringLiteral(" (") + actionSaveLog->shortcut().toString(QKeySequence::NativeText) + QLatin1Char(')'));
    ui->toolButton_Detail->setText(zorTr(QStringLiteral("cons_029")));
    ui->label_Find->setText(zorTr(QStringLiteral("cons_032")));
    ui->toolButton_FindPrev->setToolTip(zorTr(QStringLiteral("cons_033")) + QStringLiteral(" (Shift+Enter)"));
    ui->toolButton_FindNext->setToolTip(zorTr(QStringLiteral("cons_034")) + QStringLiteral(" (Enter)"));
    ui->toolButton_FindClose->setToolTip(zorTr(QStringLiteral("cons_041")));
    ui->checkBox_Filter->setText(zorTr(QStringLiteral("cons_035")));
    ui->plainTextEdit_Detail->setPlaceholderText(zorTr(QStringLiteral("cons_042")));
    {
        const QSignalBlocker block(ui->comboBox_FilterDirection);
        const int nIndex = qMax(0, ui->comboBox_FilterDirection->currentIndex());
        ui->comboBox_FilterDirection->clear();
        ui->comboBox_FilterDirection->addItem(zorTr(QStringLiteral("cons_036")), -1);
        ui->comboBox_FilterDirection->addItem(QStringLiteral("IN"), int(ZOR_Model_Log::DirectionIn));
        ui->comboBox_FilterDirection->addItem(QStringLiteral("OUT"), int(ZOR_Model_Log::DirectionOut));
        ui->comboBox_FilterDirection->setCurrentIndex(nIndex);
    }
    followLog();
    ui->groupBox_Ravel->setTitle(zorTr(QStringLiteral("cons_002")));
    ui->groupBox_Cmd_Main->setTitle(zorTr(QStringLiteral("cons_003")));

    if (ui->comboBox_ListCommands->count() > 0)
        ui->comboBox_ListCommands->setItemText(0, zorTr(QStringLiteral("mdln_041")));
    // The shipped list has a file per language; a change rereads it and
    // refills the combo box through the list-change signal.
    if (lpDialogCommands) {
        lpDialogCommands->translateForm();
        lpDialogCommands->reloadIfLanguageChanged();
    }
    actionSave->setText(zorTr(QLatin1String(ui->comboBox_ListCommands->currentIndex() > 0 ? "wrd_039" : "wrd_038")));
    actionSaveAs->setText(zorTr(QStringLiteral("wrd_042")));
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
    ui->pushButton_Send_Cmd_Any->setEnabled(true);
    ui->groupBox_Ravel->setEnabled(true);
    setData(-1, QByteArrayLiteral("CONNECT"));
}

void ZOR_Form_Commands::deviceDisconnect()
{
    ui->pushButton_Send_Cmd_Any->setEnabled(false);
    ui->groupBox_Ravel->setEnabled(false);
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
    modelLog->append(direction, data, QDateTime::currentMSecsSinceEpoch());
    scrollLogLater();
}

// A row shows at once when the log is quiet. Under a stream of blocks the
// view repaints, and scrolls to the newest row, once per kLogRefreshMs:
// it would repaint whole on every new row otherwise, and that costs far
// more than the row itself (scrolling per row also grows with the log).
void ZOR_Form_Commands::scrollLogLater()
{
    if (timerScroll->isActive()) {
        ui->treeWidget->setUpdatesEnabled(false);
        return;
    }
    followLog();
    timerScroll->start();
}

void ZOR_Form_Commands::showNewLogRows()
{
    if (ui->treeWidget->updatesEnabled())
        return;
    ui->treeWidget->setUpdatesEnabled(true);
    followLog();
    timerScroll->start();
}

// The view follows new rows only while it stands at the bottom; a user who
// scrolled up to read is left there and told how many rows came since.
void ZOR_Form_Commands::followLog()
{
    if (bFollowLog) {
        ui->treeWidget->scrollToBottom();
        return;
    }
    const int nNew = modelLog->rowCount() - nRowsSeen;
    ui->toolButton_NewRows->setVisible(nNew > 0);
    if (nNew > 0)
        ui->toolButton_NewRows->setText(QStringLiteral("▼ ") + zorTr(QStringLiteral("cons_024")).arg(nNew));
}

void ZOR_Form_Commands::slot_valueChanged_LogScrollBar(int value)
{
    if (nLogShiftFrom >= 0)
        return; // rows come or go above: not the reader's doing
    const QScrollBar* bar = ui->treeWidget->verticalScrollBar();
    const bool bAtBottom = value >= bar->maximum();
    if (bAtBottom == bFollowLog)
        return;
    bFollowLog = bAtBottom;
    nRowsSeen = modelLog->rowCount();
    if (bFollowLog)
        ui->toolButton_NewRows->hide();
}

// Past its cap the log drops its oldest rows and puts a row saying so at
// the top. A reader who scrolled up keeps the rows in view, and the count
// of new rows below stays right.
void ZOR_Form_Commands::shiftLogRows(int nRows)
{
    const int nFrom = nLogShiftFrom;
    nLogShiftFrom = -1;
    nRowsSeen = qMax(0, nRowsSeen + nRows);
    if (!bFollowLog && nFrom >= 0) {
        QTableView* view = ui->treeWidget;
        view->verticalScrollBar()->setValue(qMax(0, nFrom + nRows * view->verticalHeader()->defaultSectionSize()));
    }
}

void ZOR_Form_Commands::slot_clicked_ToolButton_NewRows()
{
    ui->treeWidget->scrollToBottom();
    bFollowLog = true;
    ui->toolButton_NewRows->hide();
}

void ZOR_Form_Commands::initLogView()
{
    QTableView* view = ui->treeWidget;
    view->setModel(modelLog);
    view->verticalHeader()->setVisible(false);
    // Per-item scrolling looks up the row position from the first row on
    // each layout, which makes a long log slower with every row.
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    const QFontMetrics rowMetrics(modelLog->font());
    view->verticalHeader()->setDefaultSectionSize(qMax(view->fontMetrics().height(), rowMetrics.height()) + 4);
    // At least the widths the log was designed with, more where the fonts
    // of this machine need it: a cut time or header reads wrong.
    QHeaderView* header = view->horizontalHeader();
    header->setTextElideMode(Qt::ElideNone);
    header->setStretchLastSection(true);
    const int nPadding = 2 * view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 12;
    for (int column = 0; column < ZOR_Model_Log::ColumnCount; ++column) {
        int nWidth = qMax(ZOR_Model_Log::initialWidth(column),
                          header->fontMetrics().horizontalAdvance(ZOR_Model_Log::headerText(column)) + 2 * nPadding);
        if (column == ZOR_Model_Log::ColumnTime)
            nWidth = qMax(nWidth, rowMetrics.horizontalAdvance(QStringLiteral("00.00.0000 00:00:00")) + nPadding);
        view->setColumnWidth(column, nWidth);
    }
    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &ZOR_Form_Commands::slot_valueChanged_LogScrollBar);
    ui->toolButton_NewRows->hide();
    connect(ui->toolButton_NewRows, &QAbstractButton::clicked, this, &ZOR_Form_Commands::slot_clicked_ToolButton_NewRows);
    const auto keepLogPlace = [this] { nLogShiftFrom = ui->treeWidget->verticalScrollBar()->value(); };
    connect(modelLog, &QAbstractItemModel::rowsAboutToBeRemoved, this, keepLogPlace);
    connect(modelLog, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) { shiftLogRows(first - last - 1); });
    connect(modelLog, &QAbstractItemModel::rowsAboutToBeInserted, this, [this, keepLogPlace](const QModelIndex&, int first) {
        if (first < modelLog->rowCount())
            keepLogPlace();
    });
    connect(modelLog, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first, int last) {
        if (nLogShiftFrom >= 0)
            shiftLogRows(last - first + 1);
    });
    connect(modelLog, &QAbstractItemModel::modelReset, this, [this] {
        bFollowLog = true;
        nRowsSeen = 0;
        ui->toolButton_NewRows->hide();
        updateDetail();
    });

    ui->plainTextEdit_Detail->setFont(modelLog->font());
    ui->splitter_Log->setStretchFactor(0, 3);
    ui->splitter_Log->setStretchFactor(1, 2);
    ui->plainTextEdit_Detail->hide();
    connect(ui->toolButton_Detail, &QAbstractButton::toggled, this, [this](bool bOn) {
        ui->plainTextEdit_Detail->setVisible(bOn);
        updateDetail();
        // The log got shorter or longer: keep the row in question in view.
        QTimer::singleShot(0, this, [this] {
            if (ui->treeWidget->currentIndex().isValid())
                ui->treeWidget->scrollTo(ui->treeWidget->currentIndex());
            else if (bFollowLog)
                ui->treeWidget->scrollToBottom();
        });
    });
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { updateDetail(); });
    connect(view, &QAbstractItemView::doubleClicked, this, [this] { ui->toolButton_Detail->setChecked(true); });

    // The log's actions: its context menu, and keys while it has the focus
    // (Find and Save work from anywhere in the console).
    const auto addAction = [this](QWidget* owner, Qt::ShortcutContext context, const QKeySequence& keys,
                                  void (ZOR_Form_Commands::*slot)()) {
        auto* action = new QAction(this);
        action->setShortcut(keys);
        action->setShortcutContext(context);
        owner->addAction(action);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    actionCopy = addAction(view, Qt::WidgetWithChildrenShortcut, QKeySequence::Copy, &ZOR_Form_Commands::copyLogRows);
    actionCopyHex = addAction(view, Qt::WidgetWithChildrenShortcut, QKeySequence(), &ZOR_Form_Commands::copyLogRowsHex);
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    view->addAction(separator);
    actionFind = addAction(this, Qt::WindowShortcut, QKeySequence::Find, &ZOR_Form_Commands::showFindBar);
    view->addAction(actionFind);
    actionSaveLog = addAction(this, Qt::WindowShortcut, QKeySequence::Save, &ZOR_Form_Commands::saveLogAs);
    view->addAction(actionSaveLog);
    actionDetail = new QAction(this);
    actionDetail->setCheckable(true);
    connect(actionDetail, &QAction::toggled, ui->toolButton_Detail, &QAbstractButton::setChecked);
    connect(ui->toolButton_Detail, &QAbstractButton::toggled, actionDetail, &QAction::setChecked);
    view->addAction(actionDetail);
    ui->toolButton_SaveLog->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/save.png")));
    connect(ui->toolButton_SaveLog, &QAbstractButton::clicked, this, &ZOR_Form_Commands::saveLogAs);
    connect(ui->toolButton_Find, &QAbstractButton::clicked, this, &ZOR_Form_Commands::showFindBar);

    view->installEventFilter(this);
    ui->widget_Find->hide();
    ui->lineEdit_Find->installEventFilter(this);
    connect(ui->lineEdit_Find, &QLineEdit::returnPressed, this, [this] { findInLog(true); });
    connect(ui->toolButton_FindNext, &QAbstractButton::clicked, this, [this] { findInLog(true); });
    connect(ui->toolButton_FindPrev, &QAbstractButton::clicked, this, [this] { findInLog(false); });
    connect(ui->toolButton_FindClose, &QAbstractButton::clicked, this, &ZOR_Form_Commands::hideFindBar);
    connect(ui->lineEdit_Find, &QLineEdit::textChanged, this, [this] {
        ui->label_FindStatus->clear();
        if (ui->checkBox_Filter->isChecked())
            applyLogFilter();
    });
    connect(ui->checkBox_Filter, &QAbstractButton::toggled, this, &ZOR_Form_Commands::applyLogFilter);
    connect(ui->comboBox_FilterDirection, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ZOR_Form_Commands::applyLogFilter);
}

void ZOR_Form_Commands::updateDetail()
{
    if (!ui->plainTextEdit_Detail->isVisible())
        return;
    const QModelIndex current = ui->treeWidget->currentIndex();
    ui->plainTextEdit_Detail->setPlainText(current.isValid() ? modelLog->detailText(current.row()) : QString());
}

QList<int> ZOR_Form_Commands::selectedLogRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : ui->treeWidget->selectionModel()->selectedRows())
        rows << index.row();
    if (rows.isEmpty() && ui->treeWidget->currentIndex().isValid())
        rows << ui->treeWidget->currentIndex().row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ZOR_Form_Commands::copyLogRows()
{
    const QList<int> rows = selectedLogRows();
    if (!rows.isEmpty())
        QGuiApplication::clipboard()->setText(modelLog->rowsAsTsv(rows));
}

void ZOR_Form_Commands::copyLogRowsHex()
{
    const QList<int> rows = selectedLogRows();
    if (!rows.isEmpty())
        QGuiApplication::clipboard()->setText(modelLog->rowsAsHex(rows));
}

void ZOR_Form_Commands::saveLogAs()
{
    const QString qsCsv = zorTr(QStringLiteral("cons_038"));
    const QString qsText = zorTr(QStringLiteral("cons_039"));
    QString qsFilter = qsCsv;
    QString qsPath = QFileDialog::getSaveFileName(
        this, zorTr(QStringLiteral("cons_027")).remove(QChar(0x2026)),
        QStringLiteral("console_%1.csv").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_hhmmss"))),
        qsCsv + QStringLiteral(";;") + qsText, &qsFilter);
    if (qsPath.isEmpty())
        return;
    const bool bText = qsPath.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive)
        || (qsFilter == qsText && !qsPath.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive));
    QString qsError;
    if (!modelLog->saveLog(qsPath, bText ? ZOR_Model_Log::Format::Text : ZOR_Model_Log::Format::Csv, &qsError))
        QMessageBox::warning(this, windowTitle(), zorTr(QStringLiteral("cons_037")).arg(qsPath, qsError));
}

void ZOR_Form_Commands::showFindBar()
{
    ui->widget_Find->show();
    ui->lineEdit_Find->setFocus();
    ui->lineEdit_Find->selectAll();
}

void ZOR_Form_Commands::hideFindBar()
{
    ui->widget_Find->hide();
    {
        const QSignalBlocker blockFilter(ui->checkBox_Filter);
        const QSignalBlocker blockDirection(ui->comboBox_FilterDirection);
        ui->checkBox_Filter->setChecked(false);
        ui->comboBox_FilterDirection->setCurrentIndex(0);
    }
    applyLogFilter();
    ui->treeWidget->setFocus();
}

void ZOR_Form_Commands::findInLog(bool bForward)
{
    const QModelIndex current = ui->treeWidget->currentIndex();
    const int from = current.isValid() ? current.row() : (bForward ? -1 : modelLog->rowCount());
    const int row = modelLog->findRow(ui->lineEdit_Find->text(), from, bForward);
    ui->label_FindStatus->setText(row < 0 ? zorTr(QStringLiteral("cons_040")) : QString());
    if (row < 0)
        return;
    const QModelIndex index = modelLog->index(row, ZOR_Model_Log::ColumnData);
    ui->treeWidget->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    ui->treeWidget->scrollTo(index);
}

void ZOR_Form_Commands::applyLogFilter()
{
    const int nDirection = ui->comboBox_FilterDirection->currentData().isValid()
        ? ui->comboBox_FilterDirection->currentData().toInt()
        : -1;
    const QString qsText = ui->checkBox_Filter->isChecked() ? ui->lineEdit_Find->text() : QString();
    if (nDirection == logFilterDirection && qsText == qsLogFilterText)
        return;
    logFilterDirection = nDirection;
    qsLogFilterText = qsText;
    modelLog->setFilter(nDirection, qsText);
    ui->treeWidget->scrollToBottom();
}

void ZOR_Form_Commands::sendCommand(const QByteArray& bytes)
{
    setData(ZOR_Model_Log::DirectionOut, bytes);
    if (lpGlobalLib)
        lpGlobalLib->sendMessageToDevice(bytes);
}

void ZOR_Form_Commands::sendFreeCommand()
{
    const QString qsLine = ui->lineEdit_Cmd_Any->text();
    sendCommand(getUniCommand(qsLine));
    if (qsLine.isEmpty())
        return;
    lpHistory->add(qsLine);
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
                            zorTr(qsKey).arg(QDir::toNativeSeparators(qsPath), qsReason),
                            {zorTr(QStringLiteral("wrd_003"))});
}

bool ZOR_Form_Commands::eventFilter(QObject* watched, QEvent* event)
{
    // The view copies only its current cell on its own; the log copies rows.
    if (watched == ui->treeWidget && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copyLogRows();
        return true;
    }
    if (watched == ui->lineEdit_Find && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape) {
            hideFindBar();
            return true;
        }
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            && key->modifiers().testFlag(Qt::ShiftModifier)) {
            findInLog(false);
            return true;
        }
    }
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
    case Qt::Key_Up:
        bShow = lpHistory->older(ui->lineEdit_Cmd_Any->text(), qsText);
        break;
    case Qt::Key_Down:
        bShow = lpHistory->newer(qsText);
        break;
    case Qt::Key_Escape:
        if (lpHistory->restore(qsText))
            ui->lineEdit_Cmd_Any->setText(qsText);
        return true;
    default:
        return false;
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
    const int dialect = coordSystem.nCoordSystem;
    if (dialect != 0 && dialect != 1)
        return QString();
    return QLatin1String(kCoordSystemCommands[dialect][bPz ? 0 : 1]);
}

QString ZOR_Form_Commands::commandSatSystems() const
{
    if (ui->radioButton_Ravel_Cmd_2_GPS->isChecked())
        return QStringLiteral("*!UC GPS,PMTK353,1,0,0,0,0");
    if (ui->radioButton_Ravel_Cmd_2_GLONASS->isChecked())
        return QStringLiteral("*!UC GPS,PMTK353,0,1,0,0,0");
    return QStringLiteral("*!UC GPS,PMTK353,1,1,0,0,0");
}

QString ZOR_Form_Commands::commandNmeaRate() const
{
    const int index = ui->comboBox_Ravel_Cmd_3_Freq->currentIndex();
    const bool bKnown = index >= 0 && index < int(std::size(kNmeaRates));
    return QStringLiteral("*!UC GPS,PMTK220,%1")
        .arg(QLatin1String(kNmeaRates[bKnown ? index : 0].qsPeriodMs));
}

QString ZOR_Form_Commands::commandIccId() const
{
    const int mask = (ui->checkBox_IccId_Sim_1->isChecked() ? 1 : 0)
        + (ui->checkBox_IccId_Sim_2->isChecked() ? 2 : 0);
    return QStringLiteral("*?ICCID %1").arg(mask);
}

QByteArray ZOR_Form_Commands::getUniCommand(const QString& qsCommand)
{
    QByteArray bytes;
    bytes.reserve(qsCommand.size());
    const QChar* text = qsCommand.constData();
    const int size = qsCommand.size();
    int pos = 0;
    while (pos < size) {
        const int slash = qsCommand.indexOf(QLatin1Char('\\'), pos);
        if (slash < 0) {
            ZOR_Cp1251::encodeAppend(text + pos, size - pos, bytes);
            break;
        }
        ZOR_Cp1251::encodeAppend(text + pos, slash - pos, bytes);
        if (slash + 1 < size && text[slash + 1] == QLatin1Char('\\')) {
            bytes.append('\\');
            pos = slash + 2;
            continue;
        }
        if (size - slash - 1 < 2) {
            ZOR_Cp1251::encodeAppend(text + slash, size - slash, bytes);
            break;
        }
        const int high = zorHexDigitValue(text[slash + 1]);
        const int low = zorHexDigitValue(text[slash + 2]);
        if (high >= 0 && low >= 0)
            bytes.append(char(high * 16 + low));
        else
            ZOR_Cp1251::encodeAppend(text + slash, 3, bytes);
        pos = slash + 3;
    }
    return bytes;
}

QString ZOR_Form_Commands::getStrVisibleData(const QByteArray* data)
{
    return data ? ZOR_Model_Log::visibleText(*data) : QString();
}

QString ZOR_Form_Commands::getIccIdType(const QString& qsField)
{
    if (qsField.isEmpty())
        return zorTr(QStringLiteral("mdln_029"));
    if (qsField.size() <= 2) {
        bool ok = false;
        const int value = qsField.toInt(&ok);
        static const char* const kKeys[] = {"mdln_030", "mdln_031", "mdln_032"};
        if (ok && value >= 0 && value <= 2)
            return zorTr(QLatin1String(kKeys[value]));
    }
    return qsField;
}

void ZOR_Form_Commands::setReceiveCommand(QByteArray* data)
{
    if (!data)
        return;
    // The terminal ends its replies with a line end; it belongs to no field.
    QString text = ZOR_Cp1251::decode(*data);
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    if (!text.startsWith(QLatin1String("*#ICCID")) || text.size() < 9)
        return;
    const QStringList fields = text.mid(8).split(QLatin1Char(','));
    bool ok = false;
    const int mask = fields.value(0).toInt(&ok, 10);
    if (!ok)
        return;
    switch (mask) {
    case 1:
        ui->lineEdit_IccId_Sim_1->setText(getIccIdType(fields.value(1)));
        break;
    case 2:
        ui->lineEdit_IccId_Sim_2->setText(getIccIdType(fields.value(1)));
        break;
    case 3:
        ui->lineEdit_IccId_Sim_1->setText(getIccIdType(fields.value(1)));
        ui->lineEdit_IccId_Sim_2->setText(getIccIdType(fields.value(2)));
        break;
    default:
        break;
    }
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
    ui->pushButton_IccId->setEnabled(ui->checkBox_IccId_Sim_1->isChecked()
                                    || ui->checkBox_IccId_Sim_2->isChecked());
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
    selectSavedCommand(lpDialogCommands->saveCommand(this, ui->comboBox_ListCommands->itemText(index),
                                                     ui->lineEdit_Cmd_Any->text()));
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
