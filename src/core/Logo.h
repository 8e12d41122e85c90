#pragma once

#include <QString>

/// Where the logo picture is compiled in.
inline const QString logoPath = QStringLiteral(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png");
