// Screen readers' view of the charts: BarChart as a chart of one progress bar per section,
// PieChart as a progress bar, PlotWidget as a chart with its current value.
#include "accessibility_factory_p.h"

#include <qt_halvo/charts/bar_chart.h>
#include <qt_halvo/charts/pie_chart.h>
#include <qt_halvo/charts/plot_widget.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/text/line_break_pattern_p.h>

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <vector>

namespace OrvantaQT {

namespace {

QString Percent(int percent)
{
    return QCoreApplication::translate("OrvantaQT::ChartAccessible", "%1%").arg(percent);
}

// Charts show values; nobody sets them through a screen reader.
class ReadOnlyValue : public QAccessibleValueInterface
{
public:
    explicit ReadOnlyValue(const char* what)
        : m_what(what)
    {
    }

    void setCurrentValue(const QVariant&) override
    {
        QTH_LOG_WARNING("%s: screen readers cannot set its value", m_what);
    }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return 0; }

private:
    const char* m_what;
};

// A section as screen readers were last told of it: what its name and value come from,
// kept as set, so that the check on every paint compares and derives nothing.
struct SectionState
{
    QString legend;
    QString text;
    int percent = 0;

    bool operator==(const SectionState& other) const
    {
        return percent == other.percent && legend == other.legend && text == other.text;
    }
};

// The legend's lines read as one; a section without a legend is read by its text.
QString NameOf(const QString& legend, const QString& text)
{
    const QString name = legend.split(LineBreakPattern(), Qt::SkipEmptyParts).join(QLatin1Char(' '));
    return name.isEmpty() ? text : name;
}

std::vector<SectionState> SectionsOf(const BarChart* chart)
{
    std::vector<SectionState> sections;
    if (chart) {
        for (const auto& entry : chart->BarInfos())
            sections.push_back(SectionState{entry.second.legend, entry.second.text, entry.second.percent});
    }
    return sections;
}

// The index-th section (in key order) and its key, or nullptr.
const std::pair<const int, BarInfo>* SectionAt(const BarChart* chart, int index)
{
    if (!chart || index < 0 || index >= int(chart->BarInfos().size()))
        return nullptr;
    return &*std::next(chart->BarInfos().begin(), index);
}

// A section stands for a place, not for its key: it answers for whatever section is
// index-th now, and is invalid while there are fewer. It lives as long as the chart's
// interface, so a screen reader holding it after the sections shrank finds it invalid.
class SectionAccessible final : public QAccessibleInterface, public ReadOnlyValue
{
public:
    SectionAccessible(QWidget* chart, int index)
        : ReadOnlyValue("BarChart section")
        , m_chart(chart)
        , m_index(index)
    {
    }

    // The chart still as made: no longer once its destruction has begun.
    const BarChart* Chart() const { return qobject_cast<const BarChart*>(m_chart.data()); }
    const BarInfo* Info() const
    {
        const auto* entry = SectionAt(Chart(), m_index);
        return entry ? &entry->second : nullptr;
    }

