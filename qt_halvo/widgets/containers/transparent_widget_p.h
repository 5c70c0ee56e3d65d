#pragma once

class QWidget;

namespace OrvantaQT {

// Turns off what makes Qt paint a widget's background before its paint event: the fill
// from the palette, and a style sheet's background (QStyleSheetStyle turns the styled
// background on for plain widgets and frames).
void ClearBackground(QWidget* widget);

} // namespace OrvantaQT
