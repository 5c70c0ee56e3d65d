#include <qt_halvo/widgets/text/multi_line_label.h>

#include <QtTest/QtTest>

using OrvantaQT::MultiLineLabel;

class TestMultiLineLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneParagraphWithTheLineHeight_data();
    void oneParagraphWithTheLineHeight();
    void lastLineTopRight_data();
    void lastLineTopRight();
};

void TestMultiLineLabel::oneParagraphWithTheLineHeight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("lineHeight");
    QTest::addColumn<QString>("html");
    QTest::newRow("CR LF, 150") << "first\r\nsecond" << 150 << "<p style = \"line-height:150\">first<br/>second</p>";
    QTest::newRow("every break") << "a\nb\rc<br>d" << 100 << "<p style = \"line-height:100\">a<br/>b<br/>c<br/>d</p>";
    QTest::newRow("empty") << QString() << 120 << "<p style = \"line-height:120\"></p>";
}

void TestMultiLineLabel::oneParagraphWithTheLineHeight()
{
    QFETCH(QString, text);
    QFETCH(int, lineHeight);
    QFETCH(QString, html);
    MultiLineLabel label(text);
    QCOMPARE(label.lineHeight(), 100);
    label.setLineHeight(lineHeight);
    QCOMPARE(label.text(), html);
    QCOMPARE(label.multilineText(), text);
}

void TestMultiLineLabel::lastLineTopRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<int>("breaks");
    QTest::newRow("CR LF counts once") << "first\r\nsecond" << "second" << 1;
    QTest::newRow("three breaks") << "a\nb<br>c\rlast line" << "last line" << 3;
    QTest::newRow("ends with a break") << "only\n" << QString() << 1;
    QTest::newRow("one line") << "one line" << "one line" << 0;
}

void TestMultiLineLabel::lastLineTopRight()
{
    QFETCH(QString, text);
    QFETCH(QString, lastLine);
    QFETCH(int, breaks);
    MultiLineLabel label;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    label.setFont(font);
    label.setMultilineText(text);
    label.setLineHeight(150);
    const QFontMetrics metrics(font);
    const int x = lastLine.isEmpty() ? 0 : metrics.boundingRect(lastLine).width() + metrics.averageCharWidth();
    QCOMPARE(label.LastLineTopRight(), QPoint(x, breaks * (metrics.height() * 150 / 100)));
}

QTEST_MAIN(TestMultiLineLabel)
#include "tst_multi_line_label.moc"
