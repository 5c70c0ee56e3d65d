#include <qt_halvo/animation/tile_animation_widget.h>

#include "frame_sheet_p.h"

#include <qt_halvo/utilities/logging_p.h>

#include <QtCore/QTimerEvent>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>

namespace OrvantaQT {

namespace {

QPixmap ReadSheet(const QString& path)
{
    QImageReader reader(path);
    const QImage image = reader.read();
    if (image.isNull()) {
        QTH_LOG_WARNING("TileAnimationWidget: cannot read the tile sheet \"%s\": %s", qUtf8Printable(path),
                        qUtf8Printable(reader.errorString()));
        return QPixmap();
    }
    return QPixmap::fromImage(image);
}

} // namespace

TileAnimationWidget::TileAnimationWidget(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

TileAnimationWidget::~TileAnimationWidget() = default;

QPixmap TileAnimationWidget::GetSheet() const
{
    return m_sheet;
}

void TileAnimationWidget::SetSheet(const QPixmap& sheet)
{
    m_sheet = sheet;
    ReportSheetTooSmall();
    UpdateFrames();
    updateGeometry();
    update();
}

QPixmap TileAnimationWidget::GetSheetHiDpi() const
{
    return m_sheetHiDpi;
}

void TileAnimationWidget::SetSheetHiDpi(const QPixmap& sheet)
{
    m_sheetHiDpi = sheet;
    UpdateFrames();
    update();
}

bool TileAnimationWidget::LoadSheet(const QString& path, const QString& hiDpiPath)
{
    const QPixmap sheet = ReadSheet(path);
    const QPixmap hiDpi = hiDpiPath.isEmpty() || sheet.isNull() ? QPixmap() : ReadSheet(hiDpiPath);
    m_sheetHiDpi = hiDpi;
    SetSheet(sheet);
    return !sheet.isNull() && (hiDpiPath.isEmpty() || !hiDpi.isNull());
}

int TileAnimationWidget::GetRows() const
{
    return m_rows;
}

int TileAnimationWidget::GetColumns() const
{
    return m_columns;
}

int TileAnimationWidget::GetQuantity() const
{
    return m_quantity;
}

void TileAnimationWidget::SetGrid(int rows, int columns, int quantity)
{
    if (rows < 1 || columns < 1 || quantity < 1 || quantity > rows * columns) {
        QTH_LOG_WARNING("TileAnimationWidget: %d frames do not fit a sheet of %d x %d tiles; it stays %d of %d x %d",
                        quantity, rows, columns, m_quantity, m_rows, m_columns);
        return;
    }
    if (rows == m_rows && columns == m_columns && quantity == m_quantity)
        return;
    m_rows = rows;
    m_columns = columns;
    m_quantity = quantity;
    if (m_current >= quantity)
        m_current = 0;
    ReportSheetTooSmall();
    UpdateFrames();
    updateGeometry();
    update();
}

int TileAnimationWidget::GetPeriod() const
{
    return m_period;
}

void TileAnimationWidget::SetPeriod(int period)
{
    if (period < 1) {
        QTH_LOG_WARNING("TileAnimationWidget: a frame period of %d ms is ignored; it stays %d ms", period, m_period);
        return;
    }
    if (period == m_period)
        return;
    m_period = period;
    m_timer.stop();
    UpdateTimer();
}

bool TileAnimationWidget::IsLooping() const
{
    return m_looping;
}

void TileAnimationWidget::SetLooping(bool looping)
{
    m_looping = looping;
}

int TileAnimationWidget::CurrentFrame() const
{
    return m_current;
}

bool TileAnimationWidget::IsPlaying() const
{
    return m_playing;
}

void TileAnimationWidget::Start()
{
    if (!m_looping && m_current >= m_quantity - 1)
        m_current = 0;
    m_playing = true;
    UpdateTimer();
    update();
}

void TileAnimationWidget::Stop()
{
    m_playing = false;
    UpdateTimer();
}

void TileAnimationWidget::Restart()
{
    m_current = 0;
    Start();
}

QSize TileAnimationWidget::FrameSize() const
{
    // In the sheet's own pixels, whatever device pixel ratio it was loaded with.
    return QSize(m_sheet.width() / m_columns, m_sheet.height() / m_rows);
}

bool TileAnimationWidget::SheetTooSmall() const
{
    return !m_sheet.isNull() && FrameSize().isEmpty();
}

void TileAnimationWidget::ReportSheetTooSmall() const
{
    if (SheetTooSmall())
        QTH_LOG_WARNING("TileAnimationWidget: a sheet of %d x %d pixels is too small for %d x %d tiles",
                        m_sheet.width(), m_sheet.height(), m_rows, m_columns);
}

void TileAnimationWidget::UpdateFrames()
{
    if (SheetTooSmall()) {
        m_frames.clear();
    } else {
        const QSize target = contentsRect().isEmpty() ? FrameSize() : contentsRect().size();
        m_frames = FrameSheet::Cut(m_sheet, m_sheetHiDpi, m_quantity, m_columns, FrameSize(), target);
    }
    UpdateTimer();
}

void TileAnimationWidget::UpdateTimer()
{
    const bool run = m_playing && isVisible() && m_frames.size() > 1;
    if (!run)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(m_period, Qt::CoarseTimer, this);
}

void TileAnimationWidget::RenderTo(QPainter* painter, const QRect& rect, int alignment) const
{
    if (!painter || m_current >= m_frames.size())
        return;
    const QSize size = FrameSize();
    painter->drawPixmap(FrameSheet::Align(size, rect, alignment),
                        m_frames[m_current].pixmap(size, QIcon::Normal, QIcon::Off));
}

QSize TileAnimationWidget::sizeHint() const
{
    if (m_sheet.isNull())
        return QWidget::sizeHint();
    const QMargins margins = contentsMargins();
    return FrameSize().grownBy(margins);
}

void TileAnimationWidget::paintEvent(QPaintEvent*)
{
    if (m_current >= m_frames.size())
        return;
    QPainter painter(this);
    m_frames[m_current].paint(&painter, contentsRect(), Qt::AlignCenter, QIcon::Normal, QIcon::Off);
}

void TileAnimationWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    if (m_current < m_quantity - 1) {
        ++m_current;
    } else if (m_looping) {
        m_current = 0;
    } else {
        m_playing = false;
        UpdateTimer();
        Q_EMIT Finished();
        return;
    }
    Q_EMIT FrameChanged(m_current);
    update();
}

void TileAnimationWidget::resizeEvent(QResizeEvent* event)
{
    UpdateFrames();
    QWidget::resizeEvent(event);
}

void TileAnimationWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    UpdateTimer();
}

void TileAnimationWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

} // namespace OrvantaQT
