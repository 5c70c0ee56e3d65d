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

// A window holding the widget at a width of its own choosing, above a line edit that
// holds the focus at first and a buddy to reach by the mnemonic.
struct Form
{
    QWidget window;
    IconWithLabel* caption = new IconWithLabel(Swatch(Qt::red), QStringLiteral("&Name"), &window);
    QLineEdit* first = new QLineEdit(&window);
    QLineEdit* buddy = new QLineEdit(&window);
    Form()
    {
        caption->setFont(TestSupport::TestFont());
        caption->setGeometry(0, 0, caption->sizeHint().width(), caption->sizeHint().height());
        first->setGeometry(0, 40, 150, 24);
        buddy->setGeometry(0, 70, 150, 24);
        window.resize(200, 100);
    }
    bool ShowActive()
    {
        if (!TestSupport::ShowAndWait(&window))
            return false;
        window.activateWindow();
        first->setFocus();
        return QTest::qWaitForWindowActive(&window) && first->hasFocus();
    }
};

QLabel* Label(const IconWithLabel& widget)
{
    return widget.findChild<QLabel*>(QStringLiteral("Label"));
}

QWidget* IconPart(const IconWithLabel& widget)
{
    return widget.findChild<QWidget*>(QStringLiteral("Icon"));
}

QRect GeometryIn(const QWidget* part, const QWidget* widget)
{
    return QRect(part->mapTo(widget, QPoint(0, 0)), part->size());
}

} // namespace

class TestIconWithLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    // The parts are named for style sheets and screen readers, and the label's own text
    // is the whole text without the mnemonic marks.
    void children()
    {
        IconWithLabel widget(Swatch(Qt::red), QStringLiteral("&Save && close"));
        QVERIFY(IconPart(widget) && Label(widget));
        QCOMPARE(IconPart(widget)->accessibleName(), QStringLiteral("IconWithLabel_Icon"));
        QCOMPARE(Label(widget)->accessibleName(), QStringLiteral("IconWithLabel_Label"));
        QCOMPARE(Label(widget)->text(), QStringLiteral("Save & close"));
        QCOMPARE(widget.GetText(), QStringLiteral("&Save && close"));
        QCOMPARE(widget.GetShownText(), QStringLiteral("Save & close"));
        const int small = widget.style()->pixelMetric(QStyle::PM_SmallIconSize);
        QCOMPARE(widget.GetIconSize(), QSize(small, small));
        QCOMPARE(widget.GetOrientation(), Qt::Horizontal);
        QCOMPARE(widget.GetBuddy(), nullptr);
    }

    void elision_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("narrower"); // than the size hint; -1 for the minimum width
        QTest::addColumn<bool>("elided");
        QTest::newRow("size hint") << kText << 0 << false;
        QTest::newRow("wider") << kText << -30 << false;
        QTest::newRow("a pixel short") << kText << 1 << true;
        QTest::newRow("half") << kText << 80 << true;
        QTest::newRow("minimum") << kText << -1 << true;
        // Words whose whole pixels QFontMetrics::elidedText() would cut at their own width.
        for (const char* word : {"Name", "Computer", "Network"})
            QTest::newRow(word) << QString::fromLatin1(word) << 0 << false;
    }
    // The text is cut at the right with an ellipsis where it does not fit, never wider
    // than the label; the whole text is then the label's tool tip, and only then.
    void elision()
    {
        QFETCH(QString, text);
        QFETCH(int, narrower);
        QFETCH(bool, elided);
        QWidget window;
        auto* widget = new IconWithLabel(Swatch(Qt::red), text, &window);
        widget->setFont(TestSupport::TestFont());
        const int width =
            narrower == -1 ? widget->minimumSizeHint().width() : widget->sizeHint().width() - narrower;
        widget->setGeometry(0, 0, width, widget->sizeHint().height());
        window.resize(400, 60);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QLabel* label = Label(*widget);
        QCOMPARE(widget->IsElided(), elided);
        const QString shown = widget->GetShownText();
        const QFontMetrics metrics(TestSupport::TestFont());
        QVERIFY2(metrics.horizontalAdvance(shown) <= label->contentsRect().width(), qPrintable(shown));
        if (elided) {
            QVERIFY2(shown.endsWith(QChar(0x2026)) && text.startsWith(shown.chopped(1)), qPrintable(shown));
            QCOMPARE(label->toolTip(), text);
        } else {
            QCOMPARE(shown, text);
            QCOMPARE(label->toolTip(), QString());
        }
        // Wide again, whole again.
        widget->resize(widget->sizeHint());
        QCOMPARE(widget->GetShownText(), text);
        QCOMPARE(label->toolTip(), QString());
    }

    // The size hint fits the icon and the whole text with the style's spacing; the minimum
    // leaves room for an ellipsis only.
    void sizeHints()
    {
        IconWithLabel widget(Swatch(Qt::red), kText);
        widget.setFont(TestSupport::TestFont());
        const QFontMetrics metrics(TestSupport::TestFont());
        const int spacing = widget.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing);
        const int icon = widget.GetIconSize().width();
        QCOMPARE(widget.sizeHint(), QSize(icon + spacing + metrics.horizontalAdvance(kText), qMax(icon, metrics.height())));
        QCOMPARE(widget.minimumSizeHint().width(), icon + spacing + metrics.horizontalAdvance(QChar(0x2026)));
        widget.SetIcon(QIcon());
        QCOMPARE(widget.sizeHint().width(), metrics.horizontalAdvance(kText));
        widget.SetText(QString());
        QCOMPARE(widget.minimumSizeHint().width(), 0);
    }

    // A style sheet's padding and border on the label are room around the text: in the
    // size hint, and not taken from the text at that size.
    void styleSheetPadding()
    {
        QWidget window;
        auto* widget = new IconWithLabel(Swatch(Qt::red), kText, &window);
        widget->setFont(TestSupport::TestFont());
        const int plain = widget->sizeHint().width();
        widget->setStyleSheet(QStringLiteral("#Label { padding-left: 10px; border: 2px solid black; }"));
        QCOMPARE(widget->sizeHint().width(), plain + 10 + 2 * 2);
        widget->resize(widget->sizeHint());
        window.resize(400, 60);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QVERIFY(!widget->IsElided());
        widget->resize(widget->width() - 1, widget->height());
        QVERIFY(widget->IsElided());
    }

    void orientation_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("horizontal") << Qt::Horizontal;
        QTest::newRow("vertical") << Qt::Vertical;
    }
    // Beside: the icon on the left, both centred on one line. Above: the icon centred over
    // the text.
    void orientation()
    {
        QFETCH(Qt::Orientation, orientation);
        QWidget window;
        auto* widget = new IconWithLabel(Swatch(Qt::red), QStringLiteral("Music"), &window);
        widget->setFont(TestSupport::TestFont());
        widget->SetIconSize(QSize(32, 32));
        widget->SetOrientation(orientation);
        const QSize hint = widget->sizeHint();
        widget->setGeometry(0, 0, hint.width() + 40, hint.height());
        window.resize(300, 200);
        QVERIFY(TestSupport::ShowAndWait(&window));
        const QRect icon = GeometryIn(IconPart(*widget), widget);
        const QRect label = GeometryIn(Label(*widget), widget);
        const QFontMetrics metrics(TestSupport::TestFont());
        QCOMPARE(icon.size(), QSize(32, 32));
        if (orientation == Qt::Horizontal) {
            QCOMPARE(hint, QSize(32 + widget->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing)
                                     + metrics.horizontalAdvance(QStringLiteral("Music")),
                                 32));
            QCOMPARE(icon.topLeft(), QPoint(0, 0));
            QVERIFY(icon.right() < label.left());
            QCOMPARE(label.right(), widget->width() - 1);
        } else {
            QCOMPARE(hint, QSize(qMax(32, metrics.horizontalAdvance(QStringLiteral("Music"))),
                                 32 + widget->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) + metrics.height()));
            QCOMPARE(icon.top(), 0);
            QVERIFY(qAbs(icon.center().x() - widget->width() / 2) <= 1);
            QVERIFY(icon.bottom() < label.top());
            QCOMPARE(label.width(), widget->width());
            QCOMPARE(Label(*widget)->alignment(), Qt::AlignHCenter | Qt::AlignTop);
        }
        // Switching back and forth ends where it started.
        const Qt::Orientation other = orientation == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal;
        widget->SetOrientation(other);
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
        Form form;
        QWidget* target = form.buddy;
        auto* push = new QPushButton(QStringLiteral("Go"), &form.window);
        push->setGeometry(160, 70, 40, 24);
        QSignalSpy clicks(push, &QPushButton::clicked);
        if (button)
            target = push;
        form.caption->SetText(QStringLiteral("Your full &name"));
        form.caption->SetBuddy(target);
        QCOMPARE(form.caption->GetBuddy(), target);
        const QSize hint = form.caption->sizeHint();
        form.caption->resize(elided ? form.caption->minimumSizeHint().width() + 30 : hint.width(), hint.height());
        QVERIFY(form.ShowActive());
        QVERIFY(form.caption->IsElided() == elided);
        if (elided)
            QVERIFY(!form.caption->GetShownText().contains(QLatin1Char('n')));
        QTest::keyClick(form.first, Qt::Key_N, Qt::AltModifier);
        QVERIFY(target->hasFocus());
        QTRY_COMPARE(clicks.count(), button ? 1 : 0);
    }

    // Without a buddy, with the buddy gone or the mark gone, the keys do nothing; a new
    // text's letter takes over.
    void mnemonicWithoutBuddy()
    {
        Form form;
        QVERIFY(form.ShowActive());
        QTest::keyClick(form.first, Qt::Key_N, Qt::AltModifier);
        QVERIFY(form.first->hasFocus());

        form.caption->SetBuddy(form.buddy);
        form.caption->SetText(QStringLiteral("Name"));
        QTest::keyClick(form.first, Qt::Key_N, Qt::AltModifier);
        QVERIFY(form.first->hasFocus());

        form.caption->SetText(QStringLiteral("Na&me"));
        QTest::keyClick(form.first, Qt::Key_N, Qt::AltModifier);
        QVERIFY(form.first->hasFocus());
        QTest::keyClick(form.first, Qt::Key_M, Qt::AltModifier);
        QVERIFY(form.buddy->hasFocus());

        form.first->setFocus();
        delete form.buddy;
        QCOMPARE(form.caption->GetBuddy(), nullptr);
        QTest::keyClick(form.first, Qt::Key_M, Qt::AltModifier);
        QVERIFY(form.first->hasFocus());
    }

    // The marked letter is underlined while it has something to do, and "&&" is one "&".
    void mnemonicUnderline()
    {
        Form form;
        form.caption->SetIcon(QIcon());
        QVERIFY(TestSupport::ShowAndWait(&form.window));
        const QImage plain = TestSupport::Render(form.caption);
        form.caption->SetBuddy(form.buddy);
        const QImage marked = TestSupport::Render(form.caption);
        const QRect changed = TestSupport::Changed(plain, marked);
        const QFontMetrics metrics(TestSupport::TestFont());
        // Under the "N" only, below the middle of the line.
        QVERIFY2(changed.isValid() && changed.right() < metrics.horizontalAdvance(QLatin1Char('N'))
                     && changed.top() > form.caption->height() / 2,
                 qPrintable(QStringLiteral("%1 %2 %3 %4").arg(changed.x()).arg(changed.y()).arg(changed.width()).arg(changed.height())));
        form.caption->SetBuddy(nullptr);
        QCOMPARE(TestSupport::Render(form.caption), plain);
    }

    // A new icon is painted at once; the same one again paints nothing.
    void iconChange()
    {
        QWidget window;
        auto* widget = new IconWithLabel(Swatch(Qt::red), kText, &window);
        widget->resize(widget->sizeHint());
        window.resize(300, 40);
        QVERIFY(TestSupport::ShowAndWait(&window));
        const QPoint centre = GeometryIn(IconPart(*widget), widget).center();
        QCOMPARE(TestSupport::Render(widget).pixelColor(centre), QColor(Qt::red));
        const QIcon green = Swatch(Qt::green);
        QVERIFY(TestSupport::Repaints(widget, [&] { widget->SetIcon(green); }));
        QCOMPARE(TestSupport::Render(widget).pixelColor(centre), QColor(Qt::green));
        QVERIFY(!TestSupport::Repaints(widget, [&] { widget->SetIcon(green); }));
        // A disabled widget paints its icon disabled.
        widget->setEnabled(false);
        QVERIFY(TestSupport::Render(widget).pixelColor(centre) != QColor(Qt::green));
        // No icon: the label takes its place.
        widget->setEnabled(true);
        widget->SetIcon(QIcon());
        QVERIFY(IconPart(*widget)->isHidden());
        QTRY_COMPARE(Label(*widget)->x(), 0);
    }

    // A size set is kept through style changes and reset to the style's; sizes and
    // orientations that are none are logged and ignored.
    void iconSize()
    {
        const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
        IconWithLabel widget(Swatch(Qt::red), kText);
        QCOMPARE(TestSupport::FirstNotReset(&widget, {{"iconSize", QSize(30, 30)}}), QString());
        const QSize small = widget.GetIconSize();
        const int width = widget.sizeHint().width();
        widget.SetIconSize(QSize(24, 24));
        QCOMPARE(IconPart(widget)->size(), QSize(24, 24));
        QCOMPARE(widget.sizeHint().width(), width + 24 - small.width());
        widget.setStyle(windows.get());
        QCOMPARE(widget.GetIconSize(), QSize(24, 24));
        widget.ResetIconSize();
        QCOMPARE(widget.GetIconSize(), small);

        const LogCapture::Mark mark;
        widget.SetIconSize(QSize(0, 10));
        widget.SetOrientation(static_cast<Qt::Orientation>(7));
        QCOMPARE(widget.GetIconSize(), small);
        QCOMPARE(widget.GetOrientation(), Qt::Horizontal);
        QCOMPARE(mark.Texts(),
                 QStringList({QStringLiteral("3 IconWithLabel: an icon size of 0x10 is ignored; it stays %1x%1").arg(small.width()),
                              QStringLiteral("3 IconWithLabel: 7 is not an orientation; it stays horizontal")}));
    }
};

QTEST_MAIN(TestIconWithLabel)
#include "tst_icon_with_label.moc"
