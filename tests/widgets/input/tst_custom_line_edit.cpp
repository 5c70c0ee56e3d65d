#include <qt_halvo/widgets/input/custom_line_edit.h>
#include <qt_halvo/widgets/input/right_align_combo_box_p.h>

#include "test_support.h"

// The edit 300 x 30 in a window, with a second field to take the focus from it.
struct Window : QWidget
{
    Window()
    {
        resize(400, 120);
        edit->setGeometry(10, 10, 300, 30);
        other->move(10, 60);
        edit->FillComboBox({QStringLiteral("eu-west"), QStringLiteral("us-east")}, 0);
        show();
        activateWindow();
    }
    template <typename Part = QWidget>
    Part* Find(const QString& name = QString()) const { return edit->findChild<Part*>(name); }

    OrvantaQT::CustomLineEdit* edit = new OrvantaQT::CustomLineEdit(this);
    QLineEdit* other = new QLineEdit(this);
    TestSupport::SignalLog log{edit, {"StartEditText()", "AcceptEditText()", "CancelEditText()", "ButtonClicked()"}};
};

class TestCustomLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() // a failed case must not leave cursors for the next one
    {
        while (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
    }

    // A cycle starts on typing, or on focus by mouse or tab; Return accepts it, or cancels on
    // an empty field; the left button closes it too.
    void editCycle()
    {
        Window w;
        QVERIFY(QTest::qWaitForWindowActive(&w));
        w.edit->setFocus(Qt::OtherFocusReason);
        QTest::keyClicks(w.edit, QStringLiteral("ab"));
        QTest::keyClick(w.edit, Qt::Key_Return);
        QTest::keyClick(w.edit, Qt::Key_Return);
        w.edit->clear();
        QTest::keyClick(w.edit, Qt::Key_Return);
        w.log.Note(QStringLiteral("click"));
        QTest::mouseClick(w.edit, Qt::LeftButton, {}, QPoint(150, 15)); // focused already
        QTest::keyClicks(w.edit, QStringLiteral("x"));
        w.edit->ShowButton();
        QVERIFY(w.Find(QStringLiteral("Button"))->isVisible());
        QTest::mouseClick(w.Find(QStringLiteral("Button")), Qt::LeftButton);
        QTest::keyClick(w.edit, Qt::Key_Return);
        w.log.Note(QStringLiteral("tab"));
        w.other->setFocus();
        QTest::keyClick(w.other, Qt::Key_Tab);
        QTRY_VERIFY(w.edit->hasFocus());
        QCOMPARE(w.log.Take(), TestSupport::Words("StartEditText() AcceptEditText() CancelEditText() click "
                                                  "StartEditText() ButtonClicked() tab StartEditText()"));
    }

    // The left control and the override cursor at each stop of the mouse ("rest" is away
    // from the edit, "field" on its text): the animation turns into the button under the
    // mouse, the label changes nothing. The cursors must end balanced.
    void leftControlAndCursorFollowTheMouse()
    {
        Window w;
        QVERIFY(QTest::qWaitForWindowActive(&w));
        const auto now = [&w] {
            const QCursor* cursor = QGuiApplication::overrideCursor();
            return w.Find<QStackedWidget>()->currentWidget()->objectName() + QLatin1Char(' ')
                + (!cursor ? "none" : cursor->shape() == Qt::ArrowCursor ? "arrow" : "hand");
        };
        for (const auto& [mode, route, seen] : {
                 std::tuple(7, "rest", " none"),
                 std::tuple(3, "ButtonContainer ComboBox rest", "Button hand,Button arrow,Button none"),
                 std::tuple(2, "ComboBox field ButtonContainer field rest",
                            "AnimationLabel arrow,AnimationLabel none,Button hand,AnimationLabel none,AnimationLabel none"),
                 std::tuple(1, "ButtonContainer ComboBox ButtonContainer rest",
                            "StaticLabel none,StaticLabel arrow,StaticLabel none,StaticLabel none")}) {
            w.edit->setLeftControlMode(mode);
            const QStringList stops = QString::fromLatin1(route).split(QLatin1Char(' '));
            for (int i = 0; i < stops.size(); ++i) {
                if (QWidget* part = w.Find(stops.at(i)))
                    QTest::mouseMove(part, part->rect().center());
                else
                    QTest::mouseMove(&w, stops.at(i) == QLatin1String("rest") ? QPoint(390, 110) : QPoint(160, 25));
                QTRY_COMPARE(now(), QString::fromLatin1(seen).split(QLatin1Char(',')).at(i));
            }
        }
    }

    // The left control at the left end and the combo box at the right end, as wide as they ask;
    // the combo box draws its text right-aligned, clear of the arrow.
    void partsAndComboBox()
    {
        Window w;
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QWidget* left = w.Find(QStringLiteral("ButtonContainer"));
        auto* combo = w.Find<OrvantaQT::RightAlignComboBox>(QStringLiteral("ComboBox"));
        QCOMPARE(left->geometry(), QRect(0, 0, left->sizeHint().width(), 30));
        QCOMPARE(combo->geometry(), QRect(300 - combo->sizeHint().width(), 0, combo->sizeHint().width(), 30));
        const QImage drawn = TestSupport::Render(combo);
        w.edit->ResetComboBoxSelection();
        const QRect text = TestSupport::Changed(drawn, TestSupport::Render(combo)); // the current item's
        QVERIFY(text.left() >= combo->ArrowWidth() && text.right() < combo->width() - combo->ArrowWidth());
        QCOMPARE(combo->itemData(1, Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
        // At -1 and past the end the combo box chooses as it would; below -1 nothing.
        for (const auto& [index, current] : std::initializer_list<std::pair<int, int>>{{-1, 0}, {1, 1}, {2, 0}, {-2, -1}}) {
            w.edit->FillComboBox({QStringLiteral("a"), QStringLiteral("b")}, index);
            QCOMPARE(w.edit->ComboBoxCurrentIndex(), current);
        }
    }
};

QTEST_MAIN(TestCustomLineEdit)
#include "tst_custom_line_edit.moc"
