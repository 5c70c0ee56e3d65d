#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>

#include "test_support.h"

using namespace OrvantaQT;

class TestComboBoxHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void releaseOverADisabledRowKeepsTheListOpen()
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
        const auto click = [view](int row) {
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->model()->index(row, 0)).center());
        };
        click(1);
        QTest::qWait(100);
        QVERIFY(view->isVisible());
        click(2);
        QTRY_VERIFY(!view->isVisible());
        QCOMPARE(combo.currentIndex(), 2);
    }

    // A click anywhere opens the list; the text cannot be edited.
    void readOnlyTextOpensTheList()
    {
        QComboBox combo;
        combo.addItems({QStringLiteral("One"), QStringLiteral("Two")});
        new EditableReadOnlyComboBoxHelper(&combo);
        combo.resize(200, 30);
        QVERIFY(TestSupport::ShowAndWait(&combo));
        QTest::mouseClick(&combo, Qt::LeftButton, {}, QPoint(15, 15)); // far from the arrow
        QTRY_VERIFY(combo.view()->isVisible());
        combo.hidePopup();
        QLineEdit* edit = combo.lineEdit();
        QVERIFY(edit->isReadOnly() && edit->property("ComboBoxEmbedded").toBool()); // for style sheets
        QCOMPARE(combo.contextMenuPolicy(), Qt::NoContextMenu);
    }

    // Side by side in one window, so that both are painted as active.
    void placeholderOnlyWithoutACurrentItem()
    {
        QWidget window;
        auto* combo = new ComboBoxWithPlaceholder(&window);
        auto* plain = new ComboBoxWithPlaceholder(&window);
        plain->move(0, 40);
        QVERIFY(TestSupport::ShowAndWait(&window));
        combo->SetPlaceholderText(QStringLiteral("Choose a colour"));
        QVERIFY(combo->grab().toImage() != plain->grab().toImage());
        // A current item, even one without text, hides it.
        combo->addItem(QString());
        plain->addItem(QString());
        QCOMPARE(combo->grab().toImage(), plain->grab().toImage());
    }

    // Prefixed with the combo box's own name when it has one.
    void accessibleNamesOfRows()
    {
        QComboBox combo;
        combo.addItems({QStringLiteral("red"), QStringLiteral("green")});
        SetAccessibleNameForComboboxItem(&combo, 0, QStringLiteral("Red"));
        combo.setAccessibleName(QStringLiteral("Colour"));
        SetAccessibleNameForComboboxItem(&combo, 1, QStringLiteral("Green"));
        QCOMPARE(combo.itemData(0, Qt::AccessibleTextRole).toString(), QStringLiteral("Red"));
        QCOMPARE(combo.itemData(1, Qt::AccessibleTextRole).toString(), QStringLiteral("Colour_Green"));
    }
};

QTEST_MAIN(TestComboBoxHelpers)
#include "tst_combo_box_helpers.moc"
