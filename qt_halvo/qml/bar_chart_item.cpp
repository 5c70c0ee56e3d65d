#include <qt_halvo/qml/bar_chart_item.h>

#include "qt_halvo/charts/bar_chart_painter_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>

#include <cmath>

namespace OrvantaQT {

namespace {

// The widget's width hint is Qt's default; an item needs one to be seen at all.
constexpr int kImplicitWidth = 200;
// Beyond this a percent is a mistake, and int arithmetic would overflow.
constexpr double kLargestPercent = 1e6;

// Colour values or names; what is neither paints as an invalid colour, as the widget's
// lists paint an unknown name, told in one line.
QList<QColor> ColorsFrom(const QVariantList& values, const char* list)
{
    QList<QColor> colours;
    int first = -1;
    int bad = 0;
    for (int i = 0; i < values.size(); ++i) {
        colours << values.at(i).value<QColor>();
        if (!colours.last().isValid())
            first = bad++ == 0 ? i : first;
    }
    if (bad > 0) {
        QTH_LOG_WARNING("BarChart: %d of the %s are no colours, the first at %d (\"%s\")", bad, list, first,
                        qPrintable(values.at(first).toString()));
    }
    return colours;
}

} // namespace

BarChartItem::BarChartItem(QQuickItem* parent)
    : QQuickPaintedItem(parent)
    , m_painter(new BarChartPainter)
{
    m_painter->legendFont = QGuiApplication::font();
    setAcceptHoverEvents(true);
    Resize();
}

BarChartItem::~BarChartItem() = default;

QVariantList BarChartItem::percents() const
{
    return m_percents;
}

// Entries that are no positive numbers are left out, as the widget leaves them; those
// that are not zero are told.
void BarChartItem::setPercents(const QVariantList& percents)
{
    if (percents == m_percents)
        return;
    m_percents = percents;
    int bad = 0;
    int first = -1;
    for (int i = 0; i < percents.size(); ++i) {
        bool number = false;
        const double percent = percents.at(i).toDouble(&number);
        if (!number || std::isnan(percent) || percent < 0 || percent > kLargestPercent) {
            first = bad++ == 0 ? i : first;
        }
    }
    if (bad > 0) {
        QTH_LOG_WARNING("BarChart: %d of the percents are not numbers from 0 to 1e6, the first at %d (\"%s\"); "
                        "they are left out",
                        bad, first, qPrintable(percents.at(first).toString()));
    }
    Rebuild();
    Q_EMIT percentsChanged();
}

QVariantList BarChartItem::colors() const
{
    return m_colors;
}

void BarChartItem::setColors(const QVariantList& colors)
{
    if (colors == m_colors)
        return;
    m_colors = colors;
    m_colorValues = ColorsFrom(colors, "colors");
    Rebuild();
    Q_EMIT colorsChanged();
}

QStringList BarChartItem::texts() const
{
    return m_texts;
}

void BarChartItem::setTexts(const QStringList& texts)
{
    if (texts == m_texts)
        return;
    m_texts = texts;
    Rebuild();
    Q_EMIT textsChanged();
}

QStringList BarChartItem::tooltips() const
{
    return m_tooltips;
}

void BarChartItem::setTooltips(const QStringList& tooltips)
{
    if (tooltips == m_tooltips)
        return;
    m_tooltips = tooltips;
    Rebuild();
    Q_EMIT tooltipsChanged();
}

QVariantList BarChartItem::textColors() const
{
    return m_textColors;
}

void BarChartItem::setTextColors(const QVariantList& colors)
{
    if (colors == m_textColors)
        return;
    m_textColors = colors;
    m_textColorValues = ColorsFrom(colors, "textColors");
    Rebuild();
    Q_EMIT textColorsChanged();
}

QStringList BarChartItem::legends() const
{
    return m_legends;
}

// Legends also set the number of legend lines, as the widget's legend list does.
void BarChartItem::setLegends(const QStringList& legends)
{
    if (legends == m_legends)
        return;
    m_legends = legends;
    m_painter->SetLegends(legends, nullptr);
    Resize();
    Rebuild();
    Q_EMIT legendsChanged();
}

QVariantList BarChartItem::legendLineColors() const
{
    return m_legendLineColors;
}

void BarChartItem::setLegendLineColors(const QVariantList& colors)
{
    if (colors == m_legendLineColors)
        return;
    m_legendLineColors = colors;
    m_painter->legendLineColors = ColorsFrom(colors, "legendLineColors");
    update();
    Q_EMIT legendLineColorsChanged();
}

QColor BarChartItem::inactiveLegendColor() const
{
    return m_painter->inactiveLegendColor;
}

void BarChartItem::setInactiveLegendColor(const QColor& color)
{
    if (color == m_painter->inactiveLegendColor)
        return;
    m_painter->inactiveLegendColor = color;
    update();
    Q_EMIT inactiveLegendColorChanged();
}

int BarChartItem::chartHeight() const
{
    return m_painter->chartHeight;
}

void BarChartItem::setChartHeight(int height)
{
    if (height == m_painter->chartHeight)
        return;
    if (height < 0) {
        QTH_LOG_WARNING("BarChart: chartHeight %d is negative; 0 is used", height);
        height = 0;
    }
    m_painter->chartHeight = height;
    m_painter->InvalidateLegend();
    Resize();
    update();
    Q_EMIT chartHeightChanged();
}

bool BarChartItem::showLegend() const
{
    return m_painter->showLegend;
}

void BarChartItem::setShowLegend(bool show)
{
    if (show == m_painter->showLegend)
        return;
    m_painter->showLegend = show;
    Resize();
    update();
    Q_EMIT showLegendChanged();
}

QFont BarChartItem::legendFont() const
{
    return m_painter->legendFont;
}

void BarChartItem::setLegendFont(const QFont& font)
{
    if (font == m_painter->legendFont)
        return;
    m_painter->SetLegendFont(font, nullptr);
    Resize();
    update();
    Q_EMIT legendFontChanged();
}

int BarChartItem::borderWidth() const
{
    return m_painter->borderWidth;
}

void BarChartItem::setBorderWidth(int width)
{
    if (width == m_painter->borderWidth)
        return;
    m_painter->borderWidth = width;
    update();
    Q_EMIT borderWidthChanged();
}

QColor BarChartItem::borderColor() const
{
    return m_painter->borderColor;
}

void BarChartItem::setBorderColor(const QColor& color)
{
    if (color == m_painter->borderColor)
        return;
    m_painter->borderColor = color;
    update();
    Q_EMIT borderColorChanged();
}

bool BarChartItem::useShading() const
{
    return m_painter->useShading;
}

void BarChartItem::setUseShading(bool shading)
{
    if (shading == m_painter->useShading)
        return;
    m_painter->useShading = shading;
    update();
    Q_EMIT useShadingChanged();
}

int BarChartItem::hoveredIndex() const
{
    return m_painter->hoveredIndex;
}

// The sections as the widget's setters would make them from the lists in this order;
// while QML is still assigning the properties one by one, not yet.
void BarChartItem::Rebuild()
{
    if (!isComponentComplete())
        return;
    BarChartPainter& chart = *m_painter;
    chart.barInfos.clear();
    QList<int> percents;
    for (const QVariant& entry : qAsConst(m_percents)) {
        const double percent = entry.toDouble();
        percents << (percent >= 0 && percent <= kLargestPercent ? int(std::lround(percent)) : 0);
    }
    chart.SetPercents(percents);
    const int sections = int(chart.barInfos.size());
    QStringList longer;
    const auto check = [&longer, sections](const char* name, int size) {
        if (size > sections)
            longer << QStringLiteral("%1 has %2").arg(QLatin1String(name)).arg(size);
    };
    check("colors", m_colors.size());
    check("texts", m_texts.size());
    check("tooltips", m_tooltips.size());
    check("textColors", m_textColors.size());
    check("legends", m_legends.size());
    const QString mismatch = longer.isEmpty() ? QString()
                                              : QStringLiteral("%1 entries for %2 sections").arg(longer.join(QLatin1String(", "))).arg(sections);
    if (!mismatch.isEmpty() && mismatch != m_reported)
        QTH_LOG_WARNING("BarChart: %s; the extra entries add sections of 10 %%", qPrintable(mismatch));
    m_reported = mismatch;
    chart.ApplyList(m_colorValues.size(), [this](BarInfo& info, int i) { info.color = m_colorValues.at(i); });
    chart.ApplyList(m_texts.size(), [this](BarInfo& info, int i) { info.text = m_texts.at(i); });
    chart.ApplyList(m_tooltips.size(), [this](BarInfo& info, int i) { info.tooltip = m_tooltips.at(i); });
    chart.ApplyList(m_textColorValues.size(), [this](BarInfo& info, int i) { info.textColor = m_textColorValues.at(i); });
    chart.ApplyList(m_legends.size(), [this](BarInfo& info, int i) { info.legend = m_legends.at(i); });
    update();
}

void BarChartItem::Resize()
{
    m_painter->UpdateTotalHeight(nullptr);
    // Unlike the widget's size hint, room for the whole legend.
    setImplicitSize(kImplicitWidth, m_painter->totalHeight + (m_painter->showLegend ? BarChartPainter::kBarTop : 0));
}

void BarChartItem::SetHovered(int index)
{
    if (index == m_painter->hoveredIndex)
        return;
    m_painter->hoveredIndex = index;
    update();
    Q_EMIT hoveredIndexChanged();
}

void BarChartItem::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    Rebuild();
}

void BarChartItem::hoverMoveEvent(QHoverEvent* event)
{
    SetHovered(m_painter->IndexAt(event->pos()));
}

void BarChartItem::hoverLeaveEvent(QHoverEvent*)
{
    SetHovered(-1);
}

void BarChartItem::paint(QPainter* painter)
{
    painter->setFont(m_painter->legendFont);
    // The legend measured in the painter's font asks for another height: not while painting.
    if (m_painter->Paint(*painter, int(width()), m_painter->legendFont, nullptr))
        QMetaObject::invokeMethod(this, [this] { Resize(); }, Qt::QueuedConnection);
}

} // namespace OrvantaQT
