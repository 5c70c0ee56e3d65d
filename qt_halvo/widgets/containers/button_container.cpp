#include <qt_halvo/widgets/containers/button_container.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtWidgets/QHBoxLayout>

namespace OrvantaQT {

namespace {

// A negative index or one past the end appends.
int InsertionIndex(const QLayout* layout, int index)
{
    return index < 0 || index > layout->count() ? layout->count() : index;
}

} // namespace

ButtonContainer::ButtonContainer(QWidget* parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    // Hosts watch the row's hover through Enter, Leave and moves without a button held.
    setAttribute(Qt::WA_MouseTracking);
}

ButtonContainer::~ButtonContainer() = default;

void ButtonContainer::AddButton(QWidget* button, int stretch, Qt::Alignment alignment)
{
    InsertButton(-1, button, stretch, alignment);
}

void ButtonContainer::InsertButton(int index, QWidget* button, int stretch, Qt::Alignment alignment)
{
    if (!button) {
        QTH_LOG_WARNING("ButtonContainer: no button to insert");
        return;
    }
    if (button == this || button->isAncestorOf(this)) {
        QTH_LOG_WARNING("ButtonContainer: a container cannot hold itself or its own parent");
        return;
    }
    // A widget already in the row moves. QLayout would take it out itself, but only after
    // the index below is checked against the row with it still in.
    if (m_layout->indexOf(button) >= 0)
        m_layout->removeWidget(button);
    m_layout->insertWidget(InsertionIndex(m_layout, index), button, stretch, alignment);
}

void ButtonContainer::AddStretch(int stretch)
{
    m_layout->addStretch(stretch);
}

void ButtonContainer::InsertStretch(int index, int stretch)
{
    m_layout->insertStretch(InsertionIndex(m_layout, index), stretch);
}

void ButtonContainer::RemoveButton(QWidget* button)
{
    if (!button || m_layout->indexOf(button) < 0) {
        QTH_LOG_WARNING("ButtonContainer: %s is not in the row",
                        button ? qPrintable(button->objectName()) : "a null widget");
        return;
    }
    m_layout->removeWidget(button);
    button->hide();
    button->setParent(nullptr);
}

QVector<QWidget*> ButtonContainer::Buttons() const
{
    QVector<QWidget*> buttons;
    for (int i = 0; i < m_layout->count(); ++i) {
        if (QWidget* widget = m_layout->itemAt(i)->widget())
            buttons << widget;
    }
    return buttons;
}

int ButtonContainer::Count() const
{
    return m_layout->count();
}

int ButtonContainer::GetSpacing() const
{
    // QBoxLayout::spacing() answers the style's metric when none is set; the row asks the
    // style per pair of neighbours instead, so "from the style" is told apart here.
    return m_spacing;
}

void ButtonContainer::SetSpacing(int spacing)
{
    if (spacing < 0) {
        QTH_LOG_WARNING("ButtonContainer: spacing %d is negative; ResetSpacing() takes the style's", spacing);
        return;
    }
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    m_layout->setSpacing(spacing);
}

void ButtonContainer::ResetSpacing()
{
    if (m_spacing < 0)
        return;
    m_spacing = -1;
    m_layout->setSpacing(-1);
}

QHBoxLayout* ButtonContainer::RowLayout() const
{
    return m_layout;
}

} // namespace OrvantaQT
