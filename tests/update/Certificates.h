#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QString>
#include <QTemporaryDir>

/// A throw-away certificate authority of one test run. It lives for two days, in a
/// directory that goes away with the object; the openssl program makes it.
class Authority
{
public:
    struct Identity
    {
        QSslCertificate certificate;
        QSslKey key;
    };

    /// Makes the authority. On failure isValid() is false and problem() says why.
    Authority();
    bool isValid() const { return !root.isNull(); }
    QString problem() const { return whatFailed; }
    QSslCertificate certificate() const { return root; }

    /// A server's certificate for the host, a name or an address, signed by this authority;
    /// null on failure.
    Identity issue(const QString &host);

private:
    /// Signed by itself without a signer.
    Identity make(const QString &name, const QByteArray &extensions,
                  const QStringList &signer = {});
    bool run(const QStringList &arguments);
    QString path(const QString &name) const { return directory.filePath(name); }

    QTemporaryDir directory;
    QString whatFailed;
    QSslCertificate root;
};
