#include "image_test_support.h"
#include "test_support.h"

#include <qt_halvo/images/file_preview_provider.h>

#include <QtGui/QPdfWriter>

#include <memory>

using OrvantaQT::FilePreviewProvider;

namespace {

struct Answer { QImage image; QString error; int calls = 0; };

QByteArray Pdf()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    painter.fillRect(painter.viewport(), Qt::blue);
    painter.fillRect(painter.viewport().adjusted(0, 0, -painter.viewport().width() / 2, 0), Qt::red);
    return bytes;
}

// "red", "blue", "white", "grey" or the colour, at a point given as fractions of the size.
QString Hue(const QImage& image, qreal x, qreal y)
{
    const QColor c = image.pixelColor(qMin(image.width() - 1, int(x * image.width())),
                                      qMin(image.height() - 1, int(y * image.height())));
    if (c.saturation() > 200)
        return c.hue() < 20 || c.hue() > 340 ? "red" : c.hue() > 220 && c.hue() < 260 ? "blue" : c.name();
    return c.value() > 240 ? "white" : c.value() > 100 ? "grey" : c.name();
}

QString Look(const QImage& image)
{
    return Hue(image, 0.25, 0.25) + ' ' + Hue(image, 0.75, 0.75);
}

int Ink(const QImage& image, const QRect& area)
{
    int dark = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            dark += qGray(image.pixel(x, y)) < 128;
    return dark;
}

QString CacheName(const QString& path)
{
    return QCryptographicHash::hash(QUrl::fromLocalFile(path).toEncoded(), QCryptographicHash::Md5).toHex() + ".png";
}

QString Key(const QString& file, const char* key)
{
    return QImage(file).text(key);
}

QString Logged(const QString& path, const QString& error)
{
    return "3 FilePreviewProvider: no preview of \"" + path + "\": " + error;
}

} // namespace

