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
// A file that cannot be read or parsed is reported and never becomes the
// document's file, so it is never overwritten; a failed save leaves the old
// file whole (the store saves atomically) and says why.

#include "config/zor_terminalprofile.h"

#include <QMainWindow>
#include <QSet>

#include <memory>

namespace Ui {
class ZOR_ConfigWindow;
}
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

    // Each asks before unsaved changes are discarded; false when the user
    // cancelled or the operation failed (a message box says why).
    bool newDocument();
    bool openFile(const QString& qsFileName);
    bool save();
    bool saveAs(const QString& qsFileName = QString());

    // Brings a page to the front and, when given, one of its tabs.
    void showPage(const QString& qsPageId, const QString& qsTab = QString());
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
    bool mayDiscard();
    bool mayReplace(const QString& qsFile);
    void updateTitle();
    void updateExcess();
    void addRecent(const QString& qsFileName);
    void fillRecent();
    void slot_triggered_Profile();

    std::unique_ptr<Ui::ZOR_ConfigWindow> ui;
    ZOR_HostModule* m_lpModule;
    ZOR_ConfigDocument* m_lpDoc;
    QSet<QObject*> m_excess;
    QString m_qsLanguage;
    bool m_bMarkupDropAccepted = false;
};

#endif
