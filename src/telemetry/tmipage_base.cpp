#include "telemetry/tmipage_base.h"

#include "module/zor_language.h"
#include "telemetry/tmipage_kite1.h"
#include "telemetry/tmipage_kite2.h"
#include "telemetry/tmipage_kite3.h"

#include <QTime>

#include <cstring>

namespace {

const int kTimeField = 3;
const int kLastTimeField = 9;
const int kMiliSecField = 200;
const QString kFormatDateTime = QStringLiteral("dd.MM.yyyy H:mm:ss");

QString notAvailable()
{
    return QStringLiteral("n/a");
}

QString typedUserText(quint64 value, int bytes, const QString& type)
{
    const int bits = bytes * 8;
    const quint64 mask = bits == 64 ? ~quint64(0) : ((quint64(1) << bits) - 1);
    value &= mask;
    const QChar letter = type.isEmpty() ? QChar() : type.at(0);
    if (letter == QLatin1Char('s') || (letter == QLatin1Char('i') && bytes > 1)) {
        qint64 s = qint64(value);
        if (bits < 64 && (value >> (bits - 1)) & 1)
            s = qint64(value | ~mask);
        return QString::number(s);
    }
    if (letter == QLatin1Char('b'))
        return QString::number(value, 2).rightJustified(bits, QLatin1Char('0'));
    if (letter == QLatin1Char('h'))
        return QStringLiteral("0x") + QString::number(value, 16).toUpper().rightJustified(bytes * 2, QLatin1Char('0'));
    if (letter == QLatin1Char('f') && bytes == 4) {
        const quint32 u = quint32(value);
        float f;
        std::memcpy(&f, &u, sizeof f);
        return QString::number(double(f), 'f', 6);
    }
    if (letter == QLatin1Char('f') && bytes == 8) {
        double d;
        std::memcpy(&d, &value, sizeof d);
        return QString::number(d, 'f', 6);
    }
    return QString::number(value);
}

} // namespace

TmiPage_Base::TmiPage_Base(int lastField, QObject* parent)
    : QObject(parent)
    , nUtcOffset(QDateTime::currentDateTime().offsetFromUtc())
    , nLastField(lastField)
{
    buildPlan();
}

TmiPage_Base::TmiPage_Base(const Init& init, QObject* parent)
    : TmiPage_Base(init.lastField, parent)
{
    bFlag = init.flag;
    setTypes(init.formatType, init.versionType);
    setPageFormat(init.format);
    setValueBlock(init.block, ZorTmi::blockSize(init.lastField));
    setExtTMI(init.ext);
}

void TmiPage_Base::setTypes(int formatType, int versionType)
{
    nFormatType = quint8(formatType);
    nVersionType = quint8(versionType);
}

void TmiPage_Base::setValueBlock(const void* block, int size)
{
    keepPacket();
    if (block)
        std::memcpy(arrBlock, block, size_t(qBound(0, size, int(sizeof arrBlock))));
}

// ---- field set -------------------------------------------------------------

void TmiPage_Base::getArrSzFormat(const QString& format, unsigned char* bytes, int& count)
{
    std::memset(bytes, 0, ZorTmi::MaskBytes);
    const int n = qMin(format.size(), ZorTmi::FieldCount);
    for (int i = 0; i < n; ++i)
        if (format.at(i) == QLatin1Char('1'))
            ZorTmi::setMaskBit(bytes, i + 1, true);
    count = ZorTmi::MaskBytes;
}

QString TmiPage_Base::formatText(const unsigned char* mask)
{
    QString s(ZorTmi::FieldCount, QLatin1Char('0'));
    for (int n = 1; n <= ZorTmi::FieldCount; ++n)
        if (ZorTmi::maskBit(mask, n))
            s[n - 1] = QLatin1Char('1');
    return s;
}

std::unique_ptr<TmiPage_Base> TmiPage_Base::create(int nVersion)
{
    switch (nVersion) {
    case 1: return std::make_unique<TmiPage_Kite1>(QString());
    case 2: return std::make_unique<TmiPage_Kite2>(QString());
    case 3: return std::make_unique<TmiPage_Kite3>(QString());
    default: return nullptr;
    }
}

