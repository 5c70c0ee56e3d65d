#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QList>
#include <QtCore/QTimer>
#include <QtGui/QColor>
#include <QtGui/QPainterPath>
#include <QtGui/QPolygonF>
#include <QtWidgets/QWidget>

#include <memory>

namespace OrvantaQT {

struct PlotPainter;

// A scrolling activity graph: a counter (value) is sampled into a history every polling
// period, and the newest samples are drawn as a filled polygon with rounded corners that
// slides left while the period runs, repainted about 60 times a second while polling.
class QT_HALVO_EXPORT PlotWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int radius READ radius WRITE setRadius RESET resetRadius)
    Q_PROPERTY(bool showPoly READ showPoly WRITE setShowPoly RESET resetShowPoly)
    Q_PROPERTY(QColor brushColor READ brushColor WRITE setBrushColor RESET resetBrushColor)
    Q_PROPERTY(bool useShading READ useShading WRITE setUseShading RESET resetUseShading)
    Q_PROPERTY(int value READ value WRITE setValue RESET resetValue)
    Q_PROPERTY(int minValue READ minValue WRITE setMinValue RESET resetMinValue)
    Q_PROPERTY(int pointsOnScreen READ pointsOnScreen WRITE setPointsOnScreen RESET resetPointsOnScreen)
    Q_PROPERTY(int pollingTimeout READ pollingTimeout WRITE setPollingTimeout RESET resetPollingTimeout)

public:
    explicit PlotWidget(QWidget* parent = nullptr);
    ~PlotWidget() override;

    int radius() const;
    bool showPoly() const;
    QColor brushColor() const;
    bool useShading() const;
    int value() const;
    int minValue() const;
    int pointsOnScreen() const;
    int pollingTimeout() const;
    QList<int> History() const;

    // The polygon of the current frame before scaling, and after it (widget coordinates).
    QPolygonF Polygon(qreal* progress = nullptr) const;
    QPolygonF MappedPolygon() const;

    // p's corners rounded with radius r; logged and empty below three points.
    static QPainterPath RoundedPath(const QPolygonF& polygon, int radius);

Q_SIGNALS:
    void DebugEvents(const QString& text);

public Q_SLOTS:
    void setRadius(int radius);
    void resetRadius();
    void setShowPoly(bool show);
    void resetShowPoly();
    void setBrushColor(QColor color);
    void resetBrushColor();
    void setUseShading(bool shading);
    void resetUseShading();
    void setValue(int value);
    void resetValue();
    void setMinValue(int value);
    void resetMinValue();
    void setPointsOnScreen(int points);
    void resetPointsOnScreen();
    void setPollingTimeout(int timeout);
    void resetPollingTimeout();
    void startPolling(bool enable);

protected:
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void onTimer();
    void onRefresh();

private:
    qreal Progress() const;

    // What is drawn, shared with the QML Plot.
    std::unique_ptr<PlotPainter> m_painter;
    QTimer m_pollTimer;
    QTimer m_refreshTimer;
};

} // namespace OrvantaQT
