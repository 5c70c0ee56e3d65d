// Screen readers' view of the text labels that show less than their text: AutoresizedText
// read by its whole text, LinkLabel as a link read by its whole path, both pressable.
#include "accessibility_factory_p.h"

#include <qt_halvo/widgets/text/autoresized_text.h>
#include <qt_halvo/widgets/text/line_break_pattern_p.h>
#include <qt_halvo/widgets/text/link_label.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>

namespace OrvantaQT {

namespace {

QString PlainText(const QString& text, Qt::TextFormat format)
{
    const bool rich = format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text));
    return rich ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

class LabelAccessible final : public WidgetAccessible
{
public:
    explicit LabelAccessible(AutoresizedText* label)
        : LabelAccessible(label, QAccessible::StaticText)
    {
    }
    explicit LabelAccessible(LinkLabel* label)
        : LabelAccessible(label, QAccessible::Link)
    {
    }

    bool isValid() const override { return WidgetAccessible::isValid() && (Autoresized() || Link()); }

    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return QString();
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty())
            return WholeText();
        // AutoresizedText's tool tip is what did not fit: the name says it already.
        if (kind == QAccessible::Description && Autoresized())
            return widget()->accessibleDescription();
        return WidgetAccessible::text(kind);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = WidgetAccessible::state();
        state.linked = Link() != nullptr;
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = WidgetAccessible::actionNames();
        if (Pressable())
            names.prepend(pressAction());
        return names;
    }

    // Pressed as with a left click, so that whatever watches the label's mouse sees it too.
    void doAction(const QString& name) override
    {
        if (name != pressAction()) {
            WidgetAccessible::doAction(name);
            return;
        }
        if (!Pressable())
            return;
        QWidget* label = widget();
        const QPoint centre = label->rect().center();
        QMouseEvent release(QEvent::MouseButtonRelease, centre, label->mapTo(label->window(), centre),
                            label->mapToGlobal(centre), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(label, &release);
    }

    QStringList keyBindingsForAction(const QString& name) const override
    {
        if (name == pressAction() && Link())
            return {QStringLiteral("Return")};
        return WidgetAccessible::keyBindingsForAction(name);
    }

private:
    LabelAccessible(QLabel* label, QAccessible::Role role)
        : WidgetAccessible(label, role)
        , m_watch(label, [this] { Check(); })
    {
        Remember();
    }

    AutoresizedText* Autoresized() const { return qobject_cast<AutoresizedText*>(object()); }
    LinkLabel* Link() const { return qobject_cast<LinkLabel*>(object()); }
    QLabel* Label() const { return static_cast<QLabel*>(widget()); }

    bool Pressable() const
    {
        const AutoresizedText* autoresized = Autoresized();
        return isValid() && widget()->isEnabled() && (Link() || autoresized->hoverUnderline());
    }

    // What the label stands for, of which it shows what fits, as set: rich or plain.
    QString Source() const
    {
        if (const AutoresizedText* autoresized = Autoresized()) {
            const QString text = autoresized->text();
            const QStringList phrasings = autoresized->strings();
            return text.isEmpty() && !phrasings.isEmpty() ? phrasings.constLast() : text; // the widest phrasing
        }
        const LinkLabel* link = Link();
        return link->GetPath().isEmpty() ? link->QLabel::text() : link->GetPath();
    }

    QString WholeText() const
    {
        QStringList lines = Source().split(LineBreakPattern());
        for (QString& line : lines)
            line = PlainText(line, Label()->textFormat());
        return lines.join(QLatin1Char('\n'));
    }

    void Remember()
    {
        m_told = Source(); // compared on every paint: not made plain for that
        m_shown = Label()->text();
        m_given = widget()->accessibleName();
    }

    // QLabel::setText and setAccessibleName raise NameChanged themselves; a new whole
    // text that left both alone (elided to the same, a path elided alike) is ours to tell.
    void Check()
    {
        if (!isValid())
            return;
        const QString told = m_told;
        const QString shown = m_shown;
        const QString given = m_given;
        Remember();
        if (m_told != told && m_shown == shown && m_given == given && m_given.isEmpty())
            RaiseAccessibleEvent(widget(), QAccessible::NameChanged);
    }

    QString m_told;
    QString m_shown;
    QString m_given;
    AccessibleWatch m_watch;
};

} // namespace

QAccessibleInterface* TextAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("OrvantaQT::AutoresizedText")) {
        if (auto* label = qobject_cast<AutoresizedText*>(object))
            return new LabelAccessible(label);
    } else if (className == QLatin1String("OrvantaQT::LinkLabel")) {
        if (auto* label = qobject_cast<LinkLabel*>(object))
            return new LabelAccessible(label);
    }
    return nullptr;
}

} // namespace OrvantaQT
