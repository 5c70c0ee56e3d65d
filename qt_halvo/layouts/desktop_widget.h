#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QWidget>

namespace OrvantaQT {

class DisplayWatcher;

// An invisible stand-in for the primary screen's work area, to anchor windows to. Its
// geometry is that rectangle, and follows display changes: it then sends itself the move
// and resize events a hidden widget would not get, for the anchors that follow it.
class QT_HALVO_EXPORT DesktopWidget : public QWidget
{
    Q_OBJECT

public:
    DesktopWidget();
    ~DesktopWidget() override;

    DisplayWatcher* Watcher() const;

    // The primary monitor's work area: its native top-left, and its size divided by the
    // scale Qt applies. Qt's available geometry of the primary screen when the system
    // cannot tell.
    static QRect PrimaryScreenRect();

private:
    void OnDisplayChanged();

    DisplayWatcher* m_watcher;
};

} // namespace OrvantaQT
