#include "UpdateStage.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QTest>

#include "Find.h"
#include "Updater.h"
#include "Vendor.h"

namespace {

constexpr int patienceMs = 20000;

// "" takes what has no scheme at all.
const QStringList schemes{"https", "http", "ftp", "file", "javascript", ""};

} // namespace

const QString upToDateText = "You're up to date.\nVersion 1.1.4";

QString offerText(const QString &version)
{
    return "<b>Velmora " + version + " is available</b><br>You have 1.1.4.";
}

UpdateStage::UpdateStage()
{
    QVERIFY2(!endpointIdentity().certificate.isNull(), qPrintable(trustedAuthority().problem()));
    QApplication::setQuitOnLastWindowClosed(false); // no window of the program is around
    server.setIdentity(endpointIdentity());
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", server.serverPort()));
    for (const QString &scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, this, "open");
    connect(&look, &QTimer::timeout, this, &UpdateStage::lookForBox);
    look.start(5);
    qApp->installEventFilter(this);
}

UpdateStage::~UpdateStage()
{
    qApp->removeEventFilter(this);
    for (const QString &scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

void UpdateStage::press(const QString &buttonText)
{
    act = [buttonText](QMessageBox &box) {
        if (auto *button = findByText<QAbstractButton>(box, buttonText)) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
        box.close();
        QFAIL(qPrintable("No button " + buttonText));
    };
}

QStringList UpdateStage::texts() const
{
    QStringList texts;
    for (const SeenBox &box : seen)
        texts.append(box.text);
    return texts;
}

bool UpdateStage::check(const QByteArray &answer, bool silent)
{
    server.setAnswer(answer);
    return check(silent);
}

bool UpdateStage::check(bool silent)
{
    Updater updater;
    updater.check(silent);
    return settle();
}

bool UpdateStage::settle(int count)
{
    return waitUntil([this, count] {
        return tracked.size() == count && tracked.count(nullptr) == count
            && !QApplication::activeModalWidget();
    });
}

bool UpdateStage::waitUntil(const std::function<bool()> &condition)
{
    QEventLoop loop;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &loop, [&] {
        if (condition())
            loop.quit();
    });
    poll.start(5);
    QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
    loop.exec();
    return condition();
}

// The network manager has no parent and cannot be found; its replies show themselves by
// the events that reach them.
bool UpdateStage::eventFilter(QObject *watched, QEvent *event)
{
    if (auto *reply = qobject_cast<QNetworkReply *>(watched)) {
        if (!tracked.contains(reply))
            tracked.append(reply);
    }
    return QObject::eventFilter(watched, event);
}

void UpdateStage::lookForBox()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || box == last || !box->isVisible())
        return;
    last = box;
    seen.append({box->windowTitle(), box->text(), box->informativeText()});
    if (act)
        act(*box);
    else
        box->close();
}

Authority &trustedAuthority()
{
    static Authority authority;
    return authority;
}

const Authority::Identity &endpointIdentity()
{
    static const Authority::Identity identity = [] {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificate(trustedAuthority().certificate());
        QSslConfiguration::setDefaultConfiguration(configuration);
        return trustedAuthority().issue(vendorUpdateHost);
    }();
    return identity;
}

QByteArray updateDocument(const QString &version, const QString &downloadUrl,
                          const QString &releaseNotes)
{
    const QJsonObject product{
        {"version", version}, {"downloadUrl", downloadUrl}, {"releaseNotes", releaseNotes}};
    return QJsonDocument(QJsonObject{{"velmora", product}}).toJson();
}
