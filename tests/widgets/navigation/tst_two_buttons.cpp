#include <qt_halvo/widgets/navigation/two_buttons.h>

#include "test_support.h"

using OrvantaQT::TwoButtons;

namespace {

// A style whose dialogs lay their buttons out one way.
class LayoutStyle : public QProxyStyle
{
public:
    explicit LayoutStyle(QDialogButtonBox::ButtonLayout layout)
        : QProxyStyle(QStringLiteral("Fusion"))
        , m_layout(layout)
    {
    }
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override
    {
        return hint == SH_DialogButtonLayout ? int(m_layout) : QProxyStyle::styleHint(hint, option, widget, returnData);
    }

private:
    QDialogButtonBox::ButtonLayout m_layout;
};

// Translates the pair's defaults, as a loaded translation would.
class PairTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        if (qstrcmp(context, "OrvantaQT::TwoButtons") != 0)
            return QString();
        if (qstrcmp(source, "OK") == 0)
            return QStringLiteral("Gut");
        if (qstrcmp(source, "Cancel") == 0)
            return QStringLiteral("Abbrechen");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

// The pair in a window beside a line edit, for focus from outside.
struct Host
{
    QWidget window;
    QLineEdit* outside = new QLineEdit(&window);
    TwoButtons* pair = new TwoButtons(&window);
    Host()
    {
        window.setGeometry(100, 100, 400, 120);
        outside->setGeometry(10, 10, 150, 28);
        pair->setGeometry(10, 60, 240, 28);
    }
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
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

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
    // Accept and reject stand where a dialog of the style puts OK and Cancel, mirrored right
    // to left; each takes half of the pair, and the tab order goes the same way.
    void platformOrder()
    {
        QFETCH(QDialogButtonBox::ButtonLayout, layout);
        QFETCH(Qt::LayoutDirection, direction);
        QFETCH(bool, acceptFirst);
        LayoutStyle style(layout);
        QWidget window;
        window.setLayoutDirection(direction);
        auto* column = new QVBoxLayout(&window);
        auto* pair = new TwoButtons;
        auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        column->addWidget(pair);
        column->addWidget(box);
        pair->setStyle(&style);
        box->setStyle(&style);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QCOMPARE(pair->IsAcceptFirst(), acceptFirst);
        QPushButton* accept = pair->AcceptButton();
        QPushButton* reject = pair->RejectButton();
        const bool acceptLeft = acceptFirst == (direction == Qt::LeftToRight);
        QCOMPARE(accept->x() < reject->x(), acceptLeft);
        // The dialog's own order, measured beside it.
        QCOMPARE(box->button(QDialogButtonBox::Ok)->x() < box->button(QDialogButtonBox::Cancel)->x(), acceptLeft);
        QPushButton* left = acceptLeft ? accept : reject;
        QPushButton* right = acceptLeft ? reject : accept;
        QCOMPARE(left->geometry(), QRect(0, 0, pair->width() / 2, pair->height()));
        QCOMPARE(right->geometry(), QRect(pair->width() / 2, 0, pair->width() - pair->width() / 2, pair->height()));
        QPushButton* first = acceptFirst ? accept : reject;
        QCOMPARE(first->nextInFocusChain(), acceptFirst ? reject : accept);
        QCOMPARE(pair->focusProxy(), first);
    }

    void followsStyleChange_data()
    {
        QTest::addColumn<QDialogButtonBox::ButtonLayout>("from");
        QTest::addColumn<QDialogButtonBox::ButtonLayout>("to");
        QTest::newRow("KDE to GNOME") << QDialogButtonBox::KdeLayout << QDialogButtonBox::GnomeLayout;
        QTest::newRow("macOS to Windows") << QDialogButtonBox::MacLayout << QDialogButtonBox::WinLayout;
    }
    // A new style brings its own order.
    void followsStyleChange()
    {
        QFETCH(QDialogButtonBox::ButtonLayout, from);
        QFETCH(QDialogButtonBox::ButtonLayout, to);
        LayoutStyle before(from);
        LayoutStyle after(to);
        Host host;
        host.pair->setStyle(&before);
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        const bool acceptFirstBefore = host.pair->AcceptButton()->x() < host.pair->RejectButton()->x();
        host.pair->setStyle(&after);
        const bool acceptFirstAfter = host.pair->AcceptButton()->x() < host.pair->RejectButton()->x();
        QCOMPARE(acceptFirstAfter, !acceptFirstBefore);
        QCOMPARE(host.pair->IsAcceptFirst(), acceptFirstAfter);
        host.pair->setFocus();
        QCOMPARE(host.window.focusWidget() == host.pair->AcceptButton(), acceptFirstAfter);
    }

