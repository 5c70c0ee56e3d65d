#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtWidgets/QComboBox>

namespace OrvantaQT {

// A combo box that shows a greyed placeholder text while nothing is selected.
class QT_HALVO_EXPORT ComboBoxWithPlaceholder : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(QString PlaceholderText READ GetPlaceholderText WRITE SetPlaceholderText)

public:
    explicit ComboBoxWithPlaceholder(QWidget* parent = nullptr);

    QString GetPlaceholderText() const;
    void SetPlaceholderText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_placeholderText;
};

} // namespace OrvantaQT
