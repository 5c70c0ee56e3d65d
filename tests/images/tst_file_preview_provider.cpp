#include "test_support.h"

#include "../../qt_halvo/images/preview_makers_p.h"

#include <qt_halvo/images/file_preview_provider.h>

#include <QtGui/QPdfWriter>

#include <memory>

using OrvantaQT::FilePreviewProvider;

namespace {

struct Answer
{
    QImage image;
    QString error;
    int calls = 0;
};

QByteArray Encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 90);
    return bytes;
}

// Left half red, right half blue (or all of one colour): where they land shows how it was drawn.
QByteArray Picture(const QSize& size, const char* format = "png", const QColor& right = Qt::blue,
                   const QColor& left = Qt::red)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(right);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), left);
    return Encoded(image, format);
}

// Qt writes no EXIF: an APP1 segment holding only the orientation goes after the SOI marker.
QByteArray WithOrientation(QByteArray jpeg, quint16 orientation)
{
    QByteArray tiff = QByteArray("MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01", 18);
    tiff += char(orientation >> 8);
    tiff += char(orientation & 0xff);
    tiff += QByteArray(6, '\0');
    const QByteArray payload = QByteArray("Exif\0\0", 6) + tiff;
    jpeg.insert(2, QByteArray("\xff\xe1", 2) + char((payload.size() + 2) >> 8) + char((payload.size() + 2) & 0xff)
                       + payload);
    return jpeg;
}

QByteArray Pdf()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    const QRect page = painter.viewport();
    painter.fillRect(page, Qt::blue);
    painter.fillRect(QRect(page.topLeft(), QSize(page.width() / 2, page.height())), Qt::red);
    return bytes;
}

QString Hue(const QImage& image, const QPointF& at)
{
    const QColor colour = image.pixelColor(qMin(image.width() - 1, int(at.x() * image.width())),
                                           qMin(image.height() - 1, int(at.y() * image.height())));
    if (colour.red() > 200 && colour.green() < 60 && colour.blue() < 60)
        return "red";
    if (colour.blue() > 200 && colour.green() < 60 && colour.red() < 60)
        return "blue";
    if (colour.value() > 240 && colour.saturation() < 20)
        return "white";
    if (colour.value() > 100 && colour.saturation() < 30)
        return "grey";
    return colour.name(QColor::HexArgb);
}

// The colours a quarter in from the top left and from the bottom right.
QString Look(const QImage& image)
{
    return Hue(image, {0.25, 0.25}) + ' ' + Hue(image, {0.75, 0.75});
}

int Ink(const QImage& image, const QRect& area)
{
    int dark = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            dark += qGray(image.pixel(x, y)) < 128;
    return dark;
}

QString ThumbKey(const QString& file, const char* key)
{
    return QImage(file).text(key);
}

// Held workers: the hook blocks previews of files whose name starts with "block" until
// released, and counts them as they start.
struct Gate
{
    QSemaphore entered;
    QSemaphore open;
    Gate()
    {
        OrvantaQT::SetPreviewWorkHook([this](const QString& path) {
            if (!QFileInfo(path).fileName().startsWith("block"))
                return;
            entered.release();
            open.tryAcquire(1, 20000);
        });
    }
    ~Gate() { OrvantaQT::SetPreviewWorkHook(nullptr); }
};

} // namespace

