#include <qt_halvo/utilities/decorated_border.h>

#include "test_support.h"

class TestDecoratedBorder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decorationPlace_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<unsigned>("position");
        QTest::addColumn<QRect>("expected"); // a 10 x 6 picture on a 200 x 80 strip, margin 5
        QTest::newRow("horizontal start") << int(Qt::Horizontal) << 0u << QRect(5, 0, 10, 6);
        QTest::newRow("horizontal end") << int(Qt::Horizontal) << 1u << QRect(200 - 10 - 5, 0, 10, 6);
        QTest::newRow("horizontal centre") << int(Qt::Horizontal) << 2u << QRect(95, 0, 10, 6);
        QTest::newRow("vertical start") << int(Qt::Vertical) << 0u << QRect(0, 5, 10, 6);
        QTest::newRow("vertical end") << int(Qt::Vertical) << 1u << QRect(0, 200 - 10 - 5, 10, 6); // on the width as well
        QTest::newRow("vertical centre") << int(Qt::Vertical) << 2u << QRect(0, 37, 10, 6);
    }
    // Placed on the strip's size as shown, and drawn there.
    void decorationPlace()
    {
        QFETCH(int, orientation);
        QFETCH(unsigned, position);
        QFETCH(QRect, expected);
        QTemporaryDir folder;
        QImage picture(10, 6, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(folder.filePath(QStringLiteral("mark.png"))));
        QWidget window;
        auto* border = new OrvantaQT::DecoratedBorder(&window);
        border->setDecorationMargin(5);
        border->setPosition(position);
        border->setOrientation(unsigned(orientation));
        border->setDecorationUrl(folder.filePath(QStringLiteral("mark.png")));
        border->setGeometry(0, 0, 200, 80);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QCOMPARE(border->DecorationRect(), expected);
        QCOMPARE(int(border->sizePolicy().expandingDirections()), orientation);
        if (expected.bottom() < 80) // the vertical end lies beyond the short strip
            QCOMPARE(TestSupport::Render(border).pixelColor(expected.center()), QColor(Qt::red));
    }
};

QTEST_MAIN(TestDecoratedBorder)
#include "tst_decorated_border.moc"
