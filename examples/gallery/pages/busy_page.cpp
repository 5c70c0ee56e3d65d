#include "gallery_pages.h"

#include <qt_halvo/animation/busy_indicator_ring.h>
#include <qt_halvo/animation/progress_bar_animator.h>
#include <qt_halvo/animation/tile_animation_widget.h>
#include <qt_halvo/layouts/curtain_semi_transparent_widget.h>
#include <qt_halvo/layouts/curtain_widget.h>
#include <qt_halvo/layouts/info_overlay_widget.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("Gallery", text);
}

// Frames of the tile sheets, in pixels of the 1x sheet.
constexpr int kTile = 56;
constexpr int kSheetRows = 4;
constexpr int kSheetColumns = 4;
constexpr int kFrames = 14;

// The size the demonstration containers share, so that the sections line up.
constexpr QSize kContainerSize(420, 240);




// A container on the left and its buttons in a column on the right.
QWidget* CreateDemoRow(QWidget* container, const QVector<QPushButton*>& buttons)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    container->setParent(row);
    layout->addWidget(container, 0, Qt::AlignTop);
    auto* column = new QVBoxLayout;
    for (QPushButton* button : buttons) {
        button->setParent(row);
        column->addWidget(button);
    }
    column->addStretch();
    layout->addLayout(column);
    layout->addStretch();
    return row;
}

// Frame `index` of the looping sheet: a rounded square a quarter turn round, its colour
// once round the hue circle, so that the last frame leads back into the first.
void PaintTurningSquare(QPainter& painter, int index)
{
    const qreal turn = 90.0 * index / kFrames;
    painter.save();
    painter.translate(kTile / 2.0, kTile / 2.0);
    painter.rotate(turn);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsv(360 * index / kFrames, 150, 215));
    painter.drawRoundedRect(QRectF(-17, -17, 34, 34), 7, 7);
    painter.setBrush(QColor(255, 255, 255, 200));
    painter.drawEllipse(QPointF(0, 0), 6, 6);
    painter.restore();
}

