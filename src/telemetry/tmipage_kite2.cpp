#include "telemetry/tmipage_kite2.h"

#include <cstring>

TmiPage_Kite2::TmiPage_Kite2(const QString& format, bool flag, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::LastFieldKite2, format, flag}, parent)
{
}

TmiPage_Kite2::TmiPage_Kite2(int formatType, int versionType, const QString& format,
                             const szCurrentTMI_KITE2* tmi, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::LastFieldKite2, format, false, formatType, versionType, tmi}, parent)
{
}

TmiPage_Kite2::TmiPage_Kite2(const szCurrentTMI_KITE2* tmi, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::LastFieldKite2, QString(), false, 0, 0, tmi}, parent)
{
}

TmiPage_Kite2::TmiPage_Kite2(const szExtTMI_KITE2* ext, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::LastFieldKite2, QString(), false, 0, 0, nullptr, ext}, parent)
{
}

szCurrentTMI_KITE2 TmiPage_Kite2::getCurrentTMI() const
{
    szCurrentTMI_KITE2 tmi;
    std::memcpy(&tmi, valueBlock(), sizeof tmi);
    return tmi;
}
