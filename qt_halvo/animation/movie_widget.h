#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>
#include <QtWidgets/QLabel>

namespace OrvantaQT {

// Plays a small looping animation from one strip image holding all its frames side by
// side (or one above the other), with an optional strip at twice the resolution for
// high-density screens. The frames are cut once, scaled to the contents rectangle, and
// stepped through on a timer that runs while the widget is playing and visible. A new
// widget is playing, so it animates as soon as it is shown with a strip. RenderTo()
// paints the current frame into another widget's painting.
class QT_HALVO_EXPORT MovieWidget : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QPixmap multiPixmap READ multiPixmap WRITE setMultiPixmap)
    Q_PROPERTY(QPixmap multiPixmapHiDpi READ multiPixmapHiDpi WRITE setMultiPixmapHiDpi)
    Q_PROPERTY(int quantity READ quantity WRITE setQuantity)
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout)
    Q_PROPERTY(bool vertical READ vertical WRITE setVertical)
    Q_PROPERTY(int startupIndex READ startupIndex WRITE setStartupIndex)
    Q_PROPERTY(bool repeatAnimation READ repeatAnimation WRITE setRepeatAnimation)

public:
    explicit MovieWidget(QWidget* parent = nullptr);
    ~MovieWidget() override;

    QPixmap multiPixmap() const;
    void setMultiPixmap(const QPixmap& strip);
    QPixmap multiPixmapHiDpi() const;
    void setMultiPixmapHiDpi(const QPixmap& strip);
    // Number of frames in the strip.
    int quantity() const;
    void setQuantity(int quantity);
    // Between frames, in ms.
    int timeout() const;
    void setTimeout(int timeout);
    bool vertical() const;
    void setVertical(bool vertical);
    int startupIndex() const;
    // Also rewinds to the index and starts playing.
    void setStartupIndex(int index);
    bool repeatAnimation() const;
    void setRepeatAnimation(bool repeat);

    int currentIndex() const;
    bool isPlaying() const;

    // Paints the current frame, at the strip's frame size, aligned in rect.
    void RenderTo(QPainter* painter, const QRect& rect, int alignment);

    QSize sizeHint() const override;

Q_SIGNALS:
    // When the animation stops at its last frame (without repeat), and on stop() and pause().
    void Finished();
    void FrameChanged(int index);

public Q_SLOTS:
    void start();
    // Rewinds to the startup index.
    void stop();
    // Keeps the current frame.
    void pause();
    void restart();

protected:
    void StartTimer(bool start);
    void UpdateScaledPixmap();

    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool HasFrameSize() const;

    int m_timerId = 0;
    QPixmap m_multiPixmap;
    QPixmap m_multiPixmapHiDpi;
    QVector<QIcon> m_frames;
    int m_quantity = 12;
    int m_timeout = 33;
    int m_startupIndex = 0;
    bool m_vertical = false;
    int m_currentIndex = 0;
    int m_frameWidth = -1;
    int m_frameHeight = -1;
    bool m_repeatAnimation = true;
    QRect m_targetRect;
    bool m_playing = true;
};

} // namespace OrvantaQT
