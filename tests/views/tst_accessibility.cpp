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
#include <memory>

using namespace OrvantaQT;

namespace {

const char kBusVariable[] = "QT_HALVO_TEST_ACCESSIBILITY_BUS";

using Make = std::function<QWidget*(QWidget* parent)>;
using Change = std::function<void(QWidget*)>;

QAccessibleInterface* Of(QObject* object)
{
    return QAccessible::queryAccessibleInterface(object);
}

template <typename Widget>
Widget* As(QWidget* widget)
{
    return static_cast<Widget*>(widget);
}

BarInfo Section(int percent, const char* legend, const char* text = "", const char* tooltip = "")
{
    BarInfo info;
    info.percent = percent;
    info.legend = QLatin1String(legend);
    info.text = QLatin1String(text);
    info.tooltip = QLatin1String(tooltip);
    return info;
}

// Every widget is "w", 300 x 60 unless the maker sets another size.
template <typename Widget>
Make Maker(std::function<void(Widget*)> setUp = {})
{
    return [setUp](QWidget* parent) {
        auto* widget = new Widget(parent);
        widget->setObjectName(QStringLiteral("w"));
        widget->setGeometry(10, 10, 300, 60);
        if (setUp)
            setUp(widget);
        return widget;
    };
}

Make TwoSections()
{
    return Maker<BarChart>([](BarChart* chart) {
        chart->SetBarInfoList({{0, Section(40, "Used\nspace", "", "Taken by files")}, {1, Section(60, "", "Free")}});
    });
}

Make Pie(int value, int maximum)
{
    return Maker<PieChart>([value, maximum](PieChart* pie) {
        pie->setMaximum(maximum);
        pie->setValue(value);
    });
}

Make Autoresized(const QString& text, int width = 300)
{
    return Maker<AutoresizedText>([text, width](AutoresizedText* label) {
        label->setFont(TestSupport::TestFont());
        label->resize(width, 30);
        label->setText(text);
    });
}

Make Link(const QString& text, const QString& path = QString())
{
    return Maker<LinkLabel>([text, path](LinkLabel* link) {
        link->setFont(TestSupport::TestFont());
        link->resize(120, 30);
        link->setText(text);
        if (!path.isEmpty())
            link->SetPath(path);
    });
}

QString States(const QAccessible::State& state)
{
    QStringList names;
    const std::pair<bool, const char*> flags[] = {{state.readOnly, "readOnly"},   {state.linked, "linked"},
                                                  {state.focusable, "focusable"}, {state.disabled, "disabled"},
                                                  {state.invisible, "invisible"}};
    for (const auto& flag : flags) {
        if (flag.first)
            names << QLatin1String(flag.second);
    }
    return names.join(QLatin1Char(' '));
}

// "current/maximum" of the value interface; empty without one.
QString Value(QAccessibleInterface* accessible)
{
    QAccessibleValueInterface* value = accessible->valueInterface();
    if (!value)
        return QString();
    return value->currentValue().toString() + QLatin1Char('/') + value->maximumValue().toString();
}

QString Roles()
{
    QWidget host;
    const QList<QWidget*> widgets{new BarChart(&host),          new PieChart(&host),
                                  new PlotWidget(&host),        new AutoresizedText(&host),
                                  new LinkLabel(&host),         new BusyIndicatorRing(&host),
                                  new SelectableContainer(&host), new NotificationWidget(&host)};
    QStringList roles;
    for (QWidget* widget : widgets)
        roles << QLatin1String(QMetaEnum::fromType<QAccessible::Role>().valueToKey(Of(widget)->role()));
    return roles.join(QLatin1Char(' '));
}

const QString kRoles = QStringLiteral("Chart ProgressBar Chart StaticText Link Animation ListItem AlertMessage");

// A child run that makes its application objects in an unusual order and prints the roles.
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

    // First: nothing in this process has called InstallAccessibilityFactory yet.
    void installedWithTheApplication_data()
    {
        QTest::addColumn<QString>("probe");
        QTest::newRow("this process") << QString();
        QTest::newRow("gui application made first") << QStringLiteral("gui-first");
        QTest::newRow("installed before the application, twice") << QStringLiteral("installed-before");
    }
    void installedWithTheApplication()
    {
        QFETCH(QString, probe);
        if (probe.isEmpty()) {
            QCOMPARE(Roles(), kRoles);
            return;
        }
        const TestSupport::ChildResult child = TestSupport::RunSelf({QStringLiteral("--roles-probe"), probe});
        QVERIFY(child.finished);
        QCOMPARE(child.output.trimmed(), kRoles);
    }

