#include "local_picture_server.h"

#include <QtCore/QBuffer>
#include <QtCore/QPointer>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

LocalPictureServer::LocalPictureServer(QObject* parent)
    : QObject(parent)
    , m_server(new QTcpServer(this))
{
    connect(m_server, &QTcpServer::newConnection, this, &LocalPictureServer::Serve);
}

bool LocalPictureServer::Start()
{
    if (m_server->isListening())
        return true;
    if (m_server->listen(QHostAddress::LocalHost))
        return true;
    QTextStream(stderr) << "The picture server cannot listen: " << m_server->errorString() << "\n";
    return false;
}

bool LocalPictureServer::IsListening() const
{
    return m_server->isListening();
}

quint16 LocalPictureServer::Port() const
{
    return m_server->serverPort();
}

void LocalPictureServer::Serve()
{
    while (QTcpSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            // One request a connection, read once its head is complete.
            if (!socket->canReadLine() || socket->property("answered").toBool())
                return;
            const QList<QByteArray> words = socket->readLine().split(' ');
            socket->setProperty("answered", true);
            const QByteArray path = words.value(1);
            bool isNumber = false;
            const int number = path.mid(path.lastIndexOf('/') + 1).replace(".jpg", "").toInt(&isNumber);
            const bool slow = path.startsWith("/slow/");
            const bool known = isNumber && (path.startsWith("/picture/") || slow);
            const QByteArray body = known ? Picture(number) : QByteArray("not here");
            const QByteArray head = QByteArray(known ? "HTTP/1.1 200 OK\r\nContent-Type: image/jpeg\r\nCache-Control: max-age=3600\r\n"
                                           : "HTTP/1.1 404 Not Found\r\nContent-Type: text/plain\r\n")
                + "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n";
            Q_EMIT Answered(++m_requests);
            const QPointer<QTcpSocket> guarded(socket);
            QTimer::singleShot(slow ? 2000 : 0, this, [guarded, head, body] {
                if (!guarded)
                    return;
                guarded->write(head + body);
                guarded->disconnectFromHost();
            });
        });
    }
}

QByteArray LocalPictureServer::Picture(int number)
{
    auto cached = m_pictures.constFind(number);
    if (cached != m_pictures.cend())
        return *cached;
    // A landscape of its own colour with its number, 640 x 480.
    QImage image(640, 480, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor sky = QColor::fromHsv((number * 47) % 360, 90, 235);
    QLinearGradient gradient(0, 0, 0, 480);
    gradient.setColorAt(0, sky);
    gradient.setColorAt(1, sky.darker(160));
    painter.fillRect(image.rect(), gradient);
    painter.setBrush(sky.darker(220));
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(QPolygon({{0, 480}, {180 + number % 5 * 20, 220}, {330, 380}, {470, 200}, {640, 480}}));
    painter.setBrush(QColor(255, 244, 200));
    painter.drawEllipse(QPoint(520, 110), 46, 46);
    QFont font = painter.font();
    font.setPixelSize(120);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(QColor(255, 255, 255, 220));
    painter.drawText(image.rect().adjusted(40, 30, 0, 0), Qt::AlignLeft | Qt::AlignTop, QString::number(number));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 85);
    m_pictures.insert(number, bytes);
    return bytes;
}
