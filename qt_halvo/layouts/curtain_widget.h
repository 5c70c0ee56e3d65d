#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtCore/QPointer>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <memory>

class QPropertyAnimation;

namespace OrvantaQT {

class ShowHideMachine;

// A panel that slides over its container, down from the top edge or up from the bottom
// one, until it covers the container fully, and slides back out of sight. Its content is
// one widget (SetContent), laid over the whole container while shown; during a slide a
// picture of the panel stands in for the live content. It follows the container's size.
//
// Animated on the library's state pattern: the DoShow() and DoHide() signals are the
// triggers of the states "HiddenState", "ShowingState", "ShownState" and "HidingState";
// an opposite request during a slide turns it round where it is. Before the event loop
// has run, a request takes effect at once. Its look is the style sheet's
// (OrvantaQT--CurtainWidget { background: ... }), the palette's window colour without one.
class QT_HALVO_EXPORT CurtainWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::Edge edge READ GetEdge WRITE SetEdge)
    Q_PROPERTY(int duration READ GetDuration WRITE SetDuration)
    Q_PROPERTY(QEasingCurve easing READ GetEasing WRITE SetEasing)
    Q_PROPERTY(qreal position READ GetPosition WRITE SetPosition)

public:
    // The container is the parent; without one the curtain logs and stays inert.
    explicit CurtainWidget(QWidget* container);
    ~CurtainWidget() override;

    // The widget shown on the curtain, which takes it over; the one before is deleted.
    void SetContent(QWidget* content);
    QWidget* Content() const;

    // Qt::TopEdge (the default) or Qt::BottomEdge: where the curtain comes from.
    Qt::Edge GetEdge() const;
    void SetEdge(Qt::Edge edge);
    // Of one slide, in ms; 300 by default, 0 with the style's animations off.
    int GetDuration() const;
    void SetDuration(int duration);
    // OutCubic by default.
    QEasingCurve GetEasing() const;
    void SetEasing(const QEasingCurve& easing);
    // How much of the container it covers, 0 to 1; moved by the animation.
    qreal GetPosition() const;
    void SetPosition(qreal position);

    // In the shown state (not on the way).
    bool IsCurtainShown() const;

public Q_SLOTS:
    void ShowCurtain();
    void HideCurtain();
    void SetCurtainShown(bool shown);

Q_SIGNALS:
    // The triggers.
    void DoShow();
    void DoHide();
    // () and then (true) when the curtain has come to cover the container; (false) when
    // it starts to leave. Likewise Hidden when it has gone.
    void Shown();
    void Shown(bool shown);
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
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ApplyDuration();
    void Place();
    void TakeSnapshot();
    void PaintBackground(QPainter* painter, const QRect& rect);

    QPointer<QWidget> m_container;
    QPointer<QWidget> m_content;
    Qt::Edge m_edge = Qt::TopEdge;
    qreal m_position = 0;
    int m_duration = 300;
    QPropertyAnimation* m_animation = nullptr;
    std::unique_ptr<ShowHideMachine> m_machine;
    // The whole curtain, drawn while it slides.
    QPixmap m_snapshot;
};

} // namespace OrvantaQT
