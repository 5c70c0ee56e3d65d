#include <qt_halvo/widgets/window/popup_message_queue.h>
