// Decoded pictures kept in memory, bounded in bytes, the least recently used out first.
// GUI thread only.
#pragma once

#include <qt_halvo/qt_halvo_global_p.h>

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <list>

namespace OrvantaQT {

class ImageMemoryCache
{
public:
    explicit ImageMemoryCache(qint64 limit) : m_limit(qMax<qint64>(0, limit)) {}

    // The picture under key, now the most recently used; null when there is none.
    QImage Find(const QString& key);
    // Keeps image under key, unless it is there already or alone larger than the limit.
    void Insert(const QString& key, const QImage& image);
    void Clear();

    qint64 Limit() const { return m_limit; }
    // Negative limits are taken as 0; lowering one drops pictures at once.
    void SetLimit(qint64 bytes);
    qint64 Size() const { return m_size; }
    int Count() const { return m_index.size(); }

private:
    struct Entry
    {
        QString key;
        QImage image;
        qint64 bytes = 0;
    };

    void Trim();

    qint64 m_limit = 0;
    qint64 m_size = 0;
    std::list<Entry> m_entries; // most recently used first
    QHash<QString, std::list<Entry>::iterator> m_index;
};

} // namespace OrvantaQT
