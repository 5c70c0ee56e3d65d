#include <qt_halvo/animation/collapsing_pane.h>

#include "animated_state_machine_p.h"
#include "expand_collapse_transitions_p.h"

#include <qt_halvo/utilities/hidpi_utils.h>

#include <QtCore/QPropertyAnimation>
#include <QtCore/QState>
#include <QtCore/QStateMachine>
#include <QtGui/QPixmap>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace OrvantaQT {

namespace {

constexpr QEasingCurve::Type kDefaultEasing = QEasingCurve::OutQuart;
constexpr unsigned int kDefaultDuration = 700;

template <typename Apply>
void ForBoth(QPropertyAnimation* first, QPropertyAnimation* second, Apply apply)
{
    for (QPropertyAnimation* animation : {first, second}) {
        if (animation)
            apply(animation);
    }
}

} // namespace

CollapsingPane::CollapsingPane(QWidget* parent)
    : QWidget(parent)
    , m_fakeWidget(new QLabel(this))
{
    m_fakeWidget->hide();
    QWidget::setVisible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetDefaultConstraint);
    InitStateMachine();
}

CollapsingPane::~CollapsingPane()
{
    // The animations have no parent; the machine, which lists them, goes first.
    delete m_machine->Machine();
    delete m_maximumHeightAnimation;
    delete m_minimumHeightAnimation;
}

QWidget* CollapsingPane::widget() const
{
    return m_widget;
}

bool CollapsingPane::GetInitiallyOpened() const
{
    return m_initiallyOpened;
}

void CollapsingPane::SetInitiallyOpened(bool opened)
{
    m_initiallyOpened = opened;
    if (IsMachineRunning())
        setVisible(m_initiallyOpened);
}

void CollapsingPane::ResetInitiallyOpened()
{
    SetInitiallyOpened(false);
}

QEasingCurve::Type CollapsingPane::GetEasing() const
{
    return m_easing;
}

void CollapsingPane::SetEasing(QEasingCurve::Type easing)
{
    m_easing = easing;
    ForBoth(m_maximumHeightAnimation, m_minimumHeightAnimation, [easing](QPropertyAnimation* animation) { animation->setEasingCurve(QEasingCurve(easing)); });
}

void CollapsingPane::ResetEasing()
{
    SetEasing(kDefaultEasing);
}

unsigned int CollapsingPane::GetDuration() const
{
    return m_duration;
}

void CollapsingPane::SetDuration(unsigned int duration)
{
    m_duration = duration;
    ForBoth(m_maximumHeightAnimation, m_minimumHeightAnimation, [duration](QPropertyAnimation* animation) { animation->setDuration(static_cast<int>(duration)); });
}

void CollapsingPane::ResetDuration()
{
    SetDuration(kDefaultDuration);
}

void CollapsingPane::setVisible(bool visible)
{
    Request(visible, &CollapsingPane::DoShow, &CollapsingPane::DoHide);
}

void CollapsingPane::setWidget(QWidget* widget)
{
    if (widget == m_widget)
        return;
    if (m_widget)
        m_widget->deleteLater();
    m_widget = widget;
    if (!widget)
        return;
    widget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    widget->setParent(this);
    layout()->addWidget(widget);
    AdjustHeight();
}

void CollapsingPane::setExpanded(bool expanded)
{
    Request(expanded, &CollapsingPane::DoExpand, &CollapsingPane::DoCollapse);
}

void CollapsingPane::setCollapsed(bool collapsed)
{
    setExpanded(!collapsed);
}

void CollapsingPane::reverseState()
{
    Q_EMIT ReverseState();
}

void CollapsingPane::AdjustHeight()
{
    const int height = GetWidgetHeight();
    m_machine->SetAssignment(m_openingState, {this, "maximumHeight", height});
    m_machine->SetAssignment(m_openingState, {this, "minimumHeight", height});
}

void CollapsingPane::collapse()
{
    setExpanded(false);
}

void CollapsingPane::expand()
{
    setExpanded(true);
}

void CollapsingPane::OnClosedStateEntered()
{
    QWidget::setVisible(false);
    setFixedHeight(0);
    Q_EMIT Collapsed();
    Q_EMIT Collapsed(true);
}

