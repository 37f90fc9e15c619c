#include "commands/zor_widget_log.h"

#include "commands/zor_consolelogfile.h"
#include "commands/zor_model_log.h"
#include "module/zor_global.h"
#include "module/zor_language.h"
#include "ui_zor_widget_log.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QFileDialog>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QScrollBar>
#include <QSettings>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTimer>

#include <algorithm>

namespace {

// Often enough to look live, rare enough to cost little.
const int kLogRefreshMs = 40;

const QString kKeyTimeMs = QStringLiteral("log/timeWithMs");
const QString kKeyRecord = QStringLiteral("log/record");
const QString kKeyRecordPath = QStringLiteral("log/recordPath");

QString withShortcut(const QAction* action)
{
    return action->text() + QStringLiteral(" (") + action->shortcut().toString(QKeySequence::NativeText)
        + QLatin1Char(')');
}

} // namespace

// Marks the text being searched for inside the data and hex cells.
class ZOR_Widget_Log::MatchDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString qsNeedle;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool bSearched = index.column() == ZOR_Model_Log::ColumnData
            || index.column() == ZOR_Model_Log::ColumnHex;
        QStyleOptionViewItem opt(option);
        initStyleOption(&opt, index);
        const QString qsText = opt.text;
        int pos = bSearched && !qsNeedle.isEmpty() ? qsText.indexOf(qsNeedle, 0, Qt::CaseInsensitive) : -1;
        if (pos < 0) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        const QWidget* widget = opt.widget;
        QStyle* style = widget ? widget->style() : QApplication::style();
        opt.text.clear();
        style->drawControl(QStyle::CE_ItemViewItem, &opt, painter, widget);
        const int nMargin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
        const QRect rect =
            style->subElementRect(QStyle::SE_ItemViewItemText, &opt, widget).adjusted(nMargin, 0, -nMargin, 0);
        const QFontMetrics metrics(opt.font);
        painter->save();
        painter->setClipRect(rect);
        painter->setFont(opt.font);
        for (; pos >= 0; pos = qsText.indexOf(qsNeedle, pos + qsNeedle.size(), Qt::CaseInsensitive)) {
            const int nLeft = rect.left() + metrics.horizontalAdvance(qsText.left(pos));
            const int nWidth = metrics.horizontalAdvance(qsText.mid(pos, qsNeedle.size()));
            painter->fillRect(QRect(nLeft, rect.top() + 1, nWidth, rect.height() - 2), QColor(255, 190, 0, 150));
        }
        const bool bSelected = opt.state.testFlag(QStyle::State_Selected);
        painter->setPen(opt.palette.color(bSelected ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(rect, int(opt.displayAlignment), qsText);
        painter->restore();
    }
};

ZOR_Widget_Log::ZOR_Widget_Log(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::ZOR_Widget_Log)
{
    ui->setupUi(this);
    m_modelLog = new ZOR_Model_Log(this);
    m_lpLogFile = new ZOR_ConsoleLogFile(this);
    m_timerScroll = new QTimer(this);
    m_timerScroll->setSingleShot(true);
    m_timerScroll->setInterval(kLogRefreshMs);
    connect(m_timerScroll, &QTimer::timeout, this, &ZOR_Widget_Log::showNewLogRows);
    initView();
    initActions();
    initFind();
    ui->toolButton_Clear->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/clear.png")));
    connect(ui->toolButton_Clear, &QAbstractButton::clicked, this, &ZOR_Widget_Log::clearLog);
    ui->toolButton_UndoClear->hide();
    connect(ui->toolButton_UndoClear, &QAbstractButton::clicked, this, &ZOR_Widget_Log::undoClear);
    ui->label_Notice->hide();
    ui->label_Hidden->hide();
    updateColours();
    translate();
    restoreChoices();
}

ZOR_Widget_Log::~ZOR_Widget_Log()
{
    delete ui;
}

QTableView* ZOR_Widget_Log::view() const
{
    return ui->treeWidget;
}

