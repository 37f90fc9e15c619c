#ifndef ZOR_HOST_WINDOW_H
#define ZOR_HOST_WINDOW_H

// The reference host's main window: menus around a ZOR_HostModule. All the
// link logic lives in the module object; this class only asks the user.

#include <QMainWindow>
#include <QPointer>
#include <memory>

namespace Ui {
class ZOR_HostWindow;
}
class ZOR_ConfigWindow;
class ZOR_HostModule;
class ZOR_TelemetryWindow;

class ZOR_HostWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit ZOR_HostWindow(ZOR_HostModule* lpModule, QWidget* parent = nullptr);
    ~ZOR_HostWindow() override;

    // "simulator", "serial:PORT" or "serial:PORT:BAUD"; false when the text
    // is malformed or the link did not open (the status bar says why).
    bool connectTerminal(const QString& qsLink);
    // The configuration window ("Settings" menu), created on first use and shown.
    ZOR_ConfigWindow* openConfigWindow();
    // The telemetry window ("Telemetry" menu), created on first use and shown.
    ZOR_TelemetryWindow* openTelemetryWindow();
    // The About box's text: program and Qt versions, licence, and where
    // the language files were looked for and found.
    static QString aboutText();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Menus and the window's own texts in the current language.
    void retranslate();
    void slot_triggered_Serial();
    void slot_triggered_Dialect();
    void slot_triggered_Ussd();
    void slot_triggered_About();
    // What the module sent, as far as the window has something to say.
    void slot_ModuleMessage(int nMessage, unsigned long wParam, unsigned long lParam);

    std::unique_ptr<Ui::ZOR_HostWindow> ui;
    ZOR_HostModule* m_lpModule;
    QPointer<ZOR_ConfigWindow> m_lpConfig;
    QPointer<ZOR_TelemetryWindow> m_lpTelemetry;
    QMenu* m_lpTelemetryMenu = nullptr;
};

#endif
