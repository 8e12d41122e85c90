#pragma once

#include "Record.h"

#include "AppSettings.h"

/// Two records that differ in every field and in the size of their stores. Their many presets
/// make a save take a while.
inline AppSettings savedRecord(bool isFirst)
{
    AppSettings settings = isFirst ? AppSettings() : unusualRecord();
    settings.presets.clear();
    for (int i = 0; i < 1000; ++i)
        settings.presets.append(isFirst ? i : 30'000 - i);
    if (isFirst)
        settings.bgImagePath = QString(500, QLatin1Char('p'));
    return settings;
}
