#include <qt_halvo/layouts/curtain_widget.h>

#include <qt_halvo/animation/show_hide_machine_p.h>
#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include "cover_p.h"

#include <QtCore/QEvent>
#include <QtCore/QPropertyAnimation>
#include <QtGui/QPainter>
#include <QtWidgets/QStyleOption>

namespace OrvantaQT {

CurtainWidget::CurtainWidget(QWidget* container)
    : QWidget(container)
    , m_container(container)
{
    setVisible(false);
    if (!container) {
        QTH_LOG_ERROR("CurtainWidget: no container to cover; the curtain stays hidden");
        return;
    }
    container->installEventFilter(this);
    m_animation = new QPropertyAnimation(this, "position", this);
    m_animation->setEasingCurve(QEasingCurve::OutCubic);
    ApplyDuration();
    m_machine = std::make_unique<ShowHideMachine>(this, m_animation, ShowHideMachine::Ends{},
                                                  QVector<AnimatedStateMachine::Assignment>{{this, "position", 1.0}},
                                                  QVector<AnimatedStateMachine::Assignment>{{this, "position", 0.0}});
}

CurtainWidget::~CurtainWidget() = default;

void CurtainWidget::SetContent(QWidget* content)
{
    if (content == m_content)
        return;
    delete m_content;
    m_content = content;
    if (!content)
        return;
    content->setParent(this);
    content->setGeometry(rect());
    if (!m_snapshot.isNull())
        TakeSnapshot();
    content->setVisible(m_snapshot.isNull());
}

QWidget* CurtainWidget::Content() const
{
    return m_content;
}

Qt::Edge CurtainWidget::GetEdge() const
{
    return m_edge;
}

void CurtainWidget::SetEdge(Qt::Edge edge)
{
    if (edge != Qt::TopEdge && edge != Qt::BottomEdge) {
        QTH_LOG_WARNING("CurtainWidget: a curtain comes from the top or the bottom edge; edge %d is ignored",
                        static_cast<int>(edge));
        return;
    }
    if (edge == m_edge)
        return;
    m_edge = edge;
    Place();
    update();
}

int CurtainWidget::GetDuration() const
{
    return m_duration;
}

void CurtainWidget::SetDuration(int duration)
{
    if (duration < 0) {
        QTH_LOG_WARNING("CurtainWidget: a negative duration (%d ms) is ignored", duration);
        return;
    }
    m_duration = duration;
    ApplyDuration();
}

QEasingCurve CurtainWidget::GetEasing() const
{
    return m_animation ? m_animation->easingCurve() : QEasingCurve();
}

void CurtainWidget::SetEasing(const QEasingCurve& easing)
{
    if (m_animation)
        m_animation->setEasingCurve(easing);
}

qreal CurtainWidget::GetPosition() const
{
    return m_position;
}

void CurtainWidget::SetPosition(qreal position)
{
    position = qBound<qreal>(0, position, 1);
    if (qFuzzyCompare(position + 1, m_position + 1))
        return;
    m_position = position;
    Place();
    update();
}

bool CurtainWidget::IsCurtainShown() const
{
    return m_machine && m_machine->IsShown();
}

void CurtainWidget::ShowCurtain()
{
    SetCurtainShown(true);
}

void CurtainWidget::HideCurtain()
{
    SetCurtainShown(false);
}

void CurtainWidget::SetCurtainShown(bool shown)
{
    if (m_machine)
        m_machine->Request(shown);
}

void CurtainWidget::OnShowingEntered()
{
    show();
    raise();
    if (m_snapshot.isNull()) {
        // Children never shown are not rendered, and they are shown for the first time only
        // with a shown parent; nothing is painted before the event loop runs again.
        if (m_content)
            m_content->show();
        TakeSnapshot();
    }
    if (m_content)
        m_content->hide();
    Place();
}

void CurtainWidget::OnShownEntered()
{
    m_snapshot = QPixmap();
    Place();
    if (m_content)
        m_content->show();
    show();
    raise();
    update();
    Q_EMIT Shown();
    Q_EMIT Shown(true);
}

void CurtainWidget::OnShownExited()
{
    Q_EMIT Shown(false);
}

void CurtainWidget::OnHidingEntered()
{
    if (m_snapshot.isNull())
        TakeSnapshot();
    if (m_content)
        m_content->hide();
    update();
}

void CurtainWidget::OnHiddenEntered()
{
    hide();
    m_snapshot = QPixmap();
    Q_EMIT Hidden();
    Q_EMIT Hidden(true);
}

void CurtainWidget::OnHiddenExited()
{
    Q_EMIT Hidden(false);
}

bool CurtainWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_container) {
        if (event->type() == QEvent::Resize) {
            if (!m_snapshot.isNull())
                TakeSnapshot();
            Place();
        }
        StackNewChildUnder(this, event);
    }
    return QWidget::eventFilter(watched, event);
}

void CurtainWidget::ApplyDuration()
{
    if (m_animation)
        m_animation->setDuration(WidgetAnimationsEnabled(this) ? m_duration : 0);
}

void CurtainWidget::Place()
{
    if (!m_container)
        return;
    const QRect area = m_container->rect();
    const int covered = qRound(m_position * area.height());
    QRect band = area;
    if (m_edge == Qt::TopEdge)
        band.setHeight(covered);
    else
        band.setTop(area.bottom() + 1 - covered);
    setGeometry(band);
}

void CurtainWidget::TakeSnapshot()
{
    if (!m_container)
        return;
    const QSize size = m_container->size();
    const qreal ratio = devicePixelRatioF();
    QPixmap snapshot(size * ratio);
    snapshot.setDevicePixelRatio(ratio);
    snapshot.fill(Qt::transparent);
    {
        QPainter painter(&snapshot);
        PaintBackground(&painter, QRect(QPoint(0, 0), size));
    }
    if (m_content) {
        m_content->setGeometry(QRect(QPoint(0, 0), size));
        m_content->render(&snapshot, QPoint(0, 0), QRegion(), QWidget::DrawChildren);
    }
    m_snapshot = snapshot;
}

void CurtainWidget::PaintBackground(QPainter* painter, const QRect& rect)
{
    if (!testAttribute(Qt::WA_StyleSheetTarget))
        painter->fillRect(rect, palette().window());
    QStyleOption option;
    option.initFrom(this);
    option.rect = rect;
    style()->drawPrimitive(QStyle::PE_Widget, &option, painter, this);
}

void CurtainWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_snapshot.isNull()) {
        PaintBackground(&painter, rect());
        return;
    }
    // The edge of the curtain that leads comes into sight first.
    const int logicalHeight = qRound(m_snapshot.height() / m_snapshot.devicePixelRatio());
    const int top = m_edge == Qt::TopEdge ? height() - logicalHeight : 0;
    painter.drawPixmap(0, top, m_snapshot);
}

void CurtainWidget::resizeEvent(QResizeEvent* event)
{
    if (m_content && m_snapshot.isNull())
        m_content->setGeometry(rect());
    QWidget::resizeEvent(event);
}

void CurtainWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::StyleChange)
        ApplyDuration();
    QWidget::changeEvent(event);
}

} // namespace OrvantaQT
