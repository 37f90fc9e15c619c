#include "commands/zor_model_log.h"

#include "module/zor_cp1251.h"
#include "module/zor_language.h"

#include <QDateTime>
#include <QSaveFile>

#include <algorithm>
#include <cstdlib>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

struct ColumnInfo
{
    const char* qsHeaderKey;
    int nWidth;
    Qt::Alignment alignment;
};

const ColumnInfo kColumns[ZOR_Model_Log::ColumnCount] = {
    {"cons_050", 130, Qt::AlignLeft | Qt::AlignVCenter},
    {"cons_051", 60, Qt::AlignHCenter | Qt::AlignVCenter},
    {"cons_052", 100, Qt::AlignLeft | Qt::AlignVCenter},
    {"cons_053", 250, Qt::AlignLeft | Qt::AlignVCenter},
    {"cons_054", 50, Qt::AlignLeft | Qt::AlignVCenter},
};

const QString kTimeFormat = QStringLiteral("dd.MM.yyyy hh:mm:ss");
const QString kTimeFormatMs = QStringLiteral("dd.MM.yyyy hh:mm:ss.zzz");
// A tooltip shows this much of a cell, this many characters a line.
const int kToolTipChars = 1024;
const int kToolTipLine = 64;
const QChar kEllipsis(0x2026);
// Chunks grow with the log, from a page for a short session up to a size
// where one more chunk is a small part of the whole.
const int kMinChunk = 4096;
const int kMaxChunk = 1 << 20;
// A clear that frees more than this asks the C library to hand the freed
// pages back: a heap rarely shrinks by itself once it is fragmented.
const qint64 kTrimAfterClear = 4 << 20;
const qint64 kMaxReplyMs = (qint64(1) << 30) - 2;

