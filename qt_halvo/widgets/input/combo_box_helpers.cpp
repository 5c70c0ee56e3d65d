#include <qt_halvo/widgets/input/combo_box_helpers.h>

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

namespace OrvantaQT {

DisabledItemComboBoxHelper::DisabledItemComboBoxHelper(QComboBox* combo)
    : QObject(combo)
    , m_combo(combo)
{
    if (!combo) {
        QTH_LOG_WARNING("DisabledItemComboBoxHelper: no combo box");
        return;
    }
    combo->view()->viewport()->installEventFilter(this);
}

bool DisabledItemComboBoxHelper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return QObject::eventFilter(watched, event);
    QAbstractItemView* view = m_combo->view();
    if (!view->isVisible())
        return false;
    const QModelIndex under = view->indexAt(static_cast<QMouseEvent*>(event)->pos());
    return view->currentIndex().isValid() && under.isValid() && !(under.flags() & Qt::ItemIsEnabled);
}

EditableReadOnlyComboBoxHelper::EditableReadOnlyComboBoxHelper(QComboBox* combo)
    : QObject(combo)
    , m_combo(combo)
{
    if (!combo) {
        QTH_LOG_WARNING("EditableReadOnlyComboBoxHelper: no combo box");
        return;
    }
    combo->setContextMenuPolicy(Qt::NoContextMenu);
    combo->setEditable(true);
    QLineEdit* edit = combo->lineEdit();
    SetStyleProperty(edit, "ComboBoxEmbedded", true, true);
    edit->setReadOnly(true);
    edit->setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(edit, &QLineEdit::selectionChanged, this, &EditableReadOnlyComboBoxHelper::OnSelectionChanged);
    connect(edit, &QLineEdit::cursorPositionChanged, this, &EditableReadOnlyComboBoxHelper::OnCursorPositionChanged);
    combo->installEventFilter(this);
    if (QWidget* popup = combo->view()->parentWidget())
        popup->installEventFilter(this);
}

// A click anywhere is a click on the arrow: the list opens (or closes).
bool EditableReadOnlyComboBoxHelper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    auto* press = static_cast<QMouseEvent*>(event);
    if (press->button() != Qt::LeftButton)
        return QObject::eventFilter(watched, event);
    auto* widget = static_cast<QWidget*>(watched);
    const QPointF arrow(widget->width() - widget->height() / 2, widget->height() / 2);
    if (press->localPos() == arrow)
        return false; // already on the arrow: our own copy, or a click there
    const QPoint point = arrow.toPoint();
    QMouseEvent onArrow(press->type(), arrow, QPointF(widget->mapTo(widget->window(), point)),
                        QPointF(widget->mapToGlobal(point)), press->button(), press->buttons(), press->modifiers(),
                        press->source());
    return QCoreApplication::sendEvent(widget, &onArrow);
}

// Nothing of the read-only text may be selected or edited.
void EditableReadOnlyComboBoxHelper::OnSelectionChanged()
{
    if (QLineEdit* edit = m_combo->lineEdit()) {
        if (edit->hasSelectedText())
            edit->deselect();
    }
}

void EditableReadOnlyComboBoxHelper::OnCursorPositionChanged(int, int newPosition)
{
    if (QLineEdit* edit = m_combo->lineEdit()) {
        if (newPosition != 0)
            edit->setCursorPosition(0);
    }
}

void SetAccessibleNameForComboboxItem(QComboBox* combo, int index, const QString& name)
{
    if (!combo) {
        QTH_LOG_WARNING("SetAccessibleNameForComboboxItem: no combo box");
        return;
    }
    const QString comboName = combo->accessibleName();
    combo->setItemData(index, comboName.isEmpty() ? name : comboName + QLatin1Char('_') + name, Qt::AccessibleTextRole);
}

} // namespace OrvantaQT
