#ifndef ZOR_TMI_CHARTPANE_H
#define ZOR_TMI_CHARTPANE_H

// The chart pane of the telemetry window: the archive's columns in a list
// searched by caption or field name, each ticked column a series of the
// chart, and a button that shows the whole archive again.

#include <QWidget>

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QToolButton;
class ZOR_TmiArchiveModel;
class ZOR_TmiChartView;
class ZOR_TmiColumnStore;

class ZOR_TmiChartPane : public QWidget
{
    Q_OBJECT
public:
    explicit ZOR_TmiChartPane(QWidget* parent = nullptr);

    void setSource(ZOR_TmiArchiveModel* lpModel, ZOR_TmiColumnStore* lpStore);
    // The archive or its field set changed: new list, no series.
    void reload();
    // As ticking or clearing a column (of the table) in the list.
    bool showColumn(int nColumn, bool bOn);
    QList<int> shownColumns() const;

    QLineEdit* searchEdit() const { return m_lpSearch; }
    QListWidget* columnList() const { return m_lpList; }
    ZOR_TmiChartView* chart() const { return m_lpChart; }
    void retranslate();

signals:
    void signal_CursorChanged(int nRecord);
    void signal_Status(const QString& qsText);

private:
    void slot_textChanged_Search(const QString& qsText);
    void slot_itemChanged(QListWidgetItem* lpItem);

    ZOR_TmiArchiveModel* m_lpModel = nullptr;
    ZOR_TmiColumnStore* m_lpStore = nullptr;
    QLineEdit* m_lpSearch;
    QListWidget* m_lpList;
    ZOR_TmiChartView* m_lpChart;
    QToolButton* m_lpReset;
    QToolButton* m_lpClear;
    bool m_bAxisRead = false;
};

#endif
