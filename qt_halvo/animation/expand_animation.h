#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QRect>

class QPropertyAnimation;
class QWidget;

namespace OrvantaQT {

// Lets a widget grow from its laid-out geometry to fill the free area of its parent (the
// parent's contents rectangle less its layout's margins) along the given orientations,
// by animating its geometry, and snap back at once. The widget's style property
// "ExpandState" reads "Expanded" or "Collapsed" for style sheets. The parent is watched
// for resizes; the geometry the widget has at each one is where it collapses back to.
// A layout on the parent places the widget again on its next pass, by the size policies
// set for each state; a parent without a layout leaves the expanded geometry alone.
class QT_HALVO_EXPORT ExpandAnimation : public QObject
{
    Q_OBJECT

public:
    ExpandAnimation(QWidget* widget, QObject* parent, Qt::Orientations orientations, int duration);
    ~ExpandAnimation() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    void DoExpand();
    // Without animation; stops an expansion under way.
    void DoCollapse();
    // Expanded at once, without animation.
    void SetExpandedState();

Q_SIGNALS:
    void ExpandFinished();
    void CollapseFinished();

private:
    enum class State { NotSet, Expanded, Collapsed };

    void UpdateSizeRange();
    void ProcessAnimationStateChanged();

    QPointer<QWidget> m_widget;
    QPointer<QWidget> m_parentWidget;
    int m_leftMargin = 0;
    int m_topMargin = 0;
    int m_rightMargin = 0;
    int m_bottomMargin = 0;
    State m_state = State::NotSet;
    QPointer<QPropertyAnimation> m_animation;
    int m_duration;
    Qt::Orientations m_orientations;
    QRect m_collapsedRect;
    QRect m_expandedRect;
};

} // namespace OrvantaQT
