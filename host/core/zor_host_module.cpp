#include "zor_host_module.h"

#include "zor_host_texts.h"
#include "zor_terminal_link.h"

#include <QAction>
#include <QCoreApplication>
#include <QFileInfo>
#include <QIcon>

namespace {

ZOR_HostModule* lpHost = nullptr;

QAction* actionOf(const QHash<quint64, QAction*>& actions, quint64 nHandle)
{
    return actions.value(nHandle, nullptr);
}

template <class T>
T* record(unsigned long wParam)
{
    return reinterpret_cast<T*>(wParam);
}

} // namespace

ZOR_HostModule::ZOR_HostModule(QObject* parent)
    : QObject(parent)
{
    connect(&m_assembler, &ZOR_ReplyAssembler::signal_Reply, this, &ZOR_HostModule::deliver);
    m_retry.setInterval(1000);
    connect(&m_retry, &QTimer::timeout, this, &ZOR_HostModule::slot_Retry);
}

ZOR_HostModule::~ZOR_HostModule()
{
    if (m_lpLink) {
        m_lpLink->close();
        delete m_lpLink;
    }
    closeWindows();
    if (lpHost == this)
        lpHost = nullptr;
    // The library stays loaded: its console window has no parent and may
    // outlive this object until the application ends.
}

bool ZOR_HostModule::fail(const QString& qsError)
{
    m_qsError = qsError;
    m_fnReceive = nullptr;
    return false;
}

bool ZOR_HostModule::load(const QString& qsPath, int nConfiguratorMode)
{
    if (lpHost && lpHost != this)
        return fail(tr("another module is loaded already"));
    if (!QFileInfo(qsPath).isFile())
        return fail(tr("the module library %1 does not exist").arg(qsPath));
    m_library.setFileName(qsPath);
    if (!m_library.load())
        return fail(tr("cannot load the module %1: %2").arg(qsPath, m_library.errorString()));

    ZOR_IsZorLibraryVFunc fnIsZor = nullptr;
    ZOR_GetLibraryInfoFunc fnInfo = nullptr;
    ZOR_InitializeFunc fnInitialize = nullptr;
    ZOR_ReceiveMessageFunc fnReceive = nullptr;
    const struct
    {
        const char* name;
        void** target;
    } entries[] = {
        {"IsZorLibraryV", reinterpret_cast<void**>(&fnIsZor)},
        {"GetLibraryInfo", reinterpret_cast<void**>(&fnInfo)},
        {"Initialize", reinterpret_cast<void**>(&fnInitialize)},
        {"ReceiveMessage", reinterpret_cast<void**>(&fnReceive)},
    };
    for (const auto& entry : entries) {
        *entry.target = reinterpret_cast<void*>(m_library.resolve(entry.name));
        if (!*entry.target)
            return fail(tr("%1 has no entry point %2").arg(qsPath, QLatin1String(entry.name)));
    }
    const int nKind = fnIsZor();
    if (nKind != 1)
        return fail(tr("%1 is not a module of this host (IsZorLibraryV returned %2)").arg(qsPath).arg(nKind));
    if (auto fnMode = reinterpret_cast<ZOR_SetConfiguratorModeFunc>(m_library.resolve("SetConfiguratorMode")))
        fnMode(nConfiguratorMode);
    fnInfo(&m_info);
    m_info.szName[sizeof m_info.szName - 1] = 0;
    m_info.szCaption[sizeof m_info.szCaption - 1] = 0;
    lpHost = this;
    fnInitialize(&ZOR_HostModule::callback);
    m_fnReceive = fnReceive;
    send(ZOR_MSG_CREATE_MENU);
    return true;
}

void ZOR_HostModule::send(int nMessage, unsigned long wParam, unsigned long lParam)
{
    if (m_fnReceive)
        m_fnReceive(this, nMessage, wParam, lParam);
}

unsigned long ZOR_HostModule::callback(void*, int nMessage, unsigned long wParam, unsigned long lParam)
{
    if (lpHost) {
        lpHost->handle(nMessage, wParam, lParam);
        emit lpHost->signal_ModuleMessage(nMessage, wParam, lParam);
    }
    return 0;
}

