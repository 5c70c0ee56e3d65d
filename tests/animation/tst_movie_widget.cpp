#include <qt_halvo/animation/movie_widget.h>

#include "log_capture.h"

#include <QtGui/QPainter>
#include <QtTest/QtTest>

using OrvantaQT::MovieWidget;

namespace {

// A strip of `count` frames of `frame` size, frame i filled with colours[i].
QPixmap Strip(const QVector<QColor>& colours, QSize frame, bool vertical = false)
{
    const int count = colours.size();
    QPixmap strip(vertical ? QSize(frame.width(), frame.height() * count) : QSize(frame.width() * count, frame.height()));
    QPainter painter(&strip);
    for (int i = 0; i < count; ++i) {
        const QPoint origin = vertical ? QPoint(0, i * frame.height()) : QPoint(i * frame.width(), 0);
        painter.fillRect(QRect(origin, frame), colours[i]);
    }
    return strip;
}

const QVector<QColor> kThree{Qt::red, Qt::green, Qt::blue};

void Load(MovieWidget& movie, int timeout, const QVector<QColor>& colours = kThree, QSize frame = QSize(8, 8))
{
    movie.setQuantity(colours.size());
    movie.setTimeout(timeout);
    movie.setMultiPixmap(Strip(colours, frame));
}

QColor PaintedColour(MovieWidget& movie, qreal ratio = 1)
{
    QImage image(movie.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    movie.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

} // namespace

class TestMovieWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutsTheStripIntoFrames_data();
    void cutsTheStripIntoFrames();
    void doubleResolutionStripOnDenseScreens();
    void loopsStopsAndPauses();
    void hidingPausesAndShowingResumes();
    void renderToAlignsTheFrame_data();
    void renderToAlignsTheFrame();
    void busyStripsAreInTheResources();
};

void TestMovieWidget::cutsTheStripIntoFrames_data()
{
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<int>("quantity");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<int>("logged");

    QTest::newRow("horizontal, 12 of 10 x 8") << false << 12 << QSize(10, 8) << 0;
    QTest::newRow("vertical, 12 of 8 x 10") << true << 12 << QSize(8, 10) << 0;
    QTest::newRow("quantity 0: no frames") << false << 0 << QSize() << 0;
    QTest::newRow("negative quantity: no frames") << false << -2 << QSize() << 1;
}

void TestMovieWidget::cutsTheStripIntoFrames()
{
    QFETCH(bool, vertical);
    QFETCH(int, quantity);
    QFETCH(QSize, hint);
    QFETCH(int, logged);

    QVector<QColor> colours;
    for (int i = 0; i < 12; ++i)
        colours << QColor::fromHsv(i * 30, 255, 255);
    const LogCapture::Mark mark;
    MovieWidget movie;
    movie.setRepeatAnimation(false);
    movie.setVertical(vertical);
    movie.setQuantity(quantity);
    movie.setMultiPixmap(Strip(colours, vertical ? QSize(8, 10) : QSize(10, 8), vertical));
    movie.resize(30, 24); // frames are scaled to the contents
    QCOMPARE(mark.Since().size(), logged);
    if (hint.isValid())
        QCOMPARE(movie.sizeHint(), hint);
    else
        QCOMPARE(movie.sizeHint(), movie.QLabel::sizeHint());

    for (const int index : {0, 5, 11}) {
        movie.setStartupIndex(index);
        QCOMPARE(PaintedColour(movie).rgba(), quantity > 0 ? colours[index].rgba() : 0u);
    }
}

// On a screen of twice the density (this test runs itself again with the scale factor
// set), and with icons picking their pixmaps by it, the double-resolution strip shows.
void TestMovieWidget::doubleResolutionStripOnDenseScreens()
{
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(QTest::currentTestFunction())});
        QVERIFY(child.waitForFinished(120000));
        const QString output = QString::fromLocal8Bit(child.readAll());
        QVERIFY2(child.exitCode() == 0 && output.contains(QStringLiteral("Totals: 3 passed, 0 failed")), qPrintable(output));
        return;
    }
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    MovieWidget movie;
    Load(movie, 100000);
    movie.setMultiPixmapHiDpi(Strip({Qt::cyan, Qt::magenta, Qt::yellow}, QSize(16, 16)));
    movie.show();
    QVERIFY(QTest::qWaitForWindowExposed(&movie));
    movie.resize(8, 8);
    movie.setStartupIndex(1);
    QCOMPARE(movie.devicePixelRatioF(), 2.0);
    const QImage picture = movie.grab().toImage();
    QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() / 2), QColor(Qt::magenta));
    QCOMPARE(movie.sizeHint(), QSize(8, 8));
}

