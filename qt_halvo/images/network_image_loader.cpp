#include <qt_halvo/images/network_image_loader.h>

namespace OrvantaQT {

struct NetworkImageLoader::Private
{
};

NetworkImageLoader::NetworkImageLoader(QNetworkAccessManager*, QObject* parent) : QObject(parent), d(new Private) {}
NetworkImageLoader::~NetworkImageLoader() { delete d; }
NetworkImageLoader* NetworkImageLoader::Instance() { return nullptr; }
QNetworkAccessManager* NetworkImageLoader::NetworkAccessManager() const { return nullptr; }
void NetworkImageLoader::Load(const QUrl&, const QSize&, qreal, QObject*, Callback) {}
qint64 NetworkImageLoader::GetMemoryCacheLimit() const { return 0; }
void NetworkImageLoader::SetMemoryCacheLimit(qint64) {}
qint64 NetworkImageLoader::MemoryCacheSize() const { return 0; }
void NetworkImageLoader::ClearMemoryCache() {}
QString NetworkImageLoader::GetDiskCacheDirectory() const { return {}; }
void NetworkImageLoader::SetDiskCacheDirectory(const QString&) {}
qint64 NetworkImageLoader::GetDiskCacheLimit() const { return 0; }
void NetworkImageLoader::SetDiskCacheLimit(qint64) {}
qint64 NetworkImageLoader::GetMaxPixelCount() const { return 0; }
void NetworkImageLoader::SetMaxPixelCount(qint64) {}
int NetworkImageLoader::GetMaxRedirects() const { return 0; }
void NetworkImageLoader::SetMaxRedirects(int) {}
int NetworkImageLoader::GetRetryCount() const { return 0; }
void NetworkImageLoader::SetRetryCount(int) {}
int NetworkImageLoader::GetRetryDelay() const { return 0; }
void NetworkImageLoader::SetRetryDelay(int) {}
int NetworkImageLoader::GetTimeout() const { return 0; }
void NetworkImageLoader::SetTimeout(int) {}
int NetworkImageLoader::GetFailureMemory() const { return 0; }
void NetworkImageLoader::SetFailureMemory(int) {}
int NetworkImageLoader::PendingDownloads() const { return 0; }

} // namespace OrvantaQT
