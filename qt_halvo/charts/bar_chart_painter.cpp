#include "bar_chart_painter_p.h"

#include <qt_halvo/widgets/text/line_break_pattern_p.h>

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QStaticText>

#include <algorithm>
#include <cmath>

namespace OrvantaQT {

namespace {

constexpr int kMinimumSectionWidth = 8;
constexpr int kLegendGap = 8;
constexpr int kMarkerOffset = 4;
constexpr int kMarkerSize = 8;

QRectF Hovered(const QRectF& rect)
{
    return rect.adjusted(1, -2, -1, 2);
}

void DrawElidedText(QPainter& painter, const QRectF& rect, const QString& text, const QColor& color, const QFont& font)
{
    if (text.isEmpty())
        return;
    painter.setPen(QPen(color));
    painter.setFont(font);
    const QFontMetrics metrics = painter.fontMetrics();
    const int average = metrics.averageCharWidth();
    if (3 * average < rect.width()) {
        const QString elided = metrics.elidedText(text, Qt::ElideRight, int(rect.width() - average));
        painter.drawText(QRectF(rect.left() + average, rect.top(), rect.width() - average, rect.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, elided);
    }
}

} // namespace

struct BarChartPainter::LegendLayout
{
    struct Line
    {
        QStaticText text;
        QPointF topLeft;
        int index = 0; // which legend line colour applies
    };
    struct Part
    {
        int key = 0;
        QRectF dot;
        QVector<Line> lines;
    };
    // What the layout was made for; a different width, height or font makes a new one.
    int width = -1;
    int height = -1;
    QFont painterFont;
    QVector<Part> parts; // in painting order
};

BarChartPainter::BarChartPainter() = default;
BarChartPainter::~BarChartPainter() = default;

void BarChartPainter::SetPercents(const QList<int>& percents)
{
    QList<int> kept;
    for (int percent : percents) {
        if (percent > 0)
            kept << percent;
    }
    for (int i = 0; i < kept.size(); ++i)
        barInfos[i].percent = kept.at(i);
    barInfos.erase(barInfos.lower_bound(kept.size()), barInfos.end());
    InvalidateLegend();
}

void BarChartPainter::SetLegends(const QStringList& legends, const QPaintDevice* device)
{
    int lines = 1;
    for (int i = 0; i < legends.size(); ++i) {
        barInfos[i].legend = legends.at(i);
        lines = std::max(lines, CountLineBreaks(legends.at(i)) + 1);
    }
    legendLineCount = lines;
    InvalidateLegend();
    legendHeight = showLegend ? LegendHeight(QFontMetrics(legendFont, device)) : 0;
    UpdateTotalHeight(device);
}

void BarChartPainter::SetInfos(const std::map<int, BarInfo>& infos)
{
    barInfos.clear();
    for (const auto& entry : infos) {
        if (entry.second.percent > 0 || !entry.second.hideIfZero)
            barInfos.insert(entry);
    }
    InvalidateLegend();
}

void BarChartPainter::SetLegendFont(const QFont& font, const QPaintDevice* device)
{
    legendFont = font;
    InvalidateLegend();
    legendHeight = showLegend ? LegendHeight(QFontMetrics(legendFont, device)) : 0;
    UpdateTotalHeight(device);
}

int BarChartPainter::LegendHeight(const QFontMetrics& metrics) const
{
    const int n = legendLineCount;
    if (n == 0)
        return 0;
    return n * (metrics.descent() + metrics.lineSpacing()) + (n - 1) * metrics.descent();
}

// The bar's own top offset is not counted: the legend reaches that much lower.
void BarChartPainter::UpdateTotalHeight(const QPaintDevice* device)
{
    int total = chartHeight;
    if (showLegend) {
        if (legendHeight == 0)
            legendHeight = LegendHeight(QFontMetrics(legendFont, device));
        total += kLegendGap + legendHeight;
    }
    totalHeight = total;
}

void BarChartPainter::InvalidateLegend()
{
    m_legend.reset();
}

// Widths in percent of the room between the rounded ends; a section narrower than 8 px
// is widened to 8 at the next section's expense, or, the last one, at the expense of
// the nearest earlier section that can afford it.
void BarChartPainter::UpdateSectionRects(int width)
{
    sectionRects.clear();
    const int h = chartHeight;
    const int room = (width - 1) - h;
    qreal x = h / 2 + 1;
    qreal carry = 0;
    const bool minimum = int(barInfos.size()) * kMinimumSectionWidth <= room;
    int index = 0;
    const int count = int(barInfos.size());
    for (const auto& entry : barInfos) {
        qreal sectionWidth = entry.second.percent * room / 100.0 + carry;
        carry = 0;
        if (minimum && sectionWidth < kMinimumSectionWidth) {
            const qreal deficit = kMinimumSectionWidth - sectionWidth;
            if (index != count - 1) {
                carry = -deficit;
            } else {
                auto payer = sectionRects.begin();
                for (auto it = sectionRects.rbegin(); it != sectionRects.rend(); ++it) {
                    if (it->second.width() - deficit >= kMinimumSectionWidth) {
                        payer = std::prev(it.base());
                        break;
                    }
                }
                if (payer != sectionRects.end()) {
                    payer->second.setRight(payer->second.right() - deficit);
                    for (auto later = std::next(payer); later != sectionRects.end(); ++later)
                        later->second.translate(-deficit, 0);
                }
                x = std::trunc(x - deficit);
            }
            sectionWidth = kMinimumSectionWidth;
        }
        sectionRects[entry.first] = QRectF(x, kBarTop, sectionWidth, h);
        x = std::trunc(x + sectionWidth);
        ++index;
    }
}

void BarChartPainter::UpdateTextRects()
{
    textRects.clear();
    const int half = borderWidth > 0 ? borderWidth / 2 : 0;
    const int count = int(sectionRects.size());
    int index = 0;
    for (const auto& entry : sectionRects) {
        QRectF rect = entry.second;
        if (count > 1) {
            const bool first = index == 0;
            const bool last = index == count - 1;
            rect.adjust(first ? 0 : half, 0, last ? 0 : -half, 0);
        }
        textRects[entry.first] = QRectF(rect.toRect());
        ++index;
    }
}

QColor BarChartPainter::ColorOf(int key, const BarInfo& info) const
{
    return hoveredIndex == -1 || hoveredIndex == key ? info.color : info.inactiveColor;
}

bool BarChartPainter::Paint(QPainter& painter, int width, const QFont& textFont, const QPaintDevice* device)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    UpdateSectionRects(width);
    UpdateTextRects();
    PaintChart(painter, textFont);
    if (!showLegend || barInfos.empty())
        return false;
    const int height = LegendHeight(painter.fontMetrics());
    const bool changed = height != legendHeight;
    if (changed) {
        legendHeight = height;
        UpdateTotalHeight(device);
    }
    if (!m_legend || m_legend->width != width || m_legend->height != height || m_legend->painterFont != painter.font())
        LayOutLegend(painter.font(), width, height, device);
    PaintLegendParts(painter);
    return changed;
}

void BarChartPainter::PaintChart(QPainter& painter, const QFont& textFont)
{
    if (barInfos.empty())
        return;

    // The rounded ends.
    const auto cap = [this, &painter](int key, bool leftEnd) {
        const BarInfo& info = barInfos.at(key);
        QRectF rect = sectionRects.at(key);
        if (key == hoveredIndex)
            rect = Hovered(rect);
        const QColor colour = ColorOf(key, info);
        const qreal edge = leftEnd ? rect.left() : rect.right();
        painter.setPen(QPen(QBrush(colour.darker(100)), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(colour);
        painter.drawEllipse(QRectF(edge - chartHeight / 2, rect.top(), chartHeight, rect.height()));
    };
    cap(barInfos.begin()->first, true);
    cap(barInfos.rbegin()->first, false);

    QPainterPath dividers;
    const int last = barInfos.rbegin()->first;
    for (const auto& entry : barInfos) {
        const int key = entry.first;
        const BarInfo& info = entry.second;
        const QRectF section = sectionRects.at(key);
        const QRectF rect = key == hoveredIndex ? Hovered(section) : section;
        const QColor colour = ColorOf(key, info);
        painter.fillRect(rect, colour);
        if (useShading)
            painter.fillRect(rect, QBrush(info.color.darker(125), Qt::BDiagPattern));
        painter.setPen(QPen(colour.darker(100)));
        painter.drawLine(rect.topLeft(), rect.topRight());
        painter.drawLine(rect.bottomLeft(), rect.bottomRight());
        if (key != last) {
            const QPointF top(section.right(), section.top() + 1);
            const QPointF bottom(section.right(), section.bottom() - 1);
            painter.drawLine(top, bottom);
            dividers.moveTo(top);
            dividers.lineTo(bottom);
        }
        if (!showLegend && textRects.count(key))
            DrawElidedText(painter, textRects.at(key), info.text, info.textColor, textFont);
    }
    if (borderWidth > 0) {
        painter.strokePath(dividers, QPen(QBrush(borderColor, Qt::SolidPattern), borderWidth, Qt::SolidLine,
                                          Qt::RoundCap, Qt::RoundJoin));
    }
}

// The legend's metrics come from the painter's font until the first text is drawn in the
// legend font; `currentFont` follows that as drawing would.
void BarChartPainter::LayOutLegend(const QFont& painterFont, int width, int height, const QPaintDevice* device)
{
    m_legend.reset(new LegendLayout);
    m_legend->width = width;
    m_legend->height = height;
    m_legend->painterFont = painterFont;
    QFont currentFont = painterFont;
    const int top = kBarTop + chartHeight + kLegendGap;
    const int w = width;
    legendRects.clear();
    if (barInfos.size() == 1) {
        const auto& only = *barInfos.begin();
        LayOutLegendPart(QRectF(0, top, w, height), only.first, only.second, &currentFont, device);
        return;
    }
    const int n = int(barInfos.size());
    const int share = w / n;
    const auto& lastEntry = *barInfos.rbegin();
    const QFontMetrics metrics(currentFont, device);
    QRectF lastRect(w - share, top, share, height);
    int widest = 0;
    for (const QString& line : lastEntry.second.legend.split(LineBreakPattern()))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    const int need = metrics.averageCharWidth() + kMarkerSize + 2 * kMarkerOffset + widest;
    if (lastRect.width() - need > 0)
        lastRect.setLeft(lastRect.left() + (lastRect.width() - need));
    LayOutLegendPart(lastRect, lastEntry.first, lastEntry.second, &currentFont, device);

    const qreal step = unsigned(w) / unsigned(n - 1);
    qreal x = 0;
    for (const auto& entry : barInfos) {
        if (entry.first == lastEntry.first)
            break;
        LayOutLegendPart(QRectF(x, top, step, height), entry.first, entry.second, &currentFont, device);
        x = std::trunc(x + step);
    }
}

// A dot, then the legend's lines elided to the entry's width, each centred in a line of
// the current font's spacing as text drawn into that rectangle would be.
void BarChartPainter::LayOutLegendPart(const QRectF& rect, int key, const BarInfo& info, QFont* currentFont,
                                       const QPaintDevice* device)
{
    LegendLayout::Part part;
    part.key = key;
    part.dot = QRectF(rect.x() + kMarkerOffset, rect.y() + kMarkerOffset, kMarkerSize, kMarkerSize);
    const QRectF text = rect.adjusted(kMarkerSize + 2 * kMarkerOffset, 0, 0, 0);
    const QFontMetrics metrics(*currentFont, device);
    const QFontMetrics legendMetrics(legendFont, device);
    const QFontMetricsF legendMetricsF(legendFont, device);
    const int average = legendMetrics.averageCharWidth();
    const QStringList lines = info.legend.split(LineBreakPattern());
    qreal y = std::trunc(text.top());
    int widest = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i);
        if (!line.isEmpty()) {
            *currentFont = legendFont;
            if (3 * average < text.width()) {
                LegendLayout::Line laid;
                laid.text = QStaticText(legendMetrics.elidedText(line, Qt::ElideRight, int(text.width() - average)));
                laid.text.setTextFormat(Qt::PlainText);
                laid.text.prepare(QTransform(), legendFont);
                const qreal textHeight = legendMetricsF.ascent() + legendMetricsF.descent();
                laid.topLeft = QPointF(text.left() + average, y + (metrics.lineSpacing() - textHeight) / 2);
                laid.index = i;
                part.lines << laid;
            }
            widest = std::max(widest, std::min(int(std::floor(text.width())), legendMetrics.horizontalAdvance(line)));
        }
        y = std::trunc(y + metrics.lineSpacing() + metrics.descent());
    }
    legendRects[key] = QRect(int(rect.x()), int(rect.y()), kMarkerSize + 2 * kMarkerOffset + widest, int(rect.height()));
    m_legend->parts << part;
}

void BarChartPainter::PaintLegendParts(QPainter& painter)
{
    painter.setFont(legendFont);
    for (const LegendLayout::Part& part : qAsConst(m_legend->parts)) {
        const BarInfo& info = barInfos.at(part.key);
        const QColor colour = ColorOf(part.key, info);
        painter.setPen(QPen(QBrush(colour.darker(150)), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(colour);
        painter.drawEllipse(part.dot);
        const bool active = hoveredIndex == -1 || hoveredIndex == part.key;
        for (const LegendLayout::Line& line : part.lines) {
            QColor lineColour = Qt::gray;
            if (active)
                lineColour = line.index < legendLineColors.size() ? legendLineColors.at(line.index) : QColor(Qt::gray);
            else if (inactiveLegendColor.isValid())
                lineColour = inactiveLegendColor;
            painter.setPen(lineColour);
            painter.drawStaticText(line.topLeft, line.text);
        }
    }
}

int BarChartPainter::IndexAt(const QPoint& pos) const
{
    for (const auto& entry : sectionRects) {
        if (entry.second.contains(pos))
            return entry.first;
    }
    for (const auto& entry : legendRects) {
        if (entry.second.contains(pos))
            return entry.first;
    }
    return -1;
}

} // namespace OrvantaQT
