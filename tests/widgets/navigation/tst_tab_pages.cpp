#include <qt_halvo/animation/animated_pixmap_render.h>
#include <qt_halvo/animation/custom_stacked_widget.h>
#include <qt_halvo/widgets/navigation/tab_bar.h>
#include <qt_halvo/widgets/navigation/tab_pages.h>

#include "test_support.h"

using OrvantaQT::AnimatedPixmapRender;
using OrvantaQT::TabPages;

namespace {

const char* const kColours[] = {"red", "lime", "blue", "yellow"};

// Four pages of one colour each, named by it, on tabs named by it.
struct Host
{
    TabPages pages;
    QVector<QPointer<QLabel>> labels;
    std::unique_ptr<TestSupport::SignalLog> log;
    Host()
    {
        pages.setFont(TestSupport::TestFont());
        pages.GetStack()->SetDuration(150);
        for (const char* colour : kColours)
            AddPage(QLatin1String(colour));
        pages.resize(420, 260);
        log.reset(new TestSupport::SignalLog(&pages, {"CurrentChanged(int)"}));
    }
    QLabel* AddPage(const QString& colour, int at = -1)
    {
        auto* label = new QLabel(colour);
        label->setObjectName(colour);
        label->setStyleSheet(QStringLiteral("background: %1").arg(colour));
        labels << label;
        pages.InsertPage(at, label, colour);
        return label;
    }
    bool Show() { return TestSupport::ShowAndWait(&pages); }
    AnimatedPixmapRender* Slide() const
    {
        return qobject_cast<AnimatedPixmapRender*>(pages.GetStack()->currentWidget());
    }
    // No slide runs and the stack shows the bar's current page.
    bool InStep() const
    {
        return !Slide() && pages.GetStack()->currentWidget() == pages.GetCurrentPage();
    }
    // The slide ended, as its clock would end it, and what follows it run.
    void EndSlide() const
    {
        if (AnimatedPixmapRender* slide = Slide())
            slide->TimeLine().setCurrentTime(slide->TimeLine().duration());
        QCoreApplication::processEvents();
    }
    // Slides, follow-ups included, ended until none starts; their pictures deleted.
    bool Settle() const
    {
        QCoreApplication::processEvents();
        for (int slides = 0; Slide() && slides < 10; ++slides)
            EndSlide();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return InStep() && pages.GetStack()->findChildren<AnimatedPixmapRender*>().isEmpty();
    }
    void Click(int index) { QTest::mouseClick(pages.GetTabBar(), Qt::LeftButton, {}, pages.GetTabBar()->tabRect(index).center()); }
    // The pages' names in the stack's order and in the tabs' order (a "?" marks a tab
    // whose title is not its page's).
    QString StackOrder() const { return Names(pages.GetStack()->count(), [this](int i) { return pages.GetStack()->widget(i)->objectName(); }); }
    QString TabOrder() const
    {
        return Names(pages.GetCount(), [this](int i) {
            const QString name = pages.GetPage(i)->objectName();
            return name + (pages.GetTabBar()->tabText(i) == name ? "" : "?");
        });
    }
    static QString Names(int count, const std::function<QString(int)>& name)
    {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << name(i);
        return names.join(' ');
    }
    // The colour in the middle of the pages' area, as painted.
    QColor Shown() const
    {
        QWidget* stack = pages.GetStack();
        return TestSupport::Render(stack).pixelColor(stack->width() / 2, stack->height() / 2);
    }
};

// The slides a stack starts, and their directions as their time lines start (a slide on a
// busy machine may end before it is ever painted).
struct Slides : QObject
{
    explicit Slides(QWidget* stack) { stack->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::ChildAdded) {
            if (auto* slide = qobject_cast<AnimatedPixmapRender*>(static_cast<QChildEvent*>(event)->child())) {
                ++started;
                connect(&slide->TimeLine(), &QTimeLine::stateChanged, this, [this, slide](QTimeLine::State state) {
                    if (state == QTimeLine::Running)
                        directions << slide->GetDirection();
                });
            }
        }
        return false;
    }
    int started = 0;
    QVector<int> directions;
};

} // namespace

class TestTabPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void partsAndNames()
    {
        TabPages plain;
        QCOMPARE(plain.GetStack()->GetDuration(), 250);
        QCOMPARE(plain.GetStack()->GetTimeLineCurveShape(), OrvantaQT::CustomStackedWidget::EaseOutCurve);
        QCOMPARE(plain.GetCurrentIndex(), -1);
        QCOMPARE(plain.GetCurrentPage(), nullptr);
        Host host;
        TabPages& pages = host.pages;
        // The bar over the pages, edge to edge.
        QVERIFY(host.Show());
        const int barHeight = pages.GetTabBar()->sizeHint().height();
        QCOMPARE(QVector<QRect>({pages.GetTabBar()->geometry(), pages.GetStack()->geometry()}),
                 QVector<QRect>({QRect(0, 0, pages.width(), barHeight),
                                 QRect(0, barHeight, pages.width(), pages.height() - barHeight)}));
        pages.hide();
        QCOMPARE(QStringList({pages.GetTabBar()->objectName(), pages.GetTabBar()->accessibleName(),
                              pages.GetStack()->objectName(), pages.GetStack()->accessibleName()}),
                 QStringList({"TabBar", "TabPages_TabBar", "Pages", "TabPages_Pages"}));
        QCOMPARE(pages.GetCurrentIndex(), 0);
        QCOMPARE(pages.GetCurrentPage(), host.labels[0].data());
        QCOMPARE(host.TabOrder(), "red lime blue yellow");
        QCOMPARE(host.StackOrder(), "red lime blue yellow");
        QCOMPARE(pages.IndexOf(host.labels[2]), 2);
        QCOMPARE(pages.GetPage(3), host.labels[3].data());
        QCOMPARE(pages.GetPage(4), nullptr);
        // Insertion at an index, and past the end as QTabWidget does.
        QPixmap icon(16, 16);
        icon.fill(Qt::black);
        const auto named = [](const char* name) {
            auto* label = new QLabel;
            label->setObjectName(name);
            return label;
        };
        QCOMPARE(pages.InsertPage(1, named("grey"), "grey", QIcon(icon)), 1);
        QCOMPARE(pages.InsertPage(99, named("white"), "white"), 5);
        QCOMPARE(pages.AddPage(named("last"), "last", QIcon(icon)), 6);
        QCOMPARE(QVector<bool>({pages.GetTabBar()->tabIcon(1).isNull(), pages.GetTabBar()->tabIcon(5).isNull(),
                                pages.GetTabBar()->tabIcon(6).isNull()}),
                 QVector<bool>({false, true, false}));
        QCOMPARE(host.TabOrder(), "red grey lime blue yellow white last");
        QCOMPARE(host.StackOrder(), host.TabOrder());
        QCOMPARE(pages.property("Count").toInt(), 7);
        QVERIFY(host.log->lines.isEmpty());
        QVERIFY(pages.setProperty("CurrentIndex", 2));
        QCOMPARE(host.log->Take(), QStringList({"CurrentChanged(2)"}));
        QCOMPARE(pages.GetStack()->currentWidget(), host.labels[1].data()); // hidden: at once
    }

    void slideDirection_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("direction"); // the stack's: 0 forwards, 1 backwards
        QTest::addColumn<QString>("shown");
        QTest::newRow("click a later tab") << "click 2" << 0 << "blue";
        QTest::newRow("click an earlier tab") << "index 3 click 1" << 1 << "lime";
        QTest::newRow("index of a later tab") << "index 1 index 3" << 0 << "yellow";
        QTest::newRow("End key") << "key End" << 0 << "yellow";
        QTest::newRow("page") << "index 3 page 0" << 1 << "red";
        // The stack follows the tabs' order: the last page moved first is before them all.
        QTest::newRow("moved tab") << "index 1 move 3 0 index 0" << 1 << "yellow";
        QTest::newRow("moved current tab") << "index 1 move 1 3 index 2" << 1 << "yellow";
        QTest::newRow("moved tab after the current") << "move 3 1 index 2" << 0 << "lime";
    }
    // A page slides in from the side of its tab, as the stack slides for an index after or
    // before its current one, and ends shown.
    void slideDirection()
    {
        QFETCH(QString, script);
        QFETCH(int, direction);
        QFETCH(QString, shown);
        Host host;
        TabPages& pages = host.pages;
        QVERIFY(host.Show());
        QStringList steps = script.split(' ');
        while (!steps.isEmpty()) {
            const QString step = steps.takeFirst();
            if (step == "click") {
                host.Click(steps.takeFirst().toInt());
            } else if (step == "index") {
                pages.SetCurrentIndex(steps.takeFirst().toInt());
            } else if (step == "page") {
                pages.SetCurrentPage(pages.GetPage(steps.takeFirst().toInt()));
            } else if (step == "key") {
                pages.GetTabBar()->setFocus();
                QTest::keyClick(pages.GetTabBar(), Qt::Key_End);
                steps.takeFirst();
            } else if (step == "move") {
                const int from = steps.takeFirst().toInt();
                pages.GetTabBar()->moveTab(from, steps.takeFirst().toInt());
                QVERIFY(host.Settle());
                QCOMPARE(host.StackOrder(), host.TabOrder());
                continue;
            }
            if (!steps.isEmpty())
                QVERIFY(host.Settle());
        }
        AnimatedPixmapRender* slide = host.Slide();
        QVERIFY(slide);
        QCOMPARE(slide->GetDirection(), direction);
        QVERIFY(host.Settle());
        QCOMPARE(pages.GetCurrentPage()->objectName(), shown);
        QCOMPARE(host.Shown(), QColor(shown));
        QCOMPARE(host.StackOrder(), host.TabOrder());
    }

    void rapidChanges_data()
    {
        QTest::addColumn<QString>("clicks");
        QTest::newRow("onwards") << "1 2 3";
        QTest::newRow("there and back") << "3 0";
        QTest::newRow("back and forth") << "1 0 1 0 1";
        QTest::newRow("the same tab twice") << "2 2";
        QTest::newRow("through the keyboard") << "End Home Right";
        // Changed during the slide back to the first page, which comes from a follow-up.
        QTest::newRow("on during a follow-up") << "2 0 follow 3";
    }
    // Changes faster than the slides: the page catches up with the bar after the slide in
    // progress, CurrentChanged comes once per change, in order, and no picture is left over.
    void rapidChanges()
    {
        QFETCH(QString, clicks);
        Host host;
        TabPages& pages = host.pages;
        QVERIFY(host.Show());
        QStringList expected;
        int current = 0;
        int duringSlides = 0;
        Slides slides(pages.GetStack());
        pages.GetTabBar()->setFocus();
        for (const QString& click : clicks.split(' ')) {
            const int before = current;
            if (click == "follow") {
                host.EndSlide();
                QCOMPARE(slides.started, 2);
                QVERIFY(host.Slide());
                continue;
            }
            duringSlides += host.Slide() != nullptr;
            const QMap<QString, std::pair<Qt::Key, int>> keys{
                {"End", {Qt::Key_End, 3}}, {"Home", {Qt::Key_Home, 0}}, {"Right", {Qt::Key_Right, 1}}};
            if (keys.contains(click))
                QTest::keyClick(pages.GetTabBar(), keys[click].first), current = keys[click].second;
            else
                host.Click(current = click.toInt());
            if (current != before)
                expected << QStringLiteral("CurrentChanged(%1)").arg(current);
            QCOMPARE(pages.GetCurrentIndex(), current);
            QCoreApplication::processEvents();
        }
        QVERIFY2(duringSlides > 0, "changes while the stack slides");
        QVERIFY(host.Settle());
        QCOMPARE(pages.GetCurrentIndex(), current);
        QCOMPARE(host.Shown(), QColor(kColours[current]));
        QCOMPARE(host.log->Take(), expected);
        QCOMPARE(host.StackOrder(), host.TabOrder());
        if (clicks.contains("follow"))
            QCOMPARE(slides.directions, QVector<int>({0, 1, 0}));
    }

    void pagesGoing_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("tabs"); // after it
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("emitted"); // the indexes CurrentChanged gives
        QTest::newRow("target deleted in its slide") << "slide 2 delete 2" << "red lime yellow" << "yellow" << "2 2";
        QTest::newRow("page before the target deleted in a slide") << "slide 2 delete 0" << "lime blue yellow" << "blue" << "2 1";
        QTest::newRow("page left deleted in a slide") << "slide 3 delete 0" << "lime blue yellow" << "yellow" << "3 2";
        QTest::newRow("target removed in its slide") << "slide 2 remove 2" << "red lime yellow" << "yellow" << "2 2";
        QTest::newRow("page before the target removed in a slide") << "slide 2 remove 1" << "red blue yellow" << "blue" << "2 1";
        QTest::newRow("page inserted before the target in a slide") << "slide 2 insert 0" << "grey red lime blue yellow" << "blue" << "2";
        QTest::newRow("page inserted after the target in a slide") << "slide 2 insert 4" << "red lime blue yellow grey" << "blue" << "2";
        QTest::newRow("page removed and added again in a slide") << "slide 2 remove 1 readd 1" << "red lime blue yellow" << "blue" << "2 1";
        QTest::newRow("current deleted") << "delete 0" << "lime blue yellow" << "lime" << "0";
        QTest::newRow("current removed") << "remove 0" << "lime blue yellow" << "lime" << "0";
        QTest::newRow("current closed on its tab") << "close 0" << "lime blue yellow" << "lime" << "0";
        QTest::newRow("another deleted") << "delete 3" << "red lime blue" << "red" << "";
        QTest::newRow("all deleted") << "delete 0 delete 0 delete 0 delete 0" << "" << "" << "0 0 0 -1";
        QTest::newRow("all removed in a slide") << "slide 2 remove 0 remove 0 remove 0 remove 0" << "" << "" << "2 1 0 0 -1";
    }
    // Pages deleted or removed and added, at rest and during a slide: their tabs follow, the
    // stack ends on the bar's current page with the tabs' order, and nothing dangles.
    void pagesGoing()
    {
        QFETCH(QString, change);
        QFETCH(QString, tabs);
        QFETCH(QString, current);
        QFETCH(QString, emitted);
        Host host;
        TabPages& pages = host.pages;
        QVERIFY(host.Show());
        QVector<QPointer<QLabel>> removed;
        // Closable tabs close their pages through the host, which removes them.
        pages.GetTabBar()->setTabsClosable(change.startsWith("close"));
        QObject::connect(pages.GetTabBar(), &QTabBar::tabCloseRequested, &pages, &TabPages::RemovePage);
        QStringList steps = change.split(' ');
        while (!steps.isEmpty()) {
            const QString step = steps.takeFirst();
            if (step == "slide") {
                pages.SetCurrentIndex(steps.takeFirst().toInt());
                QVERIFY(host.Slide());
            } else if (step == "delete") {
                delete pages.GetPage(steps.takeFirst().toInt());
            } else if (step == "remove") {
                const int index = steps.takeFirst().toInt();
                removed << static_cast<QLabel*>(pages.GetPage(index));
                pages.RemovePage(index);
            } else if (step == "insert") {
                host.AddPage("grey", steps.takeFirst().toInt());
            } else if (step == "close") {
                const int index = steps.takeFirst().toInt();
                removed << static_cast<QLabel*>(pages.GetPage(index));
                QWidget* close = TestSupport::TabCloseButton(*pages.GetTabBar(), index);
                QVERIFY(close);
                QTest::mouseClick(close, Qt::LeftButton);
            } else if (step == "readd") {
                QLabel* page = removed.takeLast();
                pages.InsertPage(steps.takeFirst().toInt(), page, page->objectName());
            }
        }
        QCOMPARE(host.TabOrder(), tabs);
        QVERIFY(host.Settle());
        QCOMPARE(host.TabOrder(), tabs);
        QCOMPARE(host.StackOrder(), tabs);
        QCOMPARE(pages.GetCount(), tabs.isEmpty() ? 0 : tabs.split(' ').size());
        QCOMPARE(pages.GetCurrentPage() ? pages.GetCurrentPage()->objectName() : QString(), current);
        if (!current.isEmpty())
            QCOMPARE(host.Shown(), QColor(current));
        QCOMPARE(host.log->Take().join(' '), QString(emitted).replace(QRegularExpression("(-?\\d+)"), "CurrentChanged(\\1)"));
        // Removed pages are not deleted, nor shown.
        for (const QPointer<QLabel>& page : removed)
            QVERIFY(page && !page->isVisible());
        // Still working: a page more, and a slide to it.
        host.AddPage("white");
        pages.SetCurrentIndex(pages.GetCount() - 1);
        QVERIFY(host.Settle());
        QCOMPARE(host.Shown(), QColor("white"));
    }

    void withoutSlides_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("still style") << "still";
        QTest::newRow("hidden") << "hidden";
    }
    // With the style's animations off, or while hidden, the page changes at once.
    void withoutSlides()
    {
        QFETCH(QString, how);
        Host host;
        TabPages& pages = host.pages;
        TestSupport::StillStyle still;
        if (how == "still") {
            pages.setStyle(&still);
            QVERIFY(host.Show());
        }
        for (int index : {2, 0, 3}) {
            pages.SetCurrentIndex(index);
            QVERIFY(!host.Slide());
            QVERIFY(host.InStep());
        }
        if (how == "hidden") {
            QVERIFY(host.Show());
            QVERIFY(host.InStep());
        }
        QCOMPARE(host.Shown(), QColor("yellow"));
        QCOMPARE(host.log->Take(), QStringList({"CurrentChanged(2)", "CurrentChanged(0)", "CurrentChanged(3)"}));
        pages.setStyle(nullptr);
    }

    void badInput()
    {
        const LogCapture::Mark mark;
        Host host;
        TabPages& pages = host.pages;
        QLabel stranger;
        QCOMPARE(pages.AddPage(nullptr, "none"), -1);
        QCOMPARE(pages.InsertPage(0, nullptr, "none"), -1);
        QCOMPARE(pages.AddPage(host.labels[1], "again"), -1);
        pages.RemovePage(4);
        pages.RemovePage(-1);
        pages.SetCurrentIndex(4);
        pages.SetCurrentIndex(-1);
        pages.SetCurrentPage(&stranger);
        pages.SetCurrentPage(nullptr);
        QCOMPARE(mark.Texts(), QStringList({
            "3 TabPages: no page to add",
            "3 TabPages: no page to add",
            "3 TabPages: the page \"again\" is added already",
            "3 TabPages: no page 4 to remove (4 pages)",
            "3 TabPages: no page -1 to remove (4 pages)",
            "3 TabPages: no page 4 to show (4 pages)",
            "3 TabPages: no page -1 to show (4 pages)",
            "3 TabPages: the widget to show is not one of the pages",
            "3 TabPages: the widget to show is not one of the pages",
        }));
        QCOMPARE(host.TabOrder(), "red lime blue yellow");
        QCOMPARE(pages.GetCurrentIndex(), 0);
        QVERIFY(host.log->lines.isEmpty());
        QVERIFY(host.InStep());
        // A tab taken off the bar behind its back is reported, and nothing breaks.
        const LogCapture::Mark behind;
        pages.GetTabBar()->removeTab(0);
        QCOMPARE(behind.Texts(), QStringList({"3 TabPages: 3 tabs for 4 pages; tabs are added and removed through TabPages"}));
        QVERIFY(host.InStep());
    }

    // Deleted in the middle of a slide, with its pages: nothing is left to run.
    void deletedDuringASlide()
    {
        auto* host = new Host;
        QVERIFY(host->Show());
        host->pages.SetCurrentIndex(3);
        QVERIFY(host->Slide());
        QPointer<QLabel> page = host->labels[0];
        delete host;
        QVERIFY(!page);
        QTest::qWait(200);
    }
};

QTEST_MAIN(TestTabPages)
#include "tst_tab_pages.moc"
