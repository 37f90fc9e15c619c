#ifndef TMIPAGE_BASE_H
#define TMIPAGE_BASE_H

// What the telemetry records of versions 1, 2 and 3 share: the field set,
// the value block, the decoder with its offset plan, presence, the texts of
// the table's columns, the date-time family and the user-parameter texts.
// The classes TmiPage_Kite1/2/3 add the named getters of their fields
// (generated from the field table) and what is particular to their version.
//
// Decoding. A record carries the present fields in ascending order, packed,
// little-endian. The plan of a field set (runs of consecutive present
// fields, each one memcpy) is built when the field set is set and reused
// for every record. A record shorter than its field set implies is decoded
// as far as whole fields fit: the fields from the first one that does not
// fit on are absent for that record (their members are zeroed) and
// missingBytes() says how many bytes were missing. Longer data is fine: only
// recordSize() bytes are read.
//
// Column texts (for the CSV export and the command-line tool). Every field
// has csvColumnCount(n) columns, in the order of its CSV columns;
// csvColumnCaption(n, i) is the header caption of column i and
// appendColumnTexts(n, out, before, after) appends the texts of all columns
// of field n to out, each wrapped as before + text + after (a QString, or
// UTF-8 bytes in a QByteArray, which is several times faster for files);
// appendColumnTexts(columns, out, before, after, line) does it for a whole
// line: the event-code override and the time cell with milliseconds of the
// CSV export are its LineOptions. A field absent
// from this record gives "n/a" in every column. The time column (field 3)
// gives the getStrDateTime text (plus milliseconds only through
// LineOptions); the event-code column gives getStrCode.

#include "telemetry/zor_tmi_ext.h"
#include "telemetry/zor_tmi_table.h"

