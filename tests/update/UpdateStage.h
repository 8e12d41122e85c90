#pragma once

#include <functional>

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include "UpdateServer.h"

class QLabel;
class QNetworkReply;

/// A message box as the user saw it.
struct SeenBox
{
    QString title;
    QString text;
    QString informativeText;
};

/// What stands around an update check: the endpoint, the user in front of the message boxes, and
/// the browser.
class UpdateStage : public QObject
{
    Q_OBJECT

public:
    /// Sends every request of this process through the server. Without its certificate the
    /// test fails.
    UpdateStage();
    ~UpdateStage() override;

    UpdateServer server;

    /// Done with each message box that comes up, after it was noted. Without an own
    /// action, the box is closed.
    void setAction(const std::function<void(QMessageBox &)> &action) { act = action; }
    /// Presses the button with the text by mouse in each message box that comes up.
    void press(const QString &buttonText);

    /// The message boxes that came up so far.
    QList<SeenBox> boxes() const { return seen; }
    QStringList texts() const;
    /// The addresses that the browser was asked to open, encoded.
    QStringList opened() const { return addresses; }
    /// The requests' replies so far; null for one that is destroyed.
    QList<QPointer<QNetworkReply>> replies() const { return tracked; }
    /// Runs the event loop until @p count replies have come, every one is destroyed, and no
    /// box is open; false if that takes longer than it ever should.
    bool settle(int count = 1);
    /// Has an updater of its own check once, and settles.
    bool check(bool silent = true);
    bool check(const QByteArray &answer, bool silent = true);
    /// Runs the event loop until @p condition is met; false as above. Message boxes must
    /// open below an event loop, as they do in the program: without one around it, a box's
    /// own loop would run deletions that are due only after it.
    bool waitUntil(const std::function<bool()> &condition);

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    void open(const QUrl &url) { addresses.append(QString(url.toEncoded())); }

private:
    void lookForBox();

    std::function<void(QMessageBox &)> act;
    QTimer look;
    QPointer<QMessageBox> last;
    QList<SeenBox> seen;
    QStringList addresses;
    QList<QPointer<QNetworkReply>> tracked;
};

/// The authority that this process trusts, with its server's certificate for the
/// endpoint's host; made on first use, and added to the default TLS configuration.
Authority &trustedAuthority();
const Authority::Identity &endpointIdentity();

/// What the message boxes say.
extern const QString upToDateText;
QString offerText(const QString &version);

/// The body of an update document for the product.
QByteArray updateDocument(const QString &version, const QString &downloadUrl = {},
                          const QString &releaseNotes = {});
