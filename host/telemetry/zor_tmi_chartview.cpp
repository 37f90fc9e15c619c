#include "zor_tmi_chartview.h"

#include <QDateTime>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kAxisWidth = 58;
constexpr int kBottomAxis = 20;
constexpr int kOverview = 34;
constexpr int kMargin = 6;

const QColor kColours[] = {QColor(31, 119, 180), QColor(214, 39, 40), QColor(44, 160, 44), QColor(148, 103, 189),
    QColor(255, 127, 14), QColor(23, 190, 207), QColor(140, 86, 75), QColor(227, 119, 194)};

// A round step near span / count: 1, 2 or 5 times a power of ten.
double niceStep(double dSpan, int nCount)
{
    const double dRaw = dSpan / qMax(1, nCount);
    const double dPow = std::pow(10.0, std::floor(std::log10(dRaw)));
    for (double m : {1.0, 2.0, 5.0})
        if (m * dPow >= dRaw)
            return m * dPow;
    return 10 * dPow;
}

// A step of a clock: seconds, minutes, hours or days.
double timeStep(double dSpan, int nCount)
{
    static const double kSteps[] = {1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200,
        86400, 172800, 604800, 2592000, 31536000};
    const double dRaw = dSpan / qMax(1, nCount);
    for (double s : kSteps)
        if (s >= dRaw)
            return s;
    return niceStep(dSpan, nCount);
}

QString valueText(double v)
{
    return QString::number(v, 'g', 7);
}

} // namespace

struct ZOR_TmiChartView::Series
{
    int nKey;
    QString qsCaption;
    QString qsUnit;
    QColor colour;
    QVector<double> values; // shared with the column store, never changed
    ZOR_TmiEnvelope envelope;
};

struct ZOR_TmiChartView::Axis
{
    QString qsUnit;
    QColor colour;
    double dMin;
    double dMax;
    std::vector<const Series*> series;
};

