#include <qt_halvo/animation/card_widget.h>

#include "animated_state_machine_p.h"
#include "expand_collapse_transitions_p.h"

#include <qt_halvo/animation/card_animation_widget.h>
#include <qt_halvo/utilities/hidpi_utils.h>

#include <QtCore/QPropertyAnimation>
#include <QtCore/QState>
#include <QtCore/QStateMachine>

namespace OrvantaQT {

namespace {

constexpr char kProgress[] = "card_progress";
constexpr int kOpeningDuration = 500;
constexpr int kClosingDuration = 600;

} // namespace

CardWidget::CardWidget(QWidget* parent)
    : QStackedWidget(parent)
{
    // Animated and assigned by the machine, so it must exist before either touches it.
    setProperty(kProgress, 0);
    InitStateMachine();
}

CardWidget::~CardWidget()
{
    // The animation has no parent; the machine, which lists it, goes first.
    delete m_machine->Machine();
    delete m_progressAnimation;
}

QEasingCurve::Type CardWidget::GetOverlayCurveType() const
{
    return m_overlayCurveType;
}

void CardWidget::SetOverlayCurveType(QEasingCurve::Type type)
{
    m_overlayCurveType = type;
}

void CardWidget::ResetOverlayCurveType()
{
    m_overlayCurveType = OVERLAY_CURVE_DEFAULT;
}

QEasingCurve::Type CardWidget::GetBlurCurveType() const
{
    return m_blurCurveType;
}

void CardWidget::SetBlurCurveType(QEasingCurve::Type type)
{
    m_blurCurveType = type;
}

void CardWidget::ResetBlurCurveType()
{
    m_blurCurveType = BLUR_CURVE_DEFAULT;
}

unsigned int CardWidget::GetBlurRadius() const
{
    return m_blurRadius;
}

void CardWidget::SetBlurRadius(unsigned int radius)
{
    m_blurRadius = radius;
}

void CardWidget::ResetBlurRadius()
{
    m_blurRadius = BLUR_RADIUS_DEFAULT;
}

void CardWidget::setExpanded(bool expanded)
{
    Request(expanded ? &CardWidget::DoExpand : &CardWidget::DoCollapse);
}

void CardWidget::setCollapsed(bool collapsed)
{
    setExpanded(!collapsed);
}

void CardWidget::reverseState()
{
    Request(&CardWidget::ReverseState);
}

void CardWidget::collapse()
{
    setExpanded(false);
}

void CardWidget::expand()
{
    setExpanded(true);
}

void CardWidget::Pause()
{
    m_machine->Machine()->stop();
    // A stopped machine leaves its animations running; the transition stops with it.
    if (m_progressAnimation)
        m_progressAnimation->stop();
}

void CardWidget::Resume()
{
    m_machine->Machine()->start();
}

void CardWidget::Request(void (CardWidget::*trigger)())
{
    if (m_machine->Machine()->isRunning())
        Q_EMIT(this->*trigger)();
}

void CardWidget::OnClosedStateEntered()
{
    StopAnimation(false);
    Q_EMIT Collapsed();
    Q_EMIT Collapsed(true);
}

void CardWidget::OnClosedStateExited()
{
    StartAnimation(true);
    Q_EMIT Collapsed(false);
}

void CardWidget::OnOpenedStateEntered()
{
    StopAnimation(true);
    Q_EMIT Expanded();
    Q_EMIT Expanded(true);
}

void CardWidget::OnOpenedStateExited()
{
    StartAnimation(false);
    Q_EMIT Expanded(false);
}

void CardWidget::OnInitialStateEntered()
{
    Q_EMIT DoShow();
}

void CardWidget::resizeEvent(QResizeEvent* event)
{
    QStackedWidget::resizeEvent(event);
    // Its pictures have the old size.
    RemoveAnimationWidget();
}

void CardWidget::InitStateMachine()
{
    m_machine = std::make_unique<AnimatedStateMachine>(this);
    AnimatedStateMachine& machine = *m_machine;
    const auto progress = [this](int value) { return AnimatedStateMachine::Assignment{this, kProgress, value}; };
    m_initialState = machine.AddState("InitialState", {progress(0)});
    m_openedState = machine.AddState("OpenedState", {progress(0)});
    m_openingState = machine.AddState("OpeningState", {progress(0)});
    m_openedAfterState = machine.AddState("OpenedStateAfter", {progress(0)});
    m_closingState = machine.AddState("ClosingState", {progress(100)});
    m_closedState = machine.AddState("ClosedState", {progress(100)});
    m_closedAfterState = machine.AddState("ClosedStateAfter", {progress(100)});
    AddExpandCollapseTransitions(machine, this,
                                 {m_initialState, m_openedState, m_openingState, m_openedAfterState, m_closingState,
                                  m_closedState, m_closedAfterState});
    InitAnimation();
    machine.Start(m_initialState);
}

void CardWidget::InitAnimation()
{
    m_progressAnimation = new QPropertyAnimation(this, kProgress);
    m_machine->Machine()->addDefaultAnimation(m_progressAnimation);
    connect(m_progressAnimation, &QPropertyAnimation::valueChanged, this, &CardWidget::EmitExpandingWhileMoving);
}

void CardWidget::StartAnimation(bool opening)
{
    if (count() <= 1)
        return;
    m_progressAnimation->setDuration(opening ? kOpeningDuration : kClosingDuration);
    if (!m_animationWidget) {
        m_animationWidget = new CardAnimationWidget(m_blurRadius, this);
        addWidget(m_animationWidget);
        connect(m_progressAnimation, &QPropertyAnimation::valueChanged, m_animationWidget,
                &CardAnimationWidget::OnProgressChanged);
    }
    QWidget* first = widget(0);
    QWidget* second = widget(1);
    const QSize size = currentWidget()->size();
    first->resize(size);
    second->resize(size);
    m_animationWidget->SetPictures(GrabHiDpiPixmap(first), GrabHiDpiPixmap(second));
    m_animationWidget->SetDuration(m_progressAnimation->duration());
    m_animationWidget->SetOverlayEasing(QEasingCurve(m_overlayCurveType));
    m_animationWidget->SetBlurEasing(QEasingCurve(m_blurCurveType));
    m_animationWidget->SetOpening(opening);
    m_animationWidget->SetProgress(opening ? 100 : 0);
    setCurrentWidget(m_animationWidget);
}

void CardWidget::StopAnimation(bool opened)
{
    setCurrentIndex(opened ? 0 : 1);
    RemoveAnimationWidget();
}

void CardWidget::RemoveAnimationWidget()
{
    if (m_animationWidget)
        m_animationWidget->deleteLater();
}

void CardWidget::EmitExpandingWhileMoving()
{
    if (m_machine->IsInAnyOf({m_openingState, m_openedState, m_closingState, m_closedState}))
        Q_EMIT Expanding();
}

} // namespace OrvantaQT
