#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVector>

class QButtonGroup;
class QWidget;

namespace OrvantaQT {

// One selected member at most among SelectableContainers and checkable buttons: selecting
// one (by click, keyboard or code) deselects the one before. In the "none selected" mode a
// click on the selected member deselects it; otherwise a click leaves it selected (the
// buttons go into an exclusive QButtonGroup of the helper's, so they must not be in
// another one). Code may always clear the selection with SetCurrent(nullptr).
//
// The arrow keys move the selection, and the focus with it, between the members in the
// order they were added: Left and Up to the one before, Right and Down to the next,
// passing over disabled and hidden ones and stopping at the ends. The helper takes the
// arrow keys that reach its members (with modifiers too, which move nothing), whose own
// arrow handling would move the focus a second time.
//
// A member that is deleted or removed leaves the group; when it was the selected one, the
// current member becomes none (CurrentChanged(nullptr)).
class QT_HALVO_EXPORT WidgetGroupHelper : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool noneAllowed READ IsNoneAllowed WRITE SetNoneAllowed)

public:
    explicit WidgetGroupHelper(QObject* parent = nullptr);
    ~WidgetGroupHelper() override;

    // Adds a SelectableContainer or a checkable QAbstractButton; anything else, a null
    // widget or a member already in the group is logged and refused (false). A selected
    // newcomer becomes current when none is, and is deselected otherwise.
    bool AddWidget(QWidget* member);
    // The member leaves the group as it is; when it was current, the current member
    // becomes none.
    void RemoveWidget(QWidget* member);
    QVector<QWidget*> Widgets() const;

    QWidget* Current() const;
    // Selects a member, or with nullptr none; a widget that is not a member is logged and
    // ignored.
    void SetCurrent(QWidget* member);
    int CurrentIndex() const;

    // Off by default.
    bool IsNoneAllowed() const;
    void SetNoneAllowed(bool allowed);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void CurrentChanged(QWidget* current);

private:
    void OnMemberSelected(QWidget* member, bool selected);
    void OnMemberDestroyed(QObject* member);
    void MakeCurrent(QWidget* member);
    void Deselect(QWidget* member);
    bool IsMemberSelected(const QWidget* member) const;
    QWidget* Neighbour(QWidget* from, bool next) const;
    int IndexOf(const QObject* member) const;

    struct Member
    {
        QPointer<QWidget> widget;
        const QObject* identity; // compared after the widget is gone
        bool deselectableBefore;
    };
    QVector<Member> m_members;
    // Always a member: cleared as a member is removed or destroyed.
    QWidget* m_current = nullptr;
    QButtonGroup* m_buttons;
    bool m_noneAllowed = false;
};

} // namespace OrvantaQT
