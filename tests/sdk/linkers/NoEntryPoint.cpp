// A usual mistake: the name is mangled.
void* createBackend() {
    return nullptr;
}
