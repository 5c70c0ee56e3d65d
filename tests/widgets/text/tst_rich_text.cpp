#include <qt_halvo/widgets/text/rich_text.h>

#include "widgets_probes.h"

class TestRichText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // CR LF is one break, LF CR two; only a lower-case "<br>" is one already. Arguments are
    // elided in the middle to the label's width; without a label there is a warning.
    void richTextAndElidedArguments()
    {
        QCOMPARE(OrvantaQT::ConvertToRichText(QStringLiteral("a\r\nb\nc\rd<br>e\n\rf<BR>g")),
                 QStringLiteral("a<br>b<br>c<br>d<br>e<br><br>f<BR>g"));
        QLabel label;
        label.setFont(WidgetsProbes::TestFont());
        label.resize(120, 20);
        const QString name = QStringLiteral("a_rather_long_file_name_that_does_not_fit.txt");
        const LogCapture::Mark mark;
        QCOMPARE(OrvantaQT::FormatElidedTextForLabel(&label, QStringLiteral("%1 → %2"), {name, QStringLiteral("b.txt")})
                     + OrvantaQT::FormatElidedTextForLabel(nullptr, QStringLiteral("%1"), {name}),
                 QFontMetrics(label.font()).elidedText(name, Qt::ElideMiddle, 120) + QStringLiteral(" → b.txt"));
        QCOMPARE(mark.Since().size(), 1);
    }
};

QTEST_MAIN(TestRichText)
#include "tst_rich_text.moc"
