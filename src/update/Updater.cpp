#include "Updater.h"

#include <array>

#include <QDesktopServices>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QList>
#include <QMessageBox>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPushButton>
#include <QTextDocument>
#include <QUrl>

#include "Vendor.h"
#include "Version.h"

namespace {

const QString ownVersion = QLatin1String(velmoraVersion);

// Major, minor, patch; what follows the third part is ignored.
std::array<int, 3> versionNumbers(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    std::array<int, 3> numbers{};
    for (qsizetype i = 0; int &number : numbers) {
        const QString part = parts.value(i++);
        // 0 for what is no 32-bit decimal. Qt would read as far as a NUL character.
        number = part.contains(QChar::Null) ? 0 : part.toInt();
    }
    return numbers;
}

// The URL class folds the scheme to lower case, so the text as received is asked.
bool isHttpsUrl(const QString &text)
{
    return text.startsWith(QLatin1String("https:")) && QUrl(text, QUrl::TolerantMode).isValid();
}

// Sets the escaped notes, and shows them as they were written.
void setNotes(QMessageBox &box, const QString &notes)
{
    const QString escaped = notes.toHtmlEscaped();
    box.setInformativeText(escaped);
    const QList<QLabel *> labels = box.findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->text() != escaped)
            continue;
        // The box leaves the format to a guess, which may take "&amp;" for plain text.
        label->setTextFormat(escaped == notes ? Qt::PlainText : Qt::RichText);
        // Asking for the size fills the rich text's document, in which lines run together.
        // Should a version of Qt have no such document, only the line breaks are lost.
        label->sizeHint();
        if (auto *document = label->findChild<QTextDocument *>())
            document->setPlainText(notes);
    }
}

} // namespace

Updater::Updater(QObject *parent)
    : QObject(parent)
{
    connect(&network, &QNetworkAccessManager::finished, this, &Updater::onReply);
}

void Updater::check(bool silent)
{
    this->silent = silent;
    QNetworkRequest request(
        QUrl(QStringLiteral("https://%1/api/versions.json").arg(QLatin1String(vendorUpdateHost)),
             QUrl::TolerantMode));
    request.setRawHeader("User-Agent", QByteArray("Velmora/") + velmoraVersion);
    network.get(request);
}

void Updater::checkInteractively()
{
    // The list is never deleted either, so a leak checker does not take them for lost.
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
    static auto *const kept = new QList<Updater *>;
    kept->append(new Updater);
    kept->constLast()->check(false);
}

bool Updater::isNewer(const QString &remote, const QString &local)
{
    return versionNumbers(remote) > versionNumbers(local);
}

void Updater::onReply(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError)
        return;

    const QJsonObject product = QJsonDocument::fromJson(reply->readAll())
                                    .object()
                                    .value(QLatin1String("velmora"))
                                    .toObject();
    const QString version = product.value(QLatin1String("version")).toString();
    if (version.isEmpty())
        return;

    if (isNewer(version, ownVersion)) {
        offer(version, product.value(QLatin1String("downloadUrl")).toString(),
              product.value(QLatin1String("releaseNotes")).toString());
    } else if (!silent) {
        QMessageBox::information(nullptr, tr("Velmora"),
                                 tr("You're up to date.\nVersion %1").arg(ownVersion));
    }
}

void Updater::offer(const QString &version, const QString &downloadUrl, const QString &releaseNotes)
{
    QMessageBox box;
    box.setWindowTitle(tr("Update Available — Velmora"));
    box.setIcon(QMessageBox::Information);
    box.setTextFormat(Qt::RichText);
    // Both at once: a version text that holds "%2" is not filled in again.
    box.setText(tr("<b>Velmora %1 is available</b><br>You have %2.").arg(version, ownVersion));
    // The box would have a screen reader say the mark-up.
    box.setAccessibleName(tr("Velmora %1 is available. You have %2.").arg(version, ownVersion));
    if (!releaseNotes.isEmpty())
        setNotes(box, releaseNotes);
    // The box would follow a link in the version text. It is shown, but only "Download" opens
    // anything.
    const QList<QLabel *> labels = box.findChildren<QLabel *>();
    for (QLabel *label : labels)
        label->setOpenExternalLinks(false);
    const QPushButton *downloadBtn = box.addButton(tr("Download"), QMessageBox::AcceptRole);
    box.addButton(tr("Later"), QMessageBox::RejectRole);
    box.exec();

    if (box.clickedButton() == downloadBtn && isHttpsUrl(downloadUrl))
        QDesktopServices::openUrl(QUrl(downloadUrl, QUrl::TolerantMode));
}
