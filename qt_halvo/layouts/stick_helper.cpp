#include <qt_halvo/layouts/stick_helper.h>

#include <qt_halvo/layouts/popup_placement_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

StickHelper::StickHelper(QWidget* panel, QWidget* anchor, const PopupPlacement& placement)
    : QObject(panel)
    , m_panel(panel)
    , m_placement(CheckedPlacement(placement, "StickHelper"))
{
    if (!panel) {
        QTH_LOG_ERROR("StickHelper: no panel to keep beside the anchor; it does nothing");
        return;
    }
    panel->installEventFilter(this);
    SetAnchor(anchor);
}

StickHelper::~StickHelper()
{
    disconnect(m_screenConnection);
    if (m_window)
        m_window->removeEventFilter(this);
    if (m_anchor)
        m_anchor->removeEventFilter(this);
}

QWidget* StickHelper::GetPanel() const
{
    return m_panel;
}

QWidget* StickHelper::GetAnchor() const
{
    return m_anchor;
}

void StickHelper::SetAnchor(QWidget* anchor)
{
    if (anchor == m_anchor || !m_panel)
        return;
    if (m_anchor)
        m_anchor->removeEventFilter(this);
    m_anchor = anchor;
    if (anchor)
        anchor->installEventFilter(this);
    Watch();
    Stick();
}

PopupPlacement StickHelper::GetPlacement() const
{
    return m_placement;
}

void StickHelper::SetPlacement(const PopupPlacement& placement)
{
    const PopupPlacement checked = CheckedPlacement(placement, "StickHelper");
    if (checked == m_placement)
        return;
    m_placement = checked;
    Stick();
}

QRect StickHelper::PanelRect() const
{
    if (!m_panel || !m_anchor)
        return QRect();
    return m_placement.Place(GlobalRect(m_anchor), m_panel->size());
}

void StickHelper::Stick()
{
    if (!m_panel || !m_anchor || !m_panel->isVisible())
        return;
    const QRect place = PanelRect();
    if (place.size() == m_panel->size())
        m_panel->move(place.topLeft());
    else
        m_panel->setGeometry(place);
}

// The anchor's window: its moves and resizes, and its native window's change of screen
// (the native window comes with the first show).
void StickHelper::Watch()
{
    QWidget* window = m_anchor ? m_anchor->window() : nullptr;
    if (window == m_panel)
        window = nullptr;
    if (window != m_window) {
        if (m_window)
            m_window->removeEventFilter(this);
        m_window = window;
        if (window)
            window->installEventFilter(this);
    }
    disconnect(m_screenConnection);
    if (QWindow* handle = m_window ? m_window->windowHandle() : nullptr)
        m_screenConnection = connect(handle, &QWindow::screenChanged, this, &StickHelper::Stick);
}

bool StickHelper::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (watched == m_window)
            Watch(); // the native window may be new
        Stick();
        break;
    case QEvent::Move:
        if (watched != m_panel)
            Stick();
        break;
    case QEvent::Resize:
        Stick();
        break;
    case QEvent::ParentChange:
        if (watched == m_anchor) {
            Watch();
            Stick();
        }
        break;
    default:
        break;
    }
    return false;
}

} // namespace OrvantaQT
