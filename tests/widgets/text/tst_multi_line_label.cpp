#include <qt_halvo/widgets/text/multi_line_label.h>

#include "widgets_probes.h"

class TestMultiLineLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One paragraph at the line height, every kind of line end (CR LF once) a break; the
    // last line's top right as laid out at 150 %.
    void oneParagraphAndItsLastLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("lastLine");
        QTest::newRow("every break") << "a\r\nb\nc\rd<br>last line" << "a<br/>b<br/>c<br/>d<br/>last line" << "last line";
        QTest::newRow("ends with a break") << "only\n" << "only<br/>" << "";
        QTest::newRow("one line") << "one line" << "one line" << "one line";
    }

    void oneParagraphAndItsLastLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, html);
        QFETCH(QString, lastLine);
        OrvantaQT::MultiLineLabel label;
        label.setFont(WidgetsProbes::TestFont());
        label.setMultilineText(text);
        label.setLineHeight(150);
        QCOMPARE(label.text(), QStringLiteral("<p style = \"line-height:150\">%1</p>").arg(html));
        const QFontMetrics metrics(label.font());
        const int x = lastLine.isEmpty() ? 0 : metrics.boundingRect(lastLine).width() + metrics.averageCharWidth();
        QCOMPARE(label.LastLineTopRight(), QPoint(x, html.count(QStringLiteral("<br/>")) * (metrics.height() * 3 / 2)));
    }
};

QTEST_MAIN(TestMultiLineLabel)
#include "tst_multi_line_label.moc"