void ZOR_Widget_Log::initView()
{
    QTableView* view = ui->treeWidget;
    view->setModel(m_modelLog);
    m_lpDelegate = new MatchDelegate(view);
    view->setItemDelegate(m_lpDelegate);
    view->verticalHeader()->setVisible(false);
    // Per-item scrolling looks up the row position from the first row on
    // each layout, which makes a long log slower with every row.
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    const QFontMetrics rowMetrics(m_modelLog->font());
    view->verticalHeader()->setDefaultSectionSize(qMax(view->fontMetrics().height(), rowMetrics.height()) + 4);
    view->horizontalHeader()->setTextElideMode(Qt::ElideNone);
    view->horizontalHeader()->setStretchLastSection(true);
    connect(
        view->verticalScrollBar(), &QScrollBar::valueChanged, this, &ZOR_Widget_Log::slot_valueChanged_LogScrollBar);
    ui->toolButton_NewRows->hide();
    connect(ui->toolButton_NewRows, &QAbstractButton::clicked, this, &ZOR_Widget_Log::slot_clicked_ToolButton_NewRows);
    const auto keepLogPlace = [this] { m_nLogShiftFrom = ui->treeWidget->verticalScrollBar()->value(); };
    connect(m_modelLog, &QAbstractItemModel::rowsAboutToBeRemoved, this, keepLogPlace);
    connect(m_modelLog, &QAbstractItemModel::rowsRemoved, this,
        [this](const QModelIndex&, int first, int last) { shiftLogRows(first - last - 1); });
    connect(m_modelLog, &QAbstractItemModel::rowsAboutToBeInserted, this,
        [this, keepLogPlace](const QModelIndex&, int first) {
            if (first < m_modelLog->rowCount())
                keepLogPlace();
        });
    connect(m_modelLog, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first, int last) {
        if (m_nLogShiftFrom >= 0)
            shiftLogRows(last - first + 1);
    });
    connect(m_modelLog, &QAbstractItemModel::rowsRemoved, this, [this] { findCount = FindCount(); });
    connect(m_modelLog, &QAbstractItemModel::modelReset, this, [this] {
        findCount = FindCount();
        m_bFollowLog = true;
        m_nRowsSeen = 0;
        ui->toolButton_NewRows->hide();
        updateDetail();
    });

    ui->plainTextEdit_Detail->setFont(m_modelLog->font());
    // The reply's text reads as text; the pane wraps it, the hex dump keeps its lines.
    ui->plainTextEdit_Detail->setLineWrapMode(QPlainTextEdit::WidgetWidth);
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
            else if (m_bFollowLog)
                ui->treeWidget->scrollToBottom();
        });
    });
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { updateDetail(); });
    connect(view, &QAbstractItemView::doubleClicked, this, [this] { ui->toolButton_Detail->setChecked(true); });
    view->installEventFilter(this);
}

// At least the widths the log was designed with, more where the fonts of
// this machine or the language need it: a cut time or header reads wrong.
void ZOR_Widget_Log::fitColumns()
{
    QTableView* view = ui->treeWidget;
    QHeaderView* header = view->horizontalHeader();
    const QFontMetrics rowMetrics(m_modelLog->font());
    const int nPadding = 2 * view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 12;
    const QString qsTime = m_modelLog->isTimeWithMs() ? QStringLiteral("00.00.0000 00:00:00.000")
                                                      : QStringLiteral("00.00.0000 00:00:00");
    for (int column = 0; column < ZOR_Model_Log::ColumnCount; ++column) {
        int nWidth = qMax(ZOR_Model_Log::initialWidth(column),
            header->fontMetrics().horizontalAdvance(ZOR_Model_Log::headerText(column)) + 2 * nPadding);
        if (column == ZOR_Model_Log::ColumnTime)
            nWidth = qMax(nWidth, rowMetrics.horizontalAdvance(qsTime) + nPadding);
        view->setColumnWidth(column, nWidth);
    }
}

