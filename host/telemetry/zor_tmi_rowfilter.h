#ifndef ZOR_TMI_ROWFILTER_H
#define ZOR_TMI_ROWFILTER_H

// The archive table with only some of its rows: the records a search kept,
// in archive order, or every row when no filter is set. Rows are chosen by
// the caller (from the numeric columns), so nothing is decoded to filter.

#include <QAbstractProxyModel>
#include <QVector>

class ZOR_TmiRowFilter : public QAbstractProxyModel
{
    Q_OBJECT
public:
    explicit ZOR_TmiRowFilter(QObject* parent = nullptr);

    void setSourceModel(QAbstractItemModel* lpModel) override;
    // Ascending source rows to show; clearFilter shows every row again.
    void setRows(const QVector<int>& rows);
    void clearFilter();
    bool isFiltered() const { return m_bFiltered; }

    // Source row of a shown row, and the shown row of a source row (the
    // nearest shown one after it when it is filtered out, -1 past them).
    int sourceRow(int nRow) const;
    int shownRow(int nSourceRow) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex& sourceIndex) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QVector<int> m_rows;
    bool m_bFiltered = false;
};

#endif
