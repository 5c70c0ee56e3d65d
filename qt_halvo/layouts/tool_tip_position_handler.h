#pragma once

#include <qt_halvo/layouts/popup_placement.h>
#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace OrvantaQT {

// Shows a widget's tool tip beside the widget, placed with PlacePopup (below it by
// default), instead of at the mouse cursor, and keeps it there while the window moves. The
// tip is QToolTip with the widget's toolTip(), or a widget of the host's (made a tool-tip
// window). It hides when the mouse leaves the widget, on a key press, and when the widget
// hides or goes away.
//
// An event filter on the widget and its window; the widget's QEvent::ToolTip is the one
// event it takes, since Qt would otherwise show the tip at the cursor as well.
class QT_HALVO_EXPORT ToolTipPositionHandler : public QObject
{
    Q_OBJECT

public:
    // The handler is a child of the widget; without one it logs and does nothing.
    explicit ToolTipPositionHandler(QWidget* widget);
    ~ToolTipPositionHandler() override;

    QWidget* GetWidget() const;

    // A widget of the host's to show instead of QToolTip; not owned, null for QToolTip.
    QWidget* GetToolTipWidget() const;
    void SetToolTipWidget(QWidget* tip);

    // Where the popup goes beside its widget: below the widget, left edges lined up, 4 px away by default.
    PopupPlacement GetPlacement() const;
    void SetPlacement(const PopupPlacement& placement);

    bool IsToolTipVisible() const;

public Q_SLOTS:
    void ShowToolTip();
    void HideToolTip();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* ShownTip() const;
    void Place();
    void Watch(bool on);

    QPointer<QWidget> m_widget;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_hostTip;
    PopupPlacement m_placement = {DefaultPopupSides(), Qt::AlignLeft | Qt::AlignTop, 4};
    bool m_shown = false;
};

} // namespace OrvantaQT
