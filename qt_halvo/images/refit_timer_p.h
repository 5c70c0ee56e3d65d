// When a widget's picture, asked for at the widget's size and pixel ratio, is asked for
// again: once a burst of resizes or a move to a screen of another ratio has settled at
// other values. Each answer costs a decode, and a dragged window edge resizes many times.
#pragma once

#include <QtCore/QSize>
#include <QtCore/QTimer>

#include <functional>

class QWidget;

namespace OrvantaQT {

class RefitTimer : public QObject
{
public:
    static constexpr int kDelay = 120;

    // refit runs on the widget's thread once things settled, if they still differ.
    RefitTimer(QWidget* widget, std::function<void()> refit);

    // The widget's size and ratio now are what the picture is asked for at.
    void Asked();
    QSize AskedSize() const { return m_size; }
    qreal AskedRatio() const { return m_ratio; }
    bool Differs() const;

    // After a resize or a paint: waits again while the widget differs.
    void Check();
    void Stop() { m_timer.stop(); }
    bool IsWaiting() const { return m_timer.isActive(); }

private:
    QWidget* m_widget;
    std::function<void()> m_refit;
    QTimer m_timer;
    QSize m_size;
    qreal m_ratio = 0;
};

} // namespace OrvantaQT
