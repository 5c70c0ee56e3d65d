#include "gallery_pages.h"
#include "gallery_theme.h"

#include <qt_halvo/charts/bar_chart.h>
#include <qt_halvo/charts/pie_chart.h>
#include <qt_halvo/charts/plot_widget.h>
#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/colorized_image.h>
#include <qt_halvo/utilities/decorated_border.h>
#include <qt_halvo/utilities/paint_utilities.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtCore/QtMath>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

#include <cmath>

namespace {

const QLatin1String kGlyphPath(":/media/glyph.png");

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

QColor ThemeColor(const char* name)
{
    return QColor(OrvantaQT::GetCSSData(QLatin1String(name)).toString());
}

// Disk usage as a stacked bar: five sections with two-line legends and tool tips.
OrvantaQT::BarChart* CreateBarChart(GalleryTheme& theme, QWidget* parent)
{
    struct Share
    {
        const char* name;
        int percent;
        QColor color;
    };
    //: Kinds of files in the gallery's disk usage chart.
    const Share shares[] = {{QT_TRANSLATE_NOOP("Gallery", "Documents"), 34, QColor(0x1f, 0x7a, 0xd4)},
                            {QT_TRANSLATE_NOOP("Gallery", "Pictures"), 22, QColor(0x2f, 0xa3, 0x7a)},
                            {QT_TRANSLATE_NOOP("Gallery", "Music"), 14, QColor(0xe0, 0xa1, 0x2b)},
                            {QT_TRANSLATE_NOOP("Gallery", "Mail"), 3, QColor(0xd0, 0x47, 0x3a)},
                            {QT_TRANSLATE_NOOP("Gallery", "Free"), 27, QColor(0x9a, 0xa3, 0xaf)}};
    std::map<int, OrvantaQT::BarInfo> infos;
    for (int i = 0; i < 5; ++i) {
        OrvantaQT::BarInfo info;
        info.percent = shares[i].percent;
        info.color = shares[i].color;
        //: Second legend line of a section of the disk usage chart: its share.
        info.legend = Translate(shares[i].name) + QLatin1Char('\n') + Translate("%1 %").arg(shares[i].percent);
        //: Tool tip of a section of the disk usage chart.
        info.tooltip = Translate("%1 take %2 % of the disk").arg(Translate(shares[i].name)).arg(shares[i].percent);
        infos[i] = info;
    }
    auto* chart = new OrvantaQT::BarChart(parent);
    chart->setObjectName(QStringLiteral("DiskUsage"));
    chart->setChartHeight(12);
    chart->setMinimumWidth(420);
    QStringList legends;
    for (const auto& entry : infos)
        legends << entry.second.legend;
    // The dimmed colours and the legend's text follow the theme.
    const auto applyTheme = [chart, infos, legends]() {
        auto themed = infos;
        for (auto& entry : themed)
            entry.second.inactiveColor = ThemeColor("borderColor");
        chart->SetBarInfoList(themed);
        chart->setLegendList(legends); // also sizes the chart for two legend lines
        chart->SetLegendLineColors({ThemeColor("primaryText"), ThemeColor("mutedText")}, ThemeColor("borderColor"));
    };
    applyTheme();
    QObject::connect(&theme, &GalleryTheme::Changed, chart, applyTheme);
    return chart;
}

QWidget* CreateBarSection(GalleryTheme& theme, QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CreateBarChart(theme, box));
    //: Check box that hatches the sections of the bar chart.
    auto* shading = new QCheckBox(Translate("Hatched sections"), box);
    QObject::connect(shading, &QCheckBox::toggled, box, [box](bool on) {
        box->findChild<OrvantaQT::BarChart*>()->setUseShading(on);
    });
    layout->addWidget(shading);
    return box;
}

// Two pies showing the slider's value: a ring with a hole and a full disc.
QWidget* CreatePieSection(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* layout = new QGridLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* ring = new OrvantaQT::PieChart(box);
    ring->setObjectName(QStringLiteral("RingPie"));
    ring->setInnerSize(-55);
    auto* disc = new OrvantaQT::PieChart(box);
    disc->setObjectName(QStringLiteral("DiscPie"));
    disc->setInnerSize(0);
    disc->setBorderWidth(1);
    for (OrvantaQT::PieChart* pie : {ring, disc})
        pie->setFixedSize(96, 96);
    auto* slider = new QSlider(Qt::Horizontal, box);
    slider->setObjectName(QStringLiteral("PieSlider"));
    slider->setRange(0, 120);
    auto* value = new QLabel(box);
    QObject::connect(slider, &QSlider::valueChanged, box, [ring, disc, value](int v) {
        ring->setValue(v);
        disc->setValue(v);
        //: The pies' value against their maximum; above the maximum the ring is full.
        value->setText(Translate("%1 of %2").arg(v).arg(ring->maximum()));
    });
    slider->setValue(62);
    layout->addWidget(ring, 0, 0);
    layout->addWidget(disc, 0, 1);
    layout->addWidget(slider, 1, 0, 1, 2);
    layout->addWidget(value, 2, 0, 1, 2);
    layout->setColumnStretch(2, 1);
    return box;
}

