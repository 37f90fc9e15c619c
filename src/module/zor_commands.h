#ifndef ZOR_COMMANDS_H
#define ZOR_COMMANDS_H

// The module object: everything the host reaches through the four exported
// entry points ends up here, and every form reaches the host through it
// (via lpGlobalLib). It owns the one console window, created on first use
// and never deleted.

#include "module/zor_host_link.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class ZOR_Form_Commands;

class ZOR_Commands : public QObject
{
    Q_OBJECT
public:
    ZOR_Commands(const QString& qsName, int nParam1, int nParam2, int nParam3, int nParam4, QObject* parent = nullptr);
    ~ZOR_Commands() override;

    // What wParam carries in a message the module sends.
    enum class HostArg { MenuRecord, MenuHandle, ModuleObject, ByteArray, CoordSystem, ConfigParam };
    struct HostMessage
    {
        ZOR_Message nMessage;
        HostArg wParam;
    };
    // Every message the module may send to the host, with its argument.
    static const HostMessage* hostMessages(int* count);
    // Whether a host message code has a handler (everything else is ignored).
    static bool handlesMessage(int message);

    void getModuleInfo(szLibraryInfo* info) const;
    void InitConfigurator(ZOR_SendMessageFunc func);
    ZOR_SendMessageFunc GetFuncSendMessage() const { return sendMessage; }
    void initModule();

    // Calls the host; without a callback (before Initialize) nothing is sent.
    unsigned long ZOR_SendMessage(void* sender, int message, unsigned long wParam, unsigned long lParam);
    void ZOR_ReceiveMessage(void* sender, int message, unsigned long wParam, unsigned long lParam);

    void createMainMenu();
    void translateModule();
    void enableMainMenu(bool bEnable);

    void showDialogCommands();
    void closeDialogCommands();

    void deviceConnect();
    void deviceDisconnect();
    bool isConnected() const { return connected; }

    void getDeviceReceive_Start();
    void getDeviceReceive_Stop();
    void sendMessageToDevice(const QByteArray& data);
    void setDeviceReceiveMessage(QByteArray* data);

    void getDeviceConfigParam(szConfigParam& param);
    void getDeviceRavelCoordSystem(ZOR_RAVEL_CMND_COORDSYSTEM& coordSystem);
    int getConfiguratorMode() const { return configuratorMode; }
    // Reached by the host through the exported SetConfiguratorMode; takes
    // effect for the layout when the console is created.
    void setConfiguratorMode(int nMode) { configuratorMode = nMode; }

    ZOR_Form_Commands* getFormCommands() const { return formCommands; }
    uint64_t getMenuHandle() const { return menuHandle; }

private:
    void sendMenuRecord(ZOR_Message message);
    QString menuCaption() const;

    szLibraryInfo libraryInfo;
    ZOR_SendMessageFunc sendMessage = nullptr;
    QString name;
    uint64_t menuHandle = 0;
    bool connected = false;
    ZOR_Form_Commands* formCommands = nullptr;
    int32_t configuratorMode = 0;
};

// The module object, for forms; null until it is constructed.
extern ZOR_Commands* lpGlobalLib;

#endif
