#include "http_test_server.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include <numeric>

namespace TestSupport {

HttpTestServer::HttpTestServer(QObject* parent) : QObject(parent), m_server(new QTcpServer(this))
{
    m_server->listen(QHostAddress::LocalHost, 0);
    connect(m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = m_server->nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Read(socket); });
            connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
                if (m_waiting.value(socket) > 0)
                    ++m_closedWhileWaiting;
                m_waiting.remove(socket);
                m_buffers.remove(socket);
                socket->deleteLater();
            });
        }
    });
}

int HttpTestServer::TotalHits() const
{
    return std::accumulate(m_requests.begin(), m_requests.end(), 0,
                           [](int hits, const QList<QMap<QByteArray, QByteArray>>& list) { return hits + list.size(); });
}

void HttpTestServer::ResetCounts()
{
    m_requests.clear();
    m_notModified = m_closedWhileWaiting = 0;
}

void HttpTestServer::Read(QTcpSocket* socket)
{
    QByteArray& buffer = m_buffers[socket];
    buffer += socket->readAll();
    int end;
    while ((end = buffer.indexOf("\r\n\r\n")) >= 0) {
        const QList<QByteArray> lines = buffer.left(end).split('\n');
        buffer.remove(0, end + 4);
        const QString path = QString::fromLatin1(lines.value(0).trimmed().split(' ').value(1));
        QMap<QByteArray, QByteArray> headers;
        for (int i = 1; i < lines.size(); ++i) {
            const int colon = lines[i].indexOf(':');
            if (colon > 0)
                headers.insert(lines[i].left(colon).trimmed().toLower(), lines[i].mid(colon + 1).trimmed());
        }
        QList<QMap<QByteArray, QByteArray>>& requests = m_requests[path];
        requests << headers;
        const QVector<HttpAnswer> answers = m_routes.value(path, {HttpAnswer(404, "not found")});
        const HttpAnswer answer = answers.value(qMin(requests.size(), answers.size()) - 1);
        ++m_waiting[socket];
        if (answer.delay < 0)
            continue;
        QPointer<QTcpSocket> guard(socket);
        QTimer::singleShot(answer.delay, this, [this, guard, answer, headers] {
            if (guard && guard->state() == QAbstractSocket::ConnectedState)
                Answer(guard, answer, headers);
        });
    }
}

void HttpTestServer::Answer(QTcpSocket* socket, const HttpAnswer& answer, const QMap<QByteArray, QByteArray>& request)
{
    --m_waiting[socket];
    if (answer.close) {
        socket->disconnectFromHost();
        return;
    }
    int status = answer.status;
    QByteArray body = answer.body;
    for (const auto& header : answer.headers) {
        const QByteArray name = header.first.toLower();
        if ((name == "etag" && request.value("if-none-match") == header.second)
            || (name == "last-modified" && request.value("if-modified-since") == header.second)) {
            status = 304;
            body.clear();
            ++m_notModified;
        }
    }
    QByteArray out = "HTTP/1.1 " + QByteArray::number(status) + " Status\r\n";
    for (const auto& header : answer.headers)
        out += header.first + ": " + header.second + "\r\n";
    out += "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n";
    const bool cut = answer.truncateAt >= 0 && status != 304;
    out += cut ? body.left(answer.truncateAt) : body;
    socket->write(out);
    if (cut) {
        socket->flush();
        socket->disconnectFromHost();
    }
}

} // namespace TestSupport