void TmiPage_Base::setPageFormat(const QString& format)
{
    int count = 0;
    getArrSzFormat(format, arrMask, count);
    buildPlan();
}

void TmiPage_Base::setPageFormat(const unsigned char* mask)
{
    if (mask)
        std::memcpy(arrMask, mask, sizeof arrMask);
    else
        std::memset(arrMask, 0, sizeof arrMask);
    buildPlan();
}

void TmiPage_Base::getPageFormat(QByteArray& mask) const
{
    mask = QByteArray(reinterpret_cast<const char*>(arrMask), ZorTmi::MaskBytes);
}

QString TmiPage_Base::getStrFormat() const
{
    return formatText(arrMask);
}

// ---- decoding --------------------------------------------------------------

void TmiPage_Base::buildPlan()
{
    keepPacket();
    plan.clear();
    int src = 0;
    for (int n = 1; n <= nLastField; ++n) {
        if (!ZorTmi::maskBit(arrMask, n))
            continue;
        const ZorTmi::FieldInfo& f = ZorTmi::field(n);
        // The value block is in field order, so a run of present fields is
        // one contiguous copy on both sides.
        if (!plan.isEmpty() && plan.last().dst + plan.last().len == f.offset)
            plan.last().len = quint16(plan.last().len + f.width);
        else
            plan.append(Run{quint16(src), f.offset, f.width});
        src += f.width;
    }
    nRecordSize = src;
    nCutField = ZorTmi::FieldCount + 1;
    nMissingBytes = 0;
}

bool TmiPage_Base::setCurrentTMI(const unsigned char* data, int length)
{
    if (!data || length < 0)
        length = 0;
    if (length >= nRecordSize) {
        // A complete record's bytes are the value block's present fields in
        // order: the packet is taken back from there when it is asked for,
        // instead of being copied a second time for every record.
        for (const Run& r : qAsConst(plan))
            std::memcpy(arrBlock + r.dst, data + r.src, r.len);
        bPacketInBlock = true;
        nCutField = ZorTmi::FieldCount + 1;
        nMissingBytes = 0;
        return true;
    }

    bPacketInBlock = false;
    baPacket = QByteArray(reinterpret_cast<const char*>(data), length);
    // Short record: whole fields only, the rest absent and cleared.
    int src = 0;
    nCutField = ZorTmi::FieldCount + 1;
    for (int n = 1; n <= nLastField; ++n) {
        if (!ZorTmi::maskBit(arrMask, n))
            continue;
        const ZorTmi::FieldInfo& f = ZorTmi::field(n);
        if (nCutField > n && src + f.width <= length)
            std::memcpy(arrBlock + f.offset, data + src, f.width);
        else {
            nCutField = qMin(nCutField, n);
            std::memset(arrBlock + f.offset, 0, f.width);
        }
        src += f.width;
    }
    nMissingBytes = nRecordSize - length;
    return false;
}

void TmiPage_Base::getPagePacket(QByteArray& packet) const
{
    packet.clear();
    if (!bPacketInBlock) {
        packet.append(baPacket);
        return;
    }
    packet.resize(nRecordSize);
    for (const Run& r : plan)
        std::memcpy(packet.data() + r.src, arrBlock + r.dst, r.len);
}

void TmiPage_Base::keepPacket()
{
    if (bPacketInBlock)
        getPagePacket(baPacket);
    bPacketInBlock = false;
}

quint32 TmiPage_Base::getNumberTmiPage() const
{
    if (bExt)
        return qFromLittleEndian(extRecord.NumPage);
    return qFromLittleEndian<quint32>(fieldBytes(1));
}

quint16 TmiPage_Base::getCode() const
{
    return qFromLittleEndian<quint16>(fieldBytes(2));
}

// ---- texts -----------------------------------------------------------------

