#include <qt_halvo/utilities/decorated_border.h>

#include <QtTest/QtTest>

using OrvantaQT::DecoratedBorder;

class TestDecoratedBorder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decorationPlace_data();
    void decorationPlace();
};

void TestDecoratedBorder::decorationPlace_data()
{
    QTest::addColumn<unsigned>("orientation");
    QTest::addColumn<unsigned>("position");
    QTest::addColumn<QRect>("expected"); // a 10 x 6 picture on a 200 x 80 strip, margin 5
    QTest::newRow("horizontal start") << unsigned(Qt::Horizontal) << 0u << QRect(5, 0, 10, 6);
    QTest::newRow("horizontal end") << unsigned(Qt::Horizontal) << 1u << QRect(200 - 10 - 5, 0, 10, 6);
    QTest::newRow("horizontal centre") << unsigned(Qt::Horizontal) << 2u << QRect(95, 0, 10, 6);
    QTest::newRow("vertical start") << unsigned(Qt::Vertical) << 0u << QRect(0, 5, 10, 6);
    // The end is measured on the width, vertical or not.
    QTest::newRow("vertical end") << unsigned(Qt::Vertical) << 1u << QRect(0, 200 - 10 - 5, 10, 6);
    QTest::newRow("vertical centre") << unsigned(Qt::Vertical) << 2u << QRect(0, 37, 10, 6);
}

void TestDecoratedBorder::decorationPlace()
{
    QFETCH(unsigned, orientation);
    QFETCH(unsigned, position);
    QFETCH(QRect, expected);

    QTemporaryDir folder;
    QImage picture(10, 6, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const QString path = folder.filePath(QStringLiteral("mark.png"));
    QVERIFY(picture.save(path));

    QWidget window;
    auto* border = new DecoratedBorder(&window);
    border->setDecorationMargin(5);
    border->setPosition(position);
    border->setOrientation(orientation);
    border->setDecorationUrl(path);
    border->setGeometry(0, 0, 200, 80);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(border->DecorationRect(), expected);
    QCOMPARE(border->sizePolicy().horizontalPolicy(),
             orientation == Qt::Horizontal ? QSizePolicy::Expanding : QSizePolicy::Fixed);
    // Drawn where it lands inside the strip (the vertical end lies beyond a short strip).
    if (border->rect().contains(expected))
        QCOMPARE(border->grab().toImage().pixelColor(expected.center()), QColor(Qt::red));
}

QTEST_MAIN(TestDecoratedBorder)
#include "tst_decorated_border.moc"
