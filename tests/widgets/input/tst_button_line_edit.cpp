#include <qt_halvo/widgets/input/button_line_edit.h>

#include <QtTest/QtTest>
#include <QtWidgets/QToolButton>

using OrvantaQT::ButtonLineEdit;

class TestButtonLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void buttonAtTheRightEnd();
};

// Leaving pops an override cursor whether or not entering pushed one: a disabled button
// pushes none, so it pops someone else's.
void TestButtonLineEdit::buttonAtTheRightEnd()
{
    QWidget window;
    window.resize(300, 100);
    auto* edit = new ButtonLineEdit(&window);
    edit->setGeometry(10, 10, 250, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QToolButton* button = edit->Button();
    QVERIFY(button->geometry().right() >= edit->width() - 2);
    QCOMPARE(button->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(edit->property("ButtonLineEdit").toBool(), true); // for style sheets
    QStringList seen;
    connect(edit, &ButtonLineEdit::buttonPressed, this, [&seen] { seen << QStringLiteral("pressed"); });
    connect(edit, &ButtonLineEdit::buttonReleased, this, [&seen] { seen << QStringLiteral("released"); });
    connect(edit, &ButtonLineEdit::buttonClicked, this, [&seen] { seen << QStringLiteral("clicked"); });
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(seen, (QStringList{"pressed", "released", "clicked"}));

    QTest::mouseMove(&window, QPoint(290, 90));
    QTest::mouseMove(button, button->rect().center());
    QTRY_VERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::PointingHandCursor);
    QTest::mouseMove(&window, QPoint(290, 90));
    QTRY_VERIFY(!QGuiApplication::overrideCursor());

    edit->setButtonEnabled(false);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(seen.size(), 3);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QTest::mouseMove(button, button->rect().center());
    QTest::qWait(100);
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QTest::mouseMove(&window, QPoint(290, 90));
    QTRY_VERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(TestButtonLineEdit)
#include "tst_button_line_edit.moc"
