#include "Certificates.h"

#include <QFile>
#include <QHostAddress>
#include <QProcess>

Authority::Authority()
    : root(make("authority",
                "basicConstraints = critical, CA:TRUE\nkeyUsage = keyCertSign\n"
                "subjectKeyIdentifier = hash\n")
               .certificate)
{
}

Authority::Identity Authority::issue(const QString &host)
{
    const QByteArray kind = QHostAddress(host).isNull() ? "DNS:" : "IP:";
    return make("server",
                "basicConstraints = CA:FALSE\nextendedKeyUsage = serverAuth\nsubjectAltName = "
                    + kind + host.toLatin1() + '\n',
                {"-CA", path("authority.pem"), "-CAkey", path("authority.key")});
}

Authority::Identity Authority::make(const QString &name, const QByteArray &extensions,
                                    const QStringList &signer)
{
    Identity identity;
    QFile settings(path(name + ".conf"));
    if (!settings.open(QIODevice::WriteOnly)) {
        whatFailed = "no directory for certificates: " + settings.errorString();
        return identity;
    }
    settings.write("[req]\ndistinguished_name = name\nprompt = no\nx509_extensions = extensions\n"
                   "[name]\nCN = Throw-away "
                   + name.toLatin1() + " of a test\n[extensions]\n" + extensions);
    settings.close();
    QFile key(path(name + ".key"));
    const QString certificate = path(name + ".pem");
    const QString kind =
        "req -x509 -days 2 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes";
    const QStringList files{"-config", settings.fileName(), "-keyout", key.fileName(),
                            "-out",    certificate};
    if (run(kind.split(' ') + files + signer) && key.open(QIODevice::ReadOnly)) {
        identity.key = QSslKey(&key, QSsl::Ec);
        identity.certificate = QSslCertificate::fromPath(certificate).value(0);
    }
    return identity;
}

bool Authority::run(const QStringList &arguments)
{
    QProcess openssl;
    openssl.setProcessChannelMode(QProcess::MergedChannels);
    openssl.start("openssl", arguments);
    if (!openssl.waitForStarted()) {
        whatFailed = "the openssl program, which makes the test's certificates, does not start: "
            + openssl.errorString();
        return false;
    }
    openssl.waitForFinished();
    if (openssl.exitStatus() == QProcess::NormalExit && openssl.exitCode() == 0)
        return true;
    whatFailed =
        "openssl " + arguments.join(' ') + ": " + QString::fromLocal8Bit(openssl.readAll());
    return false;
}
