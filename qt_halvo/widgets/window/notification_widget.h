#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/widgets/window/notification_type.h>

#include <QtCore/QCache>
#include <QtCore/QEasingCurve>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

#include <memory>

class QAction;
class QLabel;
class QPropertyAnimation;
class QPushButton;
class QTextDocument;
class QToolButton;

namespace OrvantaQT {

class ShowHideMachine;

// An inline message bar for a window or a panel: an icon, a word-wrapped rich text whose
// links are reported (LinkActivated), buttons for actions and a close button. Its kind
// (Information, Positive, Warning, Error) is the style property "NotificationType", which
// the style sheet colours:
//   OrvantaQT--NotificationWidget[NotificationType="Warning"] { background: @warningColor; }
// Without a style sheet that styles it, it paints a rounded background in the type's
// default colour. The parts are named for style sheets and tests by their role: "Content",
// "Icon", "Text", "ActionButton" (one per action) and "CloseButton".
//
// It reports height-for-width: the height of its content laid out at that width, times
// how far it is shown. Where the text and the buttons fit on one line they share it;
// otherwise the text wraps and the buttons go below it, in as many rows as they need.
// Where no layout manages it, it takes that height itself whenever its content changes
// or it moves.
//
// It starts hidden and is shown and hidden by animating its height; the content keeps its
// full height and slides in and out under the top edge. Animated on the library's state
// pattern: DoShow() and DoHide() are the triggers of "HiddenState", "ShowingState",
// "ShownState" and "HidingState"; an opposite request on the way turns round from the
// current height, and a request that does not fit the state is ignored. Before the event
// loop has run, and for show(), hide() and setVisible(), a request takes effect at once.
// When it is shown, and when its text or type changes while shown, it announces itself to
// screen readers as an alert.
class QT_HALVO_EXPORT NotificationWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(OrvantaQT::NotificationType::Type type READ GetType WRITE SetType)
    Q_PROPERTY(QString text READ GetText WRITE SetText)
    Q_PROPERTY(QIcon icon READ GetIcon WRITE SetIcon)
    Q_PROPERTY(bool closeButtonVisible READ IsCloseButtonVisible WRITE SetCloseButtonVisible)
    Q_PROPERTY(int duration READ GetDuration WRITE SetDuration)
    Q_PROPERTY(QEasingCurve easing READ GetEasing WRITE SetEasing)
    Q_PROPERTY(qreal position READ GetPosition WRITE SetPosition)

public:
    explicit NotificationWidget(QWidget* parent = nullptr);
    NotificationWidget(NotificationType::Type type, const QString& text, QWidget* parent = nullptr);
    ~NotificationWidget() override;

    // Information by default; a number that is not a type is logged and ignored.
    NotificationType::Type GetType() const;
    void SetType(NotificationType::Type type);

    // Rich text (HTML); escape plain text that may hold markup with QString::toHtmlEscaped().
    QString GetText() const;
    void SetText(const QString& text);

    // The icon set, null for the type's own one (NotificationType::Icon).
    QIcon GetIcon() const;
    void SetIcon(const QIcon& icon);

    bool IsCloseButtonVisible() const;
    void SetCloseButtonVisible(bool visible);

    // A button for the action, after those of the actions added before; it shows the
    // action's text, icon, tooltip, enabled and visible state as they change, and triggers
    // the action when clicked. The action stays its owner's; when it is deleted, its
    // button goes. QWidget::addAction() and removeAction() do the same.
    void AddAction(QAction* action);
    void RemoveAction(QAction* action);
    // The buttons, in the order of the actions, hidden ones included.
    QVector<QPushButton*> ActionButtons() const;

    // Of one show or hide, in ms: 250 by default, 0 with the style's animations off.
    int GetDuration() const;
    void SetDuration(int duration);
    // OutCubic by default.
    QEasingCurve GetEasing() const;
    void SetEasing(const QEasingCurve& easing);

    // How much of its height shows, 0 to 1; moved by the animation.
    qreal GetPosition() const;
    // In the shown state (not on the way).
    bool IsShown() const;
    bool IsAnimating() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

    // Shows or hides at once, through the states (see the class comment).
    void setVisible(bool visible) override;

public Q_SLOTS:
    void AnimatedShow();
    void AnimatedHide();

Q_SIGNALS:
    // The triggers.
    void DoShow();
    void DoHide();
    // () and then (true) when it has come to show fully; (false) when it starts to leave.
    // Likewise Hidden when it has gone.
    void Shown();
    void Shown(bool shown);
    void Hidden();
    void Hidden(bool hidden);
    // A link of the text was clicked or activated by the keyboard; opening it is the
    // receiver's.
    void LinkActivated(const QString& link);
    // The close button was clicked; the notification hides after this.
    void CloseRequested();

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
    void actionEvent(QActionEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct ActionButton
    {
        QPointer<QAction> action;
        QPushButton* button = nullptr;
    };
    // Where the parts go at one width of the content.
    struct Arrangement
    {
        int height = 0;
        QRect icon;
        QRect text;
        QRect close;
        QVector<QRect> buttons; // as m_buttons; empty rectangles for hidden ones
    };

    void SetPosition(qreal position);
    void Request(bool shown, bool animated);
    void UpdateIcon();
    void UpdateCloseIcon();
    void SyncButton(const ActionButton& entry);
    // After a change of what the content holds or how it measures.
    void ContentChanged();
    // After a change of the height it wants at its width.
    void HeightChanged();
    void PlaceContent();
    const Arrangement& ArrangementFor(int width) const;
    Arrangement ComputeArrangement(int width) const;
    void MeasureNaturalText() const;
    int TextHeightFor(int width) const;
    int FullHeightFor(int width) const;
    // The width beside the text column: margins, icon, close button and their spacing.
    int ColumnAround() const;
    int ButtonRowWidth() const;
    bool IsManagedByLayout() const;
    void Announce();
    void ApplyDuration();

    NotificationType::Type m_type = NotificationType::Information;
    QIcon m_icon;
    bool m_closeButtonVisible = true;
    int m_duration = 250;
    qreal m_position = 0;

    QWidget* m_content;
    QLabel* m_iconLabel;
    QLabel* m_text;
    QToolButton* m_closeButton;
    QVector<ActionButton> m_buttons;

    QPropertyAnimation* m_animation = nullptr;
    std::unique_ptr<ShowHideMachine> m_machine;
    bool m_machineStarted = false;
    // Showing or shown: changes are announced.
    bool m_onScreen = false;
    int m_iconExtent = 0;

    // The text measured apart from the label, as the label lays it out.
    std::unique_ptr<QTextDocument> m_measure;
    mutable bool m_naturalKnown = false;
    mutable QSize m_natural;
    // The last widths asked for, laid out, by width; the least used goes first.
    mutable QCache<int, Arrangement> m_arrangements;
};

} // namespace OrvantaQT
