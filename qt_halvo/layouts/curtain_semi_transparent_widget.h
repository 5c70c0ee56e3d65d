#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

#include <memory>

namespace OrvantaQT {

class AnimatedOpacityEffect;
class ShowHideMachine;

// A shade over the whole of its container in a colour with alpha, which fades in and out
// (an AnimatedOpacityEffect) and, while it is there, takes the mouse and the keyboard from
// the widgets it covers: clicks, wheel turns and keys stop at the shade, and focus cannot
// enter the covered widgets. Focus that was in the container goes to the shade and comes
// back to the same widget when the shade has gone.
//
// Animated on the library's state pattern: DoShow() and DoHide() trigger "HiddenState",
// "ShowingState", "ShownState" and "HidingState"; an opposite request during a fade turns
// it round. The colour is a property, so style sheets set it with qproperty-color.
class QT_HALVO_EXPORT CurtainSemiTransparentWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor color READ GetColor WRITE SetColor)

public:
    // The container is the parent; without one the shade logs and stays hidden. The fade
    // takes `duration` ms each way (250 when negative, with a log line).
    explicit CurtainSemiTransparentWidget(QWidget* container, int duration = 250);
    ~CurtainSemiTransparentWidget() override;

    // Black at half alpha by default.
    QColor GetColor() const;
    void SetColor(const QColor& color);

    bool IsShadeShown() const;

public Q_SLOTS:
    void ShowShade();
    void HideShade();
    void SetShadeShown(bool shown);

Q_SIGNALS:
    void DoShow();
    void DoHide();
    // () and then (true) when the shade is fully there; (false) when it starts to go.
    void Shown();
    void Shown(bool shown);
    // () and then (true) when it has gone; (false) when it starts to come.
    void Hidden();
    void Hidden(bool hidden);

protected Q_SLOTS:
    void OnShowingEntered();
    void OnShownEntered();
    void OnShownExited();
    void OnHidingEntered();
    void OnHiddenEntered();
    void OnHiddenExited();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void Cover();
    void Appear();
    void KeepFocusOut(QWidget* now);

    QPointer<QWidget> m_container;
    QPointer<QWidget> m_focusBefore;
    QColor m_color{0, 0, 0, 128};
    AnimatedOpacityEffect* m_fade = nullptr;
    std::unique_ptr<ShowHideMachine> m_machine;
};

} // namespace OrvantaQT
