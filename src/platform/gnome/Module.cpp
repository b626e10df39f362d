#include "platform/gnome/Module.h"

#include "platform/gnome/FrameReader.h"
#include "platform/gnome/Keybindings.h"

#include <QCoreApplication>
#include <QLibrary>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

Module::Module()
    : Module(QCoreApplication::applicationDirPath() + u"/../lib/lumacap/modules/gnome.so"_s)
{
}

Module::Module(const QString &path)
{
    QLibrary library(path); // stays loaded: what it made may live on
    m_makeFrameReader =
        reinterpret_cast<decltype(m_makeFrameReader)>(library.resolve("lumacapMakeFrameReader"));
    m_makeKeybindings =
        reinterpret_cast<decltype(m_makeKeybindings)>(library.resolve("lumacapMakeKeybindings"));
}

std::unique_ptr<FrameReader> Module::makeFrameReader() const
{
    return std::unique_ptr<FrameReader>(m_makeFrameReader == nullptr ? nullptr
                                                                     : m_makeFrameReader());
}

std::unique_ptr<Keybindings> Module::makeKeybindings() const
{
    return std::unique_ptr<Keybindings>(m_makeKeybindings == nullptr ? nullptr
                                                                     : m_makeKeybindings());
}

} // namespace lumacap::gnome
