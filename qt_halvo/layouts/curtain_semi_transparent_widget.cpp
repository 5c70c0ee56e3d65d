#include <qt_halvo/layouts/curtain_semi_transparent_widget.h>

#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/animation/show_hide_machine_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include "cover_p.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

namespace OrvantaQT {

CurtainSemiTransparentWidget::CurtainSemiTransparentWidget(QWidget* container, int duration)
    : QWidget(container)
    , m_container(container)
{
    setVisible(false);
    if (!container) {
        QTH_LOG_ERROR("CurtainSemiTransparentWidget: no container to shade; the shade stays hidden");
        return;
    }
    if (duration < 0) {
        QTH_LOG_WARNING("CurtainSemiTransparentWidget: a negative duration (%d ms) is ignored; the fade takes 250 ms",
                        duration);
        duration = 250;
    }
    setFocusPolicy(Qt::StrongFocus);
    container->installEventFilter(this);
    m_fade = new AnimatedOpacityEffect(this, duration, 0.0, 1.0, this, duration, true);
    m_machine = std::make_unique<ShowHideMachine>(
        this, nullptr, ShowHideMachine::Ends{m_fade, SIGNAL(FinishedForward()), SIGNAL(FinishedBackward())},
        QVector<AnimatedStateMachine::Assignment>{}, QVector<AnimatedStateMachine::Assignment>{});
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { KeepFocusOut(now); });
}

CurtainSemiTransparentWidget::~CurtainSemiTransparentWidget() = default;

QColor CurtainSemiTransparentWidget::GetColor() const
{
    return m_color;
}

void CurtainSemiTransparentWidget::SetColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

bool CurtainSemiTransparentWidget::IsShadeShown() const
{
    return m_machine && m_machine->IsShown();
}

void CurtainSemiTransparentWidget::ShowShade()
{
    SetShadeShown(true);
}

void CurtainSemiTransparentWidget::HideShade()
{
    SetShadeShown(false);
}

void CurtainSemiTransparentWidget::SetShadeShown(bool shown)
{
    if (m_machine)
        m_machine->Request(shown);
}

void CurtainSemiTransparentWidget::Cover()
{
    if (m_container)
        setGeometry(m_container->rect());
}

void CurtainSemiTransparentWidget::Appear()
{
    show();
    Cover();
    raise();
    KeepFocusOut(QApplication::focusWidget());
}

// Focus that goes into the container goes to the shade; where it was going is where it
// goes back to when the shade has gone.
void CurtainSemiTransparentWidget::KeepFocusOut(QWidget* now)
{
    if (!now || isHidden() || now == this || !m_container || !m_container->isAncestorOf(now))
        return;
    m_focusBefore = now;
    setFocus(Qt::OtherFocusReason);
}

void CurtainSemiTransparentWidget::OnShowingEntered()
{
    Appear();
    m_fade->PlayForward();
}

void CurtainSemiTransparentWidget::OnShownEntered()
{
    if (isHidden())
        Appear();
    Q_EMIT Shown();
    Q_EMIT Shown(true);
}

void CurtainSemiTransparentWidget::OnShownExited()
{
    Q_EMIT Shown(false);
}

void CurtainSemiTransparentWidget::OnHidingEntered()
{
    m_fade->PlayBackward();
}

void CurtainSemiTransparentWidget::OnHiddenEntered()
{
    const bool hadFocus = hasFocus();
    hide();
    if (hadFocus && m_focusBefore)
        m_focusBefore->setFocus(Qt::OtherFocusReason);
    m_focusBefore = nullptr;
    Q_EMIT Hidden();
    Q_EMIT Hidden(true);
}

void CurtainSemiTransparentWidget::OnHiddenExited()
{
    Q_EMIT Hidden(false);
}

bool CurtainSemiTransparentWidget::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        // Taken here, so that it does not reach the container through the parent chain.
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

bool CurtainSemiTransparentWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_container) {
        if (event->type() == QEvent::Resize)
            Cover();
        StackNewChildUnder(this, event);
    }
    return QWidget::eventFilter(watched, event);
}

void CurtainSemiTransparentWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_color);
}

bool CurtainSemiTransparentWidget::focusNextPrevChild(bool)
{
    // Tab would lead into the covered widgets.
    return true;
}

} // namespace OrvantaQT
