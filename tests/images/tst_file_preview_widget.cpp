#include "test_support.h"

#include "../../qt_halvo/images/preview_makers_p.h"

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
    QSemaphore m_entered, m_open;  // previews of files named block* wait for m_open

    // A picture, red on the left half and blue on the right, as a file.
    QString File(const QString& name, const QSize& size, QColor left = Qt::red, QColor right = Qt::blue)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(right);
        QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), left);
        image.save(m_dir.filePath(name), "png");
        return m_dir.filePath(name);
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

private Q_SLOTS:
    void initTestCase()
    {
        m_provider.SetCacheDirectory(m_dir.filePath("cache"));
        m_provider.SetMaxWorkers(2);
        OrvantaQT::SetPreviewWorkHook([this](const QString& path) {
            if (QFileInfo(path).fileName().startsWith("block")) {
                m_entered.release();
                m_open.tryAcquire(1, 20000);
            }
        });
    }
    void cleanupTestCase() { OrvantaQT::SetPreviewWorkHook(nullptr); }

    void loading_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QString>("error");
        QTest::newRow("picture") << true << "";
        QTest::newRow("missing file: the icon") << false << "the file does not exist";
    }
    void loading()
    {
        QFETCH(bool, exists);
        QFETCH(QString, error);
        const QString path = exists ? File("block-red.png", {50, 50}, Qt::red, Qt::red) : m_dir.filePath("block-x.png");
        auto widget = Widget({120, 80});
        auto* ring = widget->findChild<OrvantaQT::BusyIndicatorRing*>("BusyIndicator");
        QVERIFY(ring == widget->BusyIndicator() && !ring->isVisible() && !ring->IsRunning());
        SignalLog log(widget.get(), {"PathChanged(QString)", "PreviewShown()"});
        widget->SetPath(path);
        QCOMPARE(log.Take(), QStringList("PathChanged(" + path + ")"));
        QVERIFY(widget->IsLoading() && widget->Preview().isNull());
        QVERIFY(ring->isVisible() && ring->IsAnimating());
        QCOMPARE(ring->geometry().center(), widget->rect().center());
        QVERIFY(m_entered.tryAcquire(1, 20000));
        m_open.release();
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(log.Take(), QStringList("PreviewShown()"));
        QVERIFY(!ring->isVisible() && !ring->IsRunning() && !ring->IsAnimating());
        QCOMPARE(widget->ErrorString(), error);
        QVERIFY(!widget->Preview().isNull());
        const QImage shown = Render(widget.get());
        if (exists)  // 50 x 50 in the middle
            QCOMPARE(Pixels(shown, {{60, 40}, {35, 15}, {84, 64}, {34, 40}, {85, 40}}),
                     Colours("red red red transparent transparent"));
        else
            QVERIFY(shown != Render(Widget({120, 80}, false).get()));
    }

    void fitted_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("widget");
        QTest::addColumn<QSize>("preview");
        QTest::addColumn<QVector<QPoint>>("points");  // either side of each end of the picture
        QTest::newRow("wide in a tall widget") << QSize(400, 200) << QSize(100, 200) << QSize(100, 50)
                                               << QVector<QPoint>{{50, 74}, {25, 75}, {75, 124}, {50, 125}};
        QTest::newRow("tall in a wide widget") << QSize(100, 200) << QSize(300, 100) << QSize(50, 100)
                                               << QVector<QPoint>{{124, 50}, {125, 50}, {174, 50}, {175, 50}};
        QTest::newRow("small: not enlarged") << QSize(20, 20) << QSize(100, 100) << QSize(20, 20)
                                             << QVector<QPoint>{{39, 50}, {40, 50}, {59, 50}, {60, 50}};
    }
    void fitted()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, widget);
        QFETCH(QSize, preview);
        QFETCH(QVector<QPoint>, points);
        auto view = Widget(widget, false);
        view->SetPath(File(QString("fit%1x%2.png").arg(picture.width()).arg(picture.height()), picture));
        QTRY_VERIFY(!view->IsLoading());
        QCOMPARE(view->Preview().size(), preview);
        QCOMPARE(Pixels(Render(view.get()), points), Colours("transparent red blue transparent"));
    }

    // Previews are asked for in device pixels and shown at the widget's size.
    void pixelRatio()
    {
        if (qApp->devicePixelRatio() == 1) {
            QCOMPARE(RunTestFunctionInChild("pixelRatio", {"QT_SCALE_FACTOR=2"}), QString());
            return;
        }
        auto widget = Widget({100, 100}, false);
        widget->SetPath(File("ratio.png", {400, 200}));
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(widget->Preview().size(), QSize(200, 100));
        QCOMPARE(widget->Preview().devicePixelRatio(), 2.0);
        QCOMPARE(Pixels(Render(widget.get()), {{50, 24}, {25, 26}, {75, 74}, {50, 76}}),
                 Colours("transparent red blue transparent"));
    }

    void resized_data()
    {
        QTest::addColumn<QSize>("to");
        QTest::addColumn<QSize>("preview");
        QTest::newRow("smaller") << QSize(100, 100) << QSize(100, 50);
        QTest::newRow("larger") << QSize(300, 300) << QSize(300, 150);
        QTest::newRow("same size: not asked again") << QSize(200, 100) << QSize();
    }
    void resized()
    {
        QFETCH(QSize, to);
        QFETCH(QSize, preview);
        auto widget = Widget({200, 100});
        widget->SetPath(File("resized.png", {800, 400}));
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(widget->Preview().size(), QSize(200, 100));
        SignalLog log(widget.get(), {"PreviewShown()"});
        widget->resize(to);
        QCOMPARE(widget->IsLoading(), preview.isValid());
        QTRY_VERIFY(!widget->IsLoading());
        QCoreApplication::processEvents();
        QCOMPARE(log.Take().size(), int(preview.isValid()));
        QCOMPARE(widget->Preview().size(), preview.isValid() ? preview : QSize(200, 100));
    }

    void lateAnswerIgnored()
    {
        auto widget = Widget({100, 100}, false);
        SignalLog log(widget.get(), {"PreviewShown()"});
        widget->SetPath(File("block-slow.png", {40, 40}, Qt::red, Qt::red));
        QVERIFY(m_entered.tryAcquire(1, 20000));
        widget->SetPath(File("fast.png", {40, 40}, Qt::blue, Qt::blue));
        QTRY_COMPARE(log.lines.size(), 1);
        // One worker from now on: a request made now is answered after the slow one.
        m_provider.SetMaxWorkers(1);
        bool after = false;
        m_provider.RequestPreview(m_dir.filePath("fast.png"), {10, 10}, 1.0, this,
                                  [&after](const QImage&, const QString&) { after = true; });
        m_open.release();
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
