#include <qt_halvo/layouts/popup_placement.h>

#include "test_support.h"

using OrvantaQT::PopupScreen;
using OrvantaQT::PopupSide;
using OrvantaQT::PopupSides;

namespace {

// Two screens side by side as Qt reports them: the left one 1280x1024 with a task bar of
// 40 px along its bottom, the right one 1024x768 with a panel of 24 px along its top. A
// screen at scale 2 keeps its native top-left corner and has half the size.
QVector<PopupScreen> Screens(const QString& scales)
{
    const QStringList factors = scales.split(QLatin1Char(';'));
    const auto scaled = [](const QRect& rect, int factor) {
        return QRect(rect.topLeft(), rect.size() / factor);
    };
    const int left = factors.value(0).toInt();
    const int right = factors.value(1, factors.value(0)).toInt();
    return {
        {scaled(QRect(0, 0, 1280, 1024), left), scaled(QRect(0, 0, 1280, 984), left)},
        {scaled(QRect(1280, 0, 1024, 768), right),
         QRect(QPoint(1280, 24 / right), QSize(1024, 744) / right)},
    };
}

PopupSides Sides(const char* letters)
{
    PopupSides sides;
    for (const char* letter = letters; *letter; ++letter) {
        switch (*letter) {
        case 'B': sides << PopupSide::Below; break;
        case 'A': sides << PopupSide::Above; break;
        case 'R': sides << PopupSide::Right; break;
        case 'L': sides << PopupSide::Left; break;
        }
    }
    return sides;
}

} // namespace

class TestPopupPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void places_data()
    {
        QTest::addColumn<QString>("scales"); // of the two screens; empty for no screens
        QTest::addColumn<QRect>("target");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("sides");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("gap");
        QTest::addColumn<QRect>("expected");

        const int left = Qt::AlignLeft | Qt::AlignTop;
        const int right = Qt::AlignRight;
        const int centred = Qt::AlignCenter;
        const int bottom = Qt::AlignBottom;
        const QRect button(100, 100, 80, 20);
        const QSize popup(200, 150);

        QTest::newRow("below, left edges lined up") << "1" << button << popup << "BARL" << left << 0 << QRect(100, 120, 200, 150);
        QTest::newRow("below, a gap away") << "1" << button << popup << "BARL" << left << 4 << QRect(100, 124, 200, 150);
        QTest::newRow("below, right edges lined up") << "1" << QRect(300, 100, 80, 20) << popup << "B" << right << 0 << QRect(180, 120, 200, 150);
        QTest::newRow("below, centred") << "1" << QRect(300, 100, 80, 20) << popup << "B" << centred << 0 << QRect(240, 120, 200, 150);
        QTest::newRow("below, right-aligned, shifted in at the left") << "1" << button << popup << "B" << right << 0 << QRect(0, 120, 200, 150);
        QTest::newRow("above the task bar: flips") << "1" << QRect(100, 900, 80, 20) << popup << "BA" << left << 2 << QRect(100, 748, 200, 150);
        QTest::newRow("just fits below the task bar's edge") << "1" << QRect(100, 814, 80, 20) << popup << "BA" << left << 0 << QRect(100, 834, 200, 150);
        QTest::newRow("one pixel short below: flips") << "1" << QRect(100, 815, 80, 20) << popup << "BA" << left << 0 << QRect(100, 665, 200, 150);
        QTest::newRow("at the seam: shifted back, not onto the other screen") << "1" << QRect(1200, 100, 60, 20) << popup << "B" << left << 0 << QRect(1080, 120, 200, 150);
        QTest::newRow("above wanted, under the panel: below") << "1" << QRect(1400, 30, 80, 20) << popup << "AB" << left << 0 << QRect(1400, 50, 200, 150);
        QTest::newRow("right, top edges lined up") << "1" << button << popup << "R" << left << 0 << QRect(180, 100, 200, 150);
        QTest::newRow("right, centred, shifted down to the top") << "1" << button << popup << "R" << centred << 0 << QRect(180, 35, 200, 150);
        QTest::newRow("right, bottom edges lined up, shifted in") << "1" << button << popup << "R" << bottom << 0 << QRect(180, 0, 200, 150);
        QTest::newRow("right has no room: left") << "1" << QRect(1200, 500, 60, 20) << popup << "RL" << left << 0 << QRect(1000, 500, 200, 150);
        QTest::newRow("straddling: the screen with more of it") << "1" << QRect(1250, 100, 100, 20) << popup << "B" << left << 0 << QRect(1280, 120, 200, 150);
        QTest::newRow("straddling the other way") << "1" << QRect(1230, 100, 100, 20) << popup << "B" << left << 0 << QRect(1080, 120, 200, 150);
        QTest::newRow("no side has room: most room, shifted in") << "1" << QRect(0, 0, 1280, 984) << popup << "BARL" << left << 0 << QRect(0, 834, 200, 150);
        QTest::newRow("no side has room, above first") << "1" << QRect(0, 0, 1280, 984) << popup << "ARL" << left << 0 << QRect(0, 0, 200, 150);
        QTest::newRow("larger than the work area: cut to it") << "1" << button << QSize(2000, 2000) << "BARL" << left << 0 << QRect(0, 0, 1280, 984);
        QTest::newRow("above the screen: at its top") << "1" << QRect(100, -60, 80, 20) << popup << "B" << left << 0 << QRect(100, 0, 200, 150);
        QTest::newRow("left of the screen: at its left") << "1" << QRect(-300, 100, 80, 20) << popup << "R" << left << 0 << QRect(0, 100, 200, 150);
        QTest::newRow("a point") << "1" << QRect(500, 500, 0, 0) << QSize(100, 50) << "B" << left << 0 << QRect(500, 500, 100, 50);
        QTest::newRow("off every screen: the nearest") << "1" << QRect(3000, 100, 10, 10) << popup << "B" << left << 0 << QRect(2104, 110, 200, 150);
        QTest::newRow("below the smaller screen: the nearer is the left one") << "1" << QRect(1300, 900, 10, 10) << popup << "BA" << left << 0 << QRect(1080, 750, 200, 150);
        QTest::newRow("no sides: the usual order") << "1" << QRect(100, 900, 80, 20) << popup << "" << left << 0 << QRect(100, 750, 200, 150);
        QTest::newRow("a negative size is none") << "1" << button << QSize(-5, -5) << "B" << left << 0 << QRect(100, 120, 0, 0);
        QTest::newRow("a negative gap is none") << "1" << button << popup << "B" << left << -9 << QRect(100, 120, 200, 150);
        QTest::newRow("no screens: nothing to stay in") << "" << QRect(3000, 3000, 10, 10) << popup << "B" << right << 0 << QRect(2810, 3010, 200, 150);

        // The right screen at scale 2: 512x384 from (1280, 0), its panel 12 px.
        QTest::newRow("scale 2: flips above at the smaller bottom") << "1;2" << QRect(1700, 340, 40, 20) << QSize(200, 50) << "BA" << left << 0 << QRect(1592, 290, 200, 50);
        QTest::newRow("scale 2: under its own panel") << "1;2" << QRect(1300, 5, 40, 20) << QSize(100, 50) << "AB" << left << 0 << QRect(1300, 25, 100, 50);
        QTest::newRow("scale 2: larger than the screen") << "1;2" << QRect(1300, 100, 40, 20) << QSize(600, 600) << "B" << left << 0 << QRect(1280, 12, 512, 372);
        // Both at scale 2: the left screen ends at 640, the right begins at 1280.
        QTest::newRow("scale 2: not into the gap between the screens") << "2" << QRect(600, 100, 30, 20) << QSize(100, 50) << "RL" << left << 0 << QRect(500, 100, 100, 50);
        QTest::newRow("scale 2: in the gap, the nearer screen") << "2" << QRect(700, 100, 10, 10) << QSize(100, 50) << "B" << left << 0 << QRect(540, 110, 100, 50);
        QTest::newRow("scale 2: the left screen's task bar") << "2" << QRect(100, 470, 30, 20) << QSize(100, 50) << "BA" << left << 0 << QRect(100, 420, 100, 50);
    }
    void places()
    {
        QFETCH(QString, scales);
        QFETCH(QRect, target);
        QFETCH(QSize, size);
        QFETCH(QString, sides);
        QFETCH(int, alignment);
        QFETCH(int, gap);
        QFETCH(QRect, expected);
        const QVector<PopupScreen> screens = scales.isEmpty() ? QVector<PopupScreen>() : Screens(scales);
        const QRect placed = OrvantaQT::PlacePopup(target, size, screens, Sides(sides.toLatin1().constData()),
                                                   Qt::Alignment(alignment), gap);
        QCOMPARE(placed, expected);
        // Wherever it goes, it stays on one screen's work area.
        if (!screens.isEmpty() && !placed.isEmpty())
            QVERIFY(std::any_of(screens.begin(), screens.end(),
                                [&](const PopupScreen& screen) { return screen.availableGeometry.contains(placed); }));
    }

    // Whatever the target, a popup that fits some side never covers the target.
    void neverCoversATargetThatLeavesRoom()
    {
        const QVector<PopupScreen> screens = Screens(QStringLiteral("1"));
        const QSize size(180, 120);
        for (int x = -40; x < 2400; x += 37) {
            for (int y = -40; y < 1100; y += 29) {
                const QRect target(x, y, 60, 24);
                const QRect placed = OrvantaQT::PlacePopup(target, size, screens);
                QVERIFY2(!placed.intersects(target), qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
                QVERIFY2(screens[0].availableGeometry.contains(placed) || screens[1].availableGeometry.contains(placed),
                         qPrintable(QStringLiteral("%1,%2 -> %3,%4").arg(x).arg(y).arg(placed.x()).arg(placed.y())));
            }
        }
    }

    // The application's screens as the placement sees them: two side by side, and a popup
    // placed on them stays on the target's screen.
    void readsTheScreens()
    {
        const QVector<PopupScreen> screens = OrvantaQT::CurrentPopupScreens();
        QCOMPARE(screens.size(), 2);
        const QString scales = qEnvironmentVariable("QT_SCREEN_SCALE_FACTORS");
        const QVector<PopupScreen> expected = Screens(scales.isEmpty() ? QStringLiteral("1") : scales);
        QCOMPARE(screens[0].geometry, expected[0].geometry);
        QCOMPARE(screens[1].geometry, expected[1].geometry);
        const QRect placed = OrvantaQT::PlacePopupOnScreens(QRect(screens[1].geometry.right() - 10, 50, 10, 10), QSize(300, 200));
        QVERIFY(screens[1].availableGeometry.contains(placed));
        QCOMPARE(OrvantaQT::GlobalRect(nullptr), QRect());
    }

    // The same with the right screen at scale 2, in a process of its own.
    void readsScaledScreens()
    {
        QCOMPARE(TestSupport::RunTestFunctionInChild("readsTheScreens", {QStringLiteral("QT_SCREEN_SCALE_FACTORS=1;2")}),
                 QString());
    }

    // A widget's place on the right screen is where placement starts from.
    void globalRectOfAWidget()
    {
        QWidget window;
        window.setGeometry(1400, 200, 300, 200);
        auto* child = new QWidget(&window);
        child->setGeometry(20, 30, 40, 10);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QCOMPARE(OrvantaQT::GlobalRect(child), QRect(window.mapToGlobal(QPoint(20, 30)), QSize(40, 10)));
    }
};

QTEST_MAIN(TestPopupPlacement)
#include "tst_popup_placement.moc"