void CollapsingPane::OnClosedStateExited()
{
    QWidget::setVisible(true);
    ShowFakeWidget();
    AdjustHeight();
    Q_EMIT Collapsed(false);
}

void CollapsingPane::OnOpenedStateEntered()
{
    setMinimumHeight(0);
    setMaximumHeight(QWIDGETSIZE_MAX);
    HideFakeWidget();
    QWidget::setVisible(true);
    Q_EMIT Expanded();
    Q_EMIT Expanded(true);
}

void CollapsingPane::OnOpenedStateExited()
{
    setFixedHeight(GetWidgetHeight());
    ShowFakeWidget();
    Q_EMIT Expanded(false);
}

void CollapsingPane::OnInitialStateEntered()
{
    if (m_initiallyOpened)
        Q_EMIT DoShow();
    else
        Q_EMIT DoHide();
}

int CollapsingPane::GetWidgetHeight() const
{
    if (!m_widget)
        return 0;
    const int minimumHeight = m_widget->minimumSize().height();
    return minimumHeight != 0 ? minimumHeight : m_widget->sizeHint().height();
}

void CollapsingPane::ShowFakeWidget()
{
    if (!m_widget)
        return;
    layout()->removeWidget(m_widget);
    m_widget->hide();
    const QSize size(width(), GetWidgetHeight());
    m_widget->resize(size);
    m_fakeWidget->setPixmap(GrabHiDpiPixmap(m_widget));
    m_fakeWidget->resize(size);
    m_fakeWidget->show();
}

void CollapsingPane::HideFakeWidget()
{
    if (!m_widget)
        return;
    m_fakeWidget->hide();
    layout()->addWidget(m_widget);
    m_widget->show();
}

void CollapsingPane::InitStateMachine()
{
    m_machine = std::make_unique<AnimatedStateMachine>(this);
    AnimatedStateMachine& machine = *m_machine;
    const auto toZero = {AnimatedStateMachine::Assignment{this, "maximumHeight", 0},
                         AnimatedStateMachine::Assignment{this, "minimumHeight", 0}};
    m_initialState = machine.AddState("InitialState");
    m_openedState = machine.AddState("OpenedState");
    m_openingState = machine.AddState("OpeningState", toZero);
    m_closingState = machine.AddState("ClosingState", toZero);
    m_closedState = machine.AddState("ClosedState");
    m_closedAfterState = machine.AddState("ClosedStateAfter");

    AddExpandCollapseTransitions(machine, this,
                                 {m_initialState, m_openedState, m_openingState, nullptr, m_closingState, m_closedState,
                                  m_closedAfterState});
    InitAnimation();
    machine.Start(m_initialState);
}

void CollapsingPane::InitAnimation()
{
    QStateMachine* machine = m_machine->Machine();
    const auto makeAnimation = [this, machine](const char* property) {
        auto* animation = new QPropertyAnimation(this, property);
        animation->setEasingCurve(QEasingCurve(m_easing));
        animation->setDuration(static_cast<int>(m_duration));
        machine->addDefaultAnimation(animation);
        return animation;
    };
    m_maximumHeightAnimation = makeAnimation("maximumHeight");
    connect(m_maximumHeightAnimation, &QPropertyAnimation::valueChanged, this,
            &CollapsingPane::EmitExpandingWhileMoving);
    m_minimumHeightAnimation = makeAnimation("minimumHeight");
}

void CollapsingPane::Request(bool opened, void (CollapsingPane::*open)(), void (CollapsingPane::*close)())
{
    if (!IsMachineRunning()) {
        m_initiallyOpened = opened;
        return;
    }
    Q_EMIT(this->*(opened ? open : close))();
}

bool CollapsingPane::IsMachineRunning() const
{
    return m_machine->Machine()->isRunning();
}

void CollapsingPane::EmitExpandingWhileMoving()
{
    if (m_machine->IsInAnyOf({m_openingState, m_openedState, m_closingState, m_closedState}))
        Q_EMIT Expanding();
}

} // namespace OrvantaQT
