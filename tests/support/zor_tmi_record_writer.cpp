#include "zor_tmi_record_writer.h"

#include "telemetry/tmipage_base.h"

#include <cstring>

namespace {

int wireSize(ZorTmi::ValueType t)
{
    switch (t) {
    case ZorTmi::Type_U8:
    case ZorTmi::Type_I8:
    case ZorTmi::Type_U8Tenths: return 1;
    case ZorTmi::Type_U16:
    case ZorTmi::Type_I16: return 2;
    case ZorTmi::Type_U32:
    case ZorTmi::Type_I32:
    case ZorTmi::Type_F32: return 4;
    case ZorTmi::Type_U64:
    case ZorTmi::Type_I64: return 8;
    }
    return 0;
}

} // namespace

ZorTmiRecordWriter::ZorTmiRecordWriter() = default;

ZorTmiRecordWriter& ZorTmiRecordWriter::set(int columnId, qint64 v)
{
    const ZorTmi::Column& c = ZorTmi::column(columnId);
    unsigned char* p = arrBlock + ZorTmi::field(c.field).offset + c.offset;
    const int size = wireSize(c.type);
    quint64 u = 0;
    for (int i = 0; i < size; ++i)
        u |= quint64(p[i]) << (8 * i);
    if (c.bits) {
        const quint64 mask = ((quint64(1) << c.bits) - 1) << c.shift;
        u = (u & ~mask) | ((quint64(v) << c.shift) & mask);
    } else {
        u = quint64(v);
    }
    for (int i = 0; i < size; ++i)
        p[i] = static_cast<unsigned char>(u >> (8 * i));
    return *this;
}

ZorTmiRecordWriter& ZorTmiRecordWriter::setFloat(int columnId, float v)
{
    quint32 bits;
    std::memcpy(&bits, &v, sizeof bits);
    return set(columnId, qint64(bits));
}

ZorTmiRecordWriter& ZorTmiRecordWriter::setField(int n, const QByteArray& bytes)
{
    const ZorTmi::FieldInfo& f = ZorTmi::field(n);
    std::memset(arrBlock + f.offset, 0, f.width);
    std::memcpy(arrBlock + f.offset, bytes.constData(), size_t(qMin(int(f.width), bytes.size())));
    return *this;
}

ZorTmiRecordWriter& ZorTmiRecordWriter::fillPattern(quint8 seed)
{
    for (size_t i = 0; i < sizeof arrBlock; ++i)
        arrBlock[i] = static_cast<unsigned char>(seed + i * 7);
    return *this;
}

QByteArray ZorTmiRecordWriter::fieldBytes(int n) const
{
    const ZorTmi::FieldInfo& f = ZorTmi::field(n);
    return QByteArray(reinterpret_cast<const char*>(arrBlock + f.offset), f.width);
}

QByteArray ZorTmiRecordWriter::record(const unsigned char* mask, int lastField) const
{
    QByteArray out;
    for (int n = 1; n <= lastField; ++n)
        if (ZorTmi::maskBit(mask, n))
            out.append(fieldBytes(n));
    return out;
}

QByteArray ZorTmiRecordWriter::record(const QString& format, int lastField) const
{
    unsigned char mask[ZorTmi::MaskBytes];
    int count = 0;
    TmiPage_Base::getArrSzFormat(format, mask, count);
    return record(mask, lastField);
}

QString ZorTmiRecordWriter::fullFormat(int lastField)
{
    return QString(lastField, QLatin1Char('1'));
}

QString ZorTmiRecordWriter::formatOf(std::initializer_list<int> fields)
{
    QString s(ZorTmi::FieldCount, QLatin1Char('0'));
    for (int n : fields)
        s[n - 1] = QLatin1Char('1');
    return s;
}
