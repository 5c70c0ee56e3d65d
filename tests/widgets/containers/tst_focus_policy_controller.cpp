#include <qt_halvo/widgets/containers/focus_policy_controller.h>

#include "test_support.h"

using OrvantaQT::FocusPolicyController;

namespace {

const QVector<Qt::FocusPolicy> kPolicies{Qt::TabFocus, Qt::ClickFocus, Qt::StrongFocus, Qt::WheelFocus, Qt::NoFocus};

QString Name(Qt::FocusPolicy policy)
{
    switch (policy) {
    case Qt::TabFocus:
        return QStringLiteral("Tab");
    case Qt::ClickFocus:
        return QStringLiteral("Click");
    case Qt::StrongFocus:
        return QStringLiteral("Strong");
    case Qt::WheelFocus:
        return QStringLiteral("Wheel");
    case Qt::NoFocus:
        return QStringLiteral("No");
    }
    return QStringLiteral("?");
}

// The policies of the widgets, by name, joined with spaces.
QString Policies(const QVector<QWidget*>& widgets)
{
    QStringList names;
    for (const QWidget* widget : widgets)
        names << Name(widget->focusPolicy());
    return names.join(QLatin1Char(' '));
}

QWidget* Make(QWidget* parent, Qt::FocusPolicy policy, const char* name)
{
    auto* widget = new QWidget(parent);
    widget->setObjectName(QLatin1String(name));
    widget->setFocusPolicy(policy);
    return widget;
}

// A window: an edit before the pane, the pane (root) with a column of two edits, one of
// them inside a panel, and an edit after it.
struct Host
{
    QWidget window;
    QVBoxLayout* column = new QVBoxLayout(&window);
    QLineEdit* before = new QLineEdit;
    QWidget* pane = new QWidget;
    QLineEdit* first = new QLineEdit(pane);
    QWidget* panel = new QWidget(pane);
    QLineEdit* second = new QLineEdit(panel);
    QLineEdit* after = new QLineEdit;
    Host()
    {
        auto* inside = new QVBoxLayout(pane);
        inside->addWidget(first);
        inside->addWidget(panel);
        (new QVBoxLayout(panel))->addWidget(second);
        for (QWidget* widget : {static_cast<QWidget*>(before), pane, static_cast<QWidget*>(after)})
            column->addWidget(widget);
        before->setObjectName(QStringLiteral("before"));
        first->setObjectName(QStringLiteral("first"));
        second->setObjectName(QStringLiteral("second"));
        after->setObjectName(QStringLiteral("after"));
    }
    bool Show()
    {
        if (!TestSupport::ShowAndWait(&window))
            return false;
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
};

QString FocusName(const QWidget* window)
{
    return window->focusWidget() ? window->focusWidget()->objectName() : QStringLiteral("nothing");
}

} // namespace

Q_DECLARE_METATYPE(Qt::FocusPolicy)

class TestFocusPolicyController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void policiesComeBackExactly_data()
    {
        QTest::addColumn<Qt::FocusPolicy>("policy");
        for (Qt::FocusPolicy policy : kPolicies)
            QTest::newRow(qPrintable(Name(policy))) << policy;
    }
    // Out: every widget of the subtree, root included, has no focus; back: each has its
    // own earlier policy, whichever it was and whatever its neighbours had. Outside the
    // subtree nothing changes.
    void policiesComeBackExactly()
    {
        QFETCH(Qt::FocusPolicy, policy);
        QWidget window;
        QWidget* outside = Make(&window, policy, "outside");
        QWidget* root = Make(&window, policy, "root");
        QVector<QWidget*> subtree{root};
        // Below the root, every policy once, starting after this row's, two levels deep.
        const int start = kPolicies.indexOf(policy);
        QWidget* parent = root;
        for (int i = 1; i <= kPolicies.size(); ++i) {
            QWidget* widget = Make(parent, kPolicies[(start + i) % kPolicies.size()], "below");
            subtree << widget;
            if (i == 2)
                parent = widget;
        }
        const QString before = Policies(subtree);
        FocusPolicyController controller(root);
        QVERIFY(controller.IsFocusable());
        controller.SetFocusable(false);
        QVERIFY(!controller.IsFocusable());
        QCOMPARE(Policies(subtree), QStringLiteral("No No No No No No"));
        QCOMPARE(outside->focusPolicy(), policy);
        controller.SetFocusable(false);
        QCOMPARE(Policies(subtree), QStringLiteral("No No No No No No"));
        controller.SetFocusable(true);
        QCOMPARE(Policies(subtree), before);
        controller.SetFocusable(true);
        QCOMPARE(Policies(subtree), before);
        controller.TakeOut();
        QVERIFY(controller.setProperty("focusable", true));
        QCOMPARE(Policies(subtree), before);
    }

