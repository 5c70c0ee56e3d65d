#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QTreeView>

namespace OrvantaQT {

class ClosableViewHelper;

// A QTreeView whose rows can be closed: a close button is painted at the trailing end of
// the row under the pointer (and of the current row while the view has focus); a click on
// it, a middle click on a row, or the Delete key on the current row asks for the row to go
// with CloseRequested(). Removing it is the model owner's. After a row is removed, the row
// that is now under the pointer is shown hovered at once.
class QT_HALVO_EXPORT ClosableTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit ClosableTreeView(QWidget* parent = nullptr);
    ~ClosableTreeView() override;

    // The row whose close button is shown, or an invalid index.
    QModelIndex CloseButtonIndex() const;
    // Where it is, in the viewport's coordinates; empty when none is shown.
    QRect CloseButtonRect() const;

Q_SIGNALS:
    void CloseRequested(const QModelIndex& index);

protected:
    void paintEvent(QPaintEvent* event) override;
    // A viewport set with setViewport() shows the close button too.
    void setupViewport(QWidget* viewport) override;

private:
    ClosableViewHelper* m_helper;
};

} // namespace OrvantaQT
