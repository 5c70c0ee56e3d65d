#include <qt_halvo/widgets/containers/selectable_container.h>
