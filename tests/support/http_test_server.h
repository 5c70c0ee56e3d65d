#pragma once

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtCore/QVector>
#include <QtNetwork/QTcpServer>

class QTcpSocket;

namespace TestSupport {

// One answer of the loopback server. A route answers its n-th hit with its n-th answer
// (the last one again after that).
struct HttpAnswer
{
    using Headers = QList<QPair<QByteArray, QByteArray>>;
    HttpAnswer(int status = 200, const QByteArray& body = {}, const Headers& headers = {}, int delay = 0)
        : status(status), body(body), headers(headers), delay(delay) {}

    int status = 200;
    QByteArray body;
    Headers headers; // Cache-Control, ETag, Last-Modified, Content-Type...
    int delay = 0;        // ms before answering; -1 never answers
    int truncateAt = -1;  // sends this many bytes of the body (Content-Length says all), then closes
    bool close = false;   // closes the connection without an answer

    static HttpAnswer Redirect(const QByteArray& location, int status = 302)
    {
        return HttpAnswer(status, {}, {{"Location", location}});
    }
};

// A loopback HTTP/1.1 server (127.0.0.1, a free port) for network tests. An answer with an
// ETag or Last-Modified header is given as 304 to a request whose If-None-Match or
// If-Modified-Since matches it. Unknown paths get 404.
class HttpTestServer : public QObject
{
    Q_OBJECT

public:
    explicit HttpTestServer(QObject* parent = nullptr);

    bool IsListening() const { return m_server->isListening(); }
    QUrl Url(const QString& path) const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server->serverPort()).arg(path));
    }

    void SetRoute(const QString& path, const QVector<HttpAnswer>& answers) { m_routes[path] = answers; }
    void SetRoute(const QString& path, const HttpAnswer& answer) { SetRoute(path, QVector<HttpAnswer>{answer}); }

    // Requests for path so far, and the headers of each (names in lower case).
    int Hits(const QString& path) const { return m_requests.value(path).size(); }
    QList<QMap<QByteArray, QByteArray>> Requests(const QString& path) const { return m_requests.value(path); }
    int TotalHits() const;
    // Answers given as 304.
    int NotModified() const { return m_notModified; }
    // Connections the client closed while their request was waiting for its answer.
    int ClosedWhileWaiting() const { return m_closedWhileWaiting; }
    void ResetCounts();

private:
    void Read(QTcpSocket* socket);
    void Answer(QTcpSocket* socket, const HttpAnswer& answer, const QMap<QByteArray, QByteArray>& request);

    QTcpServer* m_server = nullptr;
    QHash<QString, QVector<HttpAnswer>> m_routes;
    QHash<QString, QList<QMap<QByteArray, QByteArray>>> m_requests;
    QHash<QTcpSocket*, QByteArray> m_buffers;
    QHash<QTcpSocket*, int> m_waiting;
    int m_notModified = 0;
    int m_closedWhileWaiting = 0;
};

} // namespace TestSupport