// The log's actions: its context menu, and keys while it has the focus
// (Find and Save work from anywhere in the window).
void ZOR_Widget_Log::initActions()
{
    QTableView* view = ui->treeWidget;
    const auto addAction = [this](QWidget* owner, Qt::ShortcutContext context, const QKeySequence& keys,
                               void (ZOR_Widget_Log::*slot)()) {
        auto* action = new QAction(this);
        action->setShortcut(keys);
        action->setShortcutContext(context);
        owner->addAction(action);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    m_actionCopy = addAction(view, Qt::WidgetWithChildrenShortcut, QKeySequence::Copy, &ZOR_Widget_Log::copyLogRows);
    m_actionCopyHex = addAction(view, Qt::WidgetWithChildrenShortcut, QKeySequence(), &ZOR_Widget_Log::copyLogRowsHex);
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    view->addAction(separator);
    m_actionFind = addAction(this, Qt::WindowShortcut, QKeySequence::Find, &ZOR_Widget_Log::showFindBar);
    view->addAction(m_actionFind);
    m_actionSaveLog = addAction(this, Qt::WindowShortcut, QKeySequence::Save, &ZOR_Widget_Log::saveLogAs);
    view->addAction(m_actionSaveLog);
    m_actionDetail = new QAction(this);
    m_actionDetail->setCheckable(true);
    connect(m_actionDetail, &QAction::toggled, ui->toolButton_Detail, &QAbstractButton::setChecked);
    connect(ui->toolButton_Detail, &QAbstractButton::toggled, m_actionDetail, &QAction::setChecked);
    view->addAction(m_actionDetail);
    ui->toolButton_SaveLog->setIcon(QIcon(QStringLiteral(":/Pic/Resources/Image/save.png")));
    connect(ui->toolButton_SaveLog, &QAbstractButton::clicked, this, &ZOR_Widget_Log::saveLogAs);
    connect(ui->toolButton_Find, &QAbstractButton::clicked, this, &ZOR_Widget_Log::showFindBar);

    m_actionTimeMs = new QAction(this);
    m_actionTimeMs->setCheckable(true);
    connect(m_actionTimeMs, &QAction::toggled, this, &ZOR_Widget_Log::setTimeWithMs);
    m_actionRecord = new QAction(this);
    m_actionRecord->setCheckable(true);
    connect(m_actionRecord, &QAction::toggled, this, &ZOR_Widget_Log::slot_toggled_Action_Record);
    auto* menu = new QMenu(this);
    menu->addAction(m_actionTimeMs);
    menu->addAction(m_actionRecord);
    ui->toolButton_Options->setMenu(menu);
    ui->toolButton_Options->setText(QStringLiteral("⚙"));
}

void ZOR_Widget_Log::initFind()
{
    ui->widget_Find->hide();
    ui->lineEdit_Find->installEventFilter(this);
    connect(ui->lineEdit_Find, &QLineEdit::returnPressed, this, [this] { findInLog(true); });
    connect(ui->toolButton_FindNext, &QAbstractButton::clicked, this, [this] { findInLog(true); });
    connect(ui->toolButton_FindPrev, &QAbstractButton::clicked, this, [this] { findInLog(false); });
    connect(ui->toolButton_FindClose, &QAbstractButton::clicked, this, &ZOR_Widget_Log::hideFindBar);
    connect(ui->lineEdit_Find, &QLineEdit::textChanged, this, [this](const QString& qsText) {
        ui->label_FindStatus->clear();
        m_lpDelegate->qsNeedle = qsText;
        ui->treeWidget->viewport()->update();
        if (ui->checkBox_Filter->isChecked())
            applyLogFilter();
    });
    connect(ui->checkBox_Filter, &QAbstractButton::toggled, this, &ZOR_Widget_Log::applyLogFilter);
    connect(ui->comboBox_FilterDirection, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Widget_Log::applyLogFilter);
}

void ZOR_Widget_Log::translate()
{
    const std::pair<QAction*, const char*> actions[] = {
        {m_actionCopy, "cons_025"},
        {m_actionCopyHex, "cons_026"},
        {m_actionFind, "cons_028"},
        {m_actionSaveLog, "cons_027"},
        {m_actionDetail, "cons_029"},
        {m_actionTimeMs, "cons_061"},
        {m_actionRecord, "cons_062"},
    };
    for (const auto& action : actions)
        action.first->setText(zorTr(QLatin1String(action.second)));
    ui->label_Log->setText(zorTr(QStringLiteral("cons_018")));
    ui->toolButton_Clear->setToolTip(zorTr(QStringLiteral("cons_019")));
    ui->toolButton_Find->setText(zorTr(QStringLiteral("cons_028")));
    ui->toolButton_Find->setToolTip(withShortcut(m_actionFind));
    ui->toolButton_SaveLog->setToolTip(withShortcut(m_actionSaveLog));
    ui->toolButton_Detail->setText(zorTr(QStringLiteral("cons_029")));
    ui->toolButton_Options->setToolTip(zorTr(QStringLiteral("cons_065")));
    ui->toolButton_UndoClear->setText(
        zorTr(QStringLiteral("cons_048")) + QStringLiteral(" · ") + zorTr(QStringLiteral("cons_049")));
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
    m_modelLog->retranslate();
    fitColumns();
    followLog();
    updateHiddenCount();
    showNotice(m_qsNoticeKey, m_qsNoticeArg);
    if (m_lpLogFile->isActive())
        ui->toolButton_Options->setToolTip(zorTr(QStringLiteral("cons_064")).arg(m_lpLogFile->fileName()));
    updateDetail();
}

void ZOR_Widget_Log::showNotice(const QString& qsKey, const QString& qsArg)
{
    m_qsNoticeKey = qsKey;
    m_qsNoticeArg = qsArg;
    QString qsText = qsKey.isEmpty() ? QString() : zorTr(qsKey);
    if (!qsArg.isEmpty())
        qsText = qsText.arg(qsArg);
    ui->label_Notice->setText(qsText);
    ui->label_Notice->setVisible(!qsText.isEmpty());
}

void ZOR_Widget_Log::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        updateColours();
    QWidget::changeEvent(event);
}

