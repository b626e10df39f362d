#pragma once

#include <QString>

#include <memory>

namespace lumacap::gnome {

class FrameReader;

/// The part of the program that needs PipeWire: a library of its own, so that a session that takes
/// its pictures in another way does not load PipeWire with the program.
class Module {
public:
    /// Finds and loads it: in lib/lumacap/modules beside the folder that the program is in. What it
    /// makes is null afterwards where it is not there or can't be loaded.
    Module();
    /// The same with the library at `path`.
    explicit Module(const QString &path);

    bool isLoaded() const { return m_makeFrameReader != nullptr; }
    /// Null without the library.
    std::unique_ptr<FrameReader> makeFrameReader() const;

private:
    FrameReader *(*m_makeFrameReader)() = nullptr;
};

} // namespace lumacap::gnome
