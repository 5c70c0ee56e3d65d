#include <qt_halvo/animation/animation_label.h>

#include "test_support.h"

using OrvantaQT::AnimationLabel;

class TestAnimationLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void playsAnAnimatedGif_data()
    {
        QTest::addColumn<QString>("next");
        QTest::newRow("not an image") << QT_HALVO_TESTS_SOURCE_DIR "/animation/tst_animation_label.cpp";
        QTest::newRow("missing") << "/nonexistent/animation.gif";
        QTest::newRow("empty") << QString();
    }
    // A path that is no animation then stops the movie, drops it and is reported; an empty one
    // only stops it.
    void playsAnAnimatedGif()
    {
        QFETCH(QString, next);
        const QString stripes = QT_HALVO_TESTS_SOURCE_DIR "/animation/data/stripes.gif"; // red, green and blue frames
        AnimationLabel label;
        QVector<QMovie::MovieState> states;
        QSet<QRgb> seen;
        connect(label.movie(), &QMovie::stateChanged, &label, [&](QMovie::MovieState state) { states << state; });
        connect(label.movie(), &QMovie::frameChanged, &label, [&] { seen << label.movie()->currentImage().pixel(4, 4); });
        label.setMoviePath(stripes);
        QTRY_COMPARE(seen, (QSet<QRgb>{qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)}));
        label.setPaused(true), label.stop(), label.start();
        const LogCapture::Mark mark;
        label.setMoviePath(next);
        QCOMPARE(states, (QVector<QMovie::MovieState>{QMovie::Running, QMovie::Paused, QMovie::NotRunning, QMovie::Running, QMovie::NotRunning}));
        QCOMPARE(label.moviePath(), next.isEmpty() ? stripes : QString());
        QCOMPARE(mark.Contains(3, "AnimationLabel: file format is not supported"), !next.isEmpty());
    }
};

QTEST_MAIN(TestAnimationLabel)
#include "tst_animation_label.moc"
