#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVector>

class QWidget;

namespace OrvantaQT {

// Takes a widget and everything under it out of the focus chain while its content is out
// of reach, as while a CollapsingPane is closed, and gives every widget back its own
// earlier policy:
//   auto* focus = new FocusPolicyController(content);
//   connect(pane, &CollapsingPane::Expanded, focus, &FocusPolicyController::SetFocusable);
//
// SetFocusable(false) sets Qt::NoFocus on the root and every widget below it, remembering
// what each had; widgets that come into the subtree while it is out (made there or moved
// in) are taken out too. A focus inside the subtree moves on to the next widget of the
// window's tab chain, or is cleared when there is none, as Qt does for a widget that is
// disabled. SetFocusable(true) gives each widget its policy back; a widget deleted
// meanwhile is forgotten, one moved out of the subtree meanwhile gets its policy back too.
//
// A policy the host sets while the subtree is out takes effect at once and wins: it is
// kept when the subtree comes back. (Setting Qt::NoFocus then cannot be told from the
// controller's own and is replaced by the earlier policy.) Controllers nest: a widget
// under two roots that are out gets its policy back when the last of them gives it back.
// A controller that goes gives its subtree back; one whose root is deleted does nothing.
class QT_HALVO_EXPORT FocusPolicyController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool focusable READ IsFocusable WRITE SetFocusable)

public:
    // A null parent makes the root the parent (so make it with new, or give it a parent
    // that does not outlive it). A null root is logged; such a controller does nothing.
    explicit FocusPolicyController(QWidget* root, QObject* parent = nullptr);
    ~FocusPolicyController() override;

    QWidget* Root() const;
    // True until the subtree is taken out.
    bool IsFocusable() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    void SetFocusable(bool focusable);
    void TakeOut() { SetFocusable(false); }
    void GiveBack() { SetFocusable(true); }

private:
    void TakeOutSubtree(QWidget* top);
    void TakeOutWidget(QWidget* widget);
    void GiveBackAll();
    void MoveFocusOut();
    void OnWidgetDestroyed(QObject* widget);

    QPointer<QWidget> m_root;
    bool m_focusable = true;
    // The widgets this controller holds out, in the order taken; each leaves the list
    // as it is destroyed.
    QVector<QWidget*> m_taken;
};

} // namespace OrvantaQT
