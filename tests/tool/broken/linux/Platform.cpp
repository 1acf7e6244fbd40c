#include "../Platform.h"

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

void blockSignal() {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

void changeUmask() {
    ::umask(0135);
}

void replaceStandardError() {
    const int file = ::open("own.log", O_WRONLY | O_CREAT, 0600);
    ::dup2(file, 2);
    ::close(file);
}

void openForever(const char* name) {
    (void)std::fopen(name, "a");
}

void* mapMemory(std::size_t size) {
    return mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
}
