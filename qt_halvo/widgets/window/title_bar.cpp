#include <qt_halvo/widgets/window/title_bar.h>
