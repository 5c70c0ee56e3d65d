#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QVector>
#include <QtWidgets/QWidget>

class QHBoxLayout;

namespace OrvantaQT {

// A row of buttons (or any small widgets) without margins, for the ends of fields and
// bars. The space between them comes from the style (QStyle::layoutSpacing of the
// neighbours' control types) unless a spacing is set. Mouse tracking is on, and Enter,
// Leave and moves reach event filters installed on it: a filter learns when the pointer
// comes over the row and when it leaves it, passing over its buttons on the way.
class QT_HALVO_EXPORT ButtonContainer : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int spacing READ GetSpacing WRITE SetSpacing RESET ResetSpacing)

public:
    explicit ButtonContainer(QWidget* parent = nullptr);
    ~ButtonContainer() override;

    // Appends the widget to the row, taking it as a child; a widget already in the row
    // moves. Stretches are counted as items of the row.
    void AddButton(QWidget* button, int stretch = 0, Qt::Alignment alignment = Qt::Alignment());
    // Inserts at an index of the row; a negative index or one past the end appends.
    void InsertButton(int index, QWidget* button, int stretch = 0, Qt::Alignment alignment = Qt::Alignment());
    void AddStretch(int stretch = 0);
    void InsertStretch(int index, int stretch = 0);
    // Takes the widget out of the row and makes it a top-level widget without a parent,
    // hidden, as QLayout::removeWidget leaves it to its owner.
    void RemoveButton(QWidget* button);

    // The widgets of the row in order, stretches left out.
    QVector<QWidget*> Buttons() const;
    // The items of the row, stretches included.
    int Count() const;

    // The set spacing, or -1 while it comes from the style.
    int GetSpacing() const;
    void SetSpacing(int spacing);
    void ResetSpacing();

    QHBoxLayout* RowLayout() const;

private:
    QHBoxLayout* m_layout;
    int m_spacing = -1;
};

} // namespace OrvantaQT
