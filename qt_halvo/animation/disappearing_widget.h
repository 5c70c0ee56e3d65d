#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class QGraphicsOpacityEffect;
class QPropertyAnimation;

namespace OrvantaQT {

class TwoStateAnimator;

// A container that fades itself in and out through an opacity effect. It rests in one
// of two states, invisible (opacity 0 by default) and visible (1), and animates every
// change between them. Until the event loop has run, a request puts it straight into
// the wanted state; without one it starts invisible. The graphics effect is the
// widget's own: once another replaces it, the fading calls log an error and do nothing.
// Qt paints no background beneath children that fill their own (autoFillBackground),
// so faded ones show black there; content should leave its background unfilled, and
// should not hold another graphics effect. Use on the GUI thread only.
class QT_HALVO_EXPORT DisappearingWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int duration READ duration WRITE setDuration)
    Q_PROPERTY(QEasingCurve::Type easing READ easing WRITE setEasing)
    Q_PROPERTY(bool initialyVisible READ initialyVisible WRITE setInitialyVisible)
    Q_PROPERTY(int invisibleOpacity READ getInvisibleOpacity WRITE setInvisibleOpacity)
    Q_PROPERTY(int visibleOpacity READ getVisibleOpacity WRITE setVisibleOpacity)

public:
    explicit DisappearingWidget(QWidget* parent = nullptr);
    ~DisappearingWidget() override;

    // Of the fade, in ms.
    int duration() const;
    QEasingCurve::Type easing() const;
    bool initialyVisible() const;
    // In percent.
    int getInvisibleOpacity() const;
    int getVisibleOpacity() const;

    // Update() for every DisappearingWidget alive.
    static void UpdateAllVisibleWidgets();

    // With a layout, its sizeHint() and its totalMinimumSize().
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    // () and then (true) when a change to the visible state starts; (false) when the
    // widget leaves that state. Likewise for the invisible state.
    void Appeared();
    void Appeared(bool appeared);
    void Disappeared();
    void Disappeared(bool disappeared);
    // A line of text for debugging on each change of state.
    void DebugOutput(const QString& text);

public Q_SLOTS:
    // Makes the opacity effect render the widget anew.
    void Update();
    void setDuration(int duration);
    void setEasing(QEasingCurve::Type type);
    // Before the event loop has run, the state to start in; later, a request like appear().
    void setInitialyVisible(bool value);
    // Clamped to 0..100; shows the next time the state is entered.
    void setInvisibleOpacity(int value);
    void setVisibleOpacity(int value);
    void setAppeared(bool appeared);
    void setDisappeared(bool disappeared);
    void appear();
    void disappear();

private:
    void Rerender();
    // Logs when the effect is gone.
    bool HasEffect(const char* operation) const;
    void ReportStateEntered(bool visible);

    bool m_initialyVisible = false;
    QPropertyAnimation* m_animation = nullptr;
    TwoStateAnimator* m_animator = nullptr;
    // QWidget::setGraphicsEffect() deletes the effect when another one replaces it.
    QPointer<QGraphicsOpacityEffect> m_effect;
};

} // namespace OrvantaQT
