#include <qt_halvo/animation/movie_widget.h>
#include <qt_halvo/widgets/input/custom_line_edit.h>

#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QStackedWidget>

using OrvantaQT::CustomLineEdit;

namespace {

int OverrideCursorShape()
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor ? int(cursor->shape()) : -1;
}

// A window with the line edit and a second field to take the focus from it.
struct Fixture
{
    Fixture()
    {
        window.resize(400, 120);
        edit->setGeometry(10, 10, 300, 30);
        other->setGeometry(10, 60, 300, 30);
        QObject::connect(edit, &CustomLineEdit::StartEditText, [this] { log << QStringLiteral("start"); });
        QObject::connect(edit, &CustomLineEdit::AcceptEditText, [this] { log << QStringLiteral("accept"); });
        QObject::connect(edit, &CustomLineEdit::CancelEditText, [this] { log << QStringLiteral("cancel"); });
        QObject::connect(edit, &CustomLineEdit::ButtonClicked, [this] { log << QStringLiteral("button"); });
        window.show();
        window.activateWindow();
    }
    bool Active() { return QTest::qWaitForWindowActive(&window); }
    QWidget* Child(const QString& name) const { return edit->findChild<QWidget*>(name); }
    QWidget* Page() const { return edit->findChild<QStackedWidget*>()->currentWidget(); }
    // Onto a part by its name, the text field, or away from the edit to rest.
    void MoveTo(const QString& place)
    {
        if (place == QLatin1String("rest"))
            QTest::mouseMove(&window, QPoint(390, 110));
        else if (place == QLatin1String("field"))
            QTest::mouseMove(edit, QPoint(150, 15));
        else
            QTest::mouseMove(Child(place), Child(place)->rect().center());
    }

    QWidget window;
    CustomLineEdit* edit = new CustomLineEdit(&window);
    QLineEdit* other = new QLineEdit(&window);
    QStringList log;
};

} // namespace

class TestCustomLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void editCycle();
    void leftControlAndCursorFollowTheMouse_data();
    void leftControlAndCursorFollowTheMouse();
    void fillComboBox();
    void namesForStyleSheets();
};

// A failed case must not leave cursors for the next one.
void TestCustomLineEdit::init()
{
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
}

void TestCustomLineEdit::editCycle()
{
    Fixture f;
    QVERIFY(f.Active());
    f.other->setFocus();
    f.edit->setFocus(Qt::OtherFocusReason); // not by mouse or tab: no cycle yet
    QVERIFY(f.log.isEmpty());
    QTest::keyClicks(f.edit, QStringLiteral("ab"));
    QCOMPARE(f.log, QStringList{"start"});
    QTest::keyClick(f.edit, Qt::Key_Return);
    QCOMPARE(f.log, (QStringList{"start", "accept"}));
    // Return again without typing: the cycle is closed, nothing more.
    QTest::keyClick(f.edit, Qt::Key_Return);
    QCOMPARE(f.log.size(), 2);
    // Return on an empty field cancels, cycle or not.
    f.edit->clear();
    QTest::keyClick(f.edit, Qt::Key_Return);
    QCOMPARE(f.log, (QStringList{"start", "accept", "cancel"}));

    f.log.clear();
    f.other->setFocus();
    QTest::keyClick(f.other, Qt::Key_Tab);
    QTRY_VERIFY(f.edit->hasFocus());
    QCOMPARE(f.log, QStringList{"start"});
    QTest::keyClicks(f.edit, QStringLiteral("x"));
    // The left button closes a cycle without accepting it.
    f.edit->ShowButton();
    QTest::mouseClick(f.Child(QStringLiteral("Button")), Qt::LeftButton);
    QTest::keyClick(f.edit, Qt::Key_Return);
    QCOMPARE(f.log, (QStringList{"start", "button"}));

    f.log.clear();
    f.other->setFocus();
    QTest::mouseClick(f.edit, Qt::LeftButton, {}, QPoint(150, 15));
    QTRY_VERIFY(f.edit->hasFocus());
    QCOMPARE(f.log, QStringList{"start"});
}

