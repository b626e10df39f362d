// What the program finds in this library by name. Whoever calls one owns what it answers.
#include "platform/gnome/module/GSettingsKeybindings.h"
#include "platform/gnome/module/PipeWireFrameReader.h"

extern "C" Q_DECL_EXPORT lumacap::gnome::FrameReader *lumacapMakeFrameReader()
{
    return new lumacap::gnome::PipeWireFrameReader;
}

/// Null where GNOME's shortcuts are not installed.
extern "C" Q_DECL_EXPORT lumacap::gnome::Keybindings *lumacapMakeKeybindings()
{
    return lumacap::gnome::GSettingsKeybindings::make().release();
}
