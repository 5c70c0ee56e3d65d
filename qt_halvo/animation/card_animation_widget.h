#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QEasingCurve>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <memory>

class QVariant;

namespace OrvantaQT {

class BlurPyramid;

// The page a CardWidget shows while it changes faces: the first face blurred and fading
// as the second comes up over it from the bottom edge. Progress runs from 0 (the first
// face alone) to 100 (the second face over the first, which has faded out).
class QT_HALVO_EXPORT CardAnimationWidget : public QWidget
{
    Q_OBJECT

public:
    CardAnimationWidget(unsigned int blurRadius, QWidget* parent);
    ~CardAnimationWidget() override;

    // Pictures of the two faces, at their device pixel ratio.
    void SetPictures(const QPixmap& first, const QPixmap& second);
    void SetDuration(int duration);
    int GetDuration() const;
    void SetOverlayEasing(const QEasingCurve& easing);
    void SetBlurEasing(const QEasingCurve& easing);
    // Which way the transition goes: towards the first face (opening) or away from it.
    void SetOpening(bool opening);
    int GetProgress() const;

    // How much of the first face is blurred away, in pixels of height (0 to height()),
    // and how far the second face has come up over it, in pixels.
    int BlurAmount() const;
    int OverlayOffset() const;

public Q_SLOTS:
    void SetProgress(int progress);
    // For the card's progress animation: its value as an int.
    void OnProgressChanged(const QVariant& value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_first;
    QPixmap m_second;
    int m_progress = -1;
    int m_duration = 600;
    QEasingCurve m_overlayEasing{QEasingCurve::Linear};
    QEasingCurve m_blurEasing{QEasingCurve::Linear};
    bool m_opening = false;
    unsigned int m_blurRadius;
    std::unique_ptr<BlurPyramid> m_firstBlurred;
};

} // namespace OrvantaQT
