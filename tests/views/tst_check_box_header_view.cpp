#include <qt_halvo/views/check_box_header_view.h>

#include "accessibility_recorder.h"
#include "test_support.h"

using OrvantaQT::CheckBoxHeaderView;

namespace {

// Check cells as letters, one a row: x checked, - unchecked, p partly, n checked but not user-checkable,
// v user-checkable without check data; X and _ are rows the proxy filters out (column 1 "h<row>", else
// "r<row>"). The rows whose check state is read are noted.
class Model : public QStandardItemModel
{
public:
    explicit Model(const QString& rows = QString()) : QStandardItemModel(0, 3) { Add(0, rows); }
    void Add(int at, const QString& rows)
    {
        for (const QChar letter : rows) {
            auto* check = new QStandardItem;
            check->setFlags(letter == 'n' ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
            if (letter != 'v')
                check->setData(letter == 'p' ? Qt::PartiallyChecked : letter == '-' || letter == '_' ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
            insertRow(at++, {check, new QStandardItem(QStringLiteral("%1%2").arg(QString("X_").contains(letter) ? 'h' : 'r').arg(rowCount()))});
        }
    }
    QString Rows() const
    {
        QString rows;
        for (int row = 0; row < rowCount(); ++row) {
            const QVariant state = item(row)->data(Qt::CheckStateRole);
            const QChar letter = !item(row)->isCheckable() ? 'n' : !state.isValid() ? 'v' : "-px"[state.toInt()];
            rows += item(row, 1)->text().startsWith('h') ? QChar(letter == 'x' ? 'X' : '_') : letter;
        }
        return rows;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == Qt::CheckStateRole)
            reads << QString::number(index.row());
        return QStandardItemModel::data(index, role);
    }
    mutable QStringList reads;
};

// A header over the rows of a filter proxy, which says "<checked>/<counted> <state> <source rows>".
struct Host
{
    Model source, other{QStringLiteral("xx")};
    QPointer<QSortFilterProxyModel> proxy = new QSortFilterProxyModel;
    QPointer<CheckBoxHeaderView> header = new CheckBoxHeaderView;
    explicit Host(const QString& rows) : source(rows)
    {
        proxy->setSourceModel(&source);
        proxy->setFilterKeyColumn(1);
        proxy->setFilterRegularExpression(QStringLiteral("^r"));
        source.setHeaderData(0, Qt::Horizontal, QStringLiteral("Pick"));
        header->setObjectName(QStringLiteral("header"));
        header->setModel(proxy);
        header->setSortIndicatorShown(true);
        header->setSectionsClickable(true);
        header->resize(360, 30);
    }
    ~Host() { delete header; delete proxy; }
    QString Said() const
    {
        const char* state = header ? QMetaEnum::fromType<Qt::CheckState>().valueToKey(header->GetCheckState()) : "deleted";
        return QStringLiteral("%1/%2 %3 %4").arg(header ? header->CheckedCount() : 0).arg(header ? header->RowCount() : 0).arg(state, source.Rows());
    }
    QPoint Box() const { return header->CheckBoxRect().center(); }
    void Act(bool press)
    {
        QAccessibleActionInterface* actions = QAccessible::queryAccessibleInterface(header)->child(0)->actionInterface();
        actions->doAction(press ? actions->pressAction() : actions->toggleAction());
    }
};

using Action = std::function<void(Host&)>;

// The states of the check boxes headers draw and where they go, and where cells draw theirs.
class RecordingStyle : public QProxyStyle
{
public:
    RecordingStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override
    {
        static const std::pair<StateFlag, const char*> names[] = {{State_Enabled, "Enabled"}, {State_On, "On"}, {State_Off, "Off"},
            {State_NoChange, "NoChange"}, {State_MouseOver, "MouseOver"}, {State_Sunken, "Sunken"}};
        QStringList flags;
        for (const auto& name : names)
            flags << (option->state & name.first ? name.second : "");
        if (element == PE_IndicatorCheckBox && widget->inherits("OrvantaQT::CheckBoxHeaderView"))
            boxes << flags.join(' ').simplified(), boxRects << option->rect;
        if (element == PE_IndicatorItemViewItemCheck)
            cellChecks << option->rect;
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override
    {
        const auto* header = widget->inherits("OrvantaQT::CheckBoxHeaderView") ? qstyleoption_cast<const QStyleOptionHeader*>(option) : nullptr;
        if (header && element == CE_HeaderLabel)
            labels[header->section] = option->rect;
        if (header && element == CE_HeaderSection && header->section == 0)
            sectionStates << int(option->state);
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    mutable QStringList boxes;
    mutable QVector<QRect> boxRects, cellChecks;
    mutable QMap<int, QRect> labels;
    mutable QVector<int> sectionStates;
};

RecordingStyle* g_style = nullptr;

template <typename T>
T Fetch(const char* name) // QFETCH as an expression
{
    return *static_cast<T*>(QTest::qData(name, qMetaTypeId<T>()));
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestCheckBoxHeaderView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(g_style = new RecordingStyle);
        qRegisterMetaType<Qt::SortOrder>();
        QTRY_VERIFY(QAccessible::isActive());
    }

    void changes_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<Action>("change");
        for (const char* column : {"said", "reads", "signals", "announced", "logged"})
            QTest::addColumn<QString>(column); // announced: the changed states of the box's StateChanged events
        const Action none = [](Host&) {}, toggle = [](Host& h) { h.Act(false); }, press = [](Host& h) { h.Act(true); };
        const Action click = [](Host& h) { QTest::mouseClick(h.header->viewport(), Qt::LeftButton, {}, h.Box()); };
        const auto check = [](int row) { return [=](Host& h) { h.source.item(row)->setCheckState(Qt::Checked); }; };
        const auto during = [](const Action& what) { // what the first write of a click sets off
            return [=](Host& h) {
                auto* once = new QObject(&h.other);
                QObject::connect(&h.source, &QAbstractItemModel::dataChanged, once, [&h, what, once] { delete once, what(h); });
                h.header->Toggle();
            };
        };
        const QString checked = "CheckStateChanged(Checked)", unchecked = "CheckStateChanged(Unchecked)", mixed = "checked checkStateMixed";
        const QString out = "3 CheckBoxHeaderView: check column %1 is out of range", some = "xxx-----X_";
        QTest::newRow("0 of 10") << "----------" << none << "0/10 Unchecked ----------" << "" << "" << "" << "";
        QTest::newRow("3 of 10") << "xxx-------" << none << "3/10 PartiallyChecked xxx-------" << "" << "" << "" << "";
        QTest::newRow("10 of 10") << "xxxxxxxxxx" << none << "10/10 Checked xxxxxxxxxx" << "" << "" << "" << "";
        QTest::newRow("partly") << "xpx" << none << "2/3 PartiallyChecked xpx" << "" << "" << "" << "";
        QTest::newRow("partly only") << "pp" << none << "0/2 PartiallyChecked pp" << "" << "" << "" << "";
        QTest::newRow("not counted") << "xnvx" << none << "2/2 Checked xnvx" << "" << "" << "" << "";
        QTest::newRow("click, 0 of 10") << "----------" << click << "10/10 Checked xxxxxxxxxx" << "0 1 2 3 4 5 6 7 8 9" << checked << "checked" << "";
        QTest::newRow("click, 3 of 10") << "xxx-------" << click << "10/10 Checked xxxxxxxxxx" << "3 4 5 6 7 8 9" << checked << mixed << "";
        QTest::newRow("click, 10 of 10") << "xxxxxxxxxx" << click << "0/10 Unchecked ----------" << "0 1 2 3 4 5 6 7 8 9" << unchecked << "checked" << "";
        QTest::newRow("click, partly") << "xpx" << click << "3/3 Checked xxx" << "1" << checked << mixed << "";
        QTest::newRow("click, not counted") << "xnvx" << click << "0/2 Unchecked -nv-" << "0 3" << unchecked << "checked" << "";
        QTest::newRow("click, nothing to count") << "nv" << click << "0/0 Unchecked nv" << "" << "" << "" << "";
        QTest::newRow("click, filtered") << "X_x-_" << click << "2/2 Checked X_xx_" << "3" << checked << mixed << "";
        QTest::newRow("click, title") << "xxx-------" << Action([](Host& h) { QTest::mouseClick(h.header->viewport(), Qt::LeftButton, {}, h.Box() + QPoint(30, 0)); })
                                      << "3/10 PartiallyChecked xxx-------" << "" << "sortIndicatorChanged(0, AscendingOrder) sectionClicked(0)" << "" << "";
        QTest::newRow("double click") << "x-" << Action([=](Host& h) { // its second press comes as a double click
            click(h), QTest::mouseDClick(h.header->viewport(), Qt::LeftButton, {}, h.Box()), QTest::mouseRelease(h.header->viewport(), Qt::LeftButton, {}, h.Box());
        }) << "0/2 Unchecked --" << "1 0 1" << checked + ' ' + unchecked << mixed + ";checked" << "";
        QTest::newRow("toggled, 3 of 10") << "xxx-------" << toggle << "10/10 Checked xxxxxxxxxx" << "3 4 5 6 7 8 9" << checked << mixed << "";
        QTest::newRow("pressed, 10 of 10") << "xxxxxxxxxx" << press << "0/10 Unchecked ----------" << "0 1 2 3 4 5 6 7 8 9" << unchecked << "checked" << "";
        QTest::newRow("pressed, nothing to count") << "n" << press << "0/0 Unchecked n" << "" << "" << "" << "";
        QTest::newRow("one checked") << some << Action(check(5)) << "4/8 PartiallyChecked xxx--x--X_" << "5" << "" << "" << "";
        QTest::newRow("the rest checked") << some << Action([=](Host& h) { for (int row = 3; row < 8; ++row) check(row)(h); })
                                          << "8/8 Checked xxxxxxxxX_" << "3 4 5 6 7" << checked << mixed << "";
        QTest::newRow("one made not checkable") << some << Action([](Host& h) { h.source.item(0)->setCheckable(false); }) << "2/7 PartiallyChecked nxx-----X_" << "" << "" << "" << "";
        QTest::newRow("checked inserted") << some << Action([](Host& h) { h.source.Add(0, "x"); }) << "4/9 PartiallyChecked xxxx-----X_" << "0" << "" << "" << "";
        QTest::newRow("two appended") << some << Action([](Host& h) { h.source.Add(10, "--"); }) << "3/10 PartiallyChecked xxx-----X_--" << "10 11" << "" << "" << "";
        QTest::newRow("child rows") << some << Action([](Host& h) { h.source.item(4)->appendRow({new QStandardItem, new QStandardItem("r")}), h.source.item(4)->removeRow(0); })
                                    << "3/8 PartiallyChecked xxx-----X_" << "" << "" << "" << "";
        QTest::newRow("unchecked removed") << some << Action([](Host& h) { h.source.removeRows(3, 5); }) << "3/3 Checked xxxX_" << "" << checked << mixed << "";
        QTest::newRow("all removed") << some << Action([](Host& h) { h.source.removeRows(0, 10); }) << "0/0 Unchecked " << "" << unchecked << "checkStateMixed" << "";
        // Models whose signals do not add up are read again, not trusted.
        QTest::newRow("removal told one row off") << some << Action([](Host& h) {
            {
                const QSignalBlocker quiet(h.proxy.data());
                h.source.removeRows(6, 2);
            }
            QMetaObject::invokeMethod(h.proxy, "rowsRemoved", Q_ARG(QModelIndex, {}), Q_ARG(int, 7), Q_ARG(int, 8));
        }) << "3/6 PartiallyChecked xxx---X_" << "0 1 2 3 4 5" << "" << "" << "";
        QTest::newRow("insertion never made") << some << Action([](Host& h) {
            QMetaObject::invokeMethod(h.proxy, "rowsInserted", Q_ARG(QModelIndex, {}), Q_ARG(int, 8), Q_ARG(int, 8));
        }) << "3/8 PartiallyChecked xxx-----X_" << "0 1 2 3 4 5 6 7" << "" << "" << "";
        QTest::newRow("filter dropped") << some << Action([](Host& h) { h.proxy->setFilterRegularExpression(""); }) << "4/10 PartiallyChecked xxx-----X_" << "8 9" << "" << "" << "";
        QTest::newRow("reset") << some << Action([](Host& h) { h.proxy->setSourceModel(&h.other); }) << "2/2 Checked xxx-----X_" << "" << checked << mixed << "";
        QTest::newRow("sorted, then one checked") << some << Action([=](Host& h) { h.proxy->sort(1, Qt::DescendingOrder), check(5)(h); })
                                                  << "4/8 PartiallyChecked xxx--x--X_" << "7 6 5 4 3 2 1 0 5" << "" << "" << "";
        QTest::newRow("column inserted before") << some << Action([](Host& h) { QList<QStandardItem*> cells; while (cells.size() < 10) cells << new QStandardItem; h.source.insertColumn(0, cells); })
                                                << "0/0 Unchecked nnnnnnnnnn" << "" << unchecked << "checkStateMixed" << "";
        QTest::newRow("model deleted") << some << Action([](Host& h) { delete h.proxy; }) << "0/0 Unchecked xxx-----X_" << "" << unchecked << "" << "";
        QTest::newRow("no model") << some << Action([](Host& h) { h.header->setModel(nullptr); }) << "0/0 Unchecked xxx-----X_" << "" << unchecked << "" << "";
        QTest::newRow("column -5") << some << Action([](Host& h) { h.header->SetCheckColumn(-5), h.header->Toggle(); }) << "0/0 Unchecked xxx-----X_" << ""
                                   << unchecked << "" << out.arg(-5) + "; no check box";
        QTest::newRow("column 3 of 3, reset twice") << some << Action([](Host& h) { h.header->SetCheckColumn(3), h.proxy->invalidate(), h.proxy->setSourceModel(&h.other); })
                                                    << "0/0 Unchecked xxx-----X_" << "" << unchecked << "" << out.arg(3) + " (the model has 3 columns); no check box";
        QTest::newRow("reset while writing") << some << Action(during([](Host& h) { h.proxy->setSourceModel(&h.other); })) << "2/2 Checked xxxx----X_" << "3" << checked << mixed << "";
        QTest::newRow("replaced while writing") << some << Action(during([](Host& h) { h.header->setModel(&h.other); })) << "2/2 Checked xxxx----X_" << "3" << checked << mixed << "";
        QTest::newRow("deleted while writing") << some << Action(during([](Host& h) { delete h.header; })) << "0/0 deleted xxxx----X_" << "3" << "" << "" << "";
    }
    // What a click or a change of the model does to the rows and the box, reading the rows that
    // changed and no others; a bad column is logged once.
    void changes()
    {
        Host host(Fetch<QString>("rows"));
        QVERIFY(TestSupport::ShowAndWait(host.header));
        TestSupport::SignalLog log(host.header, {"CheckStateChanged(Qt::CheckState)", "sectionClicked(int)", "sortIndicatorChanged(int,Qt::SortOrder)"});
        TestSupport::AccessibilityRecorder recorder;
        LogCapture::Mark mark;
        host.source.reads.clear();
        Fetch<Action>("change")(host);
        QCOMPARE(host.Said(), Fetch<QString>("said"));
        QCOMPARE(host.source.reads.join(' '), Fetch<QString>("reads"));
        QCOMPARE(log.Take().join(' '), Fetch<QString>("signals"));
        QCOMPARE(recorder.Take(host.header).filter("StateChanged header/0 ").join(';').remove("StateChanged header/0 "), Fetch<QString>("announced"));
        QCOMPARE(mark.Texts().join('\n'), Fetch<QString>("logged"));
        QCOMPARE(host.header && QAccessible::queryAccessibleInterface(host.header)->childCount() == 1, host.header && host.header->CheckBoxRect().isValid());
    }