QString TmiPage_Base::columnText(int columnId) const
{
    const ZorTmi::Column& c = ZorTmi::column(columnId);
    if (!isUseParam(ZorTmi::presenceField(c.field)))
        return notAvailable();
    return ZorTmi::text(c, fieldBytes(c.field));
}

int TmiPage_Base::csvColumnCount(int n)
{
    return (n >= 1 && n <= ZorTmi::FieldCount) ? ZorTmi::field(n).csvCount : 0;
}

QString TmiPage_Base::csvColumnCaption(int n, int i)
{
    if (i < 0 || i >= csvColumnCount(n))
        return QString();
    const ZorTmi::Column& c = ZorTmi::column(ZorTmi::csvColumns()[ZorTmi::field(n).firstCsv + i]);
    const QString caption = QString::fromUtf8(c.caption);
    return *c.captionKey ? caption.arg(zorTr(QLatin1String(c.captionKey))) : caption;
}

void TmiPage_Base::appendColumnTexts(int n, QString& out, QLatin1String before, QLatin1String after) const
{
    QByteArray utf8;
    appendColumnTexts(n, utf8, QByteArray(before.data(), before.size()), QByteArray(after.data(), after.size()));
    out.append(QString::fromUtf8(utf8.constData(), utf8.size()));
}

void TmiPage_Base::appendColumnTexts(int n, QByteArray& out, const QByteArray& before, const QByteArray& after) const
{
    if (csvColumnCount(n))
        ZorTmi::appendColumns(out, n, arrBlock, ZorTmi::Presence{arrMask, nLastField, nCutField}, before, after);
}

void TmiPage_Base::appendColumnTexts(const TmiPage_Base& columns, QByteArray& out, const QByteArray& before,
    const QByteArray& after, const ZorTmi::LineOptions& line) const
{
    ZorTmi::appendColumns(out, columns.arrMask, columns.nLastField, arrBlock,
        ZorTmi::Presence{arrMask, nLastField, nCutField}, before, after, line);
}

// ---- date and time ---------------------------------------------------------

QDateTime TmiPage_Base::timeValue(int columnId, Qt::TimeSpec timeSpec, int shift) const
{
    const ZorTmi::Column& c = ZorTmi::column(columnId);
    const quint32 secs = qFromLittleEndian<quint32>(fieldBytes(c.field) + c.offset);
    return QDateTime::fromSecsSinceEpoch(qint64(secs) + shift, timeSpec);
}

QDateTime TmiPage_Base::getDateTime() const
{
    return timeValue(ZorTmi::Col_Time, Qt::LocalTime, 0);
}
QDateTime TmiPage_Base::getDateTimeUTC() const
{
    return timeValue(ZorTmi::Col_Time, Qt::UTC, 0);
}
QDateTime TmiPage_Base::getDateTimeUTC_Offset() const
{
    return timeValue(ZorTmi::Col_Time, Qt::UTC, nUtcOffset);
}
QDateTime TmiPage_Base::getLastDateTime() const
{
    return timeValue(ZorTmi::Col_LastTime, Qt::LocalTime, 0);
}
QDateTime TmiPage_Base::getLastDateTimeUTC() const
{
    return timeValue(ZorTmi::Col_LastTime, Qt::UTC, 0);
}
QDateTime TmiPage_Base::getLastDateTimeUTC_Offset() const
{
    return timeValue(ZorTmi::Col_LastTime, Qt::UTC, nUtcOffset);
}

QString TmiPage_Base::getStrDateTime() const
{
    return isUseParam(kTimeField) ? getDateTime().toString(kFormatDateTime) : notAvailable();
}

QString TmiPage_Base::getStrDateTimeUTC() const
{
    return isUseParam(kTimeField) ? getDateTimeUTC().toString(kFormatDateTime) : notAvailable();
}

