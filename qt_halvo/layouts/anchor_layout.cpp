#include <qt_halvo/layouts/anchor_layout.h>

#include <qt_halvo/layouts/desktop_widget.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QVariant>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

constexpr char kControllerProperty[] = "_a_anchorController";

// Where the widget's geometry is expressed: its frame on the desktop for a window.
QRect OwnRect(const QWidget* widget)
{
    return widget->isWindow() ? widget->frameGeometry() : widget->geometry();
}

// The point of the primary screen's work area an alignment names.
QPoint AlignmentPoint(Qt::Alignment alignment, const QRect& screen)
{
    const int x = alignment & Qt::AlignLeft ? screen.left()
        : alignment & Qt::AlignHCenter      ? (screen.right() - screen.left()) / 2
                                            : screen.right();
    const int y = alignment & Qt::AlignTop ? screen.top()
        : alignment & Qt::AlignVCenter     ? (screen.bottom() - screen.top()) / 2
                                           : screen.bottom();
    return QPoint(x, y);
}

} // namespace

void AnchorLayout::AddAnchor(QWidget* target, Qt::AnchorPoint targetPoint, QWidget* widget, Qt::AnchorPoint widgetPoint)
{
    if (!target || !widget) {
        QTH_LOG_WARNING("AnchorLayout: an anchor needs a target and a widget");
        return;
    }
    GetAnchorController(widget)->SetAnchor(target, targetPoint, widgetPoint);
}

void AnchorLayout::AddAnchors(QWidget* target, QWidget* widget, Qt::Orientation orientation)
{
    if (!target || !widget) {
        QTH_LOG_WARNING("AnchorLayout: anchors need a target and a widget");
        return;
    }
    if (orientation == Qt::Horizontal) {
        AddAnchor(target, Qt::AnchorLeft, widget, Qt::AnchorLeft);
        AddAnchor(target, Qt::AnchorRight, widget, Qt::AnchorRight);
    } else {
        AddAnchor(target, Qt::AnchorTop, widget, Qt::AnchorTop);
        AddAnchor(target, Qt::AnchorBottom, widget, Qt::AnchorBottom);
    }
}

void AnchorLayout::SetupAnchors(QWidget* widget,
                                const std::vector<std::pair<Qt::AnchorPoint, std::pair<QWidget*, Qt::AnchorPoint>>>& anchors,
                                const QMargins& margins)
{
    if (!widget) {
        QTH_LOG_WARNING("AnchorLayout: no widget to anchor");
        return;
    }
    SetAnchorMargins(widget, margins);
    for (const auto& anchor : anchors)
        AddAnchor(anchor.second.first, anchor.second.second, widget, anchor.first);
}

void AnchorLayout::SetAnchorMargins(QWidget* widget, const QMargins& margins)
{
    if (widget)
        GetAnchorController(widget)->SetMargins(margins);
}

QMargins AnchorLayout::GetAnchorMargins(QWidget* widget)
{
    return widget ? GetAnchorController(widget)->GetMargins() : QMargins();
}

AnchorLayout::Anchors AnchorLayout::WidgetAnchors(QWidget* widget)
{
    return widget ? GetAnchorController(widget)->GetAnchors() : Anchors();
}

void AnchorLayout::UpdateAnchor(const QWidget* target, Qt::AnchorPoint targetPoint, QWidget* widget,
                                Qt::AnchorPoint widgetPoint, const QMargins& margins, bool stretch)
{
    if (!target || !widget)
        return;
    const QRect rect = OwnRect(widget);
    const QRect result = CalculateAnchoredRect(target, targetPoint, widget, widgetPoint, margins, rect, stretch);
    if (!widget->isWindow()) {
        widget->setGeometry(result);
        return;
    }
    // The frame lands on the rectangle: the window itself is smaller by the frame's share.
    const QSize frame = widget->frameGeometry().size() - widget->size();
    widget->move(result.topLeft());
    widget->resize(result.size() - frame);
}