class TestFilePreviewProvider : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_files = 0;

    QString File(const QString& name, const QByteArray& bytes, qint64 mtime = 0)
    {
        const QString path = m_dir.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        file.flush();
        if (mtime)
            file.setFileTime(QDateTime::fromSecsSinceEpoch(mtime), QFileDevice::FileModificationTime);
        return path;
    }

    // A provider with a cache of its own under the test's folder.
    std::unique_ptr<FilePreviewProvider> Provider()
    {
        auto provider = std::make_unique<FilePreviewProvider>();
        provider->SetCacheDirectory(m_dir.filePath(QString("cache%1").arg(++m_files)));
        return provider;
    }

    static Answer Ask(FilePreviewProvider* provider, const QString& path, const QSize& size = QSize(100, 100),
                      qreal ratio = 1.0)
    {
        QObject receiver;
        auto answer = std::make_shared<Answer>();
        provider->RequestPreview(path, size, ratio, &receiver, [answer](const QImage& image, const QString& error) {
            answer->image = image;
            answer->error = error;
            ++answer->calls;
        });
        if (!QTest::qWaitFor([&] { return answer->calls > 0; }, 20000))
            qWarning("no answer for %s", qPrintable(path));
        QCoreApplication::processEvents();
        return *answer;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        qputenv("XDG_CACHE_HOME", m_dir.filePath("xdg").toUtf8());
    }

    void kinds_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<QString>("look");
        QTest::addColumn<QString>("error");
        const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
                               "<rect width='10' height='10' fill='#f00'/><rect x='10' width='10' height='10' "
                               "fill='#00f'/></svg>";
        QTest::newRow("PNG") << "a.png" << Picture({400, 200}) << QSize(100, 100) << 1.0 << QSize(100, 50)
                             << "red blue" << "";
        QTest::newRow("PNG at ratio 2") << "b.png" << Picture({400, 200}) << QSize(100, 100) << 2.0 << QSize(200, 100)
                                        << "red blue" << "";
        QTest::newRow("PNG at ratio 1.5") << "b2.png" << Picture({400, 200}) << QSize(60, 60) << 1.5 << QSize(90, 45)
                                          << "red blue" << "";
        QTest::newRow("small PNG not enlarged") << "c.png" << Picture({40, 20}) << QSize(100, 100) << 1.0
                                                << QSize(40, 20) << "red blue" << "";
        QTest::newRow("tall into a wide box") << "d.png" << Picture({100, 400}) << QSize(300, 100) << 1.0
                                              << QSize(25, 100) << "red blue" << "";
        QTest::newRow("JPEG turned left by EXIF") << "e.jpg" << WithOrientation(Picture({400, 200}, "jpg"), 8)
                                                  << QSize(100, 100) << 1.0 << QSize(50, 100) << "blue red" << "";
        QTest::newRow("JPEG without EXIF") << "f.jpg" << Picture({400, 200}, "jpg") << QSize(100, 100) << 1.0
                                           << QSize(100, 50) << "red blue" << "";
        QTest::newRow("BMP") << "g.bmp" << Picture({64, 64}, "bmp") << QSize(32, 32) << 1.0 << QSize(32, 32)
                             << "red blue" << "";
        QTest::newRow("SVG drawn larger") << "h.svg" << svg << QSize(100, 100) << 1.0 << QSize(100, 50)
                                          << "red blue" << "";
        QTest::newRow("SVG at ratio 2") << "i.svg" << svg << QSize(50, 50) << 2.0 << QSize(100, 50) << "red blue"
                                        << "";
        QTest::newRow("PDF") << "j.pdf" << Pdf() << QSize(100, 100) << 1.0 << QSize(70, 100) << "red blue" << "";
        QTest::newRow("unknown binary") << "k.bin" << QByteArray("\x7f\x01\x00\x02\xff\xfe\x00\x00", 8)
                                        << QSize(48, 48) << 1.0 << QSize(48, 48) << "icon"
                                        << "no preview of application/octet-stream files";
    }
    void kinds()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        QFETCH(QSize, pixels);
        QFETCH(QString, look);
        QFETCH(QString, error);
        if (name.endsWith(".pdf") && !FilePreviewProvider::CanPreviewPdf())
            QSKIP("built without poppler-qt5");
        auto provider = Provider();
        const LogCapture::Mark mark;
        const Answer answer = Ask(provider.get(), File(name, bytes), size, ratio);
        QCOMPARE(answer.calls, 1);
        QCOMPARE(answer.error, error);
        QCOMPARE(answer.image.size(), pixels);
        QCOMPARE(answer.image.devicePixelRatio(), ratio);
        if (look != "icon")
            QCOMPARE(Look(answer.image), look);
        QCOMPARE(mark.Texts(), QStringList());
    }

    void textPage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("lines");
        QTest::addColumn<bool>("inkBelowHalf");
        QTest::newRow("two lines") << "notes.txt" << 2 << false;
        QTest::newRow("a page full") << "long.txt" << 200 << true;
        QTest::newRow("CSV is text") << "table.csv" << 2 << false;
        QTest::newRow("C++ source is text") << "main.cpp" << 200 << true;
    }
    void textPage()
    {
        QFETCH(QString, name);
        QFETCH(int, lines);
        QFETCH(bool, inkBelowHalf);
        QByteArray text;
        for (int i = 0; i < lines; ++i)
            text += "MMMMMMMMMMMMMMMMMMMMMMMMMMMMMM,MMMMMMMMMM\n";
        auto provider = Provider();
        const Answer answer = Ask(provider.get(), File(name, text), QSize(200, 200));
        const QImage& page = answer.image;
        QCOMPARE(answer.error, QString());
        // A portrait page with a thin grey border on white.
        QCOMPARE(page.size(), QSize(150, 200));
        QCOMPARE(Hue(page, {0, 0.5}) + ' ' + Hue(page, {0.5, 0}) + ' ' + Hue(page, {0.5, 0.98}), "grey grey white");
        QVERIFY(Ink(page, QRect(2, 2, 146, 98)) > 100);
        QCOMPARE(Ink(page, QRect(2, 100, 146, 98)) > 100, inkBelowHalf);
    }

    void cacheFile_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QSize>("stored");
        QTest::newRow("normal") << QSize(100, 100) << 1.0 << "normal" << QSize(128, 64);
        QTest::newRow("normal, just") << QSize(128, 20) << 1.0 << "normal" << QSize(128, 64);
        QTest::newRow("large") << QSize(129, 100) << 1.0 << "large" << QSize(256, 128);
        QTest::newRow("x-large for ratio 2") << QSize(150, 150) << 2.0 << "x-large" << QSize(512, 256);
        QTest::newRow("xx-large") << QSize(1000, 100) << 1.0 << "xx-large" << QSize(1024, 512);
        QTest::newRow("larger than any: not kept") << QSize(1025, 1025) << 1.0 << "" << QSize();
    }
    void cacheFile()
    {
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        QFETCH(QString, folder);
        QFETCH(QSize, stored);
        // A name that needs percent-encoding in its URI.
        const QString path = File(QString::fromUtf8("été photo #1.png"), Picture({1200, 600}));
        const QByteArray uri = "file://" + QUrl::toPercentEncoding(path, "/");
        QVERIFY(uri.contains("/%C3%A9t%C3%A9%20photo%20%231.png"));
        const QString name = QCryptographicHash::hash(uri, QCryptographicHash::Md5).toHex() + ".png";
        auto provider = Provider();
        const QString root = provider->GetCacheDirectory();
        QCOMPARE(Ask(provider.get(), path, size, ratio).error, QString());
        const QStringList all = QDir(root).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        if (folder.isEmpty()) {
            QCOMPARE(all, QStringList());
            return;
        }
        QCOMPARE(all, QStringList(folder));
        // Nothing else, no temporary file left behind.
        QCOMPARE(QDir(root + '/' + folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList(name));
        const QString thumbnail = root + '/' + folder + '/' + name;
        QCOMPARE(QImage(thumbnail).size(), stored);
        QCOMPARE(ThumbKey(thumbnail, "Thumb::URI"), QString::fromLatin1(uri));
        QCOMPARE(ThumbKey(thumbnail, "Thumb::MTime"), QString::number(QFileInfo(path).lastModified().toSecsSinceEpoch()));
        QCOMPARE(ThumbKey(thumbnail, "Thumb::Size"), QString::number(QFileInfo(path).size()));
        QCOMPARE(ThumbKey(thumbnail, "Thumb::Mime"), QString("image/png"));
        QVERIFY(ThumbKey(thumbnail, "Software").startsWith("qt_halvo "));
        const auto anyone = QFile::Permissions(0x7077);  // the owner's, the group's and others'
        QCOMPARE(QFile::permissions(thumbnail) & anyone, QFile::ReadOwner | QFile::WriteOwner);
        QCOMPARE(QFile::permissions(root + '/' + folder) & anyone, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(QFile::permissions(root) & anyone, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void cacheFollowsTheFile_data()
    {
        QTest::addColumn<qint64>("later");
        QTest::addColumn<bool>("otherUri");
        QTest::addColumn<QString>("look");
        QTest::newRow("same time: the cached one") << qint64(0) << false << "red red";
        QTest::newRow("newer: made again") << qint64(5) << false << "blue blue";
        QTest::newRow("older: made again") << qint64(-5) << false << "blue blue";
        QTest::newRow("thumbnail of another file: made again") << qint64(0) << true << "blue blue";
    }
    void cacheFollowsTheFile()
    {
        QFETCH(qint64, later);
        QFETCH(bool, otherUri);
        QFETCH(QString, look);
        const qint64 time = 1700000000;
        const QString path = File("swapped.png", Picture({200, 200}, "png", Qt::red), time);
        auto provider = Provider();
        QCOMPARE(Look(Ask(provider.get(), path).image), QString("red red"));
        const QString thumbnail = provider->GetCacheDirectory() + "/normal/"
            + QCryptographicHash::hash(QUrl::fromLocalFile(path).toEncoded(), QCryptographicHash::Md5).toHex() + ".png";
        if (otherUri) {
            QImage other(thumbnail);
            other.setText("Thumb::URI", "file:///elsewhere.png");
            QVERIFY(other.save(thumbnail, "png"));
            QCOMPARE(ThumbKey(thumbnail, "Thumb::MTime"), QString::number(time));
        }
        // Other content: only a thumbnail made again shows it.
        File("swapped.png", Picture({200, 200}, "png", Qt::blue, Qt::blue), time + later);
        const Answer answer = Ask(provider.get(), path);
        QCOMPARE(Look(answer.image), look);
        QCOMPARE(answer.image.size(), QSize(100, 100));
        QCOMPARE(ThumbKey(thumbnail, "Thumb::MTime"), QString::number(time + later));
    }

    void failures_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("recorded");
        QTest::newRow("corrupt PNG") << "bad.png" << QByteArray(300, 'x') << "not a picture Qt can read" << true;
        QTest::newRow("PNG cut short") << "cut.png" << Picture({300, 300}).left(200)
                                       << "the picture cannot be decoded (Unable to read image data)" << true;
        QTest::newRow("corrupt PDF") << "bad.pdf" << QByteArray("%PDF-1.4\nnonsense") << "the PDF cannot be opened"
                                     << true;
        QTest::newRow("unknown kind: no thumbnail at all") << "x.bin" << QByteArray("\x01\x00\x02", 3)
                                                           << "no preview of application/octet-stream files" << false;
    }
    void failures()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, error);
        QFETCH(bool, recorded);
        if (name.endsWith(".pdf") && !FilePreviewProvider::CanPreviewPdf())
            QSKIP("built without poppler-qt5");
        const qint64 time = 1600000000;
        const QString path = File(name, bytes, time);
        auto provider = Provider();
        const QString root = provider->GetCacheDirectory();
        LogCapture::Mark mark;
        Answer answer = Ask(provider.get(), path);
        QCOMPARE(answer.error, error);
        QVERIFY(!answer.image.isNull());
        QCOMPARE(mark.Texts(), recorded ? QStringList("3 FilePreviewProvider: no preview of \"" + path + "\": " + error)
                                        : QStringList());
        QCOMPARE(QDir(root + "/normal").exists(), false);
        const QString mark_ = root + "/fail/qt_halvo-0.1.0/"
            + QCryptographicHash::hash(QUrl::fromLocalFile(path).toEncoded(), QCryptographicHash::Md5).toHex() + ".png";
        QCOMPARE(QFile::exists(mark_), recorded);
        if (!recorded)
            return;
        QCOMPARE(ThumbKey(mark_, "Thumb::URI"), QString(QUrl::fromLocalFile(path).toEncoded()));
        QCOMPARE(ThumbKey(mark_, "Thumb::MTime"), QString::number(time));
        // Not tried again while the file keeps its time, even when it would work now.
        File(name, name.endsWith(".pdf") ? Pdf() : Picture({200, 100}), time);
        mark = LogCapture::Mark();
        answer = Ask(provider.get(), path);
        const QString before = "no preview could be made of this version of the file before";
        QCOMPARE(answer.error, before);
        QCOMPARE(mark.Texts(), QStringList("3 FilePreviewProvider: no preview of \"" + path + "\": " + before));
        File(name, name.endsWith(".pdf") ? Pdf() : Picture({200, 100}), time + 1);
        answer = Ask(provider.get(), path);
        QCOMPARE(answer.error, QString());
        QCOMPARE(Look(answer.image), QString("red blue"));
    }

    void cacheNotWritable()
    {
        // A folder under a regular file cannot be made, whoever runs the test.
        auto provider = Provider();
        provider->SetCacheDirectory(File("plain", "x") + "/thumbnails");
        const LogCapture::Mark mark;
        for (const char* name : {"w1.png", "w2.png", "w3.svg"}) {
            const QByteArray bytes = QByteArray(name).endsWith("svg")
                ? QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4'/>")
                : Picture({80, 40});
            const Answer answer = Ask(provider.get(), File(name, bytes));
            QCOMPARE(answer.error, QString());
            QCOMPARE(answer.image.size(), QSize(100, 50).boundedTo(bytes.size() < 100 ? QSize(100, 50) : QSize(80, 40)));
        }
        QCOMPARE(mark.Texts(), QStringList("3 FilePreviewProvider: thumbnails are not kept: cannot make the folder "
                                           + provider->GetCacheDirectory() + "/normal"));
        // No cache at all: nothing to tell.
        provider->SetCacheDirectory(QString());
        QCOMPARE(Ask(provider.get(), m_dir.filePath("w1.png")).image.size(), QSize(80, 40));
        QCOMPARE(mark.Texts().size(), 1);
    }

    void badInput_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("kind");  // 0 missing, 1 folder, 2 empty, 3 unreadable, 4 touched, 5 removed
        QTest::addColumn<QString>("error");
        const QString changed = "the file changed while it was read";
        QTest::newRow("missing") << "missing.png" << 0 << "the file does not exist";
        QTest::newRow("missing, not ASCII") << QString::fromUtf8("ünïcødé 写真.png") << 0 << "the file does not exist";
        QTest::newRow("folder") << "folder" << 1 << "it is a folder";
        QTest::newRow("empty") << "empty.png" << 2 << "the file is empty";
        QTest::newRow("unreadable") << "secret.png" << 3 << "the file cannot be read";
        QTest::newRow("changed while read") << "block-touched.png" << 4 << changed;
        QTest::newRow("removed while read") << "block-removed.png" << 5 << changed;
        QTest::newRow("text removed while read") << "block-removed.txt" << 5 << changed;
    }
    void badInput()
    {
        QFETCH(QString, name);
        QFETCH(int, kind);
        QFETCH(QString, error);
        QString path = m_dir.filePath(name);
        if (kind == 1)
            QVERIFY(QDir(m_dir.path()).mkpath(name));
        if (kind >= 2)
            path = File(name, kind == 2 ? QByteArray() : Picture({50, 50}), 1500000000);
        if (kind == 3) {
            QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
            if (QFileInfo(path).isReadable())
                QSKIP("the user reads files whatever their permissions");
        }
        std::unique_ptr<Gate> gate;
        if (kind >= 4) {
            gate = std::make_unique<Gate>();
            gate->open.release();
            OrvantaQT::SetPreviewWorkHook([path, kind](const QString&) {
                if (kind == 4) {
                    QFile file(path);
                    file.open(QIODevice::ReadWrite);
                    file.setFileTime(QDateTime::fromSecsSinceEpoch(1500000100), QFileDevice::FileModificationTime);
                } else {
                    QFile::remove(path);
                }
            });
        }
        auto provider = Provider();
        const LogCapture::Mark mark;
        const Answer answer = Ask(provider.get(), path);
        QCOMPARE(answer.calls, 1);
        QCOMPARE(answer.error, error);
        // The icon stands in.
        QVERIFY(!answer.image.isNull());
        QVERIFY(answer.image.width() <= 100 && answer.image.height() <= 100);
        QCOMPARE(mark.Texts(), QStringList("3 FilePreviewProvider: no preview of \"" + path + "\": " + error));
        // Nothing is recorded of a file that is not there or changes.
        QCOMPARE(QDir(provider->GetCacheDirectory()).exists(), false);
    }

    void callerErrors_data()
    {
        QTest::addColumn<bool>("receiver");
        QTest::addColumn<bool>("callback");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<int>("calls");
        QTest::addColumn<QString>("log");
        const QString noSize = "3 FilePreviewProvider: a preview of \"p.png\" asked for at %1 x %2 pixels, ratio %3; "
                               "nothing to draw";
        QTest::newRow("no receiver") << false << true << QSize(10, 10) << 1.0 << 0
                                     << "3 FilePreviewProvider: a preview of \"p.png\" asked for without a receiver; "
                                        "ignored";
        QTest::newRow("no callback") << true << false << QSize(10, 10) << 1.0 << 0
                                     << "3 FilePreviewProvider: a preview of \"p.png\" asked for without a callback; "
                                        "ignored";
        QTest::newRow("empty size") << true << true << QSize(0, 10) << 1.0 << 1 << noSize.arg(0).arg(10).arg(1);
        QTest::newRow("invalid size") << true << true << QSize() << 1.0 << 1 << noSize.arg(-1).arg(-1).arg(1);
        QTest::newRow("ratio 0") << true << true << QSize(10, 10) << 0.0 << 1 << noSize.arg(10).arg(10).arg(0);
        QTest::newRow("negative ratio") << true << true << QSize(10, 10) << -2.0 << 1 << noSize.arg(10).arg(10).arg(-2);
    }
    void callerErrors()
    {
        QFETCH(bool, receiver);
        QFETCH(bool, callback);
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        QFETCH(int, calls);
        QFETCH(QString, log);
        File("p.png", Picture({20, 20}));
        QDir::setCurrent(m_dir.path());
        auto provider = Provider();
        QObject owner;
        auto answer = std::make_shared<Answer>();
        const LogCapture::Mark mark;
        provider->RequestPreview("p.png", size, ratio, receiver ? &owner : nullptr,
                                 callback ? FilePreviewProvider::Callback([answer](const QImage& image, const QString& error) {
                                     answer->image = image;
                                     answer->error = error;
                                     ++answer->calls;
                                 })
                                          : FilePreviewProvider::Callback());
        QCOMPARE(mark.Texts(), QStringList(log));
        // A sound request after it is answered; a dropped one never is.
        Ask(provider.get(), "p.png");
        QCOMPARE(answer->calls, calls);
        QVERIFY(answer->image.isNull());
        QCOMPARE(answer->error, calls ? QString("No size to draw a preview at") : QString());
        QCOMPARE(provider->PendingRequests(), 0);
    }

    void latestFirst_data()
    {
        QTest::addColumn<QString>("gone");
        QTest::addColumn<QString>("order");
        QTest::newRow("latest first") << "" << "block c b a";
        QTest::newRow("receiver gone in the middle") << "b" << "block c a";
        QTest::newRow("first asked gone") << "a" << "block c b";
        QTest::newRow("latest gone") << "c" << "block b a";
    }
    void latestFirst()
    {
        QFETCH(QString, gone);
        QFETCH(QString, order);
        auto provider = Provider();
        provider->SetMaxWorkers(1);
        QStringList answered;
        QMap<QString, QObject*> receivers;
        Gate gate;
        for (const QString name : {"block", "a", "b", "c"}) {
            const QString path = File(name + ".png", Picture({20, 20}));
            receivers[name] = new QObject(this);
            provider->RequestPreview(path, {10, 10}, 1.0, receivers[name],
                                     [&answered, name](const QImage&, const QString&) { answered << name; });
            if (name == "block")
                QVERIFY(gate.entered.tryAcquire(1, 20000));
        }
        QCOMPARE(provider->PendingRequests(), 3);
        if (!gone.isEmpty()) {
            delete receivers.take(gone);
            QCOMPARE(provider->PendingRequests(), 2);
        }
        gate.open.release();
        QTRY_COMPARE(answered.size(), order.count(' ') + 1);
        QCOMPARE(answered.join(' '), order);
        QCOMPARE(provider->PendingRequests(), 0);
        qDeleteAll(receivers);
    }

    void maxWorkers_data()
    {
        QTest::addColumn<int>("workers");
        QTest::addColumn<int>("raiseTo");
        QTest::addColumn<int>("pending");
        QTest::newRow("one") << 1 << 0 << 3;
        QTest::newRow("two") << 2 << 0 << 2;
        QTest::newRow("one raised to three") << 1 << 3 << 1;
        QTest::newRow("zero keeps one") << 0 << 0 << 3;
    }
    void maxWorkers()
    {
        QFETCH(int, workers);
        QFETCH(int, raiseTo);
        QFETCH(int, pending);
        QThreadPool::globalInstance()->setMaxThreadCount(8);
        auto provider = Provider();
        QCOMPARE(provider->GetMaxWorkers(), 4);
        const LogCapture::Mark mark;
        provider->SetMaxWorkers(workers);
        QCOMPARE(mark.Texts(), workers ? QStringList()
                                       : QStringList("3 FilePreviewProvider: 0 workers asked for; at least 1 is kept"));
        QCOMPARE(provider->GetMaxWorkers(), qMax(1, workers));
        Gate gate;
        QObject receiver;
        int answers = 0;
        for (int i = 0; i < 4; ++i)
            provider->RequestPreview(File(QString("block%1.png").arg(i), Picture({20, 20})), {10, 10}, 1.0, &receiver,
                                     [&answers](const QImage&, const QString&) { ++answers; });
        QVERIFY(gate.entered.tryAcquire(qMax(1, workers), 20000));
        if (raiseTo) {
            provider->SetMaxWorkers(raiseTo);
            QVERIFY(gate.entered.tryAcquire(raiseTo - workers, 20000));
        }
        QCOMPARE(provider->PendingRequests(), pending);
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
            provider->RequestPreview(File("gone.png", Picture({20, 20})), {10, 10}, 1.0, &receiver,
                                     [&calls](const QImage&, const QString&) { ++calls; });
        provider.reset();
        QTest::qWait(50);
        QCOMPARE(calls, 0);
    }

    void cacheDirectory_data()
    {
        QTest::addColumn<QByteArray>("xdg");
        QTest::addColumn<QString>("root");
        QTest::newRow("XDG_CACHE_HOME") << QByteArray("/var/tmp/c") << "/var/tmp/c/thumbnails";
        QTest::newRow("unset") << QByteArray() << QDir::homePath() + "/.cache/thumbnails";
        QTest::newRow("relative is ignored") << QByteArray("rel/c") << QDir::homePath() + "/.cache/thumbnails";
    }
    void cacheDirectory()
    {
        QFETCH(QByteArray, xdg);
        QFETCH(QString, root);
        const QByteArray saved = qgetenv("XDG_CACHE_HOME");
        qputenv("XDG_CACHE_HOME", xdg);
        FilePreviewProvider provider;
        QCOMPARE(provider.GetCacheDirectory(), root);
        provider.SetCacheDirectory("/x");
        QCOMPARE(provider.GetCacheDirectory(), QString("/x"));
        provider.SetCacheDirectory(QString());
        QCOMPARE(provider.GetCacheDirectory(), QString());
        qputenv("XDG_CACHE_HOME", saved);
        QVERIFY(FilePreviewProvider::Instance());
        QCOMPARE(FilePreviewProvider::Instance(), FilePreviewProvider::Instance());
    }
};

QTEST_MAIN(TestFilePreviewProvider)
#include "tst_file_preview_provider.moc"
