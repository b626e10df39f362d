#include "preferences/look/ChoiceGroup.h"

#include "controls/Accessibility.h"

#include <QKeyEvent>

#include <optional>
#include <utility>

namespace lumacap {
namespace {

/// How far an arrow leads, in choices.
std::optional<int> stepOf(int key, int columns)
{
    switch (key) {
    case Qt::Key_Left:
        return -1;
    case Qt::Key_Right:
        return 1;
    case Qt::Key_Up:
        return -columns;
    case Qt::Key_Down:
        return columns;
    default:
        return std::nullopt;
    }
}

} // namespace

ChoiceControl::ChoiceControl(const QString &name, QWidget *parent)
    : PrefsControl(QAccessible::RadioButton, name, parent)
{
    setCheckable(true);
}

ChoiceGroup::ChoiceGroup(const QString &name, int columns, QWidget *parent)
    : QWidget(parent)
    , m_columns(columns)
{
    describeAs(*this, QAccessible::Grouping);
    setAccessibleName(name);
}

void ChoiceGroup::add(ChoiceControl *choice)
{
    const int index = static_cast<int>(m_choices.size());
    choice->setFocusPolicy(Qt::NoFocus);
    m_choices.push_back(choice);
    connect(choice, &QAbstractButton::clicked, this, [this, index] { choose(index); });
}

void ChoiceGroup::setCurrent(int index)
{
    m_current = index;
    for (int other = 0; ChoiceControl *const choice : m_choices) {
        const bool isCurrent = other++ == index;
        choice->setChecked(isCurrent);
        choice->setFocusPolicy(isCurrent ? Qt::TabFocus : Qt::NoFocus);
    }
    update();
}

void ChoiceGroup::choose(int index)
{
    if (index == m_current)
        return;
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    setCurrent(index);
    if (hadFocus)
        m_choices.at(static_cast<std::size_t>(index))->setFocus(Qt::TabFocusReason);
    Q_EMIT chosen(index);
}

void ChoiceGroup::keyPressEvent(QKeyEvent *event)
{
    const auto step = stepOf(event->key(), m_columns);
    if (!step || (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return event->ignore();
    const int index = m_current + *step;
    if (index >= 0 && std::cmp_less(index, m_choices.size()))
        choose(index);
}

} // namespace lumacap
