#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QLayout>
#include <QtWidgets/QStyle>

namespace OrvantaQT {

// Places its items left to right in rows, starting a new row at the right edge or when a
// row holds the maximum number of items, and centres the block of rows in its rectangle.
// It reports height-for-width. A negative spacing is taken from the parent: a parent
// layout's spacing, or the parent widget's style; and if that gives nothing, the style's
// spacing between push buttons.
class QT_HALVO_EXPORT FlowLayout : public QLayout
{
public:
    explicit FlowLayout(QWidget* parent = nullptr, int hSpacing = -1, int vSpacing = -1);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    void setGeometry(const QRect& rect) override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;

    int horizontalSpacing() const;
    int verticalSpacing() const;

    // -1 for no limit. Lays the items out again at once in the current geometry.
    void SetMaxWidgetsPerRow(int count);
    int MaxWidgetsPerRow() const;

private:
    int smartSpacing(QStyle::PixelMetric metric) const;
    int doLayout(const QRect& rect, bool testOnly) const;

    QList<QLayoutItem*> m_items;
    int m_horizontalSpacing;
    int m_verticalSpacing;
    int m_maxWidgetsPerRow = -1;
};

} // namespace OrvantaQT
