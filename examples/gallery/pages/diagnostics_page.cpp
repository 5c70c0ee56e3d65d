#include "gallery_pages.h"

#include <qt_halvo/animation/collapsing_pane.h>
#include <qt_halvo/diagnostics/debug_console.h>
#include <qt_halvo/diagnostics/state_machine_tracer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLoggingCategory>
#include <QtCore/QStateMachine>
#include <QtCore/QThread>
#include <QtGui/QTextCursor>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using OrvantaQT::CollapsingPane;
using OrvantaQT::DebugConsole;
using OrvantaQT::StateMachineTracer;

namespace {

Q_LOGGING_CATEGORY(lcGallery, "gallery.demo")

QString Translate(const char* text)
{
    return QCoreApplication::translate("DiagnosticsPage", text);
}

QWidget* CreateConsoleDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    //: Button that writes a few sample messages of each level.
    auto* messages = CreateButton(Translate("Log some messages"), "LogMessagesButton", demo);
    //: Button that writes a thousand messages from four threads at once.
    auto* burst = CreateButton(Translate("A burst from four threads"), "BurstButton", demo);
    row->addWidget(messages);
    row->addWidget(burst);
    row->addStretch();
    layout->addLayout(row);
    auto* console = new DebugConsole(demo);
    console->setObjectName(QStringLiteral("GalleryConsole"));
    console->setMinimumHeight(260);
    layout->addWidget(console);

    QObject::connect(messages, &QPushButton::clicked, demo, [] {
        qCDebug(lcGallery) << "the gallery asks for the page list";
        qCInfo(lcGallery) << "theme applied";
        qCWarning(lcGallery) << "a picture took 120 ms to decode";
        qCCritical(lcGallery) << "the settings file cannot be written";
    });
    QObject::connect(burst, &QPushButton::clicked, demo, [] {
        for (int t = 0; t < 4; ++t) {
            QThread* thread = QThread::create([t] {
                for (int i = 0; i < 250; ++i)
                    qCInfo(lcGallery, "worker %d, message %d", t, i);
            });
            QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
            thread->start();
        }
    });
    return demo;
}

QWidget* CreateTracerDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* left = new QVBoxLayout;
    //: Button that opens or closes a pane whose state machine is traced.
    auto* toggle = CreateButton(Translate("Open or close the pane"), "TracedPaneToggle", demo, true);
    auto* pane = new CollapsingPane(demo);
    auto* content = new QLabel(Translate("Every transition of this pane's state machine appears on the right, "
                                         "and in the console above."),
                               pane);
    content->setWordWrap(true);
    content->setMinimumHeight(70);
    pane->setWidget(content);
    QObject::connect(toggle, &QPushButton::toggled, pane, &CollapsingPane::setExpanded);
    left->addWidget(toggle, 0, Qt::AlignLeft);
    left->addWidget(pane);
    left->addStretch();
    layout->addLayout(left, 1);

    auto* history = new QPlainTextEdit(demo);
    history->setObjectName(QStringLiteral("TracedHistory"));
    history->setReadOnly(true);
    history->setMinimumHeight(180);
    layout->addWidget(history, 1);

    auto* machine = pane->findChild<QStateMachine*>();
    auto* tracer = new StateMachineTracer(machine, pane);
    history->setPlainText(tracer->StructureText());
    QObject::connect(tracer, &StateMachineTracer::TransitionTraced, history,
                     [history](const StateMachineTracer::Transition& transition) {
                         history->appendPlainText(QStringLiteral("%1 → %2 on %3")
                                                      .arg(transition.source, transition.targets.join(QLatin1String(", ")),
                                                           transition.trigger));
                         // The newest transition in sight, below the structure.
                         history->moveCursor(QTextCursor::End);
                         history->ensureCursorVisible();
                     });
    return demo;
}

} // namespace

QWidget* CreateDiagnosticsPage()
{
    ScrollingPage scrolling = CreateScrollingPage("DiagnosticsPage", Translate("Diagnostics"));
    QWidget* content = scrolling.content;
    scrolling.layout->addWidget(CreateSection(
        "ConsoleSection", Translate("Debug console"),
        Translate("DebugConsole shows what the library logs and every Qt message, taken in batches from a bounded "
                  "buffer that every thread writes into; filter by level, category and text, pause, copy and save. "
                  "InstallDebugConsoleShortcut gives a window Ctrl+Shift+D for one."),
        CreateConsoleDemo(content), content));
    scrolling.layout->addWidget(CreateSection(
        "TracerSection", Translate("State-machine tracing"),
        Translate("StateMachineTracer follows a running QStateMachine: its structure, then each transition with its "
                  "trigger. QT_HALVO_TRACE_STATE_MACHINES=1 traces every animated widget's machine."),
        CreateTracerDemo(content), content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> DiagnosticsPageMoments()
{
    return {
        {QStringLiteral("messages"),
         [](QWidget* page) {
             ClickButton(page, "LogMessagesButton");
             ClickButton(page, "BurstButton");
         },
         600},
        {QStringLiteral("traced"),
         [](QWidget* page) {
             ScrollTo(page, "TracerSection");
             ClickButton(page, "TracedPaneToggle");
         },
         1000},
    };
}
