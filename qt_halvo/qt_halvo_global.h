#pragma once

#include <QtCore/qglobal.h>

#if defined(QT_HALVO_LIBRARY)
#  define QT_HALVO_EXPORT Q_DECL_EXPORT
#else
#  define QT_HALVO_EXPORT Q_DECL_IMPORT
#endif
