#include <qt_halvo/widgets/input/custom_plain_text_edit.h>

#include "test_support.h"

using OrvantaQT::CustomPlainTextEdit;
using TestSupport::ShowAndWait;
using TestSupport::TestFont;

namespace {

// The edit at the top of a window of a fixed width, its layout leaving room below.
struct Window
{
    QWidget window;
    CustomPlainTextEdit* edit = new CustomPlainTextEdit;

    explicit Window(int width = 240)
    {
        edit->setFont(TestFont());
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(edit);
        layout->addStretch();
        window.resize(width, 600);
    }
};

// A block of one line in the test font: the font's height, not its line spacing, as
// DejaVu Sans's leading is negative.
int LineHeight(int pixelSize = 13)
{
    return QFontMetrics(TestFont(pixelSize)).height();
}

void Settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

// The lines of the text as the cursor walks them down.
int LinesWalked(QPlainTextEdit* edit)
{
    QTextCursor cursor(edit->document());
    int lines = 1;
    while (cursor.movePosition(QTextCursor::Down))
        ++lines;
    return lines;
}

// Whether the edit shows all of its text without scrolling, and a pixel less would not.
bool FitsExactly(QPlainTextEdit* edit)
{
    const QSize size = edit->size();
    const bool fits = edit->verticalScrollBar()->maximum() == 0;
    edit->resize(size.width(), size.height() - 1);
    const bool tight = edit->verticalScrollBar()->maximum() > 0;
    edit->resize(size);
    return fits && tight;
}

struct ResizeCounter : QObject
{
    int resizes = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        resizes += event->type() == QEvent::Resize;
        return false;
    }
};

} // namespace

class TestCustomPlainTextEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void heightFollowsLines_data()
    {
        QTest::addColumn<int>("minimum");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("placeholder");
        QTest::addColumn<int>("lines"); // shown
        QTest::addColumn<bool>("scrolls");
        QTest::newRow("empty") << 1 << 8 << "" << "" << 1 << false;
        QTest::newRow("placeholder") << 1 << 8 << "" << "Write a message long enough to wrap twice, on and on and on" << 1 << false;
        QTest::newRow("one line") << 1 << 8 << "Hello" << "Say it" << 1 << false;
        QTest::newRow("empty lines") << 1 << 8 << "\n\n" << "" << 3 << false;
        QTest::newRow("minimum above the text") << 3 << 8 << "a" << "" << 3 << false;
        QTest::newRow("placeholder, minimum 2") << 2 << 8 << "" << "Say it" << 2 << false;
        QTest::newRow("at the maximum") << 2 << 4 << "a\nb\nc\nd" << "" << 4 << false;
        QTest::newRow("past the maximum") << 1 << 3 << "a\nb\nc\nd\ne" << "" << 3 << true;
        QTest::newRow("one line allowed") << 1 << 1 << "a\nb" << "" << 1 << true;
    }
    // As tall as its lines between the limits, all of them shown; past the maximum it scrolls.
    void heightFollowsLines()
    {
        QFETCH(int, minimum);
        QFETCH(int, maximum);
        QFETCH(QString, text);
        QFETCH(QString, placeholder);
        QFETCH(int, lines);
        QFETCH(bool, scrolls);
        Window empty;
        QVERIFY(ShowAndWait(&empty.window));
        const int extras = empty.edit->height() - LineHeight();
        Window shown;
        shown.edit->SetMaximumLines(maximum);
        shown.edit->SetMinimumLines(minimum);
        shown.edit->setPlaceholderText(placeholder);
        shown.edit->setPlainText(text);
        QVERIFY(ShowAndWait(&shown.window));
        // Past the maximum no margin below the last line shown: the next one would peek in.
        const int margin = scrolls ? int(shown.edit->document()->documentMargin()) : 0;
        QCOMPARE(shown.edit->height(), lines * LineHeight() + extras - margin);
        if (scrolls) {
            QTextCursor next(shown.edit->document());
            next.movePosition(QTextCursor::Down, QTextCursor::MoveAnchor, maximum);
            QVERIFY(shown.edit->cursorRect(next).top() >= shown.edit->viewport()->height() - 1);
        }
        QCOMPARE(shown.edit->verticalScrollBar()->isVisible(), scrolls);
        QCOMPARE(shown.edit->verticalScrollBarPolicy(), scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        QCOMPARE(shown.edit->verticalScrollBar()->maximum() > 0, scrolls);
        QCOMPARE(shown.edit->ContentLines() > maximum, scrolls);
        // Unless the minimum adds lines, not a pixel more than the text.
        QVERIFY(shown.edit->ContentLines() != lines || FitsExactly(shown.edit));
        if (text.isEmpty() && lines == 1) // the placeholder is painted
            QCOMPARE(TestSupport::Changed(TestSupport::Render(empty.edit), TestSupport::Render(shown.edit)).isEmpty(),
                     placeholder.isEmpty());
    }
    // Wrapped lines count, and so does a horizontal scroll bar when lines do not wrap.
    void wrappedLinesAndScrollBars()
    {
        Window window(200);
        window.edit->setPlainText("The quick brown fox jumps over the lazy dog, then runs off into the woods.\nEnd");
        QVERIFY(ShowAndWait(&window.window));
        QVERIFY(LinesWalked(window.edit) > 3);
        QCOMPARE(window.edit->ContentLines(), LinesWalked(window.edit));
        QVERIFY(FitsExactly(window.edit));
        window.edit->setLineWrapMode(QPlainTextEdit::NoWrap);
        Settle();
        QCOMPARE(window.edit->ContentLines(), 2);
        QVERIFY(window.edit->horizontalScrollBar()->isVisible());
        QVERIFY(FitsExactly(window.edit));
    }
    // A new font, new limits, a wider frame or another document: the height follows.
    void remeasures()
    {
        Window window; // empty: a new font or frame leaves the document's size as it is
        window.edit->SetMinimumLines(2);
        QVERIFY(ShowAndWait(&window.window));
        const int before = window.edit->height();
        window.edit->setFont(TestFont(26));
        Settle();
        QCOMPARE(window.edit->height() - before, 2 * (LineHeight(26) - LineHeight()));
        window.edit->setFont(TestFont());
        window.edit->SetMinimumLines(1);
        Settle();
        const int plain = window.edit->height();
        window.edit->setStyleSheet("QPlainTextEdit { border: 7px solid; }");
        Settle();
        QVERIFY(window.edit->height() > plain && FitsExactly(window.edit));
        const int framed = window.edit->height();
        window.edit->SetMinimumLines(4);
        Settle();
        QCOMPARE(window.edit->height() - framed, 3 * LineHeight());
        window.edit->SetMaximumLines(5);
        window.edit->SetMinimumLines(1);
        window.edit->setPlainText("a\nb\nc\nd\ne\nf");
        Settle();
        // Five lines of six, without the margin below them.
        QCOMPARE(window.edit->height() - framed, 4 * LineHeight() - int(window.edit->document()->documentMargin()));
        window.edit->SetMaximumLines(6);
        Settle();
        QCOMPARE(window.edit->height() - framed, 5 * LineHeight());
        auto* document = new QTextDocument(window.edit);
        document->setDocumentLayout(new QPlainTextDocumentLayout(document));
        document->setPlainText("1\n2\n3");
        window.edit->setDocument(document);
        Settle();
        QVERIFY(FitsExactly(window.edit));
        QTextCursor(document).insertText("0\n");
        Settle();
        QVERIFY(FitsExactly(window.edit));
    }
    // Typing resizes the edit at most twice an edit, to a height known right after the edit,
    // even where the scroll bar, coming and going, makes a line wrap or not.
    void resizesPerEdit()
    {
        Window window;
        window.edit->SetMaximumLines(3);
        ResizeCounter counter;
        window.edit->installEventFilter(&counter);
        QVERIFY(ShowAndWait(&window.window));
        const QFontMetrics metrics(TestFont());
        QVERIFY(metrics.horizontalAdvance('i') < window.edit->verticalScrollBar()->sizeHint().width());
        const auto step = [&](const std::function<void()>& keys, int walked, bool scrolls) {
            counter.resizes = 0;
            keys();
            const int hinted = window.edit->sizeHint().height(); // known at once, not after a paint
            Settle();
            return counter.resizes <= 2 && window.edit->height() == hinted && LinesWalked(window.edit) == walked
                && window.edit->verticalScrollBar()->isVisible() == scrolls && (scrolls || FitsExactly(window.edit));
        };
        QVERIFY(step([&] { QTest::keyClicks(window.edit, "Hello"); }, 1, false));
        QVERIFY(step([&] { QTest::keyClicks(window.edit, " world, and a few words more to wrap"); }, 2, false));
        QVERIFY(step([&] { QTest::keyClick(window.edit, Qt::Key_Return); }, 3, false));
        QVERIFY(step([&] { QTest::keyClicks(window.edit, "\rpast"); }, 4, true));
        QVERIFY(step([&] { QTest::keyClicks(window.edit, QString(5, '\b')); }, 3, false));
        // A line that fills the width but for less than the scroll bar.
        window.edit->setPlainText("a\n");
        window.edit->moveCursor(QTextCursor::End);
        for (int i = 0; i < 200 && LinesWalked(window.edit) == 2; ++i)
            QTest::keyClick(window.edit, 'i');
        QVERIFY(step([&] { QTest::keyClick(window.edit, Qt::Key_Backspace); }, 2, false));
        QVERIFY(step([&] { QTest::keyClicks(window.edit, "\rb"); }, 3, false));
        QVERIFY(step([&] { QTest::keyClicks(window.edit, "\rc"); }, 5, true)); // beside the bar it wraps
        QVERIFY(step([&] { QTest::keyClicks(window.edit, "\b\b"); }, 3, false));
        QVERIFY(step([&] { QTest::keyClicks(window.edit, "\rc"); }, 5, true));
        QVERIFY(step([&] { // the last two lines at once
            QTextCursor cursor = window.edit->textCursor();
            cursor.movePosition(QTextCursor::PreviousBlock, QTextCursor::KeepAnchor);
            cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        }, 2, false));
        QGuiApplication::clipboard()->setText("1\n2\n3\n4");
        QVERIFY(step([&] { window.edit->paste(); }, 6, true));
        QVERIFY(window.edit->viewport()->rect().contains(window.edit->cursorRect()));
    }
    void inputStopsAtMaximumLength_data()
    {
        QTest::addColumn<int>("maximum");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("how"); // type (\r Return, \b Backspace), key, paste or compose; where, in what mode
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("signals_"); // t textChanged(), M MaximumLengthReached()
        QTest::newRow("typed") << 5 << "" << "type" << "abcdefg" << "abcde" << "tttttMM";
        QTest::newRow("no maximum") << 0 << "" << "type" << "abcdefg" << "abcdefg" << "ttttttt";
        QTest::newRow("new line, tab") << 6 << "abcde" << "type" << "\r\t" << "abcde\n" << "tM";
        QTest::newRow("over a selection") << 5 << "abcde" << "type over all" << "xy" << "xy" << "tt";
        QTest::newRow("overwriting") << 5 << "abcde" << "type overwrite start" << "xy" << "xycde" << "tttt";
        QTest::newRow("overwrite at the end") << 5 << "abcde" << "type overwrite" << "x" << "abcde" << "M";
        QTest::newRow("overwrite, new line") << 5 << "abcde" << "type overwrite start" << "\r" << "abcde" << "M";
        QTest::newRow("overwrite, already longer") << 4 << "abcde" << "type overwrite start" << "x" << "abcde" << "M";
        QTest::newRow("backspace") << 5 << "abcde" << "type" << "\bef" << "abcde" << "ttM";
        QTest::newRow("already longer") << 3 << "abcde" << "type" << "\bef" << "abcd" << "tMM";
        QTest::newRow("read-only") << 3 << "abc" << "type read-only" << "d" << "abc" << "";
        // Keys as Qt types them or not: with Ctrl (not AltGr) only a format character.
        QTest::newRow("emoji key") << 5 << "abcd" << "key" << "\U0001F600" << "abcd" << "M";
        QTest::newRow("private use") << 5 << "abcde" << "key" << "\uE000" << "abcde" << "M";
        QTest::newRow("private use, room") << 6 << "abcde" << "key" << "\uE000" << "abcde\uE000" << "t";
        QTest::newRow("joiner, Ctrl+Shift") << 5 << "abcde" << "key ctrl shift" << "\u200D" << "abcde" << "M";
        QTest::newRow("joiner, room") << 6 << "abcde" << "key ctrl shift" << "\u200D" << "abcde\u200D" << "t";
        QTest::newRow("Ctrl") << 5 << "abcde" << "key ctrl" << "x" << "abcde" << "";
        QTest::newRow("Ctrl+Shift") << 5 << "abcde" << "key ctrl shift" << "x" << "abcde" << "";
        QTest::newRow("AltGr") << 5 << "abcde" << "key ctrl alt" << "x" << "abcde" << "M";
        QTest::newRow("Return without text") << 5 << "abcde" << "key return" << "" << "abcde" << "M";
        QTest::newRow("Left") << 5 << "abcde" << "key left" << "" << "abcde" << "";
        QTest::newRow("Left, already longer") << 3 << "abcde" << "key left" << "" << "abcde" << "";
        QTest::newRow("pasted text and html") << 0 << "Hi " << "paste" << "there" << "Hi there" << "t";
        QTest::newRow("pasted, what fits") << 8 << "Hi " << "paste" << "there friend" << "Hi there" << "tM";
        QTest::newRow("pasted, read-only") << 0 << "abc" << "paste read-only" << "d" << "abc" << "";
        QTest::newRow("pasted, nothing fits") << 3 << "abc" << "paste" << "d" << "abc" << "M";
        QTest::newRow("CR LF is one break") << 5 << "" << "paste" << "ab\r\ncd" << "ab\ncd" << "t";
        QTest::newRow("a pair kept whole") << 3 << "a" << "paste" << "b\U0001F600" << "ab" << "tM";
        QTest::newRow("html alone") << 0 << "" << "paste html" << "<p>Hello <i>you</i></p>" << "Hello you" << "t";
        QTest::newRow("html and an image") << 0 << "" << "paste html" << "<p>A<img src=\"x.png\">B</p>" << "AB" << "t";
        QTest::newRow("composed, no maximum") << 0 << "abc" << "compose" << "def" << "abcdef" << "t";
        QTest::newRow("composed, fitting") << 6 << "abc" << "compose" << "def" << "abcdef" << "t";
        QTest::newRow("composed") << 5 << "abc" << "compose" << "defg" << "abcde" << "tM";
        QTest::newRow("composed over the last") << 5 << "abcde" << "compose over last" << "xy" << "abcdx" << "tM";
    }
    // Typing, pasting and composing add no more than fits, and say so once an input.
    // Pastes are plain text, undone in one step; images are not pasted.
    void inputStopsAtMaximumLength()
    {
        QFETCH(int, maximum);
        QFETCH(QString, before);
        QFETCH(QString, how);
        QFETCH(QString, input);
        QFETCH(QString, after);
        QFETCH(QString, signals_);
        CustomPlainTextEdit edit;
        edit.setPlainText(before);
        edit.moveCursor(how.contains("start") ? QTextCursor::Start : QTextCursor::End);
        if (how.contains("all"))
            edit.selectAll();
        edit.setOverwriteMode(how.contains("overwrite"));
        edit.setReadOnly(how.contains("read-only"));
        edit.SetMaximumLength(maximum);
        TestSupport::SignalLog log(&edit, {"textChanged()", "MaximumLengthReached()"});
        if (how.startsWith("type")) {
            QTest::keyClicks(&edit, input);
        } else if (how.startsWith("key")) {
            const Qt::KeyboardModifiers modifiers((how.contains("ctrl") ? Qt::ControlModifier : Qt::NoModifier)
                                                  | (how.contains("shift") ? Qt::ShiftModifier : Qt::NoModifier)
                                                  | (how.contains("alt") ? Qt::AltModifier : Qt::NoModifier));
            const Qt::Key key = how.contains("return") ? Qt::Key_Return : how.contains("left") ? Qt::Key_Left : Qt::Key_unknown;
            QTest::sendKeyEvent(QTest::Click, &edit, key, input, modifiers);
        } else if (how.startsWith("compose")) {
            QInputMethodEvent composed(QString(), {});
            composed.setCommitString(input, how.contains("last") ? -1 : 0, how.contains("last") ? 1 : 0);
            QCoreApplication::sendEvent(&edit, &composed);
        } else {
            auto* data = new QMimeData;
            data->setHtml(how.contains("html") ? input : "<b>" + input + "</b>");
            if (!how.contains("html"))
                data->setText(input);
            QGuiApplication::clipboard()->setMimeData(data);
            QCOMPARE(edit.canPaste(), !edit.isReadOnly());
            edit.paste();
        }
        QCOMPARE(edit.toPlainText(), after);
        QStringList expected;
        for (const QChar signal : signals_)
            expected << (signal == 't' ? "textChanged()" : "MaximumLengthReached()");
        QCOMPARE(log.Take(), expected);
        if (how.startsWith("paste")) {
            edit.undo();
            QCOMPARE(edit.toPlainText(), before);
            auto* image = new QMimeData;
            image->setImageData(QImage(4, 4, QImage::Format_RGB32));
            QGuiApplication::clipboard()->setMimeData(image);
            QVERIFY(!edit.canPaste());
        }
    }
    void badInputIsLoggedAndClamped_data()
    {
        QTest::addColumn<int>("minimum"); // set first
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("used");
        QTest::addColumn<QString>("logged");
        QTest::newRow("fine") << 1 << QByteArray("minimumLines") << 3 << 3 << "";
        QTest::newRow("negative minimum") << 1 << QByteArray("minimumLines") << -2 << 1
                                          << "a minimum of -2 lines is outside 1 to 8 (the maximum); 1 is used";
        QTest::newRow("minimum above maximum") << 1 << QByteArray("minimumLines") << 12 << 8
                                               << "a minimum of 12 lines is outside 1 to 8 (the maximum); 8 is used";
        QTest::newRow("negative maximum") << 1 << QByteArray("maximumLines") << -5 << 1
                                          << "a maximum of -5 lines is below the minimum of 1; 1 is used";
        QTest::newRow("maximum below minimum") << 3 << QByteArray("maximumLines") << 2 << 3
                                               << "a maximum of 2 lines is below the minimum of 3; 3 is used";
        QTest::newRow("no length") << 1 << QByteArray("maximumLength") << 0 << 0 << "";
        QTest::newRow("negative length") << 1 << QByteArray("maximumLength") << -1 << 0
                                         << "a maximum length of -1 characters is taken as none";
    }
    void badInputIsLoggedAndClamped()
    {
        QFETCH(int, minimum);
        QFETCH(QByteArray, property);
        QFETCH(int, value);
        QFETCH(int, used);
        QFETCH(QString, logged);
        CustomPlainTextEdit edit;
        edit.SetMinimumLines(minimum);
        const LogCapture::Mark mark;
        QVERIFY(edit.setProperty(property.constData(), value));
        QCOMPARE(mark.Texts(), logged.isEmpty() ? QStringList() : QStringList("3 CustomPlainTextEdit: " + logged));
        QCOMPARE(edit.property(property.constData()).toInt(), used);
        QTest::keyClicks(&edit, "typed on");
        QCOMPARE(edit.toPlainText(), QString("typed on"));
    }
    // The size hint is right from the start, and stays a widget's size with any limits.
    void sizeHints()
    {
        QWidget window;
        auto* fresh = new CustomPlainTextEdit;
        const int hinted = fresh->sizeHint().height();
        (new QVBoxLayout(&window))->addWidget(fresh);
        QVERIFY(ShowAndWait(&window));
        QCOMPARE(fresh->height(), hinted);
        CustomPlainTextEdit edit;
        edit.SetMaximumLines(std::numeric_limits<int>::max());
        edit.SetMinimumLines(std::numeric_limits<int>::max());
        QCOMPARE(edit.sizeHint().height(), QWIDGETSIZE_MAX);
    }
};

QTEST_MAIN(TestCustomPlainTextEdit)
#include "tst_custom_plain_text_edit.moc"
