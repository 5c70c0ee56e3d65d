#include <qt_halvo/layouts/resize_grip.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyleOption>

namespace OrvantaQT {

namespace {

// Thickness of an edge strip.
constexpr int EdgeThickness = 6;

bool Opposite(Qt::Edges edges)
{
    return (edges.testFlag(Qt::LeftEdge) && edges.testFlag(Qt::RightEdge))
        || (edges.testFlag(Qt::TopEdge) && edges.testFlag(Qt::BottomEdge));
}

Qt::CursorShape CursorFor(Qt::Edges edges)
{
    const bool horizontal = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool vertical = edges & (Qt::TopEdge | Qt::BottomEdge);
    if (horizontal && vertical) {
        const bool falling = edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge);
        return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
    }
    return horizontal ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

Qt::Corner CornerFor(Qt::Edges edges)
{
    if (edges.testFlag(Qt::TopEdge))
        return edges.testFlag(Qt::LeftEdge) ? Qt::TopLeftCorner : Qt::TopRightCorner;
    return edges.testFlag(Qt::LeftEdge) ? Qt::BottomLeftCorner : Qt::BottomRightCorner;
}

} // namespace

ResizeGrip::ResizeGrip(QWidget* parent, Qt::Edges edges)
    : QWidget(parent)
    , m_edges(Qt::BottomEdge | Qt::RightEdge)
{
    setObjectName(QStringLiteral("ResizeGrip"));
    setAccessibleName(tr("Resize"));
    SetEdges(edges);
    setCursor(CursorFor(m_edges));
}

ResizeGrip::~ResizeGrip() = default;

Qt::Edges ResizeGrip::GetEdges() const
{
    return m_edges;
}

void ResizeGrip::SetEdges(Qt::Edges edges)
{
    if (edges == m_edges)
        return;
    if (!edges || Opposite(edges)) {
        QTH_LOG_WARNING("ResizeGrip: edges 0x%x are no edge or corner; the grip keeps its own",
                        static_cast<unsigned>(edges));
        return;
    }
    m_edges = edges;
    setCursor(CursorFor(edges));
    updateGeometry();
    update();
}

bool ResizeGrip::IsDragging() const
{
    return m_dragging;
}

bool ResizeGrip::IsCorner() const
{
    return (m_edges & (Qt::LeftEdge | Qt::RightEdge)) && (m_edges & (Qt::TopEdge | Qt::BottomEdge));
}

QRect ResizeGrip::PlaceIn(const QRect& rect) const
{
    const QSize size = sizeHint();
    const int x = m_edges.testFlag(Qt::RightEdge) ? rect.right() + 1 - size.width() : rect.left();
    const int y = m_edges.testFlag(Qt::BottomEdge) ? rect.bottom() + 1 - size.height() : rect.top();
    if (IsCorner())
        return QRect(QPoint(x, y), size);
    if (m_edges & (Qt::LeftEdge | Qt::RightEdge))
        return QRect(x, rect.top(), size.width(), rect.height());
    return QRect(rect.left(), y, rect.width(), size.height());
}

QSize ResizeGrip::sizeHint() const
{
    if (IsCorner()) {
        const int side = style()->pixelMetric(QStyle::PM_SizeGripSize, nullptr, this);
        return QSize(side, side);
    }
    return QSize(EdgeThickness, EdgeThickness);
}

void ResizeGrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    if (IsCorner()) {
        QStyleOptionSizeGrip grip;
        grip.initFrom(this);
        grip.corner = CornerFor(m_edges);
        style()->drawControl(QStyle::CE_SizeGrip, &grip, &painter, this);
    }
}

void ResizeGrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_pressed = event->globalPos();
    m_dragging = true;
    Q_EMIT DragStarted();
}

void ResizeGrip::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging)
        Q_EMIT Dragged(event->globalPos() - m_pressed);
}

void ResizeGrip::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_dragging || event->button() != Qt::LeftButton)
        return;
    Q_EMIT Dragged(event->globalPos() - m_pressed);
    m_dragging = false;
    Q_EMIT DragFinished();
}

} // namespace OrvantaQT
