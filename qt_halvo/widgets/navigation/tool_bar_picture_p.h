// The pictures a tool bar and its buttons are painted from: a path, loaded, and the
// borders DrawBorderPixmap keeps when it stretches them.
#pragma once

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QMargins>
#include <QtCore/QString>
#include <QtGui/QPixmap>

namespace OrvantaQT {

// A null pixmap for an empty path (no picture wanted) and, logged, for a path that gives
// none.
inline QPixmap LoadToolBarPicture(const QString& path, const char* owner)
{
    if (path.isEmpty())
        return QPixmap();
    QPixmap picture(path);
    if (picture.isNull())
        QTH_LOG_WARNING("%s: no picture at \"%s\"; painted without one", owner, qPrintable(path));
    return picture;
}

// Borders are pixels of the picture kept unstretched: none can be negative.
inline bool AreToolBarBordersValid(const QMargins& borders, const char* owner)
{
    if (borders.left() >= 0 && borders.top() >= 0 && borders.right() >= 0 && borders.bottom() >= 0)
        return true;
    QTH_LOG_WARNING("%s: negative picture borders (%d, %d, %d, %d) ignored", owner, borders.left(), borders.top(),
                    borders.right(), borders.bottom());
    return false;
}

} // namespace OrvantaQT
