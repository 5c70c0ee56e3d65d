#include <qt_halvo/widgets/navigation/tab_pages.h>
