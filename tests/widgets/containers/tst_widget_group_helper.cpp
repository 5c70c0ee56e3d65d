#include <qt_halvo/widgets/containers/selectable_container.h>
#include <qt_halvo/widgets/containers/widget_group_helper.h>

#include "test_support.h"

using OrvantaQT::SelectableContainer;
using OrvantaQT::WidgetGroupHelper;

namespace {

// A row of members named A, B, C... made from kinds: 'c' a SelectableContainer, 'b' a
// checkable push button. Every change of a member's state and of the current member is
// logged in order: "B+" selected, "A-" deselected, "Current(B)", "Current(none)".
struct Group
{
    QWidget window;
    WidgetGroupHelper helper;
    QVector<QWidget*> members;
    QStringList log;

    explicit Group(const QString& kinds, bool noneAllowed = false)
    {
        window.setGeometry(100, 100, 120 * kinds.size() + 20, 140);
        helper.SetNoneAllowed(noneAllowed);
        for (int i = 0; i < kinds.size(); ++i) {
            const bool container = kinds.at(i) == QLatin1Char('c');
            QWidget* member = container ? static_cast<QWidget*>(new SelectableContainer(&window)) : new QPushButton(&window);
            member->setObjectName(QString(QChar('A' + i)));
            member->setGeometry(10 + 120 * i, 50, 100, 60);
            const auto note = [this, member](bool on) { log << member->objectName() + QLatin1Char(on ? '+' : '-'); };
            if (container) {
                QObject::connect(static_cast<SelectableContainer*>(member), &SelectableContainer::SelectedChanged, note);
            } else {
                static_cast<QPushButton*>(member)->setCheckable(true);
                QObject::connect(static_cast<QPushButton*>(member), &QPushButton::toggled, note);
            }
            helper.AddWidget(member);
            members << member;
        }
        QObject::connect(&helper, &WidgetGroupHelper::CurrentChanged, [this](QWidget* current) {
            log << QStringLiteral("Current(%1)").arg(current ? current->objectName() : QStringLiteral("none"));
        });
    }
    QWidget* Member(const QString& name) const { return window.findChild<QWidget*>(name); }
    // The selected members' names, "" for none; the current one's must be the same.
    QString Selected() const
    {
        QString names;
        for (QWidget* member : members) {
            auto* container = qobject_cast<SelectableContainer*>(member);
            if (container ? container->IsSelected() : static_cast<QAbstractButton*>(member)->isChecked())
                names += member->objectName();
        }
        return names == (helper.Current() ? helper.Current()->objectName() : QString()) ? names : names + "?";
    }
    QString Take() { return std::exchange(log, {}).join(QLatin1Char(' ')); }
};

// The words of a log line in order, for logs whose order within a step varies.
QStringList Sorted(const QString& line)
{
    QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    std::sort(words.begin(), words.end());
    return words;
}

} // namespace

class TestWidgetGroupHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exclusiveClicks_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<bool>("noneAllowed");
        QTest::addColumn<QString>("clicks"); // members clicked; "=X" sets X current by code, "=-" none
        QTest::addColumn<QStringList>("expected"); // the log of each step
        for (const char* kinds : {"ccc", "bbb", "cbc", "bcb"}) {
            QTest::addRow("%s: one, then another", kinds)
                << kinds << false << "A B" << QStringList({"A+ Current(A)", "B+ A- Current(B)"});
            QTest::addRow("%s: the selected one again", kinds) << kinds << false << "C C" << QStringList({"C+ Current(C)", ""});
            QTest::addRow("%s: around, none allowed", kinds) << kinds << true << "B A A A"
                << QStringList({"B+ Current(B)", "A+ B- Current(A)", "A- Current(none)", "A+ Current(A)"});
            QTest::addRow("%s: by code", kinds) << kinds << false << "=B =B =C =-"
                << QStringList({"B+ Current(B)", "", "B- C+ Current(C)", "C- Current(none)"});
        }
    }
    // One selected at most, whatever the members are; the selected one clicked again stays
    // selected unless the group allows none; code may choose any member, or none.
    void exclusiveClicks()
    {
        QFETCH(QString, kinds);
        QFETCH(bool, noneAllowed);
        QFETCH(QString, clicks);
        QFETCH(QStringList, expected);
        Group group(kinds, noneAllowed);
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        const QStringList steps = clicks.split(QLatin1Char(' '));
        for (int i = 0; i < steps.size(); ++i) {
            if (steps[i].startsWith(QLatin1Char('=')))
                group.helper.SetCurrent(group.Member(steps[i].mid(1)));
            else
                QTest::mouseClick(group.Member(steps[i]), Qt::LeftButton, Qt::NoModifier, {50, 50});
            const QString seen = group.Take();
            // Of containers the order is exact: the clicked one selects itself, the group
            // deselects the one before and reports. An exclusive button group unchecks the
            // button before while the new one reports, so buttons are compared as sets.
            if (kinds == QLatin1String("ccc") && !steps[i].startsWith(QLatin1Char('=')))
                QCOMPARE(seen, expected[i]);
            QCOMPARE(Sorted(seen), Sorted(expected[i]));
            QVERIFY(!group.Selected().endsWith(QLatin1Char('?')));
        }
    }

    // Members selected or deselected by their own setters: the group follows. An exclusive
    // button group keeps its checked button checked (as Qt does) unless none is allowed.
    void changesOnMembers()
    {
        for (bool noneAllowed : {false, true}) {
            Group group(QStringLiteral("cbcb"), noneAllowed);
            static_cast<SelectableContainer*>(group.members[0])->SetSelected(true);
            static_cast<QAbstractButton*>(group.members[1])->setChecked(true);
            QCOMPARE(group.Selected(), QStringLiteral("B"));
            static_cast<QAbstractButton*>(group.members[1])->setChecked(false);
            QCOMPARE(group.Selected(), noneAllowed ? QString() : QStringLiteral("B"));
            static_cast<SelectableContainer*>(group.members[2])->SetSelected(true);
            static_cast<SelectableContainer*>(group.members[2])->SetSelected(false);
            QCOMPARE(group.Selected(), QString());
            QCOMPARE(group.helper.CurrentIndex(), -1);
        }
    }

    void arrows_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<QString>("from"); // current and focused; in lower case focused only
        QTest::addColumn<QString>("keys"); // R, L, U, D; c: Ctrl+Right; S: Space
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("unusable"); // disabled members, hidden ones in lower case
        for (const char* kinds : {"cccc", "bbbb", "cbcb"}) {
            QTest::addRow("%s: right", kinds) << kinds << "A" << "R" << "B" << "";
            QTest::addRow("%s: down twice", kinds) << kinds << "A" << "DD" << "C" << "";
            QTest::addRow("%s: left and up", kinds) << kinds << "D" << "LU" << "B" << "";
            QTest::addRow("%s: stops at the ends", kinds) << kinds << "C" << "RRRLLLLL" << "A" << "";
            QTest::addRow("%s: over a disabled one", kinds) << kinds << "A" << "R" << "C" << "B";
            QTest::addRow("%s: over a hidden one", kinds) << kinds << "D" << "L" << "B" << "c";
            QTest::addRow("%s: nowhere to go", kinds) << kinds << "B" << "R" << "B" << "CD";
            QTest::addRow("%s: with a modifier", kinds) << kinds << "B" << "c" << "B" << "";
            QTest::addRow("%s: other keys are the member's", kinds) << kinds << "b" << "S" << "B" << "";
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
        for (QChar name : unusable)
            name.isLower() ? group.Member(QString(name.toUpper()))->hide() : group.Member(name)->setEnabled(false);
        QVERIFY(TestSupport::ShowAndWait(&group.window));
        QApplication::setActiveWindow(&group.window);
        if (from.at(0).isUpper()) // else only focused
            group.helper.SetCurrent(group.Member(from));
        group.Member(from.toUpper())->setFocus();
        const QMap<QChar, Qt::Key> codes{{'R', Qt::Key_Right}, {'L', Qt::Key_Left}, {'U', Qt::Key_Up},
                                         {'D', Qt::Key_Down}, {'c', Qt::Key_Right}, {'S', Qt::Key_Space}};
        for (QChar key : keys)
            QTest::keyClick(QApplication::focusWidget(), codes[key], key == 'c' ? Qt::ControlModifier : Qt::NoModifier);
        QCOMPARE(group.Selected(), to);
        QCOMPARE(QApplication::focusWidget(), group.Member(to));
    }

    // A member deleted while selected leaves the group with no current member (reported
    // once); one deleted otherwise just leaves; the arrows pass where it was. Removed, the
    // current member keeps its state, leaves none current and is its own again.
    void deletionAndRemoval()
    {
        for (const QString& kinds : {QStringLiteral("cccc"), QStringLiteral("bbbb"), QStringLiteral("cbcb")}) {
            Group group(kinds, true);
            group.helper.SetCurrent(group.members[1]);
            group.Take();
            delete group.members.takeAt(1);
            QCOMPARE(group.Take(), QStringLiteral("Current(none)"));
            QCOMPARE(group.helper.Current(), nullptr);
            delete group.members.takeAt(1);
            QCOMPARE(group.Take(), QString());
            QCOMPARE(group.helper.Widgets(), group.members);
            group.helper.SetCurrent(group.members[0]);
            QTest::keyClick(group.members[0], Qt::Key_Right);
            QCOMPARE(group.helper.CurrentIndex(), 1);
            group.Take();
            group.helper.RemoveWidget(group.members[1]);
            QCOMPARE(group.Take(), QStringLiteral("Current(none)"));
            QCOMPARE(group.Selected(), QStringLiteral("D?")); // selected, but no longer a member
            QCOMPARE(group.helper.Widgets(), group.members.mid(0, 1));
            auto* container = qobject_cast<SelectableContainer*>(group.members[1]);
            QVERIFY(container ? !container->IsDeselectable() : !static_cast<QAbstractButton*>(group.members[1])->group());
        }
    }

    // The none mode makes containers deselectable while they are members; they get back
    // what they had when the group goes. A selected newcomer gives way to the current one.
    void modeAndNewcomers()
    {
        SelectableContainer own;
        own.SetDeselectable(true);
        own.SetSelected(true);
        {
            Group group(QStringLiteral("c"));
            auto* a = static_cast<SelectableContainer*>(group.members[0]);
            QVERIFY(group.helper.setProperty("noneAllowed", true));
            QVERIFY(a->IsDeselectable());
            group.helper.SetNoneAllowed(false);
            QVERIFY(!a->IsDeselectable());
            group.helper.SetCurrent(a);
            QVERIFY(group.helper.AddWidget(&own));
            QVERIFY(!own.IsDeselectable() && !own.IsSelected());
        }
        QVERIFY(own.IsDeselectable());
    }

    // One warning each; the group as it was.
    void badInput()
    {
        Group group(QStringLiteral("cb"));
        group.helper.SetCurrent(group.members[0]);
        group.Take();
        auto* label = new QLabel(&group.window);
        auto* plain = new QPushButton(&group.window);
        auto* radio = new QRadioButton(&group.window);
        (new QButtonGroup(&group.window))->addButton(radio);
        auto* stranger = new SelectableContainer(&group.window);
        stranger->setObjectName(QStringLiteral("S"));
        const LogCapture::Mark mark;
        for (QWidget* widget : QVector<QWidget*>{nullptr, group.members[0], label, plain, radio})
            QVERIFY(!group.helper.AddWidget(widget));
        group.helper.RemoveWidget(nullptr);
        group.helper.RemoveWidget(stranger);
        group.helper.SetCurrent(stranger);
        QCOMPARE(mark.Texts(), QStringList({
            "3 WidgetGroupHelper: no widget to add",
            "3 WidgetGroupHelper: OrvantaQT::SelectableContainer \"A\" is in the group already",
            "3 WidgetGroupHelper: QLabel \"\" is neither a SelectableContainer nor a checkable button",
            "3 WidgetGroupHelper: QPushButton \"\" is neither a SelectableContainer nor a checkable button",
            "3 WidgetGroupHelper: QRadioButton \"\" is in a QButtonGroup already",
            "3 WidgetGroupHelper: a null widget is not in the group",
            "3 WidgetGroupHelper: OrvantaQT::SelectableContainer \"S\" is not in the group",
            "3 WidgetGroupHelper: OrvantaQT::SelectableContainer \"S\" is not in the group; the current member stays",
        }));
        QCOMPARE(group.helper.Widgets(), group.members);
        QCOMPARE(group.Selected(), QStringLiteral("A"));
        QCOMPARE(group.Take(), QString());
    }
};

QTEST_MAIN(TestWidgetGroupHelper)
#include "tst_widget_group_helper.moc"
