#include "right_align_combo_box_p.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyleOptionComboBox>

namespace OrvantaQT {

RightAlignComboBox::RightAlignComboBox(QWidget* parent)
    : QComboBox(parent)
{
}

void RightAlignComboBox::SetConstEnding(const QString& ending)
{
    m_constEnding = ending;
    update();
}

QString RightAlignComboBox::ConstEnding() const
{
    return m_constEnding;
}

void RightAlignComboBox::SetTextToDraw(const QString& text)
{
    m_textToDraw = text;
    update();
}

void RightAlignComboBox::SetAppendEnding(bool append)
{
    m_appendEnding = append;
    update();
}

int RightAlignComboBox::ArrowWidth() const
{
    return m_arrowWidth;
}

void RightAlignComboBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
    m_arrowWidth = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).width();

    // Inset by the arrow on both sides, so that right-aligned text keeps clear of it.
    const QRect label = option.rect.adjusted(m_arrowWidth, 0, -m_arrowWidth, 0);
    if (m_textToDraw.isEmpty() || !isEnabled()) {
        style()->drawControl(QStyle::CE_ComboBoxLabel, &option, &painter, this);
        return;
    }
    const QFontMetrics metrics = fontMetrics();
    int available = label.width();
    if (m_appendEnding)
        available -= metrics.boundingRect(m_constEnding).width();
    QString text = metrics.elidedText(m_textToDraw, Qt::ElideRight, available);
    if (m_appendEnding)
        text += m_constEnding;
    style()->drawItemText(&painter, label, Qt::AlignRight | Qt::AlignVCenter, option.palette, isEnabled(), text,
                          QPalette::Text);
}

} // namespace OrvantaQT
