#include <qt_halvo/images/network_image_loader.h>

#include "http_test_server.h"
#include "test_support.h"

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkDiskCache>

using OrvantaQT::NetworkImageLoader;
using TestSupport::HttpAnswer;
using Answers = QVector<HttpAnswer>;
using Headers = HttpAnswer::Headers;

Q_DECLARE_METATYPE(HttpAnswer)

namespace {

// A picture with a red left half and a blue right half, encoded.
QByteArray Picture(const QSize& size, const char* format = "JPG")
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

// The JPEG with an EXIF orientation tag (Qt writes none): an APP1 segment after SOI.
QByteArray WithOrientation(QByteArray jpeg, quint8 orientation)
{
    const QByteArray exif = QByteArray("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25) + char(orientation)
        + QByteArray("\0\0\0\0\0\0", 6);
    return jpeg.insert(2, QByteArray("\xFF\xE1", 2) + char((exif.size() + 2) >> 8) + char((exif.size() + 2) & 0xFF) + exif);
}

HttpAnswer Ok(const QByteArray& body, const Headers& headers = {}, int delay = 0)
{
    return HttpAnswer(200, body, Headers{{"Content-Type", "image/jpeg"}} + headers, delay);
}

HttpAnswer Status(int status, int delay = 0) { return HttpAnswer(status, "no", {}, delay); }

// What one Load() called back with.
struct Answer { int calls = 0; QImage image; QString error; };

// The colour name of a pixel, roughly: JPEG moves colours a little.
QString Hue(const QImage& image, int x, int y)
{
    const QColor colour = image.pixelColor(x, y);
    return colour.red() > 160 && colour.blue() < 100 ? QStringLiteral("red")
        : colour.blue() > 160 && colour.red() < 100  ? QStringLiteral("blue")
                                                     : colour.name();
}

} // namespace

class TestNetworkImageLoader : public QObject
{
    Q_OBJECT

    QTemporaryDir cacheHome;
    std::unique_ptr<TestSupport::HttpTestServer> server;
    std::unique_ptr<NetworkImageLoader> loader;
    std::unique_ptr<QTemporaryDir> folder;
    QObject receiver;
    const QString p = QStringLiteral("/p");

    // A path of the loopback server, or a whole URL.
    std::shared_ptr<Answer> Load(const QString& path, const QSize& size = QSize(100, 100), qreal ratio = 1.0,
                                 QObject* to = nullptr)
    {
        auto answer = std::make_shared<Answer>();
        const QUrl url = path.startsWith(QLatin1Char('/')) ? server->Url(path) : QUrl(path);
        loader->Load(url, size, ratio, to ? to : &receiver, [answer](const QImage& image, const QString& error) {
            *answer = Answer{answer->calls + 1, image, error};
        });
        return answer;
    }

private Q_SLOTS:
    // Should the application's loader come to be made, its disk cache stays out of ~/.cache.
    void initTestCase() { qputenv("XDG_CACHE_HOME", cacheHome.path().toUtf8()); }

    void init()
    {
        server.reset(new TestSupport::HttpTestServer);
        QVERIFY(server->IsListening());
        loader.reset(new NetworkImageLoader);
        loader->SetRetryDelay(10);
        folder.reset(new QTemporaryDir);
    }

    void cleanup() { loader.reset(), server.reset(); }

    void decodedSize_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QSize>("asked");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QStringList>("corners"); // top left, bottom right
        const QByteArray jpeg = Picture(QSize(400, 300));
        const QStringList across = TestSupport::Words("red blue");
        QTest::newRow("fitted") << jpeg << QSize(100, 100) << 1.0 << QSize(100, 75) << across;
        QTest::newRow("ratio 2") << jpeg << QSize(100, 100) << 2.0 << QSize(200, 150) << across;
        QTest::newRow("ratio 1.5 rounds down") << jpeg << QSize(51, 51) << 1.5 << QSize(76, 57) << across;
        QTest::newRow("never enlarged") << jpeg << QSize(800, 800) << 1.0 << QSize(400, 300) << across;
        QTest::newRow("empty size: as it comes") << jpeg << QSize() << 2.0 << QSize(400, 300) << across;
        QTest::newRow("png") << Picture(QSize(400, 300), "PNG") << QSize(40, 40) << 1.0 << QSize(40, 30) << across;
        // Orientation 6: turned a quarter clockwise, the red half goes to the top.
        QTest::newRow("exif turned") << WithOrientation(jpeg, 6) << QSize(150, 150) << 1.0 << QSize(112, 150) << across;
        QTest::newRow("exif upside down") << WithOrientation(jpeg, 3) << QSize(200, 200) << 1.0 << QSize(200, 150)
                                          << TestSupport::Words("blue red");
    }

