#include <qt_halvo/widgets/text/rich_text.h>

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

class TestRichText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineBreaksBecomeBr();
    void argumentsElidedToTheLabelsWidth();
};

void TestRichText::lineBreaksBecomeBr()
{
    using OrvantaQT::ConvertToRichText;
    QCOMPARE(ConvertToRichText(QStringLiteral("a\r\nb\nc\rd<br>e")), QStringLiteral("a<br>b<br>c<br>d<br>e"));
    QCOMPARE(ConvertToRichText(QStringLiteral("a\n\rb")), QStringLiteral("a<br><br>b")); // LF CR is two breaks
    QCOMPARE(ConvertToRichText(QStringLiteral("a<BR>b")), QStringLiteral("a<BR>b")); // only lower case is a break
    QCOMPARE(ConvertToRichText(QStringLiteral("plain")), QStringLiteral("plain"));
}

void TestRichText::argumentsElidedToTheLabelsWidth()
{
    QLabel label;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    label.setFont(font);
    label.resize(120, 20);
    const QString name = QStringLiteral("a_rather_long_file_name_that_does_not_fit.txt");
    const QString elided = QFontMetrics(font).elidedText(name, Qt::ElideMiddle, 120);
    QVERIFY(elided.contains(QChar(0x2026)));
    QCOMPARE(OrvantaQT::FormatElidedTextForLabel(&label, QStringLiteral("%1 → %2"), {name, QStringLiteral("b.txt")}),
             elided + QStringLiteral(" → b.txt"));

    const LogCapture::Mark mark;
    QCOMPARE(OrvantaQT::FormatElidedTextForLabel(nullptr, QStringLiteral("%1"), {name}), QString());
    QCOMPARE(mark.Since().size(), 1);
}

QTEST_MAIN(TestRichText)
#include "tst_rich_text.moc"
