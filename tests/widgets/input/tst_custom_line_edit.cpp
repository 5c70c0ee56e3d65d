#include <qt_halvo/animation/movie_widget.h>
#include <qt_halvo/widgets/input/custom_line_edit.h>

#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QToolButton>

using OrvantaQT::CustomLineEdit;

namespace {

// A window with the line edit and a second field to take the focus from it.
struct Fixture
{
    Fixture()
    {
        window.resize(400, 120);
        edit = new CustomLineEdit(&window);
        edit->setGeometry(10, 10, 300, 30);
        other = new QLineEdit(&window);
        other->setGeometry(10, 60, 300, 30);
        QObject::connect(edit, &CustomLineEdit::StartEditText, [this] { log << QStringLiteral("start"); });
        QObject::connect(edit, &CustomLineEdit::AcceptEditText, [this] { log << QStringLiteral("accept"); });
        QObject::connect(edit, &CustomLineEdit::CancelEditText, [this] { log << QStringLiteral("cancel"); });
        QObject::connect(edit, &CustomLineEdit::ButtonClicked, [this] { log << QStringLiteral("button"); });
        window.show();
        window.activateWindow();
    }
    bool Exposed() { return QTest::qWaitForWindowActive(&window); }
    QWidget* Container() const { return edit->findChild<QWidget*>(QStringLiteral("ButtonContainer")); }
    QWidget* Page() const { return edit->findChild<QStackedWidget*>()->currentWidget(); }
    QComboBox* Combo() const { return edit->findChild<QComboBox*>(QStringLiteral("ComboBox")); }
    void Rest() { QTest::mouseMove(&window, QPoint(390, 110)); }

    QWidget window;
    CustomLineEdit* edit = nullptr;
    QLineEdit* other = nullptr;
    QStringList log;
};

} // namespace

class TestCustomLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void editCycle();
    void focusStartsACycleOnlyByMouseOrTab();
    void leftControlFollowsModeAndHover();
    void overrideCursorStackStaysBalanced_data();
    void overrideCursorStackStaysBalanced();
    void fillComboBox_data();
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
    QVERIFY(f.Exposed());
    f.other->setFocus();
    f.edit->setFocus(Qt::OtherFocusReason);
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
    QCOMPARE(f.log.last(), QStringLiteral("cancel"));

    // The left button closes a cycle without accepting it.
    f.edit->ShowButton();
    f.log.clear();
    QTest::keyClicks(f.edit, QStringLiteral("x"));
    QTest::mouseClick(f.edit->findChild<QToolButton*>(QStringLiteral("Button")), Qt::LeftButton);
    QTest::keyClick(f.edit, Qt::Key_Return);
    QCOMPARE(f.log, (QStringList{"start", "button"}));
}

void TestCustomLineEdit::focusStartsACycleOnlyByMouseOrTab()
{
    Fixture f;
    QVERIFY(f.Exposed());
    f.other->setFocus();
    f.edit->setFocus(Qt::OtherFocusReason);
    QVERIFY(f.log.isEmpty());
    f.other->setFocus();

    QTest::keyClick(f.other, Qt::Key_Tab);
    QTRY_VERIFY(f.edit->hasFocus());
    QCOMPARE(f.log, QStringList{"start"});
    QTest::keyClicks(f.edit, QStringLiteral("a"));
    QCOMPARE(f.log.size(), 1);
    QTest::keyClick(f.edit, Qt::Key_Return);

    f.log.clear();
    f.other->setFocus();
    QTest::mouseClick(f.edit, Qt::LeftButton, {}, QPoint(150, 15));
    QTRY_VERIFY(f.edit->hasFocus());
    QCOMPARE(f.log, QStringList{"start"});
}

