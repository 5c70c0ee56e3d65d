#include <qt_halvo/images/network_image_label.h>

namespace OrvantaQT {

struct NetworkImageLabel::Private
{
};

NetworkImageLabel::NetworkImageLabel(QWidget* parent) : QWidget(parent), d(new Private) {}
NetworkImageLabel::~NetworkImageLabel() { delete d; }
QUrl NetworkImageLabel::GetUrl() const { return {}; }
void NetworkImageLabel::SetUrl(const QUrl&) {}
QPixmap NetworkImageLabel::GetPlaceholder() const { return {}; }
void NetworkImageLabel::SetPlaceholder(const QPixmap&) {}
QPixmap NetworkImageLabel::GetErrorPixmap() const { return {}; }
void NetworkImageLabel::SetErrorPixmap(const QPixmap&) {}
int NetworkImageLabel::GetFadeDuration() const { return 0; }
void NetworkImageLabel::SetFadeDuration(int) {}
NetworkImageLoader* NetworkImageLabel::GetLoader() const { return nullptr; }
void NetworkImageLabel::SetLoader(NetworkImageLoader*) {}
NetworkImageLabel::State NetworkImageLabel::GetState() const { return State::Empty; }
QImage NetworkImageLabel::Image() const { return {}; }
QString NetworkImageLabel::ErrorString() const { return {}; }
QSize NetworkImageLabel::sizeHint() const { return QWidget::sizeHint(); }
void NetworkImageLabel::paintEvent(QPaintEvent*) {}
void NetworkImageLabel::resizeEvent(QResizeEvent*) {}
void NetworkImageLabel::changeEvent(QEvent* event) { QWidget::changeEvent(event); }

} // namespace OrvantaQT
