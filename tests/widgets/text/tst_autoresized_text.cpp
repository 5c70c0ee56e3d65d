#include <qt_halvo/widgets/text/autoresized_text.h>

#include <QtGui/QFontDatabase>
#include <QtTest/QtTest>

using OrvantaQT::AutoresizedText;

namespace {

// Installed by the set-up, at a pixel size, so that widths do not depend on the machine.
QFont TestFont(int pixelSize = 13)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    return font;
}

const QString kLong = QStringLiteral("Synchronising your library");
const QString kMiddle = QStringLiteral("Synchronising");
const QString kShort = QStringLiteral("Sync");
const QString kTwoLines = QStringLiteral("first line\r\nsecond");

int Width(const QString& text)
{
    return QFontMetrics(TestFont()).horizontalAdvance(text);
}

// Shown, so that resizes arrive at once, but not mapped on the screen.
struct Label : AutoresizedText
{
    Label()
    {
        setFont(TestFont());
        setContentsMargins(0, 0, 0, 0);
        setAttribute(Qt::WA_DontShowOnScreen);
        show();
    }
    QString Shown() const { return QLabel::text(); }
    QGradientStops Stops() const { return palette().brush(QPalette::Active, foregroundRole()).gradient()->stops(); }
};

void AddRow(const char* name, const QStringList& strings, const QString& text, Qt::TextElideMode mode, int width,
            const QString& shown, const QString& tip)
{
    QTest::newRow(name) << strings << text << int(mode) << width << shown << tip;
}

} // namespace

class TestAutoresizedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void shownTextAndTip_data();
    void shownTextAndTip();
    void phrasingsMeasuredPerFontNarrowestFirst();
    void fadeRunsOutAtTheRightEdge();
    void clickableWhenAskedTo();
};

void TestAutoresizedText::initTestCase()
{
    QVERIFY2(QFontDatabase().families().contains(QStringLiteral("DejaVu Sans")), "fonts-dejavu-core is installed");
}

// The widest phrasing that fits, or else the text with each line elided.
void TestAutoresizedText::shownTextAndTip_data()
{
    QTest::addColumn<QStringList>("strings");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("tip");
    const QStringList three{kMiddle, kLong, kShort};
    const Qt::TextElideMode right = Qt::ElideRight;
    AddRow("wider than the longest", three, QString(), right, Width(kLong) + 20, kLong, QString());
    AddRow("exactly the longest", three, QString(), right, Width(kLong), kLong, QString());
    AddRow("just below the longest", three, QString(), right, Width(kLong) - 1, kMiddle, kLong);
    AddRow("just above the middle", three, QString(), right, Width(kMiddle) + 1, kMiddle, kLong);
    // An alternative must be strictly narrower than the room.
    AddRow("exactly the middle", three, QString(), right, Width(kMiddle), kShort, kLong);
    AddRow("just above the shortest", three, QString(), right, Width(kShort) + 1, kShort, kLong);
    // The narrowest is the fallback, shown without a tip even when it does not fit.
    AddRow("exactly the shortest", three, QString(), right, Width(kShort), kShort, QString());
    AddRow("below the shortest", three, QString(), right, Width(kShort) - 5, kShort, QString());

    const QFontMetrics metrics(TestFont());
    const QString elided = metrics.elidedText(QStringLiteral("first line"), right, 40) + QStringLiteral("<br>")
        + metrics.elidedText(QStringLiteral("second"), right, 40);
    AddRow("fits, line ends made <br>", {}, kTwoLines, right, 300, QStringLiteral("first line<br>second"), kTwoLines);
    AddRow("narrow: each line elided", {}, kTwoLines, right, 40, elided, kTwoLines);
    AddRow("fits exactly on one line", {}, kLong, right, Width(kLong), kLong, QString());
    AddRow("no eliding, room enough", {}, kTwoLines, Qt::ElideNone, 300, kTwoLines, QString());
    // Without eliding there is never a tip, even when the line ends were rewritten.
    AddRow("no eliding, narrow", {}, kTwoLines, Qt::ElideNone, 40, QStringLiteral("first line<br>second"), QString());
    AddRow("empty", {}, QString(), right, 100, QString(), QString());
}

