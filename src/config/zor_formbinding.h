#ifndef ZOR_FORMBINDING_H
#define ZOR_FORMBINDING_H

// A form's settings as rows {attribute, widget, kind, default}: one table
// read from and written to a settings node, in row order (which is the
// attribute order in the file). Forms describe their values here instead of
// reading and writing XML themselves.
//
//   m_bind.integer("address", ui.spinAddress, 1)      // clamped to the spin box range
//         .check("use", ui.checkUse, false)            // "0" / "1"
//         .caption("type", ui.comboType, &m_types, "0") // code of the shown caption
//         .hex("reg", ui.editReg, 0, 4)                // "00ff"
//         .text("name", ui.editName, QString());
//   m_bind.writeNode(root, "FS1");   // node created when absent and cleared
//   m_bind.readNode(root, "FS1");    // missing node: defaults; missing attribute: its default
//
// Reading never fails: a value out of range is clamped by the widget, an
// unknown caption code falls back to the row's default, text that is not a
// number reads as strtol would ("12abc" is 12, "abc" is 0).

#include "config/zor_captionlist.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <functional>

class CXMLWorkData;
class QAbstractButton;
class QComboBox;
class QLineEdit;
class QSpinBox;
class QWidget;

class ZOR_FormBinding
{
public:
    enum Kind { Check, Integer, Text, Caption, Index, Hex, Custom, HexUpper };

    struct Row
    {
        QByteArray attr;
        QWidget* lpWidget = nullptr;
        Kind kind = Integer;
        QString qsDefault;
        const ZOR_CaptionList* lpList = nullptr; // Caption
        int nDigits = 0; // Hex: minimum digits
        std::function<QString()> store; // Custom
        std::function<void(const QString&)> show; // Custom
    };

    ZOR_FormBinding& check(const char* lpAttr, QAbstractButton* lpBox, bool bDefault);
    ZOR_FormBinding& integer(const char* lpAttr, QSpinBox* lpSpin, int nDefault);
    ZOR_FormBinding& text(const char* lpAttr, QLineEdit* lpEdit, const QString& qsDefault);
    // Stored as the code of the shown caption; an unknown code loads qsDefault.
    ZOR_FormBinding& caption(
        const char* lpAttr, QComboBox* lpBox, const ZOR_CaptionList* lpList, const QString& qsDefault);
    // Stored as the position in the box; out of range loads nDefault.
    ZOR_FormBinding& index(const char* lpAttr, QComboBox* lpBox, int nDefault);
    // Lower-case hexadecimal text of at least nDigits digits; text that is
    // not hexadecimal loads as 0.
    ZOR_FormBinding& hex(const char* lpAttr, QLineEdit* lpEdit, int nDefault, int nDigits);
    // Upper-case hexadecimal text of exactly nDigits digits (type bytes:
    // "0A"); text that is not hexadecimal or does not fit nDigits digits
    // loads nDefault.
    ZOR_FormBinding& hexUpper(const char* lpAttr, QLineEdit* lpEdit, int nDefault, int nDigits);
    // A caption list whose codes are numbers: stored as the code of the shown
    // caption (nUnknown when none is shown), read as an integer (" 3" and
    // "03" are 3); a number the list lacks shows nDefault, or leaves the
    // selection when the list lacks that too.
    ZOR_FormBinding& numberCaption(
        const char* lpAttr, QComboBox* lpBox, const ZOR_CaptionList* lpList, int nDefault, int nUnknown);
    // A value the form converts itself (a timer stored in seconds and shown
    // in minutes, a value spread over two widgets): store gives the stored
    // text, show gets the stored text (the default when absent or empty).
    // lpWidget is what setEnabled() switches.
    ZOR_FormBinding& custom(const char* lpAttr, QWidget* lpWidget, const QString& qsDefault,
        std::function<QString()> store, std::function<void(const QString&)> show);

    // A stored number as every row reads it: strtol semantics saturated to
    // int ("12abc" is 12, "abc" 0).
    static int intValue(const QString& qsValue);

    const QVector<Row>& rows() const { return m_rows; }
    void clear() { m_rows.clear(); }

    void setDefaults();
    void setEnabled(bool bEnabled);
    // Every row from this cursor (null: defaults).
    void read(CXMLWorkData* lpNode);
    // Every row into this cursor, in row order; the caller writes parameters.
    void write(CXMLWorkData* lpNode) const;
    // The node qsName below lpParent: read when it exists (defaults when not);
    // written created, cleared and flushed.
    void readNode(CXMLWorkData* lpParent, const QString& qsName);
    void writeNode(CXMLWorkData* lpParent, const QString& qsName) const;

    // The value a row's widget holds, as it would be stored.
    static QString storedValue(const Row& row);
    // Shows a stored value (or the default when qsValue is null).
    static void showValue(const Row& row, const QString& qsValue);

private:
    ZOR_FormBinding& append(Row row);
    QVector<Row> m_rows;
};

#endif