QString directionText(int nDirection)
{
    switch (nDirection) {
    case ZOR_Model_Log::DirectionOut: return QStringLiteral("OUT");
    case ZOR_Model_Log::DirectionIn: return QStringLiteral("IN");
    default: return QString();
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

// The bytes as text for reading: line ends break it, tabs and spaces stay,
// other control bytes show as ".".
QString readableText(const QByteArray& data)
{
    QString text = ZOR_Cp1251::decode(data);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    for (QChar& c : text) {
        if (c.unicode() < 32 && c != QLatin1Char('\n') && c != QLatin1Char('\t'))
            c = QLatin1Char('.');
    }
    return text;
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
    : QAbstractTableModel(parent)
    , rowFont(QStringLiteral("Courier"))
{
    // Where there is no Courier, a fixed-pitch face keeps the columns of
    // times and hex readable.
    rowFont.setStyleHint(QFont::TypeWriter);
    rowFont.setFixedPitch(true);
}

ZOR_Model_Log::~ZOR_Model_Log()
{
    for (const Chunk& chunk : chunks)
        std::free(chunk.data);
}

// Room for nSize bytes at the end of the last chunk. A chunk that cannot
// hold them, or whose base is too far from the time, is closed and cut to
// what it holds, so no chunk keeps a tail of unused capacity.
char* ZOR_Model_Log::reserveBytes(int nSize, qint64 nTime)
{
    if (!chunks.empty() && chunks.back().nCapacity - chunks.back().nUsed >= nSize
        && nTime - chunks.back().nBaseTime >= INT_MIN && nTime - chunks.back().nBaseTime <= INT_MAX)
        return chunks.back().data + chunks.back().nUsed;
    if (!chunks.empty() && chunks.back().nUsed < chunks.back().nCapacity) {
        Chunk& last = chunks.back();
        if (char* shrunk = static_cast<char*>(std::realloc(last.data, size_t(qMax(last.nUsed, 1))))) {
            last.data = shrunk;
            nHeldBytes -= last.nCapacity - last.nUsed;
            last.nCapacity = last.nUsed;
        }
    }
    const int nCapacity = qMax(nSize, int(qBound(qint64(kMinChunk), nHeldBytes / 8, qint64(kMaxChunk))));
    char* data = static_cast<char*>(std::malloc(size_t(nCapacity)));
    Q_CHECK_PTR(data);
    chunks.push_back(Chunk{nDropped + qint64(rows.size()), nTime, data, 0, nCapacity});
    nHeldBytes += nCapacity;
    return data;
}

void ZOR_Model_Log::append(int direction, const QByteArray& data, qint64 nMSecsSinceEpoch)
{
    qint64 nReplyMs = -1;
    if (direction == DirectionOut)
        nLastSentTime = nMSecsSinceEpoch;
    else if (direction == DirectionIn && nLastSentTime >= 0)
        nReplyMs = qBound(qint64(-1), nMSecsSinceEpoch - nLastSentTime, qint64(kMaxReplyMs));
    const quint8 kind = direction == DirectionOut ? KindOut : direction == DirectionIn ? KindIn : KindOther;
    char* to = reserveBytes(data.size(), nMSecsSinceEpoch);
    if (!data.isEmpty())
        memcpy(to, data.constData(), size_t(data.size()));
    Chunk& chunk = chunks.back();
    const Row r{qint32(nMSecsSinceEpoch - chunk.nBaseTime), quint32(chunk.nUsed), quint32(nReplyMs + 1) << 2 | kind};
    const int nFirst = bDropRow ? 1 : 0;
    if (!isFiltered()) {
        const int shownRow = nFirst + int(rows.size());
        beginInsertRows(QModelIndex(), shownRow, shownRow);
        rows.push_back(r);
        chunk.nUsed += data.size();
        endInsertRows();
    } else {
        rows.push_back(r);
        chunk.nUsed += data.size();
        const qint64 serial = nDropped + qint64(rows.size()) - 1;
        if (passes(serial)) {
            const int shownRow = nFirst + int(shown.size());
            beginInsertRows(QModelIndex(), shownRow, shownRow);
            shown.push_back(serial);
            endInsertRows();
        }
    }
    nBlockBytes += data.size();
    if (qint64(rows.size()) > nMaxRows)
        dropOldest(qint64(rows.size()) - nMaxRows + qMax(1, nMaxRows / 16));
    if (nBlockBytes > nMaxBytes)
        keepWithinBytes(nMaxBytes - nMaxBytes / 16);
}

// Drops the oldest rows until the block data held is at most nTarget bytes
// (or one row is left).
void ZOR_Model_Log::keepWithinBytes(qint64 nTarget)
{
    qint64 nRows = 0;
    qint64 nBytes = nBlockBytes;
    while (nBytes > nTarget && nRows + 1 < qint64(rows.size()))
        nBytes -= rawBytes(nDropped + nRows++).size();
    dropOldest(nRows);
}

void ZOR_Model_Log::setMaxBytes(qint64 nBytes)
{
    nMaxBytes = qMax<qint64>(1, nBytes);
    if (nBlockBytes > nMaxBytes)
        keepWithinBytes(nMaxBytes);
}

// Dropping by the sixteenth of the cap keeps the cost of a drop, in the
// model and in the views, a small constant per row appended.
void ZOR_Model_Log::dropOldest(qint64 nRows)
{
    nRows = qMin(nRows, qint64(rows.size()));
    if (nRows <= 0)
        return;
    const qint64 nNewFirst = nDropped + nRows;
    for (qint64 serial = nDropped; serial < nNewFirst; ++serial)
        nBlockBytes -= rawBytes(serial).size();
    const qint64 nShownGone = isFiltered() ? std::lower_bound(shown.begin(), shown.end(), nNewFirst) - shown.begin()
                                           : nRows;
    const int nFirst = bDropRow ? 1 : 0;
    if (nShownGone > 0)
        beginRemoveRows(QModelIndex(), nFirst, nFirst + int(nShownGone) - 1);
    rows.erase(rows.begin(), rows.begin() + nRows);
    if (isFiltered())
        shown.erase(shown.begin(), shown.begin() + nShownGone);
    nDropped = nNewFirst;
    while (chunks.size() > 1 && chunks[1].nFirstRow <= nDropped) {
        nHeldBytes -= chunks.front().nCapacity;
        std::free(chunks.front().data);
        chunks.pop_front();
    }
    if (nShownGone > 0)
        endRemoveRows();
    if (!bDropRow) {
        beginInsertRows(QModelIndex(), 0, 0);
        bDropRow = true;
        endInsertRows();
    } else {
        emit dataChanged(index(0, 0), index(0, ColumnCount - 1));
    }
}

void ZOR_Model_Log::setMaxRows(int nRows)
{
    nMaxRows = qMax(1, nRows);
    if (qint64(rows.size()) > nMaxRows)
        dropOldest(qint64(rows.size()) - nMaxRows);
}

void ZOR_Model_Log::releaseStorage()
{
    for (const Chunk& chunk : chunks)
        std::free(chunk.data);
    std::deque<Chunk>().swap(chunks);
    std::deque<Row>().swap(rows);
    std::deque<qint64>().swap(shown);
}

void ZOR_Model_Log::clear()
{
    const qint64 nFreed = nHeldBytes + qint64(rows.size()) * qint64(sizeof(Row));
    beginResetModel();
    releaseStorage();
    nHeldBytes = 0;
    nBlockBytes = 0;
    nDropped = 0;
    bDropRow = false;
    nLastSentTime = -1;
    endResetModel();
#if defined(__GLIBC__)
    if (nFreed > kTrimAfterClear)
        malloc_trim(0);
#else
    Q_UNUSED(nFreed);
#endif
}

qint64 ZOR_Model_Log::serialAt(int shownRow) const
{
    if (shownRow < 0)
        return -1;
    if (bDropRow && shownRow-- == 0)
        return kDropRow;
    if (isFiltered())
        return size_t(shownRow) < shown.size() ? shown[size_t(shownRow)] : -1;
    return size_t(shownRow) < rows.size() ? nDropped + shownRow : -1;
}

// The last chunk whose first row is at or before this one.
size_t ZOR_Model_Log::chunkIndex(qint64 serial) const
{
    if (chunks.back().nFirstRow <= serial)
        return chunks.size() - 1;
    return size_t(std::upper_bound(
                      chunks.begin(), chunks.end(), serial, [](qint64 s, const Chunk& c) { return s < c.nFirstRow; })
               - chunks.begin())
        - 1;
}

QByteArray ZOR_Model_Log::rawBytes(qint64 serial) const
{
    const size_t nChunk = chunkIndex(serial);
    const Chunk& chunk = chunks[nChunk];
    const quint32 nBegin = row(serial).nOffset;
    const qint64 nNext = serial + 1;
    const bool bLastInChunk = nNext - nDropped >= qint64(rows.size())
        || (nChunk + 1 < chunks.size() && nNext >= chunks[nChunk + 1].nFirstRow);
    const quint32 nEnd = bLastInChunk ? quint32(chunk.nUsed) : row(nNext).nOffset;
    if (nEnd == nBegin)
        return QByteArray();
    return QByteArray::fromRawData(chunk.data + nBegin, int(nEnd - nBegin));
}

QString ZOR_Model_Log::dropText() const
{
    // A translation that lost its "%1" still tells the count.
    const QString qsText = zorTr(QStringLiteral("cons_043"));
    if (qsText.contains(QLatin1String("%1")))
        return qsText.arg(nDropped);
    return qsText + QLatin1Char(' ') + QString::number(nDropped);
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

QString ZOR_Model_Log::cellText(qint64 serial, int column, bool bWhole) const
{
    if (serial == kDropRow)
        return column == ColumnData ? dropText() : QString();
    const Row& r = row(serial);
    switch (column) {
    case ColumnTime:
        return QDateTime::fromMSecsSinceEpoch(timeOf(serial)).toString(bTimeWithMs ? kTimeFormatMs : kTimeFormat);
    case ColumnDirection: return directionText(kindOf(r));
    case ColumnSize: return QString::number(rawBytes(serial).size());
    case ColumnData: {
        const QByteArray data = rawBytes(serial);
        if (bWhole || data.size() <= nShownChars)
            return visibleText(data);
        return visibleText(data.left(nShownChars)) + kEllipsis;
    }
    case ColumnHex: {
        const QByteArray data = rawBytes(serial);
        if (bWhole || data.size() * 2 <= nShownChars)
            return hexText(data);
        return hexText(data.left(nShownChars / 2)) + kEllipsis;
    }
    default: return QString();
    }
}

QString ZOR_Model_Log::text(int row, int column) const
{
    const qint64 serial = serialAt(row);
    return serial != -1 ? cellText(serial, column, true) : QString();
}

QByteArray ZOR_Model_Log::bytes(int row) const
{
    const qint64 serial = serialAt(row);
    if (serial < 0)
        return QByteArray();
    const QByteArray raw = rawBytes(serial);
    return QByteArray(raw.constData(), raw.size());
}

qint64 ZOR_Model_Log::time(int row) const
{
    const qint64 serial = serialAt(row);
    return serial >= 0 ? timeOf(serial) : 0;
}

qint64 ZOR_Model_Log::replyMs(int row) const
{
    const qint64 serial = serialAt(row);
    return serial >= 0 ? replyOf(this->row(serial)) : -1;
}

// The tooltip is a preview: a capped, wrapped piece of the cell, with the
// reply time; the details pane has the rest.
QString ZOR_Model_Log::toolTip(qint64 serial, int column) const
{
    QString qsText;
    if (serial == kDropRow) {
        qsText = dropText();
    } else {
        const Row& r = row(serial);
        const QByteArray data = rawBytes(serial);
        const bool bHex = column == ColumnHex;
        const QByteArray head = data.left(bHex ? kToolTipChars / 2 : kToolTipChars);
        QString qsPreview = broken(bHex ? hexText(head) : visibleText(head), kToolTipLine);
        if (head.size() < data.size())
            qsPreview += kEllipsis;
        qsText = QStringLiteral("%1  %2  %3")
                     .arg(QDateTime::fromMSecsSinceEpoch(timeOf(serial)).toString(kTimeFormatMs),
                         directionText(kindOf(r)), zorTr(QStringLiteral("cons_031")).arg(data.size()));
        if (replyOf(r) >= 0)
            qsText += QLatin1Char('\n') + zorTr(QStringLiteral("cons_030")).arg(replyOf(r));
        if (!qsPreview.isEmpty())
            qsText += QLatin1String("\n\n") + qsPreview;
    }
    // Rich text, so that Qt neither wraps nor reads markup in the data.
    return QLatin1String("<pre>") + qsText.toHtmlEscaped() + QLatin1String("</pre>");
}

QString ZOR_Model_Log::detailText(int row) const
{
    const qint64 serial = serialAt(row);
    if (serial == -1)
        return QString();
    if (serial == kDropRow)
        return dropText();
    const Row& r = this->row(serial);
    const QByteArray data = rawBytes(serial);
    QString qsText = QStringLiteral("%1  %2  %3")
                         .arg(QDateTime::fromMSecsSinceEpoch(timeOf(serial)).toString(kTimeFormatMs),
                             directionText(kindOf(r)), zorTr(QStringLiteral("cons_031")).arg(data.size()));
    if (replyOf(r) >= 0)
        qsText += QLatin1Char('\n') + zorTr(QStringLiteral("cons_030")).arg(replyOf(r));
    qsText += QStringLiteral("\n\n%1:\n").arg(headerText(ColumnData));
    QString qsReadable = readableText(data);
    while (qsReadable.endsWith(QLatin1Char('\n')))
        qsReadable.chop(1); // the reply's line end; the dump below shows it
    qsText += qsReadable;
    qsText += QStringLiteral("\n\n%1:\n").arg(headerText(ColumnHex));
    qsText += hexDump(data);
    return qsText;
}

bool ZOR_Model_Log::matches(int row, const QString& qsNeedle) const
{
    const qint64 serial = serialAt(row);
    if (serial < 0)
        return false;
    if (qsNeedle.isEmpty())
        return true;
    const QByteArray data = rawBytes(serial);
    return visibleText(data).contains(qsNeedle, Qt::CaseInsensitive)
        || hexText(data).contains(qsNeedle, Qt::CaseInsensitive);
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

bool ZOR_Model_Log::passes(qint64 serial) const
{
    if (nFilterDirection >= 0 && kindOf(row(serial)) != nFilterDirection)
        return false;
    if (qsFilterText.isEmpty())
        return true;
    const QByteArray data = rawBytes(serial);
    return visibleText(data).contains(qsFilterText, Qt::CaseInsensitive)
        || hexText(data).contains(qsFilterText, Qt::CaseInsensitive);
}

void ZOR_Model_Log::setFilter(int nDirection, const QString& qsText)
{
    beginResetModel();
    nFilterDirection = nDirection == DirectionOut || nDirection == DirectionIn ? nDirection : -1;
    qsFilterText = qsText;
    std::deque<qint64>().swap(shown);
    if (isFiltered()) {
        const qint64 nEnd = nDropped + qint64(rows.size());
        for (qint64 serial = nDropped; serial < nEnd; ++serial) {
            if (passes(serial))
                shown.push_back(serial);
        }
    }
    endResetModel();
}

QString ZOR_Model_Log::rowsAsTsv(const QList<int>& shownRows) const
{
    QString out;
    for (const int row : shownRows) {
        const qint64 serial = serialAt(row);
        if (serial == -1)
            continue;
        for (int column = 0; column < ColumnCount; ++column) {
            if (column > 0)
                out += QLatin1Char('\t');
            out += cellText(serial, column, true);
        }
        out += QLatin1Char('\n');
    }
    return out;
}

QString ZOR_Model_Log::rowsAsHex(const QList<int>& shownRows) const
{
    QString out;
    for (const int row : shownRows) {
        const qint64 serial = serialAt(row);
        if (serial >= 0)
            out += hexText(rawBytes(serial)) + QLatin1Char('\n');
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
        if (bDropRow)
            out += QLatin1String(";;;") + csvField(dropText()) + QLatin1String(";\r\n");
    } else if (bDropRow) {
        out += dropText() + QLatin1Char('\n');
    }
    const qint64 nEnd = nDropped + qint64(rows.size());
    for (qint64 serial = nDropped; serial < nEnd; ++serial) {
        const Row& r = row(serial);
        const QByteArray data = rawBytes(serial);
        const QString qsTime = QDateTime::fromMSecsSinceEpoch(timeOf(serial)).toString(kTimeFormatMs);
        if (format == Format::Csv) {
            out += qsTime + QLatin1Char(';') + directionText(kindOf(r)) + QLatin1Char(';')
                + QString::number(data.size()) + QLatin1Char(';') + csvField(visibleText(data)) + QLatin1Char(';')
                + hexText(data) + QLatin1String("\r\n");
        } else {
            out += QStringLiteral("%1  %2  %3  %4\n    %5\n")
                       .arg(qsTime, directionText(kindOf(r)).leftJustified(3),
                           QString::number(data.size()).rightJustified(6), visibleText(data), hexText(data));
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
    return column >= 0 && column < ColumnCount ? zorTr(QLatin1String(kColumns[column].qsHeaderKey)) : QString();
}

void ZOR_Model_Log::retranslate()
{
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (bDropRow)
        emit dataChanged(index(0, 0), index(0, ColumnCount - 1));
}

void ZOR_Model_Log::setTimeWithMs(bool bOn)
{
    if (bOn == bTimeWithMs)
        return;
    bTimeWithMs = bOn;
    if (rowCount() > 0)
        emit dataChanged(index(0, ColumnTime), index(rowCount() - 1, ColumnTime), {Qt::DisplayRole});
}

void ZOR_Model_Log::setDirectionColours(const QColor& out, const QColor& in)
{
    colourOut = out;
    colourIn = in;
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1), {Qt::ForegroundRole});
}

qint64 ZOR_Model_Log::rowId(int row) const
{
    const qint64 serial = serialAt(row);
    return serial == kDropRow ? -1 : serial;
}

int ZOR_Model_Log::rowOfId(qint64 nId) const
{
    if (nId < nDropped || nId >= nDropped + qint64(rows.size()))
        return -1;
    const int nFirst = bDropRow ? 1 : 0;
    if (!isFiltered())
        return nFirst + int(nId - nDropped);
    const auto it = std::lower_bound(shown.begin(), shown.end(), nId);
    return it != shown.end() && *it == nId ? nFirst + int(it - shown.begin()) : -1;
}

int ZOR_Model_Log::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return (bDropRow ? 1 : 0) + int(isFiltered() ? shown.size() : rows.size());
}

int ZOR_Model_Log::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ZOR_Model_Log::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const qint64 serial = serialAt(index.row());
    if (serial == -1)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole: return cellText(serial, index.column(), false);
    case Qt::ToolTipRole: return toolTip(serial, index.column());
    case Qt::FontRole:
        if (serial == kDropRow) {
            QFont italic = rowFont;
            italic.setItalic(true);
            return italic;
        }
        return rowFont;
    case Qt::TextAlignmentRole: return int(kColumns[index.column()].alignment);
    case Qt::ForegroundRole: {
        const int kind = serial == kDropRow ? int(KindOther) : kindOf(row(serial));
        const QColor colour = kind == KindOut ? colourOut : kind == KindIn ? colourIn : QColor();
        return colour.isValid() ? QVariant(colour) : QVariant();
    }
    default: return QVariant();
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