// Sent rows in the palette's link colour, received rows in a green as light
// or dark as that colour, so both read on the palette's base.
void ZOR_Widget_Log::updateColours()
{
    const QColor out = palette().color(QPalette::Link);
    const bool bDarkBase = palette().color(QPalette::Base).lightness() < 128;
    const QColor in = QColor::fromHsl(130, 170, bDarkBase ? qMax(150, out.lightness()) : qMin(80, out.lightness()));
    m_modelLog->setDirectionColours(out, in);
    ui->label_Notice->setStyleSheet(QStringLiteral("color: %1").arg(palette().color(QPalette::Link).name()));
}

void ZOR_Widget_Log::append(int direction, const QByteArray& data)
{
    m_modelLog->append(direction, data, QDateTime::currentMSecsSinceEpoch());
    m_lpLogFile->append(direction, data);
    scrollLogLater();
}

// A row shows at once when the log is quiet. Under a stream of blocks the
// view repaints, and scrolls to the newest row, once per kLogRefreshMs:
// it would repaint whole on every new row otherwise, and that costs far
// more than the row itself (scrolling per row also grows with the log).
void ZOR_Widget_Log::scrollLogLater()
{
    if (m_timerScroll->isActive()) {
        ui->treeWidget->setUpdatesEnabled(false);
        return;
    }
    followLog();
    m_timerScroll->start();
}

void ZOR_Widget_Log::showNewLogRows()
{
    if (ui->treeWidget->updatesEnabled())
        return;
    ui->treeWidget->setUpdatesEnabled(true);
    followLog();
    m_timerScroll->start();
}

// The view follows new rows only while it stands at the bottom; a user who
// scrolled up to read is left there and told how many rows came since.
void ZOR_Widget_Log::followLog()
{
    updateHiddenCount();
    if (m_bFollowLog) {
        ui->treeWidget->scrollToBottom();
        return;
    }
    const int nNew = m_modelLog->rowCount() - m_nRowsSeen;
    ui->toolButton_NewRows->setVisible(nNew > 0);
    if (nNew > 0)
        ui->toolButton_NewRows->setText(QStringLiteral("▼ ") + zorTr(QStringLiteral("cons_024")).arg(nNew));
}

void ZOR_Widget_Log::updateHiddenCount()
{
    const bool bFiltered = m_modelLog->isFiltered();
    ui->label_Hidden->setVisible(bFiltered);
    if (!bFiltered)
        return;
    const int nShown = m_modelLog->rowCount() - (m_modelLog->droppedRowCount() > 0 ? 1 : 0);
    ui->label_Hidden->setText(zorTr(QStringLiteral("cons_047")).arg(m_modelLog->totalRowCount() - nShown));
}

void ZOR_Widget_Log::slot_valueChanged_LogScrollBar(int value)
{
    if (m_nLogShiftFrom >= 0)
        return; // rows come or go above: not the reader's doing
    const QScrollBar* bar = ui->treeWidget->verticalScrollBar();
    const bool bAtBottom = value >= bar->maximum();
    if (bAtBottom == m_bFollowLog)
        return;
    m_bFollowLog = bAtBottom;
    m_nRowsSeen = m_modelLog->rowCount();
    if (m_bFollowLog)
        ui->toolButton_NewRows->hide();
}

