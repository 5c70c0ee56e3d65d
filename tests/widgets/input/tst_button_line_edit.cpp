#include <qt_halvo/widgets/input/button_line_edit.h>

#include "test_support.h"

class TestButtonLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // At the right end, its clicks reported in order, a pointing hand over it.
    void buttonAtTheRightEnd()
    {
        QWidget window;
        auto* edit = new OrvantaQT::ButtonLineEdit(&window);
        edit->setGeometry(10, 10, 250, 30);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QToolButton* button = edit->Button();
        QVERIFY(button->geometry().right() == 249 && button->focusPolicy() == Qt::ClickFocus);
        TestSupport::SignalLog log(edit, {"buttonPressed()", "buttonReleased()", "buttonClicked()"});
        QTest::mouseMove(button, button->rect().center());
        QTRY_VERIFY(QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::PointingHandCursor);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(log.Take(), TestSupport::Words("buttonPressed() buttonReleased() buttonClicked()"));
        QTest::mouseMove(&window, QPoint(5, 5));
        QTRY_VERIFY(!QGuiApplication::overrideCursor());
    }
};

QTEST_MAIN(TestButtonLineEdit)
#include "tst_button_line_edit.moc"
