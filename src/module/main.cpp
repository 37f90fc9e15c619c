// Static initialisation of the module. The order matters and is the order
// of definition within this one translation unit: the module's name, the
// module object, then the global prefix strings.

#include "module/zor_commands.h"
#include "module/zor_global.h"
#include "module/zor_host_link.h"

#include <QString>

QString qsName = QStringLiteral("ZOR_Commands");

// Lives from load to unload; its constructor also sets lpGlobalLib.
ZOR_Commands cmdLib(qsName, 3, 5, 8, 1, nullptr);

// The entry points a host resolves by name. Kept thin: all work is done by
// cmdLib. Their typedefs and the records are in zor_host_link.h.
#define ZOR_EXPORT extern "C" __attribute__((visibility("default")))

ZOR_EXPORT int IsZorLibraryV()
{
    return 1;
}

ZOR_EXPORT szLibraryInfo* GetLibraryInfo(szLibraryInfo* info)
{
    cmdLib.getModuleInfo(info);
    return info;
}

ZOR_EXPORT void Initialize(ZOR_SendMessageFunc func)
{
    cmdLib.InitConfigurator(func);
}

ZOR_EXPORT void ReceiveMessage(void* sender, int message, unsigned long wParam, unsigned long lParam)
{
    cmdLib.ZOR_ReceiveMessage(sender, message, wParam, lParam);
}

// Not part of the classic four: lets a host choose the console layout before
// the console is first opened (5 is the RAVEL layout, 0 the default).
ZOR_EXPORT void SetConfiguratorMode(int nMode)
{
    cmdLib.setConfiguratorMode(nMode);
}

const QString glqsBtPreffix_FS = QStringLiteral("FS");
const QString glqsBtPreffix_HD = QStringLiteral("HD");
const QString glqsBtPreffix_IS = QStringLiteral("IS");
const QString glqsBtPreffix_LS = QStringLiteral("LS");
const QString glqsBtPreffix_PR = QStringLiteral("PR");
const QString glqsBtPreffix_SL = QStringLiteral("SL");
const QString glqsBtPreffix_ST = QStringLiteral("ST");
const QString glqsBtPreffix_UB = QStringLiteral("UB");
const QString glqsBtPreffix_WT = QStringLiteral("WT");
const QString glqsBtPreffix_AS = QStringLiteral("AS");
const QString glqsBtPreffix_UP = QStringLiteral("UP");
const QString glqsBtPreffix_CN = QStringLiteral("CN");
const QString glqsBtPreffix_IN = QStringLiteral("IN");
const QString glqsBtPreffix_AG = QStringLiteral("AG");
const QString glqsBtPreffix_HS = QStringLiteral("HS");
const QString glqsBtPreffix_WS = QStringLiteral("WS");
const QString glqsBtPreffix_WP = QStringLiteral("WP");
const QString glqsCanPreffix_SC = QStringLiteral("SC");
const QString glqsCanPreffix_AC = QStringLiteral("AC");
const QString glqsCanPreffix_BC = QStringLiteral("BC");
const QString glqsPcntPreffix_CO = QStringLiteral("CO");
const QString glqsRefrPreffix_RC = QStringLiteral("RC");
const QString glqsCEPreffix_CE = QStringLiteral("CE");
const QString glqsRefrPreffix_AX = QStringLiteral("AX");
