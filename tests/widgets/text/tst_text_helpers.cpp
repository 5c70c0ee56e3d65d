#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/widgets/text/clickable_label.h>
#include <qt_halvo/widgets/text/hoverable_check_box.h>
#include <qt_halvo/widgets/text/link_text_builder.h>
#include <qt_halvo/widgets/text/linkable_checkbox.h>
#include <qt_halvo/widgets/text/multi_line_label.h>
#include <qt_halvo/widgets/text/rich_text.h>

#include "test_support.h"

class TestTextHelpers : public QObject
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
        label.setFont(TestSupport::TestFont());
        label.resize(120, 20);
        const QString name = QStringLiteral("a_rather_long_file_name_that_does_not_fit.txt");
        const LogCapture::Mark mark;
        QCOMPARE(OrvantaQT::FormatElidedTextForLabel(&label, QStringLiteral("%1 → %2"), {name, QStringLiteral("b.txt")})
                     + OrvantaQT::FormatElidedTextForLabel(nullptr, QStringLiteral("%1"), {name}),
                 QFontMetrics(label.font()).elidedText(name, Qt::ElideMiddle, 120) + QStringLiteral(" → b.txt"));
        QCOMPARE(mark.Since().size(), 1);
    }

    // One paragraph at the line height, every kind of line end (CR LF once) a break; the top
    // right of the last line as laid out at 150 %.
    void oneParagraphAndItsLastLine()
    {
        OrvantaQT::MultiLineLabel label;
        label.setFont(TestSupport::TestFont());
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

    // Hovering the caption hovers the box; a click on the caption toggles the box, one on its
    // link only reports the link.
    void captionTogglesButALinkDoesNot()
    {
        QWidget window;
        auto* box = new OrvantaQT::LinkableCheckbox(&window);
        box->setGeometry(10, 10, 380, 40);
        box->setText(QStringLiteral("I accept <a href=\"terms\">the terms</a> of use"));
        QVERIFY(TestSupport::ShowAndWait(&window));
        TestSupport::SignalLog log(box, {"Toggled()", "StateChanged(int)", "LinkActivated(QString)"});
        QLabel* caption = box->Caption();
        QTest::mouseMove(caption, QPoint(8, 5));
        QTRY_VERIFY(box->CheckBox()->IsHovered());
        QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(8, caption->height() / 2));
        const int link = QFontMetrics(caption->font()).horizontalAdvance(QStringLiteral("I accept the te"));
        QTest::mouseClick(caption, Qt::LeftButton, {}, QPoint(link, caption->height() / 2));
        QTest::mouseClick(box->CheckBox(), Qt::LeftButton);
        QCOMPARE(log.Take(), TestSupport::Words("StateChanged(2) Toggled() LinkActivated(terms) Toggled() StateChanged(0)"));
    }

    // A disabled link takes the global sheet's "greyColor"; the anchors close with "<\a>".
    void linkMarkup()
    {
        QTemporaryDir folder;
        QFile sheet(folder.filePath(QStringLiteral("styles.qss")));
        QVERIFY(sheet.open(QIODevice::WriteOnly) && sheet.write("/* Stylesheet Constants\ngreyColor = #7f7f80\n*/\n") > 0);
        sheet.close();
        OrvantaQT::LoadGlobalStyleSheet(sheet.fileName());
        OrvantaQT::LinkTextBuilder builder;
        builder.SetEnabled(false);
        QCOMPARE(builder.GetDecoratedLink(QStringLiteral("Help")),
                 QStringLiteral("<a href=\"link\" style=\"text-decoration: none; color:#7f7f80;\">Help<\\a>"));
        builder.SetNoLinkMode(true);
        QCOMPARE(builder.GetDecoratedLink(QStringLiteral("Help")), QStringLiteral("Help"));
    }
};

QTEST_MAIN(TestTextHelpers)
#include "tst_text_helpers.moc"
