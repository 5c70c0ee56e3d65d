#include <qt_halvo/images/network_image_label.h>
#include <qt_halvo/images/network_image_loader.h>

#include "http_test_server.h"
#include "test_support.h"

using OrvantaQT::NetworkImageLabel;
using OrvantaQT::NetworkImageLoader;
using TestSupport::HttpAnswer;
using TestSupport::Words;

namespace {

QPixmap Filled(const QColor& colour, const QSize& size = QSize(100, 100))
{
    QPixmap pixmap(size);
    pixmap.fill(colour);
    return pixmap;
}

HttpAnswer Png(const QSize& size, const QColor& colour, int delay = 0)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    Filled(colour, size).save(&buffer, "PNG");
    return HttpAnswer(200, bytes, {}, delay);
}

// States by name as the label announces them.
struct StateLog : QStringList
{
    explicit StateLog(NetworkImageLabel* label)
    {
        QObject::connect(label, &NetworkImageLabel::StateChanged, label, [this](NetworkImageLabel::State state) {
            append(QString::fromLatin1(QMetaEnum::fromType<NetworkImageLabel::State>().valueToKey(int(state))));
        });
    }
};

} // namespace

class TestNetworkImageLabel : public QObject
{
    Q_OBJECT

    QTemporaryDir cacheHome;
    std::unique_ptr<TestSupport::HttpTestServer> server;
    std::unique_ptr<NetworkImageLoader> loader;
    std::unique_ptr<NetworkImageLabel> label;

    QString Colour(int x = 50, int y = 50) { return TestSupport::Render(label.get()).pixelColor(x, y).name(); }

private Q_SLOTS:
    // Should the application's loader come to be made, its disk cache stays out of ~/.cache.
    void initTestCase() { qputenv("XDG_CACHE_HOME", cacheHome.path().toUtf8()); }

    void init()
    {
        server.reset(new TestSupport::HttpTestServer);
        server->SetRoute(QStringLiteral("/blue"), Png(QSize(400, 300), Qt::blue));
        server->SetRoute(QStringLiteral("/slow"), Png(QSize(400, 300), Qt::blue, 300));
        server->SetRoute(QStringLiteral("/green"), Png(QSize(40, 40), Qt::green));
        loader.reset(new NetworkImageLoader);
        label.reset(new NetworkImageLabel);
        label->SetLoader(loader.get());
        label->resize(100, 100);
        label->SetPlaceholder(Filled(Qt::red));
    }

    void cleanup() { label.reset(), loader.reset(), server.reset(); }

    void states_data()
    {
        QTest::addColumn<QString>("url"); // a path of the server, or a URL when it has a scheme
        QTest::addColumn<QStringList>("states");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("logged");
        QTest::addColumn<QSize>("hint"); // the picture's size when shown, else the placeholder's
        const QSize none(0, 0), placeholder(100, 100);
        QTest::newRow("picture") << "/blue" << Words("Loading Shown") << "" << QSize(100, 75) << 0 << QSize(100, 75);
        QTest::newRow("404") << "/none" << Words("Loading Failed") << "HTTP 404" << none << 1 << placeholder;
        QTest::newRow("invalid") << "http://[::1" << Words("Failed") << "Not a valid address" << none << 1 << placeholder;
        QTest::newRow("empty") << "" << QStringList() << "" << none << 0 << placeholder;
    }

    void states()
    {
        QFETCH(QString, url);
        const QUrl address = url.startsWith(QLatin1Char('/')) ? server->Url(url) : QUrl(url);
        StateLog states(label.get());
        QSignalSpy urls(label.get(), &NetworkImageLabel::UrlChanged);
        const LogCapture::Mark mark;
        label->SetUrl(address);
        QTRY_COMPARE(states, [] { QFETCH(QStringList, states); return states; }());
        QCOMPARE(label->GetUrl(), address);
        QCOMPARE(urls.count(), url.isEmpty() ? 0 : 1);
        QTEST(label->ErrorString(), "error");
        QTEST(label->Image().size(), "size");
        QTEST(mark.Since().size(), "logged");
        QTEST(label->sizeHint(), "hint");
        QCOMPARE(label->GetLoader(), loader.get());
        QCOMPARE(loader->MemoryCacheSize(), label->Image().sizeInBytes()); // through the label's own loader
        label->SetUrl(address); // again: nothing changes
        QCOMPARE(urls.count(), url.isEmpty() ? 0 : 1);
        QTest::qWait(50);
        QTEST(QStringList(states), "states");
    }

    void errorPicture()
    {
        server->SetRoute(QStringLiteral("/none"), HttpAnswer(404, "no", {}, 300));
        QVERIFY(TestSupport::ShowAndWait(label.get()));
        label->SetUrl(server->Url(QStringLiteral("/none")));
        QTest::qWait(100); // painted while loading
        QVERIFY(TestSupport::Repaints(label.get(), [] {})); // again when the answer comes
        QCOMPARE(label->GetState(), NetworkImageLabel::State::Failed);
        const QString drawn = Colour();
        QVERIFY(drawn != QStringLiteral("#000000") && drawn != QStringLiteral("#ff0000")); // the style's icon
        label->SetErrorPixmap(Filled(Qt::yellow));
        QCOMPARE(Colour(), QStringLiteral("#ffff00"));
        label->SetUrl(QUrl());
        QCOMPARE(label->GetState(), NetworkImageLabel::State::Empty);
        QCOMPARE(label->ErrorString(), QString());
        QCOMPARE(Colour(), QStringLiteral("#000000")); // nothing over the black background
        label->SetPlaceholder(QPixmap());
        QCOMPARE(label->sizeHint(), QSize(64, 64));
    }

