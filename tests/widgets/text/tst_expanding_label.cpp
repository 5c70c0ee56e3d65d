#include <qt_halvo/widgets/text/expanding_label.h>

#include <QtGui/QTextDocument>
#include <QtTest/QtTest>

using OrvantaQT::ExpandingLabel;

namespace {

const QString kFirst = QStringLiteral("A first line that fits.");
const QString kSecond = QStringLiteral("A second line that is far too long to fit into the narrow label on one line, "
                                       "or on two, so it has to be cut somewhere along the way to leave room.");
const QString kMore = QStringLiteral("\u2026 Show more");

// A shown window with the label 300 px wide, in DejaVu Sans at 13 px.
struct Fixture
{
    explicit Fixture(const QString& text, int collapsedLines = 3)
    {
        window.resize(360, 400);
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(13);
        label->setFont(font);
        label->setCollapsedLines(collapsedLines);
        label->setFullText(text);
        label->setIsCollapsed(true);
        label->setGeometry(10, 10, 300, 100);
        window.show();
    }
    bool Exposed() { return QTest::qWaitForWindowExposed(&window); }
    QString Shown() const { return label->toPlainText(); }
    // Clicks the middle of the first occurrence of text in the document.
    void ClickOn(const QString& text)
    {
        const QTextCursor found = label->document()->find(text);
        QVERIFY2(!found.isNull(), qPrintable(text));
        QTextCursor middle(label->document());
        middle.setPosition(found.selectionStart() + text.size() / 2);
        QTest::mouseClick(label->viewport(), Qt::LeftButton, {}, label->cursorRect(middle).center());
    }

    QWidget window;
    ExpandingLabel* label = new ExpandingLabel(&window);
};

} // namespace

class TestExpandingLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void collapsesAndExpandsByItsLinks();
    void collapsedOnOneLine_data();
    void collapsedOnOneLine();
    void linkTextsFollowTheCatalogue();
};

// Three collapsed lines: the first line whole, then as much of the second as fits,
// broken at a space, then the rest of it shortened before " Show more".
void TestExpandingLabel::collapsesAndExpandsByItsLinks()
{
    Fixture f(kFirst);
    QVERIFY(f.Exposed());
    QCOMPARE(f.Shown(), kFirst);
    QVERIFY(!f.label->document()->toHtml().contains(QStringLiteral("href")));
    // The height is fixed to what is shown.
    QCOMPARE(f.label->minimumHeight(), f.label->maximumHeight());
    QCOMPARE(f.label->minimumSizeHint().height(), f.label->height());

    f.label->setFullText(kFirst + QStringLiteral("\r\n") + kSecond);
    const QStringList lines = f.Shown().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0), kFirst);
    QVERIFY2(lines.at(1).endsWith(kMore), qPrintable(lines.at(1)));
    // The piece that fills a line and the shortened rest: together the start of the second
    // line, nothing dropped at the break.
    const QString cut = lines.at(1).chopped(kMore.size());
    QCOMPARE(cut, kSecond.left(cut.size()));
    QVERIFY(cut.size() > 40 && cut.size() < kSecond.size());
    const int collapsedHeight = f.label->height();

    f.ClickOn(QStringLiteral("Show more"));
    QTRY_VERIFY(!f.label->isCollapsed());
    QVERIFY(f.Shown().startsWith(kFirst + QLatin1Char('\n') + kSecond));
    QVERIFY(f.Shown().endsWith(QStringLiteral("\nShow less"))); // on a line of its own
    QVERIFY(f.label->height() > collapsedHeight);
    // A new "Show more" shows only when collapsed.
    f.label->setShowMoreText(QStringLiteral("More"));
    QVERIFY(f.Shown().endsWith(QStringLiteral("Show less")));
    f.ClickOn(QStringLiteral("Show less"));
    QTRY_VERIFY(f.label->isCollapsed());
    QVERIFY(f.Shown().endsWith(QStringLiteral("\u2026 More")));

    // Other links do nothing.
    Q_EMIT f.label->anchorClicked(QUrl(QStringLiteral("https://example.org")));
    QVERIFY(f.label->isCollapsed());
    QVERIFY(f.Shown().endsWith(QStringLiteral(" More")));
}

// Fewer than three collapsed lines: a single line, then the link.
void TestExpandingLabel::collapsedOnOneLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("collapsedLines");
    // Two lines' worth: one cut without a space to break at, one shortened for the link.
    QTest::newRow("a word without spaces") << QString(200, QLatin1Char('x')) << 2;
    // Below two lines the first line stands for the text.
    QTest::newRow("fewer than two lines") << kSecond + QStringLiteral("\n") + kFirst << 1;
}

void TestExpandingLabel::collapsedOnOneLine()
{
    QFETCH(QString, text);
    QFETCH(int, collapsedLines);
    Fixture f(text, collapsedLines);
    QVERIFY(f.Exposed());
    const QString shown = f.Shown();
    QVERIFY2(!shown.contains(QLatin1Char('\n')) && shown.endsWith(kMore), qPrintable(shown));
    const QString kept = shown.chopped(kMore.size());
    QVERIFY(kept.size() > 20 && text.startsWith(kept));
    const int width = QFontMetrics(f.label->font()).horizontalAdvance(kept);
    QVERIFY2(width > (collapsedLines - 1) * 300 && width < collapsedLines * 300, qPrintable(shown));
}

void TestExpandingLabel::linkTextsFollowTheCatalogue()
{
    const auto translated = [](const char* language) {
        QTranslator catalogue;
        if (!catalogue.load(QStringLiteral(":/translations/qt_halvo_") + QLatin1String(language)))
            return QStringList();
        QCoreApplication::installTranslator(&catalogue);
        const ExpandingLabel label;
        return QStringList{label.showMoreText(), label.showLessText()};
    };
    QCOMPARE(translated("de"), (QStringList{"Mehr anzeigen", "Weniger anzeigen"}));
    QCOMPARE(translated("ru").value(0), QStringLiteral("Показать больше"));
}

QTEST_MAIN(TestExpandingLabel)
#include "tst_expanding_label.moc"
