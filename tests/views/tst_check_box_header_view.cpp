#include <qt_halvo/views/check_box_header_view.h>

#include "accessibility_recorder.h"
#include "test_support.h"

#include <functional>

using OrvantaQT::CheckBoxHeaderView;
using TestSupport::Words;

namespace {

// Check cells as letters, one a row: x checked, - unchecked, p partly checked, n checked but not
// user-checkable, v user-checkable without check data; X and _ are rows the proxy filters out.
// Column 1 says "r<row>", or "h<row>" when filtered out. The rows whose check state is read are noted.
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
            const bool hidden = letter == 'X' || letter == '_';
            insertRow(at++, {check, new QStandardItem(QStringLiteral("%1%2").arg(hidden ? 'h' : 'r').arg(rowCount()))});
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

// A header over the rows of a filter proxy.
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
        source.reads.clear();
    }
    ~Host() { delete header; delete proxy; }
    QString Said() const
    {
        const char* state = QMetaEnum::fromType<Qt::CheckState>().valueToKey(header->GetCheckState());
        return QStringLiteral("%1/%2 %3").arg(header->CheckedCount()).arg(header->RowCount()).arg(state);
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
        if (element == PE_IndicatorCheckBox && widget->inherits("OrvantaQT::CheckBoxHeaderView")) {
            QStringList flags;
            static const std::pair<StateFlag, const char*> names[] = {{State_Enabled, "Enabled"}, {State_On, "On"}, {State_Off, "Off"},
                {State_NoChange, "NoChange"}, {State_MouseOver, "MouseOver"}, {State_Sunken, "Sunken"}};
            for (const auto& name : names)
                flags << (option->state & name.first ? name.second : "");
            boxes << flags.join(' ').simplified();
            boxRects << option->rect;
        }
        if (element == PE_IndicatorItemViewItemCheck)
            cellChecks << option->rect;
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    void Clear() { boxes.clear(), boxRects.clear(), cellChecks.clear(); }
    mutable QStringList boxes;
    mutable QVector<QRect> boxRects, cellChecks;
};

RecordingStyle* g_style = nullptr;

