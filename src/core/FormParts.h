#pragma once

#include <QString>

class QFrame;
class QLabel;

/// A horizontal line between two sections, dressed in @p styleSheet if one is given.
/// Without parent: the layout that it is added to adopts it.
QFrame *makeLine(const QString &styleSheet = {});

/// A section's title in capitals, without parent. The caller gives it its look.
QLabel *makeTitle(const QString &title);
