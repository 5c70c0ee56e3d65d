#pragma once

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtCore/QSemaphore>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtTest/QTest>

#include "../../qt_halvo/images/preview_makers_p.h"

#include <array>
#include <tuple>
#include <utility>

// A test table's columns declared, and the current row read, in one line each, types and names in the same
// order: Columns<QString, int>({"name", "count"}) and const auto [name, count] = Row<QString, int>({"name", "count"}).
// Row reads the values the way QFETCH does, failing the same way on a wrong name or type.
template <typename... T>
void Columns(const std::array<const char*, sizeof...(T)>& names)
{
    std::size_t i = 0;
    (QTest::addColumn<T>(names[i++]), ...);
}

template <typename... T, std::size_t... I>
std::tuple<T...> Row(const std::array<const char*, sizeof...(T)>& names, std::index_sequence<I...> = {})
{
    if constexpr (sizeof...(I) != sizeof...(T))
        return Row<T...>(names, std::index_sequence_for<T...>());
    else
        return std::tuple<T...>{*static_cast<T*>(QTest::qData(names[I], qMetaTypeId<T>()))...};
}

// Left half `left`, the rest `right`, encoded: where the halves land shows scaling and orientation.
inline QByteArray Halves(const QSize& size, const char* format = "png", QColor left = Qt::red, QColor right = Qt::blue)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(right);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), left);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 90);
    return bytes;
}

// Qt writes no EXIF: an APP1 segment holding only the orientation goes after the SOI marker.
inline QByteArray WithOrientation(QByteArray jpeg, char orientation)
{
    return jpeg.insert(2, QByteArray("\xff\xe1\0\x22" "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 29)
                              + orientation + QByteArray(6, '\0'));
}

// Previews of files named block* wait until released; the hook counts them as they start.
struct PreviewGate
{
    QSemaphore entered;
    QSemaphore open;
    PreviewGate() { Install(); }
    // Holds previews of files named "block..." again, after a test set a hook of its own.
    void Install()
    {
        OrvantaQT::SetPreviewWorkHook([this](const QString& path) {
            if (QFileInfo(path).fileName().startsWith(QLatin1String("block"))) {
                entered.release();
                open.tryAcquire(1, 20000);
            }
        });
    }
    ~PreviewGate() { OrvantaQT::SetPreviewWorkHook(nullptr); }
};
