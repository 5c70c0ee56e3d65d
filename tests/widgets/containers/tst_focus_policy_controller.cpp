#include <qt_halvo/widgets/containers/focus_policy_controller.h>

#include "test_support.h"

using OrvantaQT::FocusPolicyController;

namespace {

const QVector<Qt::FocusPolicy> kPolicies{Qt::TabFocus, Qt::ClickFocus, Qt::StrongFocus, Qt::WheelFocus, Qt::NoFocus};

// The policies of the widgets, "TabFocus NoFocus ...".
QString Policies(const QVector<QWidget*>& widgets)
{
    QStringList names;
    for (const QWidget* widget : widgets)
        names << QLatin1String(QMetaEnum::fromType<Qt::FocusPolicy>().valueToKey(widget->focusPolicy()));
    return names.join(QLatin1Char(' '));
}

QWidget* Make(QWidget* parent, Qt::FocusPolicy policy, const char* name = "")
{
    auto* widget = new QWidget(parent);
    widget->setObjectName(QLatin1String(name));
    widget->setFocusPolicy(policy);
    widget->resize(40, 20);
    return widget;
}

// A window in tab order: "before", the pane (the root) holding "first" and a panel with
// "second", then "after".
struct Host
{
    QWidget window;
    QWidget* before = Make(&window, Qt::StrongFocus, "before");
    QWidget* pane = Make(&window, Qt::NoFocus, "pane");
    QWidget* first = Make(pane, Qt::StrongFocus, "first");
    QWidget* panel = Make(pane, Qt::NoFocus, "panel");
    QWidget* second = Make(panel, Qt::StrongFocus, "second");
    QWidget* after = Make(&window, Qt::StrongFocus, "after");
    QString Focus() const { return window.focusWidget() ? window.focusWidget()->objectName() : QStringLiteral("none"); }
};

} // namespace

