#include <qt_halvo/widgets/navigation/tool_bar_button.h>
