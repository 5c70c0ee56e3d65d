// PlacePopup per call, on two screens side by side, next to what Qt's own menus and tool
// tips do to stay on screen: look up the screen at a point and clamp into its work area.

#include <qt_halvo/layouts/popup_placement.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtTest/QtTest>

using namespace OrvantaQT;

namespace {

const QVector<PopupScreen> Screens = {
    {QRect(0, 0, 1280, 1024), QRect(0, 0, 1280, 984)},
    {QRect(1280, 0, 1024, 768), QRect(1280, 24, 1024, 744)},
};

// Targets all over both screens (231 of them: divide a figure by 231 for one call): most fit below, some flip, some are shifted.
QVector<QRect> Targets()
{
    QVector<QRect> targets;
    for (int y = 0; y < 1000; y += 97)
        for (int x = 0; x < 2300; x += 113)
            targets << QRect(x, y, 80, 24);
    return targets;
}

} // namespace

class BenchPopupPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The pure function with the screens given: the cost of one placement.
    void placePopup()
    {
        const QVector<QRect> targets = Targets();
        const QSize size(220, 160);
        int sum = 0;
        QBENCHMARK {
            for (const QRect& target : targets)
                sum += PlacePopup(target, size, Screens).x();
        }
        QVERIFY(sum != 0);
    }
    // With the application's screens read on each call.
    void placePopupOnScreens()
    {
        const QVector<QRect> targets = Targets();
        const QSize size(220, 160);
        int sum = 0;
        QBENCHMARK {
            for (const QRect& target : targets)
                sum += PlacePopupOnScreens(target, size).x();
        }
        QVERIFY(sum != 0);
    }
    // Qt's way for a menu: the screen at the point, then a clamp into its work area.
    void qtScreenAtAndClamp()
    {
        const QVector<QRect> targets = Targets();
        const QSize size(220, 160);
        int sum = 0;
        QBENCHMARK {
            for (const QRect& target : targets) {
                const QPoint at = target.bottomLeft() + QPoint(0, 1);
                const QScreen* screen = QGuiApplication::screenAt(at);
                const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 984);
                QRect rect(at, size);
                if (rect.bottom() > area.bottom())
                    rect.moveBottom(target.top() - 1);
                rect.moveLeft(qBound(area.left(), rect.left(), area.right() - size.width() + 1));
                sum += rect.x();
            }
        }
        QVERIFY(sum != 0);
    }
};

QTEST_MAIN(BenchPopupPlacement)
#include "bench_popup_placement.moc"
