#include <qt_halvo/styles/stylesheet_pseudo_states_helper.h>

#include "log_capture.h"

#include <QtGui/QCursor>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

using OrvantaQT::StylesheetPseudoStatesHelper;

class TestStylesheetPseudoStatesHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void hoveredIsSetOnPolishAndFollowsThePointer();
    void fixHoverKeepsHoverOverTheButtonsOwnChildren_data();
    void fixHoverKeepsHoverOverTheButtonsOwnChildren();
    void theSheetFollowsHoverAndCheckedState();
    void missingButtonIsReported();

private:
    void Show();

    QWidget* m_window = nullptr;
    QPushButton* m_button = nullptr;
    QLabel* m_child = nullptr;
};

void TestStylesheetPseudoStatesHelper::init()
{
    QCursor::setPos(0, 0);
    m_window = new QWidget;
    m_window->setGeometry(100, 100, 300, 200);
    m_button = new QPushButton(m_window);
    m_button->setGeometry(50, 50, 160, 80);
    m_button->setCheckable(true);
    // A child widget over part of the button, as a caption or an icon would be.
    m_child = new QLabel(QStringLiteral("child"), m_button);
    m_child->setGeometry(100, 10, 50, 30);
}

void TestStylesheetPseudoStatesHelper::cleanup()
{
    delete m_window;
}

void TestStylesheetPseudoStatesHelper::Show()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void TestStylesheetPseudoStatesHelper::hoveredIsSetOnPolishAndFollowsThePointer()
{
    new StylesheetPseudoStatesHelper(m_button, false);
    QVERIFY(!m_button->property("hovered").isValid());
    Show();
    QTRY_COMPARE(m_button->property("hovered"), QVariant(false));
    QCOMPARE(m_button->property("selected"), QVariant(false));
    QCursor::setPos(m_button->mapToGlobal(QPoint(10, 10)));
    QTRY_COMPARE(m_button->property("hovered"), QVariant(true));
    QCursor::setPos(m_window->mapToGlobal(QPoint(5, 5)));
    QTRY_COMPARE(m_button->property("hovered"), QVariant(false));
}

void TestStylesheetPseudoStatesHelper::fixHoverKeepsHoverOverTheButtonsOwnChildren_data()
{
    QTest::addColumn<bool>("constructedWith");
    QTest::addColumn<bool>("fixHover"); // and so the hover after the Leave
    QTest::addColumn<bool>("overChild");
    QTest::newRow("fix, over a child") << true << true << true;
    QTest::newRow("fix, over the button") << true << true << false;
    QTest::newRow("no fix, over a child") << false << false << true;
    QTest::newRow("fix turned off, over a child") << true << false << true;
}

void TestStylesheetPseudoStatesHelper::fixHoverKeepsHoverOverTheButtonsOwnChildren()
{
    QFETCH(bool, constructedWith);
    QFETCH(bool, fixHover);
    QFETCH(bool, overChild);
    auto* helper = new StylesheetPseudoStatesHelper(m_button, constructedWith);
    if (fixHover != constructedWith)
        helper->SetFixHover(fixHover);
    Show();
    QWidget* const target = overChild ? static_cast<QWidget*>(m_child) : m_button;
    QCursor::setPos(target->mapToGlobal(QPoint(5, 5)));
    QTRY_COMPARE(m_button->property("hovered"), QVariant(true));
    QTRY_VERIFY(QApplication::widgetAt(QCursor::pos()) == target);

    // A Leave while the pointer is still over the button, as when a popup opens over it.
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_button, &leave);
    QCOMPARE(m_button->property("hovered"), QVariant(fixHover));
}

void TestStylesheetPseudoStatesHelper::theSheetFollowsHoverAndCheckedState()
{
    new StylesheetPseudoStatesHelper(m_button, true);
    m_button->setStyleSheet(QStringLiteral("QPushButton { background: #0000ff; border: none; }"
                                           "QPushButton[hovered=\"true\"] { background: #00ff00; }"
                                           "QPushButton[selected=\"true\"] { background: #ff0000; }"));
    Show();
    const QPoint inside(10, 60);
    const auto pixel = [&] { return m_button->grab().toImage().pixel(inside) & 0xffffff; };
    QCOMPARE(pixel(), QRgb(0x0000ff));
    QCursor::setPos(m_button->mapToGlobal(inside));
    QTRY_COMPARE(pixel(), QRgb(0x00ff00));
    m_button->setChecked(true);
    QCOMPARE(pixel(), QRgb(0xff0000));
    // Unchecked by a click: selected goes, hovered stays.
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(pixel(), QRgb(0x00ff00));
}

void TestStylesheetPseudoStatesHelper::missingButtonIsReported()
{
    const LogCapture::Mark mark;
    StylesheetPseudoStatesHelper helper(nullptr, false);
    QCOMPARE(mark.Since().size(), 1);
    QCOMPARE(mark.Since().first().level, 4);
}

QTEST_MAIN(TestStylesheetPseudoStatesHelper)
#include "tst_stylesheet_pseudo_states_helper.moc"
