#ifndef ZOR_TMI_EXPORTJOB_H
#define ZOR_TMI_EXPORTJOB_H

// Exports records of an archive as CSV, on a thread of its own, through the
// library's writer (the lines of the CSV export byte for byte). The target
// file appears only when the export completes: a cancelled or failed
// export leaves no file (or the old one, whole). The whole archive, or
// given rows in ascending order; a trailing partial record is not exported.
//
//   auto* job = new ZOR_TmiExportJob(archive, fieldSet, csvPath, rows);
//   connect(job, &ZOR_TmiExportJob::signal_Finished, ...);
//   job->start();   // job->cancel() any time; delete the job after signal_Finished

#include "zor_tmi_fieldset.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <atomic>

class QThread;

class ZOR_TmiExportJob : public QObject
{
    Q_OBJECT
public:
    enum Result { Done, Cancelled, Failed };

    // rows empty: every whole record.
    ZOR_TmiExportJob(const QString& qsArchive, const ZOR_TmiFieldSet& fieldSet, const QString& qsCsv,
        const QVector<int>& rows = QVector<int>(), QObject* parent = nullptr);
    ~ZOR_TmiExportJob() override;

    void start();
    void cancel() { m_bCancel = true; }
    // Runs the export on the calling thread (start() runs it on its own).
    Result run();
    QString errorString() const { return m_qsError; }
    qint64 linesWritten() const { return m_nLines; }

signals:
    // 0-100, at most once per percent.
    void signal_Progress(int nPercent);
    void signal_Finished(int nResult, const QString& qsError, qint64 nLines);

private:
    const QString m_qsArchive;
    const ZOR_TmiFieldSet m_fieldSet;
    const QString m_qsCsv;
    QVector<int> m_rows;
    std::atomic<bool> m_bCancel{false};
    QThread* m_lpThread = nullptr;
    QString m_qsError;
    qint64 m_nLines = 0;
};

#endif
