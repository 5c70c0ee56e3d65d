#include "gallery_pages.h"
#include "local_picture_server.h"

#include <qt_halvo/images/file_preview_widget.h>
#include <qt_halvo/images/network_image_label.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

using OrvantaQT::FilePreviewWidget;
using OrvantaQT::NetworkImageLabel;

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("ImagesPage", text);
}

constexpr int kColumns = 4;

// What a network picture shows while it comes: a small grey landscape, see-through
// elsewhere so that the theme's panel shows, light or dark.
QPixmap Placeholder(const QSize& size)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPoint centre = pixmap.rect().center();
    painter.setBrush(QColor(128, 128, 128, 170));
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(QPolygon({centre + QPoint(-24, 14), centre + QPoint(-8, -6), centre + QPoint(2, 6),
                                  centre + QPoint(10, -2), centre + QPoint(24, 14)}));
    painter.drawEllipse(centre + QPoint(12, -14), 5, 5);
    return pixmap;
}

// The paths of the network pictures: painted ones, one that comes after two seconds, and
// one the server does not have.
QStringList PicturePaths()
{
    return QStringLiteral("/picture/1.jpg /picture/2.jpg /picture/3.jpg /picture/4.jpg /picture/5.jpg "
                          "/picture/6.jpg /slow/7.jpg /missing.jpg")
        .split(QLatin1Char(' '));
}

QWidget* CreateNetworkPictures(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* buttons = new QHBoxLayout;
    auto* start = CreateButton(Translate("Start the local picture server"), "StartServerButton", demo);
    auto* reload = CreateButton(Translate("Load again"), "ReloadButton", demo);
    reload->setEnabled(false);
    buttons->addWidget(start);
    buttons->addWidget(reload);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    auto* status = CreateSecondaryText(Translate("The server is not started: the pictures wait."), demo);
    status->setObjectName(QStringLiteral("ServerStatus"));
    layout->addWidget(status);
    auto* grid = new QGridLayout;
    QVector<NetworkImageLabel*> labels;
    for (int i = 0; i < PicturePaths().size(); ++i) {
        auto* label = new NetworkImageLabel(demo);
        label->setObjectName(QStringLiteral("Picture%1").arg(i));
        label->setFixedSize(144, 108);
        label->SetPlaceholder(Placeholder(label->size()));
        grid->addWidget(label, i / kColumns, i % kColumns);
        labels << label;
    }
    grid->setColumnStretch(kColumns, 1);
    layout->addLayout(grid);

    auto* server = new LocalPictureServer(demo);
    const auto load = [server, labels] {
        const QStringList paths = PicturePaths();
        for (int i = 0; i < labels.size(); ++i) {
            labels[i]->SetUrl(QUrl());
            labels[i]->SetUrl(QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(server->Port()).arg(paths[i])));
        }
    };
    QObject::connect(server, &LocalPictureServer::Answered, status, [server, status](int requests) {
        status->setText(QCoreApplication::translate("ImagesPage", "Serving on port %1: %n request(s) answered.", nullptr, requests)
                            .arg(server->Port()));
    });
    QObject::connect(start, &QPushButton::clicked, demo, [=] {
        if (!server->Start()) {
            status->setText(Translate("The picture server cannot start here."));
            return;
        }
        start->setEnabled(false);
        reload->setEnabled(true);
        status->setText(Translate("Serving on port %1.").arg(server->Port()));
        load();
    });
    // From the memory cache: the server counts no new requests.
    QObject::connect(reload, &QPushButton::clicked, demo, load);
    return demo;
}

