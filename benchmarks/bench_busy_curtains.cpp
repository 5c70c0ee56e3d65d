// Busy indicators and a sliding curtain, on a real X server.
//
// BusyIndicatorRing at 48 x 48: paint time per step, rendered into an image, next to a
// QProgressBar in busy mode and a MovieWidget playing the ring's own 12 steps from a
// strip, both at the same size. Twenty running rings in a shown window, 10 s of a real
// event loop: CPU time of the process as a share of one core and the timer events the
// rings receive, next to twenty busy QProgressBars; then with the rings hidden and with
// the window minimised, where the rings should receive no timer event at all.
//
// CurtainWidget over an 800 x 600 container holding a form of 30 widgets: the cost of a
// frame of its slide (the position moved, the picture drawn), next to the same form moved
// live over the container by the same offsets.

#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/animation/movie_widget.h>
#include <qt_halvo/layouts/curtain_widget.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QPropertyAnimation>
#include <QtCore/QTimer>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

#include <algorithm>

#include <sys/resource.h>
#include <time.h>

using OrvantaQT::BusyIndicatorRing;
using OrvantaQT::CurtainWidget;
using OrvantaQT::MovieWidget;

namespace {

const QSize kIndicatorSize(48, 48);
const QSize kContainerSize(800, 600);
constexpr int kIndicatorCount = 20;

enum class Indicator { Ring, ProgressBar, Movie };

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

double Milliseconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

// Times the GUI thread went to sleep and was woken: how often the idle loop wakes up.
long VoluntarySwitches()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

// One step of an indicator, as its own timer would make it: the ring and the movie are
// sent a tick of their running timer; the progress bar, whose busy animation is the
// style's, the update its animation sends (its picture moves with the animation's clock).
void Advance(QWidget* widget, Indicator kind)
{
    if (kind == Indicator::ProgressBar) {
        QEvent update(QEvent::StyleAnimationUpdate);
        QCoreApplication::sendEvent(widget, &update);
        return;
    }
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(widget);
    if (timers.isEmpty())
        qFatal("%s has no running timer", widget->metaObject()->className());
    QTimerEvent tick(timers.first().timerId);
    QCoreApplication::sendEvent(widget, &tick);
}

// A check that a frame was really drawn: enough pixels other than the background.
void RequireDrawn(const QImage& image, QRgb background, int atLeast)
{
    int inked = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            inked += image.pixel(x, y) != background ? 1 : 0;
    if (inked < atLeast)
        qFatal("only %d pixels drawn", inked);
}

// The ring's 12 steps side by side, for the movie to play the same picture.
QPixmap RingStrip()
{
    QWidget window;
    window.setAttribute(Qt::WA_DontShowOnScreen);
    auto* ring = new BusyIndicatorRing(&window);
    ring->resize(kIndicatorSize);
    window.show();
    QPixmap strip(kIndicatorSize.width() * BusyIndicatorRing::kDots, kIndicatorSize.height());
    strip.fill(Qt::transparent);
    for (int step = 0; step < BusyIndicatorRing::kDots; ++step) {
        ring->render(&strip, QPoint(step * kIndicatorSize.width(), 0), QRegion(), QWidget::DrawChildren);
        Advance(ring, Indicator::Ring);
    }
    return strip;
}

QWidget* MakeIndicator(Indicator kind, QWidget* parent)
{
    QWidget* widget = nullptr;
    switch (kind) {
    case Indicator::Ring:
        widget = new BusyIndicatorRing(parent);
        break;
    case Indicator::ProgressBar: {
        auto* bar = new QProgressBar(parent);
        bar->setRange(0, 0);
        bar->setTextVisible(false);
        widget = bar;
        break;
    }
    case Indicator::Movie: {
        auto* movie = new MovieWidget(parent);
        movie->setQuantity(BusyIndicatorRing::kDots);
        movie->setTimeout(1000 / BusyIndicatorRing::kDots); // the ring's pace
        movie->setMultiPixmap(RingStrip());
        widget = movie;
        break;
    }
    }
    widget->setFixedSize(kIndicatorSize);
    return widget;
}

// Counts what an application-wide filter sees: timer events to the watched widgets and
// to anything at all, paint events of the watched widgets, paint passes of windows.
class EventCounter : public QObject
{
public:
    explicit EventCounter(QVector<QWidget*> watched)
        : m_watched(std::move(watched))
    {
        qApp->installEventFilter(this);
    }
    ~EventCounter() override { qApp->removeEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Timer:
            ++timers;
            if (IsWatched(receiver))
                ++watchedTimers;
            break;
        case QEvent::Paint:
            if (IsWatched(receiver))
                ++watchedPaints;
            break;
        case QEvent::UpdateRequest:
            ++paintPasses;
            break;
        default:
            break;
        }
        return false;
    }

    int timers = 0;
    int watchedTimers = 0;
    int watchedPaints = 0;
    int paintPasses = 0;

private:
    bool IsWatched(QObject* object) const
    {
        return object->isWidgetType() && m_watched.contains(static_cast<QWidget*>(object));
    }

