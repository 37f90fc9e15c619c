#ifndef ZOR_ROWBUILDER_H
#define ZOR_ROWBUILDER_H

// Repeated rows (32 Modbus rows, 16 fuel sensors, 20 operator codes, the
// universal sensor's rows): a column table times N rows in a grid, each row
// with its own ZOR_FormBinding and its own settings node.
//
//   ZOR_RowBuilder rows({
//       {"cfgt6_036", ZOR_FormBinding::Label},               // no attribute: the row caption
//       {"cfgt6_040", ZOR_FormBinding::Check, "use", "0"},
//       {"cfgt6_041", ZOR_FormBinding::Integer, "address", "1", 1, 255},
//       {"cfgt6_042", ZOR_FormBinding::Caption, "type", "0", 0, 0, &m_types},
//   });
//   rows.build(ui.gridSensors, 16, [](int n) { return zorTr("cfgt6_036") + QString(" %1").arg(n); });
//   rows.writeNodes(root, "FS");        // FS1 ... FS16
//   rows.readNodes(root, "FS");
//
// Rows are numbered from 1 in names and captions and indexed from 0 in
// calls. A column without an attribute is shown but not stored (a row's
// own on/off switch). A hook may adjust a row's widgets after they are built (a range
// that differs per row, a tooltip).
//
// Stored columns are kept in column order unless they say their place in
// the file: Column(...).stored(2) is the third attribute of a row, and
// .stored(2, how) stores the widget its own way (a number shown in hex).

#include "config/zor_formbinding.h"

#include <QWidget>

#include <QString>
#include <QVector>

#include <functional>

class QGridLayout;
class QLabel;

class ZOR_RowBuilder
{
public:
    enum ColumnKind {
        Check = ZOR_FormBinding::Check,
        Integer = ZOR_FormBinding::Integer,
        Text = ZOR_FormBinding::Text,
        Caption = ZOR_FormBinding::Caption,
        Index = ZOR_FormBinding::Index,
        Hex = ZOR_FormBinding::Hex,
        HexUpper = ZOR_FormBinding::HexUpper,
        Label = 100, // the row's caption, not stored
    };

    struct Column
    {
        Column(QString qsHeader, int nKind, const char* lpAttribute = nullptr, QString qsDefaultValue = QString(),
            int nMinimum = 0, int nMaximum = 0, const ZOR_CaptionList* lpCaptions = nullptr)
            : qsHeaderKey(std::move(qsHeader))
            , kind(nKind)
            , lpAttr(lpAttribute)
            , qsDefault(std::move(qsDefaultValue))
            , nMin(nMinimum)
            , nMax(nMaximum)
            , lpList(lpCaptions)
        {
        }
        QString qsHeaderKey; // language key of the column header ("" none)
        int kind = Label;
        const char* lpAttr = nullptr;
        QString qsDefault;
        int nMin = 0;
        int nMax = 0; // Integer range; Hex: digits in nMax
        const ZOR_CaptionList* lpList = nullptr; // Caption and Index
        // Binds the column's widget instead of its kind's binding.
        using Bind = std::function<void(ZOR_FormBinding& bind, const char* lpAttr, QWidget* lpWidget)>;
        int nOrder = -1; // place among the stored attributes (-1: column order)
        Bind bindAs;
        Column& stored(int nPlace, Bind how = {})
        {
            nOrder = nPlace;
            bindAs = std::move(how);
            return *this;
        }
    };

    explicit ZOR_RowBuilder(QVector<Column> columns);

    using RowCaption = std::function<QString(int nRow)>; // nRow from 1
    using RowHook = std::function<void(int nIndex, QVector<QWidget*>& widgets)>;

    // Builds nRows rows into the grid below a header row (at grid row
    // nFirstGridRow - 1 when nFirstGridRow > 0).
    void build(QGridLayout* lpGrid, int nRows, RowCaption caption = {}, int nFirstGridRow = 1, RowHook hook = {});

    int rowCount() const { return m_rows.size(); }
    QWidget* widget(int nIndex, int nColumn) const;
    template <typename T>
    T* widgetAs(int nIndex, int nColumn) const
    {
        return qobject_cast<T*>(widget(nIndex, nColumn));
    }
    ZOR_FormBinding& binding(int nIndex) { return m_rows[nIndex].bind; }

    // Headers, row captions and caption lists again (translateForm).
    void translate();
    void setDefaults();
    // Node names: qsWord + row number + qsTail ("FS" -> FS1, FS2 ...).
    void readNodes(CXMLWorkData* lpParent, const QString& qsWord, const QString& qsTail = QString());
    void writeNodes(CXMLWorkData* lpParent, const QString& qsWord, const QString& qsTail = QString()) const;
    // Lists kept in one node, each row's attributes numbered by the row
    // (column "oc" -> oc1, oc2 ...), written row by row. A null node reads
    // the defaults; the caller writes the node's parameters.
    void readAttributes(CXMLWorkData* lpNode);
    void writeAttributes(CXMLWorkData* lpNode) const;

private:
    QWidget* createWidget(const Column& col, QWidget* parent) const;
    static void bindColumn(ZOR_FormBinding& bind, const Column& col, QWidget* lpWidget);
    // Stored columns in the order of their attributes.
    QVector<int> storedColumns() const;

    struct BuiltRow
    {
        QVector<QWidget*> widgets;
        ZOR_FormBinding bind;
    };
    QVector<Column> m_columns;
    QVector<QLabel*> m_headers;
    QVector<BuiltRow> m_rows;
    RowCaption m_caption;
};

#endif
