#include <qt_halvo/animation/graphics_background_blur_effect.h>

#include "log_capture.h"

#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

using OrvantaQT::GraphicsBackgroundBlurEffect;

namespace {

constexpr int kWait = 20000;
constexpr qreal kRadius = 12.0;

// Black on the left half, white on the right: a sharp vertical edge at x = width / 2.
class Halves : public QWidget
{
public:
    using QWidget::QWidget;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        QPainter painter(this);
        painter.fillRect(QRect(0, 0, width() / 2, height()), Qt::black);
        painter.fillRect(QRect(width() / 2, 0, width() - width() / 2, height()), Qt::white);
    }
};

// Red and blue device pixels in a checkerboard: any blur, shift or rescaling of it shows.
class Checker : public QWidget
{
public:
    using QWidget::QWidget;

    static QRgb At(int deviceX, int deviceY) { return (deviceX + deviceY) % 2 ? qRgb(0, 0, 255) : qRgb(255, 0, 0); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        const qreal ratio = devicePixelRatioF();
        QImage image(size() * ratio, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, At(x, y));
        }
        image.setDevicePixelRatio(ratio);
        QPainter(this).drawImage(QPointF(0, 0), image);
    }
};

// A picture of the window with the coordinates of the blurred widget.
class Picture
{
public:
    Picture(const QImage& image, QPoint origin, qreal ratio) : m_image(image), m_origin(origin), m_ratio(ratio) {}

    qreal Ratio() const { return m_ratio; }
    QRgb Device(int x, int y) const { return m_image.pixel(x, y); }
    // The device pixel at the top left of a logical point of the blurred widget.
    QPoint ToDevice(QPoint logical) const { return (logical + m_origin) * m_ratio; }
    int Gray(int x, int y) const
    {
        const QPoint p = ToDevice(QPoint(x, y));
        return qGray(m_image.pixel(p));
    }

    // Empty when every device pixel of the rectangle (logical, in the blurred widget) is
    // the checkerboard's, counted from the rectangle's top left; else the first that is not.
    QString CheckerMismatch(const QRect& rect) const
    {
        const QPoint topLeft = ToDevice(rect.topLeft());
        const QSize size = rect.size() * m_ratio;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const QRgb actual = m_image.pixel(topLeft + QPoint(x, y));
                if (actual != Checker::At(x, y))
                    return QStringLiteral("device pixel (%1, %2) of the foreground is %3, not %4")
                        .arg(x).arg(y).arg(QColor(actual).name(), QColor(Checker::At(x, y)).name());
            }
        }
        return QString();
    }

    // How many horizontal neighbours inside the rectangle still differ like the checkerboard.
    int CheckerContrasts(const QRect& rect) const
    {
        int count = 0;
        const QPoint topLeft = ToDevice(rect.topLeft());
        const QSize size = rect.size() * m_ratio;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 1; x < size.width(); ++x) {
                const QRgb a = m_image.pixel(topLeft + QPoint(x - 1, y));
                const QRgb b = m_image.pixel(topLeft + QPoint(x, y));
                if (qAbs(qRed(a) - qRed(b)) > 128)
                    ++count;
            }
        }
        return count;
    }

    // Empty when the black-to-white edge at x = edge crosses row y over a gradient: grey
    // in the columns next to it, rising from left to right; else what is wrong.
    QString EdgeNotBlurred(int edge, int y) const
    {
        QStringList row;
        for (int x = edge - 4; x < edge + 4; ++x)
            row << QString::number(Gray(x, y));
        for (int x = edge - 3; x < edge + 3; ++x) {
            if (Gray(x, y) <= 2 || Gray(x, y) >= 253)
                return QStringLiteral("sharp edge in row %1: %2").arg(y).arg(row.join(QLatin1Char(' ')));
        }
        for (int x = edge - 4; x < edge + 4; ++x) {
            if (Gray(x + 1, y) + 1 < Gray(x, y))
                return QStringLiteral("no gradient in row %1: %2").arg(y).arg(row.join(QLatin1Char(' ')));
        }
        return QString();
    }

