#pragma once

#include <QString>

class QFrame;
class QLabel;
class QWidget;

/// A section's title as makeTitle() makes it, dressed as on every page of the dialog.
QLabel *makeSectionHeader(const QString &title, QWidget *input = nullptr);

/// The line between two sections of a page.
QFrame *makeSeparator();
