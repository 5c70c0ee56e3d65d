#include <qt_halvo/animation/movie_widget.h>

#include "test_support.h"

using OrvantaQT::MovieWidget;
using TestSupport::Render;

// Frame i filled with colours[i], side by side or one above the other.
static QPixmap Strip(const QVector<QColor>& colours, QSize frame, bool vertical = false)
{
    QPixmap strip(frame.width() * (vertical ? 1 : colours.size()), frame.height() * (vertical ? colours.size() : 1));
    QPainter painter(&strip);
    for (int i = 0; i < colours.size(); ++i)
        painter.fillRect(QRect(vertical ? QPoint(0, i * frame.height()) : QPoint(i * frame.width(), 0), frame), colours[i]);
    return strip;
}

class TestMovieWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutsTheStripIntoFrames_data()
    {
        QTest::addColumn<bool>("vertical");
        QTest::addColumn<int>("quantity");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QRect>("rendered"); // in (5, 5) 40 x 30, of right and bottom edges 44 and 34
        QTest::newRow("across, top left") << false << 12 << int(Qt::AlignTop | Qt::AlignLeft) << QRect(5, 5, 10, 8);
        QTest::newRow("across, centred") << false << 12 << int(Qt::AlignCenter) << QRect(20, 16, 10, 8);
        QTest::newRow("down, bottom right") << true << 12 << int(Qt::AlignBottom | Qt::AlignRight) << QRect(36, 24, 8, 10);
        QTest::newRow("down, top, centred across") << true << 12 << int(Qt::AlignTop) << QRect(21, 5, 8, 10);
        QTest::newRow("quantity 0: no frames") << false << 0 << int(Qt::AlignCenter) << QRect();
        QTest::newRow("negative quantity: no frames") << false << -2 << int(Qt::AlignCenter) << QRect();
    }
    // Frames are cut by the frame count and scaled to the contents, from the strip of twice
    // the resolution on a screen of twice the density; RenderTo() paints the current one at
    // its own size, aligned.
    void cutsTheStripIntoFrames()
    {
        QFETCH(bool, vertical);
        QFETCH(int, quantity);
        QFETCH(int, alignment);
        QFETCH(QRect, rendered);
        if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR") && QTest::currentDataTag() == QLatin1String("across, top left"))
            QVERIFY2(TestSupport::RunTestFunctionInChild(QTest::currentTestFunction(), {"QT_SCALE_FACTOR=2"}).isEmpty(), "at 2x");
        QVector<QColor> colours, dense;
        for (int i = 0; i < 12; ++i)
            colours << QColor::fromHsv(i * 30, 255, 255), dense << QColor::fromHsv(i * 30 + 15, 255, 128);
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        const LogCapture::Mark mark;
        MovieWidget movie;
        movie.setVertical(vertical);
        movie.setQuantity(quantity);
        const QSize frame = vertical ? QSize(8, 10) : QSize(10, 8);
        movie.setMultiPixmap(Strip(colours, frame, vertical));
        movie.setMultiPixmapHiDpi(Strip(dense, frame * 2, vertical));
        QVERIFY(mark.Since().size() == (quantity < 0 ? 1 : 0) && movie.sizeHint() == (rendered.isValid() ? frame : QLabel().sizeHint()));
        movie.resize(30, 24);
        for (const int index : {0, 5, 11, 12}) {
            movie.setStartupIndex(index);
            const QColor colour = index < quantity ? colours[index] : Qt::transparent;
            QImage expected(30, 24, QImage::Format_ARGB32_Premultiplied), image(60, 50, expected.format());
            expected.fill(index < quantity && qApp->devicePixelRatio() > 1 ? dense[index] : colour);
            QCOMPARE(Render(&movie), expected);
            image.fill(Qt::transparent), expected = image;
            QPainter(&expected).fillRect(rendered, colour);
            movie.RenderTo(nullptr, QRect(), 0);
            QPainter painter(&image);
            movie.RenderTo(&painter, QRect(5, 5, 40, 30), alignment);
            painter.end();
            QCOMPARE(image, expected);
        }
    }
    void plays()
    {
        MovieWidget movie;
        TestSupport::SignalLog log(&movie, {"FrameChanged(int)", "Finished()"});
        movie.setQuantity(3), movie.setTimeout(5);
        movie.setMultiPixmap(Strip({Qt::red, Qt::green, Qt::blue}, QSize(8, 8)));
        const auto painted = [&movie] { return Render(&movie).pixelColor(4, 4).name(); };
        QVERIFY(TestSupport::ShowAndWait(&movie));
        QTRY_VERIFY(log.lines.size() >= 5);
        QCOMPARE(log.lines.mid(0, 5), TestSupport::Words("FrameChanged(1) FrameChanged(2) FrameChanged(0) FrameChanged(1) FrameChanged(2)"));
        // Without repeat it stops on the last frame, once.
        movie.setRepeatAnimation(false);
        QTRY_VERIFY(log.lines.endsWith("Finished()"));
        QCOMPARE(log.lines.mid(log.lines.size() - 2), TestSupport::Words("FrameChanged(2) Finished()"));
        log.Take();
        QTest::qWait(60);
        QVERIFY(log.lines.isEmpty() && !movie.isPlaying());
        // Start goes on from the frame it stands on, restart from the startup index; pausing
        // keeps the frame, stopping rewinds to the startup index, and both report it.
        for (void (MovieWidget::*step)() : {&MovieWidget::start, &MovieWidget::restart, &MovieWidget::pause, &MovieWidget::stop}) {
            (movie.*step)();
            log.Note(QString("%1 %2").arg(movie.isPlaying()).arg(painted()));
            QTRY_VERIFY(!movie.isPlaying());
        }
        movie.setStartupIndex(1);
        log.Note(QString("%1 %2").arg(movie.isPlaying()).arg(painted()));
        QCOMPARE(log.lines, QStringList({"1 #0000ff", "Finished()", "1 #ff0000", "FrameChanged(1)", "FrameChanged(2)", "Finished()",
                                          "Finished()", "0 #0000ff", "Finished()", "0 #ff0000", "1 #00ff00"}));
        // A new strip, frame count or orientation shows without being asked for.
        movie.stop();
        const QPixmap other = Strip({Qt::yellow, Qt::cyan}, QSize(8, 8));
        const std::pair<const char*, QVariant> changes[] = {{"multiPixmap", other}, {"multiPixmapHiDpi", other}, {"quantity", 2}, {"vertical", true}};
        for (const auto& [name, value] : changes)
            QVERIFY2(TestSupport::Repaints(&movie, [&movie, name = name, value = value] { movie.setProperty(name, value); }), name);
    }
};

QTEST_MAIN(TestMovieWidget)
#include "tst_movie_widget.moc"
