#include <qt_halvo/widgets/text/expanding_label.h>

#include <QtGui/QTextDocument>
#include <QtTest/QtTest>

using OrvantaQT::ExpandingLabel;

namespace {

QFont TestFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

const QString kFirst = QStringLiteral("A first line that fits.");
const QString kSecond = QStringLiteral("A second line that is far too long to fit into the narrow label on one line, "
                                       "or on two, so it has to be cut somewhere along the way to leave room.");

// A shown window with the label 300 px wide.
struct Fixture
{
    explicit Fixture(const QString& text, int collapsedLines = 3)
    {
        window.resize(360, 400);
        label = new ExpandingLabel(&window);
        label->setFont(TestFont());
        label->setCollapsedLines(collapsedLines);
        label->setFullText(text);
        label->setIsCollapsed(true);
        label->setGeometry(10, 10, 300, 100);
        window.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&window); }
    QString Shown() const { return label->toPlainText(); }
    QString Html() const { return label->document()->toHtml(); }
    // Clicks the middle of the first occurrence of text in the document.
    void ClickOn(const QString& text)
    {
        const QTextCursor found = label->document()->find(text);
        QVERIFY2(!found.isNull(), qPrintable(text));
        QTextCursor middle(label->document());
        middle.setPosition(found.selectionStart() + text.size() / 2);
        const QPoint point = label->cursorRect(middle).center();
        QTest::mouseClick(label->viewport(), Qt::LeftButton, {}, point);
    }

    QWidget window;
    ExpandingLabel* label = nullptr;
};

} // namespace

class TestExpandingLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shortTextShowsNoLink();
    void collapsedKeepsWholeLinesAndCutsAtASpace();
    void linksSwitchBetweenTheStates();
    void aWordWithoutSpacesIsCutAnyway();
    void fewerThanTwoLinesShowTheFirstLine();
    void linkTextsFollowTheCatalogue();
};

void TestExpandingLabel::shortTextShowsNoLink()
{
    Fixture f(kFirst);
    QVERIFY(f.Exposed());
    QCOMPARE(f.Shown(), kFirst);
    QVERIFY(!f.Html().contains(QStringLiteral("href")));
    // The height is fixed to what is shown.
    QCOMPARE(f.label->minimumHeight(), f.label->maximumHeight());
    QCOMPARE(f.label->minimumSizeHint().height(), f.label->height());
}

// Three collapsed lines: the first line whole, then as much of the second as fits,
// broken at a space, then the rest of it shortened before " Show more".
void TestExpandingLabel::collapsedKeepsWholeLinesAndCutsAtASpace()
{
    Fixture f(kFirst + QStringLiteral("\r\n") + kSecond);
    QVERIFY(f.Exposed());
    const QStringList lines = f.Shown().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0), kFirst);
    const QString rest = lines.at(1);
    QVERIFY2(rest.endsWith(QStringLiteral("\u2026 Show more")), qPrintable(rest));
    // The piece that fills a line, broken at a space, then the rest shortened: together
    // the start of the second line, nothing dropped at the break.
    const QString cut = rest.left(rest.size() - QStringLiteral("\u2026 Show more").size());
    QCOMPARE(cut, kSecond.left(cut.size()));
    QVERIFY(cut.size() > 40 && cut.size() < kSecond.size());
    QVERIFY(f.Html().contains(QStringLiteral("href=\"expand\"")));
    const int collapsedHeight = f.label->height();

    f.label->setIsCollapsed(false);
    QVERIFY(f.Shown().startsWith(kFirst + QLatin1Char('\n') + kSecond));
    QVERIFY(f.Shown().endsWith(QStringLiteral("\nShow less"))); // on a line of its own
    QVERIFY(f.label->height() > collapsedHeight);

    // A new "Show more" shows only when collapsed.
    f.label->setShowMoreText(QStringLiteral("More"));
    QVERIFY(f.Shown().endsWith(QStringLiteral("Show less")));
    f.label->setIsCollapsed(true);
    QVERIFY(f.Shown().endsWith(QStringLiteral(" More")));
}

void TestExpandingLabel::linksSwitchBetweenTheStates()
{
    Fixture f(kFirst + QStringLiteral("\n") + kSecond);
    QVERIFY(f.Exposed());
    f.ClickOn(QStringLiteral("Show more"));
    QTRY_VERIFY(!f.label->isCollapsed());
    QVERIFY(f.Shown().endsWith(QStringLiteral("Show less")));
    f.ClickOn(QStringLiteral("Show less"));
    QTRY_VERIFY(f.label->isCollapsed());

    // Other links do nothing.
    Q_EMIT f.label->anchorClicked(QUrl(QStringLiteral("https://example.org")));
    QVERIFY(f.label->isCollapsed());
    QVERIFY(f.Shown().endsWith(QStringLiteral("Show more")));
}

void TestExpandingLabel::aWordWithoutSpacesIsCutAnyway()
{
    Fixture f(QString(200, QLatin1Char('x')), 2);
    QVERIFY(f.Exposed());
    const QString shown = f.Shown();
    QVERIFY2(shown.startsWith(QStringLiteral("xxx")) && shown.endsWith(QStringLiteral("\u2026 Show more")), qPrintable(shown));
    // Two lines' worth: one cut without a space to break at, one shortened for the link.
    const int perLine = 300 / QFontMetrics(TestFont()).horizontalAdvance(QLatin1Char('x'));
    QVERIFY2(shown.count(QLatin1Char('x')) > perLine && shown.count(QLatin1Char('x')) < 2 * perLine, qPrintable(shown));
}

void TestExpandingLabel::fewerThanTwoLinesShowTheFirstLine()
{
    Fixture f(kSecond + QStringLiteral("\n") + kFirst, 1);
    QVERIFY(f.Exposed());
    const QString shown = f.Shown();
    QVERIFY2(!shown.contains(QLatin1Char('\n')) && shown.endsWith(QStringLiteral("\u2026 Show more")), qPrintable(shown));
    QVERIFY(kSecond.startsWith(shown.left(20)));
}

void TestExpandingLabel::linkTextsFollowTheCatalogue()
{
    QTranslator german;
    QVERIFY(german.load(QStringLiteral(":/translations/qt_halvo_de")));
    QCoreApplication::installTranslator(&german);
    ExpandingLabel label;
    QCOMPARE(label.showMoreText(), QStringLiteral("Mehr anzeigen"));
    QCOMPARE(label.showLessText(), QStringLiteral("Weniger anzeigen"));
    QCoreApplication::removeTranslator(&german);
    QTranslator russian;
    QVERIFY(russian.load(QStringLiteral(":/translations/qt_halvo_ru")));
    QCoreApplication::installTranslator(&russian);
    QCOMPARE(ExpandingLabel().showMoreText(), QStringLiteral("Показать больше"));
    QCoreApplication::removeTranslator(&russian);
}

QTEST_MAIN(TestExpandingLabel)
#include "tst_expanding_label.moc"
