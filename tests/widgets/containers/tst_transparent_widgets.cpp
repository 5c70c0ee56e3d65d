#include <qt_halvo/widgets/containers/scrollable_transparent_widget.h>
#include <qt_halvo/widgets/containers/transparent_widget.h>

#include "test_support.h"

using OrvantaQT::ScrollableTransparentWidget;
using OrvantaQT::TransparentWidget;

namespace {

const QColor kPicture(Qt::red);
const QColor kBackground(Qt::blue);

// A page's picture: red everywhere, painted by the parent itself, so that a style sheet
// that reaches it does not change it.
class Picture : public QWidget
{
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), kPicture); }
};

// A child of a page that paints itself green.
class Tile : public QWidget
{
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::green); }
};

// What asks a container for a blue background.
enum class Ask { WindowStyleSheet, OwnStyleSheet, StyledBackground, Palette, ScrollAreaWidget };

void AskForBackground(Ask ask, QWidget* picture, QWidget* container)
{
    QPalette palette = container->palette();
    switch (ask) {
    case Ask::WindowStyleSheet:
        picture->setStyleSheet(QStringLiteral("QWidget { background: blue; } QScrollArea { background: blue; }"));
        break;
    case Ask::OwnStyleSheet:
        container->setStyleSheet(QStringLiteral("background: blue;"));
        break;
    case Ask::StyledBackground:
        // As Qt's advice for style sheets on widgets of one's own class goes.
        container->setAttribute(Qt::WA_StyledBackground);
        container->setStyleSheet(QStringLiteral("background: blue;"));
        break;
    case Ask::Palette:
        palette.setColor(QPalette::Window, kBackground);
        palette.setColor(QPalette::Base, kBackground);
        container->setPalette(palette);
        container->setAutoFillBackground(true);
        break;
    case Ask::ScrollAreaWidget:
        break;
    }
}

void AddRows()
{
    QTest::addColumn<Ask>("ask");
    QTest::newRow("style sheet of the window") << Ask::WindowStyleSheet;
    QTest::newRow("style sheet of its own") << Ask::OwnStyleSheet;
    QTest::newRow("styled background turned on") << Ask::StyledBackground;
    QTest::newRow("palette with the fill on") << Ask::Palette;
    QTest::newRow("scroll area's widget") << Ask::ScrollAreaWidget;
}

} // namespace

Q_DECLARE_METATYPE(Ask)

