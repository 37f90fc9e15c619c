#include "config/zor_rowbuilder.h"

#include "config/zor_configproblems.h"
#include "module/zor_language.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QSpinBox>

ZOR_RowBuilder::ZOR_RowBuilder(QVector<Column> columns)
    : m_columns(std::move(columns))
{
}

void ZOR_RowBuilder::build(QGridLayout* lpGrid, int nRows, RowCaption caption, int nFirstGridRow, RowHook hook)
{
    m_caption = std::move(caption);
    QWidget* parent = lpGrid ? lpGrid->parentWidget() : nullptr;
    if (lpGrid && nFirstGridRow > 0) {
        for (int c = 0; c < m_columns.size(); ++c) {
            auto header = new QLabel(parent);
            m_headers.append(header);
            lpGrid->addWidget(header, nFirstGridRow - 1, c);
        }
    }
    m_rows.resize(nRows);
    for (int r = 0; r < nRows; ++r) {
        BuiltRow& row = m_rows[r];
        for (int c = 0; c < m_columns.size(); ++c) {
            const Column& col = m_columns[c];
            // Widgets of unstored columns go into a scratch binding.
            ZOR_FormBinding unstored;
            ZOR_FormBinding& bind = col.lpAttr ? row.bind : unstored;
            QWidget* w = nullptr;
            switch (col.kind) {
            case Check: {
                auto box = new QCheckBox(parent);
                bind.check(col.lpAttr, box, col.qsDefault.toInt() != 0);
                w = box;
                break;
            }
            case Integer: {
                auto spin = new QSpinBox(parent);
                spin->setRange(col.nMin, col.nMax);
                bind.integer(col.lpAttr, spin, col.qsDefault.toInt());
                w = spin;
                break;
            }
            case Text: {
                auto edit = new QLineEdit(parent);
                bind.text(col.lpAttr, edit, col.qsDefault);
                w = edit;
                break;
            }
            case Hex:
            case HexUpper: {
                auto edit = new QLineEdit(parent);
                const int nDigits = qMax(1, col.nMax);
                edit->setValidator(new QRegularExpressionValidator(
                    QRegularExpression(QStringLiteral("[0-9a-fA-F]{0,%1}").arg(nDigits)), edit));
                if (col.kind == Hex)
                    bind.hex(col.lpAttr, edit, col.qsDefault.toInt(nullptr, 16), nDigits);
                else
                    bind.hexUpper(col.lpAttr, edit, col.qsDefault.toInt(nullptr, 16), nDigits);
                w = edit;
                break;
            }
            case Caption:
            case Index: {
                auto box = new QComboBox(parent);
                if (col.lpList)
                    col.lpList->fill(box);
                if (col.kind == Caption)
                    bind.caption(col.lpAttr, box, col.lpList, col.qsDefault);
                else
                    bind.index(col.lpAttr, box, col.qsDefault.toInt());
                w = box;
                break;
            }
            default: w = new QLabel(parent); break;
            }
            row.widgets.append(w);
            if (lpGrid)
                lpGrid->addWidget(w, nFirstGridRow + r, c);
        }
        if (hook)
            hook(r, row.widgets);
    }
    translate();
}

QWidget* ZOR_RowBuilder::widget(int nIndex, int nColumn) const
{
    if (nIndex < 0 || nIndex >= m_rows.size() || nColumn < 0 || nColumn >= m_columns.size())
        return nullptr;
    return m_rows[nIndex].widgets[nColumn];
}

void ZOR_RowBuilder::translate()
{
    for (int c = 0; c < m_headers.size(); ++c)
        m_headers[c]->setText(m_columns[c].qsHeaderKey.isEmpty() ? QString() : zorTr(m_columns[c].qsHeaderKey));
    for (int r = 0; r < m_rows.size(); ++r) {
        for (int c = 0; c < m_columns.size(); ++c) {
            const Column& col = m_columns[c];
            QWidget* w = m_rows[r].widgets[c];
            if (col.kind == Label && m_caption)
                static_cast<QLabel*>(w)->setText(m_caption(r + 1));
            else if ((col.kind == Caption || col.kind == Index) && col.lpList)
                col.lpList->fill(static_cast<QComboBox*>(w));
        }
    }
}

void ZOR_RowBuilder::setDefaults()
{
    for (BuiltRow& row : m_rows)
        row.bind.setDefaults();
}

void ZOR_RowBuilder::readNodes(CXMLWorkData* lpParent, const QString& qsWord, const QString& qsTail)
{
    for (int r = 0; r < m_rows.size(); ++r)
        m_rows[r].bind.readNode(lpParent, ZOR_SettingsNode::name(qsWord, r + 1, qsTail));
}

void ZOR_RowBuilder::writeNodes(CXMLWorkData* lpParent, const QString& qsWord, const QString& qsTail) const
{
    for (int r = 0; r < m_rows.size(); ++r)
        m_rows[r].bind.writeNode(lpParent, ZOR_SettingsNode::name(qsWord, r + 1, qsTail));
}

void ZOR_RowBuilder::readAttributes(CXMLWorkData* lpNode)
{
    ZOR_ConfigProblems* lpProblems = lpNode ? ZOR_ConfigProblems::active() : nullptr;
    for (int r = 0; r < m_rows.size(); ++r) {
        for (ZOR_FormBinding::Row row : m_rows[r].bind.rows()) {
            QString qsValue;
            row.attr += QByteArray::number(r + 1);
            if (lpNode)
                lpNode->readString(row.attr.constData(), QString(), qsValue);
            ZOR_FormBinding::showValue(row, qsValue);
            if (lpProblems)
                lpProblems->noteRow(lpNode->getTag(), row.attr, row, qsValue);
        }
    }
}

void ZOR_RowBuilder::writeAttributes(CXMLWorkData* lpNode) const
{
    if (!lpNode)
        return;
    for (int r = 0; r < m_rows.size(); ++r) {
        for (const ZOR_FormBinding::Row& row : m_rows[r].bind.rows())
            lpNode->writeString((row.attr + QByteArray::number(r + 1)).constData(), ZOR_FormBinding::storedValue(row));
    }
}
