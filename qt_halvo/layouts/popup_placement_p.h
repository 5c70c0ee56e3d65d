#pragma once

#include <qt_halvo/layouts/popup_placement.h>

namespace OrvantaQT {

// The placement a helper keeps: a negative gap is logged under the owner's name and taken
// as 0.
PopupPlacement CheckedPlacement(const PopupPlacement& placement, const char* owner);

} // namespace OrvantaQT
