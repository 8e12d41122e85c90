#include "Stepper.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSpinBox>

#include "Button.h"

namespace {

constexpr int stepperHeight = 32;
constexpr int buttonWidth = 28;
constexpr int spinBoxMinimumWidth = 80;

const QString spinBoxStyle =
    QStringLiteral("QSpinBox { background:#2b2b2b; color:#e8e8e8;"
                   "           border-top:1px solid #444; border-bottom:1px solid #444;"
                   "           border-left:none; border-right:none;"
                   "           border-radius:0; padding:6px 6px; }");
const QString buttonStyle = QStringLiteral(
    "QPushButton { background:#3a3a3a; color:#ffffff; font-size:11px; font-weight:bold;"
    "              border:1px solid #444; padding:0 8px 4px 8px; }"
    "QPushButton:hover   { background:#505050; color:#ffffff; }"
    "QPushButton:pressed { background:#1a6633; color:#ffffff; }");
const QString leftEdgeStyle =
    QStringLiteral("QPushButton { border-radius:3px 0 0 3px; border-right:none; }");
const QString rightEdgeStyle =
    QStringLiteral("QPushButton { border-radius:0 3px 3px 0; border-left:none; }");

// One click is one step: auto-repeat stays off, so that a held button does not run away.
QPushButton *makeStepButton(const QString &text, const QString &edgeStyle)
{
    auto *button = new Button(text);
    button->setStyleSheet(buttonStyle + edgeStyle);
    button->setFixedSize(buttonWidth, stepperHeight);
    return button;
}

// The arrow alone says nothing, and several steppers stand in one window. A value without
// a name leaves the action alone.
void nameStepButtons(QPushButton *downButton, QPushButton *upButton, const QString &valueName)
{
    const QString value = valueName.toLower();
    const QString down = QCoreApplication::translate("Stepper", "Decrease %1").arg(value);
    const QString up = QCoreApplication::translate("Stepper", "Increase %1").arg(value);
    downButton->setAccessibleName(down.trimmed());
    upButton->setAccessibleName(up.trimmed());
}

} // namespace

QWidget *makeStepper(QSpinBox *spinBox)
{
    spinBox->setButtonSymbols(QAbstractSpinBox::NoButtons);
    spinBox->setAlignment(Qt::AlignCenter);
    spinBox->setMinimumWidth(spinBoxMinimumWidth);
    spinBox->setStyleSheet(spinBoxStyle);
    spinBox->setFixedHeight(stepperHeight);

    QPushButton *downButton = makeStepButton(QStringLiteral("◀"), leftEdgeStyle);
    QPushButton *upButton = makeStepButton(QStringLiteral("▶"), rightEdgeStyle);
    QObject::connect(downButton, &QPushButton::clicked, spinBox, &QSpinBox::stepDown);
    QObject::connect(upButton, &QPushButton::clicked, spinBox, &QSpinBox::stepUp);
    nameStepButtons(downButton, upButton, spinBox->accessibleName());

    auto *container = new QWidget;
    container->setFixedHeight(stepperHeight);
    container->setAttribute(Qt::WA_TranslucentBackground);

    auto *layout = new QHBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setAlignment(Qt::AlignVCenter);
    layout->addWidget(downButton, 0, Qt::AlignVCenter);
    layout->addWidget(spinBox, 0, Qt::AlignVCenter);
    layout->addWidget(upButton, 0, Qt::AlignVCenter);
    return container;
}
