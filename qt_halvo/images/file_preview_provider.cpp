#include <qt_halvo/images/file_preview_provider.h>

namespace OrvantaQT {

struct FilePreviewProvider::Private
{
};

FilePreviewProvider::FilePreviewProvider(QObject* parent) : QObject(parent), d(new Private) {}
FilePreviewProvider::~FilePreviewProvider() { delete d; }
FilePreviewProvider* FilePreviewProvider::Instance() { return nullptr; }
void FilePreviewProvider::RequestPreview(const QString&, const QSize&, qreal, QObject*, Callback) {}
QString FilePreviewProvider::GetCacheDirectory() const { return {}; }
void FilePreviewProvider::SetCacheDirectory(const QString&) {}
int FilePreviewProvider::GetMaxWorkers() const { return 0; }
void FilePreviewProvider::SetMaxWorkers(int) {}
int FilePreviewProvider::PendingRequests() const { return 0; }
bool FilePreviewProvider::CanPreviewPdf() { return false; }

} // namespace OrvantaQT
