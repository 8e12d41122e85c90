#pragma once

#include <QListWidget>

struct AppSettings;

/// The Control window's presets: one row of chips, which the operator clicks and drags into order.
///
/// The record's list is the truth, and the strip shows it. A new order is saved at once.
class PresetStrip : public QListWidget
{
    Q_OBJECT

public:
    /// Shows the presets of @p settings, which is not owned and must outlive the strip.
    explicit PresetStrip(AppSettings *settings, QWidget *parent = nullptr);

    /// Shows the record's list again; nothing is selected then.
    void refill();
    /// Appends a preset of @p secs seconds and saves the record. 0 and a preset that is there
    /// already change nothing.
    void add(int secs);

signals:
    /// The operator has clicked the preset of @p secs seconds.
    void presetClicked(int secs);

private:
    void appendItem(int secs);
    void storeOrder();

    AppSettings *settings;
};
