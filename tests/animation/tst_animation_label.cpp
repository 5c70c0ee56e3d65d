#include <qt_halvo/animation/animation_label.h>

#include "log_capture.h"

#include <QtTest/QtTest>

using OrvantaQT::AnimationLabel;

namespace {

QString SourceFile(const char* path)
{
    return QStringLiteral(QT_HALVO_TESTS_SOURCE_DIR "/animation/") + QLatin1String(path);
}

} // namespace

class TestAnimationLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void playsAnAnimatedGif();
    void unreadableOrEmptyPathsStopIt_data();
    void unreadableOrEmptyPathsStopIt();
    void listsTheFormatsOfTheInstalledPlugins();
};

// Three frames of one colour each, looping.
void TestAnimationLabel::playsAnAnimatedGif()
{
    const QString path = SourceFile("data/stripes.gif");
    QVERIFY(QFile::exists(path));
    AnimationLabel label;
    QSet<QRgb> seen;
    connect(label.movie(), &QMovie::frameChanged, &label,
            [&label, &seen] { seen << label.movie()->currentImage().pixel(4, 4); });
    label.setMoviePath(path);
    QCOMPARE(label.moviePath(), path);
    QCOMPARE(label.movie()->state(), QMovie::Running);
    QCOMPARE(label.movie()->frameCount(), 3);
    QTRY_COMPARE(seen, (QSet<QRgb>{qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)}));

    label.setPaused(true);
    QCOMPARE(label.movie()->state(), QMovie::Paused);
    label.stop();
    QCOMPARE(label.movie()->state(), QMovie::NotRunning);
    label.start();
    QCOMPARE(label.movie()->state(), QMovie::Running);
}

void TestAnimationLabel::unreadableOrEmptyPathsStopIt_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("logged");
    QTest::newRow("not an image") << SourceFile("tst_animation_label.cpp") << true;
    QTest::newRow("missing") << QStringLiteral("/nonexistent/animation.gif") << true;
    QTest::newRow("empty") << QString() << false;
}

void TestAnimationLabel::unreadableOrEmptyPathsStopIt()
{
    QFETCH(QString, path);
    QFETCH(bool, logged);
    AnimationLabel label;
    const QString playing = SourceFile("data/stripes.gif");
    label.setMoviePath(playing);
    const LogCapture::Mark mark;
    label.setMoviePath(path);
    QCOMPARE(label.movie()->state(), QMovie::NotRunning);
    // An empty path only stops the movie it has.
    QCOMPARE(label.moviePath(), path.isEmpty() ? playing : QString());
    QCOMPARE(mark.Contains(3, QStringLiteral("AnimationLabel: file format is not supported")), logged);
}

// GIF from Qt itself, MNG and WebP from Debian's qt5-image-formats-plugins, which the
// test set-up installs.
void TestAnimationLabel::listsTheFormatsOfTheInstalledPlugins()
{
    AnimationLabel label;
    QSignalSpy formats(&label, &AnimationLabel::supportedFormatsCallback);
    label.getSupportedFormats();
    QCOMPARE(formats.count(), 1);
    const QStringList listed = formats.first().first().toString().split(QLatin1Char('\n'));
    for (const QString& format : {QStringLiteral("gif"), QStringLiteral("mng"), QStringLiteral("webp")})
        QVERIFY2(listed.contains(format), qPrintable(listed.join(QLatin1Char(' '))));
}

QTEST_MAIN(TestAnimationLabel)
#include "tst_animation_label.moc"
