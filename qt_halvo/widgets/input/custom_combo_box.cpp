#include <qt_halvo/widgets/input/custom_combo_box.h>

#include <qt_halvo/utilities/logging_p.h>

#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QStylePainter>
#include <QtWidgets/QTableView>

namespace OrvantaQT {

WidgetRenderer::WidgetRenderer(QWidget* page, QWidget* parent)
    : QFrame(parent)
    , m_page(page)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

QWidget* WidgetRenderer::Page() const
{
    return m_page;
}

void WidgetRenderer::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    if (!m_page)
        return;
    // The page lives in the combo box's field; the row shows what it looks like.
    QPainter painter(this);
    const QRect area = contentsRect();
    m_page->resize(area.width(), m_page->height());
    m_page->render(&painter, area.topLeft(), QRegion(), QWidget::DrawChildren);
}

CustomComboBox::CustomComboBox(QWidget* parent)
    : QComboBox(parent)
    , m_pages(new QStackedWidget(this))
    , m_view(new QTableView)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    // Room for the arrow, which the field's page would otherwise cover.
    QStyleOptionComboBox option;
    initStyleOption(&option);
    layout->addSpacing(style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).width());
    m_pages->setAttribute(Qt::WA_TransparentForMouseEvents);

    m_view->setObjectName(QStringLiteral("CustomComboBoxView"));
    m_view->horizontalHeader()->hide();
    m_view->verticalHeader()->hide();
    // Rows as tall as their pages, however small.
    m_view->verticalHeader()->setMinimumSectionSize(1);
    m_view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    setView(m_view);
    connect(this, SIGNAL(currentIndexChanged(int)), this, SLOT(OnCurrentIndexChanged(int)));
}

CustomComboBox::~CustomComboBox() = default;

void CustomComboBox::AddPage(QWidget* page)
{
    InsertPage(m_pages->count(), page, QVariant());
}

void CustomComboBox::InsertPage(int index, QWidget* page, const QVariant& data)
{
    if (!page) {
        QTH_LOG_WARNING("CustomComboBox: no page to insert");
        return;
    }
    page->setParent(m_pages);
    m_pages->insertWidget(index, page);
    insertItem(index, QIcon(), QString(), data);
    auto* frame = new WidgetRenderer(page);
    const int minimumHeight = page->minimumSize().height();
    m_view->setRowHeight(index, minimumHeight != 0 ? minimumHeight : page->sizeHint().height());
    m_view->setIndexWidget(model()->index(index, 0), frame);
}

void CustomComboBox::RemovePage(int index)
{
    QWidget* page = m_pages->widget(index);
    if (!page) {
        QTH_LOG_WARNING("CustomComboBox: no page %d to remove", index);
        return;
    }
    m_pages->removeWidget(page);
    removeItem(index);
}

void CustomComboBox::SetCurrentIndex(int index)
{
    if (index == m_pages->currentIndex())
        return;
    m_pages->setCurrentIndex(index);
    setCurrentIndex(index);
}

void CustomComboBox::OnCurrentIndexChanged(int index)
{
    m_pages->setCurrentIndex(index);
    setCurrentIndex(index);
}

QString CustomComboBox::GetTopItemFrameStyleSheet() const
{
    return m_topSheet;
}

void CustomComboBox::SetTopItemFrameStyleSheet(const QString& sheet)
{
    m_topSheet = sheet;
}

QString CustomComboBox::GetCenterItemFrameStyleSheet() const
{
    return m_centerSheet;
}

void CustomComboBox::SetCenterItemFrameStyleSheet(const QString& sheet)
{
    m_centerSheet = sheet;
}

QString CustomComboBox::GetBottomItemFrameStyleSheet() const
{
    return m_bottomSheet;
}

void CustomComboBox::SetBottomItemFrameStyleSheet(const QString& sheet)
{
    m_bottomSheet = sheet;
}

QStackedWidget* CustomComboBox::Pages() const
{
    return m_pages;
}

void CustomComboBox::showPopup()
{
    const int rows = count();
    for (int i = 0; i < rows; ++i) {
        QWidget* frame = m_view->indexWidget(model()->index(i, 0));
        if (!frame)
            continue;
        const QString& sheet = rows == 1 ? m_centerSheet : i == 0 ? m_topSheet : i == rows - 1 ? m_bottomSheet : m_centerSheet;
        frame->setStyleSheet(sheet);
    }
    QComboBox::showPopup();
}

// The frame and the arrow; the current page shows in the field above them.
void CustomComboBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText.clear();
    option.currentIcon = QIcon();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
}

} // namespace OrvantaQT
