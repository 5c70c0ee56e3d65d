// Whether the widget's style wants animations (QStyle::SH_Widget_Animate); desktops
// switch it off for users who ask for reduced motion.
#pragma once

#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

inline bool WidgetAnimationsEnabled(const QWidget* widget)
{
    return widget && widget->style()->styleHint(QStyle::SH_Widget_Animate, nullptr, widget) != 0;
}

} // namespace OrvantaQT
