#include "commands/zor_model_log.h"

#include "module/zor_cp1251.h"
#include "module/zor_language.h"

#include <QDateTime>
#include <QSaveFile>

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

const QString kTimeFormat = QStringLiteral("dd.MM.yyyy hh:mm:ss");
const QString kTimeFormatMs = QStringLiteral("dd.MM.yyyy hh:mm:ss.zzz");
// A tooltip shows this much of a cell, this many characters a line.
const int kToolTipChars = 1024;
const int kToolTipLine = 64;
const int kDetailLine = 64;
const QChar kEllipsis(0x2026);

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

QString hexText(const QByteArray& data)
{
    return QString::fromLatin1(data.toHex());
}

// The text cut into lines of nLine characters.
QString broken(const QString& qsText, int nLine)
{
    QString out;
    out.reserve(qsText.size() + qsText.size() / nLine + 1);
    for (int i = 0; i < qsText.size(); i += nLine) {
        if (i > 0)
            out += QLatin1Char('\n');
        out += qsText.midRef(i, nLine);
    }
    return out;
}

QString csvField(const QString& qsField)
{
    if (!qsField.contains(QLatin1Char(';')) && !qsField.contains(QLatin1Char('"'))
        && !qsField.contains(QLatin1Char('\n')) && !qsField.contains(QLatin1Char('\r')))
        return qsField;
    QString quoted = qsField;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

} // namespace

ZOR_Model_Log::ZOR_Model_Log(QObject* parent)
    : QAbstractTableModel(parent), rowFont(QStringLiteral("Courier"))
{
    // Where there is no Courier, a fixed-pitch face keeps the columns of
    // times and hex readable.
    rowFont.setStyleHint(QFont::TypeWriter);
    rowFont.setFixedPitch(true);
}

void ZOR_Model_Log::append(int direction, const QByteArray& data, qint64 nMSecsSinceEpoch)
{
    qint64 nReplyMs = -1;
    if (direction == DirectionOut)
        nLastSentTime = nMSecsSinceEpoch;
    else if (direction == DirectionIn && nLastSentTime >= 0)
        nReplyMs = nMSecsSinceEpoch - nLastSentTime;
    rows.push_back(Row{nMSecsSinceEpoch, nReplyMs, direction, data});
    if (!isFiltered()) {
        const int row = int(rows.size()) - 1;
        beginInsertRows(QModelIndex(), row, row);
        endInsertRows();
        return;
    }
    if (!passes(rows.back()))
        return;
    const int row = int(shown.size());
    beginInsertRows(QModelIndex(), row, row);
    shown.push_back(int(rows.size()) - 1);
    endInsertRows();
}

void ZOR_Model_Log::clear()
{
    beginResetModel();
    std::vector<Row>().swap(rows);
    std::vector<int>().swap(shown);
    nLastSentTime = -1;
    endResetModel();
}

