#include <qt_halvo/widgets/input/combo_box_item_renderer.h>

namespace OrvantaQT {

// Out of line, so that the interface's virtual table lives in the library.
ComboBoxItemRenderer::~ComboBoxItemRenderer() = default;

} // namespace OrvantaQT