    void decodedSize()
    {
        QFETCH(QByteArray, body);
        QFETCH(QSize, asked);
        QFETCH(qreal, ratio);
        server->SetRoute(p, Ok(body));
        const auto answer = Load(p, asked, ratio);
        QTRY_COMPARE(answer->calls, 1);
        QCOMPARE(answer->error, QString());
        const QImage& image = answer->image;
        QTEST(image.size(), "size");
        QCOMPARE(image.devicePixelRatio(), ratio);
        QTEST(QStringList({Hue(image, 4, 4), Hue(image, image.width() - 5, image.height() - 5)}), "corners");
        QCOMPARE(loader->MemoryCacheSize(), image.sizeInBytes());
    }

    void sharedDownload_data()
    {
        QTest::addColumn<QVector<int>>("sides"); // one load per side, square sizes
        QTest::newRow("ten of one size") << QVector<int>(10, 80);
        QTest::newRow("three sizes") << QVector<int>{40, 80, 120, 40, 80};
    }

    void sharedDownload()
    {
        QFETCH(QVector<int>, sides);
        server->SetRoute(p, Ok(Picture(QSize(400, 300)), {}, 100));
        QVector<std::shared_ptr<Answer>> answers;
        for (int side : sides)
            answers << Load(p, QSize(side, side));
        QCOMPARE(loader->PendingDownloads(), 1);
        QTRY_COMPARE(loader->PendingDownloads(), 0);
        for (int i = 0; i < sides.size(); ++i)
            QCOMPARE(QSize(answers[i]->calls, answers[i]->image.width()), QSize(1, sides[i]));
        for (int side : sides) // again: from memory, before Load() returns
            QCOMPARE(Load(p, QSize(side, side))->calls, 1);
        QCOMPARE(server->Hits(p), 1);
    }

    void memoryCache_data()
    {
        QTest::addColumn<double>("pictures"); // the limit, in pictures of 100 x 100
        QTest::addColumn<QString>("order");   // loads, each path once or again
        QTest::addColumn<QString>("kept");    // held in memory afterwards
        QTest::newRow("least recent out") << 2.5 << "/a /b /c" << "/b /c";
        QTest::newRow("a use keeps it") << 2.5 << "/a /b /a /c" << "/a /c";
        QTest::newRow("room for all") << 3.0 << "/a /b /c" << "/a /b /c";
        QTest::newRow("none kept") << 0.0 << "/a /b" << "";
    }

    void memoryCache()
    {
        QFETCH(double, pictures);
        QFETCH(QString, order);
        const QStringList paths = TestSupport::Words("/a /b /c");
        for (const QString& path : paths)
            server->SetRoute(path, Ok(Picture(QSize(100, 100))));
        const qint64 bytes = 100 * 100 * 4;
        loader->SetMemoryCacheLimit(qint64(bytes * pictures));
        for (const QString& path : order.split(QLatin1Char(' '))) {
            const auto answer = Load(path);
            QTRY_COMPARE(answer->calls, 1);
        }
        QStringList kept;
        for (const QString& path : paths) {
            if (server->Hits(path) > 0 && Load(path)->calls == 1)
                kept << path;
        }
        QTEST(kept.join(QLatin1Char(' ')), "kept");
        QCOMPARE(loader->MemoryCacheSize(), kept.size() * bytes);
        loader->ClearMemoryCache();
        QCOMPARE(loader->MemoryCacheSize(), 0);
        QCOMPARE(Load(QStringLiteral("/a"))->calls, 0);
    }

    void diskCache_data()
    {
        QTest::addColumn<Headers>("headers");
        QTest::addColumn<int>("hits");
        QTest::addColumn<QByteArray>("conditional"); // the header of the second request
        const QByteArray date("Wed, 21 Oct 2015 07:28:00 GMT");
        QTest::newRow("fresh") << Headers{{"Cache-Control", "max-age=3600"}} << 1 << QByteArray();
        QTest::newRow("stale, ETag") << Headers{{"Cache-Control", "no-cache"}, {"ETag", "\"v1\""}} << 2
                                     << QByteArray("if-none-match=\"v1\"");
        QTest::newRow("stale, Last-Modified") << Headers{{"Expires", date}, {"Last-Modified", date}} << 2
                                              << "if-modified-since=" + date;
        QTest::newRow("no-store") << Headers{{"Cache-Control", "no-store"}, {"ETag", "\"v1\""}} << 2 << QByteArray();
    }

