#include <qt_halvo/widgets/containers/transparent_widget.h>
