#pragma once

namespace backendcheck {

constexpr int exitGood = 0;
constexpr int exitWrong = 1;
constexpr int exitCannotCheck = 2;

} // namespace backendcheck
