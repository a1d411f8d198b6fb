#include "platform/map/TileServer.h"

#include <QBuffer>
#include <QImage>
#include <QTcpSocket>

#include <algorithm>

namespace cardreel::test {

using namespace Qt::StringLiterals;

QByteArray tilePng(int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.data();
}

TileServer::TileServer()
{
    // What the tests' surroundings have for a proxy mustn't stand between.
    for (const char* name : {"http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY"})
        qunsetenv(name);
    connect(this, &QTcpServer::newConnection, this, &TileServer::accept);
    comeBack();
}

void TileServer::goAway()
{
    close();
    for (QTcpSocket* socket : m_received.keys())
        socket->abort();
}

void TileServer::comeBack()
{
    if (!listen(QHostAddress::LocalHost, m_port))
        qFatal("%s", qPrintable(errorString()));
    m_port = serverPort();
}

void TileServer::release()
{
    m_isReleased = true;
    for (QTcpSocket* socket : std::exchange(m_held, {}))
        send(socket, {.body = tilePng()});
}

void TileServer::accept()
{
    while (QTcpSocket* socket = nextPendingConnection()) {
        m_received.insert(socket, {});
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            dropped += static_cast<int>(std::erase(m_held, socket));
            m_received.remove(socket);
            socket->deleteLater();
        });
    }
}

void TileServer::read(QTcpSocket* socket)
{
    QByteArray& received = m_received[socket];
    received += socket->readAll();
    const qsizetype end = received.indexOf("\r\n\r\n");
    if (end < 0)
        return;
    QList<QByteArray> lines = received.left(end).split('\n');
    received.remove(0, end + 4);
    Request request{.path = lines.takeFirst().split(' ').value(1), .headers = {}};
    for (const QByteArray& line : lines) {
        const qsizetype colon = line.indexOf(':');
        request.headers[line.left(colon).toLower()] = line.mid(colon + 1).trimmed();
    }
    requests.push_back(request);
    reply(socket, request);
}

void TileServer::reply(QTcpSocket* socket, const Request& request)
{
    Reply reply = answer ? answer(request) : Reply{.body = tilePng()};
    if (reply.manner == Manner::Held && m_isReleased)
        reply = {.body = tilePng()};
    if (reply.manner == Manner::Held) {
        m_held.push_back(socket);
        mostHeld = std::max(mostHeld, m_held.size());
    } else {
        send(socket, reply);
    }
}

void TileServer::send(QTcpSocket* socket, const Reply& reply)
{
    if (reply.manner != Manner::Closed) {
        const QByteArray end = reply.manner == Manner::Endless
                                   ? QByteArray("Connection: close")
                                   : "Content-Length: " + QByteArray::number(reply.body.size());
        const qsizetype sent = reply.manner == Manner::Cut ? reply.body.size() / 2 : reply.body.size();
        // In one piece: the second of two would wait for the first one's acknowledgement.
        socket->write("HTTP/1.1 " + QByteArray::number(reply.status) + " As told\r\n" + reply.headers + end +
                      "\r\n\r\n" + reply.body.left(sent));
    }
    if (reply.manner != Manner::Whole)
        socket->disconnectFromHost();
}

} // namespace cardreel::test
