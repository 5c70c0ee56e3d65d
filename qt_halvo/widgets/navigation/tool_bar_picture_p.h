// The picture a tool bar, its buttons and a button pair are painted from: loaded from a
// path, cut into bands of equal height stacked from the top, each stretched over the
// widget by DrawBorderPixmap, which keeps the borders unstretched.
#pragma once

#include <qt_halvo/utilities/border_pixmap_painter.h>
#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QMargins>
#include <QtCore/QString>
#include <QtGui/QPixmap>

namespace OrvantaQT {

class ToolBarPicture
{
public:
    // owner names the widget in log lines.
    ToolBarPicture(const char* owner, const QString& path, int border)
        : m_owner(owner)
        , m_borders(border, border, border, border)
    {
        SetPath(path);
    }

    QString Path() const { return m_path; }
    const QPixmap& Pixmap() const { return m_pixmap; }
    // Whether it changed. An empty path is no picture; one that gives none is logged, and
    // the widget is painted without one.
    bool SetPath(const QString& path)
    {
        if (path == m_path)
            return false;
        m_path = path;
        m_pixmap = path.isEmpty() ? QPixmap() : QPixmap(path);
        if (!path.isEmpty() && m_pixmap.isNull())
            QTH_LOG_WARNING("%s: no picture at \"%s\"; painted without one", m_owner, qPrintable(path));
        return true;
    }

    QMargins Borders() const { return m_borders; }
    // Whether they changed. Borders are pixels of the picture: negative ones are logged
    // and ignored.
    bool SetBorders(const QMargins& borders)
    {
        if (borders == m_borders)
            return false;
        if (borders.left() < 0 || borders.top() < 0 || borders.right() < 0 || borders.bottom() < 0) {
            QTH_LOG_WARNING("%s: negative picture borders (%d, %d, %d, %d) ignored", m_owner, borders.left(),
                            borders.top(), borders.right(), borders.bottom());
            return false;
        }
        m_borders = borders;
        return true;
    }

    // The band of `bands` stretched over target; nothing without a picture.
    void Draw(QPainter* painter, const QRect& target, int band = 0, int bands = 1) const
    {
        if (m_pixmap.isNull())
            return;
        const int height = m_pixmap.height() / bands;
        DrawBorderPixmap(painter, target, m_pixmap, QRect(0, band * height, m_pixmap.width(), height), m_borders);
    }

private:
    const char* m_owner;
    QString m_path;
    QPixmap m_pixmap;
    QMargins m_borders;
};

} // namespace OrvantaQT
