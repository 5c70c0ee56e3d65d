#include <qt_halvo/widgets/input/custom_single_line_combo_box.h>

#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/input/default_combo_box_item_renderer.h>

#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QStylePainter>
#include <QtWidgets/QStyledItemDelegate>

namespace OrvantaQT {

namespace {

// How QComboBox::insertSeparator() marks its rows.
bool IsSeparator(const QModelIndex& index)
{
    return index.data(Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator");
}

// Fills an option from a row exactly as the list's own delegate would, for the field and the
// rows alike.
class OptionFiller : public QStyledItemDelegate
{
public:
    void Fill(QStyleOptionViewItem* option, const QModelIndex& index) const { initStyleOption(option, index); }
};

} // namespace

// The renderer and what goes with it, shared by the box and its delegate so that neither
// outlives it: Qt 5 deletes a replaced delegate, and a delegate may paint while the box is
// being destroyed.
class SingleLineComboBoxRows
{
public:
    std::shared_ptr<ComboBoxItemRenderer> Renderer() const { return m_renderer ? m_renderer : m_default; }

    bool SetRenderer(std::shared_ptr<ComboBoxItemRenderer> renderer)
    {
        if (renderer == m_renderer)
            return false;
        m_renderer = std::move(renderer);
        m_emptySizeLogged = false;
        return true;
    }

    void Fill(QStyleOptionViewItem* option, const QModelIndex& index) const { m_filler.Fill(option, index); }

    QSize Size(const QStyleOptionViewItem& option, const QModelIndex& index)
    {
        const QSize size = Renderer()->SizeHint(index, option);
        if (!size.isEmpty())
            return size;
        if (!m_emptySizeLogged) {
            m_emptySizeLogged = true;
            QTH_LOG_WARNING("CustomSingleLineComboBox: the renderer gave row %d an empty size of %d x %d; "
                            "the default renderer's size stands in",
                            index.row(), size.width(), size.height());
        }
        const QSize fallback = m_default->SizeHint(index, option);
        return QSize(size.width() > 0 ? size.width() : fallback.width(),
                     size.height() > 0 ? size.height() : fallback.height());
    }

    void Paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
    {
        // A renderer's pen, font or clip stays with its row.
        painter->save();
        painter->setClipRect(option.rect, Qt::IntersectClip);
        Renderer()->Paint(painter, option.rect, index, option);
        painter->restore();
    }

    // The size of a row with nothing in it, for a box without rows.
    QSize EmptySize(const QStyleOptionViewItem& option) const { return m_default->SizeHint(QModelIndex(), option); }

private:
    std::shared_ptr<ComboBoxItemRenderer> m_renderer;
    const std::shared_ptr<DefaultComboBoxItemRenderer> m_default = std::make_shared<DefaultComboBoxItemRenderer>();
    OptionFiller m_filler;
    bool m_emptySizeLogged = false;
};

// Paints and measures the popup's rows through the renderer; separators as QComboBox does.
class SingleLineComboBoxDelegate : public QAbstractItemDelegate
{
public:
    SingleLineComboBoxDelegate(std::shared_ptr<SingleLineComboBoxRows> rows, QObject* parent)
        : QAbstractItemDelegate(parent)
        , m_rows(std::move(rows))
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (IsSeparator(index)) {
            QStyleOption line;
            line.rect = option.rect;
            line.palette = option.palette;
            line.direction = option.direction;
            if (const auto* view = qobject_cast<const QAbstractItemView*>(option.widget))
                line.rect.setWidth(view->viewport()->width());
            StyleOf(option)->drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &line, painter, option.widget);
            return;
        }
        QStyleOptionViewItem row = option;
        m_rows->Fill(&row, index);
        m_rows->Paint(painter, row, index);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (IsSeparator(index)) {
            const int width = StyleOf(option)->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, option.widget);
            return QSize(width, width);
        }
        QStyleOptionViewItem row = option;
        m_rows->Fill(&row, index);
        return m_rows->Size(row, index);
    }

    // Makes the view lay its rows out again, with the new renderer's sizes.
    void RendererChanged() { Q_EMIT sizeHintChanged(QModelIndex()); }

private:
    static const QStyle* StyleOf(const QStyleOptionViewItem& option)
    {
        return option.widget ? option.widget->style() : QApplication::style();
    }

    std::shared_ptr<SingleLineComboBoxRows> m_rows;
};

CustomSingleLineComboBox::CustomSingleLineComboBox(QWidget* parent)
    : QComboBox(parent)
    , m_rows(std::make_shared<SingleLineComboBoxRows>())
    , m_delegate(new SingleLineComboBoxDelegate(m_rows, this))
{
    m_delegate->setObjectName(QStringLiteral("CustomSingleLineComboBoxDelegate"));
    setItemDelegate(m_delegate);
}

CustomSingleLineComboBox::~CustomSingleLineComboBox() = default;

std::shared_ptr<ComboBoxItemRenderer> CustomSingleLineComboBox::GetRenderer() const
{
    return m_rows->Renderer();
}