class TestTransparentWidgets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void transparentWidget_data() { AddRows(); }
    // Over the picture, where a plain QWidget asked the same paints blue, the container
    // shows the picture; its children still paint.
    void transparentWidget()
    {
        QFETCH(Ask, ask);
        Picture picture;
        picture.resize(240, 100);
        QWidget* plain = new QWidget;
        QWidget* transparent = new TransparentWidget;
        auto* child = new Tile;
        child->setParent(transparent);
        child->setGeometry(0, 0, 20, 20);
        for (QWidget* container : {plain, transparent}) {
            if (ask == Ask::ScrollAreaWidget) {
                auto* area = new QScrollArea(&picture);
                area->setFrameShape(QFrame::NoFrame);
                // The area's viewport is see-through here, so that only its widget counts.
                area->viewport()->setAutoFillBackground(false);
                QPalette palette = container->palette();
                palette.setColor(QPalette::Window, kBackground);
                container->setPalette(palette);
                container->resize(100, 100);
                area->setWidget(container); // which turns the fill on
                area->setGeometry(container == plain ? 0 : 120, 0, 100, 100);
            } else {
                container->setParent(&picture);
                container->setGeometry(container == plain ? 0 : 120, 0, 100, 100);
            }
        }
        // Asked once the parents are settled.
        QCoreApplication::processEvents();
        for (QWidget* container : {plain, transparent})
            AskForBackground(ask, &picture, container);
        QVERIFY(TestSupport::ShowAndWait(&picture));
        const QImage image = TestSupport::Render(&picture);
        const QPoint inPlain = plain->mapTo(&picture, QPoint(50, 50));
        const QPoint inTransparent = transparent->mapTo(&picture, QPoint(50, 50));
        const QPoint inChild = child->mapTo(&picture, QPoint(10, 10));
        QCOMPARE(TestSupport::Pixels(image, {inPlain, inTransparent, inChild}),
                 QStringList({kBackground.name(QColor::HexArgb), kPicture.name(QColor::HexArgb),
                              QColor(Qt::green).name(QColor::HexArgb)}));
        // Still after the style is applied again.
        picture.setStyleSheet(picture.styleSheet() + QStringLiteral(" "));
        transparent->setStyleSheet(transparent->styleSheet() + QStringLiteral(" "));
        QCOMPARE(TestSupport::Render(&picture).pixelColor(inTransparent), kPicture);
        // And when it is shown again after someone turned the fill on.
        transparent->setAutoFillBackground(true);
        picture.hide();
        QVERIFY(TestSupport::ShowAndWait(&picture));
        QCOMPARE(TestSupport::Render(&picture).pixelColor(inTransparent), kPicture);
    }

    // Moved into a shown scroll area after it was shown itself: setWidget() turns the fill
    // on, and it is undone before the next paint.
    void movedIntoAScrollArea()
    {
        Picture picture;
        picture.resize(240, 100);
        auto* transparent = new TransparentWidget(&picture);
        transparent->setGeometry(0, 0, 100, 100);
        auto* area = new QScrollArea(&picture);
        area->setFrameShape(QFrame::NoFrame);
        area->viewport()->setAutoFillBackground(false);
        area->setGeometry(120, 0, 100, 100);
        QVERIFY(TestSupport::ShowAndWait(&picture));
        QPalette palette = transparent->palette();
        palette.setColor(QPalette::Window, kBackground);
        transparent->setPalette(palette);
        area->setWidget(transparent);
        QVERIFY(transparent->isVisible());
        QCoreApplication::processEvents();
        QCOMPARE(TestSupport::Render(&picture).pixelColor(170, 50), kPicture);

        // A plain widget of the user's, shown and styled before, in a transparent area.
        auto* scrollable = new ScrollableTransparentWidget(&picture);
        scrollable->setGeometry(0, 0, 100, 100);
        auto* own = new QWidget(&picture);
        own->setStyleSheet(QStringLiteral("background: blue;"));
        own->setGeometry(0, 0, 100, 100);
        scrollable->show();
        own->show();
        QCOMPARE(TestSupport::Render(&picture).pixelColor(50, 50), kBackground);
        scrollable->setWidget(own);
        QCoreApplication::processEvents();
        QCOMPARE(TestSupport::Render(&picture).pixelColor(50, 50), kPicture);
        own->setStyleSheet(QStringLiteral("background: blue; border: none;"));
        QCOMPARE(TestSupport::Render(&picture).pixelColor(50, 50), kPicture);
    }

    void scrollableTransparentWidget_data() { AddRows(); }
    // Neither the area, its viewport nor its content paints; a QScrollArea asked the same
    // does. No frame either.
    void scrollableTransparentWidget()
    {
        QFETCH(Ask, ask);
        Picture picture;
        picture.resize(240, 100);
        auto* plain = new QScrollArea(&picture);
        auto* transparent = new ScrollableTransparentWidget(&picture);
        plain->setWidgetResizable(true);
        plain->setWidget(new QWidget);
        plain->setGeometry(0, 0, 100, 100);
        transparent->setGeometry(120, 0, 100, 100);
        QCOMPARE(transparent->GetContent(), transparent->widget());
        QCOMPARE(transparent->GetContent()->objectName(), QStringLiteral("Content"));
        QVERIFY(qobject_cast<TransparentWidget*>(transparent->GetContent()));
        QCOMPARE(transparent->frameShape(), QFrame::NoFrame);
        // Taller than the area, with nothing in it that paints.
        auto* column = new QVBoxLayout(transparent->GetContent());
        column->addSpacing(300);
        if (ask == Ask::ScrollAreaWidget) {
            // A widget of the user's own, with a blue palette, given through setWidget().
            for (QScrollArea* area : std::initializer_list<QScrollArea*>{plain, transparent}) {
                auto* own = new QWidget;
                QPalette palette = own->palette();
                palette.setColor(QPalette::Window, kBackground);
                own->setPalette(palette);
                own->setMinimumHeight(300);
                area->setWidget(own);
            }
        }
        for (QScrollArea* area : std::initializer_list<QScrollArea*>{plain, transparent}) {
            AskForBackground(ask, &picture, area);
            if (ask == Ask::Palette) {
                area->viewport()->setPalette(area->palette());
                area->viewport()->setAutoFillBackground(true);
                area->widget()->setPalette(area->palette());
                area->widget()->setAutoFillBackground(true);
            }
        }
        QVERIFY(TestSupport::ShowAndWait(&picture));
        QVERIFY(transparent->verticalScrollBar()->isVisible());
        const QImage image = TestSupport::Render(&picture);
        const QPoint middle(40, 50);
        const QStringList plainPixels = TestSupport::Pixels(image, {middle});
        QVERIFY2(plainPixels.first() != kPicture.name(QColor::HexArgb), qPrintable(plainPixels.join(QLatin1Char(' '))));
        // The corner where a frame would be, and the middle.
        QCOMPARE(TestSupport::Pixels(image, {QPoint(120, 0), middle + QPoint(120, 0)}),
                 QStringList({kPicture.name(QColor::HexArgb), kPicture.name(QColor::HexArgb)}));
        // The scroll bar still paints.
        const QScrollBar* bar = transparent->verticalScrollBar();
        QVERIFY(image.pixelColor(bar->mapTo(&picture, QPoint(bar->width() / 2, bar->height() - 4))) != kPicture);
    }
};

QTEST_MAIN(TestTransparentWidgets)
#include "tst_transparent_widgets.moc"
