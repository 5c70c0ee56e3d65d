#include <qt_halvo/widgets/window/notification_widget.h>