ZOR_TmiChartView::ZOR_TmiChartView(QWidget* parent)
    : QWidget(parent)
{
    setMinimumSize(320, 180);
    setMouseTracking(false);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

ZOR_TmiChartView::~ZOR_TmiChartView() = default;

void ZOR_TmiChartView::setRecords(int nRecords, const QVector<double>& times)
{
    m_series.clear();
    m_nRecords = nRecords;
    m_xs.clear();
    if (!times.isEmpty() && times.size() == nRecords) {
        m_xs.resize(nRecords);
        double dLatest = -std::numeric_limits<double>::infinity();
        for (int i = 0; i < nRecords; ++i)
            m_xs[i] = dLatest = qMax(dLatest, times.at(i));
    }
    m_nCursor = qMin(m_nCursor, nRecords - 1);
    resetView();
}

void ZOR_TmiChartView::addSeries(
    int nKey, const QString& qsCaption, const QString& qsUnit, const QVector<double>& values)
{
    if (hasSeries(nKey) || values.size() != m_nRecords)
        return;
    auto s = std::make_unique<Series>();
    s->nKey = nKey;
    s->qsCaption = qsCaption;
    s->qsUnit = qsUnit;
    // The first colour no series has.
    for (const QColor& c : kColours) {
        if (std::none_of(m_series.begin(), m_series.end(), [&](const auto& o) { return o->colour == c; })) {
            s->colour = c;
            break;
        }
    }
    if (!s->colour.isValid())
        s->colour = kColours[m_series.size() % 8];
    s->values = values;
    s->envelope.build(s->values.constData(), s->values.size());
    m_series.push_back(std::move(s));
    update();
}

void ZOR_TmiChartView::removeSeries(int nKey)
{
    m_series.erase(std::remove_if(m_series.begin(), m_series.end(), [&](const auto& s) { return s->nKey == nKey; }),
        m_series.end());
    update();
}

bool ZOR_TmiChartView::hasSeries(int nKey) const
{
    return std::any_of(m_series.begin(), m_series.end(), [&](const auto& s) { return s->nKey == nKey; });
}

qint64 ZOR_TmiChartView::summaryBytes() const
{
    qint64 n = m_xs.capacity() * qint64(sizeof(double));
    for (const auto& s : m_series)
        n += s->envelope.memoryBytes();
    return n;
}

double ZOR_TmiChartView::xOf(int nRecord) const
{
    return m_xs.isEmpty() ? double(nRecord) : m_xs.at(qBound(0, nRecord, m_nRecords - 1));
}

// The first record drawn at or after x.
int ZOR_TmiChartView::firstAtOrAfter(double x) const
{
    if (m_xs.isEmpty())
        return qBound(0, int(std::ceil(x)), m_nRecords);
    return int(std::lower_bound(m_xs.constBegin(), m_xs.constEnd(), x) - m_xs.constBegin());
}

QRect ZOR_TmiChartView::plotRect() const
{
    QStringList units;
    for (const auto& s : m_series)
        if (!units.contains(s->qsUnit))
            units << s->qsUnit;
    const int nAxes = qMax(1, units.size());
    return QRect(QPoint(kMargin + nAxes * kAxisWidth, kMargin),
        QPoint(width() - kMargin - 1, height() - kOverview - kBottomAxis - kMargin - 1));
}

QRect ZOR_TmiChartView::overviewRect() const
{
    const QRect plot = plotRect();
    return QRect(plot.left(), height() - kOverview - kMargin + 4, plot.width(), kOverview - 4);
}

double ZOR_TmiChartView::xAtPixel(double dPx) const
{
    const QRect plot = m_bPainting ? m_plot : plotRect();
    return m_dFrom + (dPx - plot.left()) * (m_dTo - m_dFrom) / qMax(1, plot.width());
}

double ZOR_TmiChartView::pixelOf(double x) const
{
    const QRect plot = m_bPainting ? m_plot : plotRect();
    return plot.left() + (x - m_dFrom) * plot.width() / (m_dTo - m_dFrom);
}

void ZOR_TmiChartView::setVisibleRange(double dFrom, double dTo)
{
    const double dLo = xOf(0);
    const double dHi = qMax(xOf(m_nRecords - 1), dLo + 1);
    // At least a few seconds or records wide, at most the whole archive.
    double dSpan = qBound(4.0, dTo - dFrom, dHi - dLo);
    dFrom = qBound(dLo, dFrom, dHi - dSpan);
    m_dFrom = dFrom;
    m_dTo = dFrom + dSpan;
    update();
}

void ZOR_TmiChartView::resetView()
{
    m_dFrom = xOf(0);
    m_dTo = qMax(xOf(m_nRecords - 1), m_dFrom + 1);
    update();
}

void ZOR_TmiChartView::zoomAt(double dFactor, int nX)
{
    const double x = xAtPixel(nX);
    setVisibleRange(x - (x - m_dFrom) * dFactor, x + (m_dTo - x) * dFactor);
}

void ZOR_TmiChartView::panPixels(int nDx)
{
    const double dShift = nDx * (m_dTo - m_dFrom) / qMax(1, plotRect().width());
    setVisibleRange(m_dFrom - dShift, m_dTo - dShift);
}

void ZOR_TmiChartView::setCursorRecord(int nRecord)
{
    if (nRecord >= m_nRecords)
        nRecord = -1;
    m_nCursor = nRecord;
    // Bring it into view, keeping the zoom.
    if (nRecord >= 0 && (xOf(nRecord) < m_dFrom || xOf(nRecord) > m_dTo)) {
        const double dSpan = m_dTo - m_dFrom;
        setVisibleRange(xOf(nRecord) - dSpan / 2, xOf(nRecord) + dSpan / 2);
    }
    update();
}

int ZOR_TmiChartView::recordAt(int nX) const
{
    if (m_nRecords == 0)
        return -1;
    const double x = xAtPixel(nX);
    const int nAfter = qMin(firstAtOrAfter(x), m_nRecords - 1);
    if (nAfter > 0 && x - xOf(nAfter - 1) < xOf(nAfter) - x)
        return nAfter - 1;
    return nAfter;
}

bool ZOR_TmiChartView::columnEnvelope(
    int nSeries, int nColumn, int& nFirst, int& nLast, double& dMin, double& dMax) const
{
    if (nSeries < 0 || nSeries >= seriesCount())
        return false;
    const QRect plot = plotRect();
    nFirst = firstAtOrAfter(xAtPixel(plot.left() + nColumn));
    nLast = firstAtOrAfter(xAtPixel(plot.left() + nColumn + 1));
    return m_series.at(nSeries)->envelope.range(nFirst, nLast, dMin, dMax);
}

// One axis per unit, in the order the units first appear, ranged to what
// its series show between the records.
std::vector<ZOR_TmiChartView::Axis> ZOR_TmiChartView::axes(int nFirst, int nLast) const
{
    std::vector<Axis> result;
    for (const auto& s : m_series) {
        auto it = std::find_if(result.begin(), result.end(), [&](const Axis& a) { return a.qsUnit == s->qsUnit; });
        if (it == result.end()) {
            result.push_back(Axis{s->qsUnit, s->colour, std::numeric_limits<double>::infinity(),
                -std::numeric_limits<double>::infinity(), {}});
            it = result.end() - 1;
        }
        it->series.push_back(s.get());
        double dMin = 0;
        double dMax = 0;
        if (nFirst < nLast && s->envelope.range(nFirst, nLast, dMin, dMax)) {
            it->dMin = qMin(it->dMin, dMin);
            it->dMax = qMax(it->dMax, dMax);
        }
    }
    for (Axis& a : result) {
        if (a.dMin > a.dMax)
            a.dMin = 0, a.dMax = 1;
        const double dPad = a.dMax > a.dMin ? (a.dMax - a.dMin) * 0.05 : qMax(1.0, std::abs(a.dMax) * 0.05);
        a.dMin -= dPad;
        a.dMax += dPad;
    }
    return result;
}

void ZOR_TmiChartView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), palette().base());
    const QRect plot = plotRect();
    m_plot = plot;
    m_bPainting = true;
    const int nFirst = qMax(0, firstAtOrAfter(m_dFrom) - 1);
    const int nLast = qMin(m_nRecords, firstAtOrAfter(m_dTo) + 1);
    const std::vector<Axis> all = axes(nFirst, nLast);
    p.setPen(palette().mid().color());
    p.drawRect(plot.adjusted(0, 0, -1, -1));
    paintTimeAxis(p, plot);
    paintValueAxes(p, plot, all);
    p.setClipRect(plot);
    p.setRenderHint(QPainter::Antialiasing, false);
    for (const Axis& a : all)
        for (const Series* s : a.series)
            paintSeries(p, plot, *s, a);
    if (m_nCursor >= 0) {
        const int nX = int(std::lround(pixelOf(xOf(m_nCursor))));
        p.setPen(QPen(QColor(0, 0, 0, 160), 1, Qt::DashLine));
        p.drawLine(nX, plot.top(), nX, plot.bottom());
    }
    paintLegend(p, plot);
    p.setClipping(false);
    paintOverview(p);
    m_bPainting = false;
}

