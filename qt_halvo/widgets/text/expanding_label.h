#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QTextBrowser>

namespace OrvantaQT {

// A read-only rich text that, when it needs more than collapsedLines lines, can be cut
// to that many with a trailing "Show more" link, and shown whole with a "Show less" link
// on a line of its own; the links switch between the two. It fixes its own height to
// what it shows. It starts expanded; the first resize lays the text out.
//
// The cut fills collapsedLines - 1 lines and ends the last one with the link. With fewer
// than 2 collapsed lines it shows the first line, shortened to leave room for the link.
class QT_HALVO_EXPORT ExpandingLabel : public QTextBrowser
{
    Q_OBJECT
    Q_PROPERTY(QString fullText READ fullText WRITE setFullText)
    Q_PROPERTY(QString showMoreText READ showMoreText WRITE setShowMoreText)
    Q_PROPERTY(QString showLessText READ showLessText WRITE setShowLessText)
    Q_PROPERTY(bool isCollapsed READ isCollapsed WRITE setIsCollapsed)
    Q_PROPERTY(int collapsedLines READ collapsedLines WRITE setCollapsedLines)

public:
    explicit ExpandingLabel(const QString& text, QWidget* parent = nullptr);
    explicit ExpandingLabel(QWidget* parent = nullptr);
    ~ExpandingLabel() override;

    QString fullText() const;
    QString showMoreText() const;
    QString showLessText() const;
    bool isCollapsed() const;
    int collapsedLines() const;

    void setFullText(const QString& text);
    void setShowMoreText(const QString& text);
    void setShowLessText(const QString& text);
    void setIsCollapsed(bool collapsed);
    void setCollapsedLines(int lines);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void OnLinkClicked(const QUrl& url);

private:
    int EffectiveWidth() const;
    void UpdateText();
    void Collapse();
    void ShowText(const QString& text, const QString& linkText, const QString& target, bool linkOnNewLine);

    QString m_fullText;
    QString m_showMoreText;
    QString m_showLessText;
    bool m_isCollapsed = false;
    int m_collapsedLines = 2;
    int m_height = 0;
};

} // namespace OrvantaQT
