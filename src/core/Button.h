#pragma once

#include <QPushButton>
#include <QRadioButton>

/// A push button that draws its label whole, also where its style sheet's padding leaves less
/// room than the label takes. Size, frame and look stay those of QPushButton.
class Button : public QPushButton
{
public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A radio button whose ring stands out from the dark ground while it is not chosen.
class RadioButton : public QRadioButton
{
public:
    using QRadioButton::QRadioButton;

protected:
    void initStyleOption(QStyleOptionButton *option) const override;
};
