#include <qt_halvo/widgets/navigation/tool_bar_button.h>

#include <qt_halvo/styles/stylesheet_pseudo_states_helper.h>
#include <qt_halvo/utilities/logging_p.h>
#include <qt_halvo/widgets/navigation/tool_bar_picture_p.h>

#include <QtWidgets/QStyleOptionToolButton>
#include <QtWidgets/QStylePainter>

namespace OrvantaQT {

namespace {

const char kDefaultImage[] = ":/tool_bar_button.png";
constexpr int kDefaultBorder = 6;
constexpr int kBands = 3;

} // namespace

ToolBarButton::ToolBarButton(QWidget* parent)
    : QToolButton(parent)
    , m_picture(std::make_unique<ToolBarPicture>("ToolBarButton", QLatin1String(kDefaultImage), kDefaultBorder))
{
    setAutoRaise(true);
    // Buttons of a row share its height, so their backgrounds line up.
    setSizePolicy(QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred, QSizePolicy::ToolButton));
    // Keeps the hover while the button's own menu opens over it.
    new StylesheetPseudoStatesHelper(this, true);
}

ToolBarButton::ToolBarButton(QAction* action, QWidget* parent)
    : ToolBarButton(parent)
{
    if (!action) {
        QTH_LOG_WARNING("ToolBarButton: no action; the button has none");
        return;
    }
    setDefaultAction(action);
}

ToolBarButton::~ToolBarButton() = default;

QString ToolBarButton::GetBackgroundImage() const
{
    return m_picture->Path();
}

void ToolBarButton::SetBackgroundImage(const QString& path)
{
    if (m_picture->SetPath(path))
        update();
}

QMargins ToolBarButton::GetBackgroundBorders() const
{
    return m_picture->Borders();
}

void ToolBarButton::SetBackgroundBorders(const QMargins& borders)
{
    if (m_picture->SetBorders(borders))
        update();
}

int ToolBarButton::GetBackgroundBorder() const
{
    return m_picture->Borders().left();
}

void ToolBarButton::SetBackgroundBorder(int border)
{
    SetBackgroundBorders(QMargins(border, border, border, border));
}

bool ToolBarButton::IsMenuIndicatorVisible() const
{
    return m_menuIndicatorVisible;
}

void ToolBarButton::SetMenuIndicatorVisible(bool visible)
{
    if (visible == m_menuIndicatorVisible)
        return;
    m_menuIndicatorVisible = visible;
    update();
}

ToolBarButton::Band ToolBarButton::CurrentBand() const
{
    if (isDown() || isChecked())
        return Band::Pressed;
    if (isEnabled() && property("hovered").toBool())
        return Band::Hovered;
    return Band::Normal;
}

void ToolBarButton::paintEvent(QPaintEvent* event)
{
    if (testAttribute(Qt::WA_StyleSheetTarget)) {
        QToolButton::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    m_picture->Draw(&painter, rect(), static_cast<int>(CurrentBand()), kBands);

    QStyleOptionToolButton option;
    initStyleOption(&option);
    // The picture is the panel: the style draws the focus, icon, text and arrows only.
    option.subControls &= ~QStyle::SC_ToolButton;
    option.state &= ~(QStyle::State_Raised | QStyle::State_Sunken);
    if (option.features & QStyleOptionToolButton::MenuButtonPopup)
        option.state &= ~QStyle::State_On; // else the style frames the arrow part
    if (!m_menuIndicatorVisible)
        option.features &= ~QStyleOptionToolButton::HasMenu;
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
}

} // namespace OrvantaQT
