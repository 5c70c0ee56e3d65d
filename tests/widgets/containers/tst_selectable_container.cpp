#include <qt_halvo/widgets/containers/selectable_container.h>

#include "test_support.h"

#include <functional>

using OrvantaQT::SelectableContainer;

namespace {

const char kSheet[] = "OrvantaQT--SelectableContainer { background: #0000ff; }"
                      "OrvantaQT--SelectableContainer[hovered=\"true\"] { background: #00ff00; }"
                      "OrvantaQT--SelectableContainer[selected=\"true\"] { background: #ff0000; }";

// A card in a window: a picture-like label, a caption and a button of its own.
struct Host
{
    QWidget window;
    QLineEdit* before = new QLineEdit(&window);
    SelectableContainer* card = new SelectableContainer(&window);
    QLabel* picture = new QLabel(QStringLiteral("Picture"), card);
    QLabel* caption = new QLabel(QStringLiteral("Caption"), card);
    QPushButton* button = new QPushButton(QStringLiteral("More"), card);
    Host()
    {
        window.setGeometry(150, 150, 360, 240);
        before->setGeometry(10, 10, 100, 24);
        card->setGeometry(20, 50, 300, 160);
        picture->setGeometry(10, 10, 120, 90);
        caption->setGeometry(10, 110, 120, 30);
        button->setGeometry(200, 110, 80, 30);
        card->setStyleSheet(QLatin1String(kSheet));
    }
    QString Colour() const { return TestSupport::Render(card).pixelColor(150, 5).name(); }
};

// What the accessibility layer is told, as "StateChanged selected" lines.
QStringList g_updates;
void RecordUpdates(QAccessibleEvent* event)
{
    if (event->type() == QAccessible::StateChanged && qobject_cast<SelectableContainer*>(event->object())) {
        const QAccessible::State changed = static_cast<QAccessibleStateChangeEvent*>(event)->changedStates();
        g_updates << (changed.selected ? QStringLiteral("StateChanged selected") : QStringLiteral("StateChanged other"));
    }
}

using Action = std::function<void(Host&)>;

} // namespace

Q_DECLARE_METATYPE(Action)

class TestSelectableContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }
    // Hover comes from the real pointer: away from every window at the start.
    void init() { QCursor::setPos(0, 0); }

    void hoverAsAWhole_data()
    {
        QTest::addColumn<QString>("path"); // where the pointer goes, from outside
        QTest::newRow("the frame") << "card out";
        QTest::newRow("onto a child and back") << "card picture card out";
        QTest::newRow("child to child") << "picture caption button out";
        QTest::newRow("straight onto a child") << "button out";
        QTest::newRow("twice") << "card out caption out";
    }
    // Hovered while the pointer is over the frame or any of its children: the style
    // property, the sheet that tests it and one signal each way per visit.
    void hoverAsAWhole()
    {
        QFETCH(QString, path);
        QCursor::setPos(0, 0);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QTRY_COMPARE(host.card->property("hovered"), QVariant(false));
        QCOMPARE(host.Colour(), QStringLiteral("#0000ff"));
        TestSupport::SignalLog log(host.card, {"HoveredChanged(bool)"});
        const QMap<QString, QWidget*> places{{"card", host.card},
                                             {"picture", host.picture},
                                             {"caption", host.caption},
                                             {"button", host.button},
                                             {"out", host.before}};
        QStringList expected;
        bool inside = false;
        for (const QString& place : path.split(QLatin1Char(' '))) {
            QWidget* target = places.value(place);
            QCursor::setPos(target->mapToGlobal(target == host.card ? QPoint(150, 5) : QPoint(5, 5)));
            QTRY_COMPARE(QApplication::widgetAt(QCursor::pos()), target);
            const bool over = target != host.before;
            if (over != inside)
                expected << (over ? QStringLiteral("HoveredChanged(true)") : QStringLiteral("HoveredChanged(false)"));
            inside = over;
            QTRY_COMPARE(host.card->IsHovered(), over);
            QCOMPARE(host.card->property("hovered"), QVariant(over));
            QCOMPARE(host.Colour(), over ? QStringLiteral("#00ff00") : QStringLiteral("#0000ff"));
        }
        QCOMPARE(log.Take(), expected);
    }

    // A Leave that comes while the pointer is still over a child (as for a native child or
    // a popup that closed) keeps the hover; hiding ends it.
    void leaveOverChildAndHide()
    {
        QCursor::setPos(0, 0);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QCursor::setPos(host.caption->mapToGlobal(QPoint(5, 5)));
        QTRY_VERIFY(host.card->IsHovered());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(host.card, &leave);
        QVERIFY(host.card->IsHovered());
        host.card->hide();
        QVERIFY(!host.card->IsHovered());
        QCOMPARE(host.card->property("hovered"), QVariant(false));
    }

    void clicks_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("deselectable");
        QTest::addColumn<Action>("click");
        QTest::addColumn<QStringList>("expected");
        const QVector<QPair<const char*, Action>> clicks{
            {"mouse on the frame",
             [](Host& host) { QTest::mouseClick(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5)); }},
            {"mouse on a label",
             [](Host& host) { QTest::mouseClick(host.caption, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5)); }},
            {"Space", [](Host& host) { QTest::keyClick(host.card, Qt::Key_Space); }},
            {"Return", [](Host& host) { QTest::keyClick(host.card, Qt::Key_Return); }},
            {"keypad Enter", [](Host& host) { QTest::keyClick(host.card, Qt::Key_Enter, Qt::KeypadModifier); }},
            {"Click()", [](Host& host) { host.card->Click(); }},
            {"accessible press", [](Host& host) {
                 QAccessible::queryAccessibleInterface(host.card)->actionInterface()->doAction(
                     QAccessibleActionInterface::pressAction());
             }},
        };
        for (const auto& click : clicks) {
            QTest::addRow("%s, not selected", click.first)
                << false << false << click.second << TestSupport::Words("SelectedChanged(true) Clicked()");
            QTest::addRow("%s, selected", click.first) << true << false << click.second << QStringList("Clicked()");
            QTest::addRow("%s, selected, deselectable", click.first)
                << true << true << click.second << TestSupport::Words("SelectedChanged(false) Clicked()");
        }
        const Action toggle = [](Host& host) {
            QAccessible::queryAccessibleInterface(host.card)->actionInterface()->doAction(
                QAccessibleActionInterface::toggleAction());
        };
        QTest::newRow("accessible toggle, not selected") << false << false << toggle
                                                         << TestSupport::Words("SelectedChanged(true) Clicked()");
        QTest::newRow("accessible toggle, selected") << true << false << toggle << QStringList();
        QTest::newRow("accessible toggle, deselectable")
            << true << true << toggle << TestSupport::Words("SelectedChanged(false) Clicked()");
    }
    // A click by mouse, keyboard, code or screen reader selects first and then reports
    // the click; a selected frame is deselected only when it is deselectable.
    void clicks()
    {
        QFETCH(bool, selected);
        QFETCH(bool, deselectable);
        QFETCH(Action, click);
        QFETCH(QStringList, expected);
        Host host;
        host.card->SetSelected(selected);
        host.card->SetDeselectable(deselectable);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        host.card->setFocus();
        TestSupport::SignalLog log(host.card, {"Clicked()", "SelectedChanged(bool)"});
        click(host);
        QCOMPARE(log.Take(), expected);
        const bool after = expected.contains(QStringLiteral("SelectedChanged(true)"))
            || (selected && !expected.contains(QStringLiteral("SelectedChanged(false)")));
        QCOMPARE(host.card->IsSelected(), after);
        QCOMPARE(host.card->property("selected"), QVariant(after));
        QCOMPARE(host.Colour(), after ? QStringLiteral("#ff0000") : QStringLiteral("#0000ff"));
    }

    void notClicks_data()
    {
        QTest::addColumn<Action>("action");
        QTest::newRow("released outside") << Action([](Host& host) {
            QTest::mousePress(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
            QTest::mouseRelease(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 200));
        });
        QTest::newRow("released without a press") << Action([](Host& host) {
            QTest::mouseRelease(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
        });
        QTest::newRow("right button") << Action([](Host& host) {
            QTest::mouseClick(host.card, Qt::RightButton, Qt::NoModifier, QPoint(150, 5));
        });
        QTest::newRow("its own button") << Action([](Host& host) {
            QTest::mouseClick(host.button, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
        });
        QTest::newRow("press, hidden, shown, release") << Action([](Host& host) {
            QTest::mousePress(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
            host.card->hide();
            host.card->show();
            QTest::mouseRelease(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
        });
        QTest::newRow("press, disabled, enabled, release") << Action([](Host& host) {
            QTest::mousePress(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
            host.card->setEnabled(false);
            host.card->setEnabled(true);
            QTest::mouseRelease(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
        });
        QTest::newRow("Ctrl+Space") << Action([](Host& host) {
            QTest::keyClick(host.card, Qt::Key_Space, Qt::ControlModifier);
        });
        QTest::newRow("Space held (repeats)") << Action([](Host& host) {
            QTest::keyPress(host.card, Qt::Key_Space, Qt::NoModifier);
            QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
            QCoreApplication::sendEvent(host.card, &repeat);
            QTest::keyRelease(host.card, Qt::Key_Space, Qt::NoModifier);
        });
        QTest::newRow("Click() while disabled") << Action([](Host& host) {
            host.card->setEnabled(false);
            host.card->Click();
        });
        QTest::newRow("accessible press while disabled") << Action([](Host& host) {
            host.card->setEnabled(false);
            QAccessible::queryAccessibleInterface(host.card)->actionInterface()->doAction(
                QAccessibleActionInterface::pressAction());
        });
    }
    // No click: the frame stays as it was (the held Space clicks once, on its first press).
    void notClicks()
    {
        QFETCH(Action, action);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        host.card->setFocus();
        int buttonClicks = 0;
        connect(host.button, &QPushButton::clicked, [&buttonClicks] { ++buttonClicks; });
        TestSupport::SignalLog log(host.card, {"Clicked()", "SelectedChanged(bool)"});
        action(host);
        const bool held = QString::fromLatin1(QTest::currentDataTag()).startsWith(QLatin1String("Space held"));
        QCOMPARE(log.Take(), held ? TestSupport::Words("SelectedChanged(true) Clicked()") : QStringList());
        QCOMPARE(buttonClicks, QString::fromLatin1(QTest::currentDataTag()) == QLatin1String("its own button") ? 1 : 0);
    }

    // Tab reaches it, and a click gives it the focus.
    void focus()
    {
        Host host;
        QCOMPARE(host.card->focusPolicy(), Qt::StrongFocus);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        host.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&host.window));
        host.before->setFocus();
        QTest::keyClick(host.before, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), host.card);
        host.before->setFocus();
        QTest::mouseClick(host.card, Qt::LeftButton, Qt::NoModifier, QPoint(150, 5));
        QCOMPARE(QApplication::focusWidget(), host.card);
    }

    // Screen readers see a list item that can be selected, with its state, the press and
    // toggle actions beside the focus one, and a name from what it shows; they are told
    // when the selection changes.
    void accessibility()
    {
        if (!qEnvironmentVariableIsSet("QT_HALVO_TEST_ACCESSIBILITY_BUS")) {
            // Qt tells screen readers only while an accessibility bus is there: a private
            // message bus, published on the X server where Qt looks for one, stands in for
            // it in a child run of this function.
            QProcess bus;
            bus.setStandardErrorFile(QProcess::nullDevice());
            bus.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address=1"});
            QVERIFY(bus.waitForReadyRead(10000));
            const QString address = QString::fromLocal8Bit(bus.readLine()).trimmed();
            QCOMPARE(QProcess::execute(QStringLiteral("xprop"),
                                       {"-root", "-f", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS", address}), 0);
            const QString failure = TestSupport::RunTestFunctionInChild(
                "accessibility", {"DBUS_SESSION_BUS_ADDRESS=" + address, "QT_HALVO_TEST_ACCESSIBILITY_BUS=1"});
            QProcess::execute(QStringLiteral("xprop"), {"-root", "-remove", "AT_SPI_BUS"});
            bus.terminate();
            bus.waitForFinished();
            QCOMPARE(failure, QString());
            return;
        }
        Host host;
        const QAccessible::UpdateHandler previous = QAccessible::installUpdateHandler(RecordUpdates);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QTRY_VERIFY(QAccessible::isActive());
        g_updates.clear();
        QAccessibleInterface* item = QAccessible::queryAccessibleInterface(host.card);
        QVERIFY(item);
        QCOMPARE(item->role(), QAccessible::ListItem);
        QAccessible::State state = item->state();
        QVERIFY(state.selectable);
        QVERIFY(!state.selected);
        QVERIFY(state.focusable);
        QCOMPARE(item->text(QAccessible::Name), QStringLiteral("Picture, Caption, More"));
        host.card->setAccessibleName(QStringLiteral("Holiday photo"));
        QCOMPARE(item->text(QAccessible::Name), QStringLiteral("Holiday photo"));
        QAccessibleActionInterface* actions = item->actionInterface();
        QVERIFY(actions);
        QCOMPARE(actions->actionNames(),
                 QStringList({QAccessibleActionInterface::setFocusAction(), QAccessibleActionInterface::pressAction(),
                              QAccessibleActionInterface::toggleAction()}));
        QCOMPARE(actions->keyBindingsForAction(QAccessibleActionInterface::pressAction()), QStringList("Space"));
        actions->doAction(QAccessibleActionInterface::setFocusAction());
        QCOMPARE(host.window.focusWidget(), host.card);
        host.card->SetSelected(true);
        QVERIFY(item->state().selected);
        host.card->SetSelected(true);
        host.card->SetSelected(false);
        QVERIFY(!item->state().selected);
        QCOMPARE(g_updates, QStringList({"StateChanged selected", "StateChanged selected"}));
        QAccessible::installUpdateHandler(previous);
    }

    // Setting what it already is tells nobody; the style properties exist from the start.
    void unchangedStateIsQuiet()
    {
        SelectableContainer card;
        QCOMPARE(card.property("selected"), QVariant(false));
        QCOMPARE(card.property("hovered"), QVariant(false));
        TestSupport::SignalLog log(&card, {"SelectedChanged(bool)", "HoveredChanged(bool)"});
        card.SetSelected(false);
        card.SetSelected(true);
        card.SetSelected(true);
        QCOMPARE(log.Take(), QStringList("SelectedChanged(true)"));
        QVERIFY(!card.IsDeselectable());
        QVERIFY(card.setProperty("deselectable", true));
        QVERIFY(card.IsDeselectable());
    }
};

QTEST_MAIN(TestSelectableContainer)
#include "tst_selectable_container.moc"
