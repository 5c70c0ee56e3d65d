#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QComboBox>

#include <memory>

class QStyleOptionViewItem;

namespace OrvantaQT {

class ComboBoxItemRenderer;
class SingleLineComboBoxRows;
class SingleLineComboBoxDelegate;

// A combo box whose closed field and popup rows are painted by one renderer, so that the
// field always looks like the chosen row. Only the painting and the sizes are its own:
// models (setModel, setModelColumn, setRootModelIndex), keys, the wheel, typing to search,
// separators and accessibility (whose text stays the row's DisplayRole) are QComboBox's.
// While nothing is chosen the field shows the placeholder text, if any.
//
// The renderer is shared: the box keeps its share while it lives, and the caller may keep,
// drop or share it with other boxes, in any order. Without one the box uses a
// DefaultComboBoxItemRenderer.
//
// The popup's rows are painted by an item delegate ("CustomSingleLineComboBoxDelegate")
// that the box puts on its view. setItemDelegate() replaces it (Qt 5 deletes the old one),
// and a view given with setView() keeps its own delegate unless given itemDelegate() back
// first; the field is painted by the renderer all the same.
//
// The box is not editable. setEditable(true) is allowed and gives Qt's own line edit in the
// field, which then shows and takes the text while the renderer paints the popup's rows only;
// made non-editable again, the field is the renderer's again.
//
// The size hints fit the widest and the tallest row as the renderer measures them, inside
// the style's combo box frame, as QComboBox fits its texts: with AdjustToContents anew on
// each call, with AdjustToContentsOnFirstShow until the box is first shown (and after a new
// renderer, model, font or style), with the AdjustToMinimumContentsLength policies as wide
// as minimumContentsLength characters but as tall as the tallest row.
class QT_HALVO_EXPORT CustomSingleLineComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CustomSingleLineComboBox(QWidget* parent = nullptr);
    ~CustomSingleLineComboBox() override;

    // Never null: the default renderer while none is set.
    std::shared_ptr<ComboBoxItemRenderer> GetRenderer() const;
    // Repaints and measures again. Null is logged and puts back the default renderer.
    void SetRenderer(std::shared_ptr<ComboBoxItemRenderer> renderer);

    // QComboBox::setModel(), which is not virtual, hidden to log a null model (the box keeps
    // the model it has) and to measure again. Through a QComboBox pointer Qt's own runs.
    void setModel(QAbstractItemModel* model);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QModelIndex CurrentModelIndex() const;
    QStyleOptionViewItem FieldOption(const QModelIndex& index, const QRect& rect) const;
    QSize RowsSize() const;
    QSize MeasureRows() const;
    QSize HintFor(bool minimum) const;
    void Remeasure();

    std::shared_ptr<SingleLineComboBoxRows> m_rows;
    QPointer<SingleLineComboBoxDelegate> m_delegate;
    bool m_shown = false;
    // The rows' size kept since the first show under AdjustToContentsOnFirstShow.
    mutable QSize m_keptRowsSize;
};

} // namespace OrvantaQT
