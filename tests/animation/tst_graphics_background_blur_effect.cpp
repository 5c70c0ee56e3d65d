#include <qt_halvo/animation/graphics_background_blur_effect.h>

#include "log_capture.h"

#include <qt_halvo_logging.h>

#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <functional>

using OrvantaQT::GraphicsBackgroundBlurEffect;

namespace {

constexpr int kWait = 20000;
constexpr qreal kRadius = 12.0;

// Black on the left half, white on the right: a sharp vertical edge at x = width / 2.
struct Halves : QWidget
{
    using QWidget::QWidget;
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        QPainter painter(this);
        painter.fillRect(QRect(0, 0, width() / 2, height()), Qt::black);
        painter.fillRect(QRect(width() / 2, 0, width() - width() / 2, height()), Qt::white);
    }
    int paints = 0;
};

// Red and blue device pixels in a checkerboard: any blur, shift or rescaling of it shows.
QRgb CheckerAt(int deviceX, int deviceY)
{
    return (deviceX + deviceY) % 2 ? qRgb(0, 0, 255) : qRgb(255, 0, 0);
}

struct Checker : QWidget
{
    using QWidget::QWidget;
    void paintEvent(QPaintEvent*) override
    {
        QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, CheckerAt(x, y));
        }
        image.setDevicePixelRatio(devicePixelRatioF());
        QPainter(this).drawImage(QPointF(0, 0), image);
    }
};

// A picture of the window, read in the logical coordinates of the blurred widget.
struct Picture
{
    QImage image;
    QPoint origin;
    qreal ratio;

    // The device pixel at the top left of a logical point.
    QPoint Device(QPoint logical) const { return (logical + origin) * ratio; }
    int Gray(int x, int y) const { return qGray(image.pixel(Device(QPoint(x, y)))); }

    // Empty when the rectangle shows the checkerboard whole, device pixel for device pixel
    // from its top left; else the first pixel that differs.
    QString CheckerMismatch(const QRect& rect) const
    {
        const QPoint topLeft = Device(rect.topLeft());
        for (int y = 0; y < rect.height() * ratio; ++y) {
            for (int x = 0; x < rect.width() * ratio; ++x) {
                const QRgb actual = image.pixel(topLeft + QPoint(x, y));
                if (actual != CheckerAt(x, y))
                    return QStringLiteral("device pixel (%1, %2) is %3").arg(x).arg(y).arg(QColor(actual).name());
            }
        }
        return QString();
    }

    // How many horizontal neighbours in the rectangle still differ like the checkerboard.
    int CheckerContrasts(const QRect& rect) const
    {
        int count = 0;
        const QPoint topLeft = Device(rect.topLeft());
        for (int y = 0; y < rect.height() * ratio; ++y) {
            for (int x = 1; x < rect.width() * ratio; ++x)
                count += qAbs(qRed(image.pixel(topLeft + QPoint(x - 1, y))) - qRed(image.pixel(topLeft + QPoint(x, y)))) > 128;
        }
        return count;
    }

    // Empty when the black-to-white edge at x = edge crosses row y as a gradient: grey in
    // the columns next to it, rising from left to right; else the row.
    QString EdgeNotBlurred(int edge, int y) const
    {
        QStringList row;
        bool blurred = true;
        for (int x = edge - 4; x < edge + 4; ++x) {
            row << QString::number(Gray(x, y));
            const bool next = x >= edge - 3 && x < edge + 3;
            if ((next && (Gray(x, y) <= 2 || Gray(x, y) >= 253)) || Gray(x + 1, y) + 1 < Gray(x, y))
                blurred = false;
        }
        return blurred ? QString() : QStringLiteral("row %1: %2").arg(y).arg(row.join(QLatin1Char(' ')));
    }
};

} // namespace

class TestGraphicsBackgroundBlurEffect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void keepsTheForegroundSharpAndBlursAroundIt_data();
    void keepsTheForegroundSharpAndBlursAroundIt();
    void sameAtTwiceTheScale();
    void withoutAForegroundItIsAPlainBlur_data();
    void withoutAForegroundItIsAPlainBlur();

