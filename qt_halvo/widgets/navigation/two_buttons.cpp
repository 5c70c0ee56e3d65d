#include <qt_halvo/widgets/navigation/two_buttons.h>

#include <qt_halvo/utilities/child_names_p.h>
#include <qt_halvo/widgets/navigation/tool_bar_picture_p.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

namespace OrvantaQT {

namespace {

// The picture's bands, stacked from the top.
enum Band { kNormalBand, kHoveredBand, kPressedBand, kBands };
constexpr int kBorder = 6;

// A button whose bevel is the pair's: it paints its label and its focus only.
class HalfButton : public QPushButton
{
public:
    explicit HalfButton(QWidget* parent)
        : QPushButton(parent)
    {
        // Enter belongs to the pair (accept), even inside a dialog.
        setAutoDefault(false);
        // The picture is light whatever the desktop's colours.
        QPalette colours = palette();
        colours.setColor(QPalette::ButtonText, QColor(0x20, 0x20, 0x20));
        setPalette(colours);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.state &= ~(QStyle::State_Sunken | QStyle::State_On);
        style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, this);
        if (option.state & QStyle::State_HasFocus) {
            QStyleOptionFocusRect focus;
            focus.QStyleOption::operator=(option);
            focus.rect = rect().adjusted(3, 3, -3, -3);
            focus.backgroundColor = Qt::white;
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
        }
    }
};

// Enter (or Return) accepts and Escape rejects, without modifiers.
enum class PairKey { None, Accept, Reject };

PairKey KeyOf(const QKeyEvent* event)
{
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return PairKey::None;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return PairKey::Accept;
    case Qt::Key_Escape:
        return PairKey::Reject;
    default:
        return PairKey::None;
    }
}

} // namespace

TwoButtons::TwoButtons(QWidget* parent)
    : QWidget(parent)
    , m_accept(NameChild(new HalfButton(this), "TwoButtons", "AcceptButton"))
    , m_reject(NameChild(new HalfButton(this), "TwoButtons", "RejectButton"))
    , m_picture(std::make_unique<ToolBarPicture>("TwoButtons", QStringLiteral(":/two_buttons.png"), kBorder))
{
    // The divider takes the colour of the picture's edge.
    const QPixmap& picture = m_picture->Pixmap();
    if (!picture.isNull())
        m_divider = picture.toImage().pixelColor(0, picture.height() / kBands / 2);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    for (QPushButton* button : {m_accept, m_reject}) {
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        // Clear, a half repaints the pair beneath it as it is pressed and released.
        button->installEventFilter(this);
    }
    connect(m_accept, &QPushButton::clicked, this, &TwoButtons::Accept);
    connect(m_reject, &QPushButton::clicked, this, &TwoButtons::Reject);
    UpdateTexts();
    UpdateOrder();
}

TwoButtons::~TwoButtons() = default;

QString TwoButtons::GetAcceptText() const
{
    return m_accept->text();
}

void TwoButtons::SetAcceptText(const QString& text)
{
    if (text == m_acceptText)
        return;
    m_acceptText = text;
    UpdateTexts();
}

void TwoButtons::ResetAcceptText()
{
    SetAcceptText(QString());
}

QString TwoButtons::GetRejectText() const
{
    return m_reject->text();
}

void TwoButtons::SetRejectText(const QString& text)
{
    if (text == m_rejectText)
        return;
    m_rejectText = text;
    UpdateTexts();
}

void TwoButtons::ResetRejectText()
{
    SetRejectText(QString());
}

QPushButton* TwoButtons::AcceptButton() const
{
    return m_accept;
}

QPushButton* TwoButtons::RejectButton() const
{
    return m_reject;
}

bool TwoButtons::IsAcceptFirst() const
{
    return m_acceptFirst;
}

QSize TwoButtons::sizeHint() const
{
    const QSize accept = m_accept->sizeHint();
    const QSize reject = m_reject->sizeHint();
    // Halves of one width, as one joined control.
    return QSize(2 * qMax(accept.width(), reject.width()), qMax(accept.height(), reject.height()));
}

