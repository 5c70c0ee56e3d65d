#include <qt_halvo/widgets/containers/widget_group_helper.h>
