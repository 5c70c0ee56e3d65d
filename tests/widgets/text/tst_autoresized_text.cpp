#include <qt_halvo/widgets/text/autoresized_text.h>

#include <QtGui/QFontDatabase>
#include <QtTest/QtTest>

using OrvantaQT::AutoresizedText;

namespace {

// A font every machine running the tests has (the set-up installs it), at a pixel size,
// so that widths do not depend on the machine.
QFont TestFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

const QString kLong = QStringLiteral("Synchronising your library");
const QString kMiddle = QStringLiteral("Synchronising");
const QString kShort = QStringLiteral("Sync");

int Width(const QString& text)
{
    return QFontMetrics(TestFont()).horizontalAdvance(text);
}

struct Label
{
    Label()
    {
        label.setFont(TestFont());
        label.setContentsMargins(0, 0, 0, 0);
        // Shown, so that resizes arrive at once, but not mapped on the screen.
        label.setAttribute(Qt::WA_DontShowOnScreen);
        label.show();
    }
    // Gives the label contents of this width.
    void SetWidth(int width) { label.resize(width, 30); }
    QString Shown() const { return label.QLabel::text(); }

    AutoresizedText label;
};

} // namespace

class TestAutoresizedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void widestFittingPhrasing_data();
    void widestFittingPhrasing();
    void aNewFontChoosesAgain();
    void phrasingsAreKeptNarrowestFirst();
    void eachLineElided_data();
    void eachLineElided();
    void fadeRunsOutAtTheRightEdge();
    void clickableWhenAskedTo();
};

void TestAutoresizedText::initTestCase()
{
    QVERIFY2(QFontDatabase().families().contains(QStringLiteral("DejaVu Sans")), "fonts-dejavu-core is installed");
}

void TestAutoresizedText::widestFittingPhrasing_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("tip");

    QTest::newRow("wider than the longest") << Width(kLong) + 20 << kLong << QString();
    QTest::newRow("exactly the longest") << Width(kLong) << kLong << QString();
    QTest::newRow("just below the longest") << Width(kLong) - 1 << kMiddle << kLong;
    QTest::newRow("just above the middle") << Width(kMiddle) + 1 << kMiddle << kLong;
    // An alternative must be strictly narrower than the room.
    QTest::newRow("exactly the middle") << Width(kMiddle) << kShort << kLong;
    QTest::newRow("just above the shortest") << Width(kShort) + 1 << kShort << kLong;
    // The narrowest is the fallback, shown without a tip even when it does not fit.
    QTest::newRow("exactly the shortest") << Width(kShort) << kShort << QString();
    QTest::newRow("below the shortest") << Width(kShort) - 5 << kShort << QString();
}

void TestAutoresizedText::widestFittingPhrasing()
{
    QFETCH(int, width);
    QFETCH(QString, shown);
    QFETCH(QString, tip);
    Label l;
    l.label.setStrings({kMiddle, kLong, kShort});
    l.SetWidth(width);
    QCOMPARE(l.Shown(), shown);
    QCOMPARE(l.label.toolTip(), tip);
    QCOMPARE(l.label.sizeHint().width(), Width(kLong));
    QCOMPARE(l.label.minimumSizeHint().width(), Width(kShort));
}

// The phrasings are measured once per font, so a new font must measure them again.
void TestAutoresizedText::aNewFontChoosesAgain()
{
    Label l;
    l.label.setStrings({kMiddle, kLong, kShort});
    l.SetWidth(Width(kMiddle) + 1);
    QCOMPARE(l.Shown(), kMiddle);
    QFont larger = TestFont();
    larger.setPixelSize(26);
    l.label.setFont(larger);
    QCOMPARE(l.Shown(), kShort);
    QCOMPARE(l.label.sizeHint().width(), QFontMetrics(larger).horizontalAdvance(kLong));
}

void TestAutoresizedText::phrasingsAreKeptNarrowestFirst()
{
    Label l;
    l.label.setStrings({QStringLiteral("abcd"), QStringLiteral("a")});
    QCOMPARE(l.label.strings(), (QStringList{QStringLiteral("a"), QStringLiteral("abcd")}));
    l.label.setStrings({});
    QCOMPARE(l.label.minimumSizeHint().width(), Width(QStringLiteral("...")));
    QCOMPARE(l.Shown(), QString());
    QCOMPARE(l.label.toolTip(), QString());
}

void TestAutoresizedText::eachLineElided_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("tip");

    const QString twoLines = QStringLiteral("first line\r\nsecond");
    const QFontMetrics metrics(TestFont());
    QTest::newRow("fits, line ends made <br>") << twoLines << int(Qt::ElideRight) << 300
                                               << "first line<br>second" << twoLines;
    QTest::newRow("narrow: each line elided") << twoLines << int(Qt::ElideRight) << 40
                                              << metrics.elidedText(QStringLiteral("first line"), Qt::ElideRight, 40) + "<br>"
                                                     + metrics.elidedText(QStringLiteral("second"), Qt::ElideRight, 40)
                                              << twoLines;
    QTest::newRow("fits exactly on one line") << kLong << int(Qt::ElideRight) << Width(kLong) << kLong << QString();
    QTest::newRow("no eliding, room enough") << twoLines << int(Qt::ElideNone) << 300 << twoLines << QString();
    // Without eliding there is never a tip, even when the line ends were rewritten.
    QTest::newRow("no eliding, narrow") << twoLines << int(Qt::ElideNone) << 40 << "first line<br>second" << QString();
    QTest::newRow("empty") << QString() << int(Qt::ElideRight) << 100 << QString() << QString();
}

void TestAutoresizedText::eachLineElided()
{
    QFETCH(QString, text);
    QFETCH(int, mode);
    QFETCH(int, width);
    QFETCH(QString, shown);
    QFETCH(QString, tip);
    Label l;
    l.label.setElideMode(Qt::TextElideMode(mode));
    l.label.setText(text);
    l.SetWidth(width);
    QCOMPARE(l.label.text(), text);
    QCOMPARE(l.Shown(), shown);
    QCOMPARE(l.label.toolTip(), tip);
}

// The stop is an integer share of the room to spare: 0 for any ordinary width, and
// negative, so dropped, when the text is over twice as wide as the label.
void TestAutoresizedText::fadeRunsOutAtTheRightEdge()
{
    Label l;
    l.label.setText(kLong);
    l.SetWidth(Width(kLong) - 10);
    l.label.setFadeElide(true);
    QCOMPARE(l.Shown(), kLong);
    QCOMPARE(l.label.toolTip(), QString());
    const QGradient* gradient = l.label.palette().brush(QPalette::Active, l.label.foregroundRole()).gradient();
    QVERIFY(gradient && gradient->type() == QGradient::LinearGradient);
    const QGradientStops stops = gradient->stops();
    QCOMPARE(stops.size(), 2);
    QCOMPARE(stops.at(0).first, 0.0);
    QCOMPARE(stops.at(1), QGradientStop(1.0, QColor(Qt::transparent)));
    QCOMPARE(static_cast<const QLinearGradient*>(gradient)->finalStop().y(), 0.0); // horizontal

    l.SetWidth(Width(kLong) / 3);
    const QGradientStops narrow = l.label.palette().brush(QPalette::Active, l.label.foregroundRole()).gradient()->stops();
    QCOMPARE(narrow.size(), 1);
    QCOMPARE(narrow.first().first, 1.0);
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
