#include <qt_halvo/layouts/overlay_simple_controller.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtCore/QRect>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

// A widget's top-left in its own parent's coordinates, on the desktop.
QPoint GlobalTopLeft(const QWidget* widget)
{
    const QWidget* parent = widget->parentWidget();
    return parent ? parent->mapToGlobal(widget->pos()) : widget->pos();
}

// A point on the desktop in the coordinates of the widget's parent.
QPoint InParentOf(const QWidget* widget, const QPoint& global)
{
    const QWidget* parent = widget->parentWidget();
    return parent ? parent->mapFromGlobal(global) : global;
}

void SetUp(QWidget* container, QWidget* overlay, const QString& objectName, QWidget* anchor, const QPoint& correction,
           OverlaySimpleController::ModeEnum mode)
{
    if (!container || !overlay) {
        QTH_LOG_WARNING("SetOverlayWithAnchor: an overlay needs a container and the overlay");
        return;
    }
    overlay->setObjectName(objectName);
    new OverlaySimpleController(container, overlay, container, anchor, correction, mode);
    overlay->raise();
}

} // namespace

OverlaySimpleController::OverlaySimpleController(QWidget* container, QWidget* overlay, QObject* parent, QWidget* anchor,
                                                 const QPoint& correction, ModeEnum mode)
    : QObject(parent)
    , m_container(container)
    , m_overlay(overlay)
    , m_anchor(anchor ? anchor : container)
    , m_correction(correction)
    , m_mode(mode)
{
    if (!container || !overlay)
        return;
    overlay->resize(container->size());
    container->installEventFilter(this);
    if (anchor)
        anchor->installEventFilter(this);
    // Placed as it appears, not one paint of the container later.
    overlay->installEventFilter(this);
}

void OverlaySimpleController::SetPositionCorrection(const QPoint& correction)
{
    m_correction = correction;
    UpdateGeometry();
}

QPoint OverlaySimpleController::GetPositionCorrection() const
{
    return m_correction;
}

QPair<QPoint, QSize> OverlaySimpleController::CalcGeometry() const
{
    if (m_mode == AnchorPosition) {
        const QPoint point = InParentOf(m_overlay, GlobalTopLeft(m_anchor)) + m_correction;
        return {point, m_container->size()};
    }
    const QPoint containerTop = GlobalTopLeft(m_container);
    const QPoint point = InParentOf(m_overlay, containerTop) + m_correction;
    const int height = (GlobalTopLeft(m_anchor).y() - containerTop.y()) - m_correction.y();
    return {point, QSize(m_container->width(), height)};
}

void OverlaySimpleController::UpdateGeometry()
{
    if (!m_container || !m_overlay || !m_anchor || m_overlay->isHidden())
        return;
    const QPair<QPoint, QSize> geometry = CalcGeometry();
    m_overlay->setGeometry(QRect(geometry.first, geometry.second));
}

bool OverlaySimpleController::eventFilter(QObject* watched, QEvent* event)
{
    const bool overlayShown = watched == m_overlay && event->type() == QEvent::Show;
    const bool watchedChanged = watched != m_overlay && (event->type() == QEvent::Resize || event->type() == QEvent::Paint);
    if (overlayShown || watchedChanged)
        UpdateGeometry();
    return QObject::eventFilter(watched, event);
}

void SetOverlayWithAnchor(QWidget* container, QWidget* overlay, const QString& objectName, QWidget* anchor,
                          const QPoint& correction)
{
    SetUp(container, overlay, objectName, anchor, correction, OverlaySimpleController::AnchorPosition);
}

void SetOverlayWithAnchorHeight(QWidget* container, QWidget* overlay, const QString& objectName, QWidget* anchor,
                                const QPoint& correction)
{
    SetUp(container, overlay, objectName, anchor, correction, OverlaySimpleController::AnchorHeight);
}

} // namespace OrvantaQT
