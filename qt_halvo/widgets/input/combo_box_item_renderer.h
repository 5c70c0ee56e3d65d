#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QSize>

class QModelIndex;
class QPainter;
class QRect;
class QStyleOptionViewItem;

namespace OrvantaQT {

// Paints one row of a combo box, in its closed field and in its popup alike, so that the
// field looks like the row that was chosen (see CustomSingleLineComboBox). A renderer
// keeps no widget: all it needs comes in the arguments, so one renderer may serve several
// combo boxes.
//
// option comes filled as QStyledItemDelegate::initStyleOption() fills it for the index
// (text, icon, font, palette with the row's ForegroundRole, features), with its rect equal
// to rect and these states:
// - State_Enabled: missing for a disabled row, or when the box is disabled;
// - State_Selected: the row under the mouse or the keyboard in the popup, never the field;
// - State_Active: the window is active.
// Focus and hover show on the box's frame, so the field's option has neither.
// option.widget says where the row goes: the combo box itself for its field, the popup's
// view for a row of the list. In the field, the palette's Text is the box's ButtonText,
// since the field sits on a button rather than on a list's base.
class QT_HALVO_EXPORT ComboBoxItemRenderer
{
public:
    ComboBoxItemRenderer() = default;
    virtual ~ComboBoxItemRenderer();

    // Paints the row into rect; whatever falls outside rect is clipped away.
    virtual void Paint(QPainter* painter, const QRect& rect, const QModelIndex& index,
                       const QStyleOptionViewItem& option) const = 0;

    // The size the row needs, for the popup's rows and for the box's size hints (the widest
    // and the tallest row). An empty size is a mistake of the renderer: the box logs it once
    // and uses the default renderer's size instead.
    virtual QSize SizeHint(const QModelIndex& index, const QStyleOptionViewItem& option) const = 0;

private:
    Q_DISABLE_COPY(ComboBoxItemRenderer)
};

} // namespace OrvantaQT
