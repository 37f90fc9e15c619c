#include "telemetry/tmipage_kite1.h"

#include <cstring>

namespace {

// Where the F8 record keeps the version-1 fields: a run of F8 bytes from
// `src` holds the fields first..last, byte for byte.
struct F8Run
{
    int src;
    int first;
    int last;
};
const F8Run kF8Runs[] = {
    {1, 1, 1}, // NumPage
    {5, 2, 5}, // Code, Time, State, Module1
    {13, 7, 7}, // GSM
    {14, 31, 31}, // Out1
    {15, 29, 29}, // In1
    {16, 19, 23}, // Power .. StateU_Ain3
    {26, 33, 48}, // In_Imp1 .. Temp4
    {60, 8, 18}, // StateNGauge .. SecondsLast
    {95, 53, 65}, // CanFuelLevel .. CanEngineLoad
    {121, 67, 69}, // CanEngineTime, CanTimeTO, CanSpeed
};

const unsigned char kF8Mask[9] = {0xFB, 0xFF, 0xFE, 0x0A, 0xFF, 0xFF, 0x0F, 0xFF, 0xB8};

} // namespace

ZOR_TMI_RECORD_MEMBERS_IMPL(TmiPage_Kite1, szCurrentTMI_KITE1, ZorTmi::LastFieldKite1)

TmiPage_Kite1::TmiPage_Kite1(const unsigned char* data, int length, QObject* parent)
    : TmiPage_Base(ZorTmi::LastFieldKite1, parent)
{
    setCurrentTMI_From_F8(data, length);
}

QByteArray TmiPage_Kite1::f8Format()
{
    QByteArray mask(ZorTmi::MaskBytes, '\0');
    std::memcpy(mask.data(), kF8Mask, sizeof kF8Mask);
    return mask;
}

void TmiPage_Kite1::setCurrentTMI_From_F8(const unsigned char* data, int length)
{
    unsigned char f8[F8RecordSize] = {};
    if (data && length > 0)
        std::memcpy(f8, data, size_t(qMin(length, F8RecordSize)));

    bPacketInBlock = false;
    std::memset(arrBlock, 0, sizeof arrBlock);
    for (const F8Run& r : kF8Runs) {
        const int dst = ZorTmi::field(r.first).offset;
        const int len = ZorTmi::blockSize(r.last) - dst;
        std::memcpy(arrBlock + dst, f8 + r.src, size_t(len));
    }
    setTypes(F8FormatType, F8VersionType);
    setPageFormat(reinterpret_cast<const unsigned char*>(f8Format().constData()));
    baPacket = QByteArray(reinterpret_cast<const char*>(f8), F8RecordSize);
}

void TmiPage_Kite1::setCurrentPacketF8ToKite(const unsigned char* data, int length)
{
    if (data)
        setCurrentTMI_From_F8(data, length);
    bPacketInBlock = false;
    baPacket.clear();
    for (int n = 1; n <= lastField(); ++n)
        if (isUseParam(n))
            baPacket.append(reinterpret_cast<const char*>(fieldBytes(n)), ZorTmi::field(n).width);
}
