#pragma once

#include "gallery_pages.h"

#include <QtWidgets/QWidget>

class QListWidget;
class QStackedWidget;

// The gallery's main window: the page list on the left, the selected page on the right.
// Pages are created when first shown.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GalleryWindow(const QVector<GalleryPage>& pages, QWidget* parent = nullptr);

    int PageCount() const;
    void ShowPage(int index);
    const GalleryPage& Page(int index) const;

private:
    QVector<GalleryPage> m_pages;
    QVector<QWidget*> m_created;
    QListWidget* m_list = nullptr;
    QStackedWidget* m_stack = nullptr;
};
