#include "Usage.h"

#include <ctime>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QWidget>

#include <malloc.h>
#include <unistd.h>

namespace {

double cpuNow()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

int entries(const QString &directory)
{
    return int(
        QDir(directory).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

} // namespace

double usage::residentKiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No memory figures: %s", qPrintable(file.errorString()));
    const QList<QByteArray> pages = file.readAll().split(' ');
    return pages.at(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024;
}

double usage::heapKiB()
{
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd) / 1024;
}

int usage::openFiles()
{
    return entries(QStringLiteral("/proc/self/fd"));
}

int usage::threads()
{
    return entries(QStringLiteral("/proc/self/task"));
}

int usage::objects()
{
    auto count = int(qApp->findChildren<QObject *>().size());
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        if (!widget->parent())
            count += 1 + int(widget->findChildren<QObject *>().size());
    }
    return count;
}

double usage::cpuSeconds(const std::function<void()> &work)
{
    const double before = cpuNow();
    work();
    return cpuNow() - before;
}
