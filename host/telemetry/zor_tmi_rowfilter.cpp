#include "zor_tmi_rowfilter.h"

#include <algorithm>

ZOR_TmiRowFilter::ZOR_TmiRowFilter(QObject* parent)
    : QAbstractProxyModel(parent)
{
}

void ZOR_TmiRowFilter::setSourceModel(QAbstractItemModel* lpModel)
{
    beginResetModel();
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    QAbstractProxyModel::setSourceModel(lpModel);
    m_rows.clear();
    m_bFiltered = false;
    if (lpModel) {
        // The archive model only ever resets: a new file or field set.
        connect(lpModel, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
        connect(lpModel, &QAbstractItemModel::modelReset, this, [this] {
            m_rows.clear();
            m_bFiltered = false;
            endResetModel();
        });
        connect(lpModel, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& a, const QModelIndex& b) {
            emit dataChanged(mapFromSource(a), mapFromSource(b));
        });
    }
    endResetModel();
}

void ZOR_TmiRowFilter::setRows(const QVector<int>& rows)
{
    beginResetModel();
    m_rows = rows;
    m_bFiltered = true;
    endResetModel();
}

void ZOR_TmiRowFilter::clearFilter()
{
    beginResetModel();
    m_rows.clear();
    m_bFiltered = false;
    endResetModel();
}

int ZOR_TmiRowFilter::sourceRow(int nRow) const
{
    if (nRow < 0 || nRow >= rowCount())
        return -1;
    return m_bFiltered ? m_rows.at(nRow) : nRow;
}

int ZOR_TmiRowFilter::shownRow(int nSourceRow) const
{
    if (!m_bFiltered)
        return nSourceRow < rowCount() ? nSourceRow : -1;
    const auto it = std::lower_bound(m_rows.constBegin(), m_rows.constEnd(), nSourceRow);
    return it == m_rows.constEnd() ? -1 : int(it - m_rows.constBegin());
}

QModelIndex ZOR_TmiRowFilter::index(int row, int column, const QModelIndex& parent) const
{
    if (parent.isValid() || row < 0 || column < 0 || row >= rowCount() || column >= columnCount())
        return QModelIndex();
    return createIndex(row, column);
}

QModelIndex ZOR_TmiRowFilter::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int ZOR_TmiRowFilter::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || !sourceModel())
        return 0;
    return m_bFiltered ? m_rows.size() : sourceModel()->rowCount();
}

int ZOR_TmiRowFilter::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || !sourceModel() ? 0 : sourceModel()->columnCount();
}

QModelIndex ZOR_TmiRowFilter::mapToSource(const QModelIndex& proxyIndex) const
{
    if (!proxyIndex.isValid() || !sourceModel())
        return QModelIndex();
    return sourceModel()->index(sourceRow(proxyIndex.row()), proxyIndex.column());
}

QModelIndex ZOR_TmiRowFilter::mapFromSource(const QModelIndex& sourceIndex) const
{
    if (!sourceIndex.isValid())
        return QModelIndex();
    const int nRow = shownRow(sourceIndex.row());
    if (nRow < 0 || sourceRow(nRow) != sourceIndex.row())
        return QModelIndex();
    return index(nRow, sourceIndex.column());
}

QVariant ZOR_TmiRowFilter::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!sourceModel())
        return QVariant();
    if (orientation == Qt::Horizontal)
        return sourceModel()->headerData(section, orientation, role);
    return sourceModel()->headerData(sourceRow(section), orientation, role);
}
