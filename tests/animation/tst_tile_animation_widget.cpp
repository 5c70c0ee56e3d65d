#include <qt_halvo/animation/tile_animation_widget.h>

#include "test_support.h"

using OrvantaQT::TileAnimationWidget;

// A sheet of rows x columns tiles of `tile` size, tile i filled with colours[i]; the
// tiles past the colours are white.
static QPixmap Sheet(int rows, int columns, const QVector<QColor>& colours, QSize tile)
{
    QPixmap sheet(columns * tile.width(), rows * tile.height());
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (int i = 0; i < colours.size(); ++i)
        painter.fillRect(QRect(QPoint(i % columns * tile.width(), i / columns * tile.height()), tile), colours[i]);
    return sheet;
}

static QVector<QColor> Hues(int count, int value = 255)
{
    QVector<QColor> colours;
    for (int i = 0; i < count; ++i)
        colours << QColor::fromHsv(i * 360 / count, 255, value);
    return colours;
}

class TestTileAnimationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutsTheGridRowByRow_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("quantity");
        QTest::newRow("3 x 4, all tiles") << 3 << 4 << 12;
        QTest::newRow("3 x 4, 10 frames") << 3 << 4 << 10;
        QTest::newRow("one row") << 1 << 5 << 5;
        QTest::newRow("one column") << 4 << 1 << 3;
    }
    // Each frame is its tile, scaled to the contents, from the double sheet at 2x; RenderTo()
    // paints it at the tile size, aligned.
    void cutsTheGridRowByRow()
    {
        QFETCH(int, rows);
        QFETCH(int, columns);
        QFETCH(int, quantity);
        if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR") && QTest::currentDataTag() == QLatin1String("3 x 4, 10 frames"))
            QVERIFY2(TestSupport::RunTestFunctionInChild(QTest::currentTestFunction(), {"QT_SCALE_FACTOR=2"}).isEmpty(), "at 2x");
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        const bool dense = qApp->devicePixelRatio() > 1;
        const QVector<QColor> colours = Hues(quantity), darker = Hues(quantity, 128);
        TileAnimationWidget tiles;
        tiles.SetGrid(rows, columns, quantity);
        tiles.SetSheet(Sheet(rows, columns, colours, QSize(10, 6)));
        tiles.SetSheetHiDpi(Sheet(rows, columns, darker, QSize(20, 12)));
        QCOMPARE(tiles.sizeHint(), QSize(10, 6));
        tiles.resize(30, 18);
        tiles.SetPeriod(5);
        tiles.SetLooping(false);
        // What each frame shows (two corners) and where RenderTo() puts it.
        QStringList seen, expected;
        const auto look = [&] {
            seen << TestSupport::Pixels(TestSupport::Render(&tiles), {{0, 0}, {29, 17}});
            QImage rendered(40, 40, QImage::Format_ARGB32_Premultiplied), empty = rendered;
            rendered.fill(Qt::transparent), empty.fill(Qt::transparent);
            QPainter painter(&rendered);
            tiles.RenderTo(&painter, QRect(0, 0, 40, 40), Qt::AlignRight | Qt::AlignBottom);
            painter.end();
            seen << QTest::toString(TestSupport::Changed(rendered, empty));
        };
        for (int frame = 0; frame < quantity; ++frame) {
            const QString colour = (dense ? darker : colours)[frame].name(QColor::HexArgb);
            expected << colour << colour << QTest::toString(QRect(29, 33, 10, 6));
        }
        expected << "Finished";
        look();
        connect(&tiles, &TileAnimationWidget::FrameChanged, this, look);
        connect(&tiles, &TileAnimationWidget::Finished, this, [&seen] { seen << "Finished"; });
        QVERIFY(TestSupport::ShowAndWait(&tiles));
        QTRY_VERIFY(seen.endsWith("Finished"));
        QCOMPARE(seen, expected);
        // A new sheet shows at once.
        const auto corner = [&tiles] { return TestSupport::Render(&tiles).pixelColor(0, 0).name(); };
        tiles.SetSheet(Sheet(rows, columns, Hues(quantity, 60), QSize(10, 6)));
        QCOMPARE(corner(), (dense ? darker : Hues(quantity, 60))[quantity - 1].name());
        tiles.SetSheetHiDpi(Sheet(rows, columns, Hues(quantity, 30), QSize(20, 12)));
        QCOMPARE(corner(), Hues(quantity, dense ? 30 : 60)[quantity - 1].name());
    }
    // Looping goes round; one-shot stops on the last frame once; the timer runs only while
    // playing and shown.
    void plays()
    {
        TileAnimationWidget tiles;
        tiles.SetSheet(Sheet(2, 2, Hues(3), QSize(4, 4)));
        tiles.SetGrid(2, 2, 3);
        tiles.SetPeriod(5);
        TestSupport::SignalLog log(&tiles, {"FrameChanged(int)", "Finished()"});
        QVERIFY(TestSupport::ShowAndWait(&tiles));
        QTRY_VERIFY(log.lines.size() >= 5);
        QCOMPARE(log.lines.mid(0, 5), TestSupport::Words("FrameChanged(1) FrameChanged(2) FrameChanged(0) FrameChanged(1) FrameChanged(2)"));
        tiles.SetLooping(false);
        QTRY_VERIFY(log.lines.endsWith("Finished()"));
        QCOMPARE(log.lines.mid(log.lines.size() - 2), TestSupport::Words("FrameChanged(2) Finished()"));
        QCOMPARE(TestSupport::TimerEvents(&tiles, 30), 0);
        log.Take();
        tiles.Start(); // from the first frame again
        QTRY_VERIFY(log.lines.endsWith("Finished()"));
        QCOMPARE(log.Take(), TestSupport::Words("FrameChanged(1) FrameChanged(2) Finished()"));
        // Stopped on the last frame while looping, it stays there and goes on from there.
        const auto stopOnLast = connect(&tiles, &TileAnimationWidget::FrameChanged, this, [&tiles](int frame) {
            if (frame == 2)
                tiles.Stop();
        });
        tiles.SetLooping(true), tiles.Start();
        QTRY_VERIFY(!tiles.IsPlaying());
        disconnect(stopOnLast);
        QCOMPARE(TestSupport::TimerEvents(&tiles, 30), 0);
        QCOMPARE(tiles.CurrentFrame(), 2);
        tiles.Start();
        QCOMPARE(tiles.CurrentFrame(), 2);
        tiles.hide();
        QCOMPARE(TestSupport::TimerEvents(&tiles, 30), 0);
        tiles.show();
        QVERIFY(TestSupport::TimerEvents(&tiles, 30) > 0);
    }
    void badInput()
    {
        TileAnimationWidget tiles;
        tiles.SetGrid(2, 3, 5);
        const LogCapture::Mark mark;
        tiles.SetGrid(0, 3, 1), tiles.SetGrid(2, 3, 0), tiles.SetGrid(2, 3, 7), tiles.SetPeriod(0);
        QCOMPARE(QVector<int>({tiles.GetRows(), tiles.GetColumns(), tiles.GetQuantity(), tiles.GetPeriod()}),
                 QVector<int>({2, 3, 5, 40}));
        QVERIFY(!tiles.LoadSheet(QStringLiteral("/nonexistent/sheet.png")));
        QTemporaryDir folder;
        const QString saved = folder.filePath("sheet.png");
        QVERIFY(Sheet(2, 3, Hues(5), QSize(4, 4)).save(saved));
        QVERIFY(tiles.LoadSheet(saved) && tiles.LoadSheet(saved, saved));
        QVERIFY(tiles.GetSheet().size() == QSize(12, 8) && tiles.GetSheetHiDpi().size() == QSize(12, 8));
        tiles.SetSheet(Sheet(1, 2, {Qt::red}, QSize(1, 1)));
        QStringList texts = mark.Texts();
        QCOMPARE(texts.size(), 6);
        QVERIFY(texts[4].startsWith("3 TileAnimationWidget: cannot read the tile sheet \"/nonexistent/sheet.png\": "));
        texts.removeAt(4);
        QCOMPARE(texts, QStringList({"3 TileAnimationWidget: 1 frames do not fit a sheet of 0 x 3 tiles; it stays 5 of 2 x 3",
                                     "3 TileAnimationWidget: 0 frames do not fit a sheet of 2 x 3 tiles; it stays 5 of 2 x 3",
                                     "3 TileAnimationWidget: 7 frames do not fit a sheet of 2 x 3 tiles; it stays 5 of 2 x 3",
                                     "3 TileAnimationWidget: a frame period of 0 ms is ignored; it stays 40 ms",
                                     "3 TileAnimationWidget: a sheet of 2 x 1 pixels is too small for 2 x 3 tiles"}));
        // Inert: nothing painted, nothing ticking.
        tiles.resize(20, 20);
        QVERIFY(TestSupport::ShowAndWait(&tiles));
        QCOMPARE(TestSupport::TimerEvents(&tiles, 30), 0);
        QCOMPARE(TestSupport::Render(&tiles).pixelColor(5, 5).alpha(), 0);
        QCOMPARE(mark.Texts().size(), 6); // said once, not again on each resize
        QVERIFY(TestSupport::Repaints(&tiles, [&tiles] { tiles.SetSheet(Sheet(2, 3, Hues(6), QSize(4, 4))); }));
    }
};

QTEST_MAIN(TestTileAnimationWidget)
#include "tst_tile_animation_widget.moc"