// Qt passes accessibility updates on only while an accessibility bus is there: a private message
// bus, published on the X server where Qt looks for one, stands in for it in a child run of the
// test function. Empty when the child passed.
QString RunWithAccessibilityBus(const char* function)
{
    QProcess bus;
    bus.setStandardErrorFile(QProcess::nullDevice());
    bus.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address=1"});
    if (!bus.waitForReadyRead(10000))
        return QStringLiteral("no dbus-daemon");
    const QString address = QString::fromLocal8Bit(bus.readLine()).trimmed();
    QProcess::execute(QStringLiteral("xprop"), {"-root", "-f", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS", address});
    const QString failure = TestSupport::RunTestFunctionInChild(
        function, {"DBUS_SESSION_BUS_ADDRESS=" + address, "QT_HALVO_TEST_ACCESSIBILITY_BUS=1"});
    QProcess::execute(QStringLiteral("xprop"), {"-root", "-remove", "AT_SPI_BUS"});
    bus.terminate();
    bus.waitForFinished();
    return failure;
}

// QFETCH as an expression.
template <typename T>
T Fetch(const char* name)
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
    }

    void clicks_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("where"); // box, title or a double click on the box
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QStringList>("signals");
        const QStringList checked = Words("CheckStateChanged(Checked)");
        QTest::newRow("none") << "----------" << "box" << "0/10 Unchecked" << "xxxxxxxxxx" << checked;
        QTest::newRow("3 of 10") << "xxx-------" << "box" << "3/10 PartiallyChecked" << "xxxxxxxxxx" << checked;
        QTest::newRow("all") << "xxxxxxxxxx" << "box" << "10/10 Checked" << "----------" << Words("CheckStateChanged(Unchecked)");
        QTest::newRow("one partly") << "xpx" << "box" << "2/3 PartiallyChecked" << "xxx" << checked;
        QTest::newRow("partly only") << "pp" << "box" << "0/2 PartiallyChecked" << "xx" << checked;
        QTest::newRow("rows not counted") << "xnvx" << "box" << "2/2 Checked" << "-nv-" << Words("CheckStateChanged(Unchecked)");
        QTest::newRow("nothing to count") << "nv" << "box" << "0/0 Unchecked" << "nv" << Words("");
        QTest::newRow("no rows") << "" << "box" << "0/0 Unchecked" << "" << Words("");
        QTest::newRow("filtered out") << "X_x-_" << "box" << "1/2 PartiallyChecked" << "X_xx_" << checked;
        QTest::newRow("title") << "xxx-------" << "title" << "3/10 PartiallyChecked" << "xxx-------"
                               << QStringList({"sortIndicatorChanged(0, AscendingOrder)", "sectionClicked(0)"});
        QTest::newRow("double") << "x-" << "double" << "1/2 PartiallyChecked" << "--"
                                << Words("CheckStateChanged(Checked) CheckStateChanged(Unchecked)");
    }
    // A click on the box writes every counted row the proxy shows; one elsewhere is the header's own.
    void clicks()
    {
        QFETCH(QString, where);
        Host host(Fetch<QString>("rows"));
        QVERIFY(TestSupport::ShowAndWait(host.header));
        QCOMPARE(host.Said(), Fetch<QString>("said"));
        TestSupport::SignalLog log(host.header, {"CheckStateChanged(Qt::CheckState)", "sectionClicked(int)", "sortIndicatorChanged(int,Qt::SortOrder)"});
        const QRect box = host.header->CheckBoxRect();
        const QPoint at = where == "title" ? QPoint(box.right() + 20, box.center().y()) : box.center();
        QTest::mouseClick(host.header->viewport(), Qt::LeftButton, {}, at);
        if (where == "double") { // the second press of a pair comes as a double click
            QTest::mouseDClick(host.header->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseRelease(host.header->viewport(), Qt::LeftButton, {}, at);
        }
        QCOMPARE(host.source.Rows(), Fetch<QString>("after"));
        QCOMPARE(log.Take(), Fetch<QStringList>("signals"));
    }

    void follows_data()
    {
        QTest::addColumn<Action>("change");
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("reads"); // source rows
        QTest::addColumn<QString>("signals");
        const auto check = [](int from, int to) {
            return [=](Host& h) { for (int row = from; row <= to; ++row) h.source.item(row)->setCheckState(Qt::Checked); };
        };
        QTest::newRow("one checked") << Action(check(5, 5)) << "4/8 PartiallyChecked" << "5" << "";
        QTest::newRow("the rest checked") << Action(check(3, 7)) << "8/8 Checked" << "3 4 5 6 7" << "CheckStateChanged(Checked)";
        QTest::newRow("one made not checkable") << Action([](Host& h) { h.source.item(0)->setCheckable(false); }) << "2/7 PartiallyChecked" << "" << "";
        QTest::newRow("checked inserted") << Action([](Host& h) { h.source.Add(0, "x"); }) << "4/9 PartiallyChecked" << "0" << "";
        QTest::newRow("two appended") << Action([](Host& h) { h.source.Add(10, "--"); }) << "3/10 PartiallyChecked" << "10 11" << "";
        QTest::newRow("child rows") << Action([](Host& h) { h.source.item(4)->appendRow({new QStandardItem, new QStandardItem("r")}); })
                                    << "3/8 PartiallyChecked" << "" << "";
        QTest::newRow("unchecked removed") << Action([](Host& h) { h.source.removeRows(3, 5); }) << "3/3 Checked" << "" << "CheckStateChanged(Checked)";
        QTest::newRow("all removed") << Action([](Host& h) { h.source.removeRows(0, 10); }) << "0/0 Unchecked" << "" << "CheckStateChanged(Unchecked)";
        QTest::newRow("filter dropped") << Action([](Host& h) { h.proxy->setFilterRegularExpression(""); }) << "4/10 PartiallyChecked" << "8 9" << "";
        QTest::newRow("reset") << Action([](Host& h) { h.proxy->setSourceModel(&h.other); }) << "2/2 Checked" << "" << "CheckStateChanged(Checked)";
        QTest::newRow("sorted, then one checked") << Action([=](Host& h) { h.proxy->sort(1, Qt::DescendingOrder); check(5, 5)(h); })
                                                  << "4/8 PartiallyChecked" << "7 6 5 4 3 2 1 0 5" << "";
        QTest::newRow("column inserted before") << Action([](Host& h) { h.source.insertColumn(0); }) << "0/0 Unchecked" << "" << "CheckStateChanged(Unchecked)";
        QTest::newRow("model deleted") << Action([](Host& h) { delete h.proxy; }) << "0/0 Unchecked" << "" << "CheckStateChanged(Unchecked)";
        QTest::newRow("no model") << Action([](Host& h) { h.header->setModel(nullptr); }) << "0/0 Unchecked" << "" << "CheckStateChanged(Unchecked)";
    }
    // Each change of the model is followed by reading the rows it changed, and no others.
    void follows()
    {
        QFETCH(Action, change);
        Host host(QStringLiteral("xxx-----X_"));
        TestSupport::SignalLog log(host.header, {"CheckStateChanged(Qt::CheckState)"});
        change(host);
        QCOMPARE(host.Said(), Fetch<QString>("said"));
        QCOMPARE(host.source.reads.join(' '), Fetch<QString>("reads"));
        QCOMPARE(log.Take(), Words(qPrintable(Fetch<QString>("signals"))));
    }

    void painting_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<Action>("pointer");
        QTest::addColumn<QString>("box");
        const Action none = [](Host&) {};
        const Action over = [](Host& h) { TestSupport::PointerTo(h.header, h.header->CheckBoxRect().center()); };
        const Action off = [](Host& h) { TestSupport::PointerTo(h.header, {300, 5}); };
        const Action press = [=](Host& h) { over(h); QTest::mousePress(h.header->viewport(), Qt::LeftButton, {}, h.header->CheckBoxRect().center()); };
        QTest::newRow("unchecked") << "----" << none << "Enabled Off";
        QTest::newRow("partly") << "x---" << none << "Enabled NoChange";
        QTest::newRow("checked") << "xxxx" << none << "Enabled On";
        QTest::newRow("nothing to count") << "n" << none << "Off";
        QTest::newRow("disabled") << "x---" << Action([](Host& h) { h.header->setEnabled(false); }) << "NoChange";
        QTest::newRow("hovered") << "x---" << over << "Enabled NoChange MouseOver";
        QTest::newRow("left") << "x---" << Action([=](Host& h) { over(h); off(h); }) << "Enabled NoChange";
        QTest::newRow("pressed") << "x---" << press << "Enabled NoChange MouseOver Sunken";
        QTest::newRow("pressed, moved off") << "x---" << Action([=](Host& h) { press(h); off(h); }) << "Enabled NoChange";
    }
    // The style draws the box once, in its state, in the check column's section only, where
    // the column's cells have their checks.
    void painting()
    {
        Host host(Fetch<QString>("rows"));
        QTableView view;
        view.setHorizontalHeader(host.header);
        view.setModel(host.proxy);
        view.resize(400, 200);
        QVERIFY(TestSupport::ShowAndWait(&view));
        QFETCH(Action, pointer);
        pointer(host);
        const QImage boxed = TestSupport::Render(host.header);
        g_style->Clear();
        TestSupport::Render(&view);
        QCOMPARE(g_style->boxes, QStringList(Fetch<QString>("box")));
        const QRect box = host.header->CheckBoxRect();
        QCOMPARE(g_style->boxRects, QVector<QRect>{box});
        const QRect cell = g_style->cellChecks.value(0);
        QCOMPARE(view.viewport()->mapTo(&view, cell.topLeft()).x(), host.header->mapTo(&view, box.topLeft()).x());
        QCOMPARE(cell.size(), box.size());
        host.header->SetCheckColumn(-1);
        const QRect changed = TestSupport::Changed(TestSupport::Render(host.header), boxed);
        QVERIFY(changed.contains(box));
        QVERIFY(QRect(0, 0, host.header->sectionSize(0), host.header->height()).contains(changed));
    }

    void badColumn_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("kept");
        QTest::addColumn<QStringList>("logged");
        QTest::newRow("-5") << -5 << -1 << QStringList("3 CheckBoxHeaderView: check column -5 is out of range; no check box");
        QTest::newRow("3 of 3") << 3 << 3 << QStringList("3 CheckBoxHeaderView: check column 3 is out of range (the model has 3 columns); no check box");
        QTest::newRow("-1") << -1 << -1 << QStringList();
    }
    // Logged once however often the model changes, no box, nothing counted, nothing written.
    void badColumn()
    {
        Host host(QStringLiteral("x-"));
        LogCapture::Mark mark;
        host.header->SetCheckColumn(Fetch<int>("column"));
        host.proxy->invalidate();
        host.proxy->setSourceModel(&host.other);
        QCOMPARE(mark.Texts(), Fetch<QStringList>("logged"));
        QCOMPARE(host.header->GetCheckColumn(), Fetch<int>("kept"));
        QCOMPARE(host.Said(), QStringLiteral("0/0 Unchecked"));
        QVERIFY(host.header->CheckBoxRect().isEmpty());
        QCOMPARE(QAccessible::queryAccessibleInterface(host.header)->childCount(), 0);
        host.header->Toggle();
        QCOMPARE(host.other.Rows(), QStringLiteral("xx"));
    }

    void midWay_data()
    {
        QTest::addColumn<Action>("during");
        QTest::addColumn<QString>("said");
        QTest::newRow("reset") << Action([](Host& h) { h.proxy->setSourceModel(&h.other); }) << "2/2 Checked";
        QTest::newRow("model replaced") << Action([](Host& h) { h.header->setModel(&h.other); }) << "2/2 Checked";
        QTest::newRow("header deleted") << Action([](Host& h) { delete h.header; }) << "";
    }
    // What the first write sets off ends the writing safely.
    void midWay()
    {
        QFETCH(Action, during);
        Host host(QStringLiteral("----"));
        bool once = false;
        QObject::connect(&host.source, &QAbstractItemModel::dataChanged, &host.other, [&] {
            if (!std::exchange(once, true))
                during(host);
        });
        host.header->Toggle();
        QCOMPARE(host.source.Rows(), QStringLiteral("x---"));
        QCOMPARE(host.header ? host.Said() : QString(), Fetch<QString>("said"));
    }

    void accessible_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QStringList>("announced");
        const QString changed = QStringLiteral("StateChanged header/0 ");
        QTest::newRow("3 of 10, toggle") << "xxx-------" << "toggle" << "checkStateMixed" << "checked" << QStringList(changed + "checked checkStateMixed");
        QTest::newRow("all, press") << "xxxx" << "press" << "checked" << "" << QStringList(changed + "checked");
        QTest::newRow("none, toggle") << "--" << "toggle" << "" << "checked" << QStringList(changed + "checked");
        QTest::newRow("nothing to count") << "n" << "press" << "disabled" << "disabled" << QStringList();
    }
    void accessibleOnABus()
    {
        const QString failure = RunWithAccessibilityBus("accessible");
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
    // One child, the box, that acts as a click and is announced as it changes.
    void accessible()
    {
        if (!qEnvironmentVariableIsSet("QT_HALVO_TEST_ACCESSIBILITY_BUS"))
            QSKIP("run with an accessibility bus by accessibleOnABus()");
        Host host(Fetch<QString>("rows"));
        QVERIFY(TestSupport::ShowAndWait(host.header));
        QTRY_VERIFY(QAccessible::isActive());
        QAccessibleInterface* header = QAccessible::queryAccessibleInterface(host.header);
        QAccessibleInterface* box = header->child(0);
        QCOMPARE(QVector<int>({header->role(), header->childCount(), box->role(), header->indexOfChild(box), box->object() == nullptr}),
                 QVector<int>({QAccessible::ColumnHeader, 1, QAccessible::CheckBox, 0, true}));
        QCOMPARE(box->parent(), header);
        QCOMPARE(box->text(QAccessible::Name), QStringLiteral("Pick"));
        const QRect shown = host.header->CheckBoxRect();
        QCOMPARE(box->rect(), QRect(host.header->mapToGlobal(shown.topLeft()), shown.size()));
        QCOMPARE(header->childAt(box->rect().center().x(), box->rect().center().y()), box);
        const auto flags = [box] {
            const QAccessible::State state = box->state();
            return QStringList{state.checked ? "checked" : "", state.checkStateMixed ? "checkStateMixed" : "", state.disabled ? "disabled" : ""}
                .join(' ').simplified() + (state.checkable ? "" : " not checkable");
        };
        QCOMPARE(flags(), Fetch<QString>("before"));
        TestSupport::AccessibilityRecorder recorder;
        QAccessibleActionInterface* actions = box->actionInterface();
        actions->doAction(Fetch<QString>("action") == "press" ? actions->pressAction() : actions->toggleAction());
        QCOMPARE(flags(), Fetch<QString>("after"));
        QCOMPARE(recorder.Take(host.header), Fetch<QStringList>("announced"));
    }
};

QTEST_MAIN(TestCheckBoxHeaderView)
#include "tst_check_box_header_view.moc"