    void keys_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QStringList>("expected");
        const QStringList accepted("Accepted()");
        const QStringList rejected("Rejected()");
        QTest::newRow("Return on accept") << "accept" << int(Qt::Key_Return) << 0 << accepted;
        QTest::newRow("Return on reject") << "reject" << int(Qt::Key_Return) << 0 << accepted;
        QTest::newRow("keypad Enter on reject") << "reject" << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << accepted;
        QTest::newRow("Escape on accept") << "accept" << int(Qt::Key_Escape) << 0 << rejected;
        QTest::newRow("Escape on reject") << "reject" << int(Qt::Key_Escape) << 0 << rejected;
        QTest::newRow("Space on reject") << "reject" << int(Qt::Key_Space) << 0 << rejected;
        QTest::newRow("Space on accept") << "accept" << int(Qt::Key_Space) << 0 << accepted;
        QTest::newRow("Ctrl+Return inside") << "accept" << int(Qt::Key_Return) << int(Qt::ControlModifier)
                                            << QStringList();
        QTest::newRow("Shift+Escape inside") << "reject" << int(Qt::Key_Escape) << int(Qt::ShiftModifier)
                                             << QStringList();
        QTest::newRow("Return outside") << "outside" << int(Qt::Key_Return) << 0 << QStringList();
        QTest::newRow("Escape outside") << "outside" << int(Qt::Key_Escape) << 0 << QStringList();
    }
    // Enter accepts and Escape rejects while the focus is on either button, before the
    // window's shortcuts; elsewhere in the window they are not the pair's.
    void keys()
    {
        QFETCH(QString, focus);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QStringList, expected);
        Host host;
        int shortcuts = 0;
        for (const QKeySequence& sequence : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::Key_Return)}) {
            auto* shortcut = new QShortcut(sequence, &host.window);
            connect(shortcut, &QShortcut::activated, [&shortcuts] { ++shortcuts; });
        }
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        host.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&host.window));
        QWidget* target = host.outside;
        if (focus == QLatin1String("accept"))
            target = host.pair->AcceptButton();
        else if (focus == QLatin1String("reject"))
            target = host.pair->RejectButton();
        target->setFocus();
        QCOMPARE(QApplication::focusWidget(), target);
        TestSupport::SignalLog log(host.pair, {"Accepted()", "Rejected()"});
        QTest::keyClick(target, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(log.Take(), expected);
        const bool windowShortcut = focus == QLatin1String("outside") && (key == Qt::Key_Escape || key == Qt::Key_Return);
        QCOMPARE(shortcuts, windowShortcut ? 1 : 0);
    }

    // In a dialog the pair's keys stay the pair's: the dialog neither closes on Escape nor
    // on Enter through a default button.
    void keysInDialog()
    {
        QDialog dialog;
        auto* column = new QVBoxLayout(&dialog);
        auto* pair = new TwoButtons;
        column->addWidget(new QLineEdit);
        column->addWidget(pair);
        QVERIFY(TestSupport::ShowAndWait(&dialog));
        pair->RejectButton()->setFocus();
        TestSupport::SignalLog log(pair, {"Accepted()", "Rejected()"});
        QSignalSpy finished(&dialog, &QDialog::finished);
        QTest::keyClick(pair->RejectButton(), Qt::Key_Return);
        QTest::keyClick(pair->RejectButton(), Qt::Key_Escape);
        QCOMPARE(log.Take(), TestSupport::Words("Accepted() Rejected()"));
        QVERIFY(dialog.isVisible());
        QCOMPARE(finished.count(), 0);
    }

    void clicks_data()
    {
        QTest::addColumn<bool>("onAccept");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("accept") << true << QStringList("Accepted()");
        QTest::newRow("reject") << false << QStringList("Rejected()");
    }
    void clicks()
    {
        QFETCH(bool, onAccept);
        QFETCH(QStringList, expected);
        Host host;
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        TestSupport::SignalLog log(host.pair, {"Accepted()", "Rejected()"});
        QPushButton* button = onAccept ? host.pair->AcceptButton() : host.pair->RejectButton();
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
        QCOMPARE(log.Take(), expected);
    }

    void pixels_data()
    {
        QTest::addColumn<QString>("state"); // of the accept button, which is on the left
        QTest::addColumn<int>("band");
        QTest::newRow("normal") << "normal" << 0;
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
        QCursor::setPos(0, 0);
        LayoutStyle style(QDialogButtonBox::KdeLayout);
        Host host;
        host.pair->setStyle(&style);
        host.pair->setGeometry(10, 60, 200, 28); // one band high: the rows as the picture has them
        QVERIFY(TestSupport::ShowAndWait(&host.window));
        QPushButton* accept = host.pair->AcceptButton();
        QCOMPARE(accept->x(), 0);
        if (state.contains(QLatin1String("hovered"))) {
            QCursor::setPos(accept->mapToGlobal(QPoint(30, 4)));
            QTRY_VERIFY(accept->underMouse());
        }
        if (state.contains(QLatin1String("pressed"))) {
            QTest::mousePress(accept, Qt::LeftButton, Qt::NoModifier, QPoint(30, 4));
            QVERIFY(accept->isDown());
        }
        const QImage picture = TestSupport::Render(host.pair);
        const QVector<QPoint> points{
            {0, 0},     // corner, outer
            {0, 14},    // left edge
            {50, 3},    // middle of the accept half, above the text
            {98, 3},    // the accept half's last column: straight, no edge
            {100, 14},  // the divider
            {150, 3},   // middle of the reject half
            {199, 14},  // right edge
        };
        const QStringList expected{
            BandColour(band, {0, 0}),
            BandColour(band, {0, 14}),
            BandColour(band, {24, 3}),
            BandColour(band, {24, 3}),
            BandColour(0, {0, 14}),
            BandColour(0, {24, 3}),
            BandColour(0, {47, 14}),
        };
        QCOMPARE(TestSupport::Pixels(picture, points), expected);
        if (state.contains(QLatin1String("pressed")))
            QTest::mouseRelease(accept, Qt::LeftButton, Qt::NoModifier, QPoint(30, 4));
        QCOMPARE(TestSupport::Pixels(TestSupport::Render(host.pair), {{50, 3}}),
                 QStringList(BandColour(state.contains(QLatin1String("hovered")) ? 1 : 0, {24, 3})));
    }

    // The bands differ where the test looks, or it would prove nothing.
    void bandsDiffer()
    {
        QCOMPARE(QImage(QStringLiteral(":/two_buttons.png")).size(), QSize(48, 84));
        const QStringList fills{BandColour(0, {24, 3}), BandColour(1, {24, 3}), BandColour(2, {24, 3})};
        QCOMPARE(QSet<QString>(fills.begin(), fills.end()).size(), 3);
        QVERIFY(BandColour(0, {0, 14}) != BandColour(0, {24, 3}));
        QVERIFY(BandColour(1, {0, 14}) != BandColour(0, {0, 14}));
    }

    // The defaults are translated, also when the translation comes later; texts set stay as
    // set, and a reset brings the translated default back.
    void texts()
    {
        TwoButtons pair;
        QCOMPARE(pair.AcceptButton()->objectName(), QStringLiteral("AcceptButton"));
        QCOMPARE(pair.RejectButton()->objectName(), QStringLiteral("RejectButton"));
        QCOMPARE(pair.AcceptButton()->accessibleName(), QStringLiteral("TwoButtons_AcceptButton"));
        QCOMPARE(pair.RejectButton()->accessibleName(), QStringLiteral("TwoButtons_RejectButton"));
        QCOMPARE(pair.GetAcceptText(), QStringLiteral("OK"));
        QCOMPARE(pair.GetRejectText(), QStringLiteral("Cancel"));
        pair.SetRejectText(QStringLiteral("Discard"));
        QCOMPARE(pair.RejectButton()->text(), QStringLiteral("Discard"));
        PairTranslator translator;
        QCoreApplication::installTranslator(&translator);
        QTRY_COMPARE(pair.GetAcceptText(), QStringLiteral("Gut"));
        QCOMPARE(pair.GetRejectText(), QStringLiteral("Discard"));
        pair.ResetRejectText();
        QCOMPARE(pair.GetRejectText(), QStringLiteral("Abbrechen"));
        QCoreApplication::removeTranslator(&translator);
        QTRY_COMPARE(pair.GetAcceptText(), QStringLiteral("OK"));
        QCOMPARE(TestSupport::FirstNotReset(&pair, {{"acceptText", QStringLiteral("Yes")},
                                                    {"rejectText", QStringLiteral("No")}}),
                 QString());
    }

    // Two halves of one width, as wide as the wider text needs.
    void sizeHint()
    {
        TwoButtons pair;
        pair.SetAcceptText(QStringLiteral("Save all the changes"));
        const int half = pair.AcceptButton()->sizeHint().width();
        QVERIFY(half > pair.RejectButton()->sizeHint().width());
        QCOMPARE(pair.sizeHint().width(), 2 * half);
        pair.resize(pair.sizeHint());
        pair.show();
        QVERIFY(QTest::qWaitForWindowExposed(&pair));
        QCOMPARE(pair.RejectButton()->width(), half);
        QCOMPARE(pair.sizeHint().height(), pair.AcceptButton()->sizeHint().height());
        QVERIFY(TestSupport::Repaints(&pair, [&pair] { pair.SetAcceptText(QStringLiteral("Go")); }));
    }
};

QTEST_MAIN(TestTwoButtons)
#include "tst_two_buttons.moc"
