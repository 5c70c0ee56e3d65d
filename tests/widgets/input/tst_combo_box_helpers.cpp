#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>

#include <QtGui/QStandardItemModel>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>

using namespace OrvantaQT;

namespace {

// A combo box shown as a window of its own.
void Show(QComboBox& combo, const QStringList& items)
{
    combo.addItems(items);
    combo.resize(200, 30);
    combo.show();
}

} // namespace

class TestComboBoxHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void releaseOverADisabledRowKeepsThePopupOpen();
    void aClickAnywhereOpensTheReadOnlyList();
    void placeholderOnlyWithoutACurrentItem();
    void accessibleNamesOfRows();
};

void TestComboBoxHelpers::releaseOverADisabledRowKeepsThePopupOpen()
{
    QComboBox combo;
    new DisabledItemComboBoxHelper(&combo);
    Show(combo, {QStringLiteral("One"), QStringLiteral("Two (disabled)"), QStringLiteral("Three")});
    auto* model = qobject_cast<QStandardItemModel*>(combo.model());
    model->item(1)->setEnabled(false);
    QVERIFY(QTest::qWaitForWindowExposed(&combo));

    combo.showPopup();
    QAbstractItemView* view = combo.view();
    QTRY_VERIFY(view->isVisible());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(model->index(1, 0)).center());
    QTest::qWait(100);
    QVERIFY(view->isVisible());
    QCOMPARE(combo.currentIndex(), 0);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(model->index(2, 0)).center());
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(combo.currentIndex(), 2);
}

void TestComboBoxHelpers::aClickAnywhereOpensTheReadOnlyList()
{
    QComboBox combo;
    Show(combo, {QStringLiteral("One"), QStringLiteral("Two")});
    new EditableReadOnlyComboBoxHelper(&combo);
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QLineEdit* edit = combo.lineEdit();
    QVERIFY(edit && edit->isReadOnly());
    QVERIFY(edit->testAttribute(Qt::WA_TransparentForMouseEvents));
    QCOMPARE(edit->property("ComboBoxEmbedded").toBool(), true);
    QCOMPARE(combo.contextMenuPolicy(), Qt::NoContextMenu);

    // On the text, far from the arrow.
    QTest::mouseClick(&combo, Qt::LeftButton, {}, QPoint(15, 15));
    QTRY_VERIFY(combo.view()->isVisible());
    combo.hidePopup();
    QTRY_VERIFY(!combo.view()->isVisible());
    QCOMPARE(edit->text(), QStringLiteral("One"));
}

// Side by side in one window, so that both are painted as active.
void TestComboBoxHelpers::placeholderOnlyWithoutACurrentItem()
{
    QWidget window;
    auto* combo = new ComboBoxWithPlaceholder(&window);
    auto* plain = new ComboBoxWithPlaceholder(&window);
    plain->move(0, 40);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    combo->SetPlaceholderText(QStringLiteral("Choose a colour"));
    QVERIFY(combo->grab().toImage() != plain->grab().toImage());
    // With a current item, even one without text, there is no placeholder.
    combo->addItem(QString());
    plain->addItem(QString());
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(combo->grab().toImage(), plain->grab().toImage());
}

// Prefixed with the combo box's own name when it has one.
void TestComboBoxHelpers::accessibleNamesOfRows()
{
    QComboBox combo;
    combo.addItems({QStringLiteral("red"), QStringLiteral("green")});
    SetAccessibleNameForComboboxItem(&combo, 0, QStringLiteral("Red"));
    QCOMPARE(combo.itemData(0, Qt::AccessibleTextRole).toString(), QStringLiteral("Red"));
    QVERIFY(!combo.itemData(1, Qt::AccessibleTextRole).isValid());
    combo.setAccessibleName(QStringLiteral("Colour"));
    SetAccessibleNameForComboboxItem(&combo, 1, QStringLiteral("Green"));
    QCOMPARE(combo.itemData(1, Qt::AccessibleTextRole).toString(), QStringLiteral("Colour_Green"));
}

QTEST_MAIN(TestComboBoxHelpers)
#include "tst_combo_box_helpers.moc"
