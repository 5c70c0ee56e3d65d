#include <qt_halvo/widgets/window/popup_message.h>