    void nested_data()
    {
        QTest::addColumn<QString>("steps"); // "outer-" takes the outer subtree out, "inner+" gives back
        QTest::addColumn<QStringList>("expected"); // outer root, inner root, inner child after each step
        QTest::newRow("inner first, given back last")
            << "inner- outer- outer+ inner+"
            << QStringList({"Strong No No", "No No No", "Strong No No", "Strong Tab Click"});
        QTest::newRow("outer first, given back first")
            << "outer- inner- outer+ inner+"
            << QStringList({"No No No", "No No No", "Strong No No", "Strong Tab Click"});
        QTest::newRow("outer first, given back last")
            << "outer- inner- inner+ outer+"
            << QStringList({"No No No", "No No No", "No No No", "Strong Tab Click"});
        QTest::newRow("inner alone") << "inner- inner+" << QStringList({"Strong No No", "Strong Tab Click"});
    }
    // Controllers of a subtree and of a subtree inside it: a widget under both comes back
    // when the last of them gives it back, in any order.
    void nested()
    {
        QFETCH(QString, steps);
        QFETCH(QStringList, expected);
        QWidget window;
        QWidget* outer = Make(&window, Qt::StrongFocus, "outer");
        QWidget* inner = Make(outer, Qt::TabFocus, "inner");
        QWidget* child = Make(inner, Qt::ClickFocus, "child");
        FocusPolicyController outerController(outer);
        FocusPolicyController innerController(inner);
        QStringList seen;
        for (const QString& step : steps.split(QLatin1Char(' '))) {
            FocusPolicyController& controller = step.startsWith(QLatin1String("outer")) ? outerController : innerController;
            controller.SetFocusable(step.endsWith(QLatin1Char('+')));
            seen << Policies({outer, inner, child});
        }
        QCOMPARE(seen, expected);
    }

