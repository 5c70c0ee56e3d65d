#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QLayout>

namespace OrvantaQT {

// Lays its items out in a row while the row fits its width, and in a column when it does
// not. The row fits when the items' size hints across, the gaps between them and the
// contents margins add up to no more than the width (or, with a breakpoint set, when the
// width reaches the breakpoint). Once a column, it goes back to a row only at the
// breakpoint plus the hysteresis, so that it does not flip back and forth at one width.
//
// In a row the items share the height of the tallest; in a column each takes the full
// width. An item with an alignment keeps its size hint in that direction and is placed
// by it. More room than the hints need goes to the items that expand in that direction,
// up to their maximum; a row under a breakpoint narrower than its hints narrows its items
// toward their minimum. Hidden widgets take no room, spacers no gaps.
//
// It reports height-for-width: the height in the orientation a width would give. A
// negative spacing is taken from the parent: a parent layout's spacing, or the parent
// widget's style; and if that gives nothing, the style's spacing between push buttons.
class QT_HALVO_EXPORT UniversalLayout : public QLayout
{
    Q_OBJECT
    Q_PROPERTY(int breakpoint READ Breakpoint WRITE SetBreakpoint)
    Q_PROPERTY(int hysteresis READ Hysteresis WRITE SetHysteresis)
    Q_PROPERTY(Qt::Orientation currentOrientation READ CurrentOrientation NOTIFY OrientationChanged)

public:
    explicit UniversalLayout(QWidget* parent = nullptr, int hSpacing = -1, int vSpacing = -1);
    ~UniversalLayout() override;

    // QLayout::addWidget, with a null widget logged and ignored.
    void addWidget(QWidget* widget);

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    void setGeometry(const QRect& rect) override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;

    // Both spacings at once; spacing() is -1 when they differ. These hide QLayout's, as
    // QGridLayout's do.
    void setSpacing(int spacing);
    int spacing() const;
    int horizontalSpacing() const;
    int verticalSpacing() const;

    // The width at which the row gives way to a column: below it a column. 0 (the default)
    // for the width the row needs, RowWidth(). Lays the items out again at once.
    void SetBreakpoint(int width);
    int Breakpoint() const;

    // How far past the breakpoint a column must be widened to become a row again; 16 by
    // default. Lays the items out again at once.
    void SetHysteresis(int pixels);
    int Hysteresis() const;

    // The width the visible items need in a row: their size hints, gaps and margins.
    int RowWidth() const;

    // A row (Qt::Horizontal) until the first layout pass says otherwise.
    Qt::Orientation CurrentOrientation() const;

Q_SIGNALS:
    // After the items have been laid out in the new orientation.
    void OrientationChanged(Qt::Orientation orientation);

private:
    // The orientation a width gives, from the current one and the width the row needs.
    Qt::Orientation OrientationFor(int width, int rowWidth) const;
    // Measures the items for rect and, when place is true, sets their geometries; returns
    // the height needed, and the orientation it chose in *orientation.
    int DoLayout(const QRect& rect, bool place, Qt::Orientation* orientation) const;
    void Relayout();

    QList<QLayoutItem*> m_items;
    int m_horizontalSpacing;
    int m_verticalSpacing;
    int m_breakpoint = 0;
    int m_hysteresis = 16;
    Qt::Orientation m_orientation = Qt::Horizontal;
    mutable bool m_spacingReported = false;
};

} // namespace OrvantaQT
