#include "zor_tmi_exportjob.h"

#include "telemetry/tmipage_base.h"
#include "telemetry/zor_tmicsvwriter.h"
#include "zor_tmi_texts.h"

#include <QFile>
#include <QThread>

#include <algorithm>

namespace {

// Records read at once.
constexpr int kRecordsPerRead = 1024;

} // namespace

ZOR_TmiExportJob::ZOR_TmiExportJob(const QString& qsArchive, const ZOR_TmiFieldSet& fieldSet, const QString& qsCsv,
    const QVector<int>& rows, QObject* parent)
    : QObject(parent)
    , m_qsArchive(qsArchive)
    , m_fieldSet(fieldSet)
    , m_qsCsv(qsCsv)
    , m_rows(rows)
{
    std::sort(m_rows.begin(), m_rows.end());
    m_rows.erase(std::unique(m_rows.begin(), m_rows.end()), m_rows.end());
}

ZOR_TmiExportJob::~ZOR_TmiExportJob()
{
    if (m_lpThread) {
        m_bCancel = true;
        m_lpThread->wait();
        delete m_lpThread;
    }
}

void ZOR_TmiExportJob::start()
{
    m_lpThread = QThread::create([this] {
        const Result result = run();
        emit signal_Finished(int(result), m_qsError, m_nLines);
    });
    m_lpThread->start();
}

ZOR_TmiExportJob::Result ZOR_TmiExportJob::run()
{
    QFile input(m_qsArchive);
    if (!input.open(QIODevice::ReadOnly)) {
        m_qsError = zorTmiText("cannot_open").arg(m_qsArchive, input.errorString());
        return Failed;
    }
    const int nSize = m_fieldSet.recordSize();
    const qint64 nRecords = nSize > 0 ? input.size() / nSize : 0;
    if (!m_rows.isEmpty())
        m_rows.erase(std::lower_bound(m_rows.begin(), m_rows.end(), nRecords), m_rows.end());
    const qint64 nTotal = m_rows.isEmpty() ? nRecords : m_rows.size();

    const std::unique_ptr<TmiPage_Base> columns = m_fieldSet.makeRecord();
    const std::unique_ptr<TmiPage_Base> record = m_fieldSet.makeRecord();
    ZOR_TmiCsvWriter csv(*columns);
    if (!csv.open(m_qsCsv)) {
        m_qsError = csv.errorString();
        return Failed;
    }
    bool bOk = csv.writeHeader();
    int nLastPercent = -1;
    QByteArray chunk;
    for (qint64 nDone = 0; bOk && nDone < nTotal;) {
        if (m_bCancel) {
            csv.cancel();
            return Cancelled;
        }
        int nCount = 0;
        if (m_rows.isEmpty()) {
            nCount = int(qMin<qint64>(kRecordsPerRead, nTotal - nDone));
            bOk = input.seek(nDone * nSize);
            chunk = input.read(qint64(nCount) * nSize);
            bOk = bOk && chunk.size() == nCount * nSize;
            for (int i = 0; bOk && i < nCount; ++i) {
                record->setCurrentTMI(reinterpret_cast<const unsigned char*>(chunk.constData()) + i * nSize, nSize);
                bOk = csv.writeRecord(record.get());
            }
        } else {
            nCount = int(qMin<qint64>(kRecordsPerRead, nTotal - nDone));
            for (int i = 0; bOk && i < nCount; ++i) {
                bOk = input.seek(qint64(m_rows.at(int(nDone) + i)) * nSize);
                chunk = input.read(nSize);
                bOk = bOk && chunk.size() == nSize;
                record->setCurrentTMI(reinterpret_cast<const unsigned char*>(chunk.constData()), nSize);
                bOk = bOk && csv.writeRecord(record.get());
            }
        }
        nDone += nCount;
        const int nPercent = int(nDone * 100 / nTotal);
        if (nPercent != nLastPercent)
            emit signal_Progress(nLastPercent = nPercent);
    }
    if (m_bCancel) {
        csv.cancel();
        return Cancelled;
    }
    if (!bOk || !csv.commit()) {
        m_qsError = csv.errorString().isEmpty() ? zorTmiText("read_error") : csv.errorString();
        csv.cancel();
        return Failed;
    }
    m_nLines = csv.linesWritten();
    return Done;
}
