#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QVector>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// A ring of dots, one of them bright and the ones behind it fading, that turns while
// something is busy. Painted by hand, so it is sharp at any device pixel ratio. Its timer
// runs only while it is running and visible (not while hidden, on a hidden page, or in a
// minimised window); with the style's animations off (QStyle::SH_Widget_Animate) the ring
// stands still. Screen readers see an animation, named "Busy" unless given a name.
class QT_HALVO_EXPORT BusyIndicatorRing : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool running READ IsRunning WRITE SetRunning)
    Q_PROPERTY(QColor color READ GetColor WRITE SetColor)
    Q_PROPERTY(int thickness READ GetThickness WRITE SetThickness)
    Q_PROPERTY(int period READ GetPeriod WRITE SetPeriod)

public:
    // Dots around the ring, and so steps per turn.
    static constexpr int kDots = 12;

    explicit BusyIndicatorRing(QWidget* parent = nullptr);
    ~BusyIndicatorRing() override;

    bool IsRunning() const;
    // Invalid: the palette's highlight colour.
    QColor GetColor() const;
    // Diameter of a dot in pixels; 0 (the default) sizes the dots from the ring.
    int GetThickness() const;
    // Of one turn, in ms; 1000 by default.
    int GetPeriod() const;
    // The bright dot, 0 to kDots - 1, clockwise from the top.
    int CurrentStep() const;
    // Whether its timer runs now.
    bool IsAnimating() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void Start();
    void Stop();
    void SetRunning(bool running);
    void SetColor(const QColor& color);
    void SetThickness(int thickness);
    void SetPeriod(int period);

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void UpdateTimer();
    void UpdateDots();
    void UpdateShades();

    bool m_running = true;
    QColor m_color;
    int m_thickness = 0;
    int m_period = 1000;
    int m_step = 0;
    QBasicTimer m_timer;
    QVector<QRectF> m_dots;
    // The colour of the dot i steps behind the bright one.
    QVector<QColor> m_shades;
};

} // namespace OrvantaQT
