#include "DemoModules.h"
#include "reader/Reader.h"

namespace Demo {

Reader* demoReaderOpen(const char* path) {
    return new Reader(path);
}

void demoReaderClose(Reader* reader) {
    delete reader;
}

bool demoReaderNext(Reader* reader, Line* line) {
    return reader->next(*line);
}

void demoReaderView(View* view) {
    *view = viewOfThisSide();
}

} // namespace Demo
