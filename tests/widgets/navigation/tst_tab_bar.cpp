#include <qt_halvo/widgets/navigation/tab_bar.h>

#include "test_support.h"

using OrvantaQT::TabBar;

namespace {

const char* const kTitles[] = {"One", "Two", "Three", "Four", "Five"};

// A window holding a bar of five tabs, shown or not, with slides long enough to act on.
struct Host
{
    QWidget window;
    QBoxLayout* layout = new QBoxLayout(QBoxLayout::TopToBottom, &window);
    TabBar* bar = new TabBar;
    explicit Host(QTabBar::Shape shape = QTabBar::RoundedNorth, TabBar::Shape selector = TabBar::Underline)
    {
        const bool vertical = shape == QTabBar::RoundedWest || shape == QTabBar::RoundedEast;
        layout->setDirection(vertical ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
        layout->addWidget(bar);
        layout->addStretch(1);
        bar->setShape(shape);
        bar->setFont(TestSupport::TestFont());
        bar->setDrawBase(false);
        bar->SetSelectorShape(selector);
        bar->SetDuration(600);
        for (const char* title : kTitles)
            bar->addTab(QLatin1String(title));
        window.resize(520, 300);
    }
    bool Show() { return TestSupport::ShowAndWait(&window); }
    QVariantAnimation* Slide() const { return bar->findChild<QVariantAnimation*>(); }
    // The slide put at a point of its time, as its clock would, and painted there.
    void At(int ms)
    {
        Slide()->setCurrentTime(ms);
        QCoreApplication::processEvents();
    }
    // The layouts settled and the slide run to its end.
    bool Rests()
    {
        QCoreApplication::processEvents();
        if (bar->IsSelectorMoving())
            At(Slide()->duration());
        return !bar->IsSelectorMoving();
    }
    QPoint TabCentre(int index) const { return bar->tabRect(index).center(); }
};

// Where the selector belongs on the current tab: an underline on the edge towards the
// pages, as thick as set, or a pill inset by the margin.
QRect Resting(const TabBar& bar)
{
    const QRect tab = bar.tabRect(bar.currentIndex());
    if (tab.isEmpty())
        return QRect();
    if (bar.GetSelectorShape() == TabBar::Pill) {
        const int margin = bar.GetSelectorMargin();
        return tab.adjusted(margin, margin, -margin, -margin);
    }
    const int thickness = bar.GetSelectorThickness();
    switch (bar.shape()) {
    case QTabBar::RoundedSouth:
        return QRect(tab.left(), tab.top(), tab.width(), thickness);
    case QTabBar::RoundedWest:
        return QRect(tab.right() + 1 - thickness, tab.top(), thickness, tab.height());
    case QTabBar::RoundedEast:
        return QRect(tab.left(), tab.top(), thickness, tab.height());
    default:
        return QRect(tab.left(), tab.bottom() + 1 - thickness, tab.width(), thickness);
    }
}

void Send(QWidget* widget, QEvent::Type type, const QPoint& pos, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, pos, widget->mapToGlobal(pos), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

QString Titles(const QTabBar& bar)
{
    QStringList titles;
    for (int i = 0; i < bar.count(); ++i)
        titles << bar.tabText(i);
    return titles.join(' ');
}

// The selector's rectangle each time the bar is painted.
struct Frames : QObject
{
    explicit Frames(TabBar* bar) : bar(bar) { bar->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            rects << bar->SelectorRect();
        return false;
    }
    TabBar* bar;
    QVector<QRect> rects;
};

// The values a style sheet reaches, in one list to compare.
QVariantList Values(const TabBar& bar)
{
    return {bar.GetSelectorThickness(), bar.GetSelectorRadius(), bar.GetSelectorMargin(), bar.GetDuration(),
            int(bar.GetSelectorShape())};
}

} // namespace

class TestTabBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void restsOnTheCurrentTab_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<int>("barShape");
        QTest::addColumn<int>("selector");
        QTest::addColumn<QString>("current"); // the title of the tab it ends on
        QTest::addColumn<bool>("slides");     // after the change
        // Made at rest (selected before show) or during a slide to "Four".
        const std::tuple<const char*, const char*, bool> changes[] = {
            {"selected before show", "Four", false}, {"selected before show, removed before", "Four", false},
            {"selected before show, inserted before", "Four", false}, {"selected before show, removed target", "Five", true},
            {"selected before show, inserted then removed before", "Four", false}, {"resize", "Four", true},
            {"font", "Four", true}, {"icon before", "Four", true}, {"inserted before", "Four", true},
            {"inserted after", "Four", true}, {"removed before", "Four", true}, {"removed target", "Five", true},
            {"two quick changes", "Two", true}, {"changed back mid-slide", "One", true}, {"moved target", "Four", true},
            {"moved over target", "Four", true}, {"closed target", "Five", true}, {"closed before", "Four", true},
        };
        for (const auto& [change, current, slides] : changes) {
            QTest::addRow("underline, %s", change)
                << change << int(QTabBar::RoundedNorth) << int(TabBar::Underline) << current << slides;
            QTest::addRow("pill on the west, %s", change)
                << change << int(QTabBar::RoundedWest) << int(TabBar::Pill) << current << slides;
        }
        QTest::newRow("underline on the south") << "" << int(QTabBar::RoundedSouth) << int(TabBar::Underline) << "Four" << true;
        QTest::newRow("underline on the east") << "" << int(QTabBar::RoundedEast) << int(TabBar::Underline) << "Four" << true;
    }
    // Whatever happens to the tabs during a slide, the slide goes on and the selector ends
    // exactly on the current tab, as the shape places it; at rest, it goes with its tab at
    // once when a tab before it comes or goes, and slides when its own tab goes.
    void restsOnTheCurrentTab()
    {
        QFETCH(QString, change);
        QFETCH(int, barShape);
        QFETCH(int, selector);
        QFETCH(QString, current);
        QFETCH(bool, slides);
        Host host{QTabBar::Shape(barShape), TabBar::Shape(selector)};
        TabBar& bar = *host.bar;
        // The pill shows through transparent tabs.
        if (selector == TabBar::Pill)
            host.window.setStyleSheet("OrvantaQT--TabBar::tab { background: transparent; border: none; padding: 12px; }");
        bar.setTabsClosable(change.startsWith("closed"));
        QObject::connect(&bar, &QTabBar::tabCloseRequested, &bar, &QTabBar::removeTab);
        const bool atRest = change.startsWith("selected before show");
        if (atRest)
            bar.setCurrentIndex(3);
        QVERIFY(host.Show());
        QVERIFY2(!bar.IsSelectorMoving(), "no slide into place when shown");
        QCOMPARE(bar.SelectorRect(), Resting(bar));
        const QRect start = bar.SelectorRect();
        QVERIFY(!start.isEmpty());

        if (change == "two quick changes") {
            bar.setCurrentIndex(3);
            bar.setCurrentIndex(1);
        } else if (change == "changed back mid-slide") {
            bar.setCurrentIndex(4);
            QVERIFY(bar.IsSelectorMoving());
            host.At(300);
            QVERIFY(bar.SelectorRect() != start && bar.SelectorRect() != Resting(bar));
            bar.setCurrentIndex(0);
        } else if (!atRest) {
            bar.setCurrentIndex(3);
        }
        QCOMPARE(bar.IsSelectorMoving(), !atRest);
        if (!atRest) {
            host.At(300);
            QVERIFY(bar.SelectorRect() != start && bar.SelectorRect() != Resting(bar)); // on its way
        }
        QPixmap icon(32, 32);
        icon.fill(Qt::darkGreen);
        const QMap<QString, std::function<void()>> during{
            {"resize", [&] { bar.setExpanding(true), host.window.resize(700, 400); }},
            {"font", [&] { bar.setFont(TestSupport::TestFont(20)); }},
            {"icon before", [&] { bar.setIconSize(QSize(32, 32)), bar.setTabIcon(1, QIcon(icon)); }},
            {"inserted before", [&] { bar.insertTab(0, QStringLiteral("Zero, much longer")); }},
            {"inserted after", [&] { bar.addTab(QStringLiteral("Six")); }},
            {"removed before", [&] { bar.removeTab(1); }},
            {"inserted then removed before", [&] { bar.insertTab(0, QStringLiteral("Zero")), bar.removeTab(3); }},
            {"removed target", [&] { bar.removeTab(3); }},
            {"moved target", [&] { bar.moveTab(3, 0); }},
            {"moved over target", [&] { bar.moveTab(4, 0); }},
        };
        if (during.contains(change.section(", ", -1)))
            during[change.section(", ", -1)]();
        if (change.startsWith("closed")) {
            QWidget* close = TestSupport::TabCloseButton(bar, change == "closed target" ? 3 : 0);
            QVERIFY(close);
            QTest::mouseClick(close, Qt::LeftButton);
        }
        QCOMPARE(bar.IsSelectorMoving(), slides);
        QVERIFY(host.Rests());
        QCOMPARE(bar.tabText(bar.currentIndex()), current);
        QCOMPARE(bar.SelectorRect(), Resting(bar));
        QCOMPARE(bar.SelectorTarget(), Resting(bar));
        // Away from the text and from a pill's round corners.
        const QPoint inside(Resting(bar).center().x(), Resting(bar).top() + 1);
        QCOMPARE(TestSupport::Render(&bar).pixelColor(inside), bar.GetSelectorColor());
    }

