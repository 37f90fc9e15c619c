#ifndef ZOR_TMI_FIELDSET_H
#define ZOR_TMI_FIELDSET_H

// A protocol version and the field set of its records, as the telemetry
// window takes it from the user: a mask of "1"/"0" characters, the 32 mask
// bytes as 64 hex digits, a settings file's "PROTOCOL"/"KITE" element or the
// open configuration. Also where each field lies within a record: the
// present fields follow each other in field order, packed.

#include <QByteArray>
#include <QString>

#include <memory>

class TmiPage_Base;

class ZOR_TmiFieldSet
{
public:
    ZOR_TmiFieldSet(); // version 3, every field
    static ZOR_TmiFieldSet full(int nVersion);

    int version() const { return m_nVersion; }
    // 1, 2 or 3; anything else keeps the current version.
    void setVersion(int nVersion);
    const QByteArray& mask() const { return m_mask; } // 32 bytes
    void setMask(const QByteArray& mask);
    bool has(int n) const;
    void setField(int n, bool bOn);

    // A text of only "0" and "1" is the mask (character i is field i + 1,
    // shorter texts leave the rest clear); anything else must be 64 hex
    // digits (spaces allowed). False, with the reason, when it is neither.
    bool parse(const QString& qsText, QString* lpError = nullptr);
    // 255 characters of "1" / "0".
    QString text() const;
    QString hex() const;

    // The stored protocol code of a settings document: "10" is version 1,
    // "20" version 2, anything else version 3.
    static int versionFromCode(const QString& qsCode);
    bool readProtocolElement(const QString& qsFormatCode, const QString& qsMask);
    // The "PROTOCOL"/"KITE" element of a saved configuration.
    bool readSettingsFile(const QString& qsFileName, QString* lpError = nullptr);

    int lastField() const;
    // What field n is called in the user's language: the caption of its
    // column, or of its first columns when it has several.
    static QString caption(int n);
    // Bytes of one record.
    int recordSize() const;
    // Byte offset of field n within a record, -1 when the record lacks it.
    int fieldOffset(int n) const;
    // The field whose bytes hold record byte nByte, 0 past the record.
    int fieldAt(int nByte) const;

    // A record object of this version and field set (no flag column).
    std::unique_ptr<TmiPage_Base> makeRecord() const;

    bool operator==(const ZOR_TmiFieldSet& other) const
    {
        return m_nVersion == other.m_nVersion && m_mask == other.m_mask;
    }
    bool operator!=(const ZOR_TmiFieldSet& other) const { return !(*this == other); }

private:
    int m_nVersion = 3;
    QByteArray m_mask;
};

#endif
