#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QMargins>
#include <QtCore/QPoint>
#include <QtCore/QRectF>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QTabBar>

class QVariantAnimation;

namespace OrvantaQT {

// A tab bar with a selector that slides to the current tab: an underline along the edge of
// the tab that faces the pages (below tabs on top, beside tabs on a side), or a pill behind
// the tab, inset by SelectorMargin. The pill goes under the tabs, so it shows through tabs
// a style sheet leaves transparent:
//   OrvantaQT--TabBar { qproperty-SelectorShape: Pill; qproperty-SelectorColor: #3d7eff; }
//   OrvantaQT--TabBar::tab { background: transparent; border: none; }
// The selector's place is taken from tabRect(currentIndex()) whenever it is drawn or asked
// for, and only the distance from where it was drawn last shrinks during a slide; so it
// ends under the current tab whatever happens to the tabs on the way (resize, font, icons,
// tabs inserted, removed or dragged). A change while the bar is hidden, or with the style's
// animations off, takes no time. A dragged current tab carries the selector along.
//
// Beyond QTabBar: Home and End go to the first and last enabled tab, Up and Down step on a
// vertical bar, and the mouse wheel steps one tab per notch (a touchpad's small steps add up).
class QT_HALVO_EXPORT TabBar : public QTabBar
{
    Q_OBJECT

public:
    enum Shape { Underline, Pill };
    Q_ENUM(Shape)

    Q_PROPERTY(Shape SelectorShape READ GetSelectorShape WRITE SetSelectorShape)
    // The palette's highlight colour until one is set.
    Q_PROPERTY(QColor SelectorColor READ GetSelectorColor WRITE SetSelectorColor RESET ResetSelectorColor)
    // Of the underline, in pixels; 2 by default.
    Q_PROPERTY(int SelectorThickness READ GetSelectorThickness WRITE SetSelectorThickness)
    // Of the pill's corners, at most half its height; 6 by default.
    Q_PROPERTY(int SelectorRadius READ GetSelectorRadius WRITE SetSelectorRadius)
    // Between the pill and the tab's edges; 2 by default.
    Q_PROPERTY(int SelectorMargin READ GetSelectorMargin WRITE SetSelectorMargin)
    // Of one slide, in ms: 250 by default; slides take no time with the style's animations off.
    Q_PROPERTY(int Duration READ GetDuration WRITE SetDuration)
    // OutCubic by default.
    Q_PROPERTY(QEasingCurve Easing READ GetEasing WRITE SetEasing)

    explicit TabBar(QWidget* parent = nullptr);
    ~TabBar() override;

    Shape GetSelectorShape() const;
    void SetSelectorShape(Shape shape);
    QColor GetSelectorColor() const;
    void SetSelectorColor(const QColor& color);
    void ResetSelectorColor();
    int GetSelectorThickness() const;
    void SetSelectorThickness(int thickness);
    int GetSelectorRadius() const;
    void SetSelectorRadius(int radius);
    int GetSelectorMargin() const;
    void SetSelectorMargin(int margin);
    int GetDuration() const;
    void SetDuration(int duration);
    QEasingCurve GetEasing() const;
    void SetEasing(const QEasingCurve& easing);

    // Where the selector is drawn now, in the bar's coordinates; empty without a current tab.
    QRect SelectorRect() const;
    // Where it comes to rest: on the current tab, as the shape places it.
    QRect SelectorTarget() const;
    // Whether a slide runs.
    bool IsSelectorMoving() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    struct Change
    {
        int from = -1;
        int count = -1;
        bool wasPending = false;
    };

    void OnCurrentChanged(int index);
    void OnTabMoved(int from, int to);
    // Starts a slide asked for since the last layout, from where the selector was drawn.
    void StartPendingSlide() const;
    void StopSlide();
    QRectF CurrentSelector() const;
    // The selector's rectangle on a tab's rectangle.
    QRectF SelectorOn(const QRectF& tab) const;
    // The current tab's rectangle, following the mouse while it is dragged.
    QRectF AnchorRect() const;
    void PaintPill(QPainter* painter, const QRectF& rect);
    const QPixmap& PillPixmap(const QColor& color, int radius, qreal ratio);
    // The next enabled, visible tab from index in steps of step, or -1.
    int EnabledTab(int from, int step) const;
    bool IsVertical() const;
    int EffectiveDuration() const;
    // Updates the area the selector covers now, and where it was drawn last.
    void UpdateSelector();

    Shape m_shape = Underline;
    QColor m_color;
    int m_thickness = 2;
    int m_radius = 6;
    int m_margin = 2;
    int m_duration = 250;

    QVariantAnimation* m_slide;
    // What the slide adds to the selector at its start (left, top, right, bottom); the
    // slide's value is the part of it left, from 1 down to 0.
    mutable QMarginsF m_delta;
    // A change of tab whose slide starts from m_from when the selector is next placed.
    mutable bool m_slidePending = false;
    QRectF m_from;
    // Where the selector was drawn last; none while hidden.
    QRectF m_painted;
    int m_shownIndex = -1;
    Change m_lastChange;

    // A press on the current tab of a movable bar, and whether it has become a drag.
    QPoint m_pressPos;
    QRectF m_pressTab;
    bool m_pressed = false;
    bool m_dragging = false;
    QPoint m_dragPos;

    int m_wheelRest = 0;

    struct PillKey
    {
        QRgb color = 0;
        int radius = -1;
        qreal ratio = 0;
    };
    PillKey m_pillKey;
    QPixmap m_pill;
};

} // namespace OrvantaQT