const ZOR_Model_Log::Row* ZOR_Model_Log::rowAt(int shownRow) const
{
    if (shownRow < 0)
        return nullptr;
    if (isFiltered())
        return size_t(shownRow) < shown.size() ? &rows[size_t(shown[size_t(shownRow)])] : nullptr;
    return size_t(shownRow) < rows.size() ? &rows[size_t(shownRow)] : nullptr;
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

QString ZOR_Model_Log::hexDump(const QByteArray& data)
{
    static const char kDigits[] = "0123456789abcdef";
    QString out;
    out.reserve((data.size() / 16 + 1) * 78);
    for (int offset = 0; offset < data.size(); offset += 16) {
        const int n = qMin(16, data.size() - offset);
        out += QStringLiteral("%1 ").arg(offset, 8, 16, QLatin1Char('0'));
        for (int i = 0; i < 16; ++i) {
            out += QLatin1String(i == 8 ? "  " : " ");
            if (i < n) {
                const unsigned char b = static_cast<unsigned char>(data[offset + i]);
                out += QLatin1Char(kDigits[b >> 4]);
                out += QLatin1Char(kDigits[b & 15]);
            } else {
                out += QLatin1String("  ");
            }
        }
        out += QLatin1String("  |") + visibleText(data.mid(offset, n)) + QLatin1String("|\n");
    }
    return out;
}

QString ZOR_Model_Log::cellText(const Row& row, int column, bool bWhole) const
{
    switch (column) {
    case ColumnTime:
        return QDateTime::fromMSecsSinceEpoch(row.nTime).toString(kTimeFormat);
    case ColumnDirection:
        return directionText(row.nDirection);
    case ColumnSize:
        return QString::number(row.data.size());
    case ColumnData:
        if (bWhole || row.data.size() <= nShownChars)
            return visibleText(row.data);
        return visibleText(row.data.left(nShownChars)) + kEllipsis;
    case ColumnHex:
        if (bWhole || row.data.size() * 2 <= nShownChars)
            return hexText(row.data);
        return hexText(row.data.left(nShownChars / 2)) + kEllipsis;
    default:
        return QString();
    }
}

QString ZOR_Model_Log::text(int row, int column) const
{
    const Row* r = rowAt(row);
    return r ? cellText(*r, column, true) : QString();
}

QByteArray ZOR_Model_Log::bytes(int row) const
{
    const Row* r = rowAt(row);
    return r ? r->data : QByteArray();
}

qint64 ZOR_Model_Log::time(int row) const
{
    const Row* r = rowAt(row);
    return r ? r->nTime : 0;
}

qint64 ZOR_Model_Log::replyMs(int row) const
{
    const Row* r = rowAt(row);
    return r ? r->nReplyMs : -1;
}

// The tooltip is a preview: a capped, wrapped piece of the cell, with the
// reply time; the details pane has the rest.
QString ZOR_Model_Log::toolTip(const Row& row, int column) const
{
    const bool bHex = column == ColumnHex;
    const QByteArray head = row.data.left(bHex ? kToolTipChars / 2 : kToolTipChars);
    QString qsPreview = broken(bHex ? hexText(head) : visibleText(head), kToolTipLine);
    if (head.size() < row.data.size())
        qsPreview += kEllipsis;
    QString qsText = QStringLiteral("%1  %2  %3")
                         .arg(QDateTime::fromMSecsSinceEpoch(row.nTime).toString(kTimeFormatMs),
                              directionText(row.nDirection),
                              zorTr(QStringLiteral("cons_031")).arg(row.data.size()));
    if (row.nReplyMs >= 0)
        qsText += QLatin1Char('\n') + zorTr(QStringLiteral("cons_030")).arg(row.nReplyMs);
    if (!qsPreview.isEmpty())
        qsText += QLatin1String("\n\n") + qsPreview;
    // Rich text, so that Qt neither wraps nor reads markup in the data.
    return QLatin1String("<pre>") + qsText.toHtmlEscaped() + QLatin1String("</pre>");
}

QString ZOR_Model_Log::detailText(int row) const
{
    const Row* r = rowAt(row);
    if (!r)
        return QString();
    QString qsText = QStringLiteral("%1  %2  %3")
                         .arg(QDateTime::fromMSecsSinceEpoch(r->nTime).toString(kTimeFormatMs),
                              directionText(r->nDirection),
                              zorTr(QStringLiteral("cons_031")).arg(r->data.size()));
    if (r->nReplyMs >= 0)
        qsText += QLatin1Char('\n') + zorTr(QStringLiteral("cons_030")).arg(r->nReplyMs);
    qsText += QStringLiteral("\n\n%1:\n").arg(headerText(ColumnData));
    qsText += broken(visibleText(r->data), kDetailLine);
    qsText += QStringLiteral("\n\n%1:\n").arg(headerText(ColumnHex));
    qsText += hexDump(r->data);
    return qsText;
}

bool ZOR_Model_Log::matches(int row, const QString& qsNeedle) const
{
    const Row* r = rowAt(row);
    if (!r)
        return false;
    if (qsNeedle.isEmpty())
        return true;
    return visibleText(r->data).contains(qsNeedle, Qt::CaseInsensitive)
        || hexText(r->data).contains(qsNeedle, Qt::CaseInsensitive);
}

int ZOR_Model_Log::findRow(const QString& qsNeedle, int from, bool bForward) const
{
    const int count = rowCount();
    if (count == 0 || qsNeedle.isEmpty())
        return -1;
    for (int step = 1; step <= count; ++step) {
        const int row = ((from + (bForward ? step : -step)) % count + count) % count;
        if (matches(row, qsNeedle))
            return row;
    }
    return -1;
}

bool ZOR_Model_Log::passes(const Row& row) const
{
    if (nFilterDirection >= 0 && row.nDirection != nFilterDirection)
        return false;
    if (qsFilterText.isEmpty())
        return true;
    return visibleText(row.data).contains(qsFilterText, Qt::CaseInsensitive)
        || hexText(row.data).contains(qsFilterText, Qt::CaseInsensitive);
}

void ZOR_Model_Log::setFilter(int nDirection, const QString& qsText)
{
    beginResetModel();
    nFilterDirection = nDirection == DirectionOut || nDirection == DirectionIn ? nDirection : -1;
    qsFilterText = qsText;
    std::vector<int>().swap(shown);
    if (isFiltered()) {
        for (size_t i = 0; i < rows.size(); ++i) {
            if (passes(rows[i]))
                shown.push_back(int(i));
        }
    }
    endResetModel();
}

QString ZOR_Model_Log::rowsAsTsv(const QList<int>& shownRows) const
{
    QString out;
    for (const int row : shownRows) {
        const Row* r = rowAt(row);
        if (!r)
            continue;
        for (int column = 0; column < ColumnCount; ++column) {
            if (column > 0)
                out += QLatin1Char('\t');
            out += cellText(*r, column, true);
        }
        out += QLatin1Char('\n');
    }
    return out;
}

QString ZOR_Model_Log::rowsAsHex(const QList<int>& shownRows) const
{
    QString out;
    for (const int row : shownRows) {
        if (const Row* r = rowAt(row))
            out += hexText(r->data) + QLatin1Char('\n');
    }
    return out;
}

QByteArray ZOR_Model_Log::exportLog(Format format) const
{
    QString out;
    if (format == Format::Csv) {
        out += QChar(0xFEFF);
        for (int column = 0; column < ColumnCount; ++column)
            out += (column ? QStringLiteral(";") : QString()) + csvField(headerText(column));
        out += QLatin1String("\r\n");
    }
    for (const Row& row : rows) {
        const QString qsTime = QDateTime::fromMSecsSinceEpoch(row.nTime).toString(kTimeFormatMs);
        if (format == Format::Csv) {
            out += qsTime + QLatin1Char(';') + directionText(row.nDirection) + QLatin1Char(';')
                + QString::number(row.data.size()) + QLatin1Char(';') + csvField(visibleText(row.data))
                + QLatin1Char(';') + hexText(row.data) + QLatin1String("\r\n");
        } else {
            out += QStringLiteral("%1  %2  %3  %4\n    %5\n")
                       .arg(qsTime, directionText(row.nDirection).leftJustified(3),
                            QString::number(row.data.size()).rightJustified(6), visibleText(row.data),
                            hexText(row.data));
        }
    }
    return out.toUtf8();
}

bool ZOR_Model_Log::saveLog(const QString& qsPath, Format format, QString* errorString) const
{
    QSaveFile file(qsPath);
    const QByteArray content = exportLog(format);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
        if (errorString)
            *errorString = file.errorString();
        return false;
    }
    return true;
}

int ZOR_Model_Log::initialWidth(int column)
{
    return column >= 0 && column < ColumnCount ? kColumns[column].nWidth : 0;
}

QString ZOR_Model_Log::headerText(int column)
{
    return column >= 0 && column < ColumnCount ? QString::fromUtf8(kColumns[column].qsHeader) : QString();
}

int ZOR_Model_Log::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return int(isFiltered() ? shown.size() : rows.size());
}

int ZOR_Model_Log::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ZOR_Model_Log::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Row* row = rowAt(index.row());
    if (!row)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return cellText(*row, index.column(), false);
    case Qt::ToolTipRole:
        return toolTip(*row, index.column());
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
        return headerText(section);
    return QVariant();
}
