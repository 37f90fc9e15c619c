#ifndef ZOR_TMI_TRACKPANE_H
#define ZOR_TMI_TRACKPANE_H

// The track pane of the telemetry window: the track view over the archive's
// positions, the map tile server the user names (kept in the settings) and
// a line that says what the map is doing.

#include "zor_driveanalysis.h"
#include "zor_tmi_fieldset.h"

#include <QVector>
#include <QWidget>

#include <atomic>
#include <memory>

class QLabel;
class QThread;
class QToolButton;
class ZOR_TmiColumnStore;
class ZOR_TmiTileSource;
class ZOR_TmiTrackView;

class ZOR_TmiTrackPane : public QWidget
{
    Q_OBJECT
public:
    explicit ZOR_TmiTrackPane(QWidget* parent = nullptr);
    ~ZOR_TmiTrackPane() override;

    void setStore(ZOR_TmiColumnStore* lpStore);
    // Reads the positions again (archive or field set changed), in the
    // background; signal_TrackLoaded when they are shown.
    void reload();
    bool isLoading() const { return m_lpThread != nullptr; }
    // Records where the vehicle stood, marked on the track.
    void setStops(const QVector<int>& records);
    // Sets and keeps the tile server; false for a template that is not one.
    bool setMap(const QString& qsTemplate, const QString& qsAttribution);

    // The drive as the library read it; null until the first load ends.
    struct Loaded
    {
        ZOR_DriveOptions options;
        ZOR_DriveTrack track;
        ZOR_DriveSummary summary;
        QVector<double> latitudes;
        QVector<double> longitudes;
        QVector<double> speeds;
        QVector<int> breaks;
        QVector<int> stops;
        QString qsProblem;
    };
    std::shared_ptr<const Loaded> drive() const { return m_loaded; }

    ZOR_TmiTrackView* view() const { return m_lpView; }
    ZOR_TmiTileSource* tiles() const { return m_lpTiles; }
    QString statusText() const;
    void retranslate();

signals:
    void signal_RecordClicked(int nRecord);
    void signal_TrackLoaded();

private:
    static std::shared_ptr<Loaded> loadTrack(
        const QString& qsFile, const ZOR_TmiFieldSet& set, int nRecords, const std::atomic_bool& bStop);
    void slot_clicked_Map();
    void showStatus();

    ZOR_TmiColumnStore* m_lpStore = nullptr;
    ZOR_TmiTrackView* m_lpView;
    ZOR_TmiTileSource* m_lpTiles;
    QToolButton* m_lpMap;
    QToolButton* m_lpReset;
    QLabel* m_lpStatus;
    QString m_qsTrackProblem;
    QThread* m_lpThread = nullptr;
    std::shared_ptr<Loaded> m_loaded;
    bool m_bAgain = false;
    // Tells a reading that its result is no longer wanted.
    std::atomic_bool m_bStop{false};
};

#endif
