#include <qt_halvo/charts/bar_chart.h>

#include "bar_chart_painter_p.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>

namespace OrvantaQT {

namespace {

QString Quote(const QString& text)
{
    return QStringLiteral("\"%1\"").arg(text);
}

} // namespace

BarChart::BarChart(QWidget* parent)
    : QWidget(parent)
    , m_painter(new BarChartPainter)
{
    m_painter->legendFont = font();
    setAttribute(Qt::WA_MouseTracking);
}

BarChart::~BarChart() = default;

int BarChart::chartHeight() const
{
    return m_painter->chartHeight;
}

bool BarChart::showLegend() const
{
    return m_painter->showLegend;
}

QFont BarChart::legendFont() const
{
    return m_painter->legendFont;
}

int BarChart::borderWidth() const
{
    return m_painter->borderWidth;
}

QColor BarChart::borderColor() const
{
    return m_painter->borderColor;
}

bool BarChart::useShading() const
{
    return m_painter->useShading;
}

template <typename Field>
QStringList BarChart::Quoted(Field field) const
{
    QStringList list;
    for (const auto& entry : m_painter->barInfos)
        list << Quote(field(entry.second));
    return list;
}

QStringList BarChart::percentList() const
{
    return Quoted([](const BarInfo& info) { return QString::number(info.percent); });
}

QStringList BarChart::colorList() const
{
    return Quoted([](const BarInfo& info) { return info.color.name(); });
}

QStringList BarChart::textList() const
{
    return Quoted([](const BarInfo& info) { return info.text; });
}

QStringList BarChart::tooltipList() const
{
    return Quoted([](const BarInfo& info) { return info.tooltip; });
}

QStringList BarChart::textColorList() const
{
    return Quoted([](const BarInfo& info) { return info.textColor.name(); });
}

QStringList BarChart::legendList() const
{
    return Quoted([](const BarInfo& info) { return info.legend; });
}

void BarChart::setChartHeight(int height)
{
    m_painter->chartHeight = height;
    m_painter->InvalidateLegend();
    m_painter->UpdateTotalHeight(this);
    adjustSize();
    update();
}

void BarChart::resetChartHeight()
{
    setChartHeight(8);
}

void BarChart::setShowLegend(bool show)
{
    m_painter->showLegend = show;
    m_painter->UpdateTotalHeight(this);
    adjustSize();
    update();
}

void BarChart::resetShowLegend()
{
    setShowLegend(true);
}

void BarChart::setLegendFont(const QFont& font)
{
    QWidget::setFont(font);
    m_painter->SetLegendFont(font, this);
    adjustSize();
    update();
}

void BarChart::resetLegendFont()
{
    setLegendFont(QFont());
}

void BarChart::setBorderWidth(int width)
{
    m_painter->borderWidth = width;
    update();
}

void BarChart::resetBorderWidth()
{
    setBorderWidth(1);
}

void BarChart::setBorderColor(const QColor& color)
{
    m_painter->borderColor = color;
    update();
}

void BarChart::resetBorderColor()
{
    setBorderColor(Qt::black);
}

void BarChart::setPercentList(const QStringList& list)
{
    QList<int> percents;
    for (const QString& entry : list)
        percents << entry.toInt();
    m_painter->SetPercents(percents);
    update();
}

void BarChart::resetPercentList()
{
    setPercentList({});
}

void BarChart::setColorList(const QStringList& list)
{
    m_painter->ApplyList(list.size(), [&list](BarInfo& info, int i) { info.color.setNamedColor(list.at(i)); });
    update();
}

void BarChart::resetColorList()
{
    update();
}

void BarChart::setTextList(const QStringList& list)
{
    m_painter->ApplyList(list.size(), [&list](BarInfo& info, int i) { info.text = list.at(i); });
    update();
}

void BarChart::resetTextList()
{
    update();
}

void BarChart::setTooltipList(const QStringList& list)
{
    m_painter->ApplyList(list.size(), [&list](BarInfo& info, int i) { info.tooltip = list.at(i); });
    update();
}

void BarChart::resetTooltipList()
{
    update();
}

void BarChart::setTextColorList(const QStringList& list)
{
    m_painter->ApplyList(list.size(), [&list](BarInfo& info, int i) { info.textColor.setNamedColor(list.at(i)); });
    update();
}

void BarChart::resetTextColorList()
{
    update();
}

void BarChart::setUseShading(bool shading)
{
    m_painter->useShading = shading;
    update();
}

void BarChart::resetUseShading()
{
    setUseShading(false);
}

void BarChart::setLegendList(const QStringList& list)
{
    m_painter->SetLegends(list, this);
    adjustSize();
    update();
}

void BarChart::resetLegendList()
{
    setLegendList({});
}

void BarChart::SetBarInfoList(const std::map<int, BarInfo>& infos)
{
    m_painter->SetInfos(infos);
    update();
}

const std::map<int, BarInfo>& BarChart::BarInfos() const
{
    return m_painter->barInfos;
}

void BarChart::SetLegendLineColors(const QList<QColor>& colors, const QColor& inactiveColor)
{
    m_painter->legendLineColors = colors;
    m_painter->inactiveLegendColor = inactiveColor;
    update();
}

std::map<int, QRectF> BarChart::SectionRects() const
{
    return m_painter->sectionRects;
}

std::map<int, QRectF> BarChart::TextRects() const
{
    return m_painter->textRects;
}

std::map<int, QRect> BarChart::LegendRects() const
{
    return m_painter->legendRects;
}

int BarChart::HoveredIndex() const
{
    return m_painter->hoveredIndex;
}

int BarChart::IndexByPos(const QPoint& pos) const
{
    return m_painter->IndexAt(pos);
}

QSize BarChart::sizeHint() const
{
    return QSize(QWidget::sizeHint().width(), m_painter->totalHeight);
}

QSize BarChart::minimumSizeHint() const
{
    return QSize(QWidget::minimumSizeHint().width(), m_painter->totalHeight);
}

void BarChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_painter->Paint(painter, width(), font(), this))
        adjustSize();
}

bool BarChart::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        const int index = IndexByPos(static_cast<QMouseEvent*>(event)->pos());
        if (index != m_painter->hoveredIndex) {
            m_painter->hoveredIndex = index;
            update();
        }
        break;
    }
    case QEvent::Leave:
        if (m_painter->hoveredIndex != -1) {
            m_painter->hoveredIndex = -1;
            update();
        }
        break;
    case QEvent::ToolTip: {
        auto* help = static_cast<QHelpEvent*>(event);
        const auto& infos = m_painter->barInfos;
        const auto found = infos.find(IndexByPos(help->pos()));
        if (found != infos.end() && !found->second.tooltip.isEmpty()) {
            QToolTip::showText(help->globalPos(), QStringLiteral("<p>%1</p>").arg(found->second.tooltip));
        } else {
            QToolTip::hideText();
            event->ignore();
        }
        return true;
    }
    default:
        break;
    }
    return QWidget::event(event);
}

} // namespace OrvantaQT