// A plot of a wandering value, polled every 400 ms, with the shading on or off. It starts
// with a quick run through the first screenful so that the plot is full from the start.
QWidget* CreatePlotSection(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* plot = new OrvantaQT::PlotWidget(box);
    plot->setObjectName(QStringLiteral("LoadPlot"));
    plot->setFixedHeight(96);
    plot->setMinimumWidth(300);
    plot->setPointsOnScreen(40);
    plot->setMinValue(100);
    constexpr int kWarmUpPolls = 45;
    constexpr int kWarmUpPolling = 6;
    plot->setPollingTimeout(kWarmUpPolling);
    auto* feed = new QTimer(plot);
    feed->setInterval(1);
    QObject::connect(feed, &QTimer::timeout, plot, [plot, feed, polls = 0.0]() mutable {
        polls += qreal(feed->interval()) / plot->pollingTimeout();
        const qreal wave = 50 + 28 * std::sin(polls * 0.35) + 14 * std::sin(polls * 1.3);
        plot->setValue(std::max(plot->value(), int(wave)));
        if (feed->interval() == 1 && polls >= kWarmUpPolls) {
            feed->setInterval(100);
            plot->setPollingTimeout(400);
        }
    });
    feed->start();
    plot->setUseShading(true);
    plot->startPolling(true);
    layout->addWidget(plot);
    //: Check box that draws the plot with a horizontal gradient.
    auto* shading = new QCheckBox(Translate("Shading"), box);
    shading->setChecked(plot->useShading());
    QObject::connect(shading, &QCheckBox::toggled, plot, &OrvantaQT::PlotWidget::setUseShading);
    layout->addWidget(shading);
    return box;
}

// One glyph tinted in several colours (grey levels keep their shade, alpha is kept),
// a colourised image widget and a badge laid over the glyph.
QWidget* CreateImageSection(QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    const QPixmap glyph(kGlyphPath);
    auto* original = new QLabel(box);
    original->setPixmap(glyph);
    //: Tool tip of the untinted picture on the chart page.
    original->setToolTip(Translate("The picture as drawn"));
    layout->addWidget(original);
    for (const QColor& colour : {QColor(0x1f, 0x7a, 0xd4), QColor(0x2f, 0xa3, 0x7a), QColor(0xd0, 0x47, 0x3a)}) {
        auto* tinted = new QLabel(box);
        tinted->setPixmap(QPixmap::fromImage(OrvantaQT::PaintUtilities::TintedImage(glyph, colour)));
        layout->addWidget(tinted);
    }
    auto* colorized = new OrvantaQT::ColorizedImage(box);
    colorized->setObjectName(QStringLiteral("ColorizedGlyph"));
    colorized->SetImagePath(kGlyphPath);
    colorized->SetColor(QColor(0xe0, 0xa1, 0x2b));
    colorized->setFixedSize(32, 32);
    layout->addWidget(colorized);

    QPixmap badged = glyph;
    QPixmap badge(12, 12);
    badge.fill(Qt::transparent);
    {
        QPainter painter(&badge);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xd0, 0x47, 0x3a));
        painter.drawEllipse(badge.rect());
    }
    OrvantaQT::AddOverlayToPixmap(badged, QPoint(20, 0), badge);
    auto* withBadge = new QLabel(box);
    withBadge->setPixmap(badged);
    //: Tool tip of the picture with a badge laid over it.
    withBadge->setToolTip(Translate("With an overlay"));
    layout->addWidget(withBadge);
    layout->addStretch();
    return box;
}

OrvantaQT::DecoratedBorder* CreateBorder(QWidget* parent)
{
    auto* border = new OrvantaQT::DecoratedBorder(parent);
    border->setOrientation(Qt::Horizontal);
    border->setPosition(2);
    border->setDecorationUrl(QStringLiteral(":/media/ornament.png"));
    border->setFixedHeight(10);
    return border;
}

} // namespace

QWidget* CreateChartsPage(GalleryTheme& theme)
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("ChartsPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the charts and the paint utilities.
    auto* title = new QLabel(Translate("Charts"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);
    //: Section title on the gallery's chart page: a stacked bar chart.
    layout->addWidget(CreateSectionTitle(Translate("Stacked bar (hover a section or its legend)"), page));
    layout->addWidget(CreateBarSection(theme, page));
    layout->addWidget(CreateBorder(page));
    auto* row = new QGridLayout;
    //: Section title on the gallery's chart page: pie charts.
    row->addWidget(CreateSectionTitle(Translate("Pie"), page), 0, 0);
    row->addWidget(CreatePieSection(page), 1, 0, Qt::AlignTop);
    //: Section title on the gallery's chart page: a polled, scrolling plot.
    row->addWidget(CreateSectionTitle(Translate("Plot"), page), 0, 1);
    row->addWidget(CreatePlotSection(page), 1, 1, Qt::AlignTop);
    row->setColumnStretch(1, 1);
    row->setHorizontalSpacing(24);
    layout->addLayout(row);
    layout->addWidget(CreateBorder(page));
    //: Section title on the gallery's chart page: tinted pictures.
    layout->addWidget(CreateSectionTitle(Translate("Tinted pictures"), page));
    layout->addWidget(CreateImageSection(page));
    layout->addStretch();
    return page;
}

// The bar with its third section hovered: the others dim, their legends grey.
QVector<GalleryMoment> ChartsPageMoments()
{
    const auto hover = [](QWidget* page) {
        auto* chart = page->findChild<OrvantaQT::BarChart*>(QStringLiteral("DiskUsage"));
        if (!chart || chart->SectionRects().count(2) == 0)
            return;
        QMouseEvent move(QEvent::MouseMove, chart->SectionRects().at(2).center(), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(chart, &move);
    };
    const auto fill = [](QWidget* page) {
        if (auto* slider = page->findChild<QSlider*>(QStringLiteral("PieSlider")))
            slider->setValue(110);
    };
    return {{QStringLiteral("hover"), hover, 50}, {QStringLiteral("full"), fill, 50}};
}
