#include <qt_halvo/widgets/input/custom_combo_box.h>

#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTableView>

using OrvantaQT::CustomComboBox;

class TestCustomComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsArePagesInFramesStyledByPlace();
};

void TestCustomComboBox::rowsArePagesInFramesStyledByPlace()
{
    QWidget window;
    window.resize(300, 200);
    auto* combo = new CustomComboBox(&window);
    combo->setGeometry(10, 10, 220, 40);
    for (int i = 0; i < 3; ++i) {
        auto* page = new QLabel(QStringLiteral("Page %1").arg(i));
        page->setMinimumHeight(i == 1 ? 0 : 40);
        combo->AddPage(page);
    }
    const QStringList sheets{QStringLiteral("QFrame { border-top: 2px solid red; }"),
                             QStringLiteral("QFrame { border: none; }"),
                             QStringLiteral("QFrame { border-bottom: 2px solid blue; }")};
    combo->SetTopItemFrameStyleSheet(sheets.at(0));
    combo->SetCenterItemFrameStyleSheet(sheets.at(1));
    combo->SetBottomItemFrameStyleSheet(sheets.at(2));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->Pages()->count(), 3);
    auto* view = qobject_cast<QTableView*>(combo->view());
    QVERIFY(view);
    const auto frame = [combo, view](int row) { return view->indexWidget(combo->model()->index(row, 0)); };
    QCOMPARE(view->rowHeight(0), 40);
    QCOMPARE(view->rowHeight(1), combo->Pages()->widget(1)->sizeHint().height()); // no minimum height
    QCOMPARE(qobject_cast<OrvantaQT::WidgetRenderer*>(frame(2))->Page(), combo->Pages()->widget(2));

    combo->showPopup();
    QTRY_VERIFY(view->isVisible());
    for (int row = 0; row < 3; ++row)
        QCOMPARE(frame(row)->styleSheet(), sheets.at(row));
    // Chosen in the list: the page shows in the field.
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(combo->model()->index(2, 0)).center());
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(combo->currentIndex(), 2);
    QCOMPARE(combo->Pages()->currentIndex(), 2);
    QSignalSpy changed(combo, QOverload<int>::of(&QComboBox::currentIndexChanged));
    combo->SetCurrentIndex(2);
    QCOMPARE(changed.count(), 0);
    combo->SetCurrentIndex(0);
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(combo->Pages()->currentIndex(), 0);

    // Changed while closed: taken at the next opening.
    const QString margin = QStringLiteral("QFrame { margin: 1px; }");
    combo->SetCenterItemFrameStyleSheet(margin);
    combo->showPopup();
    QCOMPARE(frame(1)->styleSheet(), margin);
    combo->hidePopup();

    // The only row left is in the centre.
    combo->RemovePage(1);
    QCOMPARE(combo->count(), 2);
    QCOMPARE(combo->Pages()->count(), 2);
    combo->RemovePage(1);
    combo->showPopup();
    QCOMPARE(frame(0)->styleSheet(), margin);
    combo->hidePopup();
}

QTEST_MAIN(TestCustomComboBox)
#include "tst_custom_combo_box.moc"
