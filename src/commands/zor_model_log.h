#ifndef ZOR_MODEL_LOG_H
#define ZOR_MODEL_LOG_H

// The console's exchange log: rows are only ever appended (or all cleared),
// and their texts are made when a view asks for them, so a long session
// costs one small record per block and no per-row widgets.

#include <QAbstractTableModel>
#include <QByteArray>
#include <QFont>
#include <vector>

class ZOR_Model_Log : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColumnTime, ColumnDirection, ColumnSize, ColumnData, ColumnHex, ColumnCount };
    enum Direction { DirectionOut = 0, DirectionIn = 1 };

    explicit ZOR_Model_Log(QObject* parent = nullptr);

    // direction: 0 "OUT", 1 "IN", anything else no direction text.
    void append(int direction, const QByteArray& data, qint64 nMSecsSinceEpoch);
    void clear();

    QString text(int row, int column) const;
    static int initialWidth(int column);
    // "." for every byte below 33, the Windows-1251 character otherwise.
    static QString visibleText(const QByteArray& data);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Row {
        qint64 nTime;
        int nDirection;
        QByteArray data;
    };
    std::vector<Row> rows;
    QFont rowFont;
};

#endif