    void diskCache()
    {
        QFETCH(Headers, headers);
        QFETCH(QByteArray, conditional);
        loader->SetDiskCacheDirectory(folder->path());
        QCOMPARE(loader->GetDiskCacheDirectory(), folder->path());
        server->SetRoute(p, Ok(Picture(QSize(64, 48)), headers));
        const auto first = Load(p);
        QTRY_COMPARE(first->calls, 1);
        loader->ClearMemoryCache();
        const auto again = Load(p);
        QTRY_COMPARE(again->calls, 1);
        QCOMPARE(again->image.size(), QSize(64, 48));
        QTEST(server->Hits(p), "hits");
        QCOMPARE(server->NotModified(), conditional.isEmpty() ? 0 : 1);
        const auto last = server->Requests(p).last();
        QByteArray sent;
        for (const QByteArray name : {"if-none-match", "if-modified-since"}) {
            if (last.contains(name))
                sent += name + '=' + last.value(name);
        }
        QCOMPARE(sent, conditional);
    }

    void failures_data()
    {
        QTest::addColumn<Answers>("answers"); // of /p
        QTest::addColumn<int>("redirects");
        QTest::addColumn<int>("hits");
        QTest::addColumn<QString>("error"); // the start of it; empty: the picture came
        const QByteArray jpeg = Picture(QSize(40, 30));
        HttpAnswer silent = Status(200, -1), cut = Ok(jpeg), closed;
        cut.truncateAt = 100;
        closed.close = true;
        QTest::newRow("500, 503, then ok") << Answers{Status(500), Status(503), Ok(jpeg)} << 5 << 3 << QString();
        QTest::newRow("503 to the end") << Answers{Status(503)} << 5 << 3 << "HTTP 503";
        QTest::newRow("silent, then ok") << Answers{silent, Ok(jpeg)} << 5 << 2 << QString();
        QTest::newRow("silent to the end") << Answers{silent} << 5 << 3 << "no data for 150 ms";
        QTest::newRow("404") << Answers{Status(404)} << 5 << 1 << "HTTP 404";
        QTest::newRow("redirects") << Answers{HttpAnswer::Redirect("/r1")} << 4 << 1 << QString();
        QTest::newRow("relative redirect") << Answers{HttpAnswer::Redirect("r3", 301)} << 2 << 1 << QString();
        QTest::newRow("over the limit") << Answers{HttpAnswer::Redirect("/r1")} << 3 << 1 << "more than 3 redirects";
        QTest::newRow("loop") << Answers{HttpAnswer::Redirect("/loop")} << 5 << 1 << "a redirect loop";
        QTest::newRow("not a picture") << Answers{Ok("<html>hello</html>")} << 5 << 1 << "not a picture";
        QTest::newRow("cut short") << Answers{cut} << 5 << 1 << "";
        // Qt sends a request again itself once when the connection closes before an answer.
        QTest::newRow("closed") << Answers{closed} << 5 << 2 << "";
        // A body that no picture within the pixel limit needs is not kept to the end.
        QTest::newRow("body too large") << Answers{Ok(QByteArray(8 * 1024 * 1024, 'x'))} << 5 << 1
                                        << "the body is larger than 1068576 bytes";
        QTest::newRow("bomb") << Answers{Ok("<svg xmlns='http://www.w3.org/2000/svg' width='100000' height='100000'/>")}
                              << 5 << 1 << "the picture has 100000 x 100000 pixels";
    }

    void failures()
    {
        QFETCH(Answers, answers);
        QFETCH(int, redirects);
        QFETCH(QString, error);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        const bool fails = !error.isEmpty() || tag == QLatin1String("cut short") || tag == QLatin1String("closed");
        server->SetRoute(p, answers);
        server->SetRoute(QStringLiteral("/r1"), HttpAnswer::Redirect("/r2", 307));
        server->SetRoute(QStringLiteral("/r2"), HttpAnswer::Redirect("/r3", 308));
        server->SetRoute(QStringLiteral("/r3"), HttpAnswer::Redirect("/img", 303));
        server->SetRoute(QStringLiteral("/img"), Ok(Picture(QSize(40, 30))));
        server->SetRoute(QStringLiteral("/loop"), HttpAnswer::Redirect("/p"));
        loader->SetMaxRedirects(redirects);
        loader->SetRetryCount(2);
        loader->SetTimeout(150);
        loader->SetMaxPixelCount(5000);
        const LogCapture::Mark mark;
        const auto answer = Load(p);
        QTRY_COMPARE_WITH_TIMEOUT(answer->calls, 1, 20000);
        QCOMPARE(answer->image.isNull(), fails);
        QVERIFY2(answer->error.startsWith(error) && answer->error.isEmpty() != fails, qPrintable(answer->error));
        QTEST(server->Hits(p), "hits");
        QCOMPARE(server->Hits(QStringLiteral("/img")), tag.contains(QLatin1String("redirect")) ? 1 : 0);
        QCOMPARE(mark.Since().size(), fails ? 1 : 0);
        if (fails)
            QVERIFY2(mark.Since().value(0).text.contains(answer->error), qPrintable(mark.Since().value(0).text));
        QCOMPARE(loader->PendingDownloads(), 0);
        QCOMPARE(answer->calls, 1);
        // A picture comes again from memory; of failures only a 4xx answer is given again without asking.
        QCOMPARE(Load(p)->calls, !fails || tag == QLatin1String("404") ? 1 : 0);
    }