    const QVector<QWidget*> m_watched;
};

// A form of 10 rows of a label, a field and a button: 30 widgets.
QWidget* MakeForm(QWidget* parent = nullptr)
{
    auto* form = new QWidget(parent);
    auto* grid = new QGridLayout(form);
    for (int row = 0; row < 10; ++row) {
        grid->addWidget(new QLabel(QStringLiteral("Field %1").arg(row + 1)), row, 0);
        grid->addWidget(new QLineEdit(QStringLiteral("value of field %1").arg(row + 1)), row, 1);
        grid->addWidget(new QPushButton(QStringLiteral("Change %1").arg(row + 1)), row, 2);
    }
    return form;
}

} // namespace

Q_DECLARE_METATYPE(Indicator)

class BenchBusyCurtains : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void indicatorPaint_data();
    void indicatorPaint();
    void twentyIndicatorsIdle_data();
    void twentyIndicatorsIdle();
    void curtainFrames_data();
    void curtainFrames();
};

void BenchBusyCurtains::initTestCase()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
    qInfo("style %s, platform %s", qPrintable(QApplication::style()->objectName()),
          qPrintable(QGuiApplication::platformName()));
}

void BenchBusyCurtains::indicatorPaint_data()
{
    QTest::addColumn<Indicator>("kind");
    QTest::newRow("BusyIndicatorRing 48x48") << Indicator::Ring;
    QTest::newRow("QProgressBar busy 48x48 (peer)") << Indicator::ProgressBar;
    QTest::newRow("MovieWidget 48x48, the ring's 12 steps (peer)") << Indicator::Movie;
}

// Per iteration: one step, then the indicator rendered with its background into an image.
void BenchBusyCurtains::indicatorPaint()
{
    QFETCH(Indicator, kind);
    QWidget window;
    QWidget* indicator = MakeIndicator(kind, &window);
    window.resize(kIndicatorSize);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(100); // the progress bar's style animation has started

    QImage target(kIndicatorSize, QImage::Format_ARGB32_Premultiplied);
    const QRgb background = window.palette().color(QPalette::Window).rgb();
    Advance(indicator, kind);
    indicator->render(&target);
    RequireDrawn(target, background, 100);
    QBENCHMARK {
        Advance(indicator, kind);
        indicator->render(&target);
    }
}

void BenchBusyCurtains::twentyIndicatorsIdle_data()
{
    QTest::addColumn<Indicator>("kind");
    // shown, hidden (the indicators hidden in a shown window) or minimised (the window)
    QTest::addColumn<QString>("placement");
    QTest::addColumn<int>("seconds");
    QTest::newRow("20 BusyIndicatorRing running, shown") << Indicator::Ring << QStringLiteral("shown") << 10;
    QTest::newRow("20 QProgressBar busy, shown (peer)") << Indicator::ProgressBar << QStringLiteral("shown") << 10;
    QTest::newRow("20 BusyIndicatorRing running, hidden") << Indicator::Ring << QStringLiteral("hidden") << 3;
    QTest::newRow("20 QProgressBar busy, hidden (peer)") << Indicator::ProgressBar << QStringLiteral("hidden") << 3;
    QTest::newRow("20 BusyIndicatorRing running, window minimised")
        << Indicator::Ring << QStringLiteral("minimised") << 3;
}

// A real event loop for some seconds with the window on the X server: CPU time of the
// whole process (GUI thread, X connection thread) per wall time, as percent of one core.
void BenchBusyCurtains::twentyIndicatorsIdle()
{
    QFETCH(Indicator, kind);
    QFETCH(QString, placement);
    QFETCH(int, seconds);

    QWidget window;
    auto* grid = new QGridLayout(&window);
    QVector<QWidget*> indicators;
    for (int i = 0; i < kIndicatorCount; ++i) {
        indicators << MakeIndicator(kind, &window);
        grid->addWidget(indicators.last(), i / 5, i % 5);
    }
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    if (placement == QLatin1String("hidden")) {
        for (QWidget* indicator : indicators)
            indicator->hide();
    } else if (placement == QLatin1String("minimised")) {
        window.showMinimized();
        QTRY_VERIFY(window.isMinimized());
    }
    QTest::qWait(300); // settled: first paints done, timers started or stopped
    int animating = 0;
    if (kind == Indicator::Ring) {
        for (QWidget* indicator : indicators)
            animating += static_cast<BusyIndicatorRing*>(indicator)->IsAnimating() ? 1 : 0;
    }

    const EventCounter counter(indicators);
    const double cpuBefore = Milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    const double guiBefore = Milliseconds(CLOCK_THREAD_CPUTIME_ID);
    const long switchesBefore = VoluntarySwitches();
    QElapsedTimer wall;
    wall.start();
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
    const double wallMs = wall.nsecsElapsed() / 1e6;
    const double cpuMs = Milliseconds(CLOCK_PROCESS_CPUTIME_ID) - cpuBefore;
    const double guiMs = Milliseconds(CLOCK_THREAD_CPUTIME_ID) - guiBefore;
    const long switches = VoluntarySwitches() - switchesBefore;

    qInfo("%s: %.2f %% of one core over %.1f s (GUI thread %.2f %%, woken %.0f times a second); "
          "timer events to the indicators %d, in the whole process %d; paint events of the indicators %d, "
          "paint passes of the window %d%s",
          QTest::currentDataTag(), 100 * cpuMs / wallMs, wallMs / 1000, 100 * guiMs / wallMs,
          switches * 1000 / wallMs, counter.watchedTimers, counter.timers, counter.watchedPaints,
          counter.paintPasses,
          kind == Indicator::Ring ? qPrintable(QStringLiteral("; rings with a running timer %1 of %2")
                                                   .arg(animating)
                                                   .arg(kIndicatorCount))
                                  : "");
}

