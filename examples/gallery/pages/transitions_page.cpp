#include "gallery_pages.h"

#include <qt_halvo/animation/animation_label.h>
#include <qt_halvo/animation/card_widget.h>
#include <qt_halvo/animation/custom_stacked_widget.h>
#include <qt_halvo/animation/movie_widget.h>

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

// A sliding stack of three coloured pages with buttons for the previous and next page.
QWidget* CreateStackDemo(Qt::Orientation orientation, const char* name, QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* stack = new OrvantaQT::CustomStackedWidget(demo);
    stack->SetOrientation(orientation);
    stack->SetDuration(450);
    stack->setFixedSize(230, 110);
    for (int i = 1; i <= 3; ++i) {
        //: A numbered sample page in the sliding stack demonstration.
        auto* page = new QLabel(Translate("Page %1").arg(i));
        page->setObjectName(QStringLiteral("StackPage%1").arg(i));
        page->setAlignment(Qt::AlignCenter);
        stack->AddPage(page);
    }
    //: Button that slides a stack of pages to the previous one.
    auto* previous = new QPushButton(Translate("Previous"), demo);
    //: Button that slides a stack of pages to the next one.
    auto* next = new QPushButton(Translate("Next"), demo);
    next->setObjectName(QLatin1String(name));
    QObject::connect(previous, &QPushButton::clicked, stack, &OrvantaQT::CustomStackedWidget::OnShowPrevious);
    QObject::connect(next, &QPushButton::clicked, stack, &OrvantaQT::CustomStackedWidget::OnShowNext);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(previous);
    buttons->addWidget(next);
    buttons->addStretch();
    layout->addWidget(stack);
    layout->addLayout(buttons);
    return demo;
}

// The 16-pixel busy strip the theme gives to movie widgets marked for it, the same strip
// scaled up, and an animated GIF.
QWidget* CreateMovieDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* busy = new OrvantaQT::MovieWidget(demo);
    busy->setProperty("PreloaderAnimation16", true);
    auto* large = new OrvantaQT::MovieWidget(demo);
    large->setProperty("PreloaderAnimation16", true);
    large->setObjectName(QStringLiteral("LargeBusyStrip"));
    auto* gif = new OrvantaQT::AnimationLabel(demo);
    gif->setMoviePath(QStringLiteral(":/media/spinner.gif"));
    //: Caption next to the busy animations and the animated GIF.
    auto* caption = new QLabel(Translate("Busy strip at 16 and 48 pixels, and an animated GIF"), demo);
    layout->addWidget(busy);
    layout->addWidget(large);
    layout->addWidget(gif);
    layout->addWidget(caption);
    layout->addStretch();
    return demo;
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

    //: Section title on the gallery's page transitions page.
    layout->addWidget(CreateSectionTitle(Translate("Sliding stack, sideways and up and down"), page));
    auto* stacks = new QHBoxLayout;
    stacks->addWidget(CreateStackDemo(Qt::Horizontal, "NextSideways", page));
    stacks->addWidget(CreateStackDemo(Qt::Vertical, "NextUpAndDown", page));
    stacks->addStretch();
    layout->addLayout(stacks);

    //: Section title on the gallery's page transitions page.
    layout->addWidget(CreateSectionTitle(Translate("Frame animations"), page));
    layout->addWidget(CreateMovieDemo(page));
    layout->addStretch();
    return page;
}

QVector<GalleryMoment> TransitionsPageMoments()
{
    return {
        {QStringLiteral("card_blurring"),
         [](QWidget* page) {
             ClickButton(page, "CardDetails");
             ClickButton(page, "NextSideways");
             ClickButton(page, "NextUpAndDown");
         },
         120},
        {QStringLiteral("card_covering"), nullptr, 280},
        {QStringLiteral("card_closed"), nullptr, 500},
    };
}
