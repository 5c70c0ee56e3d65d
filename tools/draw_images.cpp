// Draws the library's images into a folder:
//   - the busy animation strips: 12 frames of a ring of eight dots whose bright dot moves
//     round, at 16 pixels (preloader_animation_16.png) and at 32 (@2x);
//   - the search box's button background, three bands stacked (hovered, pressed, normal),
//     and its magnifier, history arrow and cancel cross;
//   - the tool bar's background, and the bands of its buttons and of the two-button pair
//     (hovered, pressed or selected, normal), cut with 6-pixel borders.
//   draw_images <folder>

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtCore/QPair>
#include <QtCore/QVector>

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

// Bands of width × height stacked from the top, each a rectangle rounded by radius in its
// fill and border; a transparent border leaves the band's edge out.
QImage Bands(int width, int height, qreal radius, const QVector<QPair<QColor, QColor>>& bands)
{
    QImage image(width, height * bands.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < bands.size(); ++i) {
        painter.setPen(bands[i].second.alpha() ? QPen(bands[i].second) : QPen(Qt::NoPen));
        painter.setBrush(bands[i].first);
        painter.drawRoundedRect(QRectF(0.5, i * height + 0.5, width - 1, height - 1), radius, radius);
    }
    return image;
}

QImage SearchButton()
{
    return Bands(25, 22, 2, {{QColor(224, 236, 250), QColor(150, 180, 220)},   // hovered
                             {QColor(196, 216, 242), QColor(110, 150, 205)},   // pressed
                             {Qt::transparent, Qt::transparent}});             // normal: nothing
}

QImage Magnifier()
{
    QImage image(12, 12, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(96, 104, 118), 1.6));
    painter.drawEllipse(QRectF(1, 1, 7, 7));
    painter.setPen(QPen(QColor(96, 104, 118), 2.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(7.5, 7.5), QPointF(10.5, 10.5));
    return image;
}

QImage Arrow()
{
    QImage image(8, 5, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(96, 104, 118));
    painter.drawPolygon(QPolygonF({QPointF(0, 0.5), QPointF(8, 0.5), QPointF(4, 4.5)}));
    return image;
}

QImage Cancel()
{
    QImage image(12, 12, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(96, 104, 118), 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(2.5, 2.5), QPointF(9.5, 9.5));
    painter.drawLine(QPointF(9.5, 2.5), QPointF(2.5, 9.5));
    return image;
}

QImage ToolBarBackground()
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, 0, 32);
    fill.setColorAt(0, QColor(252, 253, 254));
    fill.setColorAt(1, QColor(234, 238, 243));
    painter.setPen(QColor(196, 203, 212));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(0.5, 0.5, 31, 31), 4, 4);
    return image;
}

QImage ToolBarButton()
{
    return Bands(24, 24, 4, {{QColor(226, 236, 249), QColor(160, 186, 222)},   // hovered
                          {QColor(200, 218, 243), QColor(118, 154, 206)},   // pressed or selected
                          {Qt::transparent, Qt::transparent}});             // normal: nothing
}

QImage TwoButtons()
{
    return Bands(48, 28, 4, {{QColor(255, 255, 255), QColor(188, 196, 207)},   // normal
                          {QColor(234, 242, 252), QColor(150, 180, 220)},   // hovered
                          {QColor(206, 222, 244), QColor(110, 150, 205)}}); // pressed
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("."));
    const bool written = Strip(16).save(folder.filePath(QStringLiteral("preloader_animation_16.png")))
        && Strip(32).save(folder.filePath(QStringLiteral("preloader_animation_16@2x.png")))
        && SearchButton().save(folder.filePath(QStringLiteral("search_box_button.png")))
        && Magnifier().save(folder.filePath(QStringLiteral("search_box_image_magnifier.png")))
        && Arrow().save(folder.filePath(QStringLiteral("search_box_image_arrow.png")))
        && Cancel().save(folder.filePath(QStringLiteral("search_box_image_cancel.png")))
        && ToolBarBackground().save(folder.filePath(QStringLiteral("tool_bar_background.png")))
        && ToolBarButton().save(folder.filePath(QStringLiteral("tool_bar_button.png")))
        && TwoButtons().save(folder.filePath(QStringLiteral("two_buttons.png")));
    return written ? 0 : 1;
}
