#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <memory>

class QLabel;
class QPropertyAnimation;
class QState;
class QStateMachine;

namespace OrvantaQT {

class AnimatedStateMachine;

// A container for one content widget that shows and hides it by animating its own
// height between 0 and the content's height. While the height moves, a still picture of
// the content stands in for it, so the content is never laid out at an in-between height.
//
// The pane starts hidden and settles, when the event loop first runs, in the state asked
// for before then (collapsed unless initiallyOpened is set). From then on its requests
// are the transition triggers DoExpand(), DoCollapse(), DoShow() (opened at once),
// DoHide() (closed at once) and ReverseState(); an opposite request while it moves turns
// the motion round from the current height.
class QT_HALVO_EXPORT CollapsingPane : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool initiallyOpened READ GetInitiallyOpened WRITE SetInitiallyOpened RESET ResetInitiallyOpened)
    Q_PROPERTY(QEasingCurve::Type easing READ GetEasing WRITE SetEasing RESET ResetEasing)
    Q_PROPERTY(uint duration READ GetDuration WRITE SetDuration RESET ResetDuration)

public:
    explicit CollapsingPane(QWidget* parent = nullptr);
    ~CollapsingPane() override;

    QWidget* widget() const;

    bool GetInitiallyOpened() const;
    // Before the machine runs, records the state to start in; afterwards also asks for it
    // through setVisible().
    void SetInitiallyOpened(bool opened);
    void ResetInitiallyOpened();

    QEasingCurve::Type GetEasing() const;
    void SetEasing(QEasingCurve::Type easing);
    void ResetEasing();

    // Of both height animations, in ms.
    unsigned int GetDuration() const;
    void SetDuration(unsigned int duration);
    void ResetDuration();

    // Shows (opened) or hides (closed) the pane at once, without animation.
    void setVisible(bool visible) override;

Q_SIGNALS:
    void DoCollapse();
    void DoExpand();
    void DoHide();
    void DoShow();
    void ReverseState();
    // () and then (true) when the pane comes to rest closed; (false) when it leaves that.
    void Collapsed();
    void Expanded();
    void Collapsed(bool isCollapsed);
    // () and then (true) when the pane comes to rest opened; (false) when it leaves that.
    void Expanded(bool isExpanded);
    // On every step of the height animation, in either direction.
    void Expanding();
    // Declared for hosts that connect to it; the pane itself does not emit it.
    void Collapsing();

public Q_SLOTS:
    // Replaces the content; the old content is deleted later.
    void setWidget(QWidget* widget);
    void setExpanded(bool expanded);
    void setCollapsed(bool collapsed);
    void reverseState();
    // Takes the content's current height as the height to open to.
    void AdjustHeight();
    void collapse();
    void expand();

protected Q_SLOTS:
    void OnClosedStateEntered();
    void OnClosedStateExited();
    void OnOpenedStateEntered();
    void OnOpenedStateExited();
    void OnInitialStateEntered();

protected:
    int GetWidgetHeight() const;
    void ShowFakeWidget();
    void HideFakeWidget();
    void InitStateMachine();
    void InitAnimation();

private:
    bool IsMachineRunning() const;
    // Before the machine runs, records the state to start in; afterwards emits the trigger.
    void Request(bool opened, void (CollapsingPane::*open)(), void (CollapsingPane::*close)());
    void EmitExpandingWhileMoving();

    std::unique_ptr<AnimatedStateMachine> m_machine;
    QPointer<QState> m_initialState;
    QPointer<QState> m_openedState;
    QPointer<QState> m_openingState;
    QPointer<QState> m_closingState;
    QPointer<QState> m_closedState;
    QPointer<QState> m_closedAfterState;
    QPointer<QPropertyAnimation> m_maximumHeightAnimation;
    QPointer<QPropertyAnimation> m_minimumHeightAnimation;
    QEasingCurve::Type m_easing = QEasingCurve::OutQuart;
    unsigned int m_duration = 700;
    QPointer<QWidget> m_widget;
    QPointer<QLabel> m_fakeWidget;
    bool m_initiallyOpened = false;
};

} // namespace OrvantaQT