void ZOR_TmiChartView::paintTimeAxis(QPainter& p, const QRect& plot) const
{
    const QFontMetrics fm = p.fontMetrics();
    const int nCount = qMax(2, plot.width() / 120);
    const double dSpan = m_dTo - m_dFrom;
    const bool bTime = isTimeAxis();
    const double dStep = bTime ? timeStep(dSpan, nCount) : qMax(1.0, niceStep(dSpan, nCount));
    // Clock steps fall on round local times.
    const double dOffset = bTime ? QDateTime::fromSecsSinceEpoch(qint64(m_dFrom)).offsetFromUtc() : -1;
    for (double x = std::ceil((m_dFrom + dOffset) / dStep) * dStep - dOffset; x <= m_dTo; x += dStep) {
        const int nX = int(std::lround(pixelOf(x)));
        p.setPen(QColor(0, 0, 0, 28));
        p.drawLine(nX, plot.top(), nX, plot.bottom());
        QString qsLabel;
        if (!bTime)
            qsLabel = QString::number(qint64(x) + 1);
        else {
            const QDateTime at = QDateTime::fromSecsSinceEpoch(qint64(x));
            qsLabel = at.toString(dStep < 60 ? QStringLiteral("HH:mm:ss")
                    : dStep < 86400          ? QStringLiteral("dd.MM HH:mm")
                                             : QStringLiteral("dd.MM.yyyy"));
        }
        p.setPen(palette().text().color());
        const int nW = fm.horizontalAdvance(qsLabel);
        p.drawText(qBound(plot.left(), nX - nW / 2, plot.right() - nW), plot.bottom() + fm.ascent() + 3, qsLabel);
    }
}

