#include <qt_halvo/widgets/navigation/tool_bar.h>
