#include "image_test_support.h"
#include "test_support.h"

#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/images/file_preview_provider.h>
#include <qt_halvo/images/file_preview_widget.h>

#include <memory>

using OrvantaQT::FilePreviewProvider;
using OrvantaQT::FilePreviewWidget;
using namespace TestSupport;

class TestFilePreviewWidget : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    FilePreviewProvider m_provider;
    PreviewGate m_gate;

    QString File(const QString& name, const QSize& size, QColor left = Qt::red, QColor right = Qt::blue)
    {
        QFile file(m_dir.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(Halves(size, "png", left, right)) <= 0)
            qFatal("cannot write %s", qPrintable(name));
        return file.fileName();
    }

    std::unique_ptr<FilePreviewWidget> Widget(const QSize& size, bool shown = true)
    {
        auto widget = std::make_unique<FilePreviewWidget>();
        widget->SetProvider(&m_provider);
        widget->resize(size);
        if (shown && !ShowAndWait(widget.get()))
            qWarning("not shown");
        return widget;
    }

    // The region a widget's paint events covered.
    struct PaintedRegion : QObject
    {
        explicit PaintedRegion(QWidget* widget) { widget->installEventFilter(this); }
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                region |= static_cast<QPaintEvent*>(event)->region();
            return false;
        }
        bool Covered(const QRegion& wanted) const { return (wanted - region).isEmpty(); }
        QRegion region;
    };

    struct ShowCount : QObject
    {
        explicit ShowCount(QWidget* widget) { widget->installEventFilter(this); }
        bool eventFilter(QObject*, QEvent* event) override
        {
            shows += event->type() == QEvent::Show;
            return false;
        }
        int shows = 0;
    };