void ZOR_TmiChartView::paintValueAxes(QPainter& p, const QRect& plot, const std::vector<Axis>& all) const
{
    const QFontMetrics fm = p.fontMetrics();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Axis& a = all.at(i);
        const int nRight = plot.left() - int(i) * kAxisWidth - 1;
        p.setPen(a.colour);
        p.drawLine(nRight, plot.top(), nRight, plot.bottom());
        if (!a.qsUnit.isEmpty())
            p.drawText(nRight - kAxisWidth + 4, plot.top() + fm.ascent(), a.qsUnit);
        const double dStep = niceStep(a.dMax - a.dMin, qMax(2, plot.height() / 40));
        for (double v = std::ceil(a.dMin / dStep) * dStep; v <= a.dMax; v += dStep) {
            const int nY = plot.bottom() - int((v - a.dMin) * plot.height() / (a.dMax - a.dMin));
            if (nY < plot.top() + fm.height() && !a.qsUnit.isEmpty())
                continue;
            const QString qsLabel = valueText(std::abs(v) < dStep / 1e6 ? 0.0 : v);
            p.setPen(a.colour);
            p.drawLine(nRight - 3, nY, nRight, nY);
            p.drawText(nRight - 5 - fm.horizontalAdvance(qsLabel), nY + fm.ascent() / 2 - 1, qsLabel);
            if (i == 0) {
                p.setPen(QColor(0, 0, 0, 28));
                p.drawLine(plot.left(), nY, plot.right(), nY);
            }
        }
    }
}

// Few records in view: the records joined; many: per pixel column a line
// from the minimum to the maximum of its records, joined to the next.
void ZOR_TmiChartView::paintSeries(QPainter& p, const QRect& plot, const Series& s, const Axis& axis) const
{
    const double dScale = plot.height() / (axis.dMax - axis.dMin);
    auto yOf = [&](double v) { return plot.bottom() - (v - axis.dMin) * dScale; };
    const int nFirst = qMax(0, firstAtOrAfter(m_dFrom) - 1);
    const int nLast = qMin(m_nRecords, firstAtOrAfter(m_dTo) + 1);
    QPolygonF line;
    line.reserve(2 * plot.width() + 4);
    p.setPen(QPen(s.colour, 1));
    auto flush = [&] {
        if (line.size() == 1)
            p.drawPoint(line.first());
        else if (line.size() > 1)
            p.drawPolyline(line);
        line.clear();
    };
    const QVector<double>& v = s.values;
    if (nLast - nFirst <= plot.width()) {
        for (int i = nFirst; i < nLast; ++i) {
            if (std::isnan(v.at(i)))
                flush();
            else
                line.append(QPointF(pixelOf(xOf(i)), yOf(v.at(i))));
        }
        flush();
        return;
    }
    int nFrom = nFirst;
    for (int nX = plot.left(); nX <= plot.right(); ++nX) {
        const int nTo = firstAtOrAfter(xAtPixel(nX + 1));
        double dMin = 0;
        double dMax = 0;
        if (nTo > nFrom && s.envelope.range(nFrom, nTo, dMin, dMax)) {
            line.append(QPointF(nX + 0.5, yOf(dMin)));
            line.append(QPointF(nX + 0.5, yOf(dMax)));
        } else if (nTo > nFrom) {
            flush();
        }
        nFrom = qMax(nFrom, nTo);
    }
    flush();
}

void ZOR_TmiChartView::paintLegend(QPainter& p, const QRect& plot) const
{
    const QFontMetrics fm = p.fontMetrics();
    int nY = plot.top() + 4;
    for (const auto& s : m_series) {
        QString qsText = s->qsCaption;
        if (m_nCursor >= 0) {
            const double v = s->values.at(m_nCursor);
            qsText += QStringLiteral(": ") + (std::isnan(v) ? QStringLiteral("—") : valueText(v));
        }
        if (!s->qsUnit.isEmpty())
            qsText += QLatin1Char(' ') + s->qsUnit;
        const QRect box(plot.left() + 6, nY, fm.horizontalAdvance(qsText) + 22, fm.height() + 2);
        p.fillRect(box, QColor(255, 255, 255, 210));
        p.fillRect(QRect(box.left() + 3, box.top() + 4, 10, box.height() - 8), s->colour);
        p.setPen(palette().text().color());
        p.drawText(box.left() + 18, box.top() + fm.ascent() + 1, qsText);
        nY += box.height() + 1;
    }
}

