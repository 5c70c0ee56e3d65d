#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QMovie>
#include <QtWidgets/QLabel>

namespace OrvantaQT {

// Shows an animated image file, in any format QMovie reads (GIF; MNG and WebP with Qt's
// image format plug-ins), and starts it when the path is set.
class QT_HALVO_EXPORT AnimationLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QString moviePath READ moviePath WRITE setMoviePath)
    Q_PROPERTY(int speed READ speed WRITE setSpeed)

public:
    explicit AnimationLabel(QWidget* parent = nullptr);
    ~AnimationLabel() override;

    // Empty when the file could not be read as an animation.
    QString moviePath() const;
    // In percent of the file's own speed.
    int speed() const;
    QMovie* movie() const;

Q_SIGNALS:
    // The formats QMovie can read, one per line.
    void supportedFormatsCallback(const QString& formats);

public Q_SLOTS:
    void start();
    void stop();
    void setPaused(bool paused);
    void setSpeed(int percentSpeed);
    // An empty path stops the movie.
    void setMoviePath(const QString& path);
    void getSupportedFormats();

private:
    mutable QMovie m_movie;
};

} // namespace OrvantaQT
