#pragma once

#include <qt_halvo/charts/bar_chart.h>

#include <QtCore/QRectF>

#include <map>
#include <memory>

class QPaintDevice;
class QPainter;

namespace OrvantaQT {

// What a stacked bar chart draws and how: the widget BarChart and the QML BarChart both
// keep their state here and paint through Paint(), so the two show the same picture.
// Font metrics are taken for `device` (the widget, or none for the screen's).
struct BarChartPainter
{
    // The bar starts this far down; the legend under it reaches as much below totalHeight.
    static constexpr int kBarTop = 8;

    BarChartPainter();
    ~BarChartPainter();

    int chartHeight = 8;
    bool showLegend = true;
    QFont legendFont;
    int borderWidth = 1;
    QColor borderColor = Qt::black;
    std::map<int, BarInfo> barInfos;
    int legendLineCount = 2;
    QList<QColor> legendLineColors;
    QColor inactiveLegendColor;
    bool useShading = false;
    int hoveredIndex = -1;

    // The geometry of the last paint.
    std::map<int, QRectF> sectionRects;
    std::map<int, QRectF> textRects;
    std::map<int, QRect> legendRects;
    int legendHeight = 0;
    // The height the chart needs.
    int totalHeight = 0;

    // The sections' lists as BarChart's setters take them: percents keep the positive
    // entries, in order, and end the sections there; other lists set their field from the
    // first section on, a longer list adding sections with the defaults.
    void SetPercents(const QList<int>& percents);
    template <typename Apply>
    void ApplyList(int count, Apply apply)
    {
        for (int i = 0; i < count; ++i)
            apply(barInfos[i], i);
        InvalidateLegend();
    }
    // Legends also give the number of legend lines: the most line breaks of an entry.
    void SetLegends(const QStringList& legends, const QPaintDevice* device);
    void SetInfos(const std::map<int, BarInfo>& infos);

    void SetLegendFont(const QFont& font, const QPaintDevice* device);
    int LegendHeight(const QFontMetrics& metrics) const;
    void UpdateTotalHeight(const QPaintDevice* device);
    void InvalidateLegend();

    // Paints the chart in a width, text in the sections in textFont. True when the height
    // the chart needs changed: the legend's metrics come from the painter's font.
    bool Paint(QPainter& painter, int width, const QFont& textFont, const QPaintDevice* device);
    // The section under pos, or the one whose legend entry is there; -1 for none.
    int IndexAt(const QPoint& pos) const;

private:
    struct LegendLayout;
    void UpdateSectionRects(int width);
    void UpdateTextRects();
    QColor ColorOf(int key, const BarInfo& info) const;
    void PaintChart(QPainter& painter, const QFont& textFont);
    void LayOutLegend(const QFont& painterFont, int width, int height, const QPaintDevice* device);
    void LayOutLegendPart(const QRectF& rect, int key, const BarInfo& info, QFont* currentFont,
                          const QPaintDevice* device);
    void PaintLegendParts(QPainter& painter);

    // The legend's geometry and elided, shaped texts; only its colours follow the hover.
    std::unique_ptr<LegendLayout> m_legend;
};

} // namespace OrvantaQT
