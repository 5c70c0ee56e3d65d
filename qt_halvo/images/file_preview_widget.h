#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QWidget>

namespace OrvantaQT {

class BusyIndicatorRing;
class FilePreviewProvider;

// The preview of a file, with a busy ring while it comes; fitted into the widget (aspect
// ratio kept, centred) and asked for again when the widget's size or device pixel ratio
// changes.
class QT_HALVO_EXPORT FilePreviewWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString path READ GetPath WRITE SetPath NOTIFY PathChanged)

public:
    explicit FilePreviewWidget(QWidget* parent = nullptr);
    ~FilePreviewWidget() override;

    QString GetPath() const;
    // An empty path shows nothing.
    void SetPath(const QString& path);

    // The application's provider unless set; not taken over.
    FilePreviewProvider* GetProvider() const;
    void SetProvider(FilePreviewProvider* provider);

    // Whether a preview is on its way (the ring "BusyIndicator" turns meanwhile).
    bool IsLoading() const;
    // What is shown: the preview, or the fallback icon; null while loading.
    QImage Preview() const;
    // Why there is no preview; empty when there is one.
    QString ErrorString() const;
    BusyIndicatorRing* BusyIndicator() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void PathChanged(const QString& path);
    void PreviewShown();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Asks for the preview of the path at the current size, dropping what was shown
    // unless it is to stay until the new one comes.
    void Ask(bool keepShown = false);

    struct Private;
    Private* d;
};

} // namespace OrvantaQT
