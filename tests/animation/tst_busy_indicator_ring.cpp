#include <qt_halvo/animation/busy_indicator_ring.h>

#include "test_support.h"

using OrvantaQT::BusyIndicatorRing;

// The alpha of each dot's centre, clockwise from the top, of a 48 x 48 ring of 8 px dots.
static QVector<int> DotAlphas(BusyIndicatorRing* ring, qreal ratio = 1)
{
    const QImage image = TestSupport::Render(ring, ratio);
    QVector<int> alphas;
    for (int i = 0; i < BusyIndicatorRing::kDots; ++i) {
        const qreal angle = 2 * M_PI * i / BusyIndicatorRing::kDots;
        alphas << image.pixelColor(QPointF(24 + 20 * qSin(angle), 24 - 20 * qCos(angle)).toPoint() * ratio).alpha();
    }
    return alphas;
}

class TestBusyIndicatorRing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The timer runs only while the ring runs and can be seen, with animations on.
    void timerRunsOnlyWhileRunningAndVisible()
    {
        QWidget window;
        auto* page = new QWidget(&window);
        auto* ring = new BusyIndicatorRing(page);
        ring->SetPeriod(120); // a step every 10 ms
        TestSupport::StillStyle still;
        const std::pair<const char*, std::function<void()>> steps[] = {
            {"shown", [&] { QVERIFY(TestSupport::ShowAndWait(&window)); }},
            {"stopped", [&] { ring->Stop(); }},
            {"started", [&] { ring->Start(); }},
            {"page hidden", [&] { page->hide(); }},
            {"started while hidden", [&] { ring->SetRunning(false), ring->SetRunning(true); }},
            {"page shown", [&] { page->show(); }},
            {"window minimised", [&] { window.setWindowState(Qt::WindowMinimized); }},
            {"started while minimised", [&] { ring->Stop(), ring->Start(); }},
            {"window restored", [&] { window.setWindowState(Qt::WindowNoState); }},
            {"animations off", [&] { ring->setStyle(&still); }},
            {"animations on", [&] { ring->setStyle(nullptr); }},
        };
        QStringList seen;
        for (const auto& [name, step] : steps) {
            step();
            const int events = TestSupport::TimerEvents(ring, 100);
            seen << QString("%1: %2").arg(name, events > 2 ? "turns" : events == 0 ? "still" : QString::number(events));
        }
        QCOMPARE(seen, QStringList({"shown: turns", "stopped: still", "started: turns", "page hidden: still",
                                    "started while hidden: still", "page shown: turns", "window minimised: still",
                                    "started while minimised: still", "window restored: turns", "animations off: still",
                                    "animations on: turns"}));
    }
    // The bright dot is the current step, the ones behind it fade; a stopped ring shows
    // every dot alike, and stays sharp at twice the density.
    void paintsTheStep()
    {
        BusyIndicatorRing ring;
        ring.resize(48, 48);
        ring.SetThickness(8);
        ring.SetColor(QColor(200, 0, 0));
        ring.SetPeriod(120);
        QVERIFY(TestSupport::ShowAndWait(&ring));
        QTRY_VERIFY(ring.CurrentStep() >= 3);
        ring.Stop();
        ring.SetRunning(true); // the timer stays off until shown, but the picture turns again
        ring.hide();
        const int step = ring.CurrentStep();
        QVector<int> alphas = DotAlphas(&ring);
        std::rotate(alphas.begin(), alphas.begin() + step + 1, alphas.end()); // from the dimmest up
        QVERIFY(std::is_sorted(alphas.begin(), alphas.end()) && alphas.first() < alphas[1]);
        QCOMPARE(alphas.last(), 255);
        QVERIFY(qAbs(alphas.first() - 38) <= 2);
        ring.Stop();
        const QVector<int> still = DotAlphas(&ring, 2);
        QVERIFY(std::all_of(still.begin(), still.end(), [&](int alpha) { return alpha == still.first() && alpha > 100; }));
        // Outside a dot at 2x: nothing, not a blur.
        QCOMPARE(TestSupport::Render(&ring, 2).pixelColor(QPoint(24, 9) * 2).alpha(), 0);
    }
    void defaultsAndBadInput()
    {
        BusyIndicatorRing ring;
        ring.resize(48, 48);
        QPalette palette;
        palette.setColor(QPalette::Highlight, QColor(0, 120, 0));
        ring.setPalette(palette);
        const auto top = [&ring] { return TestSupport::Render(&ring).pixelColor(24, 4).name(QColor::HexArgb); };
        QCOMPARE(top(), QString("#ff007800"));
        ring.setStyleSheet("OrvantaQT--BusyIndicatorRing { qproperty-color: #0000c8; }");
        ring.ensurePolished();
        QCOMPARE(top(), QString("#ff0000c8"));
        // A square that grows with the font.
        QVector<QSize> hints;
        for (const int pixels : {10, 20}) {
            ring.setFont(TestSupport::TestFont(pixels));
            hints << ring.sizeHint();
        }
        QVERIFY(hints[0].width() == hints[0].height() && hints[0].width() >= 20);
        QVERIFY(hints[1].width() == hints[1].height() && hints[1].width() > hints[0].width() * 3 / 2);
        const LogCapture::Mark mark;
        ring.SetThickness(-1), ring.SetPeriod(11), ring.SetPeriod(-5);
        QCOMPARE(mark.Texts(), QStringList({"3 BusyIndicatorRing: a negative thickness (-1) is ignored",
                                            "3 BusyIndicatorRing: a turn of 11 ms is too short; it stays at 1000 ms",
                                            "3 BusyIndicatorRing: a turn of -5 ms is too short; it stays at 1000 ms"}));
        QCOMPARE(ring.GetThickness(), 0);
        QCOMPARE(ring.GetPeriod(), 1000);
    }
    void isAnAnimationForScreenReaders()
    {
        BusyIndicatorRing ring;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&ring);
        QVERIFY(accessible);
        QCOMPARE(accessible->role(), QAccessible::Animation);
        QCOMPARE(accessible->text(QAccessible::Name), QString("Busy"));
        QVERIFY(accessible->state().busy);
        ring.Stop();
        QVERIFY(!accessible->state().busy);
    }
};

QTEST_MAIN(TestBusyIndicatorRing)
#include "tst_busy_indicator_ring.moc"
