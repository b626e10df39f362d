#pragma once

#include "harness/PrivateDesktop.h"

namespace lumacap::harness {

/// A running input method that composes Vietnamese letters: "vieetj" gives "việt".
class InputMethod {
public:
    /// Programs of `desktop` started from now on type through it. Throws when it does not start.
    explicit InputMethod(PrivateDesktop &desktop);
};

} // namespace lumacap::harness
