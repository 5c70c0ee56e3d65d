#include <qt_halvo/widgets/navigation/tab_bar.h>
