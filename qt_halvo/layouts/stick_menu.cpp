#include <qt_halvo/layouts/stick_menu.h>

#include <qt_halvo/layouts/stick_helper.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>

namespace OrvantaQT {

StickMenu::StickMenu(QAbstractButton* button, QWidget* parent)
    : QMenu(parent)
    , m_button(button)
    , m_stickHelper(new StickHelper(this, button))
{
    if (!button) {
        QTH_LOG_ERROR("StickMenu: no button to open the menu at; it is a plain menu");
        return;
    }
    connect(button, &QAbstractButton::pressed, this, &StickMenu::PopupAtButton);
}

StickMenu::~StickMenu() = default;

QAbstractButton* StickMenu::GetButton() const
{
    return m_button;
}

StickHelper* StickMenu::GetStickHelper() const
{
    return m_stickHelper;
}

void StickMenu::PopupAtButton()
{
    if (!m_button || !m_button->isVisible() || isVisible())
        return;
    // QMenu::popup() keeps a place that fits the screen, as this one does.
    const QSize size = sizeHint();
    resize(size);
    popup(m_stickHelper->PanelRect().topLeft());
}

void StickMenu::mousePressEvent(QMouseEvent* event)
{
    // Qt would hand the press that closes the menu on to the button, which opens it again.
    if (m_button && GlobalRect(m_button).contains(event->globalPos()))
        setAttribute(Qt::WA_NoMouseReplay);
    QMenu::mousePressEvent(event);
}

} // namespace OrvantaQT
