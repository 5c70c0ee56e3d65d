#include <qt_halvo/widgets/containers/widget_group_helper.h>

#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/containers/selectable_container.h>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QButtonGroup>

namespace OrvantaQT {

namespace {

// "QPushButton "name"" for log lines.
QByteArray Describe(const QWidget* widget)
{
    return QByteArray(widget->metaObject()->className()) + " \"" + widget->objectName().toUtf8() + '"';
}

bool IsArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Up || key == Qt::Key_Right || key == Qt::Key_Down;
}

} // namespace

WidgetGroupHelper::WidgetGroupHelper(QObject* parent)
    : QObject(parent)
    , m_buttons(new QButtonGroup(this))
{
    // Qt keeps the checked button of an exclusive group from being unchecked by a click.
    m_buttons->setExclusive(true);
}

WidgetGroupHelper::~WidgetGroupHelper()
{
    for (const Member& member : qAsConst(m_members)) {
        // The event filter goes with the helper; the containers get their own setting back.
        if (auto* container = qobject_cast<SelectableContainer*>(member.widget))
            container->SetDeselectable(member.deselectableBefore);
    }
}

bool WidgetGroupHelper::AddWidget(QWidget* member)
{
    if (!member) {
        QTH_LOG_WARNING("WidgetGroupHelper: no widget to add");
        return false;
    }
    if (IndexOf(member) >= 0) {
        QTH_LOG_WARNING("WidgetGroupHelper: %s is in the group already", Describe(member).constData());
        return false;
    }
    auto* container = qobject_cast<SelectableContainer*>(member);
    auto* button = qobject_cast<QAbstractButton*>(member);
    if (!container && !(button && button->isCheckable())) {
        QTH_LOG_WARNING("WidgetGroupHelper: %s is neither a SelectableContainer nor a checkable button",
                        Describe(member).constData());
        return false;
    }
    if (button && button->group()) {
        QTH_LOG_WARNING("WidgetGroupHelper: %s is in a QButtonGroup already", Describe(member).constData());
        return false;
    }

    m_members.append(Member{member, member, container && container->IsDeselectable()});
    connect(member, &QObject::destroyed, this, &WidgetGroupHelper::OnMemberDestroyed);
    member->installEventFilter(this);
    // One selected at most: a selected newcomer gives way to the current member (before it
    // joins the exclusive group, which would uncheck the current one instead).
    if (m_current && IsMemberSelected(member))
        Deselect(member);
    if (container) {
        container->SetDeselectable(m_noneAllowed);
        connect(container, &SelectableContainer::SelectedChanged, this,
                [this, container](bool selected) { OnMemberSelected(container, selected); });
    } else {
        m_buttons->addButton(button);
        connect(button, &QAbstractButton::toggled, this,
                [this, button](bool checked) { OnMemberSelected(button, checked); });
    }
    if (!m_current && IsMemberSelected(member))
        MakeCurrent(member);
    return true;
}

void WidgetGroupHelper::RemoveWidget(QWidget* member)
{
    const int index = member ? IndexOf(member) : -1;
    if (index < 0) {
        QTH_LOG_WARNING("WidgetGroupHelper: %s is not in the group",
                        member ? Describe(member).constData() : "a null widget");
        return;
    }
    const Member removed = m_members.takeAt(index);
    disconnect(member, nullptr, this, nullptr);
    member->removeEventFilter(this);
    if (auto* container = qobject_cast<SelectableContainer*>(member))
        container->SetDeselectable(removed.deselectableBefore);
    else if (auto* button = qobject_cast<QAbstractButton*>(member))
        m_buttons->removeButton(button);
    if (member == m_current) {
        m_current = nullptr;
        Q_EMIT CurrentChanged(nullptr);
    }
}

QVector<QWidget*> WidgetGroupHelper::Widgets() const
{
    QVector<QWidget*> widgets;
    for (const Member& member : m_members) {
        if (member.widget)
            widgets << member.widget;
    }
    return widgets;
}

QWidget* WidgetGroupHelper::Current() const
{
    return m_current;
}

void WidgetGroupHelper::SetCurrent(QWidget* member)
{
    if (member && IndexOf(member) < 0) {
        QTH_LOG_WARNING("WidgetGroupHelper: %s is not in the group; the current member stays",
                        Describe(member).constData());
        return;
    }
    MakeCurrent(member);
}