// The whole archive in a strip: the first series' envelope and the part
// in view framed.
void ZOR_TmiChartView::paintOverview(QPainter& p) const
{
    const QRect strip = overviewRect();
    p.fillRect(strip, QColor(240, 240, 240));
    if (m_nRecords == 0)
        return;
    const double dLo = xOf(0);
    const double dHi = qMax(xOf(m_nRecords - 1), dLo + 1);
    auto px = [&](double x) { return strip.left() + (x - dLo) * strip.width() / (dHi - dLo); };
    if (!m_series.empty()) {
        const Series& s = *m_series.front();
        double dAllMin = 0;
        double dAllMax = 0;
        if (s.envelope.range(0, m_nRecords, dAllMin, dAllMax)) {
            const double dScale = (strip.height() - 4) / qMax(1e-9, dAllMax - dAllMin);
            p.setPen(s.colour.lighter(130));
            int nFrom = 0;
            for (int nX = 0; nX < strip.width(); ++nX) {
                const int nTo = firstAtOrAfter(dLo + (nX + 1) * (dHi - dLo) / strip.width());
                double dMin = 0;
                double dMax = 0;
                if (nTo > nFrom && s.envelope.range(nFrom, nTo, dMin, dMax))
                    p.drawLine(strip.left() + nX, strip.bottom() - 2 - int((dMin - dAllMin) * dScale),
                        strip.left() + nX, strip.bottom() - 2 - int((dMax - dAllMin) * dScale));
                nFrom = qMax(nFrom, nTo);
            }
        }
    }
    const QRectF window(QPointF(px(m_dFrom), strip.top()), QPointF(px(m_dTo), strip.bottom()));
    p.fillRect(window, QColor(31, 119, 180, 50));
    p.setPen(QColor(31, 119, 180));
    p.drawRect(window.adjusted(0, 0, -1, 0));
}

void ZOR_TmiChartView::moveOverviewTo(int nX)
{
    const QRect strip = overviewRect();
    const double dLo = xOf(0);
    const double dHi = qMax(xOf(m_nRecords - 1), dLo + 1);
    const double x = dLo + (nX - strip.left()) * (dHi - dLo) / qMax(1, strip.width());
    const double dSpan = m_dTo - m_dFrom;
    setVisibleRange(x - dSpan / 2, x + dSpan / 2);
}

void ZOR_TmiChartView::wheelEvent(QWheelEvent* event)
{
    const double dSteps = event->angleDelta().y() / 120.0;
    if (dSteps != 0)
        zoomAt(std::pow(0.8, dSteps), int(event->position().x()));
    event->accept();
}

void ZOR_TmiChartView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressAt = event->pos();
    m_dPressFrom = m_dFrom;
    m_bDragging = false;
    m_bInOverview = overviewRect().contains(event->pos());
    if (m_bInOverview)
        moveOverviewTo(event->pos().x());
}

void ZOR_TmiChartView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton))
        return;
    if (m_bInOverview) {
        moveOverviewTo(event->pos().x());
        return;
    }
    if ((event->pos() - m_pressAt).manhattanLength() > 3)
        m_bDragging = true;
    if (m_bDragging) {
        const double dSpan = m_dTo - m_dFrom;
        const double dFrom = m_dPressFrom - (event->pos().x() - m_pressAt.x()) * dSpan / qMax(1, plotRect().width());
        setVisibleRange(dFrom, dFrom + dSpan);
    }
}

void ZOR_TmiChartView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_bInOverview || m_bDragging)
        return;
    if (!plotRect().contains(event->pos()))
        return;
    const int nRecord = recordAt(event->pos().x());
    if (nRecord >= 0) {
        m_nCursor = nRecord;
        update();
        emit signal_CursorChanged(nRecord);
    }
}