QString TmiPage_Base::getStrDateTimeUTC_Offset() const
{
    if (!isUseParam(kTimeField))
        return notAvailable();
    const QDateTime t = getDateTimeUTC_Offset();
    const QString ms = isUseParam(kMiliSecField)
        ? QStringLiteral(".%1").arg(qFromLittleEndian<quint16>(fieldBytes(kMiliSecField)))
        : QString();
    return QStringLiteral("%1%2 %3 %4")
        .arg(t.toString(QStringLiteral("hh:mm:ss")), ms, t.toString(QStringLiteral("dd.MM.yyyy")),
            getStrUtcZone(nUtcOffset));
}

QString TmiPage_Base::shiftedTimeText(int field, const QDateTime& t) const
{
    if (!isUseParam(field))
        return notAvailable();
    return QStringLiteral("%1 %2 %3")
        .arg(t.toString(QStringLiteral("hh:mm:ss")), t.toString(QStringLiteral("dd.MM.yyyy")),
            getStrUtcZone(nUtcOffset));
}

QString TmiPage_Base::getStrLastDateTimeUTC_Offset() const
{
    return shiftedTimeText(kLastTimeField, getLastDateTimeUTC_Offset());
}

QDateTime TmiPage_Base::getLbsDateTime() const
{
    return timeValue(ZorTmi::Col_LbsTime, Qt::LocalTime, 0);
}
QDateTime TmiPage_Base::getLbsDateTimeUTC() const
{
    return timeValue(ZorTmi::Col_LbsTime, Qt::UTC, 0);
}
QDateTime TmiPage_Base::getLbsDateTimeUTC_Offset() const
{
    return timeValue(ZorTmi::Col_LbsTime, Qt::UTC, nUtcOffset);
}

QString TmiPage_Base::getStrLbsDateTimeUTC_Offset() const
{
    return shiftedTimeText(ZorTmi::column(ZorTmi::Col_LbsTime).field, getLbsDateTimeUTC_Offset());
}

QString TmiPage_Base::getStrUtcZone(int seconds)
{
    if (seconds == 0)
        return QStringLiteral("(UTC)");
    const int a = seconds < 0 ? -seconds : seconds;
    const QTime t = QTime(0, 0, 0).addSecs(a);
    const QString hours = t.toString(a % 3600 ? QStringLiteral("H:mm") : QStringLiteral("H"));
    return (seconds > 0 ? QStringLiteral("(UTC +%1)") : QStringLiteral("(UTC -%1)")).arg(hours);
}

int TmiPage_Base::getValueGSM() const
{
    const int level = *fieldBytes(7);
    return level == 99 ? 0 : level * 322 / 100;
}

QString TmiPage_Base::getStrCanFuelLevel() const
{
    return columnText(ZorTmi::Col_CanFuelLevel);
}

// ---- user parameters -------------------------------------------------------

QString TmiPage_Base::getStrUserParamData(unsigned char value, const QString& type)
{
    return typedUserText(value, 1, type);
}

QString TmiPage_Base::getStrUserParamData(unsigned short value, const QString& type)
{
    return typedUserText(value, 2, type);
}

QString TmiPage_Base::getStrUserParamData(unsigned int value, const QString& type)
{
    return typedUserText(value, 4, type);
}

QString TmiPage_Base::getStrUserParamData(unsigned long value, const QString& type)
{
    return typedUserText(quint64(value), int(sizeof value), type);
}

QString TmiPage_Base::getStrUserParamData(unsigned long long value, const QString& type)
{
    return typedUserText(quint64(value), 8, type);
}

QString TmiPage_Base::userParamText(int n, const QString& type) const
{
    if (!isUseParam(n))
        return notAvailable();
    const unsigned char* p = fieldBytes(n);
    switch (ZorTmi::field(n).width) {
    case 1: return getStrUserParamData(static_cast<unsigned char>(*p), type);
    case 2: return getStrUserParamData(qFromLittleEndian<quint16>(p), type);
    case 4: return getStrUserParamData(static_cast<unsigned int>(qFromLittleEndian<quint32>(p)), type);
    default: return getStrUserParamData(static_cast<unsigned long long>(qFromLittleEndian<quint64>(p)), type);
    }
}

