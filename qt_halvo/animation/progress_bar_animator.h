#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class QProgressBar;
class QPropertyAnimation;

namespace OrvantaQT {

// Drives a progress bar, as its child: SetValue() moves the bar to the new value with an
// animation (a change during an animation turns round from the bar's current value), and
// SetBusy() switches it to the style's indeterminate sweep and back to the last value.
// The bar's range and text keep working; values outside the range are brought into it.
// With the style's animations off (QStyle::SH_Widget_Animate) values are set at once.
class QT_HALVO_EXPORT ProgressBarAnimator : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int value READ GetValue WRITE SetValue)
    Q_PROPERTY(bool busy READ IsBusy WRITE SetBusy)
    Q_PROPERTY(int duration READ GetDuration WRITE SetDuration)
    Q_PROPERTY(QEasingCurve easing READ GetEasing WRITE SetEasing)

public:
    explicit ProgressBarAnimator(QProgressBar* bar);
    ~ProgressBarAnimator() override;

    // The value the bar shows or is moving to.
    int GetValue() const;
    bool IsBusy() const;
    // Of a change of value, in ms; 400 by default.
    int GetDuration() const;
    void SetDuration(int duration);
    // OutCubic by default.
    QEasingCurve GetEasing() const;
    void SetEasing(const QEasingCurve& easing);

    bool IsAnimating() const;

public Q_SLOTS:
    void SetValue(int value);
    void SetBusy(bool busy);

private:
    QPointer<QProgressBar> m_bar;
    QPropertyAnimation* m_animation = nullptr;
    bool m_busy = false;
    // What the bar shows when it is no longer busy.
    int m_valueAfterBusy = 0;
    // The range the bar had before it was made busy.
    int m_minimum = 0;
    int m_maximum = 100;
};

} // namespace OrvantaQT
