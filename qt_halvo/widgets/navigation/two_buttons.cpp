#include <qt_halvo/widgets/navigation/two_buttons.h>
