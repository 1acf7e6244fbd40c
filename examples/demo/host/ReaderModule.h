#pragma once

#include <memory>

#include "DemoModules.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace Demo {

/// The module DemoReader, with a file open.
class ReaderModule {
public:
    /// @param library must outlive the object, and whatever its functions throw.
    ReaderModule(const ZOL::Gadgets::DLL::DLLHolder& library, const char* path)
        : next_(library.resolve<decltype(demoReaderNext)>("demoReaderNext")),
          view_(library.resolve<decltype(demoReaderView)>("demoReaderView")),
          reader_(library.resolve<decltype(demoReaderOpen)>("demoReaderOpen")(path),
                  library.resolve<decltype(demoReaderClose)>("demoReaderClose")) {}

    bool next(Line& line) const { return next_(reader_.get(), &line); }

    View view() const {
        View view;
        view_(&view);
        return view;
    }

private:
    decltype(demoReaderNext)* next_;
    decltype(demoReaderView)* view_;
    std::unique_ptr<Reader, decltype(demoReaderClose)*> reader_;
};

} // namespace Demo
