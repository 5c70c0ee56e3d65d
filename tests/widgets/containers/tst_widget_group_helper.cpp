#include <qt_halvo/widgets/containers/selectable_container.h>
#include <qt_halvo/widgets/containers/widget_group_helper.h>

#include "test_support.h"

#include <functional>

using OrvantaQT::SelectableContainer;
using OrvantaQT::WidgetGroupHelper;

namespace {

// A row of members named A, B, C... made from kinds: 'c' a SelectableContainer, 'b' a
// checkable push button. Every change of a member's state and of the current member is
// logged in order: "B+" selected, "A-" deselected, "Current(B)", "Current(none)".
struct Group
{
    QWidget window;
    QLineEdit* outside = new QLineEdit(&window);
    WidgetGroupHelper helper;
    QVector<QWidget*> members;
    QStringList log;

    explicit Group(const QString& kinds, bool noneAllowed = false)
    {
        window.setGeometry(100, 100, 120 * kinds.size() + 20, 140);
        outside->setGeometry(10, 10, 100, 24);
        helper.SetNoneAllowed(noneAllowed);
        for (int i = 0; i < kinds.size(); ++i) {
            QWidget* member = Make(kinds.at(i), QString(QChar('A' + i)));
            member->setGeometry(10 + 120 * i, 50, 100, 60);
            QVERIFY(helper.AddWidget(member));
            members << member;
        }
        QObject::connect(&helper, &WidgetGroupHelper::CurrentChanged, [this](QWidget* current) {
            log << QStringLiteral("Current(%1)").arg(current ? current->objectName() : QStringLiteral("none"));
        });
    }
    QWidget* Make(QChar kind, const QString& name)
    {
        QWidget* member;
        if (kind == QLatin1Char('c')) {
            auto* container = new SelectableContainer(&window);
            new QLabel(name, container);
            QObject::connect(container, &SelectableContainer::SelectedChanged,
                             [this, container](bool on) { Note(container, on); });
            member = container;
        } else {
            auto* button = new QPushButton(name, &window);
            button->setCheckable(true);
            QObject::connect(button, &QPushButton::toggled, [this, button](bool on) { Note(button, on); });
            member = button;
        }
        member->setObjectName(name);
        return member;
    }
    void Note(QWidget* member, bool on) { log << member->objectName() + (on ? QLatin1Char('+') : QLatin1Char('-')); }
    QWidget* Member(const QString& name) const
    {
        for (QWidget* member : members) {
            if (member->objectName() == name)
                return member;
        }
        return nullptr;
    }
    // The selected members' names, "" for none.
    QString Selected() const
    {
        QString names;
        for (QWidget* member : members) {
            auto* container = qobject_cast<SelectableContainer*>(member);
            if (container ? container->IsSelected() : static_cast<QAbstractButton*>(member)->isChecked())
                names += member->objectName();
        }
        return names;
    }
    QString CurrentName() const { return helper.Current() ? helper.Current()->objectName() : QString(); }
    void Click(const QString& name)
    {
        QWidget* member = Member(name);
        QTest::mouseClick(member, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    }
    QStringList Take() { return std::exchange(log, {}); }
};

using Action = std::function<void(Group&)>;

} // namespace

Q_DECLARE_METATYPE(Action)

class TestWidgetGroupHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void exclusiveClicks_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<bool>("noneAllowed");
        QTest::addColumn<QString>("clicks");
        QTest::addColumn<QStringList>("expected"); // the log after each click, joined by " | "
        QTest::addColumn<QString>("selected");
        for (const char* kinds : {"ccc", "bbb", "cbc", "bcb"}) {
            QTest::addRow("%s: one, then another", kinds)
                << kinds << false << "A B" << QStringList({"A+ Current(A)", "A- B+ Current(B)"}) << "B";
            QTest::addRow("%s: the selected one again", kinds)
                << kinds << false << "C C" << QStringList({"C+ Current(C)", ""}) << "C";
            QTest::addRow("%s: the selected one again, none allowed", kinds)
                << kinds << true << "C C" << QStringList({"C+ Current(C)", "C- Current(none)"}) << "";
            QTest::addRow("%s: around, none allowed", kinds)
                << kinds << true << "B A A A"
                << QStringList({"B+ Current(B)", "B- A+ Current(A)", "A- Current(none)", "A+ Current(A)"}) << "A";
        }
    }
    // One selected at most, whatever the members are; the selected one clicked again stays
    // selected unless the group allows none.
    void exclusiveClicks()
    {
        QFETCH(QString, kinds);
        QFETCH(bool, noneAllowed);
        QFETCH(QString, clicks);
        QFETCH(QStringList, expected);
        QFETCH(QString, selected);
        Group group(kinds, noneAllowed);
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        QStringList seen;
        for (const QString& name : clicks.split(QLatin1Char(' '))) {
            group.Click(name);
            seen << group.Take().join(QLatin1Char(' '));
        }
        // Within a click the order depends on the kinds (an exclusive button group unchecks
        // the button before while the new one reports); orderOfReports has it for containers.
        QCOMPARE(seen.size(), expected.size());
        for (int i = 0; i < expected.size(); ++i) {
            QStringList want = expected[i].split(QLatin1Char(' '), Qt::SkipEmptyParts);
            QStringList got = seen[i].split(QLatin1Char(' '), Qt::SkipEmptyParts);
            std::sort(want.begin(), want.end());
            std::sort(got.begin(), got.end());
            QCOMPARE(got, want);
        }
        QCOMPARE(group.Selected(), selected);
        QCOMPARE(group.CurrentName(), selected);
    }

    // Of containers alone the order is exact: the clicked one selects itself, the group
    // deselects the one before and then reports its current member.
    void orderOfReports()
    {
        Group group(QStringLiteral("ccc"));
        group.Click(QStringLiteral("A"));
        group.Click(QStringLiteral("C"));
        QCOMPARE(group.Take(), TestSupport::Words("A+ Current(A) C+ A- Current(C)"));
    }

    void changesByCode_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<bool>("noneAllowed");
        QTest::addColumn<Action>("change");
        QTest::addColumn<QString>("selected");
        const auto current = [](const char* name) {
            return Action([name](Group& group) { group.helper.SetCurrent(group.Member(QLatin1String(name))); });
        };
        const Action none = [](Group& group) { group.helper.SetCurrent(nullptr); };
        const Action selectC = [](Group& group) {
            QWidget* c = group.Member(QStringLiteral("C"));
            if (auto* container = qobject_cast<SelectableContainer*>(c))
                container->SetSelected(true);
            else
                static_cast<QAbstractButton*>(c)->setChecked(true);
        };
        const Action deselectA = [](Group& group) {
            static_cast<SelectableContainer*>(group.Member(QStringLiteral("A")))->SetSelected(false);
        };
        const Action uncheckA = [](Group& group) {
            static_cast<QAbstractButton*>(group.Member(QStringLiteral("A")))->setChecked(false);
        };
        for (const char* kinds : {"ccc", "bbb", "cbc", "bcb"}) {
            QTest::addRow("%s: current set", kinds) << kinds << false << current("B") << "B";
            QTest::addRow("%s: current set to itself", kinds) << kinds << false << current("A") << "A";
            QTest::addRow("%s: none set", kinds) << kinds << false << none << "";
            QTest::addRow("%s: none set, none allowed", kinds) << kinds << true << none << "";
            QTest::addRow("%s: a member selected directly", kinds) << kinds << false << selectC << "C";
        }
        QTest::newRow("a container deselected directly") << "ccc" << false << deselectA << "";
        // An exclusive button group keeps its checked button checked, as Qt does.
        QTest::newRow("a button unchecked directly") << "bbb" << false << uncheckA << "A";
        QTest::newRow("a button unchecked directly, none allowed") << "bbb" << true << uncheckA << "";
    }
    // Code that selects a member (or none) through the group or on the member itself: the
    // group follows, one selected at most, reported once.
    void changesByCode()
    {
        QFETCH(QString, kinds);
        QFETCH(bool, noneAllowed);
        QFETCH(Action, change);
        QFETCH(QString, selected);
        Group group(kinds, noneAllowed);
        group.helper.SetCurrent(group.Member(QStringLiteral("A")));
        group.Take();
        change(group);
        QCOMPARE(group.Selected(), selected);
        QCOMPARE(group.CurrentName(), selected);
        QCOMPARE(group.helper.CurrentIndex(), selected.isEmpty() ? -1 : selected.at(0).unicode() - 'A');
        const QStringList reports = group.Take().filter(QStringLiteral("Current("));
        QCOMPARE(reports, selected == QLatin1String("A")
                              ? QStringList()
                              : QStringList(QStringLiteral("Current(%1)").arg(selected.isEmpty() ? "none" : selected)));
    }

    void arrows_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("unusable"); // disabled or hidden members
        for (const char* kinds : {"cccc", "bbbb", "cbcb"}) {
            QTest::addRow("%s: right", kinds) << kinds << "A" << "Right" << "B" << "";
            QTest::addRow("%s: down twice", kinds) << kinds << "A" << "Down Down" << "C" << "";
            QTest::addRow("%s: left", kinds) << kinds << "C" << "Left" << "B" << "";
            QTest::addRow("%s: up", kinds) << kinds << "B" << "Up" << "A" << "";
            QTest::addRow("%s: stops at the end", kinds) << kinds << "C" << "Right Right Right" << "D" << "";
            QTest::addRow("%s: stops at the start", kinds) << kinds << "B" << "Up Left" << "A" << "";
            QTest::addRow("%s: over a disabled one", kinds) << kinds << "A" << "Right" << "C" << "B";
            QTest::addRow("%s: over a hidden one", kinds) << kinds << "D" << "Left" << "B" << "c";
            QTest::addRow("%s: nowhere to go", kinds) << kinds << "B" << "Right" << "B" << "CD";
        }
    }
    // The arrows move the selection and the focus to the next usable member in the order
    // added; at the ends they stay.
    void arrows()
    {
        QFETCH(QString, kinds);
        QFETCH(QString, from);
        QFETCH(QString, keys);
        QFETCH(QString, to);
        QFETCH(QString, unusable);
        Group group(kinds);
        for (QChar name : unusable) {
            QWidget* member = group.Member(QString(name.toUpper()));
            if (name.isLower())
                member->hide();
            else
                member->setEnabled(false);
        }
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        group.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&group.window));
        group.helper.SetCurrent(group.Member(from));
        group.Member(from)->setFocus();
        for (const QString& key : keys.split(QLatin1Char(' '))) {
            const Qt::Key code = key == QLatin1String("Right") ? Qt::Key_Right
                                 : key == QLatin1String("Left") ? Qt::Key_Left
                                 : key == QLatin1String("Up")   ? Qt::Key_Up
                                                                : Qt::Key_Down;
            QTest::keyClick(QApplication::focusWidget(), code);
        }
        QCOMPARE(group.CurrentName(), to);
        QCOMPARE(group.Selected(), to);
        QCOMPARE(QApplication::focusWidget(), group.Member(to));
    }

    // An arrow a child of a member leaves alone moves the group; one it uses, or one with a
    // modifier, does not.
    void arrowsFromInside()
    {
        Group group(QStringLiteral("ccc"));
        auto* part = new QWidget(group.Member(QStringLiteral("B")));
        part->setFocusPolicy(Qt::StrongFocus);
        part->resize(20, 20);
        auto* edit = new QLineEdit(group.Member(QStringLiteral("B")));
        edit->move(0, 30);
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        group.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&group.window));
        group.helper.SetCurrent(group.Member(QStringLiteral("B")));
        edit->setText(QStringLiteral("text"));
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Left);
        QCOMPARE(group.CurrentName(), QStringLiteral("B"));
        QCOMPARE(edit->cursorPosition(), 3);
        group.Member(QStringLiteral("B"))->setFocus();
        QTest::keyClick(group.Member(QStringLiteral("B")), Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(group.CurrentName(), QStringLiteral("B"));
        part->setFocus();
        QTest::keyClick(part, Qt::Key_Down); // a plain widget leaves its keys to its parent
        QCOMPARE(group.CurrentName(), QStringLiteral("C"));
        QCOMPARE(QApplication::focusWidget(), group.Member(QStringLiteral("C")));
    }

    void deletion_data()
    {
        QTest::addColumn<QString>("kinds");
        for (const char* kinds : {"ccc", "bbb", "cbc"})
            QTest::newRow(kinds) << kinds;
    }
    // A member deleted while selected leaves the group with no current member (reported
    // once); one deleted otherwise just leaves; the arrows pass where it was.
    void deletion()
    {
        QFETCH(QString, kinds);
        Group group(kinds);
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        group.helper.SetCurrent(group.Member(QStringLiteral("B")));
        group.Take();
        QWidget* b = group.Member(QStringLiteral("B"));
        group.members.removeOne(b);
        delete b;
        QCOMPARE(group.Take(), QStringList("Current(none)"));
        QCOMPARE(group.helper.Current(), nullptr);
        QCOMPARE(group.helper.CurrentIndex(), -1);
        QCOMPARE(group.helper.Widgets(), group.members);
        QWidget* c = group.Member(QStringLiteral("C"));
        group.members.removeOne(c);
        delete c;
        QCOMPARE(group.Take(), QStringList());
        QCOMPARE(group.helper.Widgets().size(), 1);
        group.Click(QStringLiteral("A"));
        QCOMPARE(group.CurrentName(), QStringLiteral("A"));
        QWidget* later = group.Make(kinds.at(0), QStringLiteral("D"));
        later->show();
        group.members << later;
        QVERIFY(group.helper.AddWidget(later));
        group.Member(QStringLiteral("A"))->setFocus();
        QTest::keyClick(group.Member(QStringLiteral("A")), Qt::Key_Right);
        QCOMPARE(group.CurrentName(), QStringLiteral("D"));
        QCOMPARE(group.Selected(), QStringLiteral("D"));
    }

    void remove_data()
    {
        QTest::addColumn<QString>("kinds");
        for (const char* kinds : {"ccc", "bbb"})
            QTest::newRow(kinds) << kinds;
    }
    // A removed member keeps its state and no longer takes part: the current one removed
    // leaves none; clicks on it leave the group alone, and it is its own again.
    void remove()
    {
        QFETCH(QString, kinds);
        Group group(kinds, true);
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        group.helper.SetCurrent(group.Member(QStringLiteral("A")));
        group.Take();
        QWidget* a = group.Member(QStringLiteral("A"));
        group.helper.RemoveWidget(a);
        QCOMPARE(group.Take(), QStringList("Current(none)"));
        QCOMPARE(group.Selected(), QStringLiteral("A"));
        QCOMPARE(group.helper.Widgets(), group.members.mid(1));
        group.Click(QStringLiteral("B"));
        QCOMPARE(group.Selected(), QStringLiteral("AB"));
        QCOMPARE(group.CurrentName(), QStringLiteral("B"));
        group.Take();
        group.Click(QStringLiteral("A")); // as it is alone: a container stays, a button unchecks
        QCOMPARE(group.Take(), QStringList(kinds.startsWith(QLatin1Char('c')) ? QStringList() : QStringList("A-")));
        QCOMPARE(group.CurrentName(), QStringLiteral("B"));
        if (auto* container = qobject_cast<SelectableContainer*>(a))
            QVERIFY(!container->IsDeselectable());
        else
            QCOMPARE(static_cast<QAbstractButton*>(a)->group(), nullptr);
        group.Member(QStringLiteral("B"))->setFocus();
        QTest::keyClick(group.Member(QStringLiteral("B")), Qt::Key_Left); // A is no longer before B
        QCOMPARE(group.CurrentName(), QStringLiteral("B"));
    }

    // The none mode makes the containers deselectable while it lasts and while they are
    // members; they get back what they had when the group goes.
    void deselectableFollowsTheMode()
    {
        SelectableContainer own;
        own.SetDeselectable(true);
        {
            Group group(QStringLiteral("cc"));
            auto* a = static_cast<SelectableContainer*>(group.Member(QStringLiteral("A")));
            QVERIFY(!a->IsDeselectable());
            group.helper.SetNoneAllowed(true);
            QVERIFY(group.helper.IsNoneAllowed());
            QVERIFY(a->IsDeselectable());
            QVERIFY(group.helper.setProperty("noneAllowed", false));
            QVERIFY(!a->IsDeselectable());
            QVERIFY(group.helper.AddWidget(&own));
            QVERIFY(!own.IsDeselectable());
        }
        QVERIFY(own.IsDeselectable());
    }

    void newcomers_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<bool>("withCurrent");
        QTest::addColumn<QString>("selected");
        for (const char* kinds : {"cc", "bb", "cb", "bc"}) {
            QTest::addRow("%s: a selected newcomer, none current", kinds) << kinds << false << "B";
            QTest::addRow("%s: a selected newcomer, one current", kinds) << kinds << true << "A";
        }
    }
    // A selected member that joins becomes current when none is, and is deselected
    // otherwise.
    void newcomers()
    {
        QFETCH(QString, kinds);
        QFETCH(bool, withCurrent);
        QFETCH(QString, selected);
        Group group(kinds.left(1));
        if (withCurrent)
            group.helper.SetCurrent(group.members.first());
        QWidget* b = group.Make(kinds.at(1), QStringLiteral("B"));
        if (auto* container = qobject_cast<SelectableContainer*>(b))
            container->SetSelected(true);
        else
            static_cast<QAbstractButton*>(b)->setChecked(true);
        group.members << b;
        group.Take();
        QVERIFY(group.helper.AddWidget(b));
        QCOMPARE(group.Selected(), selected);
        QCOMPARE(group.CurrentName(), selected);
        QCOMPARE(group.Take().filter(QStringLiteral("Current(")),
                 withCurrent ? QStringList() : QStringList(QStringLiteral("Current(B)")));
    }

    void badInput_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<QString>("logged");
        QTest::newRow("null added") << Action([](Group& group) { QVERIFY(!group.helper.AddWidget(nullptr)); })
                                    << "3 WidgetGroupHelper: no widget to add";
        QTest::newRow("added twice") << Action([](Group& group) {
            QVERIFY(!group.helper.AddWidget(group.Member(QStringLiteral("A"))));
        }) << "3 WidgetGroupHelper: OrvantaQT::SelectableContainer \"A\" is in the group already";
        QTest::newRow("a label") << Action([](Group& group) {
            auto* label = new QLabel(&group.window);
            label->setObjectName(QStringLiteral("Label"));
            QVERIFY(!group.helper.AddWidget(label));
        }) << "3 WidgetGroupHelper: QLabel \"Label\" is neither a SelectableContainer nor a checkable button";
        QTest::newRow("a button that does not check") << Action([](Group& group) {
            auto* button = new QPushButton(&group.window);
            button->setObjectName(QStringLiteral("Plain"));
            QVERIFY(!group.helper.AddWidget(button));
        }) << "3 WidgetGroupHelper: QPushButton \"Plain\" is neither a SelectableContainer nor a checkable button";
        QTest::newRow("a button of another group") << Action([](Group& group) {
            auto* button = new QRadioButton(&group.window);
            button->setObjectName(QStringLiteral("Radio"));
            auto* other = new QButtonGroup(&group.window);
            other->addButton(button);
            QVERIFY(!group.helper.AddWidget(button));
            QCOMPARE(button->group(), other);
        }) << "3 WidgetGroupHelper: QRadioButton \"Radio\" is in a QButtonGroup already";
        QTest::newRow("null removed") << Action([](Group& group) { group.helper.RemoveWidget(nullptr); })
                                      << "3 WidgetGroupHelper: a null widget is not in the group";
        QTest::newRow("stranger removed") << Action([](Group& group) {
            auto* stranger = new SelectableContainer(&group.window);
            stranger->setObjectName(QStringLiteral("Stranger"));
            group.helper.RemoveWidget(stranger);
        }) << "3 WidgetGroupHelper: OrvantaQT::SelectableContainer \"Stranger\" is not in the group";
        QTest::newRow("stranger made current") << Action([](Group& group) {
            auto* stranger = new SelectableContainer(&group.window);
            stranger->setObjectName(QStringLiteral("Stranger"));
            group.helper.SetCurrent(stranger);
            QVERIFY(!stranger->IsSelected());
        }) << "3 WidgetGroupHelper: OrvantaQT::SelectableContainer \"Stranger\" is not in the group; the current member stays";
    }
    // One line each; the group as it was.
    void badInput()
    {
        QFETCH(Action, action);
        QFETCH(QString, logged);
        Group group(QStringLiteral("cb"));
        group.helper.SetCurrent(group.Member(QStringLiteral("A")));
        group.Take();
        const LogCapture::Mark mark;
        action(group);
        QCOMPARE(mark.Texts(), QStringList(logged));
        QCOMPARE(group.helper.Widgets(), group.members);
        QCOMPARE(group.CurrentName(), QStringLiteral("A"));
        QCOMPARE(group.Take(), QStringList());
    }
};

QTEST_MAIN(TestWidgetGroupHelper)
#include "tst_widget_group_helper.moc"
