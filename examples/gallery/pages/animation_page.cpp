#include "gallery_pages.h"

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
    layout->addStretch();
    return page;
}