int WidgetGroupHelper::CurrentIndex() const
{
    return m_current ? IndexOf(m_current) : -1;
}

bool WidgetGroupHelper::IsNoneAllowed() const
{
    return m_noneAllowed;
}

void WidgetGroupHelper::SetNoneAllowed(bool allowed)
{
    if (allowed == m_noneAllowed)
        return;
    m_noneAllowed = allowed;
    m_buttons->setExclusive(!allowed);
    for (const Member& member : qAsConst(m_members)) {
        if (auto* container = qobject_cast<SelectableContainer*>(member.widget))
            container->SetDeselectable(allowed);
    }
}

bool WidgetGroupHelper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    const int index = IndexOf(watched);
    if (!IsArrow(key->key()) || index < 0)
        return false;
    const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    QWidget* from = m_members.at(index).widget;
    if (QWidget* to = plain ? Neighbour(from, key->key() == Qt::Key_Right || key->key() == Qt::Key_Down) : nullptr) {
        MakeCurrent(to);
        to->setFocus(Qt::TabFocusReason);
    }
    // Taken also at the ends and with modifiers: a button's own arrow handling (which
    // ignores modifiers) would move among the buttons of the group alone, by geometry.
    return true;
}

void WidgetGroupHelper::OnMemberSelected(QWidget* member, bool selected)
{
    if (selected) {
        MakeCurrent(member);
        return;
    }
    if (member != m_current)
        return;
    // The current one was deselected: by a click in the none mode, by code, or by an
    // exclusive group checking another member just before that one reports.
    QWidget* other = nullptr;
    for (const Member& candidate : qAsConst(m_members)) {
        if (candidate.widget && candidate.widget != member && IsMemberSelected(candidate.widget)) {
            other = candidate.widget;
            break;
        }
    }
    MakeCurrent(other);
}

void WidgetGroupHelper::OnMemberDestroyed(QObject* member)
{
    const int index = IndexOf(member);
    if (index < 0)
        return;
    // Gone already as far as its own class goes: only forgotten.
    m_members.removeAt(index);
    if (member == m_current) {
        m_current = nullptr;
        Q_EMIT CurrentChanged(nullptr);
    }
}

void WidgetGroupHelper::MakeCurrent(QWidget* member)
{
    if (member == m_current)
        return;
    // Current first, so that the reports of the changes below find it settled.
    m_current = member;
    for (const Member& other : qAsConst(m_members)) {
        if (other.widget && other.widget != member)
            Deselect(other.widget);
    }
    if (member) {
        if (auto* container = qobject_cast<SelectableContainer*>(member))
            container->SetSelected(true);
        else if (auto* button = qobject_cast<QAbstractButton*>(member))
            button->setChecked(true);
    }
    if (member == m_current)
        Q_EMIT CurrentChanged(member);
}

void WidgetGroupHelper::Deselect(QWidget* member)
{
    if (auto* container = qobject_cast<SelectableContainer*>(member)) {
        container->SetSelected(false);
    } else if (auto* button = qobject_cast<QAbstractButton*>(member)) {
        if (!button->isChecked())
            return;
        // An exclusive group refuses to uncheck its checked button.
        const bool exclusive = m_buttons->exclusive();
        m_buttons->setExclusive(false);
        button->setChecked(false);
        m_buttons->setExclusive(exclusive);
    }
}

bool WidgetGroupHelper::IsMemberSelected(const QWidget* member) const
{
    if (const auto* container = qobject_cast<const SelectableContainer*>(member))
        return container->IsSelected();
    if (const auto* button = qobject_cast<const QAbstractButton*>(member))
        return button->isChecked();
    return false;
}

QWidget* WidgetGroupHelper::Neighbour(QWidget* from, bool next) const
{
    const int step = next ? 1 : -1;
    for (int i = IndexOf(from) + step; i >= 0 && i < m_members.size(); i += step) {
        QWidget* candidate = m_members.at(i).widget;
        if (candidate && candidate->isEnabled() && candidate->isVisibleTo(candidate->window()))
            return candidate;
    }
    return nullptr;
}

int WidgetGroupHelper::IndexOf(const QObject* member) const
{
    for (int i = 0; i < m_members.size(); ++i) {
        if (m_members.at(i).identity == member)
            return i;
    }
    return -1;
}

} // namespace OrvantaQT
