// Draws the library's busy animation strips: 12 frames of a ring of eight dots whose
// bright dot moves round, at 16 pixels and at 32 for double-density screens.
//   draw_busy_strip <folder>   writes preloader_animation_16.png and preloader_animation_16@2x.png

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <cmath>

namespace {

constexpr int kFrames = 12;
constexpr int kDots = 8;

QImage Strip(int size)
{
    QImage strip(size * kFrames, size, QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::transparent);
    QPainter painter(&strip);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const qreal ring = size * 0.36;
    const qreal dot = size * 0.11;
    for (int frame = 0; frame < kFrames; ++frame) {
        const QPointF centre(frame * size + size / 2.0, size / 2.0);
        // The bright dot goes once round in the 12 frames; the others fade behind it.
        const qreal head = frame * kDots / qreal(kFrames);
        for (int i = 0; i < kDots; ++i) {
            const qreal behind = std::fmod(head - i + kDots, kDots);
            const qreal alpha = 0.25 + 0.75 * std::max(0.0, 1.0 - behind / 4.0);
            const qreal angle = 2 * M_PI * i / kDots - M_PI / 2;
            painter.setBrush(QColor(118, 130, 150, int(alpha * 255)));
            painter.drawEllipse(centre + QPointF(std::cos(angle), std::sin(angle)) * ring, dot, dot);
        }
    }
    return strip;
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    const bool written = Strip(16).save(folder.filePath(QStringLiteral("preloader_animation_16.png")))
        && Strip(32).save(folder.filePath(QStringLiteral("preloader_animation_16@2x.png")));
    return written ? 0 : 1;
}
