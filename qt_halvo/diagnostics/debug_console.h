// The debug console: the lines InstallDebugConsoleCapture() records, in a list that takes
// new lines in batches while it is shown, filtered by level, by category or tag and by
// text (plain or a regular expression). Lines can be paused, copied, saved and cleared.
// A window of its own or a child of any layout; InstallDebugConsoleShortcut() gives a
// host a key that shows and hides one.
#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtGui/QColor>
#include <QtGui/QKeySequence>
#include <QtWidgets/QWidget>

class QShortcut;

namespace OrvantaQT {

class QT_HALVO_EXPORT DebugConsole : public QWidget
{
    Q_OBJECT
    // Text colours of the levels, for style sheets: qproperty-warningColor: #b45309;
    Q_PROPERTY(QColor debugColor READ GetDebugColor WRITE SetDebugColor)
    Q_PROPERTY(QColor infoColor READ GetInfoColor WRITE SetInfoColor)
    Q_PROPERTY(QColor warningColor READ GetWarningColor WRITE SetWarningColor)
    Q_PROPERTY(QColor errorColor READ GetErrorColor WRITE SetErrorColor)

public:
    // Severities the level filter offers, lowest first.
    enum class Level
    {
        Debug,
        Info,
        Warning,
        Error,
        Fatal
    };
    Q_ENUM(Level)

    // Installs the capture if nobody has.
    explicit DebugConsole(QWidget* parent = nullptr);
    ~DebugConsole() override;

    // Lines below this level are hidden.
    Level GetMinimumLevel() const;
    void SetMinimumLevel(Level level);
    // Shows lines whose category or tag contains this text (any case); empty: all.
    QString GetCategoryFilter() const;
    void SetCategoryFilter(const QString& text);
    // Shows lines whose text contains this (any case), or matches it as a regular
    // expression; an invalid expression shows nothing and says why.
    QString GetTextFilter() const;
    void SetTextFilter(const QString& text, bool regularExpression = false);

    // While paused no new lines come in; they wait in the capture (which may drop them).
    bool IsPaused() const;
    void SetPaused(bool paused);

    // Takes what the capture recorded since the last batch now, rather than at the next tick.
    void Refresh();
    // Forgets the lines shown and those recorded.
    void Clear();
    // The shown lines, or the selected ones, as text: one per line.
    QString ShownText(bool selectedOnly = false) const;
    // Copies the selected lines (all shown ones without a selection) to the clipboard.
    void CopySelection() const;
    // Writes the shown lines to path; false when it cannot, said once in the console.
    bool SaveToFile(const QString& path);

    int ShownLineCount() const;
    int LineCount() const;
    // Lines the capture dropped before the console could take them.
    quint64 DroppedLineCount() const;
    // The most lines kept (the oldest go first); 50,000 by default.
    int GetMaximumLines() const;
    void SetMaximumLines(int lines);

    QColor GetDebugColor() const;
    void SetDebugColor(const QColor& color);
    QColor GetInfoColor() const;
    void SetInfoColor(const QColor& color);
    QColor GetWarningColor() const;
    void SetWarningColor(const QColor& color);
    QColor GetErrorColor() const;
    void SetErrorColor(const QColor& color);

Q_SIGNALS:
    void LinesChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Private;
    Private* d;
};

// A key (Ctrl+Shift+D by default) on window that shows its debug console, made on first
// use as a tool window of window, and hides it again. Null and logged for a null window.
QT_HALVO_EXPORT QShortcut* InstallDebugConsoleShortcut(QWidget* window,
                                                      const QKeySequence& key = QKeySequence(QStringLiteral("Ctrl+Shift+D")));

} // namespace OrvantaQT
