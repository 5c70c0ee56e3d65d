#include <qt_halvo/widgets/input/custom_single_line_combo_box.h>
#include <qt_halvo/widgets/input/default_combo_box_item_renderer.h>

#include "test_support.h"

#include <functional>
#include <memory>

using OrvantaQT::ComboBoxItemRenderer;
using OrvantaQT::CustomSingleLineComboBox;
using OrvantaQT::DefaultComboBoxItemRenderer;

namespace {

// Paints each row as a swatch of its own colour inside a black frame on the rect's edges, so
// that a wrong row or rect shows in the pixels, and notes what it was asked.
class SwatchRenderer : public ComboBoxItemRenderer
{
public:
    struct Call
    {
        QPersistentModelIndex index;
        QRect rect;
        QString text;
        const QWidget* widget;
        QStyle::State state;
        Qt::LayoutDirection direction;
    };

    void Paint(QPainter* painter, const QRect& rect, const QModelIndex& index,
               const QStyleOptionViewItem& option) const override
    {
        painted.append(Call{index, rect, option.text, option.widget, option.state, option.direction});
        painter->setRenderHint(QPainter::Antialiasing, false);
        painter->fillRect(rect, QColor::fromHsv(index.row() * 70 % 360, 200, 220));
        painter->setPen(Qt::black);
        painter->drawRect(rect.adjusted(0, 0, -1, -1));
    }
    QSize SizeHint(const QModelIndex& index, const QStyleOptionViewItem& option) const override
    {
        measured.append(index);
        return size ? size(index) : QSize(10 + 10 * option.text.size(), 20);
    }
    QVector<Call> PaintedOn(const QWidget* widget) const
    {
        QVector<Call> calls;
        std::copy_if(painted.begin(), painted.end(), std::back_inserter(calls),
                     [widget](const Call& call) { return call.widget == widget; });
        return calls;
    }

    mutable QVector<Call> painted;
    mutable QVector<QPersistentModelIndex> measured;
    std::function<QSize(const QModelIndex&)> size;
};

// Rows Alpha, Beta, Gamma (disabled) and Delta in the test font.
void Fill(QComboBox* box)
{
    box->setFont(TestSupport::TestFont());
    box->addItems(TestSupport::Words("Alpha Beta Gamma Delta"));
    qobject_cast<QStandardItemModel*>(box->model())->item(2)->setEnabled(false);
}

QRect EditField(const QComboBox* box)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    return box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
}

// What the renderer paints for the row into an image of the size given.
QImage Painted(const ComboBoxItemRenderer& renderer, const QModelIndex& index, const QSize& size,
               QStyleOptionViewItem option = QStyleOptionViewItem())
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    option.rect = QRect(QPoint(), size);
    renderer.Paint(&painter, option.rect, index, option);
    return image;
}

// The bounds of the pixels of exactly this colour.
QRect Bounds(const QImage& image, const QColor& colour)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            bounds |= image.pixelColor(x, y) == colour ? QRect(x, y, 1, 1) : QRect();
    return bounds;
}

QStyleOptionViewItem TextOption(const QString& text, int pixelSize = 13)
{
    QStyleOptionViewItem option;
    option.font = TestSupport::TestFont(pixelSize);
    option.font.setBold(true);
    option.text = text;
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.textElideMode = Qt::ElideRight;
    for (const auto& [group, text, highlight, highlighted] :
         {std::make_tuple(QPalette::Active, "#0000c8", "#c8c800", "#00c800"),
          std::make_tuple(QPalette::Inactive, "#000064", "#646400", "#006400"),
          std::make_tuple(QPalette::Disabled, "#640064", "#646464", "#643200")}) {
        option.palette.setColor(group, QPalette::Text, QColor(text));
        option.palette.setColor(group, QPalette::Highlight, QColor(highlight));
        option.palette.setColor(group, QPalette::HighlightedText, QColor(highlighted));
    }
    return option;
}

void Wheel(QWidget* widget, int delta)
{
    QWheelEvent wheel(QPointF(5, 5), QPointF(widget->mapToGlobal(QPoint(5, 5))), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
}

} // namespace

class TestCustomSingleLineComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The field is the renderer's picture of the current row in the style's edit field;
    // around it the box is a QComboBox's frame and arrow.
    void fieldIsTheRenderersCurrentRow_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<int>("current");
        QTest::newRow("first row") << Qt::LeftToRight << 0;
        QTest::newRow("last row") << Qt::LeftToRight << 3;
        QTest::newRow("right to left") << Qt::RightToLeft << 1;
    }
    void fieldIsTheRenderersCurrentRow()
    {
        QFETCH(Qt::LayoutDirection, direction);
        QFETCH(int, current);
        auto renderer = std::make_shared<SwatchRenderer>();
        CustomSingleLineComboBox box; // hidden, so neither focus nor hover sets it apart
        QComboBox plain;
        for (QComboBox* each : {static_cast<QComboBox*>(&box), &plain}) {
            each->setLayoutDirection(direction);
            each->resize(220, 34);
        }
        Fill(&box);
        box.SetRenderer(renderer);
        box.setCurrentIndex(current);
        const QImage field = TestSupport::Render(&box);
        const QRect edit = EditField(&box);
        QCOMPARE(renderer->painted.size(), 1);
        const SwatchRenderer::Call call = renderer->painted.first();
        QCOMPARE(call.index, QPersistentModelIndex(box.model()->index(current, 0)));
        QCOMPARE(call.rect, edit);
        QCOMPARE(call.text, box.itemText(current));
        QCOMPARE(call.widget, &box);
        QCOMPARE(call.direction, direction);
        QVERIFY(!(call.state & QStyle::State_Selected));
        QCOMPARE(field.copy(edit), Painted(*renderer, box.model()->index(current, 0), edit.size()));
        const QRect changed = TestSupport::Changed(field, TestSupport::Render(&plain));
        QCOMPARE(changed, edit);
    }

    // The popup's rows are the renderer's pictures of them, as tall as it asks, the current one
    // selected; separators stay QComboBox's.
    void popupRowsAreTheRenderersRows()
    {
        auto renderer = std::make_shared<SwatchRenderer>();
        QWidget window;
        auto* box = new CustomSingleLineComboBox(&window);
        Fill(box);
        box->insertSeparator(2);
        box->setGeometry(10, 10, 200, 30);
        box->SetRenderer(renderer);
        box->setCurrentIndex(1);
        QVERIFY(TestSupport::ShowAndWait(&window));
        box->showPopup();
        QAbstractItemView* view = box->view();
        QTRY_VERIFY(!renderer->PaintedOn(view).isEmpty());
        const QImage rows = TestSupport::Render(view->viewport());
        renderer->painted.clear();
        TestSupport::Render(view->viewport());
        QSet<int> paintedRows;
        for (const SwatchRenderer::Call& call : renderer->PaintedOn(view)) {
            paintedRows << call.index.row();
            QCOMPARE(call.rect, view->visualRect(call.index));
            QCOMPARE(call.text, box->itemText(call.index.row()));
            QCOMPARE(bool(call.state & QStyle::State_Selected), call.index.row() == 1);
        }
        QCOMPARE(paintedRows, QSet<int>({0, 1, 3, 4}));
        for (int row : {0, 1, 3, 4}) {
            const QModelIndex index = box->model()->index(row, 0);
            const QRect rect = view->visualRect(index);
            QCOMPARE(view->sizeHintForIndex(index), QSize(10 + 10 * box->itemText(row).size(), 20));
            QCOMPARE(rect.height(), 20);
            QCOMPARE(rows.copy(rect), Painted(*renderer, index, rect.size()));
        }
        const QModelIndex separator = box->model()->index(2, 0);
        box->sizeHint();
        QVERIFY(renderer->measured.contains(box->model()->index(3, 0)));
        QVERIFY(!renderer->measured.contains(separator));
        const QImage line = rows.copy(view->visualRect(separator));
        QSet<QRgb> colours; // more than the list's base: the style's separator line
        for (int y = 0; y < line.height(); ++y)
            for (int x = 0; x < line.width(); ++x)
                colours << line.pixel(x, y);
        QVERIFY(colours.size() > 1);
        QCOMPARE(view->visualRect(separator).height(), box->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, view));
        box->hidePopup();
    }

    // Selected rows lie on Highlight in HighlightedText, others are Text on nothing, in the
    // colour group of the state.
    void defaultRendererColours_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("background");
        QTest::addColumn<QString>("text");
        const int enabled = QStyle::State_Enabled;
        const int active = QStyle::State_Active;
        const int selected = QStyle::State_Selected;
        QTest::newRow("plain") << (enabled | active) << "#00000000" << "#0000c8";
        QTest::newRow("selected") << (enabled | active | selected) << "#c8c800" << "#00c800";
        QTest::newRow("selected, window inactive") << (enabled | selected) << "#646400" << "#006400";
        QTest::newRow("disabled") << active << "#00000000" << "#640064";
    }
    void defaultRendererColours()
    {
        QFETCH(int, state);
        QFETCH(QString, background);
        QFETCH(QString, text);
        QStyleOptionViewItem option = TextOption(QStringLiteral("HHHH"), 24);
        option.state = QStyle::State(state);
        const QImage image = Painted(DefaultComboBoxItemRenderer(), QModelIndex(), QSize(160, 40), option);
        QCOMPARE(image.pixelColor(1, 1).name(QColor::HexArgb), QColor(background).name(QColor::HexArgb));
        QVERIFY(!Bounds(image, QColor(text)).isEmpty());
        for (const char* other : {"#0000c8", "#00c800", "#006400", "#640064"})
            QVERIFY(QLatin1String(other) == text || Bounds(image, QColor(QLatin1String(other))).isEmpty());
    }

    // The icon, at the decoration size, leads; the text follows on one line, line breaks
    // shown as spaces.
    void defaultRendererLaysOutOneLine_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::newRow("left to right") << Qt::LeftToRight;
        QTest::newRow("right to left") << Qt::RightToLeft;
    }
    void defaultRendererLaysOutOneLine()
    {
        QFETCH(Qt::LayoutDirection, direction);
        QPixmap red(32, 32);
        red.fill(QColor(255, 0, 0));
        QStyleOptionViewItem option = TextOption(QStringLiteral("Hello\nworld"));
        option.direction = direction;
        option.icon = QIcon(red);
        option.decorationSize = QSize(20, 20);
        const DefaultComboBoxItemRenderer renderer;
        const QImage image = Painted(renderer, QModelIndex(), QSize(200, 60), option);
        const QRect icon = Bounds(image, QColor(255, 0, 0));
        const QRect text = Bounds(image, QColor("#0000c8"));
        QCOMPARE(icon.size(), QSize(20, 20));
        QCOMPARE(icon.center().y(), 29);
        QVERIFY(direction == Qt::LeftToRight ? icon.left() < 8 && icon.right() < text.left()
                                             : icon.right() > 191 && icon.left() > text.right());
        QVERIFY(text.height() < QFontMetrics(option.font).height());
        option.text = QStringLiteral("Hello world");
        QCOMPARE(image, Painted(renderer, QModelIndex(), QSize(200, 60), option));
    }

    // A row painted at its size hint shows whole; a pixel less and its text is elided.
    void defaultRendererSizeHintFitsTheRow_data()
    {
        QTest::addColumn<QSize>("iconSize");
        QTest::newRow("text") << QSize();
        QTest::newRow("icon and text") << QSize(40, 40);
    }
    void defaultRendererSizeHintFitsTheRow()
    {
        QFETCH(QSize, iconSize);
        const DefaultComboBoxItemRenderer renderer;
        QStyleOptionViewItem option = TextOption(QStringLiteral("Wide text"));
        if (iconSize.isValid()) {
            QPixmap red(iconSize);
            red.fill(QColor(255, 0, 0));
            option.icon = QIcon(red);
            option.decorationSize = iconSize;
        }
        const QSize hint = renderer.SizeHint(QModelIndex(), option);
        QVERIFY(hint.height() >= std::max(QFontMetrics(option.font).height(), iconSize.height()));
        const QImage roomy = Painted(renderer, QModelIndex(), hint + QSize(50, 0), option);
        QCOMPARE(Painted(renderer, QModelIndex(), hint, option), roomy.copy(QRect(QPoint(), hint)));
        QVERIFY(Painted(renderer, QModelIndex(), hint - QSize(1, 0), option) != roomy.copy(QRect(QPoint(), hint - QSize(1, 0))));
        if (iconSize.isValid())
            QCOMPARE(Bounds(roomy, QColor(255, 0, 0)).size(), iconSize);
        // Elided, not cut: 20 pixels less for the row are 20 less for its text.
        const QFontMetrics metrics(option.font);
        QStyleOptionViewItem elided = option;
        elided.text = metrics.elidedText(option.text, Qt::ElideRight, metrics.horizontalAdvance(option.text) - 20);
        QCOMPARE(Painted(renderer, QModelIndex(), hint - QSize(20, 0), option),
                 Painted(renderer, QModelIndex(), hint - QSize(20, 0), elided));
    }

    // Keys, typing and the wheel move as in a QComboBox, with its signals and what assistive
    // technology reads.
    void keysAndWheelAsInQComboBox_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<QString>("input");
        QTest::addColumn<int>("expected");
        QTest::newRow("down") << 0 << "Down" << 1;
        QTest::newRow("down past a disabled row") << 1 << "Down" << 3;
        QTest::newRow("up past a disabled row") << 3 << "Up" << 1;
        QTest::newRow("up at the first row") << 0 << "Up" << 0;
        QTest::newRow("down at the last row") << 3 << "Down" << 3;
        QTest::newRow("home") << 3 << "Home" << 0;
        QTest::newRow("end") << 0 << "End" << 3;
        QTest::newRow("typing") << 0 << "d" << 3;
        QTest::newRow("wheel down") << 0 << "wheel -120" << 1;
        QTest::newRow("wheel up past a disabled row") << 3 << "wheel 120" << 1;
        QTest::newRow("wheel up at the first row") << 0 << "wheel 120" << 0;
    }
    void keysAndWheelAsInQComboBox()
    {
        QFETCH(int, start);
        QFETCH(QString, input);
        QFETCH(int, expected);
        CustomSingleLineComboBox box;
        QComboBox plain;
        QStringList logs[2];
        QString spoken[2];
        for (QComboBox* each : {static_cast<QComboBox*>(&box), &plain}) {
            Fill(each);
            each->setCurrentIndex(start);
            TestSupport::SignalLog log(each, {"currentIndexChanged(int)", "activated(int)", "textActivated(QString)"});
            if (input.startsWith(QLatin1String("wheel ")))
                Wheel(each, input.mid(6).toInt());
            else if (input.size() == 1)
                QTest::keyClicks(each, input);
            else
                QTest::keyClick(each, Qt::Key(QKeySequence::fromString(input)[0]));
            logs[each == &plain] = log.Take();
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(each);
            spoken[each == &plain] = accessible->text(QAccessible::Value) + QLatin1Char('/') + accessible->text(QAccessible::Name);
        }
        QCOMPARE(box.currentIndex(), expected);
        QCOMPARE(plain.currentIndex(), expected);
        const QString text = box.itemText(expected);
        QCOMPARE(logs[0], start == expected ? QStringList()
                                            : QStringList({QStringLiteral("currentIndexChanged(%1)").arg(expected),
                                                           QStringLiteral("activated(%1)").arg(expected),
                                                           QStringLiteral("textActivated(%1)").arg(text)}));
        QCOMPARE(logs[0], logs[1]);
        QCOMPARE(spoken[0], text + QLatin1Char('/') + text);
        QCOMPARE(spoken[0], spoken[1]);
    }

    // The size hints fit the widest and the tallest row as the renderer measures them, and
    // follow its measures as the policy says; a new renderer is measured at once.
    void sizeHintFollowsTheRenderer_data()
    {
        QTest::addColumn<QComboBox::SizeAdjustPolicy>("policy");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QSize>("followed");
        QTest::addColumn<int>("widthFromRows");
        QTest::newRow("to contents") << QComboBox::AdjustToContents << true << QSize(30, 8) << 1;
        QTest::newRow("before the first show") << QComboBox::AdjustToContentsOnFirstShow << false << QSize(30, 8) << 1;
        QTest::newRow("after the first show") << QComboBox::AdjustToContentsOnFirstShow << true << QSize(0, 0) << 1;
        QTest::newRow("minimum contents length") << QComboBox::AdjustToMinimumContentsLengthWithIcon << true << QSize(0, 8) << 0;
    }
    void sizeHintFollowsTheRenderer()
    {
        QFETCH(QComboBox::SizeAdjustPolicy, policy);
        QFETCH(bool, shown);
        QFETCH(QSize, followed);
        QFETCH(int, widthFromRows);
        QVector<QSize> sizes{{80, 20}, {140, 24}, {60, 30}, {100, 22}};
        const auto measure = [&sizes](const QModelIndex& index) { return sizes.value(index.row()); };
        auto renderer = std::make_shared<SwatchRenderer>();
        renderer->size = measure;
        QWidget window;
        auto* layout = new QHBoxLayout(&window);
        auto* box = new CustomSingleLineComboBox;
        layout->addWidget(box);
        layout->addStretch();
        Fill(box);
        box->setSizeAdjustPolicy(policy);
        box->SetRenderer(renderer);
        if (shown)
            QVERIFY(TestSupport::ShowAndWait(&window));
        const QSize hint = box->sizeHint();
        if (widthFromRows) {
            QCOMPARE(box->minimumSizeHint(), hint);
            box->resize(hint);
            QVERIFY(EditField(box).width() >= 140);
        }
        box->resize(hint);
        QVERIFY(EditField(box).height() >= 30);

        sizes[1] += QSize(30, 0);
        sizes[2] += QSize(0, 8);
        QCOMPARE(box->sizeHint() - hint, followed);
        auto measuredAlike = std::make_shared<SwatchRenderer>();
        measuredAlike->size = measure;
        if (shown)
            QVERIFY(TestSupport::Repaints(box, [&] { box->SetRenderer(measuredAlike); }));
        else
            box->SetRenderer(measuredAlike);
        QCOMPARE(box->sizeHint() - hint, QSize(30 * widthFromRows, 8));
        QTest::qWait(20);
        const int asked = measuredAlike->measured.size();
        box->SetRenderer(measuredAlike); // the one it has: nothing to lay out or measure again
        QTest::qWait(20);
        QCOMPARE(measuredAlike->measured.size(), asked);
        if (shown && widthFromRows)
            QTRY_COMPARE(box->width(), hint.width() + 30);
    }

    // The renderer is asked for the rows of the model column under the root index only.
    void rowsOfTheModelColumnUnderTheRoot()
    {
        QStandardItemModel model;
        for (const char* group : {"Fruit", "Vegetables"}) {
            auto* parent = new QStandardItem(QLatin1String(group));
            for (const char* name : {"Apple", "Banana", "Cherry"})
                parent->appendRow({new QStandardItem(QLatin1String(name)), new QStandardItem(QLatin1String(group) + QLatin1String(name))});
            model.appendRow(parent);
        }
        const QModelIndex vegetables = model.index(1, 0);
        auto renderer = std::make_shared<SwatchRenderer>();
        QWidget window;
        auto* box = new CustomSingleLineComboBox(&window);
        box->SetRenderer(renderer);
        box->setModel(&model);
        box->setRootModelIndex(vegetables);
        box->setModelColumn(1);
        box->setCurrentIndex(2);
        QCOMPARE(box->currentText(), QString("VegetablesCherry"));
        QVERIFY(TestSupport::ShowAndWait(&window));
        box->showPopup();
        QTRY_COMPARE(renderer->PaintedOn(box->view()).size(), 3);
        box->hidePopup();
        box->sizeHint();
        TestSupport::Render(box);
        QCOMPARE(renderer->PaintedOn(box).last().index, QPersistentModelIndex(model.index(2, 1, vegetables)));
        QSet<QPersistentModelIndex> asked(renderer->measured.begin(), renderer->measured.end());
        for (const SwatchRenderer::Call& call : renderer->painted)
            asked << call.index;
        QCOMPARE(asked, QSet<QPersistentModelIndex>({model.index(0, 1, vegetables), model.index(1, 1, vegetables),
                                                     model.index(2, 1, vegetables)}));
    }

    // A null renderer, a renderer's empty size or a null model is logged once; the box goes on
    // as with the default renderer and its own model.
    void badInputIsLoggedOnce_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("logged");
        QTest::newRow("null renderer") << "null renderer"
                                       << "3 CustomSingleLineComboBox: no renderer given; the default renderer paints the rows";
        QTest::newRow("empty size") << "empty size"
                                    << "3 CustomSingleLineComboBox: the renderer gave row 0 an empty size of 0 x 0; "
                                       "the default renderer's size stands in";
        QTest::newRow("null model") << "null model" << "3 CustomSingleLineComboBox: no model given; the box keeps its model";
    }
    void badInputIsLoggedOnce()
    {
        QFETCH(QString, input);
        QFETCH(QString, logged);
        CustomSingleLineComboBox reference;
        CustomSingleLineComboBox box;
        Fill(&reference);
        Fill(&box);
        QAbstractItemModel* model = box.model();
        const LogCapture::Mark mark;
        if (input == QLatin1String("null renderer")) {
            box.SetRenderer(std::make_shared<SwatchRenderer>());
            box.SetRenderer(nullptr);
        } else if (input == QLatin1String("empty size")) {
            auto empty = std::make_shared<SwatchRenderer>();
            empty->size = [](const QModelIndex&) { return QSize(0, 0); };
            box.SetRenderer(empty);
            box.sizeHint();
            box.SetRenderer(empty); // no news: nothing logged again
        } else {
            box.setModel(nullptr);
        }
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(box.sizeHint(), reference.sizeHint());
            QCOMPARE(box.view()->sizeHintForRow(1), reference.view()->sizeHintForRow(1));
            TestSupport::Render(&box);
        }
        QCOMPARE(mark.Texts(), QStringList{logged});
        QCOMPARE(box.model(), model);
        QTest::keyClick(&box, Qt::Key_Down);
        QCOMPARE(box.currentText(), QString("Beta"));
        if (input != QLatin1String("empty size")) {
            QVERIFY(std::dynamic_pointer_cast<DefaultComboBoxItemRenderer>(box.GetRenderer()));
            reference.setCurrentIndex(1);
            box.resize(200, 30);
            reference.resize(200, 30);
            QCOMPARE(TestSupport::Render(&box), TestSupport::Render(&reference));
        }
    }

    // The renderer is shared and lives as long as its last holder; the box copes with its
    // model, its delegate or itself going away at any time.
    void deletingInAnyOrder()
    {
        std::weak_ptr<SwatchRenderer> watch;
        auto* first = new CustomSingleLineComboBox;
        CustomSingleLineComboBox* second = new CustomSingleLineComboBox;
        {
            auto renderer = std::make_shared<SwatchRenderer>();
            watch = renderer;
            Fill(first);
            Fill(second);
            first->SetRenderer(renderer);
            second->SetRenderer(renderer);
        }
        delete first;
        TestSupport::Render(second);
        QCOMPARE(watch.lock()->PaintedOn(second).size(), 1);
        delete second;
        QVERIFY(watch.expired());

        // The model goes while the box and its popup show.
        auto renderer = std::make_shared<SwatchRenderer>();
        watch = renderer;
        QWidget window;
        auto* box = new CustomSingleLineComboBox(&window);
        box->setGeometry(10, 10, 200, 30);
        auto* model = new QStringListModel(TestSupport::Words("One Two Three"));
        box->setModel(model);
        box->SetRenderer(std::move(renderer));
        QVERIFY(TestSupport::ShowAndWait(&window));
        box->showPopup();
        QTRY_VERIFY(!watch.lock()->PaintedOn(box->view()).isEmpty());
        // QComboBox's own warning when its model goes while the popup shows.
        QTest::ignoreMessage(QtWarningMsg, "QItemSelectionModel: Selecting when no model has been set will result in a no-op.");
        delete model;
        QTest::qWait(20);
        watch.lock()->painted.clear();
        TestSupport::Render(box);
        QCOMPARE(watch.lock()->painted.size(), 0);
        QCOMPARE(box->count() * 10 + box->currentIndex(), -1);
        QCOMPARE(box->sizeHint(), CustomSingleLineComboBox().sizeHint());
        QCOMPARE(box->sizeHint().width(), QComboBox().sizeHint().width());
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->currentIndex(), -1);

        // A delegate of the caller's replaces the box's (which Qt deletes); the field stays the
        // renderer's.
        box->hidePopup();
        box->setModel(new QStringListModel(TestSupport::Words("One Two Three"), box));
        QPointer<QAbstractItemDelegate> own = box->itemDelegate();
        QCOMPARE(own->objectName(), QString("CustomSingleLineComboBoxDelegate"));
        box->setItemDelegate(new QStyledItemDelegate(box));
        QVERIFY(!own);
        renderer = std::make_shared<SwatchRenderer>();
        watch = renderer;
        box->SetRenderer(std::move(renderer));
        TestSupport::Render(box);
        QCOMPARE(watch.lock()->PaintedOn(box).size(), 1);

        // The box goes while its popup shows.
        box->showPopup();
        QTRY_VERIFY(box->view()->isVisible());
        delete box;
        QVERIFY(watch.expired());
    }

    // Made editable, the field is Qt's line edit, as in a QComboBox; the popup stays the
    // renderer's. Made non-editable again, the field is the renderer's again.
    void editableFieldIsQtsLineEdit()
    {
        auto renderer = std::make_shared<SwatchRenderer>();
        CustomSingleLineComboBox box;
        Fill(&box);
        box.SetRenderer(renderer);
        box.setCurrentIndex(1);
        const LogCapture::Mark mark;
        box.setEditable(true);
        QCOMPARE(box.lineEdit()->text(), QString("Beta"));
        TestSupport::Render(&box);
        QCOMPARE(renderer->PaintedOn(&box).size(), 0);
        box.lineEdit()->selectAll();
        QTest::keyClicks(box.lineEdit(), QStringLiteral("Zeta"));
        QTest::keyClick(box.lineEdit(), Qt::Key_Return);
        QCOMPARE(box.count(), 5);
        QCOMPARE(box.currentText(), QString("Zeta"));
        QCOMPARE(box.view()->sizeHintForRow(4), 20);
        box.setEditable(false);
        TestSupport::Render(&box);
        QCOMPARE(renderer->PaintedOn(&box).size(), 1);
        QCOMPARE(renderer->PaintedOn(&box).first().index.row(), 4);
        QCOMPARE(mark.Texts(), QStringList());
    }

    // With nothing chosen the field is an empty QComboBox's, or shows the placeholder in the
    // palette's placeholder colour (which Qt 5.15's own QComboBox leaves out); the text is in
    // the colour of a button's text, from the palette or a style sheet.
    void placeholderAndTextColours()
    {
        CustomSingleLineComboBox box;
        QComboBox plain;
        for (QComboBox* each : {static_cast<QComboBox*>(&box), &plain}) {
            Fill(each);
            each->setCurrentIndex(-1);
            each->resize(200, 40);
        }
        QCOMPARE(TestSupport::Render(&box), TestSupport::Render(&plain));
        box.setFont(TestSupport::TestFont(24));
        box.setPlaceholderText(QStringLiteral("HHHH"));
        QPalette palette = box.palette();
        palette.setColor(QPalette::PlaceholderText, QColor("#c8641e"));
        palette.setColor(QPalette::ButtonText, QColor("#c81e1e"));
        palette.setColor(QPalette::Text, QColor("#1e64c8"));
        box.setPalette(palette);
        QImage field = TestSupport::Render(&box).copy(EditField(&box));
        QVERIFY(!Bounds(field, QColor("#c8641e")).isEmpty());

        box.setCurrentIndex(0);
        box.setItemText(0, QStringLiteral("HHHH"));
        field = TestSupport::Render(&box).copy(EditField(&box));
        QVERIFY(!Bounds(field, QColor("#c81e1e")).isEmpty());
        QVERIFY(Bounds(field, QColor("#1e64c8")).isEmpty());
        QVERIFY(Bounds(field, QColor("#c8641e")).isEmpty());
        box.setStyleSheet(QStringLiteral("QComboBox { color: #1ec81e; }"));
        field = TestSupport::Render(&box).copy(EditField(&box));
        QVERIFY(!Bounds(field, QColor("#1ec81e")).isEmpty());
    }

    // A length in characters sizes the box as it sizes a QComboBox (the rows' heights aside).
    void minimumContentsLengthAsInQComboBox_data()
    {
        QTest::addColumn<QComboBox::SizeAdjustPolicy>("policy");
        QTest::addColumn<int>("characters");
        QTest::newRow("to contents") << QComboBox::AdjustToContents << 12;
        QTest::newRow("on first show") << QComboBox::AdjustToContentsOnFirstShow << 12;
        QTest::newRow("with icon") << QComboBox::AdjustToMinimumContentsLengthWithIcon << 12;
        QTest::newRow("with icon, no length") << QComboBox::AdjustToMinimumContentsLengthWithIcon << 0;
    }
    void minimumContentsLengthAsInQComboBox()
    {
        QFETCH(QComboBox::SizeAdjustPolicy, policy);
        QFETCH(int, characters);
        CustomSingleLineComboBox box;
        QComboBox plain;
        for (QComboBox* each : {static_cast<QComboBox*>(&box), &plain}) {
            Fill(each);
            each->setSizeAdjustPolicy(policy);
            each->setMinimumContentsLength(characters);
            each->setIconSize(QSize(24, 24));
        }
        if (characters == 0) {
            // Nothing to fit then, neither the icon nor the rows (where Qt is one pixel off).
            const int narrowest = box.sizeHint().width();
            box.setIconSize(QSize(48, 48));
            box.addItem(QStringLiteral("A long row that does not count"));
            QCOMPARE(box.sizeHint().width(), narrowest);
            QCOMPARE(box.minimumSizeHint().width(), narrowest);
            return;
        }
        QCOMPARE(box.sizeHint().width(), plain.sizeHint().width());
        QCOMPARE(box.minimumSizeHint().width(), plain.minimumSizeHint().width());
    }

    // A new model, font or style is measured again, even once the box has been shown.
    void newModelAndFontAreMeasuredAgain()
    {
        QWidget window;
        auto* layout = new QHBoxLayout(&window);
        auto* box = new CustomSingleLineComboBox;
        layout->addWidget(box);
        layout->addStretch();
        Fill(box);
        QVERIFY(TestSupport::ShowAndWait(&window));
        const QSize first = box->sizeHint();
        box->addItem(QStringLiteral("A row added after the first show is not measured"));
        QCOMPARE(box->sizeHint(), first);
        auto* model = new QStringListModel(TestSupport::Words("Alpha Beta Gamma Deltaaaaaaaaaaaaaaaaaaaaaaaa"), box);
        box->setModel(model);
        const QSize wider = box->sizeHint();
        QVERIFY(wider.width() > first.width());
        QTRY_COMPARE(box->width(), wider.width());
        box->setFont(TestSupport::TestFont(20));
        QVERIFY(box->sizeHint().width() > wider.width() && box->sizeHint().height() > wider.height());
        QTRY_COMPARE(box->size(), box->sizeHint());
    }
};

QTEST_MAIN(TestCustomSingleLineComboBox)
#include "tst_custom_single_line_combo_box.moc"
