#include "zor_telemetry_window.h"
#include "ui_zor_telemetry_window.h"

#include "config/zor_configdocument.h"
#include "config/zor_form_config_set_kite3.h"
#include "telemetry/tmipage_base.h"
#include "telemetry/zor_tmi_table.h"
#include "zor_tmi_archivemodel.h"
#include "zor_tmi_chartpane.h"
#include "zor_tmi_chartview.h"
#include "zor_tmi_columnstore.h"
#include "zor_tmi_exportjob.h"
#include "zor_tmi_rowfilter.h"
#include "zor_tmi_summarypane.h"
#include "zor_driveexport.h"
#include "zor_tmi_trackpane.h"
#include "zor_tmi_trackview.h"
#include "zor_tmi_texts.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHeaderView>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QProcess>
#include <QProgressBar>
#include <QSaveFile>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kBytesPerLine = 16;
const QColor kFieldColour(255, 243, 176);
const QColor kValueColour(255, 196, 64);

// A dialog of items to tick; false when cancelled, else the ticks.
bool tickList(QWidget* lpParent, const QString& qsTitle, const QStringList& texts, QVector<bool>& ticked)
{
    QDialog dialog(lpParent);
    dialog.setWindowTitle(qsTitle);
    auto* lpList = new QListWidget(&dialog);
    for (int i = 0; i < texts.size(); ++i) {
        auto* lpItem = new QListWidgetItem(texts.at(i), lpList);
        lpItem->setFlags(lpItem->flags() | Qt::ItemIsUserCheckable);
        lpItem->setCheckState(ticked.value(i) ? Qt::Checked : Qt::Unchecked);
    }
    auto* lpButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(lpButtons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(lpButtons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* lpLayout = new QVBoxLayout(&dialog);
    lpLayout->addWidget(lpList);
    lpLayout->addWidget(lpButtons);
    dialog.resize(420, 560);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    ticked.resize(lpList->count());
    for (int i = 0; i < lpList->count(); ++i)
        ticked[i] = lpList->item(i)->checkState() == Qt::Checked;
    return true;
}

enum FieldListColumn { Col_Number, Col_Name, Col_Width, Col_Offset, Col_Raw, Col_Text, FieldListColumns };

} // namespace

ZOR_TelemetryWindow::ZOR_TelemetryWindow(QWidget* parent)
    : QMainWindow(parent)
    , ui(new Ui::ZOR_TelemetryWindow)
    , m_lpModel(new ZOR_TmiArchiveModel(this))
    , m_lpFilter(new ZOR_TmiRowFilter(this))
    , m_lpStore(new ZOR_TmiColumnStore(this))
    , m_lpProgress(new QProgressBar(this))
    , m_lpCancel(new QPushButton(this))
{
    ui->setupUi(this);
    setWindowFlags(Qt::Window);

    QTableView* lpTable = ui->tableView_Records;
    m_lpFilter->setSourceModel(m_lpModel);
    lpTable->setModel(m_lpFilter);
    // Sizes to contents would read every row; fixed sizes read only the
    // rows on screen.
    lpTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    lpTable->verticalHeader()->setDefaultSectionSize(lpTable->fontMetrics().height() + 6);
    lpTable->horizontalHeader()->setDefaultSectionSize(130);
    lpTable->setWordWrap(false);
    connect(lpTable->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &ZOR_TelemetryWindow::slot_currentChanged_Record);
    connect(m_lpModel, &ZOR_TmiArchiveModel::signal_ArchiveChanged, this, &ZOR_TelemetryWindow::archiveChanged);

    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    QTableWidget* lpBytes = ui->tableWidget_Bytes;
    lpBytes->setFont(fixed);
    lpBytes->setColumnCount(kBytesPerLine);
    QStringList columns;
    for (int i = 0; i < kBytesPerLine; ++i)
        columns << QString::number(i, 16).toUpper();
    lpBytes->setHorizontalHeaderLabels(columns);
    lpBytes->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    lpBytes->horizontalHeader()->setDefaultSectionSize(QFontMetrics(fixed).horizontalAdvance(QStringLiteral("WWW")));
    lpBytes->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    lpBytes->verticalHeader()->setDefaultSectionSize(QFontMetrics(fixed).height() + 4);
    lpBytes->verticalHeader()->setFont(fixed);
    connect(lpBytes, &QTableWidget::itemSelectionChanged, this, &ZOR_TelemetryWindow::slot_itemSelectionChanged_Bytes);

    ui->treeWidget_Fields->setColumnCount(FieldListColumns);
    connect(ui->treeWidget_Fields, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* lpItem) {
        const int nColumn = m_lpModel->firstColumnOf(lpItem->text(Col_Number).toInt());
        if (m_nShownRow >= 0 && nColumn >= 0)
            selectCell(m_nShownRow, nColumn);
    });

    ui->comboBox_Version->addItems(
        {QStringLiteral("KITE 1.0"), QStringLiteral("KITE 2.0"), QStringLiteral("KITE 3.0")});
    ui->comboBox_Version->setCurrentIndex(2);
    connect(ui->comboBox_Version, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_TelemetryWindow::slot_currentIndexChanged_Version);
    ui->lineEdit_FieldSet->setFont(fixed);
    connect(
        ui->lineEdit_FieldSet, &QLineEdit::editingFinished, this, &ZOR_TelemetryWindow::slot_editingFinished_FieldSet);
    connect(ui->pushButton_Open, &QPushButton::clicked, this, &ZOR_TelemetryWindow::slot_clicked_Open);
    connect(ui->pushButton_Fields, &QPushButton::clicked, this, &ZOR_TelemetryWindow::slot_clicked_Fields);
    connect(ui->pushButton_FromFile, &QPushButton::clicked, this, &ZOR_TelemetryWindow::slot_clicked_FromFile);
    connect(ui->pushButton_FromConfig, &QPushButton::clicked, this, &ZOR_TelemetryWindow::takeFieldSetFromConfig);
    ui->pushButton_FromConfig->setEnabled(false);

    setupExportMenu();

    m_lpProgress->setRange(0, 100);
    m_lpProgress->setMaximumWidth(240);
    ui->statusbar->addPermanentWidget(m_lpProgress);
    ui->statusbar->addPermanentWidget(m_lpCancel);
    m_lpProgress->hide();
    m_lpCancel->hide();
    connect(m_lpCancel, &QPushButton::clicked, this, &ZOR_TelemetryWindow::cancelExport);

    setupNavigation();
    ui->splitter_Main->setStretchFactor(0, 3);
    ui->splitter_Main->setStretchFactor(1, 2);
    ui->splitter_Main->setSizes({640, 560});
    ui->splitter_Inspector->setSizes({300, 400});
    retranslate();
    showFieldSet();
    updateInfo();
    showRecord(-1);
}

