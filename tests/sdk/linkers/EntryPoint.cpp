extern "C" void* createBackend() {
    return nullptr;
}
