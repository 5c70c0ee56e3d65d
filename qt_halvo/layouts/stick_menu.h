#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QMenu>

class QAbstractButton;

namespace OrvantaQT {

class StickHelper;

// A menu that a button opens when pressed, stuck to the button's edge through a
// StickHelper (below the button, left edges lined up, by default; GetStickHelper() changes
// that). A press on the button while the menu is open only closes it.
class QT_HALVO_EXPORT StickMenu : public QMenu
{
    Q_OBJECT

public:
    // Without a button it logs and is a plain menu.
    explicit StickMenu(QAbstractButton* button, QWidget* parent = nullptr);
    ~StickMenu() override;

    QAbstractButton* GetButton() const;
    StickHelper* GetStickHelper() const;

public Q_SLOTS:
    // Opens the menu at the button.
    void PopupAtButton();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    QPointer<QAbstractButton> m_button;
    StickHelper* m_stickHelper;
};

} // namespace OrvantaQT
