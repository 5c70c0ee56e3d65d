#include <qt_halvo/widgets/input/button_line_edit.h>

#include "test_support.h"

class TestButtonLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Leaving the button pops an override cursor whether or not entering pushed one, as the
    // line edits here always have: a disabled button pushes none, so it pops someone else's.
    void buttonAtTheRightEnd()
    {
        QWidget window;
        window.resize(300, 100);
        auto* edit = new OrvantaQT::ButtonLineEdit(&window);
        edit->setGeometry(10, 10, 250, 30);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QToolButton* button = edit->Button();
        QCOMPARE(button->geometry().right(), edit->width() - 1);
        QCOMPARE(button->focusPolicy(), Qt::ClickFocus);
        QVERIFY(edit->property("ButtonLineEdit").toBool()); // for style sheets
        TestSupport::SignalLog log(edit, {"buttonPressed()", "buttonReleased()", "buttonClicked()"});
        QTest::mouseMove(button, button->rect().center());
        QTRY_VERIFY(QGuiApplication::overrideCursor());
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(log.Take(), TestSupport::Words("buttonPressed() buttonReleased() buttonClicked()"));
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::PointingHandCursor);
        QTest::mouseMove(&window, QPoint(290, 90));
        QTRY_VERIFY(!QGuiApplication::overrideCursor());

        edit->setButtonEnabled(false);
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        QTest::mouseMove(button, button->rect().center());
        QTRY_VERIFY(button->underMouse());
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QTest::mouseMove(&window, QPoint(290, 90));
        QTRY_VERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(log.Take(), QStringList());
    }
};

QTEST_MAIN(TestButtonLineEdit)
#include "tst_button_line_edit.moc"
