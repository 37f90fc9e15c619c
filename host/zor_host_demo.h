#ifndef ZOR_HOST_DEMO_H
#define ZOR_HOST_DEMO_H

// The scripted demo of the reference host, for machines without a display
// and for the README picture: opens the module's console from its menu
// entry, types and sends a few commands through the console's own widgets,
// asks both SIM ICCIDs, prints the console's log rows to stdout and,
// optionally, saves a picture of the host with the console. Finishes with
// the exit code for the application: 0 when both ICCIDs arrived.

#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;
class ZOR_HostModule;

class ZOR_HostDemo : public QObject
{
    Q_OBJECT
public:
    ZOR_HostDemo(
        ZOR_HostModule* lpModule, QWidget* lpHostWindow, const QString& qsScreenshot, QObject* parent = nullptr);

    void start();

signals:
    void signal_Finished(int nExitCode);

private:
    void openConsole();
    void runStep();
    void waitForIccid();
    void fail(const QString& qsWhy);
    void finish();
    bool type(const QString& qsCommand);
    template <class T>
    T* console(const char* name) const;
    bool saveScreenshot() const;

    ZOR_HostModule* m_lpModule;
    QWidget* m_lpHostWindow;
    QString m_qsScreenshot;
    QPointer<QWidget> m_lpConsole;
    int m_nStep = 0;
    int m_nWaitedMs = 0;
};

#endif
