#include "Certificates.h"

#include <QFile>
#include <QHostAddress>
#include <QProcess>

namespace {

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QSslCertificate readCertificate(const QString &path)
{
    return QSslCertificate::fromPath(path).value(0);
}

QStringList newKey(const QString &path)
{
    return {"-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-keyout", path};
}

} // namespace

Authority::Authority()
{
    const QByteArray settings = "[req]\ndistinguished_name = name\nprompt = no\n"
                                "x509_extensions = extensions\n"
                                "[name]\nCN = Throw-away authority of a test\n"
                                "[extensions]\nbasicConstraints = critical, CA:TRUE\n"
                                "keyUsage = keyCertSign\nsubjectKeyIdentifier = hash\n";
    if (!writeFile(path("root.conf"), settings)) {
        whatFailed = "no directory for certificates: " + directory.errorString();
        return;
    }
    if (run(QStringList{"req", "-x509", "-days", "2", "-config", path("root.conf")}
            + newKey(path("root.key")) + QStringList{"-out", path("root.pem")}))
        root = readCertificate(path("root.pem"));
}

Authority::Identity Authority::issue(const QString &host)
{
    const bool isAddress = !QHostAddress(host).isNull();
    const QByteArray settings = "[req]\ndistinguished_name = name\nprompt = no\n"
                                "[name]\nCN = server\n"
                                "[extensions]\nbasicConstraints = CA:FALSE\n"
                                "extendedKeyUsage = serverAuth\n"
                                "subjectAltName = "
        + QByteArray(isAddress ? "IP:" : "DNS:") + host.toLatin1() + "\n";
    Identity identity;
    if (!writeFile(path("server.conf"), settings)
        || !run(QStringList{"req", "-new", "-config", path("server.conf")}
                + newKey(path("server.key")) + QStringList{"-out", path("server.csr")})
        || !run({"x509", "-req", "-days", "2", "-in", path("server.csr"), "-CA", path("root.pem"),
                 "-CAkey", path("root.key"), "-CAcreateserial", "-extfile", path("server.conf"),
                 "-extensions", "extensions", "-out", path("server.pem")}))
        return identity;
    QFile key(path("server.key"));
    if (key.open(QIODevice::ReadOnly))
        identity.key = QSslKey(&key, QSsl::Ec);
    identity.certificate = readCertificate(path("server.pem"));
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
