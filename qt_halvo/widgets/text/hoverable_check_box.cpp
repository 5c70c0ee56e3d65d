#include <qt_halvo/widgets/text/hoverable_check_box.h>

#include <QtGui/QMouseEvent>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QStylePainter>

namespace OrvantaQT {

HoverableCheckBox::HoverableCheckBox(QWidget* parent)
    : QCheckBox(parent)
{
}

void HoverableCheckBox::SetHovered(bool hovered)
{
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    update();
}

bool HoverableCheckBox::IsHovered() const
{
    return m_hovered;
}

void HoverableCheckBox::mouseMoveEvent(QMouseEvent* event)
{
    event->ignore();
}

void HoverableCheckBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (m_hovered)
        option.state |= QStyle::State_MouseOver;
    painter.drawControl(QStyle::CE_CheckBox, option);
}

} // namespace OrvantaQT