// Past its cap the log drops its oldest rows and puts a row saying so at
// the top. A reader who scrolled up keeps the rows in view, and the count
// of new rows below stays right.
void ZOR_Widget_Log::shiftLogRows(int nRows)
{
    const int nFrom = m_nLogShiftFrom;
    m_nLogShiftFrom = -1;
    m_nRowsSeen = qMax(0, m_nRowsSeen + nRows);
    if (!m_bFollowLog && nFrom >= 0) {
        QTableView* view = ui->treeWidget;
        view->verticalScrollBar()->setValue(qMax(0, nFrom + nRows * view->verticalHeader()->defaultSectionSize()));
    }
}

void ZOR_Widget_Log::slot_clicked_ToolButton_NewRows()
{
    ui->treeWidget->scrollToBottom();
    m_bFollowLog = true;
    ui->toolButton_NewRows->hide();
}

void ZOR_Widget_Log::updateDetail()
{
    if (!ui->plainTextEdit_Detail->isVisible())
        return;
    const QModelIndex current = ui->treeWidget->currentIndex();
    ui->plainTextEdit_Detail->setPlainText(current.isValid() ? m_modelLog->detailText(current.row()) : QString());
}

QList<int> ZOR_Widget_Log::selectedLogRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : ui->treeWidget->selectionModel()->selectedRows())
        rows << index.row();
    if (rows.isEmpty() && ui->treeWidget->currentIndex().isValid())
        rows << ui->treeWidget->currentIndex().row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ZOR_Widget_Log::copyLogRows()
{
    const QList<int> rows = selectedLogRows();
    if (!rows.isEmpty())
        QGuiApplication::clipboard()->setText(m_modelLog->rowsAsTsv(rows));
}

void ZOR_Widget_Log::copyLogRowsHex()
{
    const QList<int> rows = selectedLogRows();
    if (!rows.isEmpty())
        QGuiApplication::clipboard()->setText(m_modelLog->rowsAsHex(rows));
}

void ZOR_Widget_Log::saveLogAs()
{
    const QString qsCsv = zorTr(QStringLiteral("cons_038"));
    const QString qsText = zorTr(QStringLiteral("cons_039"));
    QString qsFilter = qsCsv;
    QString qsPath = QFileDialog::getSaveFileName(this, zorTr(QStringLiteral("cons_027")).remove(QChar(0x2026)),
        QStringLiteral("console_%1.csv").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_hhmmss"))),
        qsCsv + QStringLiteral(";;") + qsText, &qsFilter);
    if (qsPath.isEmpty())
        return;
    const bool bText = qsPath.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive)
        || (qsFilter == qsText && !qsPath.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive));
    QString qsError;
    if (!m_modelLog->saveLog(qsPath, bText ? ZOR_Model_Log::Format::Text : ZOR_Model_Log::Format::Csv, &qsError))
        QMessageBox::warning(this, window()->windowTitle(), zorTr(QStringLiteral("cons_037")).arg(qsPath, qsError));
}

void ZOR_Widget_Log::showFindBar()
{
    ui->widget_Find->show();
    ui->lineEdit_Find->setFocus();
    ui->lineEdit_Find->selectAll();
    m_lpDelegate->qsNeedle = ui->lineEdit_Find->text();
    ui->treeWidget->viewport()->update();
}

// Closing the search shows every row again and keeps the row selected.
void ZOR_Widget_Log::hideFindBar()
{
    ui->widget_Find->hide();
    {
        const QSignalBlocker blockFilter(ui->checkBox_Filter);
        const QSignalBlocker blockDirection(ui->comboBox_FilterDirection);
        ui->checkBox_Filter->setChecked(false);
        ui->comboBox_FilterDirection->setCurrentIndex(0);
    }
    applyLogFilter();
    m_lpDelegate->qsNeedle.clear();
    ui->treeWidget->viewport()->update();
    ui->treeWidget->setFocus();
}

