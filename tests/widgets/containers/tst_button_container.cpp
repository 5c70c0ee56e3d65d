#include <qt_halvo/widgets/containers/button_container.h>
#include <qt_halvo/widgets/input/custom_line_edit.h>

#include "test_support.h"

#include <functional>

using OrvantaQT::ButtonContainer;

namespace {

// The Enter and Leave events one widget gets, and its moves, as its event filters see them.
class PointerLog : public QObject
{
public:
    explicit PointerLog(QWidget* watched)
        : m_watched(watched)
    {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != m_watched)
            return false;
        if (event->type() == QEvent::Enter)
            lines << QStringLiteral("Enter");
        else if (event->type() == QEvent::Leave)
            lines << QStringLiteral("Leave");
        else if (event->type() == QEvent::MouseMove && !static_cast<QMouseEvent*>(event)->buttons())
            ++moves;
        return false;
    }
    QStringList lines;
    int moves = 0;

private:
    QWidget* m_watched;
};

// The gaps between neighbouring widgets of a row, left to right.
QVector<int> Gaps(const QVector<QWidget*>& row)
{
    QVector<int> gaps;
    for (int i = 1; i < row.size(); ++i)
        gaps << row[i]->x() - (row[i - 1]->geometry().right() + 1);
    return gaps;
}

QPushButton* Button(const char* text)
{
    auto* button = new QPushButton(QLatin1String(text));
    button->setObjectName(QLatin1String(text));
    return button;
}

QStringList Names(const QVector<QWidget*>& widgets)
{
    QStringList names;
    for (const QWidget* widget : widgets)
        names << widget->objectName();
    return names;
}

using Action = std::function<void(ButtonContainer*)>;

// As styles without a general layout spacing (macOS's), which say it per pair of controls.
class PairwiseSpacingStyle : public TestSupport::SpacingStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_LayoutHorizontalSpacing ? -1 : SpacingStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace

Q_DECLARE_METATYPE(Action)