ZOR_TelemetryWindow::~ZOR_TelemetryWindow()
{
    if (m_lpJob) {
        m_lpJob->cancel();
        delete m_lpJob; // waits for its thread
    }
}

QTableView* ZOR_TelemetryWindow::tableView() const
{
    return ui->tableView_Records;
}

QTreeWidget* ZOR_TelemetryWindow::fieldList() const
{
    return ui->treeWidget_Fields;
}

QString ZOR_TelemetryWindow::infoText() const
{
    return ui->label_Info->text();
}

// Columns as wide as the header and the first record's text (dates, units),
// within bounds: measuring every row would decode the whole archive.
void ZOR_TelemetryWindow::fitColumnsToFirstRecord()
{
    QTableView* lpTable = ui->tableView_Records;
    const QFontMetrics metrics(lpTable->font());
    const QFontMetrics headerMetrics(lpTable->horizontalHeader()->font());
    const bool bHasRow = m_lpModel->rowCount() > 0;
    for (int c = 0; c < m_lpModel->columnCount(); ++c) {
        int nWidth = headerMetrics.horizontalAdvance(m_lpModel->headerData(c, Qt::Horizontal).toString());
        if (bHasRow)
            nWidth = qMax(nWidth, metrics.horizontalAdvance(m_lpModel->index(0, c).data().toString()));
        lpTable->setColumnWidth(c, qBound(60, nWidth + 16, 320));
    }
}

void ZOR_TelemetryWindow::retranslate()
{
    setWindowTitle(m_lpModel->isOpen()
            ? QStringLiteral("%1 — %2").arg(zorTmiText("window_title"), QFileInfo(m_lpModel->fileName()).fileName())
            : zorTmiText("window_title"));
    ui->pushButton_Open->setText(zorTmiText("open"));
    ui->label_Version->setText(zorTmiText("version"));
    ui->label_FieldSet->setText(zorTmiText("fieldset"));
    ui->lineEdit_FieldSet->setToolTip(zorTmiText("fieldset_tip"));
    ui->pushButton_Fields->setText(zorTmiText("fields"));
    ui->pushButton_FromFile->setText(zorTmiText("from_file"));
    ui->pushButton_FromConfig->setText(zorTmiText("from_config"));
    ui->toolButton_Export->setText(zorTmiText("export"));
    m_lpExportAll->setText(zorTmiText("export_all"));
    m_lpExportSelected->setText(zorTmiText("export_selected"));
    m_lpExportNumeric->setText(zorTmiText("export_numeric"));
    const char* const kTrackTexts[] = {"export_gpx", "export_kml", "export_geojson"};
    for (int i = 0; i < m_trackExports.size(); ++i)
        m_trackExports.at(i)->setText(zorTmiText(kTrackTexts[i]));
    m_lpCancel->setText(zorTmiText("cancel"));
    ui->label_GoTo->setText(zorTmiText("goto"));
    ui->toolButton_GoTo->setText(zorTmiText("goto_button"));
    ui->label_Code->setText(zorTmiText("filter_code"));
    ui->lineEdit_Code->setPlaceholderText(zorTmiText("filter_code_hint"));
    ui->label_Condition->setText(zorTmiText("filter_condition"));
    ui->toolButton_Filter->setText(zorTmiText("filter_apply"));
    ui->toolButton_ClearFilter->setText(zorTmiText("filter_clear"));
    ui->toolButton_Columns->setText(zorTmiText("columns"));
    const QList<QAction*> presets = ui->toolButton_Columns->menu()->actions();
    const char* const kPresetTexts[] = {"columns_all", "columns_nonzero", "columns_chart", nullptr, "columns_choose"};
    for (int i = 0; i < presets.size() && i < 5; ++i)
        if (kPresetTexts[i])
            presets.at(i)->setText(zorTmiText(kPresetTexts[i]));
    ui->tabWidget_Panes->setTabText(0, zorTmiText("tab_track"));
    ui->tabWidget_Panes->setTabText(1, zorTmiText("tab_summary"));
    ui->chartPane->retranslate();
    ui->trackPane->retranslate();
    ui->treeWidget_Fields->setHeaderLabels({zorTmiText("col_number"), zorTmiText("col_name"), zorTmiText("col_width"),
        zorTmiText("col_offset"), zorTmiText("col_raw"), zorTmiText("col_text")});
    // Captions of the columns come from the language service.
    m_lpModel->setFieldSet(m_lpModel->fieldSet());
}

void ZOR_TelemetryWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMainWindow::changeEvent(event);
}

void ZOR_TelemetryWindow::closeEvent(QCloseEvent* event)
{
    // An export goes on while the window is hidden; the window is kept.
    event->accept();
}

bool ZOR_TelemetryWindow::openFile(const QString& qsFileName)
{
    const bool bOk = m_lpModel->openFile(qsFileName);
    retranslate();
    if (bOk && m_lpModel->rowCount() > 0)
        selectCell(0, 0);
    return bOk;
}

