#include <qt_halvo/widgets/window/frameless_window.h>
