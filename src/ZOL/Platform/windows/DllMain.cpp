#include <windows.h>

#include <boost/thread/detail/tss_hooks.hpp>

// The module's entry function. All load work is static initialisation; what is left to do here is
// to tell Boost.Thread, a static library without an entry function of its own, of ending threads
// and of the end of the process.
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

namespace boost {

// Boost.Thread asks for this by name as a promise that somebody calls its hooks.
void tss_cleanup_implemented();
void tss_cleanup_implemented() {}

} // namespace boost
