#pragma once

#include <functional>
#include <optional>

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "SettingsDialog.h"

/// The looks of a key's label, idle and waiting for a key.
inline const QString normalKeyLook =
    QStringLiteral("background:#2b2b2b;color:#e8e8e8;border:1px solid #444;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");
inline const QString waitingKeyLook =
    QStringLiteral("background:#5c4a00;color:#ffa500;border:1px solid #ffa500;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");

/// The settings dialog with its Shortcuts page in front, to be run with a person at the keyboard.
struct KeyCapture
{
    AppSettings record;
    std::optional<SettingsDialog> dialog;

    void run(const std::function<void()> &script, const AppSettings &start = {})
    {
        record = start;
        dialog.emplace(&record, nullptr);
        execWith(*dialog, [&] {
            view().showPage(QStringLiteral("Shortcuts"));
            script();
        });
    }
    DialogView view() { return DialogView(*dialog); }
    void clickSetKey(int row) { QTest::mouseClick(view().setKeyButton(row), Qt::LeftButton); }
    void clickClear(int row) { QTest::mouseClick(view().clearKeyButton(row), Qt::LeftButton); }
    /// By the window system's way: to the grabber if there is one, else to the focus.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        // Without a text: Qt's table of them lacks keys like AltGr.
        QTest::sendKeyEvent(QTest::Click, dialog->windowHandle(), key, QString(), modifiers);
    }
    /// One event with the modifiers as flags only, as a button panel sends it.
    void pressAlone(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&*dialog, &event);
    }

    QString keys(int row) { return view().keyLabel(row)->text(); }
    bool isGrabbed() const { return QWidget::keyboardGrabber() == &*dialog; }
    bool isWaiting(int row)
    {
        return keys(row) == QLatin1String("Press any key...")
            && view().keyLabel(row)->styleSheet() == waitingKeyLook
            && view().setKeyButton(row)->text() == QLatin1String("Cancel");
    }
    bool isIdle(int row)
    {
        return keys(row) != QLatin1String("Press any key...")
            && view().keyLabel(row)->styleSheet() == normalKeyLook
            && view().setKeyButton(row)->text() == QLatin1String("Set Key");
    }
    bool areAllIdle()
    {
        for (int row = 0; row < 5; ++row) {
            if (!isIdle(row))
                return false;
        }
        return true;
    }
};
