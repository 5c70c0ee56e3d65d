#include <qt_halvo/widgets/navigation/two_buttons.h>

#include "test_support.h"

using OrvantaQT::TwoButtons;

namespace {

// A Fusion style whose dialogs lay their buttons out one way.
class LayoutStyle : public QProxyStyle
{
public:
    explicit LayoutStyle(QDialogButtonBox::ButtonLayout layout) : QProxyStyle(QStringLiteral("Fusion")), m_layout(layout) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override
    {
        return hint == SH_DialogButtonLayout ? int(m_layout) : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    QDialogButtonBox::ButtonLayout m_layout;
};

// The colour of the picture's band (0 normal, 1 hovered, 2 pressed) at a point of it.
QString BandColour(int band, const QPoint& point)
{
    return QImage(QStringLiteral(":/two_buttons.png")).pixelColor(point + QPoint(0, band * 28)).name(QColor::HexArgb);
}

} // namespace

Q_DECLARE_METATYPE(QDialogButtonBox::ButtonLayout)

class TestTwoButtons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void platformOrder_data()
    {
        QTest::addColumn<QDialogButtonBox::ButtonLayout>("layout");
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<bool>("acceptFirst");
        QTest::newRow("Windows") << QDialogButtonBox::WinLayout << Qt::LeftToRight << true;
        QTest::newRow("macOS") << QDialogButtonBox::MacLayout << Qt::LeftToRight << false;
        QTest::newRow("KDE") << QDialogButtonBox::KdeLayout << Qt::LeftToRight << true;
        QTest::newRow("GNOME") << QDialogButtonBox::GnomeLayout << Qt::LeftToRight << false;
        QTest::newRow("Android") << QDialogButtonBox::AndroidLayout << Qt::LeftToRight << false;
        QTest::newRow("KDE, right to left") << QDialogButtonBox::KdeLayout << Qt::RightToLeft << true;
        QTest::newRow("GNOME, right to left") << QDialogButtonBox::GnomeLayout << Qt::RightToLeft << false;
    }
    // Accept and reject stand where a dialog of the style puts OK and Cancel (measured
    // beside it), mirrored right to left; each takes half of the pair, the tab order goes
    // the same way, and a new style brings its own order.
    void platformOrder()
    {
        QFETCH(QDialogButtonBox::ButtonLayout, layout);
        QFETCH(Qt::LayoutDirection, direction);
        QFETCH(bool, acceptFirst);
        LayoutStyle style(layout);
        QWidget window;
        window.setLayoutDirection(direction);
        auto* pair = new TwoButtons(&window);
        auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &window);
        pair->setGeometry(0, 0, 201, 30);
        box->setGeometry(0, 40, 300, 40);
        pair->setStyle(&style);
        box->setStyle(&style);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QPushButton* accept = pair->AcceptButton();
        QPushButton* reject = pair->RejectButton();
        const bool acceptLeft = acceptFirst == (direction == Qt::LeftToRight);
        QCOMPARE(accept->x() < reject->x(), acceptLeft);
        QCOMPARE(box->button(QDialogButtonBox::Ok)->x() < box->button(QDialogButtonBox::Cancel)->x(), acceptLeft);
        QCOMPARE(pair->IsAcceptFirst(), acceptFirst);
        const int left = direction == Qt::LeftToRight ? 100 : 101; // the first in reading order has the half
        QCOMPARE((acceptLeft ? accept : reject)->geometry(), QRect(0, 0, left, 30));
        QCOMPARE((acceptLeft ? reject : accept)->geometry(), QRect(left, 0, 201 - left, 30));
        QCOMPARE((acceptFirst ? accept : reject)->nextInFocusChain(), acceptFirst ? reject : accept);
        QCOMPARE(pair->focusProxy(), acceptFirst ? accept : reject);
        LayoutStyle other(acceptFirst ? QDialogButtonBox::GnomeLayout : QDialogButtonBox::KdeLayout);
        pair->setStyle(&other);
        QCOMPARE(accept->x() < reject->x(), !acceptLeft);
        QCOMPARE(pair->focusProxy(), acceptFirst ? reject : accept);
        window.setLayoutDirection(direction == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight);
        QCOMPARE(accept->x() < reject->x(), acceptLeft);
    }

    void keys_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("expected");
        QTest::newRow("Return on accept") << "AcceptButton" << int(Qt::Key_Return) << 0 << "Accepted()";
        QTest::newRow("Return on reject") << "RejectButton" << int(Qt::Key_Return) << 0 << "Accepted()";
        QTest::newRow("keypad Enter") << "RejectButton" << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "Accepted()";
        QTest::newRow("Escape on accept") << "AcceptButton" << int(Qt::Key_Escape) << 0 << "Rejected()";
        QTest::newRow("Space on reject") << "RejectButton" << int(Qt::Key_Space) << 0 << "Rejected()";
        QTest::newRow("Ctrl+Return inside") << "AcceptButton" << int(Qt::Key_Return) << int(Qt::ControlModifier) << "";
        QTest::newRow("Shift+Escape inside") << "RejectButton" << int(Qt::Key_Escape) << int(Qt::ShiftModifier) << "";
        QTest::newRow("Return outside") << "outside" << int(Qt::Key_Return) << 0 << "";
        QTest::newRow("Escape outside") << "outside" << int(Qt::Key_Escape) << 0 << "";
    }
    // With the focus on either button of a pair in a dialog, Enter accepts and Escape
    // rejects, before the window's shortcuts and the dialog; elsewhere they are not the pair's.
    void keys()
    {
        QFETCH(QString, focus);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, expected);
        QDialog dialog;
        (new QLineEdit(&dialog))->setObjectName(QStringLiteral("outside"));
        auto* pair = new TwoButtons(&dialog);
        pair->move(0, 40);
        int shortcuts = 0;
        for (const QKeySequence& sequence : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::Key_Return)})
            connect(new QShortcut(sequence, &dialog), &QShortcut::activated, [&shortcuts] { ++shortcuts; });
        QVERIFY(TestSupport::ShowAndWait(&dialog));
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QWidget* target = dialog.findChild<QWidget*>(focus);
        target->setFocus();
        TestSupport::SignalLog log(pair, {"Accepted()", "Rejected()"});
        QTest::keyClick(target, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(log.Take().join(QLatin1Char(' ')), expected);
        QCOMPARE(shortcuts, focus == QLatin1String("outside") ? 1 : 0);
        QVERIFY(dialog.isVisible());
        QTest::mouseClick(pair->RejectButton(), Qt::LeftButton);
        QTest::mouseClick(pair->AcceptButton(), Qt::LeftButton);
        QCOMPARE(log.Take(), TestSupport::Words("Rejected() Accepted()"));
    }

    void pixels_data()
    {
        QTest::addColumn<QString>("state"); // of the accept button, which is on the left
        QTest::addColumn<int>("band");
        QTest::newRow("normal") << "" << 0;
        QTest::newRow("hovered") << "hovered" << 1;
        QTest::newRow("pressed") << "pressed" << 2;
        QTest::newRow("pressed and hovered") << "pressed hovered" << 2;
    }
    // One rounded background for the pair; the hovered or pressed button's half in its band,
    // round at its outer corners and straight at the divider; the other half as it was; a
    // divider in the colour of the picture's edge.
    void pixels()
    {
        QFETCH(QString, state);
        QFETCH(int, band);
        LayoutStyle style(QDialogButtonBox::KdeLayout);
        TwoButtons pair;
        pair.setStyle(&style);
        pair.setGeometry(100, 100, 200, 28); // one band high: the rows as the picture has them
        QPalette dark = pair.palette(); // a dark desktop's, whose light text would not show
        dark.setColor(QPalette::ButtonText, Qt::white);
        pair.setPalette(dark);
        QVERIFY(TestSupport::ShowAndWait(&pair));
        QPushButton* accept = pair.AcceptButton();
        if (state.contains(QLatin1String("hovered")))
            TestSupport::PointerTo(accept, QPoint(30, 4));
        if (state.contains(QLatin1String("pressed")))
            QVERIFY(TestSupport::Repaints(&pair, [&] { QTest::mousePress(accept, Qt::LeftButton, Qt::NoModifier, QPoint(30, 4)); }));
        // Corner, left edge, middle and last column of the accept half (above the text),
        // the divider, middle of the reject half, right edge.
        QCOMPARE(TestSupport::Pixels(TestSupport::Render(&pair), {{0, 0}, {0, 14}, {50, 3}, {98, 3}, {100, 14}, {150, 3}, {199, 14}}),
                 QStringList({BandColour(band, {0, 0}), BandColour(band, {0, 14}), BandColour(band, {24, 3}),
                              BandColour(band, {24, 3}), BandColour(0, {0, 14}), BandColour(0, {24, 3}), BandColour(0, {47, 14})}));
        const QImage text = TestSupport::Render(&pair).copy(20, 6, 60, 16);
        int darkest = 255;
        for (int y = 0; y < text.height(); ++y)
            for (int x = 0; x < text.width(); ++x)
                darkest = qMin(darkest, text.pixelColor(x, y).lightness());
        QVERIFY2(darkest < 96, qPrintable(QString::number(darkest)));
        // The bands differ where the test looks, or it would prove nothing.
        QCOMPARE(QSet<QString>({BandColour(0, {24, 3}), BandColour(1, {24, 3}), BandColour(2, {24, 3})}).size(), 3);
        if (state.contains(QLatin1String("pressed")))
            QTest::mouseRelease(accept, Qt::LeftButton, Qt::NoModifier, QPoint(30, 4));
        QCOMPARE(TestSupport::Pixels(TestSupport::Render(&pair), {{50, 3}}),
                 QStringList(BandColour(state.contains(QLatin1String("hovered")) ? 1 : 0, {24, 3})));
    }

    // Named children; translated defaults that a text set replaces and a reset brings back;
    // halves as wide as the wider text needs.
    void textsAndSize()
    {
        TwoButtons pair;
        QCOMPARE(pair.AcceptButton()->objectName() + ' ' + pair.RejectButton()->accessibleName(),
                 QStringLiteral("AcceptButton TwoButtons_RejectButton"));
        QCOMPARE(pair.GetAcceptText() + ' ' + pair.GetRejectText(), QStringLiteral("OK Cancel"));
        QCOMPARE(TestSupport::FirstNotReset(&pair, {{"acceptText", QStringLiteral("Yes")}, {"rejectText", QStringLiteral("No")}}),
                 QString());
        pair.SetAcceptText(QStringLiteral("Save all the changes"));
        QCOMPARE(pair.AcceptButton()->text(), QStringLiteral("Save all the changes"));
        QCOMPARE(pair.sizeHint(), QSize(2 * pair.AcceptButton()->sizeHint().width(), pair.AcceptButton()->sizeHint().height()));
        // A new language brings its default texts, and leaves a text set alone.
        struct : QTranslator
        {
            bool isEmpty() const override { return false; }
            QString translate(const char* context, const char* text, const char*, int) const override
            {
                return QLatin1String(context) == QLatin1String("OrvantaQT::TwoButtons") ? QStringLiteral("<%1>").arg(QLatin1String(text)) : QString();
            }
        } brackets;
        QVERIFY(QCoreApplication::installTranslator(&brackets));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
        QCOMPARE(pair.GetAcceptText() + ' ' + pair.GetRejectText(), QStringLiteral("Save all the changes <Cancel>"));
        pair.ResetAcceptText();
        QCOMPARE(pair.GetAcceptText(), QStringLiteral("<OK>"));
        QCoreApplication::removeTranslator(&brackets);
    }
};

QTEST_MAIN(TestTwoButtons)
#include "tst_two_buttons.moc"
