#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/widgets/window/notification_type.h>
#include <qt_halvo/widgets/window/popup_message.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <list>

class QAction;
class QPropertyAnimation;

namespace OrvantaQT {

// The toasts of one window (PopupMessage): at most GetMaxVisible() of them over one of
// its corners or edges, the rest waiting in the order they came, shown as the visible
// ones close. The newest toast is nearest the window's edge; older ones move away from
// it, and glide back when one between them closes. They are children of the window,
// raised above its other children, and keep inside it as it changes size (when it is too
// small for them all, the ones farthest from the edge go under the nearer ones).
//
// A message of the same type and text as one shown (and not closing) or waiting is
// counted into it instead: the toast shows "×2", "×3"…, and its timeout starts again.
// Waiting messages are plain entries, not widgets, so a burst of posts is cheap.
//
// Each message has an id, unique in the process, by which the queue tells about it.
class QT_HALVO_EXPORT PopupMessageQueue : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int maxVisible READ GetMaxVisible WRITE SetMaxVisible)
    Q_PROPERTY(OrvantaQT::PopupMessage::Position position READ GetPosition WRITE SetPosition)
    Q_PROPERTY(int margin READ GetMargin WRITE SetMargin)
    Q_PROPERTY(int spacing READ GetSpacing WRITE SetSpacing)

public:
    // The queue of the widget's window, made on first use as a child of the window; null
    // (and a log line) without a window, or while the window is being deleted.
    static PopupMessageQueue* ForWindow(QWidget* window);
    ~PopupMessageQueue() override;

    QWidget* Window() const;

    // A message: its id (the id of the message it was counted into, if so), or 0 when
    // the text is empty. An unknown type is shown as Information.
    quint64 Post(NotificationType::Type type, const QString& text, int timeoutMs = PopupMessage::kDefaultTimeout,
                 QAction* action = nullptr);
    // A toast made by the caller, which the queue takes over; such toasts are never
    // counted into others. Its id, or 0 when it is null, closing or already queued.
    quint64 Post(PopupMessage* toast);

    // The toast of a message: of one shown, or the caller's own toast while it waits;
    // null for a message of text that waits, or once the message has gone.
    PopupMessage* Toast(quint64 id) const;
    // Whether the message is shown or waiting.
    bool Contains(quint64 id) const;
    // Closes the message's toast (fading) or drops it from the waiting ones; false for
    // an unknown id.
    bool Remove(quint64 id);
    // Drops every waiting message and closes every toast.
    void Clear();

    // Toasts there now, fading in or out included, and messages waiting.
    int VisibleCount() const;
    int WaitingCount() const;
    // The toasts there, the nearest to the window's edge (the newest) first.
    QList<PopupMessage*> VisibleToasts() const;

    // At least 1; 3 by default. A lower maximum takes effect as toasts close.
    int GetMaxVisible() const;
    void SetMaxVisible(int count);
    // TopRight by default.
    PopupMessage::Position GetPosition() const;
    void SetPosition(PopupMessage::Position position);
    // From the window's edges, in pixels; 12 by default.
    int GetMargin() const;
    void SetMargin(int margin);
    // Between toasts, in pixels; 8 by default.
    int GetSpacing() const;
    void SetSpacing(int spacing);

Q_SIGNALS:
    // A message got its toast.
    void MessageShown(quint64 id);
    // A message has gone: its toast closed, or it was dropped while waiting.
    void MessageRemoved(quint64 id);
    // The number of toasts or of waiting messages changed.
    void CountsChanged(int visible, int waiting);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Key
    {
        NotificationType::Type type;
        QString text;
        bool operator==(const Key& other) const { return type == other.type && text == other.text; }
        friend uint qHash(const Key& key, uint seed) { return ::qHash(key.text, seed) ^ uint(key.type); }
    };

    struct Message
    {
        quint64 id = 0;
        Key key;
        int timeout = 0;
        int count = 1;
        QPointer<QAction> action;
        // The caller's toast, or for a message shown, the toast made for it.
        QPointer<PopupMessage> toast;
        bool own = false; // a toast of the caller's
        QPointer<QPropertyAnimation> glide;
    };
    using Waiting = std::list<Message>;

    explicit PopupMessageQueue(QWidget* window);

    void ShowWaiting();
    void Restack(bool glide);
    void Raise();
    void ScheduleRefill();
    void OnToastClosed(PopupMessage* toast);
    void DropWaiting(Waiting::iterator message);
    void EmitCounts();
    Waiting::iterator FindWaiting(quint64 id);

    QPointer<QWidget> m_window;
    Waiting m_waiting;
    QHash<Key, Waiting::iterator> m_waitingByKey;
    // Nearest the edge first.
    QList<Message> m_shown;
    int m_maxVisible = 3;
    PopupMessage::Position m_position = PopupMessage::TopRight;
    int m_margin = 12;
    int m_spacing = 8;
    bool m_refillPending = false;
    bool m_windowGone = false;
    int m_lastVisible = 0;
    int m_lastWaiting = 0;
};

} // namespace OrvantaQT
