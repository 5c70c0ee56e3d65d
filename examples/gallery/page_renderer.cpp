#include "page_renderer.h"

#include "gallery_window.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

namespace {

void Settle(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    do {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    } while (timer.elapsed() < milliseconds);
}

} // namespace

int RenderAllPages(GalleryWindow& window, const QString& folder)
{
    QTextStream err(stderr);
    if (!QDir().mkpath(folder)) {
        err << "Cannot create the folder " << folder << "\n";
        return window.PageCount();
    }
    window.show();
    int failures = 0;
    for (int i = 0; i < window.PageCount(); ++i) {
        window.ShowPage(i);
        Settle(50 + window.Page(i).settleMilliseconds);
        const QString file = QDir(folder).filePath(window.Page(i).id + QLatin1String(".png"));
        if (!window.grab().save(file)) {
            err << "Cannot write " << file << "\n";
            ++failures;
        }
    }
    return failures;
}
