#pragma once

#include <QDialog>

/// The frameless card with logo, version, credits, web site and update check. Modal;
/// both of its close buttons accept it.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    /// Builds the card; the caller runs it with exec().
    explicit AboutDialog(QWidget *parent = nullptr);
};