// ---- extended record -------------------------------------------------------

void TmiPage_Base::setExtTMI(const szExtTMI_KITE3* ext)
{
    bExt = ext != nullptr;
    if (ext)
        extRecord = *ext;
}

quint16 TmiPage_Base::getCode_Ext() const
{
    return qFromLittleEndian(extRecord.Code);
}
qint32 TmiPage_Base::getLatitude_Ext() const
{
    return qFromLittleEndian(extRecord.Latitude);
}
qint32 TmiPage_Base::getLongitude_Ext() const
{
    return qFromLittleEndian(extRecord.Longitude);
}

namespace {

// The extended coordinates use the unit and text of fields 10 and 11.
QString coordinateText(qint32 v)
{
    unsigned char bytes[4];
    qToLittleEndian(v, bytes);
    const ZorTmi::Column& c = ZorTmi::column(ZorTmi::Col_Latitude);
    return ZorTmi::text(c, bytes);
}

} // namespace

QString TmiPage_Base::getStrLatitude_Ext() const
{
    return bExt ? coordinateText(getLatitude_Ext()) : notAvailable();
}

QString TmiPage_Base::getStrLongitude_Ext() const
{
    return bExt ? coordinateText(getLongitude_Ext()) : notAvailable();
}

QDateTime TmiPage_Base::getDateTime_Ext() const
{
    return QDateTime::fromSecsSinceEpoch(qFromLittleEndian(extRecord.Time), Qt::LocalTime);
}

QDateTime TmiPage_Base::getDateTimeUTC_Ext() const
{
    return QDateTime::fromSecsSinceEpoch(qFromLittleEndian(extRecord.Time), Qt::UTC);
}

QDateTime TmiPage_Base::getDateTimeUTC_Offset_Ext() const
{
    return QDateTime::fromSecsSinceEpoch(qint64(qFromLittleEndian(extRecord.Time)) + nUtcOffset, Qt::UTC);
}

QString TmiPage_Base::getStrDateTime_Ext() const
{
    return bExt ? getDateTime_Ext().toString(kFormatDateTime) : notAvailable();
}

int TmiPage_Base::getDynamicDataSize_Ext() const
{
    const int blockMax = int(sizeof extRecord.Visible);
    return qMin(int(extRecord.VisibleSize), blockMax) + qMin(int(extRecord.HiddenSize), blockMax);
}

float TmiPage_Base::getNaviAltitude() const
{
    return float(qFromLittleEndian<qint32>(fieldBytes(74))) / 1000.0f;
}

// ---- CSV export ------------------------------------------------------------

namespace {

const char kCsvSeparator = ';';
const char kCsvLineEnd[] = "\r\n";
const int kFlagColumnKey = 359;

const QByteArray& cellBefore()
{
    static const QByteArray s("=\"");
    return s;
}

const QByteArray& cellAfter()
{
    static const QByteArray s("\";");
    return s;
}

// The extended record's fixed part as a value block of the field table, with
// the field set of the fields it fills.
void extToBlock(const szExtTMI_KITE3& e, unsigned char* block, unsigned char* mask)
{
    const quint16 state = qFromLittleEndian(e.State);
    const quint16 outputs = qFromLittleEndian(e.Outputs);
    const float speed = float(qFromLittleEndian(e.Speed)) / 10.0f; // km/h x 10 -> km/h
    const float mileage = float(qFromLittleEndian(e.Mileage)) / 1000.0f; // metres -> km
    quint32 speedBits, mileageBits;
    std::memcpy(&speedBits, &speed, 4);
    std::memcpy(&mileageBits, &mileage, 4);
    const struct
    {
        int n;
        quint32 v;
    } values[] = {
        {1, qFromLittleEndian(e.NumPage)},
        {2, qFromLittleEndian(e.Code)},
        {3, qFromLittleEndian(e.Time)},
        {4, quint32(state & 0xFF)},
        {5, quint32(state >> 8)},
        {8, e.NaviState},
        {9, qFromLittleEndian(e.LastTime)},
        {10, quint32(qFromLittleEndian(e.Latitude))},
        {11, quint32(qFromLittleEndian(e.Longitude))},
        {12, quint32(qFromLittleEndian(e.Altitude))},
        {13, speedBits},
        {14, qFromLittleEndian(e.Course)},
        {15, mileageBits},
        {31, quint32(outputs & 0xFF)},
        {32, quint32(outputs >> 8)},
        {33, qFromLittleEndian(e.Imp1)},
        {34, qFromLittleEndian(e.Imp2)},
        {37, qFromLittleEndian(e.Motochas)},
    };
    for (const auto& v : values) {
        const ZorTmi::FieldInfo& f = ZorTmi::field(v.n);
        for (int b = 0; b < f.width; ++b)
            block[f.offset + b] = static_cast<unsigned char>(v.v >> (8 * b));
        ZorTmi::setMaskBit(mask, v.n, true);
    }
}

} // namespace

