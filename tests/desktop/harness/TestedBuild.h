#pragma once

#include <QString>

#include <cstdint>

namespace lumacap::harness {

/// The path of a program that is tested, given the one that this build made at `built`. Where the
/// environment names the tree of another build in LUMACAP_TESTED_BUILD, its program of that name is
/// tested: one with sanitizers is, without building the tests with them.
QString testedProgram(const QString &built);

/// What a process that frees all may seem to grow by: sanitizers keep what was freed.
std::int64_t keptBySanitizer();

} // namespace lumacap::harness
