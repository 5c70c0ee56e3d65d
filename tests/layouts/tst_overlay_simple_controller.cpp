#include <qt_halvo/layouts/overlay_simple_controller.h>

#include <QtTest/QtTest>

using OrvantaQT::OverlaySimpleController;

namespace {

// A window with a 200 x 100 container at (20, 30), an anchor inside it at (10, 15), and
// an overlay beside them.
struct Scene
{
    Scene()
    {
        window.resize(400, 300);
        container = new QWidget(&window);
        container->setGeometry(20, 30, 200, 100);
        anchor = new QWidget(container);
        anchor->setGeometry(10, 15, 50, 20);
        overlay = new QWidget(&window);
        window.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&window); }

    QWidget window;
    QWidget* container = nullptr;
    QWidget* anchor = nullptr;
    QWidget* overlay = nullptr;
};

} // namespace

class TestOverlaySimpleController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOverlayAtTheAnchor_data();
    void keepsTheOverlayAtTheAnchor();
    void aHiddenOverlayStaysWhereItIs();
};

void TestOverlaySimpleController::keepsTheOverlayAtTheAnchor_data()
{
    QTest::addColumn<bool>("height");
    QTest::addColumn<bool>("withAnchor");
    QTest::addColumn<QRect>("expected");
    QTest::addColumn<QRect>("afterResize"); // the container grown to 260 x 140

    // Correction (3, 4).
    QTest::newRow("at the anchor") << false << true << QRect(20 + 10 + 3, 30 + 15 + 4, 200, 100)
                                   << QRect(33, 49, 260, 140);
    QTest::newRow("at the container") << false << false << QRect(23, 34, 200, 100) << QRect(23, 34, 260, 140);
    // From the container's top down to the anchor, less the correction.
    QTest::newRow("down to the anchor") << true << true << QRect(23, 34, 200, 15 - 4) << QRect(23, 34, 260, 11);
}

void TestOverlaySimpleController::keepsTheOverlayAtTheAnchor()
{
    QFETCH(bool, height);
    QFETCH(bool, withAnchor);
    QFETCH(QRect, expected);
    QFETCH(QRect, afterResize);
    Scene scene;
    QVERIFY(scene.Exposed());
    QWidget* anchor = withAnchor ? scene.anchor : nullptr;
    if (height)
        OrvantaQT::SetOverlayWithAnchorHeight(scene.container, scene.overlay, QStringLiteral("Band"), anchor, {3, 4});
    else
        OrvantaQT::SetOverlayWithAnchor(scene.container, scene.overlay, QStringLiteral("Band"), anchor, {3, 4});
    QCOMPARE(scene.overlay->objectName(), QStringLiteral("Band"));
    scene.container->update();
    QTRY_COMPARE(scene.overlay->geometry(), expected);
    scene.container->resize(260, 140);
    QTRY_COMPARE(scene.overlay->geometry(), afterResize);
}

void TestOverlaySimpleController::aHiddenOverlayStaysWhereItIs()
{
    Scene scene;
    QVERIFY(scene.Exposed());
    scene.overlay->setGeometry(1, 2, 3, 4);
    scene.overlay->hide();
    auto* controller = new OverlaySimpleController(scene.container, scene.overlay, scene.container, nullptr, {},
                                                   OverlaySimpleController::AnchorPosition);
    QCOMPARE(scene.overlay->size(), QSize(200, 100)); // sized to the container at once
    scene.container->resize(250, 120);
    QTest::qWait(50);
    QCOMPARE(scene.overlay->pos(), QPoint(1, 2));
    scene.overlay->show();
    controller->SetPositionCorrection({5, 5});
    QCOMPARE(scene.overlay->geometry(), QRect(25, 35, 250, 120));
}

QTEST_MAIN(TestOverlaySimpleController)
#include "tst_overlay_simple_controller.moc"
