#include "controls/Accessibility.h"

#include "controls/PaintedButton.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace lumacap {
namespace {

constexpr const char *roleProperty = "accessibleRole";

/// The toolkit tells buttons apart by their class; ours by their role.
class PaintedButtonAccessible final : public QAccessibleWidget {
public:
    explicit PaintedButtonAccessible(PaintedButton *button)
        : QAccessibleWidget(button, button->role())
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button().isCheckable();
        state.checked = button().isChecked();
        state.pressed = button().isDown();
        button().describe(state);
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
    PaintedButton &button() const { return *static_cast<PaintedButton *>(widget()); }
};

QAccessibleInterface *accessible(const QString & /*className*/, QObject *object)
{
    if (auto *const button = qobject_cast<PaintedButton *>(object))
        return new PaintedButtonAccessible(button);
    auto *const widget = qobject_cast<QWidget *>(object);
    const QVariant role = widget == nullptr ? QVariant() : widget->property(roleProperty);
    if (role.isValid())
        return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
    return nullptr;
}

} // namespace

void describeToAssistiveTechnology()
{
    [[maybe_unused]] static const bool isInstalled =
        (QAccessible::installFactory(&accessible), true);
}

void describeAs(QWidget &widget, QAccessible::Role role)
{
    describeToAssistiveTechnology();
    widget.setProperty(roleProperty, static_cast<int>(role));
}

} // namespace lumacap
