#include <qt_halvo/widgets/text/rich_text.h>

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>

class TestRichText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineBreaksBecomeBr_data();
    void lineBreaksBecomeBr();
    void argumentsElidedToTheLabelsWidth();
};

void TestRichText::lineBreaksBecomeBr_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rich");
    QTest::newRow("all four") << "a\r\nb\nc\rd<br>e" << "a<br>b<br>c<br>d<br>e";
    QTest::newRow("LF CR is two") << "a\n\rb" << "a<br><br>b";
    QTest::newRow("upper-case BR kept") << "a<BR>b" << "a<BR>b";
    QTest::newRow("none") << "plain" << "plain";
}

void TestRichText::lineBreaksBecomeBr()
{
    QFETCH(QString, text);
    QFETCH(QString, rich);
    QCOMPARE(OrvantaQT::ConvertToRichText(text), rich);
}

void TestRichText::argumentsElidedToTheLabelsWidth()
{
    QLabel label;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    label.setFont(font);
    label.resize(120, 20);
    const QString longName = QStringLiteral("a_rather_long_file_name_that_does_not_fit.txt");
    const QString shortName = QStringLiteral("b.txt");
    const QString result = OrvantaQT::FormatElidedTextForLabel(&label, QStringLiteral("%1 → %2"), {longName, shortName});
    const QString elided = QFontMetrics(font).elidedText(longName, Qt::ElideMiddle, 120);
    QCOMPARE(result, elided + QStringLiteral(" → ") + shortName);
    QVERIFY(elided.contains(QChar(0x2026)));

    const LogCapture::Mark mark;
    QCOMPARE(OrvantaQT::FormatElidedTextForLabel(nullptr, QStringLiteral("%1"), {longName}), QString());
    QCOMPARE(mark.Since().size(), 1);
}

QTEST_MAIN(TestRichText)
#include "tst_rich_text.moc"
