#pragma once

#include <qt_halvo/qt_halvo_global.h>

namespace OrvantaQT {
} // namespace OrvantaQT
