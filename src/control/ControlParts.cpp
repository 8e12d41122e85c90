#include "ControlParts.h"

#include "Button.h"

QPushButton *makeButton(const QString &text, const QString &name)
{
    auto *button = new Button(text);
    button->setAccessibleName(name);
    return button;
}

QPushButton *makeCheckable(const QString &text, const QString &name, bool checked)
{
    QPushButton *button = makeButton(text, name);
    button->setCheckable(true);
    button->setChecked(checked);
    return button;
}

QPushButton *makeHooked(const QString &text, const QString &name, const QString &objectName)
{
    QPushButton *button = makeButton(text, name);
    button->setObjectName(objectName);
    return button;
}

QPushButton *makeFixedWidth(const QString &text, const QString &name, int width)
{
    QPushButton *button = makeButton(text, name);
    button->setFixedWidth(width);
    return button;
}
