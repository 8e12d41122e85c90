#pragma once

#include <functional>
#include <utility>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

/// A user who waits for a modal dialog of the type and then plays the script in it,
/// while the opener of the dialog is inside its exec(). Lives in the test function; a
/// dialog that the script leaves open is rejected, so that a failed check blocks nothing.
template<typename Dialog>
class ModalScript
{
public:
    explicit ModalScript(std::function<void(Dialog &)> script)
        : script(std::move(script))
    {
        QObject::connect(&poll, &QTimer::timeout, &poll, [this] { playIfOpen(); });
        poll.start(0);
    }

    /// Whether the dialog came up.
    bool hasPlayed() const { return played; }

private:
    void playIfOpen()
    {
        const QPointer<Dialog> dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        poll.stop();
        played = true;
        script(*dialog);
        if (dialog && dialog->isVisible())
            dialog->reject();
    }

    std::function<void(Dialog &)> script;
    QTimer poll;
    bool played = false;
};

/// Runs @p dialog modally, as the program does, with @p script as the user in front of
/// it. Returns what exec() returns.
template<typename Dialog>
int execWith(Dialog &dialog, const std::function<void()> &script)
{
    const ModalScript<Dialog> user([&script](Dialog &) { script(); });
    return dialog.exec();
}

/// Presses the standard button of @p dialog.
inline void press(QDialog &dialog, QDialogButtonBox::StandardButton button)
{
    dialog.findChild<QDialogButtonBox *>()->button(button)->click();
}
