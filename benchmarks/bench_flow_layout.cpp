// FlowLayout passes over 1,000 and 10,000 fixed-size widget items, with explicit spacing
// and with the style's, next to a plain flow layout that does not centre (Qt's flow
// layout example, written out here) doing the same passes.

#include <qt_halvo/layouts/flow_layout.h>

#include <QtTest/QtTest>
#include <QtWidgets/QStyle>

using OrvantaQT::FlowLayout;

namespace {

class FixedWidget : public QWidget
{
public:
    QSize sizeHint() const override { return QSize(40, 20); }
};

// The classic flow layout: rows from the left, no maximum per row, no centring.
class PlainFlowLayout : public QLayout
{
public:
    PlainFlowLayout(QWidget* parent, int spacing) : QLayout(parent), m_spacing(spacing) {}
    ~PlainFlowLayout() override { qDeleteAll(m_items); }
    void addItem(QLayoutItem* item) override { m_items.append(item); }
    int count() const override { return m_items.size(); }
    QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem* takeAt(int index) override { return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr; }
    QSize sizeHint() const override { return QSize(); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return DoLayout(QRect(0, 0, width, 0), true); }
    void setGeometry(const QRect& rect) override
    {
        QLayout::setGeometry(rect);
        DoLayout(rect, false);
    }

private:
    int DoLayout(const QRect& rect, bool testOnly) const
    {
        int x = rect.x();
        int y = rect.y();
        int lineHeight = 0;
        for (QLayoutItem* item : m_items) {
            int space = m_spacing;
            if (space < 0)
                space = item->widget()->style()->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Horizontal);
            const QSize hint = item->sizeHint();
            int nextX = x + hint.width() + space;
            if (nextX - space > rect.right() && lineHeight > 0) {
                x = rect.x();
                y = y + lineHeight + space;
                nextX = x + hint.width() + space;
                lineHeight = 0;
            }
            if (!testOnly)
                item->setGeometry(QRect(QPoint(x, y), hint));
            x = nextX;
            lineHeight = qMax(lineHeight, hint.height());
        }
        return y + lineHeight - rect.y();
    }

    QList<QLayoutItem*> m_items;
    int m_spacing;
};

} // namespace

class BenchFlowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pass_data();
    void pass();
};

void BenchFlowLayout::pass_data()
{
    QTest::addColumn<bool>("ours");
    QTest::addColumn<int>("items");
    QTest::addColumn<int>("spacing");
    QTest::addColumn<bool>("heightForWidth");
    for (const bool ours : {true, false}) {
        for (const int items : {1000, 10000}) {
            for (const int spacing : {6, -1}) {
                for (const bool hfw : {false, true}) {
                    QTest::addRow("%s, %d items, %s spacing, %s", ours ? "FlowLayout" : "plain flow", items,
                                  spacing < 0 ? "style" : "explicit", hfw ? "heightForWidth" : "setGeometry")
                        << ours << items << spacing << hfw;
                }
            }
        }
    }
}

void BenchFlowLayout::pass()
{
    QFETCH(bool, ours);
    QFETCH(int, items);
    QFETCH(int, spacing);
    QFETCH(bool, heightForWidth);

    QWidget container;
    QLayout* layout = ours ? static_cast<QLayout*>(new FlowLayout(&container, spacing, spacing))
                           : new PlainFlowLayout(&container, spacing);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < items; ++i)
        layout->addWidget(new FixedWidget);
    const QRect rect(0, 0, 1200, 800);
    int height = 0;
    QBENCHMARK {
        if (heightForWidth)
            height += layout->heightForWidth(rect.width());
        else
            layout->setGeometry(rect);
    }
    Q_UNUSED(height)
}

QTEST_MAIN(BenchFlowLayout)
#include "bench_flow_layout.moc"
