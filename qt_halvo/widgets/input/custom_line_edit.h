#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QLineEdit>

class QLabel;
class QStackedWidget;
class QToolButton;

namespace OrvantaQT {

class ButtonContainer;
class MovieWidget;
class RightAlignComboBox;

// A line edit with a control at its left end and a right-aligned combo box at its right
// end, both inside its frame, and an edit cycle: StartEditText() when editing begins
// (typing, or focus by mouse or tab), then AcceptEditText() on Return, or
// CancelEditText() on Return with nothing typed.
//
// The left control (leftControlMode): 0 nothing, 1 a static label, 2 a busy animation
// that becomes a button under the mouse, 3 a button. Their looks come from style sheets,
// through the object names "ButtonContainer", "StaticLabel", "AnimationLabel" (a
// MovieWidget with the property "PreloaderAnimation16"), "Button" and "ComboBox"; the
// sheet must also give the text room (text margins).
class QT_HALVO_EXPORT CustomLineEdit : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(int leftControlMode READ leftControlMode WRITE setLeftControlMode)
    Q_PROPERTY(bool comboBoxVisible READ comboBoxVisible WRITE setComboBoxVisible)

public:
    explicit CustomLineEdit(QWidget* parent = nullptr);
    ~CustomLineEdit() override;

    int leftControlMode() const;
    bool comboBoxVisible() const;

    void ShowStaticLabel();
    void ShowAnimation();
    void ShowButton();

    // Replaces the items, right-aligned; index becomes current when it is -1 < index < count
    // (below -1 clears the selection).
    void FillComboBox(const QStringList& items, int index);
    void ClearComboBox();
    int ComboBoxCurrentIndex() const;
    void ResetComboBoxSelection();
    // Shown after the combo box's text, which is shortened to leave room for it.
    void SetComboBoxConstEnding(const QString& ending);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void ButtonClicked();
    void StartEditText();
    void CancelEditText();
    void AcceptEditText();
    void ComboBoxIndexChanged(int newIndex);
    void ComboBoxActivated(int index);

public Q_SLOTS:
    void setLeftControlMode(int mode);
    void setComboBoxVisible(bool visible);

private Q_SLOTS:
    void SendStartEdit();

private:
    ButtonContainer* CreateButtonContainer();
    void CreateComboBox();
    void UpdateView();
    void OnReturnPressed();
    void UpdateComboBoxText();

    QPointer<QLabel> m_staticLabel;
    QPointer<MovieWidget> m_movieWidget;
    QPointer<QToolButton> m_button;
    QPointer<QWidget> m_emptyPage;
    QPointer<ButtonContainer> m_buttonContainer;
    QPointer<QStackedWidget> m_stackedWidget;
    RightAlignComboBox* m_comboBox = nullptr;
    int m_leftControlMode = 0;
    bool m_leftHovered = false;
    bool m_editing = false;
};

} // namespace OrvantaQT
