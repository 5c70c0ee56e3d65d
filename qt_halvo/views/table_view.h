#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QTableView>

namespace OrvantaQT {

class InfoOverlayWidget;

// A QTableView with the library's defaults:
// - the whole row under the pointer is hovered: every cell of it is painted with
//   QStyle::State_MouseOver (so delegates and style sheet rules "::item:hover" see it), and
//   HoveredRow() / HoveredRowChanged() tell the rest;
// - a cell shows a tool tip only when its text does not fit (and the model gives no tool
//   tip of its own), with the whole text;
// - while the model has no rows under the root index, an InfoOverlayWidget ("EmptyOverlay")
//   over the viewport says so, with a text the host sets (none: no overlay);
// - scrolling per pixel in both directions, a wheel notch moving three rows' worth.
// Its horizontal header is a HeaderView.
class QT_HALVO_EXPORT TableView : public QTableView
{
    Q_OBJECT
    Q_PROPERTY(QString emptyText READ GetEmptyText WRITE SetEmptyText)
    Q_PROPERTY(int hoveredRow READ HoveredRow NOTIFY HoveredRowChanged)

public:
    explicit TableView(QWidget* parent = nullptr);
    ~TableView() override;

    // Shown while the model has no rows; "No items" (translated) by default.
    QString GetEmptyText() const;
    void SetEmptyText(const QString& text);
    InfoOverlayWidget* EmptyOverlay() const;

    // The row under the pointer, or -1.
    int HoveredRow() const;

    void setModel(QAbstractItemModel* model) override;
    // An index of another model is refused (logged) and the root stays.
    void setRootIndex(const QModelIndex& index) override;

Q_SIGNALS:
    void HoveredRowChanged(int row);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QStyleOptionViewItem viewOptions() const override;
    void scrollContentsBy(int dx, int dy) override;
    // A viewport set with setViewport() gets the hover and the empty-state overlay too.
    void setupViewport(QWidget* viewport) override;
    void updateGeometries() override;

private:
    struct Private;
    Private* d;
};

} // namespace OrvantaQT
