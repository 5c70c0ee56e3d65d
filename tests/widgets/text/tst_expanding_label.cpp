#include <qt_halvo/widgets/text/expanding_label.h>

#include "widgets_probes.h"

class TestExpandingLabel : public QObject
{
    Q_OBJECT

    const QString m_first = QStringLiteral("A first line that fits.");
    const QString m_long = QStringLiteral("A second line that is far too long to fit into the narrow label on one line, "
                                          "or on two, so it has to be cut somewhere along the way to leave room.");
    std::unique_ptr<OrvantaQT::ExpandingLabel> m_label;

    // Collapsed and shown 300 px wide, the number of lines set last; what it shows.
    QString Show(const QString& text, int collapsedLines)
    {
        m_label.reset(new OrvantaQT::ExpandingLabel(text));
        m_label->setFont(WidgetsProbes::TestFont());
        m_label->setIsCollapsed(true);
        m_label->resize(300, 100);
        m_label->show();
        m_label->setCollapsedLines(collapsedLines);
        return m_label->toPlainText();
    }

private Q_SLOTS:
    // The lines before the last filled, broken at a space, and the last shortened before the
    // link: nothing dropped, no more lines than asked for. Below two lines the first line
    // stands for the text.
    void collapsed_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("collapsedLines");
        QTest::newRow("three lines") << m_first + "\r\n" + m_long << 3;
        QTest::newRow("a word without spaces") << QString(200, QLatin1Char('x')) << 2;
        QTest::newRow("one line") << m_long + "\n" + m_first << 1;
    }

    void collapsed()
    {
        QFETCH(QString, text);
        QFETCH(int, collapsedLines);
        const QString shown = Show(text, collapsedLines);
        QVERIFY2(shown.endsWith(QStringLiteral("\u2026 Show more")), qPrintable(shown));
        const QString kept = shown.chopped(11);
        QVERIFY(text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).startsWith(kept));
        const int width = QFontMetrics(m_label->font()).horizontalAdvance(kept.section(QLatin1Char('\n'), -1));
        const int lines = collapsedLines - kept.count(QLatin1Char('\n'));
        QVERIFY2(width > (lines - 1) * 300 && width < lines * 300, qPrintable(shown));
        QCOMPARE(QFontInfo(m_label->document()->defaultFont()).pixelSize(), 13);
    }

    // The height fits what is shown; "Show less" is on a line of its own; other links do
    // nothing; a text that fits has no link.
    void linksSwitchBetweenCollapsedAndExpanded()
    {
        Show(m_first + "\r\n" + m_long, 3);
        QVERIFY(QTest::qWaitForWindowExposed(m_label.get()));
        const int collapsed = m_label->height();
        QCOMPARE(m_label->minimumHeight(), collapsed);
        const auto click = [this](const QString& link) {
            QTextCursor cursor = m_label->document()->find(link);
            cursor.setPosition(cursor.selectionStart() + 4);
            QTest::mouseClick(m_label->viewport(), Qt::LeftButton, {}, m_label->cursorRect(cursor).center());
        };
        click(QStringLiteral("Show more"));
        QCOMPARE(m_label->toPlainText(), m_first + "\n" + m_long + "\nShow less");
        QVERIFY(m_label->maximumHeight() > collapsed);
        m_label->setShowMoreText(QStringLiteral("More")); // for the next collapse
        click(QStringLiteral("Show less"));
        QVERIFY(m_label->toPlainText().endsWith(QStringLiteral("\u2026 More")));
        QCOMPARE(m_label->maximumHeight(), collapsed);
        Q_EMIT m_label->anchorClicked(QUrl(QStringLiteral("elsewhere")));
        QVERIFY(m_label->isCollapsed());
        m_label->setFullText(m_first);
        QCOMPARE(m_label->toPlainText(), m_first);
    }
};

QTEST_MAIN(TestExpandingLabel)
#include "tst_expanding_label.moc"
