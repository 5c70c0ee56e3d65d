#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QLineF>
#include <QtGui/QColor>
#include <QtGui/QPainterPath>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <memory>

namespace OrvantaQT {

struct PieChartPainter;

// One value against a maximum as a ring: a slice from 12 o'clock, clockwise, filled with
// the palette's window text over a ring in the palette's window colour, so style sheets
// colour it (select it with [class="pieWidget"]). innerSize is the hole: negative, a
// percentage of the ring's diameter; 0, none; positive, its diameter in pixels. The ring
// sits at the top-left of a widget that is not square. The border colour is kept and
// reported but not painted: the outline takes the window text colour.
class QT_HALVO_EXPORT PieChart : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int value READ value WRITE setValue RESET resetValue)
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum RESET resetMaximum)
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth RESET resetBorderWidth)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor RESET resetBorderColor)
    Q_PROPERTY(int innerSize READ innerSize WRITE setInnerSize RESET resetInnerSize)
    Q_PROPERTY(QString class READ cssClass CONSTANT)

public:
    explicit PieChart(QWidget* parent = nullptr);
    ~PieChart() override;

    int value() const;
    int maximum() const;
    int borderWidth() const;
    QColor borderColor() const;
    int innerSize() const;
    QString cssClass() const;

    // What paintEvent fills, in widget coordinates.
    QPainterPath RingPath() const;
    QPainterPath SlicePath() const;

public Q_SLOTS:
    void setValue(int value);
    void resetValue();
    void setMaximum(int maximum);
    void resetMaximum();
    void setBorderWidth(int width);
    void resetBorderWidth();
    void setBorderColor(QColor color);
    void resetBorderColor();
    void setInnerSize(int size);
    void resetInnerSize();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Invalidate(bool geometry);

    QColor m_borderColor = Qt::black;
    // What is drawn, shared with the QML PieChart.
    std::unique_ptr<PieChartPainter> m_painter;
};

} // namespace OrvantaQT
