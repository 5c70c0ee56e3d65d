// The QML charts draw what their widgets draw, through the same painters.
#include <qt_halvo/charts/bar_chart.h>
#include <qt_halvo/charts/pie_chart.h>
#include <qt_halvo/charts/plot_widget.h>
#include <qt_halvo/qml/bar_chart_item.h>
#include <qt_halvo/qml/pie_chart_item.h>
#include <qt_halvo/qml/plot_item.h>

#include "log_capture.h"
#include "test_support.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>

#include <cmath>
#include <memory>

using namespace OrvantaQT;
using TestSupport::Render;
using TestSupport::TestFont;
using TestSupport::Words;

namespace {

// The item painted into an image as the widget is rendered: its size, transparent.
QImage Paint(QQuickPaintedItem& item, qreal ratio)
{
    QImage image((item.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item.paint(&painter);
    return image;
}

QVariantList Variants(const QStringList& list)
{
    QVariantList variants;
    for (const QString& entry : list)
        variants << entry;
    return variants;
}

void Hover(QObject* target, QEvent::Type type, const QPointF& at)
{
    if (auto* widget = qobject_cast<QWidget*>(target)) {
        QMouseEvent event(type == QEvent::HoverLeave ? QEvent::Leave : QEvent::MouseMove, at, Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    } else {
        QHoverEvent event(type, at, at);
        QCoreApplication::sendEvent(target, &event);
    }
}

} // namespace

class TestChartItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    }

    void barChart_data()
    {
        QTest::addColumn<QString>("percents");
        QTest::addColumn<QString>("colors");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QStringList>("legends");
        QTest::addColumn<bool>("shading");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<int>("font");
        QTest::newRow("legend") << "30 30 40" << "#ff0000 #00ff00 #0000ff" << QStringList()
                                << QStringList{"Alpha", "Beta", "Tail\nsecond"} << false << QSize(301, 80) << 1.0 << 12;
        QTest::newRow("legend, ratio 2") << "30 30 40" << "#ff0000 #00ff00 #0000ff" << QStringList()
                                         << QStringList{"Alpha", "Beta<br>two", "Tail"} << true << QSize(251, 80) << 2.0 << 20;
        QTest::newRow("texts, no legend") << "50 1 49" << "#fafafa #ffff00 #0000ff" << QStringList{"", "WWWWWWWW", "x"}
                                          << QStringList() << true << QSize(201, 40) << 1.0 << 12;
        QTest::newRow("more colours than sections") << "60 40" << "#808080 #123456 #abcdef" << QStringList()
                                                    << QStringList{QString(60, QLatin1Char('i')), "b"} << false
                                                    << QSize(201, 90) << 1.0 << 16;
        QTest::newRow("one") << "100" << "#ff00ff" << QStringList() << QStringList{"Only"} << false << QSize(150, 60) << 2.0 << 12;
    }
    // The same lists give the same picture, and so does hovering the first section.
    void barChart()
    {
        QFETCH(QString, percents);
        QFETCH(QString, colors);
        QFETCH(QStringList, texts);
        QFETCH(QStringList, legends);
        QFETCH(bool, shading);
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        QFETCH(int, font);
        BarChart widget;
        widget.setLegendFont(TestFont(font));
        widget.setPercentList(Words(qPrintable(percents)));
        widget.setColorList(Words(qPrintable(colors)));
        widget.setTextList(texts);
        if (!legends.isEmpty())
            widget.setLegendList(legends);
        widget.setShowLegend(!legends.isEmpty());
        widget.setUseShading(shading);
        widget.setBorderColor(Qt::red);
        widget.SetLegendLineColors({Qt::darkGreen, Qt::blue}, Qt::magenta);
        widget.resize(size);
        BarChartItem item;
        item.setLegendFont(TestFont(font));
        item.setPercents(Variants(Words(qPrintable(percents))));
        item.setColors(Variants(Words(qPrintable(colors))));
        item.setTexts(texts);
        item.setLegends(legends);
        item.setShowLegend(!legends.isEmpty());
        item.setUseShading(shading);
        item.setBorderColor(Qt::red);
        item.setLegendLineColors({QColor(Qt::darkGreen), QStringLiteral("blue")});
        item.setInactiveLegendColor(Qt::magenta);
        item.setSize(size);
        // The widget's hint leaves out the bar's top offset, which its legend reaches below
        // it; the item keeps room for it.
        QCOMPARE(item.implicitHeight(), qreal(widget.sizeHint().height() + (legends.isEmpty() ? 0 : 8)));
        const QImage picture = Render(&widget, ratio);
        QCOMPARE(Paint(item, ratio), picture);
        TestSupport::SignalLog hovered(&item, {"hoveredIndexChanged()"});
        const QPointF first = widget.SectionRects().begin()->second.center();
        Hover(&widget, QEvent::HoverMove, first);
        Hover(&item, QEvent::HoverMove, first);
        QCOMPARE(item.hoveredIndex(), 0);
        const QImage hover = Render(&widget, ratio);
        // The hovered section stands 2 px out above and below the bar (8 to 16).
        const auto alpha = [&hover, ratio, &first](int y) { return hover.pixelColor(QPoint(int(first.x()), y) * ratio).alpha(); };
        QCOMPARE(QVector<int>({alpha(4), alpha(6), alpha(17), alpha(19)}), QVector<int>({0, 255, 255, 0}));
        QVERIFY(hover != picture);
        QCOMPARE(Paint(item, ratio), hover);
        Hover(&item, QEvent::HoverLeave, {});
        QCOMPARE(item.hoveredIndex(), -1);
        QCOMPARE(hovered.lines.size(), 2);
    }

    // Legends are plain text: markup shows as it is written.
    void legendIsPlainText()
    {
        BarChartItem item;
        item.setLegendFont(TestFont(12));
        item.setPercents({50, 50});
        item.setLegends({QStringLiteral("<u></u>"), QStringLiteral("b")});
        item.setSize(QSizeF(300, 60));
        const QImage image = Paint(item, 1.0);
        QImage blank(image.size(), image.format());
        blank.fill(Qt::transparent);
        QVERIFY(TestSupport::Changed(image, blank, QRect(20, 24, 100, 20)).width() > 10);
    }

    void pieChart_data()
    {
        QTest::addColumn<QVector<int>>("valueMaximumHoleBorder");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        // red: a point of the slice or of its outline (the edge at 3 o'clock of a quarter).
        QTest::addColumn<QPoint>("red");
        QTest::newRow("a quarter") << QVector<int>{25, 100, -10, 2} << QSize(100, 100) << 1.0 << QPoint(70, 50);
        QTest::newRow("nothing") << QVector<int>{0, 100, -10, 2} << QSize(100, 100) << 2.0 << QPoint(50, 2);
        QTest::newRow("above the maximum, tall") << QVector<int>{150, 100, -10, 2} << QSize(80, 120) << 1.0 << QPoint(40, 20);
        QTest::newRow("no hole") << QVector<int>{25, 100, 0, 2} << QSize(100, 100) << 2.0 << QPoint(70, 50);
        QTest::newRow("30 px hole, wide") << QVector<int>{70, 200, 30, 3} << QSize(200, 100) << 1.0 << QPoint(65, 24);
        QTest::newRow("no outline") << QVector<int>{66, 100, -50, 0} << QSize(64, 64) << 1.0 << QPoint(56, 32);
    }
    void pieChart()
    {
        QFETCH(QVector<int>, valueMaximumHoleBorder);
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        PieChart widget;
        QPalette palette = widget.palette();
        palette.setColor(QPalette::WindowText, Qt::red);
        palette.setColor(QPalette::Window, Qt::blue);
        widget.setPalette(palette);
        PieChartItem item;
        item.setColor(Qt::red);
        item.setRingColor(Qt::blue);
        widget.resize(size);
        item.setSize(size);
        widget.setValue(valueMaximumHoleBorder[0]);
        widget.setMaximum(valueMaximumHoleBorder[1]);
        widget.setInnerSize(valueMaximumHoleBorder[2]);
        widget.setBorderWidth(valueMaximumHoleBorder[3]);
        item.setValue(valueMaximumHoleBorder[0]);
        item.setMaximum(valueMaximumHoleBorder[1]);
        item.setInnerSize(valueMaximumHoleBorder[2]);
        item.setBorderWidth(valueMaximumHoleBorder[3]);
        const QImage picture = Paint(item, ratio);
        QCOMPARE(picture, Render(&widget, ratio));
        QFETCH(QPoint, red);
        QCOMPARE(picture.pixelColor(red * ratio), QColor(Qt::red));
        // The ring is kept painted: a new value and a new ring colour must still show.
        widget.setValue(valueMaximumHoleBorder[0] + 10);
        item.setValue(valueMaximumHoleBorder[0] + 10);
        palette.setColor(QPalette::Window, Qt::green);
        widget.setPalette(palette);
        item.setRingColor(Qt::green);
        QCOMPARE(Paint(item, ratio), Render(&widget, ratio));
    }

    void plot_data()
    {
        QTest::addColumn<QVector<int>>("pointsMinRadiusValue");
        QTest::addColumn<bool>("poly");
        QTest::addColumn<bool>("shading");
        QTest::addColumn<QSize>("size");
        QTest::newRow("default history") << QVector<int>{10, 10, 10, 0} << false << false << QSize(240, 100);
        QTest::newRow("polygon, shaded") << QVector<int>{4, 5, 3, 7} << true << true << QSize(100, 50);
        QTest::newRow("many points, square corners") << QVector<int>{16, 2, 0, 9} << false << true << QSize(300, 80);
        QTest::newRow("no points") << QVector<int>{0, 10, 10, 3} << true << false << QSize(50, 50);
    }
    void plot()
    {
        QFETCH(QVector<int>, pointsMinRadiusValue);
        QFETCH(bool, poly);
        QFETCH(bool, shading);
        QFETCH(QSize, size);
        PlotWidget widget;
        PlotItem item;
        widget.resize(size);
        item.setSize(size);
        for (QObject* plot : {static_cast<QObject*>(&widget), static_cast<QObject*>(&item)}) {
            plot->setProperty("pointsOnScreen", pointsMinRadiusValue[0]);
            plot->setProperty("minValue", pointsMinRadiusValue[1]);
            plot->setProperty("radius", pointsMinRadiusValue[2]);
            plot->setProperty("value", 4);
            plot->setProperty("value", pointsMinRadiusValue[3]);
            plot->setProperty("showPoly", poly);
            plot->setProperty("useShading", shading);
            plot->setProperty("brushColor", QColor(10, 200, 30, 160));
        }
        QCOMPARE(item.history(), widget.History());
        QCOMPARE(Paint(item, 1.0), Render(&widget));
        widget.resetValue();
        item.clear();
        QVERIFY(item.history().isEmpty());
        QCOMPARE(Paint(item, 1.0), Render(&widget));
    }

    // Polling samples the counter into the history, each period from 0; a paused plot keeps it.
    void plotPolls()
    {
        PlotItem item;
        TestSupport::SignalLog log(&item, {"historyChanged()", "valueChanged()", "pollingChanged()"});
        item.setPollingTimeout(100);
        item.setPolling(true);
        item.setValue(9);
        const int size = item.history().size();
        QTRY_VERIFY(item.history().size() > size);
        QCOMPARE(item.history().at(size), 9);
        QCOMPARE(item.value(), 0);
        item.setPolling(false);
        QCOMPARE(log.lines.mid(0, 4), Words("pollingChanged() valueChanged() historyChanged() valueChanged()"));
        QCOMPARE(log.lines.last(), QStringLiteral("pollingChanged()"));
        const QList<int> kept = item.history();
        QTest::qWait(250);
        QCOMPARE(item.history(), kept);
    }

    // While polling the graph slides: frames come one after the other, while it is shown.
    void plotSlidesWhileShown()
    {
        QQuickWindow window;
        window.resize(100, 50);
        PlotItem plot(window.contentItem());
        plot.setSize(QSizeF(100, 50));
        plot.setPollingTimeout(100000);
        plot.setPolling(true);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        int frames = 0;
        connect(&window, &QQuickWindow::frameSwapped, this, [&frames] { ++frames; });
        QTRY_VERIFY(frames >= 5);
        plot.setVisible(false);
        QTRY_VERIFY(!window.grabWindow().isNull());
        const int hidden = frames;
        QTest::qWait(200);
        QCOMPARE(frames, hidden);
    }

    void repaints_data()
    {
        QTest::addColumn<QString>("qml");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QVariant>("value");
        const QString bar = QStringLiteral("BarChart { percents: [50, 50]; colors: ['red', 'blue']; legends: ['a', 'b'] }");
        const QString pie = QStringLiteral("PieChart { value: 30; color: 'red'; ringColor: 'blue' }");
        const QString plot = QStringLiteral("Plot { brushColor: 'red'; minValue: 5; value: 2 }");
        QTest::newRow("bar percents") << bar << QByteArray("percents") << QVariant(QVariantList{20, 80});
        QTest::newRow("bar colors") << bar << QByteArray("colors") << QVariant(QVariantList{"red", "green"});
        QTest::newRow("bar legends") << bar << QByteArray("legends") << QVariant(QStringList{"WWWW", "b"});
        QTest::newRow("bar legend colours") << bar << QByteArray("legendLineColors") << QVariant(QVariantList{"red"});
        QTest::newRow("bar border") << bar << QByteArray("borderWidth") << QVariant(6);
        QTest::newRow("bar border colour") << bar << QByteArray("borderColor") << QVariant(QColor(Qt::green));
        QTest::newRow("bar height") << bar << QByteArray("chartHeight") << QVariant(14);
        QTest::newRow("bar legend shown") << bar << QByteArray("showLegend") << QVariant(false);
        QTest::newRow("bar legend font") << bar << QByteArray("legendFont") << QVariant(TestFont(20));
        QTest::newRow("bar shading") << bar << QByteArray("useShading") << QVariant(true);
        QTest::newRow("pie value") << pie << QByteArray("value") << QVariant(60);
        QTest::newRow("pie maximum") << pie << QByteArray("maximum") << QVariant(50);
        QTest::newRow("pie border") << pie << QByteArray("borderWidth") << QVariant(8);
        QTest::newRow("pie hole") << pie << QByteArray("innerSize") << QVariant(-60);
        QTest::newRow("pie colour") << pie << QByteArray("color") << QVariant(QColor(Qt::green));
        QTest::newRow("pie ring colour") << pie << QByteArray("ringColor") << QVariant(QColor(Qt::green));
        QTest::newRow("plot value") << plot << QByteArray("value") << QVariant(4);
        QTest::newRow("plot radius") << plot << QByteArray("radius") << QVariant(0);
        QTest::newRow("plot polygon") << plot << QByteArray("showPoly") << QVariant(true);
        QTest::newRow("plot brush") << plot << QByteArray("brushColor") << QVariant(QColor(Qt::green));
        QTest::newRow("plot shading") << plot << QByteArray("useShading") << QVariant(true);
        QTest::newRow("plot range") << plot << QByteArray("minValue") << QVariant(50);
        QTest::newRow("plot points") << plot << QByteArray("pointsOnScreen") << QVariant(3);
    }
    // Made through the module, shown in a window: a change tells and shows.
    void repaints()
    {
        QFETCH(QString, qml);
        QFETCH(QByteArray, property);
        QFETCH(QVariant, value);
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(("import QtQuick 2.12\nimport Orvanta.Controls 1.0\n" + qml).toUtf8(), QUrl());
        std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(component.create()));
        QVERIFY2(item, qPrintable(component.errorString()));
        QQuickWindow window;
        window.resize(220, 100);
        item->setParentItem(window.contentItem());
        item->setSize(QSizeF(220, 100));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QImage before = window.grabWindow();
        const QMetaProperty meta = item->metaObject()->property(item->metaObject()->indexOfProperty(property));
        QSignalSpy notified(item.get(), meta.notifySignal());
        QVERIFY(item->setProperty(property, value));
        QCOMPARE(notified.count(), 1);
        QVERIFY(window.grabWindow() != before);
        QVERIFY(item->setProperty(property, value));
        QCOMPARE(notified.count(), 1);
    }

