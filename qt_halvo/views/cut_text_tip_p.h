#pragma once

#include <QtGui/QHelpEvent>
#include <QtWidgets/QToolTip>

namespace OrvantaQT {

// The tip of a view whose text shows cut: the whole text over the rectangle it is drawn in.
// An empty text (not cut) hides the tip shown and leaves the event to the view's own tip.
inline bool ShowCutTextTip(const QHelpEvent* event, const QString& wholeText, QWidget* area, const QRect& rect)
{
    if (wholeText.isEmpty()) {
        QToolTip::hideText();
        return false;
    }
    QToolTip::showText(event->globalPos(), wholeText, area, rect);
    return true;
}

} // namespace OrvantaQT
