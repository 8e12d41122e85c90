#pragma once

#include <QImage>
#include <QTest>

#include "OutputWindow.h"

// Pictures to lie behind all else, and how to see what does.

/// Saves a picture of nothing but @p color at @p path, whatever its suffix says.
inline void savePicture(const QString &path, const QColor &color, const char *format = "png")
{
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(color);
    QVERIFY(picture.save(path, format));
}

/// The colour near the corner, within the top and the left margin: nothing but the ground is
/// drawn there.
inline QColor cornerColour(OutputWindow &window)
{
    return window.grab().toImage().pixelColor(2, 2);
}
