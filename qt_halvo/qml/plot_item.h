#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QList>
#include <QtCore/QTimer>
#include <QtGui/QColor>
#include <QtQuick/QQuickPaintedItem>

#include <memory>

namespace OrvantaQT {

struct PlotPainter;

// PlotWidget for QML ("Plot" of Orvanta.Controls 1.0), drawn by the same code as the
// widget: a counter (value) sampled into the history every pollingTimeout ms while
// polling, the newest pointsOnScreen samples drawn as a filled polygon with rounded
// corners that slides left while the period runs (repainted about 60 times a second,
// only while polling and visible). Negative values are told and ignored.
class QT_HALVO_EXPORT PlotItem : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(QList<int> history READ history NOTIFY historyChanged)
    Q_PROPERTY(int radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool showPoly READ showPoly WRITE setShowPoly NOTIFY showPolyChanged)
    Q_PROPERTY(QColor brushColor READ brushColor WRITE setBrushColor NOTIFY brushColorChanged)
    Q_PROPERTY(bool useShading READ useShading WRITE setUseShading NOTIFY useShadingChanged)
    Q_PROPERTY(int minValue READ minValue WRITE setMinValue NOTIFY minValueChanged)
    Q_PROPERTY(int pointsOnScreen READ pointsOnScreen WRITE setPointsOnScreen NOTIFY pointsOnScreenChanged)
    Q_PROPERTY(int pollingTimeout READ pollingTimeout WRITE setPollingTimeout NOTIFY pollingTimeoutChanged)
    Q_PROPERTY(bool polling READ polling WRITE setPolling NOTIFY pollingChanged)

public:
    explicit PlotItem(QQuickItem* parent = nullptr);
    ~PlotItem() override;

    int value() const;
    void setValue(int value);
    QList<int> history() const;
    int radius() const;
    void setRadius(int radius);
    bool showPoly() const;
    void setShowPoly(bool show);
    QColor brushColor() const;
    void setBrushColor(const QColor& color);
    bool useShading() const;
    void setUseShading(bool shading);
    int minValue() const;
    void setMinValue(int value);
    int pointsOnScreen() const;
    void setPointsOnScreen(int points);
    int pollingTimeout() const;
    void setPollingTimeout(int timeout);
    bool polling() const;
    void setPolling(bool polling);

    // Empties the history and sets the value to 0, as the widget's resetValue().
    Q_INVOKABLE void clear();

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void valueChanged();
    void historyChanged();
    void radiusChanged();
    void showPolyChanged();
    void brushColorChanged();
    void useShadingChanged();
    void minValueChanged();
    void pointsOnScreenChanged();
    void pollingTimeoutChanged();
    void pollingChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void Sample();
    void UpdateRefresh(const QQuickWindow* window);
    void Repaint();

    std::unique_ptr<PlotPainter> m_painter;
    QTimer m_pollTimer;
    QTimer m_refreshTimer;
    qreal m_progress = 1.0;
};

} // namespace OrvantaQT