// The override cursor stack must end balanced after any sequence of enters and leaves.
void TestCustomLineEdit::leftControlAndCursorFollowTheMouse_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("route");
    QTest::addColumn<QStringList>("pages"); // the left control at each stop
    QTest::addColumn<QList<int>>("cursors"); // the override cursor at each stop, -1 for none
    const int none = -1;
    const int hand = Qt::PointingHandCursor;
    const int arrow = Qt::ArrowCursor;
    QTest::newRow("mode 0: nothing") << 0 << QStringList{"rest"} << QStringList{""} << QList<int>{none};
    QTest::newRow("unknown mode: nothing") << 7 << QStringList{"rest"} << QStringList{""} << QList<int>{none};
    QTest::newRow("over the button and out")
        << 3 << QStringList{"ButtonContainer", "rest"} << QStringList{"Button", "Button"} << QList<int>{hand, none};
    QTest::newRow("button, then combo box") << 3 << QStringList{"ButtonContainer", "ComboBox", "rest"}
                                            << QStringList{"Button", "Button", "Button"}
                                            << QList<int>{hand, arrow, none};
    // The animation turns into the button under the mouse.
    QTest::newRow("combo box, field, button")
        << 2 << QStringList{"ComboBox", "field", "ButtonContainer", "field", "rest"}
        << QStringList{"AnimationLabel", "AnimationLabel", "Button", "AnimationLabel", "AnimationLabel"}
        << QList<int>{arrow, none, hand, none, none};
    // The label changes neither the page nor the cursor.
    QTest::newRow("label mode") << 1 << QStringList{"ButtonContainer", "ComboBox", "ButtonContainer", "rest"}
                                << QStringList{"StaticLabel", "StaticLabel", "StaticLabel", "StaticLabel"}
                                << QList<int>{none, arrow, none, none};
}

void TestCustomLineEdit::leftControlAndCursorFollowTheMouse()
{
    QFETCH(int, mode);
    QFETCH(QStringList, route);
    QFETCH(QStringList, pages);
    QFETCH(QList<int>, cursors);
    Fixture f;
    QVERIFY(f.Active());
    f.edit->setLeftControlMode(mode);
    f.edit->FillComboBox({QStringLiteral("eu-west"), QStringLiteral("us-east")}, 0);
    f.MoveTo(QStringLiteral("rest"));
    for (int stop = 0; stop < route.size(); ++stop) {
        f.MoveTo(route.at(stop));
        QTest::qWait(30);
        QTRY_COMPARE(f.Page()->objectName(), pages.at(stop));
        QTRY_COMPARE(OverrideCursorShape(), cursors.at(stop));
    }
}

void TestCustomLineEdit::fillComboBox()
{
    CustomLineEdit edit;
    QSignalSpy changed(&edit, &CustomLineEdit::ComboBoxIndexChanged);
    const QStringList items{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    edit.FillComboBox(items, -1); // keeps the combo box's own choice
    QCOMPARE(edit.ComboBoxCurrentIndex(), 0);
    QVERIFY(!changed.isEmpty());
    auto* combo = edit.findChild<QComboBox*>(QStringLiteral("ComboBox"));
    QCOMPARE(combo->itemData(1, Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    edit.FillComboBox(items, 2);
    QCOMPARE(edit.ComboBoxCurrentIndex(), 2);
    edit.FillComboBox(items, 3); // out of range
    QCOMPARE(edit.ComboBoxCurrentIndex(), 0);
    edit.FillComboBox(items, -2); // clears the selection
    QCOMPARE(edit.ComboBoxCurrentIndex(), -1);
}

// Style sheets and screen readers find the parts by these names.
void TestCustomLineEdit::namesForStyleSheets()
{
    CustomLineEdit edit;
    for (const char* name : {"ButtonContainer", "StaticLabel", "AnimationLabel", "Button", "ComboBox"}) {
        QWidget* child = edit.findChild<QWidget*>(QLatin1String(name));
        QVERIFY2(child, name);
        QCOMPARE(child->accessibleName(), QStringLiteral("CustomLineEdit_") + QLatin1String(name));
    }
    QCOMPARE(edit.findChild<QStackedWidget*>()->accessibleName(), QStringLiteral("CustomLineEdit_StackedWidget"));
    QVERIFY(edit.findChild<OrvantaQT::MovieWidget*>()->property("PreloaderAnimation16").toBool());
}

QTEST_MAIN(TestCustomLineEdit)
#include "tst_custom_line_edit.moc"