QSize TwoButtons::minimumSizeHint() const
{
    const QSize accept = m_accept->minimumSizeHint();
    const QSize reject = m_reject->minimumSizeHint();
    return QSize(2 * qMax(accept.width(), reject.width()), qMax(accept.height(), reject.height()));
}

void TwoButtons::Accept()
{
    Q_EMIT Accepted();
}

void TwoButtons::Reject()
{
    Q_EMIT Rejected();
}

bool TwoButtons::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_accept || watched == m_reject) {
        switch (event->type()) {
        case QEvent::Enter:
        case QEvent::Leave:
            update();
            break;
        case QEvent::ShortcutOverride:
            // The pair's keys before the window's shortcuts, as a dialog's buttons have them.
            if (KeyOf(static_cast<QKeyEvent*>(event)) != PairKey::None)
                event->accept();
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TwoButtons::changeEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::StyleChange:
        UpdateOrder();
        break;
    case QEvent::LayoutDirectionChange:
        PlaceButtons();
        break;
    case QEvent::LanguageChange:
        UpdateTexts();
        break;
    default:
        break;
    }
    QWidget::changeEvent(event);
}

void TwoButtons::keyPressEvent(QKeyEvent* event)
{
    // Keys come here from the focused button, which leaves Enter and Escape alone.
    switch (KeyOf(event)) {
    case PairKey::Accept:
        Accept();
        break;
    case PairKey::Reject:
        Reject();
        break;
    case PairKey::None:
        QWidget::keyPressEvent(event);
        break;
    }
}

void TwoButtons::paintEvent(QPaintEvent*)
{
    if (m_picture->Pixmap().isNull())
        return;
    if (m_background.isNull() || m_background.devicePixelRatioF() != devicePixelRatioF())
        RebuildBackground();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_background);
    for (QPushButton* button : {m_accept, m_reject}) {
        if (!button->isEnabled() || !(button->isDown() || button->underMouse()))
            continue;
        // The whole pair's shape in that band, kept to the button's half: its outer
        // corners round, the inner edge straight against the other half.
        painter.save();
        painter.setClipRect(button->geometry());
        m_picture->Draw(&painter, rect(), button->isDown() ? kPressedBand : kHoveredBand, kBands);
        painter.restore();
    }
    painter.fillRect(QRect(qMax(m_accept->x(), m_reject->x()), 0, 1, height()), m_divider);
}

void TwoButtons::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_background = QPixmap();
    PlaceButtons();
}

void TwoButtons::UpdateTexts()
{
    m_accept->setText(m_acceptText.isEmpty() ? tr("OK") : m_acceptText);
    m_reject->setText(m_rejectText.isEmpty() ? tr("Cancel") : m_rejectText);
    updateGeometry();
}

void TwoButtons::UpdateOrder()
{
    const auto layout = static_cast<QDialogButtonBox::ButtonLayout>(
        style()->styleHint(QStyle::SH_DialogButtonLayout, nullptr, this));
    // Where QDialogButtonBox puts AcceptRole and RejectRole: accept before reject for
    // Windows and KDE, after it for macOS, GNOME and Android.
    m_acceptFirst = layout == QDialogButtonBox::WinLayout || layout == QDialogButtonBox::KdeLayout;
    QPushButton* first = m_acceptFirst ? m_accept : m_reject;
    setTabOrder(first, m_acceptFirst ? m_reject : m_accept);
    setFocusProxy(first);
    PlaceButtons();
}

void TwoButtons::PlaceButtons()
{
    const int half = width() / 2;
    const QRect firstHalf(0, 0, half, height());
    const QRect secondHalf(half, 0, width() - half, height());
    m_accept->setGeometry(QStyle::visualRect(layoutDirection(), rect(), m_acceptFirst ? firstHalf : secondHalf));
    m_reject->setGeometry(QStyle::visualRect(layoutDirection(), rect(), m_acceptFirst ? secondHalf : firstHalf));
    update();
}

void TwoButtons::RebuildBackground()
{
    const qreal ratio = devicePixelRatioF();
    m_background = QPixmap(size() * ratio);
    m_background.setDevicePixelRatio(ratio);
    m_background.fill(Qt::transparent);
    QPainter painter(&m_background);
    m_picture->Draw(&painter, rect(), kNormalBand, kBands);
}

} // namespace OrvantaQT
