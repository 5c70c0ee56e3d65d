#include <qt_halvo/widgets/window/window_hit_test.h>
