#include "zor_tmi_columnstore.h"

#include "telemetry/zor_tmi_table.h"

#include <QFile>

#include <cmath>
#include <limits>

namespace {

// One read brings about this many bytes of whole records.
constexpr int kChunkBytes = 4 * 1024 * 1024;

const QVector<double> kEmpty;

} // namespace

ZOR_TmiColumnStore::ZOR_TmiColumnStore(QObject* parent)
    : QObject(parent)
{
}

void ZOR_TmiColumnStore::setArchive(const QString& qsFileName, const ZOR_TmiFieldSet& fieldSet, int nRecords)
{
    m_qsFileName = qsFileName;
    m_fieldSet = fieldSet;
    m_nRecords = nRecords;
    m_columns.clear();
    m_recordsOr.clear();
    m_qsError.clear();
}

bool ZOR_TmiColumnStore::load(const QVector<int>& ids)
{
    struct Want
    {
        int nId;
        int nOffset;
        double* lpOut;
    };
    QVector<Want> wants;
    for (int nId : ids) {
        if (nId < 0 || nId >= ZorTmi::ColumnCount || m_columns.contains(nId))
            continue;
        const int nField = ZorTmi::column(nId).field;
        const int nOffset = m_fieldSet.has(ZorTmi::presenceField(nField)) ? m_fieldSet.fieldOffset(nField) : -1;
        QVector<double>& column = m_columns[nId];
        column.fill(std::numeric_limits<double>::quiet_NaN(), m_nRecords);
        if (nOffset >= 0)
            wants.append({nId, nOffset, column.data()});
    }
    if (wants.isEmpty() || m_nRecords == 0)
        return true;
    QFile file(m_qsFileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_qsError = file.errorString();
        for (const Want& w : wants)
            m_columns.remove(w.nId);
        return false;
    }
    const int nSize = m_fieldSet.recordSize();
    const int nPerChunk = qMax(1, kChunkBytes / nSize);
    QByteArray chunk(nPerChunk * nSize, Qt::Uninitialized);
    for (int nFirst = 0; nFirst < m_nRecords; nFirst += nPerChunk) {
        const int nCount = qMin(nPerChunk, m_nRecords - nFirst);
        if (file.read(chunk.data(), qint64(nCount) * nSize) != qint64(nCount) * nSize) {
            m_qsError = file.errorString();
            for (const Want& w : wants)
                m_columns.remove(w.nId);
            return false;
        }
        const auto* lpBytes = reinterpret_cast<const unsigned char*>(chunk.constData());
        for (const Want& w : wants) {
            const ZorTmi::Column& c = ZorTmi::column(w.nId);
            for (int i = 0; i < nCount; ++i)
                w.lpOut[nFirst + i] = ZorTmi::number(c, lpBytes + qint64(i) * nSize + w.nOffset);
        }
    }
    return true;
}

const QVector<double>& ZOR_TmiColumnStore::values(int nId)
{
    if (!m_columns.contains(nId) && !load({nId}))
        return kEmpty;
    return m_columns.contains(nId) ? m_columns[nId] : kEmpty;
}

QString ZOR_TmiColumnStore::unit(int nId) const
{
    return nId >= 0 && nId < ZorTmi::ColumnCount ? ZorTmi::unitText(ZorTmi::column(nId)) : QString();
}

int ZOR_TmiColumnStore::columnOf(int nField) const
{
    if (!m_fieldSet.has(nField) || nField < 1 || nField > ZorTmi::FieldCount)
        return -1;
    const ZorTmi::FieldInfo& info = ZorTmi::field(nField);
    // The field's own value when it has one, else its first part.
    return info.rowCount > 0 ? info.firstColumn : -1;
}

bool ZOR_TmiColumnStore::hasTime() const
{
    return m_fieldSet.has(3) && m_nRecords > 0;
}

const QVector<double>& ZOR_TmiColumnStore::times()
{
    return hasTime() ? values(columnOf(3)) : kEmpty;
}

qint64 ZOR_TmiColumnStore::memoryBytes() const
{
    qint64 n = 0;
    for (const QVector<double>& column : m_columns)
        n += column.capacity() * qint64(sizeof(double));
    return n;
}

bool ZOR_TmiColumnStore::recordsOr(QByteArray& out)
{
    if (!m_recordsOr.isEmpty()) {
        out = m_recordsOr;
        return true;
    }
    const int nSize = m_fieldSet.recordSize();
    QByteArray any(nSize, '\0');
    QFile file(m_qsFileName);
    if (m_nRecords > 0 && !file.open(QIODevice::ReadOnly)) {
        m_qsError = file.errorString();
        return false;
    }
    const int nPerChunk = qMax(1, kChunkBytes / qMax(1, nSize));
    QByteArray chunk(nPerChunk * nSize, Qt::Uninitialized);
    for (int nFirst = 0; nFirst < m_nRecords; nFirst += nPerChunk) {
        const int nCount = qMin(nPerChunk, m_nRecords - nFirst);
        if (file.read(chunk.data(), qint64(nCount) * nSize) != qint64(nCount) * nSize) {
            m_qsError = file.errorString();
            return false;
        }
        char* lpAny = any.data();
        for (int i = 0; i < nCount; ++i) {
            const char* lpRecord = chunk.constData() + qint64(i) * nSize;
            for (int b = 0; b < nSize; ++b)
                lpAny[b] = char(lpAny[b] | lpRecord[b]);
        }
    }
    m_recordsOr = any;
    out = any;
    return true;
}
