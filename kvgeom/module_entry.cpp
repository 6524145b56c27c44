// SPDX-License-Identifier: MIT

// The entry point of the DLL. Nothing of the library belongs to a thread, so Windows need not call
// it whenever one of the process's threads starts or ends. Windows refuses the wish of a DLL with
// thread-local storage, which MinGW's startup code brings along; the calls then do nothing.

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}
