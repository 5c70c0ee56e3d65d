// FlowLayout passes over 1,000 and 10,000 fixed-size widget items, with explicit spacing
// and with the style's, next to a plain flow layout that does not centre (Qt's flow
// layout example, written out here) doing the same passes, and UniversalLayout beside
// them on the same items: as a column in the same rectangle, and as a row in one wide
// enough for it.

#include <qt_halvo/layouts/flow_layout.h>
#include <qt_halvo/layouts/universal_layout.h>

#include <QtTest/QtTest>
#include <QtWidgets/QStyle>

using OrvantaQT::FlowLayout;
using OrvantaQT::UniversalLayout;

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

enum class Kind { Flow, PlainFlow, UniversalColumn, UniversalRow };

} // namespace

Q_DECLARE_METATYPE(Kind)

class BenchFlowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pass_data();
    void pass();
};

void BenchFlowLayout::pass_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("items");
    QTest::addColumn<int>("spacing");
    QTest::addColumn<bool>("heightForWidth");
    const std::pair<Kind, const char*> kinds[] = {{Kind::Flow, "FlowLayout"},
                                                  {Kind::PlainFlow, "plain flow"},
                                                  {Kind::UniversalColumn, "UniversalLayout column"},
                                                  {Kind::UniversalRow, "UniversalLayout row"}};
    for (const auto& [kind, name] : kinds) {
        for (const int items : {1000, 10000}) {
            for (const int spacing : {6, -1}) {
                for (const bool hfw : {false, true}) {
                    QTest::addRow("%s, %d items, %s spacing, %s", name, items, spacing < 0 ? "style" : "explicit",
                                  hfw ? "heightForWidth" : "setGeometry")
                        << kind << items << spacing << hfw;
                }
            }
        }
    }
}

void BenchFlowLayout::pass()
{
    QFETCH(Kind, kind);
    QFETCH(int, items);
    QFETCH(int, spacing);
    QFETCH(bool, heightForWidth);

    QWidget container;
    QLayout* layout = nullptr;
    switch (kind) {
    case Kind::Flow:
        layout = new FlowLayout(&container, spacing, spacing);
        break;
    case Kind::PlainFlow:
        layout = new PlainFlowLayout(&container, spacing);
        break;
    case Kind::UniversalColumn:
    case Kind::UniversalRow:
        layout = new UniversalLayout(&container, spacing, spacing);
        break;
    }
    layout->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < items; ++i)
        layout->addWidget(new FixedWidget);
    // 50 px a 40 px item: room for gaps up to 10, as the check below makes sure.
    const QRect rect(0, 0, kind == Kind::UniversalRow ? items * 50 : 1200, 800);
    if (auto* universal = qobject_cast<UniversalLayout*>(layout)) {
        universal->setGeometry(rect);
        QCOMPARE(universal->CurrentOrientation(), kind == Kind::UniversalRow ? Qt::Horizontal : Qt::Vertical);
    }
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
