#include <qt_halvo/animation/animation_label.h>

#include <qt_halvo/utilities/logging_p.h>

namespace OrvantaQT {

AnimationLabel::AnimationLabel(QWidget* parent)
    : QLabel(parent)
{
    setMovie(&m_movie);
}

AnimationLabel::~AnimationLabel()
{
    // The label must not keep a pointer to the movie while the movie goes first.
    setMovie(nullptr);
}

QString AnimationLabel::moviePath() const
{
    return m_movie.isValid() ? m_movie.fileName() : QString();
}

int AnimationLabel::speed() const
{
    return m_movie.speed();
}

QMovie* AnimationLabel::movie() const
{
    return &m_movie;
}

void AnimationLabel::start()
{
    m_movie.start();
}

void AnimationLabel::stop()
{
    m_movie.stop();
}

void AnimationLabel::setPaused(bool paused)
{
    m_movie.setPaused(paused);
}

void AnimationLabel::setSpeed(int percentSpeed)
{
    m_movie.setSpeed(percentSpeed);
}

void AnimationLabel::setMoviePath(const QString& path)
{
    if (path.isEmpty()) {
        m_movie.stop();
        return;
    }
    m_movie.setFileName(path);
    if (m_movie.isValid()) {
        m_movie.start();
        return;
    }
    QTH_LOG_WARNING("AnimationLabel: file format is not supported");
    m_movie.stop(); // a movie that was running keeps its state over a new file name

}

void AnimationLabel::getSupportedFormats()
{
    QStringList formats;
    for (const QByteArray& format : QMovie::supportedFormats())
        formats << QString::fromLatin1(format);
    Q_EMIT supportedFormatsCallback(formats.join(QLatin1Char('\n')));
}

} // namespace OrvantaQT
