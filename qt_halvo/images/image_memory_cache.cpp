#include "image_memory_cache_p.h"

namespace OrvantaQT {

QImage ImageMemoryCache::Find(const QString& key)
{
    const auto found = m_index.constFind(key);
    if (found == m_index.constEnd())
        return QImage();
    m_entries.splice(m_entries.begin(), m_entries, found.value());
    return m_entries.front().image;
}

void ImageMemoryCache::Insert(const QString& key, const QImage& image)
{
    const qint64 bytes = image.sizeInBytes();
    if (image.isNull() || bytes > m_limit || m_index.contains(key))
        return;
    m_entries.push_front(Entry{key, image, bytes});
    m_index.insert(key, m_entries.begin());
    m_size += bytes;
    Trim();
}

void ImageMemoryCache::Clear()
{
    m_entries.clear();
    m_index.clear();
    m_size = 0;
}

void ImageMemoryCache::SetLimit(qint64 bytes)
{
    bytes = qMax<qint64>(0, bytes);
    if (bytes == m_limit)
        return;
    m_limit = bytes;
    Trim();
}

void ImageMemoryCache::Trim()
{
    while (m_size > m_limit && !m_entries.empty()) {
        m_size -= m_entries.back().bytes;
        m_index.remove(m_entries.back().key);
        m_entries.pop_back();
    }
}

} // namespace OrvantaQT
