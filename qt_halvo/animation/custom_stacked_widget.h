#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtGui/QPixmap>
#include <QtWidgets/QStackedWidget>

namespace OrvantaQT {

class AnimatedPixmapRender;
class FreezePixmapWrapper;

// A stack whose page changes slide, sideways or up and down: pictures of the two pages
// move across a temporary page for the length of the slide, and the real page is made
// current at its end. A still picture of the current page (a freezing page) can stand in
// for it while it is rebuilt, and the stack can take the height of its current page.
// While a slide runs, requests for another are ignored.
class QT_HALVO_EXPORT CustomStackedWidget : public QStackedWidget
{
    Q_OBJECT

public:
    // The same values as QTimeLine::CurveShape.
    enum TimeLineCurveShapeType { EaseInCurve, EaseOutCurve, EaseInOutCurve, LinearCurve };
    Q_ENUM(TimeLineCurveShapeType)

    Q_PROPERTY(int Duration READ GetDuration WRITE SetDuration)
    Q_PROPERTY(TimeLineCurveShapeType TimeLineCurveShape READ GetTimeLineCurveShape WRITE SetTimeLineCurveShape)
    Q_PROPERTY(int Offset READ GetOffset WRITE SetOffset)
    // Named Alignment for the style sheets and forms that already set it.
    Q_PROPERTY(Qt::Orientation Alignment READ GetOrientation WRITE SetOrientation)
    Q_PROPERTY(bool AutoAdjustHeight READ IsAutoAdjustHeightEnabled WRITE SetAutoAdjustHeightEnabled)

public:
    explicit CustomStackedWidget(QWidget* parent = nullptr);
    ~CustomStackedWidget() override;

    int GetDuration() const;
    void SetDuration(int duration);
    TimeLineCurveShapeType GetTimeLineCurveShape() const;
    void SetTimeLineCurveShape(TimeLineCurveShapeType shape);
    int GetOffset() const;
    void SetOffset(int offset);
    // Qt::Horizontal slides sideways, anything else up and down.
    Qt::Orientation GetOrientation() const;
    void SetOrientation(Qt::Orientation orientation);
    bool IsAutoAdjustHeightEnabled() const;

    void InsertPage(int index, QWidget* page);
    // Removes the page from the stack without deleting it.
    void RemovePage(int index);
    int GetCount() const;
    int GetCurrentPageIndex() const;
    QWidget* GetWidget(int index) const;
    // Slide to the page: forwards to a higher index, backwards to a lower one.
    void SetCurrentPageIndex(int index);
    void SetCurrentPageWidget(QWidget* page);

    // The next slide starts from a picture of the current page taken now.
    void FreezePage();
    void ClearFreezePage();
    // Shows a picture of the current page in its place until a slide ends or
    // StopShowFreezingPage() is called.
    void StartShowFreezingPage();
    void StopShowFreezingPage();

Q_SIGNALS:
    void CurrentIndexChanged(int index);
    void Finished();

public Q_SLOTS:
    void AddPage(QWidget* page);
    // Previous and next wrap round; the pairing of their slide directions with
    // SetCurrentPageIndex()'s is the reverse (next slides backwards).
    void OnShowPrevious();
    void OnShowNext();
    // A slide from the current page to itself.
    void OnShowCurrentAsPrevious();
    void OnShowCurrentAsNext();
    void OnAnimationFinished();
    void SetVerticalOrientation(bool vertical);
    void SetAutoAdjustHeightEnabled(bool enable);
    // For checkable buttons: page N at once, without a slide, when checked.
    void ShowPage1(bool checked);
    void ShowPage2(bool checked);
    void ShowPage3(bool checked);
    void ShowPage4(bool checked);
    void ShowPage5(bool checked);
    void ShowPage6(bool checked);
    void ShowPage7(bool checked);

protected:
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void OnCurrentChanged(int index);

private:
    void BeginPageSwitchAnimated(int index, unsigned int direction);
    unsigned int GetAnimationDirection(bool forward) const;
    bool IsAnimationRunning() const;
    void ShowRelative(int step, bool forward);
    void ShowPage(int index, bool checked);
    void RemoveFreezingPage();

    int m_targetIndex = -1;
    int m_freezingPageIndex = -1;
    int m_duration = 500;
    int m_offset = 0;
    Qt::Orientation m_orientation = Qt::Horizontal;
    bool m_autoAdjustHeight = false;
    TimeLineCurveShapeType m_curveShape = EaseInCurve;
    QPixmap m_freezePicture;
    QPointer<FreezePixmapWrapper> m_freezingPage;
    bool m_slideRunning = false;
};

} // namespace OrvantaQT
