#include <qt_halvo/charts/plot_widget.h>

#include "test_support.h"

using OrvantaQT::PlotWidget;

class TestPlotWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Without polling the period counts as over: the live point sits at the previous value and
    // everything is shifted one step left. Negative values are reported and ignored. Shown,
    // the polygon has a circle of radius 3 on each point; the fill takes the brush, shaded
    // darker to the right.
    void graphWithoutPolling()
    {
        PlotWidget plot;
        TestSupport::SignalLog debug(&plot, {"DebugEvents(QString)"});
        plot.resize(240, 100);
        plot.setPointsOnScreen(4);
        plot.setValue(7);
        plot.setValue(3);
        plot.setValue(-1);
        QCOMPARE(plot.value(), 3);
        QCOMPARE(debug.lines.size(), 3);
        QCOMPARE(debug.lines.last(), QStringLiteral("DebugEvents(new value: -1 (old: 3))"));
        qreal progress = 0;
        // Newest history first: 0, 1, 5, 2.
        QCOMPARE(plot.Polygon(&progress), QPolygonF(QVector<QPointF>{{0, 0}, {0, 7}, {1, 0}, {2, 1}, {3, 5}, {4, 2}, {4, 0}}));
        QCOMPARE(progress, 1.0);
        const qreal xScale = (240.0 / 4) * 6 / 4.5, yScale = 100.0 / 10; // 7 is below the least range of 10
        QCOMPARE(plot.MappedPolygon().at(1), QPointF(-1 * xScale, 100 - 7 * yScale));
        QCOMPARE(plot.MappedPolygon().at(4), QPointF(2 * xScale, 100 - 5 * yScale));
        plot.setValue(0);
        plot.setValue(0);
        plot.setMinValue(5); // the 5 at the top, 2 steps of 80 px in
        plot.setShowPoly(true);
        plot.setBrushColor(Qt::red);
        QImage image = TestSupport::Render(&plot);
        QCOMPARE(QVector<int>({image.pixelColor(163, 0).alpha() > 0, image.pixelColor(164, 0).alpha()}), QVector<int>({1, 0}));
        QCOMPARE(image.pixelColor(120, 95), QColor(Qt::red));
        plot.setUseShading(true);
        image = TestSupport::Render(&plot);
        QVERIFY(image.pixelColor(40, 95).red() > image.pixelColor(200, 95).red() + 40);
        plot.resetValue(); // a short history is padded with zeros
        QVERIFY(plot.History().isEmpty());
        plot.setPointsOnScreen(3);
        QCOMPARE(plot.Polygon(), QPolygonF(QVector<QPointF>{{0, 0}, {0, 0}, {1, 0}, {2, 0}, {3, 0}, {3, 0}}));
        plot.setRadius(-5);
        QCOMPARE(plot.radius(), 0);
    }
    // Changes repaint; polling samples the counter, which starts each period from 0.
    void repaintsResetsAndPolling()
    {
        PlotWidget plot;
        plot.resize(100, 50);
        QCOMPARE(TestSupport::FirstNotReset(&plot, {{"radius", 3}, {"showPoly", true}, {"brushColor", QColor(Qt::red)},
                                                    {"useShading", true}, {"minValue", 50}, {"pointsOnScreen", 5},
                                                    {"pollingTimeout", 100}}),
                 QString());
        QVERIFY(TestSupport::ShowAndWait(&plot));
        const std::pair<const char*, std::function<void()>> changes[] = {
            {"radius", [&] { plot.setRadius(3); }},          {"showPoly", [&] { plot.setShowPoly(true); }},
            {"brush", [&] { plot.setBrushColor(Qt::red); }}, {"shading", [&] { plot.setUseShading(true); }},
            {"minValue", [&] { plot.setMinValue(50); }},     {"points", [&] { plot.setPointsOnScreen(5); }},
            {"reset value", [&] { plot.resetValue(); }}};
        for (const auto& change : changes)
            QVERIFY2(TestSupport::Repaints(&plot, change.second), change.first);
        plot.setPollingTimeout(150);
        plot.startPolling(true);
        plot.setValue(9);
        QTRY_COMPARE(plot.History(), QList<int>{9});
        QCOMPARE(plot.value(), 0);
        qreal progress = 1;
        plot.Polygon(&progress);
        QVERIFY(progress >= 0 && progress <= 1);
        plot.startPolling(false);
        plot.Polygon(&progress);
        QCOMPARE(progress, 1.0);
    }
    // Every corner but the first is rounded with the radius, at most half of each edge (the
    // length is taken in single precision).
    void roundedCorners()
    {
        const QPolygonF square({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
        const QPainterPath path = PlotWidget::RoundedPath(square, 10);
        QVERIFY(path.elementAt(0).isMoveTo() && QPointF(path.elementAt(0)) == QPointF(0, 0));
        QVERIFY((QPointF(path.elementAt(1)) - QPointF(90, 0)).manhattanLength() < 1e-4);
        QVERIFY(path.contains(QPointF(0.5, 0.5)) && path.contains(QPointF(50, 50)));
        QVERIFY(!path.contains(QPointF(99.5, 0.5)) && !path.contains(QPointF(99, 97)) && !path.contains(QPointF(3, 99)));
        QVERIFY((QPointF(PlotWidget::RoundedPath(square, 500).elementAt(1)) - QPointF(50, 0)).manhattanLength() < 1e-4);
        const LogCapture::Mark mark;
        QVERIFY(PlotWidget::RoundedPath(QPolygonF(QVector<QPointF>{{0, 0}, {1, 1}}), 5).isEmpty());
        QVERIFY(mark.Contains(3, QStringLiteral("Polygon should have at least 3 points!")));
    }
};

QTEST_MAIN(TestPlotWidget)
#include "tst_plot_widget.moc"