void ZOR_TelemetryWindow::setFieldSet(const ZOR_TmiFieldSet& fieldSet)
{
    const QModelIndex current = ui->tableView_Records->currentIndex();
    const int nRecord = currentRecord();
    const int nField = m_lpModel->columnField(current.column());
    m_lpModel->setFieldSet(fieldSet);
    showFieldSet();
    // Stay on the same record and, when the new set has it, the same field.
    if (nRecord >= 0 && m_lpModel->rowCount() > 0)
        selectCell(qMin(nRecord, m_lpModel->rowCount() - 1), qMax(0, m_lpModel->firstColumnOf(nField)));
}

ZOR_TmiFieldSet ZOR_TelemetryWindow::fieldSet() const
{
    return m_lpModel->fieldSet();
}

void ZOR_TelemetryWindow::setConfigSource(std::function<ZOR_ConfigDocument*()> source)
{
    m_configSource = std::move(source);
    ui->pushButton_FromConfig->setEnabled(bool(m_configSource));
}

bool ZOR_TelemetryWindow::takeFieldSetFromConfig()
{
    ZOR_ConfigDocument* lpDoc = m_configSource ? m_configSource() : nullptr;
    const auto* lpForm = lpDoc ? qobject_cast<ZOR_Form_Config_Set_Kite3*>(lpDoc->form(QStringLiteral("protocol")))
                               : nullptr;
    if (!lpForm) {
        ui->statusbar->showMessage(zorTmiText("no_config"));
        return false;
    }
    ZOR_TmiFieldSet set;
    set.readProtocolElement(lpForm->getTypeDFProtocol(), lpForm->getStrFormat());
    setFieldSet(set);
    return true;
}

bool ZOR_TelemetryWindow::takeFieldSetFromFile(const QString& qsFileName)
{
    ZOR_TmiFieldSet set;
    QString qsError;
    if (!set.readSettingsFile(qsFileName, &qsError)) {
        ui->statusbar->showMessage(zorTmiText("fs_bad").arg(qsError));
        return false;
    }
    setFieldSet(set);
    return true;
}

void ZOR_TelemetryWindow::showFieldSet()
{
    const ZOR_TmiFieldSet& set = m_lpModel->fieldSet();
    const QSignalBlocker block(ui->comboBox_Version);
    ui->comboBox_Version->setCurrentIndex(set.version() - 1);
    ui->lineEdit_FieldSet->setText(set.text());
    ui->lineEdit_FieldSet->setCursorPosition(0);
    ui->lineEdit_FieldSet->setStyleSheet(QString());
}

void ZOR_TelemetryWindow::slot_editingFinished_FieldSet()
{
    ZOR_TmiFieldSet set = m_lpModel->fieldSet();
    QString qsError;
    if (!set.parse(ui->lineEdit_FieldSet->text(), &qsError)) {
        ui->lineEdit_FieldSet->setStyleSheet(QStringLiteral("color: red"));
        ui->statusbar->showMessage(zorTmiText("fs_bad").arg(qsError));
        return;
    }
    if (set != m_lpModel->fieldSet())
        setFieldSet(set);
    else
        showFieldSet();
}

void ZOR_TelemetryWindow::slot_currentIndexChanged_Version(int nIndex)
{
    ZOR_TmiFieldSet set = m_lpModel->fieldSet();
    set.setVersion(nIndex + 1);
    setFieldSet(set);
}

void ZOR_TelemetryWindow::slot_clicked_Open()
{
    const QString qsFileName = QFileDialog::getOpenFileName(
        this, zorTmiText("open"), QString(), zorTmiText("open_filter"));
    if (!qsFileName.isEmpty())
        openFile(qsFileName);
}

void ZOR_TelemetryWindow::slot_clicked_FromFile()
{
    const QString qsFileName = QFileDialog::getOpenFileName(
        this, zorTmiText("from_file"), QString(), zorTmiText("from_file_filter"));
    if (!qsFileName.isEmpty())
        takeFieldSetFromFile(qsFileName);
}

void ZOR_TelemetryWindow::slot_clicked_Fields()
{
    ZOR_TmiFieldSet set = m_lpModel->fieldSet();
    QStringList texts;
    QVector<bool> ticked;
    for (int n = 1; n <= set.lastField(); ++n) {
        texts << QStringLiteral("%1  %2  (%3, %4)")
                     .arg(n, 3)
                     .arg(ZOR_TmiFieldSet::caption(n), QLatin1String(ZorTmi::field(n).name))
                     .arg(ZorTmi::field(n).width);
        ticked << set.has(n);
    }
    if (!tickList(this, zorTmiText("fields_title"), texts, ticked))
        return;
    for (int i = 0; i < ticked.size(); ++i)
        set.setField(i + 1, ticked.at(i));
    setFieldSet(set);
}

void ZOR_TelemetryWindow::updateInfo()
{
    QString qsText;
    if (m_lpModel->isOpen())
        qsText = zorTmiText("info")
                     .arg(QFileInfo(m_lpModel->fileName()).fileName())
                     .arg(m_lpModel->fileSize())
                     .arg(m_lpModel->recordCount())
                     .arg(m_lpModel->recordSize());
    else if (m_lpModel->errorString().isEmpty())
        qsText = zorTmiText("no_file");
    const QString qsProblem = m_lpModel->problem();
    if (!qsProblem.isEmpty())
        qsText += (qsText.isEmpty() ? QString() : QStringLiteral(" — ")) + qsProblem;
    ui->label_Info->setText(qsText);
    ui->label_Info->setStyleSheet(qsProblem.isEmpty() ? QString() : QStringLiteral("color: #b00000"));
    m_lpExportAll->setEnabled(m_lpModel->recordCount() > 0);
    m_lpExportSelected->setEnabled(m_lpModel->recordCount() > 0);
}

