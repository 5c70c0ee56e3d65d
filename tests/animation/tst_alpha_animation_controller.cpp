#include <qt_halvo/animation/alpha_animation_controller.h>

#include "test_support.h"

using OrvantaQT::AlphaAnimationController;

QString Sheet(int alpha) { return QStringLiteral("background-color: rgb(0,80,255,%1);").arg(alpha); }

class TestAlphaAnimationController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Qt 5.15 warns of the alpha in rgb() on every step of a fade, and applies it.
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void fadesTheParentBackgroundIn()
    {
        QWidget window;
        auto* target = new QWidget(&window);
        auto* controller = new AlphaAnimationController(target, QColor(0, 80, 255, 200));
        QCOMPARE(target->styleSheet(), Sheet(0));
        auto* fade = controller->findChild<QPropertyAnimation*>();
        for (int round = 0; round < 2; ++round) { // each time from 0
            controller->Start();
            QCOMPARE(target->styleSheet(), Sheet(0));
            // A quarter of the 300 ms in (as the fade's clock would put it), InOutQuad is at
            // an eighth; started again there, it goes on.
            fade->setCurrentTime(75);
            controller->Start();
            QCOMPARE(target->styleSheet(), Sheet(25));
            QTRY_COMPARE(target->styleSheet(), Sheet(200));
        }
        for (const int alpha : {0, 255, -1, 256}) { // only 0..255 is taken; the rest is logged and left
            controller->setAlpha(60);
            const LogCapture::Mark mark;
            controller->setAlpha(alpha);
            const bool taken = alpha == 0 || alpha == 255;
            QCOMPARE(mark.Since().size(), taken ? 0 : 1);
            QCOMPARE(target->styleSheet(), Sheet(taken ? alpha : 60));
        }
    }

    // Without a widget for a parent, or with an invalid colour, the alpha runs its course
    // but sets no style sheet. The missing parent and the invalid colour are logged.
    void withoutAWidgetOrAColourNoSheetIsSet()
    {
        QWidget target;
        QObject plain;
        const LogCapture::Mark mark;
        AlphaAnimationController* controllers[] = {new AlphaAnimationController(&target, QColor(1, 2, 3, 90)),
                                                   new AlphaAnimationController(nullptr, QColor(1, 2, 3, 90)),
                                                   new AlphaAnimationController(&target, QColor())};
        controllers[0]->setParent(&plain); // moved to a plain object
        controllers[1]->setParent(&plain);
        target.setStyleSheet("color: red;");
        for (AlphaAnimationController* controller : controllers) {
            controller->Start();
            controller->findChild<QPropertyAnimation*>()->setCurrentTime(300);
            QCOMPARE(controller->alpha(), controller == controllers[2] ? 0 : 90);
        }
        QCOMPARE(target.styleSheet(), "color: red;");
        QCOMPARE(mark.Since().size(), 2);
    }
};

QTEST_MAIN(TestAlphaAnimationController)
#include "tst_alpha_animation_controller.moc"
