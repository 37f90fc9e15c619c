#include "commands/zor_model_log.h"

#include "module/zor_cp1251.h"

#include <QDateTime>

namespace {

struct ColumnInfo {
    const char* qsHeader; // UTF-8
    int nWidth;
    Qt::Alignment alignment;
};

const ColumnInfo kColumns[ZOR_Model_Log::ColumnCount] = {
    {"Время", 130, Qt::AlignLeft | Qt::AlignVCenter},
    {"IN/OUT", 60, Qt::AlignHCenter | Qt::AlignVCenter},
    {"Размер (байт)", 100, Qt::AlignLeft | Qt::AlignVCenter},
    {"Данные", 250, Qt::AlignLeft | Qt::AlignVCenter},
    {"Данные (HEX)", 50, Qt::AlignLeft | Qt::AlignVCenter},
};

QString directionText(int nDirection)
{
    switch (nDirection) {
    case ZOR_Model_Log::DirectionOut:
        return QStringLiteral("OUT");
    case ZOR_Model_Log::DirectionIn:
        return QStringLiteral("IN");
    default:
        return QString();
    }
}

} // namespace

ZOR_Model_Log::ZOR_Model_Log(QObject* parent)
    : QAbstractTableModel(parent), rowFont(QStringLiteral("Courier"))
{
}

void ZOR_Model_Log::append(int direction, const QByteArray& data, qint64 nMSecsSinceEpoch)
{
    const int row = int(rows.size());
    beginInsertRows(QModelIndex(), row, row);
    rows.push_back(Row{nMSecsSinceEpoch, direction, data});
    endInsertRows();
}

void ZOR_Model_Log::clear()
{
    beginResetModel();
    std::vector<Row>().swap(rows);
    endResetModel();
}

QString ZOR_Model_Log::visibleText(const QByteArray& data)
{
    QString text(data.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char c : data) {
        const unsigned char b = static_cast<unsigned char>(c);
        *out++ = b < 33 ? QLatin1Char('.') : ZOR_Cp1251::decodeByte(b);
    }
    return text;
}

QString ZOR_Model_Log::text(int row, int column) const
{
    if (row < 0 || row >= int(rows.size()))
        return QString();
    const Row& r = rows[size_t(row)];
    switch (column) {
    case ColumnTime:
        return QDateTime::fromMSecsSinceEpoch(r.nTime).toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    case ColumnDirection:
        return directionText(r.nDirection);
    case ColumnSize:
        return QString::number(r.data.size());
    case ColumnData:
        return visibleText(r.data);
    case ColumnHex:
        return QString::fromLatin1(r.data.toHex());
    default:
        return QString();
    }
}

int ZOR_Model_Log::initialWidth(int column)
{
    return column >= 0 && column < ColumnCount ? kColumns[column].nWidth : 0;
}

int ZOR_Model_Log::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(rows.size());
}

int ZOR_Model_Log::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ZOR_Model_Log::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return text(index.row(), index.column());
    case Qt::FontRole:
        return rowFont;
    case Qt::TextAlignmentRole:
        return int(kColumns[index.column()].alignment);
    default:
        return QVariant();
    }
}

QVariant ZOR_Model_Log::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(kColumns[section].qsHeader);
    return QVariant();
}