    void interfaces_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QAccessible::Role>("role");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("valueText");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("children");
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("states");
        const QString longText = QStringLiteral("A rather long sentence that cannot fit");
        QTest::newRow("bar chart") << TwoSections() << QAccessible::Chart << "" << "" << "" << 2 << "" << "";
        QTest::newRow("bar chart, no sections")
            << Maker<BarChart>() << QAccessible::Chart << "" << "" << "" << 0 << "" << "";
        QTest::newRow("pie chart") << Pie(30, 120) << QAccessible::ProgressBar << "" << "25%" << "30/120" << 0 << ""
                                   << "readOnly";
        QTest::newRow("pie chart, no maximum")
            << Pie(30, 0) << QAccessible::ProgressBar << "" << "" << "30/0" << 0 << "" << "readOnly";
        QTest::newRow("plot") << Maker<PlotWidget>([](PlotWidget* plot) { plot->setValue(7); }) << QAccessible::Chart
                              << "" << "7" << "7/10" << 0 << "" << "";
        QTest::newRow("plot, samples above the minimum scale")
            << Maker<PlotWidget>([](PlotWidget* plot) { plot->setMinValue(3); }) << QAccessible::Chart << ""
            << "0" << "0/5" << 0 << "" << "";
        QTest::newRow("plot, value above the scale")
            << Maker<PlotWidget>([](PlotWidget* plot) { plot->setValue(12); }) << QAccessible::Chart << ""
            << "12" << "12/12" << 0 << "" << "";
        QTest::newRow("autoresized text, elided") << Autoresized(longText, 60) << QAccessible::StaticText << longText
                                                  << "" << "" << 0 << "" << "";
        QTest::newRow("autoresized text, rich, two lines")
            << Autoresized(QStringLiteral("<b>Disk</b> usage<br>today")) << QAccessible::StaticText
            << "Disk usage\ntoday" << "" << "" << 0 << "" << "";
        QTest::newRow("autoresized text, phrasings")
            << Maker<AutoresizedText>([](AutoresizedText* label) {
                   label->setStrings({QStringLiteral("A longer phrasing"), QStringLiteral("Short")});
                   label->resize(5, 30);
               })
            << QAccessible::StaticText << "A longer phrasing" << "" << "" << 0 << "" << "";
        QTest::newRow("autoresized text, clickable")
            << Maker<AutoresizedText>([](AutoresizedText* label) { label->setHoverUnderline(true); })
            << QAccessible::StaticText << "" << "" << "" << 0 << "Press" << "";
        QTest::newRow("link label") << Link(QStringLiteral("<u>Open</u> settings")) << QAccessible::Link
                                    << "Open settings" << "" << "" << 0 << "Press SetFocus" << "linked focusable";
        QTest::newRow("link label, path") << Link(QString(), QStringLiteral("C:/Users/someone/Documents/report.txt"))
                                          << QAccessible::Link << "C:/Users/someone/Documents/report.txt" << ""
                                          << "" << 0 << "Press SetFocus" << "linked focusable";
        QTest::newRow("link label, disabled")
            << Maker<LinkLabel>([](LinkLabel* link) { link->setEnabled(false); }) << QAccessible::Link << "" << ""
            << "" << 0 << "" << "linked focusable disabled";
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
        QTEST(accessible->text(QAccessible::Value), "valueText");
        QTEST(Value(accessible), "value");
        QTEST(accessible->childCount(), "children");
        QCOMPARE(accessible->child(accessible->childCount()), nullptr);
        QCOMPARE(accessible->child(-1), nullptr);
        QTEST(accessible->actionInterface()->actionNames().join(QLatin1Char(' ')), "actions");
        QTEST(States(accessible->state()), "states");
        // Not the tool tip that holds the rest of an elided text.
        QCOMPARE(accessible->text(QAccessible::Description), QString());
        QCOMPARE(accessible->parent(), Of(&window));
    }

    void sections()
    {
        QWidget window;
        auto* chart = As<BarChart>(TwoSections()(&window));
        QVERIFY(TestSupport::ShowAndWait(&window));
        QAccessibleInterface* accessible = Of(chart);
        QStringList read;
        for (int i = 0; i < accessible->childCount(); ++i) {
            QAccessibleInterface* section = accessible->child(i);
            QCOMPARE(accessible->child(i), section); // the same one every time
            QCOMPARE(section->parent(), accessible);
            QCOMPARE(accessible->indexOfChild(section), i);
            const QRect rect = section->rect();
            QVERIFY(accessible->rect().contains(rect));
            QCOMPARE(accessible->childAt(rect.center().x(), rect.center().y()), section);
            read << QStringLiteral("%1|%2|%3|%4|%5|%6")
                        .arg(section->text(QAccessible::Name), section->text(QAccessible::Value),
                             section->text(QAccessible::Description), Value(section), States(section->state()))
                        .arg(section->role());
        }
        QCOMPARE(read, QStringList({QStringLiteral("Used space|40%|Taken by files|40/100|readOnly|%1").arg(QAccessible::ProgressBar),
                                    QStringLiteral("Free|60%||60/100|readOnly|%1").arg(QAccessible::ProgressBar)}));
        QCOMPARE(accessible->childAt(accessible->rect().right() + 5, accessible->rect().top()), nullptr);
    }

    // Each change, then the paint that follows it, then the event loop once.
    void eventsOnChange_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Change>("change");
        QTest::addColumn<QStringList>("events");
        const auto pie = [](std::function<void(PieChart*)> change) {
            return Change([change](QWidget* widget) { change(As<PieChart>(widget)); });
        };
        const auto bar = [](std::function<void(BarChart*)> change) {
            return Change([change](QWidget* widget) { change(As<BarChart>(widget)); });
        };
        const auto text = [](const char* text) {
            return Change([text](QWidget* widget) { As<AutoresizedText>(widget)->setText(QLatin1String(text)); });
        };
        QTest::newRow("pie value") << Pie(30, 100) << pie([](PieChart* p) { p->setValue(45); })
                                   << QStringList{"ValueChanged w 45"};
        QTest::newRow("pie value, same") << Pie(30, 100) << pie([](PieChart* p) { p->setValue(30); }) << QStringList();
        QTest::newRow("pie maximum") << Pie(30, 100) << pie([](PieChart* p) { p->setMaximum(60); })
                                     << QStringList{"ValueChanged w 30"};
        QTest::newRow("pie border only") << Pie(30, 100) << pie([](PieChart* p) { p->setBorderWidth(5); })
                                         << QStringList();
        QTest::newRow("bar percent") << TwoSections() << bar([](BarChart* c) { c->setPercentList({"40", "50"}); })
                                     << QStringList{"ValueChanged w/1 50"};
        QTest::newRow("bar legend") << TwoSections()
                                    << bar([](BarChart* c) { c->setLegendList({"Used\nspace", "Spare"}); })
                                    << QStringList{"NameChanged w/1"};
        QTest::newRow("bar legend and percent of the first")
            << TwoSections()
            << bar([](BarChart* c) { c->SetBarInfoList({{0, Section(35, "Taken")}, {1, Section(60, "", "Free")}}); })
            << QStringList{"NameChanged w/0", "ValueChanged w/0 35"};
        QTest::newRow("bar section added")
            << TwoSections() << bar([](BarChart* c) { c->setPercentList({"40", "60", "5"}); })
            << QStringList{"ObjectReorder w"};
        QTest::newRow("bar sections removed") << TwoSections() << bar([](BarChart* c) { c->SetBarInfoList({}); })
                                              << QStringList{"ObjectReorder w"};
        QTest::newRow("bar colours only") << TwoSections()
                                          << bar([](BarChart* c) { c->setColorList({"#ff0000", "#00ff00"}); })
                                          << QStringList();
        QTest::newRow("plot value") << Maker<PlotWidget>()
                                    << Change([](QWidget* w) { As<PlotWidget>(w)->setValue(9); })
                                    << QStringList{"ValueChanged w 9"};
        QTest::newRow("plot value refused") << Maker<PlotWidget>()
                                            << Change([](QWidget* w) { As<PlotWidget>(w)->setValue(-4); })
                                            << QStringList();
        // Qt tells of a new shown text; a new whole text that is shown alike is ours.
        const QString a = QStringLiteral("A rather long sentence, first");
        QTest::newRow("text elided alike") << Autoresized(a, 80) << text("A rather long sentence, second")
                                           << QStringList{"NameChanged w"};
        QTest::newRow("text shown anew") << Autoresized(a) << text("Short") << QStringList{"NameChanged w"};
        QTest::newRow("text, same") << Autoresized(a, 80) << text("A rather long sentence, first") << QStringList();
        QTest::newRow("text with a name of its own")
            << Autoresized(a, 80) << Change([](QWidget* w) {
                   w->setAccessibleName(QStringLiteral("Title"));
                   As<AutoresizedText>(w)->setText(QStringLiteral("A rather long sentence, second"));
               })
            << QStringList{"NameChanged w"};
        QTest::newRow("text resized") << Autoresized(a) << Change([](QWidget* w) { w->resize(80, 30); })
                                      << QStringList{"NameChanged w"}; // Qt's, for the shown text
        QTest::newRow("link path elided alike")
            << Link(QString(), QStringLiteral("C:/Users/someone/Documents/report.txt"))
            << Change([](QWidget* w) { As<LinkLabel>(w)->SetPath(QStringLiteral("C:/Users/other/Documents/report.txt")); })
            << QStringList{"NameChanged w"};
        QTest::newRow("link text") << Link(QStringLiteral("Open"))
                                   << Change([](QWidget* w) { As<LinkLabel>(w)->setText(QStringLiteral("Close")); })
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

    // Hidden, a widget does not paint: its changes are told when it is shown again.
    void hiddenTellsWhenShown()
    {
        QWidget window;
        auto* pie = As<PieChart>(Pie(30, 100)(&window));
        QVERIFY(TestSupport::ShowAndWait(&window));
        QVERIFY(Of(pie));
        pie->hide();
        TestSupport::AccessibilityRecorder recorder;
        pie->setValue(70);
        QCoreApplication::processEvents();
        QCOMPARE(recorder.Take(pie), QStringList());
        pie->show();
        QCOMPARE(recorder.Take(pie), QStringList({"ValueChanged w 70", "ObjectShow w"}));
    }

    void pressActsAsClick_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QStringList>("signalsEmitted");
        QTest::newRow("link") << Maker<LinkLabel>([](LinkLabel* link) { link->SetCommand(QStringLiteral("open")); })
                              << QStringList{"Clicked()", "CommandClicked(open)"};
        QTest::newRow("link, disabled") << Maker<LinkLabel>([](LinkLabel* link) { link->setEnabled(false); })
                                        << QStringList();
        QTest::newRow("text, clickable")
            << Maker<AutoresizedText>([](AutoresizedText* label) { label->setHoverUnderline(true); })
            << QStringList{"clicked()"};
        QTest::newRow("text, not clickable") << Maker<AutoresizedText>() << QStringList();
    }
    void pressActsAsClick()
    {
        QFETCH(Make, make);
        QWidget window;
        QWidget* widget = make(&window);
        QVERIFY(TestSupport::ShowAndWait(&window));
        std::unique_ptr<TestSupport::SignalLog> log;
        if (qobject_cast<LinkLabel*>(widget))
            log = std::make_unique<TestSupport::SignalLog>(widget, std::initializer_list<const char*>{"Clicked()", "CommandClicked(QString)"});
        else
            log = std::make_unique<TestSupport::SignalLog>(widget, std::initializer_list<const char*>{"clicked()", "doubleClicked()"});
        QAccessibleActionInterface* actions = Of(widget)->actionInterface();
        actions->doAction(QAccessibleActionInterface::pressAction());
        QTEST(log->Take(), "signalsEmitted");
    }

    // Used while its widget is being destroyed, an interface is invalid and answers nothing.
    void widgetDestroyed_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<Change>("change"); // after the test connects to destroyed()
        const Change none = [](QWidget*) {};
        QTest::newRow("bar chart") << TwoSections() << none;
        QTest::newRow("pie chart") << Pie(30, 100) << none;
        QTest::newRow("plot") << Maker<PlotWidget>() << none;
        QTest::newRow("autoresized text") << Maker<AutoresizedText>()
                                          << Change([](QWidget* w) { As<AutoresizedText>(w)->setText("Text"); });
        QTest::newRow("link label") << Maker<LinkLabel>() << Change([](QWidget* w) { As<LinkLabel>(w)->setText("Open"); });
    }
    void widgetDestroyed()
    {
        QFETCH(Make, make);
        QFETCH(Change, change);
        QWidget window;
        QWidget* widget = make(&window);
        QStringList answers;
        QAccessibleInterface* accessible = nullptr;
        // Connected before the interface exists (setting a label's text makes it), so
        // before Qt's cache deletes it.
        connect(widget, &QObject::destroyed, this, [&] {
            QAccessibleValueInterface* value = accessible->valueInterface();
            answers << QString::number(accessible->isValid()) << accessible->text(QAccessible::Name)
                    << QString::number(accessible->childCount()) << QString::number(!accessible->child(0))
                    << QString::number(accessible->rect().isEmpty()) << QString::number(!accessible->parent())
                    << accessible->actionInterface()->actionNames().join(QLatin1Char(' '))
                    << QString::number(!value || !value->currentValue().isValid());
            accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        });
        change(widget);
        QVERIFY(TestSupport::ShowAndWait(&window));
        accessible = Of(widget);
        QAccessibleInterface* section = accessible->child(0);
        const QAccessible::Id id = QAccessible::uniqueId(accessible);
        const QAccessible::Id sectionId = section ? QAccessible::uniqueId(section) : 0;
        delete widget;
        QCOMPARE(answers, QStringList({"0", "", "0", "1", "1", "1", "", "1"}));
        QCOMPARE(QAccessible::accessibleInterface(id), nullptr);
        if (sectionId)
            QCOMPARE(QAccessible::accessibleInterface(sectionId), nullptr);
    }

    // A section held while the sections shrink is invalid, then valid again for the new one.
    void sectionHeldAcrossChanges()
    {
        QWidget window;
        auto* chart = As<BarChart>(TwoSections()(&window));
        QAccessibleInterface* second = Of(chart)->child(1);
        chart->setPercentList({"100"});
        QVERIFY(!second->isValid());
        QCOMPARE(second->text(QAccessible::Name), QString());
        QCOMPARE(second->valueInterface()->currentValue(), QVariant());
        QCOMPARE(second->rect(), QRect());
        QVERIFY(second->state().invisible);
        chart->SetBarInfoList({{0, Section(50, "One")}, {7, Section(50, "Seven")}});
        QVERIFY(second->isValid());
        QCOMPARE(Of(chart)->child(1), second);
        QCOMPARE(second->text(QAccessible::Name), QStringLiteral("Seven"));
    }

    void valuesAreReadOnly_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<int>("child");
        QTest::addColumn<QString>("logged");
        QTest::newRow("pie chart") << Pie(30, 100) << -1 << "3 PieChart: screen readers cannot set its value";
        QTest::newRow("plot") << Maker<PlotWidget>() << -1 << "3 PlotWidget: screen readers cannot set its value";
        QTest::newRow("bar chart section") << TwoSections() << 0
                                           << "3 BarChart section: screen readers cannot set its value";
    }
    void valuesAreReadOnly()
    {
        QFETCH(Make, make);
        QFETCH(int, child);
        QWidget window;
        QWidget* widget = make(&window);
        QAccessibleInterface* accessible = child < 0 ? Of(widget) : Of(widget)->child(child);
        const QVariant before = accessible->valueInterface()->currentValue();
        const LogCapture::Mark mark;
        accessible->valueInterface()->setCurrentValue(before.toInt() + 1);
        QCOMPARE(accessible->valueInterface()->currentValue(), before);
        QTEST(mark.Texts().join(QLatin1Char('|')), "logged");
    }

    // Last: called by a host after the start-up did it, nothing changes.
    void installedAgain()
    {
        QWidget window;
        auto* pie = As<PieChart>(Pie(30, 100)(&window));
        QAccessibleInterface* before = Of(pie);
        const LogCapture::Mark mark;
        InstallAccessibilityFactory();
        InstallAccessibilityFactory();
        QCOMPARE(Of(pie), before);
        QCOMPARE(Roles(), kRoles);
        QCOMPARE(mark.Texts(), QStringList());
    }
};

