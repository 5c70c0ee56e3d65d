#pragma once

#include <qt_halvo/widgets/input/combo_box_item_renderer.h>

namespace OrvantaQT {

// Paints a row as a list shows it, on one line: the row's icon (at option.decorationSize)
// at the leading edge, left or, right to left, right; then its text, with line breaks as
// spaces, elided as option.textElideMode says where it does not fit. A selected row lies on
// the palette's Highlight in HighlightedText, any other in Text (the row's ForegroundRole
// when it has one), in the colour group of its state: Disabled without State_Enabled,
// Inactive without State_Active. The size is the text's width and the font's height, with
// the icon and the style's item margins.
class QT_HALVO_EXPORT DefaultComboBoxItemRenderer : public ComboBoxItemRenderer
{
public:
    DefaultComboBoxItemRenderer() = default;
    ~DefaultComboBoxItemRenderer() override;

    void Paint(QPainter* painter, const QRect& rect, const QModelIndex& index,
               const QStyleOptionViewItem& option) const override;
    QSize SizeHint(const QModelIndex& index, const QStyleOptionViewItem& option) const override;
};

} // namespace OrvantaQT
