#include <qt_halvo/charts/pie_chart.h>

#include <QtTest/QtTest>

using OrvantaQT::PieChart;

namespace {

// The chart painted on white, red for the slice and outline, blue (or `ring`) for the ring.
QImage Paint(PieChart& chart, const QColor& ring = Qt::blue)
{
    QPalette palette = chart.palette();
    palette.setColor(QPalette::WindowText, Qt::red);
    palette.setColor(QPalette::Window, ring);
    chart.setPalette(palette);
    QImage image(chart.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    chart.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

// A point on the 100 x 100 chart at an angle (clock hours) and a distance from the centre.
QPoint AtClock(qreal hours, qreal distance)
{
    const qreal angle = (90.0 - hours * 30.0) * M_PI / 180.0;
    return QPoint(int(50 + distance * std::cos(angle)), int(50 - distance * std::sin(angle)));
}

} // namespace

class TestPieChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sliceHoleAndOutline_data();
    void sliceHoleAndOutline();
    void propertiesReset();
    void repaintsWhatChanged();
};

void TestPieChart::sliceHoleAndOutline_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("innerSize");
    QTest::addColumn<int>("borderWidth");
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QColor>("colour");

    QTest::newRow("value 0: ring only") << 0 << -10 << 2 << AtClock(1.5, 35) << QColor(Qt::blue);
    QTest::newRow("a quarter: 1:30 filled") << 25 << -10 << 2 << AtClock(1.5, 35) << QColor(Qt::red);
    QTest::newRow("a quarter: 6:00 not") << 25 << -10 << 2 << AtClock(6, 35) << QColor(Qt::blue);
    QTest::newRow("above the maximum: full") << 150 << -10 << 2 << AtClock(7.5, 35) << QColor(Qt::red);
    QTest::newRow("hole of 10 %: the centre is empty") << 50 << -10 << 2 << QPoint(50, 50) << QColor(Qt::white);
    QTest::newRow("no hole: the centre is filled") << 50 << 0 << 2 << QPoint(50, 50) << QColor(Qt::red);
    // A 30 px hole: empty 12 px from the centre, filled 18 px out.
    QTest::newRow("30 px hole, inside") << 100 << 30 << 2 << AtClock(3, 12) << QColor(Qt::white);
    QTest::newRow("30 px hole, outside") << 100 << 30 << 2 << AtClock(3, 18) << QColor(Qt::red);
    // Half the 96 px ring: empty 22 px out, filled 26 px out.
    QTest::newRow("hole of half, inside") << 100 << -50 << 2 << AtClock(9, 22) << QColor(Qt::white);
    QTest::newRow("hole of half, outside") << 100 << -50 << 2 << AtClock(9, 26) << QColor(Qt::red);
    QTest::newRow("outline") << 0 << -10 << 2 << QPoint(50, 2) << QColor(Qt::red);
    QTest::newRow("no outline") << 0 << -10 << 0 << QPoint(50, 1) << QColor(Qt::blue);
}

void TestPieChart::sliceHoleAndOutline()
{
    QFETCH(int, value);
    QFETCH(int, innerSize);
    QFETCH(int, borderWidth);
    QFETCH(QPoint, point);
    QFETCH(QColor, colour);
    PieChart chart;
    chart.resize(100, 100);
    chart.setValue(value);
    chart.setInnerSize(innerSize);
    chart.setBorderWidth(borderWidth);
    QCOMPARE(Paint(chart).pixelColor(point), colour);
}

void TestPieChart::propertiesReset()
{
    PieChart chart;
    QCOMPARE(chart.property("class").toString(), QStringLiteral("pieWidget"));
    const QMetaObject* meta = chart.metaObject();
    const std::initializer_list<std::tuple<const char*, QVariant, QVariant>> properties{
        {"value", 0, 5}, {"maximum", 100, 7}, {"borderWidth", 2, 9},
        {"borderColor", QColor(Qt::black), QColor(Qt::green)}, {"innerSize", -10, 11}};
    for (const auto& [name, initial, other] : properties) {
        QVERIFY(chart.setProperty(name, other));
        QVERIFY(meta->property(meta->indexOfProperty(name)).reset(&chart));
        QCOMPARE(chart.property(name), initial);
    }
}

// The ring is kept painted between frames: a new value, size or palette must still show.
void TestPieChart::repaintsWhatChanged()
{
    PieChart chart;
    chart.resize(100, 100);
    chart.setValue(25);
    QCOMPARE(Paint(chart).pixelColor(AtClock(4.5, 35)), QColor(Qt::blue));
    chart.setValue(50);
    QCOMPARE(Paint(chart).pixelColor(AtClock(4.5, 35)), QColor(Qt::red));
    QCOMPARE(Paint(chart).pixelColor(AtClock(7.5, 35)), QColor(Qt::blue));

    // Not square, it stays at the top left.
    chart.resize(200, 100);
    QCOMPARE(chart.RingPath().boundingRect(), QRectF(2, 2, 96, 96));
    QCOMPARE(Paint(chart).pixelColor(150, 50), QColor(Qt::white));
    QCOMPARE(Paint(chart).pixelColor(80, 50), QColor(Qt::red));
    QCOMPARE(Paint(chart).pixelColor(20, 50), QColor(Qt::blue));

    chart.resize(200, 200); // the ring grows with the widget
    QCOMPARE(Paint(chart).pixelColor(180, 100), QColor(Qt::red));
    QCOMPARE(Paint(chart).pixelColor(20, 100), QColor(Qt::blue));

    QCOMPARE(Paint(chart, Qt::green).pixelColor(20, 100), QColor(Qt::green));

    chart.setInnerSize(-80); // a wider hole empties the old ring's inner part
    QCOMPARE(Paint(chart).pixelColor(40, 100), QColor(Qt::white));
}

QTEST_MAIN(TestPieChart)
#include "tst_pie_chart.moc"
