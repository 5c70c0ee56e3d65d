#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QVector>

namespace OrvantaQT {

class DisappearingWidget;

// Every DisappearingWidget alive, in the order they were made. GUI thread only.
QT_HALVO_AUTOTEST_EXPORT QVector<DisappearingWidget*> LiveDisappearingWidgets();

} // namespace OrvantaQT
