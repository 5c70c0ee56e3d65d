#include <qt_halvo/charts/bar_chart.h>

#include <qt_halvo/widgets/text/line_break_pattern_p.h>

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QStaticText>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>

namespace OrvantaQT {

namespace {

constexpr int kBarTop = 8;
constexpr int kMinimumSectionWidth = 8;

QRectF Hovered(const QRectF& rect)
{
    return rect.adjusted(1, -2, -1, 2);
}

QString Quote(const QString& text)
{
    return QStringLiteral("\"%1\"").arg(text);
}

} // namespace

BarChart::BarChart(QWidget* parent)
    : QWidget(parent)
    , m_legendFont(font())
{
    setAttribute(Qt::WA_MouseTracking);
}

BarChart::~BarChart() = default;

int BarChart::chartHeight() const
{
    return m_chartHeight;
}

bool BarChart::showLegend() const
{
    return m_showLegend;
}

QFont BarChart::legendFont() const
{
    return m_legendFont;
}

int BarChart::borderWidth() const
{
    return m_borderWidth;
}

QColor BarChart::borderColor() const
{
    return m_borderColor;
}

bool BarChart::useShading() const
{
    return m_useShading;
}

template <typename Field>
QStringList BarChart::Quoted(Field field) const
{
    QStringList list;
    for (const auto& entry : m_barInfos)
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

int BarChart::LegendHeight(const QFontMetrics& metrics) const
{
    const int n = m_legendLineCount;
    if (n == 0)
        return 0;
    return n * (metrics.descent() + metrics.lineSpacing()) + (n - 1) * metrics.descent();
}

// The bar's own top offset is not counted: the legend reaches that much lower.
void BarChart::UpdateTotalHeight()
{
    int total = m_chartHeight;
    if (m_showLegend) {
        if (m_legendHeight == 0)
            m_legendHeight = LegendHeight(QFontMetrics(m_legendFont, this));
        total += m_legendGap + m_legendHeight;
    }
    m_totalHeight = total;
}

void BarChart::setChartHeight(int height)
{
    m_chartHeight = height;
    InvalidateLegend();
    UpdateTotalHeight();
    adjustSize();
    update();
}

void BarChart::resetChartHeight()
{
    setChartHeight(8);
}

void BarChart::setShowLegend(bool show)
{
    m_showLegend = show;
    UpdateTotalHeight();
    adjustSize();
    update();
}

void BarChart::resetShowLegend()
{
    setShowLegend(true);
}

void BarChart::setLegendFont(const QFont& font)
{
    m_legendFont = font;
    QWidget::setFont(font);
    InvalidateLegend();
    m_legendHeight = m_showLegend ? LegendHeight(QFontMetrics(m_legendFont, this)) : 0;
    UpdateTotalHeight();
    adjustSize();
    update();
}

void BarChart::resetLegendFont()
{
    setLegendFont(QFont());
}

void BarChart::setBorderWidth(int width)
{
    m_borderWidth = width;
    update();
}

void BarChart::resetBorderWidth()
{
    setBorderWidth(1);
}

void BarChart::setBorderColor(const QColor& color)
{
    m_borderColor = color;
    update();
}

void BarChart::resetBorderColor()
{
    setBorderColor(Qt::black);
}

template <typename Apply>
void BarChart::ApplyList(const QStringList& list, Apply apply)
{
    for (int i = 0; i < list.size(); ++i)
        apply(m_barInfos[i], list.at(i)); // a new section starts from the defaults
    InvalidateLegend();
    update();
}

void BarChart::setPercentList(const QStringList& list)
{
    QList<int> percents;
    for (const QString& entry : list) {
        const int percent = entry.toInt();
        if (percent > 0)
            percents << percent;
    }
    for (int i = 0; i < percents.size(); ++i)
        m_barInfos[i].percent = percents.at(i);
    m_barInfos.erase(m_barInfos.lower_bound(percents.size()), m_barInfos.end());
    InvalidateLegend();
    update();
}

void BarChart::resetPercentList()
{
    setPercentList({});
}

void BarChart::setColorList(const QStringList& list)
{
    ApplyList(list, [](BarInfo& info, const QString& entry) { info.color.setNamedColor(entry); });
}

void BarChart::resetColorList()
{
    update();
}

void BarChart::setTextList(const QStringList& list)
{
    ApplyList(list, [](BarInfo& info, const QString& entry) { info.text = entry; });
}

void BarChart::resetTextList()
{
    update();
}

void BarChart::setTooltipList(const QStringList& list)
{
    ApplyList(list, [](BarInfo& info, const QString& entry) { info.tooltip = entry; });
}

void BarChart::resetTooltipList()
{
    update();
}

void BarChart::setTextColorList(const QStringList& list)
{
    ApplyList(list, [](BarInfo& info, const QString& entry) { info.textColor.setNamedColor(entry); });
}

void BarChart::resetTextColorList()
{
    update();
}

void BarChart::setUseShading(bool shading)
{
    m_useShading = shading;
    update();
}

void BarChart::resetUseShading()
{
    setUseShading(false);
}

void BarChart::setLegendList(const QStringList& list)
{
    int lines = 1;
    for (int i = 0; i < list.size(); ++i) {
        m_barInfos[i].legend = list.at(i);
        lines = std::max(lines, CountLineBreaks(list.at(i)) + 1);
    }
    m_legendLineCount = lines;
    InvalidateLegend();
    m_legendHeight = m_showLegend ? LegendHeight(QFontMetrics(m_legendFont, this)) : 0;
    UpdateTotalHeight();
    adjustSize();
    update();
}

void BarChart::resetLegendList()
{
    setLegendList({});
}

void BarChart::SetBarInfoList(const std::map<int, BarInfo>& infos)
{
    m_barInfos.clear();
    for (const auto& entry : infos) {
        if (entry.second.percent > 0 || !entry.second.hideIfZero)
            m_barInfos.insert(entry);
    }
    InvalidateLegend();
    update();
}

const std::map<int, BarInfo>& BarChart::BarInfos() const
{
    return m_barInfos;
}

void BarChart::SetLegendLineColors(const QList<QColor>& colors, const QColor& inactiveColor)
{
    m_legendLineColors = colors;
    m_inactiveLegendColor = inactiveColor;
    update();
}

std::map<int, QRectF> BarChart::SectionRects() const
{
    return m_sectionRects;
}

std::map<int, QRectF> BarChart::TextRects() const
{
    return m_textRects;
}

std::map<int, QRect> BarChart::LegendRects() const
{
    return m_legendRects;
}

int BarChart::HoveredIndex() const
{
    return m_hoveredIndex;
}

QSize BarChart::sizeHint() const
{
    return QSize(QWidget::sizeHint().width(), m_totalHeight);
}

QSize BarChart::minimumSizeHint() const
{
    return QSize(QWidget::minimumSizeHint().width(), m_totalHeight);
}

// Widths in percent of the room between the rounded ends; a section narrower than 8 px
// is widened to 8 at the next section's expense, or, the last one, at the expense of
// the nearest earlier section that can afford it.
void BarChart::UpdateSectionRects()
{
    m_sectionRects.clear();
    const int h = m_chartHeight;
    const int room = (width() - 1) - h;
    qreal x = h / 2 + 1;
    qreal carry = 0;
    const bool minimum = int(m_barInfos.size()) * kMinimumSectionWidth <= room;
    int index = 0;
    const int count = int(m_barInfos.size());
    for (const auto& entry : m_barInfos) {
        qreal width = entry.second.percent * room / 100.0 + carry;
        carry = 0;
        if (minimum && width < kMinimumSectionWidth) {
            const qreal deficit = kMinimumSectionWidth - width;
            if (index != count - 1) {
                carry = -deficit;
            } else {
                auto payer = m_sectionRects.begin();
                for (auto it = m_sectionRects.rbegin(); it != m_sectionRects.rend(); ++it) {
                    if (it->second.width() - deficit >= kMinimumSectionWidth) {
                        payer = std::prev(it.base());
                        break;
                    }
                }
                if (payer != m_sectionRects.end()) {
                    payer->second.setRight(payer->second.right() - deficit);
                    for (auto later = std::next(payer); later != m_sectionRects.end(); ++later)
                        later->second.translate(-deficit, 0);
                }
                x = std::trunc(x - deficit);
            }
            width = kMinimumSectionWidth;
        }
        m_sectionRects[entry.first] = QRectF(x, kBarTop, width, h);
        x = std::trunc(x + width);
        ++index;
    }
}

void BarChart::UpdateTextRects()
{
    m_textRects.clear();
    const int half = m_borderWidth > 0 ? m_borderWidth / 2 : 0;
    const int count = int(m_sectionRects.size());
    int index = 0;
    for (const auto& entry : m_sectionRects) {
        QRectF rect = entry.second;
        if (count > 1) {
            const bool first = index == 0;
            const bool last = index == count - 1;
            rect.adjust(first ? 0 : half, 0, last ? 0 : -half, 0);
        }
        m_textRects[entry.first] = QRectF(rect.toRect());
        ++index;
    }
}

QColor BarChart::ColorOf(int key, const BarInfo& info) const
{
    return m_hoveredIndex == -1 || m_hoveredIndex == key ? info.color : info.inactiveColor;
}

void BarChart::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    PaintChart(painter);
    if (m_showLegend)
        PaintLegend(painter);
}

void BarChart::PaintChart(QPainter& painter)
{
    UpdateSectionRects();
    UpdateTextRects();
    if (m_barInfos.empty())
        return;

    // The rounded ends.
    const auto cap = [this, &painter](int key, bool leftEnd) {
        const BarInfo& info = m_barInfos.at(key);
        QRectF rect = m_sectionRects.at(key);
        if (key == m_hoveredIndex)
            rect = Hovered(rect);
        const QColor colour = ColorOf(key, info);
        const qreal edge = leftEnd ? rect.left() : rect.right();
        painter.setPen(QPen(QBrush(colour.darker(100)), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(colour);
        painter.drawEllipse(QRectF(edge - m_chartHeight / 2, rect.top(), m_chartHeight, rect.height()));
    };
    cap(m_barInfos.begin()->first, true);
    cap(m_barInfos.rbegin()->first, false);

    QPainterPath dividers;
    const int last = m_barInfos.rbegin()->first;
    for (const auto& entry : m_barInfos) {
        const int key = entry.first;
        const BarInfo& info = entry.second;
        const QRectF section = m_sectionRects.at(key);
        const QRectF rect = key == m_hoveredIndex ? Hovered(section) : section;
        const QColor colour = ColorOf(key, info);
        painter.fillRect(rect, colour);
        if (m_useShading)
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
        if (!m_showLegend && m_textRects.count(key))
            DrawElidedText(painter, m_textRects.at(key), info.text, info.textColor, font());
    }
    if (m_borderWidth > 0) {
        painter.strokePath(dividers, QPen(QBrush(m_borderColor, Qt::SolidPattern), m_borderWidth, Qt::SolidLine,
                                          Qt::RoundCap, Qt::RoundJoin));
    }
}

int BarChart::DrawElidedText(QPainter& painter, const QRectF& rect, const QString& text, const QColor& color,
                             const QFont& font)
{
    if (text.isEmpty())
        return 0;
    painter.setPen(QPen(color));
    painter.setFont(font);
    const QFontMetrics metrics = painter.fontMetrics();
    const int average = metrics.averageCharWidth();
    if (3 * average < rect.width()) {
        const QString elided = metrics.elidedText(text, Qt::ElideRight, int(rect.width() - average));
        painter.drawText(QRectF(rect.left() + average, rect.top(), rect.width() - average, rect.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, elided);
    }
    return std::min(int(std::floor(rect.width())), metrics.horizontalAdvance(text));
}

struct BarChart::LegendLayout
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

void BarChart::InvalidateLegend()
{
    m_legend.reset();
}

void BarChart::PaintLegend(QPainter& painter)
{
    if (m_barInfos.empty())
        return;
    const int height = LegendHeight(painter.fontMetrics());
    if (height != m_legendHeight) {
        m_legendHeight = height;
        UpdateTotalHeight();
        adjustSize();
    }
    if (!m_legend || m_legend->width != width() || m_legend->height != height || m_legend->painterFont != painter.font())
        LayOutLegend(painter.font(), height);
    PaintLegendParts(painter);
}

// The legend's metrics come from the painter's font until the first text is drawn in the
// legend font; `currentFont` follows that as drawing would.
void BarChart::LayOutLegend(const QFont& painterFont, int height)
{
    m_legend.reset(new LegendLayout);
    m_legend->width = width();
    m_legend->height = height;
    m_legend->painterFont = painterFont;
    QFont currentFont = painterFont;
    const int top = kBarTop + m_chartHeight + m_legendGap;
    const int w = width();
    m_legendRects.clear();
    if (m_barInfos.size() == 1) {
        const auto& only = *m_barInfos.begin();
        LayOutLegendPart(QRectF(0, top, w, height), only.first, only.second, &currentFont);
        return;
    }
    const int n = int(m_barInfos.size());
    const int share = w / n;
    const auto& lastEntry = *m_barInfos.rbegin();
    const QFontMetrics metrics(currentFont, this);
    QRectF lastRect(w - share, top, share, height);
    int widest = 0;
    for (const QString& line : lastEntry.second.legend.split(LineBreakPattern()))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    const int need = metrics.averageCharWidth() + m_legendMarkerSize + 2 * m_legendMarkerOffset + widest;
    if (lastRect.width() - need > 0)
        lastRect.setLeft(lastRect.left() + (lastRect.width() - need));
    LayOutLegendPart(lastRect, lastEntry.first, lastEntry.second, &currentFont);

    const qreal step = unsigned(w) / unsigned(n - 1);
    qreal x = 0;
    for (const auto& entry : m_barInfos) {
        if (entry.first == lastEntry.first)
            break;
        LayOutLegendPart(QRectF(x, top, step, height), entry.first, entry.second, &currentFont);
        x = std::trunc(x + step);
    }
}

// A dot, then the legend's lines elided to the entry's width, each centred in a line of
// the current font's spacing as text drawn into that rectangle would be.
void BarChart::LayOutLegendPart(const QRectF& rect, int key, const BarInfo& info, QFont* currentFont)
{
    LegendLayout::Part part;
    part.key = key;
    part.dot = QRectF(rect.x() + m_legendMarkerOffset, rect.y() + m_legendMarkerOffset, m_legendMarkerSize,
                      m_legendMarkerSize);
    const QRectF text = rect.adjusted(m_legendMarkerSize + 2 * m_legendMarkerOffset, 0, 0, 0);
    const QFontMetrics metrics(*currentFont, this);
    const QFontMetrics legendMetrics(m_legendFont, this);
    const QFontMetricsF legendMetricsF(m_legendFont, this);
    const int average = legendMetrics.averageCharWidth();
    const QStringList lines = info.legend.split(LineBreakPattern());
    qreal y = std::trunc(text.top());
    int widest = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i);
        if (!line.isEmpty()) {
            *currentFont = m_legendFont;
            if (3 * average < text.width()) {
                LegendLayout::Line laid;
                laid.text = QStaticText(legendMetrics.elidedText(line, Qt::ElideRight, int(text.width() - average)));
                laid.text.setTextFormat(Qt::PlainText);
                laid.text.prepare(QTransform(), m_legendFont);
                const qreal textHeight = legendMetricsF.ascent() + legendMetricsF.descent();
                laid.topLeft = QPointF(text.left() + average, y + (metrics.lineSpacing() - textHeight) / 2);
                laid.index = i;
                part.lines << laid;
            }
            widest = std::max(widest, std::min(int(std::floor(text.width())), legendMetrics.horizontalAdvance(line)));
        }
        y = std::trunc(y + metrics.lineSpacing() + metrics.descent());
    }
    m_legendRects[key] =
        QRect(int(rect.x()), int(rect.y()), m_legendMarkerSize + 2 * m_legendMarkerOffset + widest, int(rect.height()));
    m_legend->parts << part;
}

void BarChart::PaintLegendParts(QPainter& painter)
{
    painter.setFont(m_legendFont);
    for (const LegendLayout::Part& part : qAsConst(m_legend->parts)) {
        const BarInfo& info = m_barInfos.at(part.key);
        const QColor colour = ColorOf(part.key, info);
        painter.setPen(QPen(QBrush(colour.darker(150)), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(colour);
        painter.drawEllipse(part.dot);
        const bool active = m_hoveredIndex == -1 || m_hoveredIndex == part.key;
        for (const LegendLayout::Line& line : part.lines) {
            QColor lineColour = Qt::gray;
            if (active)
                lineColour = line.index < m_legendLineColors.size() ? m_legendLineColors.at(line.index) : QColor(Qt::gray);
            else if (m_inactiveLegendColor.isValid())
                lineColour = m_inactiveLegendColor;
            painter.setPen(lineColour);
            painter.drawStaticText(line.topLeft, line.text);
        }
    }
}

int BarChart::IndexByPos(const QPoint& pos) const
{
    for (const auto& entry : m_sectionRects) {
        if (entry.second.contains(pos))
            return entry.first;
    }
    for (const auto& entry : m_legendRects) {
        if (entry.second.contains(pos))
            return entry.first;
    }
    return -1;
}

bool BarChart::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        const int index = IndexByPos(static_cast<QMouseEvent*>(event)->pos());
        if (index != m_hoveredIndex) {
            m_hoveredIndex = index;
            update();
        }
        break;
    }
    case QEvent::Leave:
        if (m_hoveredIndex != -1) {
            m_hoveredIndex = -1;
            update();
        }
        break;
    case QEvent::ToolTip: {
        auto* help = static_cast<QHelpEvent*>(event);
        const auto found = m_barInfos.find(IndexByPos(help->pos()));
        if (found != m_barInfos.end() && !found->second.tooltip.isEmpty()) {
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
