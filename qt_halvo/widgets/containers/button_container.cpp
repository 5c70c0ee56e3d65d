#include <qt_halvo/widgets/containers/button_container.h>
