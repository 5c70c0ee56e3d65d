#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

// The gallery's look: the embedded default_theme.qss processed against the light or the
// dark colour table and applied to the whole application, link colours included.
class GalleryTheme : public QObject
{
    Q_OBJECT

public:
    enum class Variant { Light, Dark };

    explicit GalleryTheme(QObject* parent = nullptr);

    // Processes the sheet against the variant's colours and applies it; emits Changed().
    void Apply(Variant variant);
    Variant Current() const;

    // The embedded stylesheet.
    static QString SheetPath();

    // The names of the constants that default_theme.qss declares, in the order written.
    static QStringList DeclaredConstants();

Q_SIGNALS:
    void Changed();

private:
    Variant m_variant = Variant::Light;
    bool m_applied = false;
};
