#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQuick/QQuickPaintedItem>

#include <memory>

namespace OrvantaQT {

struct BarChartPainter;

// BarChart for QML ("BarChart" of Orvanta.Controls 1.0), drawn by the same code as the
// widget: one stacked bar of sections sized in percent, a legend under it, hovering a
// section or its legend entry highlights it. The sections come from the lists as the
// widget's setters make them, applied in this order: percents (the positive ones,
// rounded, in order), then colors, texts, tooltips, textColors and legends (a longer list adds
// sections of 10 %, told in the log). Colours may be colour values or names. The legend
// font also writes the texts inside the sections. The implicit height is what the bar
// and legend need.
class QT_HALVO_EXPORT BarChartItem : public QQuickPaintedItem
{
    Q_OBJECT
    Q_PROPERTY(QVariantList percents READ percents WRITE setPercents NOTIFY percentsChanged)
    Q_PROPERTY(QVariantList colors READ colors WRITE setColors NOTIFY colorsChanged)
    Q_PROPERTY(QStringList texts READ texts WRITE setTexts NOTIFY textsChanged)
    Q_PROPERTY(QStringList tooltips READ tooltips WRITE setTooltips NOTIFY tooltipsChanged)
    Q_PROPERTY(QVariantList textColors READ textColors WRITE setTextColors NOTIFY textColorsChanged)
    Q_PROPERTY(QStringList legends READ legends WRITE setLegends NOTIFY legendsChanged)
    Q_PROPERTY(QVariantList legendLineColors READ legendLineColors WRITE setLegendLineColors NOTIFY legendLineColorsChanged)
    Q_PROPERTY(QColor inactiveLegendColor READ inactiveLegendColor WRITE setInactiveLegendColor NOTIFY inactiveLegendColorChanged)
    Q_PROPERTY(int chartHeight READ chartHeight WRITE setChartHeight NOTIFY chartHeightChanged)
    Q_PROPERTY(bool showLegend READ showLegend WRITE setShowLegend NOTIFY showLegendChanged)
    Q_PROPERTY(QFont legendFont READ legendFont WRITE setLegendFont NOTIFY legendFontChanged)
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    Q_PROPERTY(bool useShading READ useShading WRITE setUseShading NOTIFY useShadingChanged)
    // The section under the pointer (its index among the sections), or -1.
    Q_PROPERTY(int hoveredIndex READ hoveredIndex NOTIFY hoveredIndexChanged)

public:
    explicit BarChartItem(QQuickItem* parent = nullptr);
    ~BarChartItem() override;

    QVariantList percents() const;
    void setPercents(const QVariantList& percents);
    QVariantList colors() const;
    void setColors(const QVariantList& colors);
    QStringList texts() const;
    void setTexts(const QStringList& texts);
    QStringList tooltips() const;
    void setTooltips(const QStringList& tooltips);
    QVariantList textColors() const;
    void setTextColors(const QVariantList& colors);
    QStringList legends() const;
    void setLegends(const QStringList& legends);
    QVariantList legendLineColors() const;
    void setLegendLineColors(const QVariantList& colors);
    QColor inactiveLegendColor() const;
    void setInactiveLegendColor(const QColor& color);
    int chartHeight() const;
    void setChartHeight(int height);
    bool showLegend() const;
    void setShowLegend(bool show);
    QFont legendFont() const;
    void setLegendFont(const QFont& font);
    int borderWidth() const;
    void setBorderWidth(int width);
    QColor borderColor() const;
    void setBorderColor(const QColor& color);
    bool useShading() const;
    void setUseShading(bool shading);
    int hoveredIndex() const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void percentsChanged();
    void colorsChanged();
    void textsChanged();
    void tooltipsChanged();
    void textColorsChanged();
    void legendsChanged();
    void legendLineColorsChanged();
    void inactiveLegendColorChanged();
    void chartHeightChanged();
    void showLegendChanged();
    void legendFontChanged();
    void borderWidthChanged();
    void borderColorChanged();
    void useShadingChanged();
    void hoveredIndexChanged();

protected:
    void componentComplete() override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;

private:
    void Rebuild();
    void Resize();
    void SetHovered(int index);

    QVariantList m_percents;
    QVariantList m_colors;
    QList<QColor> m_colorValues; // converted (and bad entries told) when set
    QList<QColor> m_textColorValues;
    QStringList m_texts;
    QStringList m_tooltips;
    QVariantList m_textColors;
    QStringList m_legends;
    QVariantList m_legendLineColors;
    QString m_reported; // the last mismatch told, so that it is told once
    std::unique_ptr<BarChartPainter> m_painter;
};

} // namespace OrvantaQT
