#include <qt_halvo/animation/expand_animation.h>

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

// Size policies and the style property of one state of the widget.
void Present(QWidget* widget, QSizePolicy::Policy horizontal, QSizePolicy::Policy vertical, const char* expandState)
{
    widget->setSizePolicy(horizontal, vertical);
    SetStyleProperty(widget, "ExpandState", QString::fromLatin1(expandState), true);
}

} // namespace

ExpandAnimation::ExpandAnimation(QWidget* widget, QObject* parent, Qt::Orientations orientations, int duration)
    : QObject(parent)
    , m_widget(widget)
    , m_parentWidget(widget ? widget->parentWidget() : nullptr)
    , m_duration(duration)
    , m_orientations(orientations)
{
    if (!widget) {
        QTH_LOG_ERROR("ExpandAnimation: no widget to expand; the animation does nothing");
        return;
    }
    if (m_parentWidget) {
        m_parentWidget->installEventFilter(this);
        if (QLayout* layout = m_parentWidget->layout()) {
            const QMargins margins = layout->contentsMargins();
            m_leftMargin = margins.left();
            m_topMargin = margins.top();
            m_rightMargin = margins.right();
            m_bottomMargin = margins.bottom();
            if (auto* box = qobject_cast<QBoxLayout*>(layout))
                box->setStretchFactor(widget, 1);
        }
    } else {
        QTH_LOG_WARNING("ExpandAnimation: the widget has no parent to expand into");
    }
    m_animation = new QPropertyAnimation(widget, "geometry");
    m_animation->setDuration(duration);
    m_animation->setEasingCurve(QEasingCurve::OutCubic);
    UpdateSizeRange();
    connect(m_animation, &QPropertyAnimation::stateChanged, this, &ExpandAnimation::ProcessAnimationStateChanged);
}

ExpandAnimation::~ExpandAnimation()
{
    delete m_animation;
}

bool ExpandAnimation::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        UpdateSizeRange();
    return QObject::eventFilter(watched, event);
}

void ExpandAnimation::DoExpand()
{
    if (m_state == State::Expanded || !m_widget)
        return;
    m_state = State::Expanded;
    Present(m_widget, m_orientations & Qt::Horizontal ? QSizePolicy::Preferred : QSizePolicy::Fixed,
            m_orientations & Qt::Vertical ? QSizePolicy::Fixed : QSizePolicy::Preferred, "Expanded");
    m_animation->start();
}

void ExpandAnimation::DoCollapse()
{
    if (m_state == State::Collapsed || !m_widget)
        return;
    m_state = State::Collapsed;
    const bool wasRunning = m_animation->state() == QAbstractAnimation::Running;
    if (wasRunning)
        m_animation->stop(); // reaches ProcessAnimationStateChanged() through stateChanged
    m_widget->setGeometry(m_collapsedRect);
    if (!wasRunning)
        ProcessAnimationStateChanged();
}

void ExpandAnimation::SetExpandedState()
{
    if (m_state == State::Expanded || !m_widget)
        return;
    m_state = State::Expanded;
    m_widget->setGeometry(m_expandedRect);
    ProcessAnimationStateChanged();
}

void ExpandAnimation::UpdateSizeRange()
{
    if (!m_widget)
        return;
    m_collapsedRect = m_widget->geometry();
    QRect available = m_parentWidget ? m_parentWidget->contentsRect() : m_collapsedRect;
    available.adjust(m_leftMargin, m_topMargin, -m_rightMargin, -m_bottomMargin);

    m_expandedRect = m_collapsedRect;
    if (m_orientations & Qt::Horizontal) {
        m_expandedRect.setLeft(available.left());
        m_expandedRect.setWidth(available.width());
    }
    if (m_orientations & Qt::Vertical) {
        m_expandedRect.setTop(available.top());
        m_expandedRect.setHeight(available.height());
    }
    m_animation->setStartValue(m_collapsedRect);
    m_animation->setEndValue(m_expandedRect);
}

void ExpandAnimation::ProcessAnimationStateChanged()
{
    if (!m_widget || m_animation->state() != QAbstractAnimation::Stopped)
        return;
    switch (m_state) {
    case State::Expanded:
        Present(m_widget, m_orientations & Qt::Horizontal ? QSizePolicy::Expanding : QSizePolicy::Fixed,
                m_orientations & Qt::Vertical ? QSizePolicy::Fixed : QSizePolicy::Expanding, "Expanded");
        Q_EMIT ExpandFinished();
        break;
    case State::Collapsed:
        Present(m_widget, QSizePolicy::Fixed, QSizePolicy::Fixed, "Collapsed");
        Q_EMIT CollapseFinished();
        break;
    case State::NotSet:
        break;
    }
}

} // namespace OrvantaQT
