// A tool bar of 40 buttons resized to a new width each time, as a window being resized
// does: the widths go from a third of what the buttons need to all of it and more, so
// that every step moves buttons between the bar and the overflow menu. Next to it, a
// QToolBar of 40 actions resized the same way in the same run. Times are per resize;
// painting and the events posted for later are not in them, for either bar.

#include <qt_halvo/widgets/navigation/tool_bar.h>
#include <qt_halvo/widgets/navigation/tool_bar_button.h>

#include <QtTest/QtTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolBar>

using OrvantaQT::ToolBar;

namespace {

enum class Kind { Halvo, QtToolBar };

constexpr int kButtons = 40;

QFont BenchFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

// Counts children added to a widget: a new widget made on a resize would show here.
class ChildCounter : public QObject
{
public:
    int added = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        added += event->type() == QEvent::ChildAdded;
        return false;
    }
};

} // namespace

Q_DECLARE_METATYPE(Kind)

class BenchToolBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void relayout_data();
    void relayout();
};

void BenchToolBar::initTestCase()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
    qInfo("%d buttons, style %s, platform %s", kButtons, qPrintable(QApplication::style()->objectName()),
          qPrintable(QGuiApplication::platformName()));
}

void BenchToolBar::relayout_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("ToolBar") << Kind::Halvo;
    QTest::newRow("QToolBar (peer)") << Kind::QtToolBar;
}

void BenchToolBar::relayout()
{
    QFETCH(Kind, kind);
    QWidget window;
    window.setFont(BenchFont());
    QWidget* bar = nullptr;
    QList<QWidget*> buttons;
    if (kind == Kind::Halvo) {
        auto* toolBar = new ToolBar(&window);
        for (int i = 0; i < kButtons; ++i)
            buttons << toolBar->AddAction(QStringLiteral("Item %1").arg(i));
        bar = toolBar;
    } else {
        auto* toolBar = new QToolBar(&window);
        for (int i = 0; i < kButtons; ++i)
            buttons << toolBar->widgetForAction(toolBar->addAction(QStringLiteral("Item %1").arg(i)));
        bar = toolBar;
    }
    const int full = bar->sizeHint().width();
    const int height = bar->sizeHint().height();
    window.resize(full + 40, height + 20);
    bar->setGeometry(0, 0, full, height);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    // Thirteen widths from a third of the full width to a tenth over it, in a scrambled
    // order, so that each resize moves a different number of buttons.
    QVector<int> widths;
    for (int step = 0; step < 13; ++step)
        widths << full / 3 + (step * 7 % 13) * (full * 23 / 30) / 12;
    ChildCounter counter;
    bar->installEventFilter(&counter);
    int next = 0;
    QBENCHMARK {
        bar->resize(widths.at(next++ % widths.size()), height);
    }
    bar->removeEventFilter(&counter);
    QCOMPARE(counter.added, 0);
    bar->resize(full, height);
    QCoreApplication::processEvents();
    for (QWidget* button : qAsConst(buttons))
        QVERIFY(button && button->isVisible());

    static QSet<QByteArray> reported;
    if (!reported.contains(QTest::currentDataTag())) {
        reported.insert(QTest::currentDataTag());
        qInfo("full width %d px, widths %d to %d px, no child added", full, widths.first(), full * 11 / 10);
    }
}

QTEST_MAIN(BenchToolBar)
#include "bench_tool_bar.moc"
