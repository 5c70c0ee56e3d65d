#pragma once

#include <qt_halvo/layouts/popup_placement.h>
#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QMetaObject>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace OrvantaQT {

// Keeps a top-level widget (a panel, a menu) stuck to an edge of an anchor widget, placed
// with PlacePopup, while the anchor moves in its window and while that window moves,
// resizes or changes screen. The panel is placed whenever it shows or changes size.
class QT_HALVO_EXPORT StickHelper : public QObject
{
    Q_OBJECT

public:
    // The helper is a child of the panel. Without a panel it logs and does nothing; without
    // an anchor it leaves the panel where it is until it gets one.
    StickHelper(QWidget* panel, QWidget* anchor, const PopupPlacement& placement = PopupPlacement());
    ~StickHelper() override;

    QWidget* GetPanel() const;
    QWidget* GetAnchor() const;
    void SetAnchor(QWidget* anchor);

    PopupPlacement GetPlacement() const;
    void SetPlacement(const PopupPlacement& placement);

    // Where the panel goes now; empty without a panel or an anchor.
    QRect PanelRect() const;

public Q_SLOTS:
    // Puts the panel in its place now (only while it shows).
    void Stick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Watch();

    QPointer<QWidget> m_panel;
    QPointer<QWidget> m_anchor;
    QPointer<QWidget> m_window;
    QMetaObject::Connection m_screenConnection;
    PopupPlacement m_placement;
};

} // namespace OrvantaQT