void TestCustomLineEdit::leftControlFollowsModeAndHover()
{
    Fixture f;
    QVERIFY(f.Exposed());
    f.Rest();
    QCOMPARE(f.Page()->objectName(), QString()); // mode 0: the empty page
    f.edit->ShowStaticLabel();
    QCOMPARE(f.Page()->objectName(), QStringLiteral("StaticLabel"));
    f.edit->setLeftControlMode(3);
    QCOMPARE(f.Page()->objectName(), QStringLiteral("Button"));
    f.edit->setLeftControlMode(7);
    QCOMPARE(f.Page()->objectName(), QString());

    f.edit->ShowAnimation();
    QCOMPARE(f.Page()->objectName(), QStringLiteral("AnimationLabel"));
    QVERIFY(qobject_cast<OrvantaQT::MovieWidget*>(f.Page())->property("PreloaderAnimation16").toBool());
    QTest::mouseMove(f.Container(), f.Container()->rect().center());
    QTRY_COMPARE(f.Page()->objectName(), QStringLiteral("Button"));
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::PointingHandCursor);
    f.Rest();
    QTRY_COMPARE(f.Page()->objectName(), QStringLiteral("AnimationLabel"));
    QVERIFY(!QGuiApplication::overrideCursor());

    // In mode 1 hovering the label changes neither the cursor nor the page.
    f.edit->ShowStaticLabel();
    QTest::mouseMove(f.Container(), f.Container()->rect().center());
    QTest::qWait(100);
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(f.Page()->objectName(), QStringLiteral("StaticLabel"));
    f.Rest();
}

void TestCustomLineEdit::overrideCursorStackStaysBalanced_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("route");
    QTest::newRow("over the button and out") << 3 << QStringList{"container", "rest"};
    QTest::newRow("button, then combo box") << 3 << QStringList{"container", "combo", "rest"};
    QTest::newRow("combo box, field, button") << 2 << QStringList{"combo", "field", "container", "field", "rest"};
    QTest::newRow("label mode") << 1 << QStringList{"container", "combo", "container", "rest"};
}

void TestCustomLineEdit::overrideCursorStackStaysBalanced()
{
    QFETCH(int, mode);
    QFETCH(QStringList, route);
    Fixture f;
    QVERIFY(f.Exposed());
    f.edit->setLeftControlMode(mode);
    f.edit->FillComboBox({QStringLiteral("eu-west"), QStringLiteral("us-east")}, 0);
    f.Rest();
    for (const QString& stop : route) {
        if (stop == QLatin1String("container"))
            QTest::mouseMove(f.Container(), f.Container()->rect().center());
        else if (stop == QLatin1String("combo"))
            QTest::mouseMove(f.Combo(), f.Combo()->rect().center());
        else if (stop == QLatin1String("field"))
            QTest::mouseMove(f.edit, QPoint(150, 15));
        else
            f.Rest();
        QTest::qWait(30);
    }
    QTRY_VERIFY(!QGuiApplication::overrideCursor());
}

void TestCustomLineEdit::fillComboBox_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("current");
    QTest::newRow("-1 keeps the combo's own choice") << -1 << 0;
    QTest::newRow("in range") << 2 << 2;
    QTest::newRow("count: unchanged") << 3 << 0;
    QTest::newRow("-2 clears the selection") << -2 << -1;
}

void TestCustomLineEdit::fillComboBox()
{
    QFETCH(int, index);
    QFETCH(int, current);
    CustomLineEdit edit;
    QSignalSpy changed(&edit, &CustomLineEdit::ComboBoxIndexChanged);
    edit.FillComboBox({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}, index);
    QCOMPARE(edit.ComboBoxCurrentIndex(), current);
    QVERIFY(!changed.isEmpty());
    QComboBox* combo = edit.findChild<QComboBox*>(QStringLiteral("ComboBox"));
    QCOMPARE(combo->itemData(1, Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    edit.ResetComboBoxSelection();
    QCOMPARE(edit.ComboBoxCurrentIndex(), -1);
    edit.ClearComboBox();
    QCOMPARE(combo->count(), 0);
}

void TestCustomLineEdit::namesForStyleSheets()
{
    CustomLineEdit edit;
    const QVector<QPair<QString, QString>> names{{"ButtonContainer", "CustomLineEdit_ButtonContainer"},
                                                 {"StaticLabel", "CustomLineEdit_StaticLabel"},
                                                 {"AnimationLabel", "CustomLineEdit_AnimationLabel"},
                                                 {"Button", "CustomLineEdit_Button"},
                                                 {"ComboBox", "CustomLineEdit_ComboBox"}};
    for (const auto& name : names) {
        QWidget* child = edit.findChild<QWidget*>(name.first);
        QVERIFY2(child, qPrintable(name.first));
        QCOMPARE(child->accessibleName(), name.second);
    }
    QCOMPARE(edit.findChild<QStackedWidget*>()->accessibleName(), QStringLiteral("CustomLineEdit_StackedWidget"));
    edit.setComboBoxVisible(false);
    QVERIFY(!edit.comboBoxVisible());
}

QTEST_MAIN(TestCustomLineEdit)
#include "tst_custom_line_edit.moc"
