#ifndef ZOR_TMI_SUMMARYPANE_H
#define ZOR_TMI_SUMMARYPANE_H

// The drive summary pane: what the drive library found in the archive -
// records, time span, distance (and the Mileage difference), moving time,
// speeds, engine hours, trips, stops, fuel events and gaps - in the user's
// language, and what could not be computed. A record number in it is a
// link that selects the record.

#include <QTextBrowser>

struct ZOR_DriveOptions;
struct ZOR_DriveSummary;

class ZOR_TmiSummaryPane : public QTextBrowser
{
    Q_OBJECT
public:
    explicit ZOR_TmiSummaryPane(QWidget* parent = nullptr);

    // Null: nothing read yet (or no archive).
    void setSummary(const ZOR_DriveSummary* lpSummary, const ZOR_DriveOptions& options);

signals:
    void signal_RecordClicked(int nRecord);

private:
    QString html(const ZOR_DriveSummary& s, const ZOR_DriveOptions& options) const;
    QString runsHtml(const ZOR_DriveSummary& s, bool bStops) const;
    QString fuelHtml(const ZOR_DriveSummary& s) const;
};

#endif
