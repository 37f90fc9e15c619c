#ifndef ZOR_TMI_RECORD_WRITER_H
#define ZOR_TMI_RECORD_WRITER_H

// Builds telemetry records for tests from the field table: set the values
// you want by column id (ZorTmi::Col_<Getter>) or by field, then take the
// wire record of any field set. Values are kept in a full value block, so
// the same writer gives records of every version and field set.

#include "telemetry/zor_tmi_table.h"

#include <QByteArray>
#include <QString>

class ZorTmiRecordWriter
{
public:
    ZorTmiRecordWriter();

    // Writes v into the column's bytes (bit parts are merged into the
    // bytes already there). Returns *this for chaining.
    ZorTmiRecordWriter& set(int columnId, qint64 v);
    ZorTmiRecordWriter& setFloat(int columnId, float v);
    // Raw bytes of field n (cut or zero-padded to its width).
    ZorTmiRecordWriter& setField(int n, const QByteArray& bytes);
    // Every byte of the block from a simple counter, so that each field
    // holds distinct, recognisable bytes.
    ZorTmiRecordWriter& fillPattern(quint8 seed = 1);

    const unsigned char* block() const { return arrBlock; }
    QByteArray fieldBytes(int n) const;

    // The wire record: the present fields of the mask up to lastField, in
    // order, packed.
    QByteArray record(const unsigned char* mask, int lastField = ZorTmi::FieldCount) const;
    QByteArray record(const QString& format, int lastField = ZorTmi::FieldCount) const;

    // Text forms of field sets: all fields up to lastField, or the listed ones.
    static QString fullFormat(int lastField = ZorTmi::FieldCount);
    static QString formatOf(std::initializer_list<int> fields);

private:
    unsigned char arrBlock[sizeof(szCurrentTMI_KITE3)] = {};
};

#endif
