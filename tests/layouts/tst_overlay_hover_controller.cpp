#include <qt_halvo/layouts/overlay_hover_controller.h>

#include "test_support.h"

using OrvantaQT::OverlayHoverController;

class TestOverlayHoverController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hoverShowsTheOverlayUntilItEnds_data()
    {
        QTest::addColumn<unsigned>("effects");
        QTest::addColumn<bool>("disable"); // the picture while hovered; else the mouse leaves
        QTest::newRow("show") << 4u << false;
        QTest::newRow("fade and blur") << 7u << false;
        QTest::newRow("fade and blur, disabled") << 7u << true;
    }
    void hoverShowsTheOverlayUntilItEnds()
    {
        QFETCH(unsigned, effects);
        QFETCH(bool, disable);
        QWidget window;
        window.resize(400, 300);
        auto* picture = new QWidget(&window);
        picture->setGeometry(20, 20, 200, 150);
        picture->setAttribute(Qt::WA_Hover);
        auto* overlay = new QWidget(&window);
        new OverlayHoverController(picture, picture, overlay, nullptr, &window, effects);
        const auto blurred = [picture] { return picture->graphicsEffect()->isEnabled(); };
        QCursor::setPos(1200, 1000); // away from the window: hovering comes from the moves below
        QVERIFY(TestSupport::ShowAndWait(&window));
        QTest::mouseMove(picture, picture->rect().center());
        QTRY_COMPARE(picture->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(overlay->isVisible(), bool(effects & 4));
        QCOMPARE(blurred(), bool(effects & 1));
        QCOMPARE(window.childAt(picture->geometry().center()), picture); // the overlay lets the mouse through
        if (effects & 2) // faded in to 0.8, then the fade is switched off
            QTRY_VERIFY(!overlay->graphicsEffect()->isEnabled()
                        && static_cast<QGraphicsOpacityEffect*>(overlay->graphicsEffect())->opacity() == 0.8);
        if (disable) { // ends it at once, without fading
            picture->setEnabled(false);
            QVERIFY(!overlay->isVisible() && !blurred());
        } else {
            QTest::mouseMove(&window, QPoint(350, 250));
            QTRY_VERIFY(!overlay->isVisible() && !blurred());
        }
        QCOMPARE(picture->cursor().shape(), Qt::ArrowCursor);
    }
};

QTEST_MAIN(TestOverlayHoverController)
#include "tst_overlay_hover_controller.moc"
