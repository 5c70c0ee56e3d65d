#include <qt_halvo/widgets/containers/scrollable_transparent_widget.h>