// Frame `index` of the one-shot sheet: a disc filling clockwise, ticked on the last frame.
void PaintFillingDisc(QPainter& painter, int index)
{
    const QRectF disc(6, 6, kTile - 12, kTile - 12);
    const QColor green(47, 163, 122);
    painter.setPen(QPen(green, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(disc);
    painter.setPen(Qt::NoPen);
    painter.setBrush(green);
    const int span = -360 * 16 * (index + 1) / kFrames;
    painter.drawPie(disc.adjusted(4, 4, -4, -4), 90 * 16, span);
    if (index == kFrames - 1) {
        QPainterPath tick;
        tick.moveTo(18, 29);
        tick.lineTo(25, 36);
        tick.lineTo(39, 21);
        painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(tick);
    }
}

// A 4 x 4 sheet whose first 14 tiles are frames, drawn at `scale` times kTile pixels a tile.
QPixmap CreateSheet(void (*paintFrame)(QPainter&, int), int scale)
{
    QPixmap sheet(kSheetColumns * kTile * scale, kSheetRows * kTile * scale);
    sheet.fill(Qt::transparent);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    for (int i = 0; i < kFrames; ++i) {
        painter.save();
        painter.translate(i % kSheetColumns * kTile, i / kSheetColumns * kTile);
        paintFrame(painter, i);
        painter.restore();
    }
    return sheet;
}

OrvantaQT::TileAnimationWidget* CreateTileAnimation(void (*paintFrame)(QPainter&, int), QWidget* parent)
{
    auto* animation = new OrvantaQT::TileAnimationWidget(parent);
    animation->SetGrid(kSheetRows, kSheetColumns, kFrames);
    animation->SetSheet(CreateSheet(paintFrame, 1));
    animation->SetSheetHiDpi(CreateSheet(paintFrame, 2));
    animation->SetPeriod(70);
    return animation;
}

// Rings of four sizes; their colours come from the theme by object name.
QWidget* CreateRingsDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(18);
    struct Ring
    {
        const char* name;
        int side;
        int thickness;
        int period;
    };
    const Ring rings[] = {
        {"AccentRing", 16, 0, 1000},
        {"MutedRing", 24, 3, 1000},
        {"GreenRing", 40, 5, 1400},
        {"OrangeRing", 64, 0, 800},
    };
    QVector<OrvantaQT::BusyIndicatorRing*> all;
    for (const Ring& ring : rings) {
        auto* widget = new OrvantaQT::BusyIndicatorRing(demo);
        widget->setObjectName(QLatin1String(ring.name));
        widget->setFixedSize(ring.side, ring.side);
        widget->SetThickness(ring.thickness);
        widget->SetPeriod(ring.period);
        layout->addWidget(widget, 0, Qt::AlignVCenter);
        all.append(widget);
    }
    //: Button that stops the sample busy rings, or starts them again.
    auto* toggle = CreateButton(Translate("Stop"), "RingsToggle", demo, true);
    QObject::connect(toggle, &QPushButton::toggled, demo, [toggle, all](bool stopped) {
        //: Button that starts the stopped sample busy rings again.
        toggle->setText(stopped ? Translate("Start") : Translate("Stop"));
        for (OrvantaQT::BusyIndicatorRing* ring : all)
            ring->SetRunning(!stopped);
    });
    layout->addSpacing(12);
    layout->addWidget(toggle, 0, Qt::AlignVCenter);
    layout->addStretch();
    return demo;
}

// The looping sheet itself at half size, the loop, and a one-shot run with its frame count.
QWidget* CreateTilesDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* sheet = new QLabel(demo);
    sheet->setObjectName(QStringLiteral("TileSheet"));
    const QPixmap picture = CreateSheet(PaintTurningSquare, 1);
    sheet->setPixmap(picture.scaled(picture.size() / 2, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    auto* sheetColumn = new QVBoxLayout;
    sheetColumn->addWidget(sheet, 0, Qt::AlignHCenter);
    //: Caption under the picture of a sheet of animation frames.
    auto* sheetCaption = new QLabel(Translate("The sheet: 14 frames\nin 4 × 4 tiles"), demo);
    sheetCaption->setAlignment(Qt::AlignCenter);
    sheetColumn->addWidget(sheetCaption, 0, Qt::AlignHCenter);
    sheetColumn->addStretch();
    layout->addLayout(sheetColumn);

    auto* loop = CreateTileAnimation(PaintTurningSquare, demo);
    loop->setObjectName(QStringLiteral("LoopingTiles"));
    layout->addSpacing(18);
    auto* loopColumn = new QVBoxLayout;
    loopColumn->addWidget(loop, 0, Qt::AlignHCenter);
    //: Caption under a tile animation that plays over and over.
    loopColumn->addWidget(new QLabel(Translate("Looping"), demo), 0, Qt::AlignHCenter);
    loopColumn->addStretch();
    layout->addLayout(loopColumn);

    auto* once = CreateTileAnimation(PaintFillingDisc, demo);
    once->setObjectName(QStringLiteral("OneShotTiles"));
    once->SetLooping(false);
    once->SetPeriod(90);
    //: Shows which frame a tile animation is on; %1 is the frame, %2 the number of frames.
    auto* status = new QLabel(Translate("Frame %1 of %2").arg(1).arg(kFrames), demo);
    status->setObjectName(QStringLiteral("SecondaryText"));
    QObject::connect(once, &OrvantaQT::TileAnimationWidget::FrameChanged, status, [status](int index) {
        status->setText(Translate("Frame %1 of %2").arg(index + 1).arg(kFrames));
    });
    QObject::connect(once, &OrvantaQT::TileAnimationWidget::Finished, status, [status] {
        //: Shown when a tile animation that plays once has stopped on its last frame.
        status->setText(Translate("Finished on frame %1").arg(kFrames));
    });
    //: Button that plays a one-shot tile animation again from its first frame.
    auto* restart = CreateButton(Translate("Restart"), "TileRestart", demo);
    QObject::connect(restart, &QPushButton::clicked, once, [once, status] {
        status->setText(Translate("Frame %1 of %2").arg(1).arg(kFrames));
        once->Restart();
    });
    layout->addSpacing(18);
    auto* onceColumn = new QVBoxLayout;
    onceColumn->addWidget(once, 0, Qt::AlignHCenter);
    //: Caption under a tile animation that plays once and stops on its last frame.
    onceColumn->addWidget(new QLabel(Translate("Once"), demo), 0, Qt::AlignHCenter);
    onceColumn->addStretch();
    layout->addLayout(onceColumn);

    layout->addSpacing(18);
    auto* controls = new QVBoxLayout;
    controls->addWidget(status);
    controls->addWidget(restart, 0, Qt::AlignLeft);
    controls->addStretch();
    layout->addLayout(controls);
    layout->addStretch();
    return demo;
}

QWidget* CreateProgressDemo()
{
    auto* demo = new QWidget;
    auto* layout = new QHBoxLayout(demo);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QProgressBar(demo);
    bar->setObjectName(QStringLiteral("AnimatedProgress"));
    bar->setRange(0, 100);
    bar->setValue(25);
    bar->setFixedWidth(kContainerSize.width());
    auto* animator = new OrvantaQT::ProgressBarAnimator(bar);
    animator->SetDuration(600);

    //: Button that moves a progress bar a quarter further.
    auto* more = CreateButton(Translate("+25 %"), "ProgressPlus", demo);
    //: Button that moves a progress bar a quarter back.
    auto* less = CreateButton(Translate("−25 %"), "ProgressMinus", demo);
    //: Button that switches a progress bar to its busy sweep, or back to its value.
    auto* busy = CreateButton(Translate("Busy"), "ProgressBusy", demo, true);
    // The steps stop at the ends of the range rather than ask for a value outside it.
    QObject::connect(more, &QPushButton::clicked, animator,
                     [animator] { animator->SetValue(qMin(animator->GetValue() + 25, 100)); });
    QObject::connect(less, &QPushButton::clicked, animator,
                     [animator] { animator->SetValue(qMax(animator->GetValue() - 25, 0)); });
    QObject::connect(busy, &QPushButton::toggled, animator, &OrvantaQT::ProgressBarAnimator::SetBusy);
    layout->addWidget(bar);
    layout->addWidget(more);
    layout->addWidget(less);
    layout->addWidget(busy);
    layout->addStretch();
    return demo;
}

// What a curtain shows: a heading, a line of text and a button that sends the curtain away.
QWidget* CreateCurtainForm(const QString& heading, const QString& text, QPushButton* close)
{
    auto* form = new QWidget;
    auto* layout = new QVBoxLayout(form);
    layout->setContentsMargins(24, 20, 24, 20);
    auto* title = new QLabel(heading, form);
    title->setObjectName(QStringLiteral("CurtainHeading"));
    layout->addStretch();
    layout->addWidget(title, 0, Qt::AlignHCenter);
    auto* body = CreateText(text, form);
    body->setAlignment(Qt::AlignCenter);
    layout->addWidget(body);
    close->setParent(form);
    layout->addWidget(close, 0, Qt::AlignHCenter);
    layout->addStretch();
    return form;
}

// Something for a curtain to cover.
QListWidget* CreateMailList(QWidget* parent)
{
    auto* list = new QListWidget(parent);
    list->setObjectName(QStringLiteral("BusyList"));
    list->setFixedSize(kContainerSize);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    //: Sample messages in a list that a curtain slides over.
    list->addItems({Translate("Invoice 2024-117 from Halvo Print"), Translate("Re: team lunch on Friday"),
                    Translate("Your parcel is on its way"), Translate("Minutes of the design review"),
                    Translate("Weekly report: 128 tasks done"), Translate("Welcome to the beta")});
    return list;
}

QWidget* CreateCurtainDemo(Qt::Edge edge)
{
    const bool top = edge == Qt::TopEdge;
    QListWidget* list = CreateMailList(nullptr);
    auto* curtain = new OrvantaQT::CurtainWidget(list);
    curtain->setObjectName(QLatin1String(top ? "TopCurtain" : "BottomCurtain"));
    curtain->SetEdge(edge);

    //: Button on a curtain that sends it away again.
    auto* done = CreateButton(Translate("Done"), top ? "TopCurtainDone" : "BottomCurtainDone", nullptr);
    if (top) {
        //: Heading of the sample curtain that slides down from the top edge.
        curtain->SetContent(CreateCurtainForm(Translate("Session expired"),
                                              //: Text of the sample curtain that slides down from the top edge.
                                              Translate("Sign in again to go on where you left off. "
                                                        "The list waits under the curtain."),
                                              done));
    } else {
        //: Heading of the sample curtain that slides up from the bottom edge.
        curtain->SetContent(CreateCurtainForm(Translate("Three messages selected"),
                                              //: Text of the sample curtain that slides up from the bottom edge.
                                              Translate("A curtain can also rise from the bottom edge, "
                                                        "like a sheet of actions."),
                                              done));
    }
    QObject::connect(done, &QPushButton::clicked, curtain, &OrvantaQT::CurtainWidget::HideCurtain);

    //: Button that slides a curtain over a list.
    auto* show = CreateButton(top ? Translate("Show curtain") : Translate("Show from the bottom"),
                              top ? "ShowTopCurtain" : "ShowBottomCurtain", nullptr);
    //: Button that slides a curtain out of sight again.
    auto* hide = CreateButton(Translate("Hide curtain"), top ? "HideTopCurtain" : "HideBottomCurtain", nullptr);
    QObject::connect(show, &QPushButton::clicked, curtain, &OrvantaQT::CurtainWidget::ShowCurtain);
    QObject::connect(hide, &QPushButton::clicked, curtain, &OrvantaQT::CurtainWidget::HideCurtain);
    QWidget* row = CreateDemoRow(list, {show, hide});
    row->setObjectName(QLatin1String(top ? "TopCurtainDemo" : "BottomCurtainDemo"));
    return row;
}

// A small form under a shade that keeps the mouse and the keyboard away from it.
QWidget* CreateShadeDemo()
{
    auto* area = new QFrame;
    area->setObjectName(QStringLiteral("ShadeArea"));
    area->setFixedSize(kContainerSize.width(), 170);
    auto* form = new QFormLayout(area);
    form->setContentsMargins(16, 16, 16, 16);
    //: Label of a sample field in the form under the shade.
    form->addRow(Translate("Name:"), new QLineEdit(Translate("Ada Lovelace"), area));
    //: Label of a sample field in the form under the shade.
    form->addRow(Translate("Notes:"), new QLineEdit(Translate("Try typing here while it is shaded"), area));
    //: Sample check box in the form under the shade.
    form->addRow(QString(), new QCheckBox(Translate("Send me a copy"), area));
    auto* buttons = new QHBoxLayout;
    //: Sample button in the form under the shade.
    buttons->addWidget(new QPushButton(Translate("Save"), area));
    buttons->addStretch();
    form->addRow(QString(), buttons);
    auto* shade = new OrvantaQT::CurtainSemiTransparentWidget(area);
    shade->setObjectName(QStringLiteral("FormShade"));

    //: Button that fades a shade over a form, or away again.
    auto* toggle = CreateButton(Translate("Shade"), "ShadeToggle", nullptr, true);
    QObject::connect(toggle, &QPushButton::toggled, shade, &OrvantaQT::CurtainSemiTransparentWidget::SetShadeShown);
    return CreateDemoRow(area, {toggle});
}

void ShowNoResults(OrvantaQT::InfoOverlayWidget* overlay)
{
    overlay->SetPreset(OrvantaQT::InfoOverlayWidget::Preset::NoResults,
                       //: Text of the sample "No results" message over an empty list.
                       Translate("Nothing matches “orange invoices”. Try fewer or other words."));
}

void ShowLoading(OrvantaQT::InfoOverlayWidget* overlay)
{
    overlay->SetPreset(OrvantaQT::InfoOverlayWidget::Preset::Loading,
                       //: Text of the sample "Loading" message over an empty list.
                       Translate("Fetching the latest messages from the server; this can take a moment."));
}

void ShowConnectionLost(OrvantaQT::InfoOverlayWidget* overlay)
{
    overlay->SetPreset(OrvantaQT::InfoOverlayWidget::Preset::ConnectionLost,
                       //: Text of the sample "Connection lost" message over an empty list.
                       Translate("The server did not answer. Check the network and try again."));
}

// An empty list with a message over it; the buttons switch between the common messages,
// and the message's own button (Retry) starts loading.
QWidget* CreateInfoDemo()
{
    auto* view = new QListView;
    view->setObjectName(QStringLiteral("ResultsView"));
    view->setFixedSize(kContainerSize);
    auto* overlay = new OrvantaQT::InfoOverlayWidget(view);
    overlay->setObjectName(QStringLiteral("ResultsOverlay"));
    ShowNoResults(overlay);
    QObject::connect(overlay, &OrvantaQT::InfoOverlayWidget::ActionTriggered, overlay, [overlay] { ShowLoading(overlay); });

    //: Button that shows the "No results" message over the empty list.
    auto* none = CreateButton(Translate("No results"), "PresetNoResults", nullptr);
    //: Button that shows the "Loading…" message over the empty list.
    auto* loading = CreateButton(Translate("Loading…"), "PresetLoading", nullptr);
    //: Button that shows the "Connection lost" message over the empty list.
    auto* lost = CreateButton(Translate("Connection lost"), "PresetConnectionLost", nullptr);
    QObject::connect(none, &QPushButton::clicked, overlay, [overlay] { ShowNoResults(overlay); });
    QObject::connect(loading, &QPushButton::clicked, overlay, [overlay] { ShowLoading(overlay); });
    QObject::connect(lost, &QPushButton::clicked, overlay, [overlay] { ShowConnectionLost(overlay); });
    return CreateDemoRow(view, {none, loading, lost});
}


} // namespace

QWidget* CreateBusyPage()
{
    // Taller than the window: the page scrolls.
    //: Title of the gallery page with the busy animations, the curtains and the information overlay.
    const ScrollingPage scrolling = CreateScrollingPage("BusyPage", Translate("Busy and curtains"));
    QWidget* content = scrolling.content;
    QVBoxLayout* layout = scrolling.layout;

    //: Section title on the gallery's busy and curtains page.
    layout->addWidget(CreateSection("RingsSection", Translate("Busy rings"),
                                    //: Explanation on the gallery's busy and curtains page.
                                    Translate("Painted by hand at any size; the dots' size follows the ring "
                                              "unless it is set. The colours come from the theme."),
                                    CreateRingsDemo(), content));
    //: Section title on the gallery's busy and curtains page.
    layout->addWidget(CreateSection("TilesSection", Translate("Tile animation"),
                                    //: Explanation on the gallery's busy and curtains page.
                                    Translate("Frames cut from a sheet drawn when the page opens, with a sheet "
                                              "at twice the size for high-density screens."),
                                    CreateTilesDemo(), content));
    //: Section title on the gallery's busy and curtains page.
    layout->addWidget(CreateSection("ProgressSection", Translate("Progress bar animator"),
                                    //: Explanation on the gallery's busy and curtains page.
                                    Translate("Steps move the bar; a step during a move turns round from where the "
                                              "bar is. Busy sweeps until it is switched off, then the bar shows its "
                                              "last value again."),
                                    CreateProgressDemo(), content));

    auto* curtains = new QWidget;
    auto* curtainsLayout = new QVBoxLayout(curtains);
    curtainsLayout->setContentsMargins(0, 0, 0, 0);
    curtainsLayout->addWidget(CreateCurtainDemo(Qt::TopEdge));
    curtainsLayout->addWidget(CreateCurtainDemo(Qt::BottomEdge));
    //: Section title on the gallery's busy and curtains page.
    layout->addWidget(CreateSection("CurtainSection", Translate("Curtain"),
                                    //: Explanation on the gallery's busy and curtains page.
                                    Translate("A panel slides over the list, from the top or from the bottom "
                                              "edge, and covers it until it is sent away."),
                                    curtains, content));
    //: Section title on the gallery's busy and curtains page.
    layout->addWidget(CreateSection("ShadeSection", Translate("Semi-transparent curtain"),
                                    //: Explanation on the gallery's busy and curtains page.
                                    Translate("The shade fades in over the form; clicks and keys stop at it and "
                                              "focus cannot reach the fields until it has gone."),
                                    CreateShadeDemo(), content));
    //: Section title on the gallery's busy and curtains page.
    layout->addWidget(CreateSection("InfoSection", Translate("Information overlay"),
                                    //: Explanation on the gallery's busy and curtains page.
                                    Translate("A message centred over an empty list. Retry on the "
                                              "“Connection lost” message starts loading."),
                                    CreateInfoDemo(), content));
    layout->addStretch();

    return FinishScrollingPage(scrolling);
}

QVector<GalleryMoment> BusyPageMoments()
{
    return {
        {QStringLiteral("tiles_finished"), nullptr, 1400},
        {QStringLiteral("rings_stopped"), [](QWidget* page) { ClickButton(page, "RingsToggle"); }, 100},
        {QStringLiteral("progress_moving"),
         [](QWidget* page) {
             ClickButton(page, "RingsToggle");
             ScrollTo(page, "ProgressSection");
             ClickButton(page, "ProgressPlus");
         },
         150},
        {QStringLiteral("progress_busy"), [](QWidget* page) { ClickButton(page, "ProgressBusy"); }, 500},
        {QStringLiteral("curtain_sliding"),
         [](QWidget* page) {
             ScrollTo(page, "CurtainSection");
             ClickButton(page, "ShowTopCurtain");
         },
         120},
        {QStringLiteral("curtain_shown"), nullptr, 400},
        {QStringLiteral("curtain_bottom_sliding"),
         [](QWidget* page) {
             ClickButton(page, "TopCurtainDone");
             ScrollTo(page, "BottomCurtainDemo");
             ClickButton(page, "ShowBottomCurtain");
         },
         120},
        {QStringLiteral("curtain_bottom_shown"), nullptr, 400},
        {QStringLiteral("shaded"),
         [](QWidget* page) {
             ScrollTo(page, "ShadeSection");
             ClickButton(page, "ShadeToggle");
         },
         450},
        {QStringLiteral("no_results"),
         [](QWidget* page) {
             ClickButton(page, "ShadeToggle");
             ScrollTo(page, "InfoSection");
         },
         400},
        {QStringLiteral("loading"), [](QWidget* page) { ClickButton(page, "PresetLoading"); }, 300},
        {QStringLiteral("connection_lost"), [](QWidget* page) { ClickButton(page, "PresetConnectionLost"); }, 100},
        {QStringLiteral("retrying"), [](QWidget* page) { ClickButton(page, "ActionButton"); }, 300},
    };
}
