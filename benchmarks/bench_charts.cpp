// Paint time per frame at 400 x 300: a bar chart of 8 sections with a two-line legend,
// a pie with a hole and a plot of 60 points with shading, hovered and repainted as they
// are in use; next to Qt Charts drawing the same data at the same size (Qt Charts is GPL
// and used here only, never by the library).

#include <qt_halvo/charts/bar_chart.h>
#include <qt_halvo/charts/pie_chart.h>
#include <qt_halvo/charts/plot_widget.h>

#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QHorizontalStackedBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QPieSeries>
#include <QtCharts/QAreaSeries>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>
#include <QtTest/QtTest>

using namespace OrvantaQT;

namespace {

const QSize kSize(400, 300);

// A widget painted into an image once per frame. Pending events are delivered first so
// that Qt Charts' scene, which updates its items from the event loop, draws the new data
// and not the previous frame's.
template <typename Widget>
struct Host
{
    ~Host()
    {
        if (qEnvironmentVariableIsSet("BENCH_CHARTS_DUMP"))
            target.save(QStringLiteral("%1/%2.png").arg(qEnvironmentVariable("BENCH_CHARTS_DUMP"), QTest::currentTestFunction()));
    }
    Host()
    {
        widget = new Widget(&window);
        window.resize(kSize);
        widget->setGeometry(QRect(QPoint(), kSize));
    }
    void Frame()
    {
        QCoreApplication::processEvents();
        target.fill(Qt::white);
        widget->QWidget::render(&target, QPoint(), QRegion(), QWidget::DrawChildren);
    }
    // A check that the benchmark measures real drawing: enough pixels that are not white.
    void RequireDrawn() const
    {
        int inked = 0;
        for (int y = 0; y < target.height(); ++y)
            for (int x = 0; x < target.width(); ++x)
                inked += target.pixel(x, y) != qRgb(255, 255, 255) ? 1 : 0;
        if (inked < 2000)
            qFatal("only %d pixels drawn", inked);
    }

    QWidget window;
    Widget* widget = nullptr;
    QImage target{kSize, QImage::Format_ARGB32_Premultiplied};
};

std::map<int, BarInfo> EightSections()
{
    static const int percents[] = {22, 18, 15, 12, 11, 9, 8, 5};
    std::map<int, BarInfo> infos;
    for (int i = 0; i < 8; ++i) {
        BarInfo info;
        info.percent = percents[i];
        info.color = QColor::fromHsv(i * 45, 180, 220);
        info.legend = QStringLiteral("Part %1\n%2 %").arg(i + 1).arg(percents[i]);
        infos[i] = info;
    }
    return infos;
}

} // namespace

class BenchCharts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barChart();
    void qtChartsStackedBar();
    void pieChart();
    void qtChartsPie();
    void plotWidget();
    void qtChartsArea();
};

void BenchCharts::barChart()
{
    Host<BarChart> host;
    host.widget->SetBarInfoList(EightSections());
    host.widget->setLegendList({QStringLiteral("a\nb")}); // two legend lines
    host.widget->SetBarInfoList(EightSections());
    host.Frame();
    int step = 0;
    host.RequireDrawn();
    QBENCHMARK {
        // As with the mouse moving along the bar: the hovered section changes.
        QMouseEvent move(QEvent::MouseMove, QPointF(20 + (step++ % 360), 12), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(host.widget, &move);
        host.Frame();
    }
}

void BenchCharts::qtChartsStackedBar()
{
    Host<QtCharts::QChartView> host;
    auto* series = new QtCharts::QHorizontalStackedBarSeries;
    for (const auto& entry : EightSections()) {
        auto* set = new QtCharts::QBarSet(entry.second.legend);
        *set << entry.second.percent;
        set->setColor(entry.second.color);
        series->append(set);
    }
    auto* chart = new QtCharts::QChart;
    chart->addSeries(series);
    chart->legend()->setAlignment(Qt::AlignBottom);
    host.widget->setChart(chart);
    host.Frame();
    host.RequireDrawn();
    int step = 0;
    QBENCHMARK {
        // The same hover as the bar chart gets: Qt Charts highlights the set under the mouse.
        QMouseEvent move(QEvent::MouseMove, QPointF(20 + (step++ % 360), 150), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(host.widget->viewport(), &move);
        host.Frame();
    }
}

void BenchCharts::pieChart()
{
    Host<PieChart> host;
    host.widget->setInnerSize(-40);
    host.widget->setValue(35);
    host.Frame();
    host.RequireDrawn();
    int value = 0;
    QBENCHMARK {
        host.widget->setValue(value++ % 100); // as when a slider drives it
        host.Frame();
    }
}

void BenchCharts::qtChartsPie()
{
    Host<QtCharts::QChartView> host;
    auto* series = new QtCharts::QPieSeries;
    series->setHoleSize(0.4);
    auto* filled = series->append(QStringLiteral("value"), 35);
    series->append(QStringLiteral("rest"), 65);
    auto* chart = new QtCharts::QChart;
    chart->addSeries(series);
    chart->legend()->hide();
    host.widget->setChart(chart);
    host.Frame();
    host.RequireDrawn();
    int value = 0;
    QBENCHMARK {
        filled->setValue(value++ % 100);
        host.Frame();
    }
}

void BenchCharts::plotWidget()
{
    Host<PlotWidget> host;
    host.widget->setPointsOnScreen(60);
    host.widget->setUseShading(true);
    host.widget->setBrushColor(QColor(60, 120, 200));
    // Fill the history with a fast poll, then scroll at the usual pace.
    host.widget->setPollingTimeout(1);
    host.widget->startPolling(true);
    for (int i = 0; i < 70; ++i) {
        host.widget->setValue(1 + i * 37 % 9);
        QTest::qWait(2);
    }
    host.widget->setPollingTimeout(1000);
    host.Frame();
    host.RequireDrawn();
    QBENCHMARK {
        host.Frame();
    }
    host.widget->startPolling(false);
}

// The plot's counterpart: an area series of the same 60 values with the same horizontal
// gradient, scrolled one step per frame, without axes or legend.
void BenchCharts::qtChartsArea()
{
    Host<QtCharts::QChartView> host;
    host.widget->setRenderHint(QPainter::Antialiasing);
    auto* upper = new QtCharts::QLineSeries;
    for (int i = 0; i < 60; ++i)
        upper->append(i, 1 + i * 37 % 9);
    auto* area = new QtCharts::QAreaSeries(upper);
    QLinearGradient gradient(0, 0, kSize.width(), 0);
    gradient.setColorAt(0, QColor(60, 120, 200));
    gradient.setColorAt(1, QColor(60, 120, 200).darker(200));
    area->setBrush(gradient);
    area->setPen(Qt::NoPen);
    auto* chart = new QtCharts::QChart;
    chart->addSeries(area);
    chart->legend()->hide();
    chart->setMargins(QMargins());
    chart->setBackgroundRoundness(0);
    auto* x = new QtCharts::QValueAxis;
    auto* y = new QtCharts::QValueAxis;
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    area->attachAxis(x);
    area->attachAxis(y);
    y->setRange(0, 10);
    x->hide();
    y->hide();
    host.widget->setChart(chart);
    x->setRange(0, 59);
    host.Frame();
    host.RequireDrawn();
    qreal offset = 0;
    QBENCHMARK {
        offset += 0.05;
        x->setRange(offset, 59 + offset);
        host.Frame();
    }
}

QTEST_MAIN(BenchCharts)
#include "bench_charts.moc"
