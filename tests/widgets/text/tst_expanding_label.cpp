#include <qt_halvo/widgets/text/expanding_label.h>

#include "test_support.h"

class TestExpandingLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The lines before the last filled, broken at a space, and the last shortened before the
    // link: nothing dropped, no more lines than asked for; below two lines the first line
    // stands for the text. The height fits what is shown; the link back is on a line of its
    // own; other links do nothing; a text that fits has no link.
    void collapsesAndExpandsByItsLinks()
    {
        const QString first = QStringLiteral("A first line that fits.");
        const QString second = QStringLiteral("A second line that is far too long to fit into the narrow label on one line, "
                                              "or on two, so it has to be cut somewhere along the way to leave room.");
        std::unique_ptr<OrvantaQT::ExpandingLabel> label;
        for (const auto& [text, collapsedLines] : {std::pair(QString(200, QLatin1Char('x')), 2),
                                                   std::pair(second + "\n" + first, 1), std::pair(first + "\r\n" + second, 3)}) {
            label.reset(new OrvantaQT::ExpandingLabel(text));
            label->setFont(TestSupport::TestFont());
            label->setIsCollapsed(true);
            label->resize(300, 100);
            label->show();
            label->setCollapsedLines(collapsedLines); // after the first layout
            const QString shown = label->toPlainText();
            QVERIFY2(shown.endsWith(QStringLiteral("\u2026 Show more")), qPrintable(shown));
            const QString kept = shown.chopped(11);
            QVERIFY(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).startsWith(kept));
            const int width = QFontMetrics(label->font()).horizontalAdvance(kept.section(QLatin1Char('\n'), -1));
            const int lines = collapsedLines - kept.count(QLatin1Char('\n'));
            QVERIFY2(width > (lines - 1) * 300 && width < lines * 300, qPrintable(shown));
        }
        QVERIFY(QTest::qWaitForWindowExposed(label.get()));
        const int collapsed = label->height();
        QCOMPARE(label->minimumHeight(), collapsed);
        const auto click = [&label](const QString& link) {
            QTextCursor cursor = label->document()->find(link);
            cursor.setPosition(cursor.selectionStart() + link.size() / 2);
            QTest::mouseClick(label->viewport(), Qt::LeftButton, {}, label->cursorRect(cursor).center());
        };
        click(QStringLiteral("Show more"));
        QVERIFY(label->maximumHeight() > collapsed);
        label->setShowMoreText(QStringLiteral("More")); // for the next collapse
        label->setShowLessText(QStringLiteral("Less"));
        QCOMPARE(label->toPlainText(), first + "\n" + second + "\nLess");
        click(QStringLiteral("Less"));
        QVERIFY(label->toPlainText().endsWith(QStringLiteral("\u2026 More")));
        QCOMPARE(label->maximumHeight(), collapsed);
        Q_EMIT label->anchorClicked(QUrl(QStringLiteral("elsewhere")));
        QVERIFY(label->isCollapsed());
        label->setFullText(first);
        QCOMPARE(label->toPlainText(), first);
    }
};

QTEST_MAIN(TestExpandingLabel)
#include "tst_expanding_label.moc"