#include <QByteArray>
#include <QDateTime>
#include <QTextStream>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class TmiPage_Base : public QObject
{
    Q_OBJECT
public:
    // Field set ----------------------------------------------------------
    // Text form to the 32 mask bytes (bit 7 of byte 0 is field 1). Only the
    // character "1" marks a field present; characters past the 255th are
    // ignored. count receives the number of bytes written (always 32).
    static void getArrSzFormat(const QString& format, unsigned char* bytes, int& count);
    // Mask bytes to text: 255 characters of "1" / "0".
    static QString formatText(const unsigned char* mask);
    // The record object of protocol version 1, 2 or 3, with no field set
    // yet; nullptr for any other version.
    static std::unique_ptr<TmiPage_Base> create(int nVersion);

    void setPageFormat(const QString& format);
    void setPageFormat(const unsigned char* mask); // 32 bytes
    void getPageFormat(QByteArray& mask) const; // the 32 mask bytes
    QString getStrFormat() const;

    int lastField() const { return nLastField; }
    // The flag of the constructor that takes a field-set string (the CSV
    // export adds a column for it).
    bool getFlag() const { return bFlag; }
    // Bytes one record of the field set takes.
    int recordSize() const { return nRecordSize; }
    // Present in this record: set in the field set and decoded.
    bool isUseParam(int n) const { return ZorTmi::Presence{arrMask, nLastField, nCutField}.has(n); }
    // Set in the field set (whether or not the last record carried it).
    bool isInFormat(int n) const { return n >= 1 && n <= nLastField && ZorTmi::maskBit(arrMask, n); }

    // Decoding -------------------------------------------------------------
    // Decodes one record; true when it was complete. Null data is an empty
    // record.
    bool setCurrentTMI(const unsigned char* data, int length);
    int missingBytes() const { return nMissingBytes; }
    void getPagePacket(QByteArray& packet) const;

    // From the extended record when the object was built from one.
    int getFormatType() const { return bExt ? extRecord.FormatType : nFormatType; }
    int getVersionType() const { return bExt ? extRecord.VersionType : nVersionType; }
    quint32 getNumberTmiPage() const;
    quint16 getCode() const;

    // Value block as bytes in field order (recordSize of all fields).
    const unsigned char* valueBlock() const { return arrBlock; }
    const unsigned char* fieldBytes(int n) const { return arrBlock + ZorTmi::field(n).offset; }

    // Texts ---------------------------------------------------------------
    QString columnText(int columnId) const;
    static int csvColumnCount(int n);
    static QString csvColumnCaption(int n, int i);
    void appendColumnTexts(int n, QString& out, QLatin1String before, QLatin1String after) const;
    // The same, UTF-8 encoded: the fast path for writers of large files.
    void appendColumnTexts(int n, QByteArray& out, const QByteArray& before, const QByteArray& after) const;
    // The columns of every field that `columns` (the column-defining
    // record) has in its field set, in field order, with this record's
    // texts: one CSV data line without its line end.
    void appendColumnTexts(const TmiPage_Base& columns, QByteArray& out, const QByteArray& before,
        const QByteArray& after, const ZorTmi::LineOptions& line = ZorTmi::LineOptions()) const;

    // CSV export -----------------------------------------------------------
    // This object defines the columns: every field of its field set (in
    // field order) gives csvColumnCount(n) columns; with getFlag() set the
    // header ends with one more cell, "tmikte_359", which only lines of
    // extended records fill (it is the last column, so the lines of plain
    // records stay aligned without it). Cells end with ";", lines with
    // "\r\n"; a data cell is ="text"; (text unescaped), the time cell
    // carries the milliseconds, and a non-empty codeText replaces the
    // event code. A null record writes nothing at all. The stream's codec
    // decides the encoding.
    void setExcelHeader(QTextStream& stream) const;
    void setExcelData(QTextStream& stream, const TmiPage_Base* record, const QString& codeText) const;
    // The same lines as UTF-8 bytes appended to out (ZOR_TmiCsvWriter).
    void appendExcelHeader(QByteArray& out) const;
    void appendExcelData(QByteArray& out, const TmiPage_Base* record, const QByteArray& codeText) const;

    // Date and time -------------------------------------------------------
    void setDateTimeOffset(int seconds) { nUtcOffset = seconds; }
    int getDateTimeOffset() const { return nUtcOffset; }
    QDateTime getDateTime() const;
    QDateTime getDateTimeUTC() const;
    QDateTime getDateTimeUTC_Offset() const;
    QDateTime getLastDateTime() const;
    QDateTime getLastDateTimeUTC() const;
    QDateTime getLastDateTimeUTC_Offset() const;
    QString getStrDateTime() const;
    QString getStrDateTimeUTC() const;
    QString getStrDateTimeUTC_Offset() const;
    QString getStrLastDateTimeUTC_Offset() const;
    // "(UTC)", "(UTC +3)", "(UTC -5:30)".
    static QString getStrUtcZone(int seconds);

    // 0-31 as percent (x 3.22, truncated); 0 for 99 (unknown).
    int getValueGSM() const;
    // Combined CAN fuel level texts: percent or litres, "n/a" without data.
    QString getStrCanFuelLevel() const;

    // User parameters: the raw value shown by a type letter ("u", "s", "i",
    // "b", "h", "f"; anything else unsigned decimal).
    static QString getStrUserParamData(unsigned char value, const QString& type);
    static QString getStrUserParamData(unsigned short value, const QString& type);
    static QString getStrUserParamData(unsigned int value, const QString& type);
    static QString getStrUserParamData(unsigned long value, const QString& type);
    static QString getStrUserParamData(unsigned long long value, const QString& type);
    // The typed text of user-parameter field n, "n/a" when absent.
    QString userParamText(int n, const QString& type) const;

protected:
    // Extended record (versions 2 and 3 make these public) ------------------
    void setExtTMI(const szExtTMI_KITE3* ext);
    // The line of an extended record: the values it shares with the field
    // table (record number, code, times, navigation state, coordinates,
    // altitude, speed, course, mileage, state and module bits, outputs,
    // pulse counters 1-2, engine hours) in the columns of those fields,
    // "n/a" in the others, then - with getFlag() - the visible data block
    // as upper-case hexadecimal.
    void setExcelDataExt(QTextStream& stream, const TmiPage_Base* record, const QString& codeText) const;
    bool isExt() const { return bExt; }
    const szExtTMI_KITE3& getExtTMI() const { return extRecord; }
    quint16 getCode_Ext() const;
    qint32 getLatitude_Ext() const;
    qint32 getLongitude_Ext() const;
    QString getStrLatitude_Ext() const;
    QString getStrLongitude_Ext() const;
    QDateTime getDateTime_Ext() const;
    QDateTime getDateTimeUTC_Ext() const;
    QDateTime getDateTimeUTC_Offset_Ext() const;
    QString getStrDateTime_Ext() const;
    // Bytes of the visible and the hidden block together.
    int getDynamicDataSize_Ext() const;
    // NaviAlt (field 74) in metres.
    float getNaviAltitude() const;
    // The time of the LBS data (field 77) as local, UTC and shifted UTC.
    QDateTime getLbsDateTime() const;
    QDateTime getLbsDateTimeUTC() const;
    QDateTime getLbsDateTimeUTC_Offset() const;
    QString getStrLbsDateTimeUTC_Offset() const;

    // Everything the constructors of the record classes take.
    struct Init
    {
        int lastField;
        QString format;
        bool flag = false;
        int formatType = 0;
        int versionType = 0;
        const void* block = nullptr; // a value block of the version's size
        const szExtTMI_KITE3* ext = nullptr;
    };
    TmiPage_Base(const Init& init, QObject* parent);

    TmiPage_Base(int lastField, QObject* parent);
    void setTypes(int formatType, int versionType);
    // Copies a decoded value block (of this version's size) in.
    void setValueBlock(const void* block, int size);
    QDateTime timeValue(int columnId, Qt::TimeSpec timeSpec, int shift) const;
    // "hh:mm:ss dd.MM.yyyy (UTC ...)" of a shifted time, "n/a" without the field.
    QString shiftedTimeText(int field, const QDateTime& t) const;
    void appendExcelDataExt(QByteArray& out, const TmiPage_Base& record, const QByteArray& codeText) const;

    quint8 nFormatType = 0;
    quint8 nVersionType = 0;
    unsigned char arrMask[ZorTmi::MaskBytes] = {};
    unsigned char arrBlock[sizeof(szCurrentTMI_KITE3)] = {};
    int nUtcOffset = 0;
    // The raw bytes of the last record; while bPacketInBlock they are not
    // held here but are the value block's present fields (see keepPacket).
    QByteArray baPacket;
    bool bPacketInBlock = false;
    // Makes baPacket hold the bytes before the block or the plan changes.
    void keepPacket();
    szExtTMI_KITE3 extRecord = {};
    bool bExt = false;
    bool bFlag = false;

private:
    struct Run
    {
        quint16 src;
        quint16 dst;
        quint16 len;
    };
    void buildPlan();

    int nLastField;
    int nRecordSize = 0;
    int nMissingBytes = 0;
    int nCutField = ZorTmi::FieldCount + 1;
    QVector<Run> plan;
};

