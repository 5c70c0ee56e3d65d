#include <qt_halvo/widgets/containers/button_container.h>
#include <qt_halvo/widgets/input/custom_line_edit.h>

#include "test_support.h"

using OrvantaQT::ButtonContainer;

namespace {

// The Enter and Leave events one widget gets, and its moves, as its event filters see them.
class PointerLog : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
            lines << QLatin1String(event->type() == QEvent::Enter ? "Enter" : "Leave");
        moves += event->type() == QEvent::MouseMove ? 1 : 0;
        return false;
    }
    QStringList lines;
    int moves = 0;
};

// As styles without a general layout spacing (macOS's), which give it per pair of controls.
class PairwiseSpacingStyle : public TestSupport::SpacingStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_LayoutHorizontalSpacing ? -1 : SpacingStyle::pixelMetric(metric, option, widget);
    }
};

QPushButton* Button(const char* name)
{
    auto* button = new QPushButton(QLatin1String(name));
    button->setObjectName(QLatin1String(name));
    return button;
}

QString Names(const QVector<QWidget*>& widgets)
{
    QStringList names;
    for (const QWidget* widget : widgets)
        names << widget->objectName();
    return names.join(QLatin1Char(' '));
}

} // namespace

class TestButtonContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spacing_data()
    {
        QTest::addColumn<bool>("pairwise"); // the style has no general metric
        QTest::addColumn<int>("set");       // -1: set to 0 and reset
        QTest::addColumn<int>("gap");
        QTest::newRow("the style's metric") << false << -1 << 7;
        QTest::newRow("the style's pair spacing") << true << -1 << 3;
        QTest::newRow("set") << true << 11 << 11;
        QTest::newRow("none") << false << 0 << 0;
    }
    // Buttons in the order added and inserted, without margins, as far apart as the style
    // says (its metric for layouts, or where it has none, its spacing of two push buttons)
    // unless a spacing is set.
    void spacing()
    {
        QFETCH(bool, pairwise);
        QFETCH(int, set);
        QFETCH(int, gap);
        TestSupport::SpacingStyle metricStyle;
        PairwiseSpacingStyle pairwiseStyle;
        ButtonContainer row;
        row.setStyle(pairwise ? static_cast<QStyle*>(&pairwiseStyle) : &metricStyle);
        row.AddButton(Button("B"));
        row.InsertButton(0, Button("A"));
        row.InsertButton(99, Button("C"));
        row.AddButton(row.Buttons().at(0)); // moved, not doubled
        QCOMPARE(Names(row.Buttons()), QStringLiteral("B C A"));
        row.SetSpacing(qMax(set, 0));
        if (set < 0)
            QVERIFY(row.metaObject()->property(row.metaObject()->indexOfProperty("spacing")).reset(&row));
        QCOMPARE(row.GetSpacing(), set);
        row.resize(row.sizeHint());
        QVERIFY(TestSupport::ShowAndWait(&row));
        const QVector<QWidget*> buttons = row.Buttons();
        QCOMPARE(buttons[1]->x() - buttons[0]->geometry().right() - 1, gap);
        QCOMPARE(buttons[2]->x() - buttons[1]->geometry().right() - 1, gap);
        QCOMPARE(QRect(buttons[0]->pos(), buttons[2]->geometry().bottomRight()), row.rect());
    }

    void pointerReachesFilters_data()
    {
        QTest::addColumn<QString>("path"); // places the pointer goes, from outside
        QTest::addColumn<QString>("seen");
        QTest::newRow("over the row and out") << "row out" << "Enter Leave";
        QTest::newRow("onto a button and back") << "row button row out" << "Enter Leave";
        QTest::newRow("straight onto a button, out from it") << "button out" << "Enter Leave";
        QTest::newRow("in and out twice") << "row out button row out" << "Enter Leave Enter Leave";
    }
    // Filters on the row learn when the pointer comes over it and when it leaves it;
    // passing onto one of its buttons and back is still over the row, and moves without a
    // button held reach them (mouse tracking).
    void pointerReachesFilters()
    {
        QFETCH(QString, path);
        QFETCH(QString, seen);
        QWidget window;
        window.setGeometry(200, 200, 300, 120);
        auto* row = new ButtonContainer(&window);
        row->setGeometry(20, 20, 240, 60);
        row->AddStretch();
        row->AddButton(Button("button"));
        QVERIFY(TestSupport::ShowAndWait(&window));
        PointerLog log;
        row->installEventFilter(&log);
        for (const QString& place : path.split(QLatin1Char(' '))) {
            QWidget* target = place == QLatin1String("out") ? &window : row->findChild<QWidget*>(place);
            target = target ? target : row;
            TestSupport::PointerTo(target, QPoint(5, 5));
            QCOMPARE(row->underMouse(), target != &window);
            const int moves = log.moves;
            TestSupport::PointerTo(target, QPoint(8, 8));
            QCOMPARE(log.moves > moves, target == row);
        }
        QCOMPARE(log.lines.join(QLatin1Char(' ')), seen);
    }

    // One warning each, and the row as it was.
    void badInput()
    {
        QWidget parent;
        auto* row = new ButtonContainer(&parent);
        row->SetSpacing(2);
        row->AddButton(Button("Only"));
        QLabel stranger;
        stranger.setObjectName(QStringLiteral("Stranger"));
        const LogCapture::Mark mark;
        row->InsertButton(0, nullptr);
        row->AddButton(&parent);
        row->RemoveButton(&stranger);
        row->SetSpacing(-4);
        QCOMPARE(mark.Texts(), QStringList({"3 ButtonContainer: no button to insert",
                                            "3 ButtonContainer: a container cannot hold itself or its own parent",
                                            "3 ButtonContainer: Stranger is not in the row",
                                            "3 ButtonContainer: spacing -4 is negative; ResetSpacing() takes the style's"}));
        QCOMPARE(Names(row->Buttons()), QStringLiteral("Only"));
        QCOMPARE(row->GetSpacing(), 2);
        QWidget* only = row->Buttons().first();
        row->RemoveButton(only);
        QCOMPARE(row->Count(), 0);
        row->InsertStretch(99);
        row->InsertStretch(-5);
        QCOMPARE(row->Count(), 2);
        QVERIFY(!only->parentWidget() && only->isHidden());
        delete only;
    }

    // The line edit's left controls sit in a ButtonContainer named for style sheets, its row
    // without margins or spacing: a stretch, then the stack of controls.
    void customLineEditUsesIt()
    {
        OrvantaQT::CustomLineEdit edit;
        auto* container = qobject_cast<ButtonContainer*>(edit.findChild<QWidget*>(QStringLiteral("ButtonContainer")));
        QVERIFY(container);
        QCOMPARE(container->accessibleName(), QStringLiteral("CustomLineEdit_ButtonContainer"));
        QCOMPARE(container->sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred));
        QVERIFY(container->hasMouseTracking());
        QLayout* layout = container->layout();
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 2);
        QVERIFY(layout->itemAt(0)->spacerItem());
        QVERIFY(qobject_cast<QStackedWidget*>(layout->itemAt(1)->widget()));
    }
};

QTEST_MAIN(TestButtonContainer)
#include "tst_button_container.moc"
