#include <qt_halvo/layouts/overlay_simple_controller.h>

#include "test_support.h"

class TestOverlaySimpleController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOverlayAtTheAnchor_data()
    {
        QTest::addColumn<bool>("down");    // from the container's top down to the anchor, less the correction (3, 4)
        QTest::addColumn<QRect>("grown");  // the anchor at (12, 16) in the container at (20, 30) 260 x 140
        QTest::addColumn<QRect>("placed"); // 200 x 100, the anchor at (10, 15)
        QTest::newRow("at the anchor") << false << QRect(35, 50, 260, 140) << QRect(33, 49, 200, 100);
        QTest::newRow("down to the anchor") << true << QRect(23, 34, 260, 12) << QRect(23, 34, 200, 11);
    }
    void keepsTheOverlayAtTheAnchor()
    {
        QFETCH(bool, down);
        QFETCH(QRect, grown);
        QFETCH(QRect, placed);
        QWidget window;
        window.resize(400, 300);
        auto* overlay = new QWidget(&window);
        auto* container = new QWidget(&window);
        auto* anchor = new QWidget(container);
        anchor->setGeometry(10, 15, 50, 20);
        QVERIFY(TestSupport::ShowAndWait(&window));
        (down ? OrvantaQT::SetOverlayWithAnchorHeight : OrvantaQT::SetOverlayWithAnchor)(
            container, overlay, QStringLiteral("Band"), anchor, QPoint(3, 4));
        anchor->move(12, 16);
        container->setGeometry(20, 30, 260, 140);
        QCOMPARE(overlay->geometry(), grown);
        QCOMPARE(window.childAt(grown.topLeft()), overlay); // over the container
        container->resize(200, 100);
        anchor->move(10, 15);
        QTRY_COMPARE(overlay->geometry(), placed);
    }
};

QTEST_MAIN(TestOverlaySimpleController)
#include "tst_overlay_simple_controller.moc"
