#include "telemetry/tmipage_kite3.h"

#include <cstring>

TmiPage_Kite3::TmiPage_Kite3(const QString& format, bool flag, QObject* parent)
    : TmiPage_Base(ZorTmi::FieldCount, parent)
    , bFlag(flag)
{
    setPageFormat(format);
}

TmiPage_Kite3::TmiPage_Kite3(int formatType, int versionType, const QString& format,
                             const szCurrentTMI_KITE3* tmi, QObject* parent)
    : TmiPage_Base(ZorTmi::FieldCount, parent)
{
    setTypes(formatType, versionType);
    setPageFormat(format);
    setValueBlock(tmi, sizeof(szCurrentTMI_KITE3));
}

TmiPage_Kite3::TmiPage_Kite3(const szCurrentTMI_KITE3* tmi, QObject* parent)
    : TmiPage_Base(ZorTmi::FieldCount, parent)
{
    setValueBlock(tmi, sizeof(szCurrentTMI_KITE3));
}

szCurrentTMI_KITE3 TmiPage_Kite3::getCurrentTMI() const
{
    szCurrentTMI_KITE3 tmi;
    std::memcpy(&tmi, valueBlock(), sizeof tmi);
    return tmi;
}
