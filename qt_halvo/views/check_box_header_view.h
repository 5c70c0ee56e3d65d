#pragma once

#include <qt_halvo/views/header_view.h>

namespace OrvantaQT {

// A horizontal HeaderView that draws a tri-state check box in the section of one column,
// the check column, bound to the Qt::CheckStateRole of that column in the rows the model
// (often a proxy) shows: checked when every row is, unchecked when none is (or there are
// no rows), partly checked otherwise. A click on the box (or Toggle()) checks every shown
// row unless all are checked, then unchecks them all; rows a proxy filters out keep their
// state. The count follows dataChanged, rowsInserted, rowsRemoved and modelReset in the
// time of the rows that changed; a reorder (layoutChanged, rowsMoved) or a change of
// columns reads the column again.
// A row whose check cell is not Qt::ItemIsUserCheckable, or has no Qt::CheckStateRole
// data, does not count: it neither holds the box back from checked nor is written by a
// click. A partly checked row makes the box partly checked. With no rows to count the box
// is unchecked and disabled.
class QT_HALVO_EXPORT CheckBoxHeaderView : public HeaderView
{
    Q_OBJECT
    Q_PROPERTY(int checkColumn READ GetCheckColumn WRITE SetCheckColumn)
    Q_PROPERTY(Qt::CheckState checkState READ GetCheckState NOTIFY CheckStateChanged)

public:
    explicit CheckBoxHeaderView(QWidget* parent = nullptr);
    ~CheckBoxHeaderView() override;

    // 0 by default; -1 draws no box, nor does a column the model does not have.
    int GetCheckColumn() const;
    void SetCheckColumn(int column);

    Qt::CheckState GetCheckState() const;
    // The shown rows that count (see above), and how many of them are checked.
    int RowCount() const;
    int CheckedCount() const;

    // Where the box is drawn, in the header's coordinates; empty when it is not.
    QRect CheckBoxRect() const;

    void setModel(QAbstractItemModel* model) override;

public Q_SLOTS:
    // As a click on the box.
    void Toggle();

Q_SIGNALS:
    void CheckStateChanged(Qt::CheckState state);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    struct Private;
    Private* d;
};

} // namespace OrvantaQT