void ZOR_TelemetryWindow::selectCell(int nRow, int nColumn)
{
    // A record the filter hides: the next one shown, or the last.
    int nShown = m_lpFilter->shownRow(nRow);
    if (nShown < 0)
        nShown = m_lpFilter->rowCount() - 1;
    const QModelIndex index = m_lpFilter->index(nShown, nColumn);
    if (!index.isValid())
        return;
    ui->tableView_Records->setCurrentIndex(index);
    ui->tableView_Records->scrollTo(index);
}

void ZOR_TelemetryWindow::slot_currentChanged_Record(const QModelIndex& current)
{
    const int nRecord = current.isValid() ? m_lpFilter->sourceRow(current.row()) : -1;
    if (nRecord != m_nShownRow)
        showRecord(nRecord);
    followRecord(nRecord);
    int nOffset = 0;
    int nLength = 0;
    if (current.isValid() && m_lpModel->columnBytes(current.column(), nOffset, nLength))
        highlight(nOffset, nLength);
    else
        highlight(-1, 0);
}

void ZOR_TelemetryWindow::showRecord(int nRow)
{
    m_nShownRow = nRow;
    const QSignalBlocker block(ui->tableWidget_Bytes);
    ui->tableWidget_Bytes->clearContents();
    ui->treeWidget_Fields->clear();
    m_nHighlightOffset = -1;
    m_nHighlightLength = 0;
    const QByteArray bytes = nRow >= 0 ? m_lpModel->recordBytes(nRow) : QByteArray();
    if (nRow < 0 || (bytes.isEmpty() && m_lpModel->recordSize() > 0)) {
        ui->tableWidget_Bytes->setRowCount(0);
        ui->label_Record->setText(zorTmiText("record_none"));
        return;
    }
    ui->label_Record->setText(zorTmiText("record").arg(nRow + 1).arg(m_lpModel->recordOffset(nRow)).arg(bytes.size()));

    const int nLines = (bytes.size() + kBytesPerLine - 1) / kBytesPerLine;
    ui->tableWidget_Bytes->setRowCount(nLines);
    QStringList offsets;
    for (int i = 0; i < nLines; ++i)
        offsets << QStringLiteral("%1").arg(i * kBytesPerLine, 4, 16, QLatin1Char('0')).toUpper();
    ui->tableWidget_Bytes->setVerticalHeaderLabels(offsets);
    for (int i = 0; i < bytes.size(); ++i) {
        auto* lpItem = new QTableWidgetItem(
            QStringLiteral("%1").arg(quint8(bytes.at(i)), 2, 16, QLatin1Char('0')).toUpper());
        lpItem->setTextAlignment(Qt::AlignCenter);
        ui->tableWidget_Bytes->setItem(i / kBytesPerLine, i % kBytesPerLine, lpItem);
    }

    const TmiPage_Base* lpRecord = m_lpModel->decodedRecord(nRow);
    if (!lpRecord)
        return;
    const ZOR_TmiFieldSet& set = m_lpModel->fieldSet();
    QList<QTreeWidgetItem*> items;
    int nOffset = 0;
    for (int n = 1; n <= set.lastField(); ++n) {
        if (!set.has(n))
            continue;
        const int nWidth = ZorTmi::field(n).width;
        QByteArray text;
        lpRecord->appendColumnTexts(n, text, QByteArray(), QByteArrayLiteral("; "));
        text.chop(2);
        auto* lpItem = new QTreeWidgetItem;
        lpItem->setText(Col_Number, QString::number(n));
        lpItem->setText(Col_Name, ZOR_TmiFieldSet::caption(n));
        lpItem->setToolTip(Col_Name, QLatin1String(ZorTmi::field(n).name));
        lpItem->setText(Col_Width, QString::number(nWidth));
        lpItem->setText(Col_Offset, QString::number(nOffset));
        lpItem->setText(Col_Raw, QString::fromLatin1(bytes.mid(nOffset, nWidth).toHex(' ').toUpper()));
        lpItem->setText(Col_Text, QString::fromUtf8(text));
        lpItem->setToolTip(Col_Text, lpItem->text(Col_Text));
        lpItem->setFont(Col_Raw, ui->tableWidget_Bytes->font());
        items << lpItem;
        nOffset += nWidth;
    }
    ui->treeWidget_Fields->addTopLevelItems(items);
    for (int i = 0; i < Col_Raw; ++i)
        ui->treeWidget_Fields->resizeColumnToContents(i);
    ui->treeWidget_Fields->setColumnWidth(
        Col_Raw, QFontMetrics(ui->tableWidget_Bytes->font()).horizontalAdvance(QStringLiteral("00 00 00 00  ")));
}

void ZOR_TelemetryWindow::highlight(int nOffset, int nLength)
{
    QTableWidget* lpBytes = ui->tableWidget_Bytes;
    const ZOR_TmiFieldSet& set = m_lpModel->fieldSet();
    const int nField = set.fieldAt(nOffset);
    const int nFieldStart = nField ? set.fieldOffset(nField) : -1;
    const int nFieldEnd = nField ? nFieldStart + ZorTmi::field(nField).width : -1;
    for (int i = 0; i < lpBytes->rowCount() * kBytesPerLine; ++i) {
        QTableWidgetItem* lpItem = lpBytes->item(i / kBytesPerLine, i % kBytesPerLine);
        if (!lpItem)
            continue;
        if (nOffset >= 0 && i >= nOffset && i < nOffset + nLength)
            lpItem->setBackground(kValueColour);
        else if (i >= nFieldStart && i < nFieldEnd)
            lpItem->setBackground(kFieldColour);
        else
            lpItem->setBackground(QBrush());
    }
    m_nHighlightOffset = nOffset;
    m_nHighlightLength = nOffset >= 0 ? nLength : 0;
    if (nOffset >= 0 && nOffset / kBytesPerLine < lpBytes->rowCount())
        lpBytes->scrollToItem(lpBytes->item(nOffset / kBytesPerLine, nOffset % kBytesPerLine));
    for (int i = 0; i < ui->treeWidget_Fields->topLevelItemCount(); ++i) {
        QTreeWidgetItem* lpItem = ui->treeWidget_Fields->topLevelItem(i);
        if (lpItem->text(Col_Number).toInt() == nField) {
            ui->treeWidget_Fields->setCurrentItem(lpItem);
            ui->treeWidget_Fields->scrollToItem(lpItem);
            break;
        }
    }
}

