#include "test_support.h"

namespace TestSupport {

SignalLog::SignalLog(QObject* sender, std::initializer_list<const char*> signatures)
{
    const QMetaObject* meta = sender->metaObject();
    for (const char* signature : signatures) {
        const int index = meta->indexOfSignal(QMetaObject::normalizedSignature(signature).constData());
        if (index < 0 || !QMetaObject::connect(sender, index, this, staticMetaObject.methodCount() + m_signals.size(),
                                               Qt::DirectConnection))
            qFatal("SignalLog: %s has no signal %s", meta->className(), signature);
        m_signals << meta->method(index);
    }
}

// Every connected signal arrives here as a call of a method this class does not have.
int SignalLog::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    if (id < m_signals.size()) {
        const QMetaMethod& signal = m_signals[id];
        QStringList values;
        for (int i = 0; i < signal.parameterCount(); ++i) {
            const QVariant value(signal.parameterType(i), arguments[i + 1]);
            if (value.canConvert<QString>()) {
                values << value.toString();
            } else { // sizes, points, rectangles as QDebug writes them: "QSize(180, 120)"
                QString text;
                QDebug(&text).nospace() << value;
                values << text.mid(text.indexOf(QLatin1Char(',')) + 1).chopped(1).trimmed();
            }
        }
        lines << QStringLiteral("%1(%2)").arg(QString::fromLatin1(signal.name()), values.join(QStringLiteral(", ")));
    }
    return -1;
}

QStringList Words(const char* words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QImage Render(QWidget* widget, qreal ratio, const QColor& background)
{
    QImage image(widget->size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(background);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

QRect Changed(const QImage& a, const QImage& b, const QRect& area)
{
    QRect changed;
    for (int y = area.top(); y <= std::min(area.bottom(), a.height() - 1); ++y)
        for (int x = area.left(); x <= std::min(area.right(), a.width() - 1); ++x)
            changed |= a.pixel(x, y) != b.pixel(x, y) ? QRect(x, y, 1, 1) : QRect();
    return changed;
}

QFont TestFont(int pixelSize)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    return font;
}

QStringList Pixels(const QImage& image, const QVector<QPoint>& points)
{
    QStringList names;
    for (const QPoint& point : points)
        names << image.pixelColor(point).name(QColor::HexArgb);
    return names;
}

QStringList Colours(const char* names)
{
    QStringList colours;
    for (const QString& name : Words(names))
        colours << QColor(name).name(QColor::HexArgb);
    return colours;
}

bool ShowAndWait(QWidget* widget)
{
    widget->show();
    return QTest::qWaitForWindowExposed(widget);
}

void PointerTo(QWidget* widget, const QPoint& point)
{
    QWidget* window = widget->window();
    const QPoint local = widget->mapTo(window, point);
    if (!window->underMouse()) { // Qt dispatches Enter and Leave once it knows the window has the pointer
        QEnterEvent enter(local, local, window->mapToGlobal(local));
        QCoreApplication::sendEvent(window->windowHandle(), &enter);
    }
    QTest::mouseMove(window->windowHandle(), local);
}

bool Repaints(QWidget* widget, const std::function<void()>& change, int timeout)
{
    struct Counter : QObject
    {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override { paints += event->type() == QEvent::Paint; return false; }
    } counter;
    QCoreApplication::processEvents();
    widget->installEventFilter(&counter);
    change();
    return QTest::qWaitFor([&counter] { return counter.paints > 0; }, timeout);
}

QString FirstNotReset(QObject* object, std::initializer_list<std::pair<const char*, QVariant>> properties)
{
    for (const auto& [name, other] : properties) {
        const QVariant first = object->property(name);
        const QMetaProperty property = object->metaObject()->property(object->metaObject()->indexOfProperty(name));
        if (!object->setProperty(name, other) || object->property(name) == first || !property.reset(object)
            || object->property(name) != first)
            return QLatin1String(name);
    }
    return QString();
}

bool SetWorkArea(const QRect& area)
{
    const QString value = QStringLiteral("%1, %2, %3, %4").arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height());
    return QProcess::execute(QStringLiteral("xprop"), {"-root", "-f", "_NET_WORKAREA", "32c", "-set", "_NET_WORKAREA", value}) == 0;
}

ChildResult RunSelf(const QStringList& arguments, const QStringList& environment, const QString& folder)
{
    QProcessEnvironment changed = QProcessEnvironment::systemEnvironment();
    for (const QString& assignment : environment) {
        const QString name = assignment.section(QLatin1Char('='), 0, 0);
        const QString value = assignment.section(QLatin1Char('='), 1);
        if (value.isEmpty())
            changed.remove(name);
        else
            changed.insert(name, value);
    }
    QProcess child;
    child.setProcessEnvironment(changed);
    child.setWorkingDirectory(folder);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    ChildResult result;
    result.finished = child.waitForFinished(120000) && child.exitStatus() == QProcess::NormalExit;
    result.exitCode = result.finished ? child.exitCode() : -1;
    result.output = QString::fromLocal8Bit(child.readAllStandardOutput());
    return result;
}

QString RunTestFunctionInChild(const char* function, const QStringList& environment)
{
    const ChildResult child = RunSelf({QString::fromLatin1(function)}, environment);
    const bool passed = child.finished && child.exitCode == 0
                        && child.output.contains(QStringLiteral("::%1(").arg(QLatin1String(function)));
    return passed ? QString() : child.output;
}

int TimerEvents(QObject* object, int milliseconds)
{
    struct Counter : QObject
    {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Timer;
            return false;
        }
    } counter;
    object->installEventFilter(&counter);
    QTest::qWait(milliseconds);
    object->removeEventFilter(&counter);
    return counter.count;
}

QWidget* TabCloseButton(const QTabBar& bar, int index)
{
    QWidget* right = bar.tabButton(index, QTabBar::RightSide);
    return right ? right : bar.tabButton(index, QTabBar::LeftSide);
}

} // namespace TestSupport
