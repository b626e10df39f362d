#pragma once

#include "platform/LoginItem.h"

#include <optional>

namespace lumacap {

/// A login item in memory, which refuses when told to.
class FakeLoginItem final : public LoginItem {
public:
    Result<void> registerItem() override { return change(true); }
    Result<void> unregisterItem() override { return change(false); }
    bool isEnabled() const override { return m_isEnabled; }

    std::optional<Failure> refusal;

private:
    Result<void> change(bool isEnabled)
    {
        if (refusal)
            return std::unexpected(*refusal);
        m_isEnabled = isEnabled;
        return {};
    }

    bool m_isEnabled = false;
};

} // namespace lumacap
