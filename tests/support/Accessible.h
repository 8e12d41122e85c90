#pragma once

#include <QAccessible>
#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

// A window as a screen reader and the Tab key find it. Only what is visible counts, so the
// window is on the screen; its tests run with the application's style sheet.

/// What a screen reader says about one thing in a window.
struct Told
{
    QString kind;        // "button", "check", "radio", "spin", "edit", "list", "item", "tab", …
    QString name;        // what is said
    QString label;       // the name of what labels it; empty without
    QString description; // what is said in addition; empty without
};

/// The controls below @p window, in the order of the accessible tree: everything of a
/// control's role, every picture, and whatever else Tab stops at. What is left out is
/// printed with the reason.
QList<Told> controls(QWidget &window);

/// The same as one text each: "button Start", "spin Minutes (SET TIME)".
QStringList controlLines(QWidget &window);

/// The visible plain texts as "05:00", or with what is said in addition as "05:00 (Timer)".
QStringList textLines(QWidget &window);

/// The names that nobody would say: without a letter or digit, or with a symbol in it.
QStringList unsayableNames(QWidget &window);

/// The names that two or more of the window's buttons share.
QStringList sharedButtonNames(QWidget &window);

/// The inputs that nothing labels and that are not named after the unit which they show.
QStringList unlabelledInputs(QWidget &window);

/// The widgets that Tab stops at, in its order, from the window's first on.
QList<QWidget *> tabStops(QWidget &window);

/// Where Tab goes up, or left within a row; one text each, empty in a good order.
QStringList tabDetours(QWidget &window);
