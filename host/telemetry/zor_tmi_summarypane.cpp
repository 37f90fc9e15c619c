#include "zor_tmi_summarypane.h"

#include "zor_driveanalysis.h"
#include "zor_tmi_texts.h"

#include <QDateTime>

#include <cmath>

namespace {

// The language key of what the summary could not compute.
const char* missingKey(ZOR_DriveMissing missing)
{
    switch (missing) {
    case ZOR_DriveMissing::Coordinates: return "sum_nc_coords";
    case ZOR_DriveMissing::Fix: return "sum_nc_fix";
    case ZOR_DriveMissing::Mileage: return "sum_nc_mileage";
    case ZOR_DriveMissing::Time: return "sum_nc_time";
    case ZOR_DriveMissing::Speed: return "sum_nc_speed";
    case ZOR_DriveMissing::EngineHours: return "sum_nc_engine";
    case ZOR_DriveMissing::Runs: return "sum_nc_runs";
    case ZOR_DriveMissing::Fuel: return "sum_nc_fuel";
    }
    return "";
}

QString timeText(qint64 nUtc)
{
    return QDateTime::fromSecsSinceEpoch(nUtc).toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"));
}

QString durationText(qint64 nSeconds)
{
    return QStringLiteral("%1:%2:%3")
        .arg(nSeconds / 3600)
        .arg(nSeconds / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(nSeconds % 60, 2, 10, QLatin1Char('0'));
}

QString recordLink(int nRecord)
{
    return QStringLiteral("<a href=\"rec:%1\">%2</a>").arg(nRecord).arg(nRecord + 1);
}

QString row(const QString& qsCaption, const QString& qsValue)
{
    return QStringLiteral("<tr><td>%1</td><td><b>%2</b></td></tr>").arg(qsCaption.toHtmlEscaped(), qsValue);
}

} // namespace

ZOR_TmiSummaryPane::ZOR_TmiSummaryPane(QWidget* parent)
    : QTextBrowser(parent)
{
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
        if (url.scheme() == QLatin1String("rec"))
            emit signal_RecordClicked(url.path().toInt());
    });
}

void ZOR_TmiSummaryPane::setSummary(const ZOR_DriveSummary* lpSummary, const ZOR_DriveOptions& options)
{
    setHtml(lpSummary ? html(*lpSummary, options) : zorTmiText("summary_none"));
}

QString ZOR_TmiSummaryPane::html(const ZOR_DriveSummary& s, const ZOR_DriveOptions& options) const
{
    const QString qsKm = zorTmiText("unit_km");
    const QString qsKmh = zorTmiText("unit_kmh");
    QString out = QStringLiteral("<table cellspacing=\"2\">");
    out += row(zorTmiText("sum_records"), QString::number(s.records));
    if (s.hasTime)
        out += row(zorTmiText("sum_span"),
            QStringLiteral("%1 — %2 (%3)")
                .arg(timeText(s.firstTime), timeText(s.lastTime), durationText(s.lastTime - s.firstTime)));
    if (s.hasDistance)
        out += row(zorTmiText("sum_distance"),
            QStringLiteral("%1 %2").arg(s.distanceKm, 0, 'f', 2).arg(qsKm)
                + (s.hasMileage ? QStringLiteral(" (%1: %2 %3)")
                                      .arg(zorTmiText("sum_mileage"))
                                      .arg(s.mileageKm, 0, 'f', 2)
                                      .arg(qsKm)
                                : QString()));
    if (s.hasMovingTime)
        out += row(zorTmiText("sum_moving"), durationText(s.movingS));
    if (s.hasSpeed)
        out += row(zorTmiText("sum_speed"),
            QStringLiteral("%1 / %2 %3")
                .arg(s.maxSpeedKmh, 0, 'f', 1)
                .arg(std::isnan(s.avgSpeedKmh) ? QStringLiteral("—") : QString::number(s.avgSpeedKmh, 'f', 1))
                .arg(qsKmh));
    if (s.hasEngineHours)
        out += row(
            zorTmiText("sum_engine"), QStringLiteral("%1 %2").arg(s.engineHours, 0, 'f', 2).arg(zorTmiText("unit_h")));
    out += row(zorTmiText("sum_rules"),
        zorTmiText("sum_rules_text")
            .arg(options.movingSpeedKmh)
            .arg(options.minStopS / 60.0)
            .arg(options.fuelThreshold)
            .arg(options.fuelWindowS / 60.0));
    out += QStringLiteral("</table>");
    for (const ZOR_DriveGap& gap : s.gaps)
        out += QStringLiteral("<p>%1</p>")
                   .arg(zorTmiText(gap.backInTime ? "sum_gap_back" : "sum_gap_jump")
                            .arg(recordLink(gap.record))
                            .arg(gap.km, 0, 'f', 1));
    QStringList lsWhy;
    for (ZOR_DriveMissing missing : s.missing)
        lsWhy << zorTmiText(missingKey(missing));
    for (const QString& qsWhy : lsWhy + s.notComputed)
        out += QStringLiteral("<p style=\"color:#b00000\">%1</p>").arg(qsWhy.toHtmlEscaped());
    return out + runsHtml(s, false) + runsHtml(s, true) + fuelHtml(s);
}