// Qt tells accessibility updates only while a screen reader's bus is there: without one,
// this executable runs itself again with a private message bus published where Qt looks
// for it (the X server's AT_SPI_BUS), and passes the result on.
int RunOnPrivateBus(int argc, char** argv)
{
    QCoreApplication core(argc, argv);
    QProcess bus;
    bus.setStandardErrorFile(QProcess::nullDevice());
    bus.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address=1"});
    if (!bus.waitForReadyRead(10000))
        qFatal("no dbus-daemon");
    const QString address = QString::fromLocal8Bit(bus.readLine()).trimmed();
    if (QProcess::execute(QStringLiteral("xprop"), {"-root", "-f", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS", address}) != 0)
        qFatal("cannot publish the bus");
    const TestSupport::ChildResult child = TestSupport::RunSelf(
        core.arguments().mid(1), {"DBUS_SESSION_BUS_ADDRESS=" + address, QLatin1String(kBusVariable) + "=1"});
    QProcess::execute(QStringLiteral("xprop"), {"-root", "-remove", "AT_SPI_BUS"});
    bus.terminate();
    bus.waitForFinished();
    std::fputs(qPrintable(child.output), stdout);
    return child.finished ? child.exitCode : 1;
}

int main(int argc, char** argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--roles-probe") == 0)
        return RolesProbe(argc, argv);
    if (!qEnvironmentVariableIsSet(kBusVariable))
        return RunOnPrivateBus(argc, argv);
    QApplication application(argc, argv);
    TestAccessibility test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_accessibility.moc"
