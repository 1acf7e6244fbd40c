// Used and not defined.
extern "C" void* createBackend();

void* use() {
    return createBackend();
}
