// The singletons of Orvanta.Styles: one QQmlPropertyMap of each kind per engine, behind a
// JavaScript proxy that tells names the map lacks. The maps of every engine are updated
// in place when the style state changes.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtQml/QJSValue>

class QJSEngine;
class QQmlEngine;
class QQmlPropertyMap;

namespace OrvantaQT {

// What the proxy asks of C++ for names its map has no value for.
class StyleMapGuard : public QObject
{
    Q_OBJECT
    // Raised when the set of names changes, so that a binding that met a missing name is
    // evaluated again.
    Q_PROPERTY(int revision READ Revision NOTIFY RevisionChanged)

public:
    StyleMapGuard(const QString& singleton, QObject* parent);

    int Revision() const { return m_revision; }
    void SetNames(const QSet<QString>& names);

    // Whether name is one of the map's current names, or a member every map has.
    Q_INVOKABLE bool has(const QString& name) const;
    // Logs a missing name, once until the names change.
    Q_INVOKABLE void missing(const QString& name);

Q_SIGNALS:
    void RevisionChanged();

private:
    QString m_singleton;
    QSet<QString> m_names;
    QSet<QString> m_told;
    int m_revision = 0;
};

enum class StyleMapKind
{
    Colors,
    Constants
};

// The singleton of kind for engine: its map, made on first use and parented to the engine,
// wrapped in the proxy.
QJSValue StyleSingleton(StyleMapKind kind, QQmlEngine* engine, QJSEngine* scriptEngine);

// Tests and benchmarks: the map of kind that engine's singleton shows; null before QML
// asked for it.
QT_HALVO_AUTOTEST_EXPORT QQmlPropertyMap* StyleMapOf(StyleMapKind kind, QQmlEngine* engine);

} // namespace OrvantaQT
