#pragma once

#include <qt_halvo/qt_halvo_global.h>

#include <QtCore/QPointer>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>

class QStackedWidget;
class QTableView;

namespace OrvantaQT {

// The frame that stands in a popup row of a CustomComboBox and shows a picture of its
// page. Mouse events go through it to the popup, which selects the row.
class QT_HALVO_EXPORT WidgetRenderer : public QFrame
{
    Q_OBJECT

public:
    explicit WidgetRenderer(QWidget* page, QWidget* parent = nullptr);
    QWidget* Page() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPointer<QWidget> m_page;
};

// A combo box whose rows are whole widgets (pages): the current page shows in the field,
// and the popup lists pictures of all of them in frames whose style sheets depend on the
// row's place (top, centre, bottom; a single row counts as centre), applied at each opening.
class QT_HALVO_EXPORT CustomComboBox : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(QString TopItemFrameStyleSheet READ GetTopItemFrameStyleSheet WRITE SetTopItemFrameStyleSheet)
    Q_PROPERTY(QString CenterItemFrameStyleSheet READ GetCenterItemFrameStyleSheet WRITE SetCenterItemFrameStyleSheet)
    Q_PROPERTY(QString BottomItemFrameStyleSheet READ GetBottomItemFrameStyleSheet WRITE SetBottomItemFrameStyleSheet)

public:
    explicit CustomComboBox(QWidget* parent = nullptr);
    ~CustomComboBox() override;

    Q_INVOKABLE void AddPage(QWidget* page);
    void InsertPage(int index, QWidget* page, const QVariant& data);
    void RemovePage(int index);
    void SetCurrentIndex(int index);

    QString GetTopItemFrameStyleSheet() const;
    void SetTopItemFrameStyleSheet(const QString& sheet);
    QString GetCenterItemFrameStyleSheet() const;
    void SetCenterItemFrameStyleSheet(const QString& sheet);
    QString GetBottomItemFrameStyleSheet() const;
    void SetBottomItemFrameStyleSheet(const QString& sheet);

    QStackedWidget* Pages() const;
    void showPopup() override;

public Q_SLOTS:
    void OnCurrentIndexChanged(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStackedWidget* m_pages;
    QTableView* m_view;
    QString m_topSheet;
    QString m_centerSheet;
    QString m_bottomSheet;
};

} // namespace OrvantaQT
