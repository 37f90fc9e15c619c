#include "telemetry/tmipage_kite2.h"

#include <cstring>

ZOR_TMI_RECORD_MEMBERS_IMPL(TmiPage_Kite2, szCurrentTMI_KITE2, ZorTmi::LastFieldKite2)

TmiPage_Kite2::TmiPage_Kite2(const szExtTMI_KITE2* ext, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::LastFieldKite2, QString(), false, 0, 0, nullptr, ext}, parent)
{
}
