#include <qt_halvo/widgets/input/search_box.h>

#include "test_support.h"

using OrvantaQT::SearchBox;
using TestSupport::Words;

// The box 220 x 26 in a dialog whose default button Return in the box must not reach.
struct Dialog : QDialog
{
    explicit Dialog(bool searchButton, bool historyButton = false)
    {
        box->setGeometry(10, 10, 220, 26);
        box->SetShowSearchButton(searchButton);
        box->SetShowHistoryButton(historyButton);
        ok->move(10, 60);
        ok->setDefault(true);
        connect(ok, &QPushButton::clicked, [this] { log.Note(QStringLiteral("OK")); });
        show();
        activateWindow();
    }
    void mousePressEvent(QMouseEvent*) override { log.Note(QStringLiteral("pressed")); } // what the box passes on
    void mouseReleaseEvent(QMouseEvent*) override { log.Note(QStringLiteral("released")); }
    void Click(int fromRight) { QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(220 - fromRight, 13)); }

    SearchBox* box = new SearchBox(this);
    QPushButton* ok = new QPushButton(QStringLiteral("OK"), this);
    TestSupport::SignalLog log{box, {"searchStarted()", "resetSearch()", "historyBrowse()"}};
};

class TestSearchBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Once; deleting everything resets at once and stops the search the deletions started.
    // While a search is on, the button is a cross that clears the text (resetting as well).
    void typingSearchesASecondAfterTheLastKey()
    {
        Dialog d(false);
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QTest::keyClicks(d.box, QStringLiteral("abc"), Qt::NoModifier, 50);
        QElapsedTimer sinceLastKey;
        sinceLastKey.start();
        QTRY_COMPARE_WITH_TIMEOUT(d.log.lines, Words("searchStarted()"), 5000);
        QVERIFY(sinceLastKey.elapsed() >= 950);
        QTest::qWait(1200);
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(d.box, Qt::Key_Backspace);
        QTest::qWait(1200);
        QTest::keyClicks(d.box, QStringLiteral("query"));
        QTRY_VERIFY_WITH_TIMEOUT(d.log.lines.size() == 3, 5000);
        d.Click(10);
        d.Click(10); // no button any more
        QCOMPARE(d.box->text(), QString());
        QCOMPARE(d.log.Take(), Words("searchStarted() resetSearch() searchStarted() pressed resetSearch() resetSearch() released"));
    }

    // Return searches and stays in the box; Escape still closes the dialog.
    void withTheButtonSearchesOnDemand()
    {
        Dialog d(true);
        QVERIFY(QTest::qWaitForWindowActive(&d));
        QTest::keyClick(d.box, Qt::Key_Return); // nothing to search for
        QTest::keyClicks(d.box, QStringLiteral("query"));
        QTest::qWait(1200); // past the typing delay and the default button's animated click
        QTest::keyClick(d.box, Qt::Key_Return);
        d.Click(10);
        QTest::keyClicks(d.box, QStringLiteral("again"));
        d.Click(10);
        QCOMPARE(d.box->text(), QStringLiteral("again"));
        QCOMPARE(d.log.Take(), Words("searchStarted() pressed resetSearch() released pressed searchStarted() released"));
        QTest::keyClick(d.box, Qt::Key_Escape);
        QTRY_VERIFY(!d.isVisible());
    }

    // From the right end: the history button (18 wide) if shown, the search button (25), the
    // text. Hovered buttons take the arrow cursor, and are hovered again after a click.
    void buttonsUnderTheMouse()
    {
        Dialog d(true, true);
        QVERIFY(QTest::qWaitForWindowActive(&d));
        for (const auto& [history, fromRight, state] : {std::tuple(true, 18, SearchBox::HistoryHovered),
                 std::tuple(true, 19, SearchBox::SearchHovered), std::tuple(true, 42, SearchBox::SearchHovered),
                 std::tuple(true, 43, SearchBox::NoButton), std::tuple(false, 2, SearchBox::SearchHovered),
                 std::tuple(false, 26, SearchBox::NoButton)}) {
            d.box->SetShowHistoryButton(history);
            d.box->SetCancelMode(false);
            QTest::mouseMove(d.box, QPoint(220 - fromRight, 13));
            QTRY_COMPARE(d.box->State(), int(state));
            QCOMPARE(d.box->cursor().shape(), state == SearchBox::NoButton ? Qt::IBeamCursor : Qt::ArrowCursor);
            d.Click(fromRight);
            QCOMPARE(d.log.Take(), Words(QList<const char*>{"", "pressed searchStarted() released", "", "pressed historyBrowse() released"}.at(state)));
            QCOMPARE(d.box->State(), int(state));
            QTest::mouseMove(d.box, QPoint(20, 13));
            QTRY_COMPARE(d.box->State(), int(SearchBox::NoButton));
        }
    }

    // The cue shows while the box is empty and unfocused, short of the button. The icons are
    // in the middle of their buttons, a pixel right (the arrow two up); the buttons themselves
    // show only under the mouse.
    void cueTextAndIcons()
    {
        Dialog d(false, true);
        QVERIFY(QTest::qWaitForWindowActive(&d));
        d.ok->setFocus();
        const QImage icons = TestSupport::Render(d.box);
        QImage drawn = icons;
        QPainter painter(&drawn);
        for (const auto& [at, icon] : {std::pair(QPoint(185, 7), "magnifier"), std::pair(QPoint(207, 8), "arrow")}) {
            const QImage image(QStringLiteral(":/search_box_image_%1.png").arg(QLatin1String(icon)));
            painter.fillRect(QRect(at, image.size()), icons.pixel(150, 13));
            painter.drawImage(at, image);
        }
        painter.end();
        QCOMPARE(TestSupport::Changed(icons, drawn), QRect());
        d.box->SetShowHistoryButton(false);
        const QImage plain = TestSupport::Render(d.box);
        d.box->SetCueText(QStringLiteral("Search in all the folders and all the files of this computer"));
        const QImage cued = TestSupport::Render(d.box);
        const QRect cue = TestSupport::Changed(plain, cued);
        QVERIFY2(cue.left() < 10 && cue.right() > 150 && cue.right() < 198, qPrintable(QString::number(cue.right())));
        const QRect text(30, 3, 150, 20); // away from the typed letters and the text cursor
        d.box->setText(QStringLiteral("ab"));
        QCOMPARE(TestSupport::Changed(plain, TestSupport::Render(d.box), text), QRect());
        d.box->clear();
        QCOMPARE(TestSupport::Render(d.box), cued);
        d.box->setFocus();
        QTRY_COMPARE(TestSupport::Changed(plain, TestSupport::Render(d.box), text), QRect());
    }
};

QTEST_MAIN(TestSearchBox)
#include "tst_search_box.moc"
