#include "gallery_pages.h"

#include <qt_halvo/layouts/lightbox_controller.h>
#include <qt_halvo/layouts/overlay_hover_controller.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QHoverEvent>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

// A picture that shows a caption over itself, and blurs, while the mouse is on it.
QWidget* CreateHoverDemo(QWidget* parent)
{
    auto* picture = new QLabel(parent);
    picture->setObjectName(QStringLiteral("HoverPicture"));
    picture->setAttribute(Qt::WA_Hover);
    QPixmap image(220, 120);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, 120);
    sky.setColorAt(0, QColor(60, 120, 200));
    sky.setColorAt(1, QColor(240, 200, 140));
    painter.fillRect(image.rect(), sky);
    painter.setBrush(QColor(40, 80, 60));
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(QPolygon({QPoint(0, 120), QPoint(70, 50), QPoint(130, 120)}));
    painter.drawPolygon(QPolygon({QPoint(90, 120), QPoint(160, 40), QPoint(220, 120)}));
    painter.end();
    picture->setPixmap(image);
    picture->setFixedSize(image.size());
    //: Caption shown over a picture while the mouse hovers it.
    auto* caption = new QLabel(Translate("Mountains at dusk"), parent);
    caption->setObjectName(QStringLiteral("HoverCaption"));
    caption->setAlignment(Qt::AlignCenter);
    new OrvantaQT::OverlayHoverController(picture, picture, caption, nullptr, picture,
                                          OrvantaQT::OverlayHoverController::BlurContainer
                                              | OrvantaQT::OverlayHoverController::FadeOverlay
                                              | OrvantaQT::OverlayHoverController::ShowOverlay);
    return picture;
}

// A small dialog presented over the page behind a shade, the page blurred behind it.
void OpenLightbox(QWidget* page)
{
    auto* dialog = new QFrame(page);
    dialog->setObjectName(QStringLiteral("LightboxDialog"));
    auto* layout = new QVBoxLayout(dialog);
    //: Text of the sample dialog shown in a lightbox.
    layout->addWidget(new QLabel(Translate("A dialog in a lightbox: the page behind it is shaded and blurred."), dialog));
    //: Button that closes the sample lightbox dialog.
    auto* close = new QPushButton(Translate("Close"), dialog);
    close->setObjectName(QStringLiteral("LightboxClose"));
    layout->addWidget(close, 0, Qt::AlignRight);
    dialog->adjustSize();
    auto* shade = new QWidget;
    auto* lightbox = new OrvantaQT::LightboxController(dialog, page, QColor(20, 24, 32, 110), true);
    lightbox->Activate(shade, true, OrvantaQT::LightboxController::Blur);
    QObject::connect(close, &QPushButton::clicked, page, [lightbox, dialog, shade] {
        lightbox->Deactivate();
        dialog->deleteLater();
        shade->deleteLater();
    });
}

} // namespace

QWidget* CreateOverlaysPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("OverlaysPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the overlays.
    auto* title = new QLabel(Translate("Overlays"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);
    //: Section title on the gallery's overlays page.
    layout->addWidget(CreateSectionTitle(Translate("Hover overlay"), page));
    //: Explanation on the gallery's overlays page.
    layout->addWidget(new QLabel(Translate("Hover the picture: it blurs and a caption fades in over it."), page));
    auto* row = new QHBoxLayout;
    row->addWidget(CreateHoverDemo(page));
    row->addStretch();
    layout->addLayout(row);
    //: Section title on the gallery's overlays page.
    layout->addWidget(CreateSectionTitle(Translate("Lightbox"), page));
    //: Button that opens a sample dialog in a lightbox.
    auto* open = new QPushButton(Translate("Open a lightbox"), page);
    open->setObjectName(QStringLiteral("OpenLightbox"));
    QObject::connect(open, &QPushButton::clicked, page, [page] { OpenLightbox(page); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(open);
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addStretch();
    return page;
}

QVector<GalleryMoment> OverlaysPageMoments()
{
    return {{QStringLiteral("hovered"),
             [](QWidget* page) {
                 // As if the mouse came onto the picture.
                 if (auto* picture = page->findChild<QLabel*>(QStringLiteral("HoverPicture"))) {
                     QHoverEvent enter(QEvent::HoverEnter, QPointF(10, 10), QPointF(-1, -1));
                     QCoreApplication::sendEvent(picture, &enter);
                 }
             },
             500},
            {QStringLiteral("lightbox"), [](QWidget* page) { ClickButton(page, "OpenLightbox"); }, 500}};
}