void CustomSingleLineComboBox::SetRenderer(std::shared_ptr<ComboBoxItemRenderer> renderer)
{
    if (!renderer)
        QTH_LOG_WARNING("CustomSingleLineComboBox: no renderer given; the default renderer paints the rows");
    if (!m_rows->SetRenderer(std::move(renderer)))
        return;
    if (m_delegate)
        m_delegate->RendererChanged();
    Remeasure();
}

void CustomSingleLineComboBox::setModel(QAbstractItemModel* model)
{
    if (!model) {
        QTH_LOG_WARNING("CustomSingleLineComboBox: no model given; the box keeps its model");
        return;
    }
    if (model == this->model())
        return;
    QComboBox::setModel(model);
    Remeasure();
}

QSize CustomSingleLineComboBox::sizeHint() const
{
    return HintFor(false);
}

QSize CustomSingleLineComboBox::minimumSizeHint() const
{
    return HintFor(true);
}

void CustomSingleLineComboBox::paintEvent(QPaintEvent* event)
{
    if (isEditable()) {
        QComboBox::paintEvent(event); // Qt's line edit shows the text
        return;
    }
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText.clear();
    option.currentIcon = QIcon();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);

    const QModelIndex current = CurrentModelIndex();
    if (!current.isValid()) {
        // Nothing chosen: the style's label shows the placeholder, as QComboBox means to (Qt 5.15's
        // own leaves it out).
        if (placeholderText().isEmpty())
            return;
        option.currentText = placeholderText();
        option.palette.setBrush(QPalette::ButtonText, option.palette.placeholderText());
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
        return;
    }
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    m_rows->Paint(&painter, FieldOption(current, field), current);
}

void CustomSingleLineComboBox::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_keptRowsSize = QSize();
    QComboBox::changeEvent(event);
}

void CustomSingleLineComboBox::showEvent(QShowEvent* event)
{
    m_shown = true;
    QComboBox::showEvent(event);
}

QModelIndex CustomSingleLineComboBox::CurrentModelIndex() const
{
    return currentIndex() < 0 ? QModelIndex() : model()->index(currentIndex(), modelColumn(), rootModelIndex());
}

// The option the list's view would give the row, but for the box: its font, icon size,
// state and elide mode, with ButtonText for text since the field is a button.
QStyleOptionViewItem CustomSingleLineComboBox::FieldOption(const QModelIndex& index, const QRect& rect) const
{
    QStyleOptionViewItem option;
    option.initFrom(this);
    option.rect = rect;
    option.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver); // the frame shows those
    option.font = font();
    option.fontMetrics = fontMetrics();
    option.widget = this;
    option.decorationSize = iconSize();
    option.decorationPosition = QStyleOptionViewItem::Left;
    option.decorationAlignment = Qt::AlignCenter;
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.textElideMode = view()->textElideMode();
    option.locale = locale();
    option.locale.setNumberOptions(QLocale::OmitGroupSeparator);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        option.palette.setBrush(group, QPalette::Text, option.palette.brush(group, QPalette::ButtonText));
    if (!index.isValid())
        return option;
    m_rows->Fill(&option, index);
    if (!(index.flags() & Qt::ItemIsEnabled))
        option.state &= ~QStyle::State_Enabled;
    return option;
}

QSize CustomSingleLineComboBox::RowsSize() const
{
    if (sizeAdjustPolicy() != AdjustToContentsOnFirstShow || !m_shown) {
        m_keptRowsSize = QSize();
        return MeasureRows();
    }
    if (!m_keptRowsSize.isValid())
        m_keptRowsSize = MeasureRows();
    return m_keptRowsSize;
}

// The widest and the tallest row, separators aside; an empty row's size without rows.
QSize CustomSingleLineComboBox::MeasureRows() const
{
    QSize size;
    const int rows = count();
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model()->index(row, modelColumn(), rootModelIndex());
        if (!index.isValid() || IsSeparator(index))
            continue;
        size = size.expandedTo(m_rows->Size(FieldOption(index, QRect()), index));
    }
    return size.isValid() ? size : m_rows->EmptySize(FieldOption(QModelIndex(), QRect()));
}

QSize CustomSingleLineComboBox::HintFor(bool minimum) const
{
    const QSize rows = RowsSize();
    const SizeAdjustPolicy policy = sizeAdjustPolicy();
    const int characters = minimumContentsLength();
    int width = 0;
    // As in QComboBox: the minimum follows the rows only while no length in characters is set.
    if ((policy == AdjustToContents || policy == AdjustToContentsOnFirstShow) && (!minimum || characters == 0))
        width = count() > 0 ? rows.width() : 7 * fontMetrics().horizontalAdvance(QLatin1Char('x'));
    if (characters > 0) {
        // 4: QComboBox's gap between an icon and its text.
        const int icon = policy == AdjustToMinimumContentsLengthWithIcon ? iconSize().width() + 4 : 0;
        width = qMax(width, characters * fontMetrics().horizontalAdvance(QLatin1Char('X')) + icon);
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, QSize(width, rows.height()), this);
}

void CustomSingleLineComboBox::Remeasure()
{
    m_keptRowsSize = QSize();
    updateGeometry();
    update();
}

} // namespace OrvantaQT
