#ifndef ZOR_CONFIG_WINDOW_H
#define ZOR_CONFIG_WINDOW_H

// The host's configuration window: one settings document (ZOR_ConfigDocument)
// edited by every settings form of the library, one page per entry of
// zorConfigPages() - a form added there appears here with no change to this
// window. New / Open / Save / Save As / recent files, a marker for unsaved
// changes in the title and a question before they are discarded, the
// terminal profile applied to every form, and a warning while the telemetry
// record is over the size the terminal accepts (saving stays possible).
//
// The workbench around the pages: a Problems pane (what the opened file
// held that the forms do not keep as written, as `zor-tool config check`
// lists it), a Changes pane (every value that differs from the file as
// opened, from the defaults or from another file, by the rule of
// `zor-tool config diff`; the widgets are marked), undo and redo across all
// pages (a snapshot of the document per edit), a search box over captions,
// attribute names and values, and the settings sheet (print or PDF).
//
// A file that cannot be read or parsed is reported and never becomes the
// document's file, so it is never overwritten; a file that is not a
// configuration is only read into a new document after the user agrees; a
// failed save leaves the old file whole (the store saves atomically) and
// says why.

#include "config/zor_terminalprofile.h"

#include <QByteArray>
#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QSet>

#include <memory>

namespace Ui {
class ZOR_ConfigWindow;
}
class QLabel;
class QTreeWidgetItem;
class QUndoStack;
class ZOR_ConfigDocument;
class ZOR_HostModule;

class ZOR_ConfigWindow : public QMainWindow
{
    Q_OBJECT
public:
    // lpModule: the host link whose terminal the profile dialog may ask; may be null.
    explicit ZOR_ConfigWindow(ZOR_HostModule* lpModule = nullptr, QWidget* parent = nullptr);
    ~ZOR_ConfigWindow() override;

    ZOR_ConfigDocument* document() const { return m_lpDoc; }
    QUndoStack* undoStack() const { return m_lpUndo; }

    // Each asks before unsaved changes are discarded; false when the user
    // cancelled or the operation failed (a message box says why).
    bool newDocument();
    bool openFile(const QString& qsFileName);
    bool save();
    bool saveAs(const QString& qsFileName = QString());
    // Lists the differences against another configuration in the Changes pane.
    bool compareWith(const QString& qsFileName);
    bool exportSheet(const QString& qsFileName);

    // Brings a page to the front and, when given, one of its tabs.
    void showPage(const QString& qsPageId, const QString& qsTab = QString());
    // Shows the page and tab of a widget, scrolls to it and highlights it.
    void goToWidget(QWidget* lpWidget);
    // The next setting whose caption, attribute or value holds qsText; false
    // when none does.
    bool findNext(const QString& qsText);
    void setProfile(const ZOR_TerminalProfile& profile);
    // True while some form reports a record the terminal would refuse.
    bool isExcessShown() const { return !m_excess.isEmpty(); }
    void retranslate();
    // A picture of the window as it stands.
    bool saveScreenshot(const QString& qsFileName);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private slots:
    void slot_Excess_Size(bool bExcess);

private:
    void buildPages();
    void connectActions();
    void restoreLayout();
    void saveLayout();
    bool mayDiscard();
    bool mayReplace(const QString& qsFile);
    void updateTitle();
    void updateStatus();
    void updatePageTitle();
    void updateExcess();
    void addRecent(const QString& qsFileName);
    void fillRecent();
    void slot_triggered_Profile();
    void slot_FormEdited();
    void takeSnapshot();
    void restoreSnapshot(const QByteArray& bytes);
    void startFrom(const QString& qsStatusKey, const QString& qsStatusArg);
    void fillProblems();
    void refreshChanges();
    void markChanged(const QSet<QWidget*>& widgets);
    void mapWidgets();
    void printSheet();
    void translatePanes();

    std::unique_ptr<Ui::ZOR_ConfigWindow> ui;
    ZOR_HostModule* m_lpModule;
    ZOR_ConfigDocument* m_lpDoc;
    QUndoStack* m_lpUndo;
    QLabel* m_lpStatus;
    QSet<QObject*> m_excess;
    QString m_qsLanguage;
    bool m_bMarkupDropAccepted = false;
    QString m_qsStatusKey;
    QString m_qsStatusArg;
    QByteArray m_current; // what the document renders now
    QByteArray m_opened; // as opened (or as last saved)
    QByteArray m_defaults;
    QHash<QString, QByteArray> m_compared; // other files, by name
    QHash<QString, QPointer<QWidget>> m_widgets; // "NODE/attr" -> widget
    QVector<QString> m_order; // the keys of m_widgets in page order
    QSet<QWidget*> m_marked;
    int m_nFound = -1;
    bool m_bSnapshotDue = false;
    bool m_bRestoring = false;
};

#endif