bool ZOR_TelemetryWindow::highlightedBytes(int& nOffset, int& nLength) const
{
    nOffset = m_nHighlightOffset;
    nLength = m_nHighlightLength;
    return m_nHighlightOffset >= 0;
}

void ZOR_TelemetryWindow::selectByte(int nOffset)
{
    if (m_nShownRow < 0)
        return;
    const int nField = m_lpModel->fieldSet().fieldAt(nOffset);
    if (!nField)
        return;
    // The part that holds the byte, or the field's first column.
    int nColumn = m_lpModel->firstColumnOf(nField);
    for (int c = nColumn; c >= 0 && c < m_lpModel->columnCount() && m_lpModel->columnField(c) == nField; ++c) {
        int nStart = 0;
        int nLength = 0;
        if (m_lpModel->columnBytes(c, nStart, nLength) && nOffset >= nStart && nOffset < nStart + nLength) {
            nColumn = c;
            break;
        }
    }
    selectCell(m_nShownRow, nColumn);
}

void ZOR_TelemetryWindow::slot_itemSelectionChanged_Bytes()
{
    const QList<QTableWidgetItem*> selected = ui->tableWidget_Bytes->selectedItems();
    if (selected.isEmpty())
        return;
    int nFirst = INT_MAX;
    for (const QTableWidgetItem* lpItem : selected)
        nFirst = qMin(nFirst, lpItem->row() * kBytesPerLine + lpItem->column());
    selectByte(nFirst);
}

void ZOR_TelemetryWindow::slot_triggered_Export(bool bSelectedOnly)
{
    const QString qsFileName = QFileDialog::getSaveFileName(
        this, zorTmiText("export"), QString(), zorTmiText("export_filter"));
    if (!qsFileName.isEmpty())
        exportCsv(qsFileName, bSelectedOnly);
}

bool ZOR_TelemetryWindow::exportCsv(const QString& qsFileName, bool bSelectedOnly)
{
    if (m_lpJob || !m_lpModel->isOpen())
        return false;
    QVector<int> rows;
    if (bSelectedOnly) {
        for (const QModelIndex& index : ui->tableView_Records->selectionModel()->selectedIndexes())
            if (m_lpFilter->sourceRow(index.row()) < m_lpModel->recordCount())
                rows.append(m_lpFilter->sourceRow(index.row()));
        if (rows.isEmpty()) {
            ui->statusbar->showMessage(zorTmiText("export_nothing"));
            return false;
        }
    } else if (m_lpModel->recordCount() == 0) {
        ui->statusbar->showMessage(zorTmiText("export_nothing"));
        return false;
    }
    m_qsExportFile = qsFileName;
    m_lpJob = new ZOR_TmiExportJob(m_lpModel->fileName(), m_lpModel->fieldSet(), qsFileName, rows);
    connect(m_lpJob, &ZOR_TmiExportJob::signal_Progress, m_lpProgress, &QProgressBar::setValue);
    connect(
        m_lpJob, &ZOR_TmiExportJob::signal_Finished, this, [this](int nResult, const QString& qsError, qint64 nLines) {
            m_lpProgress->hide();
            m_lpCancel->hide();
            if (nResult == ZOR_TmiExportJob::Done)
                ui->statusbar->showMessage(zorTmiText("export_done").arg(nLines - 1).arg(m_qsExportFile));
            else if (nResult == ZOR_TmiExportJob::Cancelled)
                ui->statusbar->showMessage(zorTmiText("export_cancelled"));
            else
                ui->statusbar->showMessage(zorTmiText("export_failed").arg(qsError));
            delete m_lpJob;
            m_lpJob = nullptr;
            emit signal_ExportFinished(nResult, qsError);
        });
    m_lpProgress->setValue(0);
    m_lpProgress->show();
    m_lpCancel->show();
    ui->statusbar->showMessage(zorTmiText("export_running").arg(qsFileName));
    m_lpJob->start();
    return true;
}

void ZOR_TelemetryWindow::cancelExport()
{
    if (m_lpJob)
        m_lpJob->cancel();
}

bool ZOR_TelemetryWindow::saveScreenshot(const QString& qsFileName)
{
    show();
    raise();
    QElapsedTimer waited;
    waited.start();
    while (ui->trackPane->isLoading() && waited.elapsed() < 30000)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    QApplication::processEvents();
    return grab().save(qsFileName);
}

ZOR_TmiChartPane* ZOR_TelemetryWindow::chartPane() const
{
    return ui->chartPane;
}

ZOR_TmiTrackPane* ZOR_TelemetryWindow::trackPane() const
{
    return ui->trackPane;
}

int ZOR_TelemetryWindow::currentRecord() const
{
    const QModelIndex current = ui->tableView_Records->currentIndex();
    return current.isValid() ? m_lpFilter->sourceRow(current.row()) : -1;
}

