#ifndef ZOR_WIDGET_LOG_H
#define ZOR_WIDGET_LOG_H

// The console's log view: the table of the exchange (ZOR_Model_Log), which
// follows new rows while it stands at the bottom; find with a count of
// matches and the matches marked in the rows; a filter that says how many
// rows it hides; copy, save, a details pane; clearing that can be undone;
// sent and received rows in colours of the palette, times with or without
// milliseconds, and the exchange recorded to a file (ZOR_ConsoleLogFile).

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <memory>
#include <vector>

class QAction;
class QTableView;
class QTimer;
class ZOR_ConsoleLogFile;
class ZOR_Model_Log;
namespace Ui {
class ZOR_Widget_Log;
}

class ZOR_Widget_Log : public QWidget
{
    Q_OBJECT
public:
    explicit ZOR_Widget_Log(QWidget* parent = nullptr);
    ~ZOR_Widget_Log() override;

    ZOR_Model_Log* model() const { return m_modelLog; }
    ZOR_ConsoleLogFile* logFile() const { return m_lpLogFile; }
    QTableView* view() const;

    // A row at the end of the log (and of the recorded file).
    void append(int direction, const QByteArray& data);
    void translate();
    // A line in the log's header that tells what just happened: the text of
    // a language key, with "%1" as qsArg; "" hides it. It follows the language.
    void showNotice(const QString& qsKey, const QString& qsArg = QString());

    // Empties the log; undoClear() puts the rows back (before any that came
    // since) until the next clear.
    void clearLog();
    void undoClear();
    bool canUndoClear() const { return !m_undoRows.empty(); }

    void setTimeWithMs(bool bOn);
    // Starts (or, with "", stops) recording the exchange to this file.
    bool recordTo(const QString& qsPath);
    // The user's choices of times with milliseconds and of recording (on or
    // off, and its file) are kept here and taken up by the next log:
    // <appUserDataDirectory()>/Localization/Temp/commands_console.ini
    static QString choicesPath();

    void showFindBar();
    void hideFindBar();
    void findInLog(bool bForward);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct SavedRow
    {
        int nDirection;
        qint64 nTime;
        QByteArray data;
    };
    void initView();
    void initActions();
    void initFind();
    void restoreChoices();
    void keepChoice(const QString& qsKey, const QVariant& value);
    void fitColumns();
    void updateColours();
    void scrollLogLater();
    void showNewLogRows();
    void followLog();
    void updateHiddenCount();
    void updateDetail();
    QList<int> selectedLogRows() const;
    void copyLogRows();
    void copyLogRowsHex();
    void saveLogAs();
    void applyLogFilter();
    void slot_valueChanged_LogScrollBar(int value);
    void slot_toggled_Action_Record(bool bOn);
    void shiftLogRows(int nRows);
    void slot_clicked_ToolButton_NewRows();
    std::vector<SavedRow> takeAllRows();
    // Matches of the find text among the shown rows, counted once and then
    // only over the rows that came since; -1 row: nothing counted yet.
    int countMatches(const QString& qsNeedle);
    int matchOrdinal(const QString& qsNeedle, int nFrom, int nRow, bool bForward, bool bWrapped);

    Ui::ZOR_Widget_Log* ui;
    ZOR_Model_Log* m_modelLog = nullptr;
    ZOR_ConsoleLogFile* m_lpLogFile = nullptr;
    class MatchDelegate;
    MatchDelegate* m_lpDelegate = nullptr;
    QTimer* m_timerScroll = nullptr;
    QAction* m_actionCopy = nullptr;
    QAction* m_actionCopyHex = nullptr;
    QAction* m_actionFind = nullptr;
    QAction* m_actionSaveLog = nullptr;
    QAction* m_actionDetail = nullptr;
    QAction* m_actionTimeMs = nullptr;
    QAction* m_actionRecord = nullptr;
    bool m_bFollowLog = true;
    bool m_bRestoring = false;
    int m_nRowsSeen = 0;
    // The log's scroll position while rows come or go above it; -1 else.
    int m_nLogShiftFrom = -1;
    int m_logFilterDirection = -1;
    QString m_qsLogFilterText;
    std::vector<SavedRow> m_undoRows;
    QString m_qsNoticeKey;
    QString m_qsNoticeArg;
    struct FindCount
    {
        QString qsNeedle;
        int nRowsCounted = -1;
        int nMatches = 0;
        int nLastRow = -1;
        int nLastOrdinal = 0;
    } findCount;
};

#endif
