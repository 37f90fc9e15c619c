#include "zor_tmi_archivemodel.h"

#include "telemetry/tmipage_base.h"
#include "zor_tmi_texts.h"

#include <QBrush>
#include <QFileInfo>
#include <QColor>
#include <QFont>

namespace {

// Rows whose texts stay cached: a few screens' worth. A full record has
// some 400 texts, so this is the model's memory.
constexpr int kCachedRows = 256;
// One read brings this many bytes of whole records.
constexpr int kBlockBytes = 64 * 1024;
// Texts of one field come back joined by a character no text contains.
const QByteArray kCellEnd("\x1f");

int typeWidth(ZorTmi::ValueType type)
{
    switch (type) {
    case ZorTmi::Type_U8:
    case ZorTmi::Type_I8:
    case ZorTmi::Type_U8Tenths: return 1;
    case ZorTmi::Type_U16:
    case ZorTmi::Type_I16: return 2;
    case ZorTmi::Type_U64:
    case ZorTmi::Type_I64: return 8;
    default: return 4;
    }
}

} // namespace

ZOR_TmiArchiveModel::ZOR_TmiArchiveModel(QObject* parent)
    : QAbstractTableModel(parent)
    , m_rows(kCachedRows)
{
    setFieldSet(ZOR_TmiFieldSet());
}

ZOR_TmiArchiveModel::~ZOR_TmiArchiveModel() = default;

bool ZOR_TmiArchiveModel::openFile(const QString& qsFileName)
{
    beginResetModel();
    m_file.close();
    m_file.setFileName(qsFileName);
    m_qsError.clear();
    // A FIFO without a writer would block the window for good, a device
    // never end: only regular files are archives.
    const QFileInfo info(qsFileName);
    if (info.exists() && !info.isFile()) {
        const QString why = info.isDir() ? QStringLiteral("it is a folder")
                                         : QStringLiteral("it is not a regular file");
        m_qsError = zorTmiText("cannot_open").arg(qsFileName, why);
        m_file.setFileName(QString());
    } else if (!m_file.open(QIODevice::ReadOnly)) {
        m_qsError = zorTmiText("cannot_open").arg(qsFileName, m_file.errorString());
        m_file.setFileName(QString());
    }
    rebuild();
    endResetModel();
    emit signal_ArchiveChanged();
    return m_qsError.isEmpty();
}

void ZOR_TmiArchiveModel::close()
{
    beginResetModel();
    m_file.close();
    m_file.setFileName(QString());
    m_qsError.clear();
    rebuild();
    endResetModel();
    emit signal_ArchiveChanged();
}

void ZOR_TmiArchiveModel::setFieldSet(const ZOR_TmiFieldSet& fieldSet)
{
    beginResetModel();
    m_fieldSet = fieldSet;
    m_record = fieldSet.makeRecord();
    m_lpRecord = m_record.get();
    m_columns.clear();
    m_captions.clear();
    for (int n = 1; n <= fieldSet.lastField(); ++n) {
        if (!fieldSet.has(n))
            continue;
        const ZorTmi::FieldInfo& info = ZorTmi::field(n);
        for (int i = 0; i < info.csvCount; ++i) {
            m_columns.append(ZorTmi::csvColumns()[info.firstCsv + i]);
            m_captions.append(TmiPage_Base::csvColumnCaption(n, i));
        }
    }
    rebuild();
    endResetModel();
    emit signal_ArchiveChanged();
}

void ZOR_TmiArchiveModel::rebuild()
{
    m_rows.clear();
    m_block.clear();
    m_nBlockStart = -1;
    m_nFileSize = m_file.isOpen() ? m_file.size() : 0;
    m_nRecordSize = m_fieldSet.recordSize();
    m_nRecords = 0;
    m_nPartialBytes = 0;
    m_bTruncated = false;
    if (m_nRecordSize <= 0 || m_nFileSize <= 0)
        return;
    qint64 nRecords = m_nFileSize / m_nRecordSize;
    m_nPartialBytes = int(m_nFileSize % m_nRecordSize);
    if (nRecords + (m_nPartialBytes > 0) > nMaxRows) {
        nRecords = nMaxRows;
        m_nPartialBytes = 0;
        m_bTruncated = true;
    }
    m_nRecords = int(nRecords);
}

QString ZOR_TmiArchiveModel::problem() const
{
    if (!m_qsError.isEmpty())
        return m_qsError;
    if (!m_file.isOpen())
        return QString();
    if (m_nFileSize == 0)
        return zorTmiText("empty_file");
    if (m_nRecordSize == 0)
        return zorTmiText("no_fields");
    if (m_bTruncated)
        return zorTmiText("too_many").arg(m_nRecords);
    QString qsProblem;
    if (m_nRecords == 0)
        qsProblem = zorTmiText("shorter").arg(m_nFileSize).arg(m_nRecordSize);
    if (m_nPartialBytes > 0) {
        if (!qsProblem.isEmpty())
            qsProblem += QLatin1String("; ");
        qsProblem += zorTmiText("partial")
                         .arg(recordOffset(m_nRecords))
                         .arg(m_nPartialBytes)
                         .arg(m_nRecordSize)
                         .arg(m_nRecordSize - m_nPartialBytes);
    }
    return qsProblem;
}

