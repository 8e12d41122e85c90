#pragma once

#include <QString>

class QFrame;
class QLabel;
class QWidget;

/// A section's title as makeTitle() makes it, in the look that the dialog's headers share.
QLabel *makeSectionHeader(const QString &title, QWidget *input = nullptr);

/// The line between two sections of a page.
QFrame *makeSeparator();
