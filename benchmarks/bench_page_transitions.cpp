// Page transitions at 800 x 600. The card's transition page with the default blur radius
// 30: paint time per frame over whole transitions both ways, and next to it the blur
// alone, ours against QGraphicsBlurEffect on the same picture at the same radii. The
// sliding stack's render: paint time per frame of a slide.

#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/blur_pyramid_p.h>
#include <qt_halvo/animation/card_animation_widget.h>

#include <QtCore/QElapsedTimer>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsBlurEffect>
#include <QtWidgets/QGraphicsPixmapItem>
#include <QtWidgets/QGraphicsScene>

#include <algorithm>

using OrvantaQT::AnimatedPixmapRender;
using OrvantaQT::BlurPyramid;
using OrvantaQT::CardAnimationWidget;

namespace {

const QSize kSize(800, 600);

// A busy face: gradients, text and lines, so that nothing is cheap to blur.
QPixmap Face(const QColor& tint)
{
    QPixmap pixmap(kSize);
    QPainter painter(&pixmap);
    QLinearGradient gradient(0, 0, kSize.width(), kSize.height());
    gradient.setColorAt(0, tint);
    gradient.setColorAt(1, tint.darker(250));
    painter.fillRect(pixmap.rect(), gradient);
    painter.setPen(Qt::white);
    for (int y = 20; y < kSize.height(); y += 24)
        painter.drawText(20, y, QStringLiteral("The quick brown fox jumps over the lazy dog %1").arg(y));
    for (int x = 0; x < kSize.width(); x += 37)
        painter.drawLine(x, 0, kSize.width() - x, kSize.height());
    return pixmap;
}

double Median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

template <typename Work>
double MedianMilliseconds(int runs, Work work)
{
    QVector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work(i);
        times << timer.nsecsElapsed() / 1e6;
    }
    return Median(times);
}

} // namespace

class BenchPageTransitions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void transitionFrames();
    void blurAgainstQt_data();
    void blurAgainstQt();
    void slideFrames();
};

void BenchPageTransitions::transitionFrames()
{
    CardAnimationWidget widget(30, nullptr);
    widget.resize(kSize);
    const QPixmap first = Face(QColor(200, 60, 60));
    const QPixmap second = Face(QColor(60, 90, 200));
    QElapsedTimer setUp;
    setUp.start();
    widget.SetPictures(first, second);
    const double picturesMs = setUp.nsecsElapsed() / 1e6;
    QImage target(kSize, QImage::Format_ARGB32_Premultiplied);

    for (const bool opening : {false, true}) {
        widget.SetOpening(opening);
        QVector<double> frames;
        // A transition at 60 frames a second: 36 frames closing (600 ms), 30 opening (500 ms).
        const int count = opening ? 30 : 36;
        for (int round = 0; round < 5; ++round) {
            for (int frame = 0; frame <= count; ++frame) {
                const int progress = opening ? 100 - frame * 100 / count : frame * 100 / count;
                widget.SetProgress(progress);
                target.fill(Qt::white);
                QElapsedTimer timer;
                timer.start();
                widget.render(&target, QPoint(), QRegion(), QWidget::DrawChildren);
                frames << timer.nsecsElapsed() / 1e6;
            }
        }
        qInfo("CardAnimationWidget 800x600, radius 30, %s: paint per frame median %.2f ms, max %.2f ms (%d frames)",
              opening ? "opening" : "closing", Median(frames), *std::max_element(frames.cbegin(), frames.cend()),
              frames.size());
    }
    qInfo("blur levels made from the pictures, once per transition: %.2f ms", picturesMs);
}

void BenchPageTransitions::blurAgainstQt_data()
{
    QTest::addColumn<qreal>("radius");
    QTest::newRow("radius 20") << 20.0;
    QTest::newRow("radius 30") << 30.0;
}

void BenchPageTransitions::blurAgainstQt()
{
    QFETCH(qreal, radius);
    const QPixmap face = Face(QColor(200, 60, 60));
    QImage target(kSize, QImage::Format_ARGB32_Premultiplied);

    const BlurPyramid pyramid(face.toImage(), 30);
    const double ours = MedianMilliseconds(40, [&](int) {
        QPainter painter(&target);
        pyramid.Draw(painter, QRectF(QPointF(0, 0), kSize), radius);
    });

    QGraphicsScene scene;
    QGraphicsPixmapItem* item = scene.addPixmap(face);
    auto* effect = new QGraphicsBlurEffect;
    item->setGraphicsEffect(effect);
    // Alternate the radius a little, as an animation does, so that Qt cannot reuse a result.
    const double qt = MedianMilliseconds(40, [&](int i) {
        effect->setBlurRadius(radius + (i % 2) * 0.01);
        QPainter painter(&target);
        scene.render(&painter, QRectF(target.rect()), QRectF(face.rect()));
    });
    qInfo("blur of 800x600 at radius %.0f and drawn: ours %.2f ms, QGraphicsBlurEffect %.2f ms", radius, ours, qt);
}

void BenchPageTransitions::slideFrames()
{
    AnimatedPixmapRender render;
    render.resize(kSize);
    render.SetPictures(Face(QColor(200, 60, 60)), Face(QColor(60, 90, 200)));
    QImage target(kSize, QImage::Format_ARGB32_Premultiplied);
    for (const int direction : {0, 2}) {
        render.SetDirection(direction);
        QTimeLine& timeLine = render.TimeLine();
        timeLine.setEasingCurve(QEasingCurve::Linear);
        timeLine.setFrameRange(0, direction < 2 ? kSize.width() : kSize.height());
        const double frame = MedianMilliseconds(60, [&](int i) {
            timeLine.setCurrentTime(i * timeLine.duration() / 60);
            render.render(&target, QPoint(), QRegion(), QWidget::DrawChildren);
        });
        qInfo("AnimatedPixmapRender 800x600, %s slide: paint per frame median %.2f ms", direction < 2 ? "sideways" : "vertical",
              frame);
    }
}

QTEST_MAIN(BenchPageTransitions)
#include "bench_page_transitions.moc"