void TestMovieWidget::loopsStopsAndPauses()
{
    MovieWidget movie;
    Load(movie, 5);
    QSignalSpy frames(&movie, &MovieWidget::FrameChanged);
    QSignalSpy finished(&movie, &MovieWidget::Finished);
    movie.show();
    QTRY_VERIFY(frames.count() >= 5);
    QList<int> indices;
    for (const QList<QVariant>& frame : frames.mid(0, 5))
        indices << frame.first().toInt();
    QCOMPARE(indices, (QList<int>{1, 2, 0, 1, 2}));

    // Without repeat it stops on the last frame, once.
    movie.setRepeatAnimation(false);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(movie.currentIndex(), 2);
    QVERIFY(!movie.isPlaying());
    frames.clear();
    QTest::qWait(60);
    QVERIFY(frames.isEmpty());
    QCOMPARE(finished.count(), 1);

    // Pausing keeps the frame, stopping rewinds to the startup index; both report it.
    movie.setTimeout(10000); // steps only by hand from here
    movie.start();
    movie.pause();
    QCOMPARE(finished.count(), 2);
    QCOMPARE(movie.currentIndex(), 2);
    movie.start();
    movie.stop();
    QCOMPARE(finished.count(), 3);
    QCOMPARE(movie.currentIndex(), 0);
    QVERIFY(!movie.isPlaying());
    movie.setStartupIndex(1);
    QVERIFY(movie.isPlaying());
    movie.stop();
    QCOMPARE(movie.currentIndex(), 1);

    // Start goes on from where the movie stands; restart goes back to the startup index.
    movie.setStartupIndex(0);
    movie.setTimeout(5);
    QTRY_COMPARE(movie.currentIndex(), 2);
    movie.pause();
    movie.setTimeout(10000);
    movie.start();
    QCOMPARE(movie.currentIndex(), 2);
    movie.pause();
    movie.restart();
    QCOMPARE(movie.currentIndex(), 0);
    QVERIFY(movie.isPlaying());
}

void TestMovieWidget::hidingPausesAndShowingResumes()
{
    MovieWidget movie;
    Load(movie, 10, QVector<QColor>(12, Qt::red), QSize(4, 4));
    QSignalSpy frames(&movie, &MovieWidget::FrameChanged);
    movie.show();
    QTRY_VERIFY(frames.count() >= 2);
    movie.hide();
    const int where = movie.currentIndex();
    frames.clear();
    movie.setTimeout(5); // taken at once, but not while hidden
    QTest::qWait(80);
    QVERIFY(frames.isEmpty());
    QVERIFY(movie.isPlaying());
    movie.show();
    QTRY_VERIFY(!frames.isEmpty());
    QCOMPARE(frames.first().first().toInt(), (where + 1) % 12);
}

void TestMovieWidget::renderToAlignsTheFrame_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QPoint>("topLeft");
    // In (5, 5) 40 x 30, whose right and bottom edges are 44 and 34; the frame is 10 x 8.
    QTest::newRow("top left") << int(Qt::AlignTop | Qt::AlignLeft) << QPoint(5, 5);
    QTest::newRow("bottom right") << int(Qt::AlignBottom | Qt::AlignRight) << QPoint(44 - 10, 34 - 8);
    QTest::newRow("centre") << int(Qt::AlignCenter) << QPoint(5 + 15, 5 + 11);
    QTest::newRow("top, centred across") << int(Qt::AlignTop) << QPoint(5 + 15, 5);
}

void TestMovieWidget::renderToAlignsTheFrame()
{
    QFETCH(int, alignment);
    QFETCH(QPoint, topLeft);
    MovieWidget movie;
    Load(movie, 33, kThree, QSize(10, 8));
    movie.setStartupIndex(1);

    QImage image(60, 50, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    movie.RenderTo(&painter, QRect(5, 5, 40, 30), alignment);
    movie.RenderTo(nullptr, QRect(), 0);
    painter.end();
    QRect painted;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 0) {
                QCOMPARE(image.pixelColor(x, y), QColor(Qt::green));
                painted |= QRect(x, y, 1, 1);
            }
        }
    }
    QCOMPARE(painted, QRect(topLeft, QSize(10, 8)));
}

void TestMovieWidget::busyStripsAreInTheResources()
{
    const QPixmap strip(QStringLiteral(":/preloader_animation_16.png"));
    const QPixmap dense(QStringLiteral(":/preloader_animation_16@2x.png"));
    QCOMPARE(strip.size() / strip.devicePixelRatio(), QSize(16 * 12, 16));
    QCOMPARE(dense.width(), 2 * 16 * 12);
    MovieWidget movie;
    movie.setMultiPixmap(strip);
    movie.setMultiPixmapHiDpi(dense);
    QCOMPARE(movie.sizeHint(), QSize(16, 16));
}

QTEST_MAIN(TestMovieWidget)
#include "tst_movie_widget.moc"
