#include <qt_halvo/layouts/resize_grip.h>
#include <qt_halvo/layouts/size_managed_container.h>

#include "test_support.h"

using OrvantaQT::ResizeGrip;
using OrvantaQT::SizeManagedContainer;

namespace {

// Drags the grip by offset, in steps, as a user does. The grip moves as the container
// changes, so the mouse is followed on the screen.
void Drag(ResizeGrip* grip, const QPoint& offset)
{
    const QPoint start = grip->mapToGlobal(grip->rect().center());
    const auto send = [grip](QEvent::Type type, const QPoint& global, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, grip->mapFromGlobal(global), global, button, buttons, Qt::NoModifier);
        QApplication::sendEvent(grip, &event);
    };
    send(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= 4; ++step)
        send(QEvent::MouseMove, start + offset * step / 4, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, start + offset, Qt::LeftButton, Qt::NoButton);
}

// A window with the container between two labels in a column, and a stretch below.
struct Column
{
    QWidget window;
    QLabel* above = new QLabel(QStringLiteral("above"));
    SizeManagedContainer* container;
    QLabel* below = new QLabel(QStringLiteral("below"));

    explicit Column(Qt::Edges edges)
        : container(new SizeManagedContainer(nullptr, edges))
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(above);
        auto* row = new QHBoxLayout;
        row->addWidget(container);
        row->addStretch();
        layout->addLayout(row);
        layout->addWidget(below);
        layout->addStretch();
        container->setMinimumSize(60, 40);
        container->setMaximumSize(400, 300);
        container->SetManagedSize(QSize(150, 100));
        window.resize(600, 500);
    }
};

} // namespace

class TestSizeManagedContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("qt_halvo_tests"));
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settingsFolder.path());
    }

    // The grip resizes the container inside the window, within its minimum and maximum:
    // the window keeps its size, the widget below moves with the container's bottom.
    void dragResizesTheContainer_data()
    {
        QTest::addColumn<int>("edges");
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<QSize>("size");
        const int corner = Qt::BottomEdge | Qt::RightEdge;
        QTest::newRow("corner, larger") << corner << QPoint(40, 30) << QSize(190, 130);
        QTest::newRow("corner, smaller") << corner << QPoint(-50, -20) << QSize(100, 80);
        QTest::newRow("corner, to the minimum") << corner << QPoint(-500, -500) << QSize(60, 40);
        QTest::newRow("corner, to the maximum") << corner << QPoint(900, 900) << QSize(400, 300);
        QTest::newRow("bottom edge: the height only") << int(Qt::BottomEdge) << QPoint(40, 30) << QSize(0, 130);
        QTest::newRow("right edge: the width only") << int(Qt::RightEdge) << QPoint(40, 30) << QSize(190, 0);
    }
    void dragResizesTheContainer()
    {
        QFETCH(int, edges);
        QFETCH(QPoint, offset);
        QFETCH(QSize, size);
        Column column{Qt::Edges(edges)};
        QVERIFY(TestSupport::ShowAndWait(&column.window));
        const QSize window = column.window.size();
        const QSize before = column.container->size();
        TestSupport::SignalLog log(column.container, {"SizeChanged(QSize)"});

        Drag(column.container->GetGrip(), offset);
        QTRY_COMPARE(column.container->size(),
                     QSize(size.width() ? size.width() : before.width(), size.height() ? size.height() : before.height()));
        QCOMPARE(column.window.size(), window);
        QCOMPARE(column.below->y(), column.container->geometry().bottom() + 1 + column.window.layout()->spacing());
        const QSize managed = column.container->GetManagedSize();
        QCOMPARE(log.lines.last(), QStringLiteral("SizeChanged(QSize(%1, %2))").arg(managed.width()).arg(managed.height()));
        // The grip stays in its corner or along its edge.
        const QRect grip = column.container->GetGrip()->geometry();
        QCOMPARE(grip.bottom(), column.container->height() - 1);
        if (edges & Qt::RightEdge)
            QCOMPARE(grip.right(), column.container->width() - 1);
    }

    // On its own, a grip on the left or top edge moves the container so that the far
    // edge stays.
    void freeContainerKeepsItsFarEdge_data()
    {
        QTest::addColumn<int>("edges");
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<QRect>("geometry");
        QTest::newRow("top left, larger") << int(Qt::TopEdge | Qt::LeftEdge) << QPoint(-20, -10) << QRect(30, 40, 170, 110);
        QTest::newRow("left, smaller") << int(Qt::LeftEdge) << QPoint(30, 50) << QRect(80, 50, 120, 100);
        QTest::newRow("bottom right") << int(Qt::BottomEdge | Qt::RightEdge) << QPoint(10, 10) << QRect(50, 50, 160, 110);
    }
    void freeContainerKeepsItsFarEdge()
    {
        QFETCH(int, edges);
        QFETCH(QPoint, offset);
        QFETCH(QRect, geometry);
        QWidget window;
        window.resize(400, 400);
        // The window's layout holds other widgets, not the container.
        (new QVBoxLayout(&window))->addWidget(new QLabel(QStringLiteral("laid out")), 0, Qt::AlignBottom);
        auto* container = new SizeManagedContainer(&window, Qt::Edges(edges));
        container->setGeometry(50, 50, 150, 100);
        QVERIFY(TestSupport::ShowAndWait(&window));
        Drag(container->GetGrip(), offset);
        QCOMPARE(container->geometry(), geometry);
        QCOMPARE(container->GetManagedSize(), geometry.size());
    }

    // The cursor shows the directions; the grip's place for each edge.
    void gripShapes_data()
    {
        QTest::addColumn<int>("edges");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QRect>("place"); // in a 200 x 100 container
        QTest::addColumn<QString>("policy"); // fixed in the directions it resizes in
        const int side = QApplication::style()->pixelMetric(QStyle::PM_SizeGripSize);
        QTest::newRow("bottom right") << int(Qt::BottomEdge | Qt::RightEdge) << int(Qt::SizeFDiagCursor)
                                      << QRect(200 - side, 100 - side, side, side) << "Fixed Fixed";
        QTest::newRow("top left") << int(Qt::TopEdge | Qt::LeftEdge) << int(Qt::SizeFDiagCursor) << QRect(0, 0, side, side) << "Fixed Fixed";
        QTest::newRow("bottom left") << int(Qt::BottomEdge | Qt::LeftEdge) << int(Qt::SizeBDiagCursor)
                                     << QRect(0, 100 - side, side, side) << "Fixed Fixed";
        QTest::newRow("bottom") << int(Qt::BottomEdge) << int(Qt::SizeVerCursor) << QRect(0, 94, 200, 6) << "Preferred Fixed";
        QTest::newRow("right") << int(Qt::RightEdge) << int(Qt::SizeHorCursor) << QRect(194, 0, 6, 100) << "Fixed Preferred";
    }
    void gripShapes()
    {
        QFETCH(int, edges);
        QFETCH(int, cursor);
        QFETCH(QRect, place);
        QFETCH(QString, policy);
        SizeManagedContainer container;
        container.SetGripEdges(Qt::Edges(edges));
        container.resize(200, 100);
        QVERIFY(TestSupport::ShowAndWait(&container));
        QCOMPARE(int(container.GetGrip()->cursor().shape()), cursor);
        QCOMPARE(container.GetGrip()->geometry(), place);
        QCOMPARE(container.GetGrip()->objectName(), QStringLiteral("ResizeGrip"));
        const QSizePolicy actual = container.sizePolicy();
        const auto name = [](QSizePolicy::Policy value) {
            return QString::fromLatin1(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(value));
        };
        QCOMPARE(name(actual.horizontalPolicy()) + QLatin1Char(' ') + name(actual.verticalPolicy()), policy);
    }

    // The size is saved when a drag ends and comes back with the key.
    void sizeIsKeptInSettings()
    {
        {
            Column column(Qt::BottomEdge | Qt::RightEdge);
            column.container->SetSettingsKey(QStringLiteral("panels/notes"));
            QVERIFY(TestSupport::ShowAndWait(&column.window));
            Drag(column.container->GetGrip(), QPoint(30, 20));
            QCOMPARE(column.container->GetManagedSize(), QSize(180, 120));
        }
        QCOMPARE(QSettings().value(QStringLiteral("panels/notes")).toSize(), QSize(180, 120));
        SizeManagedContainer restored;
        TestSupport::SignalLog log(&restored, {"SizeChanged(QSize)"});
        restored.SetSettingsKey(QStringLiteral("panels/notes"));
        QCOMPARE(restored.GetManagedSize(), QSize(180, 120));
        QCOMPARE(restored.size(), QSize(180, 120));
        QCOMPARE(log.Take(), QStringList({"SizeChanged(QSize(180, 120))"}));
        SizeManagedContainer fresh;
        fresh.SetSettingsKey(QStringLiteral("panels/unknown"));
        QVERIFY(!fresh.GetManagedSize().isValid());
    }

    void badInput()
    {
        const LogCapture::Mark mark;
        SizeManagedContainer container;
        container.SetManagedSize(QSize(100, 80));
        container.SetManagedSize(QSize(-5, 10));
        QCOMPARE(container.GetManagedSize(), QSize(100, 80));
        container.SetGripEdges(Qt::LeftEdge | Qt::RightEdge);
        QCOMPARE(container.GetGripEdges(), Qt::BottomEdge | Qt::RightEdge);
        auto* content = new QLabel(QStringLiteral("content"));
        container.SetWidget(content);
        QPointer<QLabel> first = content;
        container.SetWidget(new QLabel(QStringLiteral("second")));
        QVERIFY(!first);
        container.SetWidget(nullptr);
        QCOMPARE(container.GetWidget(), nullptr);
        QCOMPARE(mark.Texts(), QStringList({"3 SizeManagedContainer: a size of -5 x 10 is refused",
                                            "3 ResizeGrip: edges 0x6 are no edge or corner; the grip keeps its own"}));
    }

private:
    QTemporaryDir m_settingsFolder;
};

QTEST_MAIN(TestSizeManagedContainer)
#include "tst_size_managed_container.moc"