    void slidesThroughFrames_data()
    {
        QTest::addColumn<int>("selector");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("underline to the right") << int(TabBar::Underline) << 0 << 4;
        QTest::newRow("underline to the left") << int(TabBar::Underline) << 4 << 1;
        QTest::newRow("pill to the left") << int(TabBar::Pill) << 3 << 0;
    }
    // Every frame of a slide moves the selector the same way, from the old tab to the new,
    // and the frames leave nothing of it behind on the screen.
    void slidesThroughFrames()
    {
        QFETCH(int, selector);
        QFETCH(int, from);
        QFETCH(int, to);
        Host host{QTabBar::RoundedNorth, TabBar::Shape(selector)};
        TabBar& bar = *host.bar;
        if (selector == TabBar::Pill)
            host.window.setStyleSheet("OrvantaQT--TabBar::tab { background: transparent; border: none; padding: 8px; }");
        bar.setCurrentIndex(from);
        QVERIFY(host.Show());
        const QRect first = bar.SelectorRect();
        Frames frames(&bar);
        bar.setCurrentIndex(to);
        QVERIFY(bar.IsSelectorMoving());
        // Frames 40 ms apart, each painted as the window system asks.
        host.Slide()->pause();
        for (int ms = 0; ms <= bar.GetDuration(); ms += 40)
            host.At(ms);
        QVERIFY(host.Rests());
        QCOMPARE(frames.rects.last(), Resting(bar));
        QVector<int> lefts;
        int between = 0;
        for (const QRect& rect : frames.rects) {
            lefts << rect.left();
            between += rect.left() != first.left() && rect.left() != Resting(bar).left();
        }
        QVERIFY2(between >= 3, "frames on the way");
        QCOMPARE(frames.rects.first(), first);
        QVERIFY(TestSupport::IsMonotonic(lefts, to > from));
        // The width changes from the first tab's to the last one's on the way.
        QCOMPARE(frames.rects.last().width(), Resting(bar).width());
        const QRect area(bar.mapTo(&host.window, QPoint()), bar.size());
        const QImage screen = host.window.screen()->grabWindow(host.window.winId()).toImage().copy(area);
        const QImage painted = TestSupport::Render(&host.window, 1.0, host.window.palette().color(QPalette::Window))
                                   .copy(area)
                                   .convertToFormat(screen.format());
        QCOMPARE(TestSupport::Changed(screen, painted), QRect());
    }

