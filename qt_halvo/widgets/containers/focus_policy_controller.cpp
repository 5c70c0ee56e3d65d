#include <qt_halvo/widgets/containers/focus_policy_controller.h>