    void fade_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<bool>("still");
        QTest::addColumn<bool>("fades");
        QTest::newRow("250 ms") << 250 << false << true;
        QTest::newRow("0 ms") << 0 << false << false;
        QTest::newRow("without animations") << 250 << true << false;
    }

    void fade()
    {
        QFETCH(int, duration);
        QFETCH(bool, still);
        QFETCH(bool, fades);
        TestSupport::StillStyle style;
        if (still)
            label->setStyle(&style);
        label->SetFadeDuration(duration);
        QVERIFY(TestSupport::ShowAndWait(label.get()));
        QVERIFY(TestSupport::Repaints(label.get(), [this] { label->SetUrl(server->Url(QStringLiteral("/slow"))); }));
        QCOMPARE(label->GetState(), NetworkImageLabel::State::Loading);
        QCOMPARE(Colour(), QStringLiteral("#ff0000"));
        QTRY_COMPARE(label->GetState(), NetworkImageLabel::State::Shown);
        auto* animation = label->findChild<QVariantAnimation*>(QStringLiteral("Fade"));
        QVERIFY(animation);
        QCOMPARE(animation->state() == QAbstractAnimation::Running, fades);
        if (fades) {
            animation->pause();
            animation->setCurrentTime(duration / 2);
            const QColor mixed(Colour());
            QVERIFY2(qAbs(mixed.red() - 128) < 8 && qAbs(mixed.blue() - 128) < 8, qPrintable(mixed.name()));
            animation->setCurrentTime(duration);
        }
        QCOMPARE(Colour(), QStringLiteral("#0000ff"));
        QCOMPARE(Colour(50, 10), QStringLiteral("#000000")); // above 100 x 75
    }

    void askedAgainAfterResizing()
    {
        StateLog states(label.get());
        QVERIFY(TestSupport::ShowAndWait(label.get())); // hidden widgets get no resize events
        label->SetUrl(server->Url(QStringLiteral("/blue")));
        QTRY_COMPARE(label->Image().size(), QSize(100, 75));
        for (int side = 110; side <= 200; side += 10)
            label->resize(side, side);
        QTRY_COMPARE(label->Image().size(), QSize(200, 150));
        QTest::qWait(200);
        QCOMPARE(server->Hits(QStringLiteral("/blue")), 2); // once for the burst of resizes
        QCOMPARE(states, Words("Loading Shown"));
        label->resize(100, 100);
        QTRY_COMPARE(label->Image().size(), QSize(100, 75));
        QCOMPARE(server->Hits(QStringLiteral("/blue")), 2); // from memory
    }

    void lateAnswerIgnored_data()
    {
        QTest::addColumn<QString>("next"); // a path of the server, or a URL
        QTest::addColumn<NetworkImageLabel::State>("state");
        QTest::addColumn<QString>("colour"); // of the picture shown, if any
        QTest::newRow("another picture") << "/green" << NetworkImageLabel::State::Shown << "#00ff00";
        QTest::newRow("no picture") << "" << NetworkImageLabel::State::Empty << "";
        QTest::newRow("an invalid URL") << "http://[::1" << NetworkImageLabel::State::Failed << "";
    }

    void lateAnswerIgnored()
    {
        QFETCH(QString, next);
        label->SetUrl(server->Url(QStringLiteral("/slow")));
        QTRY_COMPARE(server->Hits(QStringLiteral("/slow")), 1);
        label->SetUrl(next.startsWith(QLatin1Char('/')) ? server->Url(next) : QUrl(next));
        QTRY_COMPARE(server->ClosedWhileWaiting(), 1); // nobody waits for /slow any more
        QTest::qWait(400);
        QTEST(label->GetState(), "state");
        QTEST(label->Image().isNull() ? QString() : label->Image().pixelColor(5, 5).name(), "colour");
        QCOMPARE(loader->PendingDownloads(), 0);
    }

    void otherLoader()
    {
        NetworkImageLoader other;
        label->SetUrl(server->Url(QStringLiteral("/slow")));
        QTRY_COMPARE(server->Hits(QStringLiteral("/slow")), 1);
        label->SetLoader(&other);
        QCOMPARE(label->GetLoader(), &other);
        QCOMPARE(loader->PendingDownloads(), 0);
        QCOMPARE(other.PendingDownloads(), 1);
        QTRY_COMPARE(label->GetState(), NetworkImageLabel::State::Shown);
        QCOMPARE(other.MemoryCacheSize(), label->Image().sizeInBytes());
        label->SetLoader(nullptr); // the application's, from now on
        QCOMPARE(label->GetLoader(), NetworkImageLoader::Instance());
    }
};

QTEST_MAIN(TestNetworkImageLabel)
#include "tst_network_image_label.moc"
