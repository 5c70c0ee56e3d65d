#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>

class QComboBox;

namespace OrvantaQT {

// Keeps a combo box's popup open when the mouse is released over a disabled row.
class QT_HALVO_EXPORT DisabledItemComboBoxHelper : public QObject
{
    Q_OBJECT

public:
    explicit DisabledItemComboBoxHelper(QComboBox* combo);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* m_combo;
};

// Turns a combo box into a read-only field that opens its list on a click anywhere on
// it: editable (so that its text can be styled as a line edit's, through the style
// property "ComboBoxEmbedded"), but read-only, without a context menu or selection.
class QT_HALVO_EXPORT EditableReadOnlyComboBoxHelper : public QObject
{
    Q_OBJECT

public:
    explicit EditableReadOnlyComboBoxHelper(QComboBox* combo);

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void OnSelectionChanged();
    void OnCursorPositionChanged(int oldPosition, int newPosition);

private:
    QComboBox* m_combo;
};

// Names row index of the combo box for assistive technology: "<combo's name>_<name>",
// or name alone when the combo box has no accessible name.
QT_HALVO_EXPORT void SetAccessibleNameForComboboxItem(QComboBox* combo, int index, const QString& name);

} // namespace OrvantaQT
