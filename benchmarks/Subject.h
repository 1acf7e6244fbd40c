#pragma once

#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "Names.h"
#include "Row.h"

/// The workloads of everything that logs: the product, its floors and the peers.
namespace benchmarks {

inline constexpr Workload plainText = {"plain text, one thread", 1000};
inline constexpr Workload plainTextTwoThreads = {"plain text, two threads", 200000};
inline constexpr Workload typedLine = {"text, int, double, string", 1000};
inline constexpr Workload levelAsked = {"level that is off, asked", 10000};
inline constexpr Workload levelOffLine = {"level that is off, a line", 10000};
inline constexpr Workload shortNames = {"logger by name of 11, among 1000", 1000};
inline constexpr Workload longNames = {"logger by name of 33, among 1000", 1000};

inline constexpr char fortyCharacters[] = "the quick brown fox jumps over the dog..";
static_assert(sizeof(fortyCharacters) == 40 + 1, "must have forty characters");

// A line has four parts: this text, the number of the line, and the next two. Six digits show the
// double in full, so that every library writes the same text for it.
inline constexpr char lineStart[] = "text ";
inline constexpr double lineNumber = 3.14159;

/// Its value is not known at compile time.
inline const std::string& lineWord() {
    static const std::string word = "twelve chars";
    return word;
}

/// Makes the rows of a subject: a class whose constructor does what a program does once, such as
/// finding its logger, and whose member functions perform one operation each. It needs only those
/// whose rows are made:
///
///     void logText();              logs fortyCharacters
///     void logLine(int number);    logs the four parts, with that number
///     bool isDebugActive();        false
///     void logDebugLine(int number);
///     auto find(const std::string& name);
///     static void prepareNames();  makes all names known to find
///     static ByteCounter& counter();
template <typename Subject>
struct SubjectRows {
    Role role;
    const char* name;
    void (*prepare)() = nullptr;
    void (*finish)() = nullptr;

    Row text() const { return row<runText>(plainText); }
    Row textOnTwoThreads() const { return row<runTextOnTwoThreads>(plainTextTwoThreads); }
    Row line() const { return row<runLine>(typedLine); }
    Row level() const { return {levelAsked, role, name, runLevel, prepare, finish}; }
    Row debugLine() const { return row<runDebugLine>(levelOffLine); }
    Row shortName() const {
        return {shortNames, role, name, runNames<shortNameLength>, Subject::prepareNames};
    }
    Row longName() const {
        return {longNames, role, name, runNames<longNameLength>, Subject::prepareNames};
    }

    std::vector<Row> all() const {
        return {text(), textOnTwoThreads(), line(), level(), debugLine(), shortName(), longName()};
    }

private:
    template <void (*run)(std::size_t)>
    Row row(const Workload& workload) const {
        return {workload, role, name, run, prepare, finish, delivered<run, Subject::counter>};
    }

    static void runText(std::size_t n) {
        Subject subject;
        for (std::size_t i = 0; i < n; ++i) {
            subject.logText();
        }
    }

    static void runTextOnTwoThreads(std::size_t n) {
        std::thread other(runText, n / 2);
        runText(n - n / 2);
        other.join();
    }

    static void runLine(std::size_t n) {
        Subject subject;
        for (std::size_t i = 0; i < n; ++i) {
            subject.logLine(static_cast<int>(i));
        }
    }

    static void runLevel(std::size_t n) {
        Subject subject;
        for (std::size_t i = 0; i < n; ++i) {
            keep(subject.isDebugActive());
        }
    }

    static void runDebugLine(std::size_t n) {
        Subject subject;
        for (std::size_t i = 0; i < n; ++i) {
            subject.logDebugLine(static_cast<int>(i));
        }
    }

    template <std::size_t length>
    static void runNames(std::size_t n) {
        Subject subject;
        inTurn<length>(n, [&](const std::string& known) { keep(subject.find(known)); });
    }
};

} // namespace benchmarks
