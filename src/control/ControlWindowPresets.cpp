#include "ControlWindow.h"

#include <QListWidget>
#include <QSpinBox>

#include "AppSettings.h"
#include "FormHelpers.h"

namespace {

// Deliberately not the figure's format: whole minutes are a count of minutes.
QString presetLabel(int secs)
{
    const int minutes = secs / 60;
    const int rest = secs % 60;
    if (rest > 0)
        return QStringLiteral("%1:%2").arg(minutes).arg(rest, 2, 10, QLatin1Char('0'));
    return ControlWindow::tr("%1 min").arg(minutes);
}

} // namespace

// One row of chips. What does not fit is reached by the wheel or by dragging; a scroll bar
// would make the strip higher.
void ControlWindow::buildPresetList()
{
    presetList = new QListWidget;
    presetList->setObjectName(QStringLiteral("presetList"));
    presetList->setAccessibleName(tr("Presets"));
    presetList->setFlow(QListView::LeftToRight);
    presetList->setDragDropMode(QAbstractItemView::InternalMove);
    presetList->setDefaultDropAction(Qt::MoveAction);
    presetList->setSelectionMode(QAbstractItemView::SingleSelection);
    presetList->setWrapping(false);
    presetList->setFixedHeight(38);
    presetList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    presetList->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    presetList->setSpacing(3);
    fillPresetList();

    connect(presetList, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem *item) { onPreset(item->data(Qt::UserRole).toInt()); });
    connect(presetList->model(), &QAbstractItemModel::rowsMoved, this,
            &ControlWindow::storePresetOrder);
}

void ControlWindow::fillPresetList()
{
    presetList->clear();
    for (const int secs : std::as_const(settings->presets))
        appendPresetItem(secs);
}

void ControlWindow::appendPresetItem(int secs)
{
    auto *item = new QListWidgetItem(presetLabel(secs));
    item->setData(Qt::UserRole, secs);
    item->setTextAlignment(Qt::AlignCenter);
    presetList->insertItem(presetList->count(), item);
}

// Loading never starts the timer; a running count stops at the new value.
void ControlWindow::onPreset(int secs)
{
    loadDuration(secs);
    showInSetTimeRow(secs);
}

void ControlWindow::addPreset()
{
    const int secs = setTimeSeconds();
    if (secs == 0 || settings->presets.contains(secs))
        return;
    settings->presets.append(secs);
    saveSettings(*settings);
    appendPresetItem(secs);
}

void ControlWindow::storePresetOrder()
{
    settings->presets = listedPresets(*presetList);
    saveSettings(*settings);
}
