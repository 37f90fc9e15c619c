#ifndef ZOR_TMI_TILESOURCE_H
#define ZOR_TMI_TILESOURCE_H

// Map tiles of an XYZ server the user names ("https://host/{z}/{x}/{y}.png"),
// off until a template is set. Tiles come through Qt Network without ever
// blocking: tile() answers what is at hand (memory, then the disk cache
// under the user's cache location) and asks the server for the rest;
// signal_TileReady says when one arrives. Requests name the program in
// their User-Agent and give up after a timeout. A server that fails, is slow
// or answers with something other than an image leaves the tile empty and
// status() says why; a failed tile is not asked for again until the
// template changes.

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>

class QNetworkAccessManager;
class QNetworkDiskCache;
class QNetworkReply;

class ZOR_TmiTileSource : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_TmiTileSource(QObject* parent = nullptr);

    // An http or https template with {z}, {x} and {y}; empty turns tiles
    // off. False (nothing changes) for anything else.
    bool setUrlTemplate(const QString& qsTemplate);
    static bool isValidTemplate(const QString& qsTemplate);
    QString urlTemplate() const { return m_qsTemplate; }
    bool isEnabled() const { return !m_qsTemplate.isEmpty(); }
    // The text the server's terms ask to show with its tiles.
    void setAttribution(const QString& qsText) { m_qsAttribution = qsText; }
    QString attribution() const { return m_qsAttribution; }
    void setCacheDirectory(const QString& qsPath);
    QString cacheDirectory() const;
    void setTimeout(int nMilliseconds) { m_nTimeout = nMilliseconds; }

    // The tile when it is at hand; a null image otherwise (then asked for).
    QImage tile(int z, int x, int y);
    int pendingCount() const { return m_pending.size(); }
    // Why the last tile could not be had; empty once one arrives.
    QString status() const { return m_qsStatus; }
    static QByteArray userAgent();

signals:
    void signal_TileReady();
    void signal_StatusChanged(const QString& qsStatus);

private:
    void slot_finished(QNetworkReply* lpReply);
    void setStatus(const QString& qsStatus);

    QNetworkAccessManager* m_lpNetwork;
    QNetworkDiskCache* m_lpDiskCache;
    QString m_qsTemplate;
    QString m_qsAttribution;
    int m_nTimeout = 10000;
    QCache<QString, QImage> m_tiles;
    QSet<QString> m_pending;
    QSet<QString> m_failed;
    QString m_qsStatus;
};

#endif
