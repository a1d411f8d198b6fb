#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTcpServer>

#include <functional>
#include <map>
#include <vector>

class QTcpSocket;

namespace cardreel::test {

/// A PNG of one colour.
QByteArray tilePng(int side = 256);

/// A small web server on loopback that answers as a test tells it, well or badly, and remembers what it was asked. On
/// the test's own thread.
class TileServer : public QTcpServer
{
    Q_OBJECT

public:
    enum class Manner {
        Whole,
        Endless, ///< without a length, closed at the end
        Cut,     ///< closed half-way
        Closed,  ///< without a word
        Held,    ///< only when release() is called
    };
    struct Request
    {
        QByteArray path;
        std::map<QByteArray, QByteArray> headers; ///< by lower-case names
    };
    struct Reply
    {
        int status = 200;
        QByteArray body = {};
        QByteArray headers = {}; ///< lines with "\r\n"
        Manner manner = Manner::Whole;
    };

    TileServer();

    QString url() const { return QStringLiteral("http://127.0.0.1:%1/{z}/{x}/{y}.png").arg(m_port); }
    /// What is answered; without it a tile.
    std::function<Reply(const Request&)> answer;
    /// The tile comes for all that is held, and no more is held.
    void release();
    /// As a server that is gone, and that is back at the same address.
    void goAway();
    void comeBack();

    std::vector<Request> requests;
    size_t mostHeld = 0;
    size_t held() const { return m_held.size(); }
    int dropped = 0; ///< held ones of which the client thought better

private:
    void accept();
    void read(QTcpSocket* socket);
    void reply(QTcpSocket* socket, const Request& request);
    static void send(QTcpSocket* socket, const Reply& reply);

    QHash<QTcpSocket*, QByteArray> m_received;
    std::vector<QTcpSocket*> m_held;
    quint16 m_port = 0;
    bool m_isReleased = false;
};

} // namespace cardreel::test
