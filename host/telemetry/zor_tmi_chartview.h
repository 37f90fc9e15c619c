#ifndef ZOR_TMI_CHARTVIEW_H
#define ZOR_TMI_CHARTVIEW_H

// Series of an archive's values against record time (or record number when
// the records carry no time), drawn with QPainter: per pixel column the
// minimum and maximum of the records that fall in it, from each series'
// envelope summary, so a million records draw as fast as a thousand; close
// in, the records themselves. Each unit gets its own vertical axis. The
// wheel zooms around the pointer, a drag pans, the strip along the bottom
// shows the whole archive with the visible part framed (click or drag there
// to move it). A click puts the cursor on the nearest record and says so;
// setCursorRecord moves it without a signal.

#include "zor_tmi_envelope.h"

#include <QColor>
#include <QWidget>

#include <memory>
#include <vector>

class ZOR_TmiChartView : public QWidget
{
    Q_OBJECT
public:
    explicit ZOR_TmiChartView(QWidget* parent = nullptr);
    ~ZOR_TmiChartView() override;

    // The record times (UTC seconds); empty: records are placed by number.
    // A time that goes back is drawn at the latest time before it. Removes
    // every series and shows the whole archive.
    void setRecords(int nRecords, const QVector<double>& times);
    int recordCount() const { return m_nRecords; }
    bool isTimeAxis() const { return !m_xs.isEmpty(); }

    // One value per record, NaN where a record has none.
    void addSeries(int nKey, const QString& qsCaption, const QString& qsUnit, const QVector<double>& values);
    void removeSeries(int nKey);
    bool hasSeries(int nKey) const;
    int seriesCount() const { return int(m_series.size()); }
    qint64 summaryBytes() const;

    double visibleFrom() const { return m_dFrom; }
    double visibleTo() const { return m_dTo; }
    void setVisibleRange(double dFrom, double dTo);
    void resetView();
    // Zooms by a factor (below 1 zooms in) around plot pixel nX.
    void zoomAt(double dFactor, int nX);
    void panPixels(int nDx);

    int cursorRecord() const { return m_nCursor; }
    void setCursorRecord(int nRecord);
    // The area the series are drawn in, in widget coordinates.
    QRect plotRect() const;
    // What a pixel column of the plot shows of a series (by position in
    // the order added): the records in it and their minimum and maximum.
    bool columnEnvelope(int nSeries, int nColumn, int& nFirst, int& nLast, double& dMin, double& dMax) const;
    int recordAt(int nX) const;

signals:
    void signal_CursorChanged(int nRecord);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Series;
    struct Axis;
    double xOf(int nRecord) const;
    int firstAtOrAfter(double x) const;
    double xAtPixel(double dPx) const;
    double pixelOf(double x) const;
    QRect overviewRect() const;
    std::vector<Axis> axes(int nFirst, int nLast) const;
    void paintTimeAxis(QPainter& p, const QRect& plot) const;
    void paintValueAxes(QPainter& p, const QRect& plot, const std::vector<Axis>& axes) const;
    void paintSeries(QPainter& p, const QRect& plot, const Series& s, const Axis& axis) const;
    void paintLegend(QPainter& p, const QRect& plot) const;
    void paintOverview(QPainter& p) const;
    void moveOverviewTo(int nX);

    int m_nRecords = 0;
    QVector<double> m_xs;
    std::vector<std::unique_ptr<Series>> m_series;
    double m_dFrom = 0;
    double m_dTo = 1;
    int m_nCursor = -1;
    QPoint m_pressAt;
    double m_dPressFrom = 0;
    bool m_bDragging = false;
    bool m_bInOverview = false;
    // The plot area while a paint runs (it does not change within one).
    QRect m_plot;
    bool m_bPainting = false;
};

#endif