void AnchorLayout::SetDesktopPrimaryScreenAnchor(Qt::AnchorPoint screenPoint, QWidget* widget, Qt::AnchorPoint widgetPoint)
{
    if (!widget) {
        QTH_LOG_WARNING("AnchorLayout: no widget to anchor to the screen");
        return;
    }
    AnchorController* controller = GetAnchorController(widget);
    QWidget* desktop = nullptr;
    for (const AnchorController::Anchor& anchor : controller->GetAnchors()) {
        if (qobject_cast<DesktopWidget*>(anchor.target))
            desktop = anchor.target;
    }
    if (!desktop) {
        desktop = new DesktopWidget;
        QObject::connect(controller, &QObject::destroyed, desktop, &QObject::deleteLater);
    }
    controller->SetAnchor(desktop, screenPoint, widgetPoint);
}

void AnchorLayout::SetDesktopPrimaryScreenAnchor(const QPoint& pos, QWidget* widget)
{
    for (const Qt::AnchorPoint point : CalcNearestCorner(DesktopWidget::PrimaryScreenRect(), pos))
        SetDesktopPrimaryScreenAnchor(point, widget, point);
}

void AnchorLayout::SetDesktopPrimaryScreenAnchor(const QPoint& pos, QWidget* widget, const QMargins& margins)
{
    SetDesktopPrimaryScreenAnchor(pos, widget);
    SetAnchorMargins(widget, margins);
}

void AnchorLayout::SetDesktopPrimaryScreenAnchor(const Qt::Alignment& alignment, QWidget* widget, const QMargins& margins)
{
    SetDesktopPrimaryScreenAnchor(AlignmentPoint(alignment, DesktopWidget::PrimaryScreenRect()), widget, margins);
}

void AnchorLayout::AlignToDesktopPrimaryScreen(const Qt::Alignment& alignment, QWindow* window, const QMargins& margins)
{
    if (!window) {
        QTH_LOG_WARNING("AnchorLayout: no window to align");
        return;
    }
    const QRect screen = DesktopWidget::PrimaryScreenRect().marginsRemoved(margins);
    const QSize size = window->frameGeometry().size();
    const int x = alignment & Qt::AlignLeft ? screen.left()
        : alignment & Qt::AlignHCenter      ? screen.left() + (screen.width() - size.width()) / 2
                                            : screen.right() + 1 - size.width();
    const int y = alignment & Qt::AlignTop ? screen.top()
        : alignment & Qt::AlignVCenter     ? screen.top() + (screen.height() - size.height()) / 2
                                           : screen.bottom() + 1 - size.height();
    window->setFramePosition(QPoint(x, y));
}

void AnchorLayout::RemoveAllDesktopAnchors(QWidget* widget)
{
    if (!widget)
        return;
    delete widget->property(kControllerProperty).value<AnchorController*>();
    widget->setProperty(kControllerProperty, QVariant());
}

std::vector<Qt::AnchorPoint> AnchorLayout::CalcNearestCorner(const QRect& rect, const QPoint& pos)
{
    const int x = pos.x() + rect.left();
    const int y = pos.y() + rect.top();
    const QSize half(qRound(rect.width() / 2.0), qRound(rect.height() / 2.0));
    return {half.width() < x ? Qt::AnchorRight : Qt::AnchorLeft, half.height() < y ? Qt::AnchorBottom : Qt::AnchorTop};
}

QRect AnchorLayout::CalculateAnchoredRect(const QWidget* target, Qt::AnchorPoint targetPoint, const QWidget* widget,
                                          Qt::AnchorPoint ownPoint, const QMargins& margins, const QRect& rect, bool stretch)
{
    const QRect mapped = MapRect(target->rect(), target, widget);
    if (mapped.isNull())
        return rect;
    bool vertical = false;
    const int edge = SafeEdge(mapped, targetPoint, &vertical);
    // The orientation is the target point's, whatever the widget's own point.
    return vertical ? CalculateVertical(rect, ownPoint, edge, stretch, margins)
                    : CalculateHorizontal(rect, ownPoint, edge, stretch, margins);
}