// A folder of one file of each kind the provider knows, and some it cannot read.
void WriteSampleFolder(const QDir& folder)
{
    QImage photo(1600, 1200, QImage::Format_RGB32);
    {
        QPainter painter(&photo);
        QLinearGradient sky(0, 0, 0, 1200);
        sky.setColorAt(0, QColor(120, 170, 230));
        sky.setColorAt(1, QColor(250, 210, 160));
        painter.fillRect(photo.rect(), sky);
        painter.setBrush(QColor(60, 90, 70));
        painter.setPen(Qt::NoPen);
        painter.drawPolygon(QPolygon({{0, 1200}, {420, 560}, {760, 900}, {1150, 480}, {1600, 1200}}));
    }
    photo.save(folder.filePath(QStringLiteral("Photo.jpg")), "JPG", 85);
    QImage badge(256, 256, QImage::Format_ARGB32_Premultiplied);
    badge.fill(Qt::transparent);
    {
        QPainter painter(&badge);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QColor(230, 120, 60));
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(badge.rect().adjusted(16, 16, -16, -16));
    }
    badge.save(folder.filePath(QStringLiteral("Bädge ünïcode.png")));
    const auto write = [&folder](const char* name, const QByteArray& bytes) {
        QFile file(folder.filePath(QString::fromUtf8(name)));
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    };
    write("Diagram.svg",
          "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='150' viewBox='0 0 200 150'>"
          "<rect x='10' y='10' width='80' height='60' rx='8' fill='#3d7edb'/>"
          "<rect x='110' y='80' width='80' height='60' rx='8' fill='#e0823d'/>"
          "<path d='M90 40 C130 40 110 110 150 110' stroke='#444' stroke-width='4' fill='none'/></svg>");
    write("Notes.txt",
          "Shopping list\n\n- bread\n- apples\n- coffee beans\n- batteries (AA)\n\nCall the garage about the "
          "tyres before Friday.\nBook the train for the 14th.\n");
    write("Archive.zip", QByteArray("PK\x05\x06", 4) + QByteArray(18, '\0'));
    write("Broken.jpg", "\xff\xd8\xff\xe0 this is not really a picture");
    QPdfWriter pdf(folder.filePath(QStringLiteral("Report.pdf")));
    pdf.setPageSize(QPageSize(QPageSize::A5));
    QPainter painter(&pdf);
    QFont font = painter.font();
    font.setPointSize(22);
    font.setBold(true);
    painter.setFont(font);
    const QRect page = painter.viewport();
    painter.drawText(page.adjusted(0, 0, 0, -page.height() * 4 / 5), Qt::AlignCenter, QStringLiteral("Quarterly report"));
    painter.fillRect(QRect(page.width() / 8, page.height() / 3, page.width() * 3 / 4, page.height() / 3), QColor(61, 126, 219));
}

QWidget* CreatePreviews(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* open = CreateButton(Translate("Show a folder of your own..."), "OpenFolderButton", demo);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(open);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    auto* grid = new QGridLayout;
    layout->addLayout(grid);
    auto* sample = new QTemporaryDir;
    QObject::connect(demo, &QObject::destroyed, [sample] { delete sample; });
    if (sample->isValid())
        WriteSampleFolder(QDir(sample->path()));

    const auto show = [demo, grid](const QDir& folder) {
        while (QLayoutItem* item = grid->takeAt(0)) {
            delete item->widget();
            delete item;
        }
        const QFileInfoList files = folder.entryInfoList(QDir::Files, QDir::Name | QDir::IgnoreCase);
        for (int i = 0; i < files.size() && i < 16; ++i) {
            auto* cell = new QWidget(demo);
            auto* cellLayout = new QVBoxLayout(cell);
            cellLayout->setContentsMargins(0, 0, 0, 0);
            auto* preview = new FilePreviewWidget(cell);
            preview->setObjectName(QStringLiteral("Preview%1").arg(i));
            preview->setFixedSize(128, 128);
            preview->SetPath(files[i].absoluteFilePath());
            auto* name = new QLabel(cell);
            name->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
            name->setFixedWidth(128);
            name->setText(name->fontMetrics().elidedText(files[i].fileName(), Qt::ElideMiddle, 128));
            cellLayout->addWidget(preview, 0, Qt::AlignHCenter);
            cellLayout->addWidget(name);
            grid->addWidget(cell, i / kColumns, i % kColumns);
        }
        grid->setColumnStretch(kColumns, 1);
    };
    show(QDir(sample->path()));
    QObject::connect(open, &QPushButton::clicked, demo, [demo, show] {
        const QString folder = QFileDialog::getExistingDirectory(demo, Translate("Folder to preview"));
        if (!folder.isEmpty())
            show(QDir(folder));
    });
    return demo;
}

} // namespace

QWidget* CreateImagesPage()
{
    ScrollingPage scrolling = CreateScrollingPage("ImagesPage", Translate("Images and previews"));
    QWidget* content = scrolling.content;
    scrolling.layout->addWidget(CreateSection(
        "NetworkSection", Translate("Pictures from the network"),
        Translate("NetworkImageLabel through NetworkImageLoader, from a server the gallery starts on this computer: "
                  "a placeholder while a picture comes, the picture faded in, the error picture for one the server "
                  "does not have. Loading again comes from the memory cache, so the server is not asked."),
        CreateNetworkPictures(content), content));
    scrolling.layout->addWidget(CreateSection(
        "PreviewsSection", Translate("Previews of a folder"),
        Translate("FilePreviewWidget through FilePreviewProvider: pictures, SVG, text and PDF drawn small, the type's "
                  "icon for the rest, kept in the shared thumbnail cache; a ring turns while a preview comes."),
        CreatePreviews(content), content));
    scrolling.layout->addStretch(1);
    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> ImagesPageMoments()
{
    return {
        // Mid-fade: the pictures come at once from the loopback server.
        {QStringLiteral("loading"), [](QWidget* page) { ClickButton(page, "StartServerButton"); }, 120},
        {QStringLiteral("loaded"), nullptr, 900},
        {QStringLiteral("previews"), [](QWidget* page) { ScrollTo(page, "PreviewsSection"); }, 1500},
    };
}
