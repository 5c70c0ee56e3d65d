#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QColor>
#include <QtQuick/QQuickPaintedItem>

#include <memory>

namespace OrvantaQT {

struct PieChartPainter;

// PieChart for QML ("PieChart" of Orvanta.Controls 1.0), drawn by the same code as the
// widget: one value against a maximum as a slice from 12 o'clock, clockwise, over a
// ring. color paints the slice and the outline, ringColor the ring (the widget takes
// its palette's window text and window; so do these by default). innerSize is the hole:
// negative, a percentage of the diameter; 0, none; positive, pixels. The ring sits at
// the top left of an item that is not square.
class QT_HALVO_EXPORT PieChartItem : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum NOTIFY maximumChanged)
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    Q_PROPERTY(int innerSize READ innerSize WRITE setInnerSize NOTIFY innerSizeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(QColor ringColor READ ringColor WRITE setRingColor NOTIFY ringColorChanged)

public:
    explicit PieChartItem(QQuickItem* parent = nullptr);
    ~PieChartItem() override;

    int value() const;
    void setValue(int value);
    int maximum() const;
    void setMaximum(int maximum);
    int borderWidth() const;
    void setBorderWidth(int width);
    int innerSize() const;
    void setInnerSize(int size);
    QColor color() const;
    void setColor(const QColor& color);
    QColor ringColor() const;
    void setRingColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void valueChanged();
    void maximumChanged();
    void borderWidthChanged();
    void innerSizeChanged();
    void colorChanged();
    void ringColorChanged();

private:
    QColor m_color;
    QColor m_ringColor;
    std::unique_ptr<PieChartPainter> m_painter;
};

} // namespace OrvantaQT
