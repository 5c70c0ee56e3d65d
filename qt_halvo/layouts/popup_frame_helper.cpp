#include <qt_halvo/layouts/popup_frame_helper.h>

#include <qt_halvo/layouts/popup_placement_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

PopupFrameHelper::PopupFrameHelper(QWidget* popup, QWidget* anchor)
    : QObject(popup)
    , m_popup(popup)
    , m_anchor(anchor)
{
    if (!popup) {
        QTH_LOG_ERROR("PopupFrameHelper: no widget to make a popup of; it does nothing");
        return;
    }
    popup->setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    popup->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] {
        // Qt moves the windows of the screen that went away first.
        QMetaObject::invokeMethod(this, [this] { Place(); }, Qt::QueuedConnection);
    });
}

PopupFrameHelper::~PopupFrameHelper()
{
    Watch(false);
}

QWidget* PopupFrameHelper::GetPopup() const
{
    return m_popup;
}

QWidget* PopupFrameHelper::GetAnchor() const
{
    return m_anchor;
}

void PopupFrameHelper::SetAnchor(QWidget* anchor)
{
    if (anchor == m_anchor)
        return;
    Close();
    m_anchor = anchor;
}

PopupPlacement PopupFrameHelper::GetPlacement() const
{
    return m_placement;
}

void PopupFrameHelper::SetPlacement(const PopupPlacement& placement)
{
    const PopupPlacement checked = CheckedPlacement(placement, "PopupFrameHelper");
    if (checked == m_placement)
        return;
    m_placement = checked;
    Place();
}

bool PopupFrameHelper::IsOpen() const
{
    return m_open;
}

void PopupFrameHelper::Show()
{
    if (!m_popup || m_open)
        return;
    if (!m_anchor || !m_anchor->isVisible()) {
        QTH_LOG_WARNING("PopupFrameHelper: the popup has no visible anchor to open at; it stays closed");
        return;
    }
    Q_EMIT AboutToShow();
    if (!m_popup || !m_anchor)
        return; // the host's slot took them away
    if (!m_popup->testAttribute(Qt::WA_Resized))
        m_popup->adjustSize();
    m_open = true;
    Watch(true);
    Place();
    m_popup->show();
}

void PopupFrameHelper::Close()
{
    if (m_open && m_popup)
        m_popup->close(); // Finish() follows from the hide event
    else
        Finish();
}

void PopupFrameHelper::Place()
{
    if (!m_open || !m_popup || !m_anchor)
        return;
    m_popup->setGeometry(m_placement.Place(GlobalRect(m_anchor), m_popup->size()));
}

void PopupFrameHelper::Watch(bool on)
{
    if (m_window)
        m_window->removeEventFilter(this);
    if (m_anchor)
        m_anchor->removeEventFilter(this);
    m_window = nullptr;
    if (!on || !m_anchor)
        return;
    m_anchor->installEventFilter(this);
    m_window = m_anchor->window();
    if (m_window != m_anchor)
        m_window->installEventFilter(this);
    // Not at once: Qt hands the focus back when a popup closes, and the window's focus may
    // still point into the anchor being destroyed.
    connect(m_anchor, &QObject::destroyed, this, &PopupFrameHelper::Close,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
}

void PopupFrameHelper::Finish()
{
    if (!m_open)
        return;
    m_open = false;
    Watch(false);
    if (m_anchor && m_anchor->isVisible() && m_anchor->isEnabled())
        m_anchor->setFocus(Qt::PopupFocusReason);
    Q_EMIT Closed();
}

bool PopupFrameHelper::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_open)
        return false;
    const QEvent::Type type = event->type();
    if (watched == m_popup) {
        if (type == QEvent::Hide) {
            Finish();
        } else if (type == QEvent::MouseButtonPress) {
            // Qt may hand the press that closes the popup on to the widget under it: on the
            // anchor that would open the popup again at once.
            const QPoint global = static_cast<QMouseEvent*>(event)->globalPos();
            m_popup->setAttribute(Qt::WA_NoMouseReplay, m_anchor && GlobalRect(m_anchor).contains(global));
        }
        else if (type == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            Close();
    } else if (watched == m_window && type == QEvent::Move) {
        Close();
    } else if (watched == m_anchor && type == QEvent::Hide) { // also when its window hides
        Close();
    }
    return false;
}

} // namespace OrvantaQT
