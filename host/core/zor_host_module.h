#ifndef ZOR_HOST_MODULE_H
#define ZOR_HOST_MODULE_H

// The host's side of the module link, without any window: loads a module
// library by file name, calls its entry points in the order it expects,
// answers every message it sends and carries the terminal's bytes both ways.
// The window only shows the menu actions this class creates.
//
// The module's callback carries no context, so one object at a time can be
// the host of a loaded module.

#include "module/zor_host_link.h"
#include "zor_reply_assembler.h"
#include "zor_terminal_link.h"

#include <QHash>
#include <QLibrary>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QAction;

class ZOR_HostModule : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_HostModule(QObject* parent = nullptr);
    ~ZOR_HostModule() override;

    // Loads and initialises the module, then asks it for its menu (2030).
    // nConfiguratorMode goes to the optional SetConfiguratorMode entry point
    // before anything else (5 selects the RAVEL layout of the console).
    bool load(const QString& qsPath, int nConfiguratorMode = 0);
    QString errorString() const { return m_qsError; }
    bool isLoaded() const { return m_fnReceive != nullptr; }
    const szLibraryInfo& libraryInfo() const { return m_info; }

    // The answers to 2038 (GNSS command dialect) and 2356 (balance USSD).
    void setCoordSystem(int nDialect) { m_nCoordSystem = nDialect; }
    int coordSystem() const { return m_nCoordSystem; }
    void setUssdRequest(const QString& qsRequest) { m_qsUssdRequest = qsRequest; }
    QString ussdRequest() const { return m_qsUssdRequest; }

    // Sets the application's language property and tells the module (2031).
    void setLanguage(const QString& qsLanguage);

    // Takes the link over, replacing the current one (2052 for the old,
    // 2051 for the new). A link that does not open is deleted and false
    // returned; errorString() says why.
    bool connectLink(ZOR_TerminalLink* lpLink);
    // Closes the link; no reconnection is tried after this.
    void disconnectLink();
    // Connects again to the last link that was open (false when there is
    // none, or it does not open).
    bool reconnect();
    QString lastLink() const { return m_qsLastLink; }
    // A link that broke is tried again at this interval until it opens,
    // another link is chosen or the user disconnects.
    void setRetryIntervalMs(int nMs) { m_retry.setInterval(nMs); }
    bool isRetrying() const { return m_retry.isActive(); }
    ZOR_TerminalLink* link() const { return m_lpLink; }
    // How long the line must be quiet before bytes without a line end go
    // to the module as one block (ZOR_ReplyAssembler).
    void setIdleGapMs(int nMs) { m_assembler.setIdleGapMs(nMs); }
    int idleGapMs() const { return m_assembler.idleGapMs(); }
    bool isForwarding() const { return m_bForwarding; }

    QList<QAction*> menuActions() const { return m_actions.values(); }
    void closeWindows();
    void send(int nMessage, unsigned long wParam = 0, unsigned long lParam = 0);

signals:
    void signal_MenuAdded(QAction* lpAction);
    void signal_Status(const QString& qsText);
    // Every message the module sent, after the host has handled it.
    void signal_ModuleMessage(int nMessage, unsigned long wParam, unsigned long lParam);

private:
    static unsigned long callback(void* sender, int nMessage, unsigned long wParam, unsigned long lParam);
    void handle(int nMessage, unsigned long wParam, unsigned long lParam);
    bool fail(const QString& qsError);
    void slot_Received(const QByteArray& bytes);
    void deliver(const QByteArray& bytes);
    void slot_Lost(const QString& qsReason);
    void slot_Retry();
    void closeLink();

    QLibrary m_library;
    ZOR_ReceiveMessageFunc m_fnReceive = nullptr;
    szLibraryInfo m_info{};
    QString m_qsError;
    QHash<quint64, QAction*> m_actions;
    quint64 m_nLastHandle = 0;
    QPointer<ZOR_TerminalLink> m_lpLink;
    ZOR_ReplyAssembler m_assembler;
    QString m_qsLastLink;
    QTimer m_retry;
    bool m_bForwarding = false;
    int m_nCoordSystem = 0;
    QString m_qsUssdRequest = QStringLiteral("*100#");
};

#endif
