#include <qt_halvo/layouts/flow_layout.h>

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QSpacerItem>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::FlowLayout;

Q_DECLARE_METATYPE(QMargins)

namespace {

// A widget of a given size hint that keeps its area when narrowed.
class Box : public QWidget
{
public:
    explicit Box(QSize hint, QWidget* parent = nullptr) : QWidget(parent), m_hint(hint) {}
    QSize sizeHint() const override { return m_hint; }
    QSize minimumSizeHint() const override { return QSize(1, 1); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override
    {
        return width > 0 ? (m_hint.width() * m_hint.height() + width - 1) / width : m_hint.height();
    }

private:
    QSize m_hint;
};

// Known spacings: the parent's metric and the push-button spacing.
class SpacingStyle : public QProxyStyle
{
public:
    explicit SpacingStyle(int metric) : m_metric(metric) {}
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        if (metric == PM_LayoutHorizontalSpacing || metric == PM_LayoutVerticalSpacing)
            return m_metric;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
    int layoutSpacing(QSizePolicy::ControlType, QSizePolicy::ControlType, Qt::Orientation orientation,
                      const QStyleOption*, const QWidget*) const override
    {
        return orientation == Qt::Horizontal ? 3 : 2;
    }

private:
    int m_metric;
};

// Takes the place the layout gives it as it is (a widget item would fit its widget in).
class FixedItem : public QWidgetItem
{
public:
    using QWidgetItem::QWidgetItem;
    void setGeometry(const QRect& rect) override { m_rect = rect; }
    QRect geometry() const override { return m_rect; }

private:
    QRect m_rect;
};

struct Flow
{
    Flow(int hSpacing, int vSpacing, QMargins margins = {})
    {
        layout = new FlowLayout(&container, hSpacing, vSpacing);
        layout->setContentsMargins(margins);
    }
    QVector<QRect> Places() const
    {
        QVector<QRect> places;
        for (int i = 0; i < layout->count(); ++i)
            places << layout->itemAt(i)->geometry();
        return places;
    }

    QWidget container;
    FlowLayout* layout = nullptr;
};

QVector<QRect> Row(QPoint start, QSize size, int count, int gap)
{
    QVector<QRect> row;
    for (int i = 0; i < count; ++i)
        row << QRect(start + QPoint(i * (size.width() + gap), 0), size);
    return row;
}

} // namespace

class TestFlowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreFilledAndTheBlockCentred_data();
    void rowsAreFilledAndTheBlockCentred();
    void heightForWidthAndMinimumSize_data();
    void heightForWidthAndMinimumSize();
    void spacingFallsBack_data();
    void spacingFallsBack();
    void itemsWithoutAWidgetGetNoSpacing();
    void ownsItsItemsUntilTaken();
};

void TestFlowLayout::rowsAreFilledAndTheBlockCentred_data()
{
    QTest::addColumn<QSize>("item");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("maxPerRow");
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QMargins>("margins");
    QTest::addColumn<QVector<QRect>>("expected");

    const QRect area(0, 0, 300, 200);
    // One short row in the middle: 170 wide and 20 high in 300 x 200.
    QTest::newRow("one short row") << QSize(50, 20) << 3 << -1 << area << QMargins()
                                   << Row({65, 90}, {50, 20}, 3, 10);
    // 3 of 80 fit in 300 with gaps of 10; the fourth would end at 349.
    QTest::newRow("wraps at the right edge") << QSize(80, 30) << 6 << -1 << area << QMargins()
                                             << Row({20, 68}, {80, 30}, 3, 10) + Row({20, 103}, {80, 30}, 3, 10);
    // Rows of 3, 3, 3 and 1, the block 80 x 55; the last row keeps to the block's left.
    QTest::newRow("three per row") << QSize(20, 10) << 10 << 3 << area << QMargins()
                                   << Row({110, 73}, {20, 10}, 3, 10) + Row({110, 88}, {20, 10}, 3, 10)
                                          + Row({110, 103}, {20, 10}, 3, 10) + Row({110, 118}, {20, 10}, 1, 10);
    // Zero per row breaks before the first item only: one gap above the single row.
    QTest::newRow("zero per row") << QSize(50, 20) << 3 << 0 << area << QMargins()
                                  << Row({65, 93}, {50, 20}, 3, 10);
    // Taller than the rectangle: the overflow is split, the half truncated toward zero.
    QTest::newRow("overflowing height") << QSize(50, 20) << 3 << -1 << QRect(0, 0, 300, 10) << QMargins()
                                        << Row({65, -4}, {50, 20}, 3, 10);
    QTest::newRow("margins") << QSize(50, 20) << 3 << -1 << QRect(10, 20, 300, 200) << QMargins(7, 11, 13, 17)
                             << Row({10 + 7 + 55, 20 + 11 + 76}, {50, 20}, 3, 10);
    // Wider than the room: narrowed to it, as tall as its height for that width.
    QTest::newRow("narrowed") << QSize(400, 30) << 1 << -1 << area << QMargins() << QVector<QRect>{QRect(0, 80, 300, 40)};
}

