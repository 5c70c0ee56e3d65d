#include <qt_halvo/charts/pie_chart.h>

#include "test_support.h"

using OrvantaQT::PieChart;
using TestSupport::Colours;
using TestSupport::Pixels;

namespace {

// The chart painted on white, red for the slice and outline, blue (or `ring`) for the ring.
QImage Paint(PieChart& chart, const QColor& ring = Qt::blue)
{
    QPalette palette = chart.palette();
    palette.setColor(QPalette::WindowText, Qt::red);
    palette.setColor(QPalette::Window, ring);
    chart.setPalette(palette);
    return TestSupport::Render(&chart, 1.0, Qt::white);
}

// A point on the 100 x 100 chart at an angle (clock hours) and a distance from the centre.
QPoint At(qreal hours, qreal distance)
{
    const qreal angle = qDegreesToRadians(90.0 - hours * 30.0);
    return QPoint(int(50 + distance * std::cos(angle)), int(50 - distance * std::sin(angle)));
}

} // namespace

class TestPieChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sliceHoleAndOutline_data()
    {
        QTest::addColumn<QVector<int>>("valueHoleBorder");
        QTest::addColumn<QVector<QPoint>>("points");
        QTest::addColumn<QStringList>("colours");
        // The slice runs clockwise from 12 o'clock; its straight edges are drawn.
        QTest::newRow("a quarter") << QVector<int>{25, -10, 2} << QVector<QPoint>{At(1.5, 35), At(6, 35), At(9, 35)}
                                   << Colours("red blue blue");
        QTest::newRow("nothing") << QVector<int>{0, -10, 2} << QVector<QPoint>{At(1.5, 35), {50, 50}, {50, 2}}
                                 << Colours("blue white red");
        QTest::newRow("above the maximum") << QVector<int>{150, -10, 2} << QVector<QPoint>{At(7.5, 35)} << Colours("red");
        QTest::newRow("no hole") << QVector<int>{25, 0, 2} << QVector<QPoint>{{50, 50}, {49, 30}, {45, 30}}
                                 << Colours("red red blue");
        // A 30 px hole: empty 12 px from the centre, filled 18 px out.
        QTest::newRow("30 px hole") << QVector<int>{100, 30, 2} << QVector<QPoint>{At(3, 12), At(3, 18)} << Colours("white red");
        QTest::newRow("hole wider than the ring") << QVector<int>{0, 1000, 2} << QVector<QPoint>{{2, 50}} << Colours("white");
        // Half the 96 px ring: empty 22 px out, filled 26 px out.
        QTest::newRow("hole of half") << QVector<int>{100, -50, 2} << QVector<QPoint>{At(9, 22), At(9, 26)}
                                      << Colours("white red");
        QTest::newRow("no outline") << QVector<int>{0, -10, 0} << QVector<QPoint>{{50, 1}} << Colours("blue");
    }
    void sliceHoleAndOutline()
    {
        QFETCH(QVector<int>, valueHoleBorder);
        QFETCH(QVector<QPoint>, points);
        PieChart chart;
        chart.resize(100, 100);
        chart.setValue(valueHoleBorder[0]);
        chart.setInnerSize(valueHoleBorder[1]);
        chart.setBorderWidth(valueHoleBorder[2]);
        QTEST(Pixels(Paint(chart), points), "colours");
    }
    // The ring is kept painted between frames: a new value, maximum, size or palette must
    // still show. Not square, the chart stays at the top left.
    void repaintsWhatChanged()
    {
        PieChart chart;
        QCOMPARE(chart.property("class").toString(), QStringLiteral("pieWidget"));
        QCOMPARE(TestSupport::FirstNotReset(&chart, {{"value", 5}, {"maximum", 7}, {"borderWidth", 9},
                                                     {"borderColor", QColor(Qt::green)}, {"innerSize", 11}}),
                 QString());
        chart.resize(100, 100);
        chart.setValue(25);
        QCOMPARE(Pixels(Paint(chart), {At(4.5, 35)}), Colours("blue"));
        chart.setValue(50);
        QCOMPARE(Pixels(Paint(chart), {At(4.5, 35), At(7.5, 35)}), Colours("red blue"));
        chart.setMaximum(200);
        QCOMPARE(Pixels(Paint(chart), {At(4.5, 35)}), Colours("blue"));
        chart.setMaximum(100);
        chart.resize(200, 100);
        QCOMPARE(Pixels(Paint(chart), {{150, 50}, {80, 50}, {20, 50}}), Colours("white red blue"));
        chart.resize(200, 200);
        QCOMPARE(Pixels(Paint(chart), {{180, 100}, {20, 100}}), Colours("red blue"));
        QCOMPARE(Pixels(Paint(chart, Qt::green), {{20, 100}}), Colours("lime"));
        chart.setInnerSize(-80); // a wider hole empties the old ring's inner part
        QCOMPARE(Pixels(Paint(chart), {{40, 100}}), Colours("white"));
        QVERIFY(TestSupport::ShowAndWait(&chart));
        QVERIFY(TestSupport::Repaints(&chart, [&chart] { chart.setEnabled(false); }));
    }
};

QTEST_MAIN(TestPieChart)
#include "tst_pie_chart.moc"
