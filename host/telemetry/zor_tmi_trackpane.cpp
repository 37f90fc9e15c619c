#include "zor_tmi_trackpane.h"

#include "telemetry/tmipage_base.h"
#include "zor_tmi_columnstore.h"
#include "zor_tmi_mapdialog.h"
#include "zor_tmi_texts.h"
#include "zor_tmi_tilesource.h"
#include "zor_tmi_trackview.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QThread>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>
#include <limits>
#include <memory>

namespace {

const QString kUrlKey = QStringLiteral("telemetry/tileUrl");
const QString kAttributionKey = QStringLiteral("telemetry/tileAttribution");

} // namespace

ZOR_TmiTrackPane::ZOR_TmiTrackPane(QWidget* parent)
    : QWidget(parent)
    , m_lpView(new ZOR_TmiTrackView(this))
    , m_lpTiles(new ZOR_TmiTileSource(this))
    , m_lpMap(new QToolButton(this))
    , m_lpReset(new QToolButton(this))
    , m_lpStatus(new QLabel(this))
{
    m_lpStatus->setWordWrap(false);
    m_lpStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* lpBar = new QHBoxLayout;
    lpBar->addWidget(m_lpMap);
    lpBar->addWidget(m_lpReset);
    lpBar->addWidget(m_lpStatus, 1);
    auto* lpLayout = new QVBoxLayout(this);
    lpLayout->setContentsMargins(0, 0, 0, 0);
    lpLayout->addLayout(lpBar);
    lpLayout->addWidget(m_lpView, 1);
    m_lpView->setTileSource(m_lpTiles);
    const QSettings settings;
    m_lpTiles->setUrlTemplate(settings.value(kUrlKey).toString());
    m_lpTiles->setAttribution(settings.value(kAttributionKey).toString());
    connect(m_lpMap, &QToolButton::clicked, this, &ZOR_TmiTrackPane::slot_clicked_Map);
    connect(m_lpReset, &QToolButton::clicked, m_lpView, &ZOR_TmiTrackView::resetView);
    connect(m_lpTiles, &ZOR_TmiTileSource::signal_StatusChanged, this, &ZOR_TmiTrackPane::showStatus);
    connect(m_lpView, &ZOR_TmiTrackView::signal_RecordClicked, this, &ZOR_TmiTrackPane::signal_RecordClicked);
    retranslate();
}

void ZOR_TmiTrackPane::setStore(ZOR_TmiColumnStore* lpStore)
{
    m_lpStore = lpStore;
    reload();
}

void ZOR_TmiTrackPane::retranslate()
{
    m_lpMap->setText(zorTmiText("map"));
    m_lpMap->setToolTip(zorTmiText("map_tip"));
    m_lpReset->setText(zorTmiText("chart_reset"));
    m_lpView->setToolTip(zorTmiText("track_tip"));
    showStatus();
}

// The drive of an archive: every whole record through the drive library,
// then its summary; the positions of records without a valid fix are NaN.
std::shared_ptr<ZOR_TmiTrackPane::Loaded> ZOR_TmiTrackPane::loadTrack(
    const QString& qsFile, const ZOR_TmiFieldSet& set, int nRecords, const std::atomic_bool& bStop)
{
    auto out = std::make_shared<Loaded>();
    QFile file(qsFile);
    if (nRecords > 0 && !file.open(QIODevice::ReadOnly)) {
        out->qsProblem = file.errorString();
        return out;
    }
    const std::unique_ptr<TmiPage_Base> record = set.makeRecord();
    const int nSize = set.recordSize();
    const int nPerChunk = qMax(1, (4 << 20) / qMax(1, nSize));
    QByteArray chunk;
    for (int nFirst = 0; nFirst < nRecords; nFirst += nPerChunk) {
        if (bStop)
            return out;
        const int nCount = qMin(nPerChunk, nRecords - nFirst);
        chunk = file.read(qint64(nCount) * nSize);
        if (chunk.size() != nCount * nSize) {
            out->qsProblem = file.errorString();
            return out;
        }
        for (int i = 0; i < nCount; ++i) {
            record->setCurrentTMI(reinterpret_cast<const unsigned char*>(chunk.constData()) + qint64(i) * nSize, nSize);
            out->track.addRecord(*record);
        }
    }
    out->summary = ZOR_DriveAnalysis(out->options).analyse(out->track);
    const double dNaN = std::numeric_limits<double>::quiet_NaN();
    for (int i = 0; i < out->track.size(); ++i) {
        const ZOR_DrivePoint& p = out->track.point(i);
        out->latitudes.append(p.fix ? p.lat : dNaN);
        out->longitudes.append(p.fix ? p.lon : dNaN);
        out->speeds.append(double(p.speed));
    }
    for (const ZOR_DriveGap& gap : out->summary.gaps)
        out->breaks.append(gap.record);
    for (const ZOR_DriveRun& stop : out->summary.stops)
        out->stops.append(stop.fixRecord >= 0 ? stop.fixRecord : stop.first);
    if (out->track.size() > 0 && !out->track.hasCoordinates())
        out->qsProblem = zorTmiText("track_no_coords");
    return out;
}

