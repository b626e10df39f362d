#pragma once

#include <QByteArray>

#include <map>

namespace lumacap::harness {

/// The whole environment of a process, by name.
using Environment = std::map<QByteArray, QByteArray>;

/// What a process needs of the environment the tests run in (where programs are, options of the
/// sanitizers), and nothing that could lead it to the tester's own desktop.
Environment bareEnvironment();

} // namespace lumacap::harness
