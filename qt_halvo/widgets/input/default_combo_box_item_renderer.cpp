#include <qt_halvo/widgets/input/default_combo_box_item_renderer.h>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionViewItem>

namespace OrvantaQT {

namespace {

const QStyle* StyleOf(const QStyleOptionViewItem& option)
{
    return option.widget ? option.widget->style() : QApplication::style();
}

// The margins QStyledItemDelegate gives an item's text, for rows that line up with a list's.
int HorizontalMargin(const QStyleOptionViewItem& option)
{
    return StyleOf(option)->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
}

int VerticalMargin(const QStyleOptionViewItem& option)
{
    return StyleOf(option)->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, option.widget);
}

bool HasIcon(const QStyleOptionViewItem& option)
{
    return !option.icon.isNull() && option.decorationSize.isValid() && !option.decorationSize.isEmpty();
}

// One line, whatever breaks the text has.
QString OneLine(QString text)
{
    for (QChar& c : text) {
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    return text;
}

QPalette::ColorGroup ColorGroup(QStyle::State state)
{
    if (!(state & QStyle::State_Enabled))
        return QPalette::Disabled;
    return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

} // namespace

DefaultComboBoxItemRenderer::~DefaultComboBoxItemRenderer() = default;

void DefaultComboBoxItemRenderer::Paint(QPainter* painter, const QRect& rect, const QModelIndex&,
                                        const QStyleOptionViewItem& option) const
{
    const QPalette::ColorGroup group = ColorGroup(option.state);
    const bool selected = option.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(rect, option.palette.brush(group, QPalette::Highlight));

    const int margin = HorizontalMargin(option);
    // Laid out left to right, then mirrored for right-to-left rows.
    QRect text = rect.adjusted(margin, 0, -margin, 0);
    if (HasIcon(option)) {
        const QSize size = option.decorationSize;
        const QRect icon(text.left(), rect.top() + (rect.height() - size.height()) / 2, size.width(), size.height());
        const QIcon::Mode mode = !(option.state & QStyle::State_Enabled) ? QIcon::Disabled
                                 : selected                               ? QIcon::Selected
                                                                          : QIcon::Normal;
        option.icon.paint(painter, QStyle::visualRect(option.direction, rect, icon), Qt::AlignCenter, mode);
        text.setLeft(icon.right() + 1 + margin);
    }
    if (option.text.isEmpty() || text.width() <= 0)
        return;
    const QFontMetrics metrics(option.font);
    const QString shown = metrics.elidedText(OneLine(option.text), option.textElideMode, text.width());
    painter->setFont(option.font);
    painter->setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    painter->setLayoutDirection(option.direction);
    painter->drawText(QStyle::visualRect(option.direction, rect, text),
                      QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                      shown);
}

QSize DefaultComboBoxItemRenderer::SizeHint(const QModelIndex&, const QStyleOptionViewItem& option) const
{
    const QFontMetrics metrics(option.font);
    const int margin = HorizontalMargin(option);
    int width = 2 * margin + metrics.horizontalAdvance(OneLine(option.text));
    int height = metrics.height();
    if (HasIcon(option)) {
        width += option.decorationSize.width() + margin;
        height = qMax(height, option.decorationSize.height());
    }
    return QSize(width, height + 2 * VerticalMargin(option));
}

} // namespace OrvantaQT