    void settings()
    {
        loader.reset(new NetworkImageLoader); // without the short retry delay of init()
        NetworkImageLoader& l = *loader;
        const auto values = [&l] {
            return QVector<qint64>{l.GetMemoryCacheLimit(), l.GetMaxPixelCount(), l.GetMaxRedirects(), l.GetRetryCount(),
                                   l.GetRetryDelay(),       l.GetTimeout(),       l.GetFailureMemory(), l.GetDiskCacheLimit()};
        };
        QCOMPARE(values(), (QVector<qint64>{64 * 1024 * 1024, 64000000, 5, 3, 500, 30000, 60000, 256 * 1024 * 1024}));
        QVERIFY(l.GetDiskCacheDirectory().isEmpty() && !l.NetworkAccessManager()->cache());
        l.SetMemoryCacheLimit(-5), l.SetMaxPixelCount(0), l.SetMaxRedirects(-1), l.SetRetryCount(-1);
        l.SetRetryDelay(-1), l.SetTimeout(0), l.SetFailureMemory(-1), l.SetDiskCacheLimit(-1);
        QCOMPARE(values(), (QVector<qint64>{0, 1, 0, 0, 0, 1, 0, 0}));
        l.SetDiskCacheDirectory(folder->path());
        l.SetDiskCacheLimit(1000000);
        QCOMPARE(qobject_cast<QNetworkDiskCache*>(l.NetworkAccessManager()->cache())->maximumCacheSize(), 1000000);
        l.SetDiskCacheDirectory(QString());
        QVERIFY(!l.NetworkAccessManager()->cache());
    }

    void clientErrorRemembered()
    {
        server->SetRoute(p, Answers{Status(404), Ok(Picture(QSize(40, 30)))});
        loader->SetFailureMemory(300);
        const auto first = Load(p);
        QTRY_COMPARE(first->error, QStringLiteral("HTTP 404"));
        const auto again = Load(p);
        QCOMPARE(again->calls, 1); // at once
        QCOMPARE(again->error, first->error);
        QCOMPARE(server->Hits(p), 1);
        QTest::qWait(400);
        const auto later = Load(p);
        QTRY_COMPARE(later->calls, 1);
        QCOMPARE(later->image.size(), QSize(40, 30));
        QCOMPARE(server->Hits(p), 2);
    }

    void goneMidway_data()
    {
        QTest::addColumn<int>("gone"); // 0: the only receiver, 1: one receiver of two, 2: the loader
        QTest::newRow("the only receiver") << 0;
        QTest::newRow("one receiver of two") << 1;
        QTest::newRow("the loader, of the host's manager") << 2;
    }

    void goneMidway()
    {
        QFETCH(int, gone);
        server->SetRoute(p, Ok(Picture(QSize(40, 30)), {}, 400));
        QNetworkAccessManager manager;
        if (gone == 2)
            loader.reset(new NetworkImageLoader(&manager));
        QCOMPARE(loader->NetworkAccessManager() == &manager, gone == 2);
        std::unique_ptr<QObject> receiver(new QObject);
        const auto lost = Load(p, QSize(50, 50), 1.0, receiver.get());
        const auto kept = gone == 1 ? Load(p) : std::make_shared<Answer>();
        QTRY_COMPARE(server->Hits(p), 1);
        gone == 2 ? loader.reset() : receiver.reset();
        QCOMPARE(loader ? loader->PendingDownloads() : 0, gone == 1 ? 1 : 0);
        QTRY_COMPARE(server->ClosedWhileWaiting() + kept->calls, 1);
        QCOMPARE(server->ClosedWhileWaiting(), gone == 1 ? 0 : 1);
        QCOMPARE(kept->image.size(), gone == 1 ? QSize(40, 30) : QSize(0, 0));
        QTest::qWait(500);
        QCOMPARE(lost->calls, 0);
    }

