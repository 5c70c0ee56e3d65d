#include <qt_halvo/widgets/containers/scroll_area_controller.h>
