#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

// Plays frames cut from a tile sheet of rows x columns, read row by row, of which the
// first `quantity` are frames, with an optional sheet at twice the resolution. The frames
// are scaled to the contents rectangle once and stepped through on a timer that runs while
// the widget plays and is visible; it loops, or stops on the last frame with Finished().
// RenderTo() paints the current frame into another widget's painting.
class QT_HALVO_EXPORT TileAnimationWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QPixmap sheet READ GetSheet WRITE SetSheet)
    Q_PROPERTY(QPixmap sheetHiDpi READ GetSheetHiDpi WRITE SetSheetHiDpi)
    Q_PROPERTY(int rows READ GetRows)
    Q_PROPERTY(int columns READ GetColumns)
    Q_PROPERTY(int quantity READ GetQuantity)
    Q_PROPERTY(int period READ GetPeriod WRITE SetPeriod)
    Q_PROPERTY(bool looping READ IsLooping WRITE SetLooping)

public:
    explicit TileAnimationWidget(QWidget* parent = nullptr);
    ~TileAnimationWidget() override;

    QPixmap GetSheet() const;
    void SetSheet(const QPixmap& sheet);
    QPixmap GetSheetHiDpi() const;
    void SetSheetHiDpi(const QPixmap& sheet);
    // Reads the sheet and, when a path is given, the double-resolution one; false, with a
    // log line, when a file cannot be read (the widget then has no sheet).
    bool LoadSheet(const QString& path, const QString& hiDpiPath = QString());

    int GetRows() const;
    int GetColumns() const;
    int GetQuantity() const;
    // A layout that does not fit (no rows or columns, no frames or more than rows x
    // columns) is logged and the one before is kept.
    void SetGrid(int rows, int columns, int quantity);

    // Between frames, in ms; 40 by default.
    int GetPeriod() const;
    void SetPeriod(int period);
    bool IsLooping() const;
    void SetLooping(bool looping);

    int CurrentFrame() const;
    bool IsPlaying() const;

    // Paints the current frame, at the sheet's frame size, aligned in rect.
    void RenderTo(QPainter* painter, const QRect& rect, int alignment) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    // When a one-shot run stops on its last frame.
    void Finished();
    void FrameChanged(int index);

public Q_SLOTS:
    // Plays on from the current frame (from the first after a finished one-shot run).
    void Start();
    // Keeps the current frame.
    void Stop();
    // From the first frame.
    void Restart();

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QSize FrameSize() const;
    bool SheetTooSmall() const;
    void ReportSheetTooSmall() const;
    void UpdateFrames();
    void UpdateTimer();

    QPixmap m_sheet;
    QPixmap m_sheetHiDpi;
    int m_rows = 1;
    int m_columns = 1;
    int m_quantity = 1;
    int m_period = 40;
    bool m_looping = true;
    bool m_playing = true;
    int m_current = 0;
    QBasicTimer m_timer;
    QVector<QIcon> m_frames;
};

} // namespace OrvantaQT
