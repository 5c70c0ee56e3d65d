#include <qt_halvo/animation/blur_pyramid_p.h>

#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsBlurEffect>
#include <QtWidgets/QGraphicsPixmapItem>
#include <QtWidgets/QGraphicsScene>

using OrvantaQT::BlurPyramid;

namespace {

// Black on the left half, white on the right.
QImage Edge(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::black);
    return image;
}

// The grey levels of the middle row, scaled to width columns.
QVector<int> Profile(const QImage& image, int width)
{
    const QImage scaled = image.scaled(width, image.height() * width / image.width(), Qt::IgnoreAspectRatio,
                                       Qt::SmoothTransformation);
    QVector<int> row;
    for (int x = 0; x < width; ++x)
        row << qGray(scaled.pixel(x, scaled.height() / 2));
    return row;
}

// How many columns the edge takes to rise from 10 % to 90 % grey.
int RiseWidth(const QVector<int>& profile)
{
    const auto first = std::find_if(profile.cbegin(), profile.cend(), [](int grey) { return grey > 25; });
    const auto last = std::find_if(profile.cbegin(), profile.cend(), [](int grey) { return grey > 230; });
    return int(last - first);
}

QImage QtBlur(const QImage& source, qreal radius)
{
    QGraphicsScene scene;
    auto* item = scene.addPixmap(QPixmap::fromImage(source));
    auto* effect = new QGraphicsBlurEffect;
    effect->setBlurRadius(radius);
    effect->setBlurHints(QGraphicsBlurEffect::QualityHint);
    item->setGraphicsEffect(effect);
    QImage result(source.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    scene.render(&painter, QRectF(result.rect()), QRectF(source.rect()));
    return result;
}

} // namespace

class TestBlurPyramid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blursLikeQtAtTheSameRadius_data();
    void blursLikeQtAtTheSameRadius();
    void keepsFlatAreasAndAlpha();
    void smallAndEmptyPictures();
};

void TestBlurPyramid::blursLikeQtAtTheSameRadius_data()
{
    QTest::addColumn<qreal>("radius");
    QTest::newRow("4") << 4.0;
    QTest::newRow("12") << 12.0;
    QTest::newRow("30") << 30.0;
}

// The edge spreads about as far as Qt's blur spreads it, and rises smoothly: no column
// jumps by more than a smooth curve of that width allows.
void TestBlurPyramid::blursLikeQtAtTheSameRadius()
{
    QFETCH(qreal, radius);
    const QImage source = Edge(QSize(400, 200));
    const BlurPyramid pyramid(source, 30);
    const QVector<int> ours = Profile(pyramid.Blurred(radius), 400);
    const QVector<int> qt = Profile(QtBlur(source, radius), 400);

    const int ourWidth = RiseWidth(ours);
    const int qtWidth = RiseWidth(qt);
    QVERIFY2(ourWidth >= qtWidth * 0.6 && ourWidth <= qtWidth * 1.6,
             qPrintable(QStringLiteral("ours %1 columns, Qt's %2").arg(ourWidth).arg(qtWidth)));
    for (int x = 1; x < ours.size(); ++x) {
        QVERIFY2(ours[x] >= ours[x - 1] - 1, qPrintable(QStringLiteral("falls at column %1").arg(x)));
        QVERIFY2(ours[x] - ours[x - 1] <= 4 * 255 / std::max(ourWidth, 1) + 2,
                 qPrintable(QStringLiteral("steps at column %1").arg(x)));
    }
    // Far from the edge the picture is untouched.
    QCOMPARE(ours.first(), 0);
    QCOMPARE(ours.last(), 255);
}

void TestBlurPyramid::keepsFlatAreasAndAlpha()
{
    QImage source(120, 90, QImage::Format_ARGB32_Premultiplied);
    source.fill(QColor(40, 120, 200, 128));
    const QImage blurred = BlurPyramid(source, 30).Blurred(30);
    for (const QPoint point : {QPoint(0, 0), QPoint(blurred.width() - 1, blurred.height() - 1),
                               QPoint(blurred.width() / 2, blurred.height() / 2)}) {
        const QColor colour = QColor::fromRgba(qUnpremultiply(blurred.pixel(point)));
        QVERIFY(qAbs(colour.alpha() - 128) <= 1);
        QVERIFY(qAbs(colour.red() - 40) <= 2 && qAbs(colour.green() - 120) <= 2 && qAbs(colour.blue() - 200) <= 2);
    }
}

void TestBlurPyramid::smallAndEmptyPictures()
{
    QVERIFY(BlurPyramid().IsNull());
    QVERIFY(BlurPyramid(QImage(), 30).Blurred(10).isNull());
    QImage tiny(3, 2, QImage::Format_ARGB32_Premultiplied);
    tiny.fill(Qt::white);
    const QImage blurred = BlurPyramid(tiny, 30).Blurred(30);
    QCOMPARE(blurred.size(), QSize(3, 2));
    QCOMPARE(QColor(blurred.pixel(1, 1)), QColor(Qt::white));
    // Nothing to blur below half a pixel of spread: the source comes back as it is.
    const QImage edge = Edge(QSize(64, 16));
    QCOMPARE(BlurPyramid(edge, 30).Blurred(0.5), edge);
}

QTEST_MAIN(TestBlurPyramid)
#include "tst_blur_pyramid.moc"
