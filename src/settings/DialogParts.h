#pragma once

#include <QString>

class QFrame;
class QLabel;

/// A section's title in capitals, dressed as on every page of the dialog.
QLabel *makeSectionHeader(const QString &title);

/// The line between two sections of a page.
QFrame *makeSeparator();
