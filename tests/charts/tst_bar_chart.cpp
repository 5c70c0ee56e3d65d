#include <qt_halvo/charts/bar_chart.h>

#include <QtGui/QHelpEvent>
#include <QtTest/QtTest>
#include <QtWidgets/QToolTip>

using OrvantaQT::BarChart;
using OrvantaQT::BarInfo;

namespace {

QFont TestFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    return font;
}

// A chart 201 px wide: the room between the rounded ends is 200 - 8 = 192 px, from x = 5.
struct Chart
{
    explicit Chart(const QStringList& percents, int width = 201)
    {
        chart.setLegendFont(TestFont());
        chart.setPercentList(percents);
        chart.resize(width, 80);
    }
    void Paint() { image = chart.grab().toImage(); }

    BarChart chart;
    QImage image;
};

BarInfo Info(int percent, bool hideIfZero = true)
{
    BarInfo info;
    info.percent = percent;
    info.hideIfZero = hideIfZero;
    return info;
}

} // namespace

class TestBarChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sections_data();
    void sections();
    void sectionData();
    void hoverAndTooltip();
    void legend();
};

void TestBarChart::sections_data()
{
    QTest::addColumn<QStringList>("percents");
    QTest::addColumn<int>("width");
    QTest::addColumn<QVector<QRectF>>("expected");

    QTest::newRow("even") << QStringList{"30", "30", "40"} << 201
                          << QVector<QRectF>{{5, 8, 57.6, 8}, {62, 8, 57.6, 8}, {119, 8, 76.8, 8}};
    QTest::newRow("zero and negative dropped") << QStringList{"50", "0", "-3", "50"} << 201
                                               << QVector<QRectF>{{5, 8, 96, 8}, {101, 8, 96, 8}};
    // 1 % is 1.92 px: widened to 8, the next one pays the 6.08.
    QTest::newRow("a small section in the middle") << QStringList{"50", "1", "49"} << 201
                                                   << QVector<QRectF>{{5, 8, 96, 8}, {101, 8, 8, 8}, {109, 8, 88, 8}};
    // The last one small: the section before it pays.
    QTest::newRow("a small last section") << QStringList{"60", "39", "1"} << 201
                                          << QVector<QRectF>{{5, 8, 115.2, 8}, {120, 8, 68.8, 8}, {187, 8, 8, 8}};
    // The one before cannot afford it: the first pays, the one between shifts left.
    QTest::newRow("the first pays") << QStringList{"94", "4", "2"} << 201
                                    << QVector<QRectF>{{5, 8, 176, 8}, {180.52, 8, 8, 8}, {188, 8, 8, 8}};
    // Six sections do not fit 8 px each into 41: no minimum.
    QTest::newRow("too many for the minimum") << QStringList{"90", "2", "2", "2", "2", "2"} << 50
                                              << QVector<QRectF>{{5, 8, 36.9, 8}, {41, 8, 0.82, 8}, {41, 8, 0.82, 8},
                                                                 {41, 8, 0.82, 8}, {41, 8, 0.82, 8}, {41, 8, 0.82, 8}};
}

// Text rectangles are the sections' less half of each inner border (3 px here), in whole pixels.
void TestBarChart::sections()
{
    QFETCH(QStringList, percents);
    QFETCH(int, width);
    QFETCH(QVector<QRectF>, expected);
    Chart c(percents, width);
    c.chart.setBorderWidth(3);
    c.Paint();
    const auto sections = c.chart.SectionRects(); // keyed 0, 1, ...
    QCOMPARE(int(sections.size()), expected.size());
    const int last = expected.size() - 1;
    for (int i = 0; i <= last; ++i) {
        QCOMPARE(sections.at(i), expected.at(i));
        const QRectF text = sections.at(i).adjusted(i == 0 ? 0 : 1, 0, i == last ? 0 : -1, 0);
        QCOMPARE(c.chart.TextRects().at(i), QRectF(text.toRect()));
    }
    c.chart.setBorderWidth(0);
    c.Paint();
    for (int i = 0; i <= last; ++i)
        QCOMPARE(c.chart.TextRects().at(i), QRectF(sections.at(i).toRect()));
}

// The list getters quote each entry, and a list longer than the sections adds sections
// with the defaults; SetBarInfoList() keeps what has a percent or is not hidden at zero.
void TestBarChart::sectionData()
{
    BarChart chart;
    chart.setColorList({QStringLiteral("red")});
    QCOMPARE(chart.colorList(), QStringList{"\"#ff0000\""});
    QCOMPARE(chart.percentList(), QStringList{"\"10\""});
    chart.setTextList({QStringLiteral("a"), QStringLiteral("b")});
    QCOMPARE(chart.textList(), (QStringList{"\"a\"", "\"b\""}));
    QCOMPARE(chart.colorList(), (QStringList{"\"#ff0000\"", "\"#a0a0a4\""}));
    chart.setLegendList({QStringLiteral("one\r\ntwo<br>three")});
    const QFontMetrics metrics(chart.legendFont(), &chart);
    QCOMPARE(chart.sizeHint().height(), chart.chartHeight() + 8 + 3 * (metrics.descent() + metrics.lineSpacing())
                                            + 2 * metrics.descent());
    chart.resetPercentList();
    QVERIFY(chart.BarInfos().empty());

    chart.SetBarInfoList({{3, Info(0, false)}, {5, Info(0)}, {7, Info(40)}});
    QCOMPARE(chart.BarInfos().size(), size_t(2));
    QVERIFY(chart.BarInfos().count(3) && chart.BarInfos().count(7));
}

