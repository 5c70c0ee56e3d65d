#include <qt_halvo/widgets/input/custom_combo_box.h>

#include "test_support.h"

class TestCustomComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The field shows the current page left of the arrow. The list's rows are as tall as their
    // pages' minimum height (or size hint) and show them in frames styled by place, top,
    // centre or bottom, at each opening (here each page names the sheet its row should get);
    // a single row is central.
    void rowsArePagesInFramesStyledByPlace()
    {
        QWidget window;
        auto* combo = new OrvantaQT::CustomComboBox(&window);
        combo->setGeometry(10, 10, 220, 40);
        const QStringList sheets{"QFrame { margin: 0px; }", "QFrame { margin: 1px; }", "QFrame { margin: 2px; }", "QFrame { margin: 3px; }"};
        for (int i = 0; i < 3; ++i) {
            auto* page = new QLabel(sheets.at(i));
            page->setMinimumHeight(i == 1 ? 0 : 40);
            combo->AddPage(page);
        }
        combo->SetTopItemFrameStyleSheet(sheets.at(0));
        combo->SetCenterItemFrameStyleSheet(sheets.at(1));
        combo->SetBottomItemFrameStyleSheet(sheets.at(2));
        QVERIFY(TestSupport::ShowAndWait(&window));
        QStyleOptionComboBox option;
        option.initFrom(combo);
        const int arrow = combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, combo).width();
        QCOMPARE(combo->Pages()->geometry(), QRect(0, 0, 220 - arrow, 40));
        QImage blank(combo->size(), QImage::Format_ARGB32_Premultiplied);
        blank.fill(Qt::transparent);
        QVERIFY(!TestSupport::Changed(TestSupport::Render(combo), blank, QRect(220 - arrow, 0, arrow, 40)).isEmpty());
        auto* view = combo->findChild<QTableView*>(QStringLiteral("CustomComboBoxView")); // for style sheets
        const auto frame = [combo, view](int row) {
            return qobject_cast<OrvantaQT::WidgetRenderer*>(view->indexWidget(combo->model()->index(row, 0)));
        };
        combo->showPopup();
        QTRY_COMPARE(frame(0)->height(), 40);
        QCOMPARE(frame(1)->height(), combo->Pages()->widget(1)->sizeHint().height());
        for (int row = 0; row < 3; ++row)
            QCOMPARE(qobject_cast<QLabel*>(frame(row)->Page())->text(), frame(row)->styleSheet());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(combo->model()->index(2, 0)).center());
        QTRY_COMPARE(combo->Pages()->currentIndex(), 2);
        TestSupport::SignalLog log(combo, {"currentIndexChanged(int)"});
        combo->SetCurrentIndex(2);
        combo->SetCurrentIndex(0);
        QCOMPARE(log.Take(), QStringList{"currentIndexChanged(0)"});
        QCOMPARE(combo->Pages()->currentIndex(), 0);
        combo->SetCenterItemFrameStyleSheet(sheets.at(3));
        combo->RemovePage(1);
        combo->RemovePage(1);
        combo->showPopup();
        QCOMPARE(frame(0)->styleSheet() + QString::number(combo->Pages()->count()), sheets.at(3) + "1");
    }
};

QTEST_MAIN(TestCustomComboBox)
#include "tst_custom_combo_box.moc"
