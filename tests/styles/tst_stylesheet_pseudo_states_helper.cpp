#include <qt_halvo/styles/stylesheet_pseudo_states_helper.h>

#include "test_support.h"

using OrvantaQT::StylesheetPseudoStatesHelper;

class TestStylesheetPseudoStatesHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsHoverAndCheckedState_data()
    {
        QTest::addColumn<bool>("constructedWith");
        QTest::addColumn<bool>("fixHover"); // and so the hover after the Leave
        QTest::addColumn<bool>("overChild");
        QTest::newRow("fix, over a child") << true << true << true;
        QTest::newRow("fix, over the button") << true << true << false;
        QTest::newRow("no fix, over a child") << false << false << true;
        QTest::newRow("fix turned off, over the button") << true << false << false;
    }
    // From the first polish on, the sheet follows the pointer and the checked state. With
    // fixHover, a Leave while the pointer is still over the button or one of its children
    // (as when a popup opens over it) keeps the hover.
    void followsHoverAndCheckedState()
    {
        QFETCH(bool, constructedWith);
        QFETCH(bool, fixHover);
        QFETCH(bool, overChild);
        QCursor::setPos(0, 0);
        QWidget window;
        window.setGeometry(100, 100, 300, 200);
        auto* button = new QPushButton(&window);
        button->setGeometry(50, 50, 160, 80);
        button->setCheckable(true);
        button->setStyleSheet(QStringLiteral("QPushButton { background: #0000ff; border: none; }"
                                             "QPushButton[hovered=\"true\"] { background: #00ff00; }"
                                             "QPushButton[selected=\"true\"] { background: #ff0000; }"));
        auto* child = new QLabel(QStringLiteral("child"), button); // as a caption or an icon would be
        child->setGeometry(100, 10, 50, 30);
        auto* helper = new StylesheetPseudoStatesHelper(button, constructedWith);
        if (fixHover != constructedWith)
            helper->SetFixHover(fixHover);
        QVERIFY(TestSupport::ShowAndWait(&window));
        const auto colour = [button] { return TestSupport::Render(button).pixelColor(5, 70).name(); };
        QTRY_COMPARE(button->property("hovered"), QVariant(false));
        QCOMPARE(colour(), QStringLiteral("#0000ff"));
        QWidget* const target = overChild ? static_cast<QWidget*>(child) : button;
        QCursor::setPos(target->mapToGlobal(QPoint(5, 5)));
        QTRY_COMPARE(colour(), QStringLiteral("#00ff00"));
        QTRY_VERIFY(QApplication::widgetAt(QCursor::pos()) == target);
        button->setChecked(true);
        QCOMPARE(colour(), QStringLiteral("#ff0000"));
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->mapFromGlobal(QCursor::pos())); // unchecks it
        QCOMPARE(colour(), QStringLiteral("#00ff00"));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(button, &leave);
        QCOMPARE(button->property("hovered"), QVariant(fixHover));
        QCursor::setPos(0, 0);
        QTRY_COMPARE(colour(), QStringLiteral("#0000ff"));
    }
    void missingButtonIsReported()
    {
        const LogCapture::Mark mark;
        StylesheetPseudoStatesHelper helper(nullptr, false);
        QCOMPARE(mark.Texts(), QStringList("4 StylesheetPseudoStatesHelper: no button"));
    }
};

QTEST_MAIN(TestStylesheetPseudoStatesHelper)
#include "tst_stylesheet_pseudo_states_helper.moc"
