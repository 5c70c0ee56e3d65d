#include "gallery_pages.h"

#include <qt_halvo/animation/card_widget.h>

#include <QtCore/QCoreApplication>
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

QLabel* CreateSectionTitle(const QString& text, QWidget* parent)
{
    auto* title = new QLabel(text, parent);
    title->setObjectName(QStringLiteral("SectionTitle"));
    return title;
}

// One face of the card: a heading, a line of text and a button that turns the card.
QFrame* CreateFace(const char* objectName, const QString& heading, const QString& text, QPushButton* button)
{
    auto* face = new QFrame;
    face->setObjectName(QLatin1String(objectName));
    auto* layout = new QVBoxLayout(face);
    auto* title = new QLabel(heading, face);
    title->setObjectName(QStringLiteral("CardHeading"));
    auto* body = new QLabel(text, face);
    body->setWordWrap(true);
    layout->addWidget(title);
    layout->addWidget(body, 1);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(button);
    layout->addLayout(row);
    return face;
}

QWidget* CreateCardDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* card = new OrvantaQT::CardWidget(demo);
    card->setFixedSize(380, 190);

    //: Button on the front of a sample card; turns it to show the details.
    auto* details = new QPushButton(Translate("Details"));
    details->setObjectName(QStringLiteral("CardDetails"));
    //: Button on the back of a sample card; turns it to the front again.
    auto* back = new QPushButton(Translate("Back"));
    back->setObjectName(QStringLiteral("CardBack"));
    //: Heading of the front of a sample card.
    card->addWidget(CreateFace("CardFront", Translate("Weekly report"),
                               //: Text on the front of a sample card.
                               Translate("128 tasks done, 12 open. Turn the card for the details."), details));
    //: Heading of the back of a sample card.
    card->addWidget(CreateFace("CardBackFace", Translate("Details"),
                               //: Text on the back of a sample card.
                               Translate("Design 41, build 53, review 34. The back slides up over the blurred "
                                         "front; turning back undoes it."),
                               back));
    QObject::connect(details, &QPushButton::clicked, card, &OrvantaQT::CardWidget::collapse);
    QObject::connect(back, &QPushButton::clicked, card, &OrvantaQT::CardWidget::expand);

    layout->addWidget(card, 0, Qt::AlignTop);
    layout->addStretch();
    return demo;
}

void Click(QWidget* page, const char* buttonName)
{
    if (auto* button = page->findChild<QPushButton*>(QLatin1String(buttonName)))
        button->click();
}

} // namespace

QWidget* CreateTransitionsPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("TransitionsPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the card and the page transitions.
    auto* title = new QLabel(Translate("Page transitions"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);

    //: Section title on the gallery's page transitions page.
    layout->addWidget(CreateSectionTitle(Translate("Card"), page));
    layout->addWidget(CreateCardDemo(page));
    layout->addStretch();
    return page;
}

QVector<GalleryMoment> TransitionsPageMoments()
{
    return {
        {QStringLiteral("card_blurring"), [](QWidget* page) { Click(page, "CardDetails"); }, 120},
        {QStringLiteral("card_covering"), nullptr, 280},
        {QStringLiteral("card_closed"), nullptr, 500},
    };
}
