#include "module/zor_commands.h"

#include "commands/zor_form_commands.h"
#include "module/zor_language.h"

#include <QApplication>
#include <QIcon>

#include <cstring>
#include <iterator>

ZOR_Commands* lpGlobalLib = nullptr;

namespace {

const char* const kMenuIcon = ":/Pic/Resources/Image/img_cmd(24x24).png";
const char* const kCaption = "ZOR Commands";

// Host -> module. wParam is handed on; the sender is never looked at.
struct Route
{
    ZOR_Message nMessage;
    void (*handle)(ZOR_Commands& lib, unsigned long wParam);
};

const Route kRoutes[] = {
    {ZOR_MSG_CREATE_MENU, [](ZOR_Commands& lib, unsigned long) { lib.createMainMenu(); }},
    {ZOR_MSG_LANGUAGE_CHANGED, [](ZOR_Commands& lib, unsigned long) { lib.translateModule(); }},
    {ZOR_MSG_MENU_CHOSEN, [](ZOR_Commands& lib, unsigned long) { lib.showDialogCommands(); }},
    {ZOR_MSG_CLOSE_WINDOWS, [](ZOR_Commands& lib, unsigned long) { lib.closeDialogCommands(); }},
    {ZOR_MSG_DEVICE_CONNECTED, [](ZOR_Commands& lib, unsigned long) { lib.deviceConnect(); }},
    {ZOR_MSG_DEVICE_DISCONNECTED, [](ZOR_Commands& lib, unsigned long) { lib.deviceDisconnect(); }},
    {ZOR_MSG_DEVICE_DATA,
        [](ZOR_Commands& lib, unsigned long wParam) {
            lib.setDeviceReceiveMessage(reinterpret_cast<QByteArray*>(wParam));
        }},
};

// Module -> host.
const ZOR_Commands::HostMessage kHostMessages[] = {
    {ZOR_MSG_MENU_ADD, ZOR_Commands::HostArg::MenuRecord},
    {ZOR_MSG_MENU_UPDATE, ZOR_Commands::HostArg::MenuRecord},
    {ZOR_MSG_MENU_ENABLE, ZOR_Commands::HostArg::MenuHandle},
    {ZOR_MSG_GET_COORDSYSTEM, ZOR_Commands::HostArg::CoordSystem},
    {ZOR_MSG_RECEIVE_START, ZOR_Commands::HostArg::ModuleObject},
    {ZOR_MSG_RECEIVE_STOP, ZOR_Commands::HostArg::ModuleObject},
    {ZOR_MSG_SEND_TO_DEVICE, ZOR_Commands::HostArg::ByteArray},
    {ZOR_MSG_GET_CONFIG_PARAM, ZOR_Commands::HostArg::ConfigParam},
};

const Route* findRoute(int message)
{
    for (const Route& route : kRoutes)
        if (route.nMessage == message)
            return &route;
    return nullptr;
}

template <typename T>
unsigned long toArg(T* p)
{
    return reinterpret_cast<unsigned long>(p);
}

// The console is a widget: without a QApplication it cannot exist.
bool widgetsAvailable()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

} // namespace

ZOR_Commands::ZOR_Commands(const QString& qsName, int nParam1, int nParam2, int nParam3, int nParam4, QObject* parent)
    : QObject(parent)
    , name(qsName)
{
    std::memset(&libraryInfo, 0, sizeof(libraryInfo));
    libraryInfo.lpLibrary = this;
    // Both are short constants; the host's buffers are fixed at 255 bytes.
    qstrncpy(libraryInfo.szName, qsName.toUtf8().constData(), sizeof(libraryInfo.szName));
    qstrncpy(
        libraryInfo.szCaption, QString::fromUtf8(kCaption).toLocal8Bit().constData(), sizeof(libraryInfo.szCaption));
    libraryInfo.nParam1 = nParam1;
    libraryInfo.nParam2 = nParam2;
    libraryInfo.nParam3 = nParam3;
    libraryInfo.nParam4 = nParam4;
    libraryInfo.nFlags = 1;
    lpGlobalLib = this;
}

ZOR_Commands::~ZOR_Commands()
{
    if (lpGlobalLib == this)
        lpGlobalLib = nullptr;
}

const ZOR_Commands::HostMessage* ZOR_Commands::hostMessages(int* count)
{
    if (count)
        *count = int(std::size(kHostMessages));
    return kHostMessages;
}

bool ZOR_Commands::handlesMessage(int message)
{
    return findRoute(message) != nullptr;
}

