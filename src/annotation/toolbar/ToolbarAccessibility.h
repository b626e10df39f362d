#pragma once

namespace lumacap {

/// Lets assistive technology see the controls of toolbars as what they are; once is enough.
void describeToolbarToAssistiveTechnology();

} // namespace lumacap
