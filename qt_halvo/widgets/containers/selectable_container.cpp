#include <qt_halvo/widgets/containers/selectable_container.h>

#include <qt_halvo/styles/hover_p.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/views/accessibility_factory_p.h>

#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QStyleOptionFocusRect>

namespace OrvantaQT {

namespace {

// Screen readers see an item of a list that can be selected, pressed and toggled.
class CardAccessible : public QAccessibleWidget
{
public:
    explicit CardAccessible(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::ListItem)
    {
    }

    SelectableContainer* Container() const { return static_cast<SelectableContainer*>(widget()); }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = Container()->IsSelected();
        state.hotTracked = Container()->IsHovered();
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        // A card is read by what it shows when it has no name of its own.
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty()) {
            QStringList names;
            for (int i = 0; i < childCount(); ++i) {
                const QAccessibleInterface* part = child(i);
                const QString name = part ? part->text(QAccessible::Name) : QString();
                if (!name.isEmpty())
                    names << name;
            }
            return names.join(QStringLiteral(", "));
        }
        return QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override
    {
        return QAccessibleWidget::actionNames() << pressAction() << toggleAction();
    }

    void doAction(const QString& name) override
    {
        SelectableContainer* container = Container();
        if (name == pressAction()) {
            container->Click();
        } else if (name == toggleAction()) {
            // Toggling what a click cannot take back does nothing.
            if (!container->IsSelected() || container->IsDeselectable())
                container->Click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

    QStringList keyBindingsForAction(const QString& name) const override
    {
        if (name == pressAction())
            return {QStringLiteral("Space")};
        return QAccessibleWidget::keyBindingsForAction(name);
    }
};

bool IsPlainKey(const QKeyEvent* event)
{
    return (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

} // namespace

SelectableContainer::SelectableContainer(QWidget* parent)
    : QFrame(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    SetStyleProperties(this, {{"hovered", false}, {"selected", false}}, false);
}

SelectableContainer::~SelectableContainer() = default;

// Made through the library's accessibility factory.
QAccessibleInterface* SelectableContainerAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("OrvantaQT::SelectableContainer") && object && object->isWidgetType())
        return new CardAccessible(static_cast<QWidget*>(object));
    return nullptr;
}

bool SelectableContainer::IsSelected() const
{
    return m_selected;
}

void SelectableContainer::SetSelected(bool selected)
{
    if (selected == m_selected)
        return;
    m_selected = selected;
    SetStyleProperty(this, "selected", selected, true);
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    Q_EMIT SelectedChanged(selected);
}

bool SelectableContainer::IsHovered() const
{
    return m_hovered;
}

bool SelectableContainer::IsDeselectable() const
{
    return m_deselectable;
}

void SelectableContainer::SetDeselectable(bool deselectable)
{
    m_deselectable = deselectable;
}

void SelectableContainer::Click()
{
    if (!isEnabled())
        return;
    // The state first, then the click, as a checkable button toggles before clicked().
    if (!m_selected)
        SetSelected(true);
    else if (m_deselectable)
        SetSelected(false);
    Q_EMIT Clicked();
}

void SelectableContainer::SetHovered(bool hovered)
{
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    SetStyleProperty(this, "hovered", hovered, true);
    Q_EMIT HoveredChanged(hovered);
}

bool SelectableContainer::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Enter:
        SetHovered(true);
        break;
    case QEvent::Leave:
        if (!PointerStillOver(this))
            SetHovered(false);
        break;
    case QEvent::Hide:
        SetHovered(false);
        m_pressed = false;
        break;
    default:
        break;
    }
    return QFrame::event(event);
}

void SelectableContainer::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        m_pressed = false;
    QFrame::changeEvent(event);
}

void SelectableContainer::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (IsPlainKey(event) && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)) {
        if (!event->isAutoRepeat())
            Click();
        return;
    }
    QFrame::keyPressEvent(event);
}

void SelectableContainer::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QFrame::mousePressEvent(event);
        return;
    }
    m_pressed = true;
}

void SelectableContainer::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QFrame::mouseReleaseEvent(event);
        return;
    }
    // A press that slides off and is released outside is no click.
    const bool click = m_pressed && rect().contains(event->pos());
    m_pressed = false;
    if (click)
        Click();
}

void SelectableContainer::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    // Style sheets show the focus with :focus; the style's focus frame shows it otherwise,
    // once the keyboard has moved the focus in the window (as buttons do).
    if (!hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    QPainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = contentsRect().adjusted(1, 1, -1, -1);
    option.backgroundColor = palette().color(backgroundRole());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

} // namespace OrvantaQT
