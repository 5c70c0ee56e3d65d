#include <qt_halvo/charts/plot_widget.h>

#include "log_capture.h"

#include <QtTest/QtTest>

using OrvantaQT::PlotWidget;

class TestPlotWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void polygonWithoutPolling();
    void pollingSamplesTheCounter();
    void roundedCorners();
};

// Without polling the period counts as over: the live point sits at the previous value
// and everything is shifted one step left. Negative values are reported and ignored.
void TestPlotWidget::polygonWithoutPolling()
{
    PlotWidget plot;
    QSignalSpy debug(&plot, &PlotWidget::DebugEvents);
    plot.resize(240, 100);
    plot.setPointsOnScreen(4);
    plot.setValue(7);
    plot.setValue(3);
    plot.setValue(-1);
    QCOMPARE(plot.value(), 3);
    QCOMPARE(debug.count(), 3);
    QCOMPARE(debug.last().first().toString(), QStringLiteral("new value: -1 (old: 3)"));
    qreal progress = 0;
    const QPolygonF polygon = plot.Polygon(&progress);
    QCOMPARE(progress, 1.0);
    // Newest history first: 0, 1, 5, 2.
    QCOMPARE(polygon, QPolygonF(QVector<QPointF>{{0, 0}, {0, 7}, {1, 0}, {2, 1}, {3, 5}, {4, 2}, {4, 0}}));

    const QPolygonF mapped = plot.MappedPolygon();
    const qreal xScale = (240.0 / 4) * 6 / 4.5;
    const qreal yScale = 100.0 / 10; // the height 7 is below the minimum range of 10
    QCOMPARE(mapped.at(1), QPointF(-1 * xScale, 100 - 7 * yScale));
    QCOMPARE(mapped.at(4), QPointF(2 * xScale, 100 - 5 * yScale));

    // A short history is padded with zeros.
    plot.resetValue();
    QVERIFY(plot.History().isEmpty());
    plot.setPointsOnScreen(3);
    QCOMPARE(plot.Polygon(), QPolygonF(QVector<QPointF>{{0, 0}, {0, 3}, {1, 0}, {2, 0}, {3, 0}, {3, 0}}));

    plot.setRadius(-5);
    QCOMPARE(plot.radius(), 0);
}

void TestPlotWidget::pollingSamplesTheCounter()
{
    PlotWidget plot;
    plot.resize(200, 80);
    plot.setPollingTimeout(150);
    const int before = plot.History().size();
    plot.startPolling(true);
    plot.setValue(9);
    QTRY_VERIFY(plot.History().size() > before);
    QCOMPARE(plot.History().at(before), 9);
    QCOMPARE(plot.value(), 0); // a new period counts from 0
    qreal progress = 1;
    plot.Polygon(&progress);
    QVERIFY(progress >= 0 && progress <= 1);
    plot.startPolling(false);
    plot.Polygon(&progress);
    QCOMPARE(progress, 1.0);
}

// Every corner but the first is rounded with the radius, at most half of each edge.
void TestPlotWidget::roundedCorners()
{
    const QPolygonF square({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    const QPainterPath path = PlotWidget::RoundedPath(square, 10);
    QVERIFY(path.elementAt(0).isMoveTo());
    QCOMPARE(QPointF(path.elementAt(0)), QPointF(0, 0));
    // Towards the first rounded corner (the length is taken in single precision).
    QVERIFY((QPointF(path.elementAt(1)) - QPointF(90, 0)).manhattanLength() < 1e-4);
    QVERIFY(!path.contains(QPointF(99.5, 0.5)));          // the corner is cut
    QVERIFY(path.contains(QPointF(0.5, 0.5)));            // the first one is not

    const QPainterPath wide = PlotWidget::RoundedPath(square, 500);
    QVERIFY((QPointF(wide.elementAt(1)) - QPointF(50, 0)).manhattanLength() < 1e-4); // half the edge at most

    const LogCapture::Mark mark;
    QVERIFY(PlotWidget::RoundedPath(QPolygonF(QVector<QPointF>{{0, 0}, {1, 1}}), 5).isEmpty());
    QVERIFY(mark.Contains(3, QStringLiteral("Polygon should have at least 3 points!")));
}

QTEST_MAIN(TestPlotWidget)
#include "tst_plot_widget.moc"
