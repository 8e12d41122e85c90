#pragma once

#include <QStringList>

#include "RecordFields.h"

/// Every field of the record as "name=value", so that a comparison that fails prints both.
QStringList fieldLines(const AppSettings &settings);

/// The fields that the program would find in the store now.
QStringList storedLines();
