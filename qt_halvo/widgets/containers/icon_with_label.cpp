#include <qt_halvo/widgets/containers/icon_with_label.h>
