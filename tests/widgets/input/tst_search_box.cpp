#include <qt_halvo/widgets/input/search_box.h>

#include <QtTest/QtTest>
#include <QtWidgets/QDialog>
#include <QtWidgets/QPushButton>

using OrvantaQT::SearchBox;

namespace {

// A dialog with the box, a second field to take the focus from it, and a default button
// that Return must not reach.
struct Fixture
{
    explicit Fixture(bool searchButton, bool historyButton = false)
    {
        window.resize(320, 100);
        box->setGeometry(10, 10, 220, 26);
        box->SetShowSearchButton(searchButton);
        box->SetShowHistoryButton(historyButton);
        other->setGeometry(10, 60, 220, 26);
        auto* ok = new QPushButton(QStringLiteral("OK"), &window);
        ok->setGeometry(240, 60, 70, 26);
        ok->setDefault(true);
        QObject::connect(ok, &QPushButton::clicked, &window, &QDialog::accept);
        QObject::connect(&window, &QDialog::accepted, [this] { log << QStringLiteral("accepted"); });
        QObject::connect(box, &SearchBox::searchStarted, [this] { log << QStringLiteral("search"); });
        QObject::connect(box, &SearchBox::resetSearch, [this] { log << QStringLiteral("reset"); });
        QObject::connect(box, &SearchBox::historyBrowse, [this] { log << QStringLiteral("history"); });
        window.show();
        window.activateWindow();
    }
    bool Active() { return QTest::qWaitForWindowActive(&window); }
    // The history button at the right end, the search button left of it.
    QPoint HistoryButton() const { return QPoint(box->width() - 8, box->height() / 2); }
    QPoint SearchButton() const { return HistoryButton() - QPoint(box->GetShowHistoryButton() ? 20 : 2, 0); }
    QImage Picture() const { return box->grab().toImage(); }

    QDialog window;
    SearchBox* box = new SearchBox(&window);
    QLineEdit* other = new QLineEdit(&window);
    QStringList log;
};

} // namespace

class TestSearchBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typingSearchesASecondAfterTheLastKey();
    void withTheButtonSearchesOnlyOnDemand();
    void historyButtonAndStates();
    void cueTextOnlyWhileEmptyAndUnfocused();
};

void TestSearchBox::typingSearchesASecondAfterTheLastKey()
{
    Fixture f(false);
    QVERIFY(f.Active());
    f.box->setFocus();
    QTest::keyClicks(f.box, QStringLiteral("abc"), Qt::NoModifier, 50);
    QElapsedTimer sinceLastKey;
    sinceLastKey.start();
    QVERIFY(f.log.isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(f.log, QStringList{"search"}, 5000);
    QVERIFY2(sinceLastKey.elapsed() >= 950, qPrintable(QString::number(sinceLastKey.elapsed())));
    QVERIFY(f.box->GetCancelMode());

    // Deleting everything resets at once and stops a pending search.
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(f.box, Qt::Key_Backspace);
    QCOMPARE(f.log, (QStringList{"search", "reset"}));
    QVERIFY(!f.box->GetCancelMode());
    QTest::qWait(1300);
    QCOMPARE(f.log.size(), 2);

    // The cross clears the text, which resets as well.
    f.log.clear();
    QTest::keyClicks(f.box, QStringLiteral("query"));
    QTRY_COMPARE_WITH_TIMEOUT(f.log, QStringList{"search"}, 5000);
    QTest::mouseClick(f.box, Qt::LeftButton, {}, f.SearchButton());
    QCOMPARE(f.log, (QStringList{"search", "reset", "reset"}));
    QVERIFY(f.box->text().isEmpty());
    QVERIFY(!f.box->GetCancelMode());
}

// Return searches, and stays in the box: the dialog's default button does not see it.
void TestSearchBox::withTheButtonSearchesOnlyOnDemand()
{
    Fixture f(true);
    QVERIFY(f.Active());
    f.box->setFocus();
    QTest::keyClick(f.box, Qt::Key_Return);
    QTest::keyClicks(f.box, QStringLiteral("query"));
    QTest::qWait(1300);
    QVERIFY(f.log.isEmpty());
    QTest::keyClick(f.box, Qt::Key_Return);
    QCOMPARE(f.log, QStringList{"search"});
    QVERIFY(f.box->GetCancelMode());
    QTest::qWait(50);
    QVERIFY(f.window.isVisible());

    // The cross clears the search; the button searches again.
    QTest::mouseClick(f.box, Qt::LeftButton, {}, f.SearchButton());
    QCOMPARE(f.log, (QStringList{"search", "reset"}));
    QVERIFY(f.box->text().isEmpty());
    QVERIFY(!f.box->GetCancelMode());
    QTest::keyClicks(f.box, QStringLiteral("query"));
    QTest::mouseClick(f.box, Qt::LeftButton, {}, f.SearchButton());
    QCOMPARE(f.log, (QStringList{"search", "reset", "search"}));
    QVERIFY(f.box->GetCancelMode());
}

void TestSearchBox::historyButtonAndStates()
{
    Fixture f(true, true);
    QVERIFY(f.Active());
    QCOMPARE(f.box->textMargins().right(), 25 + 18); // the text keeps clear of both buttons
    QTest::mouseMove(f.box, f.HistoryButton());
    QTRY_COMPARE(f.box->State(), int(SearchBox::HistoryHovered));
    QCOMPARE(f.box->cursor().shape(), Qt::ArrowCursor);
    QTest::mouseMove(f.box, f.SearchButton());
    QTRY_COMPARE(f.box->State(), int(SearchBox::SearchHovered));
    QTest::mouseMove(f.box, QPoint(20, 10));
    QTRY_COMPARE(f.box->State(), int(SearchBox::NoButton));
    QCOMPARE(f.box->cursor().shape(), Qt::IBeamCursor);
    QTest::mouseClick(f.box, Qt::LeftButton, {}, f.HistoryButton());
    QCOMPARE(f.log, QStringList{"history"});
}

void TestSearchBox::cueTextOnlyWhileEmptyAndUnfocused()
{
    Fixture f(false);
    QVERIFY(f.Active());
    f.other->setFocus();
    QTRY_VERIFY(f.other->hasFocus());
    const QImage plain = f.Picture();
    f.box->SetCueText(QStringLiteral("Search"));
    const QImage cued = f.Picture();
    QVERIFY(cued != plain);
    f.box->setFocus();
    QTRY_VERIFY(f.box->hasFocus());
    f.other->setFocus();
    QTRY_VERIFY(!f.box->hasFocus());
    f.box->setText(QStringLiteral("x"));
    f.box->clear();
    QCOMPARE(f.Picture(), cued);
    f.box->setFocus();
    QTRY_VERIFY(f.box->hasFocus());
    // Focused: no cue. The text cursor may blink, so compare away from the text.
    const QImage focused = f.Picture();
    QVERIFY(focused.copy(20, 0, 80, focused.height()) != cued.copy(20, 0, 80, cued.height()));
}

QTEST_MAIN(TestSearchBox)
#include "tst_search_box.moc"
