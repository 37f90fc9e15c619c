#include "commands/zor_consoleprotocol.h"

#include "module/zor_cp1251.h"
#include "module/zor_language.h"
#include "protocol/zor_bits.h"

#include <iterator>

namespace {

// Dialect of the GNSS receiver (as answered by the host) x coordinate system.
const char* const kCoordSystemCommands[2][2] = {
    {"*!UC GPS,PQPZ90,W,1,0", "*!UC GPS,PQPZ90,W,0,0"}, // PZ, WGS
    {"*!UC GPS,PMTK330,223", "*!UC GPS,PMTK330,0"},
};

struct NmeaRate
{
    const char* qsCaption; // UTF-8
    const char* qsPeriodMs;
};
const NmeaRate kNmeaRates[] = {{"1 Гц", "1000"}, {"2 Гц", "500"}, {"5 Гц", "200"}, {"10 Гц", "100"}};

} // namespace

ZOR_ConsoleProtocol::ZOR_ConsoleProtocol(QObject* parent)
    : QObject(parent)
{
}

QByteArray ZOR_ConsoleProtocol::getUniCommand(const QString& qsCommand)
{
    QByteArray bytes;
    bytes.reserve(qsCommand.size());
    const QChar* text = qsCommand.constData();
    const int size = qsCommand.size();
    int pos = 0;
    while (pos < size) {
        const int slash = qsCommand.indexOf(QLatin1Char('\\'), pos);
        if (slash < 0) {
            ZOR_Cp1251::encodeAppend(text + pos, size - pos, bytes);
            break;
        }
        ZOR_Cp1251::encodeAppend(text + pos, slash - pos, bytes);
        if (slash + 1 < size && text[slash + 1] == QLatin1Char('\\')) {
            bytes.append('\\');
            pos = slash + 2;
            continue;
        }
        if (size - slash - 1 < 2) {
            ZOR_Cp1251::encodeAppend(text + slash, size - slash, bytes);
            break;
        }
        const int high = zorHexDigitValue(text[slash + 1]);
        const int low = zorHexDigitValue(text[slash + 2]);
        if (high >= 0 && low >= 0)
            bytes.append(char(high * 16 + low));
        else
            ZOR_Cp1251::encodeAppend(text + slash, 3, bytes);
        pos = slash + 3;
    }
    return bytes;
}

QString ZOR_ConsoleProtocol::coordSystemCommand(int nDialect, bool bPz90)
{
    if (nDialect != 0 && nDialect != 1)
        return QString();
    return QLatin1String(kCoordSystemCommands[nDialect][bPz90 ? 0 : 1]);
}

QString ZOR_ConsoleProtocol::satSystemsCommand(SatSystems systems)
{
    switch (systems) {
    case SatSystems::Gps: return QStringLiteral("*!UC GPS,PMTK353,1,0,0,0,0");
    case SatSystems::Glonass: return QStringLiteral("*!UC GPS,PMTK353,0,1,0,0,0");
    default: return QStringLiteral("*!UC GPS,PMTK353,1,1,0,0,0");
    }
}

QString ZOR_ConsoleProtocol::nmeaRateCommand(int nIndex)
{
    const bool bKnown = nIndex >= 0 && nIndex < int(std::size(kNmeaRates));
    return QStringLiteral("*!UC GPS,PMTK220,%1").arg(QLatin1String(kNmeaRates[bKnown ? nIndex : 0].qsPeriodMs));
}

QStringList ZOR_ConsoleProtocol::nmeaRateCaptions()
{
    QStringList captions;
    for (const NmeaRate& rate : kNmeaRates)
        captions << QString::fromUtf8(rate.qsCaption);
    return captions;
}

QString ZOR_ConsoleProtocol::elevationCommand(int nDegrees)
{
    return QStringLiteral("*!UC GPS,PMTK311,%1").arg(nDegrees);
}

QString ZOR_ConsoleProtocol::coldStartCommand()
{
    return QStringLiteral("*!UC GPS,PMTK104");
}

QString ZOR_ConsoleProtocol::smsTelemetryCommand(bool bOn)
{
    return bOn ? QStringLiteral("*!EDIT PHONES:MODE(1)") : QStringLiteral("*!EDIT PHONES:MODE(0)");
}

QString ZOR_ConsoleProtocol::balanceCommand(const QString& qsUssd)
{
    return QStringLiteral("*?USSD:%1").arg(qsUssd);
}

QString ZOR_ConsoleProtocol::iccIdCommand(bool bSim1, bool bSim2)
{
    return QStringLiteral("*?ICCID %1").arg((bSim1 ? 1 : 0) + (bSim2 ? 2 : 0));
}

QString ZOR_ConsoleProtocol::getIccIdType(const QString& qsField)
{
    if (qsField.isEmpty())
        return zorTr(QStringLiteral("mdln_029"));
    if (qsField.size() <= 2) {
        bool ok = false;
        const int value = qsField.toInt(&ok);
        static const char* const kKeys[] = {"mdln_030", "mdln_031", "mdln_032"};
        if (ok && value >= 0 && value <= 2)
            return zorTr(QLatin1String(kKeys[value]));
    }
    return qsField;
}

ZOR_ConsoleProtocol::IccIdReply ZOR_ConsoleProtocol::parseIccIdReply(const QByteArray& data)
{
    IccIdReply reply;
    // The terminal ends its replies with a line end; it belongs to no field.
    QString text = ZOR_Cp1251::decode(data);
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    if (!text.startsWith(QLatin1String("*#ICCID")) || text.size() < 9)
        return reply;
    const QStringList fields = text.mid(8).split(QLatin1Char(','));
    bool ok = false;
    const int mask = fields.value(0).toInt(&ok, 10);
    if (!ok || mask < 1 || mask > 3)
        return reply;
    reply.bSim1 = mask != 2;
    reply.bSim2 = mask != 1;
    if (reply.bSim1)
        reply.qsSim1 = getIccIdType(fields.value(1));
    if (reply.bSim2)
        reply.qsSim2 = getIccIdType(fields.value(mask == 3 ? 2 : 1));
    return reply;
}
