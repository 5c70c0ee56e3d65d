#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtWidgets/QWidget>

#include <map>
#include <memory>

namespace OrvantaQT {

struct BarChartPainter;

// One section of a BarChart.
struct QT_HALVO_EXPORT BarInfo
{
    int percent = 10;
    bool hideIfZero = true;
    QColor color = Qt::gray;
    QColor inactiveColor = Qt::white;
    QString text;    // drawn inside the section when the legend is hidden
    QString tooltip;
    QString legend;  // lines separated by CR LF, LF, CR or "<br>"
    QColor textColor = Qt::black;
};

// One horizontal stacked bar of sections sized in percent of the width, with rounded
// ends, optional hatching and dividers, and under it an optional legend. Hovering a
// section or its legend entry highlights it and dims the others. Sections can be set
// at once (SetBarInfoList) or property by property through string lists, for style
// sheets and forms; the list getters quote each entry ("\"#ff0000\"").
class QT_HALVO_EXPORT BarChart : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int chartHeight READ chartHeight WRITE setChartHeight RESET resetChartHeight)
    Q_PROPERTY(bool showLegend READ showLegend WRITE setShowLegend RESET resetShowLegend)
    Q_PROPERTY(QFont legendFont READ legendFont WRITE setLegendFont RESET resetLegendFont)
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth RESET resetBorderWidth)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor RESET resetBorderColor)
    Q_PROPERTY(QStringList percentList READ percentList WRITE setPercentList RESET resetPercentList)
    Q_PROPERTY(QStringList colorList READ colorList WRITE setColorList RESET resetColorList)
    Q_PROPERTY(QStringList textList READ textList WRITE setTextList RESET resetTextList)
    Q_PROPERTY(QStringList tooltipList READ tooltipList WRITE setTooltipList RESET resetTooltipList)
    Q_PROPERTY(QStringList textColorList READ textColorList WRITE setTextColorList RESET resetTextColorList)
    Q_PROPERTY(bool useShading READ useShading WRITE setUseShading RESET resetUseShading)
    Q_PROPERTY(QStringList legendList READ legendList WRITE setLegendList RESET resetLegendList)

public:
    explicit BarChart(QWidget* parent = nullptr);
    ~BarChart() override;

    int chartHeight() const;
    bool showLegend() const;
    QFont legendFont() const;
    int borderWidth() const;
    QColor borderColor() const;
    QStringList percentList() const;
    QStringList colorList() const;
    QStringList textList() const;
    QStringList tooltipList() const;
    QStringList textColorList() const;
    bool useShading() const;
    QStringList legendList() const;

    // Keeps the sections with a positive percent, or with hideIfZero off.
    void SetBarInfoList(const std::map<int, BarInfo>& infos);
    const std::map<int, BarInfo>& BarInfos() const;
    void SetLegendLineColors(const QList<QColor>& colors, const QColor& inactiveColor);

    // Geometry of the last paint, for hit testing and tests.
    std::map<int, QRectF> SectionRects() const;
    std::map<int, QRectF> TextRects() const;
    std::map<int, QRect> LegendRects() const;
    int HoveredIndex() const;
    int IndexByPos(const QPoint& pos) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setChartHeight(int height);
    void resetChartHeight();
    void setShowLegend(bool show);
    void resetShowLegend();
    void setLegendFont(const QFont& font);
    void resetLegendFont();
    void setBorderWidth(int width);
    void resetBorderWidth();
    void setBorderColor(const QColor& color);
    void resetBorderColor();
    void setPercentList(const QStringList& list);
    void resetPercentList();
    void setColorList(const QStringList& list);
    void resetColorList();
    void setTextList(const QStringList& list);
    void resetTextList();
    void setTooltipList(const QStringList& list);
    void resetTooltipList();
    void setTextColorList(const QStringList& list);
    void resetTextColorList();
    void setUseShading(bool shading);
    void resetUseShading();
    void setLegendList(const QStringList& list);
    void resetLegendList();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    template <typename Field>
    QStringList Quoted(Field field) const;

    // What is drawn, shared with the QML BarChart.
    std::unique_ptr<BarChartPainter> m_painter;
};

} // namespace OrvantaQT
