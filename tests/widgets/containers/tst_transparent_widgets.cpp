#include <qt_halvo/widgets/containers/scrollable_transparent_widget.h>
#include <qt_halvo/widgets/containers/transparent_widget.h>

#include "test_support.h"

using OrvantaQT::ScrollableTransparentWidget;
using OrvantaQT::TransparentWidget;
using TestSupport::Colours;

namespace {

// A widget in one colour, painted by itself so that a style sheet that reaches it does
// not change it: a page's picture (red) under the containers, or a child of theirs.
struct Painted : QWidget
{
    explicit Painted(const QColor& fill, QWidget* parent = nullptr) : QWidget(parent), colour(fill) {}
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), colour); }
    QColor colour;
};

// A blue palette, with the fill on if asked.
void Blue(QWidget* widget, bool fill = false)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, Qt::blue);
    palette.setColor(QPalette::Base, Qt::blue);
    widget->setPalette(palette);
    if (fill)
        widget->setAutoFillBackground(true);
}

// A scroll area without a frame whose viewport is see-through, so that only its widget counts.
QScrollArea* BareArea(QWidget* parent, int x)
{
    auto* area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->viewport()->setAutoFillBackground(false);
    area->setGeometry(x, 0, 100, 100);
    return area;
}

// What asks a container for a blue background.
enum class Ask { WindowStyleSheet, OwnStyleSheet, StyledBackground, Palette, ScrollAreaWidget };

void AskForBackground(Ask ask, QWidget* picture, QWidget* container)
{
    if (ask == Ask::WindowStyleSheet)
        picture->setStyleSheet(QStringLiteral("QWidget { background: blue; } QScrollArea { background: blue; }"));
    // As Qt's advice for style sheets on widgets of one's own class goes.
    if (ask == Ask::StyledBackground)
        container->setAttribute(Qt::WA_StyledBackground);
    if (ask == Ask::OwnStyleSheet || ask == Ask::StyledBackground)
        container->setStyleSheet(QStringLiteral("background: blue;"));
    if (ask == Ask::Palette)
        Blue(container, true);
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
        Painted picture(Qt::red);
        picture.resize(240, 100);
        QWidget* plain = new QWidget;
        QWidget* transparent = new TransparentWidget;
        auto* child = new Painted(Qt::green, transparent);
        child->setGeometry(0, 0, 20, 20);
        for (QWidget* container : {plain, transparent}) {
            const int x = container == plain ? 0 : 120;
            if (ask == Ask::ScrollAreaWidget) {
                Blue(container);
                container->resize(100, 100);
                BareArea(&picture, x)->setWidget(container); // which turns the fill on
            } else {
                container->setParent(&picture);
                container->setGeometry(x, 0, 100, 100);
            }
        }
        QCoreApplication::processEvents(); // asked once the parents are settled
        for (QWidget* container : {plain, transparent})
            AskForBackground(ask, &picture, container);
        QVERIFY(TestSupport::ShowAndWait(&picture));
        const QPoint inTransparent = transparent->mapTo(&picture, QPoint(50, 50));
        QCOMPARE(TestSupport::Pixels(TestSupport::Render(&picture),
                                     {plain->mapTo(&picture, QPoint(50, 50)), inTransparent, child->mapTo(&picture, QPoint(10, 10))}),
                 Colours("blue red lime"));
        // Still after the style is applied again.
        picture.setStyleSheet(picture.styleSheet() + QStringLiteral(" "));
        transparent->setStyleSheet(transparent->styleSheet() + QStringLiteral(" "));
        QCOMPARE(TestSupport::Render(&picture).pixelColor(inTransparent), QColor(Qt::red));
        // And when it is shown again after someone turned the fill on.
        transparent->setAutoFillBackground(true);
        picture.hide();
        QVERIFY(TestSupport::ShowAndWait(&picture));
        QCOMPARE(TestSupport::Render(&picture).pixelColor(inTransparent), QColor(Qt::red));
    }

    // Moved into a shown scroll area after it was shown itself: setWidget() turns the fill
    // on, and it is undone before the next paint. The same for a plain widget of the
    // user's, shown and styled before, in a transparent area.
    void movedIntoAScrollArea()
    {
        Painted picture(Qt::red);
        picture.resize(240, 100);
        auto* transparent = new TransparentWidget(&picture);
        transparent->setGeometry(0, 0, 100, 100);
        QScrollArea* area = BareArea(&picture, 120);
        QVERIFY(TestSupport::ShowAndWait(&picture));
        Blue(transparent);
        area->setWidget(transparent);
        QVERIFY(transparent->isVisible());
        QCoreApplication::processEvents();
        QCOMPARE(TestSupport::Render(&picture).pixelColor(170, 50), QColor(Qt::red));

        auto* scrollable = new ScrollableTransparentWidget(&picture);
        auto* own = new QWidget(&picture);
        own->setStyleSheet(QStringLiteral("background: blue;"));
        for (QWidget* widget : {static_cast<QWidget*>(scrollable), own}) {
            widget->setGeometry(0, 0, 100, 100);
            widget->show();
        }
        QCOMPARE(TestSupport::Render(&picture).pixelColor(50, 50), QColor(Qt::blue));
        scrollable->setWidget(own);
        QCoreApplication::processEvents();
        QCOMPARE(TestSupport::Render(&picture).pixelColor(50, 50), QColor(Qt::red));
        own->setStyleSheet(QStringLiteral("background: blue; border: none;"));
        QCOMPARE(TestSupport::Render(&picture).pixelColor(50, 50), QColor(Qt::red));
    }

    void scrollableTransparentWidget_data() { AddRows(); }
    // Neither the area, its viewport nor its content paints; a QScrollArea asked the same
    // does. No frame either; the scroll bar still paints.
    void scrollableTransparentWidget()
    {
        QFETCH(Ask, ask);
        Painted picture(Qt::red);
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
        (new QVBoxLayout(transparent->GetContent()))->addSpacing(300);
        for (QScrollArea* area : std::initializer_list<QScrollArea*>{plain, transparent}) {
            if (ask == Ask::ScrollAreaWidget) { // a widget of the user's own, given through setWidget()
                auto* own = new QWidget;
                Blue(own);
                own->setMinimumHeight(300);
                area->setWidget(own);
            }
            AskForBackground(ask, &picture, area);
            if (ask == Ask::Palette) {
                Blue(area->viewport(), true);
                Blue(area->widget(), true);
            }
        }
        QVERIFY(TestSupport::ShowAndWait(&picture));
        QVERIFY(transparent->verticalScrollBar()->isVisible());
        const QImage image = TestSupport::Render(&picture);
        const QPoint middle(40, 50);
        QVERIFY2(image.pixelColor(middle) != QColor(Qt::red), qPrintable(image.pixelColor(middle).name()));
        // The corner where a frame would be, and the middle.
        QCOMPARE(TestSupport::Pixels(image, {QPoint(120, 0), middle + QPoint(120, 0)}), Colours("red red"));
        const QScrollBar* bar = transparent->verticalScrollBar();
        QVERIFY(image.pixelColor(bar->mapTo(&picture, QPoint(bar->width() / 2, bar->height() - 4))) != QColor(Qt::red));
    }
};

QTEST_MAIN(TestTransparentWidgets)
#include "tst_transparent_widgets.moc"
