#include <qt_halvo/layouts/universal_layout.h>

#include "test_support.h"

using OrvantaQT::UniversalLayout;

// A widget of a given size hint and minimum, Preferred both ways; with hfw, 2400 px² of
// height for its width.
class Box : public QWidget
{
public:
    Box(QWidget* parent, QSize hint, QSize minimum, bool hfw) : QWidget(parent), m_hint(hint), m_minimum(minimum), m_hfw(hfw) {}
    QSize sizeHint() const override { return m_hint; }
    QSize minimumSizeHint() const override { return m_minimum; }
    bool hasHeightForWidth() const override { return m_hfw; }
    int heightForWidth(int width) const override { return m_hfw ? 2400 / width : -1; }

private:
    QSize m_hint, m_minimum;
    bool m_hfw;
};

// An item without a widget that takes room and gaps, as a nested layout does.
class Block : public QSpacerItem
{
public:
    Block() : QSpacerItem(50, 10) {}
    bool isEmpty() const override { return false; }
};

using Call = std::function<void(UniversalLayout*)>;
Q_DECLARE_METATYPE(Call)

// Items as "60x20" and words, comma-separated: wide / tall (expand across / down), right /
// bottom (aligned), min70 / max100 (a minimum / maximum width), hfw, hidden, spacer.
// Margins 2 3 4 5: with gaps of 10, the three of kThree need 206 in a row.
static const char* const kThree = "60x20, 80x30, 40x10";

static UniversalLayout* MakeLayout(QWidget* parent, const char* items, int breakpoint = 0)
{
    auto* layout = new UniversalLayout(parent, 10, 5);
    layout->setContentsMargins(2, 3, 4, 5);
    for (const QString& spec : QString::fromLatin1(items).split(", ")) {
        const QStringList words = spec.split(' ');
        const QStringList size = words.first().split('x');
        const QSize hint(size.at(0).toInt(), size.at(1).toInt());
        if (words.contains("spacer")) {
            layout->addItem(new QSpacerItem(hint.width(), hint.height()));
            continue;
        }
        const auto number = [&words](const char* prefix) {
            for (const QString& word : words) {
                if (word.startsWith(prefix))
                    return word.mid(3).toInt();
            }
            return -1;
        };
        auto* box = new Box(parent, hint, QSize(std::max(number("min"), 0), 0), words.contains("hfw"));
        if (number("max") >= 0)
            box->setMaximumWidth(number("max"));
        box->setSizePolicy(words.contains("wide") ? QSizePolicy::Expanding : QSizePolicy::Preferred,
                           words.contains("tall") ? QSizePolicy::Expanding : QSizePolicy::Preferred);
        box->setVisible(!words.contains("hidden"));
        layout->addWidget(box);
        layout->setAlignment(box, words.contains("right") ? Qt::AlignRight : words.contains("bottom") ? Qt::AlignBottom : Qt::Alignment());
    }
    layout->SetBreakpoint(breakpoint);
    return layout;
}

// Where the three go in (10, 20) width x 100 (or from another origin), as a row or a column.
static QVector<QRect> Three(QChar orientation, int width, QPoint origin = QPoint(10, 20))
{
    QVector<QRect> places = {{12, 23, width - 6, 20}, {12, 48, width - 6, 30}, {12, 83, width - 6, 10}};
    if (orientation == 'R')
        places = {{12, 23, 60, 30}, {82, 23, 80, 30}, {172, 23, 40, 30}};
    for (QRect& place : places)
        place.translate(origin - QPoint(10, 20));
    return places;
}

static QVector<QRect> Geometries(const QLayout& layout)
{
    QVector<QRect> geometries;
    for (int i = 0; i < layout.count(); ++i)
        geometries << layout.itemAt(i)->geometry();
    return geometries;
}

static QChar Letter(const UniversalLayout& layout)
{
    return layout.CurrentOrientation() == Qt::Horizontal ? 'R' : 'C';
}

class TestUniversalLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void flipsAtTheBreakpointAndBackPastTheHysteresis_data()
    {
        QTest::addColumn<int>("breakpoint"); // 0 for the 206 the row needs
        QTest::addColumn<int>("hysteresis"); // -1 for the default
        QTest::addColumn<QVector<int>>("widths"); // one after the other
        QTest::addColumn<QString>("orientations"); // after each: Row or Column
        QTest::newRow("down to the row's width") << 0 << -1 << QVector<int>{300, 207, 206} << "RRR";
        QTest::newRow("a pixel short") << 0 << -1 << QVector<int>{300, 206, 205} << "RRC";
        QTest::newRow("up, short of the hysteresis") << 0 << -1 << QVector<int>{205, 206, 221} << "CCC";
        QTest::newRow("up to 206 + 16") << 0 << -1 << QVector<int>{205, 221, 222} << "CCR";
        QTest::newRow("a row again goes at once") << 0 << -1 << QVector<int>{100, 400, 221, 205} << "CRRC";
        QTest::newRow("no hysteresis") << 0 << 0 << QVector<int>{205, 206, 205} << "CRC";
        QTest::newRow("hysteresis of 4") << 0 << 4 << QVector<int>{100, 209, 210} << "CCR";
        QTest::newRow("a breakpoint of its own") << 250 << -1 << QVector<int>{300, 250, 249, 265, 266} << "RRCCR";
    }
    void flipsAtTheBreakpointAndBackPastTheHysteresis()
    {
        QFETCH(int, breakpoint);
        QFETCH(int, hysteresis);
        QFETCH(QVector<int>, widths);
        QFETCH(QString, orientations);
        QWidget container;
        UniversalLayout* layout = MakeLayout(&container, kThree, breakpoint);
        QCOMPARE(layout->RowWidth(), 206);
        if (hysteresis >= 0)
            layout->SetHysteresis(hysteresis);
        for (int i = 0; i < widths.size(); ++i) {
            layout->setGeometry(QRect(10, 20, widths.at(i), 100));
            const QByteArray at = "at " + QByteArray::number(widths.at(i)) + " px";
            QVERIFY2(Letter(*layout) == orientations.at(i), at);
            QVERIFY2(Geometries(*layout) == Three(orientations.at(i), widths.at(i)), at);
            QCOMPARE(layout->heightForWidth(widths.at(i)), orientations.at(i) == 'R' ? 38 : 78);
        }
    }

    void heightForWidthLooksAheadWithoutFlipping_data()
    {
        QTest::addColumn<int>("width"); // laid out
        QTest::addColumn<int>("asked");
        QTest::addColumn<int>("height");
        QTest::newRow("a row, asked at its width") << 300 << 206 << 38;
        QTest::newRow("a row, asked a pixel short") << 300 << 205 << 78;
        QTest::newRow("a column, asked inside the hysteresis") << 205 << 221 << 78;
        QTest::newRow("a column, asked past it") << 205 << 222 << 38;
    }
    void heightForWidthLooksAheadWithoutFlipping()
    {
        QFETCH(int, width);
        QFETCH(int, asked);
        QFETCH(int, height);
        QWidget container;
        UniversalLayout* layout = MakeLayout(&container, kThree);
        layout->setGeometry(QRect(10, 20, width, 100));
        const QChar orientation = Letter(*layout);
        QCOMPARE(layout->heightForWidth(asked), height);
        QCOMPARE(Letter(*layout), orientation);
        QCOMPARE(Geometries(*layout), Three(orientation, width));
        QVERIFY(layout->hasHeightForWidth());
    }

    void itemsShareTheRoom_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::addColumn<int>("breakpoint");
        QTest::addColumn<int>("width"); // of (10, 20) width x 100
        QTest::addColumn<bool>("rightToLeft");
        QTest::addColumn<QVector<QRect>>("places"); // an empty one: left where it was
        QTest::addColumn<int>("height"); // for the width
        QTest::newRow("more width to the one that expands") << QByteArray("60x20, 80x30 wide, 40x10") << 0 << 300 << false
            << QVector<QRect>{{12, 23, 60, 30}, {82, 23, 174, 30}, {266, 23, 40, 30}} << 38;
        QTest::newRow("one that expands up to its maximum, the rest to the other") << QByteArray("60x20 wide max100, 80x30, 40x10 wide") << 0 << 300 << false
            << QVector<QRect>{{12, 23, 100, 30}, {122, 23, 80, 30}, {212, 23, 94, 30}} << 38;
        QTest::newRow("two that expand, the odd pixel to the first") << QByteArray("60x20 wide, 80x30, 40x10 wide") << 0 << 301 << false
            << QVector<QRect>{{12, 23, 108, 30}, {130, 23, 80, 30}, {220, 23, 87, 30}} << 38;
        QTest::newRow("more height to the one that expands, in a column") << QByteArray("60x20, 80x30 tall, 40x10") << 0 << 150 << false
            << QVector<QRect>{{12, 23, 144, 20}, {12, 48, 144, 52}, {12, 105, 144, 10}} << 78;
        QTest::newRow("aligned to the bottom of the row") << QByteArray("60x20, 80x30, 40x10 bottom") << 0 << 300 << false
            << QVector<QRect>{{12, 23, 60, 30}, {82, 23, 80, 30}, {172, 43, 40, 10}} << 38;
        QTest::newRow("aligned right in a column") << QByteArray("60x20 right, 80x30, 40x10") << 0 << 150 << false
            << QVector<QRect>{{96, 23, 60, 20}, {12, 48, 144, 30}, {12, 83, 144, 10}} << 78;
        QTest::newRow("a row of the height for a width") << QByteArray("60x20 hfw, 80x30, 40x10") << 0 << 300 << false
            << QVector<QRect>{{12, 23, 60, 40}, {82, 23, 80, 40}, {172, 23, 40, 40}} << 48;
        QTest::newRow("a column of heights for the full width") << QByteArray("60x20 hfw, 80x30, 40x10") << 0 << 150 << false
            << QVector<QRect>{{12, 23, 144, 16}, {12, 44, 144, 30}, {12, 79, 144, 10}} << 74;
        QTest::newRow("a hidden widget takes no room") << QByteArray("60x20, 80x30 hidden, 40x10") << 0 << 116 << false
            << QVector<QRect>{{12, 23, 60, 20}, {}, {82, 23, 40, 20}} << 28;
        QTest::newRow("a spacer takes its size, without gaps") << QByteArray("60x20, 25x5 spacer, 40x10") << 0 << 300 << false
            << QVector<QRect>{{12, 23, 60, 20}, {72, 23, 25, 20}, {107, 23, 40, 20}} << 28;
        QTest::newRow("narrowed under a breakpoint of its own, to a minimum") << QByteArray("60x20, 80x30 min70, 40x10") << 150 << 150 << false
            << QVector<QRect>{{12, 23, 36, 30}, {58, 23, 70, 30}, {138, 23, 18, 30}} << 38;
        QTest::newRow("narrowed evenly, the odd pixels from the first") << QByteArray(kThree) << 180 << 180 << false
            << QVector<QRect>{{12, 23, 51, 30}, {73, 23, 71, 30}, {154, 23, 32, 30}} << 38;
        QTest::newRow("at their minimums, and over the edge") << QByteArray("60x20 min50, 80x30 min70, 40x10 min30") << 100 << 100 << false
            << QVector<QRect>{{12, 23, 50, 30}, {72, 23, 70, 30}, {152, 23, 30, 30}} << 38;
        QTest::newRow("right to left") << QByteArray(kThree) << 0 << 300 << true
            << QVector<QRect>{{246, 23, 60, 30}, {156, 23, 80, 30}, {106, 23, 40, 30}} << 38;
    }
    void itemsShareTheRoom()
    {
        QFETCH(QByteArray, items);
        QFETCH(int, breakpoint);
        QFETCH(int, width);
        QFETCH(bool, rightToLeft);
        QFETCH(QVector<QRect>, places);
        QFETCH(int, height);
        QWidget container;
        container.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        UniversalLayout* layout = MakeLayout(&container, items, breakpoint);
        const QVector<QRect> before = Geometries(*layout);
        layout->setGeometry(QRect(10, 20, width, 100));
        for (int i = 0; i < places.size(); ++i)
            QCOMPARE(layout->itemAt(i)->geometry(), places.at(i).isNull() ? before.at(i) : places.at(i));
        QCOMPARE(layout->heightForWidth(width), height);
    }

    void sizesFollowTheOrientation_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("breakpoint");
        QTest::addColumn<QSize>("minimum");
        QTest::addColumn<QSize>("hint");
        QTest::addColumn<Qt::Orientations>("expanding");
        const QByteArray minimums("60x20 min30, 80x30 min70, 40x10 min20");
        QTest::newRow("a row") << minimums << 300 << 0 << QSize(76, 8) << QSize(206, 38) << Qt::Orientations();
        QTest::newRow("a row under a wider breakpoint") << minimums << 300 << 250 << QSize(76, 8) << QSize(250, 38) << Qt::Orientations();
        QTest::newRow("a column") << minimums << 150 << 0 << QSize(76, 18) << QSize(86, 78) << Qt::Orientations();
        QTest::newRow("hidden ones count for nothing") << QByteArray("60x20 tall, 300x90 hidden wide min90, 40x10") << 300 << 0
            << QSize(6, 8) << QSize(116, 28) << Qt::Orientations(Qt::Vertical);
    }
    void sizesFollowTheOrientation()
    {
        QFETCH(QByteArray, items);
        QFETCH(int, width);
        QFETCH(int, breakpoint);
        QFETCH(QSize, minimum);
        QFETCH(QSize, hint);
        QFETCH(Qt::Orientations, expanding);
        QWidget container;
        UniversalLayout* layout = MakeLayout(&container, items, breakpoint);
        layout->setGeometry(QRect(0, 0, width, 100));
        QCOMPARE(layout->minimumSize(), minimum);
        QCOMPARE(layout->sizeHint(), hint);
        QCOMPARE(layout->expandingDirections(), expanding);
    }

    void takeAtGivesTheItemBack_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<int>("rowWidth"); // of those left
        QTest::newRow("before the first") << -1 << false << 206;
        QTest::newRow("the middle one") << 1 << true << 116;
        QTest::newRow("the last one") << 2 << true << 156;
        QTest::newRow("past the last") << 3 << false << 206;
    }
    void takeAtGivesTheItemBack()
    {
        QFETCH(int, index);
        QFETCH(bool, taken);
        QFETCH(int, rowWidth);
        QWidget container;
        UniversalLayout* layout = MakeLayout(&container, kThree);
        QLayoutItem* const at = layout->itemAt(index);
        std::unique_ptr<QLayoutItem> item(layout->takeAt(index));
        QCOMPARE(item.get(), at);
        QCOMPARE(bool(item), taken);
        QCOMPARE(layout->count(), taken ? 2 : 3);
        QCOMPARE(layout->RowWidth(), rowWidth);
    }

    void addingOrTakingLaysOutAgain_data()
    {
        QTest::addColumn<Call>("change");
        QTest::addColumn<QVector<QRect>>("places"); // of the items then, in a window 300 wide
        QTest::newRow("a spacer added") << Call([](UniversalLayout* layout) { layout->addItem(new QSpacerItem(30, 10)); })
            << QVector<QRect>{{2, 3, 60, 30}, {72, 3, 80, 30}, {162, 3, 40, 30}, {202, 3, 30, 30}};
        QTest::newRow("the first taken") << Call([](UniversalLayout* layout) { delete layout->takeAt(0); })
            << QVector<QRect>{{2, 3, 80, 30}, {92, 3, 40, 30}};
    }
    void addingOrTakingLaysOutAgain()
    {
        QFETCH(Call, change);
        QFETCH(QVector<QRect>, places);
        QWidget window;
        UniversalLayout* layout = MakeLayout(&window, kThree);
        window.resize(300, 150);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QTRY_COMPARE(Geometries(*layout), Three('R', 300, QPoint(0, 0)));
        change(layout);
        QTRY_COMPARE(Geometries(*layout), places);
    }

    void spacingFallsBack_data()
    {
        QTest::addColumn<QString>("parent"); // none, widget, or layout (a QVBoxLayout 9 apart)
        QTest::addColumn<QSize>("stored"); // across and down, as are the gaps
        QTest::addColumn<int>("both"); // given to setSpacing() when not -1
        QTest::addColumn<bool>("widgets");
        QTest::addColumn<QSize>("gaps");
        QTest::addColumn<int>("spacing");
        QTest::addColumn<QStringList>("logged");
        QTest::newRow("its own") << "widget" << QSize(6, 4) << -1 << true << QSize(6, 4) << -1 << QStringList();
        QTest::newRow("set at once") << "widget" << QSize(-1, 4) << 11 << true << QSize(11, 11) << 11 << QStringList();
        QTest::newRow("the parent layout's") << "layout" << QSize(-1, -1) << -1 << true << QSize(9, 9) << 9 << QStringList();
        QTest::newRow("the parent widget's metric") << "widget" << QSize(-1, -1) << -1 << false << QSize(7, 7) << 7 << QStringList();
        QTest::newRow("no parent: the items' style") << "none" << QSize(-1, 5) << -1 << true << QSize(3, 5) << -1 << QStringList();
        QTest::newRow("nothing to ask: logged once") << "none" << QSize(-1, -1) << -1 << false << QSize(0, 0) << -1
            << QStringList{"3 UniversalLayout: an item without a widget needs a spacing, and none is set; using 0"};
    }
    void spacingFallsBack()
    {
        QFETCH(QString, parent);
        QFETCH(QSize, stored);
        QFETCH(int, both);
        QFETCH(bool, widgets);
        QFETCH(QSize, gaps);
        QFETCH(int, spacing);
        QFETCH(QStringList, logged);
        TestSupport::SpacingStyle style;
        QWidget container;
        container.setStyle(&style);
        auto* layout = new UniversalLayout(parent == "widget" ? &container : nullptr, stored.width(), stored.height());
        std::unique_ptr<UniversalLayout> orphan(parent == "none" ? layout : nullptr);
        if (parent == "layout") {
            auto* outer = new QVBoxLayout(&container);
            outer->setSpacing(9);
            outer->addLayout(layout);
        }
        if (both != -1)
            layout->setSpacing(both);
        for (int i = 0; i < 2; ++i) {
            auto* box = new Box(&container, QSize(50, 10), QSize(), false);
            box->setStyle(&style);
            layout->addItem(widgets ? static_cast<QLayoutItem*>(new QWidgetItem(box)) : new Block);
        }
        const LogCapture::Mark mark;
        const auto place = [layout](int index) { return layout->itemAt(index)->geometry(); };
        layout->setGeometry(QRect(0, 0, 400, 100)); // a row
        const int across = place(1).left() - place(0).right() - 1;
        layout->setGeometry(QRect(0, 0, 60, 100)); // a column
        QCOMPARE(QSize(across, place(1).top() - place(0).bottom() - 1), gaps);
        QCOMPARE(layout->spacing(), spacing);
        QCOMPARE(mark.Texts(), logged);
    }

    void badInputIsLoggedAndSetAside_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<QStringList>("logged");
        QTest::addColumn<int>("breakpoint");
        QTest::addColumn<int>("hysteresis");
        QTest::addColumn<QString>("orientation"); // in 240 px, laid out again at once
        QTest::newRow("a null widget") << Call([](UniversalLayout* layout) { layout->addWidget(nullptr); })
            << QStringList{"3 UniversalLayout: a null widget cannot be added; ignored"} << 250 << 16 << "C";
        QTest::newRow("a null item") << Call([](UniversalLayout* layout) { layout->addItem(nullptr); })
            << QStringList{"3 UniversalLayout: a null item cannot be added; ignored"} << 250 << 16 << "C";
        QTest::newRow("a negative breakpoint: the row's width") << Call([](UniversalLayout* layout) { layout->SetBreakpoint(-5); })
            << QStringList{"3 UniversalLayout: a breakpoint of -5 px is negative; using 0, the width the row needs"} << 0 << 16 << "R";
        QTest::newRow("a breakpoint of 0: nothing to say") << Call([](UniversalLayout* layout) { layout->SetBreakpoint(0); })
            << QStringList() << 0 << 16 << "R";
        QTest::newRow("a negative hysteresis") << Call([](UniversalLayout* layout) { layout->SetHysteresis(-3); })
            << QStringList{"3 UniversalLayout: a hysteresis of -3 px is negative; using 0"} << 250 << 0 << "C";
        QTest::newRow("a hysteresis of 0: nothing to say") << Call([](UniversalLayout* layout) { layout->SetHysteresis(0); })
            << QStringList() << 250 << 0 << "C";
    }
    void badInputIsLoggedAndSetAside()
    {
        QFETCH(Call, call);
        QFETCH(QStringList, logged);
        QFETCH(int, breakpoint);
        QFETCH(int, hysteresis);
        QFETCH(QString, orientation);
        QWidget container;
        UniversalLayout* layout = MakeLayout(&container, kThree, 250);
        layout->setGeometry(QRect(10, 20, 240, 100)); // a column under the breakpoint
        const LogCapture::Mark mark;
        call(layout);
        QCOMPARE(mark.Texts(), logged);
        QCOMPARE(layout->count(), 3);
        QCOMPARE(layout->Breakpoint(), breakpoint);
        QCOMPARE(layout->Hysteresis(), hysteresis);
        QCOMPARE(Letter(*layout), orientation.at(0));
        QCOMPARE(Geometries(*layout), Three(orientation.at(0), 240));
    }

    void followsTheWindow_data()
    {
        QTest::addColumn<bool>("nested"); // the layout of a widget in the window's layout
        QTest::addColumn<int>("breakpoint");
        QTest::addColumn<QVector<int>>("widths");
        QTest::addColumn<QString>("orientations");
        QTest::addColumn<QStringList>("signalled");
        const QStringList there = {"OrientationChanged(Vertical)", "OrientationChanged(Horizontal)"};
        QTest::newRow("narrowed and widened again") << false << 0 << QVector<int>{300, 200, 215, 222, 205} << "RCCRC"
            << there + QStringList{"OrientationChanged(Vertical)"};
        QTest::newRow("a breakpoint of its own") << false << 240 << QVector<int>{300, 239, 250, 256} << "RCCR" << there;
        QTest::newRow("nested") << true << 0 << QVector<int>{300, 200, 222} << "RCR" << there;
    }
    void followsTheWindow()
    {
        QFETCH(bool, nested);
        QFETCH(int, breakpoint);
        QFETCH(QVector<int>, widths);
        QFETCH(QString, orientations);
        QFETCH(QStringList, signalled);
        QWidget window;
        QWidget* holder = &window;
        if (nested) {
            auto* outer = new QVBoxLayout(&window);
            outer->setContentsMargins(0, 0, 0, 0);
            outer->addWidget(holder = new QWidget);
        }
        UniversalLayout* layout = MakeLayout(holder, kThree, breakpoint);
        TestSupport::SignalLog log(layout, {"OrientationChanged(Qt::Orientation)"});
        QVERIFY(TestSupport::ShowAndWait(&window));
        for (int i = 0; i < widths.size(); ++i) {
            window.resize(widths.at(i), 150);
            QTRY_COMPARE(window.width(), widths.at(i));
            QTRY_COMPARE(Geometries(*layout), Three(orientations.at(i), widths.at(i), QPoint(0, 0)));
            QCOMPARE(Letter(*layout), orientations.at(i));
            // The window is told: a column's minimum height is the items' together.
            QTRY_COMPARE(window.minimumHeight(), orientations.at(i) == 'R' ? 8 : 18);
        }
        QCOMPARE(log.Take(), signalled);
    }
};

QTEST_MAIN(TestUniversalLayout)
#include "tst_universal_layout.moc"
