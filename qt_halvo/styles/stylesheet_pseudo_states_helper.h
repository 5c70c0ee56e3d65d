#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QObject>

class QAbstractButton;

namespace OrvantaQT {

// Keeps the style properties "hovered" and "selected" of a button current, so that its
// stylesheet can test them. With fixHover, leaving the button for one of its own child
// widgets does not end the hover.
class QT_HALVO_EXPORT StylesheetPseudoStatesHelper : public QObject
{
    Q_OBJECT

public:
    StylesheetPseudoStatesHelper(QAbstractButton* button, bool fixHover);

    // Takes effect at the next Leave.
    void SetFixHover(bool fixHover);

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void UpdateStyle();

private:
    QAbstractButton* m_button = nullptr;
    bool m_hovered = false;
    bool m_fixHover = false;
};

} // namespace OrvantaQT
