#pragma once

#include <QObject>

#include "Program.h"

/// What all journeys share: each starts from an empty settings store, and at its end the
/// program must end with status 0 and have written nothing to standard error. A failed one
/// leaves a picture of the desktop beside the test's executable.
class Journey : public QObject
{
    Q_OBJECT

protected:
    Program program;

private slots:
    void init();
    void cleanup();
};
