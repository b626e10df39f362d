// What the program finds in this library by name. Whoever calls one owns what it answers.
#include "platform/gnome/module/PipeWireFrameReader.h"

extern "C" Q_DECL_EXPORT lumacap::gnome::FrameReader *lumacapMakeFrameReader()
{
    return new lumacap::gnome::PipeWireFrameReader;
}
