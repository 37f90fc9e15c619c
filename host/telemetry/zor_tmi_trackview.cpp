#include "zor_tmi_trackview.h"

#include "zor_tmi_texts.h"
#include "zor_tmi_tilesource.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QSet>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kEarthCircumference = 40075016.686; // metres at the equator
constexpr int kTile = 256;
constexpr int kMaxTileZoom = 19;
const QColor kSpeedColours[] = {QColor(40, 90, 220), QColor(0, 160, 170), QColor(40, 170, 60), QColor(200, 190, 0),
    QColor(240, 130, 0), QColor(210, 30, 30)};
constexpr int kSpeedBands = 6;

QPointF mercator(double dLat, double dLon)
{
    const double dSin = std::sin(qBound(-85.05, dLat, 85.05) * kPi / 180);
    return QPointF((dLon + 180) / 360, 0.5 - std::log((1 + dSin) / (1 - dSin)) / (4 * kPi));
}

double latitudeOf(double dWorldY)
{
    return std::atan(std::sinh(kPi * (1 - 2 * dWorldY))) * 180 / kPi;
}

// 1, 2 or 5 times a power of ten at most dLimit.
double roundDown(double dLimit)
{
    const double dPow = std::pow(10.0, std::floor(std::log10(dLimit)));
    for (double m : {5.0, 2.0, 1.0})
        if (m * dPow <= dLimit)
            return m * dPow;
    return dPow;
}

} // namespace