void TestFlowLayout::rowsAreFilledAndTheBlockCentred()
{
    QFETCH(QSize, item);
    QFETCH(int, count);
    QFETCH(int, maxPerRow);
    QFETCH(QRect, rect);
    QFETCH(QMargins, margins);
    QFETCH(QVector<QRect>, expected);

    Flow flow(10, 5, margins);
    for (int i = 0; i < count; ++i)
        flow.layout->addItem(new FixedItem(new Box(item, &flow.container)));
    flow.layout->setGeometry(rect);
    flow.layout->SetMaxWidgetsPerRow(maxPerRow); // lays out again at once
    QCOMPARE(flow.Places(), expected);
}

void TestFlowLayout::heightForWidthAndMinimumSize_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QSize>("minimum");

    // Margins 7, 11, 13, 17 around every case.
    QTest::newRow("empty") << 0 << 300 << 11 + 17 << QSize(-1 + 7 + 13, -1 + 11 + 17);
    QTest::newRow("one row") << 2 << 300 << 11 + 30 + 17 << QSize(80 + 20, 30 + 28);
    // 280 inside the margins: three of 80 with gaps of 10 per row.
    QTest::newRow("two rows") << 6 << 300 << 11 + 30 + 5 + 30 + 17 << QSize(100, 58);
    QTest::newRow("one per row") << 3 << 100 << 11 + 3 * 30 + 2 * 5 + 17 << QSize(100, 58);
}

void TestFlowLayout::heightForWidthAndMinimumSize()
{
    QFETCH(int, count);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QSize, minimum);

    Flow flow(10, 5, QMargins(7, 11, 13, 17));
    for (int i = 0; i < count; ++i) {
        auto* box = new Box(QSize(80, 30));
        box->setMinimumSize(80, 30);
        flow.layout->addWidget(box);
    }
    QVERIFY(flow.layout->hasHeightForWidth());
    QCOMPARE(flow.layout->heightForWidth(width), height);
    QCOMPARE(flow.layout->minimumSize(), minimum);
    QCOMPARE(flow.layout->sizeHint(), minimum);
    QCOMPARE(flow.layout->expandingDirections(), Qt::Orientations());
}

void TestFlowLayout::spacingFallsBack_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("styleMetric");
    QTest::addColumn<bool>("nested");
    QTest::addColumn<int>("gap");

    QTest::newRow("explicit 0") << 0 << 7 << false << 0;
    QTest::newRow("-2: the parent's metric") << -2 << 7 << false << 7;
    QTest::newRow("-1 all the way: push-button spacing") << -1 << -1 << false << 3;
    QTest::newRow("in a parent layout: its spacing") << -1 << 7 << true << 4;
}

void TestFlowLayout::spacingFallsBack()
{
    QFETCH(int, stored);
    QFETCH(int, styleMetric);
    QFETCH(bool, nested);
    QFETCH(int, gap);

    SpacingStyle style(styleMetric);
    QWidget container;
    container.setStyle(&style);
    auto* flow = new FlowLayout(nested ? nullptr : &container, stored, stored);
    if (nested) {
        auto* outer = new QVBoxLayout(&container);
        outer->setSpacing(4);
        outer->addLayout(flow);
    }
    flow->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 2; ++i) {
        auto* box = new Box(QSize(40, 10), &container);
        box->setStyle(&style);
        flow->addWidget(box);
    }
    const auto place = [flow](int index) { return flow->itemAt(index)->widget()->geometry(); };
    flow->setGeometry(QRect(0, 0, 200, 100));
    QCOMPARE(place(1).left() - place(0).right() - 1, gap);
    flow->setGeometry(QRect(0, 0, 60, 100)); // one per row now
    QCOMPARE(place(1).top() - place(0).bottom() - 1, gap == 3 ? 2 : gap);
    container.setStyle(nullptr);
}

// Without a widget there is no style to ask for a spacing: logged, and 0 is used.
void TestFlowLayout::itemsWithoutAWidgetGetNoSpacing()
{
    const LogCapture::Mark mark;
    FlowLayout bare(nullptr, -1, -1);
    bare.setContentsMargins(0, 0, 0, 0);
    bare.addItem(new QSpacerItem(10, 10));
    bare.addItem(new QSpacerItem(10, 10));
    QCOMPARE(bare.heightForWidth(15), 20);
    QCOMPARE(mark.Since().size(), 1);
    QCOMPARE(mark.Since().first().level, 4);
}

void TestFlowLayout::ownsItsItemsUntilTaken()
{
    QPointer<QWidget> kept;
    QPointer<QWidget> owned;
    auto* flow = new FlowLayout;
    flow->addWidget(kept = new QWidget);
    flow->addWidget(owned = new QWidget);
    QCOMPARE(flow->count(), 2);
    QVERIFY(!flow->itemAt(2) && !flow->itemAt(-1) && !flow->takeAt(5));
    std::unique_ptr<QLayoutItem> taken(flow->takeAt(0));
    QCOMPARE(taken->widget(), kept.data());
    QCOMPARE(flow->count(), 1);
    delete flow; // deletes its items, not their widgets
    QVERIFY(kept && owned);
    delete kept;
    delete owned;
}

QTEST_MAIN(TestFlowLayout)
#include "tst_flow_layout.moc"
