#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>

#include "test_support.h"

using namespace OrvantaQT;

class TestComboBoxHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

QTEST_MAIN(TestComboBoxHelpers)
#include "tst_combo_box_helpers.moc"
