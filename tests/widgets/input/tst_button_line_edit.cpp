#include <qt_halvo/widgets/input/button_line_edit.h>

#include <QtTest/QtTest>
#include <QtWidgets/QToolButton>

using OrvantaQT::ButtonLineEdit;

class TestButtonLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void buttonSignalsArePassedOn();
    void cursorOnTheButton();
};

void TestButtonLineEdit::init()
{
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
}

void TestButtonLineEdit::buttonSignalsArePassedOn()
{
    QWidget window;
    auto* edit = new ButtonLineEdit(&window);
    edit->setGeometry(10, 10, 250, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(edit->property("ButtonLineEdit").toBool(), true);
    QStringList seen;
    connect(edit, &ButtonLineEdit::buttonPressed, this, [&seen] { seen << QStringLiteral("pressed"); });
    connect(edit, &ButtonLineEdit::buttonReleased, this, [&seen] { seen << QStringLiteral("released"); });
    connect(edit, &ButtonLineEdit::buttonClicked, this, [&seen] { seen << QStringLiteral("clicked"); });
    QToolButton* button = edit->Button();
    QVERIFY(button->geometry().right() >= edit->width() - 2); // at the right end
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(seen, (QStringList{"pressed", "released", "clicked"}));
    QCOMPARE(button->focusPolicy(), Qt::ClickFocus);

    edit->setButtonEnabled(false);
    QVERIFY(!edit->buttonEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(seen.size(), 3);
}

// Leaving pops an override cursor whether or not entering pushed one: a disabled button
// pushes none, so it pops someone else's.
void TestButtonLineEdit::cursorOnTheButton()
{
    QWidget window;
    window.resize(300, 100);
    auto* edit = new ButtonLineEdit(&window);
    edit->setGeometry(10, 10, 250, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QToolButton* button = edit->Button();
    QTest::mouseMove(&window, QPoint(290, 90));

    QTest::mouseMove(button, button->rect().center());
    QTRY_VERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::PointingHandCursor);
    QTest::mouseMove(&window, QPoint(290, 90));
    QTRY_VERIFY(!QGuiApplication::overrideCursor());

    edit->setButtonEnabled(false);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QTest::mouseMove(button, button->rect().center());
    QTest::qWait(100);
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QTest::mouseMove(&window, QPoint(290, 90));
    QTRY_VERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(TestButtonLineEdit)
#include "tst_button_line_edit.moc"
