#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QWidget>

namespace OrvantaQT {

// A handle on a corner or along an edge of its parent that reports mouse drags, for a
// widget that resizes itself inside its window (QSizeGrip only resizes windows). A corner
// is painted by the style as a size grip; an edge is a strip that style sheets can paint.
// The cursor shows the directions it resizes in. Object name "ResizeGrip".
class QT_HALVO_EXPORT ResizeGrip : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::Edges edges READ GetEdges WRITE SetEdges)

public:
    // One edge, or two adjacent edges for a corner (Qt::BottomEdge | Qt::RightEdge by default).
    explicit ResizeGrip(QWidget* parent = nullptr, Qt::Edges edges = Qt::BottomEdge | Qt::RightEdge);
    ~ResizeGrip() override;

    Qt::Edges GetEdges() const;
    // Opposite edges together make no sense and are logged and refused.
    void SetEdges(Qt::Edges edges);

    // Whether a drag is under way.
    bool IsDragging() const;

    // Its place in a rectangle of the parent: the corner, or the full length of the edge.
    QRect PlaceIn(const QRect& rect) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void DragStarted();
    // How far the mouse is from where the drag began, in global pixels.
    void Dragged(const QPoint& offset);
    void DragFinished();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool IsCorner() const;

    Qt::Edges m_edges;
    QPoint m_pressed;
    bool m_dragging = false;
};

} // namespace OrvantaQT
