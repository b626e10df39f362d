#include "platform/gnome/Module.h"

#include "platform/gnome/FrameReader.h"

#include <QCoreApplication>
#include <QLibrary>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

Module::Module()
    : Module(QCoreApplication::applicationDirPath() + u"/../lib/lumacap/modules/gnome.so"_s)
{
}

Module::Module(const QString &path)
    // It stays loaded: what it made may live on.
    : m_makeFrameReader(
          reinterpret_cast<FrameReader *(*)()>(QLibrary(path).resolve("lumacapMakeFrameReader")))
{
}

std::unique_ptr<FrameReader> Module::makeFrameReader() const
{
    return std::unique_ptr<FrameReader>(m_makeFrameReader == nullptr ? nullptr
                                                                     : m_makeFrameReader());
}

} // namespace lumacap::gnome
