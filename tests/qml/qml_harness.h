// What the QML tests ask of C++: the style state loaded from texts, the C++ side of the
// colour table for comparison, and the library's log.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>

class QmlHarness : public QObject
{
    Q_OBJECT

public:
    explicit QmlHarness(QObject* parent = nullptr);

    // Writes json as the colours file and loads it (as LoadGlobalStyleSheet does).
    Q_INVOKABLE void loadColors(const QString& json);
    // Writes text as the global sheet and loads it, computed again.
    Q_INVOKABLE void loadSheet(const QString& text);
    // BuildQmlColorsMap of the colour table, as a plain map.
    Q_INVOKABLE QVariantMap builtColors() const;
    Q_INVOKABLE QVariant cssData(const QString& name) const;
    // The number of lines logged so far; logSince(mark) gives "<level> <text>" of those after.
    Q_INVOKABLE int logMark() const;
    Q_INVOKABLE QStringList logSince(int mark) const;
    // The colour as QML would see it converted from a value, for comparisons.
    Q_INVOKABLE bool sameColor(const QVariant& a, const QVariant& b) const;

private:
    QTemporaryDir m_dir;
    int m_files = 0;
};
