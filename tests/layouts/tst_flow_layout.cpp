#include <qt_halvo/layouts/flow_layout.h>

#include "test_support.h"

using OrvantaQT::FlowLayout;

Q_DECLARE_METATYPE(QMargins)

static QVector<QRect> Row(QPoint start, QSize size, int count)
{
    QVector<QRect> row;
    for (int i = 0; i < count; ++i)
        row << QRect(start + QPoint(i * (size.width() + 10), 0), size);
    return row;
}

class TestFlowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsFillAndTheBlockIsCentred_data()
    {
        QTest::addColumn<QSize>("item");
        QTest::addColumn<int>("maxPerRow");
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QVector<QRect>>("places"); // in (10, 20) 300 x 200, 10 apart across and 5 down
        const QSize box(80, 30);                    // three in a row of 300: a fourth would end at 349
        QTest::newRow("wraps") << box << -1 << QMargins() << Row({30, 88}, box, 3) + Row({30, 123}, box, 3);
        QTest::newRow("two per row") << box << 2 << QMargins() << Row({75, 70}, box, 2) + Row({75, 105}, box, 2) + Row({75, 140}, box, 2);
        QTest::newRow("margins") << QSize(50, 20) << -1 << QMargins(7, 11, 13, 17) << Row({72, 107}, {50, 20}, 3);
    }
    void rowsFillAndTheBlockIsCentred()
    {
        QFETCH(QSize, item);
        QFETCH(int, maxPerRow);
        QFETCH(QMargins, margins);
        QFETCH(QVector<QRect>, places);
        FlowLayout flow(nullptr, 10, 5);
        flow.setContentsMargins(margins);
        for (int i = 0; i < places.size(); ++i)
            flow.addItem(new QSpacerItem(item.width(), item.height()));
        flow.setGeometry(QRect(10, 20, 300, 200));
        flow.SetMaxWidgetsPerRow(maxPerRow); // lays out again at once
        QRect block;
        for (int i = 0; i < places.size(); ++i) {
            QCOMPARE(flow.itemAt(i)->geometry(), places.at(i));
            block |= places.at(i);
        }
        const QSize around(margins.left() + margins.right(), margins.top() + margins.bottom());
        QCOMPARE(flow.heightForWidth(300), block.height() + around.height());
        QCOMPARE(flow.minimumSize(), item + around);
        QVERIFY(!flow.itemAt(-1) && !flow.itemAt(places.size()) && !flow.takeAt(-1) && !flow.takeAt(places.size()));
    }

    void spacingFallsBack_data()
    {
        QTest::addColumn<bool>("parented"); // as a widget's layout; else on its own
        QTest::addColumn<QSize>("stored"); // across and down, as are the gaps
        QTest::addColumn<bool>("widgets");
        QTest::addColumn<QSize>("gaps");
        QTest::addColumn<int>("logged");
        QTest::newRow("set, items without widgets") << true << QSize(6, 6) << false << QSize(6, 6) << 0;
        QTest::newRow("the parent's metric") << true << QSize(-2, -2) << true << QSize(7, 7) << 0;
        QTest::newRow("no parent: the items' style across") << false << QSize(-1, 5) << true << QSize(3, 5) << 0;
        QTest::newRow("nothing to ask: reported once") << false << QSize(-1, -1) << false << QSize(0, 0) << 1;
    }
    void spacingFallsBack()
    {
        QFETCH(bool, parented);
        QFETCH(QSize, stored);
        QFETCH(bool, widgets);
        QFETCH(QSize, gaps);
        QFETCH(int, logged);
        TestSupport::SpacingStyle style;
        QWidget container;
        container.setStyle(&style);
        auto* flow = new FlowLayout(parented ? &container : nullptr, stored.width(), stored.height());
        std::unique_ptr<FlowLayout> orphan(parented ? nullptr : flow);
        for (int i = 0; i < 3; ++i) {
            auto* box = new QWidget(&container);
            box->setStyle(&style);
            box->setFixedSize(50, 10);
            flow->addItem(widgets ? static_cast<QLayoutItem*>(new QWidgetItem(box)) : new QSpacerItem(50, 10));
        }
        const LogCapture::Mark mark;
        flow->setGeometry(QRect(0, 0, 150, 100)); // two in the first row
        const auto place = [flow](int index) { return flow->itemAt(index)->geometry(); };
        QCOMPARE(QSize(place(1).left() - place(0).right(), place(2).top() - place(0).bottom()) - QSize(1, 1), gaps);
        QCOMPARE(mark.Since().size(), logged);
    }
};

QTEST_MAIN(TestFlowLayout)
#include "tst_flow_layout.moc"