// The constructors and value-block copy every record class has:
//   Class(format, flag)  field set from its text form; values zero, format
//                        and version type 0; the flag is kept for the CSV
//                        export (its extra column);
//   Class(formatType, versionType, format, block)  the same with the type
//                        bytes and a decoded value block;
//   Class(block)         a decoded value block, empty field set;
//   getCurrentTMI()      a copy of the value block.
#define ZOR_TMI_RECORD_MEMBERS(Class, Block)                                                                           \
    explicit Class(const QString& format, bool flag = false, QObject* parent = nullptr);                               \
    Class(int formatType, int versionType, const QString& format, const Block* tmi, QObject* parent = nullptr);        \
    explicit Class(const Block* tmi, QObject* parent = nullptr);                                                       \
    Block getCurrentTMI() const;

#define ZOR_TMI_RECORD_MEMBERS_IMPL(Class, Block, LastField)                                                           \
    Class::Class(const QString& format, bool flag, QObject* parent)                                                    \
        : TmiPage_Base(Init{LastField, format, flag}, parent)                                                          \
    {                                                                                                                  \
    }                                                                                                                  \
    Class::Class(int formatType, int versionType, const QString& format, const Block* tmi, QObject* parent)            \
        : TmiPage_Base(Init{LastField, format, false, formatType, versionType, tmi}, parent)                           \
    {                                                                                                                  \
    }                                                                                                                  \
    Class::Class(const Block* tmi, QObject* parent)                                                                    \
        : TmiPage_Base(Init{LastField, QString(), false, 0, 0, tmi}, parent)                                           \
    {                                                                                                                  \
    }                                                                                                                  \
    Block Class::getCurrentTMI() const                                                                                 \
    {                                                                                                                  \
        Block tmi;                                                                                                     \
        std::memcpy(&tmi, valueBlock(), sizeof tmi);                                                                   \
        return tmi;                                                                                                    \
    }

// The members that versions 2 and 3 offer beyond version 1: the extended
// record and the helpers of fields above 69.
#define ZOR_TMI_EXT_MEMBERS                                                                                            \
    using TmiPage_Base::setExtTMI;                                                                                     \
    using TmiPage_Base::setExcelDataExt;                                                                               \
    using TmiPage_Base::getExtTMI;                                                                                     \
    using TmiPage_Base::getCode_Ext;                                                                                   \
    using TmiPage_Base::getLatitude_Ext;                                                                               \
    using TmiPage_Base::getLongitude_Ext;                                                                              \
    using TmiPage_Base::getStrLatitude_Ext;                                                                            \
    using TmiPage_Base::getStrLongitude_Ext;                                                                           \
    using TmiPage_Base::getDateTime_Ext;                                                                               \
    using TmiPage_Base::getDateTimeUTC_Ext;                                                                            \
    using TmiPage_Base::getDateTimeUTC_Offset_Ext;                                                                     \
    using TmiPage_Base::getStrDateTime_Ext;                                                                            \
    using TmiPage_Base::getDynamicDataSize_Ext;                                                                        \
    using TmiPage_Base::getNaviAltitude;                                                                               \
    using TmiPage_Base::getLbsDateTime;                                                                                \
    using TmiPage_Base::getLbsDateTimeUTC;                                                                             \
    using TmiPage_Base::getLbsDateTimeUTC_Offset;                                                                      \
    using TmiPage_Base::getStrLbsDateTimeUTC_Offset;

#endif
