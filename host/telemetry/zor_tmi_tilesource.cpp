#include "zor_tmi_tilesource.h"

#include "zor_tmi_texts.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>
#include <QUrl>

namespace {

// Tiles kept decoded in memory (256 x 256 x 4 bytes each).
constexpr int kMemoryTiles = 160;
constexpr qint64 kDiskCacheBytes = 200 * 1024 * 1024;
// Requests in flight at most; the rest wait for the next paint.
constexpr int kMaxPending = 12;

QString keyOf(int z, int x, int y)
{
    return QStringLiteral("%1/%2/%3").arg(z).arg(x).arg(y);
}

} // namespace

ZOR_TmiTileSource::ZOR_TmiTileSource(QObject* parent)
    : QObject(parent)
    , m_lpNetwork(new QNetworkAccessManager(this))
    , m_lpDiskCache(new QNetworkDiskCache(this))
    , m_tiles(kMemoryTiles)
{
    m_lpDiskCache->setMaximumCacheSize(kDiskCacheBytes);
    setCacheDirectory(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/tiles"));
    m_lpNetwork->setCache(m_lpDiskCache);
    connect(m_lpNetwork, &QNetworkAccessManager::finished, this, &ZOR_TmiTileSource::slot_finished);
}

bool ZOR_TmiTileSource::isValidTemplate(const QString& qsTemplate)
{
    const QString qsNew = qsTemplate.trimmed();
    if (qsNew.isEmpty())
        return true;
    const QUrl url(
        QString(qsNew).replace(QLatin1Char('{'), QLatin1Char('_')).replace(QLatin1Char('}'), QLatin1Char('_')));
    const bool bHttp = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return bHttp && !url.host().isEmpty() && qsNew.contains(QLatin1String("{z}"))
        && qsNew.contains(QLatin1String("{x}")) && qsNew.contains(QLatin1String("{y}"));
}

bool ZOR_TmiTileSource::setUrlTemplate(const QString& qsTemplate)
{
    if (!isValidTemplate(qsTemplate))
        return false;
    const QString qsNew = qsTemplate.trimmed();
    m_qsTemplate = qsNew;
    m_tiles.clear();
    m_failed.clear();
    setStatus(QString());
    emit signal_TileReady();
    return true;
}

void ZOR_TmiTileSource::setCacheDirectory(const QString& qsPath)
{
    m_lpDiskCache->setCacheDirectory(qsPath);
}

QString ZOR_TmiTileSource::cacheDirectory() const
{
    return m_lpDiskCache->cacheDirectory();
}

QByteArray ZOR_TmiTileSource::userAgent()
{
    const QString qsName = QCoreApplication::applicationName().isEmpty() ? QStringLiteral("zor-host")
                                                                         : QCoreApplication::applicationName();
    const QString qsVersion = QCoreApplication::applicationVersion();
    return QStringLiteral("%1/%2 (telemetry window of libZOR_Commands)")
        .arg(qsName, qsVersion.isEmpty() ? QStringLiteral("1") : qsVersion)
        .toUtf8();
}

QImage ZOR_TmiTileSource::tile(int z, int x, int y)
{
    if (!isEnabled())
        return QImage();
    const QString qsKey = keyOf(z, x, y);
    if (const QImage* lpImage = m_tiles.object(qsKey))
        return *lpImage;
    if (m_pending.contains(qsKey) || m_failed.contains(qsKey) || m_pending.size() >= kMaxPending)
        return QImage();
    QString qsUrl = m_qsTemplate;
    qsUrl.replace(QLatin1String("{z}"), QString::number(z))
        .replace(QLatin1String("{x}"), QString::number(x))
        .replace(QLatin1String("{y}"), QString::number(y));
    QNetworkRequest request{QUrl(qsUrl)};
    request.setHeader(QNetworkRequest::UserAgentHeader, userAgent());
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferCache);
    request.setAttribute(QNetworkRequest::User, qsKey);
    request.setAttribute(QNetworkRequest::Attribute(QNetworkRequest::User + 1), m_qsTemplate);
    request.setTransferTimeout(m_nTimeout);
    m_pending.insert(qsKey);
    m_lpNetwork->get(request);
    return QImage();
}

void ZOR_TmiTileSource::slot_finished(QNetworkReply* lpReply)
{
    lpReply->deleteLater();
    const QString qsKey = lpReply->request().attribute(QNetworkRequest::User).toString();
    m_pending.remove(qsKey);
    // A reply to a template no longer in use is dropped.
    if (lpReply->request().attribute(QNetworkRequest::Attribute(QNetworkRequest::User + 1)).toString() != m_qsTemplate)
        return;
    QImage image;
    if (lpReply->error() != QNetworkReply::NoError) {
        m_failed.insert(qsKey);
        setStatus(zorTmiText("tile_error").arg(lpReply->url().host(), lpReply->errorString()));
        emit signal_TileReady();
        return;
    }
    const QByteArray data = lpReply->readAll();
    if (!image.loadFromData(data)) {
        m_failed.insert(qsKey);
        setStatus(zorTmiText("tile_not_image")
                      .arg(lpReply->url().host(), lpReply->header(QNetworkRequest::ContentTypeHeader).toString())
                      .arg(data.size()));
        emit signal_TileReady();
        return;
    }
    m_tiles.insert(qsKey, new QImage(image.convertToFormat(QImage::Format_ARGB32_Premultiplied)));
    setStatus(QString());
    emit signal_TileReady();
}

void ZOR_TmiTileSource::setStatus(const QString& qsStatus)
{
    if (qsStatus == m_qsStatus)
        return;
    m_qsStatus = qsStatus;
    emit signal_StatusChanged(qsStatus);
}
