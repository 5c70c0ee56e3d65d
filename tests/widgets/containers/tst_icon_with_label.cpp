#include <qt_halvo/widgets/containers/icon_with_label.h>

#include "test_support.h"

using OrvantaQT::IconWithLabel;

namespace {

const QString kText = QStringLiteral("Documents and settings");

QIcon Swatch(const QColor& colour)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(colour);
    return QIcon(pixmap);
}

// A window holding the widget in the test font at its size hint, above a line edit that
// holds the focus at first and a buddy to reach by the mnemonic.
struct Form
{
    QWidget window;
    IconWithLabel* caption;
    QLineEdit* first = new QLineEdit(&window);
    QLineEdit* buddy = new QLineEdit(&window);
    explicit Form(const QString& text = QStringLiteral("&Name"))
        : caption(new IconWithLabel(Swatch(Qt::red), text, &window))
    {
        caption->setFont(TestSupport::TestFont());
        caption->resize(caption->sizeHint());
        first->setGeometry(0, 40, 150, 24);
        buddy->setGeometry(0, 70, 150, 24);
        window.resize(400, 100);
    }
    bool ShowActive()
    {
        if (!TestSupport::ShowAndWait(&window))
            return false;
        QApplication::setActiveWindow(&window);
        first->setFocus();
        return first->hasFocus();
    }
    QLabel* Label() const { return caption->findChild<QLabel*>(QStringLiteral("Label")); }
    QWidget* Icon() const { return caption->findChild<QWidget*>(QStringLiteral("Icon")); }
    // Where a part is in the widget.
    QRect InCaption(const QWidget* part) const { return QRect(part->mapTo(caption, QPoint(0, 0)), part->size()); }
};

} // namespace

class TestIconWithLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    // The parts are named for style sheets and screen readers, and the label's own text is
    // the whole text without the mnemonic marks. The size hint fits the icon and the whole
    // text with the style's spacing; the minimum leaves room for an ellipsis only. An icon
    // size set is kept through style changes and reset to the style's; sizes and
    // orientations that are none are logged and ignored.
    void partsAndSizes()
    {
        const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
        Form form(QStringLiteral("&Save && close"));
        IconWithLabel* widget = form.caption;
        QVERIFY(form.Icon() && form.Label());
        QCOMPARE(QStringList({form.Icon()->accessibleName(), form.Label()->accessibleName()}),
                 QStringList({"IconWithLabel_Icon", "IconWithLabel_Label"}));
        QCOMPARE(QStringList({form.Label()->text(), widget->GetText(), widget->GetShownText()}),
                 QStringList({"Save & close", "&Save && close", "Save & close"}));
        widget->SetText(QStringLiteral("Clos&e")); // a mark before the last letter
        QCOMPARE(widget->GetShownText(), QStringLiteral("Close"));
        const int small = widget->style()->pixelMetric(QStyle::PM_SmallIconSize);
        QCOMPARE(widget->GetIconSize(), QSize(small, small));
        QCOMPARE(widget->GetOrientation(), Qt::Horizontal);
        QCOMPARE(widget->GetBuddy(), nullptr);
        QCOMPARE(TestSupport::FirstNotReset(widget, {{"iconSize", QSize(30, 30)}}), QString());

        widget->SetText(kText);
        const QFontMetrics metrics(TestSupport::TestFont());
        const int text = metrics.horizontalAdvance(kText);
        const int spacing = widget->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
        QCOMPARE(widget->sizeHint(), QSize(small + spacing + text, qMax(small, metrics.height())));
        QCOMPARE(widget->minimumSizeHint().width(), small + spacing + metrics.horizontalAdvance(QChar(0x2026)));
        widget->SetIconSize(QSize(24, 24));
        QCOMPARE(form.Icon()->size(), QSize(24, 24));
        QCOMPARE(widget->sizeHint().width(), 24 + spacing + text);
        widget->setStyle(windows.get());
        QCOMPARE(widget->GetIconSize(), QSize(24, 24));
        widget->ResetIconSize();
        QCOMPARE(widget->GetIconSize(), QSize(small, small));

        const LogCapture::Mark mark;
        widget->SetIconSize(QSize(0, 10));
        widget->SetOrientation(static_cast<Qt::Orientation>(7));
        QCOMPARE(widget->GetIconSize(), QSize(small, small));
        QCOMPARE(widget->GetOrientation(), Qt::Horizontal);
        QCOMPARE(mark.Texts(), QStringList({QStringLiteral("3 IconWithLabel: an icon size of 0x10 is ignored; it stays %1x%1").arg(small),
                                            QStringLiteral("3 IconWithLabel: 7 is not an orientation; it stays horizontal")}));

        widget->SetIcon(QIcon());
        QCOMPARE(widget->sizeHint().width(), text);
        widget->SetText(QString());
        QCOMPARE(widget->minimumSizeHint().width(), 0);
    }

    void elision_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("narrower"); // than the size hint; -1 for the minimum width
        QTest::addColumn<bool>("padded"); // by a style sheet's padding and border on the label
        QTest::addColumn<bool>("elided");
        QTest::newRow("size hint") << kText << 0 << false << false;
        QTest::newRow("wider") << kText << -30 << false << false;
        QTest::newRow("a pixel short") << kText << 1 << false << true;
        QTest::newRow("half") << kText << 80 << false << true;
        QTest::newRow("minimum") << kText << -1 << false << true;
        QTest::newRow("padded, size hint") << kText << 0 << true << false;
        QTest::newRow("padded, a pixel short") << kText << 1 << true << true;
        // Words whose whole pixels QFontMetrics::elidedText() would cut at their own width.
        for (const char* word : {"Name", "Computer", "Network"})
            QTest::newRow(word) << QString::fromLatin1(word) << 0 << false << false;
    }
    // The text is cut at the right with an ellipsis where it does not fit, never wider
    // than the label; the whole text is then the label's tool tip, and only then. A style
    // sheet's padding and border are room around the text, in the size hint.
    void elision()
    {
        QFETCH(QString, text);
        QFETCH(int, narrower);
        QFETCH(bool, padded);
        QFETCH(bool, elided);
        Form form(text);
        IconWithLabel* widget = form.caption;
        const int plain = widget->sizeHint().width();
        if (padded) {
            widget->setStyleSheet(QStringLiteral("#Label { padding-left: 10px; border: 2px solid black; }"));
            QCOMPARE(widget->sizeHint().width(), plain + 10 + 2 * 2);
        }
        widget->resize(narrower == -1 ? widget->minimumSizeHint().width() : widget->sizeHint().width() - narrower,
                       widget->sizeHint().height());
        QVERIFY(TestSupport::ShowAndWait(&form.window));
        QCOMPARE(widget->IsElided(), elided);
        const QString shown = widget->GetShownText();
        QVERIFY2(QFontMetrics(TestSupport::TestFont()).horizontalAdvance(shown) <= form.Label()->contentsRect().width(),
                 qPrintable(shown));
        if (elided)
            QVERIFY2(shown.endsWith(QChar(0x2026)) && text.startsWith(shown.chopped(1)), qPrintable(shown));
        else
            QCOMPARE(shown, text);
        QCOMPARE(form.Label()->toolTip(), elided ? text : QString());
        // Wide again, whole again.
        widget->resize(widget->sizeHint());
        QCOMPARE(QStringList({widget->GetShownText(), form.Label()->toolTip()}), QStringList({text, QString()}));
    }

    void orientation_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<QSize>("hint");
        QTest::addColumn<QRect>("icon"); // in a widget 40 pixels wider and 20 taller than its hint
        QTest::addColumn<QRect>("label");
        QTest::addColumn<Qt::Alignment>("alignment");
        const QFontMetrics metrics(TestSupport::TestFont());
        const int text = metrics.horizontalAdvance(QStringLiteral("Music"));
        const int across = QApplication::style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
        const int down = QApplication::style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing);
        const int width = qMax(32, text) + 40;
        // Beside: the icon on the left, both centred on one line.
        QTest::newRow("horizontal") << Qt::Horizontal << QSize(32 + across + text, 32) << QRect(0, 10, 32, 32)
                                    << QRect(32 + across, 0, text + 40, 52) << (Qt::AlignLeft | Qt::AlignVCenter);
        // Above: the icon centred over the text.
        QTest::newRow("vertical") << Qt::Vertical << QSize(qMax(32, text), 32 + down + metrics.height())
                                  << QRect((width - 32) / 2, 0, 32, 32) << QRect(0, 32 + down, width, metrics.height() + 20)
                                  << (Qt::AlignHCenter | Qt::AlignTop);
    }
    void orientation()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(QSize, hint);
        QFETCH(QRect, icon);
        QFETCH(QRect, label);
        QFETCH(Qt::Alignment, alignment);
        Form form(QStringLiteral("Music"));
        IconWithLabel* widget = form.caption;
        widget->SetIconSize(QSize(32, 32));
        widget->SetOrientation(orientation);
        QCOMPARE(widget->sizeHint(), hint);
        widget->resize(hint + QSize(40, 20));
        QVERIFY(TestSupport::ShowAndWait(&form.window));
        QCOMPARE(QVector<QRect>({form.InCaption(form.Icon()), form.InCaption(form.Label())}), QVector<QRect>({icon, label}));
        QCOMPARE(form.Label()->alignment(), alignment);
        // Switching back and forth ends where it started.
        widget->SetOrientation(orientation == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal);
        widget->SetOrientation(orientation);
        QCOMPARE(widget->sizeHint(), hint);
    }

    void mnemonic_data()
    {
        QTest::addColumn<bool>("elided");
        QTest::addColumn<bool>("button");
        QTest::newRow("line edit") << false << false;
        QTest::newRow("line edit, the letter elided") << true << false;
        QTest::newRow("button: focused and clicked") << false << true;
    }
    // Alt and the marked letter focus the buddy, as a QLabel's buddy; a button is clicked
    // too. The letter need not show.
    void mnemonic()
    {
        QFETCH(bool, elided);
        QFETCH(bool, button);
        Form form(QStringLiteral("Your full &name"));
        auto* push = new QPushButton(QStringLiteral("Go"), &form.window);
        push->setGeometry(160, 70, 40, 24);
        QSignalSpy clicks(push, &QPushButton::clicked);
        QWidget* target = button ? static_cast<QWidget*>(push) : form.buddy;
        form.caption->SetBuddy(target);
        QCOMPARE(form.caption->GetBuddy(), target);
        if (elided)
            form.caption->resize(form.caption->minimumSizeHint().width() + 30, form.caption->height());
        QVERIFY(form.ShowActive());
        QCOMPARE(form.caption->IsElided(), elided);
        if (elided)
            QVERIFY(!form.caption->GetShownText().contains(QLatin1Char('n')));
        QTest::keyClick(form.first, Qt::Key_N, Qt::AltModifier);
        QVERIFY(target->hasFocus());
        // animateClick() shows the button down and clicks it a moment later.
        QCOMPARE(push->isDown() || clicks.count() == 1, button);
    }

    // The marked letter is underlined while it has something to do. Without a buddy, with
    // the buddy gone or the mark gone, the keys do nothing; a new text's letter takes over.
    void mnemonicWithoutBuddy()
    {
        Form form;
        form.caption->SetIcon(QIcon());
        QVERIFY(form.ShowActive());
        const auto focusedBy = [&](Qt::Key key) {
            QTest::keyClick(form.first, key, Qt::AltModifier);
            return QApplication::focusWidget();
        };
        QCOMPARE(focusedBy(Qt::Key_N), form.first);
        const QImage plain = TestSupport::Render(form.caption);
        form.caption->SetBuddy(form.buddy);
        const QRect changed = TestSupport::Changed(plain, TestSupport::Render(form.caption));
        // Under the "N" only, below the middle of the line.
        QVERIFY2(changed.isValid() && changed.right() < QFontMetrics(TestSupport::TestFont()).horizontalAdvance(QLatin1Char('N'))
                     && changed.top() > form.caption->height() / 2,
                 qPrintable(QStringLiteral("%1 %2 %3 %4").arg(changed.x()).arg(changed.y()).arg(changed.width()).arg(changed.height())));
        form.caption->SetBuddy(nullptr);
        QCOMPARE(TestSupport::Render(form.caption), plain);
        form.caption->SetBuddy(form.buddy);
        form.caption->SetText(QStringLiteral("Name"));
        QCOMPARE(TestSupport::Render(form.caption), plain);
        QCOMPARE(focusedBy(Qt::Key_N), form.first);
        form.caption->SetText(QStringLiteral("Na&me"));
        QCOMPARE(focusedBy(Qt::Key_N), form.first);
        QCOMPARE(focusedBy(Qt::Key_M), form.buddy);
        // The mark moved within the same letters: the underline is painted again.
        QVERIFY(TestSupport::Repaints(form.caption, [&] { form.caption->SetText(QStringLiteral("&Name")); }));
        form.first->setFocus();
        delete form.buddy;
        QCOMPARE(form.caption->GetBuddy(), nullptr);
        QCOMPARE(focusedBy(Qt::Key_N), form.first);
    }

    // A new icon is painted at once, the same one again paints nothing, a disabled widget
    // paints it disabled; without one the label takes its place.
    void iconChange()
    {
        Form form(kText);
        IconWithLabel* widget = form.caption;
        QVERIFY(TestSupport::ShowAndWait(&form.window));
        const QPoint centre = form.InCaption(form.Icon()).center();
        QCOMPARE(TestSupport::Render(widget).pixelColor(centre), QColor(Qt::red));
        const QIcon green = Swatch(Qt::green);
        QVERIFY(TestSupport::Repaints(widget, [&] { widget->SetIcon(green); }));
        QCOMPARE(TestSupport::Render(widget).pixelColor(centre), QColor(Qt::green));
        QVERIFY(!TestSupport::Repaints(widget, [&] { widget->SetIcon(green); }, 500));
        widget->setEnabled(false);
        QVERIFY(TestSupport::Render(widget).pixelColor(centre) != QColor(Qt::green));
        widget->setEnabled(true);
        widget->SetIcon(QIcon());
        QVERIFY(form.Icon()->isHidden());
        QCoreApplication::processEvents(); // the layout's request
        QCOMPARE(form.Label()->x(), 0);
    }
};

QTEST_MAIN(TestIconWithLabel)
#include "tst_icon_with_label.moc"