ZOR_TmiTrackView::ZOR_TmiTrackView(QWidget* parent)
    : QWidget(parent)
{
    setMinimumSize(240, 180);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ZOR_TmiTrackView::setTrack(const QVector<double>& latitudes, const QVector<double>& longitudes,
    const QVector<double>& speeds, const QVector<int>& breaksBefore)
{
    m_world.clear();
    m_records.clear();
    m_speeds.clear();
    m_breaks.clear();
    m_dMaxSpeed = 0;
    const int nCount = qMin(latitudes.size(), longitudes.size());
    m_recordPoint.fill(-1, nCount);
    const QSet<int> breaks(breaksBefore.begin(), breaksBefore.end());
    bool bBreak = true;
    for (int i = 0; i < nCount; ++i) {
        const double dLat = latitudes.at(i);
        const double dLon = longitudes.at(i);
        if (std::isnan(dLat) || std::isnan(dLon) || std::abs(dLat) > 90 || std::abs(dLon) > 180) {
            bBreak = true;
            continue;
        }
        if (!breaks.isEmpty() && breaks.contains(i))
            bBreak = true;
        m_recordPoint[i] = m_world.size();
        m_world.append(mercator(dLat, dLon));
        m_records.append(i);
        const double dSpeed = i < speeds.size() && !std::isnan(speeds.at(i)) ? speeds.at(i) : 0.0;
        m_speeds.append(float(dSpeed));
        m_dMaxSpeed = qMax(m_dMaxSpeed, dSpeed);
        m_breaks.append(bBreak);
        bBreak = false;
    }
    m_stops.clear();
    m_nSelected = -1;
    resetView();
}

void ZOR_TmiTrackView::setStops(const QVector<int>& records)
{
    m_stops = records;
    update();
}

void ZOR_TmiTrackView::setTileSource(ZOR_TmiTileSource* lpSource)
{
    m_lpTiles = lpSource;
    if (lpSource)
        connect(lpSource, &ZOR_TmiTileSource::signal_TileReady, this, qOverload<>(&QWidget::update));
    update();
}

double ZOR_TmiTrackView::scale() const
{
    return kTile * std::pow(2.0, m_dZoom);
}

QPointF ZOR_TmiTrackView::toScreen(const QPointF& world) const
{
    return (world - m_centre) * scale() + QPointF(width() / 2.0, height() / 2.0);
}

QPointF ZOR_TmiTrackView::toWorld(const QPointF& screen) const
{
    return (screen - QPointF(width() / 2.0, height() / 2.0)) / scale() + m_centre;
}

void ZOR_TmiTrackView::resetView()
{
    if (m_world.isEmpty()) {
        m_centre = QPointF(0.5, 0.5);
        m_dZoom = 1;
        update();
        return;
    }
    double dLeft = 1, dTop = 1, dRight = 0, dBottom = 0;
    for (const QPointF& w : m_world) {
        dLeft = qMin(dLeft, w.x());
        dRight = qMax(dRight, w.x());
        dTop = qMin(dTop, w.y());
        dBottom = qMax(dBottom, w.y());
    }
    m_centre = QPointF((dLeft + dRight) / 2, (dTop + dBottom) / 2);
    const double dSpan = qMax(qMax(dRight - dLeft, dBottom - dTop), 1e-7);
    const double dFit = qMin(width(), height()) * 0.85 / (dSpan * kTile);
    m_dZoom = qBound(0.0, std::log2(dFit), 20.0);
    update();
}

void ZOR_TmiTrackView::zoomAt(double dFactor, const QPointF& at)
{
    const QPointF before = toWorld(at);
    m_dZoom = qBound(0.0, m_dZoom + std::log2(dFactor), 21.0);
    m_centre += before - toWorld(at);
    update();
}

double ZOR_TmiTrackView::metresPerPixel() const
{
    return kEarthCircumference * std::cos(latitudeOf(m_centre.y()) * kPi / 180) / scale();
}

int ZOR_TmiTrackView::recordAt(const QPointF& at) const
{
    const QPointF world = toWorld(at);
    int nBest = -1;
    double dBest = std::numeric_limits<double>::infinity();
    for (int i = 0; i < m_world.size(); ++i) {
        const QPointF d = m_world.at(i) - world;
        const double dDist = d.x() * d.x() + d.y() * d.y();
        if (dDist < dBest) {
            dBest = dDist;
            nBest = i;
        }
    }
    return nBest < 0 ? -1 : m_records.at(nBest);
}

bool ZOR_TmiTrackView::pointOf(int nRecord, QPointF& at) const
{
    if (nRecord < 0 || nRecord >= m_recordPoint.size() || m_recordPoint.at(nRecord) < 0)
        return false;
    at = toScreen(m_world.at(m_recordPoint.at(nRecord)));
    return true;
}

void ZOR_TmiTrackView::setSelectedRecord(int nRecord)
{
    m_nSelected = nRecord;
    QPointF at;
    if (pointOf(nRecord, at) && !rect().adjusted(20, 20, -20, -20).contains(at.toPoint()))
        m_centre = m_world.at(m_recordPoint.at(nRecord));
    update();
}

void ZOR_TmiTrackView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), QColor(236, 236, 232));
    if (m_lpTiles && m_lpTiles->isEnabled())
        paintTiles(p);
    else
        paintGraticule(p);
    p.setRenderHint(QPainter::Antialiasing, true);
    paintTrack(p);
    paintMarkers(p);
    p.setRenderHint(QPainter::Antialiasing, false);
    paintScaleBar(p);
    paintLegend(p);
    if (m_world.isEmpty()) {
        p.setPen(palette().text().color());
        p.drawText(rect(), Qt::AlignCenter, zorTmiText("track_none"));
    }
}

void ZOR_TmiTrackView::paintTiles(QPainter& p)
{
    const int z = qBound(0, int(std::lround(m_dZoom)), kMaxTileZoom);
    const int n = 1 << z;
    const double dSize = kTile * std::pow(2.0, m_dZoom - z);
    const QPointF topLeft = toWorld(QPointF(0, 0));
    const QPointF bottomRight = toWorld(QPointF(width(), height()));
    p.setRenderHint(QPainter::SmoothPixmapTransform, true);
    for (int y = qMax(0, int(std::floor(topLeft.y() * n))); y <= qMin(n - 1, int(std::floor(bottomRight.y() * n)));
         ++y) {
        for (int x = int(std::floor(topLeft.x() * n)); x <= int(std::floor(bottomRight.x() * n)); ++x) {
            const QPointF at = toScreen(QPointF(double(x) / n, double(y) / n));
            const QImage image = m_lpTiles->tile(z, ((x % n) + n) % n, y);
            if (!image.isNull())
                p.drawImage(QRectF(at, QSizeF(dSize, dSize)), image);
        }
    }
    const QString qsText = m_lpTiles->attribution();
    if (!qsText.isEmpty()) {
        const QRect box = p.fontMetrics().boundingRect(qsText).adjusted(-4, -2, 4, 2);
        const QRect place(width() - box.width() - 2, height() - box.height() - 2, box.width(), box.height());
        p.fillRect(place, QColor(255, 255, 255, 200));
        p.setPen(Qt::black);
        p.drawText(place, Qt::AlignCenter, qsText);
    }
}