private Q_SLOTS:
    void initTestCase()
    {
        m_provider.SetCacheDirectory(m_dir.filePath("cache"));
        m_provider.SetMaxWorkers(2);
    }

    void loading_data()
    {
        Columns<bool, QString>({"exists", "error"});
        QTest::newRow("picture") << true << "";
        QTest::newRow("missing file: the icon") << false << "the file does not exist";
    }
    void loading()
    {
        auto [exists, error] = Row<bool, QString>({"exists", "error"});
        const QString path = exists ? File("block-red.png", {50, 50}, Qt::red, Qt::red) : m_dir.filePath("block-x.png");
        auto widget = Widget({120, 80});
        auto* ring = widget->findChild<OrvantaQT::BusyIndicatorRing*>("BusyIndicator");
        QVERIFY(ring == widget->BusyIndicator() && !ring->isVisible() && !ring->IsRunning());
        SignalLog log(widget.get(), {"PathChanged(QString)", "PreviewShown()"});
        PaintedRegion painted(widget.get());
        widget->SetPath(path);
        QCOMPARE(log.Take(), QStringList("PathChanged(" + path + ")"));
        QVERIFY(widget->IsLoading() && widget->Preview().isNull());
        QVERIFY(ring->isVisible() && ring->IsAnimating());
        // The old preview goes as a whole, but for what the ring covers.
        QTRY_VERIFY(painted.Covered(QRegion(widget->rect()) - ring->geometry()));
        painted.region = QRegion();
        QCOMPARE(ring->geometry().center(), widget->rect().center());
        QVERIFY(m_gate.entered.tryAcquire(1, 20000));
        m_gate.open.release();
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(log.Take(), QStringList("PreviewShown()"));
        QTRY_VERIFY(painted.Covered(widget->rect())); // not only where the ring was
        QVERIFY(!ring->isVisible() && !ring->IsRunning() && !ring->IsAnimating());
        QCOMPARE(widget->ErrorString(), error);
        QVERIFY(!widget->Preview().isNull());
        const QImage shown = Render(widget.get());
        if (exists)  // 50 x 50 in the middle
            QCOMPARE(Pixels(shown, {{60, 40}, {35, 15}, {84, 64}, {34, 40}, {85, 40}}),
                     Colours("red red red transparent transparent"));
        else
            QVERIFY(shown != Render(Widget({120, 80}, false).get()));
        widget->SetPath(File("next.png", {10, 10}));
        QCOMPARE(widget->ErrorString(), QString());  // an old error goes with its file
    }

    void fitted_data()
    {
        // points: either side of each end of the picture
        Columns<QSize, QSize, qreal, QSize, QVector<QPoint>>({"picture", "widget", "ratio", "preview", "points"});
        QTest::newRow("wide in a tall widget") << QSize(400, 200) << QSize(100, 200) << 1.0 << QSize(100, 50)
                                               << QVector<QPoint>{{50, 74}, {25, 75}, {75, 124}, {50, 125}};
        QTest::newRow("tall in a wide widget") << QSize(100, 200) << QSize(300, 100) << 1.0 << QSize(50, 100)
                                               << QVector<QPoint>{{124, 50}, {125, 50}, {174, 50}, {175, 50}};
        QTest::newRow("small: not enlarged") << QSize(20, 20) << QSize(100, 100) << 1.0 << QSize(20, 20)
                                             << QVector<QPoint>{{39, 50}, {40, 50}, {59, 50}, {60, 50}};
        // Asked for in device pixels, shown at the widget's size.
        QTest::newRow("ratio 2") << QSize(400, 200) << QSize(100, 100) << 2.0 << QSize(200, 100)
                                 << QVector<QPoint>{{50, 24}, {25, 26}, {75, 74}, {50, 76}};
    }
    void fitted()
    {
        auto [picture, widget, ratio, preview, points] =
            Row<QSize, QSize, qreal, QSize, QVector<QPoint>>({"picture", "widget", "ratio", "preview", "points"});
        if (qApp->devicePixelRatio() != ratio) {
            if (ratio == 1)
                QSKIP("rows at ratio 1 run in the parent");
            QCOMPARE(RunTestFunctionInChild("fitted", {"QT_SCALE_FACTOR=2"}), QString());
            return;
        }
        auto view = Widget(widget, false);
        view->SetPath(File(QString("fit%1x%2.png").arg(picture.width()).arg(picture.height()), picture));
        QTRY_VERIFY(!view->IsLoading());
        QCOMPARE(view->Preview().size(), preview);
        QCOMPARE(view->Preview().devicePixelRatio(), ratio);
        QCOMPARE(Pixels(Render(view.get()), points), Colours("transparent red blue transparent"));
    }

    void resized_data()
    {
        // points: either side of each end of the picture shown at once, the old one fitted
        Columns<QVector<QSize>, QSize, QVector<QPoint>>({"steps", "preview", "points"});
        QTest::newRow("smaller") << QVector<QSize>{{100, 100}} << QSize(100, 50)
                                 << QVector<QPoint>{{50, 24}, {25, 26}, {75, 74}, {50, 76}};
        QTest::newRow("larger") << QVector<QSize>{{300, 300}} << QSize(300, 150)
                                << QVector<QPoint>{{49, 150}, {50, 150}, {249, 150}, {250, 150}};
        QTest::newRow("a burst of resizes: asked once") << QVector<QSize>{{180, 100}, {160, 90}, {140, 140}, {100, 100}}
                                                       << QSize(100, 50)
                                                       << QVector<QPoint>{{50, 24}, {25, 26}, {75, 74}, {50, 76}};
        QTest::newRow("back to the size asked for: not asked again") << QVector<QSize>{{150, 100}, {200, 100}}
                                                                    << QSize()
                                                                    << QVector<QPoint>{{0, 50}, {1, 50}, {198, 50}, {199, 50}};
    }
    void resized()
    {
        auto [steps, preview, points] = Row<QVector<QSize>, QSize, QVector<QPoint>>({"steps", "preview", "points"});
        auto widget = Widget({200, 100});
        widget->SetPath(File("resized.png", {800, 400}));
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(widget->Preview().size(), QSize(200, 100));
        QAtomicInt made;
        OrvantaQT::SetPreviewWorkHook([&made](const QString&) { made.ref(); });
        m_provider.ClearMemoryCache();
        SignalLog log(widget.get(), {"PreviewShown()"});
        for (const QSize& step : steps)
            widget->resize(step);
        // Until the resizing settles the preview there is stays, fitted, without the ring.
        QVERIFY(!widget->IsLoading());
        QVERIFY(widget->BusyIndicator()->isHidden());
        QCOMPARE(Pixels(Render(widget.get()), points), Colours(preview.isValid() ? "transparent red blue transparent"
                                                                                : "red red blue blue"));
        QTest::qWait(60);
        QVERIFY(!widget->IsLoading());
        ShowCount ring(widget->BusyIndicator());
        QTRY_COMPARE(log.lines.size(), int(preview.isValid()));
        QTest::qWait(200);
        QCOMPARE(ring.shows, 0);
        m_gate.Install();
        QCOMPARE(log.Take().size(), int(preview.isValid()));
        QCOMPARE(made.loadAcquire(), int(preview.isValid()));
        QCOMPARE(widget->Preview().size(), preview.isValid() ? preview : QSize(200, 100));
    }

    void lateAnswerIgnored()
    {
        auto widget = Widget({100, 100}, false);
        SignalLog log(widget.get(), {"PreviewShown()"});
        widget->SetPath(File("block-slow.png", {40, 40}, Qt::red, Qt::red));
        QVERIFY(m_gate.entered.tryAcquire(1, 20000));
        widget->SetPath(File("fast.png", {40, 40}, Qt::blue, Qt::blue));
        QTRY_COMPARE(log.lines.size(), 1);
        // One worker from now on: a request made now is answered after the slow one.
        m_provider.SetMaxWorkers(1);
        bool after = false;
        m_provider.RequestPreview(m_dir.filePath("fast.png"), {10, 10}, 1.0, this,
                                  [&after](const QImage&, const QString&) { after = true; });
        m_gate.open.release();
        QTRY_VERIFY(after);
        m_provider.SetMaxWorkers(2);
        QCOMPARE(log.Take(), QStringList("PreviewShown()"));
        QVERIFY(!widget->IsLoading());
        QCOMPARE(Pixels(widget->Preview(), {{20, 20}}), Colours("blue"));
    }

    void emptyPath()
    {
        auto widget = Widget({100, 100}, false);
        SignalLog log(widget.get(), {"PathChanged(QString)", "PreviewShown()"});
        const QString path = File("e.png", {40, 40});
        widget->SetPath(path);
        QTRY_VERIFY(!widget->IsLoading());
        widget->SetPath(path);
        widget->SetPath(QString());
        QCOMPARE(log.Take(), QStringList({"PathChanged(" + path + ")", "PreviewShown()", "PathChanged()"}));
        QVERIFY(widget->Preview().isNull() && !widget->IsLoading());
        QVERIFY(!widget->BusyIndicator()->isVisibleTo(widget.get()));
        QCOMPARE(Pixels(Render(widget.get()), {{50, 50}}), Colours("transparent"));
        widget->SetProvider(nullptr);
        QCOMPARE(widget->GetProvider(), FilePreviewProvider::Instance());
        const FilePreviewWidget fresh;
        QVERIFY(!fresh.IsLoading() && !fresh.BusyIndicator()->IsRunning() && fresh.GetPath().isEmpty());
    }
};

QTEST_MAIN(TestFilePreviewWidget)
#include "tst_file_preview_widget.moc"
