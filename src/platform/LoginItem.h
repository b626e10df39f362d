#pragma once

#include "platform/Result.h"

namespace lumacap {

/// Whether the desktop starts the program at login.
class LoginItem {
public:
    LoginItem() = default;
    Q_DISABLE_COPY_MOVE(LoginItem)
    virtual ~LoginItem() = default;

    /// From the next login on the program is started.
    virtual Result<void> registerItem() = 0;
    /// From the next login on the program is not started.
    virtual Result<void> unregisterItem() = 0;
    /// What the desktop would do at the next login, asked anew at every call.
    virtual bool isEnabled() const = 0;
};

} // namespace lumacap
