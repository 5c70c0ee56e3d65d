#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QUrl>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

class NetworkImageLoader;

// A picture from the network: a placeholder while it loads, the error picture when it
// cannot, and the picture itself faded in over the placeholder when it comes. The picture
// is fitted into the widget (aspect ratio kept, centred) and asked for at the widget's
// size and device pixel ratio, again when either changes.
class QT_HALVO_EXPORT NetworkImageLabel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QUrl url READ GetUrl WRITE SetUrl NOTIFY UrlChanged)
    Q_PROPERTY(QPixmap placeholder READ GetPlaceholder WRITE SetPlaceholder)
    Q_PROPERTY(QPixmap errorPixmap READ GetErrorPixmap WRITE SetErrorPixmap)
    Q_PROPERTY(int fadeDuration READ GetFadeDuration WRITE SetFadeDuration)
    Q_PROPERTY(State state READ GetState NOTIFY StateChanged)

public:
    enum class State { Empty, Loading, Shown, Failed };
    Q_ENUM(State)

    explicit NetworkImageLabel(QWidget* parent = nullptr);
    ~NetworkImageLabel() override;

    QUrl GetUrl() const;
    // An empty URL shows nothing; an invalid one the error picture, logged.
    void SetUrl(const QUrl& url);

    // Shown while loading and under the fade; none by default.
    QPixmap GetPlaceholder() const;
    void SetPlaceholder(const QPixmap& pixmap);
    // Shown when the picture cannot be had; the style's "critical" icon by default.
    QPixmap GetErrorPixmap() const;
    void SetErrorPixmap(const QPixmap& pixmap);

    // 250 ms by default; 0 (and the style without widget animations) shows it at once.
    int GetFadeDuration() const;
    void SetFadeDuration(int milliseconds);

    // The application's loader unless set; not taken over.
    NetworkImageLoader* GetLoader() const;
    void SetLoader(NetworkImageLoader* loader);

    State GetState() const;
    // The picture shown (null unless Shown), and why it failed (empty unless Failed).
    QImage Image() const;
    QString ErrorString() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void UrlChanged(const QUrl& url);
    void StateChanged(OrvantaQT::NetworkImageLabel::State state);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Private;
    Private* d;
};

} // namespace OrvantaQT
