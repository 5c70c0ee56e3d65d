#include <qt_halvo/widgets/text/linkable_checkbox.h>

#include <qt_halvo/widgets/text/clickable_label.h>
#include <qt_halvo/widgets/text/hoverable_check_box.h>

#include <QtGui/QMouseEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QSpacerItem>
#include <QtWidgets/QVBoxLayout>

namespace OrvantaQT {

namespace {

constexpr int kDefaultSpacing = 6;

// A column that keeps its widget at the top, above a spacer that takes the rest.
QVBoxLayout* TopColumn(QWidget* widget)
{
    auto* column = new QVBoxLayout;
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(widget);
    column->addItem(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding));
    return column;
}

} // namespace

LinkableCheckbox::LinkableCheckbox(QWidget* parent)
    : QWidget(parent)
    , m_layout(new QHBoxLayout(this))
    , m_checkBox(new HoverableCheckBox)
    , m_caption(new ClickableLabel)
{
    setAttribute(Qt::WA_MouseTracking);
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_caption, &QLabel::linkActivated, this, [this](const QString& link) {
        m_caption->SetLinkActivated(true);
        Q_EMIT LinkActivated(link);
    });
    m_checkBox->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_checkBox, &QCheckBox::toggled, this, &LinkableCheckbox::Toggled);
    connect(m_checkBox, &QCheckBox::clicked, this, &LinkableCheckbox::Clicked);
    connect(m_checkBox, &QCheckBox::stateChanged, this, &LinkableCheckbox::StateChanged);
    connect(m_caption, &ClickableLabel::Clicked, m_checkBox, &QCheckBox::toggle);

    auto* captionContainer = new QWidget;
    captionContainer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    captionContainer->setLayout(TopColumn(m_caption));
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(kDefaultSpacing);
    m_layout->addLayout(TopColumn(m_checkBox));
    m_layout->addWidget(captionContainer);
}

LinkableCheckbox::~LinkableCheckbox() = default;

QString LinkableCheckbox::text() const
{
    return m_caption->text();
}

Qt::TextFormat LinkableCheckbox::textFormat() const
{
    return m_caption->textFormat();
}

bool LinkableCheckbox::wordWrap() const
{
    return m_caption->wordWrap();
}

int LinkableCheckbox::spacing() const
{
    return m_layout->spacing();
}

bool LinkableCheckbox::isChecked() const
{
    return m_checkBox->isChecked();
}

HoverableCheckBox* LinkableCheckbox::CheckBox() const
{
    return m_checkBox;
}

ClickableLabel* LinkableCheckbox::Caption() const
{
    return m_caption;
}

void LinkableCheckbox::setText(const QString& text)
{
    m_caption->setText(text);
}

void LinkableCheckbox::setTextFormat(Qt::TextFormat format)
{
    m_caption->setTextFormat(format);
}

void LinkableCheckbox::resetTextFormat()
{
    setTextFormat(Qt::AutoText);
}

void LinkableCheckbox::setWordWrap(bool wrap)
{
    m_caption->setWordWrap(wrap);
}

void LinkableCheckbox::resetWordWrap()
{
    setWordWrap(false);
}

void LinkableCheckbox::setSpacing(int spacing)
{
    m_layout->setSpacing(spacing);
}

void LinkableCheckbox::resetSpacing()
{
    setSpacing(kDefaultSpacing);
}

void LinkableCheckbox::setChecked(bool checked)
{
    m_checkBox->setChecked(checked);
}

void LinkableCheckbox::resetChecked()
{
    setChecked(false);
}

void LinkableCheckbox::enterEvent(QEvent* event)
{
    m_checkBox->SetHovered(true);
    QWidget::enterEvent(event);
}

void LinkableCheckbox::leaveEvent(QEvent* event)
{
    m_checkBox->SetHovered(false);
    QWidget::leaveEvent(event);
}

void LinkableCheckbox::mouseMoveEvent(QMouseEvent* event)
{
    m_checkBox->SetHovered(rect().contains(event->pos()));
    QWidget::mouseMoveEvent(event);
}

} // namespace OrvantaQT
