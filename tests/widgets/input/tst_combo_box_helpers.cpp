#include <qt_halvo/widgets/input/combo_box_helpers.h>
#include <qt_halvo/widgets/input/combo_box_with_placeholder.h>

#include <QtGui/QStandardItemModel>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>

using namespace OrvantaQT;

namespace {

struct Window
{
    Window()
    {
        window.resize(300, 200);
        window.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&window); }
    QWidget window;
};

} // namespace

class TestComboBoxHelpers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void releaseOverADisabledRowKeepsThePopupOpen();
    void aClickAnywhereOpensTheReadOnlyList();
    void placeholderOnlyWithoutACurrentItem();
    void accessibleNamesOfRows_data();
    void accessibleNamesOfRows();
};

void TestComboBoxHelpers::releaseOverADisabledRowKeepsThePopupOpen()
{
    Window w;
    auto* combo = new QComboBox(&w.window);
    combo->setGeometry(10, 10, 200, 30);
    combo->addItems({QStringLiteral("One"), QStringLiteral("Two (disabled)"), QStringLiteral("Three")});
    auto* model = qobject_cast<QStandardItemModel*>(combo->model());
    model->item(1)->setEnabled(false);
    new DisabledItemComboBoxHelper(combo);
    QVERIFY(w.Exposed());

    combo->showPopup();
    QAbstractItemView* view = combo->view();
    QTRY_VERIFY(view->isVisible());
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(model->index(1, 0)).center());
    QTest::qWait(100);
    QVERIFY(view->isVisible());
    QCOMPARE(combo->currentIndex(), 0);

    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(model->index(2, 0)).center());
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(combo->currentIndex(), 2);
}

void TestComboBoxHelpers::aClickAnywhereOpensTheReadOnlyList()
{
    Window w;
    auto* combo = new QComboBox(&w.window);
    combo->setGeometry(10, 10, 200, 30);
    combo->addItems({QStringLiteral("One"), QStringLiteral("Two")});
    new EditableReadOnlyComboBoxHelper(combo);
    QVERIFY(w.Exposed());
    QLineEdit* edit = combo->lineEdit();
    QVERIFY(edit && edit->isReadOnly());
    QVERIFY(edit->testAttribute(Qt::WA_TransparentForMouseEvents));
    QCOMPARE(edit->property("ComboBoxEmbedded").toBool(), true);
    QCOMPARE(combo->contextMenuPolicy(), Qt::NoContextMenu);

    // On the text, far from the arrow.
    QTest::mouseClick(combo, Qt::LeftButton, {}, QPoint(15, 15));
    QTRY_VERIFY(combo->view()->isVisible());
    combo->hidePopup();
    QTRY_VERIFY(!combo->view()->isVisible());
    QCOMPARE(edit->text(), QStringLiteral("One"));
}

void TestComboBoxHelpers::placeholderOnlyWithoutACurrentItem()
{
    Window w;
    auto* combo = new ComboBoxWithPlaceholder(&w.window);
    combo->setGeometry(10, 10, 200, 30);
    auto* plain = new ComboBoxWithPlaceholder(&w.window);
    plain->setGeometry(10, 60, 200, 30);
    QVERIFY(w.Exposed());
    combo->SetPlaceholderText(QStringLiteral("Choose a colour"));
    QCOMPARE(combo->GetPlaceholderText(), QStringLiteral("Choose a colour"));
    QVERIFY(combo->grab().toImage() != plain->grab().toImage());

    // With a current item, even one without text, there is no placeholder.
    combo->addItem(QString());
    plain->addItem(QString());
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(combo->grab().toImage(), plain->grab().toImage());
}

void TestComboBoxHelpers::accessibleNamesOfRows_data()
{
    QTest::addColumn<QString>("comboName");
    QTest::addColumn<QString>("stored");
    QTest::newRow("unnamed combo box") << QString() << "Red";
    QTest::newRow("named combo box") << "Colour" << "Colour_Red";
}

void TestComboBoxHelpers::accessibleNamesOfRows()
{
    QFETCH(QString, comboName);
    QFETCH(QString, stored);
    QComboBox combo;
    combo.addItems({QStringLiteral("red"), QStringLiteral("green")});
    combo.setAccessibleName(comboName);
    SetAccessibleNameForComboboxItem(&combo, 0, QStringLiteral("Red"));
    QCOMPARE(combo.itemData(0, Qt::AccessibleTextRole).toString(), stored);
    QVERIFY(!combo.itemData(1, Qt::AccessibleTextRole).isValid());
}

QTEST_MAIN(TestComboBoxHelpers)
#include "tst_combo_box_helpers.moc"
