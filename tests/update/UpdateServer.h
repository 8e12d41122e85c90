#pragma once

#include <QByteArray>
#include <QList>
#include <QTcpServer>

#include "Certificates.h"

class QSslSocket;

/// The update endpoint on loopback. It is an HTTP proxy: it grants every tunnel that it is
/// asked for and is the host at its end, over TLS. So the program under test asks for the
/// real address and checks the certificate that it would check out there.
class UpdateServer : public QTcpServer
{
    Q_OBJECT

public:
    /// What comes back for each request in turn; the last one stays. An empty answer is
    /// none at all: the connection stays open and silent.
    struct Answer
    {
        QByteArray bytes;
        bool thenClose = false;
    };

    UpdateServer() { listen(QHostAddress::LocalHost); }

    /// The certificate to show; null breaks the handshake.
    void setIdentity(const Authority::Identity &identity) { shown = identity; }
    void setAnswers(const QList<Answer> &answers) { pending = answers; }
    void setAnswer(const QByteArray &bytes) { pending = {{bytes}}; }
    /// Whether a tunnel is granted; otherwise the proxy answers with an error.
    void setGrantsTunnels(bool on) { grantsTunnels = on; }

    /// The tunnels asked for, as "host:port", and the requests through them, in order.
    QList<QByteArray> tunnels() const { return asked; }
    QList<QByteArray> requests() const { return received; }

    /// Sends a late answer to the request at @p index.
    void answerLater(int index, const QByteArray &bytes);

protected:
    void incomingConnection(qintptr handle) override;

private:
    void openTunnel(QSslSocket *socket, const QByteArray &head);
    void answerRequest(QSslSocket *socket, const QByteArray &head);

    Authority::Identity shown;
    QList<Answer> pending;
    bool grantsTunnels = true;
    QList<QByteArray> asked;
    QList<QByteArray> received;
    QList<QSslSocket *> requesters;
};

/// A complete answer with the status line's text and the body.
QByteArray httpAnswer(const QByteArray &body, const QByteArray &status = "200 OK",
                      const QByteArray &moreHeaders = {});