    void managerGone()
    {
        auto* manager = new QNetworkAccessManager;
        loader.reset(new NetworkImageLoader(manager));
        delete manager;
        for (int attempt = 0; attempt < 2; ++attempt) { // not remembered: the host may give another
            const LogCapture::Mark mark;
            QCOMPARE(Load(p)->error, QStringLiteral("no network access manager"));
            QCOMPARE(mark.Since().size(), 1);
        }
    }

    void badInput_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QString>("logged"); // after "NetworkImageLoader::Load: "
        const QUrl url(QStringLiteral("http://127.0.0.1:1/p"));
        QTest::newRow("no receiver") << url << QSize(9, 9) << 1.0 << "no receiver for " + url.toString();
        QTest::newRow("no callback") << url << QSize(9, 9) << 1.0 << "no callback for " + url.toString();
        QTest::newRow("invalid url") << QUrl(QStringLiteral("http://[::1")) << QSize(9, 9) << 1.0
                                     << "\"\" is not a URL to load";
        QTest::newRow("relative url") << QUrl(QStringLiteral("p.png")) << QSize(9, 9) << 1.0
                                      << "\"p.png\" is not a URL to load";
        QTest::newRow("negative side") << url << QSize(-1, 9) << 1.0 << "size -1x9 at ratio 1 cannot be asked for";
        QTest::newRow("ratio 0") << url << QSize(9, 9) << 0.0 << "size 9x9 at ratio 0 cannot be asked for";
        QTest::newRow("ratio -2") << url << QSize(9, 9) << -2.0 << "size 9x9 at ratio -2 cannot be asked for";
    }

    void badInput()
    {
        QFETCH(QUrl, url);
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        QFETCH(QString, logged);
        const QByteArray tag = QTest::currentDataTag();
        int calls = 0;
        const LogCapture::Mark mark;
        NetworkImageLoader::Callback callback = [&calls](const QImage&, const QString&) { ++calls; };
        loader->Load(url, size, ratio, tag == "no receiver" ? nullptr : &receiver,
                     tag == "no callback" ? NetworkImageLoader::Callback() : callback);
        QCOMPARE(mark.Texts(), QStringList(QStringLiteral("3 NetworkImageLoader::Load: ") + logged)); // a warning
        QCOMPARE(loader->PendingDownloads(), 0);
        QTest::qWait(50);
        QCOMPARE(calls, 0);
    }

    void applicationLoader()
    {
        NetworkImageLoader* instance = NetworkImageLoader::Instance();
        QVERIFY(instance);
        QCOMPARE(NetworkImageLoader::Instance(), instance);
        QCOMPARE(instance->parent(), qApp);
        QCOMPARE(instance->GetDiskCacheDirectory(),
                 cacheHome.path() + QLatin1Char('/') + QCoreApplication::applicationName() + QStringLiteral("/images"));
    }

    void fromARealServer()
    {
        QFile file(folder->filePath(QStringLiteral("picture.jpg")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(Picture(QSize(320, 240))) > 0);
        file.close();
        QProcess python; // tells its port once it listens
        python.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        python.start(QStringLiteral("/usr/bin/python3"),
                     QStringLiteral("-u -m http.server --bind 127.0.0.1 0 --directory").split(QLatin1Char(' ')) << folder->path());
        if (!python.waitForStarted())
            QSKIP("no /usr/bin/python3");
        const QRegularExpression listening(QStringLiteral(" port (\\d+) "));
        QString said;
        QTRY_VERIFY_WITH_TIMEOUT(listening.match(said += QString::fromUtf8(python.readAllStandardOutput())).hasMatch(), 10000);
        const QString port = listening.match(said).captured(1);
        const auto answer = Load(QStringLiteral("http://127.0.0.1:%1/picture.jpg").arg(port), QSize(160, 160));
        QTRY_COMPARE_WITH_TIMEOUT(answer->calls, 1, 10000);
        QCOMPARE(answer->error, QString());
        QCOMPARE(answer->image.size(), QSize(160, 120));
        QCOMPARE(Hue(answer->image, 5, 5), QStringLiteral("red"));
        python.kill();
        python.waitForFinished();
    }
};

QTEST_MAIN(TestNetworkImageLoader)
#include "tst_network_image_loader.moc"
