#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtWidgets/QLabel>

namespace OrvantaQT {

// A label that acts as a link: it opens its href, or, without one, reports Clicked() and
// its command, on a left click or on Return or Enter. It can show a file path elided in
// the middle so that the drive and the file name stay visible. It is drawn in the link
// colour, grey when disabled, with a pointing hand (and an underline) on hover.
class QT_HALVO_EXPORT LinkLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QColor linkColor READ GetLinkColor WRITE SetLinkColor)
    Q_PROPERTY(bool hoverUnderline READ GetHoverUnderlineFlag WRITE SetHoverUnderlineFlag)
    Q_PROPERTY(QString href READ GetHref WRITE SetHref)
    Q_PROPERTY(QString path READ GetPath WRITE SetPath)
    Q_PROPERTY(QString command READ GetCommand WRITE SetCommand)

public:
    explicit LinkLabel(QWidget* parent = nullptr);
    ~LinkLabel() override;

    QColor GetLinkColor() const;
    void SetLinkColor(const QColor& color);
    bool GetHoverUnderlineFlag() const;
    void SetHoverUnderlineFlag(bool underline);
    QString GetHref() const;
    void SetHref(const QString& href);
    QString GetPath() const;
    void SetPath(const QString& path);
    QString GetCommand() const;
    void SetCommand(const QString& command);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void Clicked();
    void CommandClicked(const QString& href);

protected:
    bool event(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private Q_SLOTS:
    void OnClicked();

private:
    void SetHoverFont();
    void SetNormalFont();
    void UpdatePalette();
    void SetForeground(const QColor& color);
    void ShowPath();

    bool m_hoverUnderline = true;
    QColor m_linkColor{0x07, 0x8B, 0xFF};
    QUrl m_href;
    QString m_path;
    QString m_command;
};

// The path as it fits in width: whole, or its first three characters (a drive) and the
// end of the rest, or those three characters alone when nothing else fits.
QT_HALVO_EXPORT QString ElidePath(const QString& path, const QFontMetrics& metrics, int width);

} // namespace OrvantaQT
