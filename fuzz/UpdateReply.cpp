// The reply to an update check. A first byte chooses the mode, how the reply fails if it does,
// what the user does with the box that appears, and what the rest is: the body itself, or the
// version, the address and the notes of a document that is written here.
//
// - A box appears exactly when a second, independent comparison says that there is something to
//   say, it is the right one, and it says the version and the notes as received, escaped.
// - An address is opened exactly after "Download", and only if it begins with "https:"; a plain
//   one is opened as it is. Nothing else is ever handed to the system.
// - The reply is freed, whatever it was.

#include <algorithm>
#include <cstring>

#include <QApplication>
#include <QDesktopServices>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageBox>
#include <QNetworkReply>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <QUrl>

#include "Fuzzing.h"
#include "NewerVersion.h"
#include "Updater.h"
#include "Version.h"

namespace {

class FinishedReply : public QNetworkReply
{
    Q_OBJECT

public:
    FinishedReply(const QByteArray &body, bool failed)
        : body(body)
    {
        if (failed)
            setError(QNetworkReply::ContentNotFoundError, QStringLiteral("Not found"));
        open(QIODevice::ReadOnly);
        setFinished(true);
    }

    void abort() override { }
    qint64 bytesAvailable() const override
    {
        return body.size() - taken + QNetworkReply::bytesAvailable();
    }

protected:
    qint64 readData(char *data, qint64 most) override
    {
        const qint64 size = std::min(most, qint64(body.size()) - taken);
        if (size == 0)
            return -1;
        std::memcpy(data, body.constData() + taken, std::size_t(size));
        taken += size;
        return size;
    }

private:
    QByteArray body;
    qint64 taken = 0;
};

enum class Answer
{
    Download,
    Later,
    Close
};

/// The user and the browser.
class Stage : public QObject
{
    Q_OBJECT

public:
    Stage()
    {
        // "" takes what has no scheme at all. Any other goes on to the platform, which warns.
        for (const char *scheme : {"https", "http", "ftp", "file", "javascript", ""})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
        connect(&look, &QTimer::timeout, this, &Stage::lookForBox);
    }

    void begin(Answer answerToGive)
    {
        answer = answerToGive;
        boxes.clear();
        opened.clear();
        look.start(0);
    }
    void end() { look.stop(); }

    struct Box
    {
        QString title;
        QString text;
        QString notes;
    };

    QList<Box> boxes;
    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened.append(url); }

private:
    void lookForBox()
    {
        QWidget *window = QApplication::activeModalWidget();
        if (!window)
            return;
        auto *box = qobject_cast<QMessageBox *>(window);
        require(box, "A window that is no message box");
        boxes.append({box->windowTitle(), box->text(), box->informativeText()});
        if (answer == Answer::Close) {
            box->close();
            return;
        }
        const auto role =
            answer == Answer::Download ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if (buttons.size() == 1 || box->buttonRole(button) == role) {
                button->click();
                return;
            }
        }
        require(false, "No button to press");
    }

    Answer answer = Answer::Close;
    QTimer look;
};

struct Document
{
    QString version;
    QString downloadUrl;
    QString releaseNotes;
};

// Qt's reading of a body that may be anything.
Document readDocument(const QByteArray &body)
{
    const QJsonValue product =
        QJsonDocument::fromJson(body).object().value(QLatin1String("velmora"));
    const auto member = [&product](const char *key) {
        const QJsonValue value = product.toObject().value(QLatin1String(key));
        return value.isString() ? value.toString() : QString();
    };
    return {member("version"), member("downloadUrl"), member("releaseNotes")};
}

QByteArray quoted(const QString &text)
{
    QByteArray bytes = "\"";
    for (const QChar character : text) {
        bytes += "\\u";
        bytes += QByteArray::number(character.unicode(), 16).rightJustified(4, '0');
    }
    return bytes + '"';
}

QByteArray writtenDocument(const Document &document)
{
    return "{\"velmora\":{\"version\":" + quoted(document.version)
        + ",\"downloadUrl\":" + quoted(document.downloadUrl)
        + ",\"releaseNotes\":" + quoted(document.releaseNotes) + "}}";
}