private:
    GraphicsBackgroundBlurEffect* Install(QWidget* widget, QWidget* foreground);
    void ShowWindow();
    Picture Grab(bool onScreen);
    // Makes the change and grabs once the backdrop has been painted anew.
    Picture GrabAfter(bool onScreen, const std::function<void()>& change);

    QWidget* m_window = nullptr;
    Halves* m_backdrop = nullptr;
    QPointer<QWidget> m_foreground;
    // Where the foreground is in the backdrop, however deep it is placed.
    const QRect m_foregroundRect{100, 110, 60, 40};
    int m_edge = 0;
};

void TestGraphicsBackgroundBlurEffect::init()
{
    m_window = new QWidget;
    m_window->resize(320, 260);
    m_backdrop = new Halves(m_window);
    m_backdrop->setGeometry(8, 6, 300, 240);
    m_edge = m_backdrop->width() / 2;
    m_foreground = new Checker(m_backdrop);
    m_foreground->setGeometry(m_foregroundRect);
}

void TestGraphicsBackgroundBlurEffect::cleanup()
{
    delete m_window;
}

GraphicsBackgroundBlurEffect* TestGraphicsBackgroundBlurEffect::Install(QWidget* widget, QWidget* foreground)
{
    auto* effect = new GraphicsBackgroundBlurEffect(widget, foreground);
    effect->setBlurRadius(kRadius);
    m_backdrop->setGraphicsEffect(effect);
    return effect;
}

void TestGraphicsBackgroundBlurEffect::ShowWindow()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QTRY_VERIFY_WITH_TIMEOUT(m_backdrop->paints > 0, kWait);
}

Picture TestGraphicsBackgroundBlurEffect::Grab(bool onScreen)
{
    const QImage image = onScreen ? m_window->screen()->grabWindow(m_window->winId()).toImage()
                                  : m_window->grab().toImage();
    return Picture{image, m_backdrop->pos(), qreal(image.width()) / m_window->width()};
}

Picture TestGraphicsBackgroundBlurEffect::GrabAfter(bool onScreen, const std::function<void()>& change)
{
    const int before = m_backdrop->paints;
    change();
    if (!QTest::qWaitFor([&] { return m_backdrop->paints > before; }, kWait))
        QTest::qFail("the backdrop was not painted anew", __FILE__, __LINE__);
    QCoreApplication::processEvents();
    return Grab(onScreen);
}

void TestGraphicsBackgroundBlurEffect::keepsTheForegroundSharpAndBlursAroundIt_data()
{
    QTest::addColumn<bool>("onScreen");
    QTest::addColumn<bool>("nested");
    QTest::addColumn<qreal>("smallRadius");
    QTest::newRow("rendered, child") << false << false << 0.5;
    QTest::newRow("rendered, grandchild") << false << true << 0.0;
    QTest::newRow("on screen, child") << true << false << 0.0;
    QTest::newRow("on screen, grandchild") << true << true << 0.5;
}

