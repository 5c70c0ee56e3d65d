#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>

#include <QtGui/QPainter>
#include <QtWidgets/QStyleOptionComboBox>

namespace OrvantaQT {

ComboBoxWithPlaceholder::ComboBoxWithPlaceholder(QWidget* parent)
    : QComboBox(parent)
{
}

QString ComboBoxWithPlaceholder::GetPlaceholderText() const
{
    return m_placeholderText;
}

void ComboBoxWithPlaceholder::SetPlaceholderText(const QString& text)
{
    if (text == m_placeholderText)
        return;
    m_placeholderText = text;
    update();
}

void ComboBoxWithPlaceholder::paintEvent(QPaintEvent* event)
{
    QComboBox::paintEvent(event);
    if (currentIndex() >= 0 || m_placeholderText.isEmpty())
        return;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    QColor text = option.palette.color(QPalette::Text);
    text.setAlpha(128);
    option.palette.setBrush(QPalette::All, QPalette::Text, text);
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    QPainter painter(this);
    style()->drawItemText(&painter, field, Qt::AlignLeft | Qt::AlignVCenter, option.palette, isEnabled(),
                          m_placeholderText, QPalette::Text);
}

} // namespace OrvantaQT
