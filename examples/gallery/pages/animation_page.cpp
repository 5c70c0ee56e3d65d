#include "gallery_pages.h"

#include <qt_halvo/animation/animated_effect.h>
#include <qt_halvo/animation/disappearing_widget.h>
#include <qt_halvo/animation/opacity_animation_controller.h>
#include <qt_halvo/animation/two_state_animator.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPropertyAnimation>
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

// A bar whose width a TwoStateAnimator keeps at one of two values; the button asks for
// the other one, also while the bar is still moving.
QWidget* CreateTwoStateDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    //: Button that switches an animated bar between its short and its long width.
    auto* button = new QPushButton(Translate("Switch"), demo);
    button->setObjectName(QStringLiteral("BarToggle"));
    button->setCheckable(true);
    auto* bar = new QFrame(demo);
    bar->setObjectName(QStringLiteral("AnimatedBar"));
    bar->setFixedHeight(24);
    bar->setMaximumWidth(60);
    bar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layout->addWidget(button);
    // The bar takes the room its animated maximum width allows, the stretch the rest.
    layout->addWidget(bar, 1);
    layout->addStretch(0);

    auto* animation = new QPropertyAnimation(bar, "maximumWidth", bar);
    animation->setDuration(600);
    animation->setEasingCurve(QEasingCurve::OutQuart);
    auto* animator = new OrvantaQT::TwoStateAnimator(animation, 60, 480, bar);
    QObject::connect(button, &QPushButton::toggled, animator, QOverload<bool>::of(&OrvantaQT::TwoStateAnimator::setSecondState));
    return demo;
}

QLabel* CreateSample(const QString& text, QWidget* parent)
{
    auto* sample = new QLabel(text, parent);
    sample->setObjectName(QStringLiteral("AnimationSample"));
    sample->setAlignment(Qt::AlignCenter);
    sample->setMinimumSize(160, 70);
    return sample;
}

// Buttons that fade a panel out and in, and blur another one while its middle stays sharp.
QWidget* CreateEffectsDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);

    //: Sample panel that the fade buttons hide and show.
    QLabel* faded = CreateSample(Translate("Fades"), demo);
    auto* fade = new OrvantaQT::OpacityAnimationController(faded, 400, 0.0, 1.0, 400, demo, false);
    //: Button that fades a panel out, or in again.
    auto* fadeButton = new QPushButton(Translate("Fade out"), demo);
    fadeButton->setObjectName(QStringLiteral("FadeToggle"));
    fadeButton->setCheckable(true);
    QObject::connect(fadeButton, &QPushButton::toggled, demo, [fade, fadeButton](bool out) {
        fadeButton->setText(out ? Translate("Fade in") : Translate("Fade out"));
        if (out)
            fade->HideAnimated();
        else
            fade->ShowAnimated();
    });

    //: Sample panel that the blur button blurs, all but its middle.
    QLabel* blurred = CreateSample(Translate("Blurs"), demo);
    blurred->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    auto* sharp = new QLabel(Translate("Sharp"), blurred);
    sharp->setObjectName(QStringLiteral("AnimationSharp"));
    sharp->setGeometry(55, 40, 50, 22);
    auto* blur = new OrvantaQT::AnimatedBlurEffect(blurred, 400, 0.0, 6.0, demo, 250, false, sharp);
    //: Button that blurs a panel, or takes the blur away again.
    auto* blurButton = new QPushButton(Translate("Blur"), demo);
    blurButton->setObjectName(QStringLiteral("BlurToggle"));
    blurButton->setCheckable(true);
    QObject::connect(blurButton, &QPushButton::toggled, demo, [blur](bool on) {
        if (on)
            blur->PlayForward();
        else
            blur->PlayBackward();
    });

    layout->addWidget(fadeButton);
    layout->addWidget(faded);
    layout->addWidget(blurButton);
    layout->addWidget(blurred);
    layout->addStretch();
    return demo;
}

QWidget* CreateDisappearingDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    auto* disappearing = new OrvantaQT::DisappearingWidget(demo);
    disappearing->setDuration(500);
    disappearing->setInitialyVisible(true);
    auto* inside = new QVBoxLayout(disappearing);
    //: Text inside a widget that fades itself in and out.
    inside->addWidget(CreateSample(Translate("Appears and disappears"), disappearing));
    //: Button that makes a widget fade out, or in again.
    auto* button = new QPushButton(Translate("Disappear"), demo);
    button->setCheckable(true);
    QObject::connect(button, &QPushButton::toggled, disappearing, &OrvantaQT::DisappearingWidget::setDisappeared);
    layout->addWidget(button);
    layout->addWidget(disappearing);
    layout->addStretch();
    return demo;
}

} // namespace

QWidget* CreateAnimationPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("AnimationPage"));
    auto* layout = new QVBoxLayout(page);
    auto* title = new QLabel(Translate("Animation"));
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);

    auto* section = new QLabel(Translate("Two-state animator"));
    section->setObjectName(QStringLiteral("SectionTitle"));
    layout->addWidget(section);
    auto* text = new QLabel(Translate("One property between two values, animated both ways. Switch again while the "
                                      "bar moves: it turns round from where it is."));
    text->setWordWrap(true);
    layout->addWidget(text);
    layout->addWidget(CreateTwoStateDemo(page));

    auto* effects = new QLabel(Translate("Fade and blur"));
    effects->setObjectName(QStringLiteral("SectionTitle"));
    layout->addWidget(effects);
    layout->addWidget(CreateEffectsDemo(page));

    auto* disappearing = new QLabel(Translate("Disappearing widget"));
    disappearing->setObjectName(QStringLiteral("SectionTitle"));
    layout->addWidget(disappearing);
    layout->addWidget(CreateDisappearingDemo(page));
    layout->addStretch();
    return page;
}

QVector<GalleryMoment> AnimationPageMoments()
{
    return {{QStringLiteral("moving"),
             [](QWidget* page) {
                 for (const char* name : {"BarToggle", "FadeToggle", "BlurToggle"})
                     ClickButton(page, name);
             },
             200}};
}
