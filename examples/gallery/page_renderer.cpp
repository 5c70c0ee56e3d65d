#include "page_renderer.h"

#include "gallery_pages.h"
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

// 0 when written, 1 when not.
int Save(QWidget& window, const QString& file)
{
    if (window.grab().save(file))
        return 0;
    QTextStream(stderr) << "Cannot write " << file << "\n";
    return 1;
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
        const GalleryPage& page = window.Page(i);
        failures += Save(window, QDir(folder).filePath(page.id + QLatin1String(".png")));
        for (const GalleryMoment& moment : page.moments) {
            if (moment.action)
                moment.action(window.CurrentPageWidget());
            Settle(moment.settleMilliseconds);
            failures += Save(window, QDir(folder).filePath(page.id + QLatin1Char('_') + moment.suffix + QLatin1String(".png")));
        }
    }
    return failures;
}
