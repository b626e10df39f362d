#pragma once

#include <QString>

#include <memory>

namespace lumacap::gnome {

class FrameReader;
class Keybindings;

/// The part of the program that needs PipeWire and GLib: a library of its own, so that a session
/// that has other ways does not load them with the program.
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
    /// Null without the library, and where GNOME's shortcuts are not installed.
    std::unique_ptr<Keybindings> makeKeybindings() const;

private:
    FrameReader *(*m_makeFrameReader)() = nullptr;
    Keybindings *(*m_makeKeybindings)() = nullptr;
};

} // namespace lumacap::gnome
