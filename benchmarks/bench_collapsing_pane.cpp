// Expanding a CollapsingPane whose content is an 800 x 400 form, on a real X server:
// the time of each paint pass of the window, the passes delivered during the 700 ms
// expansion, and how often the content itself is laid out. Next to it, the same
// expansion done naively: a container whose maximum height is animated with the live
// form inside, so the form is laid out at every in-between height.

#include <qt_halvo/animation/collapsing_pane.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QPropertyAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

#include <time.h>

using OrvantaQT::CollapsingPane;

namespace {

// Times every paint pass (UpdateRequest) and layout pass (LayoutRequest) of the window.
// The layout runs before the window's event(), so the clock starts in an application
// event filter, which sees the event first.
class TimedWindow : public QWidget
{
public:
    TimedWindow() { qApp->installEventFilter(&m_starter); }

    bool event(QEvent* event) override
    {
        const bool result = QWidget::event(event);
        if (event->type() == QEvent::UpdateRequest)
            paints << m_starter.clock.nsecsElapsed() / 1e6;
        else if (event->type() == QEvent::LayoutRequest)
            layouts << m_starter.clock.nsecsElapsed() / 1e6;
        return result;
    }

    QVector<double> paints;
    QVector<double> layouts;

private:
    struct Starter : QObject
    {
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::UpdateRequest || event->type() == QEvent::LayoutRequest)
                clock.start();
            return false;
        }
        QElapsedTimer clock;
    } m_starter;
};

// A form of 10 rows of labelled fields, 800 x 400, that counts its own layout passes.
class Form : public QWidget
{
public:
    Form()
    {
        auto* grid = new QGridLayout(this);
        for (int row = 0; row < 10; ++row) {
            for (int column = 0; column < 2; ++column) {
                grid->addWidget(new QLabel(QStringLiteral("Field %1.%2").arg(row).arg(column)), row, column * 2);
                grid->addWidget(new QLineEdit(QStringLiteral("value %1").arg(row * 2 + column)), row, column * 2 + 1);
            }
        }
        setMinimumSize(800, 400);
    }
    int resizes = 0;

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        ++resizes;
        QWidget::resizeEvent(event);
    }
};

// CPU time of the calling (GUI) thread in ms: everything it did for the frames, layout,
// painting and talking to the X server included.
double ThreadCpuMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

double Median(QVector<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Max(const QVector<double>& values)
{
    return values.isEmpty() ? 0 : *std::max_element(values.cbegin(), values.cend());
}

// What one expansion costs, from construction to Report().
class Measurement
{
public:
    Measurement(TimedWindow& window, const Form& form)
        : m_window(window)
        , m_form(form)
        , m_resizesBefore(form.resizes)
        , m_cpuBefore(ThreadCpuMilliseconds())
    {
        window.paints.clear();
        window.layouts.clear();
        m_elapsed.start();
    }

    void Report(const char* what, int steps) const
    {
        const double cpu = ThreadCpuMilliseconds() - m_cpuBefore;
        qInfo("%s: %d paint passes and %d animation steps in %lld ms; paint pass median %.2f ms, max %.2f ms; "
              "layout pass median %.2f ms, max %.2f ms (%d passes); GUI thread busy %.2f ms per step; "
              "the form was resized %d times",
              what, m_window.paints.size(), steps, m_elapsed.elapsed(), Median(m_window.paints), Max(m_window.paints),
              Median(m_window.layouts), Max(m_window.layouts), m_window.layouts.size(), steps ? cpu / steps : 0.0,
              m_form.resizes - m_resizesBefore);
    }

private:
    const TimedWindow& m_window;
    const Form& m_form;
    const int m_resizesBefore;
    const double m_cpuBefore;
    QElapsedTimer m_elapsed;
};

} // namespace

class BenchCollapsingPane : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void expandWithSnapshot();
    void expandLiveForComparison();
};

void BenchCollapsingPane::expandWithSnapshot()
{
    TimedWindow window;
    auto* layout = new QVBoxLayout(&window);
    auto* pane = new CollapsingPane;
    auto* form = new Form;
    pane->setWidget(form);
    layout->addWidget(pane);
    layout->addStretch();
    window.resize(840, 480);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(!pane->isVisible() && pane->maximumHeight() == 0);
    QTest::qWait(200);

    int steps = 0;
    connect(pane, &CollapsingPane::Expanding, [&steps] { ++steps; });
    QSignalSpy expanded(pane, QOverload<>::of(&CollapsingPane::Expanded));
    const Measurement measurement(window, *form);
    pane->expand();
    QVERIFY(expanded.wait(5000));
    // Counted up to the end of the motion: the live form comes back (one layout) after it.
    measurement.Report("CollapsingPane 800x400", steps);
    QCOMPARE(pane->height() > 0, true);
}

void BenchCollapsingPane::expandLiveForComparison()
{
    TimedWindow window;
    auto* layout = new QVBoxLayout(&window);
    auto* container = new QWidget;
    auto* inside = new QVBoxLayout(container);
    inside->setContentsMargins(0, 0, 0, 0);
    auto* form = new Form;
    inside->addWidget(form);
    container->setMaximumHeight(0);
    container->setMinimumHeight(0);
    form->setMinimumSize(800, 0); // let the live form squeeze, as a naive pane would
    layout->addWidget(container);
    layout->addStretch();
    window.resize(840, 480);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(200);

    QPropertyAnimation maximum(container, "maximumHeight");
    maximum.setDuration(700);
    maximum.setEasingCurve(QEasingCurve::OutQuart);
    maximum.setStartValue(0);
    maximum.setEndValue(400);
    QPropertyAnimation minimum(container, "minimumHeight");
    minimum.setDuration(700);
    minimum.setEasingCurve(QEasingCurve::OutQuart);
    minimum.setStartValue(0);
    minimum.setEndValue(400);
    int steps = 0;
    connect(&maximum, &QPropertyAnimation::valueChanged, [&steps] { ++steps; });
    const Measurement measurement(window, *form);
    maximum.start();
    minimum.start();
    QTRY_COMPARE_WITH_TIMEOUT(maximum.state(), QAbstractAnimation::Stopped, 5000);
    measurement.Report("live container 800x400 (comparison)", steps);
}

QTEST_MAIN(BenchCollapsingPane)
#include "bench_collapsing_pane.moc"
