#include <qt_halvo/widgets/text/multi_line_label.h>

#include <QtTest/QtTest>

using OrvantaQT::MultiLineLabel;

class TestMultiLineLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneParagraphAndItsLastLine_data();
    void oneParagraphAndItsLastLine();
};

void TestMultiLineLabel::oneParagraphAndItsLastLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html"); // %1 the line height
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<int>("breaks");
    QTest::newRow("CR LF counts once") << "first\r\nsecond" << "first<br/>second" << "second" << 1;
    QTest::newRow("every break") << "a\nb\rc<br>last line" << "a<br/>b<br/>c<br/>last line" << "last line" << 3;
    QTest::newRow("ends with a break") << "only\n" << "only<br/>" << QString() << 1;
    QTest::newRow("one line") << "one line" << "one line" << "one line" << 0;
    QTest::newRow("empty") << QString() << QString() << QString() << 0;
}

void TestMultiLineLabel::oneParagraphAndItsLastLine()
{
    QFETCH(QString, text);
    QFETCH(QString, html);
    QFETCH(QString, lastLine);
    QFETCH(int, breaks);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    MultiLineLabel label;
    label.setFont(font);
    label.setMultilineText(text);
    const QString paragraph = QStringLiteral("<p style = \"line-height:%1\">%2</p>");
    QCOMPARE(label.text(), paragraph.arg(100).arg(html));
    label.setLineHeight(150);
    QCOMPARE(label.text(), paragraph.arg(150).arg(html));

    const QFontMetrics metrics(font);
    const int x = lastLine.isEmpty() ? 0 : metrics.boundingRect(lastLine).width() + metrics.averageCharWidth();
    QCOMPARE(label.LastLineTopRight(), QPoint(x, breaks * (metrics.height() * 150 / 100)));
}

QTEST_MAIN(TestMultiLineLabel)
#include "tst_multi_line_label.moc"
