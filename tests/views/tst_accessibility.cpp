#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/charts/bar_chart.h>
#include <qt_halvo/charts/pie_chart.h>
#include <qt_halvo/charts/plot_widget.h>
#include <qt_halvo/views/accessibility_factory.h>
#include <qt_halvo/widgets/containers/selectable_container.h>
#include <qt_halvo/widgets/text/autoresized_text.h>
#include <qt_halvo/widgets/text/link_label.h>
#include <qt_halvo/widgets/window/notification_widget.h>

#include "accessibility_recorder.h"
#include "test_support.h"

#include <cstdio>

using namespace OrvantaQT;

namespace {

using Make = std::function<QWidget*(QWidget* parent)>;
using Change = std::function<void(QWidget*)>;

QAccessibleInterface* Of(QObject* object)
{
    return QAccessible::queryAccessibleInterface(object);
}

// A widget "w" of the class at 10, 10, 300 x 60, then set up.
template <typename Widget>
Make Maker(std::function<void(Widget*)> setUp = {})
{
    return [setUp](QWidget* parent) {
        auto* widget = new Widget(parent);
        widget->setObjectName(QStringLiteral("w"));
        widget->setGeometry(10, 10, 300, 60);
        widget->setFont(TestSupport::TestFont());
        if (setUp)
            setUp(widget);
        return widget;
    };
}

template <typename Widget>
Change On(std::function<void(Widget*)> change)
{
    return [change](QWidget* widget) { change(static_cast<Widget*>(widget)); };
}

BarInfo Section(int percent, const char* legend, const char* text = "", const char* tooltip = "")
{
    BarInfo info;
    info.percent = percent;
    std::tie(info.legend, info.text, info.tooltip) = std::make_tuple(legend, text, tooltip);
    return info;
}

Make TwoSections()
{
    return Maker<BarChart>([](BarChart* chart) {
        chart->SetBarInfoList({{0, Section(40, "Used\nspace", "", "Taken by files")}, {1, Section(60, "", "Free")}});
    });
}

Make Pie(int value, int maximum)
{
    return Maker<PieChart>([=](PieChart* pie) { pie->setMaximum(maximum); pie->setValue(value); });
}

Make Text(const QString& text, int width = 300, bool clickable = false)
{
    return Maker<AutoresizedText>([=](AutoresizedText* label) {
        label->resize(width, 30);
        label->setText(text);
        label->setHoverUnderline(clickable);
    });
}

Make Link(const QString& text, const QString& path = QString(), bool enabled = true)
{
    return Maker<LinkLabel>([=](LinkLabel* link) {
        link->resize(120, 30);
        link->setText(text);
        if (!path.isEmpty())
            link->SetPath(path);
        link->SetCommand(QStringLiteral("open"));
        link->setEnabled(enabled);
    });
}

QString States(const QAccessible::State& s)
{
    return QStringList{s.readOnly ? "readOnly" : "", s.linked ? "linked" : "", s.focusable ? "focusable" : "",
                       s.disabled ? "disabled" : "", s.invisible ? "invisible" : ""}
        .join(QLatin1Char(' ')).simplified();
}

// "current/maximum" of the value interface; empty without one.
QString Value(QAccessibleInterface* accessible)
{
    QAccessibleValueInterface* value = accessible->valueInterface();
    return value ? value->currentValue().toString() + QLatin1Char('/') + value->maximumValue().toString() : QString();
}

QString Roles()
{
    QWidget host;
    QStringList roles;
    for (QWidget* widget : QList<QWidget*>{new BarChart(&host), new PieChart(&host), new PlotWidget(&host),
                                           new AutoresizedText(&host), new LinkLabel(&host),
                                           new BusyIndicatorRing(&host), new SelectableContainer(&host),
                                           new NotificationWidget(&host)})
        roles << QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(Of(widget)->role()));
    return roles.join(QLatin1Char(' '));
}

const QString kRoles = QStringLiteral("Chart ProgressBar Chart StaticText Link Animation ListItem AlertMessage");

// A child run that makes its application objects in an unusual order, then prints Roles().
int RolesProbe(int argc, char** argv)
{
    if (qstrcmp(argv[2], "gui-first") == 0) {
        QGuiApplication gui(argc, argv);
    } else {
        InstallAccessibilityFactory();
        InstallAccessibilityFactory();
    }
    QApplication application(argc, argv);
    std::fputs(qPrintable(Roles() + QLatin1Char('\n')), stdout);
    return 0;
}

} // namespace

Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(Change)

class TestAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QTRY_VERIFY(QAccessible::isActive()); }

    // First: nothing in this process has called InstallAccessibilityFactory before.
    void installedWithTheApplication_data()
    {
        QTest::addColumn<QString>("probe");
        QTest::newRow("this process") << QString();
        QTest::newRow("this process, installed again by the host") << QStringLiteral("again");
        QTest::newRow("gui application made first") << QStringLiteral("gui-first");
        QTest::newRow("installed before the application, twice") << QStringLiteral("before");
    }
    void installedWithTheApplication()
    {
        QFETCH(QString, probe);
        const LogCapture::Mark mark;
        if (probe == QLatin1String("again")) {
            InstallAccessibilityFactory();
            InstallAccessibilityFactory();
        }
        if (probe.isEmpty() || probe == QLatin1String("again")) {
            QCOMPARE(Roles(), kRoles);
        } else {
            const TestSupport::ChildResult child = TestSupport::RunSelf({QStringLiteral("--roles-probe"), probe});
            QVERIFY(child.finished);
            QCOMPARE(child.output.trimmed(), kRoles);
        }
        QCOMPARE(mark.Texts(), QStringList());
    }

    void interfaces_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QAccessible::Role>("role");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value"); // text, then "current/maximum" of the value interface
        QTest::addColumn<int>("children");
        QTest::addColumn<QString>("actions"); // with their keys
        QTest::addColumn<QString>("states");
        QTest::addColumn<QStringList>("pressed"); // the signals that the press action emits
        const QString longText = QStringLiteral("A rather long  sentence"); // plain: both spaces are read
        const QString path = QStringLiteral("C:/Users/someone/Documents/report.txt");
        const auto chart = QAccessible::Chart;
        const auto bar = QAccessible::ProgressBar;
        const auto text = QAccessible::StaticText;
        const QStringList none;
        QTest::newRow("bar chart") << TwoSections() << chart << "" << "|" << 2 << "" << "" << none;
        QTest::newRow("bar chart, no sections") << Maker<BarChart>() << chart << "" << "|" << 0 << "" << "" << none;
        QTest::newRow("pie") << Pie(30, 120) << bar << "" << "25%|30/120" << 0 << "" << "readOnly" << none;
        QTest::newRow("pie, no maximum") << Pie(30, 0) << bar << "" << "|30/0" << 0 << "" << "readOnly" << none;
        QTest::newRow("plot") << Maker<PlotWidget>([](PlotWidget* p) { p->setValue(7); }) << chart << "" << "7|7/10"
                              << 0 << "" << "" << none;
        // Scaled to its highest sample on screen (5) when that passes minValue.
        QTest::newRow("plot, samples above the scale") << Maker<PlotWidget>([](PlotWidget* p) { p->setMinValue(3); })
                                                       << chart << "" << "0|0/5" << 0 << "" << "" << none;
        QTest::newRow("text, elided") << Text(longText, 60) << text << longText << "|" << 0 << "" << "" << none;
        QTest::newRow("text, rich, two lines") << Text(QStringLiteral("<b>Disk</b> usage<br>today")) << text
                                               << "Disk usage\ntoday" << "|" << 0 << "" << "" << none;
        QTest::newRow("text, phrasings") << Maker<AutoresizedText>([](AutoresizedText* label) {
            label->setStrings({QStringLiteral("A longer phrasing"), QStringLiteral("Short")});
            label->resize(5, 30);
        }) << text << "A longer phrasing" << "|" << 0 << "" << "" << none;
        QTest::newRow("text, clickable") << Text(QString(), 300, true) << text << "" << "|" << 0 << "Press" << ""
                                         << QStringList{"clicked()"};
        QTest::newRow("link") << Link(QStringLiteral("<u>Open</u> settings")) << QAccessible::Link << "Open settings"
                              << "|" << 0 << "Press(Return) SetFocus" << "linked focusable"
                              << QStringList{"Clicked()", "CommandClicked(open)"};
        QTest::newRow("link, path") << Link(QString(), path) << QAccessible::Link << path << "|" << 0
                                    << "Press(Return) SetFocus" << "linked focusable"
                                    << QStringList{"Clicked()", "CommandClicked(open)"};
        QTest::newRow("link, disabled") << Link(QString(), QString(), false) << QAccessible::Link << "" << "|" << 0
                                        << "" << "linked focusable disabled" << none;
    }
    void interfaces()
    {
        QFETCH(Make, make);
        QWidget window;
        QWidget* widget = make(&window);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QAccessibleInterface* accessible = Of(widget);
        QVERIFY(accessible && accessible->isValid());
        QTEST(accessible->role(), "role");
        QTEST(accessible->text(QAccessible::Name), "name");
        QTEST(accessible->text(QAccessible::Value) + QLatin1Char('|') + Value(accessible), "value");
        QTEST(accessible->childCount(), "children");
        QVERIFY(!accessible->child(accessible->childCount()) && !accessible->child(-1));
        QStringList actions = accessible->actionInterface()->actionNames();
        for (QString& action : actions) {
            const QStringList keys = accessible->actionInterface()->keyBindingsForAction(action);
            action += keys.isEmpty() ? QString() : "(" + keys.join(QLatin1Char(' ')) + ")";
        }
        QTEST(actions.join(QLatin1Char(' ')), "actions");
        QTEST(States(accessible->state()), "states");
        // Not the tool tip that holds the rest of an elided text.
        QCOMPARE(accessible->text(QAccessible::Description), QString());
        QCOMPARE(accessible->parent(), Of(&window));
        // Values are for reading: setting one changes nothing and is logged.
        if (QAccessibleValueInterface* value = accessible->valueInterface()) {
            const QString before = Value(accessible);
            const LogCapture::Mark mark;
            value->setCurrentValue(value->currentValue().toInt() + 1);
            QCOMPARE(Value(accessible), before);
            const QString widgetClass = QString::fromLatin1(widget->metaObject()->className()).section("::", 1);
            QCOMPARE(mark.Texts(), QStringList("3 " + widgetClass + ": screen readers cannot set its value"));
        }
        if (!qobject_cast<QLabel*>(widget))
            return;
        const bool link = qobject_cast<LinkLabel*>(widget);
        TestSupport::SignalLog log(widget, {link ? "Clicked()" : "clicked()",
                                            link ? "CommandClicked(QString)" : "doubleClicked()"});
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTEST(log.Take(), "pressed");
    }

    void sections()
    {
        QWidget window;
        auto* chart = static_cast<BarChart*>(TwoSections()(&window));
        QVERIFY(TestSupport::ShowAndWait(&window));
        QAccessibleInterface* accessible = Of(chart);
        QCOMPARE(accessible->indexOfChild(Of(&window)), -1); // before any section is asked for
        QStringList read;
        for (int i = 0; i < accessible->childCount(); ++i) {
            QAccessibleInterface* section = accessible->child(i);
            QCOMPARE(accessible->child(i), section); // the same one every time
            QCOMPARE(section->parent(), accessible);
            QCOMPARE(accessible->indexOfChild(section), i);
            QVERIFY(!section->childCount() && !section->child(0) && section->indexOfChild(accessible) == -1);
            const QRect rect = section->rect();
            QVERIFY(accessible->rect().contains(rect));
            QCOMPARE(accessible->childAt(rect.center().x(), rect.center().y()), section);
            read << QStringList{section->text(QAccessible::Name), section->text(QAccessible::Value),
                                section->text(QAccessible::Description), Value(section), States(section->state()),
                                QString::number(section->role())}.join(QLatin1Char('|'));
        }
        const int bar = QAccessible::ProgressBar;
        QCOMPARE(read, QStringList({QStringLiteral("Used space|40%|Taken by files|40/100|readOnly|%1").arg(bar),
                                    QStringLiteral("Free|60%||60/100|readOnly|%1").arg(bar)}));
        QCOMPARE(accessible->childAt(accessible->rect().right() + 5, accessible->rect().top()), nullptr);

        // Held while the sections shrink, a section is invalid; valid again for a new one.
        QAccessibleInterface* second = accessible->child(1);
        chart->setPercentList({"100"});
        QVERIFY(!second->isValid());
        QCOMPARE(second->text(QAccessible::Name) + Value(second) + States(second->state()), "/100readOnly invisible");
        QCOMPARE(second->rect(), QRect());
        chart->SetBarInfoList({{0, Section(50, "One")}, {7, Section(50, "Seven")}});
        QVERIFY(second->isValid());
        QCOMPARE(accessible->child(1), second);
        QCOMPARE(second->text(QAccessible::Name), QStringLiteral("Seven"));
    }

    // Each change, then the paint that follows it, then the event loop once.
    void eventsOnChange_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Change>("change");
        QTest::addColumn<QStringList>("events");
        const auto pie = [](std::function<void(PieChart*)> change) { return On<PieChart>(change); };
        const auto bar = [](std::function<void(BarChart*)> change) { return On<BarChart>(change); };
        const auto text = [](const char* to) { return On<AutoresizedText>([=](AutoresizedText* l) { l->setText(to); }); };
        QTest::newRow("pie value") << Pie(30, 100) << pie([](PieChart* p) { p->setValue(45); })
                                   << QStringList{"ValueChanged w 45"};
        QTest::newRow("pie maximum") << Pie(30, 100) << pie([](PieChart* p) { p->setMaximum(60); })
                                     << QStringList{"ValueChanged w 30"};
        // Hidden, it does not paint: the change is told when it is shown again.
        QTest::newRow("pie changed while hidden") << Pie(30, 100) << pie([](PieChart* p) {
            p->hide();
            p->setValue(70);
            p->show();
        }) << QStringList{"ObjectHide w", "ValueChanged w 70", "ObjectShow w"};
        QTest::newRow("bar percent") << TwoSections() << bar([](BarChart* c) { c->setPercentList({"40", "50"}); })
                                     << QStringList{"ValueChanged w/1 50"};
        QTest::newRow("bar legend and percent") << TwoSections() << bar([](BarChart* c) {
            c->SetBarInfoList({{0, Section(35, "Taken")}, {1, Section(60, "", "Free")}});
        }) << QStringList{"NameChanged w/0", "ValueChanged w/0 35"};
        // The legend's lines are read as one: spelt on one line, it reads the same.
        QTest::newRow("bar legend on one line") << TwoSections() << bar([](BarChart* c) {
            c->SetBarInfoList({{0, Section(40, "Used space", "", "Taken by files")}, {1, Section(60, "", "Free")}});
        }) << QStringList();
        QTest::newRow("bar legends only") << TwoSections() << bar([](BarChart* c) {
            c->SetBarInfoList({{0, Section(40, "Taken", "", "Taken by files")}, {1, Section(60, "Spare", "Free")}});
        }) << QStringList{"NameChanged w/0", "NameChanged w/1"};
        QTest::newRow("bar texts only") << TwoSections() << bar([](BarChart* c) { // the first is read by its legend
            c->SetBarInfoList({{0, Section(40, "Used\nspace", "Used", "Taken by files")}, {1, Section(60, "", "Spare")}});
        }) << QStringList{"NameChanged w/1"};
        QTest::newRow("bar section added")
            << TwoSections() << bar([](BarChart* c) { c->setPercentList({"4", "6", "5"}); })
            << QStringList{"ValueChanged w/0 4", "ValueChanged w/1 6", "ObjectReorder w"};
        QTest::newRow("bar sections removed") << TwoSections() << bar([](BarChart* c) { c->SetBarInfoList({}); })
                                              << QStringList{"ObjectReorder w"};
        QTest::newRow("bar colours only") << TwoSections() << bar([](BarChart* c) { c->setColorList({"#ff0000"}); })
                                          << QStringList();
        QTest::newRow("plot value") << Maker<PlotWidget>() << On<PlotWidget>([](PlotWidget* p) { p->setValue(9); })
                                    << QStringList{"ValueChanged w 9"};
        QTest::newRow("plot value refused") << Maker<PlotWidget>()
                                            << On<PlotWidget>([](PlotWidget* p) { p->setValue(-4); }) << QStringList();
        // Qt tells of a new shown text; a new whole text that is shown alike is ours to tell.
        const QString a = QStringLiteral("A rather long sentence, first");
        QTest::newRow("text elided alike") << Text(a, 80) << text("A rather long sentence, second")
                                           << QStringList{"NameChanged w"};
        QTest::newRow("text never shown, changed, shown") << Make([=](QWidget* parent) {
            QWidget* label = Text(a, 80)(parent);
            label->hide();
            return label;
        }) << On<AutoresizedText>([](AutoresizedText* l) {
            l->setText(QStringLiteral("A rather long sentence, second"));
            l->show();
        }) << QStringList{"NameChanged w", "ObjectShow w"};
        QTest::newRow("text shown anew") << Text(a) << text("Short") << QStringList{"NameChanged w"};
        QTest::newRow("text with a name of its own") << Text(a, 80) << On<AutoresizedText>([](AutoresizedText* l) {
            l->setAccessibleName(QStringLiteral("Title"));
            l->setText(QStringLiteral("A rather long sentence, second"));
        }) << QStringList{"NameChanged w"};
        QTest::newRow("text resized") << Text(a) << Change([](QWidget* w) { w->resize(80, 30); })
                                      << QStringList{"NameChanged w"}; // Qt's, for the shown text
        QTest::newRow("link path elided alike")
            << Link(QString(), QStringLiteral("C:/Users/someone/Documents/report.txt"))
            << On<LinkLabel>([](LinkLabel* l) { l->SetPath(QStringLiteral("C:/Users/other/Documents/report.txt")); })
            << QStringList{"NameChanged w"};
        QTest::newRow("link text") << Link(QStringLiteral("Open"))
                                   << On<LinkLabel>([](LinkLabel* l) { l->setText(QStringLiteral("Close")); })
                                   << QStringList{"NameChanged w", "TextRemoved w", "TextInserted w", "TextUpdated w"};
    }
    void eventsOnChange()
    {
        QFETCH(Make, make);
        QFETCH(Change, change);
        QWidget window;
        window.resize(400, 100);
        QWidget* widget = make(&window);
        QVERIFY(TestSupport::ShowAndWait(&window));
        QVERIFY(Of(widget));
        TestSupport::AccessibilityRecorder recorder;
        change(widget);
        widget->repaint();
        QCoreApplication::processEvents();
        QTEST(recorder.Take(widget), "events");
    }

    // Used while its widget is being destroyed, an interface is invalid and answers nothing.
    void widgetDestroyed_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Change>("change"); // after the test connects to destroyed()
        const Change none = [](QWidget*) {};
        QTest::newRow("bar chart") << TwoSections() << none;
        QTest::newRow("pie") << Pie(30, 100) << none;
        QTest::newRow("plot") << Maker<PlotWidget>() << none;
        QTest::newRow("text") << Text(QString()) << On<AutoresizedText>([](AutoresizedText* l) { l->setText("A"); });
        QTest::newRow("link") << Maker<LinkLabel>() << On<LinkLabel>([](LinkLabel* l) { l->setText("Open"); });
    }
    void widgetDestroyed()
    {
        QFETCH(Make, make);
        QFETCH(Change, change);
        QWidget window;
        QWidget* widget = make(&window);
        QString answers;
        QAccessibleInterface* accessible = nullptr;
        // Connected before the interface exists (a label's new text makes it), so before
        // Qt's cache deletes the interface.
        connect(widget, &QObject::destroyed, this, [&] {
            QAccessibleValueInterface* value = accessible->valueInterface();
            QAccessibleActionInterface* actions = accessible->actionInterface();
            const QString press = QAccessibleActionInterface::pressAction();
            for (const bool answer : {accessible->isValid(), accessible->childCount() > 0, bool(accessible->child(0)),
                                      accessible->indexOfChild(accessible) != -1, bool(accessible->childAt(0, 0)),
                                      !accessible->rect().isEmpty(), bool(accessible->parent()),
                                      bool(accessible->window()), bool(accessible->focusChild()),
                                      !accessible->relations().isEmpty(), !accessible->state().invisible,
                                      !accessible->text(QAccessible::Name).isEmpty(),
                                      accessible->foregroundColor().isValid(), accessible->backgroundColor().isValid(),
                                      !actions->actionNames().isEmpty(), !actions->keyBindingsForAction(press).isEmpty(),
                                      value && value->currentValue().isValid()})
                answers += QString::number(answer);
            actions->doAction(press);
        });
        change(widget);
        QVERIFY(TestSupport::ShowAndWait(&window));
        accessible = Of(widget);
        QAccessibleInterface* section = accessible->child(0);
        const QAccessible::Id id = QAccessible::uniqueId(accessible);
        const QAccessible::Id sectionId = section ? QAccessible::uniqueId(section) : 0;
        delete widget;
        QCOMPARE(answers, QString(17, QLatin1Char('0')));
        QCOMPARE(QAccessible::accessibleInterface(id), nullptr);
        QCOMPARE(QAccessible::accessibleInterface(sectionId), nullptr);
    }
};

// Qt passes accessibility updates on only while a screen reader's bus is there.
int main(int argc, char** argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--roles-probe") == 0)
        return RolesProbe(argc, argv);
    const TestSupport::ScreenReaderBus bus;
    if (bus.Address().isEmpty())
        return qCritical("no screen reader's bus"), 1;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().toLocal8Bit());
    QApplication application(argc, argv);
    TestAccessibility test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_accessibility.moc"
