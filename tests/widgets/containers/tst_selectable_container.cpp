#include <qt_halvo/widgets/containers/selectable_container.h>

#include "real_input.h"
#include "test_support.h"

#include <functional>

using OrvantaQT::SelectableContainer;

namespace {

// A card in a window, coloured by its state: a picture-like label, a caption and a button.
struct Host
{
    QWidget window;
    QLineEdit* out = new QLineEdit(&window);
    SelectableContainer* card = new SelectableContainer(&window);
    QLabel* picture = new QLabel(QStringLiteral("Picture"), card);
    QLabel* caption = new QLabel(QStringLiteral("Caption"), card);
    QPushButton* button = new QPushButton(QStringLiteral("More"), card);
    Host()
    {
        window.setGeometry(150, 150, 360, 240);
        card->setGeometry(20, 50, 300, 160);
        picture->setGeometry(10, 10, 120, 90);
        caption->setGeometry(10, 110, 120, 30);
        button->setGeometry(200, 110, 80, 30);
        const QVector<QPair<QWidget*, const char*>> names{
            {out, "out"}, {card, "card"}, {picture, "picture"}, {caption, "caption"}, {button, "button"}};
        for (const auto& name : names)
            name.first->setObjectName(QLatin1String(name.second));
        card->setStyleSheet(QStringLiteral("OrvantaQT--SelectableContainer { background: #0000ff; }"
                                           "OrvantaQT--SelectableContainer[hovered=\"true\"] { background: #00ff00; }"
                                           "OrvantaQT--SelectableContainer[selected=\"true\"] { background: #ff0000; }"));
    }
    QString Colour() const { return TestSupport::Render(card).pixelColor(150, 5).name(); }
    void Act(const QString& action)
    {
        auto* actions = QAccessible::queryAccessibleInterface(card)->actionInterface();
        actions->doAction(action == QLatin1String("press") ? actions->pressAction() : actions->toggleAction());
    }
};

using Action = std::function<void(Host&)>;

} // namespace

Q_DECLARE_METATYPE(Action)

class TestSelectableContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Hover comes from the real pointer: away from every window at the start.
    void init() { QCursor::setPos(0, 0); }

    void hoverAsAWhole_data()
    {
        QTest::addColumn<QString>("path"); // where the pointer goes, from outside
        QTest::newRow("the frame") << "card out";
        QTest::newRow("onto a child and back") << "card picture card out";
        QTest::newRow("child to child") << "picture caption button out";
        QTest::newRow("twice") << "card out caption out";
    }
    // Hovered while the pointer is over the frame or any of its children: the style
    // property, the sheet that tests it and one signal each way per visit. A Leave that
    // comes while the pointer is still over a child (a native one, a popup that closed)
    // keeps the hover; hiding ends it.
    void hoverAsAWhole()
    {
        QFETCH(QString, path);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QCOMPARE(host.Colour(), QStringLiteral("#0000ff"));
        TestSupport::SignalLog log(host.card, {"HoveredChanged(bool)"});
        bool before = false;
        for (const QString& place : path.split(QLatin1Char(' '))) {
            QWidget* target = host.window.findChild<QWidget*>(place);
            TestSupport::RealMouseMove(target->mapToGlobal(target == host.card ? QPoint(150, 5) : QPoint(5, 5)));
            const bool over = target != host.out;
            QCOMPARE(log.Take(), over == std::exchange(before, over) ? QStringList()
                                                                     : QStringList(over ? "HoveredChanged(true)" : "HoveredChanged(false)"));
            QCOMPARE(host.card->IsHovered(), over);
            QCOMPARE(host.card->property("hovered"), QVariant(over));
            QCOMPARE(host.Colour(), over ? QStringLiteral("#00ff00") : QStringLiteral("#0000ff"));
        }
        TestSupport::RealMouseMove(host.caption->mapToGlobal(QPoint(5, 5)));
        QVERIFY(host.card->IsHovered());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(host.card, &leave);
        QVERIFY(host.card->IsHovered());
        host.card->hide();
        QCOMPARE(host.card->property("hovered"), QVariant(false));
    }

    void clicks_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("deselectable");
        QTest::addColumn<Action>("click");
        QTest::addColumn<QString>("expected");
        const QVector<QPair<const char*, Action>> clicks{
            {"mouse on the frame", [](Host& h) { QTest::mouseClick(h.card, Qt::LeftButton, {}, QPoint(150, 5)); }},
            {"mouse on a label", [](Host& h) { QTest::mouseClick(h.caption, Qt::LeftButton, {}, QPoint(5, 5)); }},
            {"Space", [](Host& h) { QTest::keyClick(h.card, Qt::Key_Space); }},
            {"keypad Enter", [](Host& h) { QTest::keyClick(h.card, Qt::Key_Enter, Qt::KeypadModifier); }},
            {"Return", [](Host& h) { QTest::keyClick(h.card, Qt::Key_Return); }},
            {"accessible press", [](Host& h) { h.Act(QStringLiteral("press")); }},
        };
        for (const auto& click : clicks) {
            QTest::addRow("%s", click.first) << false << false << click.second << "SelectedChanged(true) Clicked()";
            QTest::addRow("%s, selected", click.first) << true << false << click.second << "Clicked()";
            QTest::addRow("%s, deselectable", click.first) << true << true << click.second << "SelectedChanged(false) Clicked()";
        }
        const Action toggle = [](Host& h) { h.Act(QStringLiteral("toggle")); };
        QTest::newRow("accessible toggle") << false << false << toggle << "SelectedChanged(true) Clicked()";
        QTest::newRow("accessible toggle, selected") << true << false << toggle << "";
        QTest::newRow("accessible toggle, deselectable") << true << true << toggle << "SelectedChanged(false) Clicked()";
        // No clicks.
        QTest::newRow("released outside") << false << false << Action([](Host& h) {
            QTest::mousePress(h.card, Qt::LeftButton, {}, QPoint(150, 5));
            QTest::mouseRelease(h.card, Qt::LeftButton, {}, QPoint(150, 200));
        }) << "";
        QTest::newRow("disabled on the way") << false << false << Action([](Host& h) {
            QTest::mousePress(h.card, Qt::LeftButton, {}, QPoint(150, 5));
            h.card->setEnabled(false);
            h.card->setEnabled(true);
            QTest::mouseRelease(h.card, Qt::LeftButton, {}, QPoint(150, 5));
        }) << "";
        QTest::newRow("right button") << false << false
                                      << Action([](Host& h) { QTest::mouseClick(h.card, Qt::RightButton, {}, {150, 5}); }) << "";
        QTest::newRow("its own button") << false << false
                                        << Action([](Host& h) { QTest::mouseClick(h.button, Qt::LeftButton); }) << "";
        QTest::newRow("Ctrl+Space") << false << false
                                    << Action([](Host& h) { QTest::keyClick(h.card, Qt::Key_Space, Qt::ControlModifier); }) << "";
        QTest::newRow("Space held") << false << false << Action([](Host& h) {
            QTest::keyPress(h.card, Qt::Key_Space);
            QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
            QCoreApplication::sendEvent(h.card, &repeat);
        }) << "SelectedChanged(true) Clicked()";
        QTest::newRow("disabled") << false << false << Action([](Host& h) {
            h.card->setEnabled(false);
            h.card->Click();
            h.Act(QStringLiteral("press"));
        }) << "";
    }
    // A click by mouse, keyboard, code or screen reader selects first and then reports the
    // click; a selected frame is deselected only when it is deselectable.
    void clicks()
    {
        QFETCH(bool, selected);
        QFETCH(bool, deselectable);
        QFETCH(Action, click);
        QFETCH(QString, expected);
        Host host;
        host.card->SetSelected(selected);
        host.card->SetDeselectable(deselectable);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        host.card->setFocus();
        TestSupport::SignalLog log(host.card, {"Clicked()", "SelectedChanged(bool)"});
        click(host);
        QCOMPARE(log.Take().join(QLatin1Char(' ')), expected);
        const bool after = expected.startsWith(QLatin1String("SelectedChanged")) != selected;
        QCOMPARE(host.card->IsSelected(), after);
        QCOMPARE(host.card->property("selected"), QVariant(after));
        QCOMPARE(host.Colour(), after ? QStringLiteral("#ff0000") : QStringLiteral("#0000ff"));
    }

    // Tab reaches it, and then shows its focus.
    void keyboardFocusShows()
    {
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QApplication::setActiveWindow(&host.window);
        host.out->setFocus();
        const QImage before = TestSupport::Render(host.card);
        QTest::keyClick(host.out, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), host.card);
        const QImage focused = TestSupport::Render(host.card);
        QVERIFY(!TestSupport::Changed(before, focused).isEmpty());
        // In the card's own colours: its frame, left of the children, follows its palette.
        QPalette palette = host.card->palette();
        palette.setColor(QPalette::Highlight, Qt::red);
        host.card->setPalette(palette);
        QVERIFY(!TestSupport::Changed(focused, TestSupport::Render(host.card), QRect(0, 0, 5, 160)).isEmpty());
    }

    // Screen readers see a focusable list item that can be selected, with the press and
    // toggle actions beside the focus one, named by what it shows unless named.
    void accessibility()
    {
        Host host;
        QAccessibleInterface* item = QAccessible::queryAccessibleInterface(host.card);
        QCOMPARE(item->role(), QAccessible::ListItem);
        QVERIFY(item->state().selectable && item->state().focusable && !item->state().selected);
        QCOMPARE(host.card->focusPolicy(), Qt::StrongFocus);
        host.card->SetSelected(true);
        QVERIFY(item->state().selected);
        QCOMPARE(item->text(QAccessible::Name), QStringLiteral("Picture, Caption, More"));
        host.card->setAccessibleName(QStringLiteral("Holiday photo"));
        QCOMPARE(item->text(QAccessible::Name), QStringLiteral("Holiday photo"));
        QAccessibleActionInterface* actions = item->actionInterface();
        QCOMPARE(actions->actionNames(), QStringList({actions->setFocusAction(), actions->pressAction(), actions->toggleAction()}));
        QCOMPARE(actions->keyBindingsForAction(actions->pressAction()), QStringList("Space"));
    }
};

QTEST_MAIN(TestSelectableContainer)
#include "tst_selectable_container.moc"