class TestFilePreviewProvider : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_caches = 0;

    QString File(const QString& name, const QByteArray& bytes, qint64 mtime = 0)
    {
        QFile file(m_dir.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
            qFatal("cannot write %s", qPrintable(name));
        if (mtime)
            file.setFileTime(QDateTime::fromSecsSinceEpoch(mtime), QFileDevice::FileModificationTime);
        return file.fileName();
    }

    // A provider with a cache of its own.
    std::unique_ptr<FilePreviewProvider> Provider()
    {
        auto provider = std::make_unique<FilePreviewProvider>();
        provider->SetCacheDirectory(m_dir.filePath(QString("cache%1").arg(++m_caches)));
        return provider;
    }

    static Answer Ask(FilePreviewProvider* provider, const QString& path, QSize size = {100, 100}, qreal ratio = 1)
    {
        QObject receiver;
        auto answer = std::make_shared<Answer>();
        provider->RequestPreview(path, size, ratio, &receiver, [answer](const QImage& image, const QString& error) {
            *answer = {image, error, answer->calls + 1};
        });
        if (!QTest::qWaitFor([&] { return answer->calls > 0; }, 20000))
            qWarning("no answer for %s", qPrintable(path));
        QCoreApplication::processEvents();
        return *answer;
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_dir.isValid()); }
    void cleanup() { OrvantaQT::SetPreviewWorkHook(nullptr); }

    void kinds_data()
    {
        // look: or the error, for the icon
        Columns<QString, QByteArray, QSize, qreal, QSize, QString>(
            {"name", "bytes", "size", "ratio", "pixels", "look"});
        const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'><rect width='10' "
                               "height='10' fill='#f00'/><rect x='10' width='10' height='10' fill='#00f'/></svg>";
        const QByteArray jpeg = WithOrientation(Halves({400, 200}, "jpg"), 8);  // turned left
        QTest::newRow("PNG") << "a.png" << Halves({400, 200}) << QSize(100, 100) << 1.0 << QSize(100, 50) << "red blue";
        QTest::newRow("PNG, ratio 1.5") << "b.png" << Halves({400, 200}) << QSize(60, 60) << 1.5 << QSize(90, 45)
                                        << "red blue";
        QTest::newRow("small: not enlarged") << "c.png" << Halves({40, 20}) << QSize(100, 100) << 2.0 << QSize(40, 20)
                                             << "red blue";
        QTest::newRow("JPEG turned by EXIF") << "e.jpg" << jpeg << QSize(100, 100) << 1.0 << QSize(50, 100)
                                             << "blue red";
        QTest::newRow("SVG drawn larger") << "h.svg" << svg << QSize(50, 50) << 2.0 << QSize(100, 50) << "red blue";
        QTest::newRow("PDF") << "j.pdf" << Pdf() << QSize(100, 100) << 1.0 << QSize(70, 100) << "red blue";
        QTest::newRow("unknown binary: icon") << "k.bin" << QByteArray("\x7f\x01\x00\xff", 4) << QSize(48, 48) << 1.0
                                              << QSize(48, 48) << "no preview of application/octet-stream files";
    }
    void kinds()
    {
        auto [name, bytes, size, ratio, pixels, look] =
            Row<QString, QByteArray, QSize, qreal, QSize, QString>(
                {"name", "bytes", "size", "ratio", "pixels", "look"});
        if (name.endsWith(".pdf") && !FilePreviewProvider::CanPreviewPdf())
            QSKIP("built without poppler-qt5");
        auto provider = Provider();
        const LogCapture::Mark mark;
        const Answer answer = Ask(provider.get(), File(name, bytes), size, ratio);
        QCOMPARE(answer.calls, 1);
        QCOMPARE(answer.image.size(), pixels);
        QCOMPARE(answer.image.devicePixelRatio(), ratio);
        QCOMPARE(answer.error.isEmpty() ? Look(answer.image) : answer.error, look);
        QCOMPARE(mark.Texts(), QStringList());
    }

    void textPage_data()
    {
        Columns<QString, int>({"name", "lines"});
        QTest::newRow("two lines") << "notes.txt" << 2;
        QTest::newRow("C++ source, a page full") << "main.cpp" << 200;
    }
    void textPage()
    {
        auto [name, lines] = Row<QString, int>({"name", "lines"});
        auto provider = Provider();
        const QImage page = Ask(provider.get(), File(name, QByteArray("MMMMMMMMMMMMMMMMMMMMMMMMMMMMMM\n").repeated(lines)),
                                {200, 200}).image;
        // A portrait page: white, a thin grey border, the first lines at the top.
        QCOMPARE(page.size(), QSize(150, 200));
        QCOMPARE(Hue(page, 0, 0.5) + ' ' + Hue(page, 0.5, 0) + ' ' + Hue(page, 0.5, 0.98), QString("grey grey white"));
        QVERIFY(Ink(page, QRect(2, 2, 146, 98)) > 100);
        QCOMPARE(Ink(page, QRect(2, 100, 146, 98)) > 100, lines > 2);
    }

    void cacheFile_data()
    {
        Columns<QSize, qreal, QString, QSize>({"size", "ratio", "folder", "stored"});
        QTest::newRow("normal") << QSize(128, 20) << 1.0 << "normal" << QSize(128, 64);
        QTest::newRow("large") << QSize(129, 100) << 1.0 << "large" << QSize(256, 128);
        QTest::newRow("x-large at ratio 2") << QSize(150, 150) << 2.0 << "x-large" << QSize(512, 256);
        QTest::newRow("xx-large") << QSize(1000, 100) << 1.0 << "xx-large" << QSize(1024, 512);
        QTest::newRow("larger than any: not kept") << QSize(1025, 1025) << 1.0 << "" << QSize();
    }
    void cacheFile()
    {
        auto [size, ratio, folder, stored] = Row<QSize, qreal, QString, QSize>({"size", "ratio", "folder", "stored"});
        const QString path = File(QString::fromUtf8("été photo #1.png"), Halves({1200, 600}));
        const QByteArray uri = "file://" + QUrl::toPercentEncoding(path, "/");
        QVERIFY(uri.endsWith("/%C3%A9t%C3%A9%20photo%20%231.png"));
        auto provider = Provider();
        const QString root = provider->GetCacheDirectory();
        QCOMPARE(Ask(provider.get(), path, size, ratio).error, QString());
        const auto entries = [](const QString& dir) { return QDir(dir).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); };
        QCOMPARE(entries(root), folder.isEmpty() ? QStringList() : QStringList(folder));
        if (folder.isEmpty())
            return;
        const QString name = QCryptographicHash::hash(uri, QCryptographicHash::Md5).toHex() + ".png";
        QCOMPARE(entries(root + '/' + folder), QStringList(name));  // no temporary file left
        const QString thumbnail = root + '/' + folder + '/' + name;
        QCOMPARE(QImage(thumbnail).size(), stored);
        QCOMPARE(QStringList({Key(thumbnail, "Thumb::URI"), Key(thumbnail, "Thumb::MTime"), Key(thumbnail, "Thumb::Size"),
                              Key(thumbnail, "Thumb::Mime"), Key(thumbnail, "Software").left(9)}),
                 QStringList({uri, QString::number(QFileInfo(path).lastModified().toSecsSinceEpoch()),
                              QString::number(QFileInfo(path).size()), "image/png", "qt_halvo "}));
        const auto anyone = QFile::Permissions(0x7077);  // the owner's, the group's, others'
        QCOMPARE(QFile::permissions(thumbnail) & anyone, QFile::ReadOwner | QFile::WriteOwner);
        QCOMPARE(QFile::permissions(root + '/' + folder) & anyone, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(QFile::permissions(root) & anyone, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void cacheFollowsTheFile_data()
    {
        Columns<qint64, bool, QString>({"later", "otherUri", "look"});
        QTest::newRow("same time: the cached one") << qint64(0) << false << "red red";
        QTest::newRow("newer: made again") << qint64(5) << false << "blue blue";
        QTest::newRow("older: made again") << qint64(-5) << false << "blue blue";
        QTest::newRow("of another file: made again") << qint64(0) << true << "blue blue";
    }
    void cacheFollowsTheFile()
    {
        auto [later, otherUri, look] = Row<qint64, bool, QString>({"later", "otherUri", "look"});
        const qint64 time = 1700000000;
        const QString path = File("swapped.png", Halves({200, 200}, "png", Qt::red, Qt::red), time);
        auto provider = Provider();
        QCOMPARE(Look(Ask(provider.get(), path).image), QString("red red"));
        const QString thumbnail = provider->GetCacheDirectory() + "/normal/" + CacheName(path);
        if (otherUri) {
            QImage other(thumbnail);
            other.setText("Thumb::URI", "file:///elsewhere.png");
            QVERIFY(other.save(thumbnail, "png"));
        }
        // What the disk keeps is under test, not what the provider remembers.
        provider->ClearMemoryCache();
        // Other content: only a thumbnail made again shows it.
        File("swapped.png", Halves({200, 200}, "png", Qt::blue, Qt::blue), time + later);
        const Answer answer = Ask(provider.get(), path);
        QCOMPARE(Look(answer.image), look);
        QCOMPARE(answer.image.size(), QSize(100, 100));
        QCOMPARE(Key(thumbnail, "Thumb::MTime"), QString::number(time + later));
    }

    void memoryCache_data()
    {
        // change: what happens between two requests for the same preview
        Columns<QString, int, QString>({"change", "made", "look"});
        QTest::newRow("nothing: from memory") << "" << 0 << "red blue";
        QTest::newRow("other size") << "size" << 1 << "red blue";
        QTest::newRow("other ratio") << "ratio" << 1 << "red blue";
        QTest::newRow("file newer") << "newer" << 1 << "blue blue";
        QTest::newRow("same time, other length") << "length" << 1 << "blue blue";
        QTest::newRow("cleared") << "clear" << 1 << "red blue";
        QTest::newRow("no memory allowed") << "limit" << 1 << "red blue";
    }
    void memoryCache()
    {
        auto [change, made, look] = Row<QString, int, QString>({"change", "made", "look"});
        const qint64 time = 1650000000;
        const QString path = File("kept.png", Halves({200, 100}), time);
        auto provider = Provider();
        const Answer first = Ask(provider.get(), path);
        QCOMPARE(provider->MemoryCacheSize(), first.image.sizeInBytes());
        QSize size(100, 100);
        qreal ratio = 1;
        if (change == "size")
            size = QSize(60, 60);
        if (change == "ratio")
            ratio = 2;
        if (change == "newer")
            File("kept.png", Halves({200, 100}, "png", Qt::blue, Qt::blue), time + 1);
        if (change == "length")
            File("kept.png", Halves({200, 100}, "bmp", Qt::blue, Qt::blue), time);
        if (change == "clear")
            provider->ClearMemoryCache();
        if (change == "limit")
            provider->SetMemoryCacheLimit(0);
        QCOMPARE(provider->MemoryCacheSize(), change == "clear" || change == "limit" ? 0 : first.image.sizeInBytes());
        int works = 0;
        OrvantaQT::SetPreviewWorkHook([&works](const QString&) { ++works; });
        const Answer second = Ask(provider.get(), path, size, ratio);
        QCOMPARE(works, made);
        QCOMPARE(second.calls, 1);
        QCOMPARE(second.error, QString());
        QCOMPARE(Look(second.image), look);
        QCOMPARE(second.image.size(), QSize(size.width(), size.width() / 2) * ratio);
        QCOMPARE(second.image.devicePixelRatio(), ratio);
    }

    void memoryCacheOrder()
    {
        auto provider = Provider();
        QStringList paths;
        for (const char* name : {"m1.png", "m2.png", "m3.png"})
            paths << File(name, Halves({100, 100}));
        const qint64 each = Ask(provider.get(), paths[0]).image.sizeInBytes();
        provider->SetMemoryCacheLimit(2 * each);
        Ask(provider.get(), paths[1]);
        Ask(provider.get(), paths[0]);  // now the most recently used
        Ask(provider.get(), paths[2]);  // pushes out m2
        QCOMPARE(provider->MemoryCacheSize(), 2 * each);
        QStringList made;
        OrvantaQT::SetPreviewWorkHook([&made](const QString& path) { made << QFileInfo(path).fileName(); });
        for (const QString& path : {paths[2], paths[0], paths[1]})
            Ask(provider.get(), path);
        QCOMPARE(made, QStringList("m2.png"));
        // The lower limit drops the oldest at once.
        provider->SetMemoryCacheLimit(each);
        QCOMPARE(provider->MemoryCacheSize(), each);
        provider->SetMemoryCacheLimit(-5);
        QCOMPARE(provider->GetMemoryCacheLimit(), 0);
        QCOMPARE(provider->MemoryCacheSize(), 0);
    }

    void memoryAnswerComesLater()
    {
        auto provider = Provider();
        const QString path = File("later.png", Halves({40, 40}));
        Ask(provider.get(), path);
        // From memory too the answer comes from the event loop, and not to a receiver gone.
        int calls = 0;
        auto* receiver = new QObject;
        for (int i = 0; i < 2; ++i)
            provider->RequestPreview(path, {100, 100}, 1.0, i ? receiver : this,
                                     [&calls](const QImage&, const QString&) { ++calls; });
        QCOMPARE(calls, 0);
        delete receiver;
        QTRY_COMPARE(calls, 1);
        QTest::qWait(20);
        QCOMPARE(calls, 1);
    }

    void failures_data()
    {
        // later: the file made good gets a newer time, or keeps its time with another length
        Columns<QString, QByteArray, QString, bool>({"name", "bytes", "error", "later"});
        QTest::newRow("corrupt PNG") << "bad.png" << QByteArray(300, 'x') << "not a picture Qt can read" << true;
        QTest::newRow("PNG cut short") << "cut.png" << Halves({300, 300}).left(200)
                                       << "the picture cannot be decoded (Unable to read image data)" << false;
        QTest::newRow("corrupt PDF") << "bad.pdf" << QByteArray("%PDF-1.4\nnonsense") << "the PDF cannot be opened"
                                     << false;
        QTest::newRow("unknown kind: no thumbnail") << "x.bin" << QByteArray("\x01\x00\x02", 3) << "" << false;
    }
    void failures()
    {
        auto [name, bytes, error, later] = Row<QString, QByteArray, QString, bool>({"name", "bytes", "error", "later"});
        if (name.endsWith(".pdf") && !FilePreviewProvider::CanPreviewPdf())
            QSKIP("built without poppler-qt5");
        const qint64 time = 1600000000;
        const QString path = File(name, bytes, time);
        auto provider = Provider();
        LogCapture::Mark mark;
        Answer answer = Ask(provider.get(), path);
        QVERIFY(!answer.image.isNull());
        const QString root = provider->GetCacheDirectory();
        const QString failed = root + "/fail/qt_halvo-0.1.0/" + CacheName(path);
        QCOMPARE(QDir(root + "/normal").exists(), false);
        QCOMPARE(QFile::exists(failed), !error.isEmpty());
        if (error.isEmpty()) {
            QCOMPARE(answer.error, QString("no preview of application/octet-stream files"));
            QCOMPARE(mark.Texts(), QStringList());
            return;
        }
        QCOMPARE(answer.error, error);
        QCOMPARE(mark.Texts(), QStringList(Logged(path, error)));
        QCOMPARE(Key(failed, "Thumb::URI") + ' ' + Key(failed, "Thumb::MTime"),
                 QUrl::fromLocalFile(path).toString() + " 1600000000");
        // Not tried again while the file keeps its time and length.
        mark = LogCapture::Mark();
        const QString before = "no preview could be made of this version of the file before";
        QCOMPARE(Ask(provider.get(), path).error, before);
        QCOMPARE(mark.Texts(), QStringList(Logged(path, before)));
        // Tried again when either changes.
        const QByteArray good = name.endsWith(".pdf") ? Pdf() : Halves({200, 100});
        File(name, good, later ? time + 1 : time);
        answer = Ask(provider.get(), path);
        QCOMPARE(answer.error + Look(answer.image), QString("red blue"));
    }

    void cacheNotWritable()
    {
        // A folder under a regular file cannot be made, whoever runs the test.
        auto provider = Provider();
        provider->SetCacheDirectory(File("plain", "x") + "/thumbnails");
        const LogCapture::Mark mark;
        for (const char* name : {"w1.png", "w2.png", "w3.jpg"}) {
            const Answer answer = Ask(provider.get(), File(name, Halves({80, 40}, name + 3)));
            QCOMPARE(answer.error + Look(answer.image), QString("red blue"));
            QCOMPARE(answer.image.size(), QSize(80, 40));
        }
        QCOMPARE(mark.Texts(), QStringList("3 FilePreviewProvider: thumbnails are not kept: cannot make the folder "
                                           + provider->GetCacheDirectory() + "/normal"));
        provider->SetCacheDirectory(QString());  // no cache: nothing to tell
        QCOMPARE(Ask(provider.get(), m_dir.filePath("w1.png")).image.size(), QSize(80, 40));
        QCOMPARE(mark.Texts().size(), 1);
    }

    void badInput_data()
    {
        // kind: 0 missing, 1 folder, 2 empty, 3 unreadable, 4 touched, 5 removed
        Columns<QString, int, QString>({"name", "kind", "error"});
        QTest::newRow("missing") << "missing.png" << 0 << "the file does not exist";
        QTest::newRow("missing, not ASCII") << QString::fromUtf8("ünïcødé 写真.png") << 0 << "the file does not exist";
        QTest::newRow("folder") << "folder" << 1 << "it is a folder";
        QTest::newRow("empty") << "empty.png" << 2 << "the file is empty";
        QTest::newRow("unreadable") << "secret.png" << 3 << "the file cannot be read";
        QTest::newRow("changed while read") << "touched.png" << 4 << "the file changed while it was read";
        QTest::newRow("removed while read") << "removed.txt" << 5 << "the file changed while it was read";
    }
    void badInput()
    {
        auto [name, kind, error] = Row<QString, int, QString>({"name", "kind", "error"});
        QString path = m_dir.filePath(name);
        if (kind == 1)
            QVERIFY(QDir(m_dir.path()).mkpath(name));
        if (kind >= 2)
            path = File(name, kind == 2 ? QByteArray() : Halves({50, 50}), 1500000000);
        if (kind == 3 && (!QFile::setPermissions(path, QFile::WriteOwner) || QFileInfo(path).isReadable()))
            QSKIP("this user reads files whatever their permissions");
        OrvantaQT::SetPreviewWorkHook([path, kind = kind](const QString&) {
            QFile file(path);
            if (kind == 4 && file.open(QIODevice::ReadWrite))
                file.setFileTime(QDateTime::fromSecsSinceEpoch(1500000100), QFileDevice::FileModificationTime);
            if (kind == 5)
                file.remove();
        });
        auto provider = Provider();
        const LogCapture::Mark mark;
        const Answer answer = Ask(provider.get(), path);
        QCOMPARE(answer.calls, 1);
        QCOMPARE(answer.error, error);
        QVERIFY(!answer.image.isNull());  // the icon stands in
        QCOMPARE(mark.Texts(), QStringList(Logged(path, error)));
        QCOMPARE(QDir(provider->GetCacheDirectory()).exists(), false);  // nothing recorded
    }

    void callerErrors_data()
    {
        Columns<bool, bool, QSize, qreal, QString>({"receiver", "callback", "size", "ratio", "log"});
        const QString asked = "3 FilePreviewProvider: a preview of \"p.png\" asked for ";
        const QString noSize = asked + "at %1 pixels, ratio %2; nothing to draw";
        QTest::newRow("no receiver") << false << true << QSize(9, 9) << 1.0 << asked + "without a receiver; ignored";
        QTest::newRow("no callback") << true << false << QSize(9, 9) << 1.0 << asked + "without a callback; ignored";
        QTest::newRow("empty size") << true << true << QSize(0, 10) << 1.0 << noSize.arg("0 x 10").arg(1);
        QTest::newRow("ratio 0") << true << true << QSize(9, 9) << 0.0 << noSize.arg("9 x 9").arg(0);
        QTest::newRow("negative ratio") << true << true << QSize(9, 9) << -2.0 << noSize.arg("9 x 9").arg(-2);
    }
    void callerErrors()
    {
        auto [receiver, callback, size, ratio, log] =
            Row<bool, bool, QSize, qreal, QString>({"receiver", "callback", "size", "ratio", "log"});
        QDir::setCurrent(m_dir.path());
        File("p.png", Halves({20, 20}));
        auto provider = Provider();
        QObject owner;
        auto answer = std::make_shared<Answer>();
        const LogCapture::Mark mark;
        provider->RequestPreview("p.png", size, ratio, receiver ? &owner : nullptr,
                                 !callback ? FilePreviewProvider::Callback()
                                           : [answer](const QImage& image, const QString& error) {
                                                 *answer = {image, error, answer->calls + 1};
                                             });
        QCOMPARE(mark.Texts(), QStringList(log));
        Ask(provider.get(), "p.png");  // a sound request after it is answered; a dropped one never is
        QCOMPARE(answer->calls, int(receiver && callback));
        QVERIFY(answer->image.isNull());
        QCOMPARE(answer->error, answer->calls ? QString("No size to draw a preview at") : QString());
        QCOMPARE(provider->PendingRequests(), 0);
    }

    void latestFirst_data()
    {
        Columns<QString, QString>({"gone", "order"});
        QTest::newRow("latest first") << "" << "block c b a";
        QTest::newRow("receiver gone in the middle") << "b" << "block c a";
        QTest::newRow("latest gone") << "c" << "block b a";
    }
    void latestFirst()
    {
        auto [gone, order] = Row<QString, QString>({"gone", "order"});
        auto provider = Provider();
        provider->SetMaxWorkers(1);
        QStringList answered;
        QMap<QString, QObject*> receivers;
        PreviewGate gate;
        for (const QString name : {"block", "a", "b", "c"}) {
            receivers[name] = new QObject(this);
            provider->RequestPreview(File(name + ".png", Halves({20, 20})), {10, 10}, 1.0, receivers[name],
                                     [&answered, name](const QImage&, const QString&) { answered << name; });
            QVERIFY(name != "block" || gate.entered.tryAcquire(1, 20000));
        }
        QCOMPARE(provider->PendingRequests(), 3);
        delete receivers.take(gone);
        QCOMPARE(provider->PendingRequests(), gone.isEmpty() ? 3 : 2);
        gate.open.release();
        QTRY_COMPARE(answered.size(), order.count(' ') + 1);
        QCOMPARE(answered.join(' '), order);
        QCOMPARE(provider->PendingRequests(), 0);
        qDeleteAll(receivers);
    }

    void maxWorkers_data()
    {
        Columns<int, int>({"workers", "raiseTo"});
        QTest::newRow("one") << 1 << 1;
        QTest::newRow("two") << 2 << 2;
        QTest::newRow("one raised to three") << 1 << 3;
        QTest::newRow("zero keeps one") << 0 << 1;
    }
    void maxWorkers()
    {
        auto [workers, raiseTo] = Row<int, int>({"workers", "raiseTo"});
        QThreadPool::globalInstance()->setMaxThreadCount(8);
        auto provider = Provider();
        QCOMPARE(provider->GetMaxWorkers(), 4);  // half the pool's threads
        const LogCapture::Mark mark;
        provider->SetMaxWorkers(workers);
        QCOMPARE(mark.Texts(), workers ? QStringList() : QStringList("3 FilePreviewProvider: 0 workers asked for; at "
                                                                     "least 1 is kept"));
        QCOMPARE(provider->GetMaxWorkers(), qMax(1, workers));
        PreviewGate gate;
        QObject receiver;
        int answers = 0;
        for (int i = 0; i < 4; ++i)
            provider->RequestPreview(File(QString("block%1.png").arg(i), Halves({20, 20})), {10, 10}, 1.0, &receiver,
                                     [&answers](const QImage&, const QString&) { ++answers; });
        QVERIFY(gate.entered.tryAcquire(qMax(1, workers), 20000));
        provider->SetMaxWorkers(raiseTo);
        QVERIFY(gate.entered.tryAcquire(raiseTo - qMax(1, workers), 20000));
        QCOMPARE(provider->PendingRequests(), 4 - raiseTo);
        QCOMPARE(gate.entered.available(), 0);
        gate.open.release(4);
        QTRY_COMPARE(answers, 4);
        QThreadPool::globalInstance()->setMaxThreadCount(QThread::idealThreadCount());
    }

    void providerGoneFirst()
    {
        auto provider = Provider();
        QObject receiver;
        int calls = 0;
        for (int i = 0; i < 3; ++i)
            provider->RequestPreview(File("gone.png", Halves({20, 20})), {10, 10}, 1.0, &receiver,
                                     [&calls](const QImage&, const QString&) { ++calls; });
        provider.reset();
        QTest::qWait(50);
        QCOMPARE(calls, 0);
    }

    void cacheDirectory_data()
    {
        Columns<QByteArray, QString>({"xdg", "root"});
        QTest::newRow("XDG_CACHE_HOME") << QByteArray("/var/tmp/c") << "/var/tmp/c/thumbnails";
        QTest::newRow("unset") << QByteArray() << QDir::homePath() + "/.cache/thumbnails";
        QTest::newRow("relative: ignored") << QByteArray("rel/c") << QDir::homePath() + "/.cache/thumbnails";
    }
    void cacheDirectory()
    {
        auto [xdg, root] = Row<QByteArray, QString>({"xdg", "root"});
        qputenv("XDG_CACHE_HOME", xdg);
        FilePreviewProvider provider;
        QCOMPARE(provider.GetCacheDirectory(), root);
        provider.SetCacheDirectory(QString());
        QCOMPARE(provider.GetCacheDirectory(), QString());
        QVERIFY(FilePreviewProvider::Instance() && FilePreviewProvider::Instance() == FilePreviewProvider::Instance());
    }
};

QTEST_MAIN(TestFilePreviewProvider)
#include "tst_file_preview_provider.moc"
