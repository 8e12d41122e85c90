#include "UpdateServer.h"

#include <memory>

#include <QSslSocket>

void UpdateServer::answerLater(int index, const QByteArray &bytes)
{
    requesters.at(index)->write(bytes);
}

void UpdateServer::incomingConnection(qintptr handle)
{
    auto *socket = new QSslSocket(this);
    socket->setSocketDescriptor(handle);
    auto head = std::make_shared<QByteArray>();
    connect(socket, &QSslSocket::readyRead, this, [this, socket, head] {
        *head += socket->readAll();
        if (!head->endsWith("\r\n\r\n"))
            return;
        if (socket->isEncrypted())
            answerRequest(socket, *head);
        else
            openTunnel(socket, *head);
        head->clear();
    });
}

void UpdateServer::openTunnel(QSslSocket *socket, const QByteArray &head)
{
    asked.append(head.mid(8, head.indexOf(' ', 8) - 8)); // after "CONNECT "
    if (!grantsTunnels) {
        socket->write("HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n");
        return;
    }
    socket->write("HTTP/1.1 200 Connection established\r\n\r\n");
    socket->flush();
    socket->setLocalCertificate(shown.certificate);
    socket->setPrivateKey(shown.key);
    socket->startServerEncryption();
}

void UpdateServer::answerRequest(QSslSocket *socket, const QByteArray &head)
{
    received.append(head);
    requesters.append(socket);
    const Answer answer = pending.size() > 1 ? pending.takeFirst() : pending.value(0);
    socket->write(answer.bytes);
    if (answer.thenClose)
        socket->disconnectFromHost();
}

QByteArray httpAnswer(const QByteArray &body, const QByteArray &status,
                      const QByteArray &moreHeaders)
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: application/json\r\n" + moreHeaders
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}
