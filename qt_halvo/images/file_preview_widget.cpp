#include <qt_halvo/images/file_preview_widget.h>

namespace OrvantaQT {

struct FilePreviewWidget::Private
{
};

FilePreviewWidget::FilePreviewWidget(QWidget* parent) : QWidget(parent), d(new Private) {}
FilePreviewWidget::~FilePreviewWidget() { delete d; }
QString FilePreviewWidget::GetPath() const { return {}; }
void FilePreviewWidget::SetPath(const QString&) {}
FilePreviewProvider* FilePreviewWidget::GetProvider() const { return nullptr; }
void FilePreviewWidget::SetProvider(FilePreviewProvider*) {}
bool FilePreviewWidget::IsLoading() const { return false; }
QImage FilePreviewWidget::Preview() const { return {}; }
QString FilePreviewWidget::ErrorString() const { return {}; }
BusyIndicatorRing* FilePreviewWidget::BusyIndicator() const { return nullptr; }
QSize FilePreviewWidget::sizeHint() const { return QWidget::sizeHint(); }
void FilePreviewWidget::paintEvent(QPaintEvent*) {}
void FilePreviewWidget::resizeEvent(QResizeEvent*) {}
void FilePreviewWidget::changeEvent(QEvent* event) { QWidget::changeEvent(event); }

} // namespace OrvantaQT
