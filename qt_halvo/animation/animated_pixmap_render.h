#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QTimeLine>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// The page a CustomStackedWidget shows during a slide: the picture of the page being
// left moves out while the picture of the page coming in moves in after it, one frame
// of the time line per pixel. Directions: 0 content moves left, 1 right, 2 up, 3 down.
class QT_HALVO_EXPORT AnimatedPixmapRender : public QWidget
{
    Q_OBJECT

public:
    explicit AnimatedPixmapRender(QWidget* parent = nullptr);
    ~AnimatedPixmapRender() override;

    int GetDirection() const;
    void SetDirection(int direction);
    void SetPictures(const QPixmap& from, const QPixmap& to);
    // How many pixels short of the full width or height the slide stops.
    void SetOffset(int offset);
    QTimeLine& TimeLine();

Q_SIGNALS:
    void Finished();

public Q_SLOTS:
    void OnFrameChanged(int frame);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_direction = 0;
    QPixmap m_from;
    QPixmap m_to;
    QTimeLine m_timeLine{1000};
    int m_offset = 0;
};

} // namespace OrvantaQT
