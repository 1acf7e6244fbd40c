#include "Thrown.h"

#include <exception>

using ZOL::RegistryAccess::Registry;

namespace support {

namespace {

Thrown describe(const char* errorClass, const Registry::GenericRegistryError& error) {
    return {errorClass, error.lineNumber(), error.message(), error.filename(), error.what()};
}

} // namespace

Thrown thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception&) { // first, as the others must not be of this class
        return {"another", 0, "", "", ""};
    } catch (const Registry::AccessDenied& error) {
        return describe("AccessDenied", error);
    } catch (const Registry::OpenError& error) {
        return describe("OpenError", error);
    } catch (const Registry::CreationError& error) {
        return describe("CreationError", error);
    } catch (const Registry::NotFound& error) {
        return describe("NotFound", error);
    } catch (const Registry::NotInitialized& error) {
        return describe("NotInitialized", error);
    } catch (const Registry::GenericRegistryError& error) {
        return describe("GenericRegistryError", error);
    } catch (...) {
        return {"another", 0, "", "", ""};
    }
    return {};
}

std::string summaryOf(const Thrown& thrown) {
    return thrown.errorClass.empty() ? "nothing"
                                     : thrown.errorClass + " " + std::to_string(thrown.line);
}

Registry::Bytes bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string text(const Registry::Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

} // namespace support