void ZOR_TelemetryWindow::archiveChanged()
{
    fitColumnsToFirstRecord();
    for (int c = 0; c < m_lpModel->columnCount(); ++c)
        ui->tableView_Records->setColumnHidden(c, false);
    m_nShownRow = -1;
    updateInfo();
    m_lpStore->setArchive(
        m_lpModel->fileName(), m_lpModel->fieldSet(), m_lpModel->isOpen() ? m_lpModel->recordCount() : 0);
    ui->chartPane->reload();
    ui->trackPane->reload();
    QComboBox* lpColumns = ui->comboBox_ConditionColumn;
    lpColumns->clear();
    lpColumns->addItem(zorTmiText("condition_none"), -1);
    for (int c = 0; c < m_lpModel->columnCount(); ++c)
        lpColumns->addItem(m_lpModel->headerData(c, Qt::Horizontal).toString(), c);
    // The date to go to starts at the first record's time.
    const QByteArray first = m_lpStore->hasTime() ? m_lpModel->recordBytes(0) : QByteArray();
    const int nTimeAt = m_lpModel->fieldSet().fieldOffset(3);
    if (nTimeAt >= 0 && first.size() >= nTimeAt + 4) {
        const double dTime = ZorTmi::number(
            ZorTmi::column(ZorTmi::Col_Time), reinterpret_cast<const unsigned char*>(first.constData()) + nTimeAt);
        if (!std::isnan(dTime))
            ui->dateTimeEdit_GoTo->setDateTime(QDateTime::fromSecsSinceEpoch(qint64(dTime)));
    }
    ui->dateTimeEdit_GoTo->setEnabled(m_lpStore->hasTime());
    ui->toolButton_GoTo->setEnabled(m_lpStore->hasTime());
    showRecord(currentRecord());
}

// The table's record shown by the chart cursor and on the track.
void ZOR_TelemetryWindow::followRecord(int nRecord)
{
    ui->chartPane->chart()->setCursorRecord(nRecord);
    ui->trackPane->view()->setSelectedRecord(nRecord);
}

void ZOR_TelemetryWindow::setupNavigation()
{
    connect(ui->chartPane, &ZOR_TmiChartPane::signal_CursorChanged, this,
        [this](int nRecord) { selectCell(nRecord, qMax(0, ui->tableView_Records->currentIndex().column())); });
    connect(ui->chartPane, &ZOR_TmiChartPane::signal_Status, ui->statusbar,
        [this](const QString& qsText) { ui->statusbar->showMessage(qsText); });
    const auto select = [this](int nRecord) {
        selectCell(nRecord, qMax(0, ui->tableView_Records->currentIndex().column()));
    };
    connect(ui->trackPane, &ZOR_TmiTrackPane::signal_RecordClicked, this, select);
    connect(ui->summaryPane, &ZOR_TmiSummaryPane::signal_RecordClicked, this, select);
    connect(ui->trackPane, &ZOR_TmiTrackPane::signal_TrackLoaded, this, [this] {
        const auto drive = ui->trackPane->drive();
        ui->summaryPane->setSummary(drive && m_lpModel->recordCount() > 0 ? &drive->summary : nullptr,
            drive ? drive->options : ZOR_DriveOptions());
        ui->trackPane->view()->setSelectedRecord(currentRecord());
    });
    ui->chartPane->setSource(m_lpModel, m_lpStore);
    ui->trackPane->setStore(m_lpStore);
    ui->comboBox_ConditionOp->addItems(conditionOperators());
    ui->dateTimeEdit_GoTo->setTimeSpec(Qt::LocalTime);
    connect(ui->toolButton_GoTo, &QToolButton::clicked, this, [this] { goToTime(ui->dateTimeEdit_GoTo->dateTime()); });
    connect(ui->toolButton_Filter, &QToolButton::clicked, this, &ZOR_TelemetryWindow::slot_clicked_Filter);
    connect(ui->lineEdit_Code, &QLineEdit::returnPressed, this, &ZOR_TelemetryWindow::slot_clicked_Filter);
    connect(ui->lineEdit_ConditionValue, &QLineEdit::returnPressed, this, &ZOR_TelemetryWindow::slot_clicked_Filter);
    connect(ui->toolButton_ClearFilter, &QToolButton::clicked, this, &ZOR_TelemetryWindow::clearFilter);
    auto* lpMenu = new QMenu(this);
    for (int nPreset : {Columns_All, Columns_NonZero, Columns_Chart})
        lpMenu->addAction(QString(), this, [this, nPreset] { applyColumnPreset(nPreset); });
    lpMenu->addSeparator();
    lpMenu->addAction(QString(), this, &ZOR_TelemetryWindow::slot_clicked_ChooseColumns);
    ui->toolButton_Columns->setMenu(lpMenu);
    ui->splitter_Window->setStretchFactor(0, 1);
    ui->splitter_Window->setStretchFactor(1, 1);
    ui->splitter_Window->setSizes({380, 400});
    ui->splitter_Panes->setSizes({720, 560});
}

