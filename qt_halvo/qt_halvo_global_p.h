#pragma once

#include <qt_halvo/qt_halvo_global.h>

// Internals that the autotests reach are exported only in builds with tests.
#if defined(QT_HALVO_AUTOTESTS)
#  define QT_HALVO_AUTOTEST_EXPORT QT_HALVO_EXPORT
#else
#  define QT_HALVO_AUTOTEST_EXPORT
#endif