void TestGraphicsBackgroundBlurEffect::keepsTheForegroundSharpAndBlursAroundIt()
{
    QFETCH(bool, onScreen);
    QFETCH(bool, nested);
    QFETCH(qreal, smallRadius);
    if (nested) {
        // The same place, through a holder that paints nothing.
        auto* holder = new QWidget(m_backdrop);
        holder->setGeometry(40, 70, 200, 120);
        m_foreground->setParent(holder);
        m_foreground->move(m_foregroundRect.topLeft() - holder->pos());
        m_foreground->show();
    }
    GraphicsBackgroundBlurEffect* effect = Install(m_backdrop, m_foreground);
    effect->setEnabled(false);
    ShowWindow();

    // Switched off, the edge is sharp: the premise of the checks below.
    const Picture sharp = Grab(onScreen);
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        QCOMPARE(sharp.ratio, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
    QCOMPARE(sharp.ratio, m_window->devicePixelRatioF());
    QCOMPARE(sharp.Gray(m_edge - 1, 30), 0);
    QCOMPARE(sharp.Gray(m_edge, 30), 255);
    QCOMPARE(sharp.CheckerMismatch(m_foregroundRect), QString());

    const Picture blurred = GrabAfter(onScreen, [effect] { effect->setEnabled(true); });
    QCOMPARE(blurred.CheckerMismatch(m_foregroundRect), QString());
    // Far from the foreground, and right above and below it.
    QCOMPARE(blurred.EdgeNotBlurred(m_edge, 30), QString());
    QCOMPARE(blurred.EdgeNotBlurred(m_edge, m_foregroundRect.top() - 8), QString());
    QCOMPARE(blurred.EdgeNotBlurred(m_edge, m_foregroundRect.bottom() + 8), QString());

    // Moved, it is sharp at its new place, and where it was the backdrop is blurred again.
    const QRect moved = m_foregroundRect.translated(-60, 30);
    const Picture after = GrabAfter(onScreen, [this] { m_foreground->move(m_foreground->pos() + QPoint(-60, 30)); });
    QCOMPARE(after.CheckerMismatch(moved), QString());
    QCOMPARE(after.EdgeNotBlurred(m_edge, m_foregroundRect.center().y()), QString());

    // Below a radius of 1, as in the first frames of a blur animation, all is sharp: the
    // base class draws the widget straight through the painter, and the foreground is
    // drawn after that with the same painter.
    const Picture small = GrabAfter(onScreen, [=] { effect->setBlurRadius(smallRadius); });
    QCOMPARE(small.Gray(m_edge - 1, 30), 0);
    QCOMPARE(small.Gray(m_edge, 30), 255);
    QCOMPARE(small.CheckerMismatch(moved), QString());
}

// The foreground is grabbed at the screen's pixel density: the checkerboard of device
// pixels stays whole. The same checks, in a process of its own with the scale factor set.
void TestGraphicsBackgroundBlurEffect::sameAtTwiceTheScale()
{
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        QSKIP("this process runs scaled already");
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("keepsTheForegroundSharpAndBlursAroundIt")});
    QVERIFY(child.waitForStarted());
    QVERIFY(child.waitForFinished(300000));
    const QString output = QString::fromLocal8Bit(child.readAll());
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("Totals: 6 passed, 0 failed, 0 skipped")), qPrintable(output));
}

void TestGraphicsBackgroundBlurEffect::withoutAForegroundItIsAPlainBlur_data()
{
    QTest::addColumn<QString>("foreground");
    QTest::newRow("none given") << QStringLiteral("none");
    QTest::newRow("given, then deleted") << QStringLiteral("deleted");
    // Without the blurred widget there is nothing to place the foreground in.
    QTest::newRow("no blurred widget") << QStringLiteral("no widget");
}

void TestGraphicsBackgroundBlurEffect::withoutAForegroundItIsAPlainBlur()
{
    QFETCH(QString, foreground);
    const bool deleted = foreground == QLatin1String("deleted");
    const bool noWidget = foreground == QLatin1String("no widget");
    const LogCapture::Mark mark;
    QPointer<GraphicsBackgroundBlurEffect> installed(
        Install(noWidget ? nullptr : m_backdrop, foreground == QLatin1String("none") ? nullptr : m_foreground.data()));
    QCOMPARE(mark.Since().size(), noWidget ? 1 : 0);
    if (noWidget)
        QCOMPARE(mark.Since().first().level, Logging_LevelError);
    ShowWindow();
    if (deleted) {
        QCOMPARE(Grab(false).CheckerMismatch(m_foregroundRect), QString());
        delete m_foreground;
    }
    const Picture picture = Grab(false);
    QCOMPARE(picture.EdgeNotBlurred(m_edge, 30), QString());
    if (deleted)
        QCOMPARE(picture.EdgeNotBlurred(m_edge, m_foregroundRect.center().y()), QString());
    else // The checkerboard is blurred with the rest.
        QCOMPARE(picture.CheckerContrasts(m_foregroundRect), 0);
    QCOMPARE(mark.Since().size(), noWidget ? 1 : 0);

    // Installed or not, an effect belongs to the widget it is on.
    QPointer<GraphicsBackgroundBlurEffect> loose(new GraphicsBackgroundBlurEffect(m_backdrop, m_foreground));
    delete m_window;
    m_window = nullptr;
    QVERIFY(!installed);
    QVERIFY(!loose);
}

QTEST_MAIN(TestGraphicsBackgroundBlurEffect)
#include "tst_graphics_background_blur_effect.moc"
