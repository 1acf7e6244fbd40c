namespace boost {

// Boost.Thread asks for this function as a sign that its hooks for the end of threads and of the
// process are called: DllMain of each module with this library calls them.
void tss_cleanup_implemented() {}

} // namespace boost
