// Saves two records in turn until it is killed; says so on standard output after the second.

#include <cstdio>

#include <QCoreApplication>

#include "AppSettings.h"
#include "SavedRecords.h"

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const AppSettings first = savedRecord(true);
    const AppSettings second = savedRecord(false);
    for (int round = 0;; ++round) {
        saveSettings(first);
        saveSettings(second);
        if (round == 0) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}
