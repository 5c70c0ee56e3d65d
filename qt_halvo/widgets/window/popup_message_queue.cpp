#include <qt_halvo/widgets/window/popup_message_queue.h>

#include <qt_halvo/animation/widget_animations_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QAction>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace OrvantaQT {

namespace {

constexpr int kGlideDuration = 180;

// Ids are unique in the process, so that one never names another queue's message.
quint64 g_lastId = 0;

using Registry = QHash<const QWidget*, PopupMessageQueue*>;
Q_GLOBAL_STATIC(Registry, g_queues)

bool IsTop(PopupMessage::Position position)
{
    return position == PopupMessage::TopLeft || position == PopupMessage::TopRight
           || position == PopupMessage::TopCenter;
}

} // namespace

PopupMessageQueue* PopupMessageQueue::ForWindow(QWidget* window)
{
    if (!window) {
        QTH_LOG_WARNING("PopupMessageQueue: no window to show messages over; nothing is shown");
        return nullptr;
    }
    window = window->window();
    PopupMessageQueue* queue = g_queues->value(window);
    if (queue && queue->m_windowGone) {
        QTH_LOG_WARNING("PopupMessageQueue: the window is being deleted; nothing is shown");
        return nullptr;
    }
    return queue ? queue : new PopupMessageQueue(window);
}

PopupMessageQueue::PopupMessageQueue(QWidget* window)
    : QObject(window)
    , m_window(window)
{
    setObjectName(QStringLiteral("PopupMessageQueue"));
    g_queues->insert(window, this);
    window->installEventFilter(this);
    // A widget emits destroyed() before it deletes its children, this queue among them.
    connect(window, &QObject::destroyed, this, [this] { m_windowGone = true; });
}

PopupMessageQueue::~PopupMessageQueue()
{
    if (g_queues.exists()) {
        for (auto it = g_queues->begin(); it != g_queues->end(); ++it) {
            if (it.value() == this) {
                g_queues->erase(it);
                break;
            }
        }
    }
    // The caller's toasts that wait were taken over; toasts shown close on their own.
    for (Message& message : m_waiting) {
        if (message.own && message.toast) {
            disconnect(message.toast, nullptr, this, nullptr);
            delete message.toast;
        }
    }
}

QWidget* PopupMessageQueue::Window() const
{
    return m_window;
}

quint64 PopupMessageQueue::Post(NotificationType::Type type, const QString& text, int timeoutMs, QAction* action)
{
    if (m_windowGone) {
        QTH_LOG_WARNING("PopupMessageQueue: the window is being deleted; nothing is shown");
        return 0;
    }
    if (text.trimmed().isEmpty()) {
        QTH_LOG_WARNING("PopupMessageQueue: a message without text is not shown");
        return 0;
    }
    if (!NotificationType::IsValid(type)) {
        QTH_LOG_WARNING("PopupMessageQueue: a message of unknown type %d is shown as Information",
                        static_cast<int>(type));
        type = NotificationType::Information;
    }
    const Key key{type, text};
    for (Message& shown : m_shown) {
        if (shown.own || !(shown.key == key) || !shown.toast || shown.toast->IsClosing())
            continue;
        shown.count += 1;
        shown.toast->SetCount(shown.count);
        shown.toast->SetTimeout(timeoutMs);
        shown.toast->RestartTimeout();
        return shown.id;
    }
    const auto waiting = m_waitingByKey.constFind(key);
    if (waiting != m_waitingByKey.cend()) {
        Message& message = *waiting.value();
        message.count += 1;
        message.timeout = timeoutMs;
        return message.id;
    }
    Message message;
    message.id = ++g_lastId;
    message.key = key;
    message.timeout = timeoutMs;
    message.action = action;
    m_waiting.push_back(std::move(message));
    m_waitingByKey.insert(key, std::prev(m_waiting.end()));
    const quint64 id = m_waiting.back().id;
    ShowWaiting();
    EmitCounts();
    return id;
}

quint64 PopupMessageQueue::Post(PopupMessage* toast)
{
    if (!toast) {
        QTH_LOG_WARNING("PopupMessageQueue: no toast to post");
        return 0;
    }
    if (m_windowGone) {
        QTH_LOG_WARNING("PopupMessageQueue: the window is being deleted; nothing is shown");
        return 0;
    }
    if (toast->m_queue || toast->IsClosing()) {
        QTH_LOG_WARNING("PopupMessageQueue: a toast already queued or closing is not posted again");
        return 0;
    }
    toast->m_queue = this;
    if (toast->parentWidget() != m_window)
        toast->setParent(m_window);
    toast->hide();
    connect(toast, &PopupMessage::Closed, this, [this, toast] { OnToastClosed(toast); });
    Message message;
    message.id = ++g_lastId;
    message.key = Key{toast->GetType(), toast->GetText()};
    message.toast = toast;
    message.own = true;
    m_waiting.push_back(std::move(message));
    const quint64 id = m_waiting.back().id;
    ShowWaiting();
    EmitCounts();
    return id;
}

