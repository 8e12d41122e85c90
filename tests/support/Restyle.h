#pragma once

#include <functional>

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QString>
#include <QTest>
#include <QWindow>

// What restyles the windows of a program while it runs.

using Restyling = std::function<void()>;
Q_DECLARE_METATYPE(Restyling)

/// Every window hears what a desktop's new theme has Qt send to it.
inline void changeTheme()
{
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow *window : windows) {
        QEvent event(QEvent::ThemeChange);
        QCoreApplication::sendEvent(window, &event);
    }
}

/// The desktop turns to the colours.
inline void changeTheme(const QColor &ground, const QColor &text)
{
    QPalette colors;
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        colors.setColor(QPalette::ColorRole(role), ground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::HighlightedText, QPalette::PlaceholderText})
        colors.setColor(role, text);
    QApplication::setPalette(colors);
    changeTheme();
}

/// Test data: columns "style" and "restyle", with a row for each style and each way of restyling
/// under it. Every one ends with the style that it began with.
inline void addRestylings()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<Restyling>("restyle");
    for (const char *name : {"fusion", "windows"}) {
        const QString style = QLatin1String(name);
        const auto add = [&](const char *way, const Restyling &restyle) {
            QTest::addRow("%s, %s", name, way) << style << restyle;
        };
        add("theme", [] { changeTheme(); });
        add("dark theme", [] { changeTheme(Qt::black, Qt::white); });
        add("light theme", [] { changeTheme(Qt::white, Qt::black); });
        add("style", [style] { QApplication::setStyle(style); });
        add("application's style sheet", [] { qApp->setStyleSheet(qApp->styleSheet() + ' '); });
    }
}
