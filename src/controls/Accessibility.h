#pragma once

#include <QAccessible>

class QWidget;

namespace lumacap {

/// Lets assistive technology see painted buttons as what they are; once is enough.
void describeToAssistiveTechnology();

/// Says what a widget without a role of its own is: a group, a text. Before it is first asked.
void describeAs(QWidget &widget, QAccessible::Role role);

} // namespace lumacap
