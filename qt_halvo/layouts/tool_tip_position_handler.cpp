#include <qt_halvo/layouts/tool_tip_position_handler.h>

#include <qt_halvo/layouts/popup_placement_p.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

namespace {

// QToolTip's window, while it shows.
QWidget* QtToolTipLabel()
{
    if (!QToolTip::isVisible())
        return nullptr;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->inherits("QTipLabel") && window->isVisible())
            return window;
    }
    return nullptr;
}

} // namespace

ToolTipPositionHandler::ToolTipPositionHandler(QWidget* widget)
    : QObject(widget)
    , m_widget(widget)
{
    if (!widget) {
        QTH_LOG_ERROR("ToolTipPositionHandler: no widget to place tool tips at; it does nothing");
        return;
    }
    widget->installEventFilter(this);
}

ToolTipPositionHandler::~ToolTipPositionHandler()
{
    HideToolTip();
}

QWidget* ToolTipPositionHandler::GetWidget() const
{
    return m_widget;
}

QWidget* ToolTipPositionHandler::GetToolTipWidget() const
{
    return m_hostTip;
}

void ToolTipPositionHandler::SetToolTipWidget(QWidget* tip)
{
    if (tip == m_hostTip)
        return;
    const bool shown = m_shown;
    HideToolTip();
    m_hostTip = tip;
    if (tip && tip->windowType() != Qt::ToolTip)
        tip->setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
    if (shown)
        ShowToolTip();
}

PopupPlacement ToolTipPositionHandler::GetPlacement() const
{
    return m_placement;
}

void ToolTipPositionHandler::SetPlacement(const PopupPlacement& placement)
{
    const PopupPlacement checked = CheckedPlacement(placement, "ToolTipPositionHandler");
    if (checked == m_placement)
        return;
    m_placement = checked;
    Place();
}

bool ToolTipPositionHandler::IsToolTipVisible() const
{
    return m_shown && ShownTip();
}

void ToolTipPositionHandler::ShowToolTip()
{
    if (!m_widget || !m_widget->isVisible())
        return;
    if (m_hostTip) {
        if (!m_hostTip->testAttribute(Qt::WA_Resized))
            m_hostTip->adjustSize();
        m_hostTip->show();
    } else {
        const QString text = m_widget->toolTip();
        if (text.isEmpty()) {
            HideToolTip();
            return;
        }
        // Shown at the widget first; Place() then puts QToolTip's window where it belongs.
        QToolTip::showText(GlobalRect(m_widget).bottomLeft(), text, m_widget, m_widget->rect());
    }
    m_shown = true;
    Watch(true);
    Place();
}

void ToolTipPositionHandler::HideToolTip()
{
    if (!m_shown)
        return;
    m_shown = false;
    Watch(false);
    if (m_hostTip)
        m_hostTip->hide();
    else
        QToolTip::hideText();
}

QWidget* ToolTipPositionHandler::ShownTip() const
{
    if (m_hostTip)
        return m_hostTip->isVisible() ? m_hostTip.data() : nullptr;
    return QtToolTipLabel();
}

void ToolTipPositionHandler::Place()
{
    QWidget* tip = m_shown ? ShownTip() : nullptr;
    if (!tip || !m_widget)
        return;
    tip->move(m_placement.Place(GlobalRect(m_widget), tip->size()).topLeft());
}

void ToolTipPositionHandler::Watch(bool on)
{
    if (m_window)
        m_window->removeEventFilter(this);
    qApp->removeEventFilter(this);
    m_window = nullptr;
    if (!on || !m_widget)
        return;
    m_window = m_widget->window();
    if (m_window != m_widget)
        m_window->installEventFilter(this);
    // Key presses go to whichever widget has the focus.
    qApp->installEventFilter(this);
}

bool ToolTipPositionHandler::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyPress) {
        HideToolTip();
        return false;
    }
    if (watched == m_widget) {
        switch (type) {
        case QEvent::ToolTip:
            if (m_widget->isEnabled() || m_widget->testAttribute(Qt::WA_AlwaysShowToolTips)) {
                ShowToolTip();
                return true;
            }
            break;
        case QEvent::Leave:
        case QEvent::Hide:
            HideToolTip();
            break;
        case QEvent::Move:
        case QEvent::Resize:
            Place();
            break;
        default:
            break;
        }
    } else if (watched == m_window && (type == QEvent::Move || type == QEvent::Resize)) {
        Place();
    }
    return false;
}

} // namespace OrvantaQT