PopupMessage* PopupMessageQueue::Toast(quint64 id) const
{
    for (const Message& shown : m_shown) {
        if (shown.id == id)
            return shown.toast;
    }
    const auto waiting = std::find_if(m_waiting.begin(), m_waiting.end(),
                                      [id](const Message& message) { return message.id == id; });
    return waiting != m_waiting.end() ? waiting->toast.data() : nullptr;
}

bool PopupMessageQueue::Contains(quint64 id) const
{
    return std::any_of(m_shown.begin(), m_shown.end(), [id](const Message& message) { return message.id == id; })
           || std::any_of(m_waiting.begin(), m_waiting.end(),
                          [id](const Message& message) { return message.id == id; });
}

bool PopupMessageQueue::Remove(quint64 id)
{
    for (const Message& shown : m_shown) {
        if (shown.id == id) {
            if (shown.toast)
                shown.toast->Dismiss();
            return true;
        }
    }
    const auto waiting = FindWaiting(id);
    if (waiting == m_waiting.end())
        return false;
    DropWaiting(waiting);
    EmitCounts();
    return true;
}

void PopupMessageQueue::Clear()
{
    while (!m_waiting.empty())
        DropWaiting(m_waiting.begin());
    QList<QPointer<PopupMessage>> toasts;
    for (const Message& shown : m_shown)
        toasts << shown.toast;
    for (const QPointer<PopupMessage>& toast : toasts) {
        if (toast)
            toast->Dismiss();
    }
    EmitCounts();
}

int PopupMessageQueue::VisibleCount() const
{
    return m_shown.size();
}

int PopupMessageQueue::WaitingCount() const
{
    return static_cast<int>(m_waiting.size());
}

QList<PopupMessage*> PopupMessageQueue::VisibleToasts() const
{
    QList<PopupMessage*> toasts;
    for (const Message& shown : m_shown) {
        if (shown.toast)
            toasts << shown.toast;
    }
    return toasts;
}

int PopupMessageQueue::GetMaxVisible() const
{
    return m_maxVisible;
}

void PopupMessageQueue::SetMaxVisible(int count)
{
    if (count < 1) {
        QTH_LOG_WARNING("PopupMessageQueue: at most %d toasts visible is ignored; at least one is", count);
        return;
    }
    if (count == m_maxVisible)
        return;
    m_maxVisible = count;
    ShowWaiting();
    EmitCounts();
}

PopupMessage::Position PopupMessageQueue::GetPosition() const
{
    return m_position;
}

void PopupMessageQueue::SetPosition(PopupMessage::Position position)
{
    if (position < PopupMessage::TopLeft || position > PopupMessage::BottomCenter) {
        QTH_LOG_WARNING("PopupMessageQueue: an unknown position %d is ignored", static_cast<int>(position));
        return;
    }
    if (position == m_position)
        return;
    m_position = position;
    Restack(false);
}

int PopupMessageQueue::GetMargin() const
{
    return m_margin;
}

void PopupMessageQueue::SetMargin(int margin)
{
    if (margin < 0) {
        QTH_LOG_WARNING("PopupMessageQueue: a negative margin (%d) is ignored", margin);
        return;
    }
    if (margin == m_margin)
        return;
    m_margin = margin;
    Restack(false);
}

int PopupMessageQueue::GetSpacing() const
{
    return m_spacing;
}

void PopupMessageQueue::SetSpacing(int spacing)
{
    if (spacing < 0) {
        QTH_LOG_WARNING("PopupMessageQueue: a negative spacing (%d) is ignored", spacing);
        return;
    }
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    Restack(false);
}

// Waiting messages get toasts while there is room, each in turn nearest the edge.
void PopupMessageQueue::ShowWaiting()
{
    if (!m_window)
        return;
    QVector<quint64> shownNow;
    while (m_shown.size() < m_maxVisible && !m_waiting.empty()) {
        Message message = std::move(m_waiting.front());
        if (!message.own)
            m_waitingByKey.remove(message.key);
        m_waiting.pop_front();
        PopupMessage* toast = message.toast;
        if (!message.own) {
            toast = new PopupMessage(message.key.type, message.key.text, m_window);
            toast->SetTimeout(message.timeout);
            toast->SetAction(message.action);
            toast->SetCount(message.count);
            toast->m_queue = this;
            connect(toast, &PopupMessage::Closed, this, [this, toast] { OnToastClosed(toast); });
            message.toast = toast;
        }
        toast->installEventFilter(this);
        shownNow << message.id;
        m_shown.prepend(std::move(message));
    }
    if (shownNow.isEmpty())
        return;
    Restack(true);
    for (const Message& shown : m_shown) {
        if (shown.toast && shownNow.contains(shown.id))
            shown.toast->show();
    }
    Raise();
    for (const quint64 id : shownNow)
        Q_EMIT MessageShown(id);
}