    void stillStyle_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("style of the bar") << "bar";
        QTest::newRow("duration 0") << "duration";
    }
    // With the style's animations off (or no duration) a change takes no time: no frame
    // shows the selector anywhere but on the current tab.
    void stillStyle()
    {
        QFETCH(QString, how);
        Host host;
        TabBar& bar = *host.bar;
        TestSupport::StillStyle still;
        if (how == "bar")
            bar.setStyle(&still);
        else
            bar.SetDuration(0);
        QVERIFY(host.Show());
        Frames frames(&bar);
        for (int index : {3, 1, 4}) {
            bar.setCurrentIndex(index);
            QVERIFY(!bar.IsSelectorMoving());
            QCOMPARE(bar.SelectorRect(), Resting(bar));
            QCoreApplication::processEvents();
            QVERIFY(!frames.rects.isEmpty());
            for (const QRect& rect : std::exchange(frames.rects, {}))
                QCOMPARE(rect, Resting(bar));
        }
        QCOMPARE(bar.GetDuration(), how == "bar" ? 600 : 0);
        bar.setStyle(nullptr);
    }

    void keyboardAndWheel_data()
    {
        QTest::addColumn<int>("barShape");
        QTest::addColumn<int>("disabled"); // a tab, or -1
        QTest::addColumn<QString>("input");  // keys, or wheel turns in eighths of a degree
        QTest::addColumn<int>("current");    // from 2
        QTest::newRow("Home") << int(QTabBar::RoundedNorth) << -1 << "Home" << 0;
        QTest::newRow("End") << int(QTabBar::RoundedNorth) << -1 << "End" << 4;
        QTest::newRow("Home, the first disabled") << int(QTabBar::RoundedNorth) << 0 << "Home" << 1;
        QTest::newRow("End, the last disabled") << int(QTabBar::RoundedNorth) << 4 << "End" << 3;
        QTest::newRow("Right") << int(QTabBar::RoundedNorth) << -1 << "Right" << 3;
        QTest::newRow("Left over a disabled tab") << int(QTabBar::RoundedNorth) << 1 << "Left" << 0;
        QTest::newRow("Up across a horizontal bar") << int(QTabBar::RoundedNorth) << -1 << "Up" << 2;
        QTest::newRow("Down on the west") << int(QTabBar::RoundedWest) << -1 << "Down" << 3;
        QTest::newRow("Up on the east") << int(QTabBar::RoundedEast) << -1 << "Up" << 1;
        QTest::newRow("Up twice, over a disabled tab") << int(QTabBar::RoundedWest) << 1 << "Up Up" << 0;
        QTest::newRow("Down at the end") << int(QTabBar::RoundedWest) << -1 << "Down Down Down" << 4;
        QTest::newRow("wheel down") << int(QTabBar::RoundedNorth) << -1 << "-120" << 3;
        QTest::newRow("wheel up twice") << int(QTabBar::RoundedNorth) << -1 << "120 120" << 0;
        QTest::newRow("wheel up two notches at once") << int(QTabBar::RoundedNorth) << -1 << "240" << 0;
        QTest::newRow("touchpad, a notch in three") << int(QTabBar::RoundedNorth) << -1 << "-40 -40 -40" << 3;
        QTest::newRow("touchpad, less than a notch") << int(QTabBar::RoundedNorth) << -1 << "-40 -40" << 2;
        QTest::newRow("touchpad, back and forth") << int(QTabBar::RoundedNorth) << -1 << "80 -80 -20" << 2;
        QTest::newRow("wheel over a disabled tab") << int(QTabBar::RoundedNorth) << 3 << "-120" << 4;
        QTest::newRow("wheel past the end") << int(QTabBar::RoundedNorth) << -1 << "-360" << 4;
        QTest::newRow("wheel without a turn") << int(QTabBar::RoundedNorth) << -1 << "0" << 2;
    }
    void keyboardAndWheel()
    {
        QFETCH(int, barShape);
        QFETCH(int, disabled);
        QFETCH(QString, input);
        QFETCH(int, current);
        Host host{QTabBar::Shape(barShape)};
        TabBar& bar = *host.bar;
        bar.setCurrentIndex(2);
        if (disabled >= 0)
            bar.setTabEnabled(disabled, false);
        QVERIFY(host.Show());
        const QMap<QString, Qt::Key> keys{{"Home", Qt::Key_Home}, {"End", Qt::Key_End},   {"Left", Qt::Key_Left},
                                          {"Right", Qt::Key_Right}, {"Up", Qt::Key_Up}, {"Down", Qt::Key_Down}};
        for (const QString& step : input.split(' ')) {
            if (keys.contains(step)) {
                QKeyEvent press(QEvent::KeyPress, keys[step], Qt::NoModifier);
                QApplication::sendEvent(&bar, &press);
                // Up and Down across a horizontal bar go on to the parent.
                QCOMPARE(press.isAccepted(), !(step == "Up" && barShape == QTabBar::RoundedNorth));
            } else {
                const QPoint at = host.TabCentre(2);
                QWheelEvent wheel(at, bar.mapToGlobal(at), QPoint(), QPoint(0, step.toInt()), Qt::NoButton,
                                  Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(&bar, &wheel);
                // A turn stays in the bar; none is the parent's.
                QCOMPARE(wheel.isAccepted(), step != "0");
            }
        }
        QCOMPARE(bar.currentIndex(), current);
        QVERIFY(host.Rests());
        QCOMPARE(bar.SelectorRect(), Resting(bar));
    }

    void pixels_data()
    {
        QTest::addColumn<int>("barShape");
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<qreal>("ratio");
        QTest::newRow("underline") << int(QTabBar::RoundedNorth) << "" << 1.0;
        QTest::newRow("underline, south, styled")
            << int(QTabBar::RoundedSouth) << "OrvantaQT--TabBar { qproperty-SelectorColor: #ff0000; qproperty-SelectorThickness: 4; }"
            << 1.0;
        QTest::newRow("underline, west, twice the pixels") << int(QTabBar::RoundedWest) << "" << 2.0;
        const char* pill = "OrvantaQT--TabBar { qproperty-SelectorShape: Pill; qproperty-SelectorColor: #0000ff;"
                           " qproperty-SelectorRadius: 8; qproperty-SelectorMargin: 3; }"
                           " OrvantaQT--TabBar::tab { background: transparent; border: none; padding: 6px 14px; }";
        QTest::newRow("pill") << int(QTabBar::RoundedNorth) << pill << 1.0;
        QTest::newRow("pill, twice the pixels") << int(QTabBar::RoundedNorth) << pill << 2.0;
        QTest::newRow("pill, round ends") << int(QTabBar::RoundedNorth) << QString(pill).replace("Radius: 8", "Radius: 100") << 1.0;
    }
    // The selector is painted in its colour where SelectorRect() says, and nowhere else;
    // a pill has round corners.
    void pixels()
    {
        QFETCH(int, barShape);
        QFETCH(QString, styleSheet);
        QFETCH(qreal, ratio);
        const bool pill = styleSheet.contains("Pill");
        Host host{QTabBar::Shape(barShape)};
        TabBar& bar = *host.bar;
        host.window.setStyleSheet(styleSheet);
        bar.setCurrentIndex(2);
        QVERIFY(host.Show());
        const QColor colour = bar.GetSelectorColor();
        const bool round = styleSheet.contains("Radius: 100");
        if (pill)
            QCOMPARE(Values(bar), QVariantList({2, round ? 100 : 8, 3, 600, int(TabBar::Pill)}));
        else if (!styleSheet.isEmpty())
            QCOMPARE(bar.GetSelectorThickness(), 4);
        QCOMPARE(colour, pill ? QColor(Qt::blue) : !styleSheet.isEmpty() ? QColor(Qt::red) : bar.palette().color(QPalette::Highlight));
        const QRect selector = bar.SelectorRect();
        QCOMPARE(selector, Resting(bar));
        const QImage image = TestSupport::Render(&bar, ratio);
        const auto at = [&](const QPoint& point) { return image.pixelColor(point * ratio); };
        int inColour = 0;
        for (int y = 0; y < bar.height(); ++y) {
            for (int x = 0; x < bar.width(); ++x) {
                const QPoint point(x, y);
                const bool inside = selector.adjusted(1, 1, -1, -1).contains(point);
                const bool outside = !selector.adjusted(-1, -1, 1, 1).contains(point);
                if ((inside && !pill) || outside)
                    QVERIFY2((at(point) == colour) == inside, qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
                inColour += at(point) == colour;
            }
        }
        if (!pill) {
            QCOMPARE(inColour, selector.width() * selector.height());
            return;
        }
        // The pill shows behind the text: its colour where there is no text, round corners.
        QVERIFY(inColour > selector.width() * selector.height() / 2);
        QCOMPARE(at(QPoint(selector.left() + 8, selector.top() + 1)), colour);
        QCOMPARE(at(QPoint(selector.left() + 1, selector.center().y())), colour);
        QVERIFY(at(selector.topLeft()).alpha() < 128);
        QVERIFY(at(selector.bottomRight()).alpha() < 128);
        int smoothed = 0; // pixels of the corner's edge partly covered
        for (int y = 0; y < 8 * ratio; ++y) {
            for (int x = 0; x < 8 * ratio; ++x) {
                const int alpha = image.pixelColor(selector.topLeft() * ratio + QPoint(x, y)).alpha();
                smoothed += alpha > 0 && alpha < 255;
            }
        }
        QVERIFY(smoothed >= 4);
        // A radius past half the height gives round ends, no more.
        const QPoint end(selector.left() + 1, selector.top() + selector.height() / 4);
        QCOMPARE(at(end).alpha() < 128, round);
        // Another colour, another picture of the pill.
        bar.SetSelectorColor(Qt::darkGreen);
        QCOMPARE(TestSupport::Render(&bar, ratio).pixelColor(QPoint(selector.left() + 8, selector.top() + 1) * ratio),
                 QColor(Qt::darkGreen));
        if (ratio > 1) // the corner drawn at the finer pixels, not magnified
            QVERIFY(image.pixelColor(selector.topLeft() * ratio + QPoint(3, 3)).alpha() < 255);
    }

    // A dragged current tab carries the selector; dropped in its new place, the selector
    // settles on it.
    void dragged()
    {
        Host host;
        TabBar& bar = *host.bar;
        bar.setMovable(true);
        QVERIFY(host.Show());
        TestSupport::SignalLog moves(&bar, {"tabMoved(int,int)"});
        const QPoint press = host.TabCentre(1);
        Send(&bar, QEvent::MouseButtonPress, press, Qt::LeftButton);
        QCOMPARE(bar.currentIndex(), 1);
        QVERIFY(host.Rests());
        const QRect pressed = bar.SelectorRect();
        const int to = host.TabCentre(3).x() + 4;
        // QTabBar moves the tab once the mouse has gone further than the drag distance.
        const int start = QApplication::startDragDistance();
        for (int x = press.x() + start / 2; x <= to; x += start / 2) {
            Send(&bar, QEvent::MouseMove, QPoint(x, press.y()), Qt::LeftButton);
            QCOMPARE(bar.SelectorRect(), x - press.x() > start ? pressed.translated(x - press.x(), 0) : pressed);
        }
        QVERIFY(!moves.lines.isEmpty());
        Send(&bar, QEvent::MouseButtonRelease, QPoint(to, press.y()), Qt::NoButton);
        QCOMPARE(Titles(bar), "One Three Four Two Five");
        QCOMPARE(bar.currentIndex(), 3);
        QVERIFY(host.Rests());
        QCOMPARE(bar.SelectorRect(), Resting(bar));
        // A press the bar lost when it was hidden drags nothing after.
        Send(&bar, QEvent::MouseButtonPress, host.TabCentre(3), Qt::LeftButton);
        host.window.hide();
        QVERIFY(host.Show());
        Send(&bar, QEvent::MouseMove, host.TabCentre(3) + QPoint(40, 0), Qt::LeftButton);
        QCOMPARE(bar.SelectorRect(), Resting(bar));
        Send(&bar, QEvent::MouseButtonRelease, host.TabCentre(3) + QPoint(40, 0), Qt::NoButton);
        QCOMPARE(Titles(bar), "One Three Four Two Five");
        // Nor a press from before a tab went.
        Send(&bar, QEvent::MouseButtonPress, host.TabCentre(3), Qt::LeftButton);
        bar.removeTab(4);
        Send(&bar, QEvent::MouseMove, host.TabCentre(3) - QPoint(40, 0), Qt::LeftButton);
        QCOMPARE(bar.SelectorRect(), Resting(bar));
        Send(&bar, QEvent::MouseButtonRelease, host.TabCentre(3) - QPoint(40, 0), Qt::NoButton);
        QCOMPARE(Titles(bar), "One Three Four Two");
        // A press on another tab is no drag of the current one.
        Send(&bar, QEvent::MouseButtonPress, host.TabCentre(0), Qt::LeftButton);
        Send(&bar, QEvent::MouseMove, host.TabCentre(0) + QPoint(2, 0), Qt::LeftButton);
        Send(&bar, QEvent::MouseButtonRelease, host.TabCentre(0) + QPoint(2, 0), Qt::NoButton);
        QVERIFY(host.Rests());
        QCOMPARE(bar.currentIndex(), 0);
        QCOMPARE(bar.SelectorRect(), Resting(bar));
    }

    // Properties a style sheet reaches reset to their defaults, and the colour follows the
    // palette until one is set.
    void properties()
    {
        TabBar bar;
        bar.addTab(QStringLiteral("One"));
        QVERIFY(TestSupport::ShowAndWait(&bar));
        QCOMPARE(Values(bar), QVariantList({2, 6, 2, 250, int(TabBar::Underline)}));
        QCOMPARE(bar.GetEasing().type(), QEasingCurve::OutCubic);
        bar.SetEasing(QEasingCurve::Linear);
        QCOMPARE(bar.GetEasing().type(), QEasingCurve::Linear);
        QPalette palette = bar.palette();
        palette.setColor(QPalette::Highlight, QColor(0x12, 0x34, 0x56));
        bar.setPalette(palette);
        QCOMPARE(bar.GetSelectorColor(), QColor(0x12, 0x34, 0x56));
        QCOMPARE(TestSupport::FirstNotReset(&bar, {{"SelectorColor", QColor(Qt::red)}}), QString());
        QCOMPARE(bar.GetSelectorColor(), QColor(0x12, 0x34, 0x56));
        QVERIFY(TestSupport::Repaints(&bar, [&] { bar.SetSelectorColor(Qt::green); }));
        QVERIFY(!TestSupport::Repaints(&bar, [&] { bar.SetSelectorColor(Qt::green); }, 500));
        QVERIFY(TestSupport::Repaints(&bar, [&] { bar.SetSelectorThickness(5); }));
        QVERIFY(TestSupport::Repaints(&bar, [&] { bar.SetSelectorShape(TabBar::Pill); }));
        QVERIFY(TestSupport::Repaints(&bar, [&] { bar.SetSelectorRadius(3); }));
        QVERIFY(TestSupport::Repaints(&bar, [&] { bar.SetSelectorMargin(4); }));
    }

    void badInput()
    {
        const LogCapture::Mark mark;
        Host host;
        TabBar& bar = *host.bar;
        bar.SetSelectorThickness(-1);
        bar.SetSelectorRadius(-2);
        bar.SetSelectorMargin(-3);
        bar.SetDuration(-4);
        bar.SetSelectorShape(static_cast<TabBar::Shape>(7));
        bar.SetSelectorColor(QColor());
        QCOMPARE(mark.Texts(), QStringList({
            "3 TabBar: a negative selector thickness (-1) is ignored",
            "3 TabBar: a negative selector radius (-2) is ignored",
            "3 TabBar: a negative selector margin (-3) is ignored",
            "3 TabBar: a negative duration (-4 ms) is ignored",
            "3 TabBar: 7 is not a selector shape; the shape stays as it is",
            "3 TabBar: an invalid selector colour; the palette's highlight is used",
        }));
        QCOMPARE(Values(bar), QVariantList({2, 6, 2, 600, int(TabBar::Underline)}));
        QCOMPARE(bar.GetSelectorColor(), bar.palette().color(QPalette::Highlight));
        // Nothing is no error: no underline, square corners, a pill as large as its tab.
        bar.SetSelectorThickness(0);
        bar.SetSelectorRadius(0);
        bar.SetSelectorMargin(0);
        bar.SetDuration(0);
        QCOMPARE(mark.Texts().size(), 6);
        QCOMPARE(Values(bar), QVariantList({0, 0, 0, 0, int(TabBar::Underline)}));
        bar.SetDuration(600);
        bar.SetSelectorThickness(2);
        // Out-of-range tabs are QTabBar's to refuse; nothing moves.
        QVERIFY(host.Show());
        bar.setCurrentIndex(9);
        QVERIFY(!bar.IsSelectorMoving());
        QCOMPARE(bar.SelectorRect(), Resting(bar));
    }

    void midSlide_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("every tab removed") << "remove all";
        QTest::newRow("bar deleted") << "delete";
        QTest::newRow("tab hidden") << "hide tab";
        QTest::newRow("shape changed") << "shape";
        QTest::newRow("bar hidden") << "hide bar";
        QTest::newRow("style without animations") << "still style";
        QTest::newRow("another style") << "other style";
    }
    // Whatever happens during a slide, it stops or goes on cleanly, and the selector ends on
    // the current tab.
    void midSlide()
    {
        QFETCH(QString, how);
        TestSupport::StillStyle still;
        QProxyStyle other(QStringLiteral("Fusion"));
        Host host;
        QPointer<TabBar> bar = host.bar;
        QVERIFY(host.Show());
        bar->setCurrentIndex(4);
        QVERIFY(bar->IsSelectorMoving());
        if (how == "remove all") {
            while (bar->count() > 0)
                bar->removeTab(0);
            QVERIFY(!bar->IsSelectorMoving());
            QVERIFY(bar->SelectorRect().isEmpty());
            QCoreApplication::processEvents(); // painted without tabs
            bar->addTab(QStringLiteral("Again"));
            QVERIFY(!bar->IsSelectorMoving());
        } else if (how == "delete") {
            delete bar;
            QTest::qWait(100);
            QVERIFY(!bar);
            return;
        } else if (how == "shape") {
            bar->SetSelectorShape(TabBar::Pill);
            QVERIFY2(!bar->IsSelectorMoving(), "in place at once in its new shape");
        } else if (how == "hide bar") {
            host.window.hide();
            QVERIFY(!bar->IsSelectorMoving());
            bar->setCurrentIndex(2);
            QVERIFY(!bar->IsSelectorMoving());
            QVERIFY(host.Show());
            QVERIFY(!bar->IsSelectorMoving());
        } else if (how == "hide tab") {
            bar->setTabVisible(4, false);
        } else if (how.endsWith("style")) {
            bar->setStyle(how == "still style" ? &still : &other);
            QCOMPARE(bar->IsSelectorMoving(), how == "other style");
        }
        QVERIFY(host.Rests());
        QCOMPARE(bar->SelectorRect(), Resting(*bar));
    }
};

QTEST_MAIN(TestTabBar)
#include "tst_tab_bar.moc"
