#include "test_support.h"

#include "../../qt_halvo/images/preview_makers_p.h"

#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/images/file_preview_provider.h>
#include <qt_halvo/images/file_preview_widget.h>

#include <memory>

using OrvantaQT::FilePreviewProvider;
using OrvantaQT::FilePreviewWidget;
using TestSupport::Pixels;
using TestSupport::SignalLog;

namespace {

// Left half `left`, right half `right`.
QByteArray Picture(const QSize& size, const QColor& left, const QColor& right)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(right);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), left);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes;
}

// Previews of files whose name starts with "block" wait until released.
struct Gate
{
    QSemaphore entered;
    QSemaphore open;
    Gate()
    {
        OrvantaQT::SetPreviewWorkHook([this](const QString& path) {
            if (!QFileInfo(path).fileName().startsWith("block"))
                return;
            entered.release();
            open.tryAcquire(1, 20000);
        });
    }
    ~Gate()
    {
        open.release(10);
        OrvantaQT::SetPreviewWorkHook(nullptr);
    }
};

} // namespace

class TestFilePreviewWidget : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    FilePreviewProvider* m_provider = nullptr;

    QString File(const QString& name, const QByteArray& bytes)
    {
        QFile file(m_dir.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return file.fileName();
    }

    std::unique_ptr<FilePreviewWidget> Widget(const QSize& size)
    {
        auto widget = std::make_unique<FilePreviewWidget>();
        widget->SetProvider(m_provider);
        widget->resize(size);
        return widget;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        m_provider = new FilePreviewProvider(this);
        m_provider->SetCacheDirectory(m_dir.filePath("cache"));
        m_provider->SetMaxWorkers(2);
    }

    void loading_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("centre");
        QTest::newRow("picture") << "block-red.png" << "" << "#ffff0000";
        QTest::newRow("missing file: the icon") << "block-missing.png" << "the file does not exist" << "";
    }
    void loading()
    {
        QFETCH(QString, name);
        QFETCH(QString, error);
        QFETCH(QString, centre);
        const QString path = error.isEmpty() ? File(name, Picture({50, 50}, Qt::red, Qt::red)) : m_dir.filePath(name);
        auto widget = Widget({120, 80});
        QVERIFY(TestSupport::ShowAndWait(widget.get()));
        auto* ring = widget->findChild<OrvantaQT::BusyIndicatorRing*>("BusyIndicator");
        QCOMPARE(ring, widget->BusyIndicator());
        QVERIFY(!ring->isVisible() && !ring->IsAnimating());
        SignalLog log(widget.get(), {"PathChanged(QString)", "PreviewShown()"});
        Gate gate;
        widget->SetPath(path);
        QCOMPARE(log.Take(), QStringList("PathChanged(" + path + ")"));
        QVERIFY(widget->IsLoading());
        QVERIFY(widget->Preview().isNull());
        QVERIFY(ring->isVisible() && ring->IsAnimating());
        QCOMPARE(ring->geometry().center(), widget->rect().center());
        QVERIFY(gate.entered.tryAcquire(1, 20000));
        gate.open.release();
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(log.Take(), QStringList("PreviewShown()"));
        QVERIFY(!ring->isVisible() && !ring->IsAnimating());
        QCOMPARE(widget->ErrorString(), error);
        QVERIFY(!widget->Preview().isNull());
        const QImage shown = TestSupport::Render(widget.get());
        if (!centre.isEmpty()) {
            QCOMPARE(widget->Preview().size(), QSize(50, 50));
            QCOMPARE(Pixels(shown, {QPoint(60, 40), QPoint(35, 15), QPoint(84, 64), QPoint(34, 40), QPoint(85, 40)}),
                     TestSupport::Colours("red red red transparent transparent"));
        } else {
            QVERIFY(shown != TestSupport::Render(Widget({120, 80}).get()));
        }
    }

    void fitted_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("widget");
        QTest::addColumn<QSize>("preview");
        // Points across the middle, each side of where the picture should end.
        QTest::addColumn<QVector<QPoint>>("points");
        QTest::addColumn<QString>("colours");
        QTest::newRow("wide in a tall widget") << QSize(400, 200) << QSize(100, 200) << QSize(100, 50)
                                               << QVector<QPoint>{{50, 74}, {25, 75}, {75, 124}, {50, 125}}
                                               << "transparent red blue transparent";
        QTest::newRow("tall in a wide widget") << QSize(100, 200) << QSize(300, 100) << QSize(50, 100)
                                               << QVector<QPoint>{{124, 50}, {125, 50}, {174, 50}, {175, 50}}
                                               << "transparent red blue transparent";
        QTest::newRow("small, not enlarged") << QSize(20, 20) << QSize(100, 100) << QSize(20, 20)
                                             << QVector<QPoint>{{39, 50}, {40, 50}, {59, 50}, {60, 50}}
                                             << "transparent red blue transparent";
    }
    void fitted()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, widget);
        QFETCH(QSize, preview);
        QFETCH(QVector<QPoint>, points);
        QFETCH(QString, colours);
        auto view = Widget(widget);
        view->SetPath(File(QString("fit%1x%2.png").arg(picture.width()).arg(picture.height()),
                           Picture(picture, Qt::red, Qt::blue)));
        QTRY_VERIFY(!view->IsLoading());
        QCOMPARE(view->Preview().size(), preview);
        QCOMPARE(Pixels(TestSupport::Render(view.get()), points), TestSupport::Colours(qPrintable(colours)));
    }

    void resized_data()
    {
        QTest::addColumn<QSize>("to");
        QTest::addColumn<QSize>("preview");
        QTest::addColumn<int>("shown");
        QTest::newRow("smaller") << QSize(100, 100) << QSize(100, 50) << 1;
        QTest::newRow("larger") << QSize(300, 300) << QSize(300, 150) << 1;
        QTest::newRow("same size: not asked again") << QSize(200, 100) << QSize(200, 100) << 0;
    }
    void resized()
    {
        QFETCH(QSize, to);
        QFETCH(QSize, preview);
        QFETCH(int, shown);
        auto widget = Widget({200, 100});
        QVERIFY(TestSupport::ShowAndWait(widget.get()));
        widget->SetPath(File("resized.png", Picture({800, 400}, Qt::red, Qt::blue)));
        QTRY_VERIFY(!widget->IsLoading());
        QCOMPARE(widget->Preview().size(), QSize(200, 100));
        SignalLog log(widget.get(), {"PreviewShown()"});
        widget->resize(to);
        QCOMPARE(widget->IsLoading(), shown == 1);
        QTRY_VERIFY(!widget->IsLoading());
        QCoreApplication::processEvents();
        QCOMPARE(log.Take().size(), shown);
        QCOMPARE(widget->Preview().size(), preview);
    }

    void lateAnswerIgnored()
    {
        auto widget = Widget({100, 100});
        SignalLog log(widget.get(), {"PreviewShown()"});
        Gate gate;
        widget->SetPath(File("block-slow.png", Picture({40, 40}, Qt::red, Qt::red)));
        QVERIFY(gate.entered.tryAcquire(1, 20000));
        widget->SetPath(File("fast.png", Picture({40, 40}, Qt::blue, Qt::blue)));
        QTRY_COMPARE(log.lines.size(), 1);
        // One worker from now on: an answer asked for after the slow one comes after it.
        m_provider->SetMaxWorkers(1);
        QObject receiver;
        bool after = false;
        m_provider->RequestPreview(m_dir.filePath("fast.png"), {10, 10}, 1.0, &receiver,
                                   [&after](const QImage&, const QString&) { after = true; });
        gate.open.release();
        QTRY_VERIFY(after);
        m_provider->SetMaxWorkers(2);
        QCOMPARE(log.Take(), QStringList("PreviewShown()"));
        QVERIFY(!widget->IsLoading());
        QCOMPARE(Pixels(widget->Preview(), {QPoint(20, 20)}), TestSupport::Colours("blue"));
    }

    void emptyPath()
    {
        auto widget = Widget({100, 100});
        SignalLog log(widget.get(), {"PathChanged(QString)", "PreviewShown()"});
        const QString path = File("e.png", Picture({40, 40}, Qt::red, Qt::red));
        widget->SetPath(path);
        QTRY_VERIFY(!widget->IsLoading());
        widget->SetPath(path);
        widget->SetPath(QString());
        QCOMPARE(log.Take(), QStringList({"PathChanged(" + path + ")", "PreviewShown()", "PathChanged()"}));
        QVERIFY(widget->Preview().isNull());
        QVERIFY(!widget->IsLoading());
        QVERIFY(!widget->BusyIndicator()->isVisibleTo(widget.get()));
        QCOMPARE(Pixels(TestSupport::Render(widget.get()), {QPoint(50, 50)}), TestSupport::Colours("transparent"));
        widget->SetProvider(nullptr);
        QCOMPARE(widget->GetProvider(), FilePreviewProvider::Instance());
    }
};

QTEST_MAIN(TestFilePreviewWidget)
#include "tst_file_preview_widget.moc"
