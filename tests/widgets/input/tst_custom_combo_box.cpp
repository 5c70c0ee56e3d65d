#include <qt_halvo/widgets/input/custom_combo_box.h>

#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTableView>

using OrvantaQT::CustomComboBox;

namespace {

QLabel* Page(const QString& text, int minimumHeight)
{
    auto* page = new QLabel(text);
    page->setMinimumHeight(minimumHeight);
    return page;
}

struct Fixture
{
    explicit Fixture(int pages)
    {
        window.resize(300, 200);
        combo = new CustomComboBox(&window);
        combo->setGeometry(10, 10, 220, 40);
        for (int i = 0; i < pages; ++i)
            combo->AddPage(Page(QStringLiteral("Page %1").arg(i), i == 1 ? 0 : 40));
        combo->SetTopItemFrameStyleSheet(QStringLiteral("QFrame { border-top: 2px solid red; }"));
        combo->SetCenterItemFrameStyleSheet(QStringLiteral("QFrame { border: none; }"));
        combo->SetBottomItemFrameStyleSheet(QStringLiteral("QFrame { border-bottom: 2px solid blue; }"));
        window.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&window); }
    QWidget* Frame(int row) const { return combo->view()->indexWidget(combo->model()->index(row, 0)); }

    QWidget window;
    CustomComboBox* combo = nullptr;
};

} // namespace

class TestCustomComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsArePages();
    void frameSheetsFollowTheRowsPlace_data();
    void frameSheetsFollowTheRowsPlace();
    void choosingARowShowsItsPage();
};

void TestCustomComboBox::rowsArePages()
{
    Fixture f(3);
    QVERIFY(f.Exposed());
    QCOMPARE(f.combo->count(), 3);
    QCOMPARE(f.combo->Pages()->count(), 3);
    auto* table = qobject_cast<QTableView*>(f.combo->view());
    QVERIFY(table);
    QCOMPARE(table->rowHeight(0), 40);
    QCOMPARE(table->rowHeight(1), f.combo->Pages()->widget(1)->sizeHint().height()); // minimum height 0
    QCOMPARE(qobject_cast<OrvantaQT::WidgetRenderer*>(f.Frame(2))->Page(), f.combo->Pages()->widget(2));

    QSignalSpy changed(f.combo, QOverload<int>::of(&QComboBox::currentIndexChanged));
    f.combo->SetCurrentIndex(f.combo->currentIndex());
    QCOMPARE(changed.count(), 0);
    f.combo->SetCurrentIndex(2);
    QCOMPARE(f.combo->currentIndex(), 2);
    QCOMPARE(f.combo->Pages()->currentIndex(), 2);

    f.combo->RemovePage(1);
    QCOMPARE(f.combo->count(), 2);
    QCOMPARE(f.combo->Pages()->count(), 2);
}

void TestCustomComboBox::frameSheetsFollowTheRowsPlace_data()
{
    QTest::addColumn<int>("pages");
    QTest::addColumn<QStringList>("sheets");
    QTest::newRow("one page: centre") << 1 << QStringList{"QFrame { border: none; }"};
    QTest::newRow("three pages") << 3
                                 << QStringList{"QFrame { border-top: 2px solid red; }", "QFrame { border: none; }",
                                                "QFrame { border-bottom: 2px solid blue; }"};
}

void TestCustomComboBox::frameSheetsFollowTheRowsPlace()
{
    QFETCH(int, pages);
    QFETCH(QStringList, sheets);
    Fixture f(pages);
    QVERIFY(f.Exposed());
    f.combo->showPopup();
    QTRY_VERIFY(f.combo->view()->isVisible());
    for (int row = 0; row < pages; ++row)
        QCOMPARE(f.Frame(row)->styleSheet(), sheets.at(row));
    f.combo->hidePopup();

    // Changed while closed: taken at the next opening.
    f.combo->SetCenterItemFrameStyleSheet(QStringLiteral("QFrame { margin: 1px; }"));
    QVERIFY(f.Frame(0)->styleSheet() != QStringLiteral("QFrame { margin: 1px; }") || pages == 1);
    f.combo->showPopup();
    QCOMPARE(f.Frame(pages == 1 ? 0 : 1)->styleSheet(), QStringLiteral("QFrame { margin: 1px; }"));
    f.combo->hidePopup();
}

void TestCustomComboBox::choosingARowShowsItsPage()
{
    Fixture f(3);
    QVERIFY(f.Exposed());
    f.combo->showPopup();
    QAbstractItemView* view = f.combo->view();
    QTRY_VERIFY(view->isVisible());
    const QRect row = view->visualRect(f.combo->model()->index(2, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, row.center());
    QTRY_VERIFY(!view->isVisible());
    QCOMPARE(f.combo->currentIndex(), 2);
    QCOMPARE(f.combo->Pages()->currentIndex(), 2);
}

QTEST_MAIN(TestCustomComboBox)
#include "tst_custom_combo_box.moc"