    void painting_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<Action>("pointer");
        QTest::addColumn<QString>("box");
        const Action none = [](Host&) {};
        const Action over = [](Host& h) { TestSupport::PointerTo(h.header, h.Box()); };
        const Action off = [](Host& h) { TestSupport::PointerTo(h.header, {300, 5}); };
        const Action press = [=](Host& h) { over(h), QTest::mousePress(h.header->window()->windowHandle(), Qt::LeftButton, {}, h.header->mapTo(h.header->window(), h.Box())); };
        QTest::newRow("unchecked") << "----" << none << "Enabled Off";
        QTest::newRow("partly") << "x---" << none << "Enabled NoChange";
        QTest::newRow("checked") << "xxxx" << none << "Enabled On";
        QTest::newRow("nothing to count") << "n" << none << "Off";
        QTest::newRow("disabled") << "x---" << Action([](Host& h) { h.header->setEnabled(false); }) << "NoChange";
        QTest::newRow("hovered") << "x---" << over << "Enabled NoChange MouseOver";
        QTest::newRow("left") << "x---" << Action([=](Host& h) { over(h), off(h); }) << "Enabled NoChange";
        QTest::newRow("left for the rows") << "x---" << Action([=](Host& h) { over(h), TestSupport::PointerTo(h.header, {5, h.header->height() + 40}); })
                                           << "Enabled NoChange";
        QTest::newRow("pressed") << "x---" << press << "Enabled NoChange MouseOver Sunken";
        QTest::newRow("pressed, moved off") << "x---" << Action([=](Host& h) { press(h), off(h); }) << "Enabled NoChange";
        QTest::newRow("model's background") << "x---" << Action([](Host& h) { h.source.setHeaderData(0, Qt::Horizontal, QBrush(Qt::red), Qt::BackgroundRole); })
                                            << "Enabled NoChange";
        QTest::newRow("clicked") << "x---" << Action([=](Host& h) { press(h), QTest::mouseRelease(h.header->window()->windowHandle(), Qt::LeftButton, {}, h.header->mapTo(h.header->window(), h.Box())); })
                                 << "Enabled On MouseOver";
    }
    // The style draws the box once, in its state, in the check column's section only, where the
    // column's cells have their checks.
    void painting()
    {
        Host host(Fetch<QString>("rows"));
        QTableView view;
        view.setHorizontalHeader(host.header);
        view.setModel(host.proxy);
        view.resize(400, 200);
        QVERIFY(TestSupport::ShowAndWait(&view));
        Fetch<Action>("pointer")(host);
        const QImage boxed = TestSupport::Render(host.header);
        g_style->boxes.clear(), g_style->boxRects.clear(), g_style->cellChecks.clear(), g_style->sectionStates.clear();
        TestSupport::Render(&view);
        const QRect box = host.header->CheckBoxRect(), cell = g_style->cellChecks.value(0);
        QCOMPARE(g_style->boxes, QStringList(Fetch<QString>("box")));
        QCOMPARE(g_style->boxRects, QVector<QRect>{box});
        QCOMPARE(view.viewport()->mapTo(&view, cell.topLeft()).x(), host.header->mapTo(&view, box.topLeft()).x());
        QCOMPARE(cell.size(), box.size());
        // The title sits after the box as titles sit in their sections, on one section's look.
        QCOMPARE(g_style->labels[0].left() - box.right() - 1, g_style->labels[1].left() - host.header->sectionViewportPosition(1));
        QCOMPARE(g_style->sectionStates.size(), 2);
        QCOMPARE(g_style->sectionStates[0], g_style->sectionStates[1]);
        if (QGuiApplication::mouseButtons())
            QTest::mouseRelease(view.windowHandle(), Qt::LeftButton, {}, QPoint(390, 190));
        host.header->SetCheckColumn(-1);
        QCOMPARE(boxed.pixelColor(1, 3), boxed.pixelColor(host.header->sectionSize(0) - 10, 3)); // one background across the box
        const QRect changed = TestSupport::Changed(TestSupport::Render(host.header), boxed);
        QVERIFY(changed.contains(box) && QRect(0, 0, host.header->sectionSize(0), host.header->height()).contains(changed));
    }