    bool isValid() const override { return Info(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return Chart() ? Chart()->window()->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override
    {
        return Chart() ? QAccessible::queryAccessibleInterface(m_chart.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QString text(QAccessible::Text kind) const override
    {
        const BarInfo* info = Info();
        if (!info)
            return QString();
        switch (kind) {
        case QAccessible::Name:
            return NameOf(info->legend, info->text);
        case QAccessible::Description:
            return info->tooltip;
        case QAccessible::Value:
            return Percent(info->percent);
        default:
            return QString();
        }
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override
    {
        const auto* entry = SectionAt(Chart(), m_index);
        if (!entry)
            return QRect();
        const std::map<int, QRectF> rects = Chart()->SectionRects(); // as last painted
        const auto found = rects.find(entry->first);
        if (found == rects.end())
            return QRect();
        const QRect local = found->second.toAlignedRect();
        return QRect(Chart()->mapToGlobal(local.topLeft()), local.size());
    }

    QAccessible::Role role() const override { return QAccessible::ProgressBar; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.invisible = !Info() || !Chart()->isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    }

    QVariant currentValue() const override
    {
        const BarInfo* info = Info();
        return info ? QVariant(info->percent) : QVariant();
    }
    QVariant maximumValue() const override { return 100; }

private:
    QPointer<QWidget> m_chart;
    int m_index;
};

class BarChartAccessible final : public WidgetAccessible
{
public:
    explicit BarChartAccessible(BarChart* chart)
        : WidgetAccessible(chart, QAccessible::Chart)
        , m_told(SectionsOf(chart))
        , m_watch(chart, [this] { Check(); })
    {
    }

    ~BarChartAccessible() override
    {
        for (const QAccessible::Id id : m_sections) {
            if (id)
                QAccessible::deleteAccessibleInterface(id);
        }
    }

    BarChart* Chart() const { return qobject_cast<BarChart*>(object()); }

    bool isValid() const override { return WidgetAccessible::isValid() && Chart(); }
    int childCount() const override { return Chart() ? int(Chart()->BarInfos().size()) : 0; }
    QAccessibleInterface* child(int index) const override
    {
        return index >= 0 && index < childCount() ? Section(index) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        // Only sections asked for have interfaces; those past the chart's count stand for nothing.
        const int known = std::min(childCount(), int(m_sections.size()));
        for (int i = 0; i < known; ++i) {
            if (m_sections[i] && QAccessible::accessibleInterface(m_sections[i]) == child)
                return i;
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        const BarChart* chart = Chart();
        if (!chart)
            return nullptr;
        const int key = chart->IndexByPos(chart->mapFromGlobal(QPoint(x, y)));
        const auto& infos = chart->BarInfos();
        const auto found = infos.find(key);
        return found == infos.end() ? nullptr : child(int(std::distance(infos.begin(), found)));
    }

private:
    QAccessibleInterface* Section(int index) const
    {
        if (index >= int(m_sections.size()))
            m_sections.resize(index + 1, 0);
        if (!m_sections[index])
            m_sections[index] = QAccessible::registerAccessibleInterface(new SectionAccessible(Chart(), index));
        return QAccessible::accessibleInterface(m_sections[index]);
    }

    void Check()
    {
        BarChart* chart = Chart();
        if (!chart)
            return;
        std::vector<SectionState> now = SectionsOf(chart);
        if (now == m_told)
            return;
        const std::vector<SectionState> before = std::exchange(m_told, now);
        const size_t common = std::min(before.size(), now.size());
        for (size_t i = 0; i < common; ++i) {
            if (NameOf(now[i].legend, now[i].text) != NameOf(before[i].legend, before[i].text))
                RaiseAccessibleEvent(chart, QAccessible::NameChanged, int(i));
            if (now[i].percent != before[i].percent)
                RaiseValueChanged(chart, now[i].percent, int(i));
        }
        if (now.size() != before.size())
            RaiseAccessibleEvent(chart, QAccessible::ObjectReorder);
    }

    std::vector<SectionState> m_told; // what screen readers were last told
    mutable std::vector<QAccessible::Id> m_sections;
    AccessibleWatch m_watch; // last, so that it goes first
};

class PieChartAccessible final : public WidgetAccessible, public ReadOnlyValue
{
public:
    explicit PieChartAccessible(PieChart* pie)
        : WidgetAccessible(pie, QAccessible::ProgressBar)
        , ReadOnlyValue("PieChart")
        , m_told(pie->value(), pie->maximum())
        , m_watch(pie, [this] { Check(); })
    {
    }

    PieChart* Pie() const { return qobject_cast<PieChart*>(object()); }

    bool isValid() const override { return WidgetAccessible::isValid() && Pie(); }
    QString text(QAccessible::Text kind) const override
    {
        const PieChart* pie = Pie();
        if (kind != QAccessible::Value || !pie)
            return WidgetAccessible::text(kind);
        return pie->maximum() > 0 ? Percent(qRound(100.0 * pie->value() / pie->maximum())) : QString();
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = WidgetAccessible::state();
        state.readOnly = true;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return WidgetAccessible::interface_cast(type);
    }
    QVariant currentValue() const override { return Pie() ? QVariant(Pie()->value()) : QVariant(); }
    QVariant maximumValue() const override { return Pie() ? QVariant(Pie()->maximum()) : QVariant(); }

private:
    // A new maximum changes the share read out, so it is told as a change of value too.
    void Check()
    {
        PieChart* pie = Pie();
        if (!pie || std::make_pair(pie->value(), pie->maximum()) == m_told)
            return;
        m_told = {pie->value(), pie->maximum()};
        RaiseValueChanged(pie, pie->value());
    }

    std::pair<int, int> m_told;
    AccessibleWatch m_watch;
};

class PlotAccessible final : public WidgetAccessible, public ReadOnlyValue
{
public:
    explicit PlotAccessible(PlotWidget* plot)
        : WidgetAccessible(plot, QAccessible::Chart)
        , ReadOnlyValue("PlotWidget")
        , m_told(plot->value())
        , m_watch(plot, [this] { Check(); })
    {
        // setValue() repaints only while polling, but it always sends DebugEvents, before
        // it stores the value: hence a check once that is done.
        QObject::connect(plot, &PlotWidget::DebugEvents, &m_watch, [this] { m_watch.CheckLater(); });
    }

    PlotWidget* Plot() const { return qobject_cast<PlotWidget*>(object()); }

    bool isValid() const override { return WidgetAccessible::isValid() && Plot(); }
    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Value || !Plot())
            return WidgetAccessible::text(kind);
        return QString::number(Plot()->value());
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return WidgetAccessible::interface_cast(type);
    }
    QVariant currentValue() const override { return Plot() ? QVariant(Plot()->value()) : QVariant(); }
    // The top of the scale as drawn: the largest sample on screen, or minValue when higher.
    QVariant maximumValue() const override
    {
        const PlotWidget* plot = Plot();
        if (!plot)
            return QVariant();
        const QList<int> history = plot->History();
        int top = std::max(plot->minValue(), plot->value());
        for (int i = std::max(0, history.size() - plot->pointsOnScreen()); i < history.size(); ++i)
            top = std::max(top, history.at(i));
        return top;
    }

private:
    void Check()
    {
        PlotWidget* plot = Plot();
        if (!plot || plot->value() == m_told)
            return;
        m_told = plot->value();
        RaiseValueChanged(plot, m_told);
    }

    int m_told;
    AccessibleWatch m_watch;
};

} // namespace

QAccessibleInterface* ChartAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("OrvantaQT::BarChart")) {
        if (auto* chart = qobject_cast<BarChart*>(object))
            return new BarChartAccessible(chart);
    } else if (className == QLatin1String("OrvantaQT::PieChart")) {
        if (auto* pie = qobject_cast<PieChart*>(object))
            return new PieChartAccessible(pie);
    } else if (className == QLatin1String("OrvantaQT::PlotWidget")) {
        if (auto* plot = qobject_cast<PlotWidget*>(object))
            return new PlotAccessible(plot);
    }
    return nullptr;
}

} // namespace OrvantaQT
