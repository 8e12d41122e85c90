#pragma once

#include <QStringList>

struct AppSettings;

/// Every field of the record as "name=value", for comparing two records in one check.
QStringList fieldsOf(const AppSettings &settings);

/// The fields that the program would find in the store now.
QStringList storedFields();

/// A record in which every field differs from its default.
AppSettings unusualRecord();