// Find says which match of how many it stands on, and when it went round.
void ZOR_Widget_Log::findInLog(bool bForward)
{
    const QString qsNeedle = ui->lineEdit_Find->text();
    const QModelIndex current = ui->treeWidget->currentIndex();
    const int from = current.isValid() ? current.row() : (bForward ? -1 : m_modelLog->rowCount());
    const int row = m_modelLog->findRow(qsNeedle, from, bForward);
    if (row < 0) {
        ui->label_FindStatus->setText(zorTr(QStringLiteral("cons_040")));
        return;
    }
    const bool bWrapped = from >= 0 && from < m_modelLog->rowCount() && (bForward ? row <= from : row >= from);
    const int nMatches = countMatches(qsNeedle);
    const int nOrdinal = matchOrdinal(qsNeedle, from, row, bForward, bWrapped);
    QString qsStatus = zorTr(QStringLiteral("cons_044")).arg(nOrdinal).arg(nMatches);
    if (bWrapped)
        qsStatus += QStringLiteral(" — ") + zorTr(QLatin1String(bForward ? "cons_045" : "cons_046"));
    ui->label_FindStatus->setText(qsStatus);
    const QModelIndex index = m_modelLog->index(row, ZOR_Model_Log::ColumnData);
    ui->treeWidget->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    ui->treeWidget->scrollTo(index);
}

int ZOR_Widget_Log::countMatches(const QString& qsNeedle)
{
    if (findCount.qsNeedle != qsNeedle || findCount.nRowsCounted > m_modelLog->rowCount()) {
        findCount = FindCount();
        findCount.qsNeedle = qsNeedle;
    }
    for (int r = qMax(0, findCount.nRowsCounted); r < m_modelLog->rowCount(); ++r) {
        if (m_modelLog->matches(r, qsNeedle))
            ++findCount.nMatches;
    }
    findCount.nRowsCounted = m_modelLog->rowCount();
    return findCount.nMatches;
}

// Stepping from the last match found is one up or down from its place;
// from anywhere else the matches before the row are counted.
int ZOR_Widget_Log::matchOrdinal(const QString& qsNeedle, int nFrom, int nRow, bool bForward, bool bWrapped)
{
    int nOrdinal = 0;
    if (findCount.nLastRow >= 0 && nFrom == findCount.nLastRow) {
        if (bWrapped)
            nOrdinal = bForward ? 1 : findCount.nMatches;
        else
            nOrdinal = findCount.nLastOrdinal + (bForward ? 1 : -1);
    } else {
        for (int r = 0; r <= nRow; ++r)
            nOrdinal += m_modelLog->matches(r, qsNeedle) ? 1 : 0;
    }
    findCount.nLastRow = nRow;
    findCount.nLastOrdinal = nOrdinal;
    return nOrdinal;
}

