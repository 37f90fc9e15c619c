#ifndef ZOR_TMI_TRACKVIEW_H
#define ZOR_TMI_TRACKVIEW_H

// Where the vehicle was: the positions of the records with a valid fix as a
// line coloured by speed (a record without a fix breaks the line), with
// start, end and stop markers, on map tiles when a tile source is set and
// on a graticule otherwise, with a scale bar. Web Mercator, as the tiles.
// The wheel zooms around the pointer, a drag pans, a click selects the
// nearest record.

#include <QPointF>
#include <QVector>
#include <QWidget>

class ZOR_TmiTileSource;

class ZOR_TmiTrackView : public QWidget
{
    Q_OBJECT
public:
    explicit ZOR_TmiTrackView(QWidget* parent = nullptr);

    // Per record: latitude and longitude in degrees and speed in km/h, NaN
    // latitude where the record has no valid fix; the line also breaks
    // before the records listed (gaps).
    void setTrack(const QVector<double>& latitudes, const QVector<double>& longitudes, const QVector<double>& speeds,
        const QVector<int>& breaksBefore = QVector<int>());
    // Records where the vehicle stood.
    void setStops(const QVector<int>& records);
    int pointCount() const { return m_records.size(); }
    void setTileSource(ZOR_TmiTileSource* lpSource);

    void resetView();
    void zoomAt(double dFactor, const QPointF& at);
    double zoom() const { return m_dZoom; }
    // The record whose position is nearest a widget point; -1 when none.
    int recordAt(const QPointF& at) const;
    // Where a record is drawn; false without a fix.
    bool pointOf(int nRecord, QPointF& at) const;
    int selectedRecord() const { return m_nSelected; }
    // Marks a record (kept in view); no signal.
    void setSelectedRecord(int nRecord);
    // Metres a pixel covers at the centre.
    double metresPerPixel() const;

signals:
    void signal_RecordClicked(int nRecord);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    double scale() const;
    QPointF toScreen(const QPointF& world) const;
    QPointF toWorld(const QPointF& screen) const;
    void paintTiles(QPainter& p);
    void paintGraticule(QPainter& p) const;
    void paintTrack(QPainter& p) const;
    void paintMarkers(QPainter& p) const;
    void paintScaleBar(QPainter& p) const;
    void paintLegend(QPainter& p) const;

    // Positions in Web Mercator world units (0..1) and their records.
    QVector<QPointF> m_world;
    QVector<int> m_records;
    QVector<float> m_speeds;
    QVector<bool> m_breaks; // no line from the point before
    QVector<int> m_stops;
    QVector<int> m_recordPoint; // point of each record, -1 without a fix
    double m_dMaxSpeed = 0;
    ZOR_TmiTileSource* m_lpTiles = nullptr;
    QPointF m_centre{0.5, 0.5};
    double m_dZoom = 1;
    int m_nSelected = -1;
    QPoint m_pressAt;
    QPointF m_pressCentre;
    bool m_bDragging = false;
};

#endif
