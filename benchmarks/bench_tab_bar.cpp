// One frame of a TabBar of 20 tabs whose selector is halfway through a slide, painted into
// an image, next to a plain QTabBar with the same tabs, font, size and style sheet painted
// the same way in the same run: what the selector adds to a frame. Times are per frame.

#include <qt_halvo/widgets/navigation/tab_bar.h>

#include <QtCore/QVariantAnimation>
#include <QtTest/QtTest>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::TabBar;

namespace {

constexpr int kTabs = 20;

// Flat tabs, through which the pill shows; the plain bar gets the same.
const char* const kFlatTabs = "QTabBar::tab { background: transparent; border: none; padding: 4px 8px; }";

QFont BenchFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

} // namespace

Q_DECLARE_METATYPE(TabBar::Shape)

class BenchTabBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void frame_data();
    void frame();
};

void BenchTabBar::initTestCase()
{
    qputenv("QT_HALVO_LOG_LIBRARY", QT_HALVO_DISCARD_LOGGING_LIBRARY);
    QApplication::setStyle(QStringLiteral("Fusion"));
    qInfo("%d tabs, style %s, platform %s", kTabs, qPrintable(QApplication::style()->objectName()),
          qPrintable(QGuiApplication::platformName()));
}

void BenchTabBar::frame_data()
{
    QTest::addColumn<TabBar::Shape>("shape"); // of the selector, which gives the area of a frame
    QTest::addColumn<bool>("peer");
    QTest::addColumn<bool>("whole");
    for (const bool whole : {false, true}) {
        const QByteArray area = whole ? QByteArrayLiteral(", whole bar") : QByteArrayLiteral(", area of a frame");
        QTest::newRow("TabBar, underline" + area) << TabBar::Underline << false << whole;
        QTest::newRow("QTabBar (peer)" + area) << TabBar::Underline << true << whole;
        QTest::newRow("TabBar, pill, flat tabs" + area) << TabBar::Pill << false << whole;
        QTest::newRow("QTabBar (peer), flat tabs" + area) << TabBar::Pill << true << whole;
    }
}

// A slide's frame paints the area the selector leaves and the one it comes to (as a
// frame 16 ms on asks); the whole bar is what a bar of its own paints when it changes.
void BenchTabBar::frame()
{
    QFETCH(TabBar::Shape, shape);
    QFETCH(bool, peer);
    QFETCH(bool, whole);
    const bool flat = shape == TabBar::Pill;
    QWidget window;
    window.setFont(BenchFont());
    window.setStyleSheet(flat ? QLatin1String(kFlatTabs) : QLatin1String());
    auto* layout = new QVBoxLayout(&window);
    // The selecting bar slides in every row; a plain bar of the same size is painted
    // instead of it in the rows of the peer.
    auto* selecting = new TabBar;
    QTabBar* plain = peer ? new QTabBar : nullptr;
    for (QTabBar* bar : {static_cast<QTabBar*>(selecting), plain}) {
        if (!bar)
            continue;
        bar->setExpanding(false);
        for (int i = 1; i <= kTabs; ++i)
            bar->addTab(QString::number(i));
        layout->addWidget(bar);
    }
    layout->addStretch();
    selecting->SetSelectorShape(shape);
    selecting->SetDuration(1000);
    window.resize(1240, 160);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTabBar* painted = plain ? plain : selecting;
    QVERIFY2(painted->tabRect(kTabs - 1).right() < painted->width(), "every tab shows");
    QCOMPARE(painted->size(), selecting->size());

    QCoreApplication::processEvents(); // painted at rest once: the slide starts from there
    selecting->setCurrentIndex(kTabs - 2);
    QVERIFY(selecting->IsSelectorMoving());
    // Held halfway, from the first tab to the one before the last.
    auto* slide = selecting->findChild<QVariantAnimation*>();
    QVERIFY(slide);
    slide->pause();
    slide->setCurrentTime(slide->duration() / 2 + 16);
    QRect area = selecting->SelectorRect();
    slide->setCurrentTime(slide->duration() / 2);
    area |= selecting->SelectorRect();
    QVERIFY(area.left() > selecting->tabRect(0).right() && area.right() < selecting->tabRect(kTabs - 2).left());
    const QRegion region = whole ? QRegion() : QRegion(area.adjusted(-1, -1, 1, 1));

    QImage image(painted->size() * painted->devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(painted->devicePixelRatioF());
    QBENCHMARK {
        image.fill(Qt::white);
        painted->render(&image, QPoint(), region, QWidget::DrawChildren);
    }
    QCOMPARE(slide->state(), QAbstractAnimation::Paused);
    static QSet<QByteArray> reported;
    if (!whole && !reported.contains(QTest::currentDataTag())) {
        reported.insert(QTest::currentDataTag());
        qInfo("area of a frame %dx%d of %dx%d", area.width(), area.height(), painted->width(), painted->height());
    }
}

QTEST_MAIN(BenchTabBar)
#include "bench_tab_bar.moc"
