#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

/// Whether the Windows that the test runs on is Wine.
inline bool isWine()
{
#ifdef Q_OS_WIN
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
#else
    return false;
#endif
}
