#include <qt_halvo/charts/bar_chart.h>

#include "test_support.h"

using namespace OrvantaQT;
using namespace TestSupport;

namespace {

void Send(BarChart* chart, QEvent::Type type, const QPointF& at = {})
{
    QMouseEvent event(type, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(chart, &event);
}

} // namespace

class TestBarChart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sections_data()
    {
        QTest::addColumn<QString>("percents");
        QTest::addColumn<int>("width"); // the room between the rounded ends is width - 9, from x = 5
        QTest::addColumn<QString>("expected"); // left and width of each section
        QTest::newRow("even") << "30 30 40" << 201 << "5 57.6 62 57.6 119 76.8";
        QTest::newRow("zero and negative dropped") << "50 0 -3 50" << 201 << "5 96 101 96";
        // Narrower than 8 px: widened at the expense of the next one, the last one at the expense
        // of the nearest one before it that can afford it; no minimum when they do not fit.
        QTest::newRow("a small section in the middle") << "50 1 49" << 201 << "5 96 101 8 109 88";
        QTest::newRow("a small last section") << "60 39 1" << 201 << "5 115.2 120 68.8 187 8";
        QTest::newRow("the first pays") << "94 4 2" << 201 << "5 176 180.52 8 188 8";
        QTest::newRow("too many for the minimum") << "90 2 2 2 2 2" << 50 << "5 36.9 41 0.82 41 0.82 41 0.82 41 0.82 41 0.82";
    }
    // Text goes in the sections less half of each inner border (3 px here), in whole pixels.
    void sections()
    {
        QFETCH(QString, percents);
        QFETCH(int, width);
        QFETCH(QString, expected);
        BarChart chart;
        chart.setPercentList(percents.split(QLatin1Char(' ')));
        chart.setBorderWidth(3);
        chart.resize(width, 80);
        Render(&chart);
        const QStringList numbers = expected.split(QLatin1Char(' '));
        QCOMPARE(int(chart.SectionRects().size()), numbers.size() / 2);
        QCOMPARE(chart.TextRects().size(), chart.SectionRects().size());
        for (int i = 0, last = numbers.size() / 2 - 1; i <= last; ++i) {
            const QRectF section(numbers[2 * i].toDouble(), 8, numbers[2 * i + 1].toDouble(), 8);
            QCOMPARE(chart.SectionRects().at(i), section);
            QCOMPARE(chart.TextRects().at(i), QRectF(section.adjusted(i == 0 ? 0 : 1, 0, i == last ? 0 : -1, 0).toRect()));
        }
    }
    // The list getters quote each entry; a longer list adds sections with the defaults, a
    // section info list keeps what has a percent or is not hidden at zero.
    void sectionLists()
    {
        BarChart chart;
        chart.setColorList({QStringLiteral("red")});
        chart.setTextList(Words("a b"));
        QCOMPARE(chart.percentList() + chart.colorList() + chart.textList(),
                 Words("\"10\" \"10\" \"#ff0000\" \"#a0a0a4\" \"a\" \"b\""));
        chart.setLegendList({QStringLiteral("one\r\ntwo<br>three")});
        chart.setChartHeight(12);
        const QFontMetrics metrics(chart.legendFont(), &chart);
        QCOMPARE(chart.sizeHint().height(), 12 + 8 + 3 * (metrics.descent() + metrics.lineSpacing()) + 2 * metrics.descent());
        chart.setShowLegend(false);
        QCOMPARE(chart.sizeHint().height(), 12);
        BarInfo shown, hidden;
        shown.percent = hidden.percent = 0;
        shown.hideIfZero = false;
        chart.SetBarInfoList({{3, shown}, {5, hidden}, {7, BarInfo()}});
        QCOMPARE(QStringList(chart.percentList()), Words("\"0\" \"10\""));
        chart.resetPercentList();
        QVERIFY(chart.BarInfos().empty());
    }
    // The bar: rounded ends, antialiased; dividers in the border colour; hatching a darker
    // shade; without a legend, the sections' texts one average character in. The legend:
    // entries share the width, the last hugging the right edge as wide as its widest line
    // needs; a dot in the section's colour; lines elided to their entry. It is laid out once
    // and kept: new texts, sections, width and font must show, and the hover recolour it.
    void paintsTheBarAndTheLegend()
    {
        BarChart chart;
        chart.setLegendFont(TestFont(12));
        chart.setPercentList(Words("30 30 40"));
        chart.setColorList(Words("#fafafa #ffff00 #0000ff"));
        chart.setTextList({QString(), QStringLiteral("WWWWWWWWWWWW")});
        chart.setShowLegend(false);
        chart.setBorderWidth(3);
        chart.setBorderColor(Qt::red);
        chart.setUseShading(true);
        chart.resize(201, 80);
        QImage image = Render(&chart);
        const auto count = [&image](QRect area, const std::function<bool(const QColor&)>& test) {
            int count = 0;
            area &= image.rect();
            for (int y = area.top(); y <= area.bottom(); ++y)
                for (int x = area.left(); x <= area.right(); ++x)
                    count += test(image.pixelColor(x, y)) ? 1 : 0;
            return count;
        };
        QCOMPARE(Pixels(image, {{2, 12}, {198, 12}, {62, 12}}), Colours("#fafafa blue red"));
        QVERIFY(count(QRect(0, 6, 5, 12), [](const QColor& c) { return c.alpha() > 0 && c.alpha() < 255; }) > 0);
        QVERIFY(count(QRect(10, 9, 40, 6), [](const QColor& c) { return c == QColor(200, 200, 200); }) > 0);
        QVERIFY(count(QRect(10, 9, 40, 6), [](const QColor& c) { return c == QColor(0xfa, 0xfa, 0xfa); }) > 0);
        const auto dark = [](const QColor& c) { return c.alpha() > 0 && c.red() < 80 && c.green() < 80; };
        const int textStart = int(chart.TextRects().at(1).left()) + QFontMetrics(TestFont(12)).averageCharWidth();
        QCOMPARE(count(QRect(QPoint(50, 4), QPoint(textStart - 2, 20)), dark), 0);
        QVERIFY(count(QRect(QPoint(textStart, 4), QPoint(118, 20)), dark) > 0);
        chart.setShowLegend(true);
        chart.setColorList(Words("#ff0000 #0000ff #808080"));
        chart.setLegendList({QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Tail\nsecond")});
        chart.SetLegendLineColors({Qt::green}, Qt::magenta);
        chart.resize(301, 80);
        const auto width = [](const QFont& font, const char* text) {
            return 16 + QFontMetrics(font).horizontalAdvance(QLatin1String(text));
        };
        const int need = QFontMetrics(TestFont(12)).averageCharWidth() + width(TestFont(12), "second");
        image = Render(&chart);
        const auto rects = chart.LegendRects();
        QCOMPARE(rects.at(0), QRect(0, 8 + 8 + 8, width(TestFont(12), "Alpha"), rects.at(0).height()));
        QCOMPARE(rects.at(1).x(), 150); // 301 / 2
        QCOMPARE(rects.at(2), QRect(301 - need, 24, width(TestFont(12), "second"), rects.at(0).height()));
        QCOMPARE(Pixels(image, {{8, 32}, {158, 32}, {rects.at(2).x() + 8, 32}}), Colours("red blue #808080"));
        chart.setLegendList({QString(60, QLatin1Char('i')), QStringLiteral("Beta"), QStringLiteral("Tail\nsecond")});
        image = Render(&chart);
        const auto green = [](const QColor& c) { return c.alpha() > 0 && c.green() > 2 * (c.red() + c.blue()); };
        QVERIFY(count(QRect(16, 24, 134, 14), green) > 0);
        QCOMPARE(count(QRect(152, 24, 18, 14), green), 0);
        chart.resize(251, 80);
        Render(&chart);
        QCOMPARE(chart.LegendRects().at(2).x(), 251 - need);
        chart.setLegendFont(TestFont(20));
        image = Render(&chart);
        QCOMPARE(chart.LegendRects().at(1).width(), width(TestFont(20), "Beta"));
        const QRect tail = chart.LegendRects().at(2).adjusted(16, 0, 0, 0);
        const auto magenta = [](const QColor& c) { return c.alpha() > 0 && c.red() > 2 * c.green() && c.blue() > 2 * c.green(); };
        QCOMPARE(count(tail, magenta), 0);
        Send(&chart, QEvent::MouseMove, chart.SectionRects().at(0).center());
        image = Render(&chart);
        QVERIFY(count(tail, magenta) > 0);
        chart.setColorList(Words("#ff0000 #0000ff #808080 #00ffff"));
        Render(&chart);
        QCOMPARE(chart.LegendRects().size(), size_t(4));
        chart.setPercentList({"100"}); // an entry alone starts at the left as well
        Render(&chart);
        QCOMPARE(chart.LegendRects().at(0).topLeft(), QPoint(0, 8 + 8 + 8));
        QCOMPARE(chart.LegendRects().size() + chart.TextRects().size(), size_t(2));
    }
    // A hovered section stands out taller and the others take their inactive colour;
    // hovering its legend entry does the same. Changes repaint the chart.
    void hoverTooltipAndRepaints()
    {
        QWidget window;
        window.resize(320, 100);
        auto* chart = new BarChart(&window);
        chart->setGeometry(0, 0, 301, 80);
        chart->setPercentList(Words("50 50"));
        chart->setColorList(Words("#0000ff #ff0000"));
        chart->setLegendList(Words("Used Free"));
        chart->setTooltipList({QStringLiteral("Used: 50 %")});
        QVERIFY(ShowAndWait(&window));
        QTRY_VERIFY(!chart->SectionRects().empty());
        const QPoint first = chart->SectionRects().at(0).center().toPoint();
        const QPoint second = chart->SectionRects().at(1).center().toPoint();
        QVERIFY(Repaints(chart, [&] { Send(chart, QEvent::MouseMove, second); }));
        QCOMPARE(Pixels(Render(chart), {first, {second.x(), 6}, {first.x(), 6}}), Colours("white red transparent"));
        Send(chart, QEvent::MouseMove, chart->LegendRects().at(0).topLeft() + QPoint(6, 6));
        QCOMPARE(chart->HoveredIndex(), 0);
        QVERIFY(Repaints(chart, [&] { Send(chart, QEvent::Leave); }));
        QCOMPARE(chart->HoveredIndex(), -1);
        QVERIFY(Repaints(chart, [&] { chart->setBorderColor(Qt::green); }));
        QVERIFY(Repaints(chart, [&] { chart->SetLegendLineColors({Qt::black}, Qt::gray); }));
        QVERIFY(Repaints(chart, [&] { chart->SetBarInfoList(std::map<int, BarInfo>(chart->BarInfos())); }));
        QHelpEvent help(QEvent::ToolTip, first, chart->mapToGlobal(first)), none(QEvent::ToolTip, second, QPoint());
        QVERIFY(QCoreApplication::sendEvent(chart, &help));
        QTRY_COMPARE(QToolTip::text(), QStringLiteral("<p>Used: 50 %</p>"));
        QCoreApplication::sendEvent(chart, &none);
        QVERIFY(!none.isAccepted());
    }
};

QTEST_MAIN(TestBarChart)
#include "tst_bar_chart.moc"