void PopupMessageQueue::Restack(bool glide)
{
    if (!m_window)
        return;
    const QSize area = m_window->size();
    const bool top = IsTop(m_position);
    const bool animate = glide && WidgetAnimationsEnabled(m_window);
    int offset = m_margin;
    for (Message& shown : m_shown) {
        PopupMessage* toast = shown.toast;
        if (!toast)
            continue;
        const int preferred = toast->sizeHint().width();
        const int width = qMax(toast->minimumSizeHint().width(), qMin(preferred, area.width() - 2 * m_margin));
        // Its word-wrapped text gives its layout a height for every width.
        const int height = toast->heightForWidth(width);
        int x = (area.width() - width) / 2;
        if (m_position == PopupMessage::TopLeft || m_position == PopupMessage::BottomLeft)
            x = m_margin;
        else if (m_position == PopupMessage::TopRight || m_position == PopupMessage::BottomRight)
            x = area.width() - m_margin - width;
        int y = top ? offset : area.height() - offset - height;
        offset += height + m_spacing;
        // Inside the window as far as it goes: one too big keeps its start in sight.
        x = qBound(0, x, qMax(0, area.width() - width));
        y = qBound(0, y, qMax(0, area.height() - height));
        const QPoint target(x, y);
        toast->resize(width, height);
        if (animate && !toast->isHidden() && toast->pos() != target) {
            if (shown.glide && shown.glide->state() == QAbstractAnimation::Running && shown.glide->endValue() == target)
                continue;
            if (!shown.glide)
                shown.glide = new QPropertyAnimation(toast, "pos", toast);
            shown.glide->stop();
            shown.glide->setDuration(kGlideDuration);
            shown.glide->setEasingCurve(QEasingCurve::OutCubic);
            shown.glide->setStartValue(toast->pos());
            shown.glide->setEndValue(target);
            shown.glide->start();
        } else {
            if (shown.glide)
                shown.glide->stop();
            toast->move(target);
        }
    }
}

// The newest toast on top, should they overlap in a small window.
void PopupMessageQueue::Raise()
{
    for (auto it = m_shown.crbegin(); it != m_shown.crend(); ++it) {
        if (it->toast)
            it->toast->raise();
    }
}

void PopupMessageQueue::ScheduleRefill()
{
    if (m_refillPending)
        return;
    m_refillPending = true;
    // Later, from the event loop: a toast may be closing in its destructor, or its window
    // in its own.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_refillPending = false;
            ShowWaiting();
            Restack(true);
            EmitCounts();
        },
        Qt::QueuedConnection);
}

void PopupMessageQueue::OnToastClosed(PopupMessage* toast)
{
    for (int i = 0; i < m_shown.size(); ++i) {
        if (m_shown[i].toast.data() != toast)
            continue;
        const quint64 id = m_shown[i].id;
        m_shown.removeAt(i);
        Q_EMIT MessageRemoved(id);
        EmitCounts();
        ScheduleRefill();
        return;
    }
    const auto waiting = std::find_if(m_waiting.begin(), m_waiting.end(),
                                      [toast](const Message& message) { return message.toast.data() == toast; });
    if (waiting != m_waiting.end()) {
        waiting->toast = nullptr; // closed by its owner: not deleted again
        DropWaiting(waiting);
        EmitCounts();
    }
}

void PopupMessageQueue::DropWaiting(Waiting::iterator message)
{
    const quint64 id = message->id;
    if (message->own) {
        if (message->toast) {
            disconnect(message->toast, nullptr, this, nullptr);
            message->toast->deleteLater();
        }
    } else {
        m_waitingByKey.remove(message->key);
    }
    m_waiting.erase(message);
    Q_EMIT MessageRemoved(id);
}

PopupMessageQueue::Waiting::iterator PopupMessageQueue::FindWaiting(quint64 id)
{
    return std::find_if(m_waiting.begin(), m_waiting.end(), [id](const Message& message) { return message.id == id; });
}

void PopupMessageQueue::EmitCounts()
{
    const int visible = VisibleCount();
    const int waiting = WaitingCount();
    if (visible == m_lastVisible && waiting == m_lastWaiting)
        return;
    m_lastVisible = visible;
    m_lastWaiting = waiting;
    Q_EMIT CountsChanged(visible, waiting);
}

bool PopupMessageQueue::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window) {
        if (event->type() == QEvent::Resize) {
            Restack(false);
        } else if (event->type() == QEvent::ChildAdded && !m_shown.isEmpty()) {
            // A widget the window gets later goes under the toasts.
            if (static_cast<QChildEvent*>(event)->child()->isWidgetType())
                Raise();
        }
    } else if (event->type() == QEvent::LayoutRequest) {
        // A toast's content changed its size.
        ScheduleRefill();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace OrvantaQT