void ZOR_TmiTrackView::paintGraticule(QPainter& p) const
{
    const QPointF topLeft = toWorld(QPointF(0, 0));
    const QPointF bottomRight = toWorld(QPointF(width(), height()));
    const double dWest = topLeft.x() * 360 - 180;
    const double dEast = bottomRight.x() * 360 - 180;
    const double dNorth = latitudeOf(topLeft.y());
    const double dSouth = latitudeOf(bottomRight.y());
    const double dStep = roundDown(qMax(1e-6, (dEast - dWest) / 4));
    const int nDecimals = qMax(0, int(std::ceil(-std::log10(dStep))));
    p.setPen(QColor(0, 0, 0, 40));
    const QFontMetrics fm = p.fontMetrics();
    for (double dLon = std::ceil(dWest / dStep) * dStep; dLon <= dEast; dLon += dStep) {
        const double dX = toScreen(QPointF((dLon + 180) / 360, 0)).x();
        p.setPen(QColor(0, 0, 0, 40));
        p.drawLine(QPointF(dX, 0), QPointF(dX, height()));
        p.setPen(QColor(90, 90, 90));
        p.drawText(QPointF(dX + 3, fm.ascent() + 2), QStringLiteral("%1°").arg(dLon, 0, 'f', nDecimals));
    }
    for (double dLat = std::ceil(dSouth / dStep) * dStep; dLat <= dNorth; dLat += dStep) {
        const double dY = toScreen(mercator(dLat, 0)).y();
        p.setPen(QColor(0, 0, 0, 40));
        p.drawLine(QPointF(0, dY), QPointF(width(), dY));
        p.setPen(QColor(90, 90, 90));
        p.drawText(QPointF(3, dY - 3), QStringLiteral("%1°").arg(dLat, 0, 'f', nDecimals));
    }
}