void TestBarChart::hoverAndTooltip()
{
    QWidget window;
    window.resize(320, 100);
    auto* chart = new BarChart(&window);
    chart->setLegendFont(TestFont());
    chart->setGeometry(0, 0, 301, 80);
    std::map<int, BarInfo> infos{{0, Info(50)}, {1, Info(50)}};
    infos[0].inactiveColor = QColor(Qt::yellow);
    infos[0].legend = QStringLiteral("Used");
    infos[0].tooltip = QStringLiteral("Used: 50 %");
    infos[1].legend = QStringLiteral("Free");
    chart->SetBarInfoList(infos);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(!chart->SectionRects().empty());

    const QPoint onSecond = chart->SectionRects().at(1).center().toPoint();
    QTest::mouseMove(chart, onSecond);
    QTRY_COMPARE(chart->HoveredIndex(), 1);
    QTRY_COMPARE(chart->grab().toImage().pixelColor(chart->SectionRects().at(0).center().toPoint()), QColor(Qt::yellow));
    // The legend entry of the first section highlights it as well.
    QTest::mouseMove(chart, chart->LegendRects().at(0).topLeft() + QPoint(6, 6));
    QTRY_COMPARE(chart->HoveredIndex(), 0);
    QTest::mouseMove(&window, QPoint(315, 95));
    QTRY_COMPARE(chart->HoveredIndex(), -1);

    QHelpEvent help(QEvent::ToolTip, chart->SectionRects().at(0).center().toPoint(),
                    chart->mapToGlobal(chart->SectionRects().at(0).center().toPoint()));
    QVERIFY(QCoreApplication::sendEvent(chart, &help));
    QTRY_COMPARE(QToolTip::text(), QStringLiteral("<p>Used: 50 %</p>"));
    QHelpEvent none(QEvent::ToolTip, onSecond, chart->mapToGlobal(onSecond));
    QCoreApplication::sendEvent(chart, &none);
    QVERIFY(!none.isAccepted());
}

// Entries share the width, the last hugging the right edge as wide as its widest line
// needs. The legend is laid out once and kept: new texts, a new width and a new font must
// show, and the hover must recolour it.
void TestBarChart::legend()
{
    Chart c({"30", "30", "40"}, 301);
    c.chart.setLegendList({QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Tail\nsecond")});
    c.Paint();
    const QFontMetrics metrics(TestFont());
    const auto width = [](const QFont& font, const char* text) {
        return 16 + QFontMetrics(font).horizontalAdvance(QLatin1String(text));
    };
    const int need = metrics.averageCharWidth() + width(TestFont(), "second");
    QCOMPARE(c.chart.LegendRects().at(0).topLeft(), QPoint(0, 8 + 8 + 8));
    QCOMPARE(c.chart.LegendRects().at(0).width(), width(TestFont(), "Alpha"));
    QCOMPARE(c.chart.LegendRects().at(1).x(), 150); // 301 / 2
    QCOMPARE(c.chart.LegendRects().at(2).x(), 301 - need);
    QCOMPARE(c.chart.LegendRects().at(2).width(), width(TestFont(), "second"));
    const QImage before = c.image;

    c.chart.setLegendList({QStringLiteral("Longer")});
    c.Paint();
    QCOMPARE(c.chart.LegendRects().at(0).width(), width(TestFont(), "Longer"));
    QVERIFY(c.image != before);

    c.chart.resize(251, 80);
    c.Paint();
    QCOMPARE(c.chart.LegendRects().at(2).x(), 251 - need);

    QFont big = TestFont();
    big.setPixelSize(20);
    c.chart.setLegendFont(big);
    c.Paint();
    QCOMPARE(c.chart.LegendRects().at(0).width(), width(big, "Longer"));

    // Hovering the first section, the other entries' texts turn to the inactive colour.
    c.chart.SetLegendLineColors({Qt::black}, Qt::green);
    c.Paint();
    const QRect tail = c.chart.LegendRects().at(2);
    auto countGreen = [&c, tail]() {
        int green = 0;
        for (int y = tail.top(); y <= tail.bottom(); ++y)
            for (int x = tail.left() + 16; x <= tail.right(); ++x)
                green += c.image.pixelColor(x, y) == QColor(Qt::green) ? 1 : 0;
        return green;
    };
    QCOMPARE(countGreen(), 0);
    QMouseEvent move(QEvent::MouseMove, c.chart.SectionRects().at(0).center(), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&c.chart, &move);
    c.Paint();
    QVERIFY(countGreen() > 0);

    // An entry alone starts at the left as well.
    c.chart.setPercentList({"100"});
    c.Paint();
    QCOMPARE(c.chart.LegendRects().size(), size_t(1));
    QCOMPARE(c.chart.LegendRects().at(0).topLeft(), QPoint(0, 8 + 8 + 8));
}

QTEST_MAIN(TestBarChart)
#include "tst_bar_chart.moc"
