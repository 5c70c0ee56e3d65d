#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QPointer>
#include <QtWidgets/QStackedWidget>

#include <memory>

class QPropertyAnimation;
class QState;

namespace OrvantaQT {

class AnimatedStateMachine;
class CardAnimationWidget;

// A two-page stack, page 0 the opened face and page 1 the closed one, that changes faces
// with a transition: the face being left blurs and fades while the other slides up over
// it. Add the two pages with the stack's own functions. The card starts opened, on page
// 0, once the event loop runs; requests made before then are ignored. The transition
// progress is the dynamic property "card_progress", 0 opened and 100 closed.
class QT_HALVO_EXPORT CardWidget : public QStackedWidget
{
    Q_OBJECT
    Q_PROPERTY(QEasingCurve::Type overlayCurveType READ GetOverlayCurveType WRITE SetOverlayCurveType RESET ResetOverlayCurveType)
    Q_PROPERTY(QEasingCurve::Type blurCurveType READ GetBlurCurveType WRITE SetBlurCurveType RESET ResetBlurCurveType)
    Q_PROPERTY(uint blurRadius READ GetBlurRadius WRITE SetBlurRadius RESET ResetBlurRadius)

public:
    static constexpr QEasingCurve::Type OVERLAY_CURVE_DEFAULT = QEasingCurve::OutQuart;
    static constexpr QEasingCurve::Type BLUR_CURVE_DEFAULT = QEasingCurve::Linear;
    static constexpr unsigned int BLUR_RADIUS_DEFAULT = 30;

    explicit CardWidget(QWidget* parent = nullptr);
    ~CardWidget() override;

    // Each takes effect from the next transition on.
    QEasingCurve::Type GetOverlayCurveType() const;
    void SetOverlayCurveType(QEasingCurve::Type type);
    void ResetOverlayCurveType();
    QEasingCurve::Type GetBlurCurveType() const;
    void SetBlurCurveType(QEasingCurve::Type type);
    void ResetBlurCurveType();
    unsigned int GetBlurRadius() const;
    void SetBlurRadius(unsigned int radius);
    void ResetBlurRadius();

Q_SIGNALS:
    void DoCollapse();
    void DoExpand();
    void DoHide();
    void DoShow();
    void ReverseState();
    // () and then (true) when the card comes to rest on page 1; (false) when it leaves it.
    void Collapsed();
    void Expanded();
    void Collapsed(bool isCollapsed);
    // () and then (true) when the card comes to rest on page 0; (false) when it leaves it.
    void Expanded(bool isExpanded);
    // On every step of the transition, in either direction.
    void Expanding();
    // Declared for hosts that connect to it; the card itself does not emit it.
    void Collapsing();

public Q_SLOTS:
    void setExpanded(bool expanded);
    void setCollapsed(bool collapsed);
    void reverseState();
    void collapse();
    void expand();
    // Stops the card's machine, and with it a transition under way; Resume() starts it
    // afresh, which settles opened.
    void Pause();
    void Resume();

protected Q_SLOTS:
    void OnClosedStateEntered();
    void OnClosedStateExited();
    void OnOpenedStateEntered();
    void OnOpenedStateExited();
    void OnInitialStateEntered();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void InitStateMachine();
    void InitAnimation();
    void StartAnimation(bool opening);
    void StopAnimation(bool opened);
    void RemoveAnimationWidget();
    void EmitExpandingWhileMoving();
    void Request(void (CardWidget::*trigger)());

    std::unique_ptr<AnimatedStateMachine> m_machine;
    QPointer<QState> m_initialState;
    QPointer<QState> m_openedState;
    QPointer<QState> m_openingState;
    QPointer<QState> m_openedAfterState;
    QPointer<QState> m_closingState;
    QPointer<QState> m_closedState;
    QPointer<QState> m_closedAfterState;
    QEasingCurve::Type m_overlayCurveType = OVERLAY_CURVE_DEFAULT;
    QEasingCurve::Type m_blurCurveType = BLUR_CURVE_DEFAULT;
    unsigned int m_blurRadius = BLUR_RADIUS_DEFAULT;
    QPointer<CardAnimationWidget> m_animationWidget;
    QPointer<QPropertyAnimation> m_progressAnimation;
};

} // namespace OrvantaQT