// Consecutive points of one speed band join into one line; points that
// land on the same pixel as the one before are skipped.
void ZOR_TmiTrackView::paintTrack(QPainter& p) const
{
    QPolygonF line;
    int nBand = -1;
    auto flush = [&] {
        if (line.size() > 1) {
            p.setPen(QPen(kSpeedColours[nBand], 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            p.drawPolyline(line);
        }
        line.clear();
    };
    const double dBand = m_dMaxSpeed > 0 ? kSpeedBands / m_dMaxSpeed : 0;
    QPointF last(-1e9, -1e9);
    for (int i = 0; i < m_world.size(); ++i) {
        const QPointF at = toScreen(m_world.at(i));
        const int nThis = qMin(kSpeedBands - 1, int(m_speeds.at(i) * dBand));
        if (m_breaks.at(i)) {
            flush();
        } else if (nThis != nBand) {
            const QPointF joint = line.isEmpty() ? last : line.last();
            flush();
            line.append(joint);
        } else if (std::abs(at.x() - last.x()) < 1 && std::abs(at.y() - last.y()) < 1 && i + 1 < m_world.size()) {
            continue;
        }
        nBand = nThis;
        line.append(at);
        last = at;
    }
    flush();
}

void ZOR_TmiTrackView::paintMarkers(QPainter& p) const
{
    auto marker = [&](int nRecord, const QColor& colour, const QString& qsLetter) {
        QPointF at;
        if (!pointOf(nRecord, at))
            return;
        p.setPen(QPen(Qt::white, 1.5));
        p.setBrush(colour);
        p.drawEllipse(at, 8, 8);
        p.setPen(Qt::white);
        p.drawText(QRectF(at - QPointF(8, 8), QSizeF(16, 16)), Qt::AlignCenter, qsLetter);
    };
    for (int nRecord : m_stops)
        marker(nRecord, QColor(40, 60, 200), zorTmiText("track_stop_mark"));
    if (!m_records.isEmpty()) {
        marker(m_records.first(), QColor(20, 150, 40), zorTmiText("track_start_mark"));
        marker(m_records.last(), QColor(200, 30, 30), zorTmiText("track_end_mark"));
    }
    QPointF at;
    if (pointOf(m_nSelected, at)) {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(Qt::black, 2.5));
        p.drawEllipse(at, 10, 10);
        p.setPen(QPen(Qt::yellow, 1.5));
        p.drawEllipse(at, 10, 10);
    }
}

void ZOR_TmiTrackView::paintScaleBar(QPainter& p) const
{
    const double dMetres = roundDown(metresPerPixel() * 120);
    const int nPixels = int(dMetres / metresPerPixel());
    const QString qsText = dMetres >= 1000 ? QStringLiteral("%1 %2").arg(dMetres / 1000).arg(zorTmiText("unit_km"))
                                           : QStringLiteral("%1 %2").arg(dMetres).arg(zorTmiText("unit_m"));
    const QRect box(8, height() - 30, nPixels + 8, 24);
    p.fillRect(box, QColor(255, 255, 255, 190));
    p.setPen(QPen(Qt::black, 2));
    const int nY = box.bottom() - 5;
    p.drawLine(box.left() + 4, nY, box.left() + 4 + nPixels, nY);
    p.drawLine(box.left() + 4, nY - 5, box.left() + 4, nY);
    p.drawLine(box.left() + 4 + nPixels, nY - 5, box.left() + 4 + nPixels, nY);
    p.drawText(box.left() + 6, box.top() + p.fontMetrics().ascent(), qsText);
}

void ZOR_TmiTrackView::paintLegend(QPainter& p) const
{
    if (m_world.isEmpty())
        return;
    const QFontMetrics fm = p.fontMetrics();
    const QString qsMax = QStringLiteral("%1 %2").arg(qRound(m_dMaxSpeed)).arg(zorTmiText("unit_kmh"));
    const int nWidth = 14 * kSpeedBands;
    const QRect box(width() - nWidth - fm.horizontalAdvance(qsMax) - 30, 6, nWidth + fm.horizontalAdvance(qsMax) + 24,
        fm.height() + 6);
    p.fillRect(box, QColor(255, 255, 255, 200));
    p.setPen(Qt::black);
    p.drawText(box.left() + 4, box.top() + fm.ascent() + 3, QStringLiteral("0"));
    for (int i = 0; i < kSpeedBands; ++i)
        p.fillRect(QRect(box.left() + 14 + i * 14, box.top() + 4, 14, box.height() - 8), kSpeedColours[i]);
    p.drawText(box.left() + 18 + nWidth, box.top() + fm.ascent() + 3, qsMax);
}

void ZOR_TmiTrackView::wheelEvent(QWheelEvent* event)
{
    const double dSteps = event->angleDelta().y() / 120.0;
    if (dSteps != 0)
        zoomAt(std::pow(2.0, dSteps / 2), event->position());
    event->accept();
}

void ZOR_TmiTrackView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressAt = event->pos();
    m_pressCentre = m_centre;
    m_bDragging = false;
}

void ZOR_TmiTrackView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton))
        return;
    if ((event->pos() - m_pressAt).manhattanLength() > 3)
        m_bDragging = true;
    if (m_bDragging) {
        m_centre = m_pressCentre - QPointF(event->pos() - m_pressAt) / scale();
        update();
    }
}

void ZOR_TmiTrackView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_bDragging)
        return;
    const int nRecord = recordAt(event->pos());
    if (nRecord < 0)
        return;
    m_nSelected = nRecord;
    update();
    emit signal_RecordClicked(nRecord);
}