class TestFocusPolicyController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void policiesComeBackExactly_data()
    {
        QTest::addColumn<int>("start");
        for (int start = 0; start < kPolicies.size(); ++start)
            QTest::newRow(QMetaEnum::fromType<Qt::FocusPolicy>().valueToKey(kPolicies[start])) << start;
    }
    // Out: the root and every widget below it (every policy, two levels deep) have no
    // focus; back: each has its own earlier policy. Outside nothing changes; asking twice
    // changes nothing.
    void policiesComeBackExactly()
    {
        QFETCH(int, start);
        QWidget window;
        QWidget* outside = Make(&window, kPolicies[start]);
        QVector<QWidget*> subtree{Make(&window, kPolicies[start])};
        for (int i = 1; i <= kPolicies.size(); ++i)
            subtree << Make(subtree[i <= 2 ? 0 : 2], kPolicies[(start + i) % kPolicies.size()]);
        const QString before = Policies(subtree);
        FocusPolicyController controller(subtree[0]);
        for (int twice = 0; twice < 2; ++twice)
            controller.TakeOut();
        QVERIFY(!controller.IsFocusable());
        QCOMPARE(Policies(subtree), QString("NoFocus ").repeated(6).trimmed());
        QCOMPARE(outside->focusPolicy(), kPolicies[start]);
        controller.GiveBack();
        QVERIFY(controller.setProperty("focusable", true));
        QCOMPARE(Policies(subtree), before);
    }

    void nested_data()
    {
        QTest::addColumn<QString>("steps"); // "o-" takes the outer subtree out, "i+" gives the inner one back
        QTest::addColumn<QString>("outerBack"); // the outer root, inner root, inner child when only the outer is back
        QTest::newRow("inner first") << "i- o- o+ i+" << "StrongFocus NoFocus NoFocus";
        QTest::newRow("outer first, given back first") << "o- i- o+ i+" << "StrongFocus NoFocus NoFocus";
        QTest::newRow("outer first, given back last") << "o- i- i+ o+" << "NoFocus NoFocus NoFocus";
    }
    // A widget under two controllers that are out comes back when the last of them gives
    // it back, in any order.
    void nested()
    {
        QFETCH(QString, steps);
        QFETCH(QString, outerBack);
        QWidget window;
        QWidget* outer = Make(&window, Qt::StrongFocus);
        QWidget* inner = Make(outer, Qt::TabFocus);
        QWidget* child = Make(inner, Qt::ClickFocus);
        FocusPolicyController controllers[] = {FocusPolicyController(outer), FocusPolicyController(inner)};
        QStringList seen;
        for (const QString& step : steps.split(QLatin1Char(' '))) {
            controllers[step.startsWith(QLatin1Char('i'))].SetFocusable(step.endsWith(QLatin1Char('+')));
            seen << Policies({outer, inner, child});
        }
        QCOMPARE(seen, QStringList({seen[0], "NoFocus NoFocus NoFocus", outerBack, "StrongFocus TabFocus ClickFocus"}));
        QCOMPARE(seen[0], steps.startsWith(QLatin1Char('i')) ? "StrongFocus NoFocus NoFocus" : "NoFocus NoFocus NoFocus");
    }

    void newcomersAndChanges_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("made there, policy set after") << "made";
        QTest::newRow("made below a newcomer") << "deep";
        QTest::newRow("moved in") << "moved";
        QTest::newRow("made and shown at once") << "shown";
    }
    // Widgets that come into the subtree while it is out are taken out too (by the next
    // pass of the event loop, or as soon as they are shown) and come back with their own
    // policy; windows made below it keep theirs. A policy the host sets while out wins,
    // except NoFocus, which cannot be told from the controller's own; a widget deleted
    // while out is forgotten.
    void newcomersAndChanges()
    {
        QFETCH(QString, how);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QWidget* doomed = Make(host.panel, Qt::TabFocus);
        auto* splitter = new QSplitter(host.panel);
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        QWidget* parent = how == QLatin1String("deep") ? new QWidget(host.panel) : host.panel;
        QWidget* newcomer = Make(how == QLatin1String("moved") ? &host.window : parent, Qt::ClickFocus);
        QWidget* field = Make(new QDialog(host.panel), Qt::TabFocus);
        new QLabel(splitter); // its own handling of new children still sees them
        QCOMPARE(splitter->count(), 1);
        if (how == QLatin1String("moved")) {
            QCoreApplication::processEvents();
            newcomer->setParent(host.panel);
        } else if (how == QLatin1String("shown")) {
            newcomer->show();
            QCOMPARE(newcomer->focusPolicy(), Qt::NoFocus); // before the event loop runs
        }
        QCoreApplication::processEvents();
        QCOMPARE(newcomer->focusPolicy(), Qt::NoFocus);
        host.second->setFocusPolicy(Qt::TabFocus);
        host.first->setFocusPolicy(Qt::NoFocus);
        delete doomed;
        controller.SetFocusable(true);
        QCOMPARE(Policies({newcomer, field, host.second, host.first, host.pane}),
                 QStringLiteral("ClickFocus TabFocus TabFocus StrongFocus NoFocus"));
    }

    void focusMovesOn_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<bool>("afterFocusable");
        QTest::addColumn<QString>("expected");
        QTest::newRow("inside") << "first" << true << "after";
        QTest::newRow("deeper inside") << "second" << true << "after";
        QTest::newRow("the root itself") << "pane" << true << "after";
        QTest::newRow("inside, only before to go to") << "second" << false << "before";
        QTest::newRow("outside") << "before" << true << "before";
    }
    // The focus inside leaves along the tab chain, past the subtree, as off a disabled
    // widget; the tab chain passes the subtree by until it is given back.
    void focusMovesOn()
    {
        QFETCH(QString, focus);
        QFETCH(bool, afterFocusable);
        QFETCH(QString, expected);
        Host host;
        host.pane->setFocusPolicy(Qt::StrongFocus);
        host.after->setFocusPolicy(afterFocusable ? Qt::StrongFocus : Qt::NoFocus);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QApplication::setActiveWindow(&host.window);
        host.window.findChild<QWidget*>(focus)->setFocus();
        FocusPolicyController controller(host.pane);
        controller.SetFocusable(false);
        QCOMPARE(host.Focus(), expected);
        host.before->setFocus();
        QTest::keyClick(host.before, Qt::Key_Tab);
        QCOMPARE(host.Focus(), afterFocusable ? QStringLiteral("after") : QStringLiteral("before"));
        controller.SetFocusable(true);
        QTest::keyClick(host.window.focusWidget(), Qt::Key_Backtab);
        QCOMPARE(host.Focus(), QStringLiteral("second"));
        // With nowhere else to go, the focus is cleared.
        FocusPolicyController(&host.window).SetFocusable(false);
        QCOMPARE(host.Focus(), QStringLiteral("none"));
    }

    // A controller that goes gives its subtree back; by default it is the root's and goes
    // with it, leaving nothing behind (new widgets, which may take the deleted ones'
    // addresses, go out as any). Without a root it says so once when asked to take out.
    void lifetime()
    {
        Host host;
        FocusPolicyController(host.pane, &host.window).SetFocusable(false);
        QCOMPARE(host.first->focusPolicy(), Qt::StrongFocus);
        QPointer<FocusPolicyController> owned = new FocusPolicyController(host.panel);
        owned->SetFocusable(false);
        delete host.panel;
        QVERIFY(!owned);
        QVector<QWidget*> fresh{Make(host.pane, Qt::ClickFocus), Make(host.pane, Qt::ClickFocus)};
        FocusPolicyController again(host.pane, &host.window);
        again.SetFocusable(false);
        QCOMPARE(Policies(fresh), QStringLiteral("NoFocus NoFocus"));
        auto* orphan = new FocusPolicyController(host.pane, &again);
        delete host.pane;
        QCOMPARE(orphan->Root(), nullptr);
        const LogCapture::Mark mark;
        orphan->SetFocusable(false);
        FocusPolicyController rootless(nullptr);
        QCOMPARE(mark.Texts(), QStringList({"3 FocusPolicyController: no root widget (none given, or deleted); nothing to take out",
                                            "3 FocusPolicyController: no root widget; the controller does nothing"}));
    }
};

QTEST_MAIN(TestFocusPolicyController)
#include "tst_focus_policy_controller.moc"
