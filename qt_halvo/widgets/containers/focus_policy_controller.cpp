#include <qt_halvo/widgets/containers/focus_policy_controller.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QChildEvent>
#include <QtCore/QHash>
#include <QtCore/QMetaObject>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <utility>

namespace OrvantaQT {

namespace {

// What every controller holds out: a widget under two roots that are both out keeps its
// earlier policy here until the last of them gives it back. Keyed by address, which is
// all that is left of a widget being destroyed. GUI thread only.
struct HeldOut
{
    Qt::FocusPolicy before = Qt::NoFocus;
    int holders = 0;
};

QHash<const QObject*, HeldOut>& Held()
{
    static QHash<const QObject*, HeldOut> held;
    return held;
}

bool InSubtree(const QWidget* root, const QWidget* widget)
{
    return widget == root || root->isAncestorOf(widget);
}

} // namespace

FocusPolicyController::FocusPolicyController(QWidget* root, QObject* parent)
    : QObject(parent ? parent : root)
    , m_root(root)
{
    if (!root)
        QTH_LOG_WARNING("FocusPolicyController: no root widget; the controller does nothing");
}

FocusPolicyController::~FocusPolicyController()
{
    if (!m_focusable)
        GiveBackAll();
}

QWidget* FocusPolicyController::Root() const
{
    return m_root;
}

bool FocusPolicyController::IsFocusable() const
{
    return m_focusable;
}

void FocusPolicyController::SetFocusable(bool focusable)
{
    if (focusable == m_focusable)
        return;
    m_focusable = focusable;
    if (focusable) {
        GiveBackAll();
        return;
    }
    if (!m_root) {
        QTH_LOG_WARNING("FocusPolicyController: no root widget (none given, or deleted); nothing to take out");
        return;
    }
    TakeOutSubtree(m_root);
    MoveFocusOut();
}

bool FocusPolicyController::eventFilter(QObject* watched, QEvent* event)
{
    if (m_focusable || !m_root || (event->type() != QEvent::ChildAdded && event->type() != QEvent::ChildPolished))
        return false;
    QObject* child = static_cast<QChildEvent*>(event)->child();
    // A watched widget moved out of the subtree meanwhile is no longer the controller's.
    if (!child->isWidgetType() || !InSubtree(m_root, static_cast<QWidget*>(watched)))
        return false;
    if (event->type() == QEvent::ChildPolished) {
        TakeOutSubtree(static_cast<QWidget*>(child));
        return false;
    }
    // A widget made here is still in its constructor, which may set its own policy: it is
    // taken once the event loop runs (or when it is polished, if sooner).
    QMetaObject::invokeMethod(
        this,
        [this, widget = QPointer<QWidget>(static_cast<QWidget*>(child))] {
            if (widget && !m_focusable && m_root && InSubtree(m_root, widget))
                TakeOutSubtree(widget);
        },
        Qt::QueuedConnection);
    return false;
}

void FocusPolicyController::TakeOutSubtree(QWidget* top)
{
    // Windows below the subtree (dialogs, popups) keep their own focus chains.
    if (top != m_root && top->isWindow())
        return;
    TakeOutWidget(top);
    for (QObject* child : top->children()) {
        if (child->isWidgetType())
            TakeOutSubtree(static_cast<QWidget*>(child));
    }
}

void FocusPolicyController::TakeOutWidget(QWidget* widget)
{
    if (m_taken.contains(widget))
        return;
    m_taken.append(widget);
    connect(widget, &QObject::destroyed, this, &FocusPolicyController::OnWidgetDestroyed);
    widget->installEventFilter(this);
    HeldOut& held = Held()[widget];
    if (held.holders++ == 0) {
        held.before = widget->focusPolicy();
        widget->setFocusPolicy(Qt::NoFocus);
    }
}

void FocusPolicyController::GiveBackAll()
{
    const QVector<QWidget*> taken = std::exchange(m_taken, {});
    for (QWidget* widget : taken) {
        disconnect(widget, &QObject::destroyed, this, &FocusPolicyController::OnWidgetDestroyed);
        widget->removeEventFilter(this);
        const auto held = Held().find(widget);
        if (held == Held().end() || --held->holders > 0)
            continue;
        // Anything but NoFocus was set by the host meanwhile, and stays.
        if (widget->focusPolicy() == Qt::NoFocus)
            widget->setFocusPolicy(held->before);
        Held().erase(held);
    }
}

void FocusPolicyController::MoveFocusOut()
{
    QWidget* focus = m_root->window()->focusWidget();
    if (!focus || !InSubtree(m_root, focus))
        return;
    // As Qt moves the focus off a widget that is disabled: on along the tab chain, past
    // the subtree, or nowhere.
    QWidget* window = focus->window();
    for (QWidget* candidate = focus->nextInFocusChain(); candidate && candidate != focus;
         candidate = candidate->nextInFocusChain()) {
        if (candidate->window() != window || InSubtree(m_root, candidate) || candidate->focusProxy())
            continue;
        if ((candidate->focusPolicy() & Qt::TabFocus) && candidate->isEnabled() && candidate->isVisibleTo(window)) {
            candidate->setFocus(Qt::TabFocusReason);
            return;
        }
    }
    focus->clearFocus();
}

void FocusPolicyController::OnWidgetDestroyed(QObject* widget)
{
    // Compared as an address only: the widget is on its way out.
    const auto isGone = [widget](const QWidget* taken) { return static_cast<const QObject*>(taken) == widget; };
    m_taken.erase(std::remove_if(m_taken.begin(), m_taken.end(), isGone), m_taken.end());
    const auto held = Held().find(widget);
    if (held != Held().end() && --held->holders <= 0)
        Held().erase(held);
}

} // namespace OrvantaQT
