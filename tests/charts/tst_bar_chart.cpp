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
    QVector<QRectF> Sections() const
    {
        QVector<QRectF> rects;
        for (const auto& entry : chart.SectionRects())
            rects << entry.second;
        return rects;
    }

    BarChart chart;
    QImage image;
};

bool Near(const QRectF& a, const QRectF& b)
{
    return std::abs(a.x() - b.x()) < 1e-6 && std::abs(a.width() - b.width()) < 1e-6 && a.y() == b.y()
        && a.height() == b.height();
}

} // namespace

class TestBarChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sections_data();
    void sections();
    void textRectsLeaveRoomForTheBorder();
    void listsAreQuotedOnTheWayOut();
    void barInfoListDropsEmptySections();
    void legendEntries();
    void hoverAndTooltip();
    void legendFollowsChanges();
};

void TestBarChart::sections_data()
{
    QTest::addColumn<QStringList>("percents");
    QTest::addColumn<int>("width");
    QTest::addColumn<QVector<QRectF>>("expected");

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

void TestBarChart::sections()
{
    QFETCH(QStringList, percents);
    QFETCH(int, width);
    QFETCH(QVector<QRectF>, expected);
    Chart c(percents, width);
    c.Paint();
    const QVector<QRectF> sections = c.Sections();
    QCOMPARE(sections.size(), expected.size());
    for (int i = 0; i < sections.size(); ++i)
        QVERIFY2(Near(sections.at(i), expected.at(i)), qPrintable(QStringLiteral("section %1: %2 %3 %4")
                                                                      .arg(i)
                                                                      .arg(sections.at(i).x())
                                                                      .arg(sections.at(i).width())
                                                                      .arg(expected.at(i).width())));
}

void TestBarChart::textRectsLeaveRoomForTheBorder()
{
    Chart c({"30", "30", "40"});
    c.chart.setBorderWidth(3);
    c.Paint();
    const auto text = c.chart.TextRects();
    const auto sections = c.chart.SectionRects();
    QCOMPARE(text.at(0), QRectF(sections.at(0).adjusted(0, 0, -1, 0).toRect()));
    QCOMPARE(text.at(1), QRectF(sections.at(1).adjusted(1, 0, -1, 0).toRect()));
    QCOMPARE(text.at(2), QRectF(sections.at(2).adjusted(1, 0, 0, 0).toRect()));
    c.chart.setBorderWidth(0);
    c.Paint();
    QCOMPARE(c.chart.TextRects().at(1), QRectF(c.chart.SectionRects().at(1).toRect()));
}

void TestBarChart::listsAreQuotedOnTheWayOut()
{
    BarChart chart;
    chart.setColorList({QStringLiteral("red")});
    QCOMPARE(chart.colorList(), QStringList{"\"#ff0000\""});
    QCOMPARE(chart.percentList(), QStringList{"\"10\""}); // a new section's default
    chart.setTextList({QStringLiteral("a"), QStringLiteral("b")});
    QCOMPARE(chart.textList(), (QStringList{"\"a\"", "\"b\""}));
    QCOMPARE(chart.colorList(), (QStringList{"\"#ff0000\"", "\"#a0a0a4\""}));
    chart.setLegendList({QStringLiteral("one\r\ntwo<br>three")});
    QCOMPARE(chart.sizeHint().height(), chart.chartHeight() + 8 + [&] {
        const QFontMetrics metrics(chart.legendFont(), &chart);
        return 3 * (metrics.descent() + metrics.lineSpacing()) + 2 * metrics.descent();
    }());
    chart.resetPercentList();
    QCOMPARE(chart.BarInfos().size(), size_t(0));
}

void TestBarChart::barInfoListDropsEmptySections()
{
    BarChart chart;
    BarInfo kept;
    kept.percent = 0;
    kept.hideIfZero = false;
    BarInfo dropped;
    dropped.percent = 0;
    BarInfo normal;
    normal.percent = 40;
    chart.SetBarInfoList({{3, kept}, {5, dropped}, {7, normal}});
    QCOMPARE(chart.BarInfos().size(), size_t(2));
    QVERIFY(chart.BarInfos().count(3) && chart.BarInfos().count(7));
}

void TestBarChart::legendEntries()
{
    Chart one({"100"}, 301);
    one.chart.setLegendList({QStringLiteral("Only")});
    one.Paint();
    const QFontMetrics metrics(TestFont());
    QCOMPARE(one.chart.LegendRects().at(0).x(), 0);
    QCOMPARE(one.chart.LegendRects().at(0).y(), 8 + 8 + 8);

    Chart three({"30", "30", "40"}, 301);
    three.chart.setLegendList({QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Gamma\nsecond line")});
    three.Paint();
    const auto legend = three.chart.LegendRects();
    QCOMPARE(legend.at(0).x(), 0);
    QCOMPARE(legend.at(1).x(), 150); // 301 / 2
    // The last hugs the right edge: as wide as its widest line needs.
    const int need = metrics.averageCharWidth() + 16 + metrics.horizontalAdvance(QStringLiteral("second line"));
    QCOMPARE(legend.at(2).x(), 301 - need);
    QCOMPARE(legend.at(2).width(), 16 + metrics.horizontalAdvance(QStringLiteral("second line")));
}

void TestBarChart::hoverAndTooltip()
{
    QWidget window;
    window.resize(320, 100);
    auto* chart = new BarChart(&window);
    chart->setLegendFont(TestFont());
    chart->setGeometry(0, 0, 301, 80);
    std::map<int, BarInfo> infos;
    for (int i = 0; i < 2; ++i) {
        BarInfo info;
        info.percent = 50;
        info.color = i == 0 ? QColor(Qt::red) : QColor(Qt::blue);
        info.inactiveColor = QColor(Qt::yellow);
        info.legend = i == 0 ? QStringLiteral("Used") : QStringLiteral("Free");
        info.tooltip = i == 0 ? QStringLiteral("Used: 50 %") : QString();
        infos[i] = info;
    }
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


// The legend is laid out once and kept: new texts, a new font and a new width must show.
void TestBarChart::legendFollowsChanges()
{
    Chart c({"50", "50"}, 301);
    c.chart.setLegendList({QStringLiteral("Short"), QStringLiteral("Tail")});
    c.Paint();
    const QFontMetrics metrics(TestFont());
    QCOMPARE(c.chart.LegendRects().at(0).width(), 16 + metrics.horizontalAdvance(QStringLiteral("Short")));
    const QImage before = c.image;

    c.chart.setLegendList({QStringLiteral("Much longer"), QStringLiteral("Tail")});
    c.Paint();
    QCOMPARE(c.chart.LegendRects().at(0).width(), 16 + metrics.horizontalAdvance(QStringLiteral("Much longer")));
    QVERIFY(c.image != before);

    // A narrower chart moves the last entry, which hugs the right edge.
    const int lastX = c.chart.LegendRects().at(1).x();
    c.chart.resize(251, 80);
    c.Paint();
    QCOMPARE(c.chart.LegendRects().at(1).x(), lastX - 50);

    QFont big = TestFont();
    big.setPixelSize(20);
    c.chart.setLegendFont(big);
    c.Paint();
    QCOMPARE(c.chart.LegendRects().at(0).width(), 16 + QFontMetrics(big).horizontalAdvance(QStringLiteral("Much longer")));

    // Hover recolours the kept legend: the other entry's text turns to the inactive colour.
    c.chart.SetLegendLineColors({Qt::black}, Qt::green);
    c.Paint();
    const QRect tail = c.chart.LegendRects().at(1);
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
}

QTEST_MAIN(TestBarChart)
#include "tst_bar_chart.moc"
