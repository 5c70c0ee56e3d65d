// Includes every public header of qt_halvo.
#pragma once

#include <qt_halvo/qt_halvo_global.h>
#include <qt_halvo/qt_halvo_version.h>