    void newcomers_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("made there, policy set after") << "made";
        QTest::newRow("made below a newcomer") << "deep";
        QTest::newRow("moved in") << "moved";
        QTest::newRow("made and shown at once") << "shown";
    }
    // Widgets that come into the subtree while it is out are taken out too (by the next
    // pass of the event loop, or as soon as they are shown), and come back with their own
    // policy, the one they had when they came.
    void newcomers()
    {
        QFETCH(QString, how);
        Host host;
        QVERIFY(host.Show());
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        QWidget* newcomer = nullptr;
        if (how == QLatin1String("made")) {
            newcomer = new QPushButton(QStringLiteral("New"), host.panel);
            newcomer->setFocusPolicy(Qt::ClickFocus);
        } else if (how == QLatin1String("deep")) {
            auto* box = new QWidget(host.panel);
            newcomer = new QPushButton(QStringLiteral("Deep"), box);
            newcomer->setFocusPolicy(Qt::ClickFocus);
        } else if (how == QLatin1String("moved")) {
            newcomer = new QPushButton(QStringLiteral("Moved"), &host.window);
            newcomer->setFocusPolicy(Qt::ClickFocus);
            QCoreApplication::processEvents();
            newcomer->setParent(host.panel);
        } else {
            newcomer = new QPushButton(QStringLiteral("Shown"), host.panel);
            newcomer->setFocusPolicy(Qt::ClickFocus);
            newcomer->show();
            QCOMPARE(newcomer->focusPolicy(), Qt::NoFocus); // before the event loop runs
        }
        QTRY_COMPARE(newcomer->focusPolicy(), Qt::NoFocus);
        controller.SetFocusable(true);
        QCOMPARE(newcomer->focusPolicy(), Qt::ClickFocus);
        QCOMPARE(Policies({host.pane, host.first, host.second}), QStringLiteral("No Strong Strong"));
    }

    // Windows made below the subtree (dialogs of the pane) keep their own focus.
    void windowsBelowAreLeftAlone()
    {
        Host host;
        auto* dialog = new QDialog(host.panel);
        auto* field = new QLineEdit(dialog);
        field->setFocusPolicy(Qt::TabFocus);
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        auto* later = new QDialog(host.panel);
        auto* laterField = new QLineEdit(later);
        laterField->setFocusPolicy(Qt::WheelFocus);
        QCoreApplication::processEvents();
        QCOMPARE(Policies({field, laterField, host.second}), QStringLiteral("Tab Wheel No"));
    }

    // A widget deleted while out is forgotten; the rest come back.
    void deletedWhileOut()
    {
        Host host;
        auto* doomed = Make(host.panel, Qt::TabFocus, "doomed");
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        delete doomed;
        delete host.first;
        controller.SetFocusable(true);
        QCOMPARE(Policies({host.pane, host.panel, host.second}), QStringLiteral("No No Strong"));
        controller.SetFocusable(false);
        QCOMPARE(Policies({host.pane, host.panel, host.second}), QStringLiteral("No No No"));
    }

    void hostChangesWhileOut_data()
    {
        QTest::addColumn<Qt::FocusPolicy>("set");
        QTest::addColumn<Qt::FocusPolicy>("back");
        QTest::newRow("to Tab") << Qt::TabFocus << Qt::TabFocus;
        QTest::newRow("to Wheel") << Qt::WheelFocus << Qt::WheelFocus;
        QTest::newRow("to Strong, as it was") << Qt::StrongFocus << Qt::StrongFocus;
        // NoFocus cannot be told from the controller's own: the earlier policy comes back.
        QTest::newRow("to No") << Qt::NoFocus << Qt::StrongFocus;
    }
    // A policy the host sets while the subtree is out counts at once and is kept.
    void hostChangesWhileOut()
    {
        QFETCH(Qt::FocusPolicy, set);
        QFETCH(Qt::FocusPolicy, back);
        Host host;
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        host.second->setFocusPolicy(set);
        QCOMPARE(host.second->focusPolicy(), set);
        QCoreApplication::processEvents();
        QCOMPARE(host.second->focusPolicy(), set);
        controller.SetFocusable(true);
        QCOMPARE(host.second->focusPolicy(), back);
        QCOMPARE(host.first->focusPolicy(), Qt::StrongFocus);
    }

    void focusMovesOn_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<bool>("afterFocusable");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first, inside") << "first" << true << "after";
        QTest::newRow("second, deeper inside") << "second" << true << "after";
        QTest::newRow("the root itself") << "pane" << true << "after";
        QTest::newRow("inside, nothing after but before") << "second" << false << "before";
        QTest::newRow("outside") << "before" << true << "before";
    }
    // The focus inside leaves along the tab chain, past the subtree, as off a disabled
    // widget; the tab chain then passes the subtree by.
    void focusMovesOn()
    {
        QFETCH(QString, focus);
        QFETCH(bool, afterFocusable);
        QFETCH(QString, expected);
        Host host;
        host.pane->setObjectName(QStringLiteral("pane"));
        host.pane->setFocusPolicy(Qt::StrongFocus);
        if (!afterFocusable)
            host.after->setFocusPolicy(Qt::NoFocus);
        QVERIFY(host.Show());
        QWidget* focused = host.window.findChild<QWidget*>(focus);
        QVERIFY(focused);
        focused->setFocus();
        QCOMPARE(FocusName(&host.window), focus);
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        QCOMPARE(FocusName(&host.window), expected);
        host.before->setFocus();
        QTest::keyClick(host.before, Qt::Key_Tab);
        QCOMPARE(FocusName(&host.window), afterFocusable ? QStringLiteral("after") : QStringLiteral("before"));
        controller.SetFocusable(true);
        host.before->setFocus();
        QTest::keyClick(host.before, Qt::Key_Tab);
        QCOMPARE(FocusName(&host.window), QStringLiteral("pane"));
    }

    // With nowhere else to go, the focus is cleared.
    void focusClearedWhenAlone()
    {
        QWidget window;
        auto* edit = new QLineEdit(&window);
        QVERIFY(TestSupport::ShowAndWait(&window));
        edit->setFocus();
        QCOMPARE(window.focusWidget(), edit);
        FocusPolicyController controller(&window);
        controller.SetFocusable(false);
        QCOMPARE(window.focusWidget(), nullptr);
        QVERIFY(!edit->hasFocus());
    }

    // A controller that goes gives its subtree back; by default it is the root's, and goes
    // with it.
    void lifetime()
    {
        Host host;
        {
            FocusPolicyController controller(host.pane, &host.window);
            controller.SetFocusable(false);
            QCOMPARE(host.first->focusPolicy(), Qt::NoFocus);
        }
        QCOMPARE(host.first->focusPolicy(), Qt::StrongFocus);
        QPointer<FocusPolicyController> owned = new FocusPolicyController(host.panel);
        QCOMPARE(owned->parent(), host.panel);
        QCOMPARE(owned->Root(), host.panel);
        owned->SetFocusable(false);
        delete host.panel;
        QVERIFY(!owned);
        // Nothing of the deleted widgets is left behind: new widgets, which may well take
        // their addresses, go out and come back as any.
        QVector<QWidget*> fresh;
        for (int i = 0; i < 6; ++i) {
            fresh << new QLineEdit(host.pane);
            fresh.last()->setFocusPolicy(Qt::ClickFocus);
        }
        FocusPolicyController again(host.pane);
        again.SetFocusable(false);
        QCOMPARE(Policies(fresh), QStringLiteral("No No No No No No"));
        again.SetFocusable(true);
        QCOMPARE(Policies(fresh), QStringLiteral("Click Click Click Click Click Click"));
    }

    // A root deleted under a controller that is not its child: nothing left to do, said once
    // when asked to take out, quiet otherwise.
    void rootDeleted()
    {
        Host host;
        QObject owner;
        auto* controller = new FocusPolicyController(host.pane, &owner);
        controller->SetFocusable(false);
        delete host.pane;
        QCOMPARE(controller->Root(), nullptr);
        const LogCapture::Mark mark;
        controller->SetFocusable(true);
        QCOMPARE(mark.Texts(), QStringList());
        controller->SetFocusable(false);
        QCOMPARE(mark.Texts(), QStringList("3 FocusPolicyController: no root widget (none given, or deleted); nothing to take out"));
        delete controller;
        QCOMPARE(Policies({host.before, host.after}), QStringLiteral("Strong Strong"));
    }

    void nullRoot()
    {
        const LogCapture::Mark mark;
        FocusPolicyController controller(nullptr);
        QCOMPARE(mark.Texts(), QStringList("3 FocusPolicyController: no root widget; the controller does nothing"));
        QCOMPARE(controller.parent(), nullptr);
        QCOMPARE(controller.Root(), nullptr);
        controller.SetFocusable(false);
        controller.SetFocusable(true);
        QCOMPARE(mark.Texts().size(), 2);
    }
};

QTEST_MAIN(TestFocusPolicyController)
#include "tst_focus_policy_controller.moc"
