#pragma once

#include <functional>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "SettingsDialog.h"

struct EditedRecord
{
    AppSettings record;
    SettingsDialog dialog{&record, nullptr};
};

/// The settings dialog over a record of its own, and the user in front of it.
struct Editor : EditedRecord, DialogView
{
    explicit Editor(const AppSettings &start = {})
        : EditedRecord{start}
        , DialogView(dialog)
    {
    }
    /// Runs the dialog modally with the script. What the script leaves open is rejected.
    int run(const std::function<void()> &script) { return execWith(dialog, script); }
    /// The same, and presses OK at the script's end.
    int runToOk(const std::function<void()> &script = [] {})
    {
        return run([&] {
            script();
            okButton()->click();
        });
    }
};
