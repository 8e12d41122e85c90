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

#include "Maker.h"

namespace {

constexpr int patienceMs = 20000;

// "" takes what has no scheme at all.
const QStringList schemes{"https", "http", "ftp", "file", "javascript", ""};

SeenBox note(const QMessageBox &box)
{
    SeenBox seen{.title = box.windowTitle(),
                 .text = box.text(),
                 .informativeText = box.informativeText(),
                 .textFormat = box.textFormat(),
                 .icon = box.icon(),
                 .buttons = {},
                 .roles = {},
                 .standardButtons = box.standardButtons(),
                 .modal = box.isModal(),
                 .hasParent = box.parent() != nullptr};
    const QList<QAbstractButton *> buttons = box.buttons();
    for (QAbstractButton *button : buttons) {
        seen.buttons.append(button->text().remove('&'));
        seen.roles.append(box.buttonRole(button));
    }
    return seen;
}

} // namespace

UpdateStage::UpdateStage()
{
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
        const QList<QAbstractButton *> buttons = box.buttons();
        for (QAbstractButton *button : buttons) {
            if (button->text() == buttonText) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        box.close();
        QFAIL(qPrintable("No button " + buttonText));
    };
}

bool UpdateStage::settle(int count)
{
    return waitUntil([this, count] { return isSettled(count); });
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

bool UpdateStage::isSettled(int count) const
{
    if (tracked.size() != count || QApplication::activeModalWidget())
        return false;
    for (const QPointer<QNetworkReply> &reply : tracked) {
        if (reply)
            return false;
    }
    return true;
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

void UpdateStage::open(const QUrl &url)
{
    addresses.append(QString::fromLatin1(url.toEncoded()));
}

void UpdateStage::lookForBox()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || box == last || !box->isVisible())
        return;
    last = box;
    seen.append(note(*box));
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
        return trustedAuthority().issue(makerUpdateHost);
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