void TmiPage_Base::appendExcelHeader(QByteArray& out) const
{
    for (int n = 1; n <= nLastField; ++n) {
        if (!ZorTmi::maskBit(arrMask, n))
            continue;
        for (int i = 0, count = csvColumnCount(n); i < count; ++i) {
            out.append(csvColumnCaption(n, i).toUtf8());
            out.append(kCsvSeparator);
        }
    }
    if (bFlag) {
        out.append(zorTr(QStringLiteral("tmikte_%1").arg(kFlagColumnKey)).toUtf8());
        out.append(kCsvSeparator);
    }
    out.append(kCsvLineEnd);
}

void TmiPage_Base::appendExcelData(QByteArray& out, const TmiPage_Base* record, const QByteArray& codeText) const
{
    if (!record)
        return;
    if (record->bExt) {
        appendExcelDataExt(out, *record, codeText);
        return;
    }
    ZorTmi::LineOptions line;
    line.codeText = codeText;
    line.timeWithMiliSec = true;
    record->appendColumnTexts(*this, out, cellBefore(), cellAfter(), line);
    out.append(kCsvLineEnd);
}

void TmiPage_Base::appendExcelDataExt(QByteArray& out, const TmiPage_Base& record, const QByteArray& codeText) const
{
    unsigned char block[sizeof(szCurrentTMI_KITE3)] = {};
    unsigned char mask[ZorTmi::MaskBytes] = {};
    extToBlock(record.extRecord, block, mask);
    ZorTmi::LineOptions line;
    line.codeText = codeText;
    line.timeWithMiliSec = true;
    ZorTmi::appendColumns(out, arrMask, nLastField, block,
        ZorTmi::Presence{mask, ZorTmi::FieldCount, ZorTmi::FieldCount + 1}, cellBefore(), cellAfter(), line);
    if (bFlag) {
        const int size = qMin(int(record.extRecord.VisibleSize), int(sizeof record.extRecord.Visible));
        out.append(cellBefore());
        out.append(QByteArray(reinterpret_cast<const char*>(record.extRecord.Visible), size).toHex().toUpper());
        out.append(cellAfter());
    }
    out.append(kCsvLineEnd);
}

void TmiPage_Base::setExcelHeader(QTextStream& stream) const
{
    QByteArray utf8;
    appendExcelHeader(utf8);
    stream << QString::fromUtf8(utf8.constData(), utf8.size());
}

void TmiPage_Base::setExcelData(QTextStream& stream, const TmiPage_Base* record, const QString& codeText) const
{
    QByteArray utf8;
    appendExcelData(utf8, record, codeText.toUtf8());
    stream << QString::fromUtf8(utf8.constData(), utf8.size());
}

void TmiPage_Base::setExcelDataExt(QTextStream& stream, const TmiPage_Base* record, const QString& codeText) const
{
    if (!record)
        return;
    QByteArray utf8;
    appendExcelDataExt(utf8, *record, codeText.toUtf8());
    stream << QString::fromUtf8(utf8.constData(), utf8.size());
}
