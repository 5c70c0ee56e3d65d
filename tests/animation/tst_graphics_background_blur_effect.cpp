#include <qt_halvo/animation/graphics_background_blur_effect.h>

#include "test_support.h"

using OrvantaQT::GraphicsBackgroundBlurEffect;

// Red and blue device pixels in a checkerboard: any blur, shift or rescaling of it shows.
QRgb CheckerAt(int x, int y) { return (x + y) % 2 ? qRgb(0, 0, 255) : qRgb(255, 0, 0); }
// The checkerboard, or black on the left half and white on the right, painted by itself:
// Qt leaves opaque children out of the repaints of a parent with an effect.
struct Painted : QWidget
{
    Painted(QWidget* parent, bool checker) : QWidget(parent), checker(checker) {}
    void paintEvent(QPaintEvent*) override
    {
        QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, checker ? CheckerAt(x, y) : x < image.width() / 2 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
        image.setDevicePixelRatio(devicePixelRatioF());
        QPainter(this).drawImage(QPointF(0, 0), image);
    }
    const bool checker;
};

class TestGraphicsBackgroundBlurEffect : public QObject
{
    Q_OBJECT

    QWidget* m_window = nullptr;
    QWidget* m_backdrop = nullptr; // its edge is at x = 150
    QPointer<QWidget> m_foreground;
    const QRect m_place{100, 110, 60, 40}; // of the foreground in the backdrop, however deep it sits

    // Empty when the window shows the checkerboard whole in the rectangle and the edge blurred (or sharp) in the rows.
    QString Problem(bool onScreen, const QRect& checker, bool blurred, std::initializer_list<int> rows) const
    {
        const QImage image = onScreen ? m_window->screen()->grabWindow(m_window->winId()).toImage()
                                      : m_window->grab().toImage();
        const qreal ratio = qreal(image.width()) / m_window->width();
        const auto at = [&](int x, int y) { return (QPoint(x, y) + m_backdrop->pos()) * ratio; };
        for (int y = 0; y < checker.height() * ratio; ++y)
            for (int x = 0; x < checker.width() * ratio; ++x)
                if (image.pixel(at(checker.x(), checker.y()) + QPoint(x, y)) != CheckerAt(x, y))
                    return QStringLiteral("checkerboard broken at device pixel (%1, %2)").arg(x).arg(y);
        for (int y : rows) { // grey either side of the edge when blurred, black and white when sharp
            const int left = qGray(image.pixel(at(149, y))), right = qGray(image.pixel(at(150, y)));
            if (blurred ? left == 0 || right == 255 : left != 0 || right != 255)
                return QStringLiteral("row %1: %2 %3").arg(y).arg(left).arg(right);
        }
        return QString();
    }

private Q_SLOTS:
    void blursAllButTheForeground_data()
    {
        QTest::addColumn<QString>("foreground");
        QTest::addColumn<bool>("onScreen");
        QTest::newRow("kept, rendered") << "kept" << false;
        QTest::newRow("kept, on screen") << "kept" << true;
        // Plain blurs; without the blurred widget the foreground has no place, which is logged.
        QTest::newRow("none") << "none" << false;
        QTest::newRow("deleted") << "deleted" << true;
        QTest::newRow("no blurred widget") << "no widget" << false;
    }
    void blursAllButTheForeground()
    {
        QFETCH(QString, foreground);
        QFETCH(bool, onScreen);
        QWidget window;
        m_window = &window;
        window.resize(320, 260);
        m_backdrop = new Painted(&window, false);
        m_backdrop->setGeometry(8, 6, 300, 240);
        auto* holder = new QWidget(m_backdrop); // paints nothing; the foreground sits deeper than a child
        holder->setGeometry(40, 70, 200, 120);
        m_foreground = new Painted(holder, true);
        m_foreground->setGeometry(m_place.translated(-holder->pos()));
        const LogCapture::Mark mark;
        auto* effect = new GraphicsBackgroundBlurEffect(foreground == "no widget" ? nullptr : m_backdrop,
                                                        foreground == "none" ? nullptr : m_foreground.data());
        effect->setBlurRadius(12);
        m_backdrop->setGraphicsEffect(effect);
        QCOMPARE(mark.Since().size(), foreground == "no widget" ? 1 : 0);
        QVERIFY(TestSupport::ShowAndWait(m_window));
        if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
            QCOMPARE(m_window->devicePixelRatioF(), qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
        // Far from the foreground, and right above and below it.
        const bool kept = foreground == "kept";
        QTRY_COMPARE(Problem(onScreen, kept || foreground == "deleted" ? m_place : QRect(), true, {30, 102, 157}), QString());
        // Moved, it is sharp at its new place, and where it was the backdrop is blurred again.
        const QRect moved = m_place.translated(-60, 30);
        foreground == "deleted" ? delete m_foreground : m_foreground->move(m_foreground->pos() + QPoint(-60, 30));
        QTRY_COMPARE(Problem(onScreen, kept ? moved : QRect(), true, {m_place.center().y()}), QString());
        // Without a foreground to keep, the checkerboard is blurred with the rest, into purple.
        const QColor middle = m_window->grab().toImage().pixelColor(moved.center() + m_backdrop->pos());
        QVERIFY2(kept || foreground == "deleted" || qAbs(middle.red() - middle.blue()) < 40, qPrintable(middle.name()));
        // Below a radius of 1, as in the first frames of a blur animation, all is sharp.
        effect->setBlurRadius(onScreen ? 0 : 0.5);
        QTRY_COMPARE(Problem(onScreen, m_foreground ? moved : QRect(), false, {30, m_place.center().y()}), QString());
    }

    // The foreground is grabbed at the screen's pixel density: the checkerboard stays whole.
    void sameAtTwiceTheScale()
    {
        if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
            QSKIP("this process runs scaled already");
        QCOMPARE(TestSupport::RunTestFunctionInChild("blursAllButTheForeground", {"QT_SCALE_FACTOR=2"}), QString());
    }
};

QTEST_MAIN(TestGraphicsBackgroundBlurEffect)
#include "tst_graphics_background_blur_effect.moc"
