#ifndef ZOR_OPERATORCODEROWS_H
#define ZOR_OPERATORCODEROWS_H

// The 20 numbered rows of operator codes that both operator lists show
// ("№", "Код оператора"), kept as "oc1" ... "oc20" in the list's node.
// A code is the mobile country code followed by the network code as one
// decimal number (25001); 0 is an empty row and shows blank, and a row whose
// text the user deletes becomes 0. The row whose
// code box last had the focus is the selected row (its number in bold):
// the white list moves it to change the priority.

#include "config/zor_rowbuilder.h"

#include <QObject>
#include <QVector>

class CXMLWorkData;
class QGridLayout;
class QSpinBox;

class ZOR_OperatorCodeRows : public QObject
{
    Q_OBJECT
public:
    static constexpr int nRowCount = 20;
    // Six digits hold every country code with a three-digit network code.
    static constexpr int nMaxCode = 999999;

    explicit ZOR_OperatorCodeRows(QObject* parent = nullptr);

    void build(QGridLayout* lpGrid);
    void translate() { m_rows.translate(); }
    void setDefaults() { m_rows.setDefaults(); }
    void read(CXMLWorkData* lpNode) { m_rows.readAttributes(lpNode); }
    void write(CXMLWorkData* lpNode) const { m_rows.writeAttributes(lpNode); }

    QVector<int> codes() const;
    void setCodes(const QVector<int>& codes);
    QSpinBox* codeBox(int nIndex) const;

    int currentRow() const { return m_nCurrent; }
    void setCurrentRow(int nIndex);
    // Swaps the selected row's code with the row nStep away and selects
    // that row; false, with nothing changed, past either end.
    bool moveCurrentRow(int nStep);

protected:
    bool eventFilter(QObject* lpWatched, QEvent* lpEvent) override;

private:
    ZOR_RowBuilder m_rows;
    int m_nCurrent = 0;
};

#endif
