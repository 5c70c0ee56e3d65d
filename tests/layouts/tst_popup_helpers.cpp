#include <qt_halvo/layouts/popup_frame_helper.h>
#include <qt_halvo/layouts/stick_helper.h>
#include <qt_halvo/layouts/stick_menu.h>
#include <qt_halvo/layouts/tool_tip_position_handler.h>

#include "test_support.h"

using namespace OrvantaQT;

namespace {

// QToolTip's window while it shows.
QWidget* ToolTipLabel()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->inherits("QTipLabel") && window->isVisible())
            return window;
    }
    return nullptr;
}

// A window with one button, the anchor, at (20, 20) in it; on the left screen by default.
struct Window
{
    QWidget window;
    QPointer<QPushButton> button = new QPushButton(QStringLiteral("Anchor"), &window);

    explicit Window(const QPoint& at = QPoint(100, 100))
    {
        window.setGeometry(QRect(at, QSize(300, 200)));
        button->setGeometry(20, 20, 100, 30);
        button->setToolTip(QStringLiteral("What the button does"));
    }
    bool Show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    QPoint BelowButton(int gap = 0) const { return button->mapToGlobal(QPoint(0, button->height() + gap)); }
};

bool SendToolTipEvent(QWidget* widget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), widget->mapToGlobal(QPoint(5, 5)));
    return QApplication::sendEvent(widget, &event);
}

// A popup frame of a fixed size.
QFrame* NewPopup(const QSize& size = QSize(200, 100))
{
    auto* popup = new QFrame;
    popup->setFixedSize(size);
    return popup;
}

} // namespace

class TestPopupHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // QToolTip's window goes below the widget instead of at the cursor, follows the window
    // and goes away on leave, a key press, or when the widget hides.
    void toolTipBesideTheWidget_data()
    {
        QTest::addColumn<QString>("ending");
        QTest::newRow("leave") << "leave";
        QTest::newRow("key press") << "key";
        QTest::newRow("widget hides") << "hide";
    }
    void toolTipBesideTheWidget()
    {
        QFETCH(QString, ending);
        Window window;
        auto* handler = new ToolTipPositionHandler(window.button);
        QVERIFY(window.Show());
        QVERIFY(SendToolTipEvent(window.button)); // taken, so Qt does not put it at the cursor
        QTRY_VERIFY(ToolTipLabel());
        QWidget* label = ToolTipLabel();
        QVERIFY(handler->IsToolTipVisible());
        QCOMPARE(label->pos(), window.BelowButton(4));

        window.window.move(400, 300);
        QTRY_COMPARE(label->pos(), window.BelowButton(4));
        window.button->move(40, 60);
        QCOMPARE(label->pos(), window.BelowButton(4));

        if (ending == QLatin1String("leave")) {
            QEvent leave(QEvent::Leave);
            QApplication::sendEvent(window.button, &leave);
        } else if (ending == QLatin1String("key")) {
            QTest::keyClick(&window.window, Qt::Key_A);
        } else {
            window.button->hide();
        }
        QTRY_VERIFY(!ToolTipLabel());
        QVERIFY(!handler->IsToolTipVisible());
    }

    // A host's widget as the tip, flipped above where the screen ends below, on the right
    // screen; the handler's settings move it at once.
    void hostTipFlipsAtTheScreenEdge()
    {
        const QRect right = QGuiApplication::screens().at(1)->availableGeometry();
        Window window(QPoint(right.x() + 100, right.bottom() - 150));
        auto* handler = new ToolTipPositionHandler(window.button);
        QLabel tip(QStringLiteral("A tip of the host's"));
        tip.setFixedSize(160, 120);
        handler->SetToolTipWidget(&tip);
        QCOMPARE(tip.windowType(), Qt::ToolTip);
        QVERIFY(window.Show());
        handler->ShowToolTip();
        QVERIFY(tip.isVisible());
        QCOMPARE(tip.geometry(), QRect(window.button->mapToGlobal(QPoint(0, -4 - 120)), QSize(160, 120)));

        handler->SetPlacement({{PopupSide::Right}, Qt::AlignLeft | Qt::AlignTop, 0});
        QCOMPARE(tip.pos(), window.button->mapToGlobal(QPoint(100, 0)));
        handler->HideToolTip();
        QVERIFY(!tip.isVisible());
        // A handler that goes away takes its tip along.
        handler->ShowToolTip();
        QVERIFY(tip.isVisible());
        delete handler;
        QVERIFY(!tip.isVisible());
    }

    void toolTipGuards()
    {
        const LogCapture::Mark mark;
        ToolTipPositionHandler lone(nullptr);
        lone.ShowToolTip();
        QVERIFY(!lone.IsToolTipVisible());
        Window window;
        auto* handler = new ToolTipPositionHandler(window.button);
        handler->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignLeft, -3});
        QCOMPARE(handler->GetPlacement().gap, 0);
        window.button->setToolTip(QString());
        QVERIFY(window.Show());
        handler->ShowToolTip(); // nothing to show
        QVERIFY(!handler->IsToolTipVisible());
        // The tip of the host's goes away first: the handler lets it go.
        auto* tip = new QLabel(QStringLiteral("tip"));
        handler->SetToolTipWidget(tip);
        handler->ShowToolTip();
        delete tip;
        handler->ShowToolTip();
        QCOMPARE(mark.Texts(), QStringList({"4 ToolTipPositionHandler: no widget to place tool tips at; it does nothing",
                                            "3 ToolTipPositionHandler: a gap of -3 is taken as 0"}));
    }

    // The popup opens below the anchor after AboutToShow() and closes in each of these ways
    // with one Closed(), the focus back on the anchor where it can take it.
    void popupFrameOpensAndCloses_data()
    {
        QTest::addColumn<QString>("closing");
        QTest::addColumn<bool>("focusBack");
        QTest::newRow("Escape") << "escape" << true;
        QTest::newRow("click outside") << "click" << true;
        QTest::newRow("the window moves") << "move" << true;
        QTest::newRow("the window hides") << "window hides" << false;
        QTest::newRow("the anchor hides") << "hide" << false;
        QTest::newRow("the anchor goes away") << "delete" << false;
        QTest::newRow("Close()") << "close" << true;
        QTest::newRow("a click on the anchor: closed, not opened again") << "anchor" << true;
    }
    void popupFrameOpensAndCloses()
    {
        QFETCH(QString, closing);
        QFETCH(bool, focusBack);
        Window window;
        auto* other = new QLineEdit(&window.window);
        other->setGeometry(20, 120, 100, 30);
        QFrame* popup = NewPopup();
        auto* helper = new PopupFrameHelper(popup, window.button);
        TestSupport::SignalLog log(helper, {"AboutToShow()", "Closed()"});
        connect(window.button, &QPushButton::clicked, helper, &PopupFrameHelper::Show);
        QVERIFY(window.Show());
        other->setFocus();

        connect(helper, &PopupFrameHelper::AboutToShow, this, [&] { log.Note(popup->isVisible() ? "visible" : "hidden"); });
        helper->Show();
        QVERIFY(helper->IsOpen());
        QVERIFY(QTest::qWaitForWindowExposed(popup));
        QCOMPARE(popup->geometry(), QRect(window.BelowButton(), QSize(200, 100)));
        QCOMPARE(log.Take(), TestSupport::Words("AboutToShow() hidden"));

        if (closing == QLatin1String("escape"))
            QTest::keyClick(popup, Qt::Key_Escape);
        else if (closing == QLatin1String("click"))
            QTest::mouseClick(window.window.windowHandle(), Qt::LeftButton, {}, QPoint(250, 180));
        else if (closing == QLatin1String("move"))
            window.window.move(150, 150);
        else if (closing == QLatin1String("window hides"))
            window.window.hide();
        else if (closing == QLatin1String("hide"))
            window.button->hide();
        else if (closing == QLatin1String("delete"))
            delete window.button;
        else if (closing == QLatin1String("anchor"))
            QTest::mouseClick(window.window.windowHandle(), Qt::LeftButton, {}, window.button->geometry().center());
        else
            helper->Close();
        QTRY_VERIFY(!popup->isVisible());
        QTest::qWait(20);
        QCOMPARE(log.Take(), TestSupport::Words("Closed()"));
        QVERIFY(!popup->isVisible());
        // Where Qt hands the closing press on, it would not reach the anchor.
        QCOMPARE(popup->testAttribute(Qt::WA_NoMouseReplay), closing == QLatin1String("anchor"));
        QVERIFY(!helper->IsOpen());
        if (focusBack)
            QTRY_COMPARE(QApplication::focusWidget(), window.button);
        else
            QVERIFY(!window.button || QApplication::focusWidget() != window.button);
        delete popup;
    }

    // On the right screen near its bottom the popup opens above; a popup asked to the right
    // of an anchor at the right edge opens at its left.
    void popupFrameFlips()
    {
        const QRect right = QGuiApplication::screens().at(1)->availableGeometry();
        Window window(QPoint(right.right() - 200, right.bottom() - 100));
        QFrame* popup = NewPopup(QSize(150, 120));
        auto* helper = new PopupFrameHelper(popup, window.button);
        QVERIFY(window.Show());
        helper->Show();
        QCOMPARE(popup->geometry(), QRect(window.button->mapToGlobal(QPoint(0, -120)), QSize(150, 120)));
        helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignRight, 0});
        QCOMPARE(popup->pos(), window.button->mapToGlobal(QPoint(100 - 150, -120)));
        helper->SetPlacement({{PopupSide::Right, PopupSide::Left}, Qt::AlignLeft, 2});
        // Its top edge would meet the button's, but the screen ends first.
        QCOMPARE(popup->pos(), QPoint(window.button->mapToGlobal(QPoint(-2 - 150, 0)).x(), right.bottom() + 1 - 120));
        helper->Close();
        delete popup;
    }

    void popupFrameGuards()
    {
        const LogCapture::Mark mark;
        PopupFrameHelper lone(nullptr, nullptr);
        lone.Show();
        QFrame* popup = NewPopup();
        auto* helper = new PopupFrameHelper(popup, nullptr);
        TestSupport::SignalLog log(helper, {"AboutToShow()", "Closed()"});
        helper->Show();
        QVERIFY(!popup->isVisible());
        helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignLeft, -1});
        helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignLeft, 0}); // not logged
        helper->Close(); // not open: nothing
        QCOMPARE(log.Take(), QStringList());
        QCOMPARE(mark.Texts(), QStringList({"4 PopupFrameHelper: no widget to make a popup of; it does nothing",
                                            "3 PopupFrameHelper: the popup has no visible anchor to open at; it stays closed",
                                            "3 PopupFrameHelper: a gap of -1 is taken as 0"}));
        // The popup goes away while open: the helper goes with it.
        Window window;
        QVERIFY(window.Show());
        helper->SetAnchor(window.button);
        helper->Show();
        QVERIFY(popup->isVisible());
        delete popup;
        window.window.move(200, 200);
        QTest::qWait(10);
    }

    // The panel sits below the anchor and follows it when the window moves, the anchor
    // moves in it, and the window changes screen; near the bottom it sits above.
    void stickHelperFollows()
    {
        Window window;
        QWidget panel(nullptr, Qt::Tool | Qt::FramelessWindowHint);
        panel.resize(150, 80);
        auto* helper = new StickHelper(&panel, window.button);
        QVERIFY(window.Show());
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        QCOMPARE(panel.pos(), window.BelowButton());

        window.window.move(300, 250);
        QCOMPARE(panel.pos(), window.BelowButton());
        window.button->move(60, 40);
        QCOMPARE(panel.pos(), window.BelowButton());

        const QRect right = QGuiApplication::screens().at(1)->availableGeometry();
        window.window.move(right.x() + 50, right.bottom() - 120);
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(0, -80)));
        QTRY_COMPARE(window.window.windowHandle()->screen(), QGuiApplication::screens().at(1));
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(0, -80)));

        helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignRight, 0});
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(100 - 150, -80)));
        panel.resize(120, 60);
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(100 - 120, -60)));
        helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignRight, 5});
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(100 - 120, -5 - 60)));
        helper->SetPlacement({{PopupSide::Right}, Qt::AlignRight, 5});
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(100 + 5, 0)));

        // The anchor moves to another window: the panel follows that one.
        Window other(QPoint(200, 600));
        QVERIFY(other.Show());
        window.button->setParent(&other.window);
        window.button->move(10, 10);
        window.button->show();
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(100 + 5, 0)));
        other.window.move(250, 650);
        QCOMPARE(panel.pos(), window.button->mapToGlobal(QPoint(100 + 5, 0)));
    }

    void stickHelperGuards()
    {
        const LogCapture::Mark mark;
        StickHelper lone(nullptr, nullptr);
        QCOMPARE(lone.PanelRect(), QRect());
        QWidget panel(nullptr, Qt::Tool);
        panel.setGeometry(10, 10, 50, 50);
        auto* helper = new StickHelper(&panel, nullptr);
        panel.show();
        QCOMPARE(panel.pos(), QPoint(10, 10)); // no anchor: left where it is
        {
            Window window;
            QVERIFY(window.Show());
            helper->SetAnchor(window.button);
            QCOMPARE(panel.pos(), window.BelowButton());
        }
        QCOMPARE(helper->GetAnchor(), nullptr);
        panel.resize(60, 60); // the anchor went away: nothing to follow
        helper->SetPlacement({OrvantaQT::DefaultPopupSides(), Qt::AlignLeft, -2});
        QCOMPARE(mark.Texts(), QStringList({"4 StickHelper: no panel to keep beside the anchor; it does nothing",
                                            "3 StickHelper: a gap of -2 is taken as 0"}));
    }

    // The button opens the menu below it; a press on the button while it is open only
    // closes it.
    void stickMenuOpensAtTheButton()
    {
        Window window;
        StickMenu menu(window.button);
        menu.addAction(QStringLiteral("First"));
        menu.addAction(QStringLiteral("Second"));
        QVERIFY(window.Show());
        QTest::mousePress(window.button, Qt::LeftButton);
        QTRY_VERIFY(menu.isVisible());
        QCOMPARE(menu.pos(), window.BelowButton());
        QTest::mouseRelease(window.button, Qt::LeftButton);

        QTest::mouseClick(window.window.windowHandle(), Qt::LeftButton, {}, window.button->mapTo(&window.window, QPoint(5, 5)));
        QTRY_VERIFY(!menu.isVisible());
        QTest::qWait(50);
        QVERIFY(!menu.isVisible());

        const LogCapture::Mark mark;
        StickMenu plain(nullptr);
        plain.PopupAtButton();
        QVERIFY(!plain.isVisible());
        QCOMPARE(mark.Texts(), QStringList({"4 StickMenu: no button to open the menu at; it is a plain menu"}));
    }

    // A screen that goes away while the popup is open: the popup is placed anew on the
    // screen that is left. Last, since it changes the screens.
    void popupFrameOutlivesItsScreen()
    {
        const QRect right = QGuiApplication::screens().at(1)->geometry();
        Window window(QPoint(right.x() + 100, 100));
        QFrame* popup = NewPopup();
        auto* helper = new PopupFrameHelper(popup, window.button);
        QVERIFY(window.Show());
        helper->Show();
        QVERIFY(right.contains(popup->geometry()));
        int removed = 0;
        connect(qApp, &QGuiApplication::screenRemoved, this, [&removed] { ++removed; });
        QCOMPARE(QProcess::execute(QStringLiteral("xrandr"), {QStringLiteral("--output"), QStringLiteral("DUMMY1"),
                                                               QStringLiteral("--off")}),
                 0);
        QTRY_COMPARE(removed, 1);
        const QRect left = QGuiApplication::screens().at(0)->availableGeometry();
        QTRY_VERIFY(left.contains(popup->geometry()));
        QVERIFY(helper->IsOpen());
        helper->Close();
        delete popup;
    }
};

QTEST_MAIN(TestPopupHelpers)
#include "tst_popup_helpers.moc"