QString ZOR_TmiSummaryPane::runsHtml(const ZOR_DriveSummary& s, bool bStops) const
{
    const std::vector<ZOR_DriveRun>& runs = bStops ? s.stops : s.trips;
    QString out =
        QStringLiteral("<h4>%1: %2</h4>").arg(zorTmiText(bStops ? "sum_stops" : "sum_trips")).arg(runs.size());
    if (runs.empty())
        return out;
    out += QStringLiteral(
        "<table border=\"1\" cellspacing=\"0\" cellpadding=\"2\"><tr><th>%1</th><th>%2</th><th>%3</th><th>%4</th>")
               .arg(zorTmiText("sum_records_col"), zorTmiText("sum_start"), zorTmiText("sum_end"),
                   zorTmiText("sum_duration"));
    if (!bStops)
        out += QStringLiteral("<th>%1</th><th>%2</th>").arg(zorTmiText("sum_distance"), zorTmiText("sum_max_speed"));
    out += QStringLiteral("</tr>");
    for (const ZOR_DriveRun& r : runs) {
        out += QStringLiteral("<tr><td>%1–%2</td><td>%3</td><td>%4</td><td>%5</td>")
                   .arg(recordLink(r.first), recordLink(r.last))
                   .arg(s.hasTime ? timeText(r.start) : QString(), s.hasTime ? timeText(r.end) : QString(),
                       s.hasTime ? durationText(r.end - r.start) : QString());
        if (!bStops)
            out += QStringLiteral("<td>%1</td><td>%2</td>")
                       .arg(r.distanceKm, 0, 'f', 2)
                       .arg(std::isnan(r.maxSpeedKmh) ? QStringLiteral("—") : QString::number(r.maxSpeedKmh, 'f', 1));
        out += QStringLiteral("</tr>");
    }
    return out + QStringLiteral("</table>");
}

QString ZOR_TmiSummaryPane::fuelHtml(const ZOR_DriveSummary& s) const
{
    QString out = QStringLiteral("<h4>%1: %2</h4>").arg(zorTmiText("sum_fuel")).arg(s.fuelEvents.size());
    if (s.fuelEvents.empty())
        return out;
    out += QStringLiteral("<table border=\"1\" cellspacing=\"0\" "
                          "cellpadding=\"2\"><tr><th>%1</th><th>%2</th><th>%3</th><th>%4</th></tr>")
               .arg(zorTmiText("sum_kind"), zorTmiText("sum_records_col"), zorTmiText("sum_field"),
                   zorTmiText("sum_change"));
    for (const ZOR_FuelEvent& e : s.fuelEvents)
        out += QStringLiteral("<tr><td>%1</td><td>%2–%3</td><td>%4</td><td>%5 → %6 (%7)</td></tr>")
                   .arg(zorTmiText(e.refuel ? "sum_refuel" : "sum_drain"), recordLink(e.first), recordLink(e.last),
                       e.field)
                   .arg(e.before, 0, 'f', 0)
                   .arg(e.after, 0, 'f', 0)
                   .arg(e.change() > 0 ? QStringLiteral("+%1").arg(e.change(), 0, 'f', 0)
                                       : QString::number(e.change(), 'f', 0));
    return out + QStringLiteral("</table>");
}