bool isPlainAddress(const QString &text)
{
    static const QRegularExpression plain(
        QStringLiteral("\\Ahttps://[a-z][a-z0-9]{0,9}(\\.[a-z][a-z0-9]{0,9}){1,3}"
                       "(/[a-z0-9]{1,9}){0,3}\\z"));
    return plain.match(text).hasMatch();
}

Updater *makeUpdater(bool silent)
{
    auto *updater = new Updater(qApp);
    // The mode is set by a request, which finds nobody who listens and is over by itself.
    if (!silent)
        updater->check(false);
    return updater;
}

void handOver(Updater *updater, const QByteArray &body, bool failed)
{
    const QPointer<QNetworkReply> reply = new FinishedReply(body, failed);
    require(QMetaObject::invokeMethod(updater, "onReply", Qt::DirectConnection,
                                      Q_ARG(QNetworkReply *, reply)),
            "No slot for a reply");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    require(!reply, "The reply is not freed");
}

void requireBox(const Stage &stage, bool offered, bool confirmed, const Document &document)
{
    const QString ownVersion = QLatin1String(velmoraVersion);
    require(stage.boxes.size() == (offered || confirmed ? 1 : 0), "The number of boxes is",
            QString::number(stage.boxes.size()));
    if (stage.boxes.isEmpty())
        return;
    const Stage::Box &box = stage.boxes.constFirst();
    if (confirmed) {
        require(box.title == QLatin1String("Velmora"), "Another title:", box.title);
        require(box.text == QLatin1String("You're up to date.\nVersion ") + ownVersion,
                "Another text:", box.text);
        return;
    }
    require(box.title == QStringLiteral("Update Available — Velmora"), "Another title:", box.title);
    require(box.text
                == QLatin1String("<b>Velmora ") + document.version
                    + QLatin1String(" is available</b><br>You have ") + ownVersion
                    + QLatin1Char('.'),
            "Another text:", box.text);
    require(box.notes == document.releaseNotes.toHtmlEscaped(), "Other notes:", box.notes);
}

void requireAddress(const Stage &stage, bool accepted, const QString &address)
{
    if (!accepted || !address.startsWith(QLatin1String("https:"))) {
        require(stage.opened.isEmpty(), "An address is opened:", address);
        return;
    }
    require(stage.opened.size() <= 1, "An address is opened twice:", address);
    for (const QUrl &url : stage.opened)
        require(url.scheme() == QLatin1String("https") && url.isValid(), "Not safe:", address);
    if (isPlainAddress(address)) {
        require(stage.opened == QList<QUrl>{QUrl(address)},
                "A plain address is not opened:", address);
    }
}

// The platform says so when it is asked to open something that the stage has not caught.
void watchPlatform(const QString &warning)
{
    require(!warning.contains(QLatin1String("openUrl"))
                && !warning.contains(QLatin1String("services")),
            "Handed to the system:", warning);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *const stage = new Stage;
    static auto *const silentUpdater = makeUpdater(true);
    static auto *const askedUpdater = makeUpdater(false);
    onWarning(watchPlatform);

    Input input(data, size);
    const int choices = input.choice(256);
    const bool silent = (choices & 1) != 0;
    const bool failed = (choices & 6) == 6; // one in four
    const bool whole = (choices & 8) != 0;
    const bool wide = (choices & 16) != 0;
    const auto answer = choices < 128 ? Answer::Download
        : choices < 192               ? Answer::Later
                                      : Answer::Close;

    Document document;
    QByteArray body;
    if (whole) {
        body = input.rest();
        document = readDocument(body);
    } else {
        document.version = textOf(input.line(), wide);
        document.downloadUrl = textOf(input.line(), wide);
        document.releaseNotes = textOf(input.rest(), wide);
        body = writtenDocument(document);
    }

    stage->begin(answer);
    handOver(silent ? silentUpdater : askedUpdater, body, failed);
    stage->end();

    const bool readable = !failed && !document.version.isEmpty();
    const bool offered =
        readable && isNewerVersion(document.version, QLatin1String(velmoraVersion));
    requireBox(*stage, offered, readable && !offered && !silent, document);
    requireAddress(*stage, offered && answer == Answer::Download, document.downloadUrl);
    return 0;
}

#include "UpdateReply.moc"