    void repaints_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<Action>("change");
        QTest::newRow("box enabled") << "n" << Action([](Host& h) { h.source.Add(1, "-"); });
        QTest::newRow("state") << "x-" << Action([](Host& h) { h.source.item(1)->setCheckState(Qt::Checked); });
    }
    // Nothing else in the header changes when the box does.
    void repaints()
    {
        Host host(Fetch<QString>("rows"));
        QVERIFY(TestSupport::ShowAndWait(host.header));
        QVERIFY(TestSupport::Repaints(host.header->viewport(), [&] { Fetch<Action>("change")(host); }));
    }

    void accessible_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("state");
        QTest::newRow("3 of 10") << "xxx-------" << true << "checkable checkStateMixed";
        QTest::newRow("all") << "xxxx" << true << "checkable checked";
        QTest::newRow("nothing to count") << "n" << true << "checkable disabled";
        QTest::newRow("hidden") << "x-" << false << "checkable checkStateMixed invisible";
    }
    // One child without an object of its own, the box, named by the section's title, where it is drawn.
    void accessible()
    {
        Host host(Fetch<QString>("rows"));
        QVERIFY(!Fetch<bool>("shown") || TestSupport::ShowAndWait(host.header));
        QAccessibleInterface* header = QAccessible::queryAccessibleInterface(host.header);
        QAccessibleInterface* box = header->child(0);
        QCOMPARE(QVector<int>({header->role(), header->childCount(), box->role(), header->indexOfChild(box), !box->object(), box->parent() == header}),
                 QVector<int>({QAccessible::ColumnHeader, 1, QAccessible::CheckBox, 0, true, true}));
        const QAccessible::State state = box->state();
        const QStringList flags{state.checkable ? "checkable" : "", state.checked ? "checked" : "", state.checkStateMixed ? "checkStateMixed" : "",
                                state.disabled ? "disabled" : "", state.invisible ? "invisible" : ""};
        QCOMPARE(flags.join(' ').simplified(), Fetch<QString>("state"));
        QCOMPARE(box->text(QAccessible::Name), QStringLiteral("Pick"));
        const QRect shown = host.header->CheckBoxRect();
        QCOMPARE(box->rect(), QRect(host.header->mapToGlobal(shown.topLeft()), shown.size()));
        QCOMPARE(header->childAt(box->rect().center().x(), box->rect().center().y()), box);
        QCOMPARE(box->actionInterface()->actionNames(), QStringList({QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}));
    }
};

// Qt passes accessibility updates on only while a screen reader's bus is there.
int main(int argc, char** argv)
{
    const TestSupport::ScreenReaderBus bus;
    if (bus.Address().isEmpty())
        return qCritical("no screen reader's bus"), 1;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().toLocal8Bit());
    QApplication application(argc, argv);
    TestCheckBoxHeaderView test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_check_box_header_view.moc"
