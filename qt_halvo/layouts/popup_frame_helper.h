#pragma once

#include <qt_halvo/layouts/popup_placement.h>
#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QScreen;
class QWidget;

namespace OrvantaQT {

// Turns a widget into a popup frame that opens beside an anchor widget (PlacePopup, below
// the anchor by default). It closes on Escape, on a click outside it (Qt::Popup), and when
// the anchor's window moves or hides or the anchor goes away; the focus then returns to
// the anchor. A click on the anchor while it is open only closes it. A screen that goes
// away while it is open places it anew.
class QT_HALVO_EXPORT PopupFrameHelper : public QObject
{
    Q_OBJECT

public:
    // The helper is a child of the popup, which it makes a Qt::Popup window; without a popup
    // it logs and does nothing. The anchor can come later.
    PopupFrameHelper(QWidget* popup, QWidget* anchor);
    ~PopupFrameHelper() override;

    QWidget* GetPopup() const;
    QWidget* GetAnchor() const;
    // Closes the popup when it was open at another anchor.
    void SetAnchor(QWidget* anchor);

    // Where the popup goes beside its widget: below the anchor, left edges lined up, by default.
    PopupPlacement GetPlacement() const;
    void SetPlacement(const PopupPlacement& placement);

    bool IsOpen() const;

public Q_SLOTS:
    // AboutToShow() comes first, so that the host can fill the popup before it is measured.
    void Show();
    void Close();

Q_SIGNALS:
    void AboutToShow();
    void Closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Place();
    void Watch(bool on);
    void Finish();

    QPointer<QWidget> m_popup;
    QPointer<QWidget> m_anchor;
    QPointer<QWidget> m_window;
    PopupPlacement m_placement;
    bool m_open = false;
};

} // namespace OrvantaQT