void BenchBusyCurtains::curtainFrames_data()
{
    QTest::addColumn<bool>("curtain");
    QTest::newRow("CurtainWidget 800x600, snapshot slid") << true;
    QTest::newRow("form moved live over the container (peer)") << false;
}

// The container is the window, with a page of its own under the curtain. A frame moves
// the subject to the next offset of a slide from the top (24 frames, the whole way,
// five times over) and then paints it, measured three ways: the subject's repaint()
// (window painted and flushed to the X server now), the window's next paint pass of
// what Qt found dirty, and the container rendered into an image.
void BenchBusyCurtains::curtainFrames()
{
    QFETCH(bool, curtain);
    QWidget container;
    container.setFixedSize(kContainerSize);
    auto* page = new QLabel(QStringLiteral("The page under the curtain"), &container);
    page->setAlignment(Qt::AlignCenter);
    page->setGeometry(container.rect());

    CurtainWidget* subjectCurtain = nullptr;
    QWidget* form = MakeForm();
    QWidget* subject = form;
    if (curtain) {
        subjectCurtain = new CurtainWidget(&container);
        subjectCurtain->SetContent(form);
        subject = subjectCurtain;
    } else {
        // As the curtain's picture is: the form on the window's colour.
        form->setParent(&container);
        form->setAutoFillBackground(true);
        form->setGeometry(QRect(QPoint(0, -kContainerSize.height()), kContainerSize));
    }
    container.show();
    QVERIFY(QTest::qWaitForWindowExposed(&container));
    QTest::qWait(100); // the curtain's state machine runs from the event loop

    if (subjectCurtain) {
        // A slow slide, held still as soon as it has begun: the frames are moved by hand.
        subjectCurtain->SetDuration(600000);
        subjectCurtain->ShowCurtain();
        QTRY_VERIFY(subjectCurtain->isVisible() && !form->isVisible());
        auto* slide = subjectCurtain->findChild<QPropertyAnimation*>();
        QVERIFY(slide);
        slide->pause();
        QCoreApplication::processEvents();
    }

    constexpr int kFrames = 24;
    const auto moveTo = [&](int frame) {
        const qreal position = qreal(frame % kFrames + 1) / kFrames;
        if (subjectCurtain) {
            subjectCurtain->SetPosition(position);
        } else {
            const int covered = qRound(position * kContainerSize.height());
            form->move(0, covered - kContainerSize.height());
        }
    };

    QVector<double> repaints;
    QVector<double> passes;
    QVector<double> renders;
    QImage image(kContainerSize, QImage::Format_ARGB32_Premultiplied);
    for (int frame = 0; frame < 5 * kFrames; ++frame) {
        QElapsedTimer timer;
        timer.start();
        moveTo(frame);
        subject->repaint();
        repaints << timer.nsecsElapsed() / 1e6;
    }
    int passesDelivered = 0;
    int subjectPaints = 0;
    {
        const EventCounter counter({subject});
        for (int frame = 0; frame < 5 * kFrames; ++frame) {
            QElapsedTimer timer;
            timer.start();
            moveTo(frame);
            QCoreApplication::sendPostedEvents(&container, QEvent::UpdateRequest);
            passes << timer.nsecsElapsed() / 1e6;
        }
        passesDelivered = counter.paintPasses;
        subjectPaints = counter.watchedPaints;
    }
    for (int frame = 0; frame < 5 * kFrames; ++frame) {
        moveTo(frame);
        QElapsedTimer timer;
        timer.start();
        container.render(&image);
        renders << timer.nsecsElapsed() / 1e6;
    }
    if (subjectCurtain)
        QVERIFY(!form->isVisible()); // the frames were the picture's, not the live form's
    RequireDrawn(image, container.palette().color(QPalette::Window).rgb(), 5000);

    qInfo("%s, per frame (%d frames): move + repaint() median %.3f ms, max %.3f ms; move + window paint pass "
          "median %.3f ms, max %.3f ms (%d passes, the subject painted in %d); container rendered to an image "
          "median %.3f ms, max %.3f ms",
          QTest::currentDataTag(), repaints.size(), Median(repaints), Max(repaints), Median(passes), Max(passes),
          passesDelivered, subjectPaints, Median(renders), Max(renders));
}

QTEST_MAIN(BenchBusyCurtains)
#include "bench_busy_curtains.moc"