bool ZOR_TmiArchiveModel::readRecord(int nRow, QByteArray& bytes) const
{
    if (nRow < 0 || nRow >= rowCount())
        return false;
    const qint64 nStart = recordOffset(nRow);
    const qint64 nBlockRecords = qMax(1, kBlockBytes / m_nRecordSize);
    const qint64 nBlockEnd = m_nBlockStart + m_block.size();
    const bool bCovered = m_nBlockStart >= 0 && nStart >= m_nBlockStart && nStart < nBlockEnd
        && (nStart + m_nRecordSize <= nBlockEnd || nBlockEnd == m_nFileSize);
    if (!bCovered) {
        // Blocks start at record boundaries, and never reach past the file.
        const qint64 nBlockStart = nRow / nBlockRecords * nBlockRecords * m_nRecordSize;
        const qint64 nWant = qMin<qint64>(nBlockRecords * m_nRecordSize, m_nFileSize - nBlockStart);
        m_nBlockStart = -1;
        m_block.resize(int(nWant));
        auto& file = const_cast<QFile&>(m_file);
        if (!file.seek(nBlockStart) || file.read(m_block.data(), nWant) != nWant) {
            m_block.clear();
            return false;
        }
        m_nBlockStart = nBlockStart;
    }
    const int nAt = int(nStart - m_nBlockStart);
    bytes = m_block.mid(nAt, qMin(m_nRecordSize, m_block.size() - nAt));
    return true;
}

QByteArray ZOR_TmiArchiveModel::recordBytes(int nRow)
{
    QByteArray bytes;
    readRecord(nRow, bytes);
    return bytes;
}

const TmiPage_Base* ZOR_TmiArchiveModel::decodedRecord(int nRow)
{
    QByteArray bytes;
    if (!readRecord(nRow, bytes))
        return nullptr;
    m_lpRecord->setCurrentTMI(reinterpret_cast<const unsigned char*>(bytes.constData()), bytes.size());
    return m_lpRecord;
}

const QStringList* ZOR_TmiArchiveModel::rowTexts(int nRow) const
{
    if (const QStringList* lpTexts = m_rows.object(nRow))
        return lpTexts;
    QByteArray bytes;
    if (!readRecord(nRow, bytes))
        return nullptr;
    m_lpRecord->setCurrentTMI(reinterpret_cast<const unsigned char*>(bytes.constData()), bytes.size());
    ++m_nDecoded;
    QByteArray line;
    line.reserve(8 * 1024);
    for (int n = 1; n <= m_fieldSet.lastField(); ++n)
        if (m_fieldSet.has(n))
            m_lpRecord->appendColumnTexts(n, line, QByteArray(), kCellEnd);
    line.chop(kCellEnd.size());
    auto* lpTexts = new QStringList(QString::fromUtf8(line).split(QLatin1Char('\x1f')));
    m_rows.insert(nRow, lpTexts);
    return lpTexts;
}

int ZOR_TmiArchiveModel::columnField(int nColumn) const
{
    return nColumn >= 0 && nColumn < m_columns.size() ? ZorTmi::column(m_columns.at(nColumn)).field : 0;
}

int ZOR_TmiArchiveModel::columnId(int nColumn) const
{
    return nColumn >= 0 && nColumn < m_columns.size() ? m_columns.at(nColumn) : -1;
}

int ZOR_TmiArchiveModel::firstColumnOf(int n) const
{
    for (int i = 0; i < m_columns.size(); ++i)
        if (ZorTmi::column(m_columns.at(i)).field == n)
            return i;
    return -1;
}

bool ZOR_TmiArchiveModel::columnBytes(int nColumn, int& nOffset, int& nLength) const
{
    const int nId = columnId(nColumn);
    if (nId < 0)
        return false;
    const ZorTmi::Column& c = ZorTmi::column(nId);
    const int nField = m_fieldSet.fieldOffset(c.field);
    if (nField < 0)
        return false;
    nOffset = nField + c.offset;
    nLength = qMin(typeWidth(c.type), int(ZorTmi::field(c.field).width) - int(c.offset));
    return true;
}

int ZOR_TmiArchiveModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_nRecords + (m_nPartialBytes > 0 ? 1 : 0);
}

int ZOR_TmiArchiveModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_columns.size();
}

QVariant ZOR_TmiArchiveModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (role == Qt::BackgroundRole && isPartialRow(index.row()))
        return QBrush(QColor(255, 228, 196));
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    const QStringList* lpTexts = rowTexts(index.row());
    if (!lpTexts)
        return role == Qt::DisplayRole ? zorTmiText("read_error") : QVariant();
    return lpTexts->value(index.column());
}

QVariant ZOR_TmiArchiveModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal) {
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
            const QString qsCaption = m_captions.value(section);
            if (role == Qt::DisplayRole)
                return qsCaption;
            const int n = columnField(section);
            return QStringLiteral("%1 %2 — %3").arg(n).arg(QLatin1String(ZorTmi::field(n).name), qsCaption);
        }
        return QVariant();
    }
    if (role == Qt::DisplayRole)
        return isPartialRow(section) ? zorTmiText("partial_row") : QString::number(section + 1);
    if (role == Qt::ToolTipRole) {
        if (isPartialRow(section))
            return zorTmiText("partial_tip")
                .arg(recordOffset(section))
                .arg(m_nPartialBytes)
                .arg(m_nRecordSize - m_nPartialBytes);
        return zorTmiText("row_tip").arg(section + 1).arg(recordOffset(section));
    }
    if (role == Qt::BackgroundRole && isPartialRow(section))
        return QBrush(QColor(255, 200, 150));
    return QVariant();
}
