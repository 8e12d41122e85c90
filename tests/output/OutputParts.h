#pragma once

#include <QBoxLayout>
#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <QTest>

#include "OutputWindow.h"

// The parts of an Output window, found where they stand on the screen.

/// The transparent widget in the middle, which holds figure and clock.
inline QWidget *figureArea(const OutputWindow &window)
{
    return window.layout()->itemAt(0)->widget();
}

inline QLabel *figureLabel(const OutputWindow &window)
{
    return qobject_cast<QLabel *>(figureArea(window)->layout()->itemAt(1)->widget());
}

inline QLabel *clockLabel(const OutputWindow &window)
{
    return qobject_cast<QLabel *>(figureArea(window)->layout()->itemAt(2)->widget());
}

inline QLabel *messageLabel(const OutputWindow &window)
{
    return qobject_cast<QLabel *>(window.layout()->itemAt(1)->widget());
}

inline QProgressBar *progressBar(const OutputWindow &window)
{
    return qobject_cast<QProgressBar *>(window.layout()->itemAt(3)->widget());
}

/// The style sheet of a figure or clock in the colour and the size.
inline QString figureStyle(const QString &color, int pixels)
{
    return QStringLiteral("color:%1;font-size:%2px;font-weight:bold;font-family:monospace;"
                          "background-color:transparent;")
        .arg(color)
        .arg(pixels);
}

/// The style sheet of a message in the colour and the size.
inline QString messageStyle(const QString &color, int pixels)
{
    return QStringLiteral("color:%1;font-size:%2px;background-color:transparent;")
        .arg(color)
        .arg(pixels);
}

/// The style sheet of a bar whose chunk has the colour.
inline QString barStyle(const QString &color)
{
    return QStringLiteral("QProgressBar { background-color:#1a1a1a; border:none; "
                          "border-radius:4px; }QProgressBar::chunk { background-color:%1; "
                          "border-radius:4px; }")
        .arg(color);
}

/// Gives the window a height without showing it, so that @p pixels is not limited by any
/// screen, and lets it follow.
inline void setHeight(OutputWindow &window, int pixels)
{
    window.resize(800, pixels);
    window.refreshSettings();
}

/// Saves a picture of nothing but @p color at @p path, whatever its suffix says.
inline void savePicture(const QString &path, const QColor &color, const char *format = "png")
{
    QImage picture(16, 16, QImage::Format_ARGB32);
    picture.fill(color);
    QVERIFY(picture.save(path, format));
}

/// The colour near the corner, within the top and the left margin: nothing but the ground is
/// drawn there.
inline QColor cornerColour(OutputWindow &window)
{
    return window.grab().toImage().pixelColor(2, 2);
}
