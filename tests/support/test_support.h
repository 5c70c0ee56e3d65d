// What the library's tests share: Qt Test and Qt Widgets, the log capture, a recorder of
// signals in the order they come, pictures of widgets as painted and their colours,
// repaints, property resets, the screen's work area, and child processes of the test
// executable itself.
#pragma once

#include "log_capture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include <algorithm>
#include <functional>
#include <utility>
#include <initializer_list>

namespace TestSupport {

// Records signals of one object as "Name(argument, ...)" (a bool as true or false, a size
// as "QSize(180, 120)"), in the order they come, while it lives:
//   SignalLog log(pane, {"Expanded()", "Expanded(bool)"});  ...  QCOMPARE(log.Take(), ...);
// Note() puts a line of the test's own in between.
class SignalLog : public QObject
{
public:
    SignalLog(QObject* sender, std::initializer_list<const char*> signatures);

    QStringList lines;
    QStringList Take() { return std::exchange(lines, QStringList()); }
    void Note(const QString& line) { lines << line; }

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    QVector<QMetaMethod> m_signals;
};

// "A B C" split at spaces, for short expected lists of signal lines.
QStringList Words(const char* words);

// The widget painted with its children into an image of its size at this pixel ratio,
// over the background given.
QImage Render(QWidget* widget, qreal ratio = 1.0, const QColor& background = Qt::transparent);

// The bounds of the pixels in area where two pictures of one size differ.
QRect Changed(const QImage& a, const QImage& b, const QRect& area = QRect(0, 0, 9999, 9999));

// DejaVu Sans (the test set-up installs it) at a pixel size: the same widths everywhere.
QFont TestFont(int pixelSize = 13);

// The colours of the image at the points, named "#aarrggbb" (as QColor::name() does).
QStringList Pixels(const QImage& image, const QVector<QPoint>& points);
// Colours by name ("red #808080 transparent"), as Pixels() gives them.
QStringList Colours(const char* names);

// Shows a top-level widget and waits until the window system has shown it.
bool ShowAndWait(QWidget* widget);

// Moves the pointer over a point of a shown widget as the window system would report it,
// delivered at once: Enter and Leave reach the widgets it passes (underMouse() follows),
// then the move. The real pointer stays where it is.
void PointerTo(QWidget* widget, const QPoint& point);

// Whether the widget, shown, is painted again within timeout after change(). A check that
// it is not waits the whole time: give it less.
bool Repaints(QWidget* widget, const std::function<void()>& change, int timeout = 5000);

// The first of the properties, each given with another value than its first, whose reset
// does not bring back its first value; empty when all do.
QString FirstNotReset(QObject* object, std::initializer_list<std::pair<const char*, QVariant>> properties);

// A style with animations off (QStyle::SH_Widget_Animate), as desktops set for reduced motion.
class StillStyle : public QProxyStyle
{
public:
    StillStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override
    {
        return hint == SH_Widget_Animate ? 0 : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

// A spacing metric of 7 for parents, and push buttons 3 apart across and 2 down: layouts
// that ask the style for their spacing.
class SpacingStyle : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_LayoutHorizontalSpacing || metric == PM_LayoutVerticalSpacing
            ? 7
            : QProxyStyle::pixelMetric(metric, option, widget);
    }
    int layoutSpacing(QSizePolicy::ControlType, QSizePolicy::ControlType, Qt::Orientation orientation,
                      const QStyleOption*, const QWidget*) const override
    {
        return orientation == Qt::Horizontal ? 3 : 2;
    }
};

// Every height a widget takes, in order, from the moment it is installed:
//   HeightLog sizes(pane);  ...  QVERIFY(sizes.heights.size() > 3);
class HeightLog : public QObject
{
public:
    explicit HeightLog(QWidget* widget = nullptr) { Watch(widget); }
    void Watch(QWidget* widget)
    {
        if (widget)
            widget->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            heights << static_cast<QWidget*>(watched)->height();
        return false;
    }
    QVector<int> heights;
};

// The timer events the object gets while the event loop runs for this long.
int TimerEvents(QObject* object, int milliseconds);

// Publishes a new work area of the screen, as a window manager would.
bool SetWorkArea(const QRect& area);

// Whether the values only rise (or only fall), as an animation's steps should.
template <typename Values>
bool IsMonotonic(const Values& values, bool rising)
{
    return rising ? std::is_sorted(values.begin(), values.end()) : std::is_sorted(values.rbegin(), values.rend());
}

// This test executable run again, with "NAME=value" additions to the environment ("NAME="
// alone removes NAME) and in the folder given; its standard error goes to ours.
struct ChildResult
{
    bool finished = false;
    int exitCode = -1;
    QString output; // standard output
};
ChildResult RunSelf(const QStringList& arguments, const QStringList& environment = QStringList(),
                    const QString& folder = QString());

// Runs one test function of this executable in a child process with the environment
// changed; empty when all of its rows passed, else what the child printed.
QString RunTestFunctionInChild(const char* function, const QStringList& environment);

// The close button of a closable tab, on whichever side the style puts it.
QWidget* TabCloseButton(const QTabBar& bar, int index);

} // namespace TestSupport
