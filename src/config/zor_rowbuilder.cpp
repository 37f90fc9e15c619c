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

#include <algorithm>

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
    const QVector<int> stored = storedColumns();
    m_rows.resize(nRows);
    for (int r = 0; r < nRows; ++r) {
        BuiltRow& row = m_rows[r];
        for (int c = 0; c < m_columns.size(); ++c) {
            QWidget* w = createWidget(m_columns[c], parent);
            row.widgets.append(w);
            if (lpGrid)
                lpGrid->addWidget(w, nFirstGridRow + r, c);
        }
        for (int c : stored)
            bindColumn(row.bind, m_columns[c], row.widgets[c]);
        if (hook)
            hook(r, row.widgets);
    }
    translate();
}

QWidget* ZOR_RowBuilder::createWidget(const Column& col, QWidget* parent) const
{
    switch (col.kind) {
    case Check: return new QCheckBox(parent);
    case Integer: {
        auto spin = new QSpinBox(parent);
        spin->setRange(col.nMin, col.nMax);
        return spin;
    }
    case Text: return new QLineEdit(parent);
    case Hex:
    case HexUpper: {
        auto edit = new QLineEdit(parent);
        const int nDigits = qMax(1, col.nMax);
        edit->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("[0-9a-fA-F]{0,%1}").arg(nDigits)), edit));
        return edit;
    }
    case Caption:
    case Index: {
        auto box = new QComboBox(parent);
        if (col.lpList)
            col.lpList->fill(box);
        return box;
    }
    default: return new QLabel(parent);
    }
}

void ZOR_RowBuilder::bindColumn(ZOR_FormBinding& bind, const Column& col, QWidget* lpWidget)
{
    if (col.bindAs) {
        col.bindAs(bind, col.lpAttr, lpWidget);
        return;
    }
    switch (col.kind) {
    case Check: bind.check(col.lpAttr, static_cast<QCheckBox*>(lpWidget), col.qsDefault.toInt() != 0); break;
    case Integer: bind.integer(col.lpAttr, static_cast<QSpinBox*>(lpWidget), col.qsDefault.toInt()); break;
    case Text: bind.text(col.lpAttr, static_cast<QLineEdit*>(lpWidget), col.qsDefault); break;
    case Hex:
        bind.hex(col.lpAttr, static_cast<QLineEdit*>(lpWidget), col.qsDefault.toInt(nullptr, 16), qMax(1, col.nMax));
        break;
    case HexUpper:
        bind.hexUpper(
            col.lpAttr, static_cast<QLineEdit*>(lpWidget), col.qsDefault.toInt(nullptr, 16), qMax(1, col.nMax));
        break;
    case Caption: bind.caption(col.lpAttr, static_cast<QComboBox*>(lpWidget), col.lpList, col.qsDefault); break;
    case Index: bind.index(col.lpAttr, static_cast<QComboBox*>(lpWidget), col.qsDefault.toInt()); break;
    default: break;
    }
}

QVector<int> ZOR_RowBuilder::storedColumns() const
{
    QVector<int> stored;
    for (int c = 0; c < m_columns.size(); ++c)
        if (m_columns[c].lpAttr && m_columns[c].kind != Label)
            stored.append(c);
    auto place = [this](int c) { return m_columns[c].nOrder >= 0 ? m_columns[c].nOrder : c; };
    std::stable_sort(stored.begin(), stored.end(), [place](int a, int b) { return place(a) < place(b); });
    return stored;
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
