#include <qt_halvo/views/header_view.h>

#include "cut_text_tip_p.h"

#include <qt_halvo/styles/hover_p.h>
#include <qt_halvo/styles/style_sheet.h>

#include <QtGui/QMouseEvent>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionHeader>

namespace OrvantaQT {

HeaderView::HeaderView(Qt::Orientation orientation, QWidget* parent)
    : QHeaderView(orientation, parent)
{
    setSectionsClickable(true);
    setHighlightSections(true);
    setSortIndicatorShown(true);
    // Shown, but on no section until the user or the host sorts: an arrow on the first
    // column of an unsorted table would claim an order the rows do not have.
    setSortIndicator(-1, Qt::AscendingOrder);
    // QHeaderView clips a long title; an ellipsis says there is more, in the tip.
    setTextElideMode(Qt::ElideRight);
    if (orientation == Qt::Horizontal) {
        setStretchLastSection(true);
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    // Hover events drive QHeaderView's own State_MouseOver ("::section:hover") as well.
    viewport()->setAttribute(Qt::WA_Hover);
    SetStyleProperty(this, "hovered", false, false);
    // Sections that come, go, move or change size under a still pointer.
    connect(this, &QHeaderView::sectionCountChanged, this, &HeaderView::UpdateHovered);
    connect(this, &QHeaderView::sectionResized, this, &HeaderView::UpdateHovered);
    connect(this, &QHeaderView::sectionMoved, this, &HeaderView::UpdateHovered);
}

HeaderView::~HeaderView() = default;

int HeaderView::HoveredSection() const
{
    return m_hoveredSection;
}

QRect HeaderView::SectionRect(int logicalIndex) const
{
    const int position = sectionViewportPosition(logicalIndex);
    return orientation() == Qt::Horizontal ? QRect(position, 0, sectionSize(logicalIndex), viewport()->height())
                                           : QRect(0, position, viewport()->width(), sectionSize(logicalIndex));
}

QString HeaderView::CutTitle(int logicalIndex) const
{
    const QAbstractItemModel* source = model();
    if (!source || logicalIndex < 0 || logicalIndex >= count() || isSectionHidden(logicalIndex))
        return QString();
    // The room QHeaderView::paintSection gives the title: the style's label rectangle less
    // the margins, the side arrow and the icon.
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = logicalIndex;
    option.rect = SectionRect(logicalIndex);
    option.text = source->headerData(logicalIndex, orientation(), Qt::DisplayRole).toString();
    const QVariant decoration = source->headerData(logicalIndex, orientation(), Qt::DecorationRole);
    const bool hasIcon = !qvariant_cast<QIcon>(decoration).isNull() || !qvariant_cast<QPixmap>(decoration).isNull();
    const bool sorted = isSortIndicatorShown() && sortIndicatorSection() == logicalIndex;
    if (sorted)
        option.sortIndicator = sortIndicatorOrder() == Qt::AscendingOrder ? QStyleOptionHeader::SortDown
                                                                          : QStyleOptionHeader::SortUp;
    const QStyle* own = style();
    const int headerMargin = own->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    int margin = 2 * headerMargin;
    if (sorted && (own->styleHint(QStyle::SH_Header_ArrowAlignment, nullptr, this) & Qt::AlignVCenter))
        margin += own->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this);
    if (hasIcon)
        margin += own->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this) + headerMargin;
    const int room = own->subElementRect(QStyle::SE_HeaderLabel, &option, this).width() - margin;

    const QVariant fontData = source->headerData(logicalIndex, orientation(), Qt::FontRole);
    QFont font = fontData.canConvert<QFont>() ? qvariant_cast<QFont>(fontData) : this->font();
    // Sections with selected items are drawn bold (State_On).
    const QItemSelectionModel* selection = selectionModel();
    if (highlightSections() && selection
        && (orientation() == Qt::Horizontal ? selection->columnIntersectsSelection(logicalIndex, rootIndex())
                                            : selection->rowIntersectsSelection(logicalIndex, rootIndex())))
        font.setBold(true);
    return QFontMetrics(font, this).horizontalAdvance(option.text) > room ? option.text : QString();
}

bool HeaderView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::MouseMove:
        m_pointerOver = true;
        m_pointer = event->type() == QEvent::MouseMove ? static_cast<QMouseEvent*>(event)->pos()
                                                       : static_cast<QHoverEvent*>(event)->pos();
        UpdateHovered();
        break;
    case QEvent::Leave:
    case QEvent::HoverLeave:
        if (PointerStillOver(viewport()))
            break;
        Q_FALLTHROUGH();
    case QEvent::Hide:
        m_pointerOver = false;
        UpdateHovered();
        break;
    case QEvent::ToolTip:
        if (ShowCutTitle(static_cast<QHelpEvent*>(event)))
            return true;
        break;
    default:
        break;
    }
    return QHeaderView::viewportEvent(event);
}

void HeaderView::UpdateHovered()
{
    SetStyleProperty(this, "hovered", m_pointerOver, true);
    const int section = m_pointerOver ? logicalIndexAt(m_pointer) : -1;
    if (section == m_hoveredSection)
        return;
    m_hoveredSection = section;
    Q_EMIT HoveredSectionChanged(section);
}

bool HeaderView::ShowCutTitle(QHelpEvent* event)
{
    // The model's own tip, and the header's over a title that fits, are QHeaderView's.
    const int section = logicalIndexAt(event->pos());
    if (section < 0 || model()->headerData(section, orientation(), Qt::ToolTipRole).isValid())
        return false;
    return ShowCutTextTip(event, CutTitle(section), viewport(), SectionRect(section));
}

} // namespace OrvantaQT