void ZOR_HostModule::handle(int nMessage, unsigned long wParam, unsigned long lParam)
{
    switch (nMessage) {
    case ZOR_MSG_MENU_ADD:
    case ZOR_MSG_MENU_UPDATE: {
        auto* item = record<szMenuItem>(wParam);
        if (!item)
            return;
        // The icon and the caption belong to the module and live only
        // during this call: copy both.
        const QIcon icon = item->lpIcon ? *static_cast<QIcon*>(item->lpIcon) : QIcon();
        const QString qsCaption = QString::fromLocal8Bit(
            item->szCaption, int(qstrnlen(item->szCaption, sizeof item->szCaption)));
        QAction* lpAction = actionOf(m_actions, item->nMenuHandle);
        if (nMessage == ZOR_MSG_MENU_ADD) {
            lpAction = new QAction(icon, qsCaption, this);
            item->nMenuHandle = ++m_nLastHandle;
            m_actions.insert(item->nMenuHandle, lpAction);
            connect(lpAction, &QAction::triggered, this, [this] { send(ZOR_MSG_MENU_CHOSEN); });
            emit signal_MenuAdded(lpAction);
        } else if (lpAction) {
            lpAction->setIcon(icon);
            lpAction->setText(qsCaption);
        }
        break;
    }
    case ZOR_MSG_MENU_ENABLE:
        if (QAction* lpAction = actionOf(m_actions, wParam))
            lpAction->setEnabled(lParam && *reinterpret_cast<const uint8_t*>(lParam) != 0);
        break;
    case ZOR_MSG_GET_COORDSYSTEM:
        if (auto* coord = record<ZOR_RAVEL_CMND_COORDSYSTEM>(wParam))
            coord->nCoordSystem = m_nCoordSystem;
        break;
    case ZOR_MSG_GET_CONFIG_PARAM:
        if (auto* param = record<szConfigParam>(wParam))
            qstrncpy(param->szUssdBalance, m_qsUssdRequest.toLatin1().constData(), sizeof param->szUssdBalance);
        break;
    case ZOR_MSG_RECEIVE_START:
    case ZOR_MSG_RECEIVE_STOP: m_bForwarding = nMessage == ZOR_MSG_RECEIVE_START; break;
    case ZOR_MSG_SEND_TO_DEVICE:
        if (wParam && m_lpLink)
            m_lpLink->write(*record<QByteArray>(wParam));
        break;
    default: break;
    }
}

void ZOR_HostModule::setLanguage(const QString& qsLanguage)
{
    // The module reads its language from this application property.
    if (QCoreApplication::instance())
        QCoreApplication::instance()->setProperty("zor_programLanguage", qsLanguage);
    send(ZOR_MSG_LANGUAGE_CHANGED);
}

bool ZOR_HostModule::connectLink(ZOR_TerminalLink* lpLink)
{
    disconnectLink();
    if (!lpLink->open()) {
        m_qsError = zorHostText("status_cannot_open").arg(lpLink->description(), lpLink->errorString());
        if (lpLink->failure() == ZOR_TerminalLink::Failure::NoPermission)
            m_qsError += QStringLiteral(" (%1)").arg(zorHostText("hint_dialout"));
        delete lpLink;
        emit signal_Status(m_qsError);
        return false;
    }
    lpLink->setParent(this);
    m_lpLink = lpLink;
    connect(lpLink, &ZOR_TerminalLink::signal_Received, this, &ZOR_HostModule::slot_Received);
    connect(lpLink, &ZOR_TerminalLink::signal_Lost, this, &ZOR_HostModule::slot_Lost);
    m_qsLastLink = lpLink->connectText();
    emit signal_Status(zorHostText("status_connected").arg(lpLink->description()));
    send(ZOR_MSG_DEVICE_CONNECTED);
    return true;
}

void ZOR_HostModule::disconnectLink()
{
    m_retry.stop();
    closeLink();
}

void ZOR_HostModule::closeLink()
{
    if (!m_lpLink)
        return;
    ZOR_TerminalLink* lpLink = m_lpLink;
    m_lpLink = nullptr;
    m_assembler.flush();
    lpLink->close();
    lpLink->deleteLater();
    emit signal_Status(zorHostText("status_disconnected"));
    send(ZOR_MSG_DEVICE_DISCONNECTED);
}

void ZOR_HostModule::closeWindows()
{
    send(ZOR_MSG_CLOSE_WINDOWS);
}

void ZOR_HostModule::slot_Received(const QByteArray& bytes)
{
    if (sender() == m_lpLink)
        m_assembler.feed(bytes);
}

void ZOR_HostModule::deliver(const QByteArray& bytes)
{
    if (!m_bForwarding)
        return;
    QByteArray data = bytes;
    send(ZOR_MSG_DEVICE_DATA, reinterpret_cast<unsigned long>(&data));
}

void ZOR_HostModule::slot_Lost(const QString& qsReason)
{
    const QString qsWhat = m_lpLink ? m_lpLink->description() : m_qsLastLink;
    closeLink();
    emit signal_Status(zorHostText("status_lost").arg(qsWhat, qsReason));
    m_retry.start();
}

bool ZOR_HostModule::reconnect()
{
    ZOR_TerminalLink* lpLink = ZOR_TerminalLink::create(m_qsLastLink);
    if (!lpLink) {
        m_qsError = zorHostText("status_no_last");
        emit signal_Status(m_qsError);
        return false;
    }
    return connectLink(lpLink);
}

// Quiet attempts: the status bar keeps saying that the link is lost until
// the port is back (an adapter plugged in again, the far end restarted).
void ZOR_HostModule::slot_Retry()
{
    ZOR_TerminalLink* lpLink = ZOR_TerminalLink::create(m_qsLastLink);
    if (!lpLink) {
        m_retry.stop();
        return;
    }
    const bool bOpen = lpLink->open();
    if (!bOpen) {
        delete lpLink;
        return;
    }
    connectLink(lpLink); // open already: this only takes it over
}