void TestAutoresizedText::shownTextAndTip()
{
    QFETCH(QStringList, strings);
    QFETCH(QString, text);
    QFETCH(int, mode);
    QFETCH(int, width);
    QFETCH(QString, shown);
    QFETCH(QString, tip);
    Label l;
    l.setElideMode(Qt::TextElideMode(mode));
    l.setText(text);
    l.setStrings(strings);
    l.resize(width, 30);
    QCOMPARE(l.Shown(), shown);
    QCOMPARE(l.toolTip(), tip);
    QCOMPARE(l.minimumSizeHint().width(), Width(strings.isEmpty() ? QStringLiteral("...") : kShort));
    if (!strings.isEmpty())
        QCOMPARE(l.sizeHint().width(), Width(kLong));
}

void TestAutoresizedText::phrasingsMeasuredPerFontNarrowestFirst()
{
    Label l;
    l.setStrings({kMiddle, kLong, kShort});
    QCOMPARE(l.strings(), (QStringList{kShort, kMiddle, kLong}));
    l.resize(Width(kMiddle) + 1, 30);
    QCOMPARE(l.Shown(), kMiddle);
    l.setFont(TestFont(26));
    QCOMPARE(l.Shown(), kShort);
    QCOMPARE(l.sizeHint().width(), QFontMetrics(TestFont(26)).horizontalAdvance(kLong));
}

// The stop is an integer share of the room to spare: 0 for any ordinary width, and
// negative, so dropped, when the text is over twice as wide as the label.
void TestAutoresizedText::fadeRunsOutAtTheRightEdge()
{
    Label l;
    l.setText(kLong);
    l.resize(Width(kLong) - 10, 30);
    QPalette red = l.palette();
    red.setColor(l.foregroundRole(), Qt::red);
    l.setPalette(red);
    l.setFadeElide(true);
    QCOMPARE(l.Shown(), kLong);
    QCOMPARE(l.toolTip(), QString());
    const QGradient* gradient = l.palette().brush(QPalette::Active, l.foregroundRole()).gradient();
    QVERIFY(gradient && gradient->type() == QGradient::LinearGradient);
    QCOMPARE(static_cast<const QLinearGradient*>(gradient)->finalStop().y(), 0.0); // horizontal
    QCOMPARE(l.Stops().size(), 2);
    // From the text's own colour, also once the faded palette has come back as a change.
    QCOMPARE(l.Stops().at(0), QGradientStop(0.0, QColor(Qt::red)));
    QCOMPARE(l.Stops().at(1), QGradientStop(1.0, QColor(Qt::transparent)));
    l.resize(Width(kLong) - 20, 30);
    QCOMPARE(l.Stops().at(0), QGradientStop(0.0, QColor(Qt::red)));

    l.resize(Width(kLong) / 3, 30);
    QCOMPARE(l.Stops().size(), 1);
    QCOMPARE(l.Stops().first().first, 1.0);
}

void TestAutoresizedText::clickableWhenAskedTo()
{
    QWidget window;
    window.resize(300, 100);
    auto* label = new AutoresizedText(kLong, &window);
    label->setGeometry(10, 10, 250, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy clicked(label, &AutoresizedText::clicked);
    QSignalSpy doubleClicked(label, &AutoresizedText::doubleClicked);
    QTest::mouseClick(label, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
    QTest::mouseDClick(label, Qt::LeftButton);
    QCOMPARE(doubleClicked.count(), 1);

    label->setHoverUnderline(true);
    QTest::mouseMove(label, QPoint(20, 10));
    QTRY_COMPARE(label->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(label->property("hovered").toBool(), true);
    QTest::mouseClick(label, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    QTest::mouseClick(label, Qt::RightButton);
    QCOMPARE(clicked.count(), 1);
    QTest::mouseMove(&window, QPoint(290, 90));
    QTRY_COMPARE(label->property("hovered").toBool(), false);
    QCOMPARE(label->cursor().shape(), Qt::ArrowCursor);

    label->setEnabled(false);
    QTest::mouseDClick(label, Qt::LeftButton);
    QCOMPARE(doubleClicked.count(), 1);
}

QTEST_MAIN(TestAutoresizedText)
#include "tst_autoresized_text.moc"
