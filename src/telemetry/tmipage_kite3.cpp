#include "telemetry/tmipage_kite3.h"

#include <cstring>

TmiPage_Kite3::TmiPage_Kite3(const QString& format, bool flag, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::FieldCount, format, flag}, parent)
{
}

TmiPage_Kite3::TmiPage_Kite3(int formatType, int versionType, const QString& format,
                             const szCurrentTMI_KITE3* tmi, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::FieldCount, format, false, formatType, versionType, tmi}, parent)
{
}

TmiPage_Kite3::TmiPage_Kite3(const szCurrentTMI_KITE3* tmi, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::FieldCount, QString(), false, 0, 0, tmi}, parent)
{
}

TmiPage_Kite3::TmiPage_Kite3(const szExtTMI_KITE3* ext, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::FieldCount, QString(), false, 0, 0, nullptr, ext}, parent)
{
}

szCurrentTMI_KITE3 TmiPage_Kite3::getCurrentTMI() const
{
    szCurrentTMI_KITE3 tmi;
    std::memcpy(&tmi, valueBlock(), sizeof tmi);
    return tmi;
}
