#pragma once

#include <QString>

/// The application-wide dark look. The Control window installs it on the application;
/// the object names that it addresses are set on that window's widgets.
QString applicationStyleSheet();