void ZOR_TmiTrackPane::reload()
{
    if (m_lpThread) {
        m_bAgain = true;
        m_bStop = true;
        return;
    }
    const QString qsFile = m_lpStore ? m_lpStore->fileName() : QString();
    const ZOR_TmiFieldSet set = m_lpStore ? m_lpStore->fieldSet() : ZOR_TmiFieldSet();
    const int nRecords = m_lpStore ? m_lpStore->recordCount() : 0;
    auto result = std::make_shared<std::shared_ptr<Loaded>>();
    m_bStop = false;
    m_lpThread = QThread::create([=] { *result = loadTrack(qsFile, set, nRecords, m_bStop); });
    connect(m_lpThread, &QThread::finished, this, [this, result] {
        m_lpThread->deleteLater();
        m_lpThread = nullptr;
        if (m_bAgain) {
            m_bAgain = false;
            reload();
            return;
        }
        m_loaded = *result;
        m_qsTrackProblem = m_loaded->qsProblem;
        m_lpView->setTrack(m_loaded->latitudes, m_loaded->longitudes, m_loaded->speeds, m_loaded->breaks);
        m_lpView->setStops(m_loaded->stops);
        // The view keeps its own copy of the positions.
        m_loaded->latitudes = m_loaded->longitudes = m_loaded->speeds = QVector<double>();
        if (m_qsTrackProblem.isEmpty() && !m_loaded->latitudes.isEmpty() && m_lpView->pointCount() == 0)
            m_qsTrackProblem = zorTmiText("track_no_fix");
        showStatus();
        emit signal_TrackLoaded();
    });
    m_lpThread->start();
}

ZOR_TmiTrackPane::~ZOR_TmiTrackPane()
{
    if (m_lpThread) {
        disconnect(m_lpThread, nullptr, this, nullptr);
        m_bStop = true;
        m_lpThread->wait();
        delete m_lpThread;
    }
}

void ZOR_TmiTrackPane::setStops(const QVector<int>& records)
{
    m_lpView->setStops(records);
}

bool ZOR_TmiTrackPane::setMap(const QString& qsTemplate, const QString& qsAttribution)
{
    if (!m_lpTiles->setUrlTemplate(qsTemplate))
        return false;
    m_lpTiles->setAttribution(qsAttribution);
    QSettings settings;
    settings.setValue(kUrlKey, m_lpTiles->urlTemplate());
    settings.setValue(kAttributionKey, qsAttribution);
    showStatus();
    return true;
}

void ZOR_TmiTrackPane::slot_clicked_Map()
{
    ZOR_TmiMapDialog dialog(this);
    dialog.setValues(m_lpTiles->urlTemplate(), m_lpTiles->attribution());
    if (dialog.exec() == QDialog::Accepted)
        setMap(dialog.urlTemplate(), dialog.attribution());
}

QString ZOR_TmiTrackPane::statusText() const
{
    return m_lpStatus->text();
}

void ZOR_TmiTrackPane::showStatus()
{
    QStringList parts;
    if (!m_qsTrackProblem.isEmpty())
        parts << m_qsTrackProblem;
    if (!m_lpTiles->isEnabled())
        parts << zorTmiText("map_off");
    else if (!m_lpTiles->status().isEmpty())
        parts << m_lpTiles->status();
    m_lpStatus->setText(parts.join(QStringLiteral("; ")));
}
