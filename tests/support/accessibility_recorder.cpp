#include "accessibility_recorder.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QVector>

namespace TestSupport {

namespace {

struct Recorded
{
    QPointer<QObject> object;
    QString line;
};

QVector<Recorded> g_recorded;

QString Flags(const QAccessible::State& state)
{
    const std::pair<bool, const char*> flags[] = {
        {state.checked, "checked"},   {state.checkStateMixed, "checkStateMixed"}, {state.busy, "busy"},
        {state.invisible, "invisible"}, {state.pressed, "pressed"},             {state.focused, "focused"},
        {state.disabled, "disabled"}, {state.selected, "selected"},             {state.hotTracked, "hotTracked"}};
    QStringList names;
    for (const auto& flag : flags) {
        if (flag.first)
            names << QLatin1String(flag.second);
    }
    return names.join(QLatin1Char(' '));
}

bool Within(const QObject* object, const QObject* ancestor)
{
    for (; object; object = object->parent()) {
        if (object == ancestor)
            return true;
    }
    return false;
}

} // namespace

AccessibilityRecorder::AccessibilityRecorder()
    : m_previous(QAccessible::installUpdateHandler(&AccessibilityRecorder::Record))
{
    g_recorded.clear();
}

AccessibilityRecorder::~AccessibilityRecorder()
{
    QAccessible::installUpdateHandler(m_previous);
    g_recorded.clear();
}

QStringList AccessibilityRecorder::Take(const QObject* object)
{
    QStringList lines;
    for (const Recorded& recorded : std::exchange(g_recorded, {})) {
        if (!object || Within(recorded.object, object))
            lines << recorded.line;
    }
    return lines;
}

void AccessibilityRecorder::Record(QAccessibleEvent* event)
{
    QObject* object = event->object();
    QString line = QLatin1String(QMetaEnum::fromType<QAccessible::Event>().valueToKey(event->type()));
    QString name = object ? object->objectName() : QString();
    if (object && name.isEmpty())
        name = QLatin1String(object->metaObject()->className());
    line += QLatin1Char(' ') + name;
    if (event->child() >= 0)
        line += QLatin1Char('/') + QString::number(event->child());
    if (event->type() == QAccessible::ValueChanged)
        line += QLatin1Char(' ') + static_cast<QAccessibleValueChangeEvent*>(event)->value().toString();
    else if (event->type() == QAccessible::StateChanged)
        line += QLatin1Char(' ') + Flags(static_cast<QAccessibleStateChangeEvent*>(event)->changedStates());
    g_recorded.append(Recorded{object, line});
}

ScreenReaderBus::ScreenReaderBus()
{
    m_bus.setStandardErrorFile(QProcess::nullDevice());
    m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                               QStringLiteral("--print-address=1")});
    if (!m_bus.waitForReadyRead(10000))
        return;
    const QString address = QString::fromLocal8Bit(m_bus.readLine()).trimmed();
    if (QProcess::execute(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("-f"),
                                                    QStringLiteral("AT_SPI_BUS"), QStringLiteral("8s"),
                                                    QStringLiteral("-set"), QStringLiteral("AT_SPI_BUS"), address})
        == 0)
        m_address = address;
}

ScreenReaderBus::~ScreenReaderBus()
{
    if (!m_address.isEmpty())
        QProcess::execute(QStringLiteral("xprop"),
                          {QStringLiteral("-root"), QStringLiteral("-remove"), QStringLiteral("AT_SPI_BUS")});
    m_bus.terminate();
    m_bus.waitForFinished();
}

QString ScreenReaderBus::Address() const
{
    return m_address;
}

QStringList ScreenReaderBus::Environment() const
{
    return {QStringLiteral("DBUS_SESSION_BUS_ADDRESS=") + m_address, QStringLiteral("QT_HALVO_TEST_ACCESSIBILITY_BUS=1")};
}

bool OnScreenReaderBus()
{
    return qEnvironmentVariableIsSet("QT_HALVO_TEST_ACCESSIBILITY_BUS");
}

} // namespace TestSupport