QRect AnchorLayout::CalculateHorizontal(const QRect& rect, Qt::AnchorPoint ownPoint, int edge, bool stretch,
                                        const QMargins& margins)
{
    QRect result = rect;
    switch (ownPoint) {
    case Qt::AnchorLeft:
        stretch ? result.setLeft(edge + margins.left()) : result.moveLeft(edge + margins.left());
        break;
    case Qt::AnchorHorizontalCenter: {
        const int width = rect.right() - rect.left();
        result.setLeft(edge - (width + 1) / 2);
        result.setRight(result.left() + width);
        break;
    }
    case Qt::AnchorRight:
        stretch ? result.setRight(edge - margins.right()) : result.moveRight(edge - margins.right());
        break;
    default:
        break;
    }
    return result;
}

QRect AnchorLayout::CalculateVertical(const QRect& rect, Qt::AnchorPoint ownPoint, int edge, bool stretch,
                                      const QMargins& margins)
{
    QRect result = rect;
    switch (ownPoint) {
    case Qt::AnchorTop:
        stretch ? result.setTop(edge + margins.top()) : result.moveTop(edge + margins.top());
        break;
    case Qt::AnchorVerticalCenter: {
        const int height = rect.bottom() - rect.top();
        result.setTop(edge - (height + 1) / 2);
        result.setBottom(result.top() + height);
        break;
    }
    case Qt::AnchorBottom:
        stretch ? result.setBottom(edge - margins.bottom()) : result.moveBottom(edge - margins.bottom());
        break;
    default:
        break;
    }
    return result;
}

int AnchorLayout::SafeEdge(const QRect& rect, Qt::AnchorPoint point, bool* vertical)
{
    *vertical = point == Qt::AnchorTop || point == Qt::AnchorVerticalCenter || point == Qt::AnchorBottom;
    switch (point) {
    case Qt::AnchorLeft:
        return rect.left();
    case Qt::AnchorHorizontalCenter:
        return rect.left() + (rect.right() - rect.left() + 1) / 2;
    case Qt::AnchorRight:
        return rect.right();
    case Qt::AnchorTop:
        return rect.top();
    case Qt::AnchorVerticalCenter:
        return rect.top() + (rect.bottom() - rect.top() + 1) / 2;
    case Qt::AnchorBottom:
        return rect.bottom();
    }
    *vertical = true;
    return 0;
}

// Centre lines count as opposite to Left; anchors and stretching rely on it.
Qt::AnchorPoint AnchorLayout::OppositeEdge(Qt::AnchorPoint point)
{
    switch (point) {
    case Qt::AnchorTop:
        return Qt::AnchorBottom;
    case Qt::AnchorBottom:
        return Qt::AnchorTop;
    case Qt::AnchorLeft:
        return Qt::AnchorRight;
    default:
        return Qt::AnchorLeft;
    }
}

// Into the coordinates of to's geometry (its parent's, or the desktop's for a window):
// through the widgets' common ancestor when they share one, else through the desktop.
QRect AnchorLayout::MapRect(const QRect& rect, const QWidget* from, const QWidget* to)
{
    const QWidget* space = to->isWindow() ? nullptr : to->parentWidget();
    QWidget* root = space ? RootParent(from, space) : nullptr;
    if (root)
        return QRect(space->mapFrom(root, from->mapTo(root, rect.topLeft())), rect.size());
    const QPoint global = from->isWindow() ? from->geometry().topLeft() + rect.topLeft() : from->mapToGlobal(rect.topLeft());
    return QRect(space ? space->mapFromGlobal(global) : global, rect.size());
}

QWidget* AnchorLayout::RootParent(const QWidget* a, const QWidget* b)
{
    for (QWidget* candidate = const_cast<QWidget*>(a); candidate; candidate = candidate->parentWidget()) {
        if (candidate == b || candidate->isAncestorOf(b))
            return candidate;
    }
    return nullptr;
}

AnchorController* AnchorLayout::GetAnchorController(QWidget* widget)
{
    auto* controller = widget->property(kControllerProperty).value<AnchorController*>();
    if (!controller) {
        controller = new AnchorController(widget);
        widget->setProperty(kControllerProperty, QVariant::fromValue(controller));
    }
    return controller;
}

} // namespace OrvantaQT
