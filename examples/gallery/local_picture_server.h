#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>

class QTcpServer;

// The gallery's own small HTTP server on the loopback interface: pictures it paints
// itself at "/picture/<n>.jpg", the same after two seconds at "/slow/<n>.jpg", and 404 for
// anything else, so that the images page can show network pictures without a network.
class LocalPictureServer : public QObject
{
    Q_OBJECT

public:
    explicit LocalPictureServer(QObject* parent = nullptr);

    // Listens on 127.0.0.1 at a free port; false (and the reason on stderr) when it cannot.
    bool Start();
    bool IsListening() const;
    quint16 Port() const;
    int Requests() const { return m_requests; }

Q_SIGNALS:
    void Answered(int requests);

private:
    void Serve();
    QByteArray Picture(int number);

    QTcpServer* m_server;
    QHash<int, QByteArray> m_pictures;
    int m_requests = 0;
};
