#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/widgets/window/notification_type.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class QAction;
class QLabel;
class QPushButton;
class QToolButton;

namespace OrvantaQT {

class AnimatedOpacityEffect;
class PopupMessageQueue;

// A toast: a short message over a corner or an edge of a window, with the icon of its
// type, a word-wrapped text of bounded width, an optional action button and a close
// button. It fades in when shown, and out when it closes: on its timeout, on the close
// button, when its action is triggered, or on Dismiss(). Once closed it emits Closed()
// (once; also when it is deleted before) and deletes itself.
//
// The timeout runs only while the toast is on screen: it pauses while the mouse is over
// the toast or its window is hidden, and goes on with the time that was left.
//
// Toasts are usually posted through the window's PopupMessageQueue (Post() below), which
// places and stacks them. The type's name is the style property "NotificationType":
//   OrvantaQT--PopupMessage[NotificationType="Error"] { background: #fdd; }
// Without a style sheet rule for it, the toast paints NotificationType::DefaultColor()
// with dark text. The parts are named "Icon", "Text", "Count", "ActionButton" and
// "CloseButton" (accessible names "PopupMessage_Icon" and so on).
class QT_HALVO_EXPORT PopupMessage : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(OrvantaQT::NotificationType::Type type READ GetType WRITE SetType)
    Q_PROPERTY(QString text READ GetText WRITE SetText)
    Q_PROPERTY(int timeout READ GetTimeout WRITE SetTimeout)
    Q_PROPERTY(bool closable READ IsClosable WRITE SetClosable)
    Q_PROPERTY(int count READ GetCount WRITE SetCount)

public:
    // Where a queue shows its toasts over the window.
    enum Position { TopLeft, TopRight, BottomLeft, BottomRight, TopCenter, BottomCenter };
    Q_ENUM(Position)

    static constexpr int kDefaultTimeout = 4000;

    explicit PopupMessage(QWidget* parent = nullptr);
    PopupMessage(NotificationType::Type type, const QString& text, QWidget* parent = nullptr);
    ~PopupMessage() override;

    // Posts a message to the queue of the widget's window (PopupMessageQueue::ForWindow()):
    // its id, or 0 when nothing was posted (no window, an empty text).
    static quint64 Post(QWidget* window, NotificationType::Type type, const QString& text,
                        int timeoutMs = kDefaultTimeout, QAction* action = nullptr);

    NotificationType::Type GetType() const;
    void SetType(NotificationType::Type type);
    QString GetText() const;
    void SetText(const QString& text);
    // The action shown as a button; triggering it closes the toast. Not owned: the button
    // follows its text, enabled state and visibility, and goes when it is deleted.
    QAction* GetAction() const;
    void SetAction(QAction* action);
    // Whether the close button is there; true by default.
    bool IsClosable() const;
    void SetClosable(bool closable);
    // In ms; zero or negative: the toast stays until it is closed. 4000 by default.
    int GetTimeout() const;
    void SetTimeout(int timeoutMs);
    // What is left of the timeout in ms, -1 when the toast stays until closed.
    int GetRemainingTime() const;
    // Whether the timeout is running now (not paused).
    bool IsCountingDown() const;
    // The timeout starts again from the full time.
    void RestartTimeout();
    // How many times the message was posted; "×3" in the "Count" label from 2 on.
    int GetCount() const;
    void SetCount(int count);
    // Fading out or closed.
    bool IsClosing() const;

    QSize sizeHint() const override;

public Q_SLOTS:
    // Fades the toast out; then Closed() and it deletes itself. QWidget::close() does the
    // same at once, without the fade.
    void Dismiss();

Q_SIGNALS:
    void Closed();
    // The action was triggered (from the button or elsewhere); the toast closes.
    void ActionTriggered();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    friend class PopupMessageQueue;

    void UpdateTimer();
    void UpdateIcon();
    void UpdateActionButton();
    void UpdateDefaultLook();
    void OnActionTriggered();
    void Finish();

    NotificationType::Type m_type = NotificationType::Information;
    int m_timeout = kDefaultTimeout;
    int m_remaining = kDefaultTimeout;
    int m_count = 1;
    bool m_hovered = false;
    // Shown and not hidden with its window (also not minimised).
    bool m_onScreen = false;
    bool m_fadedIn = false;
    bool m_closing = false;
    bool m_closed = false;
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
    QPointer<QAction> m_action;
    QLabel* m_icon;
    QLabel* m_text;
    QLabel* m_countLabel;
    QPushButton* m_actionButton;
    QToolButton* m_closeButton;
    AnimatedOpacityEffect* m_fade;
    // The queue that shows the toast, if any.
    QPointer<PopupMessageQueue> m_queue;
};

} // namespace OrvantaQT
