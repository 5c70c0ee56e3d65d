#include <qt_halvo/widgets/input/button_line_edit.h>
#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>
#include <qt_halvo/widgets/input/right_align_combo_box_p.h>

#include "test_support.h"

using namespace OrvantaQT;

class TestInputHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // At the right end, its clicks reported in order, a pointing hand over it.
    void buttonAtTheRightEnd()
    {
        QWidget window;
        auto* edit = new ButtonLineEdit(&window);
        edit->setGeometry(10, 10, 250, 30);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QToolButton* button = edit->Button();
        QVERIFY(button->geometry().right() == 249 && button->focusPolicy() == Qt::ClickFocus);
        TestSupport::SignalLog log(edit, {"buttonPressed()", "buttonReleased()", "buttonClicked()"});
        QTest::mouseMove(button, button->rect().center());
        QTRY_VERIFY(QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::PointingHandCursor);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(log.Take(), TestSupport::Words("buttonPressed() buttonReleased() buttonClicked()"));
        QTest::mouseMove(&window, QPoint(5, 5));
        QTRY_VERIFY(!QGuiApplication::overrideCursor());
    }

    // A release over a disabled row keeps the list open; read-only, a click anywhere opens it.
    // Rows' accessible names are prefixed with the combo box's own, if any.
    void helpersOpenAndCloseTheList()
    {
        QComboBox combo;
        new DisabledItemComboBoxHelper(&combo);
        combo.addItems({QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")});
        qobject_cast<QStandardItemModel*>(combo.model())->item(1)->setEnabled(false);
        combo.resize(200, 30);
        QVERIFY(TestSupport::ShowAndWait(&combo));
        combo.showPopup();
        QAbstractItemView* view = combo.view();
        QTRY_VERIFY(view->isVisible());
        for (int row : {1, 2})
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->model()->index(row, 0)).center());
        QTRY_VERIFY(!view->isVisible());
        QCOMPARE(combo.currentIndex(), 2);

        new EditableReadOnlyComboBoxHelper(&combo);
        QTest::mouseClick(&combo, Qt::LeftButton, {}, QPoint(15, 15)); // far from the arrow
        QTRY_VERIFY(view->isVisible());
        QVERIFY(combo.lineEdit()->isReadOnly() && combo.lineEdit()->property("ComboBoxEmbedded").toBool());
        QCOMPARE(combo.contextMenuPolicy(), Qt::NoContextMenu);
        SetAccessibleNameForComboboxItem(&combo, 0, QStringLiteral("First"));
        combo.setAccessibleName(QStringLiteral("Rows"));
        SetAccessibleNameForComboboxItem(&combo, 1, QStringLiteral("Second"));
        QCOMPARE(combo.itemData(0, Qt::AccessibleTextRole).toString() + combo.itemData(1, Qt::AccessibleTextRole).toString(),
                 QStringLiteral("FirstRows_Second"));
    }

    // Only without a current item, even one without text.
    void placeholderOnlyWithoutACurrentItem()
    {
        ComboBoxWithPlaceholder combo;
        QVERIFY(TestSupport::ShowAndWait(&combo));
        const QImage plain = combo.grab().toImage();
        combo.SetPlaceholderText(QStringLiteral("Choose a colour"));
        QVERIFY(combo.grab().toImage() != plain);
        combo.addItem(QString());
        QCOMPARE(combo.grab().toImage(), plain);
    }

    // Right-aligned, inset by the arrow's width on both sides, also when cut for the ending.
    void textEndsClearOfTheArrow()
    {
        RightAlignComboBox combo;
        combo.resize(260, 30);
        QVERIFY(TestSupport::ShowAndWait(&combo));
        const QImage empty = TestSupport::Render(&combo);
        combo.SetTextToDraw(QStringLiteral("eu-west"));
        const QRect text = TestSupport::Changed(empty, TestSupport::Render(&combo));
        const int arrow = combo.ArrowWidth();
        QVERIFY(text.left() > 130 && text.right() < 260 - arrow && text.right() > 260 - arrow - 12);
        combo.SetConstEnding(QStringLiteral(".example.org"));
        combo.SetAppendEnding(true);
        combo.SetTextToDraw(QStringLiteral("a-very-long-server-name-that-cannot-fit"));
        const QRect cut = TestSupport::Changed(empty, TestSupport::Render(&combo));
        QVERIFY(cut.left() >= arrow && cut.right() < 260 - arrow);
    }
};

QTEST_MAIN(TestInputHelpers)
#include "tst_input_helpers.moc"