class TestButtonContainer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStringLiteral("Fusion")); }

    void spacing_data()
    {
        QTest::addColumn<bool>("pairwise"); // the style has no general metric
        QTest::addColumn<Action>("change");
        QTest::addColumn<int>("spacing");
        QTest::addColumn<int>("gap");
        const Action untouched = [](ButtonContainer*) {};
        const Action set = [](ButtonContainer* row) { row->SetSpacing(11); };
        const Action none = [](ButtonContainer* row) { row->SetSpacing(0); };
        const Action reset = [](ButtonContainer* row) {
            row->SetSpacing(11);
            row->ResetSpacing();
        };
        const Action propertyReset = [](ButtonContainer* row) {
            row->SetSpacing(11);
            QVERIFY(row->metaObject()->property(row->metaObject()->indexOfProperty("spacing")).reset(row));
        };
        QTest::newRow("the style's metric") << false << untouched << -1 << 7;
        QTest::newRow("the style's pair spacing") << true << untouched << -1 << 3;
        QTest::newRow("set") << false << set << 11 << 11;
        QTest::newRow("set, pairwise style") << true << set << 11 << 11;
        QTest::newRow("none") << false << none << 0 << 0;
        QTest::newRow("set and reset") << false << reset << -1 << 7;
        QTest::newRow("set and reset, pairwise style") << true << reset << -1 << 3;
        QTest::newRow("reset through the property") << false << propertyReset << -1 << 7;
    }
    // Without a spacing of its own the row takes the style's: its metric for layouts (7),
    // or where the style has none, what it says for two push buttons side by side (3). It
    // has no margins.
    void spacing()
    {
        QFETCH(bool, pairwise);
        QFETCH(Action, change);
        QFETCH(int, spacing);
        QFETCH(int, gap);
        TestSupport::SpacingStyle metricStyle;
        PairwiseSpacingStyle pairwiseStyle;
        ButtonContainer row;
        row.setStyle(pairwise ? static_cast<QStyle*>(&pairwiseStyle) : &metricStyle);
        for (const char* text : {"One", "Two", "Three"})
            row.AddButton(Button(text));
        change(&row);
        row.resize(row.sizeHint());
        row.show();
        QVERIFY(QTest::qWaitForWindowExposed(&row));
        QCOMPARE(row.GetSpacing(), spacing);
        const QVector<QWidget*> buttons = row.Buttons();
        QCOMPARE(Gaps(buttons), QVector<int>({gap, gap}));
        QCOMPARE(buttons.first()->x(), 0);
        QCOMPARE(buttons.last()->geometry().right(), row.width() - 1);
        QCOMPARE(buttons.first()->height(), row.height());
    }

    // Insertions at every end and in between, a widget added again moving rather than
    // doubling, stretches that count as items and push the buttons after them to the end.
    void addAndInsert()
    {
        ButtonContainer row;
        row.SetSpacing(0);
        row.AddButton(Button("B"));
        row.InsertButton(0, Button("A"));
        row.InsertButton(99, Button("D"));
        row.InsertButton(-1, Button("E"));
        row.InsertButton(2, Button("C"));
        QCOMPARE(Names(row.Buttons()), QStringList({"A", "B", "C", "D", "E"}));
        QWidget* b = row.Buttons().at(1);
        QCOMPARE(b->parentWidget(), &row);
        row.AddButton(b);
        QCOMPARE(Names(row.Buttons()), QStringList({"A", "C", "D", "E", "B"}));
        QCOMPARE(row.Count(), 5);

        row.InsertStretch(1);
        row.AddStretch();
        QCOMPARE(row.Count(), 7);
        QCOMPARE(Names(row.Buttons()), QStringList({"A", "C", "D", "E", "B"}));
        row.resize(row.sizeHint().width() + 200, row.sizeHint().height());
        row.show();
        QVERIFY(QTest::qWaitForWindowExposed(&row));
        const QVector<QWidget*> buttons = row.Buttons();
        // Two stretches share the room: A at the start, the rest after the first half.
        QCOMPARE(buttons[0]->x(), 0);
        QCOMPARE(buttons[1]->x(), buttons[0]->width() + 100);
        QCOMPARE(Gaps(buttons.mid(1)), QVector<int>({0, 0, 0}));
        QCOMPARE(buttons[4]->geometry().right(), row.width() - 101);
    }

    // A removed button leaves the row and the container, hidden, for its owner to keep.
    void remove()
    {
        ButtonContainer row;
        QPointer<QPushButton> kept = Button("Kept");
        QPointer<QPushButton> removed = Button("Removed");
        row.AddButton(kept);
        row.AddButton(removed);
        row.show();
        QVERIFY(QTest::qWaitForWindowExposed(&row));
        row.RemoveButton(removed);
        QCOMPARE(Names(row.Buttons()), QStringList({"Kept"}));
        QCOMPARE(row.Count(), 1);
        QVERIFY(removed);
        QCOMPARE(removed->parentWidget(), nullptr);
        QVERIFY(removed->isHidden());
        delete removed;
    }

    void pointerReachesFilters_data()
    {
        QTest::addColumn<QString>("path"); // places the pointer goes, from outside
        QTest::addColumn<QStringList>("seen");
        QTest::newRow("over the row and out") << "row out" << QStringList({"Enter", "Leave"});
        QTest::newRow("onto a button and back") << "row button row out" << QStringList({"Enter", "Leave"});
        QTest::newRow("straight onto a button, out from it") << "button out" << QStringList({"Enter", "Leave"});
        QTest::newRow("from a button back and out") << "button row out" << QStringList({"Enter", "Leave"});
        QTest::newRow("in and out twice") << "row out button row out" << QStringList({"Enter", "Leave", "Enter", "Leave"});
    }
    // Filters installed on the row learn when the pointer comes over it and when it leaves
    // it; passing onto one of its buttons and back is still over the row, and moves
    // without a button held reach them (mouse tracking).
    void pointerReachesFilters()
    {
        QFETCH(QString, path);
        QFETCH(QStringList, seen);
        QCursor::setPos(0, 0);
        QWidget window;
        window.setGeometry(200, 200, 300, 120);
        auto* row = new ButtonContainer(&window);
        row->setGeometry(20, 20, 240, 60);
        row->AddStretch();
        auto* button = Button("Button");
        button->setFixedSize(80, 40);
        row->AddButton(button);
        QVERIFY(row->hasMouseTracking());
        QVERIFY(TestSupport::ShowAndWait(&window));
        PointerLog log(row);
        const QMap<QString, QWidget*> places{{"row", row}, {"button", button}, {"out", &window}};
        for (const QString& place : path.split(QLatin1Char(' '))) {
            QWidget* target = places.value(place);
            const QPoint point = target == &window ? QPoint(5, 5) : QPoint(10, 10);
            QCursor::setPos(target->mapToGlobal(point));
            QTRY_COMPARE(QApplication::widgetAt(QCursor::pos()), target);
            QTRY_COMPARE(row->underMouse(), target != &window);
            if (target == row) { // a move within the row, as the pointer goes on
                const int moves = log.moves;
                QCursor::setPos(target->mapToGlobal(point + QPoint(3, 3)));
                QTRY_VERIFY(log.moves > moves);
            }
        }
        QTRY_COMPARE(log.lines, seen);
    }

    void badInput_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<QString>("logged");
        QTest::newRow("null added") << Action([](ButtonContainer* row) { row->AddButton(nullptr); })
                                    << "3 ButtonContainer: no button to insert";
        QTest::newRow("null inserted") << Action([](ButtonContainer* row) { row->InsertButton(0, nullptr); })
                                       << "3 ButtonContainer: no button to insert";
        QTest::newRow("itself") << Action([](ButtonContainer* row) { row->AddButton(row); })
                                << "3 ButtonContainer: a container cannot hold itself or its own parent";
        QTest::newRow("its parent") << Action([](ButtonContainer* row) { row->AddButton(row->parentWidget()); })
                                    << "3 ButtonContainer: a container cannot hold itself or its own parent";
        QTest::newRow("null removed") << Action([](ButtonContainer* row) { row->RemoveButton(nullptr); })
                                      << "3 ButtonContainer: a null widget is not in the row";
        QTest::newRow("stranger removed") << Action([](ButtonContainer* row) {
            QLabel stranger;
            stranger.setObjectName(QStringLiteral("Stranger"));
            row->RemoveButton(&stranger);
        }) << "3 ButtonContainer: Stranger is not in the row";
        QTest::newRow("negative spacing") << Action([](ButtonContainer* row) { row->SetSpacing(-4); })
                                          << "3 ButtonContainer: spacing -4 is negative; ResetSpacing() takes the style's";
    }
    // One line each, and the row as it was.
    void badInput()
    {
        QFETCH(Action, action);
        QFETCH(QString, logged);
        QWidget parent;
        auto* row = new ButtonContainer(&parent);
        row->SetSpacing(2);
        row->AddButton(Button("Only"));
        const LogCapture::Mark mark;
        action(row);
        QCOMPARE(mark.Texts(), QStringList(logged));
        QCOMPARE(Names(row->Buttons()), QStringList({"Only"}));
        QCOMPARE(row->Count(), 1);
        QCOMPARE(row->GetSpacing(), 2);
        QCOMPARE(row->parentWidget(), &parent);
    }

    // The line edit's left controls sit in a ButtonContainer named for style sheets, its row
    // without margins or spacing: a stretch, then the stack of controls.
    void customLineEditUsesIt()
    {
        OrvantaQT::CustomLineEdit edit;
        auto* container = qobject_cast<ButtonContainer*>(edit.findChild<QWidget*>(QStringLiteral("ButtonContainer")));
        QVERIFY(container);
        QCOMPARE(container->accessibleName(), QStringLiteral("CustomLineEdit_ButtonContainer"));
        QCOMPARE(container->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(container->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
        QVERIFY(container->testAttribute(Qt::WA_MouseTracking));
        QLayout* layout = container->layout();
        QCOMPARE(layout, static_cast<QLayout*>(container->RowLayout()));
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 2);
        QVERIFY(layout->itemAt(0)->spacerItem());
        QVERIFY(qobject_cast<QStackedWidget*>(layout->itemAt(1)->widget()));
        QCOMPARE(container->Buttons(), QVector<QWidget*>({layout->itemAt(1)->widget()}));
    }
};

QTEST_MAIN(TestButtonContainer)
#include "tst_button_container.moc"
