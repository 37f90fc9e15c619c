#include "telemetry/tmipage_kite3.h"

#include <cstring>

ZOR_TMI_RECORD_MEMBERS_IMPL(TmiPage_Kite3, szCurrentTMI_KITE3, ZorTmi::FieldCount)

TmiPage_Kite3::TmiPage_Kite3(const szExtTMI_KITE3* ext, QObject* parent)
    : TmiPage_Base(Init{ZorTmi::FieldCount, QString(), false, 0, 0, nullptr, ext}, parent)
{
}
