#include <qt_halvo/widgets/input/custom_line_edit.h>

#include "right_align_combo_box_p.h"

#include <qt_halvo/animation/movie_widget.h>
#include <qt_halvo/widgets/containers/button_container.h>
#include <qt_halvo/utilities/child_names_p.h>

#include <QtGui/QFocusEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QToolButton>

namespace OrvantaQT {

CustomLineEdit::CustomLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addStretch();
    layout->insertWidget(0, CreateButtonContainer());
    CreateComboBox();
    layout->addWidget(m_comboBox);
    installEventFilter(this);
    connect(this, &QLineEdit::returnPressed, this, &CustomLineEdit::OnReturnPressed);
    connect(this, &QLineEdit::textEdited, this, &CustomLineEdit::SendStartEdit);
    UpdateView();
}

CustomLineEdit::~CustomLineEdit() = default;

ButtonContainer* CustomLineEdit::CreateButtonContainer()
{
    auto* container = NameChild(new ButtonContainer(this), "CustomLineEdit", "ButtonContainer");
    container->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    container->installEventFilter(this); // the container tracks the mouse for it
    m_buttonContainer = container;

    // No spacing, the stack pushed to the right.
    container->SetSpacing(0);
    container->AddStretch();
    m_stackedWidget = new QStackedWidget(container);
    m_stackedWidget->setAccessibleName(QStringLiteral("CustomLineEdit_StackedWidget"));
    container->AddButton(m_stackedWidget);

    m_staticLabel = NameChild(new QLabel, "CustomLineEdit", "StaticLabel");
    m_staticLabel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_movieWidget = NameChild(new MovieWidget, "CustomLineEdit", "AnimationLabel");
    m_movieWidget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_movieWidget->setProperty("PreloaderAnimation16", true);
    m_button = NameChild(new QToolButton, "CustomLineEdit", "Button");
    m_button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    m_button->setAttribute(Qt::WA_MouseTracking);
    connect(m_button, &QToolButton::clicked, this, &CustomLineEdit::ButtonClicked);
    connect(m_button, &QToolButton::clicked, this, [this] { m_editing = false; });
    m_emptyPage = new QWidget;
    for (QWidget* page : {static_cast<QWidget*>(m_staticLabel), static_cast<QWidget*>(m_movieWidget),
                          static_cast<QWidget*>(m_button), m_emptyPage.data()})
        m_stackedWidget->addWidget(page);
    return container;
}

void CustomLineEdit::CreateComboBox()
{
    m_comboBox = NameChild(new RightAlignComboBox(this), "CustomLineEdit", "ComboBox");
    m_comboBox->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    m_comboBox->setView(new QListView);
    m_comboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_comboBox->installEventFilter(this);
    connect(m_comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CustomLineEdit::ComboBoxIndexChanged);
    connect(m_comboBox, QOverload<int>::of(&QComboBox::activated), this, &CustomLineEdit::ComboBoxActivated);
    connect(m_comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CustomLineEdit::UpdateComboBoxText);
}

int CustomLineEdit::leftControlMode() const
{
    return m_leftControlMode;
}

void CustomLineEdit::setLeftControlMode(int mode)
{
    m_leftControlMode = mode;
    UpdateView();
}

bool CustomLineEdit::comboBoxVisible() const
{
    return m_comboBox->isVisible();
}

void CustomLineEdit::setComboBoxVisible(bool visible)
{
    m_comboBox->setVisible(visible);
}

void CustomLineEdit::ShowStaticLabel()
{
    setLeftControlMode(1);
}

void CustomLineEdit::ShowAnimation()
{
    setLeftControlMode(2);
}

void CustomLineEdit::ShowButton()
{
    setLeftControlMode(3);
}

void CustomLineEdit::FillComboBox(const QStringList& items, int index)
{
    m_comboBox->clear();
    m_comboBox->addItems(items);
    for (int row = 0; row < m_comboBox->count(); ++row)
        m_comboBox->setItemData(row, int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
    if (index != -1 && index < m_comboBox->count())
        m_comboBox->setCurrentIndex(index);
}

void CustomLineEdit::ClearComboBox()
{
    m_comboBox->clear();
}

int CustomLineEdit::ComboBoxCurrentIndex() const
{
    return m_comboBox->currentIndex();
}

void CustomLineEdit::ResetComboBoxSelection()
{
    m_comboBox->setCurrentIndex(-1);
}

void CustomLineEdit::SetComboBoxConstEnding(const QString& ending)
{
    m_comboBox->SetConstEnding(ending);
    UpdateComboBoxText();
    m_comboBox->update();
}

// The combo box draws the current text itself, with the ending when there is one.
void CustomLineEdit::UpdateComboBoxText()
{
    m_comboBox->SetTextToDraw(m_comboBox->currentText());
    m_comboBox->SetAppendEnding(!m_comboBox->ConstEnding().isEmpty());
}

void CustomLineEdit::UpdateView()
{
    if (!m_stackedWidget)
        return;
    QWidget* page = m_emptyPage;
    switch (m_leftControlMode) {
    case 1:
        page = m_staticLabel;
        break;
    case 2:
        page = m_leftHovered ? static_cast<QWidget*>(m_button) : static_cast<QWidget*>(m_movieWidget);
        break;
    case 3:
        page = m_button;
        break;
    default:
        break;
    }
    if (page)
        m_stackedWidget->setCurrentWidget(page);
}

void CustomLineEdit::SendStartEdit()
{
    if (m_editing)
        return;
    m_editing = true;
    Q_EMIT StartEditText();
}

void CustomLineEdit::OnReturnPressed()
{
    if (text().isEmpty())
        Q_EMIT CancelEditText();
    else if (m_editing)
        Q_EMIT AcceptEditText();
    m_editing = false;
}

bool CustomLineEdit::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (watched == m_buttonContainer) {
        if (type == QEvent::Enter) {
            // Switching the page under the mouse (mode 2) brings a second Enter: one push.
            if (m_leftControlMode != 1 && !m_leftHovered) {
                QApplication::setOverrideCursor(Qt::PointingHandCursor);
                m_leftHovered = true;
                UpdateView();
            }
        } else if (type == QEvent::Leave) {
            // Popped whether or not Enter pushed one: kept as it is.
            QApplication::restoreOverrideCursor();
            m_leftHovered = false;
            UpdateView();
        }
    } else if (watched == this) {
        if (type == QEvent::FocusIn) {
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
                SendStartEdit();
        } else if (type == QEvent::MouseButtonRelease && hasFocus()) {
            SendStartEdit();
        }
    } else if (watched == m_comboBox) {
        if (type == QEvent::Enter)
            QApplication::setOverrideCursor(Qt::ArrowCursor);
        else if (type == QEvent::Leave)
            QApplication::restoreOverrideCursor();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace OrvantaQT