bool ZOR_TelemetryWindow::goToTime(const QDateTime& at)
{
    if (!m_lpStore->hasTime()) {
        ui->statusbar->showMessage(zorTmiText("goto_no_time"));
        return false;
    }
    const QVector<double>& times = m_lpStore->times();
    const double dWanted = double(at.toSecsSinceEpoch());
    // Times may jump back: the first record at or after the time, in order.
    for (int i = 0; i < times.size(); ++i) {
        if (times.at(i) >= dWanted) {
            selectCell(i, qMax(0, ui->tableView_Records->currentIndex().column()));
            return true;
        }
    }
    ui->statusbar->showMessage(zorTmiText("goto_none").arg(at.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"))));
    return false;
}

QStringList ZOR_TelemetryWindow::conditionOperators()
{
    return {QStringLiteral(">"), QStringLiteral("≥"), QStringLiteral("="), QStringLiteral("≠"), QStringLiteral("≤"),
        QStringLiteral("<")};
}

namespace {

// "2, 5-7" as ranges; false for anything else.
bool parseCodes(const QString& qsText, QVector<QPair<int, int>>& ranges)
{
    for (const QString& qsPart : qsText.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QStringList bounds = qsPart.trimmed().split(QLatin1Char('-'));
        bool bOk1 = false;
        bool bOk2 = false;
        const int nFrom = bounds.value(0).trimmed().toInt(&bOk1);
        const int nTo = bounds.size() == 2 ? bounds.at(1).trimmed().toInt(&bOk2) : nFrom;
        if (!bOk1 || (bounds.size() == 2 && !bOk2) || bounds.size() > 2 || nTo < nFrom)
            return false;
        ranges.append({nFrom, nTo});
    }
    return true;
}

bool compare(double v, int nOperator, double dValue)
{
    switch (nOperator) {
    case 0: return v > dValue;
    case 1: return v >= dValue;
    case 2: return v == dValue;
    case 3: return v != dValue;
    case 4: return v <= dValue;
    default: return v < dValue;
    }
}

} // namespace

bool ZOR_TelemetryWindow::filterRows(const QString& qsCodes, int nColumn, const QString& qsOperator, double dValue)
{
    QVector<QPair<int, int>> codes;
    if (!parseCodes(qsCodes, codes)) {
        ui->statusbar->showMessage(zorTmiText("filter_bad_codes").arg(qsCodes));
        return false;
    }
    const int nOperator = conditionOperators().indexOf(qsOperator);
    const int nId = m_lpModel->columnId(nColumn);
    if (nColumn >= 0 && (nId < 0 || nOperator < 0)) {
        ui->statusbar->showMessage(zorTmiText("filter_bad_condition"));
        return false;
    }
    const int nCodeId = m_lpStore->columnOf(2);
    if (!codes.isEmpty() && nCodeId < 0) {
        ui->statusbar->showMessage(zorTmiText("filter_no_codes"));
        return false;
    }
    m_lpStore->load({nCodeId, nId});
    const QVector<double> codeValues = codes.isEmpty() ? QVector<double>() : m_lpStore->values(nCodeId);
    const QVector<double> values = nColumn >= 0 ? m_lpStore->values(nId) : QVector<double>();
    QVector<int> rows;
    for (int i = 0; i < m_lpStore->recordCount(); ++i) {
        if (!codes.isEmpty()) {
            const double dCode = codeValues.value(i);
            if (std::none_of(
                    codes.begin(), codes.end(), [&](const auto& r) { return dCode >= r.first && dCode <= r.second; }))
                continue;
        }
        if (nColumn >= 0 && !compare(values.value(i), nOperator, dValue))
            continue;
        rows.append(i);
    }
    const int nRecord = currentRecord();
    const int nColumnNow = qMax(0, ui->tableView_Records->currentIndex().column());
    m_lpFilter->setRows(rows);
    ui->statusbar->showMessage(zorTmiText("filter_done").arg(rows.size()).arg(m_lpModel->recordCount()));
    if (!rows.isEmpty())
        selectCell(qMax(0, nRecord), nColumnNow);
    return true;
}

void ZOR_TelemetryWindow::slot_clicked_Filter()
{
    bool bOk = true;
    const int nColumn = ui->comboBox_ConditionColumn->currentData().toInt();
    const double dValue = nColumn >= 0
        ? QLocale::c().toDouble(
            ui->lineEdit_ConditionValue->text().trimmed().replace(QLatin1Char(','), QLatin1Char('.')), &bOk)
        : 0;
    if (!bOk) {
        ui->statusbar->showMessage(zorTmiText("filter_bad_value").arg(ui->lineEdit_ConditionValue->text()));
        return;
    }
    if (ui->lineEdit_Code->text().trimmed().isEmpty() && nColumn < 0) {
        clearFilter();
        return;
    }
    filterRows(ui->lineEdit_Code->text(), nColumn, ui->comboBox_ConditionOp->currentText(), dValue);
}

void ZOR_TelemetryWindow::clearFilter()
{
    const int nRecord = currentRecord();
    const int nColumn = qMax(0, ui->tableView_Records->currentIndex().column());
    m_lpFilter->clearFilter();
    ui->statusbar->clearMessage();
    if (nRecord >= 0)
        selectCell(nRecord, nColumn);
}

void ZOR_TelemetryWindow::applyColumnPreset(int nPreset)
{
    QVector<bool> shown(m_lpModel->columnCount(), true);
    if (nPreset == Columns_NonZero) {
        QByteArray any;
        if (!m_lpStore->recordsOr(any)) {
            ui->statusbar->showMessage(zorTmiText("chart_failed").arg(m_lpStore->errorString()));
            return;
        }
        const auto* lpAny = reinterpret_cast<const unsigned char*>(any.constData());
        for (int c = 0; c < shown.size(); ++c) {
            // Whole values by their bytes (a float below 1 is not zero),
            // flags and bit groups by their bits.
            const ZorTmi::Column& column = ZorTmi::column(m_lpModel->columnId(c));
            int nOffset = 0;
            int nLength = 0;
            if (!m_lpModel->columnBytes(c, nOffset, nLength) || nOffset + nLength > any.size())
                shown[c] = false;
            else if (column.bits > 0)
                shown[c] = ZorTmi::readInteger(column, lpAny + nOffset - column.offset) != 0;
            else
                shown[c] = std::any_of(
                    lpAny + nOffset, lpAny + nOffset + nLength, [](unsigned char b) { return b != 0; });
        }
    } else if (nPreset == Columns_Chart) {
        shown.fill(false);
        const QList<int> charted = ui->chartPane->shownColumns();
        for (int c = 0; c < shown.size(); ++c)
            shown[c] = charted.contains(c) || m_lpModel->columnField(c) <= 3;
    }
    for (int c = 0; c < shown.size(); ++c)
        ui->tableView_Records->setColumnHidden(c, !shown.at(c));
}

void ZOR_TelemetryWindow::slot_clicked_ChooseColumns()
{
    QStringList texts;
    QVector<bool> ticked;
    for (int c = 0; c < m_lpModel->columnCount(); ++c) {
        texts << QStringLiteral("%1 (%2)").arg(m_lpModel->headerData(c, Qt::Horizontal).toString(),
            QLatin1String(ZorTmi::field(m_lpModel->columnField(c)).name));
        ticked << !ui->tableView_Records->isColumnHidden(c);
    }
    if (!tickList(this, zorTmiText("columns_title"), texts, ticked))
        return;
    for (int c = 0; c < ticked.size(); ++c)
        ui->tableView_Records->setColumnHidden(c, !ticked.at(c));
}

bool ZOR_TelemetryWindow::chartValues(const QStringList& names)
{
    bool bAll = true;
    for (const QString& qsName : names) {
        int nFound = -1;
        for (int c = 0; c < m_lpModel->columnCount() && nFound < 0; ++c)
            if (QLatin1String(ZorTmi::column(m_lpModel->columnId(c)).getter) == qsName.trimmed())
                nFound = c;
        bAll = nFound >= 0 && ui->chartPane->showColumn(nFound, true) && bAll;
    }
    return bAll;
}

bool ZOR_TelemetryWindow::exportTrack(int nFormat, const QString& qsFileName)
{
    const auto drive = ui->trackPane->drive();
    if (ui->trackPane->isLoading() || !drive || m_lpModel->recordCount() == 0) {
        ui->statusbar->showMessage(zorTmiText(ui->trackPane->isLoading() ? "export_track_wait" : "export_nothing"));
        return false;
    }
    const ZOR_DriveExport writer(drive->track, drive->summary, drive->options);
    const QByteArray data = nFormat == Track_Gpx ? writer.gpx()
        : nFormat == Track_Kml                   ? writer.kml()
                                                 : writer.geoJson();
    QSaveFile file(qsFileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit()) {
        ui->statusbar->showMessage(zorTmiText("export_failed").arg(file.errorString()));
        return false;
    }
    ui->statusbar->showMessage(zorTmiText("export_track_done").arg(qsFileName));
    return true;
}

void ZOR_TelemetryWindow::slot_triggered_ExportTrack(int nFormat)
{
    static const char* const kFilters[] = {"GPX (*.gpx)", "KML (*.kml)", "GeoJSON (*.geojson *.json)"};
    const QString qsFileName = QFileDialog::getSaveFileName(
        this, zorTmiText("export"), QString(), QLatin1String(kFilters[qBound(0, nFormat, 2)]));
    if (!qsFileName.isEmpty())
        exportTrack(nFormat, qsFileName);
}

// The numeric CSV is zor-tool's ("csv --numeric"), run beside the host
// in the background.
bool ZOR_TelemetryWindow::exportNumericCsv(const QString& qsFileName)
{
    if (m_lpNumericJob || !m_lpModel->isOpen() || m_lpModel->recordCount() == 0) {
        ui->statusbar->showMessage(zorTmiText("export_nothing"));
        return false;
    }
    const QString qsTool = QCoreApplication::applicationDirPath() + QStringLiteral("/zor-tool");
    m_lpNumericJob = new QProcess(this);
    const QStringList args = {QStringLiteral("csv"), QStringLiteral("--numeric"), QStringLiteral("--version"),
        QString::number(m_lpModel->fieldSet().version()), QStringLiteral("--mask"), m_lpModel->fieldSet().text(),
        QStringLiteral("--in"), m_lpModel->fileName(), QStringLiteral("--out"), qsFileName};
    auto done = [this, qsFileName](bool bOk, const QString& qsWhy) {
        ui->statusbar->showMessage(
            bOk ? zorTmiText("export_file_done").arg(qsFileName) : zorTmiText("export_failed").arg(qsWhy));
        m_lpNumericJob->deleteLater();
        m_lpNumericJob = nullptr;
        emit signal_ExportFinished(bOk ? ZOR_TmiExportJob::Done : ZOR_TmiExportJob::Failed, qsWhy);
    };
    connect(m_lpNumericJob, &QProcess::errorOccurred, this, [this, done](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            done(false, m_lpNumericJob->errorString());
    });
    connect(m_lpNumericJob, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
        [this, done](int nCode, QProcess::ExitStatus status) {
            // 1: written, but the archive ends in a partial record.
            const bool bOk = status == QProcess::NormalExit && (nCode == 0 || nCode == 1);
            done(bOk, QString::fromLocal8Bit(m_lpNumericJob->readAllStandardError()).trimmed());
        });
    ui->statusbar->showMessage(zorTmiText("export_running").arg(qsFileName));
    m_lpNumericJob->start(qsTool, args);
    return true;
}

void ZOR_TelemetryWindow::setupExportMenu()
{
    auto* lpExportMenu = new QMenu(this);
    m_lpExportAll = lpExportMenu->addAction(QString(), this, [this] { slot_triggered_Export(false); });
    m_lpExportSelected = lpExportMenu->addAction(QString(), this, [this] { slot_triggered_Export(true); });
    lpExportMenu->addSeparator();
    m_lpExportNumeric = lpExportMenu->addAction(QString(), this, [this] {
        const QString qsFileName = QFileDialog::getSaveFileName(
            this, zorTmiText("export"), QString(), zorTmiText("export_filter"));
        if (!qsFileName.isEmpty())
            exportNumericCsv(qsFileName);
    });
    for (int nFormat : {Track_Gpx, Track_Kml, Track_GeoJson})
        m_trackExports << lpExportMenu->addAction(
            QString(), this, [this, nFormat] { slot_triggered_ExportTrack(nFormat); });
    ui->toolButton_Export->setMenu(lpExportMenu);
}
