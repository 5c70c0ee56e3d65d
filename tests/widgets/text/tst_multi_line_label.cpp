#include <qt_halvo/widgets/text/multi_line_label.h>

#include "widgets_probes.h"

class TestMultiLineLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One paragraph at the line height, every kind of line end (CR LF once) a break; the top
    // right of the last line as laid out at 150 %.
    void oneParagraphAndItsLastLine()
    {
        OrvantaQT::MultiLineLabel label;
        label.setFont(WidgetsProbes::TestFont());
        const QFontMetrics metrics(label.font());
        const int lastLine = metrics.boundingRect(QStringLiteral("last")).width() + metrics.averageCharWidth();
        for (const auto& [text, html, breaks, right] : {std::tuple("a\r\nb\nc\rd<br>last", "a<br/>b<br/>c<br/>d<br/>last", 4, lastLine),
                                                        std::tuple("last", "last", 0, lastLine), std::tuple("last\n", "last<br/>", 1, 0)}) {
            label.setMultilineText(QString::fromLatin1(text));
            label.setLineHeight(150);
            QCOMPARE(label.text(), QStringLiteral("<p style = \"line-height:150\">%1</p>").arg(QLatin1String(html)));
            QCOMPARE(label.LastLineTopRight(), QPoint(right, breaks * (metrics.height() * 3 / 2)));
        }
    }
};

QTEST_MAIN(TestMultiLineLabel)
#include "tst_multi_line_label.moc"
