#include "PresetStrip.h"

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
    return PresetStrip::tr("%1 min").arg(minutes);
}

} // namespace

// What does not fit is reached by the wheel or by dragging; a scroll bar would make the strip
// higher.
PresetStrip::PresetStrip(AppSettings *settings, QWidget *parent)
    : QListWidget(parent)
    , settings(settings)
{
    setObjectName(QStringLiteral("presetList"));
    setAccessibleName(tr("Presets"));
    setFlow(QListView::LeftToRight);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setWrapping(false);
    setFixedHeight(38);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSpacing(3);
    refill();

    connect(this, &QListWidget::itemClicked, this, [this](const QListWidgetItem *item) {
        emit presetClicked(item->data(Qt::UserRole).toInt());
    });
    connect(model(), &QAbstractItemModel::rowsMoved, this, &PresetStrip::storeOrder);
}

void PresetStrip::refill()
{
    clear();
    for (const int secs : std::as_const(settings->presets))
        appendItem(secs);
}

void PresetStrip::add(int secs)
{
    if (secs == 0 || settings->presets.contains(secs))
        return;
    settings->presets.append(secs);
    saveSettings(*settings);
    appendItem(secs);
}

void PresetStrip::appendItem(int secs)
{
    auto *item = new QListWidgetItem(presetLabel(secs));
    item->setData(Qt::UserRole, secs);
    item->setTextAlignment(Qt::AlignCenter);
    insertItem(count(), item);
}

void PresetStrip::storeOrder()
{
    settings->presets = listedPresets(*this);
    saveSettings(*settings);
}
