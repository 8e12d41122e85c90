#pragma once

#include <QNetworkAccessManager>
#include <QObject>

class QNetworkReply;

/// Asks the vendor's endpoint for the newest version and offers to open its download page.
///
/// One check is one HTTPS request. Every failure is swallowed without a word: no network,
/// an error status, a reply that is not the expected document.
class Updater : public QObject
{
    Q_OBJECT

public:
    /// Asks nothing yet; see check().
    explicit Updater(QObject *parent = nullptr);

    /// Sends one request and returns at once. A newer version is always offered; with
    /// @p silent off, the user also sees that the program is up to date. The answer
    /// is treated in the mode of the last call.
    void check(bool silent);

    /// Starts a check that also confirms that the program is up to date. The updater
    /// behind it is deliberately never deleted: it must outlive the dialog whose button
    /// started it, since that may be closed before the reply arrives.
    static void checkInteractively();

    /// Whether the version text @p remote is newer than @p local. Three numbers count,
    /// separated by dots; one that is missing or not a 32-bit decimal counts as 0.
    static bool isNewer(const QString &remote, const QString &local);

private slots:
    /// Evaluates one reply and schedules it for deletion.
    void onReply(QNetworkReply *reply);

private:
    void offer(const QString &version, const QString &downloadUrl, const QString &releaseNotes);

    QNetworkAccessManager network;
    bool silent = true;
};
