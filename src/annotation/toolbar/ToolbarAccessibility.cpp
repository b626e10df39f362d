#include "annotation/toolbar/ToolbarAccessibility.h"

#include "annotation/toolbar/AnnotationToolbarView.h"
#include "annotation/toolbar/BackgroundMenuButton.h"
#include "annotation/toolbar/BackgroundStyleMenu.h"
#include "annotation/toolbar/ToolbarButton.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace lumacap {
namespace {

/// The toolkit tells buttons apart by their class; ours by their role.
class ToolbarButtonAccessible final : public QAccessibleWidget {
public:
    explicit ToolbarButtonAccessible(ToolbarButton *button)
        : QAccessibleWidget(button, button->role())
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button().isCheckable();
        state.checked = button().isChecked();
        state.pressed = button().isDown();
        if (const auto *const menu = qobject_cast<const BackgroundMenuButton *>(&button())) {
            state.hasPopup = true;
            state.expandable = true;
            state.expanded = menu->openness() == MenuOpenness::Open;
            state.collapsed = !state.expanded;
        }
        return state;
    }

    QStringList actionNames() const override
    {
        if (!button().isEnabled())
            return {};
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction())
            button().click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    ToolbarButton &button() const { return *static_cast<ToolbarButton *>(widget()); }
};

QAccessibleInterface *accessible(const QString & /*className*/, QObject *object)
{
    if (auto *const button = qobject_cast<ToolbarButton *>(object))
        return new ToolbarButtonAccessible(button);
    if (auto *const toolbar = qobject_cast<AnnotationToolbarView *>(object))
        return new QAccessibleWidget(toolbar, QAccessible::ToolBar);
    if (auto *const menu = qobject_cast<BackgroundStyleMenu *>(object))
        return new QAccessibleWidget(menu, QAccessible::PopupMenu);
    return nullptr;
}

} // namespace

void describeToolbarToAssistiveTechnology()
{
    [[maybe_unused]] static const bool isInstalled =
        (QAccessible::installFactory(&accessible), true);
}

} // namespace lumacap