void ZOR_Commands::getModuleInfo(szLibraryInfo* info) const
{
    if (info)
        std::memcpy(info, &libraryInfo, sizeof(libraryInfo));
}

void ZOR_Commands::InitConfigurator(ZOR_SendMessageFunc func)
{
    sendMessage = func;
    lpGlobalLib = this;
}

void ZOR_Commands::initModule()
{
    lpGlobalLib = this;
}

unsigned long ZOR_Commands::ZOR_SendMessage(void* sender, int message, unsigned long wParam, unsigned long lParam)
{
    if (!sendMessage)
        return 0;
    return sendMessage(sender, message, wParam, lParam);
}

void ZOR_Commands::ZOR_ReceiveMessage(void*, int message, unsigned long wParam, unsigned long)
{
    if (const Route* route = findRoute(message))
        route->handle(*this, wParam);
}

QString ZOR_Commands::menuCaption() const
{
    return formCommands ? formCommands->getWindowTitle() : zorTr(QStringLiteral("mdln_001"));
}

void ZOR_Commands::sendMenuRecord(ZOR_Message message)
{
    QIcon icon(QString::fromLatin1(kMenuIcon));
    szMenuItem item;
    std::memset(&item, 0, sizeof(item));
    item.lpLibrary = this;
    item.lpIcon = &icon;
    item.nMenuHandle = menuHandle;
    qstrncpy(item.szCaption, menuCaption().toLocal8Bit().constData(), sizeof(item.szCaption));
    ZOR_SendMessage(this, message, toArg(&item), 0);
    if (message == ZOR_MSG_MENU_ADD)
        menuHandle = item.nMenuHandle;
}

void ZOR_Commands::createMainMenu()
{
    sendMenuRecord(ZOR_MSG_MENU_ADD);
    // Usable only while a terminal is connected.
    enableMainMenu(false);
}

void ZOR_Commands::translateModule()
{
    ZOR_Language::instance().reload();
    if (formCommands)
        formCommands->translateForm();
    sendMenuRecord(ZOR_MSG_MENU_UPDATE);
}

void ZOR_Commands::enableMainMenu(bool bEnable)
{
    uint8_t nEnable = bEnable ? 1 : 0;
    ZOR_SendMessage(this, ZOR_MSG_MENU_ENABLE, static_cast<unsigned long>(menuHandle), toArg(&nEnable));
}

void ZOR_Commands::showDialogCommands()
{
    if (!formCommands) {
        if (!widgetsAvailable())
            return;
        formCommands = new ZOR_Form_Commands();
    }
    formCommands->showForm();
    if (connected)
        formCommands->deviceConnect();
}

void ZOR_Commands::closeDialogCommands()
{
    if (formCommands)
        formCommands->close();
}

void ZOR_Commands::deviceConnect()
{
    connected = true;
    enableMainMenu(true);
    if (formCommands)
        formCommands->deviceConnect();
}

void ZOR_Commands::deviceDisconnect()
{
    connected = false;
    enableMainMenu(false);
    if (formCommands)
        formCommands->deviceDisconnect();
}

void ZOR_Commands::getDeviceReceive_Start()
{
    ZOR_SendMessage(this, ZOR_MSG_RECEIVE_START, toArg(this), 0);
}

void ZOR_Commands::getDeviceReceive_Stop()
{
    ZOR_SendMessage(this, ZOR_MSG_RECEIVE_STOP, toArg(this), 0);
}

void ZOR_Commands::sendMessageToDevice(const QByteArray& data)
{
    QByteArray bytes(data);
    ZOR_SendMessage(this, ZOR_MSG_SEND_TO_DEVICE, toArg(&bytes), 0);
}

void ZOR_Commands::setDeviceReceiveMessage(QByteArray* data)
{
    if (data && formCommands)
        formCommands->deviceReceive(data);
}

void ZOR_Commands::getDeviceConfigParam(szConfigParam& param)
{
    std::memset(&param, 0, sizeof(param));
    ZOR_SendMessage(this, ZOR_MSG_GET_CONFIG_PARAM, toArg(&param), 0);
}

void ZOR_Commands::getDeviceRavelCoordSystem(ZOR_RAVEL_CMND_COORDSYSTEM& coordSystem)
{
    coordSystem.nCoordSystem = 0;
    ZOR_SendMessage(this, ZOR_MSG_GET_COORDSYSTEM, toArg(&coordSystem), 0);
}
