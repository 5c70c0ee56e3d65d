#include <qt_halvo/animation/blur_pyramid_p.h>

#include "test_support.h"

using OrvantaQT::BlurPyramid;

class TestBlurPyramid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blurs_data()
    {
        QTest::addColumn<qreal>("radius");
        for (const qreal radius : {4.0, 12.0, 30.0})
            QTest::addRow("%g", radius) << radius;
    }
    // An edge rises about as far as with QGraphicsBlurEffect, some 1.25 radius from 10 % to 90 % grey, and smoothly;
    // flat areas keep colour and alpha, small pictures stay, and under half a pixel of spread nothing changes.
    void blurs()
    {
        QFETCH(qreal, radius);
        QImage edge(400, 200, QImage::Format_ARGB32_Premultiplied), flat(120, 90, edge.format()), tiny(3, 2, edge.format());
        edge.fill(Qt::white), flat.fill(QColor(40, 120, 200, 128)), tiny.fill(Qt::white);
        QPainter(&edge).fillRect(0, 0, 200, 200, Qt::black);
        const QImage blurred = BlurPyramid(edge, 30).Blurred(radius).scaled(400, 200, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QVector<int> row; // the grey levels of the middle row
        for (int x = 0; x < 400; ++x)
            row << qGray(blurred.pixel(x, 100));
        const int rise = int(std::find_if(row.cbegin(), row.cend(), [](int grey) { return grey > 230; })
                             - std::find_if(row.cbegin(), row.cend(), [](int grey) { return grey > 25; }));
        QVERIFY2(rise >= 0.6 * 1.25 * radius && rise <= 1.6 * 1.25 * radius && row.first() == 0 && row.last() == 255,
                 qPrintable(QString::number(rise)));
        for (int x = 1; x < row.size(); ++x) // no column jumps more than a smooth rise of that width allows
            QVERIFY2(row[x] >= row[x - 1] - 1 && row[x] - row[x - 1] <= 4 * 255 / std::max(rise, 1) + 2, qPrintable(QString::number(x)));
        const QImage image = BlurPyramid(flat, 30).Blurred(radius);
        for (const QPoint point : {QPoint(0, 0), QPoint(image.width() - 1, image.height() / 2)}) {
            const QRgb pixel = qUnpremultiply(image.pixel(point));
            QVERIFY(qAbs(qAlpha(pixel) - 128) <= 1 && qAbs(qRed(pixel) - 40) <= 2 && qAbs(qGreen(pixel) - 120) <= 2
                    && qAbs(qBlue(pixel) - 200) <= 2);
        }
        QVERIFY(BlurPyramid(tiny, 30).Blurred(radius) == tiny && BlurPyramid(edge, 30).Blurred(1.2) == edge
                && BlurPyramid().IsNull() && BlurPyramid(QImage(), 30).Blurred(radius).isNull());
    }
};

QTEST_MAIN(TestBlurPyramid)
#include "tst_blur_pyramid.moc"