void ZOR_Widget_Log::applyLogFilter()
{
    const int nDirection = ui->comboBox_FilterDirection->currentData().isValid()
        ? ui->comboBox_FilterDirection->currentData().toInt()
        : -1;
    const QString qsText = ui->checkBox_Filter->isChecked() ? ui->lineEdit_Find->text() : QString();
    if (nDirection == m_logFilterDirection && qsText == m_qsLogFilterText)
        return;
    m_logFilterDirection = nDirection;
    m_qsLogFilterText = qsText;
    const QModelIndex current = ui->treeWidget->currentIndex();
    const qint64 nCurrentId = current.isValid() ? m_modelLog->rowId(current.row()) : -1;
    const int nColumn = current.isValid() ? current.column() : ZOR_Model_Log::ColumnData;
    m_modelLog->setFilter(nDirection, qsText);
    updateHiddenCount();
    const int nRow = nCurrentId >= 0 ? m_modelLog->rowOfId(nCurrentId) : -1;
    if (nRow < 0) {
        ui->treeWidget->scrollToBottom();
        return;
    }
    const QModelIndex index = m_modelLog->index(nRow, nColumn);
    ui->treeWidget->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    ui->treeWidget->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

// Every row held, whatever the filter shows, oldest first.
std::vector<ZOR_Widget_Log::SavedRow> ZOR_Widget_Log::takeAllRows()
{
    const int nDirection = m_logFilterDirection;
    const QString qsText = m_qsLogFilterText;
    if (m_modelLog->isFiltered())
        m_modelLog->setFilter(-1, QString());
    std::vector<SavedRow> saved;
    saved.reserve(size_t(m_modelLog->totalRowCount()));
    for (int row = 0; row < m_modelLog->rowCount(); ++row) {
        if (m_modelLog->rowId(row) < 0)
            continue;
        const QString qsDirection = m_modelLog->text(row, ZOR_Model_Log::ColumnDirection);
        const int direction = qsDirection == QLatin1String("OUT") ? int(ZOR_Model_Log::DirectionOut)
            : qsDirection == QLatin1String("IN")                  ? int(ZOR_Model_Log::DirectionIn)
                                                                  : -1;
        saved.push_back(SavedRow{direction, m_modelLog->time(row), m_modelLog->bytes(row)});
    }
    m_modelLog->clear();
    if (nDirection >= 0 || !qsText.isEmpty())
        m_modelLog->setFilter(nDirection, qsText);
    return saved;
}

void ZOR_Widget_Log::clearLog()
{
    m_undoRows = takeAllRows();
    ui->toolButton_UndoClear->setVisible(!m_undoRows.empty());
    updateHiddenCount();
}

void ZOR_Widget_Log::undoClear()
{
    std::vector<SavedRow> rows = std::move(m_undoRows);
    m_undoRows.clear();
    const std::vector<SavedRow> since = takeAllRows();
    for (const std::vector<SavedRow>* part : {static_cast<const std::vector<SavedRow>*>(&rows), &since}) {
        for (const SavedRow& row : *part)
            m_modelLog->append(row.nDirection, row.data, row.nTime);
    }
    ui->toolButton_UndoClear->hide();
    followLog();
}

QString ZOR_Widget_Log::choicesPath()
{
    return appUserDataDirectory() + QStringLiteral("/Localization/Temp/commands_console.ini");
}

// A recording that cannot start again (the folder is gone) says so in the
// log's header and stays off; the kept choice is left for the next time.
void ZOR_Widget_Log::restoreChoices()
{
    const QSettings settings(choicesPath(), QSettings::IniFormat);
    m_bRestoring = true;
    setTimeWithMs(settings.value(kKeyTimeMs, false).toBool());
    const QString qsPath = settings.value(kKeyRecordPath).toString();
    if (settings.value(kKeyRecord, false).toBool() && !qsPath.isEmpty())
        recordTo(qsPath);
    m_bRestoring = false;
}

void ZOR_Widget_Log::keepChoice(const QString& qsKey, const QVariant& value)
{
    if (m_bRestoring)
        return;
    QSettings settings(choicesPath(), QSettings::IniFormat);
    settings.setValue(qsKey, value);
}

void ZOR_Widget_Log::setTimeWithMs(bool bOn)
{
    if (m_actionTimeMs->isChecked() != bOn)
        m_actionTimeMs->setChecked(bOn); // comes back here
    m_modelLog->setTimeWithMs(bOn);
    fitColumns();
    keepChoice(kKeyTimeMs, bOn);
}

bool ZOR_Widget_Log::recordTo(const QString& qsPath)
{
    if (qsPath.isEmpty()) {
        m_lpLogFile->stop();
        ui->toolButton_Options->setToolTip(zorTr(QStringLiteral("cons_065")));
    } else if (!m_lpLogFile->start(qsPath)) {
        showNotice(QStringLiteral("cons_063"), m_lpLogFile->errorString());
    } else {
        ui->toolButton_Options->setToolTip(zorTr(QStringLiteral("cons_064")).arg(qsPath));
    }
    const QSignalBlocker block(m_actionRecord);
    m_actionRecord->setChecked(m_lpLogFile->isActive());
    keepChoice(kKeyRecord, m_lpLogFile->isActive());
    if (m_lpLogFile->isActive())
        keepChoice(kKeyRecordPath, qsPath);
    return qsPath.isEmpty() || m_lpLogFile->isActive();
}

void ZOR_Widget_Log::slot_toggled_Action_Record(bool bOn)
{
    QString qsPath;
    if (bOn) {
        QString qsLast = QSettings(choicesPath(), QSettings::IniFormat).value(kKeyRecordPath).toString();
        if (qsLast.isEmpty())
            qsLast =
                QStringLiteral("console_%1.log").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd")));
        qsPath = QFileDialog::getSaveFileName(this, zorTr(QStringLiteral("cons_062")).remove(QChar(0x2026)), qsLast,
            zorTr(QStringLiteral("cons_069")), nullptr, QFileDialog::DontConfirmOverwrite);
        if (qsPath.isEmpty()) {
            const QSignalBlocker block(m_actionRecord);
            m_actionRecord->setChecked(false);
            return;
        }
    }
    recordTo(qsPath);
}

bool ZOR_Widget_Log::eventFilter(QObject* watched, QEvent* event)
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
    return QWidget::eventFilter(watched, event);
}
