#pragma once

#include "gallery_pages.h"

#include <QtWidgets/QWidget>

class GalleryTheme;
class QCheckBox;
class QListWidget;
class QStackedWidget;

// The gallery's main window: the page list and the theme switch on the left, the
// selected page on the right. Pages are created when first shown.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    GalleryWindow(const QVector<GalleryPage>& pages, GalleryTheme& theme, QWidget* parent = nullptr);

    int PageCount() const;
    void ShowPage(int index);
    const GalleryPage& Page(int index) const;
    QWidget* CurrentPageWidget() const;

private Q_SLOTS:
    void OnThemeSwitched(bool dark);
    void OnThemeChanged();

private:
    QWidget* CreateSidebar();
    void FillList();

    QVector<GalleryPage> m_pages;
    QVector<QWidget*> m_created;
    QVector<int> m_pageOfRow; // -1 for a group's heading
    GalleryTheme& m_theme;
    QListWidget* m_list = nullptr;
    QCheckBox* m_themeSwitch = nullptr;
    QStackedWidget* m_stack = nullptr;
};
