#include "qml_style_bridge_p.h"

#include <qt_halvo/styles/style_sheet.h>
#include <qt_halvo/utilities/logging_p.h>

#include "../styles/style_sheet_p.h"

#include <QtCore/QPointer>
#include <QtQml/QJSEngine>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlPropertyMap>

#include <vector>

namespace OrvantaQT {

namespace {

struct Singleton
{
    StyleMapKind kind;
    QPointer<QQmlEngine> engine;
    QPointer<QQmlPropertyMap> map;
    QPointer<StyleMapGuard> guard;
};

std::vector<Singleton>& Singletons()
{
    static std::vector<Singleton> singletons;
    return singletons;
}

// A read that finds a value returns it at once; only a missing name costs a call into
// C++. Reading the guard's revision ties such a binding to later changes of the names.
const char* const kProxySource = R"((function (map, guard) {
    return new Proxy(map, {
        get: function (target, name) {
            var value = target[name];
            if (value !== undefined || typeof name !== "string")
                return value;
            guard.revision;
            if (!guard.has(name))
                guard.missing(name);
            return undefined;
        }
    });
}))";

QVariantMap CurrentValues(StyleMapKind kind)
{
    QVariantMap values;
    if (kind == StyleMapKind::Colors) {
        // As BuildQmlColorsMap gives them; a map of its own each time would cost a meta
        // object rebuilt for every name.
        const QMap<QString, QVariant> colors = GetGlobalColors();
        for (auto it = colors.cbegin(); it != colors.cend(); ++it)
            values.insert(it.key(), QmlColorValue(it.value()));
    } else {
        const StyleConstants constants = CurrentStyleConstants();
        for (auto it = constants.cbegin(); it != constants.cend(); ++it)
            values.insert(it.key(), it.value());
    }
    return values;
}

QString NameOf(StyleMapKind kind)
{
    return kind == StyleMapKind::Colors ? QStringLiteral("Colors") : QStringLiteral("Constants");
}

// Only what changed is written: every write makes the bindings on it run again.
void Refresh(const Singleton& singleton, const QVariantMap& values)
{
    QQmlPropertyMap* map = singleton.map;
    const QStringList before = map->keys();
    for (const QString& name : before) {
        if (!values.contains(name) && map->value(name).isValid())
            map->clear(name);
    }
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        if (!map->contains(it.key()) || map->value(it.key()) != it.value())
            map->insert(it.key(), it.value());
    }
    const QStringList names = values.keys();
    singleton.guard->SetNames(QSet<QString>(names.cbegin(), names.cend()));
}

void RefreshAll()
{
    auto& singletons = Singletons();
    singletons.erase(std::remove_if(singletons.begin(), singletons.end(),
                                    [](const Singleton& s) { return !s.engine || !s.map || !s.guard; }),
                     singletons.end());
    QVariantMap values[2];
    bool known[2] = {false, false};
    for (const Singleton& singleton : singletons) {
        const int index = int(singleton.kind);
        if (!known[index]) {
            values[index] = CurrentValues(singleton.kind);
            known[index] = true;
        }
        Refresh(singleton, values[index]);
    }
}

void ListenOnce()
{
    static bool listening = false;
    if (listening)
        return;
    listening = true;
    AddStyleChangeListener(RefreshAll);
}

} // namespace

StyleMapGuard::StyleMapGuard(const QString& singleton, QObject* parent) : QObject(parent), m_singleton(singleton) {}

void StyleMapGuard::SetNames(const QSet<QString>& names)
{
    if (names == m_names)
        return;
    m_names = names;
    m_told.clear();
    ++m_revision;
    Q_EMIT RevisionChanged();
}

bool StyleMapGuard::has(const QString& name) const
{
    if (m_names.contains(name))
        return true;
    // The map's own members (objectName, keys(), valueChanged…) are not names to tell.
    const QByteArray member = name.toUtf8();
    const QMetaObject& meta = QQmlPropertyMap::staticMetaObject;
    if (meta.indexOfProperty(member.constData()) >= 0)
        return true;
    for (int i = 0; i < meta.methodCount(); ++i) {
        if (meta.method(i).name() == member)
            return true;
    }
    return false;
}

void StyleMapGuard::missing(const QString& name)
{
    if (m_told.contains(name))
        return;
    m_told.insert(name);
    QTH_LOG_WARNING("Orvanta.Styles: %s has no \"%s\"; it reads as undefined", qPrintable(m_singleton),
                    qPrintable(name));
}

QJSValue StyleSingleton(StyleMapKind kind, QQmlEngine* engine, QJSEngine* scriptEngine)
{
    ListenOnce();
    // Parented, so the engine's garbage collector leaves them alone.
    auto* map = new QQmlPropertyMap(engine);
    auto* guard = new StyleMapGuard(NameOf(kind), map);
    Singletons().push_back(Singleton{kind, engine, map, guard});
    Refresh(Singletons().back(), CurrentValues(kind));
    QJSValue make = scriptEngine->evaluate(QString::fromLatin1(kProxySource));
    const QJSValue proxy = make.call({scriptEngine->newQObject(map), scriptEngine->newQObject(guard)});
    if (proxy.isError()) {
        // An engine without Proxy still gets the values, without the warnings.
        QTH_LOG_WARNING("Orvanta.Styles: %s is given without its guard: %s", qPrintable(NameOf(kind)),
                        qPrintable(proxy.toString()));
        return scriptEngine->newQObject(map);
    }
    return proxy;
}

QQmlPropertyMap* StyleMapOf(StyleMapKind kind, QQmlEngine* engine)
{
    for (const Singleton& singleton : Singletons()) {
        if (singleton.kind == kind && singleton.engine == engine && singleton.map)
            return singleton.map;
    }
    return nullptr;
}

} // namespace OrvantaQT
