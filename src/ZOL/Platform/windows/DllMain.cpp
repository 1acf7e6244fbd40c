#include <windows.h>

#include <boost/thread/detail/tss_hooks.hpp>

// The module's entry function. It only notifies Boost.Thread, a static library without an entry
// function of its own, of the end of threads and of the process. Static initialisation does all
// work at load time.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_THREAD_DETACH:
        boost::on_thread_exit();
        break;
    case DLL_PROCESS_DETACH:
        boost::on_thread_exit();
        boost::on_process_exit();
        break;
    default:
        break;
    }
    return TRUE;
}
