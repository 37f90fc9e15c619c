#include "zor_tmi_columnstore.h"

#include "telemetry/zor_tmi_table.h"

#include <QFile>

#include <functional>

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

// Hands the whole records to a reader, a run of them at a time: straight
// from a mapping of the file (no copy), or through a buffer when the file
// cannot be mapped.
bool ZOR_TmiColumnStore::readRecords(const std::function<void(const unsigned char*, int, int)>& reader)
{
    QFile file(m_qsFileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_qsError = file.errorString();
        return false;
    }
    const int nSize = m_fieldSet.recordSize();
    if (const uchar* lpMap = file.map(0, qint64(m_nRecords) * nSize)) {
        reader(lpMap, 0, m_nRecords);
        file.unmap(const_cast<uchar*>(lpMap));
        return true;
    }
    const int nPerChunk = qMax(1, kChunkBytes / nSize);
    QByteArray chunk(nPerChunk * nSize, Qt::Uninitialized);
    for (int nFirst = 0; nFirst < m_nRecords; nFirst += nPerChunk) {
        const int nCount = qMin(nPerChunk, m_nRecords - nFirst);
        if (file.read(chunk.data(), qint64(nCount) * nSize) != qint64(nCount) * nSize) {
            m_qsError = file.errorString();
            return false;
        }
        reader(reinterpret_cast<const unsigned char*>(chunk.constData()), nFirst, nCount);
    }
    return true;
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
    const qint64 nSize = m_fieldSet.recordSize();
    const bool bOk = readRecords([&](const unsigned char* lpRecords, int nFirst, int nCount) {
        for (const Want& w : wants) {
            const ZorTmi::Column& c = ZorTmi::column(w.nId);
            for (int i = 0; i < nCount; ++i)
                w.lpOut[nFirst + i] = ZorTmi::number(c, lpRecords + i * nSize + w.nOffset);
        }
    });
    if (!bOk)
        for (const Want& w : wants)
            m_columns.remove(w.nId);
    return bOk;
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
    const int nSize = m_fieldSet.recordSize();
    if (m_recordsOr.size() != nSize) {
        QByteArray any(nSize, '\0');
        char* lpAny = any.data();
        const bool bOk = m_nRecords == 0 || readRecords([&](const unsigned char* lpRecords, int, int nCount) {
            for (qint64 i = 0; i < nCount; ++i)
                for (int b = 0; b < nSize; ++b)
                    lpAny[b] = char(lpAny[b] | lpRecords[i * nSize + b]);
        });
        if (!bOk)
            return false;
        m_recordsOr = any;
    }
    out = m_recordsOr;
    return true;
}
