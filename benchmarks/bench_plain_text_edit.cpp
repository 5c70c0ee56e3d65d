// CustomPlainTextEdit with 10,000 lines: a keystroke that adds a line and one that takes
// it away again (both change the document's size, so the edit measures its height anew),
// at the top and at the end of the text, next to a plain QPlainTextEdit doing the same;
// and the measure alone.

#include <qt_halvo/widgets/input/custom_plain_text_edit.h>

#include <QtTest/QtTest>
#include <QtWidgets/QPlainTextEdit>

using OrvantaQT::CustomPlainTextEdit;

namespace {

QString TenThousandLines()
{
    QStringList lines;
    lines.reserve(10000);
    for (int i = 0; i < 10000; ++i)
        lines << QStringLiteral("Line %1 of a long note, short enough not to wrap").arg(i);
    return lines.join(QLatin1Char('\n'));
}

void Prepare(QPlainTextEdit* edit, bool atTop)
{
    edit->resize(480, 200);
    edit->setPlainText(TenThousandLines());
    edit->show();
    QVERIFY(QTest::qWaitForWindowExposed(edit));
    edit->moveCursor(atTop ? QTextCursor::Start : QTextCursor::End);
}

} // namespace

class BenchPlainTextEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void returnAndBackspace_data()
    {
        QTest::addColumn<bool>("custom");
        QTest::addColumn<bool>("atTop");
        QTest::newRow("CustomPlainTextEdit, at the top") << true << true;
        QTest::newRow("QPlainTextEdit, at the top") << false << true;
        QTest::newRow("CustomPlainTextEdit, at the end") << true << false;
        QTest::newRow("QPlainTextEdit, at the end") << false << false;
    }
    // Two keystrokes per iteration.
    void returnAndBackspace()
    {
        QFETCH(bool, custom);
        QFETCH(bool, atTop);
        QScopedPointer<QPlainTextEdit> edit(custom ? new CustomPlainTextEdit : new QPlainTextEdit);
        Prepare(edit.data(), atTop);
        QBENCHMARK {
            QTest::keyClick(edit.data(), Qt::Key_Return);
            QTest::keyClick(edit.data(), Qt::Key_Backspace);
        }
        QCOMPARE(edit->blockCount(), 10000);
    }

    // What the edit asks on each measure: the lines of its text, and its size hint.
    void measure()
    {
        CustomPlainTextEdit edit;
        Prepare(&edit, true);
        int lines = 0;
        QBENCHMARK {
            lines += edit.ContentLines() + edit.sizeHint().height();
        }
        QVERIFY(lines > 0);
    }
};

QTEST_MAIN(BenchPlainTextEdit)
#include "bench_plain_text_edit.moc"