    void badInput_data()
    {
        QTest::addColumn<QString>("qml");
        QTest::addColumn<QStringList>("logged");
        QTest::addColumn<QString>("check"); // "property value" read back
        QTest::newRow("bar percents") << "BarChart { percents: [30, -5, NaN, 'x', 0, 40] }"
                                      << QStringList{"3 BarChart: 3 of the percents are not numbers from 0 to 1e6, the first at 1 (\"-5\"); they are left out"}
                                      << "sections 2";
        QTest::newRow("bar lists longer") << "BarChart { percents: [40, 40]; colors: ['red', 'blue', 'green']; texts: ['a', 'b', 'c']; legends: ['a', 'b', 'c', 'd'] }"
                                          << QStringList{"3 BarChart: colors has 3, texts has 3, legends has 4 entries for 2 sections; the extra entries add sections of 10 %"}
                                          << "sections 4";
        QTest::newRow("bar colours") << "BarChart { percents: [50, 50]; colors: ['red', 'nocolour'] }"
                                     << QStringList{"3 BarChart: 1 of the colors are no colours, the first at 1 (\"nocolour\")"}
                                     << "sections 2";
        QTest::newRow("pie value") << "PieChart { value: -5 }"
                                   << QStringList{"3 PieChart: value -5 is negative; the slice runs counter-clockwise"}
                                   << "value -5";
        QTest::newRow("pie maximum") << "PieChart { maximum: 0; value: 3 }"
                                     << QStringList{"3 PieChart: maximum 0 is not positive; a positive value fills the ring"}
                                     << "maximum 0";
        QTest::newRow("pie border") << "PieChart { borderWidth: -4 }"
                                    << QStringList{"3 PieChart: borderWidth -4 is negative; 0 is used"} << "borderWidth 0";
        QTest::newRow("plot value") << "Plot { value: 3; Component.onCompleted: value = -1 }"
                                    << QStringList{"3 Plot: value -1 is negative; it is ignored"} << "value 3";
        QTest::newRow("plot radius") << "Plot { radius: -3 }" << QStringList{"3 Plot: radius -3 is negative; 0 is used"}
                                     << "radius 0";
        QTest::newRow("plot range") << "Plot { minValue: 0 }" << QStringList{"3 Plot: minValue 0 is below 1; 1 is used"}
                                    << "minValue 1";
        QTest::newRow("plot least range") << "Plot { minValue: 1 }" << QStringList() << "minValue 1";
        QTest::newRow("plot points") << "Plot { pointsOnScreen: -2 }"
                                     << QStringList{"3 Plot: pointsOnScreen -2 is negative; 0 is used"} << "pointsOnScreen 0";
        QTest::newRow("plot period") << "Plot { pollingTimeout: 0 }"
                                     << QStringList{"3 Plot: pollingTimeout 0 is not positive; it is ignored"}
                                     << "pollingTimeout 5000";
    }
    // Told once, in one line, painted without harm, and what is left is what the widget keeps.
    void badInput()
    {
        QFETCH(QString, qml);
        QFETCH(QString, check);
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(("import QtQuick 2.12\nimport Orvanta.Controls 1.0\n" + qml).toUtf8(), QUrl());
        const LogCapture::Mark mark;
        std::unique_ptr<QQuickPaintedItem> item(qobject_cast<QQuickPaintedItem*>(component.create()));
        QVERIFY2(item, qPrintable(component.errorString()));
        item->setSize(QSizeF(300, 80));
        Paint(*item, 1.0);
        item->update();
        Paint(*item, 1.0);
        QTEST(mark.Texts(), "logged");
        const QStringList parts = check.split(QLatin1Char(' '));
        if (parts[0] == QLatin1String("sections")) {
            auto* bar = qobject_cast<BarChartItem*>(item.get());
            const LogCapture::Mark again;
            bar->setTooltips({QStringLiteral("t")}); // still mismatched as before: not told again
            QCOMPARE(again.Texts(), QStringList());
            QCOMPARE(SectionCount(*bar), parts[1].toInt());
        } else {
            QCOMPARE(item->property(qPrintable(parts[0])).toInt(), parts[1].toInt());
        }
    }

private:
    // The sections the bar paints: hovered along the bar, one index after the other.
    static int SectionCount(BarChartItem& bar)
    {
        int count = 0;
        for (int x = 0; x < int(bar.width()); ++x) {
            QHoverEvent event(QEvent::HoverMove, QPointF(x, 12), QPointF());
            QCoreApplication::sendEvent(&bar, &event);
            count = std::max(count, bar.hoveredIndex() + 1);
        }
        return count;
    }
};

QTEST_MAIN(TestChartItems)
#include "tst_chart_items.moc"