private:
    QImage m_image;
    QPoint m_origin;
    qreal m_ratio;
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
    void followsTheForegroundWhenItMoves();
    void withoutAForegroundItIsAPlainBlur_data();
    void withoutAForegroundItIsAPlainBlur();
    void missingWidgetIsLoggedAndOnlyBlurs();
    void belongsToItsWidget();

private:
    Picture Grab(bool onScreen);
    void ShowWindow();

    QWidget* m_window = nullptr;
    Halves* m_backdrop = nullptr;
    QPointer<QWidget> m_foreground;
    // Where the foreground is in the backdrop, however deep it is placed.
    const QRect m_foregroundRect{100, 110, 60, 40};
};

void TestGraphicsBackgroundBlurEffect::init()
{
    m_window = new QWidget;
    m_window->resize(320, 260);
    m_backdrop = new Halves(m_window);
    m_backdrop->setGeometry(8, 6, 300, 240);
    m_foreground = new Checker(m_backdrop);
    m_foreground->setGeometry(m_foregroundRect);
}

void TestGraphicsBackgroundBlurEffect::cleanup()
{
    delete m_window;
    m_window = nullptr;
}

void TestGraphicsBackgroundBlurEffect::ShowWindow()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QTRY_VERIFY_WITH_TIMEOUT(m_backdrop->paints > 0, kWait);
}

Picture TestGraphicsBackgroundBlurEffect::Grab(bool onScreen)
{
    QImage image;
    if (onScreen)
        image = m_window->screen()->grabWindow(m_window->winId()).toImage();
    else
        image = m_window->grab().toImage();
    const qreal ratio = qreal(image.width()) / m_window->width();
    return Picture(image, m_backdrop->pos(), ratio);
}

void TestGraphicsBackgroundBlurEffect::keepsTheForegroundSharpAndBlursAroundIt_data()
{
    QTest::addColumn<bool>("onScreen");
    QTest::addColumn<bool>("nested");
    QTest::newRow("rendered, child") << false << false;
    QTest::newRow("rendered, grandchild") << false << true;
    QTest::newRow("on screen, child") << true << false;
    QTest::newRow("on screen, grandchild") << true << true;
}

void TestGraphicsBackgroundBlurEffect::keepsTheForegroundSharpAndBlursAroundIt()
{
    QFETCH(bool, onScreen);
    QFETCH(bool, nested);
    if (nested) {
        // The same place, through a holder that paints nothing.
        auto* holder = new QWidget(m_backdrop);
        holder->setGeometry(40, 70, 200, 120);
        m_foreground->setParent(holder);
        m_foreground->move(m_foregroundRect.topLeft() - holder->pos());
        m_foreground->show();
    }
    auto* effect = new GraphicsBackgroundBlurEffect(m_backdrop, m_foreground);
    effect->setBlurRadius(kRadius);
    effect->setEnabled(false);
    m_backdrop->setGraphicsEffect(effect);
    ShowWindow();
    const int edge = m_backdrop->width() / 2;

    // Switched off, the edge is sharp: the premise of the checks below.
    Picture sharp = Grab(onScreen);
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        QCOMPARE(sharp.Ratio(), qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
    QCOMPARE(sharp.Ratio(), m_window->devicePixelRatioF());
    QCOMPARE(sharp.Gray(edge - 1, 30), 0);
    QCOMPARE(sharp.Gray(edge, 30), 255);
    QCOMPARE(sharp.CheckerMismatch(m_foregroundRect), QString());

    const int paints = m_backdrop->paints;
    effect->setEnabled(true);
    QTRY_VERIFY_WITH_TIMEOUT(m_backdrop->paints > paints, kWait);
    QCoreApplication::processEvents();
    Picture blurred = Grab(onScreen);
    QCOMPARE(blurred.CheckerMismatch(m_foregroundRect), QString());
    // Far from the foreground, and right above and below it.
    QCOMPARE(blurred.EdgeNotBlurred(edge, 30), QString());
    QCOMPARE(blurred.EdgeNotBlurred(edge, m_foregroundRect.top() - 8), QString());
    QCOMPARE(blurred.EdgeNotBlurred(edge, m_foregroundRect.bottom() + 8), QString());
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
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("keepsTheForegroundSharpAndBlursAroundIt"), QStringLiteral("followsTheForegroundWhenItMoves")});
    QVERIFY(child.waitForStarted());
    QVERIFY(child.waitForFinished(300000));
    const QString output = QString::fromLocal8Bit(child.readAll());
    QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("Totals: 7 passed, 0 failed, 0 skipped")), qPrintable(output));
}

