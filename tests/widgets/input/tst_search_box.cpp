#include <qt_halvo/widgets/input/search_box.h>

#include <QtTest/QtTest>
#include <QtWidgets/QDialog>
#include <QtWidgets/QPushButton>

using OrvantaQT::SearchBox;

namespace {

struct Fixture
{
    explicit Fixture(bool searchButton, bool historyButton = false)
    {
        window.resize(320, 100);
        box = new SearchBox(&window);
        box->setGeometry(10, 10, 220, 26);
        box->SetShowSearchButton(searchButton);
        box->SetShowHistoryButton(historyButton);
        other = new QLineEdit(&window);
        other->setGeometry(10, 60, 220, 26);
        QObject::connect(box, &SearchBox::searchStarted, [this] { log << QStringLiteral("search"); });
        QObject::connect(box, &SearchBox::resetSearch, [this] { log << QStringLiteral("reset"); });
        QObject::connect(box, &SearchBox::historyBrowse, [this] { log << QStringLiteral("history"); });
        window.show();
        window.activateWindow();
    }
    bool Active() { return QTest::qWaitForWindowActive(&window); }
    QPoint SearchButton() const
    {
        // Right of the text, left of the history button when there is one.
        const int right = box->width() - 2 - (box->GetShowHistoryButton() ? box->GetButtonHistoryWidth() : 0);
        return QPoint(right - 8, box->height() / 2);
    }
    QPoint HistoryButton() const { return QPoint(box->width() - 8, box->height() / 2); }

    QWidget window;
    SearchBox* box = nullptr;
    QLineEdit* other = nullptr;
    QStringList log;
};

} // namespace

class TestSearchBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typingSearchesASecondAfterTheLastKey();
    void withTheButtonSearchesOnlyOnDemand();
    void crossClearsTheSearch_data();
    void crossClearsTheSearch();
    void historyButtonAndStates();
    void returnStaysInTheBox();
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
    QTest::keyClick(f.box, Qt::Key_Backspace);
    QTest::keyClick(f.box, Qt::Key_Backspace);
    QTest::keyClick(f.box, Qt::Key_Backspace);
    QCOMPARE(f.log, (QStringList{"search", "reset"}));
    QVERIFY(!f.box->GetCancelMode());
    QTest::qWait(1300);
    QCOMPARE(f.log.size(), 2);
}

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
}

void TestSearchBox::crossClearsTheSearch_data()
{
    QTest::addColumn<bool>("searchButton");
    QTest::addColumn<QStringList>("afterCross");
    QTest::newRow("search button shown") << true << QStringList{"search", "reset"};
    // Clearing the text resets too when typing drives the search: twice, and accepted.
    QTest::newRow("search button hidden") << false << QStringList{"search", "reset", "reset"};
}

void TestSearchBox::crossClearsTheSearch()
{
    QFETCH(bool, searchButton);
    QFETCH(QStringList, afterCross);
    Fixture f(searchButton);
    QVERIFY(f.Active());
    f.box->setFocus();
    QTest::keyClicks(f.box, QStringLiteral("query"));
    if (searchButton)
        QTest::mouseClick(f.box, Qt::LeftButton, {}, f.SearchButton());
    QTRY_COMPARE_WITH_TIMEOUT(f.log, QStringList{"search"}, 5000);
    QVERIFY(f.box->GetCancelMode());
    QTest::mouseClick(f.box, Qt::LeftButton, {}, f.SearchButton());
    QCOMPARE(f.log, afterCross);
    QVERIFY(f.box->text().isEmpty());
    QVERIFY(!f.box->GetCancelMode());
}

void TestSearchBox::historyButtonAndStates()
{
    Fixture f(true, true);
    QVERIFY(f.Active());
    QCOMPARE(f.box->textMargins().right(), 25 + 18);
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
    QCOMPARE(f.box->sizeHint().width(), 150);
}

void TestSearchBox::returnStaysInTheBox()
{
    QDialog dialog;
    auto* box = new SearchBox(&dialog);
    box->setGeometry(10, 10, 200, 26);
    box->SetShowSearchButton(true);
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setGeometry(10, 50, 80, 26);
    ok->setDefault(true);
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    QSignalSpy searched(box, &SearchBox::searchStarted);
    connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    box->setFocus();
    QTest::keyClicks(box, QStringLiteral("query"));
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(searched.count(), 1);
    QTest::qWait(50);
    QCOMPARE(accepted.count(), 0);
    QVERIFY(dialog.isVisible());
}

void TestSearchBox::cueTextOnlyWhileEmptyAndUnfocused()
{
    Fixture f(false);
    QVERIFY(f.Active());
    f.other->setFocus();
    QTRY_VERIFY(f.other->hasFocus());
    const QImage plain = f.box->grab().toImage();
    f.box->SetCueText(QStringLiteral("Search"));
    const QImage cued = f.box->grab().toImage();
    QVERIFY(cued != plain);
    f.box->setFocus();
    QTRY_VERIFY(f.box->hasFocus());
    f.other->setFocus();
    QTRY_VERIFY(!f.box->hasFocus());
    f.box->setText(QStringLiteral("x"));
    f.box->clear();
    QCOMPARE(f.box->grab().toImage(), cued);
    f.box->setFocus();
    QTRY_VERIFY(f.box->hasFocus());
    // Focused: no cue. The text cursor may blink, so compare away from the text.
    const QImage focused = f.box->grab().toImage();
    QVERIFY(focused.copy(20, 0, 80, focused.height()) != cued.copy(20, 0, 80, cued.height()));
}

QTEST_MAIN(TestSearchBox)
#include "tst_search_box.moc"
