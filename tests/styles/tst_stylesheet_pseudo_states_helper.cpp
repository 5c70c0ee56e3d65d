#include <qt_halvo/styles/stylesheet_pseudo_states_helper.h>

#include "log_capture.h"

#include <QtGui/QCursor>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

using OrvantaQT::StylesheetPseudoStatesHelper;

namespace {

QRgb PixelAt(QWidget& widget, QPoint point)
{
    return widget.grab().toImage().pixel(point) & 0xffffff;
}

} // namespace

class TestStylesheetPseudoStatesHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void propertiesAreSetWhenTheButtonIsPolished();
    void hoverFollowsThePointer();
    void selectedFollowsTheCheckedState();
    void fixHoverKeepsHoverOverTheButtonsOwnChildren_data();
    void fixHoverKeepsHoverOverTheButtonsOwnChildren();
    void theSheetReactsToTheProperties();
    void missingButtonIsReported();

private:
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

void TestStylesheetPseudoStatesHelper::propertiesAreSetWhenTheButtonIsPolished()
{
    new StylesheetPseudoStatesHelper(m_button, false);
    QVERIFY(!m_button->property("hovered").isValid());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QTRY_COMPARE(m_button->property("hovered"), QVariant(false));
    QCOMPARE(m_button->property("selected"), QVariant(false));
}

void TestStylesheetPseudoStatesHelper::hoverFollowsThePointer()
{
    new StylesheetPseudoStatesHelper(m_button, false);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QCursor::setPos(m_button->mapToGlobal(QPoint(10, 10)));
    QTRY_COMPARE(m_button->property("hovered"), QVariant(true));
    QCursor::setPos(m_window->mapToGlobal(QPoint(5, 5)));
    QTRY_COMPARE(m_button->property("hovered"), QVariant(false));
}

void TestStylesheetPseudoStatesHelper::selectedFollowsTheCheckedState()
{
    new StylesheetPseudoStatesHelper(m_button, false);
    m_button->setChecked(true);
    QCOMPARE(m_button->property("selected"), QVariant(true));
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(m_button->isChecked(), false);
    QCOMPARE(m_button->property("selected"), QVariant(false));
}

void TestStylesheetPseudoStatesHelper::fixHoverKeepsHoverOverTheButtonsOwnChildren_data()
{
    QTest::addColumn<bool>("fixHover");
    QTest::addColumn<bool>("overChild");
    QTest::addColumn<bool>("hoveredAfterLeave");
    QTest::newRow("fix, over a child") << true << true << true;
    QTest::newRow("fix, over the button") << true << false << true;
    QTest::newRow("no fix, over a child") << false << true << false;
}

void TestStylesheetPseudoStatesHelper::fixHoverKeepsHoverOverTheButtonsOwnChildren()
{
    QFETCH(bool, fixHover);
    QFETCH(bool, overChild);
    QFETCH(bool, hoveredAfterLeave);
    new StylesheetPseudoStatesHelper(m_button, fixHover);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    const QPoint target = overChild ? m_child->mapToGlobal(QPoint(5, 5)) : m_button->mapToGlobal(QPoint(10, 10));
    QCursor::setPos(target);
    QTRY_COMPARE(m_button->property("hovered"), QVariant(true));
    QTRY_VERIFY(QApplication::widgetAt(QCursor::pos()) == (overChild ? static_cast<QWidget*>(m_child) : m_button));

    // A Leave while the pointer is still over the button, as when a popup opens over it.
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_button, &leave);
    QCOMPARE(m_button->property("hovered"), QVariant(hoveredAfterLeave));
}

void TestStylesheetPseudoStatesHelper::theSheetReactsToTheProperties()
{
    auto* helper = new StylesheetPseudoStatesHelper(m_button, true);
    m_button->setStyleSheet(QStringLiteral("QPushButton { background: #0000ff; border: none; }"
                                           "QPushButton[hovered=\"true\"] { background: #00ff00; }"
                                           "QPushButton[selected=\"true\"] { background: #ff0000; }"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    const QPoint inside(10, 60);
    QCOMPARE(PixelAt(*m_button, inside), QRgb(0x0000ff));
    QCursor::setPos(m_button->mapToGlobal(inside));
    QTRY_COMPARE(PixelAt(*m_button, inside), QRgb(0x00ff00));
    m_button->setChecked(true);
    QCOMPARE(PixelAt(*m_button, inside), QRgb(0xff0000));

    // Without the fix, a Leave over the button's own child ends the hover.
    m_button->setChecked(false);
    helper->SetFixHover(false);
    QCursor::setPos(m_child->mapToGlobal(QPoint(5, 5)));
    QTRY_VERIFY(QApplication::widgetAt(QCursor::pos()) == m_child);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_button, &leave);
    QCOMPARE(PixelAt(*m_button, inside), QRgb(0x0000ff));
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