void TestGraphicsBackgroundBlurEffect::followsTheForegroundWhenItMoves()
{
    auto* effect = new GraphicsBackgroundBlurEffect(m_backdrop, m_foreground);
    effect->setBlurRadius(kRadius);
    m_backdrop->setGraphicsEffect(effect);
    ShowWindow();
    QCOMPARE(Grab(false).CheckerMismatch(m_foregroundRect), QString());

    const QRect moved = m_foregroundRect.translated(-60, 50);
    m_foreground->move(moved.topLeft());
    const Picture picture = Grab(false);
    QCOMPARE(picture.CheckerMismatch(moved), QString());
    // Where it was, the backdrop is blurred again.
    QCOMPARE(picture.EdgeNotBlurred(m_backdrop->width() / 2, m_foregroundRect.center().y()), QString());
}

void TestGraphicsBackgroundBlurEffect::withoutAForegroundItIsAPlainBlur_data()
{
    QTest::addColumn<bool>("givenButDeleted");
    QTest::newRow("none given") << false;
    QTest::newRow("given, then deleted") << true;
}

void TestGraphicsBackgroundBlurEffect::withoutAForegroundItIsAPlainBlur()
{
    QFETCH(bool, givenButDeleted);
    const LogCapture::Mark mark;
    auto* effect = new GraphicsBackgroundBlurEffect(m_backdrop, givenButDeleted ? m_foreground.data() : nullptr);
    effect->setBlurRadius(kRadius);
    m_backdrop->setGraphicsEffect(effect);
    ShowWindow();
    if (givenButDeleted) {
        QCOMPARE(Grab(false).CheckerMismatch(m_foregroundRect), QString());
        delete m_foreground;
    }
    const Picture picture = Grab(false);
    const int edge = m_backdrop->width() / 2;
    QCOMPARE(picture.EdgeNotBlurred(edge, 30), QString());
    if (givenButDeleted) {
        QCOMPARE(picture.EdgeNotBlurred(edge, m_foregroundRect.center().y()), QString());
    } else {
        // The checkerboard is blurred with the rest.
        QCOMPARE(picture.CheckerContrasts(m_foregroundRect), 0);
    }
    QVERIFY(mark.Since().isEmpty());
}

void TestGraphicsBackgroundBlurEffect::missingWidgetIsLoggedAndOnlyBlurs()
{
    const LogCapture::Mark mark;
    auto* effect = new GraphicsBackgroundBlurEffect(nullptr, m_foreground);
    const QVector<LoggedLine> lines = mark.Since();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().level, 4);

    QPointer<GraphicsBackgroundBlurEffect> guard(effect);
    effect->setBlurRadius(kRadius);
    m_backdrop->setGraphicsEffect(effect);
    ShowWindow();
    const Picture picture = Grab(false);
    QCOMPARE(picture.EdgeNotBlurred(m_backdrop->width() / 2, 30), QString());
    QCOMPARE(picture.CheckerContrasts(m_foregroundRect), 0);
    QCOMPARE(mark.Since().size(), 1);
    // Installed, it belongs to the widget it is on.
    delete m_window;
    m_window = nullptr;
    QVERIFY(!guard);
}

void TestGraphicsBackgroundBlurEffect::belongsToItsWidget()
{
    // Even when it is never installed.
    QPointer<GraphicsBackgroundBlurEffect> effect(new GraphicsBackgroundBlurEffect(m_backdrop, m_foreground));
    delete m_window;
    m_window = nullptr;
    QVERIFY(!effect);
}

QTEST_MAIN(TestGraphicsBackgroundBlurEffect)
#include "tst_graphics_background_blur_effect.moc"
