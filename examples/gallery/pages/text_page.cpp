#include "gallery_pages.h"

#include <qt_halvo/widgets/text/autoresized_text.h>
#include <qt_halvo/widgets/text/expanding_label.h>
#include <qt_halvo/widgets/text/link_label.h>
#include <qt_halvo/widgets/text/linkable_checkbox.h>
#include <qt_halvo/widgets/text/multi_line_label.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

// Three ways of fitting a text into a column whose width a slider sets.
QWidget* CreateSqueezeDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QVBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* slider = new QSlider(Qt::Horizontal, demo);
    slider->setObjectName(QStringLiteral("SqueezeWidth"));
    slider->setRange(60, 420);
    slider->setValue(420);
    slider->setMaximumWidth(420);
    layout->addWidget(slider);

    auto* column = new QFrame(demo);
    column->setObjectName(QStringLiteral("SqueezeColumn"));
    column->setFixedWidth(420);
    auto* form = new QFormLayout(column);
    auto* alternatives = new OrvantaQT::AutoresizedText(column);
    alternatives->setStrings({Translate("Sync"), Translate("Synchronising"), Translate("Synchronising your library"),
                              //: The longest of several phrasings of one message; shorter ones replace it as room runs out.
                              Translate("Synchronising your library with the server")});
    //: A long text that fades out at the right edge when it does not fit.
    auto* fade = new OrvantaQT::AutoresizedText(Translate("Fades out at the edge"), column);
    fade->setFadeElide(true);
    //: A long text shortened with an ellipsis when it does not fit.
    auto* elide = new OrvantaQT::AutoresizedText(Translate("A long message shortened with an ellipsis at the end"), column);
    //: Row label: a text that picks the widest phrasing that fits.
    form->addRow(Translate("Alternatives:"), alternatives);
    //: Row label: a text that fades out.
    form->addRow(Translate("Fade:"), fade);
    //: Row label: a text shortened with an ellipsis.
    form->addRow(Translate("Elide:"), elide);
    QObject::connect(slider, &QSlider::valueChanged, column, &QWidget::setFixedWidth);
    layout->addWidget(column);
    return demo;
}

QWidget* CreateLinksDemo(QWidget* parent)
{
    auto* demo = new QWidget(parent);
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* url = new OrvantaQT::LinkLabel(demo);
    //: A link that opens a web page.
    url->setText(Translate("Open the Qt website"));
    url->SetHref(QStringLiteral("https://www.qt.io"));
    auto* command = new OrvantaQT::LinkLabel(demo);
    //: A link that runs a command of the program.
    command->setText(Translate("Run a command"));
    command->SetCommand(QStringLiteral("gallery:command"));
    auto* path = new OrvantaQT::LinkLabel(demo);
    path->SetPath(QStringLiteral("C:\\Users\\Someone\\Documents\\Reports\\2026\\Quarterly report.pdf"));
    path->setMaximumWidth(220);
    auto* disabled = new OrvantaQT::LinkLabel(demo);
    //: A link shown disabled.
    disabled->setText(Translate("Disabled link"));
    disabled->setEnabled(false);
    for (QWidget* link : {static_cast<QWidget*>(url), static_cast<QWidget*>(command), static_cast<QWidget*>(path),
                          static_cast<QWidget*>(disabled)})
        layout->addWidget(link);
    layout->addStretch();
    return demo;
}

} // namespace

QWidget* CreateTextPage()
{
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("TextPage"));
    auto* layout = new QVBoxLayout(page);
    //: Title of the gallery page with the text widgets.
    auto* title = new QLabel(Translate("Text"), page);
    title->setObjectName(QStringLiteral("PageTitle"));
    layout->addWidget(title);

    //: Section title on the gallery's text page.
    layout->addWidget(CreateSectionTitle(Translate("Auto-resized text"), page));
    layout->addWidget(CreateSqueezeDemo(page));

    //: Section title on the gallery's text page.
    layout->addWidget(CreateSectionTitle(Translate("Expanding label"), page));
    auto* expanding = new OrvantaQT::ExpandingLabel(page);
    expanding->setObjectName(QStringLiteral("GalleryExpanding"));
    expanding->setCollapsedLines(3);
    expanding->setIsCollapsed(true);
    //: A long text that the expanding label cuts to three lines with a "Show more" link.
    expanding->setFullText(Translate("The expanding label shows a long text cut to a few lines, with a link that shows the "
                                     "rest; the whole text then ends with a link that cuts it again. It fixes its own "
                                     "height to what it shows, so the layout around it follows. This paragraph is long "
                                     "enough to need more than three lines at the gallery's width."));
    layout->addWidget(expanding);

    //: Section title on the gallery's text page.
    layout->addWidget(CreateSectionTitle(Translate("Multi-line labels at line heights 1 and 2"), page));
    auto* lines = new QHBoxLayout;
    // Qt reads the unitless line height as a multiple of the font's.
    for (const int height : {1, 2}) {
        //: Three short lines of a multi-line label.
        auto* label = new OrvantaQT::MultiLineLabel(Translate("First line\nSecond line\nThird line"), page);
        label->setLineHeight(height);
        lines->addWidget(label);
    }
    lines->addStretch();
    layout->addLayout(lines);

    //: Section title on the gallery's text page.
    layout->addWidget(CreateSectionTitle(Translate("Links"), page));
    layout->addWidget(CreateLinksDemo(page));
    auto* check = new OrvantaQT::LinkableCheckbox(page);
    //: Caption of a check box with a link in it; the link does not toggle the box.
    check->setText(Translate("I have read the <a href=\"terms\">terms of use</a>"));
    layout->addWidget(check);
    layout->addStretch();
    return page;
}

QVector<GalleryMoment> TextPageMoments()
{
    const auto squeezeTo = [](int width) {
        return [width](QWidget* page) {
            if (auto* slider = page->findChild<QSlider*>(QStringLiteral("SqueezeWidth")))
                slider->setValue(width);
        };
    };
    return {{QStringLiteral("narrower"), squeezeTo(260), 100},
            {QStringLiteral("narrowest"), squeezeTo(140), 100}};
}
