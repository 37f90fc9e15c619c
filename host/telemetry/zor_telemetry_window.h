#ifndef ZOR_TELEMETRY_WINDOW_H
#define ZOR_TELEMETRY_WINDOW_H

// The host's telemetry window: a terminal's archive (records of one field
// set, back to back) as a table of the CSV columns, decoded only as far as
// it is on screen; beside it the selected record's bytes and fields, with
// the bytes of the selected value highlighted (and a byte chosen there
// selects its field); the field set typed as a mask or hex, picked as
// fields, or taken from a settings file or the open configuration - a
// change re-decodes the view at once; and a CSV export of the archive or the
// selected records in the background, with progress and Cancel.

#include "zor_tmi_fieldset.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>

namespace Ui {
class ZOR_TelemetryWindow;
}
class QProcess;
class QProgressBar;
class QPushButton;
class QTableView;
class QTreeWidget;
class QDateTime;
class ZOR_ConfigDocument;
class ZOR_TmiArchiveModel;
class ZOR_TmiChartPane;
class ZOR_TmiColumnStore;
class ZOR_TmiExportJob;
class ZOR_TmiRowFilter;
class ZOR_TmiTrackPane;

class ZOR_TelemetryWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit ZOR_TelemetryWindow(QWidget* parent = nullptr);
    ~ZOR_TelemetryWindow() override;

    // False when the file cannot be opened (the window says why). A file
    // the field set does not fit is opened and its problem shown.
    bool openFile(const QString& qsFileName);
    void setFieldSet(const ZOR_TmiFieldSet& fieldSet);
    ZOR_TmiFieldSet fieldSet() const;
    // Where "From the open configuration" looks; may answer null.
    void setConfigSource(std::function<ZOR_ConfigDocument*()> source);
    // The field set of the configuration's protocol page; false without one.
    bool takeFieldSetFromConfig();
    bool takeFieldSetFromFile(const QString& qsFileName);

    ZOR_TmiArchiveModel* model() const { return m_lpModel; }
    // The rows the table shows (all, or those a filter kept).
    ZOR_TmiRowFilter* rowFilter() const { return m_lpFilter; }
    ZOR_TmiColumnStore* columnStore() const { return m_lpStore; }
    ZOR_TmiChartPane* chartPane() const;
    ZOR_TmiTrackPane* trackPane() const;
    // The record of the table's current row, -1 when none.
    int currentRecord() const;

    // Selects the first record at or after a time; false when the records
    // carry no time or none is that late.
    bool goToTime(const QDateTime& at);
    // Shows only the records whose event code is in the list ("2, 5-7";
    // empty: any) and whose value in a column (-1: none) compares to a
    // number with an operator of conditionOperators(). False, with the
    // reason in the status line, when the filter cannot be read.
    bool filterRows(const QString& qsCodes, int nColumn = -1, const QString& qsOperator = QString(), double dValue = 0);
    void clearFilter();
    // Charts the columns whose values have these names (getters such as
    // "Speed", "RS485_1", "EngineWork"); false when one is not in the table.
    bool chartValues(const QStringList& names);
    static QStringList conditionOperators();
    enum ColumnPreset { Columns_All, Columns_NonZero, Columns_Chart };
    void applyColumnPreset(int nPreset);
    QTableView* tableView() const;
    QTreeWidget* fieldList() const;
    // The line above the table: the archive and what is wrong with it.
    QString infoText() const;

    // As the user clicking a cell, or a byte of the inspector.
    void selectCell(int nRow, int nColumn);
    void selectByte(int nOffset);
    // The record bytes highlighted in the inspector; false when none.
    bool highlightedBytes(int& nOffset, int& nLength) const;

    // Starts the export (selected records, or all); false when one runs or
    // there is nothing to export.
    bool exportCsv(const QString& qsFileName, bool bSelectedOnly);
    void cancelExport();
    // The drive as a track file through the drive library; false while the
    // track is still being read or when the file cannot be written.
    enum TrackFormat { Track_Gpx, Track_Kml, Track_GeoJson };
    bool exportTrack(int nFormat, const QString& qsFileName);
    // The CSV for analysis (numbers in the columns' units), written by
    // zor-tool beside the host; signal_ExportFinished when done.
    bool exportNumericCsv(const QString& qsFileName);
    bool isExporting() const { return m_lpJob != nullptr; }

    void retranslate();
    bool saveScreenshot(const QString& qsFileName);

signals:
    // ZOR_TmiExportJob::Result
    void signal_ExportFinished(int nResult, const QString& qsError);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void fitColumnsToFirstRecord();
    void slot_clicked_Open();
    void slot_clicked_Fields();
    void slot_clicked_FromFile();
    void slot_editingFinished_FieldSet();
    void slot_currentIndexChanged_Version(int nIndex);
    void slot_currentChanged_Record(const QModelIndex& current);
    void slot_itemSelectionChanged_Bytes();
    void slot_triggered_Export(bool bSelectedOnly);
    void slot_clicked_Filter();
    void slot_triggered_ExportTrack(int nFormat);
    void slot_clicked_ChooseColumns();
    void setupNavigation();
    void setupExportMenu();
    void archiveChanged();
    void followRecord(int nRecord);
    void showFieldSet();
    void updateInfo();
    void showRecord(int nRow);
    void highlight(int nOffset, int nLength);

    std::unique_ptr<Ui::ZOR_TelemetryWindow> ui;
    ZOR_TmiArchiveModel* m_lpModel;
    ZOR_TmiRowFilter* m_lpFilter;
    ZOR_TmiColumnStore* m_lpStore;
    std::function<ZOR_ConfigDocument*()> m_configSource;
    ZOR_TmiExportJob* m_lpJob = nullptr;
    QString m_qsExportFile;
    QProgressBar* m_lpProgress;
    QPushButton* m_lpCancel;
    QAction* m_lpExportAll;
    QAction* m_lpExportSelected;
    QList<QAction*> m_trackExports;
    QAction* m_lpExportNumeric = nullptr;
    QProcess* m_lpNumericJob = nullptr;
    int m_nShownRow = -1;
    int m_nHighlightOffset = -1;
    int m_nHighlightLength = 0;
    bool m_bSyncing = false;
};

#endif
