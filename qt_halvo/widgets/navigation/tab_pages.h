#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtCore/QVector>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

namespace OrvantaQT {

class CustomStackedWidget;
class TabBar;

// A TabBar over a CustomStackedWidget whose pages slide in the direction of the tab change:
// to a tab further on, the new page comes in from the end side; to one before, from the
// start side. The bar is named "TabBar" and the stack "Pages" for style sheets.
//
// The bar leads: its current tab is the current page, and CurrentChanged follows the bar at
// once. The stack slides after it, one slide at a time; a change made while a slide runs is
// followed when that slide ends, so the page shown always ends as the bar's current one.
// With the style's animations off, or while hidden, pages change without a slide.
//
// Pages belong to the widget once added (as with QTabWidget, a removed page is not deleted);
// a page deleted elsewhere takes its tab with it. Closing and moving tabs are the bar's
// (GetTabBar()->setTabsClosable(), setMovable()); a moved tab keeps its page, and a close
// request is the host's to answer with RemovePage(). Tabs are added and removed through
// TabPages only, never on the bar itself.
class QT_HALVO_EXPORT TabPages : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int CurrentIndex READ GetCurrentIndex WRITE SetCurrentIndex NOTIFY CurrentChanged)
    Q_PROPERTY(int Count READ GetCount)

public:
    explicit TabPages(QWidget* parent = nullptr);
    ~TabPages() override;

    // The index of the new tab, or -1 without a page (or with one already added).
    int AddPage(QWidget* page, const QString& text, const QIcon& icon = QIcon());
    // An index out of range adds at the end, as QTabWidget does.
    int InsertPage(int index, QWidget* page, const QString& text, const QIcon& icon = QIcon());
    // Takes the page and its tab away without deleting the page.
    void RemovePage(int index);

    int GetCount() const;
    QWidget* GetPage(int index) const;
    int IndexOf(const QWidget* page) const;

    // -1 without pages.
    int GetCurrentIndex() const;
    QWidget* GetCurrentPage() const;
    void SetCurrentPage(QWidget* page);

    TabBar* GetTabBar() const;
    CustomStackedWidget* GetStack() const;

public Q_SLOTS:
    void SetCurrentIndex(int index);

Q_SIGNALS:
    // The bar's current tab changed; -1 when the last page went.
    void CurrentChanged(int index);

private:
    void OnBarCurrentChanged(int index);
    void OnTabMoved(int from, int to);
    void OnSlideFinished();
    // Follows the bar, then takes the pages removed during the slide out of the stack.
    void AfterSlide();
    void OnPageDestroyed(QObject* page);
    // Brings the stack to the bar's current page: a slide when it may, else at once.
    void FollowBar();
    // Puts the stack's pages in the tabs' order, which gives slides their direction.
    void OrderStack();
    bool IsSliding() const;

    TabBar* m_bar;
    CustomStackedWidget* m_stack;
    // In the order of the tabs. The stack also holds, until its slide ends, the pages
    // removed during it.
    QVector<QWidget*> m_pages;
    // The page the running slide goes to.
    QPointer<QWidget> m_slideTarget;
};

} // namespace OrvantaQT
