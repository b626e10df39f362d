#include "harness/InputMethod.h"

#include "harness/WaitFor.h"

#include <tuple>

using namespace Qt::StringLiterals;

namespace lumacap::harness {

InputMethod::InputMethod(PrivateDesktop &desktop)
{
    desktop.set("QT_IM_MODULE", "ibus");
    desktop.set("GSETTINGS_BACKEND", "memory");
    desktop.start(u"input-method"_s,
                  {u"ibus-daemon"_s, u"--panel=disable"_s, u"--emoji-extension=disable"_s,
                   u"--config=disable"_s});
    // One for all programs. The command fails although it does it: it also wants a layout of its
    // own.
    require("the input method", [&desktop] {
        std::ignore = desktop.ask({u"ibus"_s, u"engine"_s, u"Unikey"_s});
        return desktop.ask({u"ibus"_s, u"engine"_s}).output.trimmed() == "Unikey";
    });
}

} // namespace lumacap::harness
