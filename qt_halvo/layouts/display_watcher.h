#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QAbstractNativeEventFilter>
#include <QtCore/QObject>

class QScreen;

namespace OrvantaQT {

// Tells when the displays changed, once a second at most: a burst of changes gives one
// DisplayChanged() a second after its first. On Windows it reads WM_DISPLAYCHANGE and
// WM_SETTINGCHANGE as a native event filter (install it with
// QCoreApplication::installNativeEventFilter); everywhere it also follows Qt's screens:
// screens added or removed, the primary screen changed, geometry or work area changed.
class QT_HALVO_EXPORT DisplayWatcher : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit DisplayWatcher(QObject* parent = nullptr);
    ~DisplayWatcher() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

Q_SIGNALS:
    void DisplayChanged();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Changed();
    void WatchScreen(QScreen* screen);

    bool m_pending = false;
    int m_timerId = 0;
};

} // namespace OrvantaQT
